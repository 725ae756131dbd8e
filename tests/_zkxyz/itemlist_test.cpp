#include <zk/_zkxyz/itemlist.h>

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace {

using namespace zk;

class ItemList : public testing::Test {
  protected:
    ItemList() { ListInit(list, 2); }
    ~ItemList() override { ListFree(list); }

    void Fill(const std::vector<void*>& items) {
        for (void* item : items)
            Listadd(list, item);
    }
    std::vector<void*> Items() const {
        std::vector<void*> items;
        for (int i = 0; i < LISTCOUNT(list); ++i)
            items.push_back(ListAt(list, i));
        return items;
    }
    using Pointers = std::vector<void*>;

    int a = 0, b = 0, c = 0, d = 0;
    TItemArray list;
};

TEST_F(ItemList, InitLeavesItemSizeAndReserved) {
    TItemArray other;
    other.ItemSize = 77;
    other.Reserved = 78;
    ListInit(other, 3);
    EXPECT_EQ(other.Count, 0);
    EXPECT_EQ(other.Delta, 3);
    EXPECT_EQ(other.Capacity, 3);
    EXPECT_NE(other.Data, nullptr);
    EXPECT_EQ(other.ItemSize, 77);
    EXPECT_EQ(other.Reserved, 78u);
    ListFree(other);
    EXPECT_EQ(other.Data, nullptr);
    EXPECT_EQ(other.Capacity, 0);
    EXPECT_EQ(other.Count, 0);
    EXPECT_EQ(other.Delta, 3);
}

TEST_F(ItemList, ADeltaOfZeroStaysUntilTheFirstItem) {
    TItemArray other;
    ListInit(other, 0);
    EXPECT_EQ(other.Delta, 0);
    EXPECT_EQ(other.Capacity, 0);
    Listadd(other, &a);
    EXPECT_EQ(other.Delta, 5);
    EXPECT_EQ(other.Capacity, 5);
    EXPECT_EQ(ListAt(other, 0), &a);
    ListFree(other);
}

TEST_F(ItemList, CreateMakesAListOnTheHeap) {
    TItemArray* created = ListCreate(4);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(created->Capacity, 4);
    EXPECT_EQ(LISTCOUNT(*created), 0);
    ListFree(*created);
    delete created;
}

TEST_F(ItemList, InsertsAndGrows) {
    Fill({&a, &b});
    EXPECT_EQ(list.Capacity, 2);
    AtInsert(list, 1, &c);
    EXPECT_EQ(list.Capacity, 4);
    AtInsert(list, 0, &d);
    EXPECT_EQ(Items(), (Pointers{&d, &a, &c, &b}));
    AtInsert(list, 4, nullptr);
    EXPECT_EQ(Items(), (Pointers{&d, &a, &c, &b, nullptr}));
    EXPECT_EQ(list.Capacity, 6);
}

TEST_F(ItemList, ReadsWritesAndSwaps) {
    Fill({&a, &b});
    EXPECT_EQ(ListAt(list, 2), nullptr);
    ListAtPut(list, 0, &c);
    ListExchange(list, 0, 1);
    EXPECT_EQ(Items(), (Pointers{&b, &c}));
    EXPECT_EQ(IndexOF(list, &c), 1);
    EXPECT_EQ(IndexOF(list, &a), -1);
    EXPECT_EQ(IndexOF(list, nullptr), -1);
}

TEST_F(ItemList, RemovalHasTwoPhases) {
    Fill({&a, &b, &a, &c});
    ListRemoveItem(list, &a);
    EXPECT_EQ(LISTCOUNT(list), 4);
    EXPECT_EQ(Items(), (Pointers{nullptr, &b, &a, &c}));
    EXPECT_EQ(IndexOF(list, &a), 2);
    EXPECT_EQ(IndexOF(list, nullptr), 0);
    AtDelete(list, 2);
    EXPECT_EQ(IndexOF(list, &a), -1);
    EXPECT_EQ(LISTCOUNT(list), 4);
    ListRemoveItem(list, &d);
    ListPack(list);
    EXPECT_EQ(Items(), (Pointers{&b, &c}));
    EXPECT_EQ(LISTCOUNT(list), 2);
    ListPack(list);
    EXPECT_EQ(LISTCOUNT(list), 2);
}

TEST_F(ItemList, DeleteAllKeepsTheBlock) {
    Fill({&a, &b, &c});
    void* block = list.Data;
    DeleteAll(list);
    EXPECT_EQ(LISTCOUNT(list), 0);
    EXPECT_EQ(list.Data, block);
    EXPECT_EQ(list.Capacity, 4);
}

TEST_F(ItemList, IndexesOutsideTouchNothing) {
    Fill({&a});
    for (const int i : {-1, 1, 2, INT_MAX, INT_MIN}) {
        EXPECT_EQ(ListAt(list, i), nullptr);
        ListAtPut(list, i, &b);
        ListExchange(list, 0, i);
        ListExchange(list, i, 0);
        AtDelete(list, i);
        if (i != 1)
            AtInsert(list, i, &b);
    }
    EXPECT_EQ(Items(), (Pointers{&a}));
}

TEST_F(ItemList, ADeclaredListIsEmpty) {
    TItemArray other;
    EXPECT_EQ(ListAt(other, 0), nullptr);
    EXPECT_EQ(IndexOF(other, &a), -1);
    ListPack(other);
    ListRemoveItem(other, &a);
    ListFree(other);
    ListInit(other, -4);
    EXPECT_EQ(other.Capacity, 0);
    Listadd(other, &a);
    EXPECT_EQ(ListAt(other, 0), &a);
    ListFree(other);
}

TEST_F(ItemList, TextAndVariantListsAreItemLists) {
    TStrLIST texts;
    ListInit(texts, 1);
    Listadd(texts, &a);
    EXPECT_EQ(IndexOF(texts, &a), 0);
    ListFree(texts);
    TVariantLIST variants;
    ListInit(variants, 1);
    EXPECT_EQ(LISTCOUNT(variants), 0);
    ListFree(variants);
}

TEST_F(ItemList, GrowsRarelyHoweverSmallTheSteps) {
    int moves = 0;
    const void* block = list.Data;
    for (int i = 0; i < 100000; ++i) {
        Listadd(list, &a);
        if (list.Data != block) {
            block = list.Data;
            ++moves;
        }
    }
    EXPECT_EQ(list.Capacity, 100000);
    EXPECT_LE(moves, 18);
}

}  // namespace
