#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/export.h>

// Faces into pieces that can be drawn.
namespace zk {

/// Appends convex pieces of a face to out, which is not cleared: together they cover the face exactly and do not
/// overlap. They lie in its plane, run around it the way its outline does, and come in an order that depends on the
/// input only. A convex outline without holes is one piece, as it is.
///
/// faces: the first array is the outline, the others are its holes, all of them in one plane and in either direction.
/// To cut them open, the holes are joined to the outline one by one, the nearest first, at the points where they are
/// nearest to what is joined already; such a point becomes a vertex of some pieces, so that a piece may have vertices
/// on an edge of the outline. Other than that, pieces have the vertices of the input, with their own coordinates.
/// Convex is meant within rounding: a vertex may lie on the line of its neighbours.
///
/// Bad input: equal points in a row count once. Nothing is appended for an outline of fewer than three points, without
/// an area, or with a coordinate that is infinite, NaN, or 1e70 or more. Left out is a hole of that kind, one that lies
/// outside of the outline or inside of another hole, and one at a distance of 1e10 or more. A hole may touch the
/// outline, or another hole, in points. Coordinates below 1e-60 count as 0 when it is decided what to cut. For an
/// outline that crosses itself, and for holes that cross something, pieces are still made of the given points and in
/// bounded time, but what they cover is not defined.
ZKXYARRAYS_API void DOConvex(const TlistOFxyzArray& faces, TlistOFxyzArray& out);

/// The same for a face without holes.
ZKXYARRAYS_API void DOConvex(const TXYZARRAY& poly, TlistOFxyzArray& out);

/// Refines triangles until none has a perimeter above d, by halving their edges, and appends each as an array of three
/// points to target, which is not cleared.
///
/// Only the first three points of an array of source are looked at, and arrays of exactly three points are passed over:
/// that is the system's own choice. Hand over closed triangles of four points, the last equal to the first.
///
/// d is in the unit of the points and meant to be positive. Where the halving cannot reach it (d not above 0 or NaN, a
/// perimeter that is infinite or NaN), or would take more than sixteen steps, a triangle comes out as far as it got:
/// not at all refined in the first case, and after sixteen halvings in the second. source and target may be the same
/// list; the arrays that were there before the call are then the source.
ZKXYARRAYS_API void RefineTriangles(const TlistOFxyzArray& source, double d, TlistOFxyzArray& target);

}  // namespace zk
