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
    // Each switch may repaint, and user code then delete lights.
    std::vector<QPointer<Tlight>> lights;
    for (Tlight* light : lightList())
        lights.emplace_back(light);
    for (std::size_t i = 0; i < lights.size(); ++i) {
        const QPointer<TZKOglLight> light = qobject_cast<TZKOglLight*>(lights[i].data());
        if (!light)
            continue;
        const bool enabled = light->GetEnabled();
        light->SetEnabled(false);
        if (light)
            light->SetHandle(GL_LIGHT0 + int(i));
        if (light)
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
