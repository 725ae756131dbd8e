#include "standin.h"

#include "mirroredclass.h"

#include <zk/host/message.h>

#include <QPainter>
#include <QPointer>

#include <exception>

namespace zk {

StandIn::StandIn(QObject* component, const QPixmap& picture, QWidget* parent)
    : QWidget(parent), component_(component), picture_(picture) {
    component->setParent(this);
    resize(IconSize());
    connect(this, &QObject::objectNameChanged, this, qOverload<>(&QWidget::update));
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

// The component's own properties follow QWidget's here, and QObject's there.
int StandIn::qt_metacall(QMetaObject::Call call, int id, void** arguments) {
    switch (call) {
        case QMetaObject::ReadProperty:
        case QMetaObject::WriteProperty:
        case QMetaObject::ResetProperty:
        case QMetaObject::RegisterPropertyMetaType:
        case QMetaObject::BindableProperty:
            break;
        default:
            return QWidget::qt_metacall(call, id, arguments);
    }
    const int own = id - QWidget::staticMetaObject.propertyCount();
    if (own < 0 || !component_)
        return QWidget::qt_metacall(call, id, arguments);
    try {
        return component_->qt_metacall(call, own + QObject::staticMetaObject.propertyCount(), arguments);
    } catch (const std::exception& error) {  // a value that the component refuses
        ShowMessage(objectName() + QStringLiteral(": ") + QString::fromUtf8(error.what()));
        return -1;
    }
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
