#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/export.h>

namespace zk {

/// The distance of the outlines of two closed polygons in space, 0 where they meet. For a: the index of the nearest
/// edge (from vertex edgeA to the next), the place on that edge from 0 to 1, and the nearest point; for b the same. Of
/// several pairs of edges that are equally near, the first counts, edge by edge of a and for each edge of b; so a
/// nearest vertex is mostly reported as the end of an edge, and vertex 0 as the start of the first one. A polygon of
/// one point is that point. When either polygon is empty, or no distance is a number: 1e20, with the outputs untouched.
ZKXYARRAYS_API double Dist(const TXYZARRAY& a, const TXYZARRAY& b, int& edgeA, double& placeA, TXYZ& pointA, int& edgeB,
                           double& placeB, TXYZ& pointB);

namespace detail {

/// The nearest points of two segments. Not for use outside this unit.
struct NearestPoints {
    double distance2;  ///< squared
    double placeA, placeB;
    TXYZ pointA, pointB;
};
NearestPoints Nearest(const TXYZ& a0, const TXYZ& a1, const TXYZ& b0, const TXYZ& b1);

}  // namespace detail
}  // namespace zk
