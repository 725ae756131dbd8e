#include "polygons.h"
#include "rounds.h"

#include <zk/_zkmath/modulo.h>
#include <zk/_zkmath/segment.h>
#include <zk/_zkmath/tolerance.h>
#include <zk/_zkxyarrays/crossing.h>
#include <zk/_zkxyarrays/edgegrid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

using namespace zk;

// --- the routines as they are told, without any index: what the fast ones are held against ---

struct PlainList {
    std::vector<TCross> records;

    void Add(double param, double otherParam, const TXY& point, int code, bool flag) {
        std::size_t i = 0;
        while (i < records.size() && !Less(records[i].Param, param))
            ++i;
        if (i > 0 && Equals(records[i - 1].Param, param) && !records[i - 1].Flag)
            --i;
        records.insert(records.begin() + static_cast<std::ptrdiff_t>(i), {param, otherParam, point, flag, code, 0});
    }
};

PlainList PlainCross(const std::vector<TXY>& a, const std::vector<TXY>& b, bool flag) {
    PlainList list;
    const int nA = static_cast<int>(a.size());
    const int nB = static_cast<int>(b.size());
    if (nA < 2 || nB < 2)
        return list;
    const auto at = [](const std::vector<TXY>& p, int i) {
        return p[static_cast<std::size_t>(_modulo(i, static_cast<int>(p.size())))];
    };
    for (int i = 0; i < nB; ++i)
        for (int j = 0; j < nA; ++j) {
            double s, t, code;
            TXY x;
            if (CrossEx(at(a, j), at(a, j + 1), at(b, i), at(b, i + 1), at(a, j + 2), at(b, i + 2), s, t, code, x))
                list.Add(_modulo(j + s, nA), _modulo(i + t, nB), x, static_cast<int>(std::lround(code)), false);
            if (flag &&
                CrossEx(at(a, j + 2), at(a, j + 1), at(b, i), at(b, i + 1), at(a, j), at(b, i + 2), s, t, code, x) &&
                std::fabs(code) < 1.5)
                list.Add(_modulo(j + 2 - s, nA), _modulo(i + t, nB), x, -static_cast<int>(std::lround(code)), true);
        }
    auto& r = list.records;
    for (int k = static_cast<int>(r.size()) - 1; k >= 0; --k) {
        const int before = _modulo(k - 1, static_cast<int>(r.size()));
        const TCross& here = r[static_cast<std::size_t>(k)];
        const TCross& there = r[static_cast<std::size_t>(before)];
        if (std::abs(here.EdgeIndex) == 1 && std::abs(there.EdgeIndex) == 1 && !here.Flag &&
            here.EdgeIndex * there.EdgeIndex > 0)
            r.erase(r.begin() + before);
    }
    if (r.size() == 1)
        r.clear();
    return list;
}

// True when both say the same, to the bit.
::testing::AssertionResult SameAsPlain(const std::vector<TXY>& a, const std::vector<TXY>& b, bool flag) {
    TCrossList list;
    Cross(*Polygon(a), *Polygon(b), list, flag);
    const PlainList plain = PlainCross(a, b, flag);
    if (list.Count() != static_cast<int>(plain.records.size()))
        return ::testing::AssertionFailure() << list.Count() << " records, not " << plain.records.size();
    const auto same = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
    for (int i = 0; i < list.Count(); ++i) {
        const TCross& c = *list[i];
        const TCross& p = plain.records[static_cast<std::size_t>(i)];
        if (!same(c.Param, p.Param) || !same(c.OtherParam, p.OtherParam) || !same(c.Point.x, p.Point.x) ||
            !same(c.Point.y, p.Point.y) || c.Flag != p.Flag || c.EdgeIndex != p.EdgeIndex || c.Link != 0)
            return ::testing::AssertionFailure() << "record " << i << " differs";
    }
    return ::testing::AssertionSuccess();
}

