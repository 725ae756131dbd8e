#include <zk/_zkcomtypes/displaylist.h>
#include <zk/_zkcomtypes/shape.h>
#include <zk/_zkxyz/errors.h>

#include <QPointer>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace zk;

namespace {

class CountingList : public TDisplayList {
  public:
    using TDisplayList::TDisplayList;
    void Invalidate() override { ++invalidations; }
    int take() { return std::exchange(invalidations, 0); }

    int invalidations = 0;
};

/// A shape that notes when it is played.
class Noting : public TZkShape {
  public:
    Noting(char name, std::string& played, QObject* owner = nullptr) : TZkShape(owner), name_(name), played_(played) {}
    ~Noting() override { AnnounceRemoval(); }

    void Play() override {
        played_ += name_;
        if (act)
            act();
        else
            TZkShape::Play();
    }

    std::function<void()> act;

  private:
    char name_;
    std::string& played_;
};

class DisplayList : public testing::Test {
  protected:
    DisplayList() { list.SetVisible(true); }
    std::string play() {
        played.clear();
        list.Play();
        return played;
    }

    std::string played;
    CountingList list;
};

}  // namespace

TEST(NewDisplayList, IsInvisibleAndEmpty) {
    const TDisplayList list;
    EXPECT_FALSE(list.GetVisible());
    EXPECT_EQ(0, list.GetShapeCount());
    EXPECT_THROW(list.GetZkShape(0), EListError);
}

TEST_F(DisplayList, AddingAppendsAndInvalidates) {
    Noting a('a', played);
    Noting b('b', played);
    list.AddShape(&a);
    list.AddShape(&b);
    EXPECT_EQ(2, list.take());
    EXPECT_EQ(2, list.GetShapeCount());
    EXPECT_EQ(&a, list.GetZkShape(0));
    EXPECT_EQ(&b, list.GetZkShape(1));
    EXPECT_EQ(0, list.INdexOfShape(&a));
    EXPECT_EQ(1, list.INdexOfShape(&b));
    EXPECT_EQ(nullptr, a.GetDisplayList());  // that is the shape's side
}

TEST_F(DisplayList, ABadIndexIsAnError) {
    Noting a('a', played);
    list.AddShape(&a);
    EXPECT_THROW(list.GetZkShape(-1), EListError);
    EXPECT_THROW(list.GetZkShape(1), EListError);
    try {
        list.GetZkShape(3);
        FAIL();
    } catch (const EListError& error) {
        EXPECT_STREQ("List index out of bounds (3)", error.what());
    }
}

TEST_F(DisplayList, RemovingInvalidatesInEveryCase) {
    Noting a('a', played);
    Noting b('b', played);
    list.AddShape(&a);
    list.take();
    list.RemoveShape(&a);
    EXPECT_EQ(1, list.take());
    EXPECT_EQ(0, list.GetShapeCount());
    list.RemoveShape(&b);
    list.RemoveShape(nullptr);
    EXPECT_EQ(2, list.take());
}

TEST_F(DisplayList, NothingIsNotAdded) {
    list.AddShape(nullptr);
    EXPECT_EQ(0, list.GetShapeCount());
    EXPECT_EQ("", play());
}

TEST_F(DisplayList, AShapeMayBeInItTwice) {
    Noting a('a', played);
    list.AddShape(&a);
    list.AddShape(&a);
    EXPECT_EQ("aa", play());
    list.RemoveShape(&a);
    EXPECT_EQ(1, list.GetShapeCount());
    EXPECT_EQ("a", play());
    list.RemoveShape(&a);
    EXPECT_EQ(0, list.GetShapeCount());
}

TEST_F(DisplayList, OthersAreNotFound) {
    Noting a('a', played);
    Noting b('b', played);
    const QObject plain;
    list.AddShape(&a);
    EXPECT_EQ(-1, list.INdexOfShape(&b));
    EXPECT_EQ(-1, list.INdexOfShape(&plain));
    EXPECT_EQ(-1, list.INdexOfShape(nullptr));
}

