#include "formparts.h"
#include "print.h"

#include <zk/host/formreading.h>
#include <zk/host/message.h>

#include <QCoreApplication>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>

namespace zk::test {
namespace {

/// Catches messages, and lets the event loop run once.
class FormReadingTest : public testing::Test {
  protected:
    void SetUp() override {
        Part::Order.clear();
        old_ = SetMessageHandler([this](const std::string& text) { messages << QString::fromStdString(text); });
    }
    void TearDown() override {
        turn();
        SetMessageHandler(old_);
        EXPECT_EQ(FormReading::Current(), nullptr);
    }
    static void turn() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// As the code that is made from a form does it.
    template <class T = Part>
    T* part(const char* name, QObject* owner) {
        auto* made = new T(owner);
        made->setObjectName(QString::fromUtf8(name));
        made->setGeometry(QRect(1, 2, 20, 20));
        return made;
    }

    QStringList messages;
    QWidget form;

  private:
    MessageHandler old_;
};

TEST_F(FormReadingTest, APlaceBeginsItAndTheEventLoopEndsIt) {
    Part* a = part("a", &form);
    EXPECT_EQ(a->geometry(), QRect(1, 2, 20, 20));
    EXPECT_TRUE(a->ComponentState().testFlag(csLoading));
    EXPECT_TRUE(FormReading::IsReading(*a));
    a->setGeometry(QRect());
    turn();
    EXPECT_FALSE(a->ComponentState().testFlag(csLoading));
    EXPECT_EQ(a->TimesLoaded, 1);
    turn();
    EXPECT_EQ(a->TimesLoaded, 1);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormReadingTest, EndNowEndsIt) {
    Part* a = part("a", &form);
    FormReading::EndNow();
    EXPECT_EQ(a->TimesLoaded, 1);
    EXPECT_EQ(FormReading::Current(), nullptr);
    turn();
    EXPECT_EQ(a->TimesLoaded, 1);
    FormReading::EndNow();
}

TEST_F(FormReadingTest, TheWindowThatIsShownEndsIt) {
    Part* a = part("a", &form);
    form.show();
    EXPECT_EQ(a->TimesLoaded, 1);
}

TEST_F(FormReadingTest, APageThatIsShownWithinItsWindowDoesNot) {
    form.show();
    QWidget page(&form);
    Part* a = part("a", &page);
    page.show();
    EXPECT_EQ(a->TimesLoaded, 0);
}

TEST_F(FormReadingTest, ThoseThatShowOthersAreLoadedLast) {
    part("a", &form)->LoadedLast = true;
    part("b", &form);
    part("c", &form)->LoadedLast = true;
    part("d", &form);
    turn();
    EXPECT_EQ(Part::Order, (QStringList{"b", "d", "a", "c"}));
}

TEST_F(FormReadingTest, NamesAreFoundBackwardsAndForwards) {
    Part* a = part("a", &form);
    Part* b = part("b", &form);
    b->setProperty("Next", QByteArray("a"));
    EXPECT_EQ(b->Next, a);
    a->setProperty("Next", QByteArray("c"));
    EXPECT_EQ(a->Next, nullptr);
    Part* c = part("c", &form);
    EXPECT_EQ(a->Next, c) << "as soon as it is there";
    turn();
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormReadingTest, ThoseThatWaitForTheSameNameGetItInTheirOrder) {
    for (const char* name : {"z", "m", "a"})
        part(name, &form)->setProperty("Next", "last");
    Part::Order.clear();
    Part* last = part("last", &form);
    EXPECT_EQ(Part::Order, (QStringList{"z got last", "m got last", "a got last"}));
    EXPECT_EQ(form.findChild<Part*>("a")->Next, last);
}

TEST_F(FormReadingTest, PlainWidgetsAreFoundAtTheEnd) {
    Part* a = part("a", &form);
    a->setProperty("Panel", QByteArray("panel"));
    QWidget panel(&form);
    panel.setObjectName(QStringLiteral("panel"));
    EXPECT_EQ(a->Panel, nullptr);
    turn();
    EXPECT_EQ(a->Panel, &panel);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormReadingTest, TheFormItselfMayBeMeant) {
    form.setObjectName(QStringLiteral("window"));
    Part* a = part("a", &form);
    a->setProperty("Panel", QByteArray("window"));
    turn();
    EXPECT_EQ(a->Panel, &form);
}

TEST_F(FormReadingTest, TwoFormsInOneWindowKeepToThemselves) {
    QWidget left(&form);
    QWidget right(&form);
    Part* a1 = part("a", &left);
    Part* b1 = part("b", &left);
    b1->setProperty("Next", QByteArray("a"));
    Part* b2 = part("b", &right);
    b2->setProperty("Next", QByteArray("a"));
    EXPECT_EQ(b2->Next, nullptr) << "not that of the other form";
    Part* a2 = part("a", &right);
    turn();
    EXPECT_EQ(b1->Next, a1);
    EXPECT_EQ(b2->Next, a2);
}

TEST_F(FormReadingTest, WhatIsFurtherOutIsFoundAtTheEnd) {
    QWidget group(&form);
    Part* inner = part("inner", &group);
    inner->setProperty("Next", QByteArray("outer"));
    Part* outer = part("outer", &form);
    turn();
    EXPECT_EQ(inner->Next, outer);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormReadingTest, TheLastNameCounts) {
    Part* a = part("a", &form);
    a->setProperty("Next", QByteArray("b"));
    a->setProperty("Next", QByteArray("c"));
    part("b", &form);
    EXPECT_EQ(a->Next, nullptr);
    Part* c = part("c", &form);
    EXPECT_EQ(a->Next, c);
    a->setProperty("Next", QByteArray("d"));
    a->setProperty("Next", QByteArray());
    part("d", &form);
    turn();
    EXPECT_EQ(a->Next, nullptr);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormReadingTest, ANameOutsideOfAFormIsFoundAtOnce) {
    Part a(&form, QStringLiteral("a"));
    Part b(&form, QStringLiteral("b"));
    a.setProperty("Next", QStringLiteral("b"));
    EXPECT_EQ(a.Next, &b);
    a.setProperty("Next", QStringLiteral("c"));
    turn();
    EXPECT_EQ(a.Next, &b) << "what is not found changes nothing";
    EXPECT_EQ(messages, QStringList{"a.Next = \"c\": there is no component of that name"});
    EXPECT_EQ(a.TimesLoaded, 0);
}

TEST_F(FormReadingTest, EveryFaultIsToldOnce) {
    Part* a = part("a", &form);
    a->setProperty("Next", QByteArray("form"));
    form.setObjectName(QStringLiteral("form"));
    a->setProperty("Place", QStringLiteral("nowhere"));
    a->setProperty("Hue", 7);
    a->setProperty("Owned.Hue", 8);
    a->setProperty("Owned.Sort", QStringLiteral("Fourth"));
    a->setProperty("Owned.Color", QColor(Qt::red));
    Part* b = part("b", &form);
    b->setProperty("Next", QByteArray("b"));
    Part* c = part("c", &form);
    c->setProperty("Next", QByteArray("nobody"));
    turn();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].split('\n'),
              (QStringList{"a.Place = \"nowhere\": nowhere is no place", "a.Hue = \"7\": there is no such property",
                           "a.Owned.Hue = \"8\": there is no such property",
                           "a.Owned.Sort = \"Fourth\": this is no value of type zk::test::Inner::Kind",
                           "b.Next = \"b\": not itself", "a.Next = \"form\": this is a QWidget, not a zk::test::Part",
                           "c.Next = \"nobody\": there is no component of that name"}));
    EXPECT_EQ(a->Place, QStringLiteral("here"));
    EXPECT_EQ(a->Owned.Color, QColor(Qt::red)) << "what is right is taken";
    EXPECT_EQ(a->property("Hue"), QVariant(7)) << "nothing is lost";
    EXPECT_EQ(a->dynamicPropertyNames(), QByteArrayList{"Hue"}) << "what belongs to owned objects is there alone";
    for (const Part* one : {a, b, c}) {
        EXPECT_EQ(one->TimesLoaded, 1);
        EXPECT_EQ(one->Next, nullptr);
    }
}

