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
    const auto flat = [&](const auto& seen) {
        for (std::size_t i = 2; i < ring.size(); ++i)
            if (RoughTurn({0, 0}, seen(ring[1]), seen(ring[i])).value != 0)
                return false;
        return true;
    };
    if (!flat([&](const TXY& p) { return TXY{p.x - first.x, p.y - first.y}; }))
        return false;
    double size = 0;
    for (const TXY& p : ring)
        size = std::max({size, std::fabs(p.x - first.x), std::fabs(p.y - first.y)});
    return size >= 1e-140 || flat([&](const TXY& p) {
               return TXY{std::ldexp(p.x - first.x, 800), std::ldexp(p.y - first.y, 800)};
           });
}

}  // namespace

// Which stretches the result is made of: those of each outline that are outside of the other (inside, for the
// intersection), and of those that are shared one, where the result is on one side only.
void Overlay::Choose(bool united) {
    const std::size_t count = sides_.size();
    state_.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        state_[i] = ((sides_[i] & Left) != 0) != united ? Kept : 0;
    std::vector<std::uint8_t> shared;
    const auto within = [&](const Node& node, std::uint32_t direction) {
        const bool a = sectors_[0][node.directions + direction] != 0;
        const bool b = sectors_[1][node.directions + direction] != 0;
        return united ? a || b : a && b;
    };
    for (const Node& node : nodes_) {
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
                    state_[stretch] = 0;
                }
            }
            i = end;
        }
    }
    for (std::size_t i = 0; i < shared.size(); ++i) {
        if (shared[i] == 10)
            state_[i] = Kept;
        else if (shared[i] != 0 && shared[i] != 2)
            DoesNotClose();
    }
    partner_.assign(ends_.size(), None);
    for (const Node& node : nodes_)
        PairEnds(node, united);
}

// At a node of vertices the result is a number of sectors; the two stretches that bound a sector belong together.
void Overlay::PairEnds(const Node& node, bool united) {
    std::vector<std::uint32_t> kept;
    for (std::uint32_t i = node.begin; i < node.end; ++i)
        if (state_[ends_[i].stretch] & Kept)
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
    const Stop& stop = stops_[StopIndex(arrived)];
    if (stop.OfVertices()) {
        const std::uint32_t partner = partner_[positionOfEnd_[arrived.Index()]];
        if (partner == None)
            DoesNotClose();
        return ends_[partner];
    }
    const End before{Before(stop.link), true};
    const End after{stop.link, false};
    if (((state_[before.stretch] ^ state_[after.stretch]) & Kept) == 0)
        DoesNotClose();
    return (state_[before.stretch] & Kept) != 0 ? before : after;
}

// Where two edges cross.
TXY Overlay::PointOf(const Stop& stop, int of) const {
    // The two stops of a crossing agree on the point: that of the first outline makes it.
    const Stop& crossing = of == 0 ? stop : stops_[stop.link];
    const Outline& outline = *outlines_[0];
    return Between(outline.given[crossing.edge], outline.given[outline.After(crossing.edge)], crossing.place);
}

void Overlay::Finish(std::size_t from, Rings& rings) {
    auto& points = rings.points;
    const std::size_t begin = points.size();
    const auto take = [&](const TXY& p) {
        if (points.size() == begin || !(points.back() == p))
            points.push_back(p);
    };
    // The marks of this ring are the last ones.
    std::size_t mark = marks_.size();
    while (mark > 0 && marks_[mark - 1].index >= from)
        markOf_[marks_[--mark].node] = None;
    std::size_t next = from;
    for (std::size_t m = mark; m < marks_.size(); ++m) {
        if (!marks_[m].straight)
            continue;
        for (; next < marks_[m].index; ++next)
            take(ring_[next]);
        ++next;
    }
    for (; next < ring_.size(); ++next)
        take(ring_[next]);
    marks_.resize(mark);
    ring_.resize(from);
    while (points.size() > begin + 1 && points.back() == points[begin])
        points.pop_back();
    if (points.size() - begin >= 3 && !Flat(std::span(points).subspan(begin)))
        rings.ends.push_back(points.size());
    else
        points.resize(begin);
}

// A ring that comes back to a node it has passed falls into two there, so that none of them meets itself. Where two
// edges cross it passes once only.
void Overlay::EmitNode(const End& leaving, bool straight, Rings& rings) {
    const Stop& stop = stops_[StopIndex(leaving)];
    if (!stop.OfVertices()) {
        ring_.push_back(PointOf(stop, SourceOf(leaving.stretch)));
        return;
    }
    const std::uint32_t node = stop.Node();
    if (markOf_[node] != None) {
        const std::uint32_t seen = marks_[markOf_[node]].index;
        splitAtStart_ |= seen == 0;
        marks_[markOf_[node]].straight = false;
        Finish(seen, rings);
        straight = false;
    }
    markOf_[node] = static_cast<std::uint32_t>(marks_.size());
    marks_.push_back({static_cast<std::uint32_t>(ring_.size()), node, straight});
    ring_.push_back(nodes_[node].given);
}

void Overlay::EmitVertices(const End& leaving) {
    const int of = SourceOf(leaving.stretch);
    const Outline& outline = *outlines_[of];
    const std::uint32_t end = After(leaving.stretch);
    const Stop& from = stops_[leaving.stretch];
    const Stop& to = stops_[end];
    std::int64_t count = std::int64_t{to.edge} - (to.AtVertex() ? 1 : 0) - from.edge;
    if (end == first_[of])
        count += outline.Count();
    if (count <= 0)
        return;
    std::uint32_t at = leaving.last ? to.AtVertex() ? outline.Before(to.edge) : to.edge : outline.After(from.edge);
    for (std::int64_t i = 0; i < count; ++i) {
        ring_.push_back(outline.given[at]);
        at = leaving.last ? outline.Before(at) : outline.After(at);
    }
}

void Overlay::TraceFrom(std::uint32_t stretch, Rings& rings) {
    // Against the direction of the outline, which is clockwise.
    const End start{stretch, true};
    End leaving = start;
    End arrivedBy = start;
    splitAtStart_ = false;
    // Passed along one edge.
    const auto straight = [&] {
        const std::uint32_t stop = StopIndex(leaving);
        return stops_[stop].OfVertices() && !stops_[stop].AtVertex() && StopIndex(arrivedBy) == stop;
    };
    // Every stretch is passed once at most, so this ends.
    bool first = true;
    do {
        if (state_[leaving.stretch] & Visited)
            DoesNotClose();
        state_[leaving.stretch] |= Visited;
        EmitNode(leaving, !first && straight(), rings);
        EmitVertices(leaving);
        arrivedBy = {leaving.stretch, !leaving.last};
        leaving = Partner(arrivedBy);
        first = false;
    } while (leaving.Index() != start.Index());
    if (!splitAtStart_ && straight())
        marks_[0].straight = true;
    Finish(0, rings);
}

Rings Overlay::Trace(bool united) {
    Choose(united);
    markOf_.assign(nodes_.size(), None);
    Rings rings;
    for (int of = 0; of < 2; ++of) {
        // From the last stop downwards; the stretch that wraps around comes last.
        const std::uint32_t last = first_[of + 1];
        const auto trace = [&](std::uint32_t stretch) {
            if (state_[stretch] == Kept)
                TraceFrom(stretch, rings);
        };
        for (std::uint32_t i = last; i-- > first_[of];)
            if (i + 1 != last)
                trace(i);
        if (first_[of] != last)
            trace(last - 1);
    }
    return rings;
}

}  // namespace zk::detail
