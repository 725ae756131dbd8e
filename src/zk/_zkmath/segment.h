#pragma once

#include <zk/_zkxyz/records.h>
#include <zk/export.h>

// Segments in the plane.
namespace zk {

/// The intersection of the segment a-b with the segment c-d: s is its place on a-b (0 at a, 1 at b), t its place on
/// c-d. den is the determinant of the two directions, and 0 where one of the special cases below decides.
///
/// - The same segment twice, or one without a length (within the tolerance): false, den 0, s and t untouched.
/// - b meets c (s 1, t 0) or d (s 1, t 1): true.
/// - Not parallel (|den| above 1e-6, an absolute limit): true wherever the two lines meet. The range of s and t is the
///   caller's business.
/// - On one line: true when b lies strictly inside c-d (s 1), or else d strictly inside a-b (t 1).
/// - Parallel otherwise: false, s and t 0.
///
/// Only the end points b and d are looked after. A meeting at a start point is decided by the two lines, and is false
/// for parallel segments: whoever walks along a closed polygon meets every vertex as the end of one edge, and counts it
/// once.
///
/// The determinant is an area, so that segments shorter than about 1e-3 count as parallel whatever their directions
/// are. Coordinates that are infinite or NaN give nothing to rely on, and never more than a false answer.
ZKMATH_API bool _Cross(const TXY& a, const TXY& b, const TXY& c, const TXY& d, double& s, double& t, double& den);

}  // namespace zk
