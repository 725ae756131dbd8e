#include <zk/_zkmath/inside.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace zk;

template <class A>
ArrayOwner<A> Make(const std::vector<typename A::Item>& points) {
    ArrayOwner<A> poly;
    ArrayAddData(*poly, static_cast<int>(points.size()), points.data());
    return poly;
}

bool In(TXY p, const std::vector<TXY>& points) {
    return PktInside(p, *Make<TXYARRAY>(points));
}

bool In(TXYI p, const std::vector<TXYI>& points) {
    return PktInside(p, *Make<TXYIARRAY>(points));
}

const std::vector<TXY> Square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};

// The rule as it is told, edge by edge.
template <class P>
bool InByTheRule(const P& p, const std::vector<P>& poly) {
    bool inside = false;
    std::size_t j = poly.size() - 1;
    for (std::size_t i = 0; i < poly.size(); j = i++) {
        const P& pi = poly[i];
        const P& pj = poly[j];
        if ((pi.y <= p.y && p.y < pj.y) || (pj.y <= p.y && p.y < pi.y)) {
            const double x = (double{1} * pj.x - pi.x) * (double{1} * p.y - pi.y) / (double{1} * pj.y - pi.y) + pi.x;
            if (x > p.x)
                inside = !inside;
        }
    }
    return inside;
}

TEST(PktInside, OfASquare) {
    EXPECT_TRUE(In(TXY{0.5, 0.5}, Square));
    EXPECT_FALSE(In(TXY{1.5, 0.5}, Square));
    EXPECT_FALSE(In(TXY{-0.5, 0.5}, Square));
    EXPECT_FALSE(In(TXY{0.5, 1.5}, Square));
    EXPECT_FALSE(In(TXY{0.5, -0.5}, Square));
}

TEST(PktInside, LeftAndLowerEdgesAreInside) {
    EXPECT_TRUE(In(TXY{0, 0.5}, Square));
    EXPECT_FALSE(In(TXY{1, 0.5}, Square));
    EXPECT_TRUE(In(TXY{0.5, 0}, Square));
    EXPECT_FALSE(In(TXY{0.5, 1}, Square));
    EXPECT_TRUE(In(TXY{0, 0}, Square));
    EXPECT_FALSE(In(TXY{1, 0}, Square));
    EXPECT_FALSE(In(TXY{1, 1}, Square));
    EXPECT_FALSE(In(TXY{0, 1}, Square));
}

TEST(PktInside, HasNoTolerance) {
    EXPECT_FALSE(In(TXY{-1e-15, 0.5}, Square));
    EXPECT_TRUE(In(TXY{1 - 1e-15, 0.5}, Square));
}

