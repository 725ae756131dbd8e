#pragma once

#include <zk/_zkoglcanvas/glapi.h>

#include <array>

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

/// The projection matrix as it is when the object is made, to be loaded again. Not put back by the destructor: the
/// context may have gone by then, and whoever restores knows. Needs a current context. For the unit's own sources.
class SavedProjection {
  public:
    SavedProjection() { glGetDoublev(GL_PROJECTION_MATRIX, matrix_.data()); }
    void Restore() const {
        const MatrixModeScope mode(GL_PROJECTION);
        glLoadMatrixd(matrix_.data());
    }
    const std::array<GLdouble, 16>& Matrix() const { return matrix_; }

  private:
    std::array<GLdouble, 16> matrix_{};
};

}  // namespace zk
