#pragma once

#include <zk/export.h>

#include <QPointer>
#include <QSize>
#include <QString>
#include <QSurfaceFormat>
#include <QWidget>

#include <memory>

class QLabel;
class QPaintEngine;
class QPaintEvent;
class QWindow;

namespace zk {

/// The window that OpenGL draws into: a native child window that fills the contents rectangle of a control.
///
/// Any QWidget can carry one, so that a canvas can paint into whatever widget the user assigns. The surface follows the
/// size of its control and lets every mouse event through to it. It lives as long as the control, which owns it, and is
/// shared by all that draw into the control. What it tells is told on the GUI thread.
///
/// The native window below the widget may come and go: a control that moves into another top-level window or is
/// undocked gets a new one. `Lost` and `Restored` frame that gap.
class ZKHOST_API GlSurface : public QWidget {
    Q_OBJECT
  public:
    /// The surface of a control, made at the first call. Null for a null control, and for a control that is being
    /// destroyed.
    static GlSurface* Of(QWidget* control);

    /// The surface of a control if it has one already, else null.
    static GlSurface* Find(const QWidget* control);

    ~GlSurface() override;

    /// What every surface asks of the window system: RGB of 24 bits, the deepest depth buffer up to 32 bits, double
    /// buffered, no alpha, no stencil, one sample, desktop OpenGL in the compatibility profile. Without alpha the
    /// desktop never shows through a picture.
    static QSurfaceFormat RequestedFormat();

    /// The control that carries the surface.
    QWidget* Control() const { return parentWidget(); }

    /// The native window with an OpenGL surface, or null where the platform made none.
    QWindow* Window() const;

    /// True when what is drawn can be seen: the native window is exposed.
    bool IsExposed() const;

    /// Device pixels per device-independent pixel, 1 to 4 in practice and not always whole.
    double PixelRatio() const;

    /// The size in device pixels.
    QSize PixelSize() const;

    /// Called by each that begins or ends drawing into the surface. While nobody does, the surface is hidden and the
    /// control shows itself.
    void AddUser();
    /// The end of what `AddUser` began.
    void RemoveUser();

    /// Shows a text in the place of the picture, for the user who cannot be shown one; an empty text brings the picture
    /// back.
    void ShowNotice(const QString& text);

    /// The text on show, empty if none.
    QString Notice() const;

  Q_SIGNALS:
    /// The native window is about to go. Contexts that are current on it must be released now.
    void Lost();
    /// There is a native window again.
    void Restored();
    /// A part of the window must be painted.
    void Exposed();
    /// The size of the control's contents rectangle has changed, and the surface has followed.
    void Resized();
    /// The window is on a display with another pixel ratio now.
    void PixelRatioChanged();

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QPaintEngine* paintEngine() const override { return nullptr; }

  private:
    explicit GlSurface(QWidget* control);

    void makeWindow();
    void updateVisible();
    void fill();
    void noticePixelRatio();

    QWindow* topLevelWindow() const;

    class WaylandChild;

    QPointer<QWindow> window_;
    std::unique_ptr<WaylandChild> waylandChild_;  // null elsewhere
    QPointer<QLabel> notice_;
    double pixelRatio_ = 0;
    int users_ = 0;
    bool making_ = false;
};

}  // namespace zk
