#pragma once

#include <QMetaObject>

namespace zk {

/// A component's class as Qt Designer is to see it on the widget that stands for the component: the class and its bases
/// with their names, properties, signals and enumerations, but upon QWidget in the place of QObject.
///
/// Nothing is called through the copies: Qt finds no static call in them and so asks the object's `qt_metacall`, where
/// the properties of the component begin at QWidget's count of properties. The copies are kept to the end of the
/// process, since Designer remembers classes by address.
const QMetaObject* MirroredClass(const QMetaObject* component);

}  // namespace zk
