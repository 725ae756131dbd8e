#include <zk/_zkmath/plane.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyz/constants.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace zk;

const double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(Plane, OfAFrame) {
    const TBAse b{{1, 2, 3}, Ey, Ez, Ex};
    EXPECT_EQ(NewPlane(b), (TPlane{{1, 2, 3}, Ex}));
    TPlane p;
    NewPlane(b, p);
    EXPECT_EQ(p, NewPlane(b));
}

TEST(Plane, ThroughThreePoints) {
    EXPECT_EQ(NewPlane({1, 1, 5}, {3, 1, 5}, {1, 4, 5}), (TPlane{{1, 1, 5}, Ez}));
    EXPECT_EQ(NewPlane({1, 1, 5}, {1, 4, 5}, {3, 1, 5}), (TPlane{{1, 1, 5}, {0, 0, -1}}));
    EXPECT_EQ(NewPlane({1, 1, 1}, {2, 2, 2}, {3, 3, 3}), (TPlane{{1, 1, 1}, {0, 0, 0}}));
    TPlane p;
    NewPlane({1, 1, 5}, {3, 1, 5}, {1, 4, 5}, p);
    EXPECT_EQ(p.Normal, Ez);
}

TEST(Plane, LineTakesADirection) {
    EXPECT_EQ(NewGerade({1, 2, 3}, {0, 0, 1}), (TGerade{{1, 2, 3}, {0, 0, 1}}));
    TGerade g;
    NewGerade({1, 2, 3}, {0, 0, 2}, g);
    EXPECT_EQ(g, (TGerade{{1, 2, 3}, {0, 0, 2}}));
}

TEST(Plane, FrameOnALevelPlane) {
    EXPECT_EQ(PlaneToBase({Nullxyz, Ez}), (TBAse{{0, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 0, 1}}));
    EXPECT_EQ(PlaneToBase({{1, 2, 3}, {0, 0, -1}}), (TBAse{{1, 2, 3}, {-1, 0, 0}, {0, -1, 0}, {0, 0, -1}}));
}

TEST(Plane, FrameOnAnUprightPlane) {
    EXPECT_EQ(PlaneToBase({Nullxyz, Ex}), (TBAse{{0, 0, 0}, {0, 1, 0}, {0, 0, -1}, {1, 0, 0}}));
    EXPECT_EQ(PlaneToBase({Nullxyz, Ey}), (TBAse{{0, 0, 0}, {-1, 0, 0}, {0, 0, -1}, {0, 1, 0}}));
}

TEST(Plane, NearlyAlongZIsBelowAThousandth) {
    // Below the limit in both: x is taken from the y axis. At the limit: from the z axis.
    EXPECT_GT(PlaneToBase({Nullxyz, {0, 0.000999, 1}}).XAxis.x, 0.9);
    EXPECT_LT(PlaneToBase({Nullxyz, {0, 0.001, 1}}).XAxis.x, -0.9);
    EXPECT_GT(PlaneToBase({Nullxyz, {-0.000999, -0.000999, 1}}).XAxis.x, 0.9);
    EXPECT_LT(PlaneToBase({Nullxyz, {-0.001, 0, 1}}).XAxis.y, -0.9);
}

TEST(Plane, FrameWithAGivenDirection) {
    const TXYZ x{0, 3, 0};
    EXPECT_EQ(PlaneToBase({{1, 2, 3}, Ez}, &x), (TBAse{{1, 2, 3}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}}));
    // A direction that leans is taken as it is: YAxis is across both all the same.
    const TXYZ leaning{1, 0, 1};
    const TBAse b = PlaneToBase({Nullxyz, Ez}, &leaning);
    EXPECT_TRUE(Equals(b.XAxis, Mul(leaning, 1 / Len(leaning))));
    EXPECT_TRUE(Equals(b.YAxis, TXYZ{0, -1, 0}));
    EXPECT_EQ(b.ZAxis, Ez);
}

