#pragma once

#include <zk/_zkxyz/records.h>
#include <zk/export.h>

// Making and combining 4x4 transforms. Matrices are row-major and act on row vectors: the translation is in row 3, and
// Mulmat(A, B) is first A, then B. Angles are radians. Results may be the same record as arguments.
namespace zk {

/// Moves by t: Identity with (t.x, t.y, t.z, 1) as row 3.
ZKMATH_API void TranslationToMatrix3d(const TXYZ& t, Tmatrix& M);
ZKMATH_API Tmatrix TranslationToMatrix3d(const TXYZ& t);

/// Rotates by angle about the line g, whose direction need not be of unit length. As points are row vectors, a point
/// turns by -angle in the right-hand sense about the direction: (1, 0, 0) about z by +pi/2 becomes (0, -1, 0). A zero
/// direction is no axis; it scales by cos(angle) about g's origin.
ZKMATH_API void RotationToMatrix3d(const TGerade& g, double angle, Tmatrix& M);
ZKMATH_API Tmatrix RotationToMatrix3d(const TGerade& g, double angle);

/// Scales by f along the line from a towards b: lengths along it are multiplied by f, lengths across it kept, a stays
/// where it is. When b is a, there is no direction to scale in and the result is Identity within rounding.
ZKMATH_API void StreckungToMAtrix3d(const TXYZ& a, const TXYZ& b, double f, Tmatrix& M);
ZKMATH_API Tmatrix StreckungToMAtrix3d(const TXYZ& a, const TXYZ& b, double f);

/// C := A * B, so first A, then B.
ZKMATH_API void Mulmat(const Tmatrix& A, const Tmatrix& B, Tmatrix& C);
ZKMATH_API Tmatrix Mulmat(const Tmatrix& A, const Tmatrix& B);

/// The determinant of all four rows, by cofactors along row 0.
ZKMATH_API double Determinante(const Tmatrix& M);

}  // namespace zk
