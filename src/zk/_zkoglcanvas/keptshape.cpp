#include "keptshape.h"

#include <algorithm>

namespace zk {

void Bounds::Add(const TXYZ& point) {
    Low = {std::min(Low.x, point.x), std::min(Low.y, point.y), std::min(Low.z, point.z)};
    High = {std::max(High.x, point.x), std::max(High.y, point.y), std::max(High.z, point.z)};
}

}  // namespace zk
