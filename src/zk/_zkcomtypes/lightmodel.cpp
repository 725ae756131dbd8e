#include "lightmodel.h"

namespace zk {

TColor TLightModel::Getambient() const {
    return ambient_;
}
void TLightModel::SetAmbient(TColor Value) {
    ambient_ = Value;
}

double TLightModel::GetLocalViewer() const {
    return localViewer_;
}
void TLightModel::SetLocalviewer(double Value) {
    localViewer_ = Value;
}

bool TLightModel::GetTwoside() const {
    return twoside_;
}
void TLightModel::SetTwoside(bool Value) {
    twoside_ = Value;
}

}  // namespace zk
