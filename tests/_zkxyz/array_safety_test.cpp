// Bad indexes, counts and sizes: whatever they are, nothing outside the block is touched and the answer is the one the
// header promises. Most worth running under a sanitizer.
#include "messages.h"

#include <zk/_zkxyz/array.h>

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <vector>

namespace {

using namespace zk;

class ArraySafety : public testing::Test {
  protected:
    ~ArraySafety() override { ArrayDispose(arr); }

    void Fill(int delta, const std::vector<int>& values) {
        ArrayInit(arr, 4, delta);
        for (const int v : values)
            ArrayAdd(arr, &v);
    }
    std::vector<int> Values() const { return {arr.Items().begin(), arr.Items().end()}; }

    using Ints = std::vector<int>;
    const int nine = 9;
    Messages messages;
    TintegerARRAY arr;
};

TEST_F(ArraySafety, ADeclaredArrayIsEmpty) {
    EXPECT_EQ(ArrayGetData(arr, 0), nullptr);
    EXPECT_TRUE(arr.Items().empty());
    ArrayAdd(arr, &nine);
    ArrayAppendData(arr, &nine);
    EXPECT_EQ(arr.Count, 0);
    ArrayDeleteData(arr, 0);
    ArrayDeletedaten(arr, 0, 0);
    ArrayClear(arr);
    ArrayDispose(arr);
    EXPECT_EQ(arr.Count, 0);
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(ArraySafety, GetDataOutsideTheBlockIsNull) {
    Fill(5, {1, 2, 3});
    EXPECT_EQ(ArrayGetData(arr, -1), nullptr);
    EXPECT_NE(ArrayGetData(arr, 4), nullptr);
    EXPECT_EQ(ArrayGetData(arr, 5), nullptr);
    EXPECT_EQ(ArrayGetData(arr, INT_MAX), nullptr);
    EXPECT_EQ(ArrayGetData(arr, INT_MIN), nullptr);
    EXPECT_EQ(ArrayGetData(std::as_const(arr), 5), nullptr);
}

TEST_F(ArraySafety, TypedAccessOutsideThrows) {
    Fill(5, {1, 2, 3});
    EXPECT_EQ(arr[2], 3);
    EXPECT_THROW(arr[3], EListError);
    EXPECT_THROW(arr[-1], EListError);
    EXPECT_THROW(std::as_const(arr)[3], EListError);
}

TEST_F(ArraySafety, ItemsOfAnotherSizeAreNoItems) {
    TXYZARRAY a;
    ArrayInit(a, 4, 5);
    Arraysetcount(a, 5);
    EXPECT_TRUE(a.Items().empty());
    EXPECT_THROW(a[0], EListError);
    ArrayDispose(a);
}

TEST_F(ArraySafety, InsertAboveTheCountDoesNothing) {
    Fill(5, {1, 2});
    EXPECT_EQ(ArrayInsert(arr, 3), nullptr);
    EXPECT_EQ(ArrayInsert(arr, INT_MAX), nullptr);
    EXPECT_EQ(Values(), (Ints{1, 2}));
}

TEST_F(ArraySafety, InsertDataAtExtremeIndexes) {
    Fill(5, {1, 2});
    ArrayInsertData(arr, INT_MIN, &nine);
    ArrayInsertData(arr, INT_MAX, &nine);
    EXPECT_EQ(Values(), (Ints{1, 2, 0, 0}));
}

TEST_F(ArraySafety, NothingIsAddedWithoutADelta) {
    Fill(5, {1, 2});
    ArrayClear(arr);
    ArrayInsertData(arr, 0, &nine);
    ArrayAdd(arr, &nine);
    ArrayAppendData(arr, &nine);
    EXPECT_EQ(arr.Count, 0);
    EXPECT_EQ(arr.Capacity, 0);
    EXPECT_EQ(arr.Data, nullptr);
}

TEST_F(ArraySafety, AFullArrayWithoutADeltaStaysFull) {
    Fill(2, {1, 2});
    arr.Delta = 0;
    ArrayAppendData(arr, &nine);
    ArrayInsertData(arr, 0, &nine);
    EXPECT_EQ(Values(), (Ints{1, 2}));
    ArrayInsert(arr, -1);
    EXPECT_EQ(arr.Delta, 5);
    EXPECT_EQ(arr.Capacity, 7);
    EXPECT_EQ(Values(), (Ints{1, 2, 0}));
}

TEST_F(ArraySafety, WritesWithoutABlockAreDropped) {
    ArrayInit(arr, 4, 2501);
    EXPECT_EQ(messages.texts, (Texts{Immodest}));
    EXPECT_EQ(ArrayInsert(arr, -1), nullptr);
    EXPECT_EQ(ArrayInsert(arr, 0), nullptr);
    ArrayInsertData(arr, 0, &nine);
    ArrayAdd(arr, &nine);
    ArrayAppendData(arr, &nine);
    EXPECT_EQ(arr.Count, 0);
    EXPECT_EQ(ArrayGetData(arr, 0), nullptr);

    const int two[2] = {1, 2};
    ArrayAddData(arr, 2, two);
    EXPECT_EQ(arr.Count, 2);
    EXPECT_TRUE(arr.Items().empty());
    EXPECT_THROW(arr[0], EListError);
    ArrayDeleteData(arr, 0);
    ArrayDeletedaten(arr, 0, 1);
    EXPECT_EQ(arr.Count, 0);
}

TEST_F(ArraySafety, AnArrayWithoutABlockGetsOneWhenItGrows) {
    ArrayInit(arr, 4, 2501);
    Arraysetcount(arr, 2501);
    EXPECT_EQ(arr.Data, nullptr);
    Arraysetcount(arr, 2502);
    ASSERT_NE(arr.Data, nullptr);
    EXPECT_EQ(arr.Capacity, 5002);
    EXPECT_EQ(Values(), Ints(2502, 0));
}

TEST_F(ArraySafety, InitXYAboveTheLimitHasNoPoints) {
    const std::vector<TXY> points(626, TXY{1, 2});
    TXYARRAY a;
    InitXY(a, 625, points.data());
    EXPECT_EQ(a.Items().size(), 625u);
    ArrayDispose(a);
    InitXY(a, 626, points.data());
    EXPECT_EQ(messages.texts, (Texts{Immodest}));
    EXPECT_EQ(a.Count, 626);
    EXPECT_TRUE(a.Items().empty());
    InitXY(a, -3, points.data());
    EXPECT_EQ(a.Count, 0);
    EXPECT_EQ(a.Capacity, 5);
    ArrayDispose(a);
}

TEST_F(ArraySafety, NegativeSizesAndCounts) {
    ArrayInit(arr, 4, -3);
    EXPECT_EQ(arr.Delta, 5);
    EXPECT_EQ(arr.Capacity, 5);
    ArrayAdd(arr, &nine);
    Arraysetcount(arr, -1);
    EXPECT_EQ(arr.Count, 0);
    ArrayAddData(arr, -2, &nine);
    ArrayAddData(arr, 0, &nine);
    ArrayAddData(arr, INT_MIN, &nine);
    EXPECT_EQ(arr.Count, 0);
    ArrayDispose(arr);

    ArrayInit(arr, -4, 5);
    EXPECT_EQ(arr.ItemSize, 0);
    EXPECT_EQ(arr.Data, nullptr);
}

TEST_F(ArraySafety, ItemsWithoutASizeAreCounted) {
    TARRAY a;
    ArrayInit(a, 0, 5);
    EXPECT_EQ(a.Data, nullptr);
    EXPECT_EQ(a.Capacity, 5);
    for (int i = 0; i < 7; ++i)
        ArrayAdd(a, &nine);
    EXPECT_EQ(ArrayInsert(a, 0), nullptr);
    EXPECT_EQ(a.Count, 8);
    EXPECT_EQ(a.Capacity, 10);
    Arraysetcount(a, 1000000000);
    EXPECT_EQ(a.Count, 1000000000);
    ArrayDeleteData(a, 0);
    ArrayDeletedaten(a, 3, 999999996);
    EXPECT_EQ(a.Count, 3);
    EXPECT_EQ(ArrayGetData(a, 0), nullptr);
    TARRAY b;
    ArrayCopy(b, a);
    EXPECT_EQ(b.Count, 3);
    ArrayClear(a);
    ArrayClear(b);
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(ArraySafety, DeletingWhatIsNotThereDoesNothing) {
    Fill(5, {1, 2, 3});
    for (const int i : {-1, 3, 5, INT_MAX, INT_MIN})
        ArrayDeleteData(arr, i);
    ArrayDeletedaten(arr, -1, 1);
    ArrayDeletedaten(arr, 0, -1);
    ArrayDeletedaten(arr, 0, 4);
    ArrayDeletedaten(arr, 2, 2);
    ArrayDeletedaten(arr, 4, 0);
    ArrayDeletedaten(arr, INT_MAX, INT_MAX);
    ArrayDeletedaten(arr, 1, INT_MAX);
    EXPECT_EQ(Values(), (Ints{1, 2, 3}));
}

TEST_F(ArraySafety, WhatIsAddedMayLieInTheArray) {
    Fill(3, {1, 2, 3});
    ArrayAppendData(arr, ArrayGetData(arr, 1));  // moves the block
    EXPECT_EQ(Values(), (Ints{1, 2, 3, 2}));
    ArrayInsertData(arr, 0, ArrayGetData(arr, 2));  // moves the element
    EXPECT_EQ(Values(), (Ints{3, 1, 2, 3, 2}));
    ArrayAddData(arr, 5, ArrayGetData(arr, 0));
    EXPECT_EQ(Values(), (Ints{3, 1, 2, 3, 2, 3, 1, 2, 3, 2}));
    // More than the block has from there on: what it has.
    Arraysetcount(arr, 12);
    ArrayAddData(arr, 4, ArrayGetData(arr, 11));
    EXPECT_EQ(arr.Count, 16);
    EXPECT_EQ(arr[12], 0);
}

TEST_F(ArraySafety, CapacitiesBeyond32BitsAreRefused) {
    Fill(5, {1, 2, 3});
    EXPECT_THROW(Arraysetcount(arr, INT_MAX), std::bad_alloc);
    EXPECT_THROW(ArrayAddData(arr, INT_MAX, &nine), std::bad_alloc);
    EXPECT_EQ(arr.Capacity, 5);
    EXPECT_EQ(arr.Delta, 5);
    EXPECT_EQ(Values(), (Ints{1, 2, 3}));
}

TEST_F(ArraySafety, AHugeFirstBlockIsImmodestNotAnOverflow) {
    TARRAY a;
    ArrayInit(a, INT_MAX, INT_MAX);
    EXPECT_EQ(messages.texts, (Texts{Immodest}));
    EXPECT_EQ(a.Data, nullptr);
    // 65536 * 65536 is 0 in 32 bits.
    ArrayInit(a, 65536, 65536);
    EXPECT_EQ(messages.texts.size(), 2u);
    EXPECT_EQ(a.Data, nullptr);
}

TEST_F(ArraySafety, CopyOntoItself) {
    Fill(5, {1, 2, 3});
    ArrayCopy(arr, arr);
    EXPECT_EQ(Values(), (Ints{1, 2, 3}));
    TintegerARRAY shared = arr;
    ArrayCopy(shared, arr);
    EXPECT_NE(shared.Data, arr.Data);
    EXPECT_EQ(shared[2], 3);
    EXPECT_EQ(Values(), (Ints{1, 2, 3}));
    ArrayDispose(shared);
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(ArraySafety, AForeignBlockIsNeverMovedOrFreed) {
    int mine[2] = {1, 2};
    arr.ItemSize = 4;
    arr.Delta = arr.Capacity = arr.Count = 2;
    arr.Data = mine;
    ArrayAppendData(arr, &nine);
    EXPECT_NE(arr.Data, mine);
    EXPECT_EQ(Values(), (Ints{1, 2, 9}));
    EXPECT_EQ(mine[1], 2);

    TintegerARRAY other;
    other.Data = mine;
    ArrayDispose(other);
    EXPECT_EQ(other.Data, nullptr);
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(ArraySafety, AMessageHandlerThatThrowsLeavesArraysInOrder) {
    SetMessageHandler([](const std::string& text) { throw std::runtime_error(text); });
    EXPECT_THROW(ArrayInit(arr, 4, 2501), std::runtime_error);
    EXPECT_EQ(arr.Data, nullptr);
    ArrayInit(arr, 4, 5);
    Arraysetcount(arr, 3000);
    EXPECT_THROW(ArrayClear(arr), std::runtime_error);
    EXPECT_EQ(arr.Data, nullptr);
    EXPECT_EQ(arr.Count, 0);
}

}  // namespace
