#include "polygons.h"

#include <zk/_zkmath/matrix.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/polyplane.h>
#include <zk/_zkxyarrays/transform.h>
#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/errors.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace zk;

void ExpectNoNormal(const std::vector<TXYZ>& points) {
    const auto poly = Polygon3d(points);
    try {
        NewPlane(*poly);
        ADD_FAILURE() << "a plane through no area";
    } catch (const EError& error) {
        EXPECT_STREQ(error.what(), "Normalvektor 0");
    }
    EXPECT_THROW(NewBAse(*poly), EError);
    EXPECT_EQ(Points(*poly), points);
}

TEST(PolyPlane, NormalPointsToTheClockwiseSide) {
    EXPECT_EQ(NewPlane(*Polygon3d(Square3d)), (TPlane{{0, 0, 0}, {0, 0, -1}}));
    EXPECT_EQ(NewPlane(*Polygon3d({{1, 2, 3}, {1, 5, 3}, {4, 5, 3}})), (TPlane{{1, 2, 3}, {0, 0, 1}}));
}

TEST(PolyPlane, NoAreaRaises) {
    ExpectNoNormal({});
    ExpectNoNormal({{1, 2, 3}});
    ExpectNoNormal({{1, 2, 3}, {4, 5, 6}});
    ExpectNoNormal({{1, 2, 3}, {2, 3, 4}, {3, 4, 5}});
    ExpectNoNormal({{1, 2, 3}, {1, 2, 3}, {1, 2, 3}, {1, 2, 3}});
    ExpectNoNormal({{0, 0, 0}, {1, 1, 1}, {5, 5, 5}, {2, 2, 2}});
}

TEST(PolyPlane, PointsOnALineRaiseAlsoWhereRoundingLeavesSomething) {
    std::mt19937 random(12);
    std::uniform_real_distribution<double> number(-3, 3);
    for (int i = 0; i < 1000; ++i) {
        const TXYZ origin{number(random), number(random), number(random)};
        const TXYZ direction{number(random), number(random), number(random)};
        std::vector<TXYZ> points(3 + random() % 5);
        for (TXYZ& p : points)
            p = Add(origin, Mul(direction, number(random)));
        ExpectNoNormal(points);
        if (HasFailure())
            break;
    }
}

TEST(PolyPlane, SmallPolygonsHaveAPlane) {
    for (const double size : {1e-3, 1e-6, 1e-9, 1e-20}) {
        auto points = Square3d;
        for (TXYZ& p : points)
            p = Mul(p, size);
        EXPECT_EQ(NewPlane(*Polygon3d(points)).Normal, (TXYZ{0, 0, -1})) << size;
    }
    auto far = Square3d;
    for (TXYZ& p : far)
        p = Add(Mul(p, 0x1p-10), {1024, 2048, 4096});
    EXPECT_NEAR(NewPlane(*Polygon3d(far)).Normal.z, -1, 1e-3);
}

TEST(PolyPlane, FrameLiesAlongTheFirstEdge) {
    EXPECT_EQ(NewBAse(*Polygon3d(Square3d)), (TBAse{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, -1}}));
    EXPECT_EQ(NewBAse(*Polygon3d({{1, 2, 3}, {1, 5, 3}, {4, 5, 3}})),
              (TBAse{{1, 2, 3}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}}));
}

TEST(PolyPlane, FrameSkipsVerticesInOnePlace) {
    EXPECT_EQ(NewBAse(*Polygon3d({{0, 0, 0}, {0, 0, 0}, {2, 0, 0}, {2, 2, 0}})).XAxis, Ex);
    EXPECT_EQ(NewBAse(*Polygon3d({{0, 0, 0}, {0, 5e-11, 0}, {2, 0, 0}, {2, 2, 0}})).XAxis, Ex);
}

TEST(PolyPlane, APolygonSmallerThanTheToleranceHasNoFrame) {
    auto points = Square3d;
    for (TXYZ& p : points)
        p = Mul(p, 5e-11);
    const auto poly = Polygon3d(points);
    EXPECT_EQ(NewPlane(*poly).Normal, (TXYZ{0, 0, -1}));
    EXPECT_THROW(NewBAse(*poly), EError);
}

TEST(PolyPlane, FramesOfTurnedPolygonsAreOrthonormalAndLeftHanded) {
    std::mt19937 random(13);
    std::uniform_real_distribution<double> number(-3, 3);
    for (int i = 0; i < 500; ++i) {
        auto poly = Polygon3d({{0, 0, 0}, {2, 1, 0}, {3, 3, 0}, {1, 2, 0}, {-1, 1, 0}});
        const TGerade g{{number(random), number(random), number(random)},
                        {number(random), number(random), number(random)}};
        const Tmatrix M = RotationToMatrix3d(g, number(random));
        MatMul(M, *poly);
        const TBAse b = NewBAse(*poly);
        ASSERT_EQ(b.Origin, (*poly)[0]);
        ASSERT_TRUE(Equals(Vekt(b.XAxis, b.ZAxis), b.YAxis));
        ASSERT_NEAR(Len(b.YAxis), 1, 1e-14);
        for (const TXYZ& p : poly->Items())
            ASSERT_NEAR(Skal(Sub(p, b.Origin), b.ZAxis), 0, 1e-12);
    }
}

}  // namespace
