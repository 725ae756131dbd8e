#include "navigator.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath.h>
#include <zk/_zkxyz/constants.h>
#include <zk/host/drawingcanvas.h>
#include <zk/host/formreading.h>
#include <zk/host/message.h>

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <qdrawutil.h>

#include <algorithm>
#include <array>
#include <exception>
#include <numbers>

namespace zk {

namespace {

constexpr double startUnitsPerCm = 25.0;
constexpr double viewAngle = 30.0;   // degrees
constexpr int keyStep = 10;          // pixels that an arrow key drags by
constexpr int darkestForBlack = 89;  // of 255: on a darker ground black has a contrast below 3 to 1

void addOutline(TlistOFxyzArray& list, std::initializer_list<TXYZ> points) {
    TXYZARRAY* outline = list.AddArray();
    for (const TXYZ& point : points)
        ArrayAppendData(*outline, &point);
}

}  // namespace

static const ReferenceProperty<TZKOglNav, TZkOglCanvas> navigatorCanvasProperty("ZkOglCanvas");
static const ReferenceTarget<TZKOglNav> navigatorTarget;

TZKOglNav::TZKOglNav(QWidget* parent) : QWidget(parent), ComponentBase(this), menu_(new QMenu(this)) {
    menu_->addAction(QStringLiteral("Grundriss"), this, &TZKOglNav::ClickGrundriss);
    menu_->addAction(QStringLiteral("Aufriss"), this, &TZKOglNav::ClickAufriss);
    menu_->addAction(QStringLiteral("Schraeriss"), this, &TZKOglNav::ClickSchraegriss);
    connect(this, &QObject::objectNameChanged, this, [this] { SetCaption(QStringLiteral(" ")); });
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("View navigator"));
    setAccessibleDescription(
        tr("Turns the view of the picture: drag the cube or use the arrow keys; the menu has fixed views."));
    resize(TZKOglNav::sizeHint());
    if (parent)
        makeDevice();
}

TZKOglNav::~TZKOglNav() {
    AnnounceRemoval();
    delete device_.data();
}

// --- the device and its cube ----------------------------------------------------------------------------------------

bool TZKOglNav::event(QEvent* event) {
    TakeDynamicProperty(event);
    if (event->type() == QEvent::ParentChange && parentWidget())
        makeDevice();
    return QWidget::event(event);
}

void TZKOglNav::makeDevice() {
    const bool first = !device_;
    delete device_.data();
    device_ = new TZKCanvas3d(this);
    device_->Setcontrol(this);
    device_->SetUnitsPerCm(startUnitsPerCm);
    device_->SetBlickWinkel(viewAngle);
    buildEdges();
    if (first && zkOglCanvas_)
        SetZkOglCanvas(zkOglCanvas_);  // it came when there was no cube that could take its axes
    update();
}

// The outlines of the sides are open: each leaves out its last edge, which another one has.
void TZKOglNav::buildEdges() {
    const double x = extentX_;
    const double y = extentY_;
    const double z = extentZ_;
    cubeEdges_.Clear();
    groundEdges_.Clear();
    addOutline(cubeEdges_, {{0, 0, z}, {0, y, z}, {x, y, z}, {x, 0, z}});
    addOutline(cubeEdges_, {{x, 0, 0}, {0, 0, 0}, {0, 0, z}, {x, 0, z}});
    addOutline(cubeEdges_, {{x, y, 0}, {x, 0, 0}, {x, 0, z}, {x, y, z}});
    addOutline(cubeEdges_, {{0, y, 0}, {x, y, 0}, {x, y, z}, {0, y, z}});
    addOutline(cubeEdges_, {{0, 0, 0}, {0, y, 0}, {0, y, z}, {0, 0, z}});
    addOutline(groundEdges_, {{0, 0, 0}, {x, 0, 0}, {x, y, 0}, {0, y, 0}, {0, 0, 0}});
}

void TZKOglNav::SetBounds(int left, int top, int width, int height) {
    setGeometry(left, top, width, height);
    sizeDevice();  // a widget that is not shown yet gets its resize event only then
}

void TZKOglNav::sizeDevice() {
    if (!device_)
        return;
    device_->SetUnitsPerCm(std::min(width(), height()) / 2.0);
    device_->SetHeight(height());
    device_->SetWidth(width());
}

void TZKOglNav::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    sizeDevice();
}

void TZKOglNav::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    sizeDevice();  // of a device that came with a new parent
}

void TZKOglNav::SetCaption(const QString& caption) {
    caption_ = caption;
    update();
}

// --- painting -------------------------------------------------------------------------------------------------------

void TZKOglNav::paintEvent(QPaintEvent*) {
    {
        QPainter painter(this);
        qDrawShadePanel(&painter, rect(), palette());
        painter.drawText(rect(), Qt::AlignCenter, caption_);
        if (hasFocus()) {
            QStyleOptionFocusRect option;
            option.initFrom(this);
            option.rect = rect().adjusted(2, 2, -2, -2);
            option.backgroundColor = palette().color(QPalette::Window);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
        }
    }
    Paint();
}

void TZKOglNav::Paint() {
    DrawingCanvas* const canvas = device_ ? device_->GetCanvas() : nullptr;
    if (!canvas)
        return;
    const QPalette& colors = palette();
    const bool isDark = qGray(colors.color(QPalette::Window).rgb()) < darkestForBlack;
    canvas->SetPen(QPen(isDark ? colors.color(QPalette::WindowText) : QColor(Qt::black), 1));
    device_->PolyPolyline3D(cubeEdges_);
    canvas->SetPen(QPen(Qt::red, 3));
    device_->PolyPolyline3D(groundEdges_);
    canvas->SetPen(QPen(Qt::black, 3));
}