TEST_F(DisplayList, PlaysItsEventAndThenTheShapesInOrder) {
    Noting a('a', played);
    Noting b('b', played);
    list.AddShape(&a);
    list.AddShape(&b);
    QObject::connect(&list, &TDisplayList::OnPlay, [this](QObject* sender) {
        EXPECT_EQ(&list, sender);
        played += '!';
    });
    EXPECT_EQ("!ab", play());
}

TEST_F(DisplayList, PlaysNothingWhileInvisible) {
    Noting a('a', played);
    list.AddShape(&a);
    QObject::connect(&list, &TDisplayList::OnPlay, [this] { played += '!'; });
    list.SetVisible(false);
    EXPECT_EQ("", play());
    EXPECT_FALSE(list.GetVisible());
}

TEST_F(DisplayList, VisibilityIsStoredOnly) {
    list.take();
    list.SetVisible(false);
    list.SetVisible(true);
    EXPECT_EQ(0, list.take());
}

TEST_F(DisplayList, DoesNotOwnItsShapes) {
    const auto shape = std::make_unique<Noting>('a', played);
    {
        TDisplayList other;
        other.AddShape(shape.get());
    }
    shape->Play();
    EXPECT_EQ("a", played);
}

TEST(DisplayListRemoval, AShapeOfTheSameOwnerLeavesWithoutInvalidating) {
    std::string played;
    QObject form;
    CountingList list(&form);
    auto* a = new Noting('a', played, &form);
    Noting b('b', played, &form);
    list.AddShape(a);
    list.AddShape(&b);
    list.take();
    delete a;
    EXPECT_EQ(0, list.take());
    EXPECT_EQ(1, list.GetShapeCount());
    EXPECT_EQ(&b, list.GetZkShape(0));
}

TEST_F(DisplayList, AShapeOfAnotherOwnerIsGoneAllTheSame) {
    auto a = std::make_unique<Noting>('a', played);
    Noting b('b', played);
    list.AddShape(a.get());
    list.AddShape(a.get());
    list.AddShape(&b);
    list.take();
    a.reset();
    EXPECT_EQ(0, list.take());
    EXPECT_EQ(1, list.GetShapeCount());
    EXPECT_EQ(&b, list.GetZkShape(0));
    EXPECT_EQ(0, list.INdexOfShape(&b));
    EXPECT_EQ("b", play());
}

TEST_F(DisplayList, ANotificationRemovesTheFirstOccurrence) {
    Noting a('a', played);
    list.AddShape(&a);
    list.AddShape(&a);
    list.take();
    list.Notification(&a, TOperation::opInsert);
    EXPECT_EQ(2, list.GetShapeCount());
    list.Notification(&a, TOperation::opRemove);
    EXPECT_EQ(1, list.GetShapeCount());
    list.Notification(nullptr, TOperation::opRemove);
    EXPECT_EQ(1, list.GetShapeCount());
    EXPECT_EQ(0, list.take());
}

TEST_F(DisplayList, AShapeMayBeRemovedBySomebodyWhoHearsOfItsEndFirst) {
    auto* shape = new TZkShape;
    QObject::connect(shape, &QObject::destroyed,
                     [this](QObject* gone) { list.Notification(gone, TOperation::opRemove); });
    TZkShape other;
    list.AddShape(shape);
    list.AddShape(&other);
    list.AddShape(shape);
    delete shape;
    EXPECT_EQ(list.GetShapeCount(), 1);
    EXPECT_EQ(list.GetZkShape(0), &other);
    list.RemoveShape(&other);
    EXPECT_EQ(list.GetShapeCount(), 0);
}