std::vector<TXY> Star(std::mt19937& random, int n, TXY centre, double low, double high) {
    std::uniform_real_distribution<double> radius(low, high);
    std::vector<TXY> star;
    for (int i = 0; i < n; ++i) {
        const double angle = -6.283185307179586 * i / n;
        const double r = radius(random);
        star.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)});
    }
    return star;
}

// --- CrossEx ---

struct Classified {
    bool crossed = false;
    double s = 77, t = 77, code = 77;
    TXY x{77, 77};
};

Classified Classify(TXY a, TXY b, TXY c, TXY d, TXY e, TXY f) {
    Classified k;
    k.crossed = CrossEx(a, b, c, d, e, f, k.s, k.t, k.code, k.x);
    return k;
}

TEST(CrossEx, ProperCrossing) {
    const Classified k = Classify({0, 0}, {2, 0}, {1, -1}, {1, 1}, {3, 0}, {2, 2});
    EXPECT_TRUE(k.crossed);
    EXPECT_EQ(k.code, 10);
    EXPECT_EQ(k.x, (TXY{1, 0}));
    EXPECT_EQ(k.s, 0.5);
    EXPECT_EQ(k.t, 0.5);
    const Classified reversed = Classify({2, 0}, {0, 0}, {1, -1}, {1, 1}, {-1, 0}, {2, 2});
    EXPECT_TRUE(reversed.crossed);
    EXPECT_EQ(reversed.code, -10);
}

TEST(CrossEx, OutsideTheEdgesIsNone) {
    const TXY e{9, 9}, f{9, 8};
    EXPECT_FALSE(Classify({0, 0}, {1, 0}, {3, -1}, {3, 1}, e, f).crossed);    // s above 1
    EXPECT_FALSE(Classify({0, 0}, {1, 0}, {-3, -1}, {-3, 1}, e, f).crossed);  // s below 0
    EXPECT_FALSE(Classify({0, 0}, {2, 0}, {1, 3}, {1, 1}, e, f).crossed);     // t above 1
    EXPECT_FALSE(Classify({0, 0}, {2, 0}, {1, 1}, {1, 3}, e, f).crossed);     // t below 0
    EXPECT_FALSE(Classify({0, 0}, {1, 0}, {0, 1}, {1, 1}, e, f).crossed);     // parallel
}

TEST(CrossEx, EndsAreReachedWithinTheTolerance) {
    const TXY e{3, 0}, f{2, 2};
    // s just below and just above 1: at the vertex in either case.
    for (const double x : {1 - 0.5e-10, 1.0, 1 + 0.5e-10})
        EXPECT_EQ(Classify({0, 0}, {1, 0}, {x, -1}, {x, 1}, e, f).code, 1) << x;
    EXPECT_EQ(Classify({0, 0}, {1, 0}, {1 - 2e-10, -1}, {1 - 2e-10, 1}, e, f).code, 10);
    EXPECT_FALSE(Classify({0, 0}, {1, 0}, {1 + 2e-10, -1}, {1 + 2e-10, 1}, e, f).crossed);
    // The same of t.
    EXPECT_TRUE(Classify({0, 0}, {2, 0}, {1, -1}, {1, -0.5e-10}, e, {0, -1}).crossed);
    EXPECT_FALSE(Classify({0, 0}, {2, 0}, {1, -1}, {1, -2e-10}, e, {0, -1}).crossed);
}

TEST(CrossEx, StartsBelongToTheEdgeBefore) {
    const TXY e{9, 9}, f{9, 8};
    EXPECT_FALSE(Classify({1, 0}, {3, 0}, {1, -1}, {1, 1}, e, f).crossed);  // s 0
    EXPECT_FALSE(Classify({0, 0}, {2, 0}, {1, 0}, {1, 1}, e, f).crossed);   // t 0
    EXPECT_FALSE(Classify({0, 0}, {1, 0}, {1, 0}, {1, 1}, e, f).crossed);   // s 1, t 0
    // Within the tolerance of the start is at the start.
    EXPECT_FALSE(Classify({1 - 1e-11, 0}, {3, 0}, {1, -1}, {1, 1}, e, f).crossed);
    EXPECT_TRUE(Classify({1 - 1e-9, 0}, {3, 0}, {1, -1}, {1, 1}, e, f).crossed);
}

