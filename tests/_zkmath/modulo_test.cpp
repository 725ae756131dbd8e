#include <zk/_zkmath/modulo.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace zk;

const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

TEST(ModuloInt, IsNonNegative) {
    EXPECT_EQ(_modulo(-1, 5), 4);
    EXPECT_EQ(_modulo(-5, 5), 0);
    EXPECT_EQ(_modulo(-6, 5), 4);
    EXPECT_EQ(_modulo(0, 5), 0);
    EXPECT_EQ(_modulo(4, 5), 4);
    EXPECT_EQ(_modulo(5, 5), 0);
    EXPECT_EQ(_modulo(13, 5), 3);
    EXPECT_EQ(_modulo(INT_MIN, INT_MAX), INT_MAX - 1);
}

TEST(ModuloInt, NeverTraps) {
    EXPECT_EQ(_modulo(7, 0), 0);
    EXPECT_EQ(_modulo(-7, 0), 0);
    EXPECT_EQ(_modulo(INT_MIN, -1), 0);
    EXPECT_EQ(_modulo(7, -5), 2);
    EXPECT_EQ(_modulo(-7, -5), -7);
    EXPECT_EQ(_modulo(INT_MAX, INT_MIN), INT_MAX);
    EXPECT_EQ(_modulo(INT_MIN, INT_MIN), 0);
}

TEST(ModuloDouble, TakesWholePeriodsAway) {
    EXPECT_EQ(_modulo(7.5, 2.5), 0);
    EXPECT_EQ(_modulo(-0.5, 2.0), 1.5);
    EXPECT_EQ(_modulo(1.0, 2.0), 1);
    EXPECT_EQ(_modulo(5.25, 2.0), 1.25);
    EXPECT_EQ(_modulo(-4.0, 2.0), 0);
    EXPECT_EQ(_modulo(0.0, 2.0), 0);
}

TEST(ModuloDouble, MapsAValueNearThePeriodToAboutZero) {
    EXPECT_EQ(_modulo(2 - 0.5e-10, 2.0), 2 - 0.5e-10 - 2);
    EXPECT_EQ(_modulo(2 + 0.5e-10, 2.0), 2 + 0.5e-10 - 2);
    EXPECT_EQ(_modulo(2 - 2e-10, 2.0), 2 - 2e-10);
    EXPECT_EQ(_modulo(-0.5e-10, 2.0), -0.5e-10);
    EXPECT_EQ(_modulo(-2e-10, 2.0), 2 - 2e-10);
}

// Each step is rounded by itself, which dividing would not reproduce.
TEST(ModuloDouble, IsRepeatedSubtractionToTheBit) {
    const double turn = 6.283185307179586;
    EXPECT_EQ(_modulo(1 + turn, turn), (1 + turn) - turn);
    EXPECT_EQ(_modulo(0.1 + 0.7, 0.1), 0.1 + 0.7 - 0.1 - 0.1 - 0.1 - 0.1 - 0.1 - 0.1 - 0.1 - 0.1);
    EXPECT_EQ(_modulo(20.0, turn), 20 - turn - turn - turn);
    EXPECT_EQ(_modulo(-20.0, turn), -20 + turn + turn + turn + turn);
}

TEST(ModuloDouble, MixedNumbersAreDoubles) {
    EXPECT_EQ(_modulo(7.5, 2), 1.5);
    EXPECT_EQ(_modulo(7, 2.5), 2.0);
    EXPECT_EQ(_modulo(7.5f, 2.5f), 0.0);
}

TEST(ModuloDouble, EndsWithoutAPeriod) {
    for (const double a : {-3.5, -1e-11, 0.0, 3.5, 1e300})
        for (const double m : {0.0, -0.0, -1.0, -1e-300, -Infinity, NaN})
            EXPECT_EQ(_modulo(a, m), a) << a << " " << m;
}

TEST(ModuloDouble, EndsOnWhatIsNoNumber) {
    for (const double m : {2.0, 0.0, -1.0, Infinity, NaN})
        for (const double a : {NaN, Infinity, -Infinity})
            EXPECT_TRUE(std::isnan(_modulo(a, m))) << a << " " << m;
    EXPECT_EQ(_modulo(3.5, Infinity), 3.5);
    EXPECT_EQ(_modulo(-1e-11, Infinity), -1e-11);
    EXPECT_EQ(_modulo(-3.5, Infinity), Infinity);
}

TEST(ModuloDouble, EndsVeryFarAway) {
    // Exact: 10^18 is 1 above a multiple of 3.
    EXPECT_NEAR(_modulo(1e18, 3.0), 1, 1e-9);
    EXPECT_NEAR(_modulo(-1e18, 3.0), 2, 1e-9);
    EXPECT_NEAR(_modulo(1000001.25, 0.5), 0.25, 1e-9);
    for (const double a : {1e15, 1e20, 1e300, -1e15, -1e300, std::numeric_limits<double>::max(), 1.0, 0.0, -1.0})
        for (const double m : {1e-310, 1e-300, 1e-100, 1e-12, 1e-10, 1e-3, 1.0, 6.283185307179586}) {
            const double r = _modulo(a, m);
            EXPECT_GE(r, -1.000001e-10) << a << " " << m;
            EXPECT_LE(r, m) << a << " " << m;
        }
}

TEST(ModuloDouble, LiesInOnePeriodAndWholePeriodsAway) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> value(-50, 50);
    std::uniform_real_distribution<double> period(0.1, 10);
    for (int i = 0; i < 10000; ++i) {
        const double a = value(random);
        const double m = period(random);
        const double r = _modulo(a, m);
        ASSERT_GE(r, -1e-10);
        ASSERT_LE(r, m - 1e-10 + 1e-15);
        const double periods = (a - r) / m;
        ASSERT_NEAR(periods, std::round(periods), 1e-9);
    }
}

// As near as it is where whole periods are subtracted one by one.
TEST(ModuloDouble, LosesNoDigitsFarAway) {
    EXPECT_NEAR(_modulo(150000.25, 1.0), 0.25, 6e-11);
    EXPECT_NEAR(_modulo(-150000.25, 1.0), 0.75, 6e-11);
    EXPECT_NEAR(_modulo(std::ldexp(1.0, 40), 1.0), 0, 1.01e-10);
    EXPECT_NEAR(_modulo(-std::ldexp(1.0, 40), 1.0), 0, 1.01e-10);
}

}  // namespace
