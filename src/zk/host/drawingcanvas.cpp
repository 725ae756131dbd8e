#include "drawingcanvas.h"

#include <QFontMetrics>
#include <QImage>
#include <QPaintDevice>
#include <QPainterPath>
#include <QPolygon>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace zk {

namespace {

// No surface is larger, and sums of such numbers stay within an int.
constexpr int farOut = 1 << 24;

int clamped(int value) {
    return std::clamp(value, -farOut, farOut);
}

QPoint clamped(const QPoint& point) {
    return {clamped(point.x()), clamped(point.y())};
}

QRect clamped(const QRect& rect) {
    const QPoint corner = clamped(rect.topLeft());
    return {corner, QPoint(clamped(rect.right()), clamped(rect.bottom()))};
}

// The pixels of a box, whose right and bottom are not included.
QRect pixelsOf(int x1, int y1, int x2, int y2) {
    const QPoint a = clamped(QPoint(x1, y1));
    const QPoint b = clamped(QPoint(x2, y2));
    const QPoint corner(std::min(a.x(), b.x()), std::min(a.y(), b.y()));
    return {corner, QSize(std::abs(a.x() - b.x()), std::abs(a.y() - b.y()))};
}

// What Qt's outlines are given to fill those pixels: they run through the middle of the pixels of their edge.
QRect outlineOf(const QRect& pixels, const QPen& pen) {
    return pen.style() == Qt::NoPen ? pixels : pixels.adjusted(0, 0, -1, -1);
}

// QPainter's sixteenths of a degree, counter-clockwise from the right, for the ray from the middle of an ellipse's
// outline through a point. They are those of the circle that the ellipse is stretched from.
int angleOf(const QRect& outline, const QPoint& through) {
    const double x = (through.x() - (outline.left() + outline.width() / 2.0)) / std::max(outline.width(), 1);
    const double y = (through.y() - (outline.top() + outline.height() / 2.0)) / std::max(outline.height(), 1);
    return int(std::lround(std::atan2(-y, x) / std::numbers::pi * 180 * 16));
}

}  // namespace

DrawingCanvas::DrawingCanvas(QObject* parent) : QObject(parent) {}

DrawingCanvas::~DrawingCanvas() = default;

// --- state ----------------------------------------------------------------------------------------------------------

QPaintDevice* DrawingCanvas::GetHandle() const {
    return handle_;
}
void DrawingCanvas::SetHandle(QPaintDevice* Value) {
    handle_ = Value;
}

QRect DrawingCanvas::GetClipRect() const {
    if (!handle_ || handle_->width() < 1 || handle_->height() < 1)
        return {};
    const double ratio = handle_->devicePixelRatioF();
    return {0, 0, int(std::ceil(handle_->width() / ratio)), int(std::ceil(handle_->height() / ratio))};
}

QPoint DrawingCanvas::GetPenPos() const {
    return penPos_;
}
void DrawingCanvas::SetPenPos(const QPoint& Value) {
    penPos_ = Value;
}
QPen DrawingCanvas::GetPen() const {
    return pen_;
}
void DrawingCanvas::SetPen(const QPen& Value) {
    pen_ = Value;
}
QBrush DrawingCanvas::GetBrush() const {
    return brush_;
}
void DrawingCanvas::SetBrush(const QBrush& Value) {
    brush_ = Value;
}
QFont DrawingCanvas::GetFont() const {
    return font_;
}
void DrawingCanvas::SetFont(const QFont& Value) {
    font_ = Value;
}
QPainter::CompositionMode DrawingCanvas::GetCopyMode() const {
    return copyMode_;
}
void DrawingCanvas::SetCopyMode(QPainter::CompositionMode Value) {
    copyMode_ = Value;
}
int DrawingCanvas::GetTextFlags() const {
    return textFlags_;
}
void DrawingCanvas::SetTextFlags(int Value) {
    textFlags_ = Value;
}

// --- the painter ----------------------------------------------------------------------------------------------------

void DrawingCanvas::Equip(QPainter& painter) const {
    painter.setPen(pen_);
    painter.setBrush(brush_);
    painter.setFont(font_);
}

void DrawingCanvas::Draw(const QRect& area, const std::function<void(QPainter&)>& paint) {
    const QRect reached = area & GetClipRect();
    if (!handle_ || handle_->paintingActive() || reached.isEmpty())
        return;
    QPainter painter(handle_);
    if (!painter.isActive())
        return;
    painter.setClipRect(reached);
    Equip(painter);
    paint(painter);
}

// What strokes through the points can touch, mitred corners included.
QRect DrawingCanvas::reach(std::span<const QPoint> points) const {
    QRect box;
    for (const QPoint& point : points)
        box |= QRect(clamped(point), QSize(1, 1));
    const int margin = 2 + int(std::ceil(std::min(pen_.widthF() * std::max(pen_.miterLimit(), 1.0), double(farOut))));
    return box.adjusted(-margin, -margin, margin, margin);
}

