#include "messages.h"

#include <zk/_zkxyz/listofarrays.h>

#include <gtest/gtest.h>

namespace {

using namespace zk;

template <class L>
void ExpectAddsArrays(int itemSize) {
    L list;
    auto* array = list.AddArray();
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->ItemSize, itemSize);
    EXPECT_EQ(array->Delta, 5);
    EXPECT_EQ(array->Capacity, 5);
    EXPECT_EQ(array->Count, 0);
    EXPECT_NE(array->Data, nullptr);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.Getitem(0), array);
    auto* second = list.AddArray();
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list[1], second);
    EXPECT_THROW(list.Getitem(2), EListError);
    EXPECT_THROW(list[-1], EListError);
    EXPECT_THROW(list.Setitem(2, nullptr), EListError);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
}

TEST(ListOfArrays, AddArrayMakesArraysOfTheKind) {
    ExpectAddsArrays<TlistOFXYArray>(16);
    ExpectAddsArrays<TlistOFXYiArray>(8);
    ExpectAddsArrays<TlistOFxyzArray>(24);
    ExpectAddsArrays<TlistOFIndarray>(4);
}

TEST(ListOfArrays, ClearAndDestructionFreeEverything) {
    Messages messages;
    {
        TlistOFxyzArray list;
        Arraysetcount(*list.AddArray(), 10);
        Arraysetcount(*list.AddArray(), 1000);
        list.Clear();
        EXPECT_EQ(list.Count(), 0);
        EXPECT_EQ(messages.texts, (Texts{ImmodestFree}));
        Arraysetcount(*list.AddArray(), 500);
    }
    EXPECT_EQ(messages.texts, (Texts{ImmodestFree, ImmodestFree}));
}

TEST(ListOfArrays, SetitemHandsTheOldArrayBack) {
    TlistOFXYArray list;
    TXYARRAY* first = list.AddArray();
    TXYARRAY* other = ArrayNew<TXYARRAY>();
    ArrayInit(*other);
    EXPECT_EQ(list.Setitem(0, other), first);
    EXPECT_EQ(list.Getitem(0), other);
    EXPECT_EQ(list.Setitem(0, other), nullptr);
    ArrayClear(*first);
    delete first;
}

TEST(ListOfArrays, AnArrayIsInTheListOnce) {
    TlistOFXYArray list;
    TXYARRAY* a = list.AddArray();
    TXYARRAY* b = list.AddArray();
    EXPECT_EQ(list.Add(a), 0);
    EXPECT_EQ(list.Count(), 2);
    // A swap by two assignments.
    EXPECT_EQ(list.Setitem(0, b), a);
    EXPECT_EQ(list[1], nullptr);
    EXPECT_EQ(list.Setitem(1, a), nullptr);
    EXPECT_EQ(list[0], b);
    EXPECT_EQ(list[1], a);
    list.Exchange(0, 1);
    EXPECT_EQ(list[0], a);
}

TEST(ListOfArrays, DeleteFreesAndTakeHandsOver) {
    TlistOFIndarray list;
    list.AddArray();
    TintegerARRAY* b = list.AddArray();
    list.AddArray();
    list.Delete(0);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Take(0), b);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.Add(b), 1);
    EXPECT_EQ(list.Remove(b), 1);
    EXPECT_EQ(list.Count(), 1);
}

TEST(ListOfArrays, NullItemsArePacked) {
    TlistOFXYArray list;
    list.Add(nullptr);
    TXYARRAY* a = list.AddArray();
    list.Add(nullptr);
    list.Pack();
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list[0], a);
}

TEST(ListOfArrays, DestructionSurvivesAHandlerThatThrows) {
    Messages messages;
    SetMessageHandler([](const std::string& text) { throw std::runtime_error(text); });
    TlistOFXYArray list;
    Arraysetcount(*list.AddArray(), 1000);
    list.AddArray();
    EXPECT_THROW(
        {
            TlistOFXYArray inner;
            Arraysetcount(*inner.AddArray(), 1000);
            inner.Clear();
        },
        std::runtime_error);
}

TEST(ListOfArrays, DestructionFreesWhatComesAfterAHandlerThatThrew) {
    Messages messages;
    int told = 0;
    {
        TlistOFXYArray list;
        for (int i = 0; i < 3; ++i)
            Arraysetcount(*list.AddArray(), 1000);
        SetMessageHandler([&told](const std::string& text) {
            ++told;
            throw std::runtime_error(text);
        });
    }
    EXPECT_EQ(told, 3);
}

}  // namespace
