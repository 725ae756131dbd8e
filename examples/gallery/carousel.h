#pragma once

#include <zk/_zkoglcanvas/scene.h>
#include <zk/_zkoglextools/ogltimer.h>
#include <zk/_zkoglextools/sequencer.h>
#include <zk/_zkogltools/sphere.h>

#include <QObject>

#include <vector>

namespace gallery {

/// A carousel on a sequencer: at each tick it turns a little, and its seats go up or down. Every seat has a timer of
/// its own on the sequencer's clock that turns it round, each a few ticks later than the one before it.
///
/// It stands on the plane y = 0 about the y axis, in centimetres.
class Carousel : public QObject {
    Q_OBJECT
  public:
    /// `form` owns the components.
    Carousel(zk::TZkOglCanvas* canvas, QObject* form);

    zk::TZkOglSequencer* Clock() const { return clock_; }
    int SeatCount() const { return int(seats_.size()); }
    /// How high a seat's middle is.
    double HeightOf(int seat) const { return seats_.at(std::size_t(seat)).height; }
    /// In degrees, from 0 to below 360.
    double Angle() const { return angle_; }

  private:
    struct Seat {
        zk::TZKOglSphere* ball;
        zk::TZkOglTimer* timer;
        double height;
        double step;  // upwards at each tick
    };

    void build();
    void addSeat(int index);
    void tick();
    void placeSeat(const Seat& seat, int index) const;

    zk::TZkOglCanvas* canvas_;
    QObject* form_;
    zk::TZKOglScene* scene_;
    zk::TZkOglSequencer* clock_;
    std::vector<Seat> seats_;
    double angle_ = 0;
};

}  // namespace gallery
