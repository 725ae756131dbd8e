#include "navsupport.h"

#include <zk/_zkoglextools/navigator.h>
#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/message.h>
#include <zk/host/drawinglayer.h>

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QMetaProperty>
#include <QPointer>
#include <QTest>

#include <memory>
#include <random>
#include <stdexcept>
#include <string>

using namespace zk;
using namespace zk::test;

namespace {

class Navigator : public testing::Test {
  protected:
    Navigator() {
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::white);
        form.setPalette(palette);
        form.resize(400, 300);
        nav = new TZKOglNav(&form);
        nav->SetBounds(10, 10, 100, 60);
        QObject::connect(nav, &TZKOglNav::OnNav3D, [this](QObject* sender, int direction) {
            EXPECT_EQ(sender, nav);
            EXPECT_EQ(direction, 0);
            ++steps;
        });
    }

    void drag(const QPoint& from, const QPoint& to) {
        nav->MouseDown(Qt::LeftButton, ssLeft, from.x(), from.y());
        nav->MouseMove(ssLeft, to.x(), to.y());
    }
    QAction* entry(const QString& text) {
        for (QAction* action : nav->findChild<QMenu*>()->actions())
            if (action->text() == text)
                return action;
        return nullptr;
    }

    QWidget form;
    TZKOglNav* nav = nullptr;
    int steps = 0;
};

}  // namespace

TEST_F(Navigator, StartsWithTheUnitBase) {
    ASSERT_NE(nav->Device(), nullptr);
    EXPECT_EQ(nav->GetBase(), Unitbase);
    EXPECT_EQ(nav->Device()->GetBlickwinkel(), 30.0);
    EXPECT_EQ(nav->Device()->GetControl(), nav);
    EXPECT_EQ(nav->Device()->Owner(), nav);
    EXPECT_EQ(nav->GetZkOglCanvas(), nullptr);
}

TEST_F(Navigator, TheSmallerSideGivesTheScale) {
    EXPECT_EQ(nav->Device()->GetUnitsPerCm(), 30.0);
    EXPECT_EQ(nav->Device()->GetWidth(), 100);
    EXPECT_EQ(nav->Device()->GetHeight(), 60);
    nav->SetBounds(0, 0, 50, 300);
    EXPECT_EQ(nav->Device()->GetUnitsPerCm(), 25.0);
    nav->SetBounds(0, 0, 70, 70);
    EXPECT_EQ(nav->Device()->GetUnitsPerCm(), 35.0);
    EXPECT_EQ(nav->geometry(), QRect(0, 0, 70, 70));
    form.show();
    nav->resize(80, 90);
    EXPECT_EQ(nav->Device()->GetUnitsPerCm(), 40.0);
    EXPECT_EQ(nav->Device()->GetHeight(), 90);
}

TEST_F(Navigator, TheCaptionStaysABlank) {
    EXPECT_EQ(nav->GetCaption(), " ");
    nav->SetName("navigator");
    EXPECT_EQ(nav->objectName(), "navigator");
    EXPECT_EQ(nav->GetCaption(), " ");
    nav->SetCaption("View");
    EXPECT_EQ(nav->GetCaption(), "View");
    nav->setObjectName("another");
    EXPECT_EQ(nav->GetCaption(), " ");
}

TEST_F(Navigator, ADragTurnsAboutItsOwnAxes) {
    drag({50, 30}, {75, 30});  // a quarter of the width: a quarter turn
    EXPECT_LT(difference(nav->GetBase(), {{0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}), 1e-12);
    EXPECT_EQ(steps, 1);
    nav->ClickGrundriss();
    drag({50, 30}, {50, 45});
    EXPECT_LT(difference(nav->GetBase(), {{0, 0, 0}, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}}), 1e-12);
    nav->ClickGrundriss();
    drag({50, 30}, {100, 30});  // half the width: half a turn
    EXPECT_LT(difference(nav->GetBase(), {{0, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, 0, -1}}), 1e-12);
    EXPECT_EQ(steps, 3);
}

