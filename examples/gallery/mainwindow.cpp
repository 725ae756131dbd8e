#include "mainwindow.h"

#include "ui_mainwindow.h"

#include <zk/_zkdevice.h>
#include <zk/_zkmath.h>
#include <zk/_zkogltools/customshape.h>
#include <zk/_zkxyarrays.h>

#include <QColorDialog>
#include <QEvent>
#include <QPainter>
#include <QStatusBar>

using namespace zk;

namespace gallery {

namespace {

QString invitation() {
    return MainWindow::tr("Click a box: left lifts it, right gives it the next material");
}

/// A square tile with its joint, a centimetre wide once it is laid.
QImage tile() {
    constexpr int side = 64;
    QImage picture(side, side, QImage::Format_RGB32);
    picture.fill(QColor(240, 240, 240));
    QPainter painter(&picture);
    painter.setPen(QPen(QColor(150, 150, 150), 2));
    painter.drawRect(0, 0, side - 1, side - 1);
    return picture;
}

}  // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent) {
    // The floor of the form shows it, under the name of a file.
    ZkAddBitmaptexture(QStringLiteral("gallery-tile"), tile());
    Ui::MainWindow ui;
    ui.setupUi(this);
    pages_ = ui.pages;
    control_ = ui.control;
    canvas_ = ui.canvas;
    motion_ = ui.motion;
    dock_ = ui.controls;
    scene_ = ui.scene;
    light_ = ui.sun;
    panel_ = ui.panel;
    background_ = canvas_->GetBackgroundQColor();

    boxes_ = new Boxes(
        {ui.tower, ui.cap, ui.westPost, ui.eastPost, ui.lintel, ui.cube, ui.lid, ui.brick, ui.plank, ui.step, ui.die},
        canvas_, this);
    layTiles(ui.floor);
    // The scene stands turned and tilted, by its own transform; the canvas's transform is left to the sliders.
    TXYZ origin = Nullxyz;
    MatMul(scene_->TrfMAtrix(), origin);
    MatMul(scene_->TrfMAtrix(), upright_);
    upright_ = Sub(upright_, origin);

    panel_->SetShapes(boxes_->Names());
    ui.scroller->setMinimumWidth(panel_->minimumSizeHint().width());
    NameComponents(*motion_);
    addThemes();
    buildStatusBar();
    addProperties();
    connectPanel();
    connectMouse();
    showPage();
}

// The frame in which a texture is laid is nothing that a form can hold.
void MainWindow::layTiles(TZKOglBox* floor) {
    floor->getAttributes()->getTexture()->Setbase({Nullxyz, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}});  // on the ground
}

void MainWindow::connectPanel() {
    // They drive the canvas of the first page.
    connect(pages_, &QTabWidget::currentChanged, this, &MainWindow::showPage);

    connect(panel_->angle, &ValueSlider::Changed, canvas_, &TZkOglCanvas::SetBlickWinkel);
    connect(panel_->zoom, &ValueSlider::Changed, canvas_, &TZkOglCanvas::SetZoomFactor);
    for (ValueSlider* slider : {panel_->moveX, panel_->moveY, panel_->moveZ})
        connect(slider, &ValueSlider::Changed, this, [this] {
            canvas_->SetTranslation({panel_->moveX->Value(), panel_->moveY->Value(), panel_->moveZ->Value()});
        });
    connect(panel_->rotation, &ValueSlider::Changed, canvas_, &TZkOglCanvas::Setdrehwinkel);
    connect(panel_->axis, &QComboBox::currentIndexChanged, this, &MainWindow::setRotationAxis);
    connect(panel_->light, &QCheckBox::toggled, light_, &TZKOglLight::SetEnabled);
    connect(panel_->twoSided, &QCheckBox::toggled, canvas_, &TZkOglCanvas::SetLightModelTwoSided);
    connect(panel_->background, &QPushButton::clicked, this, &MainWindow::chooseBackground);
    connect(panel_->shapes, &QListWidget::itemActivated, this, [this] { lift(panel_->shapes->currentRow()); });
    connect(panel_->reset, &QPushButton::clicked, this, &MainWindow::Reset);
    setRotationAxis(SidePanel::upright);
}

