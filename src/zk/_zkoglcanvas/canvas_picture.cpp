#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/control.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/matrixmode.h>
#include <zk/_zkoglcanvas/offscreenbuffer.h>
#include <zk/_zkoglcanvas/rendercontext.h>

#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cmath>

namespace zk {

namespace {

// A part at a time, so that a picture may be larger than what drivers draw at once, and takes little of their memory.
constexpr QSize largestPart(2048, 2048);

/// Multiplies OpenGL's projection from the left by one that brings a part of a square picture, given by its lower left
/// corner and its size, to fill the viewport. `side` is that of the square, in the same pixels.
void lookAtPart(const SavedProjection& projection, const QPointF& corner, const QSizeF& size, double side) {
    glLoadIdentity();
    glTranslated((side - 2 * corner.x()) / size.width() - 1, (side - 2 * corner.y()) / size.height() - 1, 0);
    glScaled(side / size.width(), side / size.height(), 1);
    glMultMatrixd(projection.Matrix().data());
}

}  // namespace

QImage TZkOglCanvas::Picture(const QSize& size, double pixelRatio) {
    if (size.isEmpty() || !(pixelRatio > 0) || !std::isfinite(pixelRatio) || IsPainting() || selecting_ ||
        (ComponentState() & csDestroying))
        return {};
    if (context_)
        return pictureOfContext(size, pixelRatio);

    // Without a control the canvas draws into one that is never shown.
    if (winControl_)
        return {};
    const QPointer<TZkOglCanvas> self = this;
    const int width = GetWidth();
    const int height = GetHeight();
    TZKOglControl unseen;
    QImage picture;
    const auto draw = [&] {
        if (context_)
            picture = pictureOfContext(size, pixelRatio);
    };
    const auto leave = [&] {
        if (winControl_ == &unseen)
            SetWinControl(nullptr);
    };
    const bool alive = InBracket(
        *this, [&] { SetWinControl(&unseen); }, draw, leave, [&] { SetWidth(width); }, [&] { SetHeight(height); });
    return alive ? picture : QImage();
}

QImage TZkOglCanvas::pictureOfContext(const QSize& size, double pixelRatio) {
    QImage picture(size, QImage::Format_RGB32);
    if (picture.isNull() || !CheckCurrent())
        return {};
    const QPointer<TZkOglCanvas> self = this;
    const int width = GetWidth();
    const int height = GetHeight();
    const Tmatrix view = GetOglModelMatrix();
    const auto length = [pixelRatio](int pixels) { return int(std::clamp(std::round(pixels / pixelRatio), 1.0, 1e6)); };
    // False if the canvas or its context has gone meanwhile, as after a surplus close each of these repaints.
    const auto setSize = [&](int newWidth, int newHeight) {
        if (self)
            SetWidth(newWidth);
        if (self)
            SetHeight(newHeight);
        if (self && !CheckCurrent())
            SetChanging(false);
        return self && context_;
    };
    SetChanging(true);  // nothing of this is to be seen in the window
    if (!setSize(length(size.width()), length(size.height())))
        return {};
    deviceStates_.Include(DsPainting);
    const bool drawn = drawParts(picture, pixelRatio);
    if (!self)
        return {};
    deviceStates_.Exclude(DsPainting);
    if (!setSize(width, height))
        return {};
    SetOglModelMatrix(view);  // to the last digit
    deviceStates_.Include(DsPainting);
    SetChanging(false);
    deviceStates_.Exclude(DsPainting);
    return drawn ? picture : QImage();
}

// False where the driver gives no place to draw into, or the context has gone.
bool TZkOglCanvas::drawParts(QImage& picture, double pixelRatio) {
    const QPointer<TZkOglCanvas> self = this;
    const QSize part = picture.size().boundedTo(largestPart).boundedTo(OffscreenBuffer::LargestSize());
    const OffscreenBuffer buffer(part);
    if (!buffer.IsComplete())
        return false;

    glPushAttrib(GL_VIEWPORT_BIT | GL_SCISSOR_BIT);
    glDisable(GL_SCISSOR_TEST);
    const SavedProjection projection;
    const auto restore = qScopeGuard([&] {
        if (!self || !CheckCurrent())
            return;
        projection.Restore();
        glPopAttrib();
    });

    // The viewport of the whole picture: the square around it, as `SetStdViewport` places it.
    const int longer = std::max(GetWidth(), GetHeight());
    const double side = longer * pixelRatio;
    const double left = (GetWidth() / 2 - longer / 2) * pixelRatio;
    const double lower = (GetHeight() / 2 - longer / 2) * pixelRatio;
    for (int y = 0; y < picture.height(); y += part.height()) {
        for (int x = 0; x < picture.width(); x += part.width()) {
            const QSize now = part.boundedTo(QSize(picture.width() - x, picture.height() - y));
            {
                const MatrixModeScope mode(GL_PROJECTION);
                lookAtPart(projection, {x - left, picture.height() - y - now.height() - lower}, now, side);
            }
            glViewport(0, 0, now.width(), now.height());
            clear();
            playScenes();
            if (!self || !CheckCurrent())
                return false;
            buffer.CopyTo(picture, {x, y}, now);
        }
    }
    return true;
}

}  // namespace zk
