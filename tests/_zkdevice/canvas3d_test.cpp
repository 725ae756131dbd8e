#include <zk/_zkdevice/canvas3d.h>
#include <zk/_zkxyz/array.h>
#include <zk/host/controlcanvas.h>

#include <QImage>
#include <QPainter>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;

namespace {

/// A control that is a component too, as those of this library are.
class Panel : public QWidget, public ComponentBase {
  public:
    explicit Panel(QWidget* parent = nullptr) : QWidget(parent), ComponentBase(this) {}
    ~Panel() override { AnnounceRemoval(); }
};

QImage picture(QWidget& control) {
    return control.grab().toImage();
}

int countOf(const QImage& image, const QColor& color) {
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            pixels += image.pixelColor(x, y) == color;
    return pixels;
}

void drawCross(TZKDevice& device) {
    device.Moveto3d({-1, 0, 0});
    device.LineTo3d({1, 0, 0});
    device.Moveto3d({0, -1, 0});
    device.LineTo3d({0, 1, 0});
}

class Canvas3d : public testing::Test {
  protected:
    Canvas3d() {
        control.resize(300, 200);
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::white);
        control.setPalette(palette);
    }
    QWidget control;
};

}  // namespace

TEST_F(Canvas3d, WithoutAControlItDrawsNothing) {
    QObject owner;
    const auto* device = new TZKCanvas3d(&owner);
    EXPECT_EQ(device->Owner(), &owner);
    EXPECT_EQ(device->GetControl(), nullptr);
    EXPECT_EQ(device->GetPrimdevice(), nullptr);
    EXPECT_EQ(device->GetCanvas(), nullptr);
    EXPECT_EQ(device->GetWidth(), 180);
    EXPECT_EQ(device->GetHeight(), 180);
    TZKCanvas3d none;
    drawCross(none);
    QImage image;
    DrawingCanvas paper;
    none.SetCanvas(&paper);
    EXPECT_EQ(none.GetCanvas(), nullptr);
}

TEST_F(Canvas3d, AControlGivesTheSizeAndIsDrawnOn) {
    TZKCanvas3d device;
    device.SetLeft(7);
    device.SetTop(8);
    device.Setcontrol(&control);
    EXPECT_EQ(device.GetControl(), &control);
    EXPECT_EQ(device.GetLeft(), 0);
    EXPECT_EQ(device.GetTop(), 0);
    EXPECT_EQ(device.GetWidth(), 300);
    EXPECT_EQ(device.GetHeight(), 200);
    ASSERT_NE(device.GetCanvas(), nullptr);
    EXPECT_EQ(qobject_cast<TZkCanvas*>(device.GetPrimdevice())->GetCanvas(), device.GetCanvas());
    drawCross(device);
    const QImage image = picture(control);
    EXPECT_EQ(countOf(image, Qt::black), 61 + 61 - 1);
    EXPECT_EQ(image.pixelColor(120, 100), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(180, 100), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(150, 70), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(150, 131), QColor(Qt::white));
}

TEST_F(Canvas3d, TheSizeIsThatOfTheContents) {
    control.setContentsMargins(10, 20, 30, 40);
    TZKCanvas3d device;
    device.Setcontrol(&control);
    EXPECT_EQ(device.GetWidth(), 260);
    EXPECT_EQ(device.GetHeight(), 140);
    device.Moveto3d({0, 0, 0});
    device.LineTo3d({0, 0, 0});
    const QImage image = picture(control);
    EXPECT_EQ(countOf(image, Qt::black), 1);
    EXPECT_EQ(image.pixelColor(10 + 130, 20 + 70), QColor(Qt::black));
}

TEST_F(Canvas3d, WhatIsDrawnStaysUntilTheControlIsPainted) {
    control.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&control));
    QCoreApplication::processEvents();
    TZKCanvas3d device;
    device.Setcontrol(&control);
    drawCross(device);
    QCoreApplication::processEvents();
    EXPECT_EQ(countOf(picture(control), Qt::black), 121);
    control.repaint();
    EXPECT_EQ(countOf(picture(control), Qt::black), 0);
}

TEST_F(Canvas3d, AControlAsOwnerGivesSizeAndForwarderButNoPlaceToDraw) {
    auto* device = new TZKCanvas3d(&control);
    EXPECT_EQ(device->GetControl(), nullptr);
    EXPECT_EQ(device->GetWidth(), 300);
    EXPECT_EQ(device->GetHeight(), 200);
    EXPECT_NE(device->GetCanvas(), nullptr);
    drawCross(*device);
    EXPECT_EQ(countOf(picture(control), Qt::black), 0);
    device->Setcontrol(&control);
    drawCross(*device);
    EXPECT_EQ(countOf(picture(control), Qt::black), 121);
}

