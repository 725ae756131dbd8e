#pragma once

#include <zk/_zkxyz/records.h>
#include <zk/export.h>

// Planes and lines. Results may be the same record as arguments.
namespace zk {

/// The plane through b's origin with b's ZAxis as its normal.
ZKMATH_API void NewPlane(const TBAse& b, TPlane& p);
ZKMATH_API TPlane NewPlane(const TBAse& b);

/// The plane through three points: Origin p1, Normal Normalize((p2 - p1) x (p3 - p1)), towards the side from which they
/// run counter-clockwise. Points on a line give the zero normal.
ZKMATH_API void NewPlane(const TXYZ& p1, const TXYZ& p2, const TXYZ& p3, TPlane& p);
ZKMATH_API TPlane NewPlane(const TXYZ& p1, const TXYZ& p2, const TXYZ& p3);

/// The line through p in the direction d. The second argument is a direction, not a second point.
ZKMATH_API void NewGerade(const TXYZ& p, const TXYZ& d, TGerade& g);
ZKMATH_API TGerade NewGerade(const TXYZ& p, const TXYZ& d);

/// A frame on the plane: Origin and ZAxis are the plane's Origin and Normal; XAxis is *xdir, taken as it is, and where
/// xdir is null, level: e x Normal with e = (0, 0, 1), or (0, 1, 0) when the normal is nearly along z (x and y both
/// below 0.001, an absolute limit). YAxis is XAxis x ZAxis, then all three are normalised. The frame is left-handed by
/// choice: z = 0 with normal (0, 0, 1) has XAxis (1, 0, 0) and YAxis (0, -1, 0).
ZKMATH_API void PlaneToBase(const TPlane& p, const TXYZ* xdir, TBAse& b);
ZKMATH_API TBAse PlaneToBase(const TPlane& p, const TXYZ* xdir = nullptr);

/// Some vector perpendicular to v, not normalised: the zero vector for one of length 0 (within the tolerance), else the
/// first axis along which v has no extent, else (0, 1, -v.y / v.z).
ZKMATH_API void AnyNormalvektor(const TXYZ& v, TXYZ& n);
ZKMATH_API TXYZ AnyNormalvektor(const TXYZ& v);

/// The distance from p to the segment from g.Origin to g.Origin + g.Direction. foot is the foot of the perpendicular on
/// the line and t its place, 0 at the start and 1 at the end. When the foot is not on the segment (beyond the
/// tolerance) the distance is 1e20, with t and foot all the same. A segment no longer than 1e-5 also gives 1e20 and
/// leaves t and foot untouched.
ZKMATH_API double Dist(const TXYZ& p, const TGerade& g, double& t, TXYZ& foot);

/// The intersection x of a line with a plane; t is the signed distance from g.Origin along the unit direction, not a
/// fraction of Direction. False when they are parallel (the sine of the angle between them below 1e-7, for a unit
/// normal): x is then g.Origin and t untouched.
ZKMATH_API bool _Cross(const TGerade& g, const TPlane& p, TXYZ& x, double& t);

}  // namespace zk