TEST_F(FormReadingTest, AnObjectOfAnotherClassIsAFaultWhileAFormIsRead) {
    Part* a = part("a", &form);
    Part* b = part("b", &form);
    a->setProperty("Next", QVariant::fromValue(b));
    form.setObjectName(QStringLiteral("form"));
    a->setProperty("Next", QVariant::fromValue(ComponentRef(&form)));
    EXPECT_EQ(a->Next, b);
    turn();
    EXPECT_EQ(messages, QStringList{"a.Next = \"form\": this is a QWidget, not a zk::test::Part"});
}

TEST_F(FormReadingTest, ANameThatIsRefusedOutsideOfAFormIsTold) {
    Part a(&form, QStringLiteral("a"));
    EXPECT_NO_THROW(a.setProperty("Next", QStringLiteral("a")));
    turn();
    EXPECT_EQ(a.Next, nullptr);
    EXPECT_EQ(messages, QStringList{"a.Next = \"a\": not itself"});
}

TEST_F(FormReadingTest, OutsideOfAFormErrorsAreRaisedAndDynamicPropertiesAreQtsOwn) {
    Part a(&form, QStringLiteral("a"));
    EXPECT_THROW(a.setProperty("Place", QStringLiteral("nowhere")), EConvertError);
    a.setProperty("Hue", 7);
    turn();
    EXPECT_EQ(messages, QStringList());
    a.setProperty("Owned.Text", QStringLiteral("t"));
    EXPECT_EQ(a.Owned.Text, QStringLiteral("t"));
    EXPECT_EQ(a.dynamicPropertyNames(), QByteArrayList{"Hue"});
    a.setProperty("Owned.Sort", QStringLiteral("Fourth"));
    turn();
    EXPECT_EQ(messages, QStringList{"a.Owned.Sort = \"Fourth\": this is no value of type zk::test::Inner::Kind"});
}

