#include <zk/host/drawingcanvas.h>

#include <QFontMetrics>
#include <QImage>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <string>
#include <vector>

using namespace zk;

namespace {

constexpr TColor black = 0x000000;
constexpr TColor white = 0xFFFFFF;
constexpr TColor red = 0x0000FF;
constexpr TColor blue = 0xFF0000;
constexpr TColor grey = 0x808080;

/// A grey image of 20 x 20 pixels with a canvas on it.
class DrawingCanvasTest : public testing::Test {
  protected:
    DrawingCanvasTest() : image(20, 20, QImage::Format_RGB32) {
        image.fill(ToQColor(grey));
        canvas.SetHandle(&image);
    }

    TColor at(int x, int y) const { return FromQColor(image.pixelColor(x, y)); }
    int count(TColor color) const {
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                pixels += at(x, y) == color;
        return pixels;
    }
    /// The rectangle that holds all that is no longer grey.
    QRect touched() const {
        QRect box;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (at(x, y) != grey)
                    box |= QRect(x, y, 1, 1);
        return box;
    }

    QImage image;
    DrawingCanvas canvas;
};

}  // namespace

TEST_F(DrawingCanvasTest, StartsWithABlackPenAndAWhiteBrush) {
    EXPECT_EQ(canvas.GetPen(), QPen(Qt::black));
    EXPECT_EQ(canvas.GetPen().width(), 1);
    EXPECT_EQ(canvas.GetBrush(), QBrush(Qt::white));
    EXPECT_EQ(canvas.GetFont(), QFont());
    EXPECT_EQ(canvas.GetPenPos(), QPoint(0, 0));
    EXPECT_EQ(canvas.GetCopyMode(), QPainter::CompositionMode_SourceOver);
    EXPECT_EQ(canvas.GetTextFlags(), 0);
    EXPECT_EQ(canvas.GetHandle(), &image);
    EXPECT_EQ(canvas.GetClipRect(), QRect(0, 0, 20, 20));
}

TEST_F(DrawingCanvasTest, ALineHasBothItsEndsAndMovesThePen) {
    canvas.MoveTo(3, 5);
    EXPECT_EQ(count(grey), 400) << "a move draws nothing";
    canvas.LineTo(9, 5);
    EXPECT_EQ(canvas.GetPenPos(), QPoint(9, 5));
    EXPECT_EQ(count(black), 7);
    EXPECT_EQ(touched(), QRect(3, 5, 7, 1));
    canvas.LineTo(9, 8);
    EXPECT_EQ(touched(), QRect(3, 5, 7, 4));
    canvas.SetPenPos({15, 15});
    canvas.LineTo(15, 15);
    EXPECT_EQ(at(15, 15), black);
    EXPECT_EQ(count(black), 11);
}

TEST_F(DrawingCanvasTest, ThePenGivesColourAndWidth) {
    canvas.SetPen(QPen(ToQColor(red), 3));
    canvas.MoveTo(5, 5);
    canvas.LineTo(15, 5);
    for (const int y : {4, 5, 6})
        EXPECT_EQ(at(10, y), red) << y;
    EXPECT_EQ(at(10, 3), grey);
    EXPECT_EQ(at(10, 7), grey);
    canvas.SetPen(Qt::NoPen);
    canvas.LineTo(15, 19);
    EXPECT_EQ(at(15, 15), grey);
}

TEST_F(DrawingCanvasTest, PixelsAreWrittenAndRead) {
    canvas.SetPixel(4, 7, 0x123456);
    EXPECT_EQ(count(0x123456), 1);
    EXPECT_EQ(canvas.GetPixel(4, 7), 0x123456U);
    EXPECT_EQ(canvas.GetPixel(5, 7), grey);
    for (const QPoint& outside :
         {QPoint(-1, 0), QPoint(0, -1), QPoint(20, 0), QPoint(0, 20), QPoint(INT_MAX, INT_MIN)}) {
        EXPECT_EQ(canvas.GetPixel(outside.x(), outside.y()), black);
        canvas.SetPixel(outside.x(), outside.y(), red);
    }
    EXPECT_EQ(count(red), 0);
}

