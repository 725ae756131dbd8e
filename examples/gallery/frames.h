#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <optional>

namespace gallery {

/// Writes a picture as a PNG file, all of it or nothing. An empty text for success, else what went wrong, in words.
QString WriteWhole(const QImage& picture, const QString& path);

/// Takes the time away from the clock while it lives.
class DrivenTime {
  public:
    DrivenTime();
    ~DrivenTime();
    DrivenTime(const DrivenTime&) = delete;
    DrivenTime& operator=(const DrivenTime&) = delete;
};

/// A series of pictures of an animation, one file each: "frame-0001.png" and so on, one for each 40 milliseconds of the
/// animation, however long each of them takes. The time belongs to the series while it lives.
class FrameSeries {
  public:
    explicit FrameSeries(const QString& folder) : folder_(folder) {}

    /// Makes the folder if need be.
    QString Begin();
    /// Lets the animation go on to where the next picture is.
    void Advance();
    /// Writes it.
    QString Write(const QImage& picture);
    /// Of the files that were written.
    const QStringList& Paths() const { return paths_; }

  private:
    DrivenTime time_;
    QString folder_;
    QStringList paths_;
};

/// Writes such a series beside the event loop, picture by picture, until all are there or it is cancelled.
class Recorder : public QObject {
    Q_OBJECT
  public:
    explicit Recorder(QObject* parent = nullptr);

    bool IsRunning() const { return series_.has_value(); }
    /// `take` takes the picture of this moment; a null one ends the recording. Ends one that is under way.
    void Start(const QString& folder, int count, std::function<QImage()> take);
    void Cancel();

  Q_SIGNALS:
    void Progress(int written, int count);
    /// It has ended; `summary` says in words how many pictures are where, and what went wrong, if anything.
    void Ended(const QString& summary);

  private:
    void step();
    void end(const QString& why);

    std::optional<FrameSeries> series_;
    QString folder_;
    int count_ = 0;
    std::function<QImage()> take_;
    QTimer steps_;
};

}  // namespace gallery
