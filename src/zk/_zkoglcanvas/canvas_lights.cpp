#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/ogllight.h>

namespace zk {

std::vector<Tlight*> TZkOglCanvas::lightList() const {
    std::vector<Tlight*> lights;
    const TLights* list = getLights();
    for (int i = 0; list && i < list->Count(); ++i)
        lights.push_back(list->getLights(i));
    return lights;
}

void TZkOglCanvas::AddLight(Tlight* light) {
    if (light && CheckCurrent())
        light->SetHandle(GL_LIGHT0 + getLights()->Count());
    TZKDevice::AddLight(light);
}

void TZkOglCanvas::RemoveLight(Tlight* light) {
    TZKDevice::RemoveLight(light);
}

// No upper limit is kept: a light beyond OpenGL's last one makes OpenGL report an invalid enumeration, which the user
// sees.
void TZkOglCanvas::CheckLightHandle() {
    if (!CheckCurrent())
        return;
    const std::vector<Tlight*> lights = lightList();
    for (std::size_t i = 0; i < lights.size(); ++i) {
        auto* light = qobject_cast<TZKOglLight*>(lights[i]);
        if (!light)
            continue;
        const bool enabled = light->GetEnabled();
        light->SetEnabled(false);
        light->SetHandle(GL_LIGHT0 + int(i));
        light->SetEnabled(enabled);
    }
}

void TZkOglCanvas::SetLightModelTwoSided(bool on) {
    if (on == lightModelTwoSided_)
        return;
    lightModelTwoSided_ = on;
    CheckCurrent1();
    if (!context_)
        return;
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, on);
    OGLError();
    Refresh();
}

}  // namespace zk
