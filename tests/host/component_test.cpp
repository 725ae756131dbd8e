#include <zk/host/component.h>

#include <QPointer>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace zk;

namespace {

using Names = std::vector<std::string>;

/// What a component was told, and what it does about it.
struct Told {
    void note(QObject* component, TOperation operation) {
        EXPECT_EQ(TOperation::opRemove, operation);
        objects.push_back(component);
        names.push_back(component->objectName().toStdString());
        stillComponent.push_back(ComponentBase::Of(component) != nullptr);
        if (act)
            act(component);
    }

    std::vector<QObject*> objects;
    Names names;
    std::vector<bool> stillComponent;
    std::function<void(QObject*)> act;
};

class Listener : public TComponent {
  public:
    explicit Listener(QObject* owner = nullptr, const char* name = "") : TComponent(owner) {
        setObjectName(QString::fromLatin1(name));
    }
    ~Listener() override { AnnounceRemoval(); }

    void Notification(QObject* component, TOperation operation) override {
        TComponent::Notification(component, operation);
        told.note(component, operation);
    }

    using ComponentBase::state_;
    Told told;
};

/// A component that is a widget.
class WidgetListener : public QWidget, public ComponentBase {
  public:
    explicit WidgetListener(QWidget* owner = nullptr, const char* name = "") : QWidget(owner), ComponentBase(this) {
        setObjectName(QString::fromLatin1(name));
    }
    ~WidgetListener() override { AnnounceRemoval(); }

    void Notification(QObject* component, TOperation operation) override {
        ComponentBase::Notification(component, operation);
        told.note(component, operation);
    }

    Told told;
};

/// One that leaves the announcement to the base classes.
class Lazy : public TComponent {
  public:
    using TComponent::TComponent;
};

}  // namespace

TEST(Component, ANewOneHasNoStateAndNoOwner) {
    const TComponent component;
    EXPECT_EQ(TComponentState(), component.ComponentState());
    EXPECT_EQ(nullptr, component.Owner());
    EXPECT_EQ(&component, component.AsObject());
    EXPECT_FALSE(component.IsLoadingOrStoring());
}

TEST(Component, TheOwnerIsTheParentAndDeletesIt) {
    auto form = std::make_unique<QObject>();
    const QPointer<TComponent> component = new TComponent(form.get());
    EXPECT_EQ(form.get(), component->Owner());
    form.reset();
    EXPECT_TRUE(component.isNull());
}

TEST(Component, LoadingEndsWithLoaded) {
    TComponent component;
    component.BeginLoading();
    EXPECT_TRUE(component.ComponentState() & csLoading);
    EXPECT_TRUE(component.IsLoadingOrStoring());
    component.Loaded();
    EXPECT_FALSE(component.ComponentState() & csLoading);
    EXPECT_FALSE(component.IsLoadingOrStoring());
}

TEST(Component, EachWayOfLoadingAndStoringCounts) {
    Listener component;
    for (const TComponentStateFlag flag : {csLoading, csReading, csWriting, csUpdating}) {
        component.state_ = flag;
        EXPECT_TRUE(component.IsLoadingOrStoring()) << flag;
    }
    component.state_ = {};
    for (const TComponentStateFlag flag : {csDesigning, csDestroying}) {
        component.state_ = flag;
        EXPECT_FALSE(component.IsLoadingOrStoring()) << flag;
    }
    component.state_ = {};
}

TEST(Component, DesigningIsSetAndCleared) {
    TComponent component;
    component.SetDesigning(true);
    EXPECT_TRUE(component.ComponentState() & csDesigning);
    component.SetDesigning(false);
    EXPECT_FALSE(component.ComponentState() & csDesigning);
}

TEST(Component, OfFindsComponentsAndNothingElse) {
    const TComponent component;
    WidgetListener widget;
    const QObject plain;
    EXPECT_EQ(&component, ComponentBase::Of(&component));
    EXPECT_EQ(static_cast<ComponentBase*>(&widget), ComponentBase::Of(&widget));
    EXPECT_EQ(nullptr, ComponentBase::Of(&plain));
    EXPECT_EQ(nullptr, ComponentBase::Of(nullptr));
}

TEST(Removal, SiblingsAreToldOnceWhileTheObjectCanBeIdentified) {
    QObject form;
    Listener first(&form, "first");
    auto* going = new Listener(&form, "going");
    Listener last(&form, "last");
    delete going;
    for (const Listener* listener : {&first, &last}) {
        EXPECT_EQ((Names{"going"}), listener->told.names);
        EXPECT_EQ(std::vector<bool>{true}, listener->told.stillComponent);
    }
}

TEST(Removal, ThoseOfOtherOwnersAreNotToldUnlessTheyAsk) {
    QObject form;
    QObject otherForm;
    Listener stranger(&otherForm);
    Listener ownerless;
    Listener asking(&otherForm);
    auto* going = new Listener(&form, "going");
    asking.FreeNotification(going);
    delete going;
    EXPECT_TRUE(stranger.told.names.empty());
    EXPECT_TRUE(ownerless.told.names.empty());
    EXPECT_EQ((Names{"going"}), asking.told.names);
}

