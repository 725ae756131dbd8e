#include "references.h"

#include <zk/host/componentref.h>

namespace zk {

bool IsReference(const QMetaProperty& property) {
    return property.metaType() == QMetaType::fromType<ComponentRef>();
}

const QMetaObject* ReferenceKind(const QObject* component, const QMetaProperty& property) {
    return ReferenceKind(component->metaObject(), property.name());
}

bool WriteReference(QObject* component, const QMetaProperty& property, QObject* target) {
    return property.write(component, QVariant::fromValue(ComponentRef(target)));
}

}  // namespace zk
