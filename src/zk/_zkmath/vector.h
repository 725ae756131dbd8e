#pragma once

#include <zk/_zkmath/tolerance.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>

// Vector operations, overloaded by record. None of them fails; sums of pixels wrap around in 32 bits.
namespace zk {

/// a + b and a - b.
ZKMATH_API TXY Add(const TXY& a, const TXY& b);
ZKMATH_API TXYI Add(const TXYI& a, const TXYI& b);
ZKMATH_API TXYZ Add(const TXYZ& a, const TXYZ& b);
ZKMATH_API TXY Sub(const TXY& a, const TXY& b);
ZKMATH_API TXYI Sub(const TXYI& a, const TXYI& b);
ZKMATH_API TXYZ Sub(const TXYZ& a, const TXYZ& b);

/// (a.y, -a.x): a turned by a quarter turn, clockwise in a frame with y up.
ZKMATH_API TXY Normal(const TXY& a);
ZKMATH_API TXYI Normal(const TXYI& a);

/// The cross product a x b.
ZKMATH_API TXYZ Vekt(const TXYZ& a, const TXYZ& b);

/// a.y * b.x - a.x * b.y: the usual 2D cross product negated. Every orientation test of the library is written against
/// this sign.
ZKMATH_API double Vekt(const TXY& a, const TXY& b);

/// The dot product.
ZKMATH_API double Skal(const TXYZ& a, const TXYZ& b);
ZKMATH_API double Skal(const TXY& a, const TXY& b);

/// a times d. Pixels are rounded to the nearest, ties to even; a product outside 32 bits becomes the nearest limit, NaN
/// becomes 0.
ZKMATH_API TXY Mul(const TXY& a, double d);
ZKMATH_API TXYI Mul(const TXYI& a, double d);
ZKMATH_API TXYZ Mul(const TXYZ& a, double d);

/// Every element times d but [3][3], which is kept: points come out d times as far from the zero point.
ZKMATH_API Tmatrix Mul(const Tmatrix& m, double d);

/// The length. In 3D the sum of squares is formed in extended precision.
ZKMATH_API double Len(const TXYZ& a);
ZKMATH_API double Len(const TXY& a);
ZKMATH_API double Len(const TXYI& a);

/// The distance of two points, Len(Sub(a, b)).
ZKMATH_API double Dist(const TXY& a, const TXY& b);
ZKMATH_API double Dist(const TXYI& a, const TXYI& b);
ZKMATH_API double Dist(const TXYZ& a, const TXYZ& b);

/// a at unit length. Only a length of exactly 0 is degenerate, without any tolerance: a is then returned unchanged.
ZKMATH_API TXYZ Normalize(const TXYZ& a);

/// a times its own length, so a vector of length |a|^2 along a and not a unit vector: multiplying where the 3D form
/// divides is this system's own choice, and Skip of TXY and TXYI has it too. A zero vector is returned unchanged.
ZKMATH_API TXY Normalize(const TXY& a);

/// a := Normalize(a).
ZKMATH_API void _Normalize(TXY& a);
ZKMATH_API void _Normalize(TXYZ& a);

/// Mul(Normalize(a), d): in 3D a vector of length d along a, in 2D one of length |a|^2 * d. Pixels are rounded as by
/// Mul, each coordinate at the end.
ZKMATH_API TXY Skip(const TXY& a, double d);
ZKMATH_API TXYI Skip(const TXYI& a, double d);
ZKMATH_API TXYZ Skip(const TXYZ& a, double d);

/// The same within the tolerance, number by number; pixels exactly.
ZKMATH_API bool Equals(const TXY& a, const TXY& b);
ZKMATH_API bool Equals(const TXYZ& a, const TXYZ& b);
ZKMATH_API bool Equals(const TXYI& a, const TXYI& b);
ZKMATH_API bool Equals(const Tmatrix& a, const Tmatrix& b);

}  // namespace zk
