#pragma once

#include <zk/host/glsurface.h>

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <memory>
#include <vector>

namespace zk {

/// What keeps a surface's native window alive and painted under Wayland, where Qt's plugin shows a child window only if
/// its parent shows something, never tells the child that it is exposed, and lets it go with its top-level window. The
/// top-level window is the parent here, and its events are taken. For the surface's own sources.
class ZK_INTERNAL GlSurface::WaylandChild : public QObject {
    Q_OBJECT
  public:
    /// Null under other window systems, and with `Workaround::WaylandChild` off. Before the surface's native window.
    static std::unique_ptr<WaylandChild> Of(GlSurface& surface);

    /// Looks for the top-level window and what may take the surface into another one.
    void Watch();

    /// The surface has had an event.
    void Take(const QEvent& event);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    explicit WaylandChild(GlSurface& surface);

    void letGo() const;
    void comeBack();
    void renewWindow();
    void tellExposed();

    GlSurface& surface_;
    QPointer<QWindow> topLevel_;
    std::vector<QPointer<QWidget>> ancestors_;
    bool wentWithTopLevel_ = false;
};

}  // namespace zk
