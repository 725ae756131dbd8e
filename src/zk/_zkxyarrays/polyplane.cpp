#include "polyplane.h"

#include <zk/_zkmath/plane.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/orientation.h>
#include <zk/_zkxyz/errors.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace zk {
namespace {

[[noreturn]] void NoNormal() {
    throw EError("Normalvektor 0");
}

// No area, but for what the rounding of the coordinates leaves of it. Normalize makes a unit vector of the smallest
// remainder, so that a line of vertices would otherwise pass for a polygon as soon as its coordinates are not round
// numbers. Seen from the first vertex, so that a small polygon far out still has its area.
bool OnALine(const TXYZARRAY& poly) {
    const auto points = poly.Items();
    TXYZ sum;
    double outline = 0;
    double farthest = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const TXYZ& previous = points[i == 0 ? points.size() - 1 : i - 1];
        sum = Add(sum, Vekt(Sub(points[i], points[0]), Sub(previous, points[0])));
        outline += Dist(points[i], previous);
        farthest = std::max(farthest, Len(points[i]));
    }
    return Len(sum) <= 4 * std::numeric_limits<double>::epsilon() * farthest * outline;
}

}  // namespace

TPlane NewPlane(const TXYZARRAY& poly) {
    const TXYZ normal = Normalize(Vekt(poly));
    if (Equals(Len(normal), 0) || OnALine(poly))
        NoNormal();
    return {poly.Items()[0], normal};
}

TBAse NewBAse(const TXYZARRAY& poly) {
    const TPlane plane = NewPlane(poly);
    const auto points = poly.Items();
    for (std::size_t i = 1; i < points.size(); ++i)
        if (!Equals(points[i], points[0])) {
            const TXYZ edge = Sub(points[i], points[0]);
            return PlaneToBase(plane, &edge);
        }
    NoNormal();
}

}  // namespace zk
