#include "references.h"

#include <array>
#include <string_view>

namespace zk {

bool IsReference(const QMetaProperty& property) {
    static constexpr std::array<std::string_view, 6> names = {"ZkOglCanvas",    "Scene",          "WinControl",
                                                              "ReferenceScene", "ReferenceShape", "Sequencer"};
    const std::string_view name = property.name();
    for (const std::string_view reference : names) {
        if (name == reference)
            return true;
    }
    return false;
}

const QMetaObject* ReferenceKind(const QObject*, const QMetaProperty& property) {
    return property.metaType().metaObject();
}

bool WriteReference(QObject* component, const QMetaProperty& property, QObject* target) {
    if (!target) {
        const void* const none = nullptr;
        return property.write(component, QVariant(property.metaType(), &none));
    }
    return property.write(component, QVariant::fromValue(target));
}

}  // namespace zk
