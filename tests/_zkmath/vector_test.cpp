#include <zk/_zkmath/vector.h>
#include <zk/_zkxyz/constants.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace zk;

const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

// Not where long double is a double, nor on a simulated processor that makes it one.
bool HasExtendedPrecision() {
    const volatile long double large = 1e300L;
    return large * large / large == large;
}

TEST(Vector, AddsAndSubtracts) {
    EXPECT_EQ(Add(TXY{1, 2}, TXY{3, 5}), (TXY{4, 7}));
    EXPECT_EQ(Add(TXYI{1, 2}, TXYI{3, 5}), (TXYI{4, 7}));
    EXPECT_EQ(Add(TXYZ{1, 2, 3}, TXYZ{3, 5, 7}), (TXYZ{4, 7, 10}));
    EXPECT_EQ(Sub(TXY{1, 2}, TXY{3, 5}), (TXY{-2, -3}));
    EXPECT_EQ(Sub(TXYI{1, 2}, TXYI{3, 5}), (TXYI{-2, -3}));
    EXPECT_EQ(Sub(TXYZ{1, 2, 3}, TXYZ{3, 5, 7}), (TXYZ{-2, -3, -4}));
}

TEST(Vector, PixelsWrapAround) {
    EXPECT_EQ(Add(TXYI{INT_MAX, INT_MIN}, TXYI{1, -1}), (TXYI{INT_MIN, INT_MAX}));
    EXPECT_EQ(Sub(TXYI{INT_MIN, 0}, TXYI{1, INT_MIN}), (TXYI{INT_MAX, INT_MIN}));
    EXPECT_EQ(Normal(TXYI{INT_MIN, 0}), (TXYI{0, INT_MIN}));
}

TEST(Vector, NormalIsAQuarterTurnClockwise) {
    EXPECT_EQ(Normal(TXY{1, 0}), (TXY{0, -1}));
    EXPECT_EQ(Normal(TXY{3, 4}), (TXY{4, -3}));
    EXPECT_EQ(Normal(TXYI{1, 0}), (TXYI{0, -1}));
    EXPECT_EQ(Normal(TXYI{3, 4}), (TXYI{4, -3}));
}

TEST(Vector, CrossProduct) {
    EXPECT_EQ(Vekt(Ex, Ey), Ez);
    EXPECT_EQ(Vekt(Ey, Ez), Ex);
    EXPECT_EQ(Vekt(Ez, Ex), Ey);
    EXPECT_EQ(Vekt(TXYZ{1, 2, 3}, TXYZ{4, 5, 6}), (TXYZ{-3, 6, -3}));
}

TEST(Vector, CrossProductIn2DIsNegated) {
    EXPECT_EQ(Vekt(TXY{1, 0}, TXY{0, 1}), -1);
    EXPECT_EQ(Vekt(TXY{0, 1}, TXY{1, 0}), 1);
    EXPECT_EQ(Vekt(TXY{1, 2}, TXY{3, 4}), 2);
}

TEST(Vector, DotProduct) {
    EXPECT_EQ(Skal(TXYZ{1, 2, 3}, TXYZ{4, 5, 6}), 32);
    EXPECT_EQ(Skal(TXY{1, 2}, TXY{3, 4}), 11);
}

TEST(Vector, TimesANumber) {
    EXPECT_EQ(Mul(TXY{1, 2}, 2.5), (TXY{2.5, 5}));
    EXPECT_EQ(Mul(TXYZ{1, 2, 3}, -2), (TXYZ{-2, -4, -6}));
}

TEST(Vector, PixelsRoundToEven) {
    EXPECT_EQ(Mul(TXYI{1, 1}, 2.5), (TXYI{2, 2}));
    EXPECT_EQ(Mul(TXYI{3, 5}, 0.5), (TXYI{2, 2}));
    EXPECT_EQ(Mul(TXYI{-1, -3}, 0.5), (TXYI{0, -2}));
    EXPECT_EQ(Mul(TXYI{7, -7}, 0.1), (TXYI{1, -1}));
}

TEST(Vector, PixelsOutsideTheRangeStopAtItsLimits) {
    EXPECT_EQ(Mul(TXYI{1, -1}, 1e20), (TXYI{INT_MAX, INT_MIN}));
    EXPECT_EQ(Mul(TXYI{1, -1}, Infinity), (TXYI{INT_MAX, INT_MIN}));
    EXPECT_EQ(Mul(TXYI{1, 0}, NaN), (TXYI{0, 0}));
    EXPECT_EQ(Mul(TXYI{INT_MAX, INT_MIN}, 1), (TXYI{INT_MAX, INT_MIN}));
    EXPECT_EQ(Mul(TXYI{INT_MIN, 1}, -1), (TXYI{INT_MAX, -1}));
}

TEST(Vector, MatrixTimesANumberKeepsTheLastElement) {
    const Tmatrix m = Mul(Identity, 2);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            EXPECT_EQ(m[i][j], i != j ? 0 : i < 3 ? 2 : 1);
    Tmatrix full;
    for (int k = 0; k < 16; ++k)
        full.data()[k] = k + 1;
    const Tmatrix tripled = Mul(full, 3);
    for (int k = 0; k < 15; ++k)
        EXPECT_EQ(tripled.data()[k], 3 * (k + 1));
    EXPECT_EQ(tripled[3][3], 16);
}

TEST(Vector, Length) {
    EXPECT_EQ(Len(TXYZ{2, 3, 6}), 7);
    EXPECT_EQ(Len(TXY{3, -4}), 5);
    EXPECT_EQ(Len(TXYI{-3, 4}), 5);
    EXPECT_EQ(Len(TXYI{INT_MIN, 0}), 2147483648.0);
    EXPECT_EQ(Len(TXYZ{0, 0, 0}), 0);
}

