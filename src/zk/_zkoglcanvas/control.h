#pragma once

#include <zk/export.h>
#include <zk/host/component.h>
#include <zk/host/shiftstate.h>

#include <QPoint>
#include <QRectF>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <optional>

namespace zk {

class HitTarget;
class TZkOglCanvas;

/// Frames of a control.
namespace bevel {
Q_NAMESPACE_EXPORT(ZKOGLCANVAS_API)

/// How a control's frame looks.
enum TBevelKind { bkNone, bkTile, bkSoft, bkFlat };
Q_ENUM_NS(TBevelKind)
/// How the inner cut of a frame looks.
enum TBevelCut { bvNone, bvLowered, bvRaised, bvSpace };
Q_ENUM_NS(TBevelCut)
/// The edges that have a frame.
enum TBevelEdge { beLeft = 1, beTop = 2, beRight = 4, beBottom = 8 };
/// Any of the edges.
Q_DECLARE_FLAGS(TBevelEdges, TBevelEdge)
Q_FLAG_NS(TBevelEdges)
/// Where a control that no layout manages sits in its parent.
enum TAlign { alNone, alTop, alBottom, alLeft, alRight, alClient };
Q_ENUM_NS(TAlign)
}  // namespace bevel

using bevel::TAlign;
using bevel::TBevelCut;
using bevel::TBevelEdge;
using bevel::TBevelEdges;
using bevel::TBevelKind;

/// The widget that is made for carrying a canvas: it hands its painting and resizing on to the canvas, and its mouse
/// events to the shape under the pointer.
///
/// The link is made from the canvas: `canvas->SetWinControl(control)`. The picture fills the client area, which is the
/// contents rectangle inside the frame; all mouse coordinates are pixels of the client area.
///
/// On each mouse event the canvas looks for what is under the pointer (unless its `SelectEnabled` is off); the first
/// hit gets the event, then the control's own signal follows. The moves come while no button is held, too; of those
/// that queued up while a picture was made only the newest counts.
///
/// **The keyboard.** Tab and a click give the control the focus. The arrow keys, Home and End then go through the
/// shapes that a click could meet (`TZkOglCanvas::Places`), in the order in which they are drawn; a frame shows which
/// one is the current one. Space and Enter are a left click in the middle of its place, the menu key and Shift+F10 a
/// right one: with the same events, whatever lies before the shape. The frame goes with the focus and with a press of
/// the mouse, which makes the shape that it meets the current one. Other keys, and all of them where no shape can be
/// met, go to the parent; `setFocusPolicy(Qt::NoFocus)` gives it all keys, `SelectEnabled` off all but Tab.
///
/// **Assistive technology** finds the control as a canvas with its shapes as children: each has its component name, its
/// class as the description, its place on the screen, and can be pressed.
class ZKOGLCANVAS_API TZKOglControl : public QWidget, public ComponentBase {
    Q_OBJECT
    Q_PROPERTY(zk::bevel::TBevelKind BevelKind READ GetBevelKind WRITE SetBevelKind)
    Q_PROPERTY(int BevelWidth READ GetBevelWidth WRITE SetBevelWidth)
    Q_PROPERTY(zk::bevel::TBevelEdges BevelEdges READ GetBevelEdges WRITE SetBevelEdges)
    Q_PROPERTY(zk::bevel::TBevelCut BevelInner READ GetBevelInner WRITE SetBevelInner)
    Q_PROPERTY(zk::bevel::TAlign Align READ GetAlign WRITE SetAlign)

  public:
    /// The parent is the owner, as with every widget. 150 x 150 pixels with a soft bevel.
    explicit TZKOglControl(QWidget* parent = nullptr);
    ~TZKOglControl() override;

    /// The canvas that paints here, or null. Set by the canvas only.
    TZkOglCanvas* Canvas() const { return canvas_; }

