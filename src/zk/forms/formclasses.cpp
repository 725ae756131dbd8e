#include "formclasses.h"

#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>

#include <type_traits>

namespace zk {

namespace {

template <class T>
QObject* make(QObject* owner) {
    if constexpr (std::is_base_of_v<QWidget, T>)
        return new T(qobject_cast<QWidget*>(owner));
    else
        return new T(owner);
}

template <class T>
constexpr FormClass component(const char* name, const char* header) {
    return {name, header, &T::staticMetaObject, std::is_base_of_v<QWidget, T>, &make<T>};
}

const FormClass classes[] = {
    component<TZKOglShape>("zk::TZKOglShape", "zk/_zkogltools/oglshape.h"),
    component<TZKOglBox>("zk::TZKOglBox", "zk/_zkogltools/box.h"),
    component<TZKOglSphere>("zk::TZKOglSphere", "zk/_zkogltools/sphere.h"),
    component<TZKOglPlane>("zk::TZKOglPlane", "zk/_zkogltools/plane.h"),
    component<TZKOglCylinder>("zk::TZKOglCylinder", "zk/_zkogltools/cylinder.h"),
    component<TZKOglRefShape>("zk::TZKOglRefShape", "zk/_zkogltools/refshape.h"),
    component<TZkOglCanvas>("zk::TZkOglCanvas", "zk/_zkoglcanvas/canvas.h"),
    component<TZKOglControl>("zk::TZKOglControl", "zk/_zkoglcanvas/control.h"),
    component<TZKOglScene>("zk::TZKOglScene", "zk/_zkoglcanvas/scene.h"),
    component<TZKOglRefScene>("zk::TZKOglRefScene", "zk/_zkoglcanvas/refscene.h"),
    component<TZKOglLight>("zk::TZKOglLight", "zk/_zkoglcanvas/ogllight.h"),
    component<TZKOglWay>("zk::TZKOglWay", "zk/_zkoglextools/way.h"),
    component<TZKOglNav>("zk::TZKOglNav", "zk/_zkoglextools/navigator.h"),
    component<TZkOglSequencer>("zk::TZkOglSequencer", "zk/_zkoglextools/sequencer.h"),
    component<TZkOglTimer>("zk::TZkOglTimer", "zk/_zkoglextools/ogltimer.h"),
};

constexpr QStringView prefix = u"zk::";

QStringView withoutPrefix(QStringView name) {
    return name.startsWith(prefix) ? name.mid(prefix.size()) : name;
}

}  // namespace

QString FormClass::ShortName() const {
    return withoutPrefix(QString::fromLatin1(Name)).toString();
}

std::span<const FormClass> FormClasses() {
    return classes;
}

const FormClass* FindFormClass(QStringView name) {
    const QStringView wanted = withoutPrefix(name);
    for (const FormClass& one : classes)
        if (wanted == QLatin1String(one.Name + prefix.size()))
            return &one;
    return nullptr;
}

}  // namespace zk
