#pragma once

#include "boxes.h"
#include "motion.h"
#include "propertypanel.h"
#include "recordbar.h"
#include "sidepanel.h"
#include "themes.h"

#include <zk/_zkoglcanvas.h>

#include <QColor>
#include <QDockWidget>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>

#include <vector>

namespace gallery {

/// The window, a form (mainwindow.ui). Its first page is a control with the picture of a scene, and beside it ordinary
/// widgets that drive the canvas; the second one is what moves (`MotionPage`), and the others are what the examples
/// show. A click on a shape of any page opens its properties; the status bar has a button that records the page.
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
    const std::vector<ThemePage*>& Themes() const { return themes_; }
    void ShowTheme(ThemePage* page) { pages_->setCurrentWidget(page); }
    PropertyPanel* Properties() const { return properties_; }
    RecordBar* Recording() const { return recording_; }

    /// The canvas of the page that is shown; null for one without OpenGL.
    zk::TZkOglCanvas* ShownCanvas() const;
    /// What the page shows, in its own size.
    QImage PagePicture() const;

    /// What the status bar says: of the last click, and of the pointer.
    QString ClickText() const { return clicked_->text(); }
    QString PointerText() const { return underPointer_->text(); }

    /// The pixel of the control's client area where a point of the scene, the middle of a box for instance, is seen.
    QPoint PixelOf(const zk::TXYZ& point) const;

  public Q_SLOTS:
    void Reset();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void layTiles(zk::TZKOglBox* floor);
    void connectPanel();
    void buildStatusBar();
    void connectMouse();
    void addThemes();
    void addProperties();
    void placeDocks();
    void showPage();
    void followClicks(zk::TZkOglCanvas* canvas, zk::TZKOglControl* control);
    void select(QObject* component);
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

    std::vector<ThemePage*> themes_;
    PropertyPanel* properties_ = nullptr;
    QDockWidget* propertiesDock_ = nullptr;
    RecordBar* recording_ = nullptr;
    Boxes* boxes_;
    QLabel* clicked_ = nullptr;
    QLabel* underPointer_ = nullptr;
    QColor background_;
    zk::TXYZ upright_{0, 1, 0};  ///< the scene's y axis in the world
};

}  // namespace gallery
