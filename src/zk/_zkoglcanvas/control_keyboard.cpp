#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/control.h>
#include <zk/_zkoglcanvas/hit.h>
#include <zk/_zkoglcanvas/shapeaccessible.h>

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zk {

namespace {

auto placeOf(const std::vector<THitPlace>& places, std::int32_t shape) {
    return std::find_if(places.begin(), places.end(), [shape](const THitPlace& p) { return p.HitObject == shape; });
}

}  // namespace

// --- the current shape ----------------------------------------------------------------------------------------------

HitTarget* TZKOglControl::CurrentShape() const {
    return HitTarget::Of(current_);
}

void TZKOglControl::SetCurrentShape(HitTarget* shape) {
    setCurrent(shape ? shape->HitName() : HitTarget::NoHit, framed_);
}

void TZKOglControl::setCurrent(std::int32_t shape, bool framed, const std::optional<QRectF>& place) {
    const QPointer<TZKOglControl> self = this;
    const bool another = std::exchange(current_, shape) != shape;
    framed_ = framed;
    showFrame(framed_ && hasFocus(), place);
    if (!self || !another)
        return;
    auto* object = dynamic_cast<QObject*>(CurrentShape());
    if (hasFocus())
        TellFocusOfShape(object);
    Q_EMIT OnCurrentShape(this, object);
}

// Without a place a picture of the shapes is made in feedback mode, so that handlers may run.
void TZKOglControl::showFrame(bool shown, const std::optional<QRectF>& place) {
    if (!canvas_)
        return;
    if (shown && CurrentShape())
        canvas_->SetFocusFrame(current_, place);
    else
        canvas_->SetFocusFrame(HitTarget::NoHit);
}

void TZKOglControl::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                       event->reason() == Qt::ShortcutFocusReason;
    if (!canvas_ || !canvas_->GetSelectEnabled() || (!byKey && !framed_))
        return;
    guarded([this] {
        const QPointer<TZKOglControl> self = this;
        const std::vector<THitPlace> places = canvas_->Places();
        if (!self || places.empty())
            return;
        const auto found = placeOf(places, current_);
        const THitPlace& place = found == places.end() ? places.front() : *found;
        setCurrent(place.HitObject, true, place.Place);
    });
}

void TZKOglControl::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    showFrame(false);
}

// --- keys -----------------------------------------------------------------------------------------------------------

void TZKOglControl::keyPressEvent(QKeyEvent* event) {
    const QPointer<TZKOglControl> self = this;
    bool taken = false;
    guarded([&] {
        taken = true;  // also when what it led to has thrown
        taken = takeKey(*event);
    });
    if (taken || !self)
        event->accept();
    else
        QWidget::keyPressEvent(event);
}

bool TZKOglControl::takeKey(const QKeyEvent& event) {
    if (!canvas_ || !canvas_->GetSelectEnabled())
        return false;
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    switch (event.key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Home:
        case Qt::Key_End:
            return modifiers == Qt::NoModifier && stepTo(event.key());
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Select:
            return CurrentShape() && (event.isAutoRepeat() || pressKey(Qt::LeftButton, modifiers));
        case Qt::Key_Menu:
            return CurrentShape() && (event.isAutoRepeat() || pressKey(Qt::RightButton, modifiers));
        case Qt::Key_F10:
            return modifiers == Qt::ShiftModifier && CurrentShape() &&
                   (event.isAutoRepeat() || pressKey(Qt::RightButton, Qt::NoModifier));
        default:
            return false;
    }
}

bool TZKOglControl::stepTo(int key) {
    const QPointer<TZKOglControl> self = this;
    const std::vector<THitPlace> places = canvas_->Places();
    if (!self || places.empty())
        return false;
    const std::ptrdiff_t last = std::ptrdiff_t(places.size()) - 1;
    const auto found = placeOf(places, current_);
    const bool forward = key == Qt::Key_Down || key == (isRightToLeft() ? Qt::Key_Left : Qt::Key_Right);
    std::ptrdiff_t index = 0;
    if (key == Qt::Key_Home || key == Qt::Key_End)
        index = key == Qt::Key_Home ? 0 : last;
    else if (found == places.end())
        index = forward ? 0 : last;
    else
        index = std::clamp<std::ptrdiff_t>(found - places.begin() + (forward ? 1 : -1), 0, last);
    const THitPlace& place = places[std::size_t(index)];
    setCurrent(place.HitObject, true, place.Place);
    return true;
}

bool TZKOglControl::pressKey(Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    const QPointer<TZKOglControl> self = this;
    const bool clicked = ClickShape(CurrentShape(), button, modifiers);
    if (self && clicked)
        setCurrent(current_, true);
    return clicked;
}

bool TZKOglControl::ClickShape(HitTarget* shape, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    if (!shape || !canvas_ || !canvas_->GetSelectEnabled() || clickedByKey_ != HitTarget::NoHit)
        return false;
    const QPointer<TZKOglControl> self = this;
    const std::int32_t name = shape->HitName();
    const std::vector<THitPlace> places = canvas_->Places();
    const auto place = placeOf(places, name);
    if (!self || place == places.end())
        return false;
    const QPointF at = place->Place.center().toPoint() + contentsRect().topLeft();
    const auto tell = [&](QEvent::Type type, Qt::MouseButtons held, auto handler) {
        if (!self)
            return;
        QMouseEvent event(type, at, mapToGlobal(at), button, held, modifiers);
        clickedByKey_ = name;
        (this->*handler)(&event);
        if (self)
            clickedByKey_ = HitTarget::NoHit;
    };
    tell(QEvent::MouseButtonPress, button, &TZKOglControl::mousePressEvent);
    tell(QEvent::MouseButtonRelease, Qt::NoButton, &TZKOglControl::mouseReleaseEvent);
    return true;
}

}  // namespace zk
