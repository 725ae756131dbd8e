#pragma once

#include <zk/_zkcomtypes/shape.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>
#include <zk/host/timer.h>

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace zk {

/// Walks along a polyline at a steady pace: at each tick it goes on by a step and raises `OnTimer`, whose handlers ask
/// for `GetActualPosition` and `GetActualDirection` and move what they like with them. It draws nothing itself.
///
/// ```
/// auto* way = new zk::TZKOglWay(form);
/// way->SetData({"0/0/0", "10/0/0", "10/10/0", "0/0/0"});   // closed: the last point is the first
/// way->SetHowLong(5000);                                    // milliseconds for one run; after the points
/// way->SetActive(true);
/// ```
///
/// The position counts points: 1.5 is the middle between the second and the third. A run over a closed path ends where
/// it began; then the position is 0 again. Only closed paths are walked smoothly: on the last stretch of an open one,
/// from its last point to where the run begins anew, the position is the zero point.
///
/// Its clock is a `TTimer`: it stands still with its window, and its time can be driven.
class ZKOGLEXTOOLS_API TZKOglWay : public TZkShape {
    Q_OBJECT
    Q_PROPERTY(int TimerDelay READ GetTimerDelay WRITE writeTimerDelay)
    Q_PROPERTY(QStringList Points READ GetData WRITE writePoints)
    Q_PROPERTY(bool Active READ GetActive WRITE SetActive)
    Q_PROPERTY(int HowLong READ GetHowLong WRITE writeHowLong)
    Q_PROPERTY(QString Center READ GetCenter WRITE writeCenter)
  public:
    /// Stopped, without points, 5000 milliseconds long with a tick every 500, about the zero point.
    explicit TZKOglWay(QObject* owner = nullptr);
    ~TZKOglWay() override;

    std::int32_t GetTimerDelay() const { return timerDelay_; }
    /// Milliseconds between ticks. The delay that counts is the divisor of `HowLong` nearest to the wanted one, at most
    /// 100 away, the larger of two that are as near, so that a run is a whole number of ticks; without one it is the
    /// wanted delay itself. The step is computed anew if there are points. The clock ticks with the wanted delay, by
    /// choice, so a run lasts a little longer or shorter where it is no divisor. The same value again changes nothing,
    /// and once the delay is below 1 it can no longer be changed.
    void SetTimerDelay(std::int32_t Value);

    QStringList GetData() const { return points_; }
    /// The points of the path, as texts "x/y/z". Nothing else changes: `HowLong` or `TimerDelay` must be set
    /// afterwards, as they compute the step. A text that is no point is told of when it is used.
    void SetData(const QStringList& Points);

    bool GetActive() const { return active_; }
    /// Runs or stops; the position stays. Ignored while `HowLong` or `TimerDelay` is 0. The clock is switched only
    /// while there are points: a way that has none when it is activated does not tick, and one whose points were taken
    /// away while it ran goes on raising `OnTimer` until it has points again and is stopped.
    Q_SLOT void SetActive(bool Value);

    std::int32_t GetHowLong() const { return howLong_; }
    /// Milliseconds of one run; computes the step if there are points. Once it is 0 (the way then stands still) or
    /// negative (it walks backwards, out of the path) it can no longer be changed, by choice.
    void SetHowLong(std::int32_t Value);

    QString GetCenter() const { return center_; }
    /// From where `GetActualDirection` looks, as text; what is no point is ignored.
    void SetCenter(const QString& Value);

    /// The number of stretches of a run: the number of points, one less for a closed path; 0 without points. A
    /// malformed first or last point raises `EConvertError`.
    int COunt() const;

    /// Where the way is. The zero point before the path and beyond its last point. A malformed point raises
    /// `EConvertError`.
    TXYZ GetActualPosition() const;

    /// The unit vector from the centre to the position; the zero vector where they are the same.
    TXYZ GetActualDirection() const;

    /// In points from the first one on, and by how much it grows at each tick.
    double Position() const { return position_; }
    /// By how much the position grows at each tick.
    double Step() const { return step_; }

    /// One tick, by the clock or on demand: goes on by a step if the way is running and has points, and raises
    /// `OnTimer` in every case. A malformed first or last point stops the way and ends in a message.
    void TimerDoTimer(QObject* Sender);

    /// The divisor of `number` nearest to `wanted`, among the 101 numbers from `wanted` upwards and as many downwards;
    /// of two as near the upper one. No value when there is none.
    static std::optional<std::int64_t> NearestDivisor(std::int64_t number, std::int64_t wanted);

    /// A form holds only what differs from a new component's values, and in any order: the step is computed, and the
    /// clock of a way that is active started, when all are there.
    void Loaded() override;

  Q_SIGNALS:
    /// A tick; the position has been brought forward.
    void OnTimer(QObject* sender);

  private:
    void takeDelay(std::int32_t wanted);
    void writeTimerDelay(int milliseconds);
    void writeHowLong(int milliseconds);
    void writePoints(const QStringList& points);
    void writeCenter(const QString& center);
    void computeStep();
    void advance();

    double position_ = 0;
    double step_ = 0;
    TTimer timer_;
    std::int32_t timerDelay_ = 500;
    std::int32_t delayOfForm_ = 0;  // as it was written last through the property, 0 for never
    QStringList points_;
    bool active_ = false;
    std::int32_t howLong_ = 5000;
    QString center_ = QStringLiteral("0/0/0");
};

}  // namespace zk