TEST(Removal, OwnerlessComponentsAreNoSiblings) {
    Listener one;
    auto* two = new Listener(nullptr, "two");
    delete two;
    EXPECT_TRUE(one.told.names.empty());
}

TEST(Removal, ASiblingThatAskedAsWellIsToldOnce) {
    QObject form;
    Listener sibling(&form);
    auto* going = new Listener(&form, "going");
    sibling.FreeNotification(going);
    sibling.FreeNotification(going);
    delete going;
    EXPECT_EQ((Names{"going"}), sibling.told.names);
}

TEST(Removal, ARequestCanBeTakenBack) {
    Listener asking;
    auto* going = new Listener;
    asking.FreeNotification(going);
    asking.RemoveFreeNotification(going);
    asking.RemoveFreeNotification(going);
    delete going;
    EXPECT_TRUE(asking.told.names.empty());
}

TEST(Removal, ARequestCanBeTakenBackInsideANotification) {
    Listener first;
    Listener second;
    auto* going = new Listener;
    first.FreeNotification(going);
    second.FreeNotification(going);
    // who is told first is open: whoever it is silences the other
    first.told.act = [&second](QObject* component) { second.RemoveFreeNotification(component); };
    second.told.act = [&first](QObject* component) { first.RemoveFreeNotification(component); };
    delete going;
    EXPECT_EQ(1U, first.told.names.size() + second.told.names.size());
}

TEST(Removal, AskingForNothingOrForItselfChangesNothing) {
    Listener component;
    component.FreeNotification(nullptr);
    component.FreeNotification(&component);
    component.RemoveFreeNotification(nullptr);
    EXPECT_TRUE(component.told.names.empty());
}

TEST(Removal, WhoAskedMayGoFirst) {
    auto* going = new Listener;
    {
        Listener asking;
        asking.FreeNotification(going);
    }
    delete going;
}

TEST(Removal, BothMayAskForEachOther) {
    auto* one = new Listener(nullptr, "one");
    auto* two = new Listener(nullptr, "two");
    one->FreeNotification(two);
    two->FreeNotification(one);
    delete one;
    EXPECT_EQ((Names{"one"}), two->told.names);
    delete two;
}

TEST(Removal, WidgetsThatAreComponentsTellAndAreTold) {
    QWidget form;
    Listener sibling(&form);
    WidgetListener widgetSibling(&form);
    auto* going = new WidgetListener(&form, "going");
    delete going;
    EXPECT_EQ((Names{"going"}), sibling.told.names);
    EXPECT_EQ((Names{"going"}), widgetSibling.told.names);
    EXPECT_EQ(std::vector<bool>{true}, widgetSibling.told.stillComponent);
    widgetSibling.setParent(nullptr);
}

TEST(Removal, APlainWidgetIsToldOfToWhoAsked) {
    QWidget form;
    Listener asking(&form);
    const Listener sibling(&form);
    auto* control = new QWidget(&form);
    control->setObjectName(QStringLiteral("control"));
    asking.FreeNotification(control);
    asking.FreeNotification(control);
    delete control;
    EXPECT_EQ((std::vector<QObject*>{control}), asking.told.objects);
    EXPECT_EQ(std::vector<bool>{false}, asking.told.stillComponent);
    EXPECT_TRUE(sibling.told.objects.empty());
}

TEST(Removal, ARequestForAPlainWidgetCanBeTakenBackAndMade) {
    Listener asking;
    auto* control = new QWidget;
    asking.FreeNotification(control);
    asking.RemoveFreeNotification(control);
    delete control;
    EXPECT_TRUE(asking.told.objects.empty());

    control = new QWidget;
    asking.FreeNotification(control);
    asking.RemoveFreeNotification(control);
    asking.FreeNotification(control);
    delete control;
    EXPECT_EQ(1U, asking.told.objects.size());
}

TEST(Removal, WhoAskedForAPlainWidgetMayGoFirst) {
    const auto control = std::make_unique<QWidget>();
    Listener asking;
    asking.FreeNotification(control.get());
}

TEST(Removal, ARequestMadeWhileAPlainObjectGoesDoesNotBlockALaterOne) {
    Listener asking;
    alignas(QObject) unsigned char place[sizeof(QObject)];
    auto* first = new (place) QObject;
    QObject context;
    QObject::connect(first, &QObject::destroyed, &context, [&asking](QObject* gone) { asking.FreeNotification(gone); });
    first->~QObject();
    asking.told = {};
    auto* second = new (place) QObject;
    asking.FreeNotification(second);
    second->~QObject();
    EXPECT_EQ(1U, asking.told.objects.size());
}

TEST(Removal, TheBaseAnnouncesForWhoDoesNot) {
    QObject form;
    Listener sibling(&form);
    auto* going = new Lazy(&form);
    going->setObjectName(QStringLiteral("lazy"));
    delete going;
    EXPECT_EQ((Names{"lazy"}), sibling.told.names);
}

