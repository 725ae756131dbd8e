#include "glerror.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/host/message.h>

namespace zk {

void OGLError() {
    switch (glGetError()) {
        case GL_NO_ERROR:
            return;
        case GL_INVALID_ENUM:
            return ShowMessage(QStringLiteral("Error: GL_INVALID_ENUM"));
        case GL_INVALID_VALUE:
            return ShowMessage(QStringLiteral("Error: GL_INVALID_VALUE"));
        case GL_INVALID_OPERATION:
            return ShowMessage(QStringLiteral("Error: GL_INVALID_OPERATION"));
        case GL_STACK_OVERFLOW:
            return ShowMessage(QStringLiteral("Error: GL_STACK_OVERFLOW"));
        case GL_STACK_UNDERFLOW:
            return ShowMessage(QStringLiteral("Error: GL_STACK_UNDERFLOW"));
        case GL_OUT_OF_MEMORY:
            return ShowMessage(QStringLiteral("Error: GL_OUT_OF_MEMORY"));
        default:
            return ShowMessage(QStringLiteral("Unbekannter Fehler ") + QString::number(glGetError()));
    }
}

}  // namespace zk
