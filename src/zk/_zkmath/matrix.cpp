#include "matrix.h"

#include <zk/_zkmath/vector.h>
#include <zk/_zkxyz/constants.h>

#include <cmath>

namespace zk {
namespace {

// M, with p as the point that does not move.
Tmatrix About(const TXYZ& p, const Tmatrix& M) {
    return Mulmat(Mulmat(TranslationToMatrix3d({-p.x, -p.y, -p.z}), M), TranslationToMatrix3d(p));
}

// The determinant of rows 1 to 3 in the columns i, j, k.
double Minor(const Tmatrix& M, int i, int j, int k) {
    return M[1][i] * (M[2][j] * M[3][k] - M[2][k] * M[3][j]) - M[1][j] * (M[2][i] * M[3][k] - M[2][k] * M[3][i]) +
           M[1][k] * (M[2][i] * M[3][j] - M[2][j] * M[3][i]);
}

}  // namespace

Tmatrix TranslationToMatrix3d(const TXYZ& t) {
    Tmatrix M = Identity;
    M[3][0] = t.x;
    M[3][1] = t.y;
    M[3][2] = t.z;
    return M;
}

void TranslationToMatrix3d(const TXYZ& t, Tmatrix& M) {
    M = TranslationToMatrix3d(t);
}

Tmatrix RotationToMatrix3d(const TGerade& g, double angle) {
    const auto [x, y, z] = Normalize(g.Direction);
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    Tmatrix R = Identity;
    R[0][0] = x * x + (1 - x * x) * c;
    R[0][1] = x * y * (1 - c) - z * s;
    R[0][2] = x * z * (1 - c) + y * s;
    R[1][0] = x * y * (1 - c) + z * s;
    R[1][1] = y * y + (1 - y * y) * c;
    R[1][2] = y * z * (1 - c) - x * s;
    R[2][0] = x * z * (1 - c) - y * s;
    R[2][1] = y * z * (1 - c) + x * s;
    R[2][2] = z * z + (1 - z * z) * c;
    return About(g.Origin, R);
}

void RotationToMatrix3d(const TGerade& g, double angle, Tmatrix& M) {
    M = RotationToMatrix3d(g, angle);
}

Tmatrix StreckungToMAtrix3d(const TXYZ& a, const TXYZ& b, double f) {
    const TXYZ direction = Normalize(Sub(b, a));
    const double d[3] = {direction.x, direction.y, direction.z};
    Tmatrix S = Identity;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            S[i][j] += (f - 1) * d[i] * d[j];
    return About(a, S);
}

void StreckungToMAtrix3d(const TXYZ& a, const TXYZ& b, double f, Tmatrix& M) {
    M = StreckungToMAtrix3d(a, b, f);
}

Tmatrix Mulmat(const Tmatrix& A, const Tmatrix& B) {
    Tmatrix C;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            C[i][j] = A[i][0] * B[0][j] + A[i][1] * B[1][j] + A[i][2] * B[2][j] + A[i][3] * B[3][j];
    return C;
}

void Mulmat(const Tmatrix& A, const Tmatrix& B, Tmatrix& C) {
    C = Mulmat(A, B);
}

double Determinante(const Tmatrix& M) {
    return M[0][0] * Minor(M, 1, 2, 3) - M[0][1] * Minor(M, 0, 2, 3) + M[0][2] * Minor(M, 0, 1, 3) -
           M[0][3] * Minor(M, 0, 1, 2);
}

}  // namespace zk
