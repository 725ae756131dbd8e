#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/export.h>

// The plane and the frame of a polygon in space.
namespace zk {

/// The plane through the first vertex with Normalize(Vekt(poly)) as its normal, which points to the side from which the
/// polygon runs clockwise: (0, 0, -1) for a counter-clockwise polygon in z = 0. Throws EError("Normalvektor 0") for a
/// polygon without an area: fewer than three vertices, all in one place, or all on a line within rounding.
ZKXYARRAYS_API TPlane NewPlane(const TXYZARRAY& poly);

/// The left-handed frame that PlaneToBase makes on that plane: Origin at the first vertex, XAxis along the first edge
/// from it that has a length (within the tolerance), ZAxis the unit normal. Throws EError("Normalvektor 0") as NewPlane
/// does, and when every vertex is the first one within the tolerance.
ZKXYARRAYS_API TBAse NewBAse(const TXYZARRAY& poly);

}  // namespace zk
