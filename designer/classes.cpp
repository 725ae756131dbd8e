#include "classes.h"

#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>

namespace zk {

namespace {
template <class T>
QObject* make(QObject* owner) {
    if constexpr (std::is_base_of_v<QWidget, T>)
        return new T(static_cast<QWidget*>(owner));
    else
        return new T(owner);
}
}  // namespace

const FormClass* FindFormClass(const QString& name) {
    static const FormClass classes[] = {
        {"zk::TZKOglShape", "zk/_zkogltools/oglshape.h", make<TZKOglShape>, false},
        {"zk::TZKOglBox", "zk/_zkogltools/box.h", make<TZKOglBox>, false},
        {"zk::TZKOglSphere", "zk/_zkogltools/sphere.h", make<TZKOglSphere>, false},
        {"zk::TZKOglPlane", "zk/_zkogltools/plane.h", make<TZKOglPlane>, false},
        {"zk::TZKOglCylinder", "zk/_zkogltools/cylinder.h", make<TZKOglCylinder>, false},
        {"zk::TZKOglRefShape", "zk/_zkogltools/refshape.h", make<TZKOglRefShape>, false},
        {"zk::TZkOglCanvas", "zk/_zkoglcanvas/canvas.h", make<TZkOglCanvas>, false},
        {"zk::TZKOglControl", "zk/_zkoglcanvas/control.h", make<TZKOglControl>, true},
        {"zk::TZKOglScene", "zk/_zkoglcanvas/scene.h", make<TZKOglScene>, false},
        {"zk::TZKOglRefScene", "zk/_zkoglcanvas/refscene.h", make<TZKOglRefScene>, false},
        {"zk::TZKOglLight", "zk/_zkoglcanvas/ogllight.h", make<TZKOglLight>, false},
        {"zk::TZKOglWay", "zk/_zkoglextools/way.h", make<TZKOglWay>, false},
        {"zk::TZKOglNav", "zk/_zkoglextools/navigator.h", make<TZKOglNav>, true},
        {"zk::TZkOglSequencer", "zk/_zkoglextools/sequencer.h", make<TZkOglSequencer>, false},
        {"zk::TZkOglTimer", "zk/_zkoglextools/ogltimer.h", make<TZkOglTimer>, false},
    };
    for (const FormClass& type : classes) {
        if (name == QLatin1String(type.name))
            return &type;
    }
    return nullptr;
}

}  // namespace zk
