#include "polygons.h"

#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/orientation.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace zk;

TEST(Orientation, OfThePlaneIsMinusTwiceTheArea) {
    auto square = Polygon(Square);
    EXPECT_EQ(Vekt(*square), -2);
    Invertiere(*square);
    EXPECT_EQ(Vekt(*square), 2);
    EXPECT_EQ(Vekt(*Polygon({{1, 1}, {5, 1}, {1, 4}})), -12);
}

TEST(Orientation, InSpace) {
    auto square = Polygon3d(Square3d);
    EXPECT_EQ(Vekt(*square), (TXYZ{0, 0, -2}));
    Invertiere(*square);
    EXPECT_EQ(Vekt(*square), (TXYZ{0, 0, 2}));
    EXPECT_EQ(Vekt(*Polygon3d({{5, 0, 0}, {5, 1, 0}, {5, 1, 1}, {5, 0, 1}})), (TXYZ{-2, 0, 0}));
}

TEST(Orientation, OfFewPoints) {
    EXPECT_EQ(Vekt(*Polygon({})), 0);
    EXPECT_EQ(Vekt(*Polygon({{3, 4}})), 0);
    EXPECT_EQ(Vekt(*Polygon({{3, 4}, {5, 9}})), 0);
    EXPECT_EQ(Vekt(*Polygon3d({})), (TXYZ{0, 0, 0}));
    EXPECT_EQ(Vekt(*Polygon3d({{3, 4, 5}})), (TXYZ{0, 0, 0}));
    EXPECT_EQ(Vekt(TXYARRAY{}), 0);
}

TEST(Orientation, OfAListIsTheSum) {
    TlistOFxyzArray list;
    EXPECT_EQ(Vekt(list), (TXYZ{0, 0, 0}));
    ArrayAddData(*list.AddArray(), 4, Square3d.data());
    ArrayAddData(*list.AddArray(), 3, Square3d.data());
    list.AddArray();
    list.Add(nullptr);
    EXPECT_EQ(Vekt(list), (TXYZ{0, 0, -3}));
}

TEST(Orientation, DoesNotDependOnWhereThePolygonIs) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> number(-3, 3);
    for (int i = 0; i < 200; ++i) {
        std::vector<TXYZ> points(3 + random() % 10);
        for (TXYZ& p : points)
            p = {number(random), number(random), number(random)};
        const TXYZ here = Vekt(*Polygon3d(points));
        const TXYZ move{number(random), number(random), number(random)};
        for (TXYZ& p : points)
            p = Add(p, move);
        const TXYZ there = Vekt(*Polygon3d(points));
        ASSERT_TRUE(Equals(here, there));
        // The 2D sum is the z component.
        std::vector<TXY> flat;
        for (const TXYZ& p : points)
            flat.push_back({p.x, p.y});
        ASSERT_NEAR(Vekt(*Polygon(flat)), there.z, 1e-11);
    }
}

TEST(Orientation, ReversingSwapsInPlace) {
    auto even = Polygon(Square);
    Invertiere(*even);
    EXPECT_EQ(Points(*even), (std::vector<TXY>{{0, 1}, {1, 1}, {1, 0}, {0, 0}}));
    auto odd = Polygon3d({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
    Invertiere(*odd);
    EXPECT_EQ(Points(*odd), (std::vector<TXYZ>{{3, 0, 0}, {2, 0, 0}, {1, 0, 0}}));
    auto flat = Polygon({{1, 0}, {2, 5}, {3, 0}});
    Invertiere(*flat);
    EXPECT_EQ(Points(*flat), (std::vector<TXY>{{3, 0}, {2, 5}, {1, 0}}));
    auto none = Polygon({});
    Invertiere(*none);
    EXPECT_EQ(none->Count, 0);
}

}  // namespace
