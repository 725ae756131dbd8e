#include "polygonmode.h"

#include <zk/_zkoglcanvas/glapi.h>

namespace zk {

void _GlPolyGonMode(int /*face*/, int mode) {
    glPolygonMode(GL_FRONT_AND_BACK, GLenum(mode));
}

std::array<int, 2> GetPolyGonMode() {
    std::array<int, 2> modes{0, 0};
    glGetIntegerv(GL_POLYGON_MODE, modes.data());
    return modes;
}

}  // namespace zk
