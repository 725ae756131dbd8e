// Shapes by the keyboard, and what assistive technology is told of them.
#include "glform.h"
#include "glstate.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/glsurface.h>
#include <zk/host/workarounds.h>

#include <QAccessible>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace zk;
using namespace zk::test;

namespace {

// Three boxes of 2 cm beside each other, 30 pixels a centimetre: their middles lie at 60, 150 and 240 of 300 pixels.
class Keyboard : public testing::Test {
  protected:
    Keyboard() {
        form.canvas->SetChanging(true);
        scene = form.AddScene();
        left = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-4, -1, -1});
        middle = form.AddBox(scene, 0x00FF00, {2, 2, 2}, {-1, -1, -1});
        right = form.AddBox(scene, 0xFF0000, {2, 2, 2}, {2, -1, -1});
        left->setObjectName("left");
        middle->setObjectName("middle");
        right->setObjectName("right");
        form.canvas->SetChanging(false);
        for (TZKOglBox* box : {left, middle, right}) {
            QObject::connect(box, &TCustomShape::OnMouseDown, box,
                             [this](QObject* sender, Qt::MouseButton button, TShiftState shift, int x, int y) {
                                 log("down", sender, button, shift, x, y);
                             });
            QObject::connect(box, &TCustomShape::OnMouseUp, box,
                             [this](QObject* sender, Qt::MouseButton button, TShiftState shift, int x, int y) {
                                 log("up", sender, button, shift, x, y);
                             });
        }
        GlForm::Settle();
    }

    void log(const char* what, QObject* sender, Qt::MouseButton button, TShiftState shift, int x, int y) {
        told +=
            QString("%1 %2 %3 %4 %5/%6").arg(what, sender->objectName()).arg(int(button)).arg(int(shift)).arg(x).arg(y);
    }

    void focus(Qt::FocusReason reason = Qt::TabFocusReason) {
        form.window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.window.get()));
        form.control->clearFocus();
        form.control->setFocus(reason);
        ASSERT_TRUE(form.control->hasFocus());
        GlForm::Settle();
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(form.window->windowHandle(), key, modifiers);
        GlForm::Settle();
    }

    QString current() const {
        auto* shape = dynamic_cast<QObject*>(form.control->CurrentShape());
        return shape ? shape->objectName() : "none";
    }

    // The frame is three pixels wide, its black line two pixels outside of the place of a box.
    bool framed(int x) {
        return form.PixelAt({double(x) - 30 - 2, 150}) == QColor(Qt::black) &&
               form.PixelAt({double(x) - 30 - 3, 150}) == QColor(Qt::white);
    }

    GlForm form;
    TZKOglScene* scene = nullptr;
    TZKOglBox* left = nullptr;
    TZKOglBox* middle = nullptr;
    TZKOglBox* right = nullptr;
    QStringList told;
};

}  // namespace