TEST(CrossEx, BothEnd) {
    // The second polygon goes up to (1, 0) and on to the right; the first comes from the left.
    const TXY a{0, 0}, b{1, 0}, c{1, -1}, f{2, 0};
    const Classified into = Classify(a, b, c, b, {2, -1}, f);
    EXPECT_TRUE(into.crossed);
    EXPECT_EQ(into.code, -1);
    const Classified out = Classify(a, b, c, b, {0, 1}, f);
    EXPECT_TRUE(out.crossed);
    EXPECT_EQ(out.code, -into.code);
    EXPECT_EQ(out.x, b);
    // Onward along the second polygon's own rays: not accepted.
    EXPECT_FALSE(Classify(a, b, c, b, {3, 0}, f).crossed);
    EXPECT_FALSE(Classify(a, b, c, b, {1, -3}, f).crossed);
}

TEST(CrossEx, SecondEdgeEnds) {
    const TXY c{1, -1}, d{1, 0};
    const Classified one = Classify({0, 0}, {2, 0}, c, d, {9, 9}, {0, -1});
    EXPECT_TRUE(one.crossed);
    EXPECT_EQ(one.x, d);
    EXPECT_EQ(one.t, 1);
    EXPECT_EQ(one.code, -1);
    const Classified other = Classify({2, 0}, {0, 0}, c, d, {9, 9}, {2, -1});
    EXPECT_TRUE(other.crossed);
    EXPECT_EQ(other.code, -one.code);
    // The first edge leaves along the second polygon.
    EXPECT_FALSE(Classify({0, 0}, {2, 0}, c, d, {9, 9}, {3, 0}).crossed);
}

TEST(CrossEx, FirstEdgeEnds) {
    const Classified right = Classify({0, 0}, {1, 0}, {1, -1}, {1, 1}, {2, 0}, {9, 9});
    EXPECT_TRUE(right.crossed);
    EXPECT_EQ(right.code, 1);
    EXPECT_EQ(right.s, 1);
    EXPECT_EQ(right.x, (TXY{1, 0}));
    EXPECT_EQ(Classify({2, 0}, {1, 0}, {1, -1}, {1, 1}, {0, 0}, {9, 9}).code, -1);
    // The next edge runs along the second one.
    EXPECT_FALSE(Classify({0, 0}, {1, 0}, {1, -1}, {1, 1}, {1, 0.5}, {9, 9}).crossed);
}

// Inside of both edges, but so near to an end, in edges so short, that the end's side cannot be told.
TEST(CrossEx, TooShortToTellTheSide) {
    const Classified k = Classify({0, 0}, {3e-3, 0}, {3e-3 - 3e-9, -2e-3}, {3e-3 - 3e-9, 1e-3}, {9, 9}, {9, 8});
    EXPECT_FALSE(k.crossed);
    EXPECT_NEAR(k.s, 1 - 1e-6, 1e-12);
    EXPECT_NEAR(k.code, -9e-12, 1e-15);
    EXPECT_EQ(k.x, (TXY{77, 77}));
    EXPECT_EQ(Classify({0, 0}, {3e-3, 0}, {2e-3, -2e-3}, {2e-3, 1e-3}, {9, 9}, {9, 8}).code, 10);
}

