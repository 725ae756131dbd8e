#pragma once

#include <zk/export.h>

namespace zk {

/// Asks OpenGL once for a pending error and shows it to the user: "Error: GL_INVALID_ENUM" and so on. For a code that
/// OpenGL 1.1 does not know the text is "Unbekannter Fehler " and the number of a *second* query, which is normally 0:
/// the first query has already taken the code out of the queue. Called after nearly every step of drawing, in the
/// context that is current; without one it does nothing.
ZKOGLCANVAS_API void OGLError();

}  // namespace zk