TEST_F(DrawingCanvasTest, ABoxLeavesRightAndBottomOut) {
    canvas.Rectangle(3, 4, 11, 9);
    EXPECT_EQ(touched(), QRect(3, 4, 8, 5));
    EXPECT_EQ(count(black), 2 * 8 + 2 * 3);
    EXPECT_EQ(count(white), 6 * 3);
    canvas.SetPen(QPen(ToQColor(red)));
    canvas.Rectangle(11, 9, 3, 4);  // the other way round
    EXPECT_EQ(touched(), QRect(3, 4, 8, 5));
    EXPECT_EQ(count(red), 22);
    canvas.Rectangle(5, 5, 5, 12);  // no pixels
    EXPECT_EQ(touched(), QRect(3, 4, 8, 5));
    canvas.SetPen(Qt::NoPen);
    canvas.SetBrush(QBrush(ToQColor(blue)));
    canvas.Rectangle(3, 4, 11, 9);
    EXPECT_EQ(count(blue), 8 * 5) << "the inside is all of the box without a pen";
}

TEST_F(DrawingCanvasTest, AnEllipseFillsItsBox) {
    canvas.Ellipse(2, 3, 13, 10);
    EXPECT_EQ(touched(), QRect(2, 3, 11, 7));
    EXPECT_EQ(at(2, 3), grey) << "but for its corners";
    EXPECT_EQ(at(2, 6), black);
    EXPECT_EQ(at(12, 6), black);
    EXPECT_EQ(at(7, 3), black);
    EXPECT_EQ(at(7, 9), black);
    EXPECT_EQ(at(7, 6), white);
    canvas.SetPen(QPen(ToQColor(red)));
    canvas.Ellipse(15, 2, 16, 7);  // one pixel wide: a line
    EXPECT_EQ(count(red), 5);
}

TEST_F(DrawingCanvasTest, ABoxWithoutPixelsShowsNothing) {
    for (const QRect& box : {QRect(5, 5, 0, 7), QRect(5, 5, 7, 0), QRect(5, 5, 0, 0)}) {
        const int right = box.x() + box.width();
        const int bottom = box.y() + box.height();
        canvas.Ellipse(box.x(), box.y(), right, bottom);
        canvas.Arc(box.x(), box.y(), right, bottom, 9, 9, 0, 0);
        canvas.Chord(box.x(), box.y(), right, bottom, 9, 9, 0, 0);
        canvas.FillRect(box);
        canvas.DrawFocusRect(box);
        EXPECT_EQ(count(grey), 400) << box.width() << " x " << box.height();
    }
}

TEST_F(DrawingCanvasTest, AnArcRunsCounterClockwise) {
    // from the right to the top: the upper right quarter
    canvas.Arc(0, 0, 19, 19, 19, 9, 9, 0);
    EXPECT_EQ(touched().bottom(), 9);
    EXPECT_EQ(touched().left(), 9);
    EXPECT_EQ(at(18, 9), black);
    EXPECT_EQ(at(9, 0), black);
    EXPECT_EQ(at(0, 9), grey);
    EXPECT_EQ(at(12, 5), grey) << "an arc is not filled";
    // from the top to the right: the other three
    canvas.SetPen(QPen(ToQColor(red)));
    canvas.Arc(0, 0, 19, 19, 9, 0, 19, 9);
    EXPECT_EQ(at(0, 9), red);
    EXPECT_EQ(at(9, 18), red);
    // both rays alike: all of it
    canvas.SetPen(QPen(ToQColor(blue)));
    canvas.Arc(0, 0, 19, 19, 19, 9, 19, 9);
    for (const QPoint& point : {QPoint(18, 9), QPoint(9, 0), QPoint(0, 9), QPoint(9, 18)})
        EXPECT_EQ(canvas.GetPixel(point.x(), point.y()), blue);
}

TEST_F(DrawingCanvasTest, TheRaysOfAnArcGoThroughPointsWhateverTheBox) {
    // In a flat box the ray through a corner is at 45 degrees of the ellipse, so this is the right quarter of it.
    canvas.Arc(0, 5, 20, 11, 19, 10, 19, 5);
    EXPECT_EQ(at(18, 7), black);
    EXPECT_EQ(at(10, 5), grey);
    EXPECT_EQ(at(10, 10), grey);
    EXPECT_GT(touched().left(), 14);
}

