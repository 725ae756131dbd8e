#pragma once

#include <zk/_zkdevice/canvas3d.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/export.h>
#include <zk/host/component.h>
#include <zk/host/componentref.h>
#include <zk/host/shiftstate.h>

#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>

class QMenu;

namespace zk {

/// A small panel with a wire cube that shows from where a canvas is looked at, and turns it: dragging with the left
/// button turns the cube, half the panel's width by half a turn, and the canvas's view with it. A double click shows
/// the cube straight from its front, and the menu has fixed views: "Grundriss", from above, and "Aufriss", from the
/// front; "Schraeriss" is there without effect, by choice.
///
/// ```
/// auto* navigator = new zk::TZKOglNav(form);
/// navigator->SetBounds(10, 10, 120, 120);
/// navigator->SetZkOglCanvas(canvas);
/// ```
///
/// With the keyboard: the arrow keys turn as a drag of 10 pixels would, with Shift of 1 pixel; Home is the double
/// click, the menu key opens the menu.
///
/// The view is the projection base of a device of the navigator's own. The canvas gets copies of its axes; its origin
/// becomes the zero point. The navigator does not follow what others do to the canvas's view, except where it is given
/// the canvas.
///
/// The device comes with the first parent, and is made anew with every further one, with the unit base. Without a
/// parent there is no cube; everything can be called all the same.
class ZKOGLEXTOOLS_API TZKOglNav : public QWidget, public ComponentBase {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ GetCaption WRITE SetCaption)
    Q_PROPERTY(zk::ComponentRef ZkOglCanvas READ readCanvas WRITE writeCanvas)
  public:
    /// The parent is the owner, as with every widget.
    explicit TZKOglNav(QWidget* parent = nullptr);
    ~TZKOglNav() override;

    TZkOglCanvas* GetZkOglCanvas() const { return zkOglCanvas_; }
    /// The canvas whose view is driven, or null; not owned. The cube takes the axes of its view.
    void SetZkOglCanvas(TZkOglCanvas* C);

    /// Shown in the middle of the panel. A navigator that gets a name gets a blank as caption, so that it never shows
    /// its name.
    QString GetCaption() const { return caption_; }
    void SetCaption(const QString& caption);
    /// The `objectName`, which gives the caption a blank.
    void SetName(const QString& name) { setObjectName(name); }

    /// Place and size at once. The cube has half the panel's smaller side to the centimetre.
    void SetBounds(int left, int top, int width, int height);

    /// The projection base of the device: the axes of the view. The unit base without a device.
    TBAse GetBase() const;
    /// The same axes with the zero point as origin.
    static TBAse UpdateBase(const TBAse& Base);

    /// What the cube is drawn with; null without a parent. Owned by the navigator.
    TZKCanvas3d* Device() const { return device_; }

    /// The events of the mouse, which may also be called on demand; pixels of the panel.
    virtual void MouseDown(Qt::MouseButton button, TShiftState shift, int x, int y);
    /// As `MouseDown`.
    virtual void MouseMove(TShiftState shift, int x, int y);
    /// Shows the cube straight from its front.
    Q_SLOT virtual void DblClick();

    /// The menu's entries.
    Q_SLOT void ClickGrundriss();
    /// The view from the front.
    Q_SLOT void ClickAufriss();
    /// Does nothing, by choice.
    void ClickSchraegriss();

    /// Draws the cube's edges black and one pixel wide, its ground red and three pixels wide. Where the palette makes
    /// the panel so dark that black would hardly be seen, the edges have its text colour.
    virtual void Paint();

    void Notification(QObject* component, TOperation operation) override;
    /// The cube takes the axes that the canvas has when all values of the form are there.
    void Loaded() override;
    QSize sizeHint() const override { return {120, 120}; }
    QSize minimumSizeHint() const override { return {40, 40}; }

  Q_SIGNALS:
    /// The cube has been turned by one step of a drag or by a key. `Direction` is always 0.
    void OnNav3D(QObject* sender, int Direction);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    ComponentRef readCanvas() const;
    void writeCanvas(const ComponentRef& ref);

    void makeDevice();
    void buildEdges();
    void sizeDevice();
    void turn(int dx, int dy);
    void turnAbout(const TXYZ& axis, double angle);
    void showView();

    QPointer<TZkOglCanvas> zkOglCanvas_;
    QPointer<TZKCanvas3d> device_;
    TlistOFxyzArray cubeEdges_;
    TlistOFxyzArray groundEdges_;
    double extentY_ = 1.0;
    double extentZ_ = 1.0;
    double extentX_ = 1.0;
    QPoint lastMouse_;
    QMenu* menu_;
    QString caption_ = QStringLiteral(" ");
};

}  // namespace zk
