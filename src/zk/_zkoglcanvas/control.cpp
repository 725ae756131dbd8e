#include "control.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/hit.h>
#include <zk/_zkoglcanvas/shapeaccessible.h>
#include <zk/host/componentref.h>
#include <zk/host/message.h>

#include <QMargins>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QPointer>

#include <cmath>
#include <exception>
#include <utility>

namespace zk {

static const ReferenceTarget<TZKOglControl> controlTarget;

// Wider than any control; widths are added up.
static constexpr int widestBevel = 100000;

TZKOglControl::TZKOglControl(QWidget* parent)
    : QWidget(parent), ComponentBase(this), current_(HitTarget::NoHit), clickedByKey_(HitTarget::NoHit) {
    InstallShapeAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    resize(150, 150);
    SetBevelKind(bevel::bkSoft);
}

TZKOglControl::~TZKOglControl() {
    AnnounceRemoval();
}

void TZKOglControl::SetCanvas(TZkOglCanvas* canvas) {
    if (canvas_ && canvas_ != canvas)
        canvas_->SetFocusFrame(HitTarget::NoHit);
    canvas_ = canvas;
}

// --- painting and resizing ------------------------------------------------------------------------------------------

void TZKOglControl::PAint() {
    if (canvas_)
        canvas_->Refresh();
}

void TZKOglControl::resize() {
    const QPointer<TZKOglControl> self = this;
    Q_EMIT OnResize(this);
    if (!self || !canvas_ || !canvas_->CheckCurrent())
        return;
    const QSize client = contentsRect().size().expandedTo({0, 0});  // the frame may take all the room, and more
    TZkOglCanvas* const canvas = canvas_;
    const auto takeWidth = [&] {
        if (canvas_ == canvas)
            canvas->SetWidth(client.width());
    };
    const auto takeHeight = [&] {
        if (canvas_ == canvas)
            canvas->SetHeight(client.height());
    };
    InBracket(canvas, {this, canvas}, takeWidth, takeHeight);  // two sizes, one repaint
}

void TZKOglControl::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    guarded([this] { resize(); });
}

void TZKOglControl::paintEvent(QPaintEvent*) {
    if (bevelKind_ == bevel::bkNone)
        return;
    QPainter painter(this);
    const QPalette& colors = palette();
    const int drawn = std::min(bevelWidth_, widestBevel);
    const auto frame = [&](const QRect& r, TBevelCut cut) {
        if (cut == bevel::bvNone || cut == bevel::bvSpace)
            return;
        const bool lowered = cut == bevel::bvLowered;
        const bool flat = bevelKind_ == bevel::bkFlat;
        const QColor upper = colors.color(flat || lowered ? QPalette::Dark : QPalette::Light);
        const QColor lower = colors.color(flat || !lowered ? QPalette::Dark : QPalette::Light);
        const int w = drawn;
        if (bevelEdges_ & bevel::beTop)
            painter.fillRect(r.left(), r.top(), r.width(), w, upper);
        if (bevelEdges_ & bevel::beLeft)
            painter.fillRect(r.left(), r.top(), w, r.height(), upper);
        if (bevelEdges_ & bevel::beBottom)
            painter.fillRect(r.left(), r.bottom() + 1 - w, r.width(), w, lower);
        if (bevelEdges_ & bevel::beRight)
            painter.fillRect(r.right() + 1 - w, r.top(), w, r.height(), lower);
    };
    frame(rect(), bevelKind_ == bevel::bkTile ? bevel::bvRaised : bevel::bvLowered);
    frame(rect().adjusted(drawn, drawn, -drawn, -drawn), bevelInner_);
}

// --- the mouse ------------------------------------------------------------------------------------------------------

// User code hangs on the events; what it throws is told to the user and goes no further.
void TZKOglControl::guarded(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::exception& error) {
        ShowMessage(QString::fromUtf8(error.what()));
    }
}

HitTarget* TZKOglControl::targetUnderPointer(int x, int y) {
    if (!canvas_ || !canvas_->GetSelectEnabled())
        return nullptr;
    if (clickedByKey_ != HitTarget::NoHit) {
        canvas_->SetSingleHit(clickedByKey_);
        return HitTarget::Of(clickedByKey_);
    }
    // A caller of its own gives whole pixels; the mouse may stand between two.
    const bool fromMouse = int(std::floor(pointer_.x())) == x && int(std::floor(pointer_.y())) == y;
    const QPointer<TZKOglControl> self = this;  // a handler may delete the control, or take the canvas away
    const bool hit = fromMouse ? canvas_->SelectAt(pointer_) : canvas_->Select(x, y);
    if (!hit || !self || !canvas_)
        return nullptr;
    return HitTarget::Of(canvas_->Hits().front().HitObject);
}

void TZKOglControl::MouseDown(Qt::MouseButton button, TShiftState shift, int x, int y) {
    const QPointer<TZKOglControl> self = this;
    if (HitTarget* target = targetUnderPointer(x, y)) {
        const std::int32_t shape = target->HitName();
        if (clickedByKey_ == HitTarget::NoHit)
            setCurrent(shape, false);
        if (self && HitTarget::Of(shape))
            target->MouseDown(button, shift, x, y);
    }
    if (self)
        Q_EMIT OnMouseDown(this, button, shift, x, y);
}