// What is no longer in the list once is not in it at all.
TEST_F(DisplayList, ComingAndGoingInAnyOrder) {
    TZkShape a;
    auto b = std::make_unique<TZkShape>();
    for (TZkShape* shape : {&a, b.get(), &a})
        list.AddShape(shape);
    list.RemoveShape(&a);
    EXPECT_EQ(list.INdexOfShape(&a), 1);
    list.RemoveShape(&a);
    EXPECT_EQ(list.INdexOfShape(&a), -1);
    list.RemoveShape(&a);
    list.AddShape(&a);
    EXPECT_EQ(list.INdexOfShape(&a), 1);
    b.reset();
    EXPECT_EQ(list.INdexOfShape(&a), 0);
    EXPECT_EQ(list.GetShapeCount(), 1);
}

TEST_F(DisplayList, AShapeWhoseEndIsUnderWayIsNotPlayed) {
    // It has no owner, so the list is not told and still holds it.
    struct Last : Noting {
        Last(std::string& log, TDisplayList& l) : Noting('x', log), list(l) {}
        ~Last() override {
            AnnounceRemoval();
            list.Play();
        }
        TDisplayList& list;
    };
    auto* last = new Last(played, list);
    list.AddShape(last);
    delete last;
    EXPECT_EQ("", played);
}

TEST_F(DisplayList, AShapeMayDeleteItselfWhilePlayed) {
    auto* a = new Noting('a', played);
    Noting b('b', played);
    list.AddShape(a);
    list.AddShape(&b);
    a->act = [a] { delete a; };
    EXPECT_EQ("ab", play());  // and nobody loses a turn
    EXPECT_EQ(1, list.GetShapeCount());
    EXPECT_EQ("b", play());
}

TEST(DisplayListRemoval, AShapeOfTheSameOwnerMayDeleteItselfWhilePlayed) {
    std::string played;
    QObject form;
    TDisplayList list(&form);
    list.SetVisible(true);
    auto* a = new Noting('a', played, &form);
    Noting b('b', played, &form);
    list.AddShape(a);
    list.AddShape(&b);
    a->act = [a] { delete a; };
    list.Play();
    EXPECT_EQ("ab", played);
    EXPECT_EQ(1, list.GetShapeCount());
}

TEST_F(DisplayList, AShapeMayDeleteALaterOne) {
    Noting a('a', played);
    auto* b = new Noting('b', played);
    Noting c('c', played);
    for (TZkShape* shape : std::initializer_list<TZkShape*>{&a, b, &c})
        list.AddShape(shape);
    a.act = [&b] { delete std::exchange(b, nullptr); };
    EXPECT_EQ("ac", play());
    EXPECT_EQ(2, list.GetShapeCount());
}

TEST_F(DisplayList, AShapeMayRemoveItselfOrALaterOne) {
    Noting a('a', played);
    Noting b('b', played);
    Noting c('c', played);
    Noting d('d', played);
    for (TZkShape* shape : std::initializer_list<TZkShape*>{&a, &b, &c, &d})
        shape->SetDisplayList(&list);
    a.act = [&a, &c] {
        a.SetDisplayList(nullptr);
        c.SetDisplayList(nullptr);
    };
    EXPECT_EQ("abd", play());
    EXPECT_EQ(2, list.GetShapeCount());
    EXPECT_EQ(&d, list.GetZkShape(1));
    EXPECT_EQ("bd", play());
}

TEST_F(DisplayList, AccessIsRightWhileShapesLeaveDuringPlay) {
    Noting a('a', played);
    Noting b('b', played);
    Noting c('c', played);
    for (TZkShape* shape : std::initializer_list<TZkShape*>{&a, &b, &c})
        list.AddShape(shape);
    b.act = [this, &a, &b, &c] {
        list.RemoveShape(&a);
        EXPECT_EQ(2, list.GetShapeCount());
        EXPECT_EQ(&b, list.GetZkShape(0));
        EXPECT_EQ(&c, list.GetZkShape(1));
        EXPECT_THROW(list.GetZkShape(2), EListError);
        EXPECT_EQ(-1, list.INdexOfShape(&a));
        EXPECT_EQ(1, list.INdexOfShape(&c));
    };
    EXPECT_EQ("abc", play());
    b.act = nullptr;
    EXPECT_EQ("bc", play());
}

