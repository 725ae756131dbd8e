#include "polygons.h"

#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/distance.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace zk;

struct Nearest {
    double distance = 0;
    int edgeA = -7;
    double placeA = -7;
    TXYZ pointA{-7, -7, -7};
    int edgeB = -7;
    double placeB = -7;
    TXYZ pointB{-7, -7, -7};
};

Nearest Measure(const std::vector<TXYZ>& a, const std::vector<TXYZ>& b) {
    Nearest n;
    n.distance = Dist(*Polygon3d(a), *Polygon3d(b), n.edgeA, n.placeA, n.pointA, n.edgeB, n.placeB, n.pointB);
    return n;
}

TEST(PolygonDist, BesideEachOther) {
    const Nearest n = Measure(Square3d, {{3, 0.5, 0}, {4, 0, 0}, {4, 1, 0}});
    EXPECT_EQ(n.distance, 2);
    EXPECT_EQ(n.edgeA, 1);
    EXPECT_EQ(n.placeA, 0.5);
    EXPECT_EQ(n.pointA, (TXYZ{1, 0.5, 0}));
    EXPECT_EQ(n.edgeB, 0);
    EXPECT_EQ(n.placeB, 0);
    EXPECT_EQ(n.pointB, (TXYZ{3, 0.5, 0}));
}

TEST(PolygonDist, OneInsideTheOtherIsAsFarAsTheOutlines) {
    const Nearest n = Measure({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, {{4, 3, 0}, {6, 3, 0}, {5, 5, 0}});
    EXPECT_EQ(n.distance, 3);
    EXPECT_EQ(n.edgeA, 0);
    EXPECT_EQ(n.pointA.y, 0);
    EXPECT_EQ(n.pointB.y, 3);
}

TEST(PolygonDist, MeetingIsZero) {
    const Nearest n = Measure(Square3d, {{0.5, 0.5, 0}, {2, 0.5, 0}, {2, 0.75, 0}});
    EXPECT_EQ(n.distance, 0);
    EXPECT_EQ(n.edgeA, 1);
    EXPECT_EQ(n.pointA, (TXYZ{1, 0.5, 0}));
    EXPECT_EQ(n.pointB, n.pointA);
}

TEST(PolygonDist, InSpace) {
    // Two lines passing over each other.
    const Nearest n = Measure({{-1, 0, 0}, {1, 0, 0}}, {{0, -1, 2}, {0, 1, 2}});
    EXPECT_EQ(n.distance, 2);
    EXPECT_EQ(n.pointA, (TXYZ{0, 0, 0}));
    EXPECT_EQ(n.pointB, (TXYZ{0, 0, 2}));
    EXPECT_EQ(n.placeA, 0.5);
    EXPECT_EQ(n.placeB, 0.5);
}

TEST(PolygonDist, TheFirstOfEquallyNearCounts) {
    const Nearest n =
        Measure({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{2, 0, 0}, {3, 0, 0}, {3, 1, 0}, {2, 1, 0}});
    EXPECT_EQ(n.distance, 1);
    EXPECT_EQ(n.edgeA, 0);
    EXPECT_EQ(n.placeA, 1);
    EXPECT_EQ(n.edgeB, 0);
    EXPECT_EQ(n.placeB, 0);
}

TEST(PolygonDist, OfFewPoints) {
    EXPECT_EQ(Measure({{1, 2, 3}}, {{1, 2, 5}}).distance, 2);
    const Nearest none = Measure({}, Square3d);
    EXPECT_EQ(none.distance, 1e20);
    EXPECT_EQ(none.edgeA, -7);
    EXPECT_EQ(none.pointB, (TXYZ{-7, -7, -7}));
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Measure({{NaN, 0, 0}}, Square3d).distance, 1e20);
}

TEST(PolygonDist, IsTheLeastOfAllPairs) {
    std::mt19937 random(4);
    std::uniform_real_distribution<double> number(-1, 1);
    for (int round = 0; round < 300; ++round) {
        const auto make = [&](double x) {
            std::vector<TXYZ> poly(1 + random() % 60);
            for (TXYZ& p : poly)
                p = {x + number(random), number(random), round % 2 ? 0 : number(random)};
            return poly;
        };
        const auto a = make(0);
        const auto b = make(round % 5);
        const Nearest n = Measure(a, b);
        double least = 1e20;
        int edgeA = -1, edgeB = -1;
        for (std::size_t i = 0; i < a.size(); ++i)
            for (std::size_t j = 0; j < b.size(); ++j) {
                const auto pair = detail::Nearest(a[i], a[(i + 1) % a.size()], b[j], b[(j + 1) % b.size()]);
                if (pair.distance2 < least) {
                    least = pair.distance2;
                    edgeA = static_cast<int>(i);
                    edgeB = static_cast<int>(j);
                }
                // No two points of the segments are nearer than what Nearest says.
                for (int k = 0; k < 3; ++k) {
                    const double s = 0.5 * (1 + number(random)), t = 0.5 * (1 + number(random));
                    const TXYZ p = Add(a[i], Mul(Sub(a[(i + 1) % a.size()], a[i]), s));
                    const TXYZ q = Add(b[j], Mul(Sub(b[(j + 1) % b.size()], b[j]), t));
                    ASSERT_GE(Dist(p, q), std::sqrt(pair.distance2) - 1e-12);
                }
            }
        ASSERT_EQ(n.distance, std::sqrt(least)) << round;
        ASSERT_EQ(n.edgeA, edgeA);
        ASSERT_EQ(n.edgeB, edgeB);
        ASSERT_NEAR(Dist(n.pointA, n.pointB), n.distance, 1e-12);
        const auto on = [](const std::vector<TXYZ>& p, int edge, double place) {
            const auto i = static_cast<std::size_t>(edge);
            return Add(p[i], Mul(Sub(p[(i + 1) % p.size()], p[i]), place));
        };
        ASSERT_LT(Dist(on(a, n.edgeA, n.placeA), n.pointA), 1e-12);
        ASSERT_LT(Dist(on(b, n.edgeB, n.placeB), n.pointB), 1e-12);
    }
}

}  // namespace
