#include "motion.h"

#include "materials.h"

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice.h>
#include <zk/_zkmath.h>
#include <zk/_zkogltools/ellipseway.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace zk;

namespace gallery {

namespace {

constexpr int tickLength = 40;  // milliseconds
constexpr int wayPoints = 60;
constexpr TXYZ frontEye{0, 0.45, 1};  // where the eye is at first, from the middle of the picture

}  // namespace

MotionPage::MotionPage(QWidget* parent)
    : QWidget(parent),
      carouselTurns(new QCheckBox(tr("The &carousel turns"))),
      balloonFlies(new QCheckBox(tr("The &balloon flies"))),
      eyeTravels(new QCheckBox(tr("The &eye travels"))),
      fromTheFront(new QPushButton(tr("&From the front"))),
      control_(new TZKOglControl(this)),
      canvas_(new TZkOglCanvas(this)),
      navigator_(new TZKOglNav(this)) {
    control_->setMinimumSize(120, 90);
    canvas_->SetWinControl(control_);
    const ChangeBracket bracket(canvas_);
    canvas_->SetBackgroundQColor(QColor(38, 46, 58));
    canvas_->SetUnitsPerCm(36);
    canvas_->SetDefaultUnitsPerCM(36);
    canvas_->SetBlickWinkel(16);
    canvas_->SetSelectEnabled(false);  // nothing here is clicked, so no mouse move need look for it

    buildScene();
    buildPanel();
    LookFromTheFront();
}

void MotionPage::buildScene() {
    carousel_ = new Carousel(canvas_, this);

    auto* sky = new TZKOglScene(this);
    sky->SetZkOglCanvas(canvas_);
    balloon_ = new TZKOglSphere(this);
    balloon_->SetR(0.8);
    balloon_->SetResolution(24);
    balloon_->getAttributes()->getMaterial()->SetMAterialKind(MaterialOf(0xB052A4));
    balloon_->SetDisplayList(sky);

    balloonWay_ = addWay(7.0, 5.5, 3.0, 12000);
    balloon_->Settranslation(balloonWay_->GetActualPosition());
    connect(balloonWay_, &TZKOglWay::OnTimer, this,
            [this] { balloon_->Settranslation(balloonWay_->GetActualPosition()); });

    eyeWay_ = addWay(10.0, 10.0, 5.0, 24000);
    connect(eyeWay_, &TZKOglWay::OnTimer, this, [this] { look(eyeWay_->GetActualDirection()); });

    auto* light = new TZKOglLight(this);
    light->SetPosition({-9.5, 15, 18});
    light->SetAmbient(0x484848);
    light->SetDiffuse(0xDCDCDC);
    light->setattenuation(0.08);
    light->SetEnabled(true);
    light->SetZkOglCanvas(canvas_);
}

// A closed way round the carousel: points on an ellipse that lies level, the last one the first again.
TZKOglWay* MotionPage::addWay(double semiAxisX, double semiAxisZ, double height, int milliseconds) {
    TEllipseWay ellipse;
    ellipse.SetA(semiAxisX);
    ellipse.SetB(semiAxisZ);
    QStringList points;
    for (int i = 0; i < wayPoints; ++i) {
        ellipse.SetPAram(double(i) / wayPoints + 0.25);  // from the front on
        const TXYZ flat = ellipse.Base().Origin;
        points += xyztoStr({flat.x, height, flat.y});
    }
    points += points.constFirst();

    auto* way = new TZKOglWay(this);
    way->SetData(points);
    way->SetTimerDelay(tickLength);
    way->SetHowLong(milliseconds);
    return way;
}

void MotionPage::buildPanel() {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(control_, 1);
    auto* column = new QVBoxLayout;
    row->addLayout(column);
    column->setContentsMargins(0, 9, 9, 9);
    navigator_->setObjectName("navigator");
    navigator_->setFixedSize(170, 170);
    navigator_->setToolTip(tr("Drag the cube, or use the arrow keys; a right click has fixed views"));
    navigator_->DblClick();  // the cube in the middle of the panel, turning about its own middle
    navigator_->SetZkOglCanvas(canvas_);
    column->addWidget(navigator_);
    for (QWidget* widget : std::initializer_list<QWidget*>{carouselTurns, balloonFlies, eyeTravels, fromTheFront})
        column->addWidget(widget);
    column->addStretch(1);

    carouselTurns->setChecked(true);
    balloonFlies->setChecked(true);
    for (const QCheckBox* box : {carouselTurns, balloonFlies, eyeTravels})
        connect(box, &QCheckBox::toggled, this, &MotionPage::run);
    connect(fromTheFront, &QPushButton::clicked, this, &MotionPage::LookFromTheFront);
    // Whoever turns the view by hand does not want the eye to travel on.
    connect(navigator_, &TZKOglNav::OnNav3D, this, [this] { eyeTravels->setChecked(false); });
}

void MotionPage::run() {
    carousel_->Clock()->SetEnabled(shown_ && carouselTurns->isChecked());
    balloonWay_->SetActive(shown_ && balloonFlies->isChecked());
    eyeWay_->SetActive(shown_ && eyeTravels->isChecked());
}

void MotionPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    shown_ = true;
    run();
}

void MotionPage::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    shown_ = false;
    run();
}

void MotionPage::LookFromTheFront() {
    eyeTravels->setChecked(false);
    look(Normalize(frontEye));
}

// Upright, from a direction. The middle of the picture is the middle of the carousel.
void MotionPage::look(const TXYZ& towardsEye) {
    TBAse base = Unitbase;
    base.Origin = {0, 2.2, 0};
    base.ZAxis = towardsEye;
    base.XAxis = Normalize(Vekt({0, 1, 0}, towardsEye));
    base.YAxis = Vekt(base.ZAxis, base.XAxis);
    canvas_->SetProjectionbase(base);
    navigator_->SetZkOglCanvas(canvas_);  // the cube takes the view
}

}  // namespace gallery