TEST_F(Keyboard, PlacesAreWhereShapesAreSeenInTheOrderOfDrawing) {
    std::vector<THitPlace> places = form.canvas->Places();
    ASSERT_EQ(places.size(), 3U);
    EXPECT_EQ(places[0].HitObject, left->HitName());
    EXPECT_EQ(places[1].HitObject, middle->HitName());
    EXPECT_EQ(places[2].HitObject, right->HitName());
    const auto near = [](const QRectF& a, const QRectF& b) {
        return qAbs(a.left() - b.left()) < 0.1 && qAbs(a.top() - b.top()) < 0.1 && qAbs(a.right() - b.right()) < 0.1 &&
               qAbs(a.bottom() - b.bottom()) < 0.1;
    };
    EXPECT_TRUE(near(places[0].Place, QRectF(30, 120, 60, 60)));
    EXPECT_TRUE(near(places[2].Place, QRectF(210, 120, 60, 60)));

    left->SetVisible(false);
    middle->SetNohit(true);
    right->Settranslation({4, -1, -1});
    places = form.canvas->Places();
    ASSERT_EQ(places.size(), 1U);
    EXPECT_TRUE(near(places[0].Place, QRectF(270, 120, 30, 60))) << "cut off at the client area's edge";
    right->Settranslation({20, 0, 0});
    EXPECT_TRUE(form.canvas->Places().empty());
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

TEST_F(Keyboard, PlacesChangeNothing) {
    ASSERT_TRUE(form.canvas->Select(60, 150));
    const auto hits = form.canvas->Hits().size();
    form.TakeSwaps();
    form.canvas->CheckCurrent();
    const GlState before = CurrentGlState();
    EXPECT_EQ(form.canvas->Places().size(), 3U);
    EXPECT_EQ(Difference(before, CurrentGlState()), "");
    EXPECT_EQ(form.canvas->Hits().size(), hits);
    EXPECT_EQ(form.TakeSwaps(), 0);
    EXPECT_FALSE(form.canvas->IsSelecting());
    form.canvas->SetChanging(true);
    EXPECT_TRUE(form.canvas->Places().empty());
    form.canvas->SetChanging(false);
}

TEST_F(Keyboard, PlacesComeWithListsInPicksToo) {
    SetOn(Workaround::SelectionLists, false);
    EXPECT_EQ(form.canvas->Places().size(), 3U);
    SetOn(Workaround::SelectionLists, true);
}

TEST_F(Keyboard, PlacesOfMoreThanTheFirstBufferHolds) {
    form.canvas->SetChanging(true);
    for (int i = 0; i < 60; ++i) {
        auto* sphere = new TZKOglSphere(form.window.get());
        sphere->SetResolution(30);
        sphere->SetDisplayList(scene);
        sphere->SetVisible(true);
    }
    form.canvas->SetChanging(false);
    EXPECT_EQ(form.canvas->Places().size(), 63U);
}

// Faces as lines and points, and what user code draws of either kind.
TEST_F(Keyboard, PlacesOfLinesAndPoints) {
    const auto near = [](const QRectF& a, const QRectF& b) {
        return qAbs(a.left() - b.left()) < 0.1 && qAbs(a.top() - b.top()) < 0.1 && qAbs(a.right() - b.right()) < 0.1 &&
               qAbs(a.bottom() - b.bottom()) < 0.1;
    };
    left->getAttributes()->getPolyStyle()->SetMode(glline);
    right->getAttributes()->getPolyStyle()->SetMode(glpoint);
    auto* drawn = new TZKOglShape(form.window.get());
    GLenum what = GL_LINES;
    QObject::connect(drawn, &TZkShape::OnPlay, [&] {
        if (what == GL_BITMAP) {
            const GLubyte bits[] = {0x80};
            glRasterPos2d(-1, 2.5);
            glBitmap(1, 1, 0, 0, 0, 0, bits);
            const GLubyte pixel[] = {255, 0, 0, 255};
            glRasterPos2d(1, 3.5);
            glDrawPixels(1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
            return;
        }
        glBegin(what);
        glVertex2d(-1, 2.5);
        glVertex2d(1, 3.5);
        glEnd();
    });
    drawn->SetDisplayList(scene);
    for (const GLenum kind : {GL_LINES, GL_LINE_STRIP, GL_LINE_LOOP, GL_POINTS, GL_BITMAP}) {
        what = kind;
        const std::vector<THitPlace> places = form.canvas->Places();
        ASSERT_EQ(places.size(), 4U) << kind;
        EXPECT_TRUE(near(places[0].Place, QRectF(30, 120, 60, 60))) << kind;
        EXPECT_TRUE(near(places[2].Place, QRectF(210, 120, 60, 60))) << kind;
        EXPECT_EQ(places[3].HitObject, drawn->HitName());
        EXPECT_TRUE(near(places[3].Place, QRectF(120, 45, 60, 30))) << kind;
    }
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

TEST_F(Keyboard, HandlersMayDoAnythingWhilePlacesAreLookedFor) {
    auto* drawn = new TZKOglShape(form.window.get());
    std::function<void()> act;
    QObject::connect(drawn, &TZkShape::OnPlay, form.window.get(), [&] {
        if (form.canvas && form.canvas->IsSelecting() && act)
            std::exchange(act, {})();
    });
    drawn->SetDisplayList(scene);
    act = [&] { EXPECT_TRUE(form.canvas->Places().empty()) << "not from within"; };
    EXPECT_EQ(form.canvas->Places().size(), 3U);
    act = [&] { form.canvas->SetWinControl(nullptr); };
    EXPECT_TRUE(form.canvas->Places().empty());
    EXPECT_TRUE(form.canvas->Places().empty()) << "without a control there are none";
    form.canvas->SetWinControl(form.control);
    EXPECT_EQ(form.canvas->Places().size(), 3U);
    act = [&] { delete std::exchange(form.canvas, nullptr); };
    EXPECT_TRUE(form.canvas->Places().empty());
}

TEST_F(Keyboard, TabComesInAndLeavesAgain) {
    auto* before = new QLineEdit(form.window.get());
    before->show();
    QWidget::setTabOrder(before, form.control);
    form.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.window.get()));
    before->setFocus();
    key(Qt::Key_Tab);
    EXPECT_TRUE(form.control->hasFocus());
    EXPECT_EQ(current(), "left");
    EXPECT_TRUE(framed(60));
    key(Qt::Key_Tab);
    EXPECT_FALSE(form.control->hasFocus());
    EXPECT_FALSE(framed(60)) << "the frame goes with the focus";
    EXPECT_EQ(current(), "left") << "and comes back to where it was";
}

TEST_F(Keyboard, ArrowsGoThroughTheShapesInTheirOrder) {
    QStringList changes;
    QObject::connect(form.control, &TZKOglControl::OnCurrentShape, [&](QObject* sender, QObject* shape) {
        EXPECT_EQ(sender, form.control);
        changes += shape->objectName();
    });
    focus();
    EXPECT_EQ(current(), "left");
    key(Qt::Key_Right);
    EXPECT_EQ(current(), "middle");
    EXPECT_TRUE(framed(150));
    EXPECT_FALSE(framed(60));
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(current(), "right") << "it ends there";
    key(Qt::Key_Up);
    EXPECT_EQ(current(), "middle");
    key(Qt::Key_Home);
    EXPECT_EQ(current(), "left");
    key(Qt::Key_Left);
    EXPECT_EQ(current(), "left");
    key(Qt::Key_End);
    EXPECT_EQ(current(), "right");
    EXPECT_EQ(changes, (QStringList{"left", "middle", "right", "middle", "left", "right"}));
    EXPECT_TRUE(told.isEmpty());
}

// The step looks for the places, and the frame is shown at one of them.
TEST_F(Keyboard, AStepPlaysTheScenesOnce) {
    focus();
    int plays = 0;
    QObject::connect(scene, &TDisplayList::OnPlay, scene, [&] { ++plays; });
    form.canvas->Places();
    const int once = std::exchange(plays, 0);
    ASSERT_GT(once, 0);
    key(Qt::Key_Right);
    EXPECT_EQ(current(), "middle");
    EXPECT_TRUE(framed(150));
    EXPECT_EQ(plays, once);
}

TEST_F(Keyboard, ArrowsFollowTheDirectionOfReading) {
    form.control->setLayoutDirection(Qt::RightToLeft);
    focus();
    key(Qt::Key_Left);
    EXPECT_EQ(current(), "middle");
    key(Qt::Key_Right);
    EXPECT_EQ(current(), "left");
    key(Qt::Key_Down);
    EXPECT_EQ(current(), "middle") << "down is forward everywhere";
}

TEST_F(Keyboard, SpaceAndEnterAreALeftClick) {
    focus();
    QStringList ofControl;
    QObject::connect(form.control, &TZKOglControl::OnMouseDown,
                     [&](QObject*, Qt::MouseButton, TShiftState, int x, int y) {
                         ofControl += QString("down %1/%2").arg(x).arg(y);
                     });
    QObject::connect(
        form.control, &TZKOglControl::OnMouseUp,
        [&](QObject*, Qt::MouseButton, TShiftState, int x, int y) { ofControl += QString("up %1/%2").arg(x).arg(y); });
    key(Qt::Key_Space);
    EXPECT_EQ(told, (QStringList{"down left 1 8 60/150", "up left 1 0 60/150"}));
    EXPECT_EQ(ofControl, (QStringList{"down 60/150", "up 60/150"}));
    ASSERT_EQ(form.canvas->Hits().size(), 1U);
    EXPECT_EQ(form.canvas->Hits().front().HitObject, left->HitName());
    told.clear();
    key(Qt::Key_Right);
    key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(told, (QStringList{"down middle 1 12 150/150", "up middle 1 4 150/150"}));
    EXPECT_TRUE(framed(150)) << "the keyboard's frame stays";
}

TEST_F(Keyboard, MenuAndShiftF10AreARightClick) {
    focus();
    key(Qt::Key_Menu);
    key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(told, (QStringList{"down left 2 16 60/150", "up left 2 0 60/150", "down left 2 16 60/150",
                                 "up left 2 0 60/150"}));
}

TEST_F(Keyboard, AShapeBehindAnotherCanBePressed) {
    form.AddBox(scene, 0xFFFFFF, {8, 8, 1}, {-4, -4, 2});  // before all three
    GlForm::Settle();
    focus();
    key(Qt::Key_Space);
    EXPECT_EQ(told, (QStringList{"down left 1 8 60/150", "up left 1 0 60/150"}));
}

TEST_F(Keyboard, TheMouseMakesItsShapeTheCurrentOneWithoutAFrame) {
    focus();
    ASSERT_TRUE(framed(60));
    form.Click({240, 150});
    EXPECT_TRUE(form.control->hasFocus());
    EXPECT_EQ(current(), "right");
    EXPECT_FALSE(framed(60));
    EXPECT_FALSE(framed(240));
    form.Click({150, 20});
    EXPECT_EQ(current(), "right") << "a click beside leaves it";
    key(Qt::Key_Left);
    EXPECT_EQ(current(), "middle");
    EXPECT_TRUE(framed(150));
}

TEST_F(Keyboard, TheFrameFollowsItsShapeAndGoesWithIt) {
    focus();
    ASSERT_TRUE(framed(60));
    left->Settranslation({-4, 2, -1});
    EXPECT_FALSE(framed(60));
    EXPECT_EQ(form.PixelAt({60 - 30 - 2, 60}), QColor(Qt::black));
    EXPECT_EQ(form.PixelAt({60 - 30 - 3, 60}), QColor(Qt::white));
    delete left;
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({60 - 30 - 3, 60}), QColor(Qt::black)) << "the background";
    form.canvas->Refresh();
    EXPECT_EQ(form.canvas->GetFocusFrame(), HitTarget::NoHit) << "later pictures do not look for it";
    EXPECT_EQ(current(), "none");
    key(Qt::Key_Space);
    EXPECT_TRUE(told.isEmpty());
    key(Qt::Key_Right);
    EXPECT_EQ(current(), "middle") << "the first one now";
}

