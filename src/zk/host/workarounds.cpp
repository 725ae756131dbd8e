#include "workarounds.h"

#include <QByteArray>
#include <QList>
#include <QtGlobal>

#include <algorithm>

namespace zk {

namespace {

constexpr std::array<std::string_view, AllWorkarounds.size()> names{
    "selection-lists", "kept-picture", "new-size",      "desktop-opengl",
    "list-strips",     "surface-type", "wayland-child", "selection-corners"};
using Switches = std::array<bool, names.size()>;

Switches atFirst() {
    Switches switches;
    switches.fill(true);
    for (const QByteArray& part : qgetenv("ZKOGL_WORKAROUNDS_OFF").split(',')) {
        const QByteArray name = part.trimmed();
        const auto found =
            std::find(names.begin(), names.end(), std::string_view(name.constData(), std::size_t(name.size())));
        if (found != names.end())
            switches[std::size_t(found - names.begin())] = false;
        else if (!name.isEmpty())
            qWarning("ZKOGL_WORKAROUNDS_OFF: there is no workaround \"%s\"", name.constData());
    }
    return switches;
}

Switches& switches() {
    static Switches switches = atFirst();
    return switches;
}

}  // namespace

std::string_view NameOf(Workaround workaround) {
    return names[std::size_t(workaround)];
}

bool IsOn(Workaround workaround) {
    return switches()[std::size_t(workaround)];
}

void SetOn(Workaround workaround, bool on) {
    switches()[std::size_t(workaround)] = on;
}

}  // namespace zk
