#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkdevice/canvas2d.h>
#include <zk/_zkdevice/canvas3d.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/picturekeeper.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/controlcanvas.h>

#include <gtest/gtest.h>

#include <memory>

using namespace zk;
using namespace zk::test;

namespace {

const QColor ink(0, 0, 255);
const QColor plainWhite(255, 255, 255);

void fill(TZkCanvas* canvas, const QRect& rect, const QColor& color = ink) {
    canvas->SetBrush(QBrush(color));
    canvas->FillRect(rect);
}

int countOf(const QImage& image, const QColor& color) {
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            pixels += image.pixelColor(x, y) == color;
    return pixels;
}

/// A red box of 60 pixels in the middle of the picture.
void addBox(GlForm& form) {
    form.AddBox(form.AddScene(), 0x0000FF, {2, 2, 2}, {-1, -1, -1});
}

}  // namespace

TEST(Overlay, TheCanvasIsMadeOnceAndOnlyForAControl) {
    GlForm form;
    TZkCanvas* canvas = form.canvas->GetZKCanvas();
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(form.canvas->GetZKCanvas(), canvas);
    EXPECT_EQ(canvas->Owner(), form.canvas);
    EXPECT_EQ(form.canvas->GetPrimdevice(), canvas);
    EXPECT_EQ(qobject_cast<ControlCanvas*>(canvas->GetCanvas())->GetControl(), form.control);
    EXPECT_EQ(canvas->GetClipRect(), QRect(0, 0, 300, 300));
    const TZkOglCanvas without;
    EXPECT_EQ(const_cast<TZkOglCanvas&>(without).GetZKCanvas(), nullptr);
    EXPECT_EQ(without.GetPrimdevice(), nullptr);
    form.canvas->SetWinControl(nullptr);
    EXPECT_EQ(form.canvas->GetZKCanvas(), nullptr);
    fill(canvas, QRect(0, 0, 300, 300));
    form.canvas->SetWinControl(form.control);
    EXPECT_EQ(form.canvas->GetZKCanvas(), canvas);
    GlForm::Settle();
    fill(canvas, QRect(0, 0, 10, 10));
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({5, 5}), ink);
    delete canvas->GetCanvas();
    delete canvas;
    EXPECT_NE(form.canvas->GetZKCanvas(), nullptr) << "whoever deletes it gets another";
    EXPECT_EQ(form.canvas->GetPrimdevice(), form.canvas->GetZKCanvas());
}

TEST(Overlay, WhatIsDrawnAppearsAboveThePictureAndStaysUntilTheNextRepaint) {
    for (const auto way : {PictureKeeper::Way::FramebufferObject, PictureKeeper::Way::Pixels}) {
        GlForm form;
        form.canvas->Context()->SetKeeping(way);
        addBox(form);
        form.canvas->Refresh();
        TZkCanvas* canvas = form.canvas->GetZKCanvas();
        fill(canvas, QRect(150, 150, 100, 20));
        const QImage before = form.Screen();
        EXPECT_EQ(countOf(before, ink), 0) << "not within the call";
        GlForm::Settle();
        QImage screen = form.Screen();
        EXPECT_EQ(countOf(screen, ink), 100 * 20);
        for (const QPoint& corner : {QPoint(150, 150), QPoint(249, 150), QPoint(150, 169), QPoint(249, 169)})
            EXPECT_EQ(screen.pixelColor(corner), ink) << corner.x() << ", " << corner.y();
        EXPECT_EQ(screen.pixelColor(149, 150), red);
        EXPECT_EQ(screen.pixelColor(150, 170), red);
        EXPECT_EQ(screen.pixelColor(250, 150), black);
        fill(canvas, QRect(0, 0, 7, 9), Qt::green);
        GlForm::Settle();
        screen = form.Screen();
        EXPECT_EQ(countOf(screen, Qt::green), 7 * 9);
        EXPECT_EQ(countOf(screen, ink), 100 * 20) << "what was drawn before is still there";
        form.canvas->Refresh();
        EXPECT_EQ(countOf(form.Screen(), ink), 0);
        GlForm::Settle();
        EXPECT_TRUE(form.Screen() == before);
    }
}

