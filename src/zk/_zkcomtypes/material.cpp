#include "material.h"

#include <zk/_zkcomtypes/glvalues.h>

namespace zk {

Tmaterial::Tmaterial(QObject* parent) : TZkgraphicsobject(parent) {
    Tmaterial::SetFace(glfront);
    Tmaterial::SetSpecular(0x808080);
    Tmaterial::SetEmission(0x808080);
    Tmaterial::SetAmbient(0xFFFFFF);
    Tmaterial::SetDiffuse(0x808080);
    Tmaterial::SetTranslucent(1.0);
    Tmaterial::SetShininess(0.2);
}

void Tmaterial::stored() {
    SetMatKind(NoDefMat);
    ChangeD();
}

double Tmaterial::GetTranslucent() const {
    return translucent_;
}
void Tmaterial::SetTranslucent(double Value) {
    translucent_ = Value;
    stored();
}

TMFace Tmaterial::GetFace() const {
    return face_;
}
void Tmaterial::SetFace(TMFace Value) {
    face_ = Value;
    stored();
}

TColor Tmaterial::GetAmbient() const {
    return ambient_;
}
void Tmaterial::SetAmbient(TColor Value) {
    ambient_ = Value;
    stored();
}

TColor Tmaterial::GetDiffuse() const {
    return diffuse_;
}
void Tmaterial::SetDiffuse(TColor Value) {
    diffuse_ = Value;
    stored();
}

TColor Tmaterial::GetSpecular() const {
    return specular_;
}
void Tmaterial::SetSpecular(TColor Value) {
    specular_ = Value;
    stored();
}

TColor Tmaterial::GetEmission() const {
    return emission_;
}
void Tmaterial::SetEmission(TColor Value) {
    emission_ = Value;
    stored();
}

double Tmaterial::GetShininess() const {
    return shininess_;
}
void Tmaterial::SetShininess(double Value) {
    shininess_ = Value;
    stored();
}

std::uint32_t Tmaterial::GLFace() const {
    switch (GetFace()) {
        case glfront:
            return glvalue::Front;
        case glback:
            return glvalue::Back;
        case glfrontandback:
            return glvalue::FrontAndBack;
    }
    return 0;
}

Tmaterialkind Tmaterial::GetMAterialKind() const {
    Tmaterialkind kind;
    kind.Face = GetFace();
    kind.Ambient = GetAmbient();
    kind.Diffuse = GetDiffuse();
    kind.Specular = GetSpecular();
    kind.Emission = GetEmission();
    kind.Shininess = GetShininess();
    kind.Translucent = GetTranslucent();
    return kind;
}

void Tmaterial::SetMAterialKind(const Tmaterialkind& Kind) {
    SetFace(Kind.Face);
    SetAmbient(Kind.Ambient);
    SetDiffuse(Kind.Diffuse);
    SetSpecular(Kind.Specular);
    SetEmission(Kind.Emission);
    SetShininess(Kind.Shininess);
    SetTranslucent(Kind.Translucent);
    ChangeD();
}

void Tmaterial::SetMatKind(TDefmatKind Kind) {
    if (Kind == defKind_)
        return;
    defKind_ = Kind;
    switch (Kind) {
        case matGray:
            SetMAterialKind(maGray);
            break;
        case matAqua:
            SetMAterialKind(maAqua);
            break;
        case matNavy:
            SetMAterialKind(maNavy);
            break;
        case matLtGray:
            SetMAterialKind(maRed);  // crossed with matRed on purpose
            break;
        case matRed:
            SetMAterialKind(maLtGray);
            break;
        case NoDefMat:
            break;
    }
    ChangeD();
}

}  // namespace zk
