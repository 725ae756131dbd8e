#include "messages.h"

#include <zk/_zkxyz/array.h>

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <random>
#include <vector>

namespace {

using namespace zk;

// An array of integers with what a test needs to fill and read it.
class Array : public testing::Test {
  protected:
    ~Array() override { ArrayDispose(arr); }

    void Fill(int delta, const std::vector<int>& values) {
        ArrayInit(arr, 4, delta);
        for (const int v : values)
            ArrayAdd(arr, &v);
    }
    std::vector<int> Values() const { return {arr.Items().begin(), arr.Items().end()}; }
    // A slot of the block, whether it is in use or not.
    int Slot(int i) const { return static_cast<const int*>(arr.Data)[i]; }

    using Ints = std::vector<int>;
    Messages messages;
    TintegerARRAY arr;
};

TEST_F(Array, RecordIsFiveWordsAndAPointer) {
    EXPECT_EQ(offsetof(TARRAY, Reserved), 0u);
    EXPECT_EQ(offsetof(TARRAY, ItemSize), 4u);
    EXPECT_EQ(offsetof(TARRAY, Delta), 8u);
    EXPECT_EQ(offsetof(TARRAY, Capacity), 12u);
    EXPECT_EQ(offsetof(TARRAY, Count), 16u);
    EXPECT_EQ(sizeof(TXYZARRAY), sizeof(TARRAY));
}

TEST_F(Array, NewAllocatesAZeroRecord) {
    TXYZARRAY* p = nullptr;
    ArrayNew(p);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->Reserved, 0u);
    EXPECT_EQ(p->ItemSize, 0);
    EXPECT_EQ(p->Delta, 0);
    EXPECT_EQ(p->Capacity, 0);
    EXPECT_EQ(p->Count, 0);
    EXPECT_EQ(p->Data, nullptr);
    delete p;
    delete ArrayNew<TARRAY>();
}

TEST_F(Array, InitWithDeltaZeroGivesFive) {
    arr.Reserved = 7;
    ArrayInit(arr, 4, 0);
    EXPECT_EQ(arr.Reserved, 0u);
    EXPECT_EQ(arr.ItemSize, 4);
    EXPECT_EQ(arr.Delta, 5);
    EXPECT_EQ(arr.Capacity, 5);
    EXPECT_EQ(arr.Count, 0);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Slot(i), 0);
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(Array, InitZeroFillsEveryByte) {
    TXYZARRAY a;
    ArrayInit(a, 24, 7);
    ASSERT_NE(a.Data, nullptr);
    EXPECT_EQ(a.Delta, 7);
    EXPECT_EQ(a.Capacity, 7);
    const std::vector<char> zero(7 * 24);
    EXPECT_EQ(std::memcmp(a.Data, zero.data(), zero.size()), 0);
    ArrayDispose(a);
}

TEST_F(Array, InitOfTypedArraysKnowsTheItemSize) {
    TXYARRAY xy;
    TXYZARRAY xyz;
    TXYIARRAY xyi;
    ArrayInit(xy);
    ArrayInit(xyz, 3);
    ArrayInit(xyi, 0);
    ArrayInit(arr);
    EXPECT_EQ(xy.ItemSize, 16);
    EXPECT_EQ(xy.Delta, 5);
    EXPECT_EQ(xyz.ItemSize, 24);
    EXPECT_EQ(xyz.Delta, 3);
    EXPECT_EQ(xyi.ItemSize, 8);
    EXPECT_EQ(xyi.Delta, 5);
    EXPECT_EQ(arr.ItemSize, 4);
    ArrayDispose(xy);
    ArrayDispose(xyz);
    ArrayDispose(xyi);
}

TEST_F(Array, FirstBlockIsLimitedToTenThousandBytes) {
    TXYZARRAY a;
    ArrayInit(a, 24, 416);
    EXPECT_NE(a.Data, nullptr);
    EXPECT_TRUE(messages.texts.empty());
    ArrayDispose(a);

    ArrayInit(a, 24, 417);
    EXPECT_EQ(messages.texts, (Texts{Immodest}));
    EXPECT_EQ(a.Data, nullptr);
    EXPECT_EQ(a.Capacity, 417);
    EXPECT_EQ(a.Delta, 417);
    EXPECT_EQ(a.Count, 0);

    ArrayInit(a, 100, 100);
    EXPECT_NE(a.Data, nullptr);
    EXPECT_EQ(messages.texts.size(), 1u);
    ArrayDispose(a);
}

