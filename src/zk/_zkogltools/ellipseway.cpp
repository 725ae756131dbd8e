#include "ellipseway.h"

#include <zk/_zkmath.h>

#include <cmath>
#include <numbers>

namespace zk {

TEllipseWay::TEllipseWay(QObject* owner) : TStdBases(owner) {}

TEllipseWay::~TEllipseWay() {
    AnnounceRemoval();
}

TBAse TEllipseWay::CalculateBAse(double t) {
    const double angle = 2 * std::numbers::pi * t;
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    TBAse local = Unitbase;
    local.Origin = {a_ * cosine, b_ * sine, 0};
    local.XAxis = {sine, -cosine, 0};
    local.YAxis = Vekt(local.ZAxis, local.XAxis);

    const TBAse world = GetWorldBAse();
    const TXYZ origin = BaseGetAbs(world, local.Origin);
    const auto inWorld = [&](const TXYZ& axis) { return Sub(BaseGetAbs(world, Add(local.Origin, axis)), origin); };
    return {origin, inWorld(local.XAxis), inWorld(local.YAxis), inWorld(local.ZAxis)};
}

}  // namespace zk
