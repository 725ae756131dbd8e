#include "light.h"

namespace zk {

Tlight::Tlight(QObject* owner) : TComponent(owner) {}

Tlight::~Tlight() {
    AnnounceRemoval();
}

double Tlight::GEtattenuation() const {
    return attenuation_;
}
void Tlight::setattenuation(double Value) {
    attenuation_ = Value;
}

std::int32_t Tlight::GEtattenuationMode() const {
    return attenuationMode_;
}
void Tlight::setattenuationMode(std::int32_t Value) {
    attenuationMode_ = Value;
}

TXYZ Tlight::GetPosition() const {
    return position_;
}
void Tlight::SetPosition(const TXYZ& Value) {
    position_ = Value;
}

void Tlight::SetDirection(const TXYZ& Value) {
    direction_ = Value;
}
TXYZ Tlight::GetDirection() const {
    return direction_;
}

void Tlight::SetEnabled(bool Value) {
    enabled_ = Value;
}

TColor Tlight::GetAmbient() const {
    return ambient_;
}
void Tlight::SetAmbient(TColor Value) {
    ambient_ = Value;
}

TColor Tlight::GetDiffuse() const {
    return diffuse_;
}
void Tlight::SetDiffuse(TColor Value) {
    diffuse_ = Value;
}

TColor Tlight::GetSpecular() const {
    return specular_;
}
void Tlight::SetSpecular(TColor Value) {
    specular_ = Value;
}

void Tlight::SetSpotExponent(double Value) {
    spotExponent_ = Value;
}
void Tlight::SetSpotCutOff(double Value) {
    spotCutOff_ = Value;
}
double Tlight::getSpotExponent() const {
    return spotExponent_;
}
double Tlight::getSpotCutOff() const {
    return spotCutOff_;
}

void Tlight::SetHandle(std::int32_t Value) {
    handle_ = Value;
}

const TLightClass& Tlight::Class() {
    static const TLightClass lightClass{QStringLiteral("Tlight"), [](QObject* owner) { return new Tlight(owner); }};
    return lightClass;
}

}  // namespace zk
