#pragma once

#include <zk/_zkoglcanvas/glapi.h>

namespace zk {

/// Works on one of OpenGL's matrices for the length of a scope: the mode before comes back with its end. Needs a
/// current context. For the unit's own sources.
class MatrixModeScope {
  public:
    explicit MatrixModeScope(GLenum mode) {
        glGetIntegerv(GL_MATRIX_MODE, &saved_);
        glMatrixMode(mode);
    }
    ~MatrixModeScope() {
        if (saved_)
            glMatrixMode(GLenum(saved_));
    }
    MatrixModeScope(const MatrixModeScope&) = delete;
    MatrixModeScope& operator=(const MatrixModeScope&) = delete;

  private:
    GLint saved_ = 0;
};

}  // namespace zk