TEST(Plane, FrameMayGoWhereTheDirectionWas) {
    TBAse b = Unitbase;
    b.XAxis = {0, 3, 0};
    PlaneToBase({{1, 2, 3}, Ez}, &b.XAxis, b);
    EXPECT_EQ(b, (TBAse{{1, 2, 3}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}}));
}

TEST(Plane, FramesAreOrthonormalAndLeftHanded) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-3, 3);
    for (int i = 0; i < 1000; ++i) {
        const TXYZ normal = Normalize(TXYZ{number(random), number(random), number(random)});
        const TBAse b = PlaneToBase({{1, 2, 3}, normal});
        ASSERT_NEAR(Len(b.XAxis), 1, 1e-14);
        ASSERT_NEAR(Len(b.YAxis), 1, 1e-14);
        ASSERT_NEAR(Skal(b.XAxis, b.YAxis), 0, 1e-12);
        ASSERT_NEAR(Skal(b.XAxis, b.ZAxis), 0, 1e-12);
        ASSERT_TRUE(Equals(Vekt(b.XAxis, b.YAxis), Mul(b.ZAxis, -1)));
        ASSERT_TRUE(Equals(b.ZAxis, normal));
    }
}

TEST(Plane, SomePerpendicular) {
    EXPECT_EQ(AnyNormalvektor({0, 0, 0}), (TXYZ{0, 0, 0}));
    EXPECT_EQ(AnyNormalvektor({0, 2, 3}), (TXYZ{1, 0, 0}));
    EXPECT_EQ(AnyNormalvektor({1, 0, 3}), (TXYZ{0, 1, 0}));
    EXPECT_EQ(AnyNormalvektor({1, 2, 0}), (TXYZ{0, 0, 1}));
    EXPECT_EQ(AnyNormalvektor({1, 2, 4}), (TXYZ{0, 1, -0.5}));
    EXPECT_EQ(AnyNormalvektor({5e-11, 0, 0}), (TXYZ{0, 0, 0}));
    EXPECT_EQ(AnyNormalvektor({5e-11, 2, 3}), (TXYZ{1, 0, 0}));
    TXYZ v{1, 2, 4};
    AnyNormalvektor(v, v);
    EXPECT_EQ(v, (TXYZ{0, 1, -0.5}));
}

class DistToSegment : public testing::Test {
  protected:
    const TGerade g{{0, 0, 0}, {1, 0, 0}};
    double t = 77;
    TXYZ foot{7, 7, 7};
};

TEST_F(DistToSegment, WithTheFootOnIt) {
    EXPECT_EQ(Dist(TXYZ{0.5, 1, 0}, g, t, foot), 1);
    EXPECT_EQ(t, 0.5);
    EXPECT_EQ(foot, (TXYZ{0.5, 0, 0}));
    EXPECT_EQ(Dist(TXYZ{3, 0, 5}, {{1, 0, 1}, {4, 0, 0}}, t, foot), 4);
    EXPECT_EQ(t, 0.5);
    EXPECT_EQ(foot, (TXYZ{3, 0, 1}));
}

TEST_F(DistToSegment, WithTheFootOutside) {
    EXPECT_EQ(Dist(TXYZ{2, 1, 0}, g, t, foot), 1e20);
    EXPECT_EQ(t, 2);
    EXPECT_EQ(foot, (TXYZ{2, 0, 0}));
    EXPECT_EQ(Dist(TXYZ{-1, 1, 0}, g, t, foot), 1e20);
    EXPECT_EQ(t, -1);
    EXPECT_EQ(foot, (TXYZ{-1, 0, 0}));
}

TEST_F(DistToSegment, EndsBelongToIt) {
    EXPECT_EQ(Dist(TXYZ{0, 2, 0}, g, t, foot), 2);
    EXPECT_EQ(Dist(TXYZ{1, 2, 0}, g, t, foot), 2);
    EXPECT_EQ(Dist(TXYZ{1 + 0.5e-10, 2, 0}, g, t, foot), 2);
    EXPECT_EQ(Dist(TXYZ{1 + 2e-10, 2, 0}, g, t, foot), 1e20);
    EXPECT_EQ(Dist(TXYZ{-2e-10, 2, 0}, g, t, foot), 1e20);
}

