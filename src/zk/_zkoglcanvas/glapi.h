#pragma once

// OpenGL 1.1 and GLU as the system offers them. Sources include this one header; the public headers of the unit do
// without it, so that an application meets OpenGL's macros only where it draws with OpenGL itself.

#if defined(_WIN32)
#include <windows.h>
#endif
#if defined(__APPLE__)
#include <OpenGL/gl.h>
#include <OpenGL/glu.h>
#else
#include <GL/gl.h>
#include <GL/glu.h>
#endif