void MainWindow::buildStatusBar() {
    clicked_ = new QLabel(invitation());
    underPointer_ = new QLabel;
    statusBar()->addWidget(clicked_, 1);
    statusBar()->addPermanentWidget(underPointer_);
    recording_ = new RecordBar([this] { return PagePicture(); }, this);
    statusBar()->addPermanentWidget(recording_);
    connect(recording_, &RecordBar::Said, clicked_, &QLabel::setText);
    // The texts must not keep the window from being made smaller.
    clicked_->setMinimumWidth(1);
    underPointer_->setMinimumWidth(1);
}

void MainWindow::Reset() {
    const ChangeBracket bracket(canvas_);
    ShowMotion(false);
    properties_->TakeBack();
    panel_->Reset();
    boxes_->Reset();
    canvas_->SetBackgroundQColor(background_);
    clicked_->setText(invitation());
}

void MainWindow::setRotationAxis(int axis) {
    const TXYZ directions[] = {upright_, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    if (axis >= 0)
        canvas_->SetDrehGerade({Nullxyz, directions[axis]});
}

void MainWindow::chooseBackground() {
    // Not exec(): a nested event loop would still run when the window is closed.
    auto* dialog = new QColorDialog(canvas_->GetBackgroundQColor(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::currentColorChanged, canvas_, &TZkOglCanvas::SetBackgroundQColor);
    connect(dialog, &QColorDialog::rejected, this,
            [this, before = canvas_->GetBackgroundQColor()] { canvas_->SetBackgroundQColor(before); });
    dialog->open();
}

// --- pages and their properties -------------------------------------------------------------------------------------

void MainWindow::addThemes() {
    themes_ = MakeThemePages(pages_);
    for (ThemePage* page : themes_)
        pages_->addTab(page, page->Title());
}

void MainWindow::addProperties() {
    properties_ = new PropertyPanel;
    propertiesDock_ = new QDockWidget(tr("Properties"), this);
    propertiesDock_->setObjectName("properties");
    propertiesDock_->setFeatures(dock_->features());
    propertiesDock_->setWidget(properties_);
    addDockWidget(Qt::RightDockWidgetArea, propertiesDock_);
    tabifyDockWidget(dock_, propertiesDock_);
    setTabPosition(Qt::RightDockWidgetArea, QTabWidget::North);
    setTabPosition(Qt::LeftDockWidgetArea, QTabWidget::North);
    placeDocks();
    // Not every setter asks for a repaint: a sphere's resolution waits for the next one.
    connect(properties_, &PropertyPanel::Edited, this, [](QObject* component) {
        if (auto* shape = qobject_cast<TCustomShape*>(component))
            shape->Invalidate();
    });
    followClicks(canvas_, control_);
    followClicks(motion_->Canvas(), motion_->Control());
}

// Behind the picture in the direction of reading. Dock areas are no layouts: they do not change sides by themselves.
void MainWindow::placeDocks() {
    const bool mirrored = isRightToLeft();
    const Qt::DockWidgetArea other = mirrored ? Qt::RightDockWidgetArea : Qt::LeftDockWidgetArea;
    if (dockWidgetArea(dock_) != other || dockWidgetArea(propertiesDock_) != other)
        return;  // they stand right, or somebody has put them elsewhere
    const bool propertiesInFront =
        tabifiedDockWidgets(dock_).contains(propertiesDock_) && !propertiesDock_->visibleRegion().isEmpty();
    const Qt::DockWidgetArea to = mirrored ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea;
    for (QDockWidget* dock : {dock_, propertiesDock_})
        addDockWidget(to, dock);
    tabifyDockWidget(dock_, propertiesDock_);
    (propertiesInFront ? propertiesDock_ : dock_)->raise();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange && propertiesDock_)
        placeDocks();
}

void MainWindow::showPage() {
    auto* theme = qobject_cast<ThemePage*>(pages_->currentWidget());
    if (theme && theme->Fill() && theme->Canvas())
        followClicks(theme->Canvas(), theme->Control());
    const bool boxes = pages_->currentIndex() == 0;
    dock_->setVisible(boxes);
    propertiesDock_->setVisible(ShownCanvas());
    if (boxes)
        dock_->raise();
    clicked_->setText(boxes ? invitation() : theme ? theme->Hint() : tr("Drag the cube to turn the view"));
    underPointer_->clear();

    QObjectList components;
    if (TZkOglCanvas* canvas = ShownCanvas()) {
        components += canvas;
        for (int i = 0; i < canvas->getLights()->Count(); ++i)
            components += canvas->getLights()->getLights(i);
        for (TZKOglScene* scene : canvas->Scenes()) {
            components += scene;
            for (int i = 0; i < scene->GetShapeCount(); ++i)
                components += scene->GetZkShape(i);
        }
    }
    properties_->SetComponents(components);
}

TZkOglCanvas* MainWindow::ShownCanvas() const {
    if (const auto* theme = qobject_cast<ThemePage*>(pages_->currentWidget()))
        return theme->Canvas();
    return pages_->currentIndex() == 0 ? canvas_ : motion_->Canvas();
}

QImage MainWindow::PagePicture() const {
    TZkOglCanvas* canvas = ShownCanvas();
    if (!canvas)
        return pages_->currentWidget()->grab().toImage();
    const QWidget* control = canvas->GetWinControl();
    const double ratio = control->devicePixelRatioF();
    return canvas->Picture((QSizeF(control->contentsRect().size()) * ratio).toSize(), ratio);
}

// What the user sees under the pointer is the last hit. Where the canvas does not look for itself, it is asked to.
void MainWindow::followClicks(TZkOglCanvas* canvas, TZKOglControl* control) {
    connect(control, &TZKOglControl::OnMouseDown, this, [this, canvas](QObject*, auto, auto, int x, int y) {
        if (!canvas->GetSelectEnabled())
            canvas->Select(x, y);
        const std::vector<THitItem>& hits = canvas->Hits();
        select(hits.empty() ? nullptr : dynamic_cast<QObject*>(HitTarget::Of(hits.back().HitObject)));
    });
    connect(canvas, &TZkOglCanvas::OnAfterCompile, properties_, &PropertyPanel::UpdateSoon);
}

void MainWindow::select(QObject* component) {
    properties_->SetComponent(component);
    if (component)
        propertiesDock_->raise();
}

// --- the mouse ------------------------------------------------------------------------------------------------------

void MainWindow::connectMouse() {
    connect(control_, &TZKOglControl::OnMouseDown, this, [this](QObject*, Qt::MouseButton button) { clicked(button); });
    connect(control_, &TZKOglControl::OnMouseMove, this, [this] {
        if (!canvas_->HasContext())
            return;  // the control shows words in place of a picture
        const int index = boxUnderPointer();
        showUnderPointer(index < 0 ? tr("the background") : boxes_->At(index)->objectName());
    });
    control_->installEventFilter(this);  // a control has no event for the pointer's leaving
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == control_ && event->type() == QEvent::Leave)
        underPointer_->clear();
    return QMainWindow::eventFilter(watched, event);
}