TEST(Overlay, ShowingIsOneSwapAndDrawsNoScene) {
    GlForm form;
    addBox(form);
    form.canvas->Refresh();
    form.TakeSwaps();
    {
        GlRecorder recorder;
        for (int i = 0; i < 20; ++i)
            fill(form.canvas->GetZKCanvas(), QRect(10 * i, 0, 5, 5));
        EXPECT_EQ(form.TakeSwaps(), 0);
        GlForm::Settle();
        EXPECT_EQ(form.TakeSwaps(), 1);
        EXPECT_EQ(recorder.Count("glDrawPixels"), 1);
        EXPECT_EQ(recorder.Count("glCallList"), 0);
        EXPECT_EQ(recorder.Count("glClear"), 0);
        recorder.Clear();
        form.canvas->Refresh();
        GlForm::Settle();
        EXPECT_EQ(recorder.Count("glDrawPixels"), 0) << "nothing is left to show";
    }
    EXPECT_EQ(form.TakeSwaps(), 2);
    qobject_cast<ControlCanvas*>(form.canvas->GetZKCanvas()->GetCanvas())->Flush();
    EXPECT_EQ(form.TakeSwaps(), 0);
    fill(form.canvas->GetZKCanvas(), QRect(0, 0, 5, 5));
    qobject_cast<ControlCanvas*>(form.canvas->GetZKCanvas()->GetCanvas())->Flush();
    EXPECT_EQ(form.TakeSwaps(), 1);
    EXPECT_EQ(form.PixelAt({2, 2}), ink);
}

TEST(Overlay, WhatIsDrawnDuringARepaintIsShownWithIt) {
    GlForm form;
    addBox(form);
    form.canvas->Refresh();
    fill(form.canvas->GetZKCanvas(), QRect(0, 0, 30, 30), Qt::green);
    form.TakeSwaps();
    form.canvas->BeginPaint();
    fill(form.canvas->GetZKCanvas(), QRect(150, 150, 10, 10));
    form.canvas->EndPaint();
    EXPECT_EQ(form.TakeSwaps(), 2);
    EXPECT_EQ(form.PixelAt({155, 155}), ink);
    EXPECT_EQ(form.PixelAt({15, 15}), black) << "it was drawn over the picture before";
    GlForm::Settle();
    EXPECT_EQ(form.TakeSwaps(), 0) << "and needs no further swap";
}

TEST(Overlay, HandlersDrawWhileScenesArePlayed) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* shape = new TZKOglShape(form.window.get());
    shape->SetDisplayList(scene);
    form.canvas->SetAutoCompile(false);
    int place = 0;
    QObject::connect(shape, &TZkShape::OnPlay, [&] { fill(form.canvas->GetZKCanvas(), QRect(10 * place, 0, 10, 10)); });
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt({5, 5}), ink);
    place = 1;
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt({5, 5}), black);
    EXPECT_EQ(form.PixelAt({15, 5}), ink);
    place = 2;
    form.canvas->Select(150, 150);
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({25, 5}), black) << "a pick changes nothing on the screen";
    EXPECT_EQ(form.PixelAt({15, 5}), ink);
    fill(form.canvas->GetZKCanvas(), QRect(100, 100, 4, 4));
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({102, 102}), ink) << "drawing works again afterwards";
    form.control->resize(260, 200);  // a repaint that plays the scenes twice
    GlForm::Settle();
    EXPECT_EQ(countOf(form.Screen(), ink), 100);
}

