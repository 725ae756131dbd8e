#pragma once

#include "boxes.h"
#include "motion.h"
#include "sidepanel.h"

#include <zk/_zkoglcanvas.h>

#include <QColor>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>

namespace gallery {

/// The window, a form (mainwindow.ui). Its first page is a control with the picture of a scene, and beside it ordinary
/// widgets that drive the canvas; the second one is what moves (`MotionPage`).
///
/// A left click on a box lifts it or puts it back, a right click gives it the next material; the status bar says which
/// box was clicked, and which one is under the pointer.
class MainWindow : public QMainWindow {
    Q_OBJECT
  public:
    explicit MainWindow(QWidget* parent = nullptr);

    zk::TZKOglControl* Control() const { return control_; }
    zk::TZkOglCanvas* Canvas() const { return canvas_; }
    Boxes* Shapes() const { return boxes_; }
    SidePanel* Panel() const { return panel_; }
    MotionPage* Motion() const { return motion_; }
    void ShowMotion(bool show) { pages_->setCurrentIndex(show ? 1 : 0); }

    /// What the status bar says: of the last click, and of the pointer.
    QString ClickText() const { return clicked_->text(); }
    QString PointerText() const { return underPointer_->text(); }

    /// The pixel of the control's client area where a point of the scene, the middle of a box for instance, is seen.
    QPoint PixelOf(const zk::TXYZ& point) const;

  public Q_SLOTS:
    void Reset();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void layTiles(zk::TZKOglBox* floor);
    void connectPanel();
    void buildStatusBar();
    void connectMouse();
    void setRotationAxis(int axis);
    void chooseBackground();

    int boxUnderPointer() const;
    void clicked(Qt::MouseButton button);
    void lift(int index);
    void showUnderPointer(const QString& name);

    // What stands in the form.
    QTabWidget* pages_;
    zk::TZKOglControl* control_;
    zk::TZkOglCanvas* canvas_;
    MotionPage* motion_;
    QDockWidget* dock_;
    zk::TZKOglScene* scene_;
    zk::TZKOglLight* light_;
    SidePanel* panel_;

    Boxes* boxes_;
    QLabel* clicked_ = nullptr;
    QLabel* underPointer_ = nullptr;
    QColor background_;
    zk::TXYZ upright_{0, 1, 0};  ///< the scene's y axis in the world
};

}  // namespace gallery