TEST(PktInside, AVertexOnTheRayCountsOnce) {
    const std::vector<TXY> diamond{{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
    EXPECT_TRUE(In(TXY{0, 0}, diamond));
    EXPECT_FALSE(In(TXY{-2, 0}, diamond));
    EXPECT_FALSE(In(TXY{-2, 1}, diamond));
    EXPECT_FALSE(In(TXY{-2, -1}, diamond));
}

TEST(PktInside, EvenOddWhereAPolygonCrossesItself) {
    const std::vector<TXY> twice{{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {4, 0}, {4, 4}, {0, 4}};
    EXPECT_FALSE(In(TXY{2, 2}, twice));
    const std::vector<TXY> bow{{0, 0}, {2, 2}, {2, 0}, {0, 2}};
    EXPECT_TRUE(In(TXY{0.5, 1}, bow));
    EXPECT_FALSE(In(TXY{1, 0.5}, bow));
}

TEST(PktInside, OfFewPoints) {
    EXPECT_FALSE(In(TXY{0, 0}, {}));
    EXPECT_FALSE(In(TXY{0, 0}, {{0, 0}}));
    EXPECT_FALSE(In(TXY{0, 0.5}, {{1, 0}, {1, 1}}));
    EXPECT_FALSE(PktInside(TXY{0, 0}, TXYARRAY{}));
    EXPECT_FALSE(PktInside(TXYI{0, 0}, TXYIARRAY{}));
}

TEST(PktInside, NoNumbersNeverCount) {
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(In(TXY{NaN, 0.5}, Square));
    EXPECT_FALSE(In(TXY{0.5, NaN}, Square));
    // Of the two edges at the point that is no number none counts, and of the others one.
    EXPECT_TRUE(In(TXY{0.5, 0.5}, {{0, 0}, {1, 0}, {1, 1}, {0, NaN}}));
}

TEST(PktInside, OnPixels) {
    const std::vector<TXYI> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    EXPECT_TRUE(In(TXYI{5, 5}, square));
    EXPECT_TRUE(In(TXYI{0, 5}, square));
    EXPECT_FALSE(In(TXYI{10, 5}, square));
    // The crossing is not rounded to a pixel: at y = 1 the edge is at 3 1/3.
    EXPECT_TRUE(In(TXYI{3, 1}, {{0, 0}, {10, 3}, {-10, 3}}));
    EXPECT_FALSE(In(TXYI{4, 1}, {{0, 0}, {10, 3}, {-10, 3}}));
    const std::int32_t far = 2147483647;
    EXPECT_TRUE(In(TXYI{0, 0}, {{-far, -far}, {far, -far}, {far, far}, {-far, far}}));
}

TEST(PktInside, IsTheRuleOnRandomPolygons) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> pixel(0, 9);
    std::uniform_real_distribution<double> real(0, 9);
    int inside = 0;
    for (int round = 0; round < 20000; ++round) {
        std::vector<TXY> poly(1 + static_cast<std::size_t>(round) % 40);
        std::vector<TXYI> pixels(poly.size());
        for (std::size_t i = 0; i < poly.size(); ++i) {
            poly[i] = round % 2 ? TXY{real(random), real(random)} : TXY{1.0 * pixel(random), 1.0 * pixel(random)};
            pixels[i] = {pixel(random), pixel(random)};
        }
        const TXY p = round % 4 < 2 ? TXY{real(random), real(random)} : TXY{1.0 * pixel(random), 1.0 * pixel(random)};
        const TXYI pi{pixel(random), pixel(random)};
        ASSERT_EQ(In(p, poly), InByTheRule(p, poly)) << round;
        ASSERT_EQ(In(pi, pixels), InByTheRule(pi, pixels)) << round;
        inside += In(p, poly);
    }
    EXPECT_GT(inside, 4000);
}

// Most of a large polygon is above or below the ray, many vertices in a row.
TEST(PktInside, IsTheRuleWhereManyVerticesAreOnOneSide) {
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    std::mt19937 random(2);
    std::uniform_real_distribution<double> number(-1.1, 1.1);
    int inside = 0;
    for (int round = 0; round < 5000; ++round) {
        const std::size_t n = 3 + static_cast<std::size_t>(round) % 90;
        std::vector<TXY> poly(n);
        std::vector<TXYI> pixels(n);
        for (std::size_t i = 0; i < n; ++i) {
            const double angle = 6.283185307179586 * static_cast<double>(i) / static_cast<double>(n);
            poly[i] = {std::cos(angle), std::sin(angle)};
            pixels[i] = {static_cast<std::int32_t>(20 * poly[i].x), static_cast<std::int32_t>(20 * poly[i].y)};
        }
        if (round % 10 == 0)
            poly[random() % n].y = NaN;
        // Every other one at the height of a vertex.
        const TXY p{number(random), round % 2 ? poly[random() % n].y : number(random)};
        const TXYI pi{static_cast<std::int32_t>(20 * p.x), pixels[random() % n].y};
        ASSERT_EQ(In(p, poly), InByTheRule(p, poly)) << round;
        ASSERT_EQ(In(pi, pixels), InByTheRule(pi, pixels)) << round;
        inside += In(p, poly);
    }
    EXPECT_GT(inside, 1500);
}

}  // namespace