TEST(Overlay, TheStateOfOpenGLStaysAsItWas) {
    GlForm form;
    addBox(form);
    form.canvas->Refresh();
    form.canvas->CheckCurrent();
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glEnable(GL_CLIP_PLANE2);
    glColorMask(GL_TRUE, GL_FALSE, GL_FALSE, GL_TRUE);
    glPixelZoom(2, 3);
    glBlendFunc(GL_ZERO, GL_ZERO);
    glMatrixMode(GL_PROJECTION);
    fill(form.canvas->GetZKCanvas(), QRect(100, 120, 33, 44));
    GlForm::Settle();
    EXPECT_EQ(countOf(form.Screen(), ink), 33 * 44) << "nothing of it cuts or changes what is shown";
    form.canvas->CheckCurrent();
    GLint values[4];
    glGetIntegerv(GL_SCISSOR_BOX, values);
    EXPECT_EQ(values[2], 1);
    EXPECT_TRUE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_TRUE(glIsEnabled(GL_CLIP_PLANE2));
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    GLfloat zoom = 0;
    glGetFloatv(GL_ZOOM_Y, &zoom);
    EXPECT_EQ(zoom, 3);
    glGetIntegerv(GL_BLEND_SRC, values);
    EXPECT_EQ(values[0], GL_ZERO);
    glGetIntegerv(GL_MATRIX_MODE, values);
    EXPECT_EQ(values[0], GL_PROJECTION);
    glGetIntegerv(GL_PROJECTION_STACK_DEPTH, values);
    EXPECT_EQ(values[0], 1);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, values);
    EXPECT_EQ(values[0], 1);
    glGetIntegerv(GL_ATTRIB_STACK_DEPTH, values);
    EXPECT_EQ(values[0], 0);
    glMatrixMode(GL_MODELVIEW);
}

TEST(Overlay, TranslucentAndSmoothedPixelsAreMixedWithThePicture) {
    GlForm form;
    form.canvas->SetColor(0x0000FF);  // shown as (255, 0, 0) or one less
    form.canvas->Refresh();
    fill(form.canvas->GetZKCanvas(), QRect(10, 10, 10, 10), QColor(0, 0, 255, 128));
    GlForm::Settle();
    const QColor mixed = form.PixelAt({15, 15});
    EXPECT_NEAR(mixed.red(), 127, 2);
    EXPECT_NEAR(mixed.blue(), 128, 2);
    EXPECT_EQ(mixed.green(), 0);
}

TEST(Overlay, PixelsReadAsSeen) {
    GlForm form;
    addBox(form);
    form.canvas->Refresh();
    TZkCanvas* canvas = form.canvas->GetZKCanvas();
    EXPECT_EQ(ToQColor(canvas->GetPixel(150, 150)), red);
    EXPECT_EQ(ToQColor(canvas->GetPixel(10, 10)), black);
    EXPECT_EQ(ToQColor(canvas->GetPixel(121, 121)), red);
    EXPECT_EQ(ToQColor(canvas->GetPixel(121, 182)), black);
    canvas->SetPixel(150, 150, 0x123456);
    EXPECT_EQ(canvas->GetPixel(150, 150), 0x123456U);
    EXPECT_EQ(canvas->GetPixel(-1, 150), 0U);
    GlForm::Settle();
    EXPECT_EQ(FromQColor(form.PixelAt({150, 150})), 0x123456U);
    form.canvas->BeginPaint();
    EXPECT_EQ(ToQColor(canvas->GetPixel(150, 150)), red);
    form.canvas->EndPaint();
}