TEST_F(DrawingCanvasTest, AChordIsClosedAndFilled) {
    canvas.Chord(0, 0, 19, 19, 19, 9, 0, 9);  // the upper half
    EXPECT_EQ(at(9, 9), black) << "the line between the ends";
    EXPECT_EQ(at(9, 5), white);
    EXPECT_EQ(at(9, 12), grey);
}

TEST_F(DrawingCanvasTest, PolygonsAreClosedAndFilled) {
    const std::array<QPoint, 4> square{QPoint(2, 2), QPoint(12, 2), QPoint(12, 12), QPoint(2, 12)};
    canvas.Polygon(square);
    EXPECT_EQ(at(2, 7), black);
    EXPECT_EQ(at(7, 12), black);
    EXPECT_EQ(at(7, 7), white);
    EXPECT_EQ(touched(), QRect(2, 2, 11, 11));
    canvas.Polygon({});
    EXPECT_EQ(touched(), QRect(2, 2, 11, 11));
}

TEST_F(DrawingCanvasTest, PolylinesAreOpenAndLeaveThePen) {
    const std::array<QPoint, 3> corner{QPoint(2, 2), QPoint(12, 2), QPoint(12, 12)};
    canvas.Polyline(corner);
    EXPECT_EQ(count(black), 21);
    EXPECT_EQ(count(white), 0);
    EXPECT_EQ(canvas.GetPenPos(), QPoint(0, 0));
    canvas.Polyline(std::span(corner).first(1));
    canvas.Polyline({});
    EXPECT_EQ(count(black), 21);
}

TEST_F(DrawingCanvasTest, ManyPolylinesAreDrawnAtOnce) {
    const std::array<QPoint, 6> points{QPoint(1, 1), QPoint(5, 1),  QPoint(5, 4),
                                       QPoint(8, 8), QPoint(8, 12), QPoint(19, 19)};
    const std::array<int, 4> counts{3, 2, 0, 7};
    canvas.PolyPolyline(points, counts);
    EXPECT_EQ(count(black), 5 + 3 + 5) << "the last has one point only";
    EXPECT_EQ(at(8, 12), black);
    EXPECT_EQ(at(6, 6), grey) << "they are not joined";
    const std::array<int, 2> odd{-5, INT_MAX};
    canvas.PolyPolyline(points, odd);
    EXPECT_EQ(at(19, 19), black);
}

TEST_F(DrawingCanvasTest, BezierCurvesTakeGroupsOfThree) {
    const std::array<QPoint, 6> points{QPoint(1, 1),  QPoint(6, 1),  QPoint(11, 1),
                                       QPoint(16, 1), QPoint(16, 9), QPoint(16, 18)};
    canvas.PolyBezier(points);
    EXPECT_EQ(count(black), 16) << "the second group is not whole";
    EXPECT_EQ(touched(), QRect(1, 1, 16, 1));
    canvas.PolyBezier(std::span(points).first(3));
    EXPECT_EQ(count(black), 16);
}

TEST_F(DrawingCanvasTest, FillingHasNoOutline) {
    canvas.FillRect(QRect(2, 3, 5, 4));
    EXPECT_EQ(count(white), 20);
    EXPECT_EQ(count(grey), 380);
    canvas.FillRect(QRect());
    canvas.SetBrush(Qt::NoBrush);
    canvas.FillRect(QRect(0, 0, 20, 20));
    EXPECT_EQ(count(grey), 380);
}

TEST_F(DrawingCanvasTest, TheFocusRectangleIsEverySecondPixelOfTheEdge) {
    const TColor text = ColorToRGB(clWindowText);
    canvas.DrawFocusRect(QRect(2, 3, 8, 6));
    int dots = 0;
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            const bool edge = QRect(2, 3, 8, 6).contains(x, y) && !QRect(3, 4, 6, 4).contains(x, y);
            const bool dot = edge && (x + y) % 2 == 0;
            EXPECT_EQ(at(x, y), dot ? text : grey) << x << ", " << y;
            dots += dot;
        }
    }
    EXPECT_EQ(dots, 12);
    canvas.DrawFocusRect(QRect(QPoint(INT_MIN, INT_MIN), QPoint(INT_MAX, INT_MAX)));  // its edge is far out
    EXPECT_EQ(count(text), dots);
}