TEST_F(Array, LaterGrowthHasNoLimit) {
    ArrayInit(arr, 4, 5);
    Arraysetcount(arr, 100000);
    EXPECT_NE(arr.Data, nullptr);
    EXPECT_EQ(arr.Capacity, 100000);
    EXPECT_TRUE(messages.texts.empty());
}

TEST_F(Array, ClearResetsAllButTheItemSize) {
    Fill(5, {1, 2, 3});
    ArrayClear(arr);
    EXPECT_EQ(arr.Data, nullptr);
    EXPECT_EQ(arr.Count, 0);
    EXPECT_EQ(arr.Capacity, 0);
    EXPECT_EQ(arr.Delta, 0);
    EXPECT_EQ(arr.ItemSize, 4);
    ArrayClear(arr);
    EXPECT_TRUE(messages.texts.empty());
    EXPECT_EQ(messages.beeps, 0);
}

TEST_F(Array, ClearOfALargeBlockSaysSo) {
    ArrayInit(arr, 4, 2500);
    ArrayClear(arr);
    EXPECT_TRUE(messages.texts.empty());
    ArrayInit(arr, 4, 5);
    Arraysetcount(arr, 2501);
    ArrayClear(arr);
    EXPECT_EQ(messages.texts, (Texts{ImmodestFree}));
    EXPECT_EQ(messages.beeps, 0);
}

TEST_F(Array, ClearWithoutABlockSaysNothing) {
    ArrayInit(arr, 4, 5000);
    ArrayClear(arr);
    EXPECT_EQ(messages.texts, (Texts{Immodest}));
    EXPECT_EQ(arr.Capacity, 0);
}

TEST_F(Array, ClearOfAForeignBlockIsSwallowed) {
    int mine[3] = {1, 2, 3};
    arr.ItemSize = 4;
    arr.Delta = arr.Capacity = arr.Count = 3;
    arr.Data = mine;
    ArrayClear(arr);
    EXPECT_EQ(messages.texts, (Texts{FreeFailed}));
    EXPECT_EQ(messages.beeps, 1);
    EXPECT_EQ(arr.Data, nullptr);
    EXPECT_EQ(arr.Count, 0);
    EXPECT_EQ(arr.Capacity, 0);
    EXPECT_EQ(arr.Delta, 0);
    EXPECT_EQ(mine[2], 3);
}

TEST_F(Array, DisposeKeepsTheDelta) {
    Fill(7, {1, 2, 3});
    ArrayDispose(arr);
    EXPECT_EQ(arr.Data, nullptr);
    EXPECT_EQ(arr.Count, 0);
    EXPECT_EQ(arr.Capacity, 0);
    EXPECT_EQ(arr.Delta, 7);
    EXPECT_EQ(arr.ItemSize, 4);
    const int v = 9;
    ArrayAppendData(arr, &v);
    EXPECT_EQ(arr.Capacity, 7);
    EXPECT_EQ(Values(), (Ints{9}));
}

TEST_F(Array, CopyTakesTheCapacityAsDelta) {
    Fill(3, {1, 2, 3, 4});
    TintegerARRAY copy;
    ArrayCopy(copy, arr);
    EXPECT_EQ(copy.Count, 4);
    EXPECT_EQ(copy.Capacity, 6);
    EXPECT_EQ(copy.Delta, 6);
    EXPECT_EQ(copy.ItemSize, 4);
    EXPECT_NE(copy.Data, arr.Data);
    EXPECT_EQ(std::memcmp(copy.Data, arr.Data, 24), 0);
    ArrayDispose(copy);
}

TEST_F(Array, CopyClearsTheTargetFirst) {
    Fill(5, {1});
    TintegerARRAY copy;
    ArrayInit(copy, 4, 5);
    Arraysetcount(copy, 3000);
    ArrayCopy(copy, arr);
    EXPECT_EQ(messages.texts, (Texts{ImmodestFree}));
    EXPECT_EQ(copy.Count, 1);
    EXPECT_EQ(copy[0], 1);
    ArrayDispose(copy);
}