TEST_F(Keyboard, EveryKeyThatBringsTheFocusShowsTheFrame) {
    for (const Qt::FocusReason reason : {Qt::BacktabFocusReason, Qt::ShortcutFocusReason}) {
        focus(reason);
        EXPECT_TRUE(framed(60)) << int(reason);
        form.control->clearFocus();
        EXPECT_FALSE(framed(60)) << int(reason);
    }
}

TEST_F(Keyboard, ProgramsMayTakeTheCurrentShapeAway) {
    focus();
    QList<QObject*> changes;
    QObject::connect(form.control, &TZKOglControl::OnCurrentShape, [&](QObject*, QObject* shape) { changes += shape; });
    form.control->SetCurrentShape(nullptr);
    EXPECT_EQ(current(), "none");
    EXPECT_FALSE(framed(60));
    key(Qt::Key_Space);
    key(Qt::Key_Menu);
    key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(told, QStringList()) << "there is nothing to press";
    key(Qt::Key_Left);
    EXPECT_EQ(current(), "right") << "backwards from nowhere is the last one";
    EXPECT_EQ(changes, (QList<QObject*>{nullptr, right}));
}

TEST_F(Keyboard, AKeyThatIsHeldPressesOnce) {
    focus();
    for (const Qt::Key held : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Menu, Qt::Key_F10}) {
        const Qt::KeyboardModifiers modifiers = held == Qt::Key_F10 ? Qt::ShiftModifier : Qt::NoModifier;
        QKeyEvent first(QEvent::KeyPress, held, modifiers);
        QCoreApplication::sendEvent(form.control, &first);
        EXPECT_EQ(told.size(), 2) << held;
        QKeyEvent again(QEvent::KeyPress, held, modifiers, QString(), true);
        QCoreApplication::sendEvent(form.control, &again);
        EXPECT_TRUE(again.isAccepted()) << held;
        EXPECT_EQ(told.size(), 2) << held;
        told.clear();
    }
}

