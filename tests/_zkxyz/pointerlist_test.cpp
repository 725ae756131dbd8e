#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/pointerlist.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace zk;

class PointerList : public testing::Test {
  protected:
    int a = 0, b = 0, c = 0;
    TPointerList list;

    std::vector<void*> Items() const {
        std::vector<void*> items;
        for (int i = 0; i < list.Count(); ++i)
            items.push_back(list[i]);
        return items;
    }
    using Pointers = std::vector<void*>;
};

TEST_F(PointerList, AddsAtTheEndAndInsertsAnywhere) {
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Add(&a), 0);
    EXPECT_EQ(list.Add(&b), 1);
    list.Insert(0, &c);
    list.Insert(3, nullptr);
    EXPECT_EQ(Items(), (Pointers{&c, &a, &b, nullptr}));
}

TEST_F(PointerList, PutsExchangesAndFinds) {
    list.Add(&a);
    list.Add(&b);
    list.Put(0, &c);
    EXPECT_EQ(list.Get(0), &c);
    list.Exchange(0, 1);
    EXPECT_EQ(Items(), (Pointers{&b, &c}));
    EXPECT_EQ(list.IndexOf(&c), 1);
    EXPECT_EQ(list.IndexOf(&a), -1);
    EXPECT_EQ(list.IndexOf(nullptr), -1);
}

TEST_F(PointerList, DeletesRemovesPacksAndClears) {
    for (void* p : Pointers{&a, nullptr, &b, nullptr, &c})
        list.Add(p);
    list.Delete(0);
    EXPECT_EQ(Items(), (Pointers{nullptr, &b, nullptr, &c}));
    list.Pack();
    EXPECT_EQ(Items(), (Pointers{&b, &c}));
    EXPECT_EQ(list.Remove(&c), 1);
    EXPECT_EQ(list.Remove(&c), -1);
    EXPECT_EQ(Items(), (Pointers{&b}));
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(PointerList, ABadIndexThrowsAndChangesNothing) {
    list.Add(&a);
    for (const int i : {-1, 1, 1000000}) {
        EXPECT_THROW(list.Get(i), EListError);
        EXPECT_THROW(list.Put(i, &b), EListError);
        EXPECT_THROW(list.Delete(i), EListError);
        EXPECT_THROW(list.Exchange(0, i), EListError);
        EXPECT_THROW(list.Exchange(i, 0), EListError);
    }
    EXPECT_THROW(list.Insert(-1, &b), EListError);
    EXPECT_THROW(list.Insert(2, &b), EListError);
    EXPECT_EQ(Items(), (Pointers{&a}));
    try {
        list.Get(7);
        FAIL();
    } catch (const EListError& error) {
        EXPECT_STREQ(error.what(), "List index out of bounds (7)");
    }
}

TEST(PointerListDropped, TellsOfEveryItemThatLeaves) {
    struct Watched : TPointerList {
        std::vector<void*> dropped;
        void Dropped(void* item) override { dropped.push_back(item); }
    } list;
    int a = 0, b = 0, c = 0, d = 0;
    for (void* p : std::vector<void*>{&a, &b, nullptr, &c, &d})
        list.Add(p);
    list.Delete(0);
    list.Remove(&d);
    EXPECT_EQ(list.dropped, (std::vector<void*>{&a, &d}));
    list.Clear();
    EXPECT_EQ(list.dropped, (std::vector<void*>{&a, &d, &c, &b}));
    list.Add(&a);
    list.Put(0, &b);
    list.Pack();
    EXPECT_EQ(list.dropped.size(), 4u);
}

}  // namespace
