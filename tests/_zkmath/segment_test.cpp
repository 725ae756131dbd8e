#include <zk/_zkmath/segment.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace zk;

struct Met {
    bool met;
    double s, t, den;
};

Met Meet(TXY a, TXY b, TXY c, TXY d) {
    Met m{false, 77, 77, 77};
    m.met = _Cross(a, b, c, d, m.s, m.t, m.den);
    return m;
}

void ExpectMet(const Met& m, double s, double t) {
    EXPECT_TRUE(m.met);
    EXPECT_DOUBLE_EQ(m.s, s);
    EXPECT_DOUBLE_EQ(m.t, t);
}

TEST(CrossSegments, ProperCrossing) {
    const Met m = Meet({0, 0}, {2, 0}, {1, -1}, {1, 1});
    ExpectMet(m, 0.5, 0.5);
    EXPECT_EQ(m.den, -4);
}

TEST(CrossSegments, TheRangeIsNotChecked) {
    ExpectMet(Meet({0, 0}, {1, 0}, {3, -1}, {3, 1}), 3, 0.5);
    ExpectMet(Meet({0, 0}, {1, 0}, {-3, -1}, {-3, 3}), -3, 0.25);
}

TEST(CrossSegments, EndMeetsStart) {
    const Met m = Meet({0, 0}, {1, 0}, {1, 0}, {1, 1});
    ExpectMet(m, 1, 0);
    EXPECT_EQ(m.den, 0);
    ExpectMet(Meet({0, 0}, {1, 0}, {1, 0}, {2, 0}), 1, 0);
}

TEST(CrossSegments, EndMeetsEnd) {
    const Met m = Meet({0, 0}, {1, 0}, {1, 1}, {1, 0});
    ExpectMet(m, 1, 1);
    EXPECT_EQ(m.den, 0);
    ExpectMet(Meet({0, 0}, {1, 0}, {2, 0}, {1 + 0.5e-10, 0}), 1, 1);
}

TEST(CrossSegments, SharedStartIsDecidedByTheLines) {
    const Met m = Meet({0, 0}, {1, 0}, {0, 0}, {0, 1});
    ExpectMet(m, 0, 0);
    EXPECT_EQ(m.den, -1);
    EXPECT_FALSE(Meet({0, 0}, {1, 0}, {0, 0}, {-1, 0}).met);
}

TEST(CrossSegments, OnOneLine) {
    ExpectMet(Meet({0, 0}, {2, 0}, {1, 0}, {3, 0}), 1, 0.5);
    ExpectMet(Meet({0, 0}, {2, 0}, {3, 0}, {1, 0}), 1, 0.5);
    ExpectMet(Meet({0, 0}, {3, 0}, {1, 0}, {2, 0}), 2.0 / 3, 1);
    ExpectMet(Meet({0, 0}, {3, 0}, {2, 0}, {1, 0}), 1.0 / 3, 1);
    ExpectMet(Meet({1, 0}, {3, 0}, {0, 0}, {2, 0}), 0.5, 1);
    // Only c inside a-b, and d beyond the start.
    EXPECT_FALSE(Meet({1, 0}, {3, 0}, {2, 0}, {0, 0}).met);
    EXPECT_FALSE(Meet({0, 0}, {1, 0}, {2, 0}, {3, 0}).met);
}

TEST(CrossSegments, Parallel) {
    const Met m = Meet({0, 0}, {1, 0}, {0, 1}, {1, 1});
    EXPECT_FALSE(m.met);
    EXPECT_EQ(m.s, 0);
    EXPECT_EQ(m.t, 0);
    EXPECT_EQ(m.den, 0);
    // The limit is absolute: the same cross a thousand times smaller is parallel.
    EXPECT_TRUE(Meet({0, 0}, {2e-3, 0}, {1e-3, -1e-3}, {1e-3, 1e-3}).met);
    EXPECT_FALSE(Meet({0, 0}, {4e-4, 0}, {1e-4, -1e-4}, {1e-4, 3e-4}).met);
}

TEST(CrossSegments, Degenerate) {
    const Met m = Meet({0, 0}, {1, 1}, {0, 0}, {1, 1});
    EXPECT_FALSE(m.met);
    EXPECT_EQ(m.den, 0);
    EXPECT_EQ(m.s, 77);
    EXPECT_EQ(m.t, 77);
    EXPECT_FALSE(Meet({1, 1}, {1, 1}, {0, 0}, {2, 2}).met);
    EXPECT_FALSE(Meet({0, 0}, {2, 2}, {1, 1}, {1, 1 + 0.5e-10}).met);
    // Reversed it is not the same segment: only end points are looked after, and there is none that meets one.
    EXPECT_FALSE(Meet({0, 0}, {1, 1}, {1, 1 + 1e-3}, {0, 1e-3}).met);
}

TEST(CrossSegments, NoNumbers) {
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(Meet({NaN, 0}, {1, 1}, {0, 1}, {1, 0}).met);
    EXPECT_FALSE(Meet({0, 0}, {1, 1}, {0, 1}, {1, NaN}).met);
}

TEST(CrossSegments, OnOneObliqueLine) {
    ExpectMet(Meet({0, 0}, {2, 2}, {1, 1}, {5, 5}), 1, 0.25);
    ExpectMet(Meet({0, 0}, {2, 4}, {5, 10}, {1, 2}), 1, 0.75);
    ExpectMet(Meet({0, 0}, {4, 4}, {-1, -1}, {1, 1}), 0.25, 1);
    EXPECT_FALSE(Meet({0, 0}, {2, 2}, {3, 3}, {5, 5}).met);
}

}  // namespace