TEST_F(DrawingCanvasTest, BrushCopyPutsTheBrushInThePlaceOfAColour) {
    QImage picture(4, 2, QImage::Format_RGB32);
    picture.fill(ToQColor(red));
    picture.setPixelColor(1, 0, ToQColor(0x00FF00));
    picture.setPixelColor(2, 1, ToQColor(0x00FF00));
    canvas.SetBrush(QBrush(ToQColor(blue)));
    canvas.BrushCopy(QRect(5, 6, 4, 2), picture, picture.rect(), 0x00FF00);
    EXPECT_EQ(count(red), 6);
    EXPECT_EQ(count(blue), 2);
    EXPECT_EQ(at(6, 6), blue);
    EXPECT_EQ(at(7, 7), blue);
    // a part, stretched to twice its size
    canvas.BrushCopy(QRect(10, 10, 4, 4), picture, QRect(1, 0, 2, 2), 0x00FF00);
    EXPECT_EQ(at(10, 10), blue);
    EXPECT_EQ(at(11, 11), blue);
    EXPECT_EQ(at(12, 11), red);
    EXPECT_EQ(at(12, 12), blue);
    EXPECT_EQ(at(10, 13), red);
    EXPECT_EQ(at(14, 10), grey);
    // beyond the image there is nothing to copy; and an enormous place costs what is seen of it
    canvas.BrushCopy(QRect(0, 15, 4, 2), picture, QRect(100, 100, 4, 2), 0x00FF00);
    EXPECT_EQ(at(1, 15), grey);
    canvas.BrushCopy(QRect(QPoint(-100000000, 19), QPoint(100000000, 19)), picture, QRect(0, 0, 1, 1), 0x00FF00);
    EXPECT_EQ(at(19, 19), red);
}

TEST_F(DrawingCanvasTest, TheCopyModeIsThatOfCopies) {
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(ToQColor(0x0F0F0F));
    canvas.SetCopyMode(QPainter::CompositionMode_Plus);
    EXPECT_EQ(canvas.GetCopyMode(), QPainter::CompositionMode_Plus);
    canvas.BrushCopy(QRect(0, 0, 2, 2), picture, picture.rect(), red);
    EXPECT_EQ(at(0, 0), 0x8F8F8FU);
    canvas.SetPixel(5, 5, 0x010203);
    EXPECT_EQ(at(5, 5), 0x010203U);
}

TEST_F(DrawingCanvasTest, TextsArePlacedByTheirFlags) {
    image = QImage(200, 200, QImage::Format_RGB32);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(20);
    font.setStyleStrategy(QFont::NoAntialias);
    canvas.SetFont(font);
    EXPECT_EQ(canvas.GetFont(), font);
    canvas.SetPen(QPen(ToQColor(red)));
    const QString text = QStringLiteral("H");
    const QSize extent = QFontMetrics(font).size(0, text);
    EXPECT_EQ(canvas.TextExtent(text), extent);
    EXPECT_EQ(canvas.TextWidth(text), extent.width());
    EXPECT_EQ(canvas.TextHeight(text), extent.height());
    EXPECT_EQ(canvas.TextExtent(QStringLiteral("H\nH")).height(),
              QFontMetrics(font).size(0, QStringLiteral("H\nH")).height());
    const auto drawn = [&](int flags) {
        image.fill(ToQColor(grey));
        canvas.SetTextFlags(flags);
        canvas.TextOut(100, 100, text);
        EXPECT_GT(count(red), 20);
        EXPECT_EQ(count(red) + count(grey), 200 * 200) << "no background";
        return touched();
    };
    const QRect upperLeft = drawn(0);
    EXPECT_TRUE(QRect(QPoint(100, 100), extent).contains(upperLeft));
    EXPECT_EQ(drawn(Qt::AlignRight), upperLeft.translated(-extent.width(), 0));
    EXPECT_EQ(drawn(Qt::AlignHCenter), upperLeft.translated(-extent.width() / 2, 0));
    EXPECT_EQ(drawn(Qt::AlignBottom), upperLeft.translated(0, -extent.height()));
    EXPECT_EQ(drawn(Qt::AlignVCenter), upperLeft.translated(0, -extent.height() / 2));
    EXPECT_EQ(drawn(Qt::AlignBaseline).bottom(), 99) << "an H stands on its base line";
    canvas.SetTextFlags(0);
    image.fill(ToQColor(grey));
    canvas.TextOut(100, 100, QString());
    EXPECT_EQ(count(grey), 200 * 200);
    canvas.TextRect(QRect(100, 100, 200, upperLeft.center().y() - 100), 100, 100, text);
    EXPECT_EQ(touched().top(), upperLeft.top());
    EXPECT_EQ(touched().bottom(), upperLeft.center().y() - 1) << "cut off";
}

