#pragma once

#include <zk/export.h>

#include <array>

namespace zk {

/// Sets how polygons are rasterised (GL_POINT, GL_LINE or GL_FILL), always for both faces: the `face` of a material is
/// taken but ignored, so that a wire model shows its back, too.
ZKOGLCANVAS_API void _GlPolyGonMode(int face, int mode);

/// The modes in force, front then back; zeros without a current context.
ZKOGLCANVAS_API std::array<int, 2> GetPolyGonMode();

}  // namespace zk