TEST_F(Keyboard, AShapeOfWhichNextToNothingIsSeenHasNoFrame) {
    left->Settranslation({-7 + 1 / 30.0, -1, -1});  // one pixel at the left edge
    form.canvas->SetFocusFrame(HitTarget::NoHit);
    const QImage before = form.Screen();
    form.canvas->SetFocusFrame(left->HitName());
    EXPECT_EQ(form.canvas->GetFocusFrame(), left->HitName());
    EXPECT_TRUE(form.Screen() == before);
    left->Settranslation({-4, -1, -1});
    EXPECT_TRUE(framed(60));
}

TEST_F(Keyboard, AFrameThatIsSetWithoutAContextIsShownWithTheFirstPicture) {
    form.canvas->SetWinControl(nullptr);
    form.canvas->SetFocusFrame(middle->HitName());
    EXPECT_EQ(form.canvas->GetFocusFrame(), middle->HitName());
    form.canvas->SetWinControl(form.control);
    GlForm::Settle();
    EXPECT_TRUE(framed(150));
}

TEST_F(Keyboard, WithNothingToSeeTheFocusIsOnNoShape) {
    for (TZKOglBox* box : {left, middle, right})
        box->SetVisible(false);
    focus();
    EXPECT_EQ(current(), "none");
    EXPECT_FALSE(form.control->ClickShape(left)) << "it cannot be seen";
    EXPECT_FALSE(form.control->ClickShape(nullptr));
    left->SetVisible(true);
    EXPECT_TRUE(form.control->ClickShape(left));
    EXPECT_EQ(told, (QStringList{"down left 1 8 60/150", "up left 1 0 60/150"}));
    form.canvas->SetSelectEnabled(false);
    EXPECT_FALSE(form.control->ClickShape(left));
}

