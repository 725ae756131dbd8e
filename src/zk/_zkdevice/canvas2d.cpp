#include "canvas2d.h"

#include <vector>

namespace zk {

TZkCanvas::TZkCanvas(QObject* owner) : TZKPrimdevice(owner) {}

TZkCanvas::~TZkCanvas() {
    AnnounceRemoval();
}

QRect TZkCanvas::GetClipRect() {
    return canvas_ ? canvas_->GetClipRect() : QRect();
}
QPoint TZkCanvas::GetPenPos() {
    return canvas_ ? canvas_->GetPenPos() : QPoint();
}
TColor TZkCanvas::GetPixel(int X, int Y) {
    return canvas_ ? canvas_->GetPixel(X, Y) : TColor(0);
}
void TZkCanvas::SetBrush(const QBrush& Value) {
    if (canvas_)
        canvas_->SetBrush(Value);
}
void TZkCanvas::SetFont(const QFont& Value) {
    if (canvas_)
        canvas_->SetFont(Value);
}
void TZkCanvas::SetHandle(QPaintDevice* Value) {
    if (canvas_)
        canvas_->SetHandle(Value);
}
void TZkCanvas::SetPen(const QPen& Value) {
    if (canvas_)
        canvas_->SetPen(Value);
}
void TZkCanvas::SetPenPos(const QPoint& Value) {
    if (canvas_)
        canvas_->SetPenPos(Value);
}
void TZkCanvas::SetPixel(int X, int Y, TColor Value) {
    if (canvas_)
        canvas_->SetPixel(X, Y, Value);
}
QBrush TZkCanvas::GetBrush() {
    return canvas_ ? canvas_->GetBrush() : QBrush();
}
QPainter::CompositionMode TZkCanvas::GetCopyMode() {
    return canvas_ ? canvas_->GetCopyMode() : QPainter::CompositionMode_SourceOver;
}
QFont TZkCanvas::GetFont() {
    return canvas_ ? canvas_->GetFont() : QFont();
}
QPen TZkCanvas::GetPen() {
    return canvas_ ? canvas_->GetPen() : QPen();
}
int TZkCanvas::GetTextFlags() {
    return canvas_ ? canvas_->GetTextFlags() : 0;
}
QPaintDevice* TZkCanvas::GetHandle() {
    return canvas_ ? canvas_->GetHandle() : nullptr;
}
void TZkCanvas::SetCopyMode(QPainter::CompositionMode Value) {
    if (canvas_)
        canvas_->SetCopyMode(Value);
}
void TZkCanvas::SetTextFlags(int Value) {
    if (canvas_)
        canvas_->SetTextFlags(Value);
}
void TZkCanvas::Arc(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4) {
    if (canvas_)
        canvas_->Arc(X1, Y1, X2, Y2, X3, Y3, X4, Y4);
}
void TZkCanvas::BrushCopy(const QRect& Dest, const QImage& Image, const QRect& Source, TColor Color) {
    if (canvas_)
        canvas_->BrushCopy(Dest, Image, Source, Color);
}
void TZkCanvas::Chord(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4) {
    if (canvas_)
        canvas_->Chord(X1, Y1, X2, Y2, X3, Y3, X4, Y4);
}
void TZkCanvas::DrawFocusRect(const QRect& Rect) {
    if (canvas_)
        canvas_->DrawFocusRect(Rect);
}
void TZkCanvas::Ellipse(int X1, int Y1, int X2, int Y2) {
    if (canvas_)
        canvas_->Ellipse(X1, Y1, X2, Y2);
}
void TZkCanvas::FillRect(const QRect& Rect) {
    if (canvas_)
        canvas_->FillRect(Rect);
}
void TZkCanvas::LineTo(int X, int Y) {
    if (canvas_)
        canvas_->LineTo(X, Y);
}
void TZkCanvas::MoveTo(int X, int Y) {
    if (canvas_)
        canvas_->MoveTo(X, Y);
}
void TZkCanvas::Polygon(std::span<const QPoint> Points) {
    if (canvas_)
        canvas_->Polygon(Points);
}
void TZkCanvas::Polyline(std::span<const QPoint> Points) {
    if (canvas_)
        canvas_->Polyline(Points);
}
void TZkCanvas::PolyPolyline(const TlistOFXYiArray& List) {
    if (!canvas_)
        return;
    std::vector<QPoint> points;
    std::vector<int> counts;
    for (int i = 0; i < List.Count(); ++i) {
        const TXYIARRAY* line = List[i];
        counts.push_back(line ? int(line->Items().size()) : 0);
        if (!line)
            continue;
        for (const TXYI& point : line->Items())
            points.emplace_back(point.x, point.y);
    }
    canvas_->PolyPolyline(points, counts);
}
void TZkCanvas::PolyBezier(std::span<const QPoint> Points) {
    if (canvas_)
        canvas_->PolyBezier(Points);
}
QSize TZkCanvas::TextExtent(const QString& Text) {
    return canvas_ ? canvas_->TextExtent(Text) : QSize(0, 0);
}
int TZkCanvas::TextHeight(const QString& Text) {
    return canvas_ ? canvas_->TextHeight(Text) : 0;
}
void TZkCanvas::TextOut(int X, int Y, const QString& Text) {
    if (canvas_)
        canvas_->TextOut(X, Y, Text);
}
void TZkCanvas::TextRect(const QRect& Rect, int X, int Y, const QString& Text) {
    if (canvas_)
        canvas_->TextRect(Rect, X, Y, Text);
}
int TZkCanvas::TextWidth(const QString& Text) {
    return canvas_ ? canvas_->TextWidth(Text) : 0;
}

}  // namespace zk