TEST_F(Navigator, RandomDragsTurnAsTheFormulasSay) {
    std::mt19937 random(3);
    const auto pick = [&](int limit) { return int(random() % unsigned(limit)); };
    TBAse expected = nav->GetBase();
    QPoint at(50, 30);
    nav->MouseDown(Qt::LeftButton, ssLeft, at.x(), at.y());
    for (int i = 0; i < 500; ++i) {
        const QPoint to(pick(140) - 20, pick(100) - 20);
        nav->MouseMove(ssLeft, to.x(), to.y());
        expected = dragged(expected, to.x() - at.x(), to.y() - at.y(), {100, 60});
        at = to;
        ASSERT_LT(difference(nav->GetBase(), expected), 1e-9) << i;
    }
    EXPECT_EQ(steps, 500);
}

TEST_F(Navigator, ATurnGoesThroughTheOriginOfTheBase) {
    nav->DblClick();
    EXPECT_EQ(nav->GetBase(), (TBAse{{0.5, 0.5, 0.5}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
    drag({0, 0}, {13, 17});
    EXPECT_LT(
        difference(nav->GetBase(), dragged({{0.5, 0.5, 0.5}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 13, 17, {100, 60})),
        1e-12);
}

TEST_F(Navigator, WithoutTheLeftButtonAMoveTurnsNothing) {
    nav->MouseDown(Qt::RightButton, ssRight, 10, 10);
    nav->MouseMove(ssRight, 50, 50);
    nav->MouseMove({}, 70, 50);
    EXPECT_EQ(nav->GetBase(), Unitbase);
    EXPECT_EQ(steps, 0);
    nav->MouseMove(ssLeft, 10, 10);  // where the press was
    EXPECT_EQ(nav->GetBase(), Unitbase);
    EXPECT_EQ(steps, 1) << "a step that goes nowhere is a step";
}

TEST_F(Navigator, TheArrowKeysTurnAsDragsDo) {
    form.show();
    nav->setFocus();
    TBAse expected = Unitbase;
    const auto press = [&](Qt::Key key, int dx, int dy, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(nav, key, modifiers);
        expected = dragged(expected, dx, dy, {100, 60});
        EXPECT_LT(difference(nav->GetBase(), expected), 1e-12);
    };
    press(Qt::Key_Right, 10, 0);
    press(Qt::Key_Down, 0, 10);
    press(Qt::Key_Left, -10, 0);
    press(Qt::Key_Up, 0, -10);
    press(Qt::Key_Right, 1, 0, Qt::ShiftModifier);
    EXPECT_EQ(steps, 5);
    QTest::keyClick(nav, Qt::Key_Home);
    EXPECT_EQ(nav->GetBase(), (TBAse{{0.5, 0.5, 0.5}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
    EXPECT_EQ(steps, 5);
}

TEST_F(Navigator, TheMenuHasTheFixedViews) {
    const QMenu* menu = nav->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts += action->text();
    EXPECT_EQ(texts, (QStringList{"Grundriss", "Aufriss", "Schraeriss"}));
    nav->DblClick();
    drag({0, 0}, {13, 17});
    const TBAse before = nav->GetBase();
    entry("Schraeriss")->trigger();
    EXPECT_EQ(nav->GetBase(), before);
    entry("Aufriss")->trigger();
    EXPECT_EQ(nav->GetBase(), (TBAse{before.Origin, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}}));
    entry("Grundriss")->trigger();
    EXPECT_EQ(nav->GetBase(), Unitbase);
    EXPECT_EQ(steps, 1) << "only drags and keys are told";
}

TEST_F(Navigator, ADoubleClickComesWithTheMouse) {
    form.show();
    drag({0, 0}, {13, 17});
    QTest::mouseDClick(nav, Qt::RightButton, Qt::NoModifier, {50, 30});
    EXPECT_NE(nav->GetBase().Origin, (TXYZ{0.5, 0.5, 0.5}));
    QTest::mouseDClick(nav, Qt::LeftButton, Qt::NoModifier, {50, 30});
    EXPECT_EQ(nav->GetBase(), (TBAse{{0.5, 0.5, 0.5}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST_F(Navigator, ItCanBeReachedAndRead) {
    EXPECT_EQ(nav->focusPolicy(), Qt::StrongFocus);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(nav);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name), "View navigator");
    EXPECT_TRUE(accessible->text(QAccessible::Description).contains("arrow keys"));
}

TEST_F(Navigator, ThePictureIsTheCube) {
    nav->SetBounds(0, 0, 160, 120);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    const auto expectPicture = [&](const char* state) {
        SCOPED_TRACE(state);
        QCoreApplication::processEvents();
        expectCube(nav->grab().toImage(), nav->GetBase(), {160, 120});
    };
    expectPicture("at first");
    nav->DblClick();
    expectPicture("double click");
    nav->ClickAufriss();
    expectPicture("Aufriss");
    drag({0, 0}, {13, 17});
    expectPicture("dragged");
    drag({0, 0}, {-31, 9});
    expectPicture("dragged again");
    nav->SetBounds(0, 0, 90, 130);
    QCoreApplication::processEvents();
    expectCube(nav->grab().toImage(), nav->GetBase(), {90, 130});
    nav->ClickGrundriss();
    QCoreApplication::processEvents();
    expectCube(nav->grab().toImage(), Unitbase, {90, 130});
}

TEST_F(Navigator, OnADarkPanelTheEdgesHaveTheColourOfText) {
    const QColor text(10, 200, 30);
    const auto pixels = [&](const QColor& panel, const QColor& wanted) {
        QPalette palette;
        palette.setColor(QPalette::Window, panel);
        palette.setColor(QPalette::WindowText, text);
        form.setPalette(palette);
        QCoreApplication::processEvents();
        const QImage picture = nav->grab().toImage();
        int count = 0;
        for (int y = 2; y < picture.height() - 2; ++y)
            for (int x = 2; x < picture.width() - 2; ++x)
                count += picture.pixelColor(x, y) == wanted;
        return count;
    };
    nav->SetBounds(0, 0, 160, 120);
    nav->DblClick();
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    const int edges = pixels(Qt::white, Qt::black);
    EXPECT_GT(edges, 200);
    EXPECT_EQ(pixels(Qt::white, text), 0);
    EXPECT_EQ(pixels(QColor(89, 89, 89), Qt::black), edges) << "3 to 1 is enough to be seen";
    EXPECT_EQ(pixels(QColor(88, 88, 88), Qt::black), 0);
    EXPECT_EQ(pixels(QColor(88, 88, 88), text), edges);
    EXPECT_EQ(pixels(QColor(20, 22, 25), text), edges);
}

TEST_F(Navigator, AMoveWithoutAButtonDrawsTheSameAgain) {
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    nav->DblClick();
    QCoreApplication::processEvents();
    const QImage before = nav->grab().toImage();
    nav->MouseMove({}, 20, 20);
    QCoreApplication::processEvents();
    EXPECT_TRUE(nav->grab().toImage() == before);
    nav->Paint();  // and whoever paints at any time
    QCoreApplication::processEvents();
    EXPECT_TRUE(nav->grab().toImage() == before);
}

TEST_F(Navigator, WithoutAParentEverythingIsSafe) {
    TZKOglNav alone;
    TZkOglCanvas canvas;
    const TBAse turnedBase{{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
    canvas.SetProjectionbase(turnedBase);
    EXPECT_EQ(alone.Device(), nullptr);
    alone.SetZkOglCanvas(&canvas);
    EXPECT_EQ(alone.GetZkOglCanvas(), &canvas);
    EXPECT_EQ(alone.GetBase(), Unitbase);
    alone.SetBounds(0, 0, 100, 60);
    alone.MouseDown(Qt::LeftButton, ssLeft, 1, 2);
    alone.MouseMove(ssLeft, 11, 12);
    alone.DblClick();
    alone.ClickGrundriss();
    alone.ClickAufriss();
    alone.ClickSchraegriss();
    alone.Paint();
    alone.SetName("alone");
    alone.grab();
    EXPECT_EQ(canvas.GetprojectionBAse(), turnedBase) << "nothing has been turned";
    alone.setParent(&form);
    ASSERT_NE(alone.Device(), nullptr);
    EXPECT_EQ(alone.GetBase(), turnedBase) << "the cube shows the canvas's view";
    EXPECT_EQ(alone.Device()->GetUnitsPerCm(), 25.0) << "until it is shown or gets a size";
    form.show();
    alone.show();
    EXPECT_EQ(alone.Device()->GetUnitsPerCm(), 30.0);
    alone.setParent(nullptr);
}

TEST_F(Navigator, EachParentMakesANewDeviceAndLeavesNothingBehind) {
    const QPointer<TZKCanvas3d> first = nav->Device();
    drag({0, 0}, {13, 17});
    QWidget other;
    nav->setParent(&other);
    EXPECT_FALSE(first);
    ASSERT_NE(nav->Device(), nullptr);
    EXPECT_EQ(nav->GetBase(), Unitbase);
    EXPECT_EQ(nav->Device()->GetUnitsPerCm(), 25.0);
    for (int i = 0; i < 100; ++i)
        nav->setParent(i % 2 ? &form : &other);
    EXPECT_EQ(nav->findChildren<TZKCanvas3d*>().size(), 1);
    EXPECT_EQ(nav->findChildren<DrawingLayer*>().size(), 1);
    nav->setParent(nullptr);
    EXPECT_NE(nav->Device(), nullptr) << "without a parent the last one stays";
    nav->setParent(&form);
}

TEST_F(Navigator, ACanvasGivesItsAxesAndTakesThem) {
    auto* canvas = new TZkOglCanvas(&form);
    nav->DblClick();
    canvas->SetProjectionbase({{7, 8, 9}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}});
    nav->SetZkOglCanvas(canvas);
    EXPECT_EQ(nav->GetBase(), (TBAse{{0.5, 0.5, 0.5}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}));
    EXPECT_EQ(canvas->GetprojectionBAse().Origin, (TXYZ{7, 8, 9})) << "nothing has been turned yet";
    drag({0, 0}, {13, 17});
    EXPECT_EQ(canvas->GetprojectionBAse(), TZKOglNav::UpdateBase(nav->GetBase()));
    EXPECT_EQ(canvas->GetprojectionBAse().Origin, (TXYZ{0, 0, 0}));
    QTest::keyClick(nav, Qt::Key_Left);
    EXPECT_EQ(canvas->GetprojectionBAse(), TZKOglNav::UpdateBase(nav->GetBase()));
    nav->ClickAufriss();
    EXPECT_EQ(canvas->GetprojectionBAse(), (TBAse{{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}}));
    nav->ClickGrundriss();
    EXPECT_EQ(canvas->GetprojectionBAse(), Unitbase);
    drag({0, 0}, {13, 17});
    nav->DblClick();
    EXPECT_EQ(canvas->GetprojectionBAse(), Unitbase);
    nav->SetZkOglCanvas(nullptr);
    drag({0, 0}, {13, 17});
    EXPECT_EQ(canvas->GetprojectionBAse(), Unitbase);
}

TEST_F(Navigator, WhatGoesIsForgotten) {
    auto canvas = std::make_unique<TZkOglCanvas>();
    nav->SetZkOglCanvas(canvas.get());
    canvas.reset();
    EXPECT_EQ(nav->GetZkOglCanvas(), nullptr);
    drag({0, 0}, {13, 17});
    auto* owned = new TZkOglCanvas(&form);
    nav->SetZkOglCanvas(owned);
    delete owned;
    EXPECT_EQ(nav->GetZkOglCanvas(), nullptr);
    delete nav->Device();
    EXPECT_EQ(nav->Device(), nullptr);
    EXPECT_EQ(nav->GetBase(), Unitbase);
    drag({0, 0}, {13, 17});
    nav->DblClick();
    nav->grab();
    auto* last = new TZkOglCanvas(&form);
    nav->SetZkOglCanvas(last);
    delete nav;
    delete last;
}

TEST_F(Navigator, WhatIsMadeIsNotTakenForWhatGoes) {
    TZkOglCanvas canvas;
    nav->SetZkOglCanvas(&canvas);
    nav->Notification(&canvas, TOperation::opInsert);
    EXPECT_EQ(nav->GetZkOglCanvas(), &canvas);
    TZKCanvas3d* const device = nav->Device();
    nav->Notification(device, TOperation::opInsert);
    EXPECT_EQ(nav->Device(), device);
    nav->Notification(device, TOperation::opRemove);
    EXPECT_EQ(nav->Device(), nullptr);
}

TEST_F(Navigator, AnythingMayGoInItsEvent) {
    auto* canvas = new TZkOglCanvas(&form);
    nav->SetZkOglCanvas(canvas);
    auto connection = QObject::connect(nav, &TZKOglNav::OnNav3D, [&] { delete std::exchange(canvas, nullptr); });
    drag({0, 0}, {13, 17});
    EXPECT_EQ(nav->GetZkOglCanvas(), nullptr);
    QObject::disconnect(connection);
    connection = QObject::connect(nav, &TZKOglNav::OnNav3D, [&] { delete nav->Device(); });
    drag({0, 0}, {13, 17});
    EXPECT_EQ(nav->Device(), nullptr);
    const QPointer<TZKOglNav> second = new TZKOglNav(&form);
    QObject::connect(second, &TZKOglNav::OnNav3D, [&] { delete second; });
    second->show();
    QTest::keyClick(second.data(), Qt::Key_Left);
    EXPECT_FALSE(second);
}

TEST_F(Navigator, AnErrorOfAHandlerIsTold) {
    std::vector<std::string> messages;
    const MessageHandler before = SetMessageHandler([&](const std::string& text) { messages.push_back(text); });
    QObject::connect(nav, &TZKOglNav::OnNav3D, [] { throw std::runtime_error("dizzy"); });
    drag({0, 0}, {13, 17});
    SetMessageHandler(before);
    EXPECT_EQ(messages, std::vector<std::string>{"dizzy"});
    EXPECT_EQ(steps, 1);
}

TEST_F(Navigator, NumbersStayFinite) {
    nav->SetBounds(0, 0, 0, 0);
    drag({0, 0}, {13, 17});
    EXPECT_EQ(nav->GetBase(), Unitbase);
    nav->grab();
    nav->SetBounds(0, 0, 100, 60);
    nav->MouseDown(Qt::LeftButton, ssLeft, 0, 0);
    nav->MouseMove(ssLeft, 1 << 30, 1 << 30);
    EXPECT_NEAR(dot(nav->GetBase().XAxis, nav->GetBase().XAxis), 1, 1e-6);
}

TEST_F(Navigator, Properties) {
    std::vector<std::string> names;
    const QMetaObject* meta = nav->metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        names.emplace_back(meta->property(i).name());
    EXPECT_EQ(names, (std::vector<std::string>{"Caption", "ZkOglCanvas"}));
    auto* canvas = new TZkOglCanvas(&form);
    EXPECT_TRUE(nav->setProperty("ZkOglCanvas", QVariant::fromValue(canvas)));
    EXPECT_EQ(nav->GetZkOglCanvas(), canvas);
    EXPECT_EQ(nav->property("ZkOglCanvas").value<TZkOglCanvas*>(), canvas);
}
