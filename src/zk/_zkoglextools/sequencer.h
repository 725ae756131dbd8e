#pragma once

#include <zk/export.h>
#include <zk/host/timer.h>

#include <vector>

namespace zk {

class TZkOglTimer;

/// One clock for many timed actions: every tick is passed on to the registered `TZkOglTimer`s, in the order of their
/// registration, so that animations built on several of them stay in step.
///
/// ```
/// auto* sequencer = new zk::TZkOglSequencer(form);
/// sequencer->SetInterval(40);
/// timer->SetIntervals(3);              // every 120 ms
/// timer->SetEnabled(true);
/// timer->SetSequencer(sequencer);
/// ```
///
/// `Enabled`, `Interval` and `OnTimer` are those of `TTimer`, as is the driving of time. While neither a registered
/// timer is on nor anybody listens to `OnTimer`, the clock sleeps; the ticks it sleeps through are counted all the
/// same.
class ZKOGLEXTOOLS_API TZkOglSequencer : public TTimer {
    Q_OBJECT
  public:
    explicit TZkOglSequencer(QObject* owner = nullptr);
    ~TZkOglSequencer() override;

    /// Registers a timer, at the end, and gives its index: the one that it has if it is registered already, -1 for
    /// null. Not owned; a timer that goes leaves the list.
    int AddTimer(TZkOglTimer* T);
    /// -1 if it is not registered.
    int IndexOfTimer(const TZkOglTimer* T) const;
    /// Takes the timer out; nothing if it is not registered.
    void removetimer(TZkOglTimer* T);
    /// Null where there is none.
    TZkOglTimer* Timerat(int I) const;
    /// How many timers are registered.
    int TimerCount() const { return int(timers_.size()); }

    /// One tick: `OnTimer` first, then each timer that was registered at its beginning and still is.
    void Timer() override;

    void Notification(QObject* component, TOperation operation) override;

  protected:
    bool NeedsTicks() const override;
    void Missed(qint64 ticks) override;
    void connectNotify(const QMetaMethod& signal) override;
    void disconnectNotify(const QMetaMethod& signal) override;

  private:
    friend class TZkOglTimer;

    std::vector<TZkOglTimer*> timers_;
};

}  // namespace zk
