#pragma once

#include <zk/export.h>
#include <zk/host/color.h>

#include <array>

namespace zk {

/// A colour as OpenGL takes it: red, green, blue, alpha.
using GlColor = std::array<float, 4>;

/// Each channel's byte divided by 256, not 255: white becomes 255/256. It is the inverse of `FromGlColor` for every
/// byte, and what all colours of this library go through. System colours are resolved.
ZKOGLCANVAS_API GlColor ToGlColor(TColor color, float alpha = 1.0F);

/// Each channel times 256, rounded to the nearest byte (ties to even) and held within 0 to 255; alpha is dropped.
ZKOGLCANVAS_API TColor FromGlColor(const float* rgba);

}  // namespace zk
