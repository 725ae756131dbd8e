#include "formparts.h"

#include <zk/host/componentref.h>

#include <QWidget>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

TEST(ComponentRefTest, ANewOneRefersToNothing) {
    const ComponentRef ref;
    EXPECT_TRUE(ref.IsNull());
    EXPECT_EQ(ref.Object(), nullptr);
    EXPECT_EQ(ref.Name(), QString());
    EXPECT_EQ(ref, ComponentRef(nullptr));
    EXPECT_EQ(ref, ComponentRef::Named(QString()));
}

TEST(ComponentRefTest, TheNameIsThatOfTheObjectNow) {
    Part part(nullptr, QStringLiteral("one"));
    const ComponentRef ref(&part);
    EXPECT_EQ(ref.Name(), QStringLiteral("one"));
    part.setObjectName(QStringLiteral("two"));
    EXPECT_EQ(ref.Name(), QStringLiteral("two"));
    EXPECT_NE(ref, ComponentRef::Named(QStringLiteral("two")));
    EXPECT_EQ(ComponentRef::Named(QStringLiteral("two")), ComponentRef::Named(QStringLiteral("two")));
    EXPECT_NE(ComponentRef::Named(QStringLiteral("two")), ComponentRef::Named(QStringLiteral("three")));
}

TEST(ComponentRefTest, AnObjectThatHasGoneIsNone) {
    auto* part = new Part;
    const ComponentRef ref(part);
    EXPECT_FALSE(ref.IsNull());
    delete part;
    EXPECT_TRUE(ref.IsNull());
}

TEST(ComponentRefTest, ConvertsFromAndToTextsAndPointers) {
    QWidget panel;
    panel.setObjectName(QStringLiteral("Täfelchen"));
    const QVariant ref = QVariant::fromValue(ComponentRef(&panel));
    EXPECT_EQ(ref.toString(), QStringLiteral("Täfelchen"));
    EXPECT_EQ(ref.value<QByteArray>(), QByteArray("T\xC3\xA4"
                                                  "felchen"));
    EXPECT_EQ(ref.value<QObject*>(), &panel);
    EXPECT_EQ(ref.value<QWidget*>(), &panel);
    EXPECT_EQ(ref.value<Part*>(), nullptr) << "a pointer to what it is not";
    EXPECT_EQ(QVariant::fromValue(&panel).value<ComponentRef>(), ComponentRef(&panel));
    EXPECT_EQ(QVariant::fromValue<QObject*>(&panel).value<ComponentRef>(), ComponentRef(&panel));
    EXPECT_EQ(QVariant(QStringLiteral("a")).value<ComponentRef>(), ComponentRef::Named(QStringLiteral("a")));
    EXPECT_EQ(QVariant(QByteArray("\xC3\xA4")).value<ComponentRef>(), ComponentRef::Named(QStringLiteral("ä")));
}

TEST(ComponentRefTest, APropertyTakesPointersOfItsClassAndGivesThem) {
    Part a;
    Part b;
    EXPECT_TRUE(a.setProperty("Next", QVariant::fromValue(&b)));
    EXPECT_EQ(a.Next, &b);
    EXPECT_EQ(a.property("Next").value<Part*>(), &b);
    EXPECT_TRUE(a.setProperty("Next", QVariant::fromValue<QObject*>(nullptr)));
    EXPECT_EQ(a.Next, nullptr);
    SpecialPart special;
    EXPECT_FALSE(a.setProperty("Next", QVariant::fromValue(&special))) << "nothing knows the class";
    RegisterReferenceTarget<SpecialPart>();
    EXPECT_TRUE(a.setProperty("Next", QVariant::fromValue(&special)));
    EXPECT_EQ(a.Next, &special);
}

TEST(ComponentRefTest, TheKindOfAReferenceIsKnown) {
    EXPECT_EQ(ReferenceKind(&Part::staticMetaObject, "Next"), &Part::staticMetaObject);
    EXPECT_EQ(ReferenceKind(&SpecialPart::staticMetaObject, "Next"), &Part::staticMetaObject);
    EXPECT_EQ(ReferenceKind(&Part::staticMetaObject, "Panel"), &QWidget::staticMetaObject);
    EXPECT_EQ(ReferenceKind(&Part::staticMetaObject, "Size"), nullptr);
    EXPECT_EQ(ReferenceKind(&QObject::staticMetaObject, "Next"), nullptr);
    EXPECT_EQ(ReferenceKind(nullptr, "Next"), nullptr);
}

TEST(ComponentRefTest, AnObjectOfAnotherClassIsRefused) {
    Part part(nullptr, QStringLiteral("part"));
    Part next;
    part.SetNext(&next);
    QWidget panel;
    panel.setObjectName(QStringLiteral("panel"));
    try {
        part.setProperty("Next", QVariant::fromValue(&panel));
        ADD_FAILURE() << "no error";
    } catch (const EError& error) {
        EXPECT_STREQ(error.what(), "part.Next = \"panel\": this is a QWidget, not a zk::test::Part");
    }
    EXPECT_EQ(part.Next, &next);
    EXPECT_THROW(part.setProperty("Next", QVariant::fromValue(&part)), EError);
    EXPECT_EQ(part.Next, &next);
}

}  // namespace
}  // namespace zk::test
