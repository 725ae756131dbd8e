#pragma once

#include "frames.h"

#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include <functional>

namespace gallery {

/// A button that asks where to and how many, and while a series of pictures is written its progress, and a button that
/// ends it.
class RecordBar : public QWidget {
    Q_OBJECT
  public:
    /// `take` takes the picture of this moment.
    explicit RecordBar(std::function<QImage()> take, QWidget* parent = nullptr);

    /// Asks for folder and number, and then begins.
    void Ask();
    void Record(const QString& folder, int count);
    bool IsRecording() const { return recorder_.IsRunning(); }

    QPushButton* record;
    QProgressBar* progress;
    QPushButton* cancel;

  Q_SIGNALS:
    /// What there is to say of the recording that has ended.
    void Said(const QString& text);

  private:
    void showState(bool recording);

    std::function<QImage()> take_;
    Recorder recorder_;
};

}  // namespace gallery
