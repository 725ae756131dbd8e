#include "ogltimer.h"

#include <zk/host/formreading.h>
#include <zk/host/message.h>

#include <algorithm>
#include <exception>

namespace zk {

namespace {

// A count that runs off one end comes back at the other.
std::int32_t add(std::int32_t count, qint64 ticks) {
    return std::int32_t(std::uint32_t(count) + std::uint32_t(ticks));
}

}  // namespace

static const ReferenceProperty<TZkOglTimer, TZkOglSequencer> sequencerProperty("Sequencer");

TZkOglTimer::TZkOglTimer(QObject* owner) : TComponent(owner) {}

TZkOglTimer::~TZkOglTimer() {
    AnnounceRemoval();
}

void TZkOglTimer::SetSequencer(TZkOglSequencer* S) {
    if (sequencer_ && sequencer_ != S)
        RemoveFreeNotification(sequencer_);
    sequencer_ = S;
    if (!S)
        return;
    FreeNotification(S);
    S->AddTimer(this);
}

// A sequencer may sleep while all its timers are off; its ticks up to now counted with the values before.
void TZkOglTimer::catchUp() {
    for (const QPointer<TZkOglSequencer>& clock : clocks_)
        if (clock)
            clock->CatchUp();
}

void TZkOglTimer::SetDisplacement(std::int32_t ticks) {
    catchUp();
    displacement_ = ticks;
}

void TZkOglTimer::SetIntervals(std::int32_t ticks) {
    catchUp();
    intervals_ = ticks;
}

void TZkOglTimer::SetEnabled(bool enabled) {
    catchUp();
    enabled_ = enabled;
    for (const QPointer<TZkOglSequencer>& clock : clocks_)
        if (clock)
            clock->Reconsider();
}

void TZkOglTimer::Notification(QObject* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation == TOperation::opRemove && sequencer_ && component == sequencer_)
        SetSequencer(nullptr);
}

// False when a handler has deleted the timer.
bool TZkOglTimer::raise() {
    const QPointer<TZkOglTimer> self = this;
    if (enabled_) {
        try {
            Q_EMIT Ontimer(this);
        } catch (const std::exception& error) {
            ShowMessage(QString::fromUtf8(error.what()));
        }
    }
    return self;
}

void TZkOglTimer::Timer() {
    if (!started_ && tickCount_ == displacement_) {
        if (!raise())
            return;
        tickCount_ = 0;
        started_ = true;
    }
    if (tickCount_ == intervals_) {
        if (!raise())
            return;
        tickCount_ = 0;
    }
    tickCount_ = add(tickCount_, 1);
}

// Many ticks of a timer that is off: the same counting, in leaps from one event to the next.
void TZkOglTimer::skip(qint64 ticks) {
    while (ticks > 0) {
        const bool periodic = started_ || displacement_ < 1 || displacement_ > intervals_;
        if (periodic && tickCount_ >= 1 && tickCount_ <= intervals_) {
            tickCount_ = std::int32_t((tickCount_ - 1 + ticks) % intervals_) + 1;
            return;
        }
        qint64 leap = ticks;
        if (!started_ && displacement_ >= tickCount_)
            leap = std::min(leap, qint64(displacement_) - tickCount_);
        if (intervals_ >= tickCount_)
            leap = std::min(leap, qint64(intervals_) - tickCount_);
        if (leap == 0) {
            if (!started_ && tickCount_ == displacement_) {
                tickCount_ = 0;
                started_ = true;
            }
            if (tickCount_ == intervals_)
                tickCount_ = 0;
            leap = 1;
        }
        tickCount_ = add(tickCount_, leap);
        ticks -= leap;
    }
}

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TZkOglTimer::readSequencer() const {
    return ComponentRef(GetSequencer());
}

void TZkOglTimer::writeSequencer(const ComponentRef& ref) {
    WriteReference(*this, "Sequencer", ref,
                   [this](QObject* object) { SetSequencer(static_cast<TZkOglSequencer*>(object)); });
}

}  // namespace zk
