#include "stdbases.h"

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkmath.h>

#include <numbers>

namespace zk {

TStdBases::TStdBases(QObject* owner) : TBaseFun(owner) {}

TStdBases::~TStdBases() {
    AnnounceRemoval();
}

QString TStdBases::Get_translation() const {
    return xyztoStr(translation_);
}

void TStdBases::Set_translation(const QString& text) {
    translation_ = Strtoxyz(text);
    ReCalc();
}

QString TStdBases::GetDrehgeradePkt() const {
    return xyztoStr(drehGerade_.Origin);
}

void TStdBases::SetDrehgeradePkt(const QString& text) {
    drehGerade_.Origin = Strtoxyz(text);
    ReCalc();
}

QString TStdBases::GetDrehgeradeRichtung() const {
    return xyztoStr(drehGerade_.Direction);
}

void TStdBases::SetDrehgeradeRichtung(const QString& text) {
    drehGerade_.Direction = Strtoxyz(text);
    ReCalc();
}

void TStdBases::Setdrehwinkel(double angle) {
    drehwinkel_ = angle;
    ReCalc();
}

Tmatrix TStdBases::TrfMAtrix() const {
    const double angle = drehwinkel_ * 180.0 / std::numbers::pi;
    return Mulmat(RotationToMatrix3d(drehGerade_, angle), TranslationToMatrix3d(translation_));
}

TBAse TStdBases::GetWorldBAse() const {
    TBAse base = Unitbase;
    TransformBAse(TrfMAtrix(), base);
    return base;
}

}  // namespace zk
