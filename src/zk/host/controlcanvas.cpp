#include "controlcanvas.h"

#include <zk/host/drawinglayer.h>

namespace zk {

ControlCanvas::ControlCanvas(QObject* parent, QWidget* control) : DrawingCanvas(parent) {
    SetControl(control);
}

ControlCanvas::~ControlCanvas() = default;

void ControlCanvas::SetControl(QWidget* control) {
    control_ = control;
    DrawingLayer::Of(control);  // it must know of every paint event, also of those that begin before the first drawing
}

QRect ControlCanvas::GetClipRect() const {
    if (GetHandle())
        return DrawingCanvas::GetClipRect();
    const DrawingLayer* layer = DrawingLayer::Of(control_);
    return layer ? layer->ClipRect() : QRect();
}

TColor ControlCanvas::GetPixel(int X, int Y) const {
    if (GetHandle())
        return DrawingCanvas::GetPixel(X, Y);
    DrawingLayer* layer = DrawingLayer::Of(control_);
    return layer ? FromQColor(layer->PixelAt({X, Y})) : 0;
}

void ControlCanvas::Draw(const QRect& area, const std::function<void(QPainter&)>& paint) {
    if (GetHandle())
        return DrawingCanvas::Draw(area, paint);
    if (DrawingLayer* layer = DrawingLayer::Of(control_))
        layer->Draw(area, [&](QPainter& painter) {
            Equip(painter);
            paint(painter);
        });
}

void ControlCanvas::Flush() {
    if (DrawingLayer* layer = DrawingLayer::Find(control_))
        layer->Flush();
}

}  // namespace zk
