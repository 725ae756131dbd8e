#pragma once

#include "boxes.h"
#include "motion.h"
#include "sidepanel.h"

#include <zk/_zkoglcanvas.h>

#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>

namespace gallery {

/// The window. Its first page is a control with the picture of a scene, and beside it ordinary widgets that drive the
/// canvas; the second one is what moves (`MotionPage`).
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
    void buildScene();
    void buildPanel();
    void buildStatusBar();
    void connectMouse();
    void setRotationAxis(int axis);
    void chooseBackground();

    int boxUnderPointer() const;
    void clicked(Qt::MouseButton button);
    void lift(int index);
    void showUnderPointer(const QString& name);

    QTabWidget* pages_;
    zk::TZKOglControl* control_;
    zk::TZkOglCanvas* canvas_;
    MotionPage* motion_;
    QDockWidget* dock_ = nullptr;
    zk::TZKOglScene* scene_ = nullptr;
    zk::TZKOglLight* light_ = nullptr;
    Boxes* boxes_ = nullptr;
    SidePanel* panel_ = nullptr;
    QLabel* clicked_ = nullptr;
    QLabel* underPointer_ = nullptr;
    zk::TXYZ upright_{0, 1, 0};  ///< the scene's y axis in the world
};

}  // namespace gallery
