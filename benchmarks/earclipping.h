#pragma once

#include "polygon_inputs.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

// A yardstick for convex pieces: the way that is usual where a face has to be cut up fast. Holes are joined to the
// outline one by one from left to right, by a bridge from their leftmost vertex; ears are clipped off, with the
// vertices sorted along a curve that fills the plane so that only those near an ear are looked at; then the triangles
// are joined to convex pieces wherever a diagonal is not needed (Hertel & Mehlhorn 1983). Plain arithmetic, no care for
// degenerate input.
namespace earclipping {

using zk::TXY;

inline double Turn(const TXY& a, const TXY& b, const TXY& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

class Cutter {
  public:
    // The pieces; none where clipping got stuck.
    std::vector<inputs::Poly> Run(const inputs::FaceInput& face) {
        std::size_t most = face.outline.size();
        for (const auto& hole : face.holes)
            most += hole.size() + 2;
        nodes_.reserve(most);
        std::uint32_t outline = Ring(face.outline, true);
        std::vector<std::uint32_t> lefts;
        for (const auto& hole : face.holes) {
            const std::uint32_t first = Ring(hole, false);
            std::uint32_t left = first;
            for (std::uint32_t v = nodes_[first].next; v != first; v = nodes_[v].next)
                if (nodes_[v].p.x < nodes_[left].p.x)
                    left = v;
            lefts.push_back(left);
        }
        std::ranges::sort(lefts, {}, [&](std::uint32_t v) { return nodes_[v].p.x; });
        for (const std::uint32_t left : lefts)
            Join(outline, left);
        Sort(outline);
        Clip(outline);
        return Merge();
    }

  private:
    static constexpr std::uint32_t None = 0xffffffff;
    struct Node {
        TXY p;
        std::uint32_t next, previous;
        std::uint32_t z = 0;
        std::uint32_t zNext = None, zPrevious = None;
    };

    const TXY& P(std::uint32_t v) const { return nodes_[v].p; }

    std::uint32_t Add(const TXY& p) {
        nodes_.push_back({p, 0, 0});
        return static_cast<std::uint32_t>(nodes_.size()) - 1;
    }

    std::uint32_t Ring(const inputs::Poly& points, bool counterClockwise) {
        double area = 0;
        for (std::size_t i = 0; i < points.size(); ++i)
            area += Turn({0, 0}, points[i], points[(i + 1) % points.size()]);
        const auto first = static_cast<std::uint32_t>(nodes_.size());
        const auto n = static_cast<std::uint32_t>(points.size());
        for (std::uint32_t i = 0; i < n; ++i) {
            const std::uint32_t v = Add(points[(area > 0) == counterClockwise ? i : n - 1 - i]);
            nodes_[v].previous = i > 0 ? v - 1 : first + n - 1;
            nodes_[v].next = i + 1 < n ? v + 1 : first;
        }
        return first;
    }

    bool InTriangle(const TXY& a, const TXY& b, const TXY& c, const TXY& p) const {
        return Turn(a, b, p) >= 0 && Turn(b, c, p) >= 0 && Turn(c, a, p) >= 0;
    }

    // A bridge from the hole's leftmost vertex to what a ray from there to the left meets, or to a vertex in between.
    void Join(std::uint32_t outline, std::uint32_t left) {
        const TXY h = P(left);
        double nearest = -std::numeric_limits<double>::infinity();
        std::uint32_t bridge = None;
        std::uint32_t v = outline;
        do {
            const std::uint32_t w = nodes_[v].next;
            const TXY& a = P(v);
            const TXY& b = P(w);
            // The outline runs down where the face is on the right of it.
            if (h.y <= a.y && h.y >= b.y && a.y != b.y) {
                const double x = a.x + (h.y - a.y) * (b.x - a.x) / (b.y - a.y);
                if (x <= h.x && x > nearest) {
                    nearest = x;
                    bridge = a.x < b.x ? v : w;
                }
            }
            v = w;
        } while (v != outline);
        if (bridge == None)
            return;
        const TXY m = P(bridge);
        const TXY on{nearest, h.y};
        double least = std::numeric_limits<double>::infinity();
        const std::uint32_t start = bridge;
        v = start;
        do {
            const TXY& p = P(v);
            if (p.x <= h.x && p.x >= m.x && p.x != h.x &&
                (h.y < m.y ? InTriangle(on, h, m, p) : InTriangle(h, on, m, p))) {
                const double slope = std::fabs(h.y - p.y) / (h.x - p.x);
                if (Opens(v, h) && (slope < least || (slope == least && p.x > P(bridge).x))) {
                    bridge = v;
                    least = slope;
                }
            }
            v = nodes_[v].next;
        } while (v != start);
        const std::uint32_t a = Add(P(bridge));
        const std::uint32_t b = Add(h);
        const std::uint32_t after = nodes_[bridge].next;
        const std::uint32_t before = nodes_[left].previous;
        Link(bridge, left);
        Link(before, b);
        Link(b, a);
        Link(a, after);
    }

    void Link(std::uint32_t a, std::uint32_t b) {
        nodes_[a].next = b;
        nodes_[b].previous = a;
    }

    bool Opens(std::uint32_t v, const TXY& q) const {
        const TXY& p = P(nodes_[v].previous);
        const TXY& n = P(nodes_[v].next);
        return Turn(p, P(v), n) > 0 ? Turn(p, P(v), q) >= 0 && Turn(P(v), n, q) >= 0
                                    : Turn(p, P(v), q) > 0 || Turn(P(v), n, q) > 0;
    }

    // Bits of both coordinates in turn.
    std::uint32_t Z(const TXY& p) const {
        const auto spread = [](std::uint32_t x) {
            x = (x | x << 8) & 0x00ff00ff;
            x = (x | x << 4) & 0x0f0f0f0f;
            x = (x | x << 2) & 0x33333333;
            return (x | x << 1) & 0x55555555;
        };
        return spread(static_cast<std::uint32_t>((p.x - low_.x) * scale_)) |
               spread(static_cast<std::uint32_t>((p.y - low_.y) * scale_)) << 1;
    }

    void Sort(std::uint32_t first) {
        low_ = P(first);
        TXY high = low_;
        std::vector<std::uint32_t> order;
        order.reserve(nodes_.size());
        std::uint32_t v = first;
        do {
            low_ = {std::min(low_.x, P(v).x), std::min(low_.y, P(v).y)};
            high = {std::max(high.x, P(v).x), std::max(high.y, P(v).y)};
            order.push_back(v);
            v = nodes_[v].next;
        } while (v != first);
        count_ = order.size();
        scale_ = 32767 / std::max(high.x - low_.x, high.y - low_.y);
        for (const std::uint32_t k : order)
            nodes_[k].z = Z(P(k));
        std::ranges::sort(order, {}, [&](std::uint32_t k) { return nodes_[k].z; });
        for (std::size_t i = 0; i + 1 < order.size(); ++i) {
            nodes_[order[i]].zNext = order[i + 1];
            nodes_[order[i + 1]].zPrevious = order[i];
        }
    }

    bool IsEar(std::uint32_t v) const {
        const std::uint32_t u = nodes_[v].previous;
        const std::uint32_t w = nodes_[v].next;
        const TXY& a = P(u);
        const TXY& b = P(v);
        const TXY& c = P(w);
        if (Turn(a, b, c) <= 0)
            return false;
        const TXY low{std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})};
        const TXY high{std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})};
        const std::uint32_t zLow = Z(low);
        const std::uint32_t zHigh = Z(high);
        const auto inTheWay = [&](std::uint32_t k) {
            const TXY& p = P(k);
            return k != u && k != w && p.x >= low.x && p.x <= high.x && p.y >= low.y && p.y <= high.y && !(p == a) &&
                   InTriangle(a, b, c, p) && Turn(P(nodes_[k].previous), p, P(nodes_[k].next)) <= 0;
        };
        for (std::uint32_t k = nodes_[v].zPrevious; k != None && nodes_[k].z >= zLow; k = nodes_[k].zPrevious)
            if (inTheWay(k))
                return false;
        for (std::uint32_t k = nodes_[v].zNext; k != None && nodes_[k].z <= zHigh; k = nodes_[k].zNext)
            if (inTheWay(k))
                return false;
        return true;
    }

    void Clip(std::uint32_t v) {
        triangles_.reserve(3 * count_);
        std::size_t left = count_;
        std::size_t looked = 0;
        while (left > 2 && looked <= left) {
            const std::uint32_t u = nodes_[v].previous;
            const std::uint32_t w = nodes_[v].next;
            if (!IsEar(v)) {
                v = w;
                ++looked;
                continue;
            }
            triangles_.insert(triangles_.end(), {u, v, w});
            Link(u, w);
            const std::uint32_t zBefore = nodes_[v].zPrevious;
            const std::uint32_t zAfter = nodes_[v].zNext;
            if (zBefore != None)
                nodes_[zBefore].zNext = zAfter;
            if (zAfter != None)
                nodes_[zAfter].zPrevious = zBefore;
            --left;
            looked = 0;
            // The neighbour is passed over, which makes for fewer slivers.
            v = nodes_[w].next;
        }
        complete_ = left <= 2;
    }

    // Half edge i goes from corner i of the triangles to the next one of its triangle.
    std::vector<inputs::Poly> Merge() {
        const auto count = static_cast<std::uint32_t>(triangles_.size());
        std::vector<std::uint32_t> next(count), previous(count), twin(count, None);
        std::unordered_map<std::uint64_t, std::uint32_t> byEnds;
        byEnds.reserve(count);
        for (std::uint32_t e = 0; e < count; ++e) {
            next[e] = e % 3 == 2 ? e - 2 : e + 1;
            previous[e] = e % 3 == 0 ? e + 2 : e - 1;
        }
        for (std::uint32_t e = 0; e < count; ++e) {
            const std::uint64_t from = triangles_[e];
            const std::uint64_t to = triangles_[next[e]];
            const auto found = byEnds.find(to << 32 | from);
            if (found == byEnds.end()) {
                byEnds[from << 32 | to] = e;
            } else {
                twin[e] = found->second;
                twin[found->second] = e;
            }
        }
        const auto at = [&](std::uint32_t e) -> const TXY& { return P(triangles_[e]); };
        std::vector<std::uint8_t> gone(count, 0);
        for (std::uint32_t e = 0; e < count; ++e) {
            const std::uint32_t t = twin[e];
            if (t == None || t < e)
                continue;
            if (Turn(at(previous[e]), at(e), at(next[next[t]])) < 0 ||
                Turn(at(previous[t]), at(t), at(next[next[e]])) < 0)
                continue;
            next[previous[e]] = next[t];
            previous[next[t]] = previous[e];
            next[previous[t]] = next[e];
            previous[next[e]] = previous[t];
            gone[e] = gone[t] = 1;
        }
        std::vector<inputs::Poly> pieces;
        for (std::uint32_t start = 0; complete_ && start < count; ++start) {
            if (gone[start])
                continue;
            inputs::Poly& piece = pieces.emplace_back();
            for (std::uint32_t e = start; !gone[e]; e = next[e]) {
                gone[e] = 1;
                piece.push_back(at(e));
            }
        }
        return pieces;
    }

    std::vector<Node> nodes_;
    std::vector<std::uint32_t> triangles_;
    TXY low_{};
    double scale_ = 1;
    std::size_t count_ = 0;
    bool complete_ = false;
};

}  // namespace earclipping
