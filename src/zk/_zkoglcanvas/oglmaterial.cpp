#include "oglmaterial.h"

#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glcolor.h>
#include <zk/_zkoglcanvas/glerror.h>

namespace zk {

namespace {

// OpenGL answers for one face only; a material for both faces has the same values on the front.
GLenum questionFace(GLenum face) {
    return face == GL_BACK ? GL_BACK : GL_FRONT;
}

}  // namespace

TOglMaterial::TOglMaterial() = default;

void TOglMaterial::SetParent(TZkOglCanvas* canvas) {
    canvas_ = canvas;
    if (!canvas)
        return;
    SetFace(glfront);
    SetSpecular(0xFFFFFF);
    SetEmission(0x808080);
    SetAmbient(0xFFFFFF);
    SetDiffuse(0x808080);
    SetShininess(0.1);
    SetTranslucent(1.0);
}

TColor TOglMaterial::ask(unsigned parameter) const {
    GLfloat rgba[4] = {0, 0, 0, 1};
    glGetMaterialfv(questionFace(GLFace()), parameter, rgba);
    return FromGlColor(rgba);
}

void TOglMaterial::pass(unsigned parameter, TColor color, double alpha) const {
    glMaterialfv(GLFace(), parameter, ToGlColor(color, float(alpha)).data());
}

void TOglMaterial::Pass(const Tmaterialkind& kind, const Tmaterialkind* before) {
    const GLenum face = kind.Face == glback ? GL_BACK : kind.Face == glfrontandback ? GL_FRONT_AND_BACK : GL_FRONT;
    if (before && before->Face != kind.Face)
        before = nullptr;
    const bool ambient = !before || before->Ambient != kind.Ambient;
    const bool diffuse = !before || before->Diffuse != kind.Diffuse || before->Translucent != kind.Translucent;
    if (ambient && diffuse && kind.Ambient == kind.Diffuse && kind.Translucent == 1.0) {
        glMaterialfv(face, GL_AMBIENT_AND_DIFFUSE, ToGlColor(kind.Diffuse).data());
    } else {
        if (ambient)
            glMaterialfv(face, GL_AMBIENT, ToGlColor(kind.Ambient).data());
        if (diffuse)
            glMaterialfv(face, GL_DIFFUSE, ToGlColor(kind.Diffuse, float(kind.Translucent)).data());
    }
    if (!before || before->Specular != kind.Specular)
        glMaterialfv(face, GL_SPECULAR, ToGlColor(kind.Specular).data());
    if (!before || before->Emission != kind.Emission)
        glMaterialfv(face, GL_EMISSION, ToGlColor(kind.Emission).data());
    if (!before || before->Shininess != kind.Shininess) {
        const auto shininess = GLfloat(kind.Shininess);
        glMaterialfv(face, GL_SHININESS, &shininess);
    }
}

double TOglMaterial::GetTranslucent() const {
    return Tmaterial::GetTranslucent();
}

void TOglMaterial::SetTranslucent(double translucent) {
    if (auto* canvas = qobject_cast<TZkOglCanvas*>(canvas_.data()))
        canvas->SetTranslucent(translucent);
    Tmaterial::SetTranslucent(translucent);
    pass(GL_DIFFUSE, GetDiffuse(), translucent);
    OGLError();
}

TColor TOglMaterial::GetAmbient() const {
    return ask(GL_AMBIENT);
}

void TOglMaterial::SetAmbient(TColor color) {
    Tmaterial::SetAmbient(color);
    pass(GL_AMBIENT, color, 1.0);
}

TColor TOglMaterial::GetDiffuse() const {
    return ask(GL_DIFFUSE);
}

void TOglMaterial::SetDiffuse(TColor color) {
    Tmaterial::SetDiffuse(color);
    pass(GL_DIFFUSE, color, GetTranslucent());
}

TColor TOglMaterial::GetSpecular() const {
    return ask(GL_SPECULAR);
}

void TOglMaterial::SetSpecular(TColor color) {
    Tmaterial::SetSpecular(color);
    pass(GL_SPECULAR, color, 1.0);
}

TColor TOglMaterial::GetEmission() const {
    return ask(GL_EMISSION);
}

void TOglMaterial::SetEmission(TColor color) {
    Tmaterial::SetEmission(color);
    pass(GL_EMISSION, color, 1.0);
}

double TOglMaterial::GetShininess() const {
    GLfloat shininess = 0;
    glGetMaterialfv(questionFace(GLFace()), GL_SHININESS, &shininess);
    return shininess;
}

void TOglMaterial::SetShininess(double shininess) {
    const auto value = GLfloat(shininess);
    glMaterialfv(GLFace(), GL_SHININESS, &value);
}

}  // namespace zk