// Edges on one line meet at the end points b and d only.
TEST(CrossEx, OnOneLine) {
    // b inside c-d, and the first polygon turns off to one side, to the other, or goes on along the line.
    EXPECT_EQ(Classify({0, 0}, {2, 0}, {1, 0}, {3, 0}, {3, 1}, {4, 4}).code, -1);
    EXPECT_EQ(Classify({0, 0}, {2, 0}, {1, 0}, {3, 0}, {3, -1}, {4, 4}).code, 1);
    EXPECT_FALSE(Classify({0, 0}, {2, 0}, {1, 0}, {3, 0}, {5, 0}, {4, 4}).crossed);
    // d inside a-b: the first goes on along the second's edge.
    EXPECT_FALSE(Classify({0, 0}, {3, 0}, {2, 0}, {1, 0}, {3, 1}, {1, 1}).crossed);
    EXPECT_FALSE(Classify({0, 0}, {1, 0}, {2, 0}, {3, 0}, {1, 1}, {4, 4}).crossed);
}

TEST(CrossEx, NotAcceptedLeavesThePoint) {
    const Classified k = Classify({0, 0}, {1, 0}, {1, -1}, {1, 1}, {1, 0.5}, {9, 9});
    EXPECT_FALSE(k.crossed);
    EXPECT_EQ(k.x, (TXY{77, 77}));
    EXPECT_EQ(k.code, 0);
}

// --- TCrossList ---

TEST(CrossList, FallsInParam) {
    TCrossList list;
    EXPECT_EQ(list.Addcross(1, 10, {1, 1}, 10, false), 0);
    EXPECT_EQ(list.Addcross(3, 30, {3, 3}, -10, true), 0);
    EXPECT_EQ(list.Addcross(2, 20, {2, 2}, 1, false), 1);
    EXPECT_EQ(list.Addcross(0, 0, {0, 0}, -1, false), 3);
    ASSERT_EQ(list.Count(), 4);
    const TCross& first = *list.GetCross(0);
    EXPECT_EQ(first.Param, 3);
    EXPECT_EQ(first.OtherParam, 30);
    EXPECT_EQ(first.Point, (TXY{3, 3}));
    EXPECT_TRUE(first.Flag);
    EXPECT_EQ(first.EdgeIndex, -10);
    EXPECT_EQ(first.Link, 0u);
    EXPECT_EQ(list[3]->Param, 0);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_THROW(list.GetCross(0), EListError);
}

TEST(CrossList, EqualGoesBeforeOneWithoutFlag) {
    TCrossList list;
    list.Addcross(1, 1, {}, 0, false);
    EXPECT_EQ(list.Addcross(1 + 0.5e-10, 2, {}, 0, true), 0);
    // The one just before its place is still the first of all, without a flag.
    EXPECT_EQ(list.Addcross(1, 3, {}, 0, false), 1);
    EXPECT_EQ(list[0]->OtherParam, 2);
    EXPECT_EQ(list[1]->OtherParam, 3);
    EXPECT_EQ(list[2]->OtherParam, 1);
}

TEST(CrossList, EqualGoesBehindOneWithFlag) {
    TCrossList list;
    list.Addcross(1, 1, {}, 0, true);
    EXPECT_EQ(list.Addcross(1, 2, {}, 0, false), 1);
    EXPECT_EQ(list.Addcross(1, 3, {}, 0, true), 1);
    EXPECT_EQ(list[2]->OtherParam, 2);
}

TEST(CrossList, IsThePlainListOnRandomInput) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        TCrossList list;
        PlainList plain;
        for (int i = 0; i < 200; ++i) {
            // Many that are equal within the tolerance, and many that are just not.
            const double param = static_cast<double>(random() % 12) + 0.25e-10 * static_cast<double>(random() % 17);
            const bool flag = random() % 2;
            list.Addcross(param, i, {}, 0, flag);
            plain.Add(param, i, {}, 0, flag);
        }
        for (int i = 0; i < list.Count(); ++i)
            ASSERT_EQ(list[i]->OtherParam, plain.records[static_cast<std::size_t>(i)].OtherParam) << round;
    }
}

// --- Cross ---

