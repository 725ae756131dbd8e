#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/glapi.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>

#include <set>

using namespace zk;
using namespace zk::test;

namespace {

std::set<const HitTarget*> hitTargets(const TZkOglCanvas& canvas) {
    std::set<const HitTarget*> targets;
    for (const THitItem& hit : canvas.Hits())
        targets.insert(HitTarget::Of(hit.HitObject));
    return targets;
}

}  // namespace

TEST(Picking, TheBackgroundIsNobody) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    EXPECT_FALSE(form.canvas->Select(10, 10));
    EXPECT_TRUE(form.canvas->Hits().empty());
    EXPECT_TRUE(form.canvas->Select(150, 150));
    EXPECT_FALSE(form.canvas->Select(290, 290));
    EXPECT_TRUE(form.canvas->Hits().empty()) << "the last pick counts";
}

// A box from x = -1 to 1 cm, 30 pixels a centimetre, ends at pixels 120 and 180; the pick sees 0.1 cm, 3 pixels,
// further.
TEST(Picking, TheToleranceIsATenthOfACentimetre) {
    for (const double angle : {0.0, 30.0}) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -2});  // its front face is in the projection plane
        form.canvas->SetBlickWinkel(angle);
        for (int y = 110; y <= 190; y += 4) {
            const bool inside = y > 117 && y < 183;
            EXPECT_EQ(form.canvas->Select(150, y), inside) << "y " << y << ", angle " << angle;
            EXPECT_EQ(form.canvas->Select(y, 150), inside) << "x " << y << ", angle " << angle;
        }
        EXPECT_TRUE(form.canvas->SelectAt({117.2, 150}));
        EXPECT_FALSE(form.canvas->SelectAt({116.8, 150}));
        EXPECT_TRUE(form.canvas->SelectAt({182.8, 150}));
        EXPECT_FALSE(form.canvas->SelectAt({183.2, 150}));
        EXPECT_EQ(form.messages.Take(), QStringList());
    }
}

TEST(Picking, HitsComeFarthestFirstAndTheLaterOfEqualOnesFirst) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* nearBox = form.AddBox(scene, 0x0000FF, {2, 2, 1}, {-1, -1, 3});
    TZKOglBox* farBox = form.AddBox(scene, 0x00FF00, {2, 2, 1}, {-1, -1, -3});
    TZKOglBox* twin = form.AddBox(scene, 0xFF0000, {2, 2, 1}, {-1, -1, -3});
    ASSERT_TRUE(form.canvas->Select(150, 150));
    ASSERT_EQ(form.canvas->Hits().size(), 3U);
    EXPECT_EQ(HitTarget::Of(form.canvas->Hits()[0].HitObject), twin);
    EXPECT_EQ(HitTarget::Of(form.canvas->Hits()[1].HitObject), farBox);
    EXPECT_EQ(HitTarget::Of(form.canvas->Hits()[2].HitObject), nearBox);
    EXPECT_EQ(form.canvas->Hits()[0].Depth, form.canvas->Hits()[1].Depth);
    EXPECT_GT(form.canvas->Hits()[1].Depth, form.canvas->Hits()[2].Depth);
    for (const THitItem& hit : form.canvas->Hits())
        EXPECT_EQ(hit.NameCount, 2) << "the shape and its face";
    // The parallel view reaches from z = 5 to -5 eye units; the front of the near box is 4 cm before the plane.
    const double window = (5 - 4 * 0.2) / 10;
    EXPECT_NEAR(form.canvas->Hits()[2].Depth, window * 4294967295.0 / 2147483647.0 / 0.2, 1e-4);
}