TEST_F(Keyboard, OtherKeysGoToTheParent) {
    struct Parent : QObject {
        QList<int> keys;
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::KeyPress)
                keys += static_cast<QKeyEvent*>(event)->key();
            return false;
        }
    } parent;
    // The window sees a key only when the control did not take it.
    form.window->installEventFilter(&parent);
    const auto reaches = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        parent.keys.clear();
        QTest::keyClick(form.control, key, modifiers);
        return parent.keys.contains(int(key));
    };
    focus();
    EXPECT_TRUE(reaches(Qt::Key_A));
    EXPECT_TRUE(reaches(Qt::Key_Escape));
    EXPECT_TRUE(reaches(Qt::Key_Left, Qt::AltModifier));
    EXPECT_FALSE(reaches(Qt::Key_Left));
    EXPECT_FALSE(reaches(Qt::Key_Space));
    form.canvas->SetSelectEnabled(false);
    EXPECT_TRUE(reaches(Qt::Key_Left));
    EXPECT_TRUE(reaches(Qt::Key_Space));
    form.canvas->SetSelectEnabled(true);
    for (TZKOglBox* box : {left, middle, right})
        box->SetNohit(true);
    EXPECT_TRUE(reaches(Qt::Key_Right)) << "no shape to go to";
    form.canvas->SetWinControl(nullptr);
    EXPECT_TRUE(reaches(Qt::Key_Right));
}

TEST_F(Keyboard, HandlersMayDeleteEverything) {
    focus();
    QObject::connect(left, &TCustomShape::OnMouseDown, left, [this] { delete left; });
    key(Qt::Key_Space);
    EXPECT_EQ(told.size(), 1) << "no release: there is nothing to tell it to";

    key(Qt::Key_Home);
    QObject::connect(middle, &TCustomShape::OnMouseDown, middle,
                     [this] { delete std::exchange(form.canvas, nullptr); });
    key(Qt::Key_Space);
    key(Qt::Key_Right);
}

TEST_F(Keyboard, AHandlerMayDeleteTheControl) {
    focus();
    const QPointer<TZKOglControl> control = form.control;
    QObject::connect(left, &TCustomShape::OnMouseDown, left, [this] { delete std::exchange(form.control, nullptr); });
    QTest::keyClick(form.window->windowHandle(), Qt::Key_Space);
    EXPECT_FALSE(control);
    EXPECT_FALSE(form.canvas->HasContext());
}

TEST_F(Keyboard, WhatAHandlerThrowsIsTold) {
    focus();
    QObject::connect(left, &TCustomShape::OnMouseDown, left, [] { throw std::runtime_error("not today"); });
    key(Qt::Key_Space);
    EXPECT_EQ(form.messages.Take(), QStringList{"not today"});
    EXPECT_EQ(told.size(), 2) << "the release came all the same";
}

