#include "distance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace zk {
namespace {

constexpr double NoDistance = 1e20;

// Edges are looked at in blocks of this many; a block that is too far away is passed as a whole.
constexpr std::size_t BlockSize = 16;

// As in _zkmath, here for the compiler to see: they are what most of the time goes to.
inline TXYZ Minus(const TXYZ& a, const TXYZ& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline double Dot(const TXYZ& a, const TXYZ& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

struct Box {
    TXYZ low, high;

    void Extend(const TXYZ& p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    void Extend(const Box& o) {
        Extend(o.low);
        Extend(o.high);
    }
};

Box EmptyBox() {
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    return {{Infinity, Infinity, Infinity}, {-Infinity, -Infinity, -Infinity}};
}

double Gap(double low, double high, double otherLow, double otherHigh) {
    return std::max({0.0, low - otherHigh, otherLow - high});
}

// Less than the square of any distance between them, also after rounding.
double Bound2(const Box& a, const Box& b) {
    const double x = Gap(a.low.x, a.high.x, b.low.x, b.high.x);
    const double y = Gap(a.low.y, a.high.y, b.low.y, b.high.y);
    const double z = Gap(a.low.z, a.high.z, b.low.z, b.high.z);
    return (x * x + y * y + z * z) * (1 - 1e-9);
}

struct Edges {
    std::span<const TXYZ> points;
    std::vector<Box> boxes;
    std::vector<Box> blocks;

    explicit Edges(std::span<const TXYZ> from) : points(from) {
        boxes.reserve(points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            Box box = EmptyBox();
            box.Extend(points[i]);
            box.Extend(End(i));
            boxes.push_back(box);
            if (i % BlockSize == 0)
                blocks.push_back(EmptyBox());
            blocks.back().Extend(box);
        }
    }
    const TXYZ& End(std::size_t i) const { return points[i + 1 < points.size() ? i + 1 : 0]; }
};

// The place on a segment that is nearest to p.
double Foot(const TXYZ& p, const TXYZ& start, const TXYZ& direction, double length2) {
    if (!(length2 > 0))
        return 0;
    return std::clamp(Dot(Minus(p, start), direction) / length2, 0.0, 1.0);
}

TXYZ At(const TXYZ& start, const TXYZ& end, const TXYZ& direction, double place) {
    return place <= 0 ? start
           : place >= 1
               ? end
               : TXYZ{start.x + direction.x * place, start.y + direction.y * place, start.z + direction.z * place};
}

}  // namespace

namespace detail {

NearestPoints Nearest(const TXYZ& a0, const TXYZ& a1, const TXYZ& b0, const TXYZ& b1) {
    const TXYZ u = Minus(a1, a0);
    const TXYZ v = Minus(b1, b0);
    const double uu = Dot(u, u);
    const double vv = Dot(v, v);
    NearestPoints best{std::numeric_limits<double>::infinity(), 0, 0, a0, b0};
    const auto consider = [&](double s, double t) {
        const TXYZ p = At(a0, a1, u, s);
        const TXYZ q = At(b0, b1, v, t);
        const TXYZ d = Minus(p, q);
        const double distance2 = Dot(d, d);
        if (distance2 < best.distance2)
            best = {distance2, s, t, p, q};
    };
    // Where the segments do not pass over each other, an end of one of them is nearest.
    consider(0, Foot(a0, b0, v, vv));
    consider(1, Foot(a1, b0, v, vv));
    consider(Foot(b0, a0, u, uu), 0);
    consider(Foot(b1, a0, u, uu), 1);
    const double uv = Dot(u, v);
    const double determinant = uu * vv - uv * uv;
    if (best.distance2 > 0 && determinant > 0) {
        const TXYZ w = Minus(a0, b0);
        const double s = (uv * Dot(v, w) - vv * Dot(u, w)) / determinant;
        if (s > 0 && s < 1) {
            const double t = Foot(At(a0, a1, u, s), b0, v, vv);
            if (t > 0 && t < 1)
                consider(s, t);
        }
    }
    return best;
}

}  // namespace detail

double Dist(const TXYZARRAY& a, const TXYZARRAY& b, int& edgeA, double& placeA, TXYZ& pointA, int& edgeB,
            double& placeB, TXYZ& pointB) {
    const Edges as(a.Items());
    const Edges bs(b.Items());
    double best2 = std::numeric_limits<double>::infinity();
    detail::NearestPoints best{};
    std::size_t bestA = 0;
    std::size_t bestB = 0;
    for (std::size_t i = 0; i < as.points.size(); ++i)
        for (std::size_t block = 0; block < bs.blocks.size(); ++block) {
            if (Bound2(as.boxes[i], bs.blocks[block]) > best2)
                continue;
            const std::size_t end = std::min(bs.points.size(), (block + 1) * BlockSize);
            for (std::size_t j = block * BlockSize; j < end; ++j) {
                if (Bound2(as.boxes[i], bs.boxes[j]) > best2)
                    continue;
                const auto nearest = detail::Nearest(as.points[i], as.End(i), bs.points[j], bs.End(j));
                if (nearest.distance2 < best2) {
                    best2 = nearest.distance2;
                    best = nearest;
                    bestA = i;
                    bestB = j;
                }
            }
        }
    if (!std::isfinite(best2))
        return NoDistance;
    edgeA = static_cast<int>(bestA);
    placeA = best.placeA;
    pointA = best.pointA;
    edgeB = static_cast<int>(bestB);
    placeB = best.placeB;
    pointB = best.pointB;
    return std::sqrt(best2);
}

}  // namespace zk
