#include "way.h"

#include <zk/_zkcomtypes/pointproperty.h>
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkmath.h>
#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/errors.h>
#include <zk/host/formreading.h>
#include <zk/host/message.h>

#include <cmath>
#include <exception>

namespace zk {

TZKOglWay::TZKOglWay(QObject* owner) : TZkShape(owner), timer_(this) {
    timer_.SetEnabled(false);
    timer_.SetInterval(timerDelay_);
    connect(&timer_, &TTimer::OnTimer, this, &TZKOglWay::TimerDoTimer);
}

TZKOglWay::~TZKOglWay() {
    AnnounceRemoval();
    timer_.SetEnabled(false);
}

int TZKOglWay::COunt() const {
    if (points_.isEmpty())
        return 0;
    const bool closed = Equals(Strtoxyz(points_.first()), Strtoxyz(points_.last()));
    return int(points_.size()) - (closed ? 1 : 0);
}

TXYZ TZKOglWay::GetActualPosition() const {
    // A position next below a whole number is that number, so that sums of steps do not miss a point.
    const double i = std::trunc(position_ + 1e-7);
    const double j = std::trunc(position_ + 1.0);
    const auto last = double(points_.size() - 1);
    if (!(i >= 0 && i <= last && j >= 0 && j <= last))
        return Nullxyz;
    const TXYZ from = Strtoxyz(points_[qsizetype(i)]);
    const TXYZ to = Strtoxyz(points_[qsizetype(j)]);
    return Add(from, Mul(Sub(to, from), position_ - i));
}

TXYZ TZKOglWay::GetActualDirection() const {
    return Normalize(Sub(GetActualPosition(), Strtoxyz(center_)));
}

void TZKOglWay::SetData(const QStringList& Points) {
    points_ = Points;
}

void TZKOglWay::SetCenter(const QString& Value) {
    if (Value != center_ && CheckStrtoxyz(Value))
        center_ = Value;
}

void TZKOglWay::SetActive(bool Value) {
    if (Value == active_ || howLong_ == 0 || timerDelay_ == 0)
        return;
    active_ = Value;
    if (!points_.isEmpty())
        timer_.SetEnabled(Value);
}

void TZKOglWay::SetHowLong(std::int32_t Value) {
    if (howLong_ <= 0)
        return;
    howLong_ = Value;
    computeStep();
}

void TZKOglWay::SetTimerDelay(std::int32_t Value) {
    if (Value == timerDelay_ || timerDelay_ < 1)
        return;
    takeDelay(Value);
}

void TZKOglWay::takeDelay(std::int32_t wanted) {
    timerDelay_ = std::int32_t(NearestDivisor(howLong_, wanted).value_or(wanted));
    timer_.SetInterval(wanted);
    computeStep();
}

void TZKOglWay::computeStep() {
    if (!points_.isEmpty())
        step_ = howLong_ == 0 ? 0.0 : double(COunt()) * timerDelay_ / howLong_;
}

std::optional<std::int64_t> TZKOglWay::NearestDivisor(std::int64_t number, std::int64_t wanted) {
    constexpr std::int64_t tried = 101;
    const auto divides = [number](std::int64_t k) { return k != 0 && number % k == 0; };
    // Both ways at once, outwards: the first that is met is the nearest, and upwards is looked at first.
    for (std::int64_t distance = 0; distance < tried; ++distance) {
        if (divides(wanted + distance))
            return wanted + distance;
        if (divides(wanted - distance))
            return wanted - distance;
    }
    return std::nullopt;
}

void TZKOglWay::TimerDoTimer(QObject*) {
    try {
        if (timer_.GetEnabled() && !points_.isEmpty())
            advance();
    } catch (const std::exception& error) {
        // The points are no better at the next tick: it is told once.
        active_ = false;
        timer_.SetEnabled(false);
        ShowMessage(QString::fromUtf8(error.what()));
        return;
    }
    try {
        Q_EMIT OnTimer(this);
    } catch (const std::exception& error) {
        ShowMessage(QString::fromUtf8(error.what()));
    }
}

void TZKOglWay::advance() {
    const int count = COunt();
    position_ += step_;
    if (Equals(position_, count) || position_ > count)
        position_ = 0;
}

void TZKOglWay::Loaded() {
    TZkShape::Loaded();
    try {
        computeStep();
    } catch (const EConvertError&) {
        // A first or last point that is none: told with the form, and again when the way gets there.
    }
    if (!points_.isEmpty())
        timer_.SetEnabled(active_);
}

// --- the properties of forms ----------------------------------------------------------------------------------------

// A form has the delay before the length of a run that it is to divide: it is taken again when that comes, in a form
// designer as well. Points that are none keep the step from being computed; while a form is read that is told with
// them.
void TZKOglWay::writeTimerDelay(int milliseconds) {
    delayOfForm_ = milliseconds;
    try {
        SetTimerDelay(milliseconds);
    } catch (const EConvertError&) {
        if (!FormReading::IsReading(*this))
            throw;
    }
}

void TZKOglWay::writeHowLong(int milliseconds) {
    const bool ofForm = FormReading::IsReading(*this);
    try {
        SetHowLong(milliseconds);
        if (delayOfForm_ > 0 && timerDelay_ > 0 && howLong_ > 0 && (ofForm || (ComponentState() & csDesigning)))
            takeDelay(delayOfForm_);
    } catch (const EConvertError&) {
        if (!ofForm)
            throw;
    }
}

void TZKOglWay::writePoints(const QStringList& points) {
    SetData(PointTextsOfForm(*this, points));
    if (!FormReading::IsReading(*this))
        return;
    for (const QString& point : std::as_const(points_))
        WriteText(*this, "Points", point, [&point] { Strtoxyz(point); });
}

void TZKOglWay::writeCenter(const QString& center) {
    WritePointText(*this, "Center", center, [this](const QString& point) {
        if (FormReading::IsReading(*this))
            Strtoxyz(point);  // so that it is told, where the setter would ignore it
        SetCenter(point);
    });
}

}  // namespace zk