TEST(Cross, TwoSquares) {
    const auto a = Polygon({{0, 0}, {2, 0}, {2, 2}, {0, 2}});
    const auto b = Polygon({{1, 1}, {3, 1}, {3, 3}, {1, 3}});
    TCrossList list;
    Cross(*a, *b, list, false);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list[0]->Param, 2.5);
    EXPECT_EQ(list[0]->OtherParam, 3.5);
    EXPECT_EQ(list[0]->Point, (TXY{1, 2}));
    EXPECT_EQ(list[1]->Param, 1.5);
    EXPECT_EQ(list[1]->OtherParam, 0.5);
    EXPECT_EQ(list[1]->Point, (TXY{2, 1}));
    EXPECT_EQ(list[0]->EdgeIndex, -list[1]->EdgeIndex);
    EXPECT_EQ(std::abs(list[0]->EdgeIndex), 10);
}

// A corner of a lies on an edge of b. Forward, the edge that ends there finds it; backwards, so does the other one,
// with the code negated. Where the corner passes through, the two are one crossing; where it only touches, the two
// remain, at one position and with different signs.
TEST(Cross, ACornerIsLookedAtFromBothSides) {
    const auto b = Polygon({{2, -5}, {9, -5}, {9, 5}, {2, 5}});
    TCrossList forward;
    const auto through = Polygon({{0, 0}, {2, 0}, {4, 1}, {4, 3}, {0, 3}});
    Cross(*through, *b, forward, false);
    ASSERT_EQ(forward.Count(), 2);
    EXPECT_EQ(forward[0]->Param, 3.5);
    EXPECT_EQ(std::abs(forward[0]->EdgeIndex), 10);
    EXPECT_EQ(forward[1]->Param, 1);
    EXPECT_EQ(forward[1]->OtherParam, 3.5);
    EXPECT_EQ(forward[1]->EdgeIndex * 10, -forward[0]->EdgeIndex);
    EXPECT_FALSE(forward[1]->Flag);
    TCrossList both;
    Cross(*through, *b, both, true);
    ASSERT_EQ(both.Count(), 2);
    EXPECT_EQ(both[1]->Param, 1);
    EXPECT_EQ(both[1]->EdgeIndex, forward[1]->EdgeIndex);
    TCrossList touching;
    Cross(*Polygon({{0, 0}, {2, 0}, {0, 1}}), *b, touching, true);
    ASSERT_EQ(touching.Count(), 2);
    EXPECT_EQ(touching[0]->Param, 1);
    EXPECT_EQ(touching[1]->Param, 1);
    EXPECT_EQ(touching[0]->EdgeIndex, -touching[1]->EdgeIndex);
    EXPECT_NE(touching[0]->Flag, touching[1]->Flag);
    // Without the second look a touching corner looks like a single crossing, which is none.
    TCrossList once;
    Cross(*Polygon({{0, 0}, {2, 0}, {0, 1}}), *b, once, false);
    EXPECT_EQ(once.Count(), 0);
}

TEST(Cross, TooFewVerticesLeaveTheListAlone) {
    TCrossList list;
    list.Addcross(1, 1, {}, 1, false);
    Cross(*Polygon({{0, 0}}), *Polygon(Square), list, true);
    Cross(*Polygon(Square), *Polygon({}), list, true);
    EXPECT_EQ(list.Count(), 1);
}

TEST(Cross, OneAloneIsNoTransition) {
    // Two open ends crossing once: the polygon of two points goes there and back, so that both ways are found. A single
    // one remains where the list held one before.
    TCrossList list;
    list.Addcross(1, 1, {}, 10, false);
    Cross(*Polygon(Square), *Polygon({{5, 5}, {6, 5}, {6, 6}}), list, true);
    EXPECT_EQ(list.Count(), 0);
}

TEST(Cross, IsThePlainRoutineOnStars) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(-1.2, 1.2);
    int crossings = 0;
    for (int round = 0; round < test::Rounds(600); ++round) {
        const auto a = Star(random, 3 + round % 60, {0, 0}, 0.3, 1);
        const auto b = Star(random, 3 + round % 47, {place(random), place(random)}, 0.3, 1);
        ASSERT_TRUE(SameAsPlain(a, b, round % 3 != 0)) << round;
        TCrossList list;
        Cross(*Polygon(a), *Polygon(b), list, true);
        crossings += list.Count();
    }
    EXPECT_GT(crossings, test::Rounds(3000));
}

