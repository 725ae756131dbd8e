#include <zk/_zkxyarrays/edgegrid.h>
#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/overlay.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace zk::detail {
namespace {

bool IsFinite(const TXY& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

// The range of exact arithmetic. Outside of it the work copy is scaled by a power of two, and what is then still too
// small is rounded.
constexpr int LargestExponent = 238;
constexpr int SmallestExponent = -205;
constexpr int ScaledExponent = 200;
constexpr int GridExponent = -260;

double Rounded(double x) {
    return std::ldexp(std::nearbyint(std::ldexp(x, -GridExponent)), GridExponent);
}

bool WithoutArea(const std::vector<TXY>& points) {
    for (std::size_t i = 2; i < points.size(); ++i)
        if (Orientation(points[0], points[1], points[i]) != 0)
            return false;
    return true;
}

// Within the box of an edge on whose line p is.
bool Between(const TXY& a, const TXY& b, const TXY& p) {
    return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

bool LessXY(const TXY& a, const TXY& b) {
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

}  // namespace

void Prepare(std::span<const TXY> a, std::span<const TXY> b, Outline (&outlines)[2]) {
    const std::span<const TXY> from[2] = {a, b};
    double largest = 0;
    double smallest = std::numeric_limits<double>::infinity();
    for (int of = 0; of < 2; ++of) {
        Outline& outline = outlines[of];
        outline = {};
        if (!std::ranges::all_of(from[of], IsFinite))
            continue;
        outline.given.reserve(from[of].size());
        for (const TXY& p : from[of]) {
            if (!outline.given.empty() && outline.given.back() == p)
                continue;
            outline.given.push_back(p);
            for (const double x : {std::fabs(p.x), std::fabs(p.y)}) {
                largest = std::max(largest, x);
                if (x > 0)
                    smallest = std::min(smallest, x);
            }
        }
    }
    const bool scaled =
        largest > 0 && (std::ilogb(largest) > LargestExponent || std::ilogb(smallest) < SmallestExponent);
    const int shift = scaled ? ScaledExponent - std::ilogb(largest) : 0;
    for (Outline& outline : outlines) {
        auto& given = outline.given;
        auto& work = outline.work;
        work = given;
        for (TXY& p : work)
            // Adding zero makes a negative zero positive, so that equal points are equal to the bit.
            p = scaled ? TXY{Rounded(std::ldexp(p.x, shift)) + 0.0, Rounded(std::ldexp(p.y, shift)) + 0.0}
                       : TXY{p.x + 0.0, p.y + 0.0};
        std::size_t count = 0;
        for (std::size_t i = 0; i < work.size(); ++i)
            if (count == 0 || !(work[i] == work[count - 1])) {
                work[count] = work[i];
                given[count++] = given[i];
            }
        while (count > 1 && work[count - 1] == work[0])
            --count;
        work.resize(count);
        given.resize(count);
        if (WithoutArea(work)) {
            work.clear();
            given.clear();
        }
        double area = 0;
        for (std::size_t i = 2; i < work.size(); ++i)
            area += RoughTurn(work[0], work[i - 1], work[i]).value;
        if (area > 0) {
            std::ranges::reverse(work);
            std::ranges::reverse(given);
        }
    }
}

void Overlay::Lay() {
    FindContacts();
    MakeStops();
    MakeEnds();
    const std::size_t stretches = stops_[0].size() + stops_[1].size();
    left_.assign(stretches, 0);
    right_.assign(stretches, 0);
    LabelStretches(0);
    LabelStretches(1);
    CheckCrosses();
}

void Overlay::FindContacts() {
    const Outline& A = *outlines_[0];
    const Outline& B = *outlines_[1];
    EdgeGrid grid(A.work, B.work, 0);
    grid.ForEachPair([&](std::uint32_t i, std::uint32_t j) {
        const TXY& a0 = A.work[i];
        const TXY& a1 = A.work[A.After(i)];
        const TXY& b0 = B.work[j];
        const TXY& b1 = B.work[B.After(j)];
        const int c0 = Orientation(a0, a1, b0);
        const int c1 = Orientation(a0, a1, b1);
        if (c0 * c1 > 0)
            return;
        const int d0 = Orientation(b0, b1, a0);
        const int d1 = Orientation(b0, b1, a1);
        if (d0 * d1 > 0)
            return;
        if (c0 * c1 < 0 && d0 * d1 < 0) {
            crossings_.push_back(std::uint64_t{i} << 32 | j);
            return;
        }
        // A vertex is looked after as the start of an edge only.
        if (a0 == b0) {
            contacts_.push_back(a0);
            return;
        }
        if (c0 == 0 && !(b0 == a1) && Between(a0, a1, b0))
            contacts_.push_back(b0);
        if (d0 == 0 && !(a0 == b1) && Between(b0, b1, a0))
            contacts_.push_back(a0);
    });
    std::ranges::sort(crossings_);
    crossings_.erase(std::unique(crossings_.begin(), crossings_.end()), crossings_.end());
    if (!contacts_.empty())
        CompleteContacts();
}

// Every edge and vertex of either outline that passes a node has a stop there, also where an outline touches or
// overlaps itself. Two edges that do so are no longer a crossing.
void Overlay::CompleteContacts() {
    auto& points = contacts_;
    std::sort(points.begin(), points.end(), LessXY);
    points.erase(std::unique(points.begin(), points.end()), points.end());
    // By x, as they are, and by y: an edge is looked up in the order in which it has fewer of them beside it.
    std::vector<std::uint32_t> byY(points.size());
    std::iota(byY.begin(), byY.end(), 0u);
    std::ranges::sort(byY, {}, [&](std::uint32_t i) { return std::pair(points[i].y, points[i].x); });
    const auto beside = [](const auto& order, double low, double high, auto coordinate) {
        const auto begin = std::ranges::lower_bound(order, low, {}, coordinate);
        const auto end = std::ranges::upper_bound(begin, order.end(), high, {}, coordinate);
        return std::ranges::subrange(begin, end);
    };
    for (int of = 0; of < 2; ++of) {
        const Outline& outline = *outlines_[of];
        for (std::uint32_t i = 0; i < outline.Count(); ++i) {
            const TXY& p = outline.work[i];
            const TXY& q = outline.work[outline.After(i)];
            const auto consider = [&](std::uint32_t point) {
                const TXY& at = points[point];
                const bool atVertex = at == p;
                if (atVertex || (!(at == q) && Between(p, q, at) && Orientation(p, q, at) == 0))
                    passing_[of].push_back({i, point, atVertex});
            };
            const auto alongX = beside(points, std::min(p.x, q.x), std::max(p.x, q.x), &TXY::x);
            const auto alongY =
                beside(byY, std::min(p.y, q.y), std::max(p.y, q.y), [&](std::uint32_t k) { return points[k].y; });
            if (alongX.size() <= alongY.size())
                for (auto at = alongX.begin(); at != alongX.end(); ++at)
                    consider(static_cast<std::uint32_t>(at - points.begin()));
            else
                for (const std::uint32_t point : alongY)
                    consider(point);
        }
    }
    std::erase_if(crossings_, [&](std::uint64_t crossing) {
        const std::uint32_t edge[2] = {static_cast<std::uint32_t>(crossing >> 32),
                                       static_cast<std::uint32_t>(crossing)};
        const auto first = [&](int of) { return std::ranges::lower_bound(passing_[of], edge[of], {}, &Passing::edge); };
        for (auto a = first(0); a != passing_[0].end() && a->edge == edge[0]; ++a)
            for (auto b = first(1); b != passing_[1].end() && b->edge == edge[1]; ++b)
                if (a->point == b->point)
                    return true;
        return false;
    });
}

void Overlay::MakeNodesOfVertices() {
    const auto& points = contacts_;
    const auto first = static_cast<std::uint32_t>(nodes_.size());
    for (const TXY& p : points) {
        Node node;
        node.work = p;
        nodes_.push_back(node);
    }
    for (int of = 0; of < 2; ++of)
        for (const Passing& passing : passing_[of]) {
            Stop stop;
            stop.edge = passing.edge;
            stop.node = first + passing.point;
            stop.atVertex = passing.atVertex;
            const Outline& outline = *outlines_[of];
            if (stop.atVertex) {
                nodes_[stop.node].given = outline.given[stop.edge];
            } else {
                const TXY& p = outline.work[stop.edge];
                const TXY& q = outline.work[outline.After(stop.edge)];
                const TXY& at = points[passing.point];
                stop.place = std::fabs(q.x - p.x) > std::fabs(q.y - p.y) ? (at.x - p.x) / (q.x - p.x)
                                                                         : (at.y - p.y) / (q.y - p.y);
                stop.error = 2e-15;
            }
            stops_[of].push_back(stop);
        }
}

bool Overlay::StopBefore(int of, const Stop& a, const Stop& b) const {
    if (a.edge != b.edge)
        return a.edge < b.edge;
    if (a.atVertex || b.atVertex)
        return a.atVertex && !b.atVertex;
    const Outline& mine = *outlines_[of];
    const Outline& theirs = *outlines_[1 - of];
    const TXY& p0 = mine.work[a.edge];
    const TXY& p1 = mine.work[mine.After(a.edge)];
    if (a.other != None && b.other != None) {
        if (a.place + a.error < b.place - b.error)
            return true;
        if (b.place + b.error < a.place - a.error)
            return false;
        if (a.other == b.other)
            return false;
        const int order = CompareAlong(p0, p1, theirs.work[a.other], theirs.work[theirs.After(a.other)],
                                       theirs.work[b.other], theirs.work[theirs.After(b.other)]);
        return order != 0 ? order < 0 : a.other < b.other;
    }
    if (a.other == None && b.other == None) {
        const TXY& u = nodes_[a.node].work;
        const TXY& v = nodes_[b.node].work;
        if (p0.x != p1.x)
            return p0.x < p1.x ? u.x < v.x : u.x > v.x;
        return p0.y < p1.y ? u.y < v.y : u.y > v.y;
    }
    // A vertex and a crossing: the vertex comes first where it is on the side that the edge starts from.
    const Stop& crossing = a.other != None ? a : b;
    const TXY& q0 = theirs.work[crossing.other];
    const TXY& q1 = theirs.work[theirs.After(crossing.other)];
    const int side = Orientation(q0, q1, nodes_[a.other == None ? a.node : b.node].work);
    const bool vertexFirst = side != 0 && side == Orientation(q0, q1, p0);
    return (a.other == None) == vertexFirst;
}

// By edge without comparing, then along each edge: by the rounded places where these are far enough apart.
void Overlay::SortStops(int of) {
    auto& stops = stops_[of];
    std::vector<std::uint32_t> start(outlines_[of]->Count() + 1, 0);
    for (const Stop& stop : stops)
        ++start[stop.edge + 1];
    for (std::size_t i = 1; i < start.size(); ++i)
        start[i] += start[i - 1];
    std::vector<Stop> sorted(stops.size());
    {
        std::vector<std::uint32_t> at(start.begin(), start.end() - 1);
        for (const Stop& stop : stops)
            sorted[at[stop.edge]++] = stop;
    }
    struct Key {
        double place;
        std::uint32_t index;
    };
    std::vector<Key> keys;
    stops.clear();
    for (std::size_t edge = 0; edge + 1 < start.size(); ++edge) {
        const std::uint32_t begin = start[edge];
        const std::uint32_t end = start[edge + 1];
        keys.clear();
        for (std::uint32_t i = begin; i < end; ++i)
            keys.push_back({sorted[i].place, i});
        bool clear = true;
        if (keys.size() > 1)
            std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.place < b.place; });
        for (std::size_t i = 1; clear && i < keys.size(); ++i)
            clear = keys[i].place - keys[i - 1].place > sorted[keys[i].index].error + sorted[keys[i - 1].index].error;
        if (!clear && keys.size() > 1)
            std::sort(keys.begin(), keys.end(),
                      [&](const Key& a, const Key& b) { return StopBefore(of, sorted[a.index], sorted[b.index]); });
        for (const Key& key : keys)
            stops.push_back(sorted[key.index]);
    }
}

void Overlay::MakeStops() {
    for (int of = 0; of < 2; ++of)
        stops_[of].reserve(crossings_.size() + passing_[of].size());
    nodes_.reserve(crossings_.size() + contacts_.size());
    for (const std::uint64_t crossing : crossings_) {
        const std::uint32_t edge[2] = {static_cast<std::uint32_t>(crossing >> 32),
                                       static_cast<std::uint32_t>(crossing)};
        for (int of = 0; of < 2; ++of) {
            const Outline& mine = *outlines_[of];
            const Outline& theirs = *outlines_[1 - of];
            const TXY& p0 = mine.work[edge[of]];
            const TXY& p1 = mine.work[mine.After(edge[of])];
            const TXY& q0 = theirs.work[edge[1 - of]];
            const TXY& q1 = theirs.work[theirs.After(edge[1 - of])];
            Turn start = RoughTurn(q0, q1, p0);
            Turn end = RoughTurn(q0, q1, p1);
            if (std::fabs(start.value) < 1e6 * start.error || std::fabs(end.value) < 1e6 * end.error) {
                start = {ExactTurn(q0, q1, p0), 0};
                end = {ExactTurn(q0, q1, p1), 0};
            }
            const double whole = std::fabs(start.value) + std::fabs(end.value);
            Stop stop;
            stop.edge = edge[of];
            stop.node = static_cast<std::uint32_t>(nodes_.size());
            stop.other = edge[1 - of];
            stop.place = std::fabs(start.value) / whole;
            stop.error = 1.1 * (start.error + end.error) / whole + 2e-15;
            stops_[of].push_back(stop);
        }
        const Outline& A = *outlines_[0];
        const TXY& p0 = A.given[edge[0]];
        const TXY& p1 = A.given[A.After(edge[0])];
        const double place = stops_[0].back().place;
        const auto between = [&](double low, double high) {
            const double step = high - low;
            const double at = std::isfinite(step) ? low + step * place : low * (1 - place) + high * place;
            return std::clamp(at, std::min(low, high), std::max(low, high));
        };
        Node node;
        node.given = {between(p0.x, p1.x), between(p0.y, p1.y)};
        nodes_.push_back(node);
    }
    MakeNodesOfVertices();
    for (int of = 0; of < 2; ++of) {
        auto& stops = stops_[of];
        SortStops(of);
        for (std::size_t i = 0; i < stops.size(); ++i)
            if (stops[i].other != None)
                nodes_[stops[i].node].stops[of] = static_cast<std::uint32_t>(i);
    }
}

// The ends at each node of vertices, in order around it.
void Overlay::MakeEnds() {
    const std::size_t stretches = stops_[0].size() + stops_[1].size();
    known_.resize(nodes_.size());
    if (contacts_.empty())
        return;
    struct Ray {
        std::uint32_t node;
        TXY towards;
        End end;
    };
    std::vector<Ray> rays;
    for (int of = 0; of < 2; ++of) {
        const Outline& outline = *outlines_[of];
        const auto count = static_cast<std::uint32_t>(stops_[of].size());
        for (std::uint32_t i = 0; i < count; ++i) {
            const Stop& stop = stops_[of][i];
            if (stop.other != None)
                continue;
            const std::uint32_t before = i > 0 ? i - 1 : count - 1;
            rays.push_back({stop.node, outline.work[outline.After(stop.edge)], {StretchOf(of, i), false}});
            rays.push_back({stop.node,
                            outline.work[stop.atVertex ? outline.Before(stop.edge) : stop.edge],
                            {StretchOf(of, before), true}});
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
    positionOfEnd_.assign(2 * stretches, None);
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
