#include <zk/_zkmath/tolerance.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace zk;

const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

TEST(Tolerance, EqualsWithin) {
    EXPECT_EQ(EPS, 1e-10);
    EXPECT_TRUE(Equals(1, 1));
    EXPECT_TRUE(Equals(1, 1 + 0.5e-10));
    EXPECT_TRUE(Equals(1 + 0.5e-10, 1));
    EXPECT_FALSE(Equals(1, 1 + 2e-10));
    EXPECT_FALSE(Equals(1 + 2e-10, 1));
}

TEST(Tolerance, EqualsIsStrict) {
    EXPECT_FALSE(Equals(0, EPS));
    EXPECT_FALSE(Equals(0, -EPS));
    EXPECT_TRUE(Equals(0, std::nextafter(EPS, 0)));
}

TEST(Tolerance, LessBeyond) {
    EXPECT_FALSE(Less(1, 1));
    EXPECT_FALSE(Less(1, 1 + 0.5e-10));
    EXPECT_TRUE(Less(1, 1 + 2e-10));
    EXPECT_FALSE(Less(1 + 2e-10, 1));
    EXPECT_FALSE(Less(0, EPS));
    EXPECT_TRUE(Less(0, std::nextafter(EPS, 1)));
}

TEST(Tolerance, IsAbsolute) {
    EXPECT_FALSE(Equals(1e6, 1e6 + 1e-9));
    EXPECT_TRUE(Equals(1e-12, 2e-12));
}

TEST(Tolerance, NaNComparesFalse) {
    for (const double x : {NaN, 0.0, Infinity}) {
        EXPECT_FALSE(Equals(NaN, x));
        EXPECT_FALSE(Equals(x, NaN));
        EXPECT_FALSE(Less(NaN, x));
        EXPECT_FALSE(Less(x, NaN));
    }
}

TEST(Tolerance, Infinities) {
    EXPECT_FALSE(Equals(Infinity, Infinity));
    EXPECT_FALSE(Equals(Infinity, -Infinity));
    EXPECT_TRUE(Less(-Infinity, Infinity));
    EXPECT_TRUE(Less(0, Infinity));
    EXPECT_FALSE(Less(Infinity, 0));
}

}  // namespace
