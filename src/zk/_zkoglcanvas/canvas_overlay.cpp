#include <zk/_zkdevice/canvas2d.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/ogllight.h>
#include <zk/_zkoglcanvas/pixeldrawing.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/controlcanvas.h>
#include <zk/host/drawinglayer.h>

#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace zk {

namespace {

constexpr int farOut = 1 << 24;  // no window reaches there

}  // namespace

TZkCanvas* TZkOglCanvas::GetZKCanvas() {
    if (!winControl_)
        return nullptr;
    if (!zkCanvas_) {
        zkCanvas_ = new TZkCanvas(this);
        SetPRimdevice(zkCanvas_);
    }
    if (!controlCanvas_) {
        controlCanvas_ = new ControlCanvas(this, winControl_);
        zkCanvas_->SetCanvas(controlCanvas_);
    }
    return zkCanvas_;
}

void TZkOglCanvas::DrawOrg() {
    TZkCanvas* const canvas = context_ ? GetZKCanvas() : nullptr;
    if (!canvas)
        return;
    const QPen pen = canvas->GetPen();
    QPen white = pen;
    white.setColor(Qt::white);
    canvas->SetPen(white);
    const TXYI origin = WtoPixel(Nullxyz);
    const std::array<std::pair<TXYZ, const char*>, 3> axes{{{{1, 0, 0}, "x+"}, {{0, 1, 0}, "y+"}, {{0, 0, 1}, "z+"}}};
    for (const auto& [tip, label] : axes) {
        const TXYI end = WtoPixel(tip);
        canvas->MoveTo(origin.x, origin.y);
        canvas->LineTo(end.x, end.y);
        canvas->TextOut(end.x, end.y, QLatin1String(label));
    }
    canvas->SetPen(pen);
}

void TZkOglCanvas::DrawLights() {
    TZkCanvas* const canvas = context_ ? GetZKCanvas() : nullptr;
    DrawingCanvas* const paper = canvas ? canvas->GetCanvas() : nullptr;
    if (!paper)
        return;
    for (Tlight* light : lightList()) {
        const auto* shining = qobject_cast<TZKOglLight*>(light);
        if (!shining || !shining->GetEnabled())
            continue;
        const TXYI place = WtoPixel(shining->GetPosition());
        const int x = std::clamp(place.x, -farOut, farOut);
        const int y = std::clamp(place.y, -farOut, farOut);
        paper->Rectangle(x - 4, y - 4, x + 4, y + 4);
    }
}

// --- the layer above the picture ------------------------------------------------------------------------------------

void TZkOglCanvas::useLayer(DrawingLayer* layer) {
    if (layer_ && layer_ != layer) {
        disconnect(layer_, nullptr, this, nullptr);
        if (layer_->PictureMaker() == this) {
            layer_->Wipe();
            layer_->SetPicture(nullptr, {});
        }
    }
    layer_ = layer;
    if (layer_)
        connect(layer_, &DrawingLayer::Show, this, &TZkOglCanvas::showLayer, Qt::UniqueConnection);
}

// A new picture begins, and what has been drawn over the old one goes with it.
void TZkOglCanvas::beginLayer() {
    if (!layer_)
        return;
    layer_->Wipe();
    layer_->SetPicture(this, [this](const QPoint& pixel) { return pictureAt(pixel); });
}

// Several canvases may share the control; the one whose picture is on the screen shows what is drawn over it.
void TZkOglCanvas::showLayer() {
    const bool mine = layer_ && layer_->PictureMaker() == this;
    if (!mine || !context_ || IsPainting() || !surface_->IsExposed() || !context_->HasPicture())
        return;
    context_->PresentAgain();
}

void TZkOglCanvas::drawLayer() {
    if (layer_) {
        layer_->Shown();
        QPoint corner;
        const QImage pixels = layer_->Pixels(corner);
        if (!pixels.isNull())
            PixelDrawing(surface_->PixelSize()).Over(pixels, corner);
    }
    if (focusPlace_)
        drawFocusFrame();
}

// --- the frame around the shape that has the focus ------------------------------------------------------------------

void TZkOglCanvas::SetFocusFrame(std::int32_t hitObject, const std::optional<QRectF>& place) {
    const bool isWanted = hitObject != HitTarget::NoHit;
    if (hitObject == focusFrame_ && isWanted == focusPlace_.has_value())
        return;
    focusFrame_ = hitObject;
    focusPlace_ = place;
    if (!context_ || IsPainting() || selecting_)
        return;  // the next picture shows it
    const QPointer<TZkOglCanvas> self = this;
    if (isWanted && !place) {
        for (const THitPlace& seen : Places()) {
            if (seen.HitObject == hitObject && self)
                focusPlace_ = seen.Place;
        }
    }
    if (self && context_ && surface_->IsExposed() && context_->HasPicture())
        context_->PresentAgain();
}

// Between a picture and its being shown.
void TZkOglCanvas::findFocusFrame() {
    focusPlace_.reset();
    if (!HitTarget::Of(focusFrame_)) {
        focusFrame_ = HitTarget::NoHit;
        return;
    }
    const QPointer<TZkOglCanvas> self = this;
    for (const THitPlace& place : findPlaces([this] { playScenes(); })) {
        if (self && place.HitObject == focusFrame_)
            focusPlace_ = place.Place;
    }
}

// Black between two lines of white: it is seen on every ground.
void TZkOglCanvas::drawFocusFrame() {
    const double ratio = surface_->PixelRatio();
    const QRectF place = focusPlace_->adjusted(-3, -3, 3, 3);
    const QRect around =
        QRectF(place.topLeft() * ratio, place.size() * ratio).toRect() & QRect(QPoint(0, 0), surface_->PixelSize());
    const double width = std::max(1.0, std::round(ratio));
    if (around.width() < 6 * width || around.height() < 6 * width)
        return;
    QImage frame(around.size(), QImage::Format_RGBA8888_Premultiplied);
    if (frame.isNull())
        return;
    frame.fill(Qt::transparent);
    {
        QPainter painter(&frame);
        const QRectF middle = QRectF(frame.rect()).adjusted(1.5 * width, 1.5 * width, -1.5 * width, -1.5 * width);
        const auto line = [&painter, &middle](const QColor& color, double thickness) {
            painter.setPen(QPen(color, thickness, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
            painter.drawRect(middle);
        };
        line(Qt::white, 3 * width);
        line(Qt::black, width);
    }
    PixelDrawing(surface_->PixelSize()).Over(frame, around.topLeft());
}

QColor TZkOglCanvas::pictureAt(const QPoint& pixel) {
    if (!CheckCurrent())
        return Qt::black;
    if (!IsPainting())
        context_->BringBack();
    const double ratio = surface_->PixelRatio();
    std::array<GLubyte, 4> color{};
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glPixelStorei(GL_PACK_SKIP_ROWS, 0);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
    glReadPixels(int(pixel.x() * ratio), surface_->PixelSize().height() - 1 - int(pixel.y() * ratio), 1, 1, GL_RGBA,
                 GL_UNSIGNED_BYTE, color.data());
    glPopClientAttrib();
    return QColor(color[0], color[1], color[2]);
}

}  // namespace zk
