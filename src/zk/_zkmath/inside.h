#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/export.h>

namespace zk {

/// Whether p is inside the closed polygon, by counting how often a ray to the right of p crosses the outline: exact
/// comparisons, no tolerance. Where a polygon crosses itself, what the outline surrounds an even number of times is
/// outside. A point exactly on a left edge is inside, one on a right edge outside; a horizontal edge never counts. The
/// order of the vertices does not matter. False for an empty polygon; edges and points that are NaN never count.
ZKMATH_API bool PktInside(const TXY& p, const TXYARRAY& poly);

/// The same rule on pixels. The place where the ray crosses an edge is found in doubles.
ZKMATH_API bool PktInside(const TXYI& p, const TXYIARRAY& poly);

}  // namespace zk