TEST_F(Keyboard, AssistiveTechnologyFindsTheShapes) {
    form.control->setObjectName("view");
    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(form.control);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->role(), QAccessible::Canvas);
    EXPECT_EQ(view->text(QAccessible::Name), "view");
    ASSERT_EQ(view->childCount(), 3);
    QAccessibleInterface* shape = view->child(1);
    ASSERT_TRUE(shape && shape->isValid());
    EXPECT_EQ(shape->object(), middle);
    EXPECT_EQ(shape->parent(), view);
    EXPECT_EQ(view->indexOfChild(shape), 1);
    EXPECT_EQ(shape->text(QAccessible::Name), "middle");
    EXPECT_EQ(shape->text(QAccessible::Description), "TZKOglBox");
    EXPECT_EQ(shape->role(), QAccessible::Graphic);
    const QPoint corner = form.control->mapToGlobal(form.control->contentsRect().topLeft());
    EXPECT_EQ(shape->rect(), QRect(corner + QPoint(120, 120), QSize(60, 60)));
    EXPECT_EQ(view->childAt(corner.x() + 150, corner.y() + 150), shape);
    EXPECT_EQ(view->childAt(corner.x() + 150, corner.y() + 20), nullptr);
    EXPECT_EQ(view->child(3), nullptr);

    QAccessibleActionInterface* actions = shape->actionInterface();
    ASSERT_TRUE(actions);
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(told, (QStringList{"down middle 1 8 150/150", "up middle 1 0 150/150"}));

    focus();
    EXPECT_FALSE(shape->state().focused);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(current(), "middle");
    EXPECT_TRUE(shape->state().focused);
    EXPECT_TRUE(shape->state().focusable);
    EXPECT_EQ(view->focusChild(), shape);

    middle->Settranslation({-1, 2, -1});
    EXPECT_EQ(shape->rect(), QRect(corner + QPoint(120, 30), QSize(60, 60)));
    middle->SetVisible(false);
    EXPECT_TRUE(shape->state().invisible);
    EXPECT_EQ(view->childCount(), 2);
    const QAccessible::Id id = QAccessible::uniqueId(shape);
    delete middle;
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    EXPECT_EQ(view->childCount(), 2);
    form.canvas->SetWinControl(nullptr);
    EXPECT_EQ(view->childCount(), 0);
}

TEST_F(Keyboard, AssistiveTechnologyMayAskForAnything) {
    QAccessibleInterface* view = QAccessible::queryAccessibleInterface(form.control);
    QAccessibleInterface* shape = view->child(0);
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->childCount(), 0);
    EXPECT_EQ(shape->child(0), nullptr);
    EXPECT_EQ(shape->indexOfChild(view), -1);
    EXPECT_EQ(shape->text(QAccessible::Help), QString());
    EXPECT_EQ(shape->actionInterface()->actionNames(),
              (QStringList{QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction()}));
    EXPECT_EQ(shape->actionInterface()->keyBindingsForAction(QAccessibleActionInterface::pressAction()), QStringList());
    EXPECT_EQ(shape->valueInterface(), nullptr);
    EXPECT_EQ(view->child(-1), nullptr);
    EXPECT_EQ(view->indexOfChild(view), -1) << "no child";
    EXPECT_EQ(view->indexOfChild(nullptr), -1);

    form.control->clearFocus();
    EXPECT_EQ(view->focusChild(), nullptr);
    focus(Qt::MouseFocusReason);
    EXPECT_EQ(view->focusChild(), view) << "no shape is the current one";

    EXPECT_EQ(view->text(QAccessible::Description), QString()) << "there is a picture";
    form.control->setAccessibleName("scene");
    form.control->setAccessibleDescription("three boxes");
    EXPECT_EQ(view->text(QAccessible::Name), "scene");
    EXPECT_EQ(view->text(QAccessible::Description), "three boxes");

    form.control->setEnabled(false);
    EXPECT_TRUE(shape->state().disabled);
    shape->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(told, QStringList()) << "a control that is off";
    form.control->setEnabled(true);
    shape->actionInterface()->doAction("dance");
    EXPECT_EQ(told, QStringList());

    // A shape in no scene stands nowhere.
    left->SetDisplayList(nullptr);
    EXPECT_TRUE(shape->state().invalid);
    EXPECT_EQ(shape->parent(), nullptr);
    EXPECT_EQ(shape->rect(), QRect());
    shape->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(view->indexOfChild(shape), -1);
}