// The squares alone would be out of the range of doubles.
TEST(Vector, LengthIn3DIsFormedInExtendedPrecision) {
    if (!HasExtendedPrecision())
        GTEST_SKIP() << "no extended precision on this platform";
    EXPECT_DOUBLE_EQ(Len(TXYZ{3e200, 4e200, 0}), 5e200);
    EXPECT_DOUBLE_EQ(Len(TXYZ{0, 3e-200, 4e-200}), 5e-200);
}

TEST(Vector, Distance) {
    EXPECT_EQ(Dist(TXY{1, 1}, TXY{4, 5}), 5);
    EXPECT_EQ(Dist(TXYI{1, 1}, TXYI{4, 5}), 5);
    EXPECT_EQ(Dist(TXYZ{1, 1, 1}, TXYZ{3, 4, 7}), 7);
}

TEST(Vector, NormalizeIn3DIsAUnitVector) {
    EXPECT_EQ(Normalize(TXYZ{3, 4, 0}), (TXYZ{0.6, 0.8, 0}));
    EXPECT_EQ(Normalize(TXYZ{0, 0, 3}), Ez);
    EXPECT_EQ(Normalize(TXYZ{0, -7e-11, 0}), (TXYZ{0, -1, 0}));
    EXPECT_EQ(Normalize(TXYZ{0, 0, 0}), (TXYZ{0, 0, 0}));
}

TEST(Vector, NormalizeOfTheSmallestVectors) {
    if (!HasExtendedPrecision())
        GTEST_SKIP() << "no extended precision on this platform";
    const double tiny = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(Normalize(TXYZ{0, 0, tiny}), Ez);
}

TEST(Vector, NormalizeIn2DMultipliesByTheLength) {
    EXPECT_EQ(Normalize(TXY{3, 4}), (TXY{15, 20}));
    EXPECT_EQ(Normalize(TXY{0.5, 0}), (TXY{0.25, 0}));
    EXPECT_EQ(Normalize(TXY{0, 0}), (TXY{0, 0}));
}

TEST(Vector, NormalizeInPlace) {
    TXY a{3, 4};
    _Normalize(a);
    EXPECT_EQ(a, (TXY{15, 20}));
    TXYZ b{3, 4, 0};
    _Normalize(b);
    EXPECT_EQ(b, (TXYZ{0.6, 0.8, 0}));
}

TEST(Vector, Skip) {
    EXPECT_EQ(Skip(TXYZ{0, 0, 7}, 2), (TXYZ{0, 0, 2}));
    EXPECT_EQ(Skip(TXYZ{0, 0, 0}, 2), (TXYZ{0, 0, 0}));
    EXPECT_EQ(Skip(TXY{3, 4}, 2), (TXY{30, 40}));
    EXPECT_EQ(Skip(TXYI{3, 4}, 0.1), (TXYI{2, 2}));  // 1.5 and 2
    EXPECT_EQ(Skip(TXYI{1, 0}, 2.5), (TXYI{2, 0}));
    EXPECT_EQ(Skip(TXYI{INT_MAX, 0}, 2.5), (TXYI{INT_MAX, 0}));
}

TEST(Vector, EqualsWithinTheTolerance) {
    const double near = 0.5e-10;
    const double off = 2e-10;
    EXPECT_TRUE(Equals(TXY{1, 2}, TXY{1 + near, 2 - near}));
    EXPECT_FALSE(Equals(TXY{1, 2}, TXY{1 + off, 2}));
    EXPECT_FALSE(Equals(TXY{1, 2}, TXY{1, 2 + off}));
    EXPECT_TRUE(Equals(TXYZ{1, 2, 3}, TXYZ{1 + near, 2 - near, 3 + near}));
    EXPECT_FALSE(Equals(TXYZ{1, 2, 3}, TXYZ{1 + off, 2, 3}));
    EXPECT_FALSE(Equals(TXYZ{1, 2, 3}, TXYZ{1, 2 + off, 3}));
    EXPECT_FALSE(Equals(TXYZ{1, 2, 3}, TXYZ{1, 2, 3 + off}));
    EXPECT_FALSE(Equals(TXY{NaN, 2}, TXY{NaN, 2}));
}

TEST(Vector, PixelsEqualExactly) {
    EXPECT_TRUE(Equals(TXYI{1, 2}, TXYI{1, 2}));
    EXPECT_FALSE(Equals(TXYI{1, 2}, TXYI{1, 3}));
    EXPECT_FALSE(Equals(TXYI{0, 2}, TXYI{1, 2}));
}

TEST(Vector, MatricesEqualInAllElements) {
    EXPECT_TRUE(Equals(Identity, Orthoprojection));
    for (int k = 0; k < 16; ++k) {
        Tmatrix m = Identity;
        m.data()[k] += 0.5e-10;
        EXPECT_TRUE(Equals(Identity, m));
        m.data()[k] += 2e-10;
        EXPECT_FALSE(Equals(Identity, m));
    }
}

TEST(Vector, CrossProductIsAcrossBoth) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> number(-10, 10);
    for (int i = 0; i < 1000; ++i) {
        const TXYZ a{number(random), number(random), number(random)};
        const TXYZ b{number(random), number(random), number(random)};
        const TXYZ c = Vekt(a, b);
        ASSERT_NEAR(Skal(a, c), 0, 1e-11);
        ASSERT_NEAR(Skal(b, c), 0, 1e-11);
        ASSERT_NEAR(Len(Normalize(a)), 1, 1e-15);
        ASSERT_NEAR(Len(Skip(a, 3)), 3, 1e-14);
    }
}

}  // namespace