TEST_F(DrawingCanvasTest, NumbersFarOutAreHarmless) {
    for (const int far : {INT_MIN, INT_MAX}) {
        const std::array<QPoint, 4> points{QPoint(far, far), QPoint(3, far), QPoint(far, 3), QPoint(far / -2, 5)};
        canvas.MoveTo(far, far);
        canvas.LineTo(far, far / -2);
        EXPECT_EQ(canvas.GetPenPos(), QPoint(far, far / -2));
        canvas.Polygon(points);
        canvas.Polyline(points);
        canvas.PolyBezier(points);
        canvas.Ellipse(far, far, 3, 3);
        canvas.Rectangle(far, 1, 3, far);
        canvas.Arc(far, far, 5, 5, far, 0, 0, far);
        canvas.Chord(0, 0, far, far, 0, far, far, 0);
        canvas.FillRect(QRect(QPoint(far, far), QPoint(1, 1)));
        canvas.TextOut(far, far, QStringLiteral("x"));
        canvas.TextRect(QRect(QPoint(far, 0), QPoint(0, far)), 0, 0, QStringLiteral("x"));
    }
    image.fill(ToQColor(grey));
    canvas.MoveTo(-1000000000, 7);
    canvas.LineTo(1000000000, 7);
    EXPECT_EQ(count(black), 20);
}

TEST_F(DrawingCanvasTest, NothingIsDrawnWhereAnotherPainterIsAtWork) {
    {
        QPainter other(&image);
        canvas.FillRect(QRect(0, 0, 20, 20));
    }
    EXPECT_EQ(count(grey), 400);
    canvas.FillRect(QRect(0, 0, 20, 20));
    EXPECT_EQ(count(white), 400);
}

TEST_F(DrawingCanvasTest, WithoutADeviceNothingHappens) {
    canvas.SetHandle(nullptr);
    EXPECT_EQ(canvas.GetClipRect(), QRect());
    canvas.FillRect(QRect(0, 0, 20, 20));
    canvas.DrawFocusRect(QRect(0, 0, 20, 20));
    canvas.BrushCopy(QRect(0, 0, 20, 20), image, image.rect(), red);
    EXPECT_EQ(canvas.GetPixel(1, 1), black);
    canvas.LineTo(4, 5);
    EXPECT_EQ(canvas.GetPenPos(), QPoint(4, 5));
    EXPECT_EQ(count(grey), 400);
    QImage none;
    canvas.SetHandle(&none);
    canvas.FillRect(QRect(0, 0, 20, 20));
    EXPECT_EQ(canvas.GetPixel(0, 0), black);
}

TEST_F(DrawingCanvasTest, CoordinatesAreDeviceIndependent) {
    image.setDevicePixelRatio(2);
    EXPECT_EQ(canvas.GetClipRect(), QRect(0, 0, 10, 10));
    canvas.SetPixel(3, 4, red);
    EXPECT_EQ(touched(), QRect(6, 8, 2, 2));
    EXPECT_EQ(canvas.GetPixel(3, 4), red);
    EXPECT_EQ(canvas.GetPixel(4, 4), grey);
    EXPECT_EQ(canvas.GetPixel(10, 4), black);
}