// --- pixels ---------------------------------------------------------------------------------------------------------

TColor DrawingCanvas::GetPixel(int X, int Y) const {
    const auto* image = dynamic_cast<const QImage*>(handle_);
    if (!image)
        return 0;
    const double ratio = image->devicePixelRatio();
    const QPointF at(std::floor(X * ratio), std::floor(Y * ratio));
    if (at.x() < 0 || at.y() < 0 || at.x() >= image->width() || at.y() >= image->height())
        return 0;
    return FromQColor(image->pixelColor(int(at.x()), int(at.y())));
}

void DrawingCanvas::SetPixel(int X, int Y, TColor Value) {
    const QRect pixel(clamped(QPoint(X, Y)), QSize(1, 1));
    Draw(pixel, [&](QPainter& painter) { painter.fillRect(pixel, ToQColor(Value)); });
}

// --- lines ----------------------------------------------------------------------------------------------------------

void DrawingCanvas::MoveTo(int X, int Y) {
    penPos_ = {X, Y};
}

void DrawingCanvas::LineTo(int X, int Y) {
    const std::array<QPoint, 2> ends{clamped(penPos_), clamped(QPoint(X, Y))};
    Draw(reach(ends), [&](QPainter& painter) { painter.drawLine(ends[0], ends[1]); });
    penPos_ = {X, Y};
}

void DrawingCanvas::Polyline(std::span<const QPoint> Points) {
    const int count = int(Points.size());
    PolyPolyline(Points, std::span(&count, 1));
}

void DrawingCanvas::PolyPolyline(std::span<const QPoint> Points, std::span<const int> Counts) {
    QPainterPath path;
    for (const int count : Counts) {
        const auto line = Points.first(std::min(Points.size(), std::size_t(std::max(count, 0))));
        Points = Points.subspan(line.size());
        if (line.size() < 2)
            continue;
        path.moveTo(clamped(line[0]));
        for (const QPoint& point : line.subspan(1))
            path.lineTo(clamped(point));
    }
    if (path.isEmpty())
        return;
    const QRect box = path.controlPointRect().toAlignedRect();
    const std::array<QPoint, 2> corners{box.topLeft(), box.bottomRight()};
    Draw(reach(corners), [&](QPainter& painter) {
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(path);
    });
}

void DrawingCanvas::PolyBezier(std::span<const QPoint> Points) {
    if (Points.size() < 4)
        return;
    QPainterPath path(clamped(Points[0]));
    for (std::size_t i = 1; i + 2 < Points.size(); i += 3)
        path.cubicTo(clamped(Points[i]), clamped(Points[i + 1]), clamped(Points[i + 2]));
    Draw(reach(Points), [&](QPainter& painter) {
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(path);
    });
}

// --- areas ----------------------------------------------------------------------------------------------------------

void DrawingCanvas::Polygon(std::span<const QPoint> Points) {
    QPolygon polygon;
    for (const QPoint& point : Points)
        polygon << clamped(point);
    if (!polygon.isEmpty())
        Draw(reach(Points), [&](QPainter& painter) { painter.drawPolygon(polygon); });
}

void DrawingCanvas::Rectangle(int X1, int Y1, int X2, int Y2) {
    const QRect pixels = pixelsOf(X1, Y1, X2, Y2);
    const std::array<QPoint, 2> corners{pixels.topLeft(), pixels.bottomRight()};
    if (!pixels.isEmpty())
        Draw(reach(corners), [&](QPainter& painter) { painter.drawRect(outlineOf(pixels, pen_)); });
}

void DrawingCanvas::FillRect(const QRect& Rect) {
    const QRect pixels = clamped(Rect);
    Draw(pixels, [&](QPainter& painter) { painter.fillRect(pixels, brush_); });
}

void DrawingCanvas::Ellipse(int X1, int Y1, int X2, int Y2) {
    const QRect pixels = pixelsOf(X1, Y1, X2, Y2);
    const std::array<QPoint, 2> corners{pixels.topLeft(), pixels.bottomRight()};
    if (pixels.isEmpty())
        return;
    Draw(reach(corners), [&](QPainter& painter) {
        if (pixels.width() == 1 || pixels.height() == 1)
            painter.drawLine(pixels.topLeft(), pixels.bottomRight());
        else
            painter.drawEllipse(outlineOf(pixels, pen_));
    });
}

void DrawingCanvas::Arc(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4) {
    drawArc(pixelsOf(X1, Y1, X2, Y2), clamped(QPoint(X3, Y3)), clamped(QPoint(X4, Y4)), false);
}

void DrawingCanvas::Chord(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4) {
    drawArc(pixelsOf(X1, Y1, X2, Y2), clamped(QPoint(X3, Y3)), clamped(QPoint(X4, Y4)), true);
}

