#include "face.h"

#include <zk/_zkxyarrays/exact.h>

#include <algorithm>
#include <cmath>

namespace zk::detail {
namespace {

double Coordinate(const TXYZ& p, int axis) {
    return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

// As in _zkmath, here for the compiler to see.
TXYZ Minus(const TXYZ& a, const TXYZ& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

std::vector<TXYZ> Distinct(std::span<const TXYZ> points) {
    std::vector<TXYZ> distinct;
    distinct.reserve(points.size());
    for (const TXYZ& p : points)
        if (distinct.empty() || !(distinct.back() == p))
            distinct.push_back(p);
    while (distinct.size() > 1 && distinct.back() == distinct.front())
        distinct.pop_back();
    return distinct;
}

// What exact decisions can take: beyond Largest a face has no pieces, what is below Smallest counts as 0.
constexpr double Largest = 1e70;
constexpr double Smallest = 1e-60;

bool InRange(const TXYZ& p) {
    return (std::fabs(p.x) < Largest) & (std::fabs(p.y) < Largest) & (std::fabs(p.z) < Largest);
}

}  // namespace

TXY Face::Flat(const TXYZ& p) const {
    const double x = Coordinate(p, axisX);
    const double y = Coordinate(p, axisY);
    return {std::fabs(x) < Smallest ? 0 : x, std::fabs(y) < Smallest ? 0 : y};
}

std::uint32_t Face::Add(const TXYZ& point) {
    const auto v = static_cast<std::uint32_t>(vertices.size());
    vertices.push_back({point, Flat(point), v, v});
    return v;
}

std::uint32_t Face::InsertAfter(std::uint32_t v, const TXYZ& point) {
    const std::uint32_t added = Add(point);
    const std::uint32_t next = vertices[v].next;
    vertices[added].previous = v;
    vertices[added].next = next;
    vertices[v].next = added;
    vertices[next].previous = added;
    return added;
}

bool Face::AddRing(std::span<const TXYZ> points, bool hole) {
    const std::vector<TXYZ> distinct = Distinct(points);
    const std::size_t n = distinct.size();
    if (n < 3 || !std::ranges::all_of(distinct, InRange))
        return false;
    const TXY first = Flat(distinct[0]);
    const TXY second = Flat(distinct[1]);
    double area = 0;
    bool flat = true;
    TXY at = second;
    for (std::size_t i = 2; i < n; ++i) {
        const TXY next = Flat(distinct[i]);
        area += RoughTurn(first, at, next).value;
        flat = flat && Orientation(first, second, next) == 0;
        at = next;
    }
    if (flat)
        return false;
    // An outline is brought to run counter-clockwise by the order of the axes, a hole by its own.
    if (!hole && area < 0)
        std::swap(axisX, axisY);
    const bool turned = hole && area > 0;
    const auto start = static_cast<std::uint32_t>(vertices.size());
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint32_t v = Add(distinct[turned ? n - 1 - i : i]);
        vertices[v].previous = v - 1;
        vertices[v].next = v + 1;
    }
    vertices[start].previous = start + static_cast<std::uint32_t>(n) - 1;
    vertices.back().next = start;
    rings.push_back({start, static_cast<std::uint32_t>(n)});
    return true;
}

bool Face::SetOutline(std::span<const TXYZ> points) {
    TXYZ normal;
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const TXYZ u = Minus(points[i], points[0]);
        const TXYZ v = Minus(points[i + 1], points[0]);
        normal = {normal.x + (u.y * v.z - u.z * v.y), normal.y + (u.z * v.x - u.x * v.z),
                  normal.z + (u.x * v.y - u.y * v.x)};
    }
    const double x = std::fabs(normal.x);
    const double y = std::fabs(normal.y);
    const double z = std::fabs(normal.z);
    // The plane that the outline is largest in.
    if (z >= x && z >= y) {
        axisX = 0;
        axisY = 1;
    } else if (y >= x) {
        axisX = 0;
        axisY = 2;
    } else {
        axisX = 1;
        axisY = 2;
    }
    return AddRing(points, false);
}

void Face::AddHole(std::span<const TXYZ> points) {
    AddRing(points, true);
}

bool Face::Opens(std::uint32_t v, const TXY& q) const {
    const TXY& p = vertices[vertices[v].previous].flat;
    const TXY& at = vertices[v].flat;
    const TXY& n = vertices[vertices[v].next].flat;
    const int before = Orientation(p, at, q);
    const int after = Orientation(at, n, q);
    return Orientation(p, at, n) > 0 ? before >= 0 && after >= 0
                                     : before > 0 || after > 0 || (before == 0 && after == 0);
}

}  // namespace zk::detail