TEST_F(DisplayList, AShapeAddedWhilePlayingWaitsForTheNextTime) {
    Noting a('a', played);
    Noting b('b', played);
    list.AddShape(&a);
    a.act = [this, &a, &b] {
        for (int i = 0; i < 100; ++i)
            list.AddShape(&b);
        a.act = nullptr;
    };
    EXPECT_EQ("a", play());
    EXPECT_EQ("a" + std::string(100, 'b'), play());
}

TEST_F(DisplayList, AShapeThatMovesToTheEndIsNotPlayedTwice) {
    Noting a('a', played);
    Noting b('b', played);
    a.SetDisplayList(&list);
    b.SetDisplayList(&list);
    a.act = [this, &a] { a.SetDisplayList(&list); };
    EXPECT_EQ("ab", play());
    EXPECT_EQ(&b, list.GetZkShape(0));
    EXPECT_EQ(&a, list.GetZkShape(1));
    EXPECT_EQ("ba", play());
}

TEST_F(DisplayList, TheEventMayAddAndDeleteShapes) {
    auto* a = new Noting('a', played);
    Noting b('b', played);
    list.AddShape(a);
    const auto connection = QObject::connect(&list, &TDisplayList::OnPlay, [this, &a, &b] {
        delete std::exchange(a, nullptr);
        list.AddShape(&b);
    });
    EXPECT_EQ("b", play());
    QObject::disconnect(connection);
}

TEST_F(DisplayList, PlaysInsideAPlay) {
    Noting a('a', played);
    Noting b('b', played);
    list.AddShape(&a);
    list.AddShape(&b);
    int depth = 0;
    a.act = [this, &a, &depth] {
        if (++depth == 1) {
            list.Play();
            list.RemoveShape(&a);
        }
    };
    EXPECT_EQ("aabb", play());
    EXPECT_EQ(1, list.GetShapeCount());
    EXPECT_EQ(&b, list.GetZkShape(0));
}

TEST_F(DisplayList, TheListMayBeDeletedWhilePlayed) {
    for (const bool fromShape : {false, true}) {
        played.clear();
        auto* doomed = new TDisplayList;
        doomed->SetVisible(true);
        Noting a('a', played);
        Noting b('b', played);
        a.SetDisplayList(doomed);
        b.SetDisplayList(doomed);
        if (fromShape)
            a.act = [&doomed] { delete std::exchange(doomed, nullptr); };
        else
            QObject::connect(doomed, &TDisplayList::OnPlay, [&doomed] { delete std::exchange(doomed, nullptr); });
        doomed->Play();
        EXPECT_EQ(fromShape ? "a" : "", played);
        EXPECT_EQ(nullptr, a.GetDisplayList());
    }
}

TEST_F(DisplayList, AnErrorInAShapeLeavesTheListInOrder) {
    Noting a('a', played);
    Noting b('b', played);
    list.AddShape(&a);
    list.AddShape(&b);
    a.act = [this, &a] {
        list.RemoveShape(&a);
        throw std::runtime_error("drawing failed");
    };
    EXPECT_THROW(list.Play(), std::runtime_error);
    EXPECT_EQ(1, list.GetShapeCount());
    EXPECT_EQ(&b, list.GetZkShape(0));
    EXPECT_EQ("b", play());
}

TEST_F(DisplayList, ManyShapesAreReachedByIndexQuickly) {
    std::vector<std::unique_ptr<TZkShape>> shapes;
    constexpr int many = 20000;
    for (int i = 0; i < many; ++i)
        list.AddShape(shapes.emplace_back(std::make_unique<TZkShape>()).get());
    for (int i = 0; i < list.GetShapeCount(); ++i)
        EXPECT_EQ(shapes[std::size_t(i)].get(), list.GetZkShape(i));
    EXPECT_EQ(many, list.GetShapeCount());
    while (!shapes.empty())
        list.RemoveShape(shapes.back().get()), shapes.pop_back();
}
