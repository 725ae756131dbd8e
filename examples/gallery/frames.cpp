#include "frames.h"

#include <zk/host/timer.h>

#include <QDir>
#include <QImageWriter>
#include <QSaveFile>

#include <utility>

using namespace zk;

namespace gallery {

namespace {

constexpr int frameLength = 40;  // milliseconds of the animation

}  // namespace

QString WriteWhole(const QImage& picture, const QString& path) {
    QSaveFile file(path);
    const auto because = [&path](const QString& reason) { return Recorder::tr("%1: %2").arg(path, reason); };
    if (!file.open(QIODevice::WriteOnly))
        return because(file.errorString());
    QImageWriter writer(&file, "png");
    writer.setCompression(100);  // smallest
    if (!writer.write(picture))
        return because(writer.errorString());
    return file.commit() ? QString() : because(file.errorString());
}

DrivenTime::DrivenTime() {
    TTimer::DriveTime(true);
}

DrivenTime::~DrivenTime() {
    TTimer::DriveTime(false);
}

QString FrameSeries::Begin() {
    return QDir().mkpath(folder_) ? QString() : Recorder::tr("%1: the folder could not be made").arg(folder_);
}

void FrameSeries::Advance() {
    TTimer::AdvanceTime(frameLength);
}

QString FrameSeries::Write(const QImage& picture) {
    const QString name = QStringLiteral("frame-%1.png").arg(paths_.size() + 1, 4, 10, QLatin1Char('0'));
    const QString path = QDir(folder_).filePath(name);
    QString error = WriteWhole(picture, path);
    if (error.isEmpty())
        paths_ += path;
    return error;
}

Recorder::Recorder(QObject* parent) : QObject(parent) {
    connect(&steps_, &QTimer::timeout, this, &Recorder::step);
}

void Recorder::Start(const QString& folder, int count, std::function<QImage()> take) {
    Cancel();
    folder_ = folder;
    count_ = count;
    take_ = std::move(take);
    series_.emplace(folder);
    if (const QString error = series_->Begin(); !error.isEmpty())
        return end(error);
    Q_EMIT Progress(0, count_);
    steps_.start();
}

void Recorder::Cancel() {
    if (IsRunning())
        end(tr("cancelled"));
}

void Recorder::step() {
    series_->Advance();
    if (!IsRunning())
        return;  // a handler of the animation has ended it
    const QImage picture = take_();
    if (!IsRunning())
        return;
    if (picture.isNull())
        return end(tr("there is no picture to be had"));
    if (const QString error = series_->Write(picture); !error.isEmpty())
        return end(error);
    const int written = int(series_->Paths().size());
    Q_EMIT Progress(written, count_);
    if (IsRunning() && written >= count_)
        end({});
}

void Recorder::end(const QString& why) {
    steps_.stop();
    const int written = int(series_->Paths().size());
    series_.reset();
    take_ = {};
    const QString summary = tr("%1 of %2 pictures are in %3").arg(written).arg(count_).arg(folder_);
    Q_EMIT Ended(why.isEmpty() ? summary : tr("%1 (%2)").arg(summary, why));
}

}  // namespace gallery