TEST(Removal, AnOwnerThatGoesTellsThoseThatRemain) {
    auto form = std::make_unique<QObject>();
    Listener outside;
    auto* first = new Listener(form.get(), "first");
    auto* second = new Listener(form.get(), "second");
    auto* third = new Listener(form.get(), "third");
    Names toldThird;
    third->told.act = [&toldThird](QObject* component) { toldThird.push_back(component->objectName().toStdString()); };
    outside.FreeNotification(first);
    outside.FreeNotification(second);
    outside.FreeNotification(third);
    form.reset();
    EXPECT_EQ((Names{"first", "second", "third"}), outside.told.names);
    EXPECT_EQ((Names{"first", "second"}), toldThird);
}

TEST(Removal, AWidgetFormThatGoesTellsToo) {
    auto form = std::make_unique<QWidget>();
    Listener outside;
    outside.FreeNotification(new WidgetListener(form.get(), "widget"));
    outside.FreeNotification(new Listener(form.get(), "component"));
    outside.FreeNotification(new QWidget(form.get()));
    outside.FreeNotification(form.get());
    form.reset();
    EXPECT_EQ(4U, outside.told.objects.size());
}

TEST(Removal, AHandlerMayDeleteASiblingThatWasNotToldYet) {
    QObject form;
    auto* victim = new Listener(&form, "victim");
    auto* going = new Listener(&form, "going");
    Listener killer(&form, "killer");
    killer.told.act = [&victim](QObject* component) {
        if (component != victim)
            delete std::exchange(victim, nullptr);
    };
    delete going;
    EXPECT_EQ((Names{"going", "victim"}), killer.told.names);
}

TEST(Removal, NobodyIsToldTwiceWhenAHandlerRemovesMore) {
    QObject form;
    Listener lowest(&form, "lowest");
    auto* victim = new Listener(&form, "victim");
    auto* going = new Listener(&form, "going");
    Listener middle(&form, "middle");
    Listener killer(&form, "killer");
    for (Listener* listener : {&lowest, &middle, &killer})
        listener->FreeNotification(going);
    killer.told.act = [&victim](QObject* component) {
        if (component != victim)
            delete std::exchange(victim, nullptr);
    };
    delete going;
    for (const Listener* listener : {&lowest, &middle, &killer}) {
        EXPECT_EQ(2U, listener->told.names.size()) << listener->objectName().toStdString();
        EXPECT_EQ(1, std::count(listener->told.names.begin(), listener->told.names.end(), "going"));
        EXPECT_EQ(1, std::count(listener->told.names.begin(), listener->told.names.end(), "victim"));
    }
}

TEST(Removal, WhoIsToldMayDeleteItself) {
    QObject form;
    auto* going = new Listener(&form, "going");
    auto* suicidal = new Listener(&form, "suicidal");
    Listener witness(&form, "witness");
    suicidal->FreeNotification(going);
    suicidal->told.act = [suicidal](QObject*) { delete suicidal; };
    delete going;
    EXPECT_EQ(2U, witness.told.names.size());
}

TEST(Removal, WhoAskedForAPlainObjectMayDeleteItself) {
    auto* suicidal = new Listener;
    auto* control = new QWidget;
    suicidal->FreeNotification(control);
    suicidal->told.act = [suicidal](QObject*) { delete suicidal; };
    delete control;
}

TEST(Removal, AskingForAComponentThatIsGoingLeavesNothingBehind) {
    QObject form;
    Listener sibling(&form);
    alignas(Listener) unsigned char place[sizeof(Listener)];
    auto* first = new (place) Listener(&form, "first");
    sibling.told.act = [&sibling](QObject* component) { sibling.FreeNotification(component); };
    first->~Listener();
    sibling.told.act = nullptr;

    // the next one in the same place is another one
    auto* second = new (place) Listener(nullptr, "second");
    sibling.FreeNotification(second);
    second->~Listener();
    EXPECT_EQ((Names{"first", "second"}), sibling.told.names);
}

TEST(Removal, AComponentMadeInAHandlerIsNotToldOfTheOldOne) {
    QObject form;
    Listener sibling(&form);
    Listener* made = nullptr;
    auto* going = new Listener(&form, "going");
    sibling.told.act = [&made, &form](QObject*) { made = new Listener(&form, "made"); };
    delete going;
    ASSERT_NE(nullptr, made);
    EXPECT_TRUE(made->told.names.empty());
    sibling.told.act = nullptr;
}

TEST(Removal, ManySiblingsEachHearOfEachOnce) {
    QObject form;
    std::vector<Listener*> all;
    for (int i = 0; i < 100; ++i)
        all.push_back(new Listener(&form));
    while (all.size() > 1) {
        delete all.front();
        all.erase(all.begin());
    }
    EXPECT_EQ(99U, all.front()->told.names.size());
    delete all.front();
}

TEST(Removal, AStaticComponentOutlivesTheEndOfMain) {
    static Listener atExit;
    EXPECT_EQ(&atExit, ComponentBase::Of(&atExit));
}
