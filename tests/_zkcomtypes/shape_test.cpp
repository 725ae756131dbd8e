#include <zk/_zkcomtypes/displaylist.h>
#include <zk/_zkcomtypes/shape.h>

#include <QMetaProperty>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;

namespace {

class TellingList : public TDisplayList {
  public:
    using TDisplayList::TDisplayList;
    void Invalidate() override {
        ++invalidations;
        if (onInvalidate)
            onInvalidate();
    }
    int take() { return std::exchange(invalidations, 0); }

    int invalidations = 0;
    std::function<void()> onInvalidate;
};

}  // namespace

TEST(Shape, ANewOneBelongsToNoList) {
    const TZkShape shape;
    EXPECT_EQ(nullptr, shape.GetDisplayList());
}

TEST(Shape, EnteringAListAppendsAndInvalidates) {
    TellingList list;
    TZkShape one;
    TZkShape two;
    one.SetDisplayList(&list);
    two.SetDisplayList(&list);
    EXPECT_EQ(2, list.take());
    EXPECT_EQ(&list, one.GetDisplayList());
    EXPECT_EQ(&one, list.GetZkShape(0));
    EXPECT_EQ(&two, list.GetZkShape(1));
}

TEST(Shape, TheSameListAgainMovesItToTheEndAndInvalidatesTwice) {
    TellingList list;
    TZkShape one;
    TZkShape two;
    one.SetDisplayList(&list);
    two.SetDisplayList(&list);
    list.take();
    one.SetDisplayList(&list);
    EXPECT_EQ(2, list.take());
    EXPECT_EQ(2, list.GetShapeCount());
    EXPECT_EQ(&two, list.GetZkShape(0));
    EXPECT_EQ(&one, list.GetZkShape(1));
}

TEST(Shape, ChangingTheListLeavesTheOldOne) {
    TellingList first;
    TellingList second;
    TZkShape shape;
    shape.SetDisplayList(&first);
    first.take();
    shape.SetDisplayList(&second);
    EXPECT_EQ(1, first.take());
    EXPECT_EQ(1, second.take());
    EXPECT_EQ(0, first.GetShapeCount());
    EXPECT_EQ(1, second.GetShapeCount());
    shape.SetDisplayList(nullptr);
    EXPECT_EQ(1, second.take());
    EXPECT_EQ(0, second.GetShapeCount());
    EXPECT_EQ(nullptr, shape.GetDisplayList());
    shape.SetDisplayList(nullptr);
    EXPECT_EQ(0, second.take());
}

TEST(Shape, TheRemovalOfItsListClearsTheReference) {
    QObject form;
    auto* list = new TDisplayList(&form);
    TZkShape shape(&form);
    shape.SetDisplayList(list);
    delete list;
    EXPECT_EQ(nullptr, shape.GetDisplayList());
    TellingList next;
    shape.SetDisplayList(&next);
    EXPECT_EQ(1, next.GetShapeCount());
}

TEST(Shape, AListOfAnotherOwnerReadsAsNoneAfterItsDeletion) {
    TZkShape shape;
    auto* list = new TDisplayList;
    shape.SetDisplayList(list);
    delete list;
    EXPECT_EQ(nullptr, shape.GetDisplayList());
    shape.SetDisplayList(nullptr);
}

TEST(Shape, OnlyTheRemovalOfItsListCounts) {
    TDisplayList list;
    TDisplayList other;
    TZkShape shape;
    shape.SetDisplayList(&list);
    shape.Notification(&other, TOperation::opRemove);
    shape.Notification(&list, TOperation::opInsert);
    shape.Notification(nullptr, TOperation::opRemove);
    EXPECT_EQ(&list, shape.GetDisplayList());
    shape.Notification(&list, TOperation::opRemove);
    EXPECT_EQ(nullptr, shape.GetDisplayList());
    EXPECT_EQ(1, list.GetShapeCount());
}

TEST(Shape, PlayRaisesItsEvent) {
    TZkShape shape;
    int plays = 0;
    QObject::connect(&shape, &TZkShape::OnPlay, [&plays, &shape](QObject* sender) {
        EXPECT_EQ(&shape, sender);
        ++plays;
    });
    shape.Play();
    EXPECT_EQ(1, plays);
}

TEST(Shape, AHandlerMayDeleteIt) {
    auto* shape = new TZkShape;
    QObject::connect(shape, &TZkShape::OnPlay, [](QObject* sender) { delete sender; });
    shape->Play();
}

TEST(Shape, TheTargetMayGoWhileTheOldListIsInvalidated) {
    TellingList old;
    auto* target = new TellingList;
    TZkShape shape;
    shape.SetDisplayList(&old);
    old.onInvalidate = [&target] { delete std::exchange(target, nullptr); };
    shape.SetDisplayList(target);
    EXPECT_EQ(nullptr, shape.GetDisplayList());
    EXPECT_EQ(0, old.GetShapeCount());
}

TEST(Shape, MayGoWhileTheOldListIsInvalidated) {
    TellingList old;
    TellingList target;
    auto* shape = new TZkShape;
    shape->SetDisplayList(&old);
    old.onInvalidate = [&shape] { delete std::exchange(shape, nullptr); };
    shape->SetDisplayList(&target);
    EXPECT_EQ(0, target.GetShapeCount());
}

TEST(Shape, PublishesNothingOfItsOwn) {
    for (const QMetaObject* meta : {&TZkShape::staticMetaObject, &TDisplayList::staticMetaObject})
        EXPECT_EQ(meta->propertyOffset(), meta->propertyCount());
}
