#include "mirroredclass.h"

#include <QHash>
#include <QWidget>

namespace zk {

const QMetaObject* MirroredClass(const QMetaObject* component) {
    static auto& copies = *new QHash<const QMetaObject*, const QMetaObject*>;
    if (component == &QObject::staticMetaObject)
        return &QWidget::staticMetaObject;
    if (const QMetaObject* copy = copies.value(component))
        return copy;
    auto* copy = new QMetaObject(*component);
    copy->d.superdata = MirroredClass(component->superClass());
    copy->d.static_metacall = nullptr;
    copies.insert(component, copy);
    return copy;
}

}  // namespace zk