TEST(Picking, ShapesWithNohitAreSeenThrough) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* behind = form.AddBox(scene, 0x0000FF, {2, 2, 1}, {-1, -1, -3});
    TZKOglBox* glass = form.AddBox(scene, 0x00FF00, {4, 4, 1}, {-2, -2, 3});
    glass->SetNohit(true);
    ASSERT_TRUE(form.canvas->Select(150, 150));
    EXPECT_EQ(hitTargets(*form.canvas), (std::set<const HitTarget*>{behind}));
    EXPECT_FALSE(form.canvas->Select(150 + 50, 150)) << "beside the box behind it";
    // and it leaves the place of those after it as when it is drawn
    glass->SetDrehgeradePkt("1/0/0");
    glass->Setdrehwinkel(90);
    TZKOglBox* after = form.AddBox(scene, 0xFF0000, {1, 1, 1}, {0, 0, 0});
    form.canvas->Refresh();
    const TXYZ left = {1.5, 0.5, 0};  // where the remainder of the undone turn puts it
    for (int x = 5; x < 300; x += 10)
        for (int y = 5; y < 300; y += 10) {
            if (form.PixelAt(QPointF(x, y)) != QColor(0, 0, 254))
                continue;
            EXPECT_TRUE(form.canvas->Select(x, y));
            EXPECT_TRUE(hitTargets(*form.canvas).count(after)) << x << " " << y << " " << left.x;
        }
}

TEST(Picking, InvisibleShapesAndScenesAreNotHit) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    box->SetVisible(false);
    EXPECT_FALSE(form.canvas->Select(150, 150));
    box->SetVisible(true);
    EXPECT_TRUE(form.canvas->Select(150, 150));
    scene->SetVisible(false);
    EXPECT_FALSE(form.canvas->Select(150, 150));
}

TEST(Picking, AShapeThatIsGoneResolvesToNobody) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    const std::int32_t name = box->HitName();
    ASSERT_TRUE(form.canvas->Select(150, 150));
    EXPECT_EQ(HitTarget::Of(name), box);
    delete box;
    EXPECT_EQ(HitTarget::Of(name), nullptr);
    EXPECT_EQ(HitTarget::Of(form.canvas->Hits().front().HitObject), nullptr);
    EXPECT_EQ(HitTarget::Of(HitTarget::NoHit), nullptr);
    EXPECT_EQ(HitTarget::Of(-1), nullptr);
    EXPECT_EQ(HitTarget::Of(0), nullptr);
}

TEST(Picking, APickLeavesOpenGlAsItWas) {
    for (const double angle : {0.0, 25.0}) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        form.canvas->SetBlickWinkel(angle);
        form.canvas->SetTranslation({0.1, 0, 0});
        const Tmatrix view = form.canvas->GetOglModelMatrix();
        const TBAse base = form.canvas->GetprojectionBAse();
        const QImage screen = form.Screen();
        form.TakeSwaps();
        for (int i = 0; i < 20; ++i)
            form.canvas->Select(140 + i, 150);
        EXPECT_EQ(form.TakeSwaps(), 0);
        EXPECT_EQ(form.Screen(), screen);
        EXPECT_EQ(form.canvas->GetOglModelMatrix(), view);
        EXPECT_EQ(form.canvas->GetprojectionBAse(), base);
        EXPECT_EQ(form.canvas->GetRenderMode(), GL_RENDER);
        for (GLenum plane = GL_CLIP_PLANE0; plane <= GL_CLIP_PLANE5; ++plane)
            EXPECT_FALSE(glIsEnabled(plane));
        GLint names = -1;
        glGetIntegerv(GL_NAME_STACK_DEPTH, &names);
        EXPECT_EQ(names, 0);
        EXPECT_TRUE(scene->IsCompiled()) << "a pick compiles nothing anew";
        EXPECT_FALSE(form.canvas->IsSelecting());
        EXPECT_FALSE(form.canvas->IsPainting());
    }
}

TEST(Picking, ThePlanesOfTheParallelView) {
    GlForm form;
    GlRecorder recorder;
    form.canvas->Select(180, 120);  // (1, 1) cm
    EXPECT_EQ(recorder.CallsTo({"glClipPlane"}),
              (Calls{"glClipPlane(GL_CLIP_PLANE0, {-1, 0, 0, 1.1})", "glClipPlane(GL_CLIP_PLANE1, {1, 0, 0, -0.9})",
                     "glClipPlane(GL_CLIP_PLANE2, {0, -1, 0, 1.1})", "glClipPlane(GL_CLIP_PLANE3, {0, 1, 0, -0.9})"}));
    EXPECT_EQ(recorder.CallsTo({"glSelectBuffer", "glInitNames", "glPushName", "glPopName"}),
              (Calls{"glSelectBuffer(1024)", "glInitNames()", "glPushName(65535)", "glPopName()"}));
}

