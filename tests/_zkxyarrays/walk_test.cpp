#include "polygons.h"

#include <zk/_zkxyarrays/walk.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace zk;

const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

TEST(Value, IsThePointAtAVertexPosition) {
    const auto square = Polygon(Square);
    EXPECT_EQ(_value(*square, 0), (TXY{0, 0}));
    EXPECT_EQ(_value(*square, 1), (TXY{1, 0}));
    EXPECT_EQ(_value(*square, 1.5), (TXY{1, 0.5}));
    EXPECT_EQ(_value(*square, 3.5), (TXY{0, 0.5}));
    const auto square3d = Polygon3d(Square3d);
    EXPECT_EQ(_value(*square3d, 1.5), (TXYZ{1, 0.5, 0}));
    EXPECT_EQ(_value(*square3d, 2.25), (TXYZ{0.75, 1, 0}));
}

TEST(Value, WrapsAround) {
    const auto square = Polygon(Square);
    EXPECT_EQ(_value(*square, 4), (TXY{0, 0}));
    EXPECT_EQ(_value(*square, 4.25), (TXY{0.25, 0}));
    EXPECT_EQ(_value(*square, 41.5), (TXY{1, 0.5}));
    EXPECT_EQ(_value(*square, -1), (TXY{0, 1}));
    EXPECT_EQ(_value(*square, -4), (TXY{0, 0}));
}

TEST(Value, ExtrapolatesBackwardsFromANegativePosition) {
    const auto square = Polygon(Square);
    EXPECT_EQ(_value(*square, -0.25), (TXY{-0.25, 0}));
    EXPECT_EQ(_value(*square, -1.5), (TXY{0, 1.5}));
}

TEST(Value, OfFewPoints) {
    EXPECT_EQ(_value(*Polygon({}), 1.5), (TXY{0, 0}));
    EXPECT_EQ(_value(TXYZARRAY{}, 1.5), (TXYZ{0, 0, 0}));
    EXPECT_EQ(_value(*Polygon({{3, 4}}), 1.5), (TXY{3, 4}));
    EXPECT_EQ(_value(*Polygon({{0, 0}, {4, 0}}), 1.25), (TXY{3, 0}));
}

TEST(Value, OfPositionsBeyondReason) {
    const auto square = Polygon({{7, 8}, {1, 0}, {1, 1}});
    for (const double u : {NaN, Infinity, -Infinity})
        EXPECT_EQ(_value(*square, u), (TXY{7, 8}));
    EXPECT_EQ(_value(*square, 3e9 + 1), (TXY{1, 0}));
    EXPECT_EQ(_value(*square, -3e9), (TXY{7, 8}));
    EXPECT_EQ(_value(*square, 2147483647.0), (TXY{1, 0}));
    _value(*square, 1e300);
}

TEST(Copy, OfAPolygon) {
    const auto square = Polygon(Square);
    auto copy = Polygon({{9, 9}, {9, 9}, {9, 9}, {9, 9}, {9, 9}, {9, 9}});
    _Copy(*square, *copy);
    EXPECT_EQ(Points(*copy), Square);
    EXPECT_NE(copy->Data, square->Data);
    EXPECT_EQ(copy->Delta, 5);
    const auto square3d = Polygon3d(Square3d);
    auto copy3d = Polygon3d({});
    _Copy(*square3d, *copy3d);
    EXPECT_EQ(Points(*copy3d), Square3d);
}

TEST(Copy, HasNoLimit) {
    const std::vector<TXY> many(5000, TXY{1, 2});
    auto copy = Polygon({});
    _Copy(*Polygon(many), *copy);
    EXPECT_EQ(Points(*copy), many);
}

TEST(Copy, IntoWhatIsNotReady) {
    const auto square = Polygon(Square);
    TXYARRAY fresh;
    _Copy(*square, fresh);
    EXPECT_EQ(Points(fresh), Square);
    ArrayClear(fresh);
    _Copy(*square, fresh);
    EXPECT_EQ(Points(fresh), Square);
    ArrayDispose(fresh);
}

TEST(Copy, OntoItself) {
    auto square = Polygon(Square);
    _Copy(*square, *square);
    EXPECT_EQ(Points(*square), Square);
    TlistOFxyzArray list;
    ArrayAddData(*list.AddArray(), 4, Square3d.data());
    _Copy(list, list);
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(Points(*list[0]), Square3d);
}