TEST(Cross, IsThePlainRoutineOnAGrid) {
    std::mt19937 random(5);
    for (int round = 0; round < test::Rounds(3000); ++round) {
        const auto make = [&] {
            std::vector<TXY> poly(2 + random() % 30);
            for (TXY& p : poly)
                p = {static_cast<double>(random() % 7), static_cast<double>(random() % 7)};
            return poly;
        };
        const auto a = make();
        ASSERT_TRUE(SameAsPlain(a, random() % 10 ? make() : a, random() % 2)) << round;
    }
}

TEST(Cross, IsThePlainRoutineOnLongAndThinOnes) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> offset(-0.02, 0.02);
    for (int round = 0; round < 20; ++round) {
        const auto a = Star(random, 300, {0, 0}, 0.02, 1);
        const auto b = Star(random, 200 + round, {offset(random), offset(random)}, 0.02, 1);
        ASSERT_TRUE(SameAsPlain(a, b, true)) << round;
    }
}

TEST(Cross, NumbersBeyondReason) {
    const double strange[] = {std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              1e308,
                              -1e308,
                              1e200,
                              1e-300,
                              0,
                              1,
                              2};
    std::mt19937 random(9);
    for (int round = 0; round < 300; ++round) {
        const auto make = [&] {
            std::vector<TXY> poly(2 + random() % 25);
            for (TXY& p : poly)
                p = {strange[random() % std::size(strange)], strange[random() % std::size(strange)]};
            return poly;
        };
        ASSERT_TRUE(SameAsPlain(make(), make(), true)) << round;
    }
}

TEST(Cross, DoesNotLookAtEveryPair) {
    // Of 400,000,000 pairs of edges.
    std::mt19937 random(2);
    const auto a = Star(random, 20000, {0, 0}, 999, 1000);
    const auto b = Star(random, 20000, {300, 0}, 999, 1000);
    detail::EdgeGrid grid(a, b, 1e-10);
    int pairs = 0;
    grid.ForEachPair([&](std::uint32_t, std::uint32_t) { ++pairs; });
    EXPECT_LT(pairs, 100);
    TCrossList list;
    Cross(*Polygon(a), *Polygon(b), list, true);
    EXPECT_GE(list.Count(), 2);
    EXPECT_LE(list.Count(), pairs);
}

// Spokes are all near each other in the middle, and the boxes of most of them meet.
TEST(Cross, LooksAtFewPairsOfLongEdgesThatDoNotCross) {
    std::mt19937 random(4);
    const auto a = Star(random, 2000, {0, 0}, 0.05, 1);
    const auto b = Star(random, 2000, {0.001, 0}, 0.05, 1);
    const auto meet = [&](std::size_t i, std::size_t j) {
        const TXY p = a[i], q = a[(i + 1) % a.size()], r = b[j], s = b[(j + 1) % b.size()];
        return std::max(p.x, q.x) >= std::min(r.x, s.x) && std::max(r.x, s.x) >= std::min(p.x, q.x) &&
               std::max(p.y, q.y) >= std::min(r.y, s.y) && std::max(r.y, s.y) >= std::min(p.y, q.y);
    };
    std::size_t boxes = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t j = 0; j < b.size(); ++j)
            boxes += meet(i, j) ? 1 : 0;
    detail::EdgeGrid grid(a, b, 1e-10);
    std::set<std::pair<std::uint32_t, std::uint32_t>> pairs;
    grid.ForEachPair([&](std::uint32_t i, std::uint32_t j) { pairs.emplace(i, j); });
    EXPECT_LT(4 * pairs.size(), boxes);
}

}  // namespace
