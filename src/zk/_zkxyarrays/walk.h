#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/export.h>

// Walking along polygons, and copying them.
namespace zk {

/// The point at vertex position u: vertex k = u truncated toward zero, and from there the fraction u - k of the way to
/// the next vertex. Positions wrap around the closed polygon. Callers pass positions of 0 or more; for a negative u
/// that is not whole the fraction is negative and the point lies before vertex k on the line of the edge after it, by
/// choice. The zero point for an empty polygon; vertex 0 for a u that is infinite or NaN.
ZKXYARRAYS_API TXY _value(const TXYARRAY& poly, double u);
ZKXYARRAYS_API TXYZ _value(const TXYZARRAY& poly, double u);

/// dst becomes a copy of src, whatever its size; its Delta stays. An array that was never made ready is made ready
/// first.
ZKXYARRAYS_API void _Copy(const TXYARRAY& src, TXYARRAY& dst);
ZKXYARRAYS_API void _Copy(const TXYZARRAY& src, TXYZARRAY& dst);

/// dst becomes the part of the closed polygon from position u1 down to position u2, below 0 on from the last vertex
/// where u2 is above u1: the point at u1, the whole vertices between them in falling order, the point at u2. A position
/// within the tolerance of a whole one is that vertex, with its own coordinates, and no point comes twice in a row:
/// equal positions give one point. Positions wrap around the polygon; one that is infinite or NaN is 0. An empty src
/// gives an empty dst. src and dst may be the same array.
ZKXYARRAYS_API void _Copy(const TXYARRAY& src, double u1, double u2, TXYARRAY& dst);

/// dst is cleared and gets a copy of every array of src, in order.
ZKXYARRAYS_API void _Copy(const TlistOFxyzArray& src, TlistOFxyzArray& dst);

}  // namespace zk
