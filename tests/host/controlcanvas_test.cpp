#include <zk/host/controlcanvas.h>
#include <zk/host/drawinglayer.h>

#include <QBackingStore>
#include <QPaintEvent>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace zk;

namespace {

constexpr TColor pureGreen = 0x00FF00;
constexpr TColor pureRed = 0x0000FF;
constexpr TColor pureBlue = 0xFF0000;

/// A green control with a margin, at (10, 20) of a shown window, that counts its paint events.
class Sheet : public QWidget {
  public:
    explicit Sheet(QWidget* parent) : QWidget(parent) {
        setGeometry(10, 20, 110, 60);
        setContentsMargins(5, 10, 5, 0);
    }

    std::function<void()> draw;
    int paints = 0;

  protected:
    void paintEvent(QPaintEvent* event) override {
        ++paints;
        QPainter painter(this);
        painter.fillRect(event->rect(), ToQColor(pureGreen));
        if (draw)
            draw();
    }
};

class ControlCanvasTest : public testing::Test {
  protected:
    ControlCanvasTest() {
        window.setGeometry(0, 0, 200, 100);
        sheet = new Sheet(&window);
        canvas.SetControl(sheet);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        settle();
        sheet->paints = 0;
    }

    static void settle() {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }
    /// What is on the window at a pixel of the sheet's contents rectangle.
    TColor shown(int x, int y) {
        settle();
        const auto* store = static_cast<const QImage*>(window.backingStore()->paintDevice());
        const QPoint at = QPoint(10 + 5 + x, 20 + 10 + y) * window.devicePixelRatio();
        return FromQColor(store->pixelColor(at));
    }
    void dot(int x, int y, TColor color = pureRed) {
        canvas.SetBrush(QBrush(ToQColor(color)));
        canvas.FillRect(QRect(x, y, 4, 4));
    }

    QWidget window;
    Sheet* sheet = nullptr;
    ControlCanvas canvas;
};

}  // namespace

TEST_F(ControlCanvasTest, DrawsOnTheContentsRectangle) {
    EXPECT_EQ(canvas.GetClipRect(), QRect(0, 0, 100, 50));
    dot(0, 0);
    EXPECT_EQ(shown(0, 0), pureRed);
    EXPECT_EQ(shown(3, 3), pureRed);
    EXPECT_EQ(shown(4, 3), pureGreen);
    canvas.FillRect(QRect(-50, -50, 300, 300));
    EXPECT_EQ(shown(99, 49), pureRed);
    const auto* store = static_cast<const QImage*>(window.backingStore()->paintDevice());
    EXPECT_EQ(FromQColor(store->pixelColor(10 + 4, 20 + 12)), pureGreen) << "the margin is not drawn on";
    EXPECT_EQ(FromQColor(store->pixelColor(10 + 20, 20 + 9)), pureGreen);
}

TEST_F(ControlCanvasTest, WhatIsDrawnOutsideOfPaintEventsStaysUntilTheNextOne) {
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
    EXPECT_EQ(sheet->paints, 1) << "drawing shows itself once";
    dot(20, 10, pureBlue);
    EXPECT_EQ(shown(22, 12), pureBlue);
    EXPECT_EQ(shown(12, 12), pureRed) << "showing more is no repaint";
    sheet->repaint();
    EXPECT_EQ(shown(12, 12), pureGreen);
    EXPECT_EQ(shown(22, 12), pureGreen);
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
    sheet->update();
    EXPECT_EQ(shown(12, 12), pureGreen);
}

TEST_F(ControlCanvasTest, ARepaintOfAPartTakesAwayWhatIsInThatPart) {
    dot(10, 10);
    dot(50, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
    sheet->repaint(QRect(0, 0, 30, 60));
    EXPECT_EQ(shown(12, 12), pureGreen);
    EXPECT_EQ(shown(52, 12), pureRed);
}

TEST_F(ControlCanvasTest, WhatHasNotBeenShownSurvivesARepaint) {
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
    sheet->update();
    dot(12, 12, pureBlue);  // over the old one, before the repaint comes
    EXPECT_EQ(shown(13, 13), pureBlue);
    EXPECT_EQ(shown(10, 10), pureGreen) << "the old one goes, also beside the new one";
    sheet->update();
    EXPECT_EQ(shown(13, 13), pureGreen);
}

TEST_F(ControlCanvasTest, WhatIsDrawnBeforeTheControlIsVisibleIsShownWithIt) {
    window.hide();
    settle();
    dot(10, 10);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(shown(12, 12), pureRed);
    sheet->update();
    EXPECT_EQ(shown(12, 12), pureGreen);
}

TEST_F(ControlCanvasTest, DrawingInAPaintEventIsPartOfIt) {
    sheet->draw = [this] { dot(10, 10); };
    sheet->update();
    EXPECT_EQ(shown(12, 12), pureRed);
    EXPECT_EQ(sheet->paints, 1) << "and asks for no further one";
    sheet->draw = nullptr;
    sheet->update();
    EXPECT_EQ(shown(12, 12), pureGreen);
}

TEST_F(ControlCanvasTest, DrawingInAPaintEventIsCutToWhatIsPainted) {
    sheet->draw = [this] {
        EXPECT_EQ(canvas.GetClipRect(), QRect(0, 0, 12, 50));
        dot(10, 10);
    };
    sheet->repaint(QRect(0, 0, 17, 60));
    sheet->draw = nullptr;
    EXPECT_EQ(shown(11, 11), pureRed);
    EXPECT_EQ(shown(12, 11), pureGreen);
}

TEST_F(ControlCanvasTest, WhatIsDrawnOutsideLiesAboveWhatAPaintEventDraws) {
    sheet->draw = [this] { dot(10, 10); };
    sheet->update();
    settle();
    dot(10, 10, pureBlue);
    EXPECT_EQ(shown(12, 12), pureBlue);
}

TEST_F(ControlCanvasTest, ChildrenLieAbove) {
    auto* child = new Sheet(sheet);
    child->setGeometry(5, 10, 20, 20);
    child->show();
    settle();
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureGreen);
    delete child;
}

