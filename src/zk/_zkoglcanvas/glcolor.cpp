#include "glcolor.h"

#include <algorithm>
#include <cmath>

namespace zk {

GlColor ToGlColor(TColor color, float alpha) {
    const TColor rgb = ColorToRGB(color);
    return {float(rgb & 0xFF) / 256.0F, float((rgb >> 8) & 0xFF) / 256.0F, float((rgb >> 16) & 0xFF) / 256.0F, alpha};
}

TColor FromGlColor(const float* rgba) {
    const auto channel = [rgba](int i) {
        const float scaled = std::nearbyint(rgba[i] * 256.0F);
        return TColor(scaled >= 0 ? std::min(scaled, 255.0F) : 0.0F);
    };
    return channel(0) | channel(1) << 8 | channel(2) << 16;
}

}  // namespace zk