// The axes at 30 pixels a centimetre, seen obliquely so that the third one shows.
TEST(Overlay, DrawOrgDrawsTheAxes) {
    GlForm form;
    form.canvas->SetProjectionbase({{0, 0, 0}, {0.8, 0, 0.6}, {0, 1, 0}, {-0.6, 0, 0.8}});
    TZkCanvas* canvas = form.canvas->GetZKCanvas();
    canvas->SetPen(QPen(Qt::green, 1));
    canvas->MoveTo(7, 8);
    form.canvas->DrawOrg();
    EXPECT_EQ(canvas->GetPen(), QPen(Qt::green, 1)) << "the pen is what it was";
    GlForm::Settle();
    const QImage screen = form.Screen();
    EXPECT_EQ(form.canvas->WtoPixel({0, 0, 0}), (TXYI{150, 150}));
    EXPECT_EQ(form.canvas->WtoPixel({1, 0, 0}), (TXYI{174, 150}));
    EXPECT_EQ(form.canvas->WtoPixel({0, 1, 0}), (TXYI{150, 120}));
    EXPECT_EQ(form.canvas->WtoPixel({0, 0, 1}), (TXYI{168, 150}));
    for (int x = 150; x <= 174; ++x)
        EXPECT_EQ(screen.pixelColor(x, 150), plainWhite) << x;
    for (int y = 120; y <= 150; ++y)
        EXPECT_EQ(screen.pixelColor(150, y), plainWhite) << y;
    EXPECT_EQ(screen.pixelColor(149, 150), black);
    EXPECT_EQ(screen.pixelColor(150, 119), black);
    // the labels hang from the ends
    const auto inked = [&](const QPoint& at, const char* label) {
        const QRect box(at, canvas->TextExtent(label));
        int light = 0;
        for (int y = box.top() + 1; y <= box.bottom(); ++y)
            for (int x = box.left() + 1; x <= box.right(); ++x)
                light += screen.pixelColor(x, y).lightness() > 60;
        return light;
    };
    EXPECT_GT(inked({174, 150}, "x+"), 5);
    EXPECT_GT(inked({150, 120}, "y+"), 5);
    EXPECT_GT(inked({168, 150}, "z+"), 5);
    const QImage colourless = screen.convertToFormat(QImage::Format_Grayscale8).convertToFormat(screen.format());
    EXPECT_TRUE(colourless == screen) << "the labels are white, too";
    form.canvas->Refresh();
    EXPECT_EQ(countOf(form.Screen(), plainWhite), 0);
}

TEST(Overlay, DrawOrgWithoutAContextDoesNothing) {
    TZkOglCanvas none;
    none.DrawOrg();
    none.DrawLights();
    EXPECT_EQ(none.GetPrimdevice(), nullptr);
    GlForm form;
    form.canvas->GetZKCanvas();
    form.canvas->SetWinControl(nullptr);
    form.canvas->DrawOrg();
    form.canvas->DrawLights();
}

TEST(Overlay, DrawLightsMarksTheLightsThatAreOn) {
    GlForm form;
    const auto addLight = [&](const TXYZ& at, bool on) {
        auto* light = new TZKOglLight(form.window.get());
        light->SetZkOglCanvas(form.canvas);
        light->SetPosition(at);
        light->SetEnabled(on);
    };
    addLight({1, 1, 0}, true);
    addLight({-2, 0, 3}, true);
    addLight({-1, -1, 0}, false);
    addLight({1e12, 0, 0}, true);  // far out of the window
    form.canvas->Refresh();
    form.canvas->GetZKCanvas()->SetPen(QPen(QColor(Qt::green)));
    form.canvas->DrawLights();
    GlForm::Settle();
    const QImage screen = form.Screen();
    EXPECT_EQ(countOf(screen, Qt::green), 2 * 28);
    EXPECT_EQ(countOf(screen, plainWhite), 2 * 36);
    for (const QPoint& place : {QPoint(180, 120), QPoint(90, 150)}) {
        EXPECT_EQ(screen.pixelColor(place - QPoint(4, 4)), QColor(Qt::green));
        EXPECT_EQ(screen.pixelColor(place + QPoint(3, 3)), QColor(Qt::green));
        EXPECT_EQ(screen.pixelColor(place), plainWhite);
        EXPECT_EQ(screen.pixelColor(place + QPoint(4, 4)), black);
    }
    EXPECT_EQ(screen.pixelColor(120, 180), black);
}

// Moves and lines of the device go over the picture, once there is a 2D canvas.
TEST(Overlay, TheDevicesOwnLinesGoThroughTheCanvas) {
    GlForm form;
    form.canvas->Moveto3d({0, 0, 0});
    form.canvas->LineTo3d({1, 0, 0});
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({160, 150}), black);
    form.canvas->GetZKCanvas()->SetPen(QPen(ink));
    form.canvas->Moveto3d({0, 0, 0});
    form.canvas->LineTo3d({1, 0, 0});
    GlForm::Settle();
    EXPECT_EQ(countOf(form.Screen(), ink), 31);
}

