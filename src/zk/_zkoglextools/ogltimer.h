#pragma once

#include <zk/_zkoglextools/sequencer.h>
#include <zk/export.h>
#include <zk/host/component.h>
#include <zk/host/componentref.h>

#include <QPointer>

#include <cstdint>
#include <vector>

namespace zk {

/// A timed action on a sequencer's clock: `Ontimer` first after `Displacement` ticks, then every `Intervals` ticks.
///
/// The first event comes at tick `Displacement` + 1. It counts in this way, and programs rely on it:
/// - a delay longer than the period is never reached: the events come at ticks `Intervals` + 1, 2 · `Intervals` + 1, …;
/// - the period 0 gives an event, or two, at the tick that serves the delay, and none afterwards;
/// - a timer that is off counts on, so that switching it on does not change its phase.
class ZKOGLEXTOOLS_API TZkOglTimer : public TComponent {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef Sequencer READ readSequencer WRITE writeSequencer)
    Q_PROPERTY(int Displacement READ GetDisplacement WRITE SetDisplacement)
    Q_PROPERTY(int Intervals READ GetIntervals WRITE SetIntervals)
    Q_PROPERTY(bool Enabled READ GetEnabled WRITE SetEnabled)
  public:
    /// Off, without a sequencer, delay and period 0.
    explicit TZkOglTimer(QObject* owner = nullptr);
    ~TZkOglTimer() override;

    TZkOglSequencer* GetSequencer() const { return sequencer_; }
    /// Registers with a sequencer; not owned. The timer stays registered with the one before, by choice, and is ticked
    /// by both; `removetimer` takes it out there. Null registers nowhere, and a sequencer that goes leaves null.
    void SetSequencer(TZkOglSequencer* S);

    std::int32_t GetDisplacement() const { return displacement_; }
    /// In ticks.
    void SetDisplacement(std::int32_t ticks);
    std::int32_t GetIntervals() const { return intervals_; }
    /// In ticks.
    void SetIntervals(std::int32_t ticks);
    bool GetEnabled() const { return enabled_; }
    /// Whether events are raised.
    Q_SLOT void SetEnabled(bool enabled);

    /// One tick, from a sequencer or on demand. A handler may delete the timer.
    void Timer();

    void Notification(QObject* component, TOperation operation) override;

  Q_SIGNALS:
    /// One of the ticks that the delay and the period choose.
    void Ontimer(QObject* sender);

  private:
    ComponentRef readSequencer() const;
    void writeSequencer(const ComponentRef& ref);

    friend class TZkOglSequencer;

    bool raise();
    void skip(qint64 ticks);
    void catchUp();

    std::int32_t tickCount_ = 0;  // since the last event
    bool started_ = false;        // the delay has been served
    QPointer<TZkOglSequencer> sequencer_;
    std::int32_t displacement_ = 0;
    std::int32_t intervals_ = 0;
    bool enabled_ = false;
    std::vector<QPointer<TZkOglSequencer>> clocks_;  // all that it is registered with
};

}  // namespace zk
