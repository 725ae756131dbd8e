#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/export.h>

namespace zk {

/// Appends the outlines of the union (unite true) or of the intersection of two closed polygons to result, each as an
/// array of its own; what result holds already stays. The polygons may run either way round.
///
/// - Outlines run counter-clockwise in a frame with y up, holes clockwise; they come in a fixed order that depends on
///   the input only. A hole is an array like any other: the areas of all arrays with their signs add up to the area.
/// - Where the outlines do not cross, but at most touch: copies of the polygons as they are, in the direction they
/// have.
///   For the union those that are not inside the other; for the intersection the one that is. One inside the other thus
///   gives one of the two, and disjoint ones both or nothing.
/// - No array repeats a point in a row or meets itself at a crossing; where a result touches itself at a point it falls
///   into two. Vertices of the input come out with their own coordinates, to the bit. Edges that continue each other
///   keep the vertex between them.
/// - Edges and vertices may be shared, overlap or touch; there is no tolerance and no limit of size: what is inside is
///   decided exactly for the coordinates as they are. Only the coordinates of crossing points are rounded.
/// - A polygon that crosses itself counts as inside where its outline surrounds a point an odd number of times, as for
///   PktInside, and so do the arrays of the result then, taken together.
///
/// Bad input: a polygon without an area (fewer than three points in different places, or all on a line), or with a
/// coordinate that is infinite or NaN, takes no part: the union is a copy of the other one, the intersection nothing.
/// Only a polygon of a single point counts as crossing nothing: it is copied into the union where it is not inside the
/// other, and into the intersection where it is. Coordinates smaller than 1e-138 of the largest one are rounded for the
/// decisions.
///
/// Where a polygon crosses itself on a stretch that it shares with the other one, both get a vertex at the rounded
/// crossing point, and what is on either side of it is off by that rounding: the last digit mostly, up to 1e-8 of the
/// largest coordinate where many edges meet in one such point. Throws EError("stack error"), and appends
/// nothing, where the stretches of the outlines cannot be joined to closed ones even after several rounds of this; no
/// input is known that does it. Safe to call from several threads at once, on different lists.
ZKXYARRAYS_API void SetOperation(const TXYARRAY& a, const TXYARRAY& b, TlistOFXYArray& result, bool unite);

}  // namespace zk
