#include <zk/_zkxyarrays/edgegrid.h>
#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/overlay.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace zk::detail {
namespace {

// The edges of both outlines; those of the second are counted on from the first's.
class Edges {
  public:
    Edges(Outline (&outlines)[2], int bits);

    bool Split();

  private:
    struct Added {
        TXY work;
        TXY given;
    };

    std::uint32_t Count() const { return outlines_[0].Count() + outlines_[1].Count(); }
    const Outline& Of(std::uint32_t edge) const { return outlines_[edge < outlines_[0].Count() ? 0 : 1]; }
    std::uint32_t Index(std::uint32_t edge) const {
        return edge < outlines_[0].Count() ? edge : edge - outlines_[0].Count();
    }
    const TXY& Start(std::uint32_t edge) const { return Of(edge).work[Index(edge)]; }
    const TXY& End(std::uint32_t edge) const { return Of(edge).work[Of(edge).After(Index(edge))]; }

    template <class Visit>
    void ForEachPair(Visit visit) const;
    bool Overlap(std::uint32_t g, std::uint32_t h) const;
    bool Cross(std::uint32_t g, std::uint32_t h) const;
    void SplitAt(std::uint32_t g, std::uint32_t h);
    void Insert(int of);

    Outline (&outlines_)[2];
    int lastBit_;  // of an added point, as an exponent of two
    std::vector<std::vector<std::uint32_t>> overlapping_;
    std::vector<std::vector<Added>> added_;
    std::set<std::pair<std::uint32_t, std::uint32_t>> done_;
};

Edges::Edges(Outline (&outlines)[2], int bits)
    : outlines_(outlines), lastBit_(0), overlapping_(Count()), added_(Count()) {
    double size = 0;
    for (const Outline& outline : outlines)
        for (const TXY& p : outline.work)
            size = std::max({size, std::fabs(p.x), std::fabs(p.y)});
    lastBit_ = std::max(std::ilogb(size) - bits, SmallestBit);
}

template <class Visit>
void Edges::ForEachPair(Visit visit) const {
    const std::uint32_t second = outlines_[0].Count();
    const auto between = [&](int one, int two) {
        EdgeGrid grid(outlines_[one].work, outlines_[two].work, 0);
        grid.ForEachPair([&](std::uint32_t i, std::uint32_t j) {
            if (one != two || i < j)
                visit(one == 0 ? i : i + second, two == 0 ? j : j + second);
        });
    };
    between(0, 0);
    between(0, 1);
    between(1, 1);
}

// In more than a point.
bool Edges::Overlap(std::uint32_t g, std::uint32_t h) const {
    const TXY& a = Start(g);
    const TXY& b = End(g);
    const TXY& c = Start(h);
    const TXY& d = End(h);
    if (Orientation(a, b, c) != 0 || Orientation(a, b, d) != 0)
        return false;
    const auto overlap = [](double p, double q, double r, double s) {
        return std::max(std::min(p, q), std::min(r, s)) < std::min(std::max(p, q), std::max(r, s));
    };
    return overlap(a.x, b.x, c.x, d.x) || overlap(a.y, b.y, c.y, d.y);
}

bool Edges::Cross(std::uint32_t g, std::uint32_t h) const {
    return Orientation(Start(g), End(g), Start(h)) * Orientation(Start(g), End(g), End(h)) < 0 &&
           Orientation(Start(h), End(h), Start(g)) * Orientation(Start(h), End(h), End(g)) < 0;
}

// All edges that run along the one or the other where these cross get the same vertex there.
void Edges::SplitAt(std::uint32_t g, std::uint32_t h) {
    std::vector<std::uint32_t> along[2] = {{g}, {h}};
    for (const std::uint32_t k : overlapping_[g])
        if (Cross(k, h))
            along[0].push_back(k);
    for (const std::uint32_t k : overlapping_[h])
        if (Cross(g, k))
            along[1].push_back(k);
    if (along[0].size() + along[1].size() == 2)
        return;
    for (const std::uint32_t a : along[0])
        for (const std::uint32_t b : along[1])
            done_.insert(std::minmax(a, b));
    const double start = std::fabs(ExactTurn(Start(h), End(h), Start(g)));
    const double end = std::fabs(ExactTurn(Start(h), End(h), End(g)));
    const double place = start / (start + end);
    const Outline& outline = Of(g);
    const TXY& from = outline.given[Index(g)];
    const TXY& to = outline.given[outline.After(Index(g))];
    const auto rounded = [&](double x) { return std::ldexp(std::nearbyint(std::ldexp(x, -lastBit_)), lastBit_) + 0.0; };
    const TXY at = Between(Start(g), End(g), place);
    const TXY work{rounded(at.x), rounded(at.y)};
    // Where the work copy is not scaled the two are the same.
    const bool same = from == Start(g) && to == End(g);
    const Added added{work, same ? work : Between(from, to, place)};
    for (const auto& edges : along)
        for (const std::uint32_t k : edges)
            if (!(added.work == Start(k)) && !(added.work == End(k)))
                added_[k].push_back(added);
}

void Edges::Insert(int of) {
    Outline& outline = outlines_[of];
    const std::uint32_t first = of == 0 ? 0 : outlines_[0].Count();
    Outline finer;
    for (std::uint32_t i = 0; i < outline.Count(); ++i) {
        finer.work.push_back(outline.work[i]);
        finer.given.push_back(outline.given[i]);
        const TXY& p = Start(first + i);
        auto& points = added_[first + i];
        std::ranges::sort(points, {},
                          [&](const Added& at) { return std::fabs(at.work.x - p.x) + std::fabs(at.work.y - p.y); });
        for (const Added& at : points)
            if (!(at.work == finer.work.back())) {
                finer.work.push_back(at.work);
                finer.given.push_back(at.given);
            }
    }
    outline = std::move(finer);
}

bool Edges::Split() {
    ForEachPair([&](std::uint32_t g, std::uint32_t h) {
        if (!Overlap(g, h) || std::ranges::find(overlapping_[g], h) != overlapping_[g].end())
            return;
        overlapping_[g].push_back(h);
        overlapping_[h].push_back(g);
    });
    ForEachPair([&](std::uint32_t g, std::uint32_t h) {
        const bool shared = !overlapping_[g].empty() || !overlapping_[h].empty();
        if (shared && Cross(g, h) && !done_.contains(std::minmax(g, h)))
            SplitAt(g, h);
    });
    if (std::ranges::all_of(added_, [](const auto& points) { return points.empty(); }))
        return false;
    // The first one last: the edges of the second are counted on from it.
    Insert(1);
    Insert(0);
    return true;
}

}  // namespace

bool SplitWhereShared(Outline (&outlines)[2], int bits) {
    return Edges(outlines, bits).Split();
}

}  // namespace zk::detail
