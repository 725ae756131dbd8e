#include "canvas3d.h"

#include <zk/host/controlcanvas.h>
#include <zk/host/formreading.h>

namespace zk {

static const ReferenceProperty<TZKCanvas3d, QWidget> controlProperty("Control");

// Empty where a control is smaller than its margins.
static QSize clientSize(const QWidget& control) {
    return control.contentsRect().size().expandedTo({0, 0});
}

TZKCanvas3d::TZKCanvas3d(QObject* owner) : TZKDevice(owner) {
    const auto* control = qobject_cast<QWidget*>(owner);
    if (!control)
        return;
    attachForwarder(nullptr);
    const QSize client = clientSize(*control);
    bounds_ = {0, 0, client.width(), client.height()};
}

TZKCanvas3d::~TZKCanvas3d() {
    AnnounceRemoval();
    Setcontrol(nullptr);
}

void TZKCanvas3d::attachForwarder(QWidget* control) {
    dropForwarder();
    forwarder_ = new TZkCanvas;
    canvas_ = new ControlCanvas(nullptr, control);
    forwarder_->SetCanvas(canvas_);
    SetPRimdevice(forwarder_);
}

void TZKCanvas3d::dropForwarder() {
    SetPRimdevice(nullptr);
    delete forwarder_.data();
    delete canvas_.data();
}

ComponentRef TZKCanvas3d::readControl() const {
    return ComponentRef(control_);
}

void TZKCanvas3d::writeControl(const ComponentRef& control) {
    WriteReference(*this, "Control", control, [this](QObject* object) { Setcontrol(static_cast<QWidget*>(object)); });
}

void TZKCanvas3d::Setcontrol(QWidget* C) {
    if (control_ && control_ != C)
        RemoveFreeNotification(control_);
    control_ = C;
    if (!C) {
        dropForwarder();
        return;
    }
    FreeNotification(C);
    attachForwarder(C);
    SetLeft(0);
    SetTop(0);
    SetHeight(clientSize(*C).height());
    SetWidth(clientSize(*C).width());
}

DrawingCanvas* TZKCanvas3d::GetCanvas() const {
    const auto* forwarder = qobject_cast<TZkCanvas*>(GetPrimdevice());
    return forwarder ? forwarder->GetCanvas() : nullptr;
}

void TZKCanvas3d::SetCanvas(DrawingCanvas* Canvas) {
    if (auto* forwarder = qobject_cast<TZkCanvas*>(GetPrimdevice()))
        forwarder->SetCanvas(Canvas);
}

void TZKCanvas3d::Notification(QObject* component, TOperation operation) {
    TZKDevice::Notification(component, operation);
    if (operation == TOperation::opRemove && component == control_)
        Setcontrol(nullptr);
}

}  // namespace zk
