#include "valueslider.h"

#include <QGridLayout>

#include <algorithm>
#include <utility>

namespace gallery {

ValueSlider::ValueSlider(const QString& name, const Range& range, std::function<QString(double)> format,
                         QGridLayout* grid)
    : QObject(grid),
      range_(range),
      format_(std::move(format)),
      slider_(new QSlider(Qt::Horizontal)),
      label_(new QLabel) {
    auto* caption = new QLabel(name);
    caption->setBuddy(slider_);
    slider_->setAccessibleName(name);
    slider_->setObjectName(name);
    slider_->setRange(qRound(range_.least / range_.step), qRound(range_.most / range_.step));
    slider_->setPageStep(std::max(1, (slider_->maximum() - slider_->minimum()) / 10));
    slider_->setMinimumWidth(110);
    slider_->setValue(qRound(range_.start / range_.step));
    connect(slider_, &QSlider::valueChanged, this, &ValueSlider::tell);

    // As wide as the widest text, so that the sliders keep their length while they are dragged.
    for (double value : {range_.least, range_.most}) {
        label_->setText(format_(value));
        label_->setMinimumWidth(std::max(label_->minimumWidth(), label_->sizeHint().width()));
    }
    label_->setText(format_(Value()));
    label_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    const int row = grid->rowCount();
    grid->addWidget(caption, row, 0);
    grid->addWidget(slider_, row, 1);
    grid->addWidget(label_, row, 2);
}

void ValueSlider::SetValue(double value) {
    slider_->setValue(qRound(value / range_.step));
}

void ValueSlider::tell() {
    label_->setText(format_(Value()));
    Q_EMIT Changed(Value());
}

}  // namespace gallery