TEST_F(DistToSegment, DegenerateSegmentTouchesNothing) {
    EXPECT_EQ(Dist(TXYZ{0.5, 1, 0}, {{0, 0, 0}, {1e-6, 0, 0}}, t, foot), 1e20);
    EXPECT_EQ(Dist(TXYZ{0.5, 1, 0}, {{0, 0, 0}, {1e-5, 0, 0}}, t, foot), 1e20);
    EXPECT_EQ(Dist(TXYZ{0.5, 1, 0}, {{0, 0, 0}, {0, 0, 0}}, t, foot), 1e20);
    EXPECT_EQ(t, 77);
    EXPECT_EQ(foot, (TXYZ{7, 7, 7}));
    EXPECT_EQ(Dist(TXYZ{0, 1, 0}, {{0, 0, 0}, {1.1e-5, 0, 0}}, t, foot), 1);
}

TEST(LineAndPlane, Meet) {
    TXYZ x;
    double t = 77;
    EXPECT_TRUE(_Cross({{0, 0, 5}, {0, 0, 1}}, {Nullxyz, Ez}, x, t));
    EXPECT_EQ(x, (TXYZ{0, 0, 0}));
    EXPECT_EQ(t, -5);
}

TEST(LineAndPlane, TheParameterIsALength) {
    TXYZ x;
    double t = 77;
    EXPECT_TRUE(_Cross({{1, 2, 5}, {0, 0, -10}}, {{7, 7, 1}, Ez}, x, t));
    EXPECT_EQ(x, (TXYZ{1, 2, 1}));
    EXPECT_EQ(t, 4);
    EXPECT_TRUE(_Cross({{0, 0, 0}, {3, 4, 0}}, {{6, 0, 0}, Ex}, x, t));
    EXPECT_DOUBLE_EQ(t, 10);
    EXPECT_TRUE(Equals(x, TXYZ{6, 8, 0}));
}

TEST(LineAndPlane, Parallel) {
    TXYZ x;
    double t = 77;
    EXPECT_FALSE(_Cross({{1, 2, 5}, Ex}, {Nullxyz, Ez}, x, t));
    EXPECT_EQ(x, (TXYZ{1, 2, 5}));
    EXPECT_EQ(t, 77);
    EXPECT_FALSE(_Cross({{1, 2, 5}, {1, 0, 0.99e-7}}, {Nullxyz, Ez}, x, t));
    EXPECT_TRUE(_Cross({{1, 2, 5}, {1, 0, 1.01e-7}}, {Nullxyz, Ez}, x, t));
    EXPECT_FALSE(_Cross({{1, 2, 5}, Nullxyz}, {Nullxyz, Ez}, x, t));
    EXPECT_FALSE(_Cross({{1, 2, 5}, {NaN, 0, 0}}, {Nullxyz, Ez}, x, t));
}

TEST(LineAndPlane, TheMeetingPointIsOnBoth) {
    std::mt19937 random(8);
    std::uniform_real_distribution<double> number(-3, 3);
    const auto point = [&] { return TXYZ{number(random), number(random), number(random)}; };
    for (int i = 0; i < 1000; ++i) {
        const TGerade g{point(), point()};
        const TPlane p{point(), Normalize(point())};
        TXYZ x;
        double t = 0;
        if (!_Cross(g, p, x, t))
            continue;
        const double tolerance = 1e-12 * (1 + t * t);
        ASSERT_NEAR(Skal(Sub(x, p.Origin), p.Normal), 0, tolerance);
        ASSERT_NEAR(Len(Vekt(Sub(x, g.Origin), g.Direction)), 0, tolerance);
        ASSERT_NEAR(Dist(x, g.Origin), std::fabs(t), tolerance);
    }
}

}  // namespace
