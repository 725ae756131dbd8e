#include "transform.h"

namespace zk {
namespace {

template <class L>
void MatMulList(const Tmatrix& M, L& list) {
    for (int i = 0; i < list.Count(); ++i)
        if (auto* array = list.Getitem(i))
            MatMul(M, *array);
}

}  // namespace

void MatMul(const Tmatrix& M, TXYZ& p) {
    const auto coordinate = [&](int j) { return p.x * M[0][j] + p.y * M[1][j] + p.z * M[2][j] + M[3][j]; };
    p = {coordinate(0), coordinate(1), coordinate(2)};
}

void MatMul(const Tmatrix& M, TXY& p) {
    TXYZ point{p.x, p.y, 0};
    MatMul(M, point);
    p = {point.x, point.y};
}

void MatMul(const Tmatrix& M, TXYZARRAY& a) {
    for (TXYZ& p : a.Items())
        MatMul(M, p);
}

void MatMul(const Tmatrix& M, TXYARRAY& a) {
    for (TXY& p : a.Items())
        MatMul(M, p);
}

void MatMul(const Tmatrix& M, TlistOFxyzArray& l) {
    MatMulList(M, l);
}

void MatMul(const Tmatrix& M, TlistOFXYArray& l) {
    MatMulList(M, l);
}

}  // namespace zk