// More hits than the buffer holds are none at all; nothing is read beyond it.
TEST(Picking, AnOverflowOfTheBufferIsNoHit) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.canvas->SetChanging(true);
    for (int i = 0; i < 300; ++i)
        form.AddBox(scene, 0x0000FF, {2, 2, 0.01}, {-1, -1, -3 + i * 0.02});
    form.canvas->SetChanging(false);
    EXPECT_FALSE(form.canvas->Select(150, 150));
    EXPECT_TRUE(form.canvas->Hits().empty());
    EXPECT_EQ(form.canvas->GetRenderMode(), GL_RENDER);
    EXPECT_FALSE(form.canvas->Select(10, 10));
}

// Primitives of several kinds without a change of state between them: played from a list in selection mode they bring
// some drivers down.
TEST(Picking, UserDrawingOfEveryKindIsPickedSafely) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* shape = new TZKOglShape(form.window.get());
    shape->SetDisplayList(scene);
    int picks = 0;
    QObject::connect(shape, &TZkShape::OnPlay, [&] {
        picks += form.canvas->IsSelecting();
        form.canvas->SetClockWise(false);
        for (const GLenum mode : {GL_POLYGON, GL_TRIANGLES, GL_POLYGON, GL_TRIANGLE_FAN, GL_QUAD_STRIP, GL_QUAD_STRIP,
                                  GL_LINES, GL_POINTS}) {
            glBegin(mode);
            glVertex3d(-1, -1, 0);
            glVertex3d(1, -1, 0);
            glVertex3d(1, 1, 0);
            if (mode != GL_TRIANGLES)
                glVertex3d(-1, 1, 0);
            glEnd();
        }
        GLUquadric* quadric = gluNewQuadric();
        gluDisk(quadric, 0, 1, 12, 3);
        gluSphere(quadric, 1, 10, 10);
        gluDeleteQuadric(quadric);
        form.canvas->SetClockWise(true);
    });
    scene->Changed(nullptr);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(form.canvas->Select(150, 150));
    EXPECT_EQ(hitTargets(*form.canvas), (std::set<const HitTarget*>{shape}));
    EXPECT_EQ(picks, 10) << "twice each time the shape is played";
}

TEST(Picking, NoPickFromWithinARepaint) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    int tried = 0;
    QObject::connect(scene, &TDisplayList::OnPlay, [&] {
        ++tried;
        EXPECT_FALSE(form.canvas->Select(150, 150));
    });
    scene->Changed(nullptr);
    EXPECT_EQ(tried, 1);
    EXPECT_EQ(form.canvas->GetRenderMode(), GL_RENDER);
    form.canvas->Select(150, 150);
    EXPECT_EQ(tried, 2);
}

// Turned, moved and nested transforms, in both projections: the shape under each pixel of the picture is the one that
// is hit there.
TEST(Picking, WhatIsSeenIsHit) {
    for (const double angle : {0.0, 20.0, 40.0}) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        std::vector<TZKOglBox*> boxes;
        for (int i = 0; i < 6; ++i) {
            auto* box = form.AddBox(scene, TColor(40 * (i + 1)) << 8, {1.5, 0.8 + i * 0.2, 1},
                                    {i * 1.2 - 3.5, i % 3 - 1.5, i - 4.0});
            box->SetDrehgeradeRichtung("1/2/3");
            box->Setdrehwinkel(20 * i);
            boxes.push_back(box);
        }
        scene->Set_translation("0.3/0.2/0");
        scene->Setdrehwinkel(15);
        form.canvas->Setdrehwinkel(-10);
        form.canvas->SetDrehgeradeRichtung("0/1/0");
        form.canvas->SetBlickWinkel(angle);
        GlForm::Settle();
        const QImage screen = form.Screen();
        int seen = 0;
        for (int y = 2; y < 300; y += 7)
            for (int x = 2; x < 300; x += 7) {
                const int green = screen.pixelColor(x, y).green();
                const bool hit = form.canvas->Select(x, y);
                if (green == 0) {
                    continue;  // the tolerance may reach a neighbour
                }
                ++seen;
                const int index = (green + 20) / 40 - 1;
                ASSERT_TRUE(index >= 0 && index < 6) << green;
                EXPECT_TRUE(hit) << x << " " << y;
                EXPECT_TRUE(hitTargets(*form.canvas).count(boxes[std::size_t(index)]))
                    << x << " " << y << " box " << index;
            }
        EXPECT_GT(seen, 60) << angle;
    }
}