TEST_F(Canvas3d, LeavingTheControlTakesTheForwarderAway) {
    TZKCanvas3d device;
    device.Setcontrol(&control);
    const QPointer<TZKPrimdevice> forwarder = device.GetPrimdevice();
    const QPointer<DrawingCanvas> canvas = device.GetCanvas();
    device.Setcontrol(&control);
    EXPECT_FALSE(forwarder) << "each assignment makes a new one";
    EXPECT_FALSE(canvas);
    device.Setcontrol(nullptr);
    EXPECT_EQ(device.GetControl(), nullptr);
    EXPECT_EQ(device.GetPrimdevice(), nullptr);
    EXPECT_EQ(device.GetCanvas(), nullptr);
    EXPECT_EQ(device.GetWidth(), 300);
    drawCross(device);
    EXPECT_EQ(countOf(picture(control), Qt::black), 0);
}

TEST_F(Canvas3d, AControlThatGoesIsLeft) {
    TZKCanvas3d device;
    auto plain = std::make_unique<QWidget>();
    device.Setcontrol(plain.get());
    plain.reset();
    EXPECT_EQ(device.GetControl(), nullptr);
    EXPECT_EQ(device.GetPrimdevice(), nullptr);
    auto panel = std::make_unique<Panel>();
    device.Setcontrol(panel.get());
    device.Setcontrol(&control);
    panel.reset();
    EXPECT_EQ(device.GetControl(), &control) << "one that was left before is nothing to it";
    panel = std::make_unique<Panel>();
    device.Setcontrol(panel.get());
    panel.reset();
    EXPECT_EQ(device.GetControl(), nullptr);
    EXPECT_EQ(device.GetPrimdevice(), nullptr);
    drawCross(device);
}

TEST_F(Canvas3d, DeletedPartsAreNoHarm) {
    {
        TZKCanvas3d device;
        device.Setcontrol(&control);
        delete device.GetCanvas();
        EXPECT_EQ(device.GetCanvas(), nullptr);
        drawCross(device);
        delete device.GetPrimdevice();
        drawCross(device);
        device.Setcontrol(&control);
        drawCross(device);
        EXPECT_EQ(countOf(picture(control), Qt::black), 121);
    }
    auto panel = std::make_unique<Panel>();
    auto* owned = new TZKCanvas3d(panel.get());
    owned->Setcontrol(panel.get());
    panel.reset();  // the panel goes with the device that draws on it
}

TEST_F(Canvas3d, AnotherCanvasCanBeGiven) {
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    DrawingCanvas paper;
    paper.SetHandle(&image);
    TZKCanvas3d device;
    device.Setcontrol(&control);
    device.SetCanvas(&paper);
    EXPECT_EQ(device.GetCanvas(), &paper);
    drawCross(device);
    EXPECT_EQ(countOf(image, Qt::black), 121);
    EXPECT_EQ(countOf(picture(control), Qt::black), 0);
    // a 2D device of another kind has no canvas of ours
    TZKPrimdevice other;
    device.SetPRimdevice(&other);
    EXPECT_EQ(device.GetCanvas(), nullptr);
    device.SetCanvas(&paper);
    EXPECT_EQ(device.GetPrimdevice(), &other);
}

TEST_F(Canvas3d, TheControlIsAProperty) {
    TZKCanvas3d device;
    EXPECT_TRUE(device.setProperty("Control", QVariant::fromValue<QWidget*>(&control)));
    EXPECT_EQ(device.GetControl(), &control);
    EXPECT_EQ(device.property("Control").value<QWidget*>(), &control);
}

TEST_F(Canvas3d, AControlMayBeSmallerThanItsMargins) {
    control.resize(20, 30);
    control.setContentsMargins(18, 18, 18, 18);
    TZKCanvas3d device;
    device.Setcontrol(&control);
    EXPECT_EQ(device.GetWidth(), 0);
    EXPECT_EQ(device.GetHeight(), 0);
    const TZKCanvas3d owned(&control);
    EXPECT_EQ(owned.GetWidth(), 0);
    EXPECT_EQ(owned.GetHeight(), 0);
}
