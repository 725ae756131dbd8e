#include "glsurface.h"

#include <zk/host/waylandchild.h>
#include <zk/host/workarounds.h>

#include <QEvent>
#include <QLabel>
#include <QPlatformSurfaceEvent>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWindow>

namespace zk {

GlSurface* GlSurface::Find(const QWidget* control) {
    return control ? control->findChild<GlSurface*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

GlSurface* GlSurface::Of(QWidget* control) {
    if (!control)
        return nullptr;
    if (GlSurface* existing = Find(control))
        return existing;
    return new GlSurface(control);
}

GlSurface::GlSurface(QWidget* control) : QWidget(control), waylandChild_(WaylandChild::Of(*this)) {
    setObjectName(QStringLiteral("zkGlSurface"));
    setAttribute(Qt::WA_NativeWindow);
    setAttribute(Qt::WA_PaintOnScreen);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    control->installEventFilter(this);
    setGeometry(control->contentsRect());
    makeWindow();
    noticePixelRatio();
    if (waylandChild_)
        waylandChild_->Watch();
    lower();  // what the application puts onto the control stays above the picture
}

GlSurface::~GlSurface() {
    if (window_) {
        window_->removeEventFilter(this);
        Q_EMIT Lost();
    }
}

QSurfaceFormat GlSurface::RequestedFormat() {
    QSurfaceFormat format;
    if (IsOn(Workaround::DesktopOpenGl))
        format.setRenderableType(QSurfaceFormat::OpenGL);  // never OpenGL ES, which some window systems prefer
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setVersion(1, 1);  // drivers answer with the newest version that is compatible to it
    format.setRedBufferSize(8);
    format.setGreenBufferSize(8);
    format.setBlueBufferSize(8);
    format.setAlphaBufferSize(0);
    format.setDepthBufferSize(32);
    format.setStencilBufferSize(0);
    format.setSamples(0);
    format.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
    format.setSwapInterval(0);  // two swaps a repaint must not wait for two frames of the display
    return format;
}

// A widget's native window is made for raster painting. Its surface type can be changed only before the platform's
// window exists, so that one is made anew; later changes of the window (see `event`) come here again.
void GlSurface::makeWindow() {
    if (making_)
        return;
    making_ = true;
    winId();
    QWindow* window = windowHandle();
    if (window && window != window_) {
        if (window_)
            window_->removeEventFilter(this);
        window_ = window;
        if (window->surfaceType() != QSurface::OpenGLSurface && IsOn(Workaround::SurfaceType)) {
            const bool visible = window->isVisible();
            window->setSurfaceType(QSurface::OpenGLSurface);
            window->setFormat(RequestedFormat());
            window->destroy();
            window->create();
            if (visible)
                window->setVisible(true);
        }
        window->installEventFilter(this);
        if (window->handle())
            Q_EMIT Restored();
    }
    making_ = false;
}

QWindow* GlSurface::Window() const {
    return window_ && window_->handle() && window_->surfaceType() == QSurface::OpenGLSurface ? window_.data() : nullptr;
}

// The child window is not told when the top-level window around it is hidden.
bool GlSurface::IsExposed() const {
    const QWindow* topLevel = topLevelWindow();
    return window_ && (window_->isExposed() || waylandChild_) && isVisible() && topLevel && topLevel->isExposed();
}

QWindow* GlSurface::topLevelWindow() const {
    return window()->windowHandle();
}

double GlSurface::PixelRatio() const {
    return window_ ? window_->devicePixelRatio() : devicePixelRatioF();
}

QSize GlSurface::PixelSize() const {
    return QSize(qRound(width() * PixelRatio()), qRound(height() * PixelRatio()));
}

void GlSurface::AddUser() {
    ++users_;
    updateVisible();
}

void GlSurface::RemoveUser() {
    if (--users_ == 0)
        delete notice_;
    updateVisible();
}

void GlSurface::updateVisible() {
    setVisible(users_ > 0 && !notice_);
}

void GlSurface::ShowNotice(const QString& text) {
    if (text.isEmpty()) {
        delete notice_;
        updateVisible();
        return;
    }
    if (!notice_) {
        notice_ = new QLabel(Control());
        notice_->setAlignment(Qt::AlignCenter);
        notice_->setWordWrap(true);
        notice_->setTextFormat(Qt::PlainText);
        notice_->setAttribute(Qt::WA_TransparentForMouseEvents);
        notice_->show();
    }
    notice_->setText(text);
    updateVisible();
    fill();
}

QString GlSurface::Notice() const {
    return notice_ ? notice_->text() : QString();
}

void GlSurface::fill() {
    const QRect area = Control()->contentsRect();
    if (notice_)
        notice_->setGeometry(area);
    if (area == geometry())
        return;
    setGeometry(area);
    Q_EMIT Resized();
}

void GlSurface::noticePixelRatio() {
    const double ratio = PixelRatio();
    if (ratio == pixelRatio_)
        return;
    const bool first = pixelRatio_ == 0;
    pixelRatio_ = ratio;
    if (!first)
        Q_EMIT PixelRatioChanged();
}

bool GlSurface::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WinIdChange && internalWinId() && window_ != windowHandle())
        makeWindow();
    if (waylandChild_)
        waylandChild_->Take(*event);
    return handled;
}

bool GlSurface::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent()) {
        switch (event->type()) {
            case QEvent::Resize:
            case QEvent::ContentsRectChange:
            case QEvent::StyleChange:
                fill();
                break;
            default:
                break;
        }
    } else if (watched == window_) {
        if (event->type() == QEvent::PlatformSurface) {
            const auto type = static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType();
            if (type == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
                Q_EMIT Lost();
            else if (!making_)
                Q_EMIT Restored();
        } else if (event->type() == QEvent::Resize || event->type() == QEvent::Expose) {
            noticePixelRatio();
        }
    }
    return QWidget::eventFilter(watched, event);
}

void GlSurface::paintEvent(QPaintEvent*) {
    Q_EMIT Exposed();
}

}  // namespace zk
