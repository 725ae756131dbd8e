#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkdevice/canvas2d.h>
#include <zk/host/glsurface.h>

#include <QTest>
#include <gtest/gtest.h>

#include <cmath>

using namespace zk;
using namespace zk::test;

// Run once at each pixel ratio (QT_SCALE_FACTOR); every expectation is in terms of the ratio.

namespace {

bool isRed(const QColor& color) {
    return color.red() > 200 && color.green() < 40;
}

}  // namespace

TEST(PixelRatio, ThePictureUsesEveryPixelOfTheDisplay) {
    GlForm form({200, 200});
    const double ratio = form.control->devicePixelRatioF();
    const QByteArray wanted = qgetenv("QT_SCALE_FACTOR");
    if (!wanted.isEmpty()) {
        ASSERT_EQ(ratio, wanted.toDouble());
    }
    // One device pixel is 1 / ratio of ours; a box one device pixel wide must come out one pixel wide.
    TZKOglScene* scene = form.AddScene();
    const double device = 1 / ratio / 30;
    form.AddBox(scene, 0x0000FF, {device, 2, 1}, {0, -1, 0});
    form.canvas->Refresh();
    const QImage screen = form.Screen();
    EXPECT_EQ(screen.width(), std::lround(200 * ratio));
    int red = 0;
    const int row = screen.height() / 2;
    for (int x = 0; x < screen.width(); ++x)
        red += isRed(screen.pixelColor(x, row));
    EXPECT_EQ(red, 1);
}

TEST(PixelRatio, TheSizeOfThePictureIsTheSame) {
    GlForm form({200, 200});
    const double ratio = form.control->devicePixelRatioF();
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 1, 1}, {-1, -0.5, 0});
    form.canvas->Refresh();
    const QImage screen = form.Screen();
    int width = 0;
    int height = 0;
    for (int i = 0; i < screen.width(); ++i) {
        width += isRed(screen.pixelColor(i, screen.height() / 2));
        height += isRed(screen.pixelColor(screen.width() / 2, i));
    }
    EXPECT_NEAR(width, 60 * ratio, 1);
    EXPECT_NEAR(height, 30 * ratio, 1);
    EXPECT_EQ(form.canvas->WtoPixel({1, 0.5, 0}), (TXYI{130, 85}));
}

// The pick sees 0.1 cm to each side. At 10 pixels a centimetre that is one pixel: the hit ends one pixel beyond the
// box, at every device pixel.
TEST(PixelRatio, AClickMeetsWhatIsUnderThePointerToThePixel) {
    for (const double angle : {0.0, 30.0}) {
        GlForm form({200, 200});
        const double ratio = form.control->devicePixelRatioF();
        form.canvas->SetUnitsPerCm(10);
        form.canvas->SetBlickWinkel(angle);
        TZKOglScene* scene = form.AddScene();
        TZKOglBox* box = form.AddBox(scene, 0x0000FF, {8, 8, 1}, {-4, -4, -1});
        int pressed = 0;
        QObject::connect(box, &TCustomShape::OnMouseDown, [&] { ++pressed; });
        const auto pressAt = [&](double x) {
            pressed = 0;
            const QPointF local(x, 100);
            QMouseEvent press(QEvent::MouseButtonPress, local, form.control->mapToGlobal(local), Qt::LeftButton,
                              Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(form.control, &press);
            return pressed == 1;
        };
        const double step = 1 / ratio;
        for (double x = 55; x < 65; x += step) {
            if (std::fabs(x - 59) < 0.02)
                continue;
            EXPECT_EQ(pressAt(x), x > 59) << x << " of a box from 60 on, angle " << angle;
        }
        for (double x = 135; x < 145; x += step) {
            if (std::fabs(x - 141) < 0.02)
                continue;
            EXPECT_EQ(pressAt(x), x < 141) << x << " of a box up to 140, angle " << angle;
        }
        // and through the window system, in whole pixels
        pressed = 0;
        form.Click({61, 100});
        EXPECT_EQ(pressed, 1);
        form.Click({57, 100});
        EXPECT_EQ(pressed, 1);
    }
}

// A rectangle drawn over the picture covers the same place, and its outline is as wide as on any display.
TEST(PixelRatio, WhatIsDrawnOverThePictureIsInItsCoordinates) {
    GlForm form({200, 200});
    const double ratio = form.control->devicePixelRatioF();
    form.canvas->Refresh();
    TZkCanvas* canvas = form.canvas->GetZKCanvas();
    canvas->SetBrush(QBrush(QColor(255, 0, 0)));
    canvas->FillRect(QRect(40, 80, 60, 20));
    canvas->SetPixel(120, 120, 0x0000FF);
    GlForm::Settle();
    const QImage screen = form.Screen();
    int width = 0;
    int height = 0;
    int pixel = 0;
    for (int i = 0; i < screen.width(); ++i) {
        width += isRed(screen.pixelColor(i, int(90 * ratio)));
        height += isRed(screen.pixelColor(int(70 * ratio), i));
    }
    for (int y = int(118 * ratio); y < int(123 * ratio); ++y)
        for (int x = int(118 * ratio); x < int(123 * ratio); ++x)
            pixel += isRed(screen.pixelColor(x, y));
    EXPECT_NEAR(width, 60 * ratio, 1);
    EXPECT_NEAR(height, 20 * ratio, 1);
    EXPECT_GE(pixel, std::floor(ratio) * std::floor(ratio));
    EXPECT_LE(pixel, std::ceil(ratio) * std::ceil(ratio));
    EXPECT_TRUE(isRed(screen.pixelColor(int(41 * ratio), int(81 * ratio))));
    EXPECT_TRUE(isRed(screen.pixelColor(int(99 * ratio) - 1, int(99 * ratio) - 1)));
    EXPECT_EQ(canvas->GetPixel(120, 120), 0x0000FFU);
    EXPECT_EQ(canvas->GetPixel(20, 120), 0U);
}

TEST(PixelRatio, ANewRatioSetsTheViewportAnew) {
    GlForm form({200, 100});
    const double ratio = form.control->devicePixelRatioF();
    GlSurface* const surface = GlSurface::Find(form.control);
    ASSERT_TRUE(surface);
    const TRect viewport = form.canvas->getViewPort();
    form.canvas->SetViewport({10, 20, 30, 40});
    {
        const GlRecorder recorder;
        Q_EMIT surface->PixelRatioChanged();
        EXPECT_EQ(recorder.CallsTo({"glViewport"}), Calls{QStringLiteral("glViewport(0, %1, %2, %2)")
                                                              .arg(std::lround(-50 * ratio))
                                                              .arg(200 * ratio)
                                                              .toStdString()});
    }
    EXPECT_EQ(form.canvas->getViewPort(), viewport);
    form.canvas->SetWinControl(nullptr);
    Q_EMIT surface->PixelRatioChanged();
    EXPECT_EQ(form.messages.Take(), QStringList());
}
