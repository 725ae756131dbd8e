#pragma once

#include <zk/_zkmath/modulo.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>

// Whether something lies in a span that is taken around a circle.
namespace zk {

/// With period m: going up from a, c comes after b, beyond the tolerance. The order of the arguments is period, start,
/// inner, outer. True when b is a within the tolerance, whatever c is: a zero span counts as the whole period. For m
/// that is not positive see _modulo.
ZKMATH_API bool Between(double m, double a, double b, double c);

/// The same for whole numbers, with differences that wrap at most once; a c equal to a counts as a whole period away.
/// Unlike with doubles, a zero span is false by choice: positions on a polygon are counted, angles are measured.
ZKMATH_API bool Between(int m, int a, int b, int c);

/// Numbers of several kinds: compared as doubles.
template <class M, class A, class B, class C>
requires detail::MixedNumbers<M, A, B, C>
bool Between(M m, A a, B b, C c) {
    return Between(static_cast<double>(m), static_cast<double>(a), static_cast<double>(b), static_cast<double>(c));
}

/// Direction c lies in the sector from a to b, taken in the sense in which the 2D Vekt is positive (clockwise in a
/// frame with y up). When that sector is more than a half turn, the union of its two half-planes is taken. A direction
/// on a bounding ray is never inside.
ZKMATH_API bool Between(const TXY& a, const TXY& b, const TXY& c);

}  // namespace zk
