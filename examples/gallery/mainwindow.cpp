#include "mainwindow.h"

#include <zk/_zkdevice.h>
#include <zk/_zkmath.h>
#include <zk/_zkxyarrays.h>

#include <QColorDialog>
#include <QEvent>
#include <QScrollArea>
#include <QStatusBar>

#include <cmath>
#include <numbers>

using namespace zk;

namespace gallery {

namespace {

constexpr double pixelsPerCentimetre = 36;  // at zoom 100 %
constexpr double turn = 32;                 // the scene is seen from this many degrees to the right of its front
constexpr double tilt = 26;                 // and from this many above
const QColor backgroundColor(38, 46, 58);

QString invitation() {
    return MainWindow::tr("Click a box: left lifts it, right gives it the next material");
}

double radians(double angle) {
    return angle * std::numbers::pi / 180.0;
}

// Where the scene's axes point in the world, in which x is to the right, y up and z towards the viewer.
TBAse sceneFrame() {
    const double c = std::cos(radians(turn));
    const double s = std::sin(radians(turn));
    const double ct = std::cos(radians(tilt));
    const double st = std::sin(radians(tilt));
    return {{-0.2, -2.3, 0}, {c, -s * -st, -s * ct}, {0, ct, st}, {s, c * -st, c * ct}};
}

}  // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent),
      pages_(new QTabWidget(this)),
      control_(new TZKOglControl(this)),
      canvas_(new TZkOglCanvas(this)),
      motion_(new MotionPage) {
    setWindowTitle(tr("Gallery"));
    control_->setObjectName("control");
    control_->setMinimumSize(120, 90);
    pages_->setTabPosition(QTabWidget::South);
    pages_->setDocumentMode(true);
    pages_->addTab(control_, tr("B&oxes"));
    pages_->addTab(motion_, tr("&Motion"));
    setCentralWidget(pages_);

    canvas_->SetWinControl(control_);
    const ChangeBracket bracket(canvas_);
    canvas_->SetBackgroundQColor(backgroundColor);
    canvas_->SetUnitsPerCm(pixelsPerCentimetre);
    canvas_->SetDefaultUnitsPerCM(pixelsPerCentimetre);

    buildScene();
    buildPanel();
    buildStatusBar();
    connectMouse();
}

void MainWindow::buildScene() {
    scene_ = new TZKOglScene(this);
    scene_->SetZkOglCanvas(canvas_);

    // The scene stands turned and tilted, by its own transform; the canvas's transform is left to the sliders.
    const TBAse frame = sceneFrame();
    upright_ = frame.YAxis;
    TXYZ translation;
    TGerade line;
    double angle = 0;
    BaseToTGW(frame, translation, line, angle);
    scene_->SetTranslation(translation);
    scene_->SetDrehGerade(line);
    scene_->Setdrehwinkel(angle * 180.0 / std::numbers::pi);

    boxes_ = new Boxes(scene_, this);

    light_ = new TZKOglLight(this);
    light_->SetPosition({-9.5, 15, 18});
    light_->SetAmbient(0x484848);
    light_->SetDiffuse(0xDCDCDC);
    // Linear, in units of half the picture: with the 1 of a new light the far boxes would lie in the dark.
    light_->setattenuation(0.08);
    light_->SetEnabled(true);
    light_->SetZkOglCanvas(canvas_);
}

void MainWindow::buildPanel() {
    panel_ = new SidePanel(boxes_->Names());
    auto* scroller = new QScrollArea;  // so that the window can be made smaller than the panel
    scroller->setWidget(panel_);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setMinimumWidth(panel_->minimumSizeHint().width());
    dock_ = new QDockWidget(tr("Controls"), this);
    dock_->setObjectName("controls");
    dock_->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    dock_->setWidget(scroller);
    addDockWidget(Qt::RightDockWidgetArea, dock_);
    // They drive the canvas of the first page.
    connect(pages_, &QTabWidget::currentChanged, this, [this](int page) {
        dock_->setVisible(page == 0);
        clicked_->setText(page == 0 ? invitation() : tr("Drag the cube to turn the view"));
        underPointer_->clear();
    });

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
    // The texts must not keep the window from being made smaller.
    clicked_->setMinimumWidth(1);
    underPointer_->setMinimumWidth(1);
}

void MainWindow::Reset() {
    const ChangeBracket bracket(canvas_);
    ShowMotion(false);
    panel_->Reset();
    boxes_->Reset();
    canvas_->SetBackgroundQColor(backgroundColor);
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
