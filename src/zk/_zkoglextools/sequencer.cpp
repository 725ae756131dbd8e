#include "sequencer.h"

#include <zk/_zkoglextools/ogltimer.h>

#include <QMetaMethod>

#include <algorithm>

namespace zk {

TZkOglSequencer::TZkOglSequencer(QObject* owner) : TTimer(owner) {
    Reconsider();
}

TZkOglSequencer::~TZkOglSequencer() {
    AnnounceRemoval();
    SetEnabled(false);
}

int TZkOglSequencer::AddTimer(TZkOglTimer* T) {
    if (!T)
        return -1;
    const int there = IndexOfTimer(T);
    if (there >= 0)
        return there;
    CatchUp();
    FreeNotification(T);
    timers_.push_back(T);
    T->clocks_.push_back(this);
    Reconsider();
    return int(timers_.size()) - 1;
}

int TZkOglSequencer::IndexOfTimer(const TZkOglTimer* T) const {
    const auto found = std::find(timers_.begin(), timers_.end(), T);
    return found == timers_.end() ? -1 : int(found - timers_.begin());
}

void TZkOglSequencer::removetimer(TZkOglTimer* T) {
    if (IndexOfTimer(T) < 0)
        return;
    CatchUp();
    RemoveFreeNotification(T);
    std::erase(timers_, T);
    std::erase(T->clocks_, this);
    Reconsider();
}

TZkOglTimer* TZkOglSequencer::Timerat(int I) const {
    return I >= 0 && I < TimerCount() ? timers_[std::size_t(I)] : nullptr;
}

void TZkOglSequencer::Timer() {
    CatchUp();
    const QPointer<TZkOglSequencer> self = this;
    const std::vector<TZkOglTimer*> timers = timers_;
    TTimer::Timer();
    for (TZkOglTimer* timer : timers) {
        if (!self)
            return;
        if (IndexOfTimer(timer) >= 0)
            timer->Timer();
    }
}

void TZkOglSequencer::Notification(QObject* component, TOperation operation) {
    TTimer::Notification(component, operation);
    if (operation != TOperation::opRemove)
        return;
    const auto found = std::find_if(timers_.begin(), timers_.end(), [component](const TZkOglTimer* timer) {
        return static_cast<const QObject*>(timer) == component;
    });
    if (found != timers_.end())
        removetimer(*found);
}

bool TZkOglSequencer::NeedsTicks() const {
    return isSignalConnected(QMetaMethod::fromSignal(&TTimer::OnTimer)) ||
           std::any_of(timers_.begin(), timers_.end(), [](const TZkOglTimer* timer) { return timer->GetEnabled(); });
}

void TZkOglSequencer::Missed(qint64 ticks) {
    for (TZkOglTimer* timer : timers_)
        timer->skip(ticks);
}

void TZkOglSequencer::connectNotify(const QMetaMethod&) {
    Reconsider();
}

void TZkOglSequencer::disconnectNotify(const QMetaMethod&) {
    // Qt holds its locks here, and the question who still listens waits for them.
    QMetaObject::invokeMethod(this, "Reconsider", Qt::QueuedConnection);
}

}  // namespace zk
