#pragma once

#include <QStringList>
#include <QWidget>

#include <memory>

namespace zk::test {

/// The path of a form beside the tests.
QString FormFile(const QString& name);

/// The form of allcomponents.ui, built with setters. Its components are made in another order.
std::unique_ptr<QWidget> BuiltInCode();

/// "name.Property: value" for all that the named components on a form publish, sorted.
QStringList ValuesOf(const QWidget& form);

}  // namespace zk::test
