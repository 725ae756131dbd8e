#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/overlay.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace zk::detail {

// Whether, along an edge of an outline, the crossing or passing a comes before b. Both are indexes: crossings first,
// passings counted on from there.
bool Overlay::Before(int of, std::uint32_t a, std::uint32_t b) const {
    const auto count = static_cast<std::uint32_t>(crossings_.size());
    const Outline& mine = *outlines_[of];
    const Outline& theirs = *outlines_[1 - of];
    const auto passing = [&](std::uint32_t i) -> const Passing& { return passing_[of][i - count]; };
    const bool aCrosses = a < count;
    const bool bCrosses = b < count;
    if (!aCrosses && passing(a).atVertex)
        return a != b;
    if (!bCrosses && passing(b).atVertex)
        return false;
    const std::uint32_t edge = aCrosses ? crossings_[a].edge[of] : passing(a).edge;
    const TXY& p0 = mine.work[edge];
    const TXY& p1 = mine.work[mine.After(edge)];
    const auto start = [&](const Crossing& c) -> const TXY& { return theirs.work[c.edge[1 - of]]; };
    const auto end = [&](const Crossing& c) -> const TXY& { return theirs.work[theirs.After(c.edge[1 - of])]; };
    if (aCrosses && bCrosses) {
        const Crossing& x = crossings_[a];
        const Crossing& y = crossings_[b];
        if (x.place[of] + x.error[of] < y.place[of] - y.error[of])
            return true;
        if (y.place[of] + y.error[of] < x.place[of] - x.error[of] || x.edge[1 - of] == y.edge[1 - of])
            return false;
        const int order = CompareAlong(p0, p1, start(x), end(x), start(y), end(y));
        return order != 0 ? order < 0 : x.edge[1 - of] < y.edge[1 - of];
    }
    if (!aCrosses && !bCrosses) {
        const TXY& u = nodes_[passing(a).node].work;
        const TXY& v = nodes_[passing(b).node].work;
        if (p0.x != p1.x)
            return p0.x < p1.x ? u.x < v.x : u.x > v.x;
        return p0.y < p1.y ? u.y < v.y : u.y > v.y;
    }
    // A vertex and a crossing: the vertex comes first where it is on the side that the edge starts from.
    const Crossing& crossing = crossings_[aCrosses ? a : b];
    const TXY& q0 = start(crossing);
    const TXY& q1 = end(crossing);
    const int side = Orientation(q0, q1, nodes_[passing(aCrosses ? b : a).node].work);
    const bool vertexFirst = side != 0 && side == Orientation(q0, q1, p0);
    return aCrosses != vertexFirst;
}

Overlay::Stop Overlay::StopAt(int of, const Passing& passing) {
    const Outline& outline = *outlines_[of];
    Node& node = nodes_[passing.node];
    Stop stop{passing.edge, passing.node | VertexBit, -1};
    if (passing.atVertex) {
        node.given = outline.given[stop.edge];
        return stop;
    }
    const TXY& p = outline.work[stop.edge];
    const TXY& q = outline.work[outline.After(stop.edge)];
    const double place = std::fabs(q.x - p.x) > std::fabs(q.y - p.y) ? (node.work.x - p.x) / (q.x - p.x)
                                                                     : (node.work.y - p.y) / (q.y - p.y);
    stop.place = std::max(place, 0.0);
    return stop;
}

// Calls take(i) for every crossing and passing along an outline, in order: by edge without comparing, then along each
// edge by the rounded places, where these are far enough apart. What was found twice comes twice, in a row.
template <class Take>
void Overlay::SortAlong(int of, Take take) {
    struct Item {
        double place;
        double error;
        std::uint32_t index;
    };
    const std::uint32_t edges = outlines_[of]->Count();
    std::vector<std::uint32_t> start(edges + 1, 0);
    for (const Crossing& crossing : crossings_)
        ++start[crossing.edge[of]];
    for (const Passing& passing : passing_[of])
        ++start[passing.edge];
    std::partial_sum(start.begin(), start.end(), start.begin());
    std::vector<Item> items(start.back());
    // Filled from the end, so that each start comes to rest where its edge begins.
    auto index = static_cast<std::uint32_t>(crossings_.size() + passing_[of].size());
    for (std::size_t i = passing_[of].size(); i-- > 0;) {
        const Passing& passing = passing_[of][i];
        items[--start[passing.edge]] = {StopAt(of, passing).place, 2e-15, --index};
    }
    for (std::size_t i = crossings_.size(); i-- > 0;) {
        const Crossing& crossing = crossings_[i];
        items[--start[crossing.edge[of]]] = {crossing.place[of], crossing.error[of], --index};
    }
    const auto less = [](const Item& a, const Item& b) { return a.place < b.place; };
    for (std::uint32_t edge = 0; edge < edges; ++edge) {
        Item* const begin = items.data() + start[edge];
        Item* const end = items.data() + start[edge + 1];
        if (end - begin > 1) {
            // Edge by edge is the order that they were found in, one way or the other.
            if (begin[1].place < begin[0].place)
                std::reverse(begin, end);
            if (!std::is_sorted(begin, end, less))
                std::sort(begin, end, less);
            bool clear = true;
            for (const Item* item = begin + 1; item < end; ++item)
                clear &= item->place - item[-1].place > item->error + item[-1].error;
            if (!clear)
                std::sort(begin, end, [&](const Item& a, const Item& b) { return Before(of, a.index, b.index); });
        }
        for (const Item* item = begin; item < end; ++item)
            take(item->index);
    }
}

