#pragma once

#include <QMetaProperty>
#include <QObject>

namespace zk {

/// Whether a property of a component refers to another component.
bool IsReference(const QMetaProperty& property);

/// What class the property of a component accepts; null if it is no reference.
const QMetaObject* ReferenceKind(const QObject* component, const QMetaProperty& property);

/// Refers to `target`, or to nothing (null). False if the component takes it for no such reference; what the component
/// raises comes through.
bool WriteReference(QObject* component, const QMetaProperty& property, QObject* target);

}  // namespace zk