// --- what follows the pointer
// -----------------------------------------------------------------------------------------

TEST(MouseMoves, ThoseThatQueueUpAreMergedIntoTheNewest) {
    GlForm form;
    TZKOglBox* box = form.AddBox(form.AddScene(), 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    int picks = 0;
    QObject::connect(box, &TZkShape::OnPlay, form.window.get(), [&] { picks += form.canvas->IsSelecting() ? 1 : 0; });
    std::vector<std::string> events;
    const auto note = [&events](const char* what, int x, int y) {
        events.push_back(std::string(what) + " " + std::to_string(x) + "/" + std::to_string(y));
    };
    QObject::connect(form.control, &TZKOglControl::OnMouseMove, form.window.get(),
                     [&](QObject*, TShiftState, int x, int y) { note("move", x, y); });
    QObject::connect(form.control, &TZKOglControl::OnMouseDown, form.window.get(),
                     [&](QObject*, Qt::MouseButton, TShiftState, int x, int y) { note("down", x, y); });
    QObject::connect(form.control, &TZKOglControl::OnMouseUp, form.window.get(),
                     [&](QObject*, Qt::MouseButton, TShiftState, int x, int y) { note("up", x, y); });
    const auto post = [&form](QEvent::Type type, int x, int y, Qt::MouseButton button, Qt::MouseButtons buttons) {
        const QPointF at = QPointF(x, y) + form.control->contentsRect().topLeft();
        QCoreApplication::postEvent(
            form.control, new QMouseEvent(type, at, form.control->mapToGlobal(at), button, buttons, Qt::NoModifier));
    };
    GlForm::Settle();
    picks = 0;
    events.clear();
    for (int i = 0; i < 100; ++i)
        post(QEvent::MouseMove, 100 + i / 2, 150, Qt::NoButton, Qt::NoButton);
    GlForm::Settle();
    EXPECT_EQ(events, (std::vector<std::string>{"move 149/150"}));
    EXPECT_EQ(picks, 1);

    // A click comes after the moves before it and before those behind it.
    events.clear();
    post(QEvent::MouseMove, 120, 150, Qt::NoButton, Qt::NoButton);
    post(QEvent::MouseMove, 130, 150, Qt::NoButton, Qt::NoButton);
    post(QEvent::MouseButtonPress, 140, 150, Qt::LeftButton, Qt::LeftButton);
    post(QEvent::MouseMove, 150, 150, Qt::NoButton, Qt::LeftButton);
    post(QEvent::MouseMove, 160, 150, Qt::NoButton, Qt::LeftButton);
    post(QEvent::MouseButtonRelease, 160, 150, Qt::LeftButton, Qt::NoButton);
    GlForm::Settle();
    EXPECT_EQ(events, (std::vector<std::string>{"move 130/150", "down 140/150", "move 160/150", "up 160/150"}));
}

TEST(MouseMoves, AControlThatGoesWhileOneWaitsIsLeftAlone) {
    for (const bool atOnce : {false, true}) {
        auto form = std::make_unique<GlForm>();
        const QPointF at(100, 100);
        if (atOnce)
            QObject::connect(form->control, &TZKOglControl::OnMouseMove, form->control,
                             [control = form->control] { delete control; });
        for (const auto& [type, button] :
             {std::pair(QEvent::MouseMove, Qt::NoButton), std::pair(QEvent::MouseButtonPress, Qt::LeftButton)}) {
            QMouseEvent event(type, at, form->control->mapToGlobal(at), button, button, Qt::NoModifier);
            if (QPointer<TZKOglControl> control = form->control)
                QCoreApplication::sendEvent(control, &event);
        }
        form->canvas = nullptr;
        form->control = nullptr;
        form.reset();
        GlForm::Settle();
    }
}

TEST(MouseMoves, AReleaseBringsTheOneThatWaitsWhichMayDeleteTheControl) {
    for (const bool deletes : {false, true}) {
        GlForm form;
        QStringList told;
        QObject::connect(form.control, &TZKOglControl::OnMouseMove, [&](QObject*, TShiftState, int x, int y) {
            told += QString("move %1/%2").arg(x).arg(y);
            if (deletes) {
                delete std::exchange(form.control, nullptr);
            }
        });
        QObject::connect(
            form.control, &TZKOglControl::OnMouseUp,
            [&](QObject*, Qt::MouseButton, TShiftState, int x, int y) { told += QString("up %1/%2").arg(x).arg(y); });
        TZKOglControl* const control = form.control;
        const QPoint frame = control->contentsRect().topLeft();
        for (const auto& [type, at] :
             {std::pair(QEvent::MouseMove, QPointF(10, 20)), std::pair(QEvent::MouseButtonRelease, QPointF(30, 40))}) {
            const QPointF place = at + frame;
            QMouseEvent event(type, place, control->mapToGlobal(place),
                              type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(control, &event);
        }
        EXPECT_EQ(told, deletes ? QStringList{"move 10/20"} : (QStringList{"move 10/20", "up 30/40"}));
    }
}

// --- a bull's eye
// -------------------------------------------------------------------------------------------------------

TEST(Bulleye, ShowsOnlyWhatLiesAroundAPixel) {
    for (const double angle : {0.0, 25.0}) {
        GlForm form;
        form.canvas->SetBlickWinkel(angle);
        TZKOglScene* scene = form.AddScene();
        form.AddBox(scene, 0x0000FF, {8, 8, 0.5}, {-4, -4, -0.25});
        form.canvas->Refresh();
        const QColor red = form.PixelAt({150, 150});
        EXPECT_GT(red.red(), 200);
        const std::vector<THitItem> before = form.canvas->Hits();
        form.TakeSwaps();
        form.canvas->Bulleye(180, 120, 1);  // a centimetre, 30 pixels, to each side
        EXPECT_EQ(form.TakeSwaps(), 2);
        for (int repaint = 0; repaint < 2; ++repaint) {
            EXPECT_EQ(form.PixelAt({180, 120}), red) << angle;
            EXPECT_EQ(form.PixelAt({155, 145}), red) << angle;
            EXPECT_EQ(form.PixelAt({205, 95}), red) << angle;
            EXPECT_EQ(form.PixelAt({145, 120}), QColor(0, 0, 0)) << angle;
            EXPECT_EQ(form.PixelAt({215, 120}), QColor(0, 0, 0)) << angle;
            EXPECT_EQ(form.PixelAt({180, 85}), QColor(0, 0, 0)) << angle;
            EXPECT_EQ(form.PixelAt({180, 155}), QColor(0, 0, 0)) << angle;
            form.canvas->Refresh();
        }
        EXPECT_EQ(form.canvas->Hits().size(), before.size()) << "it is a view, not a pick";
        EXPECT_TRUE(form.canvas->Select(100, 200)) << "outside of the eye";
        EXPECT_EQ(form.PixelAt({145, 120}), QColor(0, 0, 0)) << "what is seen changes with the next repaint";
        form.canvas->Refresh();
        EXPECT_EQ(form.PixelAt({145, 120}), red) << "the whole view is back";
        EXPECT_EQ(PendingError(*form.canvas), 0U);
    }
    TZkOglCanvas unbound;
    unbound.Bulleye(1, 2, 3);
}
