#pragma once

#include <zk/export.h>
#include <zk/host/drawingcanvas.h>

#include <QPointer>
#include <QWidget>

namespace zk {

/// A canvas that draws on a control's contents rectangle, at any time: what is drawn outside of a paint event appears
/// when the event loop runs next, above what the control shows, and stays until the control is next painted. See
/// `DrawingLayer`.
///
/// Without a control, or after it has gone, nothing is drawn. While a handle is set (`SetHandle`) that is drawn on
/// instead.
class ZKHOST_API ControlCanvas : public DrawingCanvas {
    Q_OBJECT
  public:
    /// `parent` deletes the canvas with itself; it draws on `control`. Either may be null.
    explicit ControlCanvas(QObject* parent = nullptr, QWidget* control = nullptr);
    ~ControlCanvas() override;

    /// What is drawn on, not owned; null for nothing.
    QWidget* GetControl() const { return control_; }
    void SetControl(QWidget* control);

    QRect GetClipRect() const override;
    /// The colour that is seen, whoever drew it; black outside of the control.
    TColor GetPixel(int X, int Y) const override;

    /// Shows at once what has been drawn, without waiting for the event loop.
    void Flush();

  protected:
    void Draw(const QRect& area, const std::function<void(QPainter&)>& paint) override;

  private:
    QPointer<QWidget> control_;
};

}  // namespace zk
