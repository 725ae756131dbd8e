#pragma once

#include <zk/_zkdevice/canvas2d.h>
#include <zk/_zkdevice/device.h>
#include <zk/export.h>
#include <zk/host/componentref.h>

#include <QPointer>
#include <QWidget>

namespace zk {

/// A projection device that draws plain lines on any control, without OpenGL. What it draws appears above what the
/// control shows and stays until the control is next painted; see `ControlCanvas`.
///
/// ```
/// zk::TZKCanvas3d device;
/// device.Setcontrol(panel);
/// device.SetBlickWinkel(30);
/// device.PolyLine3D(outline);
/// ```
class ZKDEVICE_API TZKCanvas3d : public TZKDevice {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef Control READ readControl WRITE writeControl)
  public:
    /// An owner that is a control gives the device its size and a 2D device. Nothing is drawn before `Control` is set,
    /// whatever the owner is.
    explicit TZKCanvas3d(QObject* owner = nullptr);
    ~TZKCanvas3d() override;

    QWidget* GetControl() const { return control_; }
    /// Draws on a control from now on, with a new 2D device, pen and brush, and takes the size that the control's
    /// contents rectangle has now. Null draws nowhere: the 2D device goes, the size stays. Not owned; a control that
    /// goes is left.
    void Setcontrol(QWidget* C);

    /// The canvas that the 2D device draws on; null without one, and for a 2D device of another kind.
    DrawingCanvas* GetCanvas() const;
    /// Another canvas for the 2D device; not owned. Nothing happens for a 2D device of another kind.
    void SetCanvas(DrawingCanvas* Canvas);

    void Notification(QObject* component, TOperation operation) override;

  private:
    ComponentRef readControl() const;
    void writeControl(const ComponentRef& control);

    void attachForwarder(QWidget* control);
    void dropForwarder();

    QWidget* control_ = nullptr;
    QPointer<TZkCanvas> forwarder_;  // owned, and so is what it draws on; user code may delete either
    QPointer<DrawingCanvas> canvas_;
};

}  // namespace zk
