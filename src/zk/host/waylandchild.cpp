#include "waylandchild.h"

#include <zk/host/workarounds.h>

#include <QGuiApplication>
#include <QMetaObject>
#include <QOpenGLContext>
#include <QString>

#include <utility>

namespace zk {

std::unique_ptr<GlSurface::WaylandChild> GlSurface::WaylandChild::Of(GlSurface& surface) {
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")) || !IsOn(Workaround::WaylandChild))
        return nullptr;
    return std::unique_ptr<WaylandChild>(new WaylandChild(surface));
}

GlSurface::WaylandChild::WaylandChild(GlSurface& surface) : surface_(surface) {
    surface.setAttribute(Qt::WA_DontCreateNativeAncestors);
}

// The widgets between the surface and its top-level window have no native windows that would move with them.
void GlSurface::WaylandChild::Watch() {
    for (const QPointer<QWidget>& ancestor : ancestors_) {
        if (ancestor)
            ancestor->removeEventFilter(this);
    }
    ancestors_.clear();
    for (QWidget* ancestor = surface_.parentWidget(); ancestor; ancestor = ancestor->parentWidget()) {
        ancestor->installEventFilter(this);
        ancestors_.emplace_back(ancestor);
        if (ancestor->isWindow())
            break;
    }
    QWindow* now = surface_.topLevelWindow();
    if (now == topLevel_)
        return;
    if (topLevel_)
        topLevel_->removeEventFilter(this);
    topLevel_ = now;
    if (topLevel_)
        topLevel_->installEventFilter(this);
}

void GlSurface::WaylandChild::Take(const QEvent& event) {
    switch (event.type()) {
        case QEvent::Hide:
            letGo();
            wentWithTopLevel_ = !surface_.window()->isVisible();
            break;
        case QEvent::Show:
            if (std::exchange(wentWithTopLevel_, false))
                QMetaObject::invokeMethod(this, &WaylandChild::comeBack, Qt::QueuedConnection);
            Watch();
            if (surface_.IsExposed())
                tellExposed();
            break;
        case QEvent::ParentChange:
        case QEvent::WinIdChange:
            Watch();
            break;
        default:
            break;
    }
}

bool GlSurface::WaylandChild::eventFilter(QObject* watched, QEvent* event) {
    if (watched == topLevel_) {
        // After Qt has taken the event: exposed is what its handler makes the window.
        if (event->type() == QEvent::Expose)
            tellExposed();
    } else if (event->type() == QEvent::ParentChange) {
        renewWindow();  // it is still in the old top-level window, and would go with it
        Watch();
    }
    return QObject::eventFilter(watched, event);
}

// What OpenGL draws into goes with a window that is hidden, and comes with the next time that it is made current.
void GlSurface::WaylandChild::letGo() const {
    QOpenGLContext* const context = QOpenGLContext::currentContext();
    if (context && surface_.window_ && context->surface() == surface_.window_)
        context->doneCurrent();
}

// A native window whose top-level window was hidden does not come back with it.
void GlSurface::WaylandChild::comeBack() {
    surface_.setVisible(false);
    renewWindow();
    surface_.updateVisible();
}

void GlSurface::WaylandChild::renewWindow() {
    surface_.destroy(true, true);
    surface_.winId();
}

void GlSurface::WaylandChild::tellExposed() {
    QMetaObject::invokeMethod(&surface_, &GlSurface::Exposed, Qt::QueuedConnection);
}

}  // namespace zk