// Whoever draws on the control draws over its picture, not only the canvas itself.
TEST(Overlay, OtherDevicesDrawOverThePictureToo) {
    GlForm form;
    addBox(form);
    form.canvas->Refresh();
    TZKCanvas3d device;
    device.Setcontrol(form.control);
    device.GetCanvas()->SetPen(QPen(ink));
    device.Moveto3d({0, 0, 0});
    device.LineTo3d({1, 0, 0});
    GlForm::Settle();
    EXPECT_EQ(countOf(form.Screen(), ink), 31);
    form.canvas->Refresh();
    EXPECT_EQ(countOf(form.Screen(), ink), 0);
}

TEST(Overlay, TwoCanvasesTakingTurnsOnAControl) {
    GlForm form;
    auto* other = new TZkOglCanvas(form.window.get());
    other->SetColor(0x00FF00);
    other->SetWinControl(form.control);
    GlForm::Settle();
    EXPECT_NEAR(form.PixelAt({5, 5}).green(), 255, 1);
    fill(other->GetZKCanvas(), QRect(20, 20, 10, 10));
    GlForm::Settle();
    EXPECT_EQ(countOf(form.Screen(), ink), 100);
    EXPECT_NEAR(form.PixelAt({5, 5}).green(), 255, 1) << "above the picture of the one that painted last";
    form.canvas->Refresh();
    EXPECT_EQ(countOf(form.Screen(), ink), 0);
    fill(other->GetZKCanvas(), QRect(20, 20, 10, 10));
    GlForm::Settle();
    EXPECT_EQ(countOf(form.Screen(), ink), 100);
    EXPECT_EQ(form.PixelAt({5, 5}), black);
    delete other;
    GlForm::Settle();
    fill(form.canvas->GetZKCanvas(), QRect(50, 50, 10, 10));
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({55, 55}), ink);
}

TEST(Overlay, DrawingWhileHiddenIsNoHarm) {
    GlForm form;
    fill(form.canvas->GetZKCanvas(), QRect(0, 0, 10, 10));
    form.window->hide();
    GlForm::Settle();
    fill(form.canvas->GetZKCanvas(), QRect(0, 0, 10, 10));
    GlForm::Settle();
    form.window->show();
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({5, 5}), black) << "showing the window is a repaint";
    fill(form.canvas->GetZKCanvas(), QRect(0, 0, 10, 10));
    form.control->resize(100, 120);
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({5, 5}), black);
    fill(form.canvas->GetZKCanvas(), QRect(90, 110, 50, 50));
    GlForm::Settle();
    EXPECT_EQ(countOf(form.Screen(), ink), 100);
}

TEST(Overlay, DeletionInAnyOrder) {
    for (int order = 0; order < 4; ++order) {
        GlForm form;
        fill(form.canvas->GetZKCanvas(), QRect(0, 0, 10, 10));
        if (order == 0)
            delete std::exchange(form.canvas, nullptr);
        else if (order == 1)
            delete std::exchange(form.control, nullptr);
        else if (order == 2)
            delete form.canvas->GetZKCanvas();
        else
            delete form.canvas->GetZKCanvas()->GetCanvas();
        GlForm::Settle();
        if (form.canvas)
            form.canvas->Refresh();
    }
    // a plain widget tells of its end when its layer has gone already
    auto plain = std::make_unique<QWidget>();
    plain->resize(100, 100);
    plain->show();
    TZkOglCanvas canvas;
    canvas.SetWinControl(plain.get());
    GlForm::Settle();
    fill(canvas.GetZKCanvas(), QRect(0, 0, 10, 10));
    plain.reset();
    EXPECT_EQ(canvas.GetZKCanvas(), nullptr);
    GlForm::Settle();
}
