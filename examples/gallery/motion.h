#pragma once

#include "carousel.h"

#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools/sphere.h>

#include <QCheckBox>
#include <QPushButton>
#include <QWidget>

namespace gallery {

/// What moves: a carousel on a sequencer, a balloon that travels a closed path, and the viewer's eye, which can travel
/// one too; beside the picture the navigator, which turns the view by hand. Nothing moves while the page is not shown.
class MotionPage : public QWidget {
    Q_OBJECT
  public:
    explicit MotionPage(QWidget* parent = nullptr);

    zk::TZkOglCanvas* Canvas() const { return canvas_; }
    zk::TZKOglControl* Control() const { return control_; }
    zk::TZKOglNav* Navigator() const { return navigator_; }
    Carousel* Ride() const { return carousel_; }
    zk::TZKOglSphere* Balloon() const { return balloon_; }
    zk::TZKOglWay* BalloonWay() const { return balloonWay_; }
    zk::TZKOglWay* EyeWay() const { return eyeWay_; }

    QCheckBox* carouselTurns;
    QCheckBox* balloonFlies;
    QCheckBox* eyeTravels;
    QPushButton* fromTheFront;

    /// Looks from where the page does at first, with the eye at rest.
    void LookFromTheFront();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void buildScene();
    void buildPanel();
    zk::TZKOglWay* addWay(double semiAxisX, double semiAxisZ, double height, int milliseconds);
    void look(const zk::TXYZ& towardsEye);
    void run();

    zk::TZKOglControl* control_;
    zk::TZkOglCanvas* canvas_;
    zk::TZKOglNav* navigator_;
    Carousel* carousel_ = nullptr;
    zk::TZKOglSphere* balloon_ = nullptr;
    zk::TZKOglWay* balloonWay_ = nullptr;
    zk::TZKOglWay* eyeWay_ = nullptr;
    bool shown_ = false;
};

}  // namespace gallery
