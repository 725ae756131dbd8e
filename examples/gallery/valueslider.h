#pragma once

#include <QLabel>
#include <QSlider>

#include <functional>

class QGridLayout;

namespace gallery {

/// A slider with its name before it and its value behind, as one row of a grid. The value counts in steps of `step`.
class ValueSlider : public QObject {
    Q_OBJECT
  public:
    struct Range {
        double least;
        double most;
        double step;
        double start;
    };

    /// `format` says what the label shows for a value.
    ValueSlider(const QString& name, const Range& range, std::function<QString(double)> format, QGridLayout* grid);

    double Value() const { return slider_->value() * range_.step; }
    void SetValue(double value);
    void Reset() { SetValue(range_.start); }

    QSlider* Slider() const { return slider_; }
    QString Text() const { return label_->text(); }

  Q_SIGNALS:
    void Changed(double value);

  private:
    void tell();

    Range range_;
    std::function<QString(double)> format_;
    QSlider* slider_;
    QLabel* label_;
};

}  // namespace gallery
