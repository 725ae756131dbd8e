#include "frame.h"

#include <zk/_zkmath/tolerance.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyz/constants.h>

#include <cmath>

namespace zk {
namespace {

TXYZ Row(const Tmatrix& M, int i) {
    return {M[i][0], M[i][1], M[i][2]};
}

void SetRow(Tmatrix& M, int i, const TXYZ& v) {
    M[i][0] = v.x;
    M[i][1] = v.y;
    M[i][2] = v.z;
}

TXYZ TransformPoint(const Tmatrix& M, const TXYZ& p) {
    const auto coordinate = [&](int j) { return (p.x * M[0][j] + p.y * M[1][j] + p.z * M[2][j] + M[3][j]) / M[3][3]; };
    return {coordinate(0), coordinate(1), coordinate(2)};
}

struct Rotation {
    double axis[3];  // unit length, or zero when there is no rotation
    double angle;
};

// The rotation of the upper 3x3 block. Taken from its quaternion, whose largest component is at least 1/2 for every
// matrix, so that neither the smallest angles nor those near a half turn lose digits: the cosine, which is flat at
// both, is never asked for the angle.
Rotation RotationOf(const Tmatrix& R) {
    const double squares[4] = {1 + R[0][0] + R[1][1] + R[2][2], 1 + R[0][0] - R[1][1] - R[2][2],
                               1 - R[0][0] + R[1][1] - R[2][2], 1 - R[0][0] - R[1][1] + R[2][2]};
    const double turned[3] = {R[2][1] - R[1][2], R[0][2] - R[2][0], R[1][0] - R[0][1]};
    int largest = 0;
    for (int i = 1; i < 4; ++i)
        if (squares[i] > squares[largest])
            largest = i;
    // The quaternion times four times its largest component.
    double real = 0;
    double q[3] = {};
    if (largest == 0) {
        real = squares[0];
        for (int i = 0; i < 3; ++i)
            q[i] = turned[i];
    } else {
        const int k = largest - 1;
        real = turned[k];
        for (int i = 0; i < 3; ++i)
            q[i] = i == k ? squares[largest] : R[k][i] + R[i][k];
    }
    const double length = Len(TXYZ{q[0], q[1], q[2]});
    Rotation rotation{{0, 0, 0}, 0};
    if (length == 0)
        return rotation;
    for (int i = 0; i < 3; ++i)
        rotation.axis[i] = q[i] / length;
    // Between -pi and pi: the axis and its opposite are the same line.
    rotation.angle = real < 0 ? 2 * std::atan2(-length, -real) : 2 * std::atan2(length, real);
    return rotation;
}

// The coordinate whose component of the axis is set to 1: the first whose 2x2 system of R - I, the row and the column
// of that coordinate left out, can be solved beyond the tolerance.
int Pivot(const Tmatrix& R, const Rotation& rotation) {
    for (int k = 0; k < 3; ++k) {
        const int i = k == 0 ? 1 : 0;
        const int j = k == 2 ? 1 : 2;
        const double minor = (R[i][i] - 1) * (R[j][j] - 1) - R[i][j] * R[j][i];
        if (!Equals(minor, 0) && std::fabs(rotation.axis[k]) > 1e-6)
            return k;
    }
    int largest = 0;
    for (int k = 1; k < 3; ++k)
        if (std::fabs(rotation.axis[k]) > std::fabs(rotation.axis[largest]))
            largest = k;
    return largest;
}

// An array that was never made ready is made ready for its own kind of element.
template <class A>
void SetCount(A& array, int count) {
    if (!array.Data && array.ItemSize == 0)
        ArrayInit(array);
    Arraysetcount(array, count);
}

}  // namespace

Tmatrix BAseToMAtrix(const TBAse& b) {
    Tmatrix M = Identity;
    SetRow(M, 0, b.XAxis);
    SetRow(M, 1, b.YAxis);
    SetRow(M, 2, b.ZAxis);
    SetRow(M, 3, b.Origin);
    return M;
}

void BAseToMAtrix(const TBAse& b, Tmatrix& M) {
    M = BAseToMAtrix(b);
}

TBAse MAtrixToBase(const Tmatrix& M) {
    TBAse b = Unitbase;
    b.XAxis = Row(M, 0);
    b.YAxis = Row(M, 1);
    b.ZAxis = Row(M, 2);
    b.Origin = Row(M, 3);
    return b;
}

void MAtrixToBase(const Tmatrix& M, TBAse& b) {
    b = MAtrixToBase(M);
}

void TransformBAse(const Tmatrix& M, TBAse& b) {
    const TXYZ x = TransformPoint(M, Add(b.Origin, b.XAxis));
    const TXYZ y = TransformPoint(M, Add(b.Origin, b.YAxis));
    const TXYZ z = TransformPoint(M, Add(b.Origin, b.ZAxis));
    b.Origin = TransformPoint(M, b.Origin);
    b.XAxis = Sub(x, b.Origin);
    b.YAxis = Sub(y, b.Origin);
    b.ZAxis = Sub(z, b.Origin);
}

TXYZ BaseGetAbs(const TBAse& b, double x, double y, double z) {
    return Add(Add(Add(b.Origin, Mul(b.XAxis, x)), Mul(b.YAxis, y)), Mul(b.ZAxis, z));
}

void BaseGetAbs(const TBAse& b, double x, double y, double z, TXYZ& p) {
    p = BaseGetAbs(b, x, y, z);
}

TXYZ BaseGetAbs(const TBAse& b, const TXYZ& r) {
    return BaseGetAbs(b, r.x, r.y, r.z);
}

void BaseGetAbs(const TBAse& b, const TXYZ& r, TXYZ& p) {
    p = BaseGetAbs(b, r);
}

TXYZ BaseGetRel(const TBAse& b, const TXYZ& p) {
    const TXYZ d = Sub(p, b.Origin);
    return {Skal(d, b.XAxis), Skal(d, b.YAxis), Skal(d, b.ZAxis)};
}

void BaseGetRel(const TBAse& b, const TXYZ& p, double& x, double& y, double& z) {
    const TXYZ r = BaseGetRel(b, p);
    x = r.x;
    y = r.y;
    z = r.z;
}

void BaseGetRel(const TBAse& b, const TXYZ& p, TXYZ& r) {
    r = BaseGetRel(b, p);
}

void To2d(const TBAse& b, const TXYZARRAY& src, TXYARRAY& dst) {
    SetCount(dst, src.Count);
    const auto from = src.Items();
    const auto to = dst.Items();
    for (std::size_t i = 0; i < from.size() && i < to.size(); ++i) {
        const TXYZ r = BaseGetRel(b, from[i]);
        to[i] = {r.x, r.y};
    }
}

void To3d(const TBAse& b, const TXYARRAY& src, TXYZARRAY& dst) {
    SetCount(dst, src.Count);
    const auto from = src.Items();
    const auto to = dst.Items();
    for (std::size_t i = 0; i < from.size() && i < to.size(); ++i)
        to[i] = BaseGetAbs(b, from[i].x, from[i].y, 0);
}

void BaseToTGW(const TBAse& b, TXYZ& t, TGerade& g, double& w) {
    const Tmatrix M = BAseToMAtrix(b);
    const Rotation rotation = RotationOf(M);
    t = Row(M, 3);
    g = {Nullxyz, Ez};
    w = 0;
    if (rotation.angle == 0)
        return;
    const int k = Pivot(M, rotation);
    const double scale = rotation.axis[k];
    g.Direction = {rotation.axis[0] / scale, rotation.axis[1] / scale, rotation.axis[2] / scale};
    // Dividing by a negative component turns the axis round, and with it the sense of the angle.
    w = scale < 0 ? -rotation.angle : rotation.angle;
}

void PolyPolygonToListOfXYZArray(const void* /*points*/, const void* /*counts*/, int /*count*/,
                                 TlistOFxyzArray& /*list*/) {}

}  // namespace zk
