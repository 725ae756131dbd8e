#include "componentref.h"

#include <QWidget>

#include <cstring>
#include <vector>

namespace zk {

namespace {

struct Declared {
    const QMetaObject* component;
    const char* property;
    const QMetaObject* kind;
};

// A class's static objects fill it before `main`, in any order.
std::vector<Declared>& declared() {
    static auto& all = *new std::vector<Declared>;
    return all;
}

// Once in a process, in which a plugin may have these classes a second time.
template <class From, class To, class Function>
void convert(Function function) {
    if (!QMetaType::hasRegisteredConverterFunction<From, To>())
        QMetaType::registerConverter<From, To>(function);
}

const struct Converters {
    Converters() {
        RegisterReferenceTarget<QObject>();
        RegisterReferenceTarget<QWidget>();
        convert<QString, ComponentRef>(&ComponentRef::Named);
        convert<QByteArray, ComponentRef>(
            [](const QByteArray& name) { return ComponentRef::Named(QString::fromUtf8(name)); });
        convert<ComponentRef, QString>([](const ComponentRef& ref) { return ref.Name(); });
        convert<ComponentRef, QByteArray>([](const ComponentRef& ref) { return ref.Name().toUtf8(); });
    }
} converters;

}  // namespace

ComponentRef ComponentRef::Named(const QString& name) {
    ComponentRef ref;
    ref.name_ = name;
    return ref;
}

void DeclareReference(const QMetaObject& component, const char* property, const QMetaObject& kind) {
    declared().push_back({&component, property, &kind});
}

const QMetaObject* ReferenceKind(const QMetaObject* component, const char* property) {
    for (; component; component = component->superClass())
        for (const Declared& one : declared())
            if (one.component == component && std::strcmp(one.property, property) == 0)
                return one.kind;
    return nullptr;
}

}  // namespace zk