TEST_F(FormReadingTest, ALoaderEndsItAndGetsTheFaults) {
    Part* before = part("before", &form);
    {
        FormReading reading;
        Part a(&form, QStringLiteral("a"));
        reading.Begin(a);
        reading.Begin(a);
        a.setProperty("Next", QByteArray("before"));
        a.setProperty("Panel", QByteArray("nobody"));
        const std::vector<FormFault> faults = reading.End();
        ASSERT_EQ(faults.size(), 1U);
        EXPECT_EQ(faults[0].What, FormFault::Kind::NoSuchComponent);
        EXPECT_EQ(faults[0].Component, QStringLiteral("a"));
        EXPECT_EQ(faults[0].Property, QStringLiteral("Panel"));
        EXPECT_EQ(faults[0].Value, QStringLiteral("nobody"));
        EXPECT_EQ(a.TimesLoaded, 1);
        EXPECT_EQ(a.Next, before);
        EXPECT_EQ(before->TimesLoaded, 0);
        EXPECT_TRUE(FormReading::IsReading(*before)) << "that one goes on";
        EXPECT_TRUE(reading.End().empty());
    }
    turn();
    EXPECT_EQ(before->TimesLoaded, 1);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormReadingTest, ReadingsMayEndInAnotherOrder) {
    FormReading outer;
    Part a(&form, QStringLiteral("a"));
    outer.Begin(a);
    auto inner = std::make_unique<FormReading>();
    Part b(&form, QStringLiteral("b"));
    inner->Begin(b);
    EXPECT_EQ(FormReading::Current(), inner.get());
    EXPECT_TRUE(outer.End().empty());
    EXPECT_EQ(a.TimesLoaded, 1);
    EXPECT_EQ(b.TimesLoaded, 0);
    EXPECT_EQ(FormReading::Current(), inner.get());
    EXPECT_TRUE(inner->End().empty());
    EXPECT_EQ(b.TimesLoaded, 1);
    EXPECT_EQ(FormReading::Current(), nullptr) << "the outer one has ended";
}

