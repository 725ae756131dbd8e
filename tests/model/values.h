#pragma once

#include "choices.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <vector>

namespace zk::test {

/// The properties of a component that have values, those of owned objects with dots: all but references to components.
const std::vector<QString>& ValuePaths(const QObject& object);

/// A value for one of them: what a form could hold, or, where it is `wild`, also what none does. Not valid where
/// nothing is to be written.
QVariant ValueFor(const QObject& object, const QString& path, Choices& choices, bool wild);

/// Writes it. What is refused is not written; errors go no further.
void SetValue(QObject& object, const QString& path, const QVariant& value, bool wild);

}  // namespace zk::test
