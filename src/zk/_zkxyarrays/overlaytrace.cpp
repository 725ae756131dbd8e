#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/overlay.h>
#include <zk/_zkxyz/errors.h>

#include <algorithm>
#include <cmath>

namespace zk::detail {
namespace {

[[noreturn]] void DoesNotClose() {
    throw EError("stack error");
}

// A ring that goes there and back and surrounds nothing. The points are the caller's and of any size, so that those too
// small for a product are enlarged.
bool Flat(std::span<const TXY> ring) {
    const TXY& first = ring[0];
    double size = 0;
    for (const TXY& p : ring)
        size = std::max({size, std::fabs(p.x - first.x), std::fabs(p.y - first.y)});
    const int shift = size < 1e-140 ? 800 : 0;
    const auto seen = [&](const TXY& p) {
        return TXY{std::ldexp(p.x - first.x, shift), std::ldexp(p.y - first.y, shift)};
    };
    for (std::size_t i = 2; i < ring.size(); ++i)
        if (RoughTurn({0, 0}, seen(ring[1]), seen(ring[i])).value != 0)
            return false;
    return true;
}

}  // namespace

// Which stretches the result is made of: those of each outline that are outside of the other (inside, for the
// intersection), and of those that are shared one, where the result is on one side only.
void Overlay::Choose(bool united) {
    const std::size_t count = left_.size();
    kept_.resize(count);
    visited_.assign(count, 0);
    for (std::size_t i = 0; i < count; ++i)
        kept_[i] = (left_[i] != 0) != united;
    std::vector<std::uint8_t> shared;
    const auto within = [&](const Node& node, std::uint32_t direction) {
        const bool a = sectors_[0][node.directions + direction] != 0;
        const bool b = sectors_[1][node.directions + direction] != 0;
        return united ? a || b : a && b;
    };
    for (const Node& node : nodes_) {
        if (!OfVertices(node))
            continue;
        for (std::uint32_t i = node.begin; i < node.end;) {
            std::uint32_t end = i;
            bool both[2] = {false, false};
            while (end < node.end && directionOf_[end] == directionOf_[i])
                both[SourceOf(ends_[end++].stretch)] = true;
            if (both[0] && both[1]) {
                if (shared.empty())
                    shared.assign(count, 0);
                const std::uint32_t d = directionOf_[i];
                const bool border = within(node, d) != within(node, d > 0 ? d - 1 : node.directionCount - 1);
                for (std::uint32_t k = i; k < end; ++k) {
                    // Both ends of a stretch are shared with the same others, and say the same. 1: once, 4: and kept.
                    const std::uint32_t stretch = ends_[k].stretch;
                    shared[stretch] = static_cast<std::uint8_t>(shared[stretch] + 1 + (border && k == i ? 4 : 0));
                    kept_[stretch] = 0;
                }
            }
            i = end;
        }
    }
    for (std::size_t i = 0; i < shared.size(); ++i) {
        if (shared[i] == 10)
            kept_[i] = 1;
        else if (shared[i] != 0 && shared[i] != 2)
            DoesNotClose();
    }
    partner_.assign(ends_.size(), None);
    for (const Node& node : nodes_)
        if (OfVertices(node))
            PairEnds(node, united);
}

// At a node of vertices the result is a number of sectors; the two stretches that bound a sector belong together.
void Overlay::PairEnds(const Node& node, bool united) {
    std::vector<std::uint32_t> kept;
    for (std::uint32_t i = node.begin; i < node.end; ++i)
        if (kept_[ends_[i].stretch])
            kept.push_back(i);
    if (kept.size() % 2 != 0)
        DoesNotClose();
    if (kept.empty())
        return;
    // Whether the result is behind the first one. Several in one direction are taken one after the other.
    const std::uint32_t d = directionOf_[kept[0]];
    const std::uint32_t same =
        static_cast<std::uint32_t>(std::ranges::count_if(kept, [&](std::uint32_t i) { return directionOf_[i] == d; }));
    const bool a = sectors_[0][node.directions + d] != 0;
    const bool b = sectors_[1][node.directions + d] != 0;
    const bool behind = (united ? a || b : a && b) == (same % 2 == 1);
    for (std::size_t i = behind ? 0 : 1; i < kept.size() + (behind ? 0 : 1); i += 2) {
        const std::uint32_t one = kept[i];
        const std::uint32_t two = kept[(i + 1) % kept.size()];
        partner_[one] = two;
        partner_[two] = one;
    }
}

Overlay::End Overlay::Partner(const End& arrived) const {
    const int of = SourceOf(arrived.stretch);
    const Node& node = nodes_[StopOf(arrived).node];
    if (OfVertices(node)) {
        const std::uint32_t partner = partner_[positionOfEnd_[arrived.Index()]];
        if (partner == None)
            DoesNotClose();
        return ends_[partner];
    }
    const int other = 1 - of;
    const std::uint32_t stop = node.stops[other];
    const auto count = static_cast<std::uint32_t>(stops_[other].size());
    const End before{StretchOf(other, stop > 0 ? stop - 1 : count - 1), true};
    const End after{StretchOf(other, stop), false};
    if (kept_[before.stretch] == kept_[after.stretch])
        DoesNotClose();
    return kept_[before.stretch] ? before : after;
}

void Overlay::Finish(std::size_t from, Rings& rings) {
    auto& points = rings.points;
    const std::size_t begin = points.size();
    for (std::size_t i = from; i < ring_.size(); ++i) {
        const Emitted& emitted = ring_[i];
        if (emitted.node != None)
            seenAt_[emitted.node] = None;
        if (!emitted.straight && (points.size() == begin || !(points.back() == emitted.point)))
            points.push_back(emitted.point);
    }
    ring_.resize(from);
    while (points.size() > begin + 1 && points.back() == points[begin])
        points.pop_back();
    if (points.size() - begin >= 3 && !Flat(std::span(points).subspan(begin)))
        rings.ends.push_back(points.size());
    else
        points.resize(begin);
}

// A ring that comes back to a node it has passed falls into two there, so that none of them meets itself.
void Overlay::EmitNode(std::uint32_t node, bool straight, Rings& rings) {
    const std::uint32_t seen = seenAt_[node];
    if (seen != None) {
        splitAtStart_ |= seen == 0;
        ring_[seen].straight = false;
        Finish(seen, rings);
        straight = false;
    }
    seenAt_[node] = static_cast<std::uint32_t>(ring_.size());
    ring_.push_back({nodes_[node].given, node, straight});
}

void Overlay::EmitVertices(const End& leaving) {
    const int of = SourceOf(leaving.stretch);
    const Outline& outline = *outlines_[of];
    const Stop& from = StopOf({leaving.stretch, false});
    const Stop& to = StopOf({leaving.stretch, true});
    const std::uint32_t first = outline.After(from.edge);
    const std::uint32_t last = to.atVertex ? outline.Before(to.edge) : to.edge;
    const bool wraps = StopIndex({leaving.stretch, true}) == 0;
    const std::int64_t n = outline.Count();
    const std::int64_t count =
        (to.atVertex ? std::int64_t{to.edge} - 1 : std::int64_t{to.edge}) - from.edge + (wraps ? n : 0);
    std::uint32_t at = leaving.last ? last : first;
    for (std::int64_t i = 0; i < count; ++i) {
        ring_.push_back({outline.given[at], None, false});
        at = leaving.last ? outline.Before(at) : outline.After(at);
    }
}

void Overlay::TraceFrom(std::uint32_t stretch, Rings& rings) {
    // Against the direction of the outline, which is clockwise.
    const End start{stretch, true};
    End leaving = start;
    End arrivedBy = start;
    bool first = true;
    splitAtStart_ = false;
    // Every stretch is passed once at most, so this ends.
    do {
        if (visited_[leaving.stretch])
            DoesNotClose();
        visited_[leaving.stretch] = 1;
        const Stop& stop = StopOf(leaving);
        const bool straight = !first && !stop.atVertex && StopIndex(arrivedBy) == StopIndex(leaving) &&
                              SourceOf(arrivedBy.stretch) == SourceOf(leaving.stretch);
        EmitNode(stop.node, straight, rings);
        EmitVertices(leaving);
        arrivedBy = {leaving.stretch, !leaving.last};
        leaving = Partner(arrivedBy);
        first = false;
    } while (!(leaving.Index() == start.Index()));
    if (!splitAtStart_ && !StopOf(start).atVertex && StopIndex(arrivedBy) == StopIndex(start) &&
        SourceOf(arrivedBy.stretch) == SourceOf(start.stretch))
        ring_[0].straight = true;
    Finish(0, rings);
}

Rings Overlay::Trace(bool united) {
    Choose(united);
    seenAt_.assign(nodes_.size(), None);
    Rings rings;
    for (int of = 0; of < 2; ++of) {
        const auto count = static_cast<std::uint32_t>(stops_[of].size());
        // From the last stop downwards; the stretch that wraps around comes last.
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t stretch = StretchOf(of, i + 1 < count ? count - 2 - i : count - 1);
            if (kept_[stretch] && !visited_[stretch])
                TraceFrom(stretch, rings);
        }
    }
    return rings;
}

}  // namespace zk::detail
