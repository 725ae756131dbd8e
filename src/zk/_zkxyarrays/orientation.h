#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/export.h>

// The orientation of polygons. A polygon is an array of its vertices in order; the edge from the last to the first is
// implied.
namespace zk {

/// The sum of the 2D Vekt(previous, current) over all edges, which is minus twice the signed area: negative for a
/// counter-clockwise polygon in a frame with y up (-2 for the unit square). 0 for an empty polygon.
ZKXYARRAYS_API double Vekt(const TXYARRAY& poly);

/// The sum of the cross products current x previous over all edges, not normalised: a vector across the polygon, twice
/// its area long, pointing to the side from which the polygon runs clockwise. (0, 0, -2) for the counter-clockwise unit
/// square in z = 0; the zero vector for an empty polygon.
ZKXYARRAYS_API TXYZ Vekt(const TXYZARRAY& poly);

/// The sum over all arrays of the list.
ZKXYARRAYS_API TXYZ Vekt(const TlistOFxyzArray& list);

/// Reverses the order of the vertices in place.
ZKXYARRAYS_API void Invertiere(TXYARRAY& poly);
ZKXYARRAYS_API void Invertiere(TXYZARRAY& poly);

}  // namespace zk
