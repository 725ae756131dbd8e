#include "primdevice.h"

#include <string>

namespace zk {

namespace {

[[noreturn]] void abstractCall(const char* operation) {
    throw EAbstractError(std::string("Abstract error: TZKPrimdevice.") + operation);
}

}  // namespace

TZKPrimdevice::TZKPrimdevice(QObject* owner) : TComponent(owner) {}

TZKPrimdevice::~TZKPrimdevice() {
    AnnounceRemoval();
}

QRect TZKPrimdevice::GetClipRect() {
    abstractCall("GetClipRect");
}
QPoint TZKPrimdevice::GetPenPos() {
    abstractCall("GetPenPos");
}
TColor TZKPrimdevice::GetPixel(int, int) {
    abstractCall("GetPixel");
}
void TZKPrimdevice::SetBrush(const QBrush&) {
    abstractCall("SetBrush");
}
void TZKPrimdevice::SetFont(const QFont&) {
    abstractCall("SetFont");
}
void TZKPrimdevice::SetHandle(QPaintDevice*) {
    abstractCall("SetHandle");
}
void TZKPrimdevice::SetPen(const QPen&) {
    abstractCall("SetPen");
}
void TZKPrimdevice::SetPenPos(const QPoint&) {
    abstractCall("SetPenPos");
}
void TZKPrimdevice::SetPixel(int, int, TColor) {
    abstractCall("SetPixel");
}
QBrush TZKPrimdevice::GetBrush() {
    abstractCall("GetBrush");
}
QPainter::CompositionMode TZKPrimdevice::GetCopyMode() {
    abstractCall("GetCopyMode");
}
QFont TZKPrimdevice::GetFont() {
    abstractCall("GetFont");
}
QPen TZKPrimdevice::GetPen() {
    abstractCall("GetPen");
}
int TZKPrimdevice::GetTextFlags() {
    abstractCall("GetTextFlags");
}
QPaintDevice* TZKPrimdevice::GetHandle() {
    abstractCall("GetHandle");
}
void TZKPrimdevice::SetCopyMode(QPainter::CompositionMode) {
    abstractCall("SetCopyMode");
}
void TZKPrimdevice::SetTextFlags(int) {
    abstractCall("SetTextFlags");
}
void TZKPrimdevice::Arc(int, int, int, int, int, int, int, int) {
    abstractCall("Arc");
}
void TZKPrimdevice::BrushCopy(const QRect&, const QImage&, const QRect&, TColor) {
    abstractCall("BrushCopy");
}
void TZKPrimdevice::Chord(int, int, int, int, int, int, int, int) {
    abstractCall("Chord");
}
void TZKPrimdevice::DrawFocusRect(const QRect&) {
    abstractCall("DrawFocusRect");
}
void TZKPrimdevice::Ellipse(int, int, int, int) {
    abstractCall("Ellipse");
}
void TZKPrimdevice::FillRect(const QRect&) {
    abstractCall("FillRect");
}
void TZKPrimdevice::LineTo(int, int) {
    abstractCall("LineTo");
}
void TZKPrimdevice::MoveTo(int, int) {
    abstractCall("MoveTo");
}
void TZKPrimdevice::Polygon(std::span<const QPoint>) {
    abstractCall("Polygon");
}
void TZKPrimdevice::Polyline(std::span<const QPoint>) {
    abstractCall("Polyline");
}
void TZKPrimdevice::PolyPolyline(const TlistOFXYiArray&) {
    abstractCall("PolyPolyline");
}
void TZKPrimdevice::PolyBezier(std::span<const QPoint>) {
    abstractCall("PolyBezier");
}
QSize TZKPrimdevice::TextExtent(const QString&) {
    abstractCall("TextExtent");
}
int TZKPrimdevice::TextHeight(const QString&) {
    abstractCall("TextHeight");
}
void TZKPrimdevice::TextOut(int, int, const QString&) {
    abstractCall("TextOut");
}
void TZKPrimdevice::TextRect(const QRect&, int, int, const QString&) {
    abstractCall("TextRect");
}
int TZKPrimdevice::TextWidth(const QString&) {
    abstractCall("TextWidth");
}

}  // namespace zk
