#include "crossing.h"

#include <zk/_zkmath/between.h>
#include <zk/_zkmath/modulo.h>
#include <zk/_zkmath/segment.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/edgegrid.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <tuple>
#include <vector>

namespace zk {
namespace {

// How far from an edge a crossing may lie and still be taken for its own, in parts of the polygons' size.
constexpr double Grow = 4 * EPS;

// Below the number of pairs that an index pays for.
constexpr std::size_t FewPairs = 256;

bool VertexCode(double code) {
    return std::fabs(code) < 1.5;
}

bool IsFinite(const TXY& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

struct Candidate {
    std::uint32_t i;  // edge of b
    std::uint32_t j;  // vertex of a that the two looks start from
    bool back;        // the look backwards along the edge after next

    auto Key() const { return std::tie(i, j, back); }
    bool operator<(const Candidate& o) const { return Key() < o.Key(); }
    bool operator==(const Candidate& o) const { return Key() == o.Key(); }
};

// The points of a polygon with those that are no numbers moved to where they are in nobody's way. The edges that end in
// such points are named, for they are near to everything.
struct FinitePoints {
    std::vector<TXY> points;
    std::vector<std::uint32_t> strange;

    explicit FinitePoints(std::span<const TXY> from) : points(from.begin(), from.end()) {
        const std::size_t n = points.size();
        const auto fine = std::ranges::find_if(points, IsFinite);
        const TXY substitute = fine == points.end() ? TXY{} : *fine;
        for (std::size_t i = 0; i < n; ++i)
            if (!IsFinite(from[i]) || !IsFinite(from[(i + 1) % n]))
                strange.push_back(static_cast<std::uint32_t>(i));
        for (TXY& p : points)
            if (!IsFinite(p))
                p = substitute;
    }
};

std::vector<Candidate> Candidates(std::span<const TXY> a, std::span<const TXY> b, bool backwards) {
    const auto nA = static_cast<std::uint32_t>(a.size());
    const auto nB = static_cast<std::uint32_t>(b.size());
    std::vector<Candidate> found;
    const auto near = [&](std::uint32_t edgeOfA, std::uint32_t edgeOfB) {
        found.push_back({edgeOfB, edgeOfA, false});
        if (backwards)
            found.push_back({edgeOfB, (edgeOfA + nA - 1) % nA, true});
    };
    if (a.size() * b.size() <= FewPairs) {
        for (std::uint32_t i = 0; i < nB; ++i)
            for (std::uint32_t j = 0; j < nA; ++j)
                near(j, i);
    } else {
        const FinitePoints as(a);
        const FinitePoints bs(b);
        double size = 0;
        for (const auto* points : {&as.points, &bs.points})
            for (const TXY& p : *points)
                size = std::max({size, std::fabs(p.x), std::fabs(p.y)});
        detail::EdgeGrid grid(as.points, bs.points, std::min(Grow * (1 + size), 1e300));
        grid.ForEachPair(near);
        for (const std::uint32_t j : as.strange)
            for (std::uint32_t i = 0; i < nB; ++i)
                near(j, i);
        for (const std::uint32_t i : bs.strange)
            for (std::uint32_t j = 0; j < nA; ++j)
                near(j, i);
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

void MergeVertexCrossings(TCrossList& list) {
    const auto isVertex = [](const TCross& c) { return c.EdgeIndex == 1 || c.EdgeIndex == -1; };
    for (int k = list.Count() - 1; k >= 0; --k) {
        const int before = _modulo(k - 1, list.Count());
        const TCross& here = *list[k];
        const TCross& there = *list[before];
        if (isVertex(here) && isVertex(there) && !here.Flag && here.EdgeIndex * there.EdgeIndex > 0)
            list.Delete(before);
    }
}

}  // namespace

TCrossList::~TCrossList() {
    TCrossList::Clear();
}

void TCrossList::Dropped(void* item) {
    delete static_cast<TCross*>(item);
}

// The first index in [from, to) whose Param is below param by more than the tolerance, or to. No record lies above one
// before it by more than the tolerance, so that a record not below param rules out all before it. Those in between, as
// near to param as the tolerance, say nothing; there are never many of them.
int TCrossList::Place(double param, int from, int to) const {
    while (from < to) {
        const int middle = from + (to - from) / 2;
        const double there = GetCross(middle)->Param;
        if (Less(there, param)) {
            to = middle;
        } else if (there >= param) {
            from = middle + 1;
        } else {
            const int before = Place(param, from, middle);
            if (before < middle)
                return before;
            from = middle + 1;
        }
    }
    return from;
}

int TCrossList::Addcross(double param, double otherParam, const TXY& point, int edgeIndex, bool flag) {
    int i = Place(param, 0, Count());
    auto record = std::make_unique<TCross>(TCross{param, otherParam, point, flag, edgeIndex, 0});
    if (i > 0 && Equals(GetCross(i - 1)->Param, param) && !GetCross(i - 1)->Flag)
        --i;
    Insert(i, record.get());
    record.release();
    return i;
}

bool CrossEx(const TXY& a, const TXY& b, const TXY& c, const TXY& d, const TXY& e, const TXY& f, double& s, double& t,
             double& code, TXY& x) {
    double den = 0;
    if (!_Cross(a, b, c, d, s, t, den))
        return false;
    if (Less(1, t) || Less(1, s) || !Less(0, t) || !Less(0, s))
        return false;
    const auto sector = [&](const TXY& to) {
        const TXY back = Sub(c, d);
        const TXY onward = Sub(f, d);
        const TXY direction = Sub(to, d);
        if (Between(back, onward, direction))
            code = 1;
        else if (Between(onward, back, direction))
            code = -1;
        else
            return false;
        return true;
    };
    const auto side = [&](const TXY& to, double size) {
        code = Vekt(Sub(to, c), Sub(d, c));
        if (Less(code, 0))
            code = size;
        else if (Less(0, code))
            code = -size;
        else
            return false;
        return true;
    };
    const bool atB = Equals(s, 1);
    const bool atD = Equals(t, 1);
    const bool accepted = atB && atD ? sector(e) : atD ? sector(b) : atB ? side(e, 1) : side(b, 10);
    if (accepted)
        x = Add(a, Mul(Sub(b, a), s));
    return accepted;
}

void Cross(const TXYARRAY& a, const TXYARRAY& b, TCrossList& list, bool flag) {
    const auto as = a.Items();
    const auto bs = b.Items();
    const std::size_t nA = as.size();
    const std::size_t nB = bs.size();
    if (nB < 2 || nA < 2)
        return;
    for (const Candidate& candidate : Candidates(as, bs, flag)) {
        const std::size_t i = candidate.i;
        const std::size_t j = candidate.j;
        const TXY& a0 = as[j];
        const TXY& a1 = as[(j + 1) % nA];
        const TXY& a2 = as[(j + 2) % nA];
        const TXY& b0 = bs[i];
        const TXY& b1 = bs[(i + 1) % nB];
        const TXY& b2 = bs[(i + 2) % nB];
        double s = 0;
        double t = 0;
        double code = 0;
        TXY x;
        const double u = static_cast<double>(j);
        const double v = static_cast<double>(i);
        if (!candidate.back) {
            if (CrossEx(a0, a1, b0, b1, a2, b2, s, t, code, x))
                list.Addcross(_modulo(u + s, static_cast<double>(nA)), _modulo(v + t, static_cast<double>(nB)), x,
                              static_cast<int>(std::nearbyint(code)), false);
        } else if (CrossEx(a2, a1, b0, b1, a0, b2, s, t, code, x) && VertexCode(code)) {
            list.Addcross(_modulo(u + 2 - s, static_cast<double>(nA)), _modulo(v + t, static_cast<double>(nB)), x,
                          static_cast<int>(std::nearbyint(-code)), true);
        }
    }
    MergeVertexCrossings(list);
    if (list.Count() == 1)
        list.Delete(0);
}

}  // namespace zk
