#include "plane.h"

#include <zk/_zkmath/vector.h>

#include <cmath>

namespace zk {
namespace {

// What stands for the distance of a point whose foot is not on the segment.
constexpr double NoDistance = 1e20;
constexpr double DegenerateLength = 1e-5;
constexpr double NearlyAlongZ = 0.001;
constexpr double Parallel = 1e-7;

}  // namespace

TPlane NewPlane(const TBAse& b) {
    return {b.Origin, b.ZAxis};
}

void NewPlane(const TBAse& b, TPlane& p) {
    p = NewPlane(b);
}

TPlane NewPlane(const TXYZ& p1, const TXYZ& p2, const TXYZ& p3) {
    return {p1, Normalize(Vekt(Sub(p2, p1), Sub(p3, p1)))};
}

void NewPlane(const TXYZ& p1, const TXYZ& p2, const TXYZ& p3, TPlane& p) {
    p = NewPlane(p1, p2, p3);
}

TGerade NewGerade(const TXYZ& p, const TXYZ& d) {
    return {p, d};
}

void NewGerade(const TXYZ& p, const TXYZ& d, TGerade& g) {
    g = NewGerade(p, d);
}

TBAse PlaneToBase(const TPlane& p, const TXYZ* xdir) {
    const TXYZ& N = p.Normal;
    TBAse b;
    if (xdir) {
        b.XAxis = *xdir;
    } else {
        const bool alongZ = std::fabs(N.x) < NearlyAlongZ && std::fabs(N.y) < NearlyAlongZ;
        b.XAxis = Vekt(alongZ ? TXYZ{0, 1, 0} : TXYZ{0, 0, 1}, N);
    }
    b.Origin = p.Origin;
    b.ZAxis = N;
    b.YAxis = Vekt(b.XAxis, b.ZAxis);
    _Normalize(b.XAxis);
    _Normalize(b.YAxis);
    _Normalize(b.ZAxis);
    return b;
}

void PlaneToBase(const TPlane& p, const TXYZ* xdir, TBAse& b) {
    b = PlaneToBase(p, xdir);
}

TXYZ AnyNormalvektor(const TXYZ& v) {
    if (Equals(0, Len(v)))
        return {0, 0, 0};
    if (Equals(0, v.x))
        return {1, 0, 0};
    if (Equals(0, v.y))
        return {0, 1, 0};
    if (Equals(0, v.z))
        return {0, 0, 1};
    return {0, 1, -v.y / v.z};
}

void AnyNormalvektor(const TXYZ& v, TXYZ& n) {
    n = AnyNormalvektor(v);
}

double Dist(const TXYZ& p, const TGerade& g, double& t, TXYZ& foot) {
    const TXYZ start = g.Origin;
    const TXYZ u = Sub(Add(start, g.Direction), start);
    const double length = Len(u);
    if (length <= DegenerateLength)
        return NoDistance;
    const TXYZ w = Sub(p, start);
    const double projection = Skal(u, w) / length;
    const double height2 = std::fabs(Skal(w, w) - projection * projection);
    // Cannot happen to an absolute value; kept as a guard.
    if (Less(height2, 0))
        return NoDistance;
    const double height = std::sqrt(height2);
    t = projection / length;
    foot = Add(start, Mul(u, t));
    return !Less(1, t) && !Less(t, 0) ? height : NoDistance;
}

bool _Cross(const TGerade& g, const TPlane& p, TXYZ& x, double& t) {
    const TXYZ origin = g.Origin;
    const TXYZ normal = p.Normal;
    const double height = Skal(Sub(origin, p.Origin), normal);
    const TXYZ direction = Normalize(g.Direction);
    const double slope = Skal(direction, normal);
    x = origin;
    // Written so that a slope that is no number counts as parallel too.
    if (!(std::fabs(slope) >= Parallel))
        return false;
    t = -height / slope;
    x = Add(origin, Mul(direction, t));
    return true;
}

}  // namespace zk
