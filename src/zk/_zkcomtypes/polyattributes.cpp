#include "polyattributes.h"

#include <zk/_zkcomtypes/glvalues.h>

namespace zk {

TPolyAttributes::TPolyAttributes(QObject* parent) : TZkgraphicsobject(parent) {
    TPolyAttributes::SetStyle(glpolygon);
    TPolyAttributes::SetMode(glfill);
}

TPAMode TPolyAttributes::GetMode() const {
    return mode_;
}
TPAStyle TPolyAttributes::GetStyle() const {
    return style_;
}

void TPolyAttributes::SetMode(TPAMode Value) {
    mode_ = Value;
    ChangeD();
}

void TPolyAttributes::SetStyle(TPAStyle Value) {
    style_ = Value;
    ChangeD();
}

std::uint32_t TPolyAttributes::GLMode() const {
    return glvalue::Point + GetMode();
}
std::uint32_t TPolyAttributes::GLStyle() const {
    return GetStyle();
}

}  // namespace zk