TEST_F(FormReadingTest, ANameAfterTheEndIsWaitedForByNobody) {
    FormReading reading;
    Part a(&form);
    Part b(&form, QStringLiteral("b"));
    reading.Begin(b);
    b.setProperty("Next", QByteArray("late"));
    a.setObjectName(QStringLiteral("early"));
    a.setObjectName(QString());
    const std::vector<FormFault> faults = reading.End();
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].Text(), QStringLiteral("b.Next = \"late\": there is no component of that name"));
    a.setObjectName(QStringLiteral("late"));
    EXPECT_EQ(b.Next, nullptr);
}

TEST_F(FormReadingTest, ALoaderThatLeavesNoneSilent) {
    Part a(&form);
    {
        FormReading reading;
        reading.Begin(a);
    }
    EXPECT_FALSE(a.ComponentState().testFlag(csLoading));
    EXPECT_EQ(a.TimesLoaded, 0);
}

TEST_F(FormReadingTest, FormsThatAreDeletedHalfWay) {
    auto window = std::make_unique<QWidget>();
    part("a", window.get())->setProperty("Next", QByteArray("b"));
    part("c", window.get())->setProperty("Panel", QByteArray("window"));
    window.reset();
    Part* other = part("b", &form);
    turn();
    EXPECT_EQ(other->TimesLoaded, 1);
    EXPECT_EQ(messages, QStringList());
}

class Killer : public Part {
  public:
    using Part::Part;
    void Loaded() override {
        Part::Loaded();
        delete Victim;
    }
    QPointer<QObject> Victim;
};

class Failing : public Part {
  public:
    using Part::Part;
    void Loaded() override {
        Part::Loaded();
        throw EError("not today");
    }
};

TEST_F(FormReadingTest, AnErrorOfLoadedIsToldAndKeepsNobodyElseFromBeingLoaded) {
    part<Failing>("failing", &form);
    Part* next = part("next", &form);
    turn();
    EXPECT_EQ(Part::Order, (QStringList{"failing", "next"}));
    EXPECT_EQ(messages, QStringList{"not today"});
    EXPECT_FALSE(next->ComponentState().testFlag(csLoading));
}

TEST_F(FormReadingTest, LoadedMayDeleteTheOthersAndTheForm) {
    auto* window = new QWidget;
    auto* killer = part<Killer>("killer", window);
    Part* victim = part("victim", window);
    killer->Victim = victim;
    turn();
    EXPECT_EQ(Part::Order, QStringList{"killer"});
    auto* second = part<Killer>("second", window);
    second->Victim = window;
    part("late", window);
    turn();
    EXPECT_EQ(Part::Order, (QStringList{"killer", "second"}));
}

TEST_F(FormReadingTest, ManyNamesThatWait) {
    constexpr int count = 3000;
    std::vector<Part*> parts;
    for (int i = 0; i < count; ++i) {
        parts.push_back(part(QByteArray::number(i), &form));
        parts.back()->setProperty("Next", QByteArray("last"));
    }
    Part* last = part("last", &form);
    for (const Part* one : parts)
        ASSERT_EQ(one->Next, last);
    turn();
    EXPECT_EQ(last->TimesLoaded, 1);
}

TEST_F(FormReadingTest, AFaultThatComesTwiceIsOneLineAndAComponentWithoutANameIsItsClass) {
    for (int i = 0; i < 2; ++i)
        part("", &form)->setProperty("Next", QByteArray("nobody"));
    part("a", &form)->setProperty("Next", QByteArray("nobody"));
    turn();
    EXPECT_EQ(messages, QStringList{"zk::test::Part.Next = \"nobody\": there is no component of that name\n"
                                    "a.Next = \"nobody\": there is no component of that name"});
}

TEST_F(FormReadingTest, ManyFaultsAreOneMessageOfAFewLines) {
    for (int i = 0; i < 100; ++i)
        part(QByteArray::number(i), &form)->setProperty("Next", QByteArray(1000, 'x'));
    turn();
    ASSERT_EQ(messages.size(), 1);
    const QStringList lines = messages[0].split('\n');
    EXPECT_EQ(lines.size(), 21);
    EXPECT_EQ(lines.last(), QStringLiteral("and 80 more"));
    EXPECT_LT(lines.first().size(), 300);
}

}  // namespace
}  // namespace zk::test