void TZKOglControl::MouseMove(TShiftState shift, int x, int y) {
    const QPointer<TZKOglControl> self = this;
    if (HitTarget* target = targetUnderPointer(x, y))
        target->MouseMove(shift, x, y);
    if (self)
        Q_EMIT OnMouseMove(this, shift, x, y);
}

void TZKOglControl::MouseUp(Qt::MouseButton button, TShiftState shift, int x, int y) {
    const QPointer<TZKOglControl> self = this;
    if (HitTarget* target = targetUnderPointer(x, y))
        target->MouseUp(button, shift, x, y);
    if (self)
        Q_EMIT OnMouseUp(this, button, shift, x, y);
}

void TZKOglControl::mousePressEvent(QMouseEvent* event) {
    const QPointer<TZKOglControl> self = this;
    deliverMove();
    if (!self)
        return;
    pointer_ = event->position() - contentsRect().topLeft();
    guarded([&] {
        MouseDown(event->button(), ShiftStateOf(*event), int(std::floor(pointer_.x())), int(std::floor(pointer_.y())));
    });
}

void TZKOglControl::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

// Moves that came while a picture was made are all there at once; each would cost a pick, and what is drawn for it
// would fall behind the pointer. So a move waits until those behind it have been looked at, and only the newest counts.
void TZKOglControl::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = event->position() - contentsRect().topLeft();
    moveShift_ = ShiftStateOf(*event);
    if (std::exchange(moveWaits_, true))
        return;
    QMetaObject::invokeMethod(this, &TZKOglControl::deliverMove, Qt::QueuedConnection);
}

void TZKOglControl::deliverMove() {
    if (!std::exchange(moveWaits_, false))
        return;
    guarded([&] { MouseMove(moveShift_, int(std::floor(pointer_.x())), int(std::floor(pointer_.y()))); });
}

void TZKOglControl::mouseReleaseEvent(QMouseEvent* event) {
    const QPointer<TZKOglControl> self = this;
    deliverMove();
    if (!self)
        return;
    pointer_ = event->position() - contentsRect().topLeft();
    guarded([&] {
        MouseUp(event->button(), ShiftStateOf(*event), int(std::floor(pointer_.x())), int(std::floor(pointer_.y())));
    });
}

// --- frame and place ------------------------------------------------------------------------------------------------

void TZKOglControl::SetBevelKind(TBevelKind kind) {
    bevelKind_ = kind;
    applyFrame();
}

void TZKOglControl::SetBevelWidth(int width) {
    bevelWidth_ = std::max(width, 1);
    applyFrame();
}

void TZKOglControl::SetBevelEdges(TBevelEdges edges) {
    bevelEdges_ = edges;
    applyFrame();
}

void TZKOglControl::SetBevelInner(TBevelCut cut) {
    bevelInner_ = cut;
    applyFrame();
}

void TZKOglControl::applyFrame() {
    const int cuts = bevelKind_ == bevel::bkNone ? 0 : bevelInner_ == bevel::bvNone ? 1 : 2;
    const int width = cuts * std::min(bevelWidth_, widestBevel);
    const auto margin = [this, width](TBevelEdge edge) { return bevelEdges_ & edge ? width : 0; };
    const QMargins margins(margin(bevel::beLeft), margin(bevel::beTop), margin(bevel::beRight),
                           margin(bevel::beBottom));
    update();
    if (margins == contentsMargins())
        return;
    setContentsMargins(margins);
    guarded([this] { resize(); });
}

void TZKOglControl::SetAlign(TAlign align) {
    align_ = align;
    applyAlign();
}

void TZKOglControl::applyAlign() {
    QWidget* host = parentWidget();
    if (!host)
        return;
    host->removeEventFilter(this);
    if (align_ == bevel::alNone)
        return;
    host->installEventFilter(this);
    const QRect area = host->contentsRect();
    switch (align_) {
        case bevel::alTop:
            return setGeometry(area.left(), area.top(), area.width(), height());
        case bevel::alBottom:
            return setGeometry(area.left(), area.bottom() + 1 - height(), area.width(), height());
        case bevel::alLeft:
            return setGeometry(area.left(), area.top(), width(), area.height());
        case bevel::alRight:
            return setGeometry(area.right() + 1 - width(), area.top(), width(), area.height());
        case bevel::alClient:
            return setGeometry(area);
        case bevel::alNone:
            return;
    }
}

bool TZKOglControl::event(QEvent* event) {
    TakeDynamicProperty(event);
    if (event->type() == QEvent::ParentAboutToChange && parentWidget())
        parentWidget()->removeEventFilter(this);
    if (event->type() == QEvent::ParentChange)
        applyAlign();
    return QWidget::event(event);
}

bool TZKOglControl::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Resize)
        applyAlign();
    return QWidget::eventFilter(watched, event);
}

}  // namespace zk
