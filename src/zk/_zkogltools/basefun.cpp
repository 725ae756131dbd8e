#include "basefun.h"

#include <zk/_zkmath/tolerance.h>

#include <algorithm>
#include <cmath>

namespace zk {

TBaseFun::TBaseFun(QObject* owner) : TComponent(owner) {}

TBaseFun::~TBaseFun() {
    AnnounceRemoval();
}

void TBaseFun::SetMin(double min) {
    min_ = min;
    ReCalc();
}

void TBaseFun::SetMAx(double max) {
    max_ = max;
    ReCalc();
}

void TBaseFun::SetPAram(double param) {
    param_ = param;
    ReCalc();
}

TBAse TBaseFun::CalculateBAse(double /*t*/) {
    return Unitbase;
}

double TBaseFun::wrapped() const {
    const double lower = std::min(min_, max_);
    const double upper = std::max(min_, max_);
    if (!cyclic_ || (param_ >= lower && param_ <= upper))
        return param_;
    const double width = upper - lower;
    return param_ - std::floor((param_ - lower) / width) * width;
}

TBAse TBaseFun::GetBase() {
    if (Equals(min_, max_))
        return Unitbase;
    return CalculateBAse(wrapped() / (max_ - min_));
}

void TBaseFun::ReCalc() {
    base_ = GetBase();
}

}  // namespace zk
