#include <zk/_zkmath/between.h>

#include <gtest/gtest.h>

#include <climits>
#include <limits>

namespace {

using namespace zk;

const double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(BetweenDoubles, GoesAroundThePeriod) {
    EXPECT_TRUE(Between(10.0, 1.0, 2.0, 3.0));
    EXPECT_FALSE(Between(10.0, 1.0, 3.0, 2.0));
    EXPECT_TRUE(Between(10.0, 8.0, 1.0, 3.0));
    EXPECT_FALSE(Between(10.0, 8.0, 3.0, 1.0));
    EXPECT_TRUE(Between(10.0, 8.0, 9.0, 3.0));
    EXPECT_TRUE(Between(10.0, 18.0, -9.0, 3.0));
}

TEST(BetweenDoubles, AZeroSpanIsTheWholePeriod) {
    EXPECT_TRUE(Between(10.0, 1.0, 1.0, 3.0));
    EXPECT_TRUE(Between(10.0, 1.0, 1.0, 1.0));
    EXPECT_TRUE(Between(10.0, 1.0, 1 + 0.5e-10, 1.0));
    EXPECT_TRUE(Between(10.0, 1.0, 11.0, 1.0));
    EXPECT_TRUE(Between(10.0, 1.0, 1 - 0.5e-10, 1.0));
}

TEST(BetweenDoubles, EndsAreComparedWithTheTolerance) {
    EXPECT_FALSE(Between(10.0, 1.0, 3.0, 3.0));
    EXPECT_FALSE(Between(10.0, 1.0, 3.0, 3 + 0.5e-10));
    EXPECT_TRUE(Between(10.0, 1.0, 3.0, 3 + 2e-10));
    EXPECT_FALSE(Between(10.0, 1.0, 3.0, 1.0));
}

TEST(BetweenDoubles, NaNIsNotBetween) {
    EXPECT_FALSE(Between(10.0, NaN, 2.0, 3.0));
    EXPECT_FALSE(Between(10.0, 1.0, NaN, 3.0));
    EXPECT_FALSE(Between(10.0, 1.0, 2.0, NaN));
}

TEST(BetweenDoubles, MixedNumbersAreDoubles) {
    EXPECT_TRUE(Between(10, 1, 1, 3.0));
    EXPECT_TRUE(Between(6.28, 0, 1, 2));
}

TEST(BetweenInts, GoesAroundThePeriod) {
    EXPECT_TRUE(Between(10, 1, 2, 3));
    EXPECT_FALSE(Between(10, 1, 3, 2));
    EXPECT_FALSE(Between(10, 1, 3, 3));
    EXPECT_TRUE(Between(10, 8, 1, 3));
    EXPECT_TRUE(Between(10, 8, 9, 3));
    EXPECT_FALSE(Between(10, 8, 3, 1));
}

TEST(BetweenInts, AZeroSpanIsFalse) {
    EXPECT_FALSE(Between(10, 1, 1, 3));
    EXPECT_FALSE(Between(10, 1, 1, 1));
}

TEST(BetweenInts, TheEndAtTheStartIsAWholePeriodAway) {
    EXPECT_TRUE(Between(10, 1, 2, 1));
    EXPECT_TRUE(Between(10, 1, 0, 1));
}

TEST(BetweenInts, WrapsOnce) {
    EXPECT_FALSE(Between(10, 25, 1, 3));  // both still negative
    EXPECT_TRUE(Between(10, 1, 25, 30));
}

TEST(BetweenInts, ExtremeNumbersDoNotOverflow) {
    EXPECT_TRUE(Between(1, INT_MIN, 0, INT_MAX));
    EXPECT_FALSE(Between(1, INT_MAX, INT_MIN, INT_MIN));
    EXPECT_FALSE(Between(INT_MIN, INT_MAX, INT_MIN, INT_MAX));
}

// The sector runs clockwise (y up), in the sense in which the 2D Vekt is positive.
TEST(BetweenDirections, SectorUpToAHalfTurn) {
    const TXY up{0, 1}, right{1, 0}, down{0, -1}, left{-1, 0};
    EXPECT_TRUE(Between(up, right, {1, 1}));
    EXPECT_FALSE(Between(up, right, {-1, 1}));
    EXPECT_FALSE(Between(up, right, {1, -1}));
    EXPECT_FALSE(Between(up, right, {-1, -1}));
    EXPECT_TRUE(Between(up, down, right));
    EXPECT_FALSE(Between(up, down, left));
    EXPECT_TRUE(Between(down, up, left));
}

TEST(BetweenDirections, SectorBeyondAHalfTurn) {
    const TXY up{0, 1}, right{1, 0};
    EXPECT_TRUE(Between(right, up, {1, -1}));
    EXPECT_TRUE(Between(right, up, {-1, -1}));
    EXPECT_TRUE(Between(right, up, {-1, 1}));
    EXPECT_FALSE(Between(right, up, {1, 1}));
}

TEST(BetweenDirections, BoundingRaysAreNeverInside) {
    const TXY up{0, 1}, right{1, 0};
    EXPECT_FALSE(Between(up, right, up));
    EXPECT_FALSE(Between(up, right, right));
    EXPECT_FALSE(Between(right, up, {0, 3}));
    EXPECT_FALSE(Between(right, up, {3, 0}));
    EXPECT_FALSE(Between(up, right, {1e-11, 1}));
    EXPECT_FALSE(Between(up, up, right));
}

TEST(BetweenInts, BeyondThePeriodAnEndAtTheStartIsNotBetweenEither) {
    EXPECT_FALSE(Between(10, 0, 0, 100));
    EXPECT_FALSE(Between(10, 3, 3, 50));
}

}  // namespace