// A shape has mouse events of its own, which go to the first hit. The hits are ordered farthest first: where boxes hide
// each other in the picture, the one that the user sees is the last.
int MainWindow::boxUnderPointer() const {
    const std::vector<THitItem>& hits = canvas_->Hits();
    if (hits.empty())
        return -1;
    return boxes_->IndexOf(dynamic_cast<QObject*>(HitTarget::Of(hits.back().HitObject)));
}

void MainWindow::clicked(Qt::MouseButton button) {
    if (!canvas_->HasContext())
        return;
    const int index = boxUnderPointer();
    const QString buttonName = button == Qt::LeftButton    ? tr("left")
                               : button == Qt::RightButton ? tr("right")
                                                           : tr("another button");
    if (index < 0) {
        panel_->shapes->clearSelection();
        clicked_->setText(tr("Clicked: the background (%1)").arg(buttonName));
        return;
    }
    panel_->shapes->setCurrentRow(index);
    clicked_->setText(tr("Clicked: %1 (%2)").arg(boxes_->At(index)->objectName(), buttonName));
    if (button == Qt::LeftButton)
        boxes_->ToggleLift(index);
    else if (button == Qt::RightButton)
        boxes_->NextMaterial(index);
}

void MainWindow::lift(int index) {
    if (index < 0)
        return;
    boxes_->ToggleLift(index);
    clicked_->setText(boxes_->IsLifted(index) ? tr("%1 is lifted").arg(boxes_->At(index)->objectName())
                                              : tr("%1 is back at its place").arg(boxes_->At(index)->objectName()));
}

void MainWindow::showUnderPointer(const QString& name) {
    underPointer_->setText(tr("Under the pointer: %1").arg(name));
}

QPoint MainWindow::PixelOf(const TXYZ& point) const {
    TXYZ world = point;
    MatMul(scene_->TrfMAtrix(), world);
    const TXYI pixel = canvas_->WtoPixel(world);
    return {pixel.x, pixel.y};
}

}  // namespace gallery