void DrawingCanvas::drawArc(const QRect& box, const QPoint& from, const QPoint& to, bool closed) {
    if (box.isEmpty())
        return;
    constexpr int wholeTurn = 360 * 16;
    const QRect outline = outlineOf(box, pen_);
    const int start = angleOf(outline, from);
    const int sweep = (angleOf(outline, to) - start + 2 * wholeTurn) % wholeTurn;
    const std::array<QPoint, 2> corners{box.topLeft(), box.bottomRight()};
    Draw(reach(corners), [&](QPainter& painter) {
        if (closed)
            painter.drawChord(outline, start, sweep == 0 ? wholeTurn : sweep);
        else
            painter.drawArc(outline, start, sweep == 0 ? wholeTurn : sweep);
    });
}

void DrawingCanvas::DrawFocusRect(const QRect& Rect) {
    const QRect edge = clamped(Rect);
    if (edge.isEmpty())
        return;
    const QRect seen = edge & GetClipRect();
    Draw(edge, [&](QPainter& painter) {
        painter.setPen(ToQColor(clWindowText));
        const auto point = [&painter](int x, int y) {
            if ((x + y) % 2 == 0)
                painter.drawPoint(x, y);
        };
        for (int x = seen.left(); x <= seen.right(); ++x) {
            point(x, edge.top());
            point(x, edge.bottom());
        }
        for (int y = seen.top(); y <= seen.bottom(); ++y) {
            point(edge.left(), y);
            point(edge.right(), y);
        }
    });
}

void DrawingCanvas::BrushCopy(const QRect& Dest, const QImage& Image, const QRect& Source, TColor Color) {
    const QRect dest = clamped(Dest);
    const QRect seen = dest & GetClipRect();
    const QRect source = clamped(Source);
    if (seen.isEmpty() || source.isEmpty())
        return;
    // The brush first, as it would fill the place, then every other pixel over it.
    QImage piece(seen.size(), QImage::Format_ARGB32);
    piece.fill(Qt::transparent);
    {
        QPainter brush(&piece);
        brush.setBrushOrigin(-seen.topLeft());
        brush.fillRect(piece.rect(), brush_);
    }
    const QColor replaced = ToQColor(Color);
    for (int y = 0; y < piece.height(); ++y) {
        const int fromY = source.top() + int(qint64(seen.top() + y - dest.top()) * source.height() / dest.height());
        for (int x = 0; x < piece.width(); ++x) {
            const int fromX =
                source.left() + int(qint64(seen.left() + x - dest.left()) * source.width() / dest.width());
            const QColor pixel = Image.valid(fromX, fromY) ? Image.pixelColor(fromX, fromY) : QColor(Qt::transparent);
            if (pixel.rgb() != replaced.rgb() || pixel.alpha() == 0)
                piece.setPixelColor(x, y, pixel);
        }
    }
    Draw(seen, [&](QPainter& painter) {
        painter.setCompositionMode(copyMode_);
        painter.drawImage(seen.topLeft(), piece);
    });
}

// --- texts ----------------------------------------------------------------------------------------------------------

QSize DrawingCanvas::TextExtent(const QString& Text) const {
    constexpr int noAlignment = ~int(Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask);
    return QFontMetrics(font_).size(textFlags_ & noAlignment, Text);
}
int DrawingCanvas::TextHeight(const QString& Text) const {
    return TextExtent(Text).height();
}
int DrawingCanvas::TextWidth(const QString& Text) const {
    return TextExtent(Text).width();
}

QRect DrawingCanvas::textBox(int x, int y, const QString& text) const {
    QRect box(clamped(QPoint(x, y)), TextExtent(text));
    if (textFlags_ & Qt::AlignRight)
        box.translate(-box.width(), 0);
    else if (textFlags_ & Qt::AlignHCenter)
        box.translate(-box.width() / 2, 0);
    if (textFlags_ & Qt::AlignBottom)
        box.translate(0, -box.height());
    else if (textFlags_ & Qt::AlignVCenter)
        box.translate(0, -box.height() / 2);
    else if (textFlags_ & Qt::AlignBaseline)
        box.translate(0, -QFontMetrics(font_).ascent());
    return box;
}

void DrawingCanvas::TextOut(int X, int Y, const QString& Text) {
    TextRect(QRect(QPoint(-farOut, -farOut), QPoint(farOut, farOut)), X, Y, Text);
}

void DrawingCanvas::TextRect(const QRect& Rect, int X, int Y, const QString& Text) {
    if (Text.isEmpty())
        return;
    const QRect box = textBox(X, Y, Text);
    const int overhang = box.height();  // of slanted and swash letters
    const QRect touched = box.adjusted(-overhang, -overhang, overhang, overhang) & clamped(Rect);
    const int flags = (textFlags_ & ~int(Qt::AlignVertical_Mask)) | Qt::AlignTop | Qt::TextDontClip;
    Draw(touched, [&](QPainter& painter) { painter.drawText(box, flags, Text); });
}

}  // namespace zk
