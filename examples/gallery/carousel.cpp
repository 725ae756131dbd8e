#include "carousel.h"

#include "materials.h"

#include <zk/_zkdevice.h>
#include <zk/_zkogltools/cylinder.h>

#include <array>
#include <cmath>
#include <numbers>

using namespace zk;

namespace gallery {

namespace {

constexpr int seatCount = 8;
constexpr int halfRide = 25;         // ticks from a seat's lowest place to its highest
constexpr double turnPerTick = 1.2;  // degrees
constexpr double radius = 3.4;       // from the pole to the seats' middles, in centimetres
constexpr double lowest = 1.0;
constexpr double seatStep = 0.04;
constexpr double ballRadius = 0.55;
constexpr std::array<TColor, 4> colors{0x4A62E8, 0x3CB0F2, 0x62B858, 0xE89A46};

// A cylinder that stands on the plane y = `bottom`.
void addColumn(TZKOglScene* scene, QObject* form, double columnRadius, double bottom, double height, TColor color) {
    auto* column = new TZKOglCylinder(form);
    column->SetBaseRadius(columnRadius);
    column->SetTopRadius(columnRadius);
    column->SetCylinderHeight(height);
    column->SetResolution(40);
    column->SetDrehgeradeRichtung("1/0/0");
    column->Setdrehwinkel(-90);  // from along z to along y
    column->Settranslation({0, bottom, 0});
    column->getAttributes()->getMaterial()->SetMAterialKind(MaterialOf(color));
    column->SetDisplayList(scene);
}

}  // namespace

Carousel::Carousel(TZkOglCanvas* canvas, QObject* form)
    : QObject(form), canvas_(canvas), form_(form), scene_(new TZKOglScene(form)), clock_(new TZkOglSequencer(form)) {
    const ChangeBracket bracket(canvas_);
    scene_->SetZkOglCanvas(canvas_);
    scene_->SetDrehGerade({{0, 0, 0}, {0, 1, 0}});
    build();
    clock_->SetInterval(40);
    connect(clock_, &TTimer::OnTimer, this, &Carousel::tick);
}

void Carousel::build() {
    addColumn(scene_, form_, 4.4, 0, 0.3, 0x8C6A5A);
    addColumn(scene_, form_, 0.3, 0.3, 4.2, 0xC8DCE6);
    addColumn(scene_, form_, 4.4, 4.5, 0.25, 0x8C6A5A);
    for (int i = 0; i < seatCount; ++i)
        addSeat(i);
}

void Carousel::addSeat(int index) {
    auto* ball = new TZKOglSphere(form_);
    ball->SetR(ballRadius);
    ball->SetResolution(20);
    ball->getAttributes()->getMaterial()->SetMAterialKind(MaterialOf(colors.at(std::size_t(index) % colors.size())));
    ball->SetDisplayList(scene_);

    // The first event comes with tick `Displacement` + 1, the others a whole half ride later each.
    auto* timer = new TZkOglTimer(form_);
    timer->SetDisplacement(index * halfRide / seatCount);
    timer->SetIntervals(halfRide);
    timer->SetEnabled(true);
    timer->SetSequencer(clock_);
    connect(timer, &TZkOglTimer::Ontimer, this, [this, index] {
        Seat& seat = seats_[std::size_t(index)];
        seat.step = seat.step > 0 ? -seatStep : seatStep;
    });

    seats_.push_back({ball, timer, lowest, 0});
    placeSeat(seats_.back(), index);
}

void Carousel::placeSeat(const Seat& seat, int index) const {
    const double angle = 2 * std::numbers::pi * index / seatCount;
    seat.ball->Settranslation({radius * std::cos(angle), seat.height, radius * std::sin(angle)});
}

// The sequencer tells of its tick before it ticks the timers, so a seat that is turned round starts with the next one.
void Carousel::tick() {
    const ChangeBracket bracket(canvas_);
    angle_ = std::fmod(angle_ + turnPerTick, 360.0);
    scene_->Setdrehwinkel(angle_);
    for (int i = 0; i < SeatCount(); ++i) {
        Seat& seat = seats_[std::size_t(i)];
        seat.height += seat.step;
        placeSeat(seat, i);
    }
}

}  // namespace gallery
