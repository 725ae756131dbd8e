#include "standin.h"

#include "mirroredclass.h"

#include <zk/host/component.h>
#include <zk/host/message.h>

#include <QDynamicPropertyChangeEvent>
#include <QMetaMethod>
#include <QPainter>
#include <QPointer>
#include <QtDesigner/QDesignerFormWindowInterface>

#include <exception>

namespace zk {

StandIn::StandIn(QObject* component, const QPixmap& picture, QWidget* parent)
    : QWidget(parent), component_(component), picture_(picture) {
    component->setParent(this);
    resize(IconSize());
    setAutoFillBackground(true);  // it may stand over a picture, which does not shine through
    connect(this, &QObject::objectNameChanged, this, [this](const QString& name) {
        if (component_)
            component_->setObjectName(name);  // a preview looks for it by its name
        update();
    });
}

QObject* StandIn::Running(QWidget* widget) {
    const auto* standIn = dynamic_cast<StandIn*>(widget);
    return standIn ? standIn->Component() : widget;
}

const QMetaObject* StandIn::metaObject() const {
    return component_ ? MirroredClass(component_->metaObject()) : QWidget::metaObject();
}

void* StandIn::qt_metacast(const char* name) {
    return QWidget::qt_metacast(name);
}

// Whoever is connected to a signal here, as in a preview, is told when the component tells it.
void StandIn::connectNotify(const QMetaMethod& signal) {
    const int own = signal.methodIndex() - QWidget::staticMetaObject.methodCount();
    if (own >= 0 && component_)
        QMetaObject::connect(component_, own + QObject::staticMetaObject.methodCount(), this, signal.methodIndex(),
                             Qt::DirectConnection | Qt::UniqueConnection);
}

// The component's own properties and methods follow QWidget's here, and QObject's there.
int StandIn::qt_metacall(QMetaObject::Call call, int id, void** arguments) {
    const QMetaObject& here = QWidget::staticMetaObject;
    const QMetaObject& there = QObject::staticMetaObject;
    int own = -1;
    switch (call) {
        case QMetaObject::ReadProperty:
        case QMetaObject::WriteProperty:
        case QMetaObject::ResetProperty:
        case QMetaObject::RegisterPropertyMetaType:
        case QMetaObject::BindableProperty:
            if (id >= here.propertyCount())
                own = id - here.propertyCount() + there.propertyCount();
            break;
        case QMetaObject::InvokeMetaMethod:
            if (id >= here.methodCount())
                own = id - here.methodCount() + there.methodCount();
            break;
        default:
            break;
    }
    if (own < 0 || !component_)
        return QWidget::qt_metacall(call, id, arguments);
    if (call == QMetaObject::InvokeMetaMethod && metaObject()->method(id).methodType() == QMetaMethod::Signal) {
        const QMetaObject* const type = metaObject()->method(id).enclosingMetaObject();
        QMetaObject::activate(this, type, id - type->methodOffset(), arguments);
        return -1;
    }
    try {
        return component_->qt_metacall(call, own, arguments);
    } catch (const std::exception& error) {  // a value that the component refuses
        ShowMessage(objectName() + QStringLiteral(": ") + QString::fromUtf8(error.what()));
        return -1;
    }
}

// A preview sets the properties of owned objects by their paths, as a compiled form does.
bool StandIn::event(QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange && component_) {
        const QByteArray name = static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName();
        const QVariant value = name.contains('.') ? property(name) : QVariant();
        if (value.isValid()) {
            component_->setProperty(name, value);
            setProperty(name, QVariant());
        }
    }
    return QWidget::event(event);
}

void StandIn::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!component_ || QDesignerFormWindowInterface::findFormWindow(this))
        return;
    hide();
    ComponentBase::Of(component_)->SetDesigning(false);
}

void StandIn::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QSize size = picture_.size();
    const QRect frame = rect().adjusted(0, 0, -1, -1);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    painter.drawRoundedRect(frame, 3, 3);
    painter.drawPixmap((width() - size.width()) / 2, 4, picture_);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect line = rect().adjusted(2, size.height() + 5, -2, -2);
    painter.drawText(line, Qt::AlignHCenter | Qt::AlignTop,
                     fontMetrics().elidedText(objectName(), Qt::ElideMiddle, line.width()));
}

}  // namespace zk
