#include "messages.h"

#include <zk/_zkxyz/trfbuffer.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace zk;

class TrfBuffer : public testing::Test {
  protected:
    Messages messages;
    TTransformBuffer b;
};

TEST_F(TrfBuffer, UsesTheCallersPointsInPlace) {
    const TXYZ points[3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    InitXYZXY(b, 3, points);
    EXPECT_EQ(b.OwnsSource, 0);
    EXPECT_EQ(b.Source.Data, points);
    EXPECT_EQ(b.Source.ItemSize, 24);
    EXPECT_EQ(b.Source.Count, 3);
    EXPECT_EQ(b.Source.Delta, 3);
    EXPECT_EQ(b.Source.Capacity, 3);
    EXPECT_EQ(b.Source.Reserved, 0u);
    EXPECT_EQ(b.Target.ItemSize, 16);
    EXPECT_EQ(b.Target.Count, 3);
    EXPECT_EQ(b.Target.Capacity, 3);
    EXPECT_NE(b.Target.Data, nullptr);
    ClearTrfBuffer(b);
    EXPECT_EQ(b.Target.Data, nullptr);
    EXPECT_EQ(b.Target.Count, 0);
    EXPECT_EQ(points[2], (TXYZ{7, 8, 9}));
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(TrfBuffer, AllocatesASourceOfItsOwn) {
    InitXYZXY(b, 4, nullptr);
    EXPECT_EQ(b.OwnsSource, 1);
    ASSERT_NE(b.Source.Data, nullptr);
    EXPECT_EQ(b.Source.Count, 4);
    static_cast<TXYZ*>(b.Source.Data)[3] = {1, 2, 3};
    ClearTrfBuffer(b);
    EXPECT_EQ(b.Source.Data, nullptr);
    EXPECT_EQ(b.Source.Count, 0);
    EXPECT_EQ(b.Target.Data, nullptr);
}

TEST_F(TrfBuffer, KindsHaveTheirItemSizes) {
    TXYZXYBuffer xyzxy;
    TXYXYBuffer xyxy;
    TXYXYiBuffer xyxyi;
    InitXYZXY(xyzxy, 1, nullptr);
    InitXYXY(xyxy, 1, nullptr);
    InitXYXYI(xyxyi, 1, nullptr);
    EXPECT_EQ(xyzxy.Source.ItemSize, 24);
    EXPECT_EQ(xyzxy.Target.ItemSize, 16);
    EXPECT_EQ(xyxy.Source.ItemSize, 16);
    EXPECT_EQ(xyxy.Target.ItemSize, 16);
    EXPECT_EQ(xyxyi.Source.ItemSize, 16);
    EXPECT_EQ(xyxyi.Target.ItemSize, 8);
    ClearTrfBuffer(xyzxy);
    ClearTrfBuffer(xyxy);
    ClearTrfBuffer(xyxyi);
}

TEST_F(TrfBuffer, NoPointsGiveADeltaOfFive) {
    for (const int n : {0, -7}) {
        InitXYXY(b, n, nullptr);
        EXPECT_EQ(b.Source.Delta, 5);
        EXPECT_EQ(b.Source.Capacity, 0);
        EXPECT_EQ(b.Source.Count, 0);
        EXPECT_EQ(b.Source.Data, nullptr);
        EXPECT_EQ(b.OwnsSource, 1);
        EXPECT_EQ(b.Target.Capacity, 5);
        EXPECT_EQ(b.Target.Count, 0);
        ClearTrfBuffer(b);
    }
}

TEST_F(TrfBuffer, TargetIsLimitedAsEveryFirstBlock) {
    InitXYXY(b, 626, nullptr);
    EXPECT_EQ(messages.texts, (Texts{Immodest}));
    EXPECT_NE(b.Source.Data, nullptr);
    EXPECT_EQ(b.Target.Data, nullptr);
    EXPECT_EQ(b.Target.Count, 626);
    EXPECT_EQ(ArrayGetData(b.Target, 0), nullptr);
    ClearTrfBuffer(b);
    EXPECT_EQ(messages.texts, (Texts{Immodest, ImmodestFree}));
}

TEST_F(TrfBuffer, ASourceThatGrowsLeavesTheCallersBlockAlone) {
    TXY mine[2] = {{1, 2}, {3, 4}};
    InitXYXY(b, 2, mine);
    const TXY more{5, 6};
    for (int i = 0; i < 10; ++i)
        ArrayAdd(b.Source, &more);
    EXPECT_NE(b.Source.Data, mine);
    EXPECT_EQ(b.Source.Count, 12);
    EXPECT_EQ(static_cast<TXY*>(b.Source.Data)[1], (TXY{3, 4}));
    EXPECT_EQ(mine[0], (TXY{1, 2}));
    ClearTrfBuffer(b);
    EXPECT_EQ(b.Source.Data, nullptr);
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(TrfBuffer, ASourceLentByAnArrayStaysTheArrays) {
    TXYZARRAY poly;
    ArrayInit(poly, 3);
    Arraysetcount(poly, 3);
    poly[2] = {7, 8, 9};

    InitXYZXY(b, poly.Count, poly.Data);
    ClearTrfBuffer(b);
    EXPECT_EQ(poly[2], (TXYZ{7, 8, 9}));

    InitXYZXY(b, poly.Count, poly.Data);
    const TXYZ more{1, 1, 1};
    ArrayAppendData(b.Source, &more);
    EXPECT_NE(b.Source.Data, poly.Data);
    ClearTrfBuffer(b);
    EXPECT_EQ(poly[2], (TXYZ{7, 8, 9}));

    InitXYZXY(b, poly.Count, poly.Data);
    ArrayClear(b.Source);
    EXPECT_EQ(messages.texts, (Texts{FreeFailed}));
    ClearTrfBuffer(b);
    EXPECT_EQ(poly[2], (TXYZ{7, 8, 9}));

    ArrayClear(poly);
    EXPECT_EQ(messages.texts.size(), 1u);
}

TEST_F(TrfBuffer, ABufferCanBeUsedAgain) {
    const std::vector<TXY> points(3, TXY{1, 2});
    InitXYXY(b, 3, points.data());
    ClearTrfBuffer(b);
    InitXYXY(b, 2, nullptr);
    const TXY more{5, 6};
    ArrayAppendData(b.Source, &more);
    EXPECT_EQ(b.Source.Count, 3);
    ClearTrfBuffer(b);
    EXPECT_TRUE(messages.texts.empty());
}

}  // namespace