TEST_F(Array, CopyOfALargeSourceRunsIntoTheLimit) {
    ArrayInit(arr, 4, 5);
    Arraysetcount(arr, 3000);
    TintegerARRAY copy;
    ArrayCopy(copy, arr);
    EXPECT_EQ(messages.texts, (Texts{Immodest}));
    EXPECT_EQ(copy.Data, nullptr);
    EXPECT_EQ(copy.Count, 3000);
    EXPECT_TRUE(copy.Items().empty());
}

TEST_F(Array, GetDataIsTheAddressOfTheElement) {
    Fill(5, {1, 2, 3});
    EXPECT_EQ(ArrayGetData(arr, 0), arr.Data);
    EXPECT_EQ(ArrayGetData(arr, 2), static_cast<char*>(arr.Data) + 8);
    EXPECT_EQ(*static_cast<const int*>(ArrayGetData(std::as_const(arr), 1)), 2);
}

TEST_F(Array, InsertMakesAZeroElement) {
    Fill(5, {1, 2, 3});
    int* slot = static_cast<int*>(ArrayInsert(arr, 1));
    EXPECT_EQ(slot, static_cast<int*>(arr.Data) + 1);
    EXPECT_EQ(Values(), (Ints{1, 0, 2, 3}));
    EXPECT_EQ(ArrayInsert(arr, -1), static_cast<int*>(arr.Data) + 4);
    EXPECT_EQ(Values(), (Ints{1, 0, 2, 3, 0}));
    ArrayInsert(arr, 0);
    EXPECT_EQ(Values(), (Ints{0, 1, 0, 2, 3, 0}));
    EXPECT_EQ(arr.Capacity, 10);
    ArrayInsert(arr, 6);
    EXPECT_EQ(Values(), (Ints{0, 1, 0, 2, 3, 0, 0}));
}

TEST_F(Array, InsertZeroesASlotThatWasInUse) {
    Fill(5, {1, 2, 3});
    Arraysetcount(arr, 1);
    ArrayInsert(arr, -1);
    EXPECT_EQ(Values(), (Ints{1, 0}));
}

TEST_F(Array, InsertAfterClearGrowsByFive) {
    Fill(3, {1});
    ArrayClear(arr);
    EXPECT_NE(ArrayInsert(arr, -1), nullptr);
    EXPECT_EQ(arr.Delta, 5);
    EXPECT_EQ(arr.Capacity, 5);
    EXPECT_EQ(Values(), (Ints{0}));
}

TEST_F(Array, SetcountGrowsInSteps) {
    ArrayInit(arr, 4, 5);
    Arraysetcount(arr, 5);
    EXPECT_EQ(arr.Capacity, 5);
    Arraysetcount(arr, 12);
    EXPECT_EQ(arr.Capacity, 15);
    EXPECT_EQ(arr.Count, 12);
    EXPECT_EQ(Values(), Ints(12, 0));
    Arraysetcount(arr, 15);
    EXPECT_EQ(arr.Capacity, 15);
    Arraysetcount(arr, 16);
    EXPECT_EQ(arr.Capacity, 20);
}

TEST_F(Array, SetcountAfterClearGrowsByFive) {
    Fill(3, {1});
    ArrayClear(arr);
    Arraysetcount(arr, 6);
    EXPECT_EQ(arr.Delta, 5);
    EXPECT_EQ(arr.Capacity, 10);
    EXPECT_EQ(Values(), Ints(6, 0));
}

TEST_F(Array, ShrinkingKeepsTheBlockAndWhatItHolds) {
    Fill(5, {1, 2, 3, 4, 5});
    void* block = arr.Data;
    Arraysetcount(arr, 2);
    EXPECT_EQ(arr.Data, block);
    EXPECT_EQ(arr.Capacity, 5);
    EXPECT_EQ(Values(), (Ints{1, 2}));
    Arraysetcount(arr, 4);
    EXPECT_EQ(Values(), (Ints{1, 2, 3, 4}));
}

