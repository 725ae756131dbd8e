#include <zk/_zkdevice/canvas2d.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/ogllight.h>
#include <zk/_zkoglcanvas/pixeldrawing.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/controlcanvas.h>
#include <zk/host/drawinglayer.h>

#include <algorithm>
#include <array>
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
    if (!layer_)
        return;
    layer_->Shown();
    QPoint corner;
    const QImage pixels = layer_->Pixels(corner);
    if (!pixels.isNull())
        PixelDrawing(surface_->PixelSize()).Over(pixels, corner);
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