// --- the view -------------------------------------------------------------------------------------------------------

TBAse TZKOglNav::GetBase() const {
    return device_ ? device_->GetprojectionBAse() : Unitbase;
}

TBAse TZKOglNav::UpdateBase(const TBAse& Base) {
    return {Nullxyz, Base.XAxis, Base.YAxis, Base.ZAxis};
}

void TZKOglNav::SetZkOglCanvas(TZkOglCanvas* C) {
    if (zkOglCanvas_ && zkOglCanvas_ != C)
        RemoveFreeNotification(zkOglCanvas_);
    zkOglCanvas_ = C;
    if (!C)
        return;
    FreeNotification(C);
    if (!device_)
        return;
    TBAse base = C->GetprojectionBAse();
    base.Origin = GetBase().Origin;
    device_->SetProjectionbase(base);
    update();
}

void TZKOglNav::Loaded() {
    ComponentBase::Loaded();
    if (zkOglCanvas_)
        SetZkOglCanvas(zkOglCanvas_);
}

void TZKOglNav::Notification(QObject* component, TOperation operation) {
    ComponentBase::Notification(component, operation);
    if (operation != TOperation::opRemove)
        return;
    if (zkOglCanvas_ && component == zkOglCanvas_)
        zkOglCanvas_ = nullptr;
    if (device_ && component == device_)
        device_ = nullptr;
}

// The canvas gets the view, in one repaint.
void TZKOglNav::showView() {
    update();
    const QPointer<TZKOglNav> self = this;
    const ChangeBracket bracket(zkOglCanvas_);
    if (!self || !zkOglCanvas_)
        return;
    zkOglCanvas_->SetProjectionbase(UpdateBase(GetBase()));
    if (self && zkOglCanvas_)
        zkOglCanvas_->Refresh();
}

void TZKOglNav::DblClick() {
    if (!device_)
        return;
    device_->SetProjectionbase(
        {{extentX_ / 2.0, extentY_ / 2.0, extentZ_ / 2.0}, Unitbase.XAxis, Unitbase.YAxis, Unitbase.ZAxis});
    showView();
}

void TZKOglNav::ClickGrundriss() {
    if (!device_)
        return;
    device_->SetProjectionbase(UpdateBase(Unitbase));
    showView();
}

void TZKOglNav::ClickAufriss() {
    if (!device_)
        return;
    device_->SetProjectionbase({GetBase().Origin, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}});
    showView();
}

void TZKOglNav::ClickSchraegriss() {}

// --- turning --------------------------------------------------------------------------------------------------------

void TZKOglNav::turnAbout(const TXYZ& axis, double angle) {
    const TBAse base = GetBase();
    const Tmatrix rotation = RotationToMatrix3d({base.Origin, axis}, angle);
    device_->SetProjectionbase(MAtrixToBase(Mulmat(BAseToMAtrix(base), rotation)));
}

// One step of a drag: about the view's own vertical axis, then about its own horizontal one.
void TZKOglNav::turn(int dx, int dy) {
    if (!device_)
        return;
    if (dx != 0 && width() > 0)
        turnAbout(GetBase().YAxis, dx / (width() / 2.0) * std::numbers::pi);
    if (dy != 0 && height() > 0)
        turnAbout(GetBase().XAxis, dy / (height() / 2.0) * std::numbers::pi);
    update();
    const QPointer<TZKOglNav> self = this;
    if (zkOglCanvas_)
        zkOglCanvas_->SetProjectionbase(UpdateBase(GetBase()));
    if (!self)
        return;
    try {
        Q_EMIT OnNav3D(this, 0);
    } catch (const std::exception& error) {
        ShowMessage(QString::fromUtf8(error.what()));
    }
}

void TZKOglNav::MouseDown(Qt::MouseButton, TShiftState, int x, int y) {
    lastMouse_ = {x, y};
}

void TZKOglNav::MouseMove(TShiftState shift, int x, int y) {
    update();  // through the same painting as always, so that it stays
    if (!(shift & ssLeft))
        return;
    const QPoint step = QPoint(x, y) - lastMouse_;
    lastMouse_ = {x, y};
    turn(step.x(), step.y());
}

void TZKOglNav::mousePressEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    MouseDown(event->button(), ShiftStateOf(*event), at.x(), at.y());
}

void TZKOglNav::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    MouseMove(ShiftStateOf(*event), at.x(), at.y());
}

void TZKOglNav::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointer<TZKOglNav> self = this;
    mousePressEvent(event);
    if (self && event->button() == Qt::LeftButton)
        DblClick();
}

void TZKOglNav::keyPressEvent(QKeyEvent* event) {
    const int step = event->modifiers() & Qt::ShiftModifier ? 1 : keyStep;
    switch (event->key()) {
        case Qt::Key_Left:
            return turn(-step, 0);
        case Qt::Key_Right:
            return turn(step, 0);
        case Qt::Key_Up:
            return turn(0, -step);
        case Qt::Key_Down:
            return turn(0, step);
        case Qt::Key_Home:
            return DblClick();
        default:
            QWidget::keyPressEvent(event);
    }
}

void TZKOglNav::contextMenuEvent(QContextMenuEvent* event) {
    menu_->popup(event->globalPos());
}

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TZKOglNav::readCanvas() const {
    return ComponentRef(GetZkOglCanvas());
}

void TZKOglNav::writeCanvas(const ComponentRef& ref) {
    WriteReference(*this, "ZkOglCanvas", ref,
                   [this](QObject* object) { SetZkOglCanvas(static_cast<TZkOglCanvas*>(object)); });
}

}  // namespace zk
