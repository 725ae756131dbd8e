#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>

// Frames: to and from matrices, points into and out of them. Results may be the same record as arguments.
namespace zk {

/// The matrix whose rows are XAxis, YAxis, ZAxis and Origin, so that p_world = p_local * M. Column 3 is 0, 0, 0, 1.
ZKMATH_API void BAseToMAtrix(const TBAse& b, Tmatrix& M);
ZKMATH_API Tmatrix BAseToMAtrix(const TBAse& b);

/// The inverse of BAseToMAtrix, exactly. Column 3 is ignored.
ZKMATH_API void MAtrixToBase(const Tmatrix& M, TBAse& b);
ZKMATH_API TBAse MAtrixToBase(const Tmatrix& M);

/// Transforms the frame in place: its origin and the tips of its axes go through M as points and are divided by
/// M[3][3]. Only that element divides and column 3 of the other rows is ignored, so this is no full perspective, and
/// affine transforms stay exact. (MatMul of _zkxyarrays does not divide at all; the two differ on purpose.) The axes
/// are not normalised: a scaling scales them.
ZKMATH_API void TransformBAse(const Tmatrix& M, TBAse& b);

/// From coordinates in the frame to the point they mean: Origin + x * XAxis + y * YAxis + z * ZAxis.
ZKMATH_API void BaseGetAbs(const TBAse& b, double x, double y, double z, TXYZ& p);
ZKMATH_API TXYZ BaseGetAbs(const TBAse& b, double x, double y, double z);
ZKMATH_API void BaseGetAbs(const TBAse& b, const TXYZ& r, TXYZ& p);
ZKMATH_API TXYZ BaseGetAbs(const TBAse& b, const TXYZ& r);

/// From a point to its coordinates in the frame, by dot products of p - Origin with the axes. The exact inverse of
/// BaseGetAbs for orthonormal axes only.
ZKMATH_API void BaseGetRel(const TBAse& b, const TXYZ& p, double& x, double& y, double& z);
ZKMATH_API void BaseGetRel(const TBAse& b, const TXYZ& p, TXYZ& r);
ZKMATH_API TXYZ BaseGetRel(const TBAse& b, const TXYZ& p);

/// dst gets src's count and the x and y of every point in the frame; z is dropped. An array that was never made ready
/// is made ready first.
ZKMATH_API void To2d(const TBAse& b, const TXYZARRAY& src, TXYARRAY& dst);

/// dst gets src's count and every point of the frame's plane z = 0 that src means.
ZKMATH_API void To3d(const TBAse& b, const TXYARRAY& src, TXYZARRAY& dst);

/// Splits a frame with right-handed orthonormal axes into a translation t, a line g and an angle w in radians: rotating
/// by w about g and then translating by t gives the frame back,
/// BAseToMAtrix(b) = Mulmat(RotationToMatrix3d(g, w), TranslationToMatrix3d(t)).
/// g goes through the zero point. Its direction is scaled so that one component is 1: the first of x, y, z that the
/// rotation pins down beyond the tolerance, the largest one for rotations too small for that. w is in [-pi, pi]. A
/// frame without rotation gives the z axis and w = 0. What a left-handed or skewed frame gives is finite and not its
/// own rotation, for it has none.
ZKMATH_API void BaseToTGW(const TBAse& b, TXYZ& t, TGerade& g, double& w);

/// Does nothing. Only the name is kept.
ZKMATH_API void PolyPolygonToListOfXYZArray(const void* points, const void* counts, int count, TlistOFxyzArray& list);

}  // namespace zk
