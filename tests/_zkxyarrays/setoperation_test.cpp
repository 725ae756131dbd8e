#include "polygons.h"
#include "rounds.h"

#include <zk/_zkmath/inside.h>
#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/orientation.h>
#include <zk/_zkxyarrays/overlay.h>
#include <zk/_zkxyarrays/setoperation.h>
#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/message.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>

namespace {

using namespace zk;
using Poly = std::vector<TXY>;

std::vector<Poly> Combine(const Poly& a, const Poly& b, bool unite) {
    TlistOFXYArray list;
    SetOperation(*Polygon(a), *Polygon(b), list, unite);
    std::vector<Poly> polys;
    for (int i = 0; i < list.Count(); ++i)
        polys.push_back(Points(*list[i]));
    return polys;
}

// Counter-clockwise positive.
double Area(const Poly& p) {
    return -Vekt(*Polygon(p)) / 2;
}

Poly Rect(double x, double y, double w, double h) {
    return {{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}};
}

Poly Turned(Poly p) {
    std::ranges::reverse(p);
    return p;
}

bool Inside(const TXY& p, const std::vector<Poly>& polys) {
    bool inside = false;
    for (const Poly& poly : polys)
        inside ^= PktInside(p, *Polygon(poly));
    return inside;
}

// The same vertices in the same cyclic order.
bool SameRing(Poly a, const Poly& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a == b)
            return true;
        std::rotate(a.begin(), a.begin() + 1, a.end());
    }
    return a == b;
}

TEST(SetOperation, CrossingSquares) {
    const Poly a = Rect(0, 0, 2, 2);
    const Poly b = Rect(1, 1, 2, 2);
    for (const Poly& x : {a, Turned(a)})
        for (const Poly& y : {b, Turned(b)}) {
            const auto united = Combine(x, y, true);
            ASSERT_EQ(united.size(), 1u);
            EXPECT_TRUE(SameRing(united[0], {{0, 0}, {2, 0}, {2, 1}, {3, 1}, {3, 3}, {1, 3}, {1, 2}, {0, 2}}));
            const auto common = Combine(x, y, false);
            ASSERT_EQ(common.size(), 1u);
            EXPECT_TRUE(SameRing(common[0], {{1, 1}, {2, 1}, {2, 2}, {1, 2}}));
        }
}

TEST(SetOperation, DisjointSquaresAreTheSameAsBefore) {
    const Poly a = Rect(0, 0, 1, 1);
    const Poly b = Turned(Rect(3, 0, 1, 1));
    EXPECT_EQ(Combine(a, b, true), (std::vector<Poly>{a, b}));
    EXPECT_TRUE(Combine(a, b, false).empty());
}

TEST(SetOperation, OneInsideTheOther) {
    const Poly outer = Rect(0, 0, 4, 4);
    const Poly inner = Rect(1, 1, 1, 1);
    for (const bool swapped : {false, true}) {
        const Poly& a = swapped ? inner : outer;
        const Poly& b = swapped ? outer : inner;
        EXPECT_EQ(Combine(a, b, true), std::vector<Poly>{outer});
        EXPECT_EQ(Combine(a, b, false), std::vector<Poly>{inner});
    }
}

TEST(SetOperation, AppendsToTheResult) {
    TlistOFXYArray list;
    const auto a = Polygon(Rect(0, 0, 2, 2));
    const auto b = Polygon(Rect(1, 1, 2, 2));
    SetOperation(*a, *b, list, true);
    SetOperation(*a, *b, list, false);
    SetOperation(*a, *b, list, false);
    ASSERT_EQ(list.Count(), 3);
    EXPECT_EQ(Points(*list[1]), Points(*list[2]));
    EXPECT_EQ(Points(*a), Rect(0, 0, 2, 2));
}

TEST(SetOperation, TouchingAtAPointIsNotCrossing) {
    const Poly a = Rect(0, 0, 2, 2);
    for (const Poly& b : {Rect(2, 2, 1, 1), Poly{{2, 1}, {3, 0.5}, {3, 1.5}}, Poly{{1, 2}, {0, 3}, {2, 3}}}) {
        EXPECT_EQ(Combine(a, b, true), (std::vector<Poly>{a, b}));
        EXPECT_TRUE(Combine(a, b, false).empty());
    }
    const Poly inner{{2, 1}, {1, 1.5}, {1, 0.5}};
    EXPECT_EQ(Combine(a, inner, true), std::vector<Poly>{a});
    EXPECT_EQ(Combine(a, inner, false), std::vector<Poly>{inner});
}

