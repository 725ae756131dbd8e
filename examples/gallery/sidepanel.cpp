#include "sidepanel.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace gallery {

namespace {

QGridLayout* addGroup(QVBoxLayout* column, const QString& title) {
    auto* group = new QGroupBox(title);
    auto* grid = new QGridLayout(group);
    grid->setColumnStretch(1, 1);
    column->addWidget(group);
    return grid;
}

QString degrees(double value) {
    return QStringLiteral("%1°").arg(value);
}

QString centimetres(double value) {
    return SidePanel::tr("%1 cm").arg(value, 0, 'f', 1);
}

}  // namespace

SidePanel::SidePanel(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    addView(column);
    addModel(column);
    addLight(column);
    addShapes(column);
    reset = new QPushButton(tr("&Reset"));
    reset->setObjectName("reset");
    column->addWidget(reset);
}

void SidePanel::addView(QVBoxLayout* column) {
    QGridLayout* grid = addGroup(column, tr("View"));
    // Angles below 2 degrees are the parallel projection.
    const auto angleText = [](double value) { return value < 2 ? tr("parallel") : degrees(value); };
    angle = new ValueSlider(tr("Angle"), {0, 45, 1, 0}, angleText, grid);
    const auto zoomText = [](double value) { return tr("%1 %").arg(qRound(value * 100)); };
    zoom = new ValueSlider(tr("Zoom"), {0.25, 2.5, 0.01, 1}, zoomText, grid);
}

void SidePanel::addModel(QVBoxLayout* column) {
    QGridLayout* grid = addGroup(column, tr("Model"));
    moveX = new ValueSlider(tr("Move x"), {-10, 10, 0.1, 0}, centimetres, grid);
    moveY = new ValueSlider(tr("Move y"), {-10, 10, 0.1, 0}, centimetres, grid);
    moveZ = new ValueSlider(tr("Move z"), {-10, 10, 0.1, 0}, centimetres, grid);
    moveZ->Slider()->setToolTip(tr("Towards you: to be seen in a perspective view only"));
    rotation = new ValueSlider(tr("Rotate"), {-180, 180, 1, 0}, degrees, grid);

    axis = new QComboBox;
    axis->setObjectName("axis");
    axis->addItems({tr("the upright"), tr("x, to the right"), tr("y, upwards"), tr("z, towards you")});
    const int row = grid->rowCount();
    grid->addWidget(new QLabel(tr("about")), row, 0);
    grid->addWidget(axis, row, 1, 1, 2);
}

void SidePanel::addLight(QVBoxLayout* column) {
    QGridLayout* grid = addGroup(column, tr("Light"));
    light = new QCheckBox(tr("&Light on"));
    light->setObjectName("light");
    light->setChecked(true);
    twoSided = new QCheckBox(tr("&Two-sided"));
    twoSided->setObjectName("twoSided");
    twoSided->setToolTip(tr("Lights the backs of faces as well; closed boxes hide theirs"));
    background = new QPushButton(tr("&Background..."));
    background->setObjectName("background");
    grid->addWidget(light, 0, 0);
    grid->addWidget(twoSided, 0, 1);
    grid->addWidget(background, 1, 0, 1, 2);
}

void SidePanel::addShapes(QVBoxLayout* column) {
    auto* group = new QGroupBox(tr("Shapes"));
    auto* layout = new QVBoxLayout(group);
    shapes = new QListWidget;
    shapes->setObjectName("shapes");
    shapes->setToolTip(tr("A double click lifts a box or puts it back"));
    layout->addWidget(shapes);
    column->addWidget(group, 1);
}

void SidePanel::SetShapes(const QStringList& names) {
    shapes->clear();
    shapes->addItems(names);
    shapes->setMinimumHeight(shapes->sizeHintForRow(0) * 4);
}

void SidePanel::Reset() {
    for (ValueSlider* slider : {angle, zoom, moveX, moveY, moveZ, rotation})
        slider->Reset();
    axis->setCurrentIndex(upright);
    light->setChecked(true);
    twoSided->setChecked(false);
    shapes->setCurrentRow(-1);
    shapes->clearSelection();
}

}  // namespace gallery