TEST_F(Array, GrowthLeavesOnlyElementsInUse) {
    Fill(5, {1, 2, 3, 4, 5});
    Arraysetcount(arr, 2);
    Arraysetcount(arr, 7);
    EXPECT_EQ(Values(), (Ints{1, 2, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Slot(9), 0);
}

TEST_F(Array, InsertDataCopiesAnElement) {
    Fill(5, {1, 2, 3});
    const int v = 9;
    ArrayInsertData(arr, 0, &v);
    EXPECT_EQ(Values(), (Ints{9, 1, 2, 3}));
    ArrayInsertData(arr, 4, &v);
    EXPECT_EQ(Values(), (Ints{9, 1, 2, 3, 9}));
    ArrayInsertData(arr, 2, &v);
    EXPECT_EQ(Values(), (Ints{9, 1, 9, 2, 3, 9}));
    EXPECT_EQ(arr.Capacity, 10);
}

TEST_F(Array, InsertDataWithoutDataLeavesTheSlot) {
    Fill(5, {1, 2, 3});
    ArrayInsertData(arr, 1, nullptr);
    EXPECT_EQ(Values(), (Ints{1, 2, 2, 3}));
}

TEST_F(Array, InsertDataOutsideCountsOneMoreOnly) {
    Fill(5, {1, 2});
    const int v = 9;
    ArrayInsertData(arr, -1, &v);
    EXPECT_EQ(Values(), (Ints{1, 2, 0}));
    ArrayInsertData(arr, 4, &v);
    EXPECT_EQ(Values(), (Ints{1, 2, 0, 0}));
}

TEST_F(Array, AddAndAppendGrowByDelta) {
    ArrayInit(arr, 4, 2);
    for (int v = 1; v <= 3; ++v)
        ArrayAdd(arr, &v);
    EXPECT_EQ(arr.Capacity, 4);
    for (int v = 4; v <= 5; ++v)
        ArrayAppendData(arr, &v);
    EXPECT_EQ(arr.Capacity, 6);
    EXPECT_EQ(arr.Delta, 2);
    EXPECT_EQ(Values(), (Ints{1, 2, 3, 4, 5}));
}

TEST_F(Array, AddDataAppendsSeveral) {
    Fill(5, {1});
    const int more[6] = {2, 3, 4, 5, 6, 7};
    ArrayAddData(arr, 6, more);
    EXPECT_EQ(Values(), (Ints{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(arr.Capacity, 10);
    ArrayAddData(arr, 2, nullptr);
    EXPECT_EQ(Values(), (Ints{1, 2, 3, 4, 5, 6, 7, 0, 0}));
}

TEST_F(Array, DeleteDataClosesTheGap) {
    Fill(5, {1, 2, 3, 4});
    ArrayDeleteData(arr, 1);
    EXPECT_EQ(Values(), (Ints{1, 3, 4}));
    ArrayDeleteData(arr, 2);
    EXPECT_EQ(Values(), (Ints{1, 3}));
    ArrayDeleteData(arr, 0);
    ArrayDeleteData(arr, 0);
    EXPECT_EQ(Values(), Ints{});
    EXPECT_EQ(arr.Capacity, 5);
}

TEST_F(Array, DeletedatenMovesOneMoreThanRemain) {
    Fill(6, {1, 2, 3, 4, 5});
    Arraysetcount(arr, 6);
    arr[5] = 77;
    Arraysetcount(arr, 5);
    ArrayDeletedaten(arr, 1, 2);
    EXPECT_EQ(Values(), (Ints{1, 4, 5}));
    EXPECT_EQ(Slot(3), 77);
}

TEST_F(Array, DeletedatenOfAFullBlockStaysInside) {
    Fill(5, {1, 2, 3, 4, 5});
    ArrayDeletedaten(arr, 0, 2);
    EXPECT_EQ(Values(), (Ints{3, 4, 5}));
    ArrayDeletedaten(arr, 1, 0);
    EXPECT_EQ(Values(), (Ints{3, 4, 5}));
    ArrayDeletedaten(arr, 0, 3);
    EXPECT_EQ(Values(), Ints{});
}

TEST_F(Array, InitXYCopiesPoints) {
    const TXY points[3] = {{1, 2}, {3, 4}, {5, 6}};
    TXYARRAY a;
    InitXY(a, 3, points);
    EXPECT_EQ(a.ItemSize, 16);
    EXPECT_EQ(a.Delta, 3);
    EXPECT_EQ(a.Capacity, 3);
    ASSERT_EQ(a.Count, 3);
    EXPECT_EQ(a[0], (TXY{1, 2}));
    EXPECT_EQ(a[2], (TXY{5, 6}));
    ArrayDispose(a);

    InitXY(a, 2, nullptr);
    EXPECT_EQ(a.Count, 2);
    EXPECT_EQ(a[1], (TXY{0, 0}));
    ArrayDispose(a);

    InitXY(a, 0, points);
    EXPECT_EQ(a.Count, 0);
    EXPECT_EQ(a.Capacity, 5);
    ArrayDispose(a);
}

TEST_F(Array, OwnerFreesWithoutAWord) {
    {
        ArrayOwner<TintegerARRAY> owner;
        Arraysetcount(*owner, 10000);
        EXPECT_EQ(owner->Capacity, 10000);
        ArrayOwner<TintegerARRAY> other(std::move(owner));
        EXPECT_EQ(other.Get().Count, 10000);
        EXPECT_EQ(owner->Data, nullptr);  // moved from on purpose
        owner = std::move(other);
        EXPECT_EQ(owner->Count, 10000);
        TintegerARRAY released = owner.Release();
        EXPECT_EQ(released.Count, 10000);
        EXPECT_EQ(owner->Data, nullptr);
        ArrayDispose(released);
    }
    EXPECT_TRUE(messages.texts.empty());
}

// A million appends: the visible capacity follows Delta step by step, while the block moves a few times only.
TEST_F(Array, AMillionAppendsMoveTheBlockRarely) {
    ArrayInit(arr, 4, 5);
    int moves = 0;
    const void* block = arr.Data;
    for (int i = 0; i < 1000000; ++i) {
        ArrayAppendData(arr, &i);
        if (arr.Data != block) {
            block = arr.Data;
            ++moves;
        }
    }
    EXPECT_EQ(arr.Count, 1000000);
    EXPECT_EQ(arr.Capacity, 1000000);
    EXPECT_EQ(arr.Delta, 5);
    EXPECT_LE(moves, 20);
    for (int i = 0; i < 1000000; i += 9973)
        EXPECT_EQ(arr[i], i);
    const int v = -1;
    ArrayAppendData(arr, &v);
    EXPECT_EQ(arr.Capacity, 1000005);
}

// Against the plain container, with every operation that has an equivalent there.
TEST_F(Array, BehavesLikeAVectorUnderRandomOperations) {
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round) {
        ArrayDispose(arr);
        const int delta = static_cast<int>(random() % 7 + 1);
        ArrayInit(arr, 4, delta);
        Ints model;
        for (int step = 0; step < 200; ++step) {
            const int v = static_cast<int>(random());
            const int size = static_cast<int>(model.size());
            const int at = static_cast<int>(random() % static_cast<unsigned>(size + 1));
            switch (random() % 6) {
                case 0:
                    ArrayAppendData(arr, &v);
                    model.push_back(v);
                    break;
                case 1:
                    ArrayInsertData(arr, at, &v);
                    model.insert(model.begin() + at, v);
                    break;
                case 2:
                    ArrayInsert(arr, at);
                    model.insert(model.begin() + at, 0);
                    break;
                case 3:
                    if (at < size) {
                        ArrayDeleteData(arr, at);
                        model.erase(model.begin() + at);
                    }
                    break;
                case 4: {
                    const int n = static_cast<int>(random() % static_cast<unsigned>(size - at + 1));
                    ArrayDeletedaten(arr, at, n);
                    model.erase(model.begin() + at, model.begin() + at + n);
                    break;
                }
                default: {
                    const Ints more{v, v + 1, v + 2};
                    ArrayAddData(arr, 3, more.data());
                    model.insert(model.end(), more.begin(), more.end());
                }
            }
            ASSERT_EQ(Values(), model);
            ASSERT_EQ(arr.Capacity % delta, 0);
            ASSERT_GE(arr.Capacity, arr.Count);
        }
    }
    EXPECT_TRUE(messages.texts.empty());
}

}  // namespace