TEST(SetOperation, SharedEdgesMelt) {
    const auto united = Combine(Rect(0, 0, 1, 1), Rect(1, 0, 1, 1), true);
    ASSERT_EQ(united.size(), 1u);
    EXPECT_TRUE(SameRing(united[0], {{0, 0}, {1, 0}, {2, 0}, {2, 1}, {1, 1}, {0, 1}}));
    EXPECT_TRUE(Combine(Rect(0, 0, 1, 1), Rect(1, 0, 1, 1), false).empty());
}

TEST(SetOperation, HolesRunClockwise) {
    const Poly c{{0, 0}, {3, 0}, {3, 1}, {1, 1}, {1, 2}, {3, 2}, {3, 3}, {0, 3}};
    const auto united = Combine(c, Rect(2, -1, 2, 5), true);
    ASSERT_EQ(united.size(), 2u);
    EXPECT_EQ(std::max(Area(united[0]), Area(united[1])), 16);
    EXPECT_EQ(std::min(Area(united[0]), Area(united[1])), -1);
}

TEST(SetOperation, AHoleThatTouchesTheOutlineIsAnArrayOfItsOwn) {
    // The hole between them touches the outline in the corner (2, 2), where the two meet again.
    const Poly a{{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {2, 2}, {2, 3}, {0, 3}};
    const Poly b{{2, 0}, {3, 0}, {3, 3}, {2, 2}};
    const auto united = Combine(a, b, true);
    double area = 0;
    for (const Poly& p : united) {
        area += Area(p);
        for (std::size_t i = 0; i < p.size(); ++i)
            EXPECT_EQ(std::ranges::count(p, p[i]), 1);
    }
    EXPECT_EQ(area, 5 + 2.5);
    EXPECT_EQ(united.size(), 2u);
}

TEST(SetOperation, InputVerticesComeOutToTheBit) {
    std::mt19937 random(6);
    std::uniform_real_distribution<double> number(0.3, 1);
    for (const double size : {1e-6, 1.0, 1e6, 1e-200, 1e300}) {
        const auto star = [&](double x) {
            Poly p;
            for (int i = 0; i < 20; ++i) {
                const double r = size * number(random);
                p.push_back({size * x + r * std::cos(i * 0.31415926), r * std::sin(i * 0.31415926)});
            }
            return p;
        };
        const Poly a = star(0);
        const Poly b = star(0.3);
        std::size_t own = 0;
        for (const bool unite : {true, false})
            for (const Poly& p : Combine(a, b, unite))
                for (const TXY& v : p)
                    own += std::ranges::count(a, v) + std::ranges::count(b, v);
        // Every vertex is either inside of the other or outside, so that it is in one of the two results.
        EXPECT_EQ(own, a.size() + b.size()) << size;
    }
}

TEST(SetOperation, PolygonsThatCrossThemselves) {
    const Poly bow{{0, 0}, {4, 4}, {4, 0}, {0, 4}};
    const Poly bar = Rect(-1, 0.5, 6, 1);
    const auto united = Combine(bow, bar, true);
    const auto common = Combine(bow, bar, false);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> number(-1, 5);
    for (int i = 0; i < 1000; ++i) {
        const TXY p{number(random), number(random)};
        const bool inA = Inside(p, {bow});
        const bool inB = Inside(p, {bar});
        ASSERT_EQ(Inside(p, united), inA || inB);
        ASSERT_EQ(Inside(p, common), inA && inB);
    }
}

// Polygons that cross and overlap themselves and each other in every way, also on a stretch that they share.
TEST(SetOperation, OnWildGridsItIsRight) {
    std::mt19937 random(12);
    for (int round = 0; round < test::Rounds(4000); ++round) {
        const int grid = 2 + static_cast<int>(random() % 6);
        const double step = round % 2 == 0 ? 1 : 0.1;
        const unsigned most = round % 50 == 0 ? 50 : 12;
        const auto make = [&] {
            Poly p(2 + random() % most);
            for (TXY& v : p)
                v = {step * static_cast<double>(random() % grid), step * static_cast<double>(random() % grid)};
            return p;
        };
        const Poly a = make();
        const Poly b = make();
        const auto united = Combine(a, b, true);
        const auto common = Combine(a, b, false);
        for (double x = -0.123 * step; x < grid * step; x += 0.777 * step)
            for (double y = -0.177 * step; y < grid * step; y += 0.793 * step) {
                const bool inA = Inside({x, y}, {a});
                const bool inB = Inside({x, y}, {b});
                ASSERT_EQ(Inside({x, y}, united), inA || inB) << round;
                ASSERT_EQ(Inside({x, y}, common), inA && inB) << round;
            }
    }
}

// The first crosses its own bottom edge, where it lies on the top edge of the second: no vertex is at (7/3, 0).
TEST(SetOperation, CrossingOneselfOnASharedStretch) {
    const Poly a{{0, 0}, {4, 0}, {3, 2}, {2, -1}};
    const Poly b = Rect(1, -2, 2, 2);
    detail::Outline outlines[2];
    detail::Prepare(a, b, outlines);
    try {
        detail::Overlay overlay(outlines);
        overlay.Lay();
        overlay.Trace(true);
        FAIL() << "fits together as it is";
    } catch (const EError& e) {
        EXPECT_STREQ(e.what(), "stack error");
    }
    EXPECT_TRUE(detail::SplitWhereShared(outlines, 52));
    EXPECT_EQ(outlines[0].Count(), 6u);
    EXPECT_EQ(outlines[1].Count(), 5u);
    EXPECT_FALSE(detail::SplitWhereShared(outlines, 52));
    const auto united = Combine(a, b, true);
    const auto common = Combine(a, b, false);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> number(-3, 5);
    for (int i = 0; i < 1000; ++i) {
        const TXY p{number(random), number(random)};
        ASSERT_EQ(Inside(p, united), Inside(p, {a}) || Inside(p, {b}));
        ASSERT_EQ(Inside(p, common), Inside(p, {a}) && Inside(p, {b}));
    }
}

TEST(SetOperation, WithoutAnArea) {
    const Poly square = Rect(0, 0, 2, 2);
    const Poly none;
    const Poly line{{1, 1}, {5, 1}};
    const Poly flat{{1, 1}, {5, 1}, {3, 1}};
    const Poly same{{1, 1}, {1, 1}, {1, 1}};
    for (const Poly& p : {none, line, flat, same}) {
        EXPECT_EQ(Combine(square, p, true), std::vector<Poly>{square});
        EXPECT_EQ(Combine(p, square, true), std::vector<Poly>{square});
        EXPECT_TRUE(Combine(square, p, false).empty());
        EXPECT_TRUE(Combine(p, p, true).empty());
    }
}

// It crosses nothing, and is inside of the other or not.
TEST(SetOperation, ASinglePoint) {
    const Poly square = Rect(0, 0, 2, 2);
    const Poly inside{{1, 1}};
    const Poly outside{{5, 5}};
    EXPECT_EQ(Combine(square, outside, true), (std::vector<Poly>{square, outside}));
    EXPECT_EQ(Combine(outside, square, true), (std::vector<Poly>{outside, square}));
    EXPECT_TRUE(Combine(square, outside, false).empty());
    EXPECT_EQ(Combine(square, inside, true), std::vector<Poly>{square});
    EXPECT_EQ(Combine(square, inside, false), std::vector<Poly>{inside});
    EXPECT_EQ(Combine(inside, square, false), std::vector<Poly>{inside});
    EXPECT_EQ(Combine(inside, outside, true), (std::vector<Poly>{inside, outside}));
    EXPECT_TRUE(Combine(inside, inside, false).empty());
    EXPECT_EQ(Combine(inside, {}, true), std::vector<Poly>{inside});
    EXPECT_TRUE(Combine(inside, {}, false).empty());
    EXPECT_TRUE(Combine({}, {}, true).empty());
}

TEST(SetOperation, NoNumbersTakeNoPart) {
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    const double Infinity = std::numeric_limits<double>::infinity();
    const Poly square = Rect(0, 0, 2, 2);
    for (const double bad : {NaN, Infinity, -Infinity}) {
        const Poly p{{1, 1}, {bad, 1}, {3, 3}};
        EXPECT_EQ(Combine(square, p, true), std::vector<Poly>{square});
        EXPECT_EQ(Combine(p, square, true), std::vector<Poly>{square});
        EXPECT_TRUE(Combine(square, p, false).empty());
        EXPECT_TRUE(Combine(p, p, true).empty());
    }
}

TEST(SetOperation, HugeAndTinyTogether) {
    const double big = std::numeric_limits<double>::max();
    const double tiny = std::numeric_limits<double>::denorm_min();
    const Poly all{{-big, -big}, {big, -big}, {big, big}, {-big, big}};
    EXPECT_EQ(Combine(all, Rect(0, 0, 1, 1), true), std::vector<Poly>{all});
    const Poly large{{-1e130, -1e130}, {1e130, -1e130}, {1e130, 1e130}, {-1e130, 1e130}};
    EXPECT_EQ(Combine(large, Rect(0, 0, 1, 1), false), std::vector<Poly>{Rect(0, 0, 1, 1)});
    EXPECT_EQ(Combine(Rect(0, 0, 2 * tiny, 2 * tiny), Rect(8 * tiny, 0, tiny, tiny), true).size(), 2u);
    const auto common = Combine(Rect(0, 0, 4 * tiny, 4 * tiny), Rect(2 * tiny, 2 * tiny, 4 * tiny, 4 * tiny), false);
    ASSERT_EQ(common.size(), 1u);
    EXPECT_TRUE(SameRing(common[0], Rect(2 * tiny, 2 * tiny, 2 * tiny, 2 * tiny)));
    std::mt19937 random(8);
    const double numbers[] = {0, tiny, -tiny, 1e-300, 1, -1, 1e300, -1e300, big, -big, 1e-100, 1e100};
    for (int round = 0; round < 2000; ++round) {
        const auto make = [&] {
            Poly p(3 + random() % 6);
            for (TXY& v : p)
                v = {numbers[random() % std::size(numbers)], numbers[random() % std::size(numbers)]};
            return p;
        };
        for (const Poly& p : Combine(make(), make(), round % 2 == 0))
            for (const TXY& v : p)
                ASSERT_TRUE(std::isfinite(v.x) && std::isfinite(v.y));
    }
}

// Edges whose length is beyond all numbers.
TEST(SetOperation, CrossingsOfEnormousEdgesAreWhereTheyBelong) {
    const double wide = 1.2e308, narrow = 0.3e308, high = 1.5e308;
    const Poly square{{-wide, -wide}, {wide, -wide}, {wide, wide}, {-wide, wide}};
    const Poly strip{{-narrow, -high}, {narrow, -high}, {narrow, high}, {-narrow, high}};
    const auto common = Combine(square, strip, false);
    ASSERT_EQ(common.size(), 1u);
    EXPECT_EQ(common[0].size(), 4u);
    for (const TXY& p : common[0]) {
        EXPECT_NEAR(std::fabs(p.x), narrow, 1e293);
        EXPECT_NEAR(std::fabs(p.y), wide, 1e293);
    }
    const Poly slope{{-1.6e308, -0.8e308}, {1.6e308, 0.8e308}, {1.6e308, 1.6e308}, {-1.6e308, 1.6e308}};
    const auto under = Combine(slope, {{0.4e308, -high}, {wide, -high}, {wide, high}, {0.4e308, high}}, false);
    ASSERT_EQ(under.size(), 1u);
    for (const TXY& p : under[0]) {
        if (p.y < 1e308) {
            EXPECT_NEAR(p.y, p.x / 2, 1e293) << p.x;
        }
    }
}

TEST(SetOperation, ManyResultsAreNotTooManyWalks) {
    // Two combs: the intersection falls into more pieces than a trace that calls itself could follow.
    Poly comb{{0, 0}};
    for (int i = 0; i < 100; ++i) {
        comb.push_back({i + 0.0, 200});
        comb.push_back({i + 0.5, 200});
        comb.push_back({i + 0.5, 1});
        comb.push_back({i + 1.0, 1});
    }
    comb.push_back({100, 0});
    Poly other;
    for (const TXY& p : comb)
        other.push_back({p.y * 1.01 - 3.3, p.x * 2 + 10.7});
    const auto before = SetMessageHandler([](const std::string&) {});
    const auto common = Combine(comb, other, false);
    EXPECT_GT(common.size(), 9000u);
    double area = 0;
    for (const Poly& p : common)
        area += Area(p);
    double united = 0;
    for (const Poly& p : Combine(comb, other, true))
        united += Area(p);
    EXPECT_NEAR(area + united, std::fabs(Area(comb)) + std::fabs(Area(other)), 1e-7);
    SetMessageHandler(before);
}

// --- exact decisions ---

TEST(Exact, OrientationOfNearlyStraightPoints) {
    // Points on a line that rounding would put beside it, and a last bit that it would not see.
    const TXY a{0.1, 0.1}, b{0.2, 0.2}, c{0.3, 0.3};
    EXPECT_EQ(detail::Orientation(a, b, c), 0);
    EXPECT_EQ(detail::Orientation({0.5, 0.5}, {12, 12}, {24, 24}), 0);
    EXPECT_EQ(detail::Orientation({0.5 + 0x1p-53, 0.5}, {12, 12}, {24, 24}), -1);
    EXPECT_EQ(detail::Orientation({0.5, 0.5 + 0x1p-53}, {12, 12}, {24, 24}), 1);
    EXPECT_EQ(detail::Orientation({1e-30, 0}, {1e30, 1e30}, {-1e30, -1e30}),
              detail::Orientation({1e-30, 0}, {1, 1}, {-1, -1}));
}

TEST(Exact, OrderAlongAnEdge) {
    const TXY p0{0, 0}, p1{1, 0};
    EXPECT_EQ(detail::CompareAlong(p0, p1, {0.25, -1}, {0.25, 1}, {0.75, -1}, {0.75, 1}), -1);
    EXPECT_EQ(detail::CompareAlong(p0, p1, {0.75, 1}, {0.75, -1}, {0.25, -1}, {0.25, 1}), 1);
    EXPECT_EQ(detail::CompareAlong(p0, p1, {0, -1}, {1, 1}, {0, 1}, {1, -1}), 0);
    EXPECT_EQ(detail::CompareAlong(p0, p1, {0, -1}, {1, 1}, {0, 1}, {1 + 0x1p-52, -1}), -1);
    EXPECT_EQ(detail::CompareAlong(p0, p1, {0, -1}, {1, 1}, {0, 1}, {1 - 0x1p-53, -1}), 1);
}

// --- cases as files ---

struct Case {
    Poly polys[2];
    double area[2] = {0, 0};  // union, intersection
    std::size_t count[2] = {0, 0};
};

// "a" or "b", then a vertex on each line; "union" and "intersection" with "area <number> count <number>".
Case ReadCase(const std::filesystem::path& file) {
    Case c;
    std::ifstream in(file);
    std::string line;
    Poly* poly = nullptr;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        std::string word, ignored;
        if (line.empty() || line[0] == '#')
            continue;
        if (line == "a" || line == "b") {
            poly = &c.polys[line == "b"];
        } else if (line.starts_with("union") || line.starts_with("intersection")) {
            const int which = line[0] == 'i';
            words >> word >> ignored >> c.area[which] >> ignored >> c.count[which];
        } else if (poly) {
            TXY p;
            words >> p.x >> p.y;
            poly->push_back(p);
        }
        EXPECT_FALSE(words.fail()) << file << ": " << line;
    }
    return c;
}

TEST(SetOperationCases, ComeOutAsTheirFilesSay) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(CASES_DIR)) {
        if (entry.path().extension() != ".txt" || entry.path().filename().string().starts_with("face_"))
            continue;
        ++files;
        SCOPED_TRACE(entry.path().filename());
        const Case c = ReadCase(entry.path());
        for (int turn = 0; turn < 8; ++turn) {
            Poly a = turn & 1 ? Turned(c.polys[0]) : c.polys[0];
            Poly b = turn & 2 ? Turned(c.polys[1]) : c.polys[1];
            if (turn & 4)
                std::swap(a, b);
            for (int which = 0; which < 2; ++which) {
                const auto polys = Combine(a, b, which == 0);
                EXPECT_EQ(polys.size(), c.count[which]);
                // Copies have the direction of the input, so that areas count by what is inside of what.
                double sum = 0;
                for (const Poly& p : polys)
                    sum += p == a || p == b ? std::fabs(Area(p)) : Area(p);
                if (!entry.path().filename().string().starts_with("bow")) {
                    EXPECT_NEAR(sum, c.area[which], 1e-9 * c.area[0]);
                }
            }
        }
    }
    EXPECT_GE(files, 20);
}

}  // namespace