    /// Which frame the control has; `bkSoft` for a new one, none if it is `bkNone`.
    TBevelKind GetBevelKind() const { return bevelKind_; }
    void SetBevelKind(TBevelKind kind);
    int GetBevelWidth() const { return bevelWidth_; }
    /// In pixels, for each of the two cuts of the frame; what is below 1 becomes 1.
    void SetBevelWidth(int width);
    /// Which edges have the frame; all at first.
    TBevelEdges GetBevelEdges() const { return bevelEdges_; }
    void SetBevelEdges(TBevelEdges edges);
    /// The inner cut; `bvRaised` at first.
    TBevelCut GetBevelInner() const { return bevelInner_; }
    void SetBevelInner(TBevelCut cut);
    TAlign GetAlign() const { return align_; }
    /// Keeps the control at an edge of its parent, or over all of it. Leave it at alNone inside a layout.
    void SetAlign(TAlign align);

    /// The shape that the keyboard works on, or null.
    HitTarget* CurrentShape() const;
    /// With the focus from the keyboard the frame goes with it. `OnCurrentShape` tells of another one.
    void SetCurrentShape(HitTarget* shape);
    /// The events of a click on a shape, in the middle of its place; `button` left or right. False, and nothing
    /// happens, where it cannot be met.
    bool ClickShape(HitTarget* shape, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Repaints the picture, if there is a canvas.
    virtual void PAint();
    /// Tells `OnResize` and gives the canvas the new size.
    virtual void resize();
    using QWidget::resize;
    /// Hands the event on to the shape under the pointer, then raises `OnMouseDown`; pixels of the client area.
    virtual void MouseDown(Qt::MouseButton button, TShiftState shift, int x, int y);
    /// As `MouseDown`, with `OnMouseMove`.
    virtual void MouseMove(TShiftState shift, int x, int y);
    /// As `MouseDown`, with `OnMouseUp`.
    virtual void MouseUp(Qt::MouseButton button, TShiftState shift, int x, int y);

  Q_SIGNALS:
    /// A button went down; the shape under the pointer has been told.
    void OnMouseDown(QObject* sender, Qt::MouseButton button, zk::TShiftState shift, int x, int y);
    /// The pointer has moved; the shape under it has been told.
    void OnMouseMove(QObject* sender, zk::TShiftState shift, int x, int y);
    /// A button was let go; the shape under the pointer has been told.
    void OnMouseUp(QObject* sender, Qt::MouseButton button, zk::TShiftState shift, int x, int y);
    /// The control has another size.
    void OnResize(QObject* sender);
    /// Never told: the picture is the canvas's. It is here for forms that name it.
    void OnPaint(QObject* sender);
    /// `shape` is the one that the keyboard works on from now on; null for none.
    void OnCurrentShape(QObject* sender, QObject* shape);

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    friend class TZkOglCanvas;
    void SetCanvas(TZkOglCanvas* canvas);

    HitTarget* targetUnderPointer(int x, int y);
    static void guarded(const std::function<void()>& call);
    void deliverMove();
    bool takeKey(const QKeyEvent& event);
    bool stepTo(int key);
    bool pressKey(Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void setCurrent(std::int32_t shape, bool framed, const std::optional<QRectF>& place = {});
    void showFrame(bool shown, const std::optional<QRectF>& place = {});
    void applyFrame();
    void applyAlign();

    TZkOglCanvas* canvas_ = nullptr;
    TBevelKind bevelKind_ = bevel::bkNone;
    int bevelWidth_ = 1;
    TBevelEdges bevelEdges_ = TBevelEdges(bevel::beLeft | bevel::beTop | bevel::beRight | bevel::beBottom);
    TBevelCut bevelInner_ = bevel::bvRaised;
    TAlign align_ = bevel::alNone;
    bool moveWaits_ = false;
    TShiftState moveShift_;
    std::int32_t current_;       // the hit object of the current shape, or none
    std::int32_t clickedByKey_;  // what the events of a key are for, while they are told
    bool framed_ = false;        // the keyboard was used last
    QPointF pointer_;            // of the mouse event being handled, between pixels where the display has finer ones
};

}  // namespace zk

Q_DECLARE_OPERATORS_FOR_FLAGS(zk::bevel::TBevelEdges)
