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

double Rounded(double x) {
    return std::ldexp(std::nearbyint(std::ldexp(x, -SmallestBit)), SmallestBit);
}

bool WithoutArea(const std::vector<TXY>& points) {
    for (std::size_t i = 2; i < points.size(); ++i)
        if (Orientation(points[0], points[1], points[i]) != 0)
            return false;
    return true;
}

// p is within the box of an edge on whose line it is.
bool OnEdge(const TXY& a, const TXY& b, const TXY& p) {
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
    sides_.assign(stops_.size(), 0);
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
        const Turn toB0 = RoughTurn(a0, a1, b0);
        const Turn toB1 = RoughTurn(a0, a1, b1);
        const int c0 = Orientation(toB0, a0, a1, b0);
        const int c1 = Orientation(toB1, a0, a1, b1);
        if (c0 * c1 > 0)
            return;
        const Turn toA0 = RoughTurn(b0, b1, a0);
        const Turn toA1 = RoughTurn(b0, b1, a1);
        const int d0 = Orientation(toA0, b0, b1, a0);
        const int d1 = Orientation(toA1, b0, b1, a1);
        if (d0 * d1 > 0)
            return;
        if (c0 * c1 < 0 && d0 * d1 < 0) {
            Crossing crossing{{i, j}, {}, {}};
            const auto place = [&](int of, Turn start, Turn end, const TXY& from, const TXY& to, const TXY& p,
                                   const TXY& q) {
                if (std::fabs(start.value) < 1e6 * start.error || std::fabs(end.value) < 1e6 * end.error) {
                    start = {ExactTurn(from, to, p), 0};
                    end = {ExactTurn(from, to, q), 0};
                }
                const double whole = std::fabs(start.value) + std::fabs(end.value);
                crossing.place[of] = std::fabs(start.value) / whole;
                // Enough also for being rounded to fewer digits.
                crossing.error[of] = static_cast<float>(1.2 * (start.error + end.error) / whole + 2e-15);
            };
            place(0, toA0, toA1, b0, b1, a0, a1);
            place(1, toB0, toB1, a0, a1, b0, b1);
            crossings_.push_back(crossing);
            return;
        }
        const auto contact = [&](const TXY& p) {
            Node node;
            node.work = p;
            nodes_.push_back(node);
        };
        // A vertex is looked after as the start of an edge only.
        if (a0 == b0) {
            contact(a0);
            return;
        }
        if (c0 == 0 && !(b0 == a1) && OnEdge(a0, a1, b0))
            contact(b0);
        if (d0 == 0 && !(a0 == b1) && OnEdge(b0, b1, a0))
            contact(a0);
    });
    if (!nodes_.empty())
        CompleteContacts();
}

// Every edge and vertex of either outline that passes a node has a stop there, also where an outline touches or
// overlaps itself. Two edges that do so are no longer a crossing.
void Overlay::CompleteContacts() {
    std::ranges::sort(nodes_, LessXY, &Node::work);
    const auto same = [](const Node& a, const Node& b) { return a.work == b.work; };
    nodes_.erase(std::unique(nodes_.begin(), nodes_.end(), same), nodes_.end());
    FindPassing(0);
    FindPassing(1);
    // Where the passings of each edge begin.
    std::vector<std::uint32_t> start[2];
    for (int of = 0; of < 2; ++of) {
        start[of].assign(outlines_[of]->Count() + 1, 0);
        for (const Passing& passing : passing_[of])
            ++start[of][passing.edge + 1];
        std::partial_sum(start[of].begin(), start[of].end(), start[of].begin());
    }
    std::erase_if(crossings_, [&](const Crossing& crossing) {
        const auto passings = [&](int of) {
            const std::uint32_t* const at = start[of].data() + crossing.edge[of];
            return std::span(passing_[of]).subspan(at[0], at[1] - at[0]);
        };
        for (const Passing& a : passings(0))
            for (const Passing& b : passings(1))
                if (a.node == b.node)
                    return true;
        return false;
    });
}

void Overlay::FindPassing(int of) {
    // By x, as they are, and by y: an edge is looked up in the order in which it has fewer of them beside it.
    std::vector<std::uint32_t> byY(nodes_.size());
    std::iota(byY.begin(), byY.end(), 0u);
    std::ranges::sort(byY, {}, [&](std::uint32_t i) { return std::pair(nodes_[i].work.y, nodes_[i].work.x); });
    const auto beside = [](const auto& order, double low, double high, auto coordinate) {
        const auto begin = std::ranges::lower_bound(order, low, {}, coordinate);
        const auto end = std::ranges::upper_bound(begin, order.end(), high, {}, coordinate);
        return std::span(begin, end);
    };
    const Outline& outline = *outlines_[of];
    for (std::uint32_t i = 0; i < outline.Count(); ++i) {
        const TXY& p = outline.work[i];
        const TXY& q = outline.work[outline.After(i)];
        const auto consider = [&](std::uint32_t node) {
            const TXY& at = nodes_[node].work;
            const bool atVertex = at == p;
            if (atVertex || (!(at == q) && OnEdge(p, q, at) && Orientation(p, q, at) == 0))
                passing_[of].push_back({i, node, atVertex});
        };
        const auto alongX =
            beside(nodes_, std::min(p.x, q.x), std::max(p.x, q.x), [](const Node& n) { return n.work.x; });
        if (alongX.empty())
            continue;
        const auto alongY =
            beside(byY, std::min(p.y, q.y), std::max(p.y, q.y), [&](std::uint32_t k) { return nodes_[k].work.y; });
        if (alongX.size() <= alongY.size())
            for (const Node& node : alongX)
                consider(static_cast<std::uint32_t>(&node - nodes_.data()));
        else
            for (const std::uint32_t node : alongY)
                consider(node);
    }
}

}  // namespace zk::detail
