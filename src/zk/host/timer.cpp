#include "timer.h"

#include <zk/host/message.h>

#include <QEvent>
#include <QScopeGuard>

#include <algorithm>
#include <chrono>
#include <exception>
#include <vector>

namespace zk {

namespace {

struct Time {
    std::vector<TTimer*> timers;  // in the order in which they were made
    bool driven = false;
    bool advancing = false;
    qint64 passed = 0;  // of driven time
};

Time& time() {
    static auto& all = *new Time;  // outlives timers in static storage
    return all;
}

qint64 now() {
    if (time().driven)
        return time().passed;
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
}

}  // namespace

TTimer::TTimer(QObject* owner) : TComponent(owner) {
    time().timers.push_back(this);
    clock_.setTimerType(Qt::PreciseTimer);
    connect(&clock_, &QTimer::timeout, this, &TTimer::clockTick);
    Reconsider();
}

TTimer::~TTimer() {
    AnnounceRemoval();
    std::erase(time().timers, this);
}

void TTimer::SetEnabled(bool enabled) {
    if (enabled == enabled_)
        return;
    enabled_ = enabled;
    Reconsider();
}

void TTimer::SetInterval(int milliseconds) {
    CatchUp();
    interval_ = milliseconds;
    startInterval();
    Reconsider();
}

void TTimer::Loaded() {
    TComponent::Loaded();
    Reconsider();
}

void TTimer::Timer() {
    try {
        Q_EMIT OnTimer(this);
    } catch (const std::exception& error) {
        ShowMessage(QString::fromUtf8(error.what()));
    }
}

void TTimer::Missed(qint64) {}

// --- running, sleeping, standing still ------------------------------------------------------------------------------

void TTimer::watch(QPointer<QWidget>& watched, QWidget* widget) {
    if (watched == widget)
        return;
    if (watched)
        watched->removeEventFilter(this);
    watched = widget;
    if (widget)
        widget->installEventFilter(this);
}

bool TTimer::windowShown() {
    QObject* above = parent();
    while (above && !above->isWidgetType())
        above = above->parent();
    auto* widget = static_cast<QWidget*>(above);
    QWidget* window = widget ? widget->window() : nullptr;
    watch(widget_, widget);
    watch(window_, window == widget ? nullptr : window);
    return !window || (window->isVisible() && !window->isMinimized());
}

void TTimer::startInterval() {
    due_ = now() + std::max(interval_, 1);
    if (state_ == State::Ticking)
        apply();
}

void TTimer::apply() {
    if (state_ == State::Ticking && !time().driven)
        clock_.start(int(std::clamp<qint64>(due_ - now(), 0, std::max(interval_, 1))));
    else
        clock_.stop();
}

// A timer may be a part of the component that stands in the designer.
bool TTimer::inDesigner() const {
    const QObject* object = this;
    const ComponentBase* component = this;
    while (component && !(component->ComponentState() & csDesigning)) {
        object = object->parent();
        component = ComponentBase::Of(object);
    }
    return component;
}

void TTimer::Reconsider() {
    const bool shown = windowShown();
    const bool on = enabled_ && interval_ > 0 && shown && !inDesigner() && !(ComponentState() & csDestroying);
    const State next = !on ? State::Off : NeedsTicks() ? State::Ticking : State::Asleep;
    CatchUp();
    if (next == state_)
        return;
    if (state_ == State::Off)
        due_ = now() + interval_;
    state_ = next;
    apply();
}

void TTimer::CatchUp() {
    const qint64 late = now() - due_;
    if (state_ != State::Asleep || late < 0 || interval_ < 1)  // a new interval may have come first
        return;
    const qint64 ticks = late / interval_ + 1;
    due_ += ticks * interval_;
    Missed(ticks);
}

void TTimer::clockTick() {
    const bool shown = windowShown();
    if (!shown || state_ != State::Ticking) {
        Reconsider();
        return;
    }
    due_ = time().driven ? due_ + interval_ : now() + interval_;
    if (!time().driven && clock_.interval() != interval_)
        clock_.start(interval_);  // the first one after a sleep was shorter
    try {
        Timer();
    } catch (const std::exception& error) {  // of an override
        ShowMessage(QString::fromUtf8(error.what()));
    }
}

bool TTimer::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::WindowStateChange:
        case QEvent::ParentChange:
            // The event comes before the widget has followed it.
            QMetaObject::invokeMethod(this, "Reconsider", Qt::QueuedConnection);
            break;
        default:
            break;
    }
    return TComponent::eventFilter(watched, event);
}

// --- driven time ----------------------------------------------------------------------------------------------------

void TTimer::DriveTime(bool driven) {
    if (driven == time().driven)
        return;
    for (TTimer* timer : time().timers)
        timer->CatchUp();
    time().driven = driven;
    for (TTimer* timer : time().timers) {
        timer->due_ = now() + std::max(timer->interval_, 1);
        timer->apply();
    }
}

bool TTimer::IsTimeDriven() {
    return time().driven;
}

void TTimer::AdvanceTime(int milliseconds) {
    if (!time().driven || time().advancing || milliseconds < 0)
        return;
    time().advancing = true;
    const auto done = qScopeGuard([] { time().advancing = false; });
    const qint64 end = time().passed + milliseconds;
    while (time().driven) {
        TTimer* next = nullptr;
        for (TTimer* timer : time().timers)
            if (timer->IsRunning() && timer->due_ <= end && (!next || timer->due_ < next->due_))
                next = timer;
        if (!next)
            break;
        time().passed = std::max(time().passed, next->due_);
        next->clockTick();
    }
    time().passed = end;
}

}  // namespace zk