TEST_F(ControlCanvasTest, AFlushDoesNotWaitForTheEventLoop) {
    dot(10, 10);
    EXPECT_EQ(sheet->paints, 0);
    canvas.Flush();
    EXPECT_EQ(sheet->paints, 1);
    const auto* store = static_cast<const QImage*>(window.backingStore()->paintDevice());
    EXPECT_EQ(FromQColor(store->pixelColor(10 + 5 + 12, 20 + 10 + 12)), pureRed);
    EXPECT_EQ(shown(12, 12), pureRed);
}

TEST_F(ControlCanvasTest, AWipeTakesEverythingAway) {
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
    DrawingLayer::Of(sheet)->Wipe();
    EXPECT_EQ(shown(12, 12), pureGreen);
}

TEST_F(ControlCanvasTest, PicturesOfTheControlShowAndKeepWhatIsDrawn) {
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
    const QImage picture = sheet->grab().toImage();
    EXPECT_EQ(FromQColor(picture.pixelColor(5 + 12, 10 + 12)), pureRed);
    EXPECT_EQ(shown(12, 12), pureRed);
    dot(20, 10, pureBlue);
    EXPECT_EQ(FromQColor(sheet->grab().toImage().pixelColor(5 + 22, 10 + 12)), pureBlue);
    EXPECT_EQ(shown(22, 12), pureBlue);
    sheet->update();
    EXPECT_EQ(shown(12, 12), pureGreen);
}

TEST_F(ControlCanvasTest, PixelsReadAsSeen) {
    EXPECT_EQ(canvas.GetPixel(12, 12), pureGreen);
    dot(10, 10);
    EXPECT_EQ(canvas.GetPixel(12, 12), pureRed) << "before it is on the screen";
    settle();
    EXPECT_EQ(canvas.GetPixel(12, 12), pureRed);
    EXPECT_EQ(canvas.GetPixel(15, 12), pureGreen);
    EXPECT_EQ(canvas.GetPixel(-1, 0), 0U);
    EXPECT_EQ(canvas.GetPixel(0, 50), 0U);
    sheet->draw = [this] { dot(30, 30, pureBlue); };
    EXPECT_EQ(canvas.GetPixel(31, 31), pureBlue);
    TColor inside = 0;
    sheet->draw = [&] {
        dot(30, 30, pureBlue);
        inside = canvas.GetPixel(31, 31);
    };
    sheet->update();
    settle();
    EXPECT_EQ(inside, pureBlue);
    sheet->draw = nullptr;
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
}

TEST_F(ControlCanvasTest, AResizeIsARepaint) {
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
    sheet->resize(160, 80);
    EXPECT_EQ(canvas.GetClipRect(), QRect(0, 0, 150, 70));
    EXPECT_EQ(shown(12, 12), pureGreen);
    canvas.FillRect(QRect(140, 60, 4, 4));
    EXPECT_EQ(shown(142, 62), pureRed);
    dot(10, 10, pureBlue);
    sheet->resize(120, 80);  // not shown yet, so it stays
    EXPECT_EQ(shown(12, 12), pureBlue);
}

TEST_F(ControlCanvasTest, TwoCanvasesShareTheControl) {
    ControlCanvas other(nullptr, sheet);
    dot(10, 10);
    other.SetPixel(12, 12, pureBlue);
    EXPECT_EQ(shown(11, 11), pureRed);
    EXPECT_EQ(shown(12, 12), pureBlue);
    EXPECT_EQ(sheet->findChildren<DrawingLayer*>().size(), 1);
}

TEST_F(ControlCanvasTest, WithoutAControlNothingIsDrawn) {
    ControlCanvas none;
    EXPECT_EQ(none.GetClipRect(), QRect());
    none.FillRect(QRect(0, 0, 9, 9));
    none.Flush();
    EXPECT_EQ(none.GetPixel(1, 1), 0U);
    delete sheet;
    EXPECT_EQ(canvas.GetControl(), nullptr);
    dot(10, 10);
    canvas.Flush();
    EXPECT_EQ(canvas.GetClipRect(), QRect());
}

TEST_F(ControlCanvasTest, AControlMayGoInItsPaintEvent) {
    // Qt itself paints into a widget after its paint event, so the layer goes alone.
    sheet->draw = [this] { delete DrawingLayer::Find(sheet); };
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureGreen);
    sheet->draw = nullptr;
    dot(10, 10);
    EXPECT_EQ(shown(12, 12), pureRed);
}

TEST_F(ControlCanvasTest, AHandleTakesThePlaceOfTheControl) {
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::black);
    canvas.SetHandle(&image);
    EXPECT_EQ(canvas.GetClipRect(), QRect(0, 0, 8, 8));
    dot(0, 0);
    EXPECT_EQ(FromQColor(image.pixelColor(1, 1)), pureRed);
    EXPECT_EQ(canvas.GetPixel(1, 1), pureRed);
    EXPECT_EQ(shown(1, 1), pureGreen);
    canvas.SetHandle(nullptr);
    dot(0, 0);
    EXPECT_EQ(shown(1, 1), pureRed);
}
