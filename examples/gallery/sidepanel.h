#pragma once

#include "valueslider.h"

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>

class QVBoxLayout;

namespace gallery {

/// The ordinary widgets beside the picture. They know nothing of it; the window connects them.
class SidePanel : public QWidget {
    Q_OBJECT
  public:
    /// What the rotation slider turns the model about; the order of the entries.
    enum Axis { upright, toTheRight, upwards, towardsViewer };

    explicit SidePanel(QWidget* parent = nullptr);

    /// What the list of shapes names.
    void SetShapes(const QStringList& names);

    /// All controls back to the start. Those that change say so.
    void Reset();

    ValueSlider* angle;
    ValueSlider* zoom;
    ValueSlider* moveX;
    ValueSlider* moveY;
    ValueSlider* moveZ;
    ValueSlider* rotation;
    QComboBox* axis;
    QCheckBox* light;
    QCheckBox* twoSided;
    QPushButton* background;
    QPushButton* reset;
    QListWidget* shapes;

  private:
    void addView(QVBoxLayout* column);
    void addModel(QVBoxLayout* column);
    void addLight(QVBoxLayout* column);
    void addShapes(QVBoxLayout* column);
};

}  // namespace gallery