std::vector<TXY> Part(const std::vector<TXY>& points, double u1, double u2) {
    auto part = Polygon({{9, 9}, {9, 9}});
    _Copy(*Polygon(points), u1, u2, *part);
    return Points(*part);
}

TEST(CopyOfAPart, WalksDownwards) {
    EXPECT_EQ(Part(Square, 2.5, 0.5), (std::vector<TXY>{{0.5, 1}, {1, 1}, {1, 0}, {0.5, 0}}));
    EXPECT_EQ(Part(Square, 1.75, 1.25), (std::vector<TXY>{{1, 0.75}, {1, 0.25}}));
}

TEST(CopyOfAPart, WrapsBelowZero) {
    EXPECT_EQ(Part(Square, 0.5, 2.5), (std::vector<TXY>{{0.5, 0}, {0, 0}, {0, 1}, {0.5, 1}}));
    EXPECT_EQ(Part(Square, 0.25, 0.75), (std::vector<TXY>{{0.25, 0}, {0, 0}, {0, 1}, {1, 1}, {1, 0}, {0.75, 0}}));
    EXPECT_EQ(Part(Square, 0, 3), (std::vector<TXY>{{0, 0}, {0, 1}}));
    EXPECT_EQ(Part(Square, 0, 3.5), (std::vector<TXY>{{0, 0}, {0, 0.5}}));
}

TEST(CopyOfAPart, WholePositionsAreVerticesOnce) {
    EXPECT_EQ(Part(Square, 3, 1), (std::vector<TXY>{{0, 1}, {1, 1}, {1, 0}}));
    EXPECT_EQ(Part(Square, 3 - 1e-11, 1 + 1e-11), (std::vector<TXY>{{0, 1}, {1, 1}, {1, 0}}));
    EXPECT_EQ(Part(Square, 2, 2), (std::vector<TXY>{{1, 1}}));
    EXPECT_EQ(Part(Square, 0.5, 0.5 + 1e-11), (std::vector<TXY>{{0.5, 0}}));
    EXPECT_EQ(Part(Square, 4 - 1e-11, 3), (std::vector<TXY>{{0, 0}, {0, 1}}));
}

TEST(CopyOfAPart, PositionsBeyondThePolygon) {
    EXPECT_EQ(Part(Square, 6.5, 4.5), Part(Square, 2.5, 0.5));
    EXPECT_EQ(Part(Square, -0.5, -1), (std::vector<TXY>{{0, 0.5}, {0, 1}}));
    EXPECT_EQ(Part(Square, 1, NaN), (std::vector<TXY>{{1, 0}, {0, 0}}));
    EXPECT_EQ(Part(Square, Infinity, 0), (std::vector<TXY>{{0, 0}}));
    // So little below zero that a whole turn more is a whole turn.
    EXPECT_EQ(Part(Square, -1e-300, 0), (std::vector<TXY>{{0, 0}}));
    EXPECT_EQ(Part(Square, 0, -1e-300), (std::vector<TXY>{{0, 0}}));
}

TEST(CopyOfAPart, OfFewPointsAndOntoItself) {
    EXPECT_TRUE(Part({}, 1, 2).empty());
    EXPECT_EQ(Part({{3, 4}}, 0.5, 0.25), (std::vector<TXY>{{3, 4}, {3, 4}}));
    auto square = Polygon(Square);
    _Copy(*square, 2.5, 0.5, *square);
    EXPECT_EQ(Points(*square), (std::vector<TXY>{{0.5, 1}, {1, 1}, {1, 0}, {0.5, 0}}));
    TXYARRAY fresh;
    _Copy(*square, 1, 0, fresh);
    EXPECT_EQ(fresh.Count, 2);
    EXPECT_EQ(Points(fresh), (std::vector<TXY>{{1, 1}, {0.5, 1}}));
    ArrayDispose(fresh);
}

TEST(Copy, OfAListReplacesTheList) {
    TlistOFxyzArray source;
    ArrayAddData(*source.AddArray(), 4, Square3d.data());
    source.Add(nullptr);
    ArrayAddData(*source.AddArray(), 2, Square3d.data());
    TlistOFxyzArray target;
    for (int i = 0; i < 5; ++i)
        target.AddArray();
    _Copy(source, target);
    ASSERT_EQ(target.Count(), 2);
    EXPECT_EQ(Points(*target[0]), Square3d);
    EXPECT_EQ(target[1]->Count, 2);
    EXPECT_NE(target[0], source[0]);
    EXPECT_EQ(source.Count(), 3);
}

}  // namespace
