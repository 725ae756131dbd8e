#pragma once

#include <zk/export.h>
#include <zk/host/component.h>

#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace zk {

/// A periodic clock: `OnTimer` every `Interval` milliseconds while `Enabled`, on the GUI thread.
///
/// **It costs nothing while nobody can see what it drives.** The clock stands still while the window that it belongs to
/// (the one around the next widget among its owners) is hidden or minimised, and in a form designer; an interval later
/// than the window's return it goes on. A timer whose owners are no widgets always runs.
///
/// **Time can be driven.** `Timer` makes one tick, at any time. `DriveTime` takes the time of all timers away from the
/// clock, and `AdvanceTime` lets it pass: every tick that falls due comes, in its order. Tests are exact to the tick
/// so, and a series of pictures does not depend on how long each of them takes.
///
/// An error that a handler throws ends in a message; it does not stop the clock.
class ZKHOST_API TTimer : public TComponent {
    Q_OBJECT
    Q_PROPERTY(bool Enabled READ GetEnabled WRITE SetEnabled)
    Q_PROPERTY(int Interval READ GetInterval WRITE SetInterval)
  public:
    /// On, with 1000 milliseconds.
    explicit TTimer(QObject* owner = nullptr);
    ~TTimer() override;

    /// On at first.
    bool GetEnabled() const { return enabled_; }
    /// Switching on begins a new interval.
    Q_SLOT virtual void SetEnabled(bool enabled);
    int GetInterval() const { return interval_; }
    /// Milliseconds; begins a new interval. With 0 or less no ticks come.
    Q_SLOT virtual void SetInterval(int milliseconds);

    /// One tick, whether or not the timer is on: raises `OnTimer`, whose handlers may delete the timer.
    virtual void Timer();

    /// True while the next tick is waited for, by the clock or by `AdvanceTime`.
    bool IsRunning() const { return state_ == State::Ticking; }

    /// Driven: time passes in `AdvanceTime` only. Each change begins new intervals.
    static void DriveTime(bool driven);
    /// Whether time is driven.
    static bool IsTimeDriven();
    /// Lets driven time pass: the ticks of all timers that fall due within it, the earliest first, of those at the same
    /// time the timer that was made first. Does nothing while time is not driven, and from within itself.
    static void AdvanceTime(int milliseconds);

    void Loaded() override;

  Q_SIGNALS:
    /// A tick.
    void OnTimer(QObject* sender);

  protected:
    /// Whether a tick would do anything now. While it would not, the timer sleeps, and what it missed is made up for by
    /// `Missed` before the next tick, and before `Reconsider` or `CatchUp` return.
    virtual bool NeedsTicks() const { return true; }
    /// So many ticks went by while the timer slept.
    virtual void Missed(qint64 ticks);
    /// Call when the answer of `NeedsTicks` may have changed.
    Q_INVOKABLE void Reconsider();
    /// Lets `Missed` make up for what has been slept through until now.
    void CatchUp();

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class State { Off, Asleep, Ticking };

    bool windowShown();
    bool inDesigner() const;
    void watch(QPointer<QWidget>& watched, QWidget* widget);
    void startInterval();
    void apply();
    void clockTick();

    bool enabled_ = true;
    int interval_ = 1000;
    State state_ = State::Off;
    qint64 due_ = 0;  // of the next tick, in milliseconds of the time in force
    QTimer clock_;
    QPointer<QWidget> widget_;  // whose window decides
    QPointer<QWidget> window_;
};

}  // namespace zk