void Overlay::MakeStops() {
    // Along the first outline what was found twice is left out.
    std::vector<Crossing> crossings;
    crossings.reserve(crossings_.size());
    stops_.reserve(2 * crossings_.size() + passing_[0].size() + passing_[1].size());
    const auto found = static_cast<std::uint32_t>(crossings_.size());
    std::vector<std::uint32_t> stopOf;
    stopOf.reserve(found);
    SortAlong(0, [&](std::uint32_t i) {
        if (i >= found) {
            stops_.push_back(StopAt(0, passing_[0][i - found]));
            return;
        }
        const Crossing& crossing = crossings_[i];
        if (!crossings.empty() && crossings.back().edge[0] == crossing.edge[0] &&
            crossings.back().edge[1] == crossing.edge[1])
            return;
        stopOf.push_back(static_cast<std::uint32_t>(stops_.size()));
        stops_.push_back({crossing.edge[0], None, crossing.place[0]});
        crossings.push_back(crossing);
    });
    crossings_ = std::move(crossings);
    const auto count = static_cast<std::uint32_t>(crossings_.size());
    first_[1] = static_cast<std::uint32_t>(stops_.size());
    SortAlong(1, [&](std::uint32_t i) {
        if (i >= count) {
            stops_.push_back(StopAt(1, passing_[1][i - count]));
            return;
        }
        const std::uint32_t stop = stopOf[i];
        stops_[stop].link = static_cast<std::uint32_t>(stops_.size());
        stops_.push_back({crossings_[i].edge[1], stop, crossings_[i].place[1]});
    });
    first_[2] = static_cast<std::uint32_t>(stops_.size());
}

// The ends at each node of vertices, in order around it.
void Overlay::MakeEnds() {
    if (nodes_.empty())
        return;
    struct Ray {
        std::uint32_t node;
        TXY towards;
        End end;
    };
    std::vector<Ray> rays;
    for (int of = 0; of < 2; ++of) {
        const Outline& outline = *outlines_[of];
        for (std::uint32_t i = first_[of]; i < first_[of + 1]; ++i) {
            const Stop& stop = stops_[i];
            if (!stop.OfVertices())
                continue;
            rays.push_back({stop.Node(), outline.work[outline.After(stop.edge)], {i, false}});
            rays.push_back({stop.Node(),
                            outline.work[stop.AtVertex() ? outline.Before(stop.edge) : stop.edge],
                            {Before(i), true}});
        }
    }
    const auto upper = [](const TXY& p, const TXY& q) { return q.y > p.y || (q.y == p.y && q.x > p.x); };
    // -1, 0, 1: the direction of a is before, the same as, or behind that of b.
    const auto compare = [&](const Ray& a, const Ray& b) {
        const TXY& p = nodes_[a.node].work;
        const bool up = upper(p, a.towards);
        if (up != upper(p, b.towards))
            return up ? -1 : 1;
        return -Orientation(p, a.towards, b.towards);
    };
    std::sort(rays.begin(), rays.end(), [&](const Ray& a, const Ray& b) {
        if (a.node != b.node)
            return a.node < b.node;
        const int order = compare(a, b);
        return order != 0 ? order < 0 : a.end.Index() < b.end.Index();
    });
    positionOfEnd_.assign(2 * stops_.size(), None);
    for (std::size_t i = 0; i < rays.size(); ++i) {
        const Ray& ray = rays[i];
        Node& node = nodes_[ray.node];
        const auto position = static_cast<std::uint32_t>(i);
        const bool first = i == 0 || rays[i - 1].node != ray.node;
        if (first) {
            node.begin = position;
            node.directions = static_cast<std::uint32_t>(parity_[0].size());
        }
        if (first || compare(rays[i - 1], ray) != 0) {
            ++node.directionCount;
            parity_[0].push_back(0);
            parity_[1].push_back(0);
        }
        node.end = position + 1;
        parity_[SourceOf(ray.end.stretch)].back() ^= 1;
        ends_.push_back(ray.end);
        directionOf_.push_back(node.directionCount - 1);
        positionOfEnd_[ray.end.Index()] = position;
    }
    sectors_[0].assign(parity_[0].size(), 0);
    sectors_[1].assign(parity_[0].size(), 0);
}

}  // namespace zk::detail
