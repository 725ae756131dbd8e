#include "glrecorder.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cstdio>
#include <dlfcn.h>
#include <map>

namespace zk::test {

namespace {

GlRecorder* active = nullptr;

}  // namespace

GlRecorder::GlRecorder(std::vector<std::string> only) : only_(std::move(only)), outer_(active) {
    active = this;
}

GlRecorder::~GlRecorder() {
    active = outer_;
}

bool GlRecorder::Wants(const char* name) {
    return active && (active->only_.empty() ||
                      std::find(active->only_.begin(), active->only_.end(), name) != active->only_.end());
}

void GlRecorder::Record(std::string call) {
    if (active)
        active->calls_.push_back(std::move(call));
}

std::vector<std::string> GlRecorder::CallsTo(std::initializer_list<const char*> names) const {
    std::vector<std::string> found;
    for (const std::string& call : calls_)
        if (std::any_of(names.begin(), names.end(),
                        [&call](const std::string& n) { return call.rfind(n + "(", 0) == 0; }))
            found.push_back(call);
    return found;
}

int GlRecorder::Count(const std::string& name) const {
    return int(std::count_if(calls_.begin(), calls_.end(),
                             [&name](const std::string& call) { return call.rfind(name + "(", 0) == 0; }));
}

}  // namespace zk::test

namespace {

using zk::test::GlRecorder;

// The enumerations that the library uses. Small numbers are numbers: what they mean depends on the call.
std::string text(GLenum value) {
#define NAME(e) \
    { e, #e }
    static const std::map<GLenum, const char*> names{NAME(GL_AMBIENT),
                                                     NAME(GL_AMBIENT_AND_DIFFUSE),
                                                     NAME(GL_BACK),
                                                     NAME(GL_BLEND),
                                                     NAME(GL_CCW),
                                                     NAME(GL_CLAMP),
                                                     NAME(GL_CLIP_PLANE0),
                                                     NAME(GL_CLIP_PLANE1),
                                                     NAME(GL_CLIP_PLANE2),
                                                     NAME(GL_CLIP_PLANE3),
                                                     NAME(GL_CLIP_PLANE4),
                                                     NAME(GL_CLIP_PLANE5),
                                                     NAME(GL_COMPILE),
                                                     NAME(GL_COMPILE_AND_EXECUTE),
                                                     NAME(GL_CONSTANT_ATTENUATION),
                                                     NAME(GL_CULL_FACE),
                                                     NAME(GL_CW),
                                                     NAME(GL_DECAL),
                                                     NAME(GL_DEPTH_TEST),
                                                     NAME(GL_DIFFUSE),
                                                     NAME(GL_EMISSION),
                                                     NAME(GL_FILL),
                                                     NAME(GL_FRONT),
                                                     NAME(GL_FRONT_AND_BACK),
                                                     NAME(GL_LESS),
                                                     NAME(GL_LIGHT0),
                                                     NAME(GL_LIGHT1),
                                                     NAME(GL_LIGHT2),
                                                     NAME(GL_LIGHT3),
                                                     NAME(GL_LIGHTING),
                                                     NAME(GL_LIGHT_MODEL_TWO_SIDE),
                                                     NAME(GL_LINE),
                                                     NAME(GL_LINEAR),
                                                     NAME(GL_LINEAR_ATTENUATION),
                                                     NAME(GL_MODELVIEW),
                                                     NAME(GL_MODULATE),
                                                     NAME(GL_NEAREST),
                                                     NAME(GL_NORMALIZE),
                                                     NAME(GL_ONE_MINUS_SRC_ALPHA),
                                                     NAME(GL_POINT),
                                                     NAME(GL_POSITION),
                                                     NAME(GL_PROJECTION),
                                                     NAME(GL_QUADRATIC_ATTENUATION),
                                                     NAME(GL_RENDER),
                                                     NAME(GL_REPEAT),
                                                     NAME(GL_SELECT),
                                                     NAME(GL_SHININESS),
                                                     NAME(GL_SMOOTH),
                                                     NAME(GL_SPECULAR),
                                                     NAME(GL_SPOT_CUTOFF),
                                                     NAME(GL_SPOT_DIRECTION),
                                                     NAME(GL_SPOT_EXPONENT),
                                                     NAME(GL_SRC_ALPHA),
                                                     NAME(GL_TEXTURE),
                                                     NAME(GL_TEXTURE_2D),
                                                     NAME(GL_TEXTURE_ENV),
                                                     NAME(GL_TEXTURE_ENV_MODE),
                                                     NAME(GL_TEXTURE_MAG_FILTER),
                                                     NAME(GL_TEXTURE_MIN_FILTER),
                                                     NAME(GL_TEXTURE_WRAP_S),
                                                     NAME(GL_TEXTURE_WRAP_T)};
#undef NAME
    const auto found = names.find(value);
    return found == names.end() ? std::to_string(value) : found->second;
}

std::string text(GLint value) {
    return value >= 0x0400 ? text(GLenum(value)) : std::to_string(value);
}

std::string text(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.6g", value == 0 ? 0.0 : value);
    return buffer;
}

std::string text(GLfloat value) {
    return text(double(value));
}

template <class T>
std::string list(const T* values, int count) {
    std::string joined = "{";
    for (int i = 0; i < count; ++i)
        joined += (i ? ", " : "") + text(values[i]);
    return joined + "}";
}

template <class... Args>
void record(const char* name, Args... args) {
    if (!GlRecorder::Wants(name))
        return;
    std::string call = std::string(name) + "(";
    [[maybe_unused]] const char* separator = "";
    ((call += separator + text(args), separator = ", "), ...);
    GlRecorder::Record(call + ")");
}

int valueCount(GLenum parameter) {
    switch (parameter) {
        case GL_SHININESS:
        case GL_SPOT_EXPONENT:
        case GL_SPOT_CUTOFF:
        case GL_CONSTANT_ATTENUATION:
        case GL_LINEAR_ATTENUATION:
        case GL_QUADRATIC_ATTENUATION:
            return 1;
        case GL_SPOT_DIRECTION:
            return 3;
        default:
            return 4;
    }
}

}  // namespace

#define REAL(name) reinterpret_cast<decltype(&name)>(dlsym(RTLD_NEXT, #name))

#define PASS(result, name, parameters, arguments)  \
    extern "C" result GLAPIENTRY name parameters { \
        static const auto real = REAL(name);       \
        record(#name ARGUMENTS arguments);         \
        return real arguments;                     \
    }
#define ARGUMENTS(...) __VA_OPT__(, ) __VA_ARGS__

PASS(void, glBegin, (GLenum mode), (mode))
PASS(void, glBlendFunc, (GLenum source, GLenum destination), (source, destination))
PASS(void, glBindTexture, (GLenum target, GLuint texture), (target, texture))
PASS(void, glCallList, (GLuint name), (name))
PASS(void, glClear, (GLbitfield mask), (mask))
PASS(void, glClearColor, (GLclampf r, GLclampf g, GLclampf b, GLclampf a), (r, g, b, a))
PASS(void, glCullFace, (GLenum mode), (mode))
PASS(void, glDeleteLists, (GLuint name, GLsizei count), (name, count))
PASS(void, glDepthFunc, (GLenum func), (func))
PASS(void, glDisable, (GLenum what), (what))
PASS(void, glEnable, (GLenum what), (what))
PASS(void, glEnd, (), ())
PASS(void, glEndList, (), ())
PASS(void, glFrontFace, (GLenum mode), (mode))
PASS(void, glFrustum, (GLdouble l, GLdouble r, GLdouble b, GLdouble t, GLdouble n, GLdouble f), (l, r, b, t, n, f))
PASS(GLuint, glGenLists, (GLsizei count), (count))
PASS(void, glInitNames, (), ())
PASS(void, glLightModeli, (GLenum parameter, GLint value), (parameter, value))
PASS(void, glLoadIdentity, (), ())
PASS(void, glLoadName, (GLuint name), (name))
PASS(void, glMatrixMode, (GLenum mode), (mode))
PASS(void, glNewList, (GLuint name, GLenum mode), (name, mode))
PASS(void, glNormal3d, (GLdouble x, GLdouble y, GLdouble z), (x, y, z))
PASS(void, glOrtho, (GLdouble l, GLdouble r, GLdouble b, GLdouble t, GLdouble n, GLdouble f), (l, r, b, t, n, f))
PASS(void, glPolygonMode, (GLenum face, GLenum mode), (face, mode))
PASS(void, glPopMatrix, (), ())
PASS(void, glPopName, (), ())
PASS(void, glPushMatrix, (), ())
PASS(void, glPushName, (GLuint name), (name))
PASS(GLint, glRenderMode, (GLenum mode), (mode))
PASS(void, glRotated, (GLdouble angle, GLdouble x, GLdouble y, GLdouble z), (angle, x, y, z))
PASS(void, glScaled, (GLdouble x, GLdouble y, GLdouble z), (x, y, z))
PASS(void, glShadeModel, (GLenum mode), (mode))
PASS(void, glTexCoord2f, (GLfloat s, GLfloat t), (s, t))
PASS(void, glTexEnvf, (GLenum target, GLenum parameter, GLfloat value), (target, parameter, value))
PASS(void, glTexParameteri, (GLenum target, GLenum parameter, GLint value), (target, parameter, value))
PASS(void, glTranslated, (GLdouble x, GLdouble y, GLdouble z), (x, y, z))
PASS(void, glVertex3d, (GLdouble x, GLdouble y, GLdouble z), (x, y, z))
PASS(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height))

extern "C" void GLAPIENTRY glLoadMatrixd(const GLdouble* m) {
    static const auto real = REAL(glLoadMatrixd);
    if (GlRecorder::Wants("glLoadMatrixd"))
        GlRecorder::Record("glLoadMatrixd(" + list(m, 16) + ")");
    real(m);
}

extern "C" void GLAPIENTRY glClipPlane(GLenum plane, const GLdouble* equation) {
    static const auto real = REAL(glClipPlane);
    if (GlRecorder::Wants("glClipPlane"))
        GlRecorder::Record("glClipPlane(" + text(plane) + ", " + list(equation, 4) + ")");
    real(plane, equation);
}

extern "C" void GLAPIENTRY glMaterialfv(GLenum face, GLenum parameter, const GLfloat* values) {
    static const auto real = REAL(glMaterialfv);
    if (GlRecorder::Wants("glMaterialfv"))
        GlRecorder::Record("glMaterialfv(" + text(face) + ", " + text(parameter) + ", " +
                           list(values, valueCount(parameter)) + ")");
    real(face, parameter, values);
}

extern "C" void GLAPIENTRY glLightfv(GLenum light, GLenum parameter, const GLfloat* values) {
    static const auto real = REAL(glLightfv);
    if (GlRecorder::Wants("glLightfv"))
        GlRecorder::Record("glLightfv(" + text(light) + ", " + text(parameter) + ", " +
                           list(values, valueCount(parameter)) + ")");
    real(light, parameter, values);
}

extern "C" void GLAPIENTRY glSelectBuffer(GLsizei size, GLuint* buffer) {
    static const auto real = REAL(glSelectBuffer);
    record("glSelectBuffer", size);
    real(size, buffer);
}

extern "C" void GLAPIENTRY glDrawPixels(GLsizei width, GLsizei height, GLenum format, GLenum type, const void* pixels) {
    static const auto real = REAL(glDrawPixels);
    record("glDrawPixels", width, height, format, type);
    real(width, height, format, type, pixels);
}

extern "C" void GLAPIENTRY glTexImage2D(GLenum target, GLint level, GLint components, GLsizei width, GLsizei height,
                                        GLint border, GLenum format, GLenum type, const void* pixels) {
    static const auto real = REAL(glTexImage2D);
    record("glTexImage2D", target, level, components, width, height, border, format, type);
    real(target, level, components, width, height, border, format, type, pixels);
}

// --- GLU: quadrics are numbered from 1 while they live ----------------------------------------------------------

namespace {

std::map<const GLUquadric*, int>& quadrics() {
    static std::map<const GLUquadric*, int> numbers;
    return numbers;
}

}  // namespace

// A reference to something of GLU that is not replaced here: without one a linker leaves the library out.
[[gnu::used]] const auto keepGlu = &gluGetString;

#define PASS_GLU(name, parameters, arguments, ...)                  \
    extern "C" void GLAPIENTRY name parameters {                    \
        static const auto real = REAL(name);                        \
        record(#name, quadrics()[quad] __VA_OPT__(, ) __VA_ARGS__); \
        real arguments;                                             \
    }

extern "C" GLUquadric* GLAPIENTRY gluNewQuadric() {
    static const auto real = REAL(gluNewQuadric);
    GLUquadric* quadric = real();
    const int number = int(quadrics().size()) + 1;
    quadrics()[quadric] = number;
    return quadric;
}

extern "C" void GLAPIENTRY gluDeleteQuadric(GLUquadric* quad) {
    static const auto real = REAL(gluDeleteQuadric);
    record("gluDeleteQuadric", quadrics()[quad]);
    quadrics().erase(quad);
    real(quad);
}

PASS_GLU(gluQuadricOrientation, (GLUquadric * quad, GLenum orientation), (quad, orientation), int(orientation))
PASS_GLU(gluQuadricTexture, (GLUquadric * quad, GLboolean on), (quad, on), int(on))
PASS_GLU(gluSphere, (GLUquadric * quad, GLdouble radius, GLint slices, GLint stacks), (quad, radius, slices, stacks),
         radius, slices, stacks)
PASS_GLU(gluCylinder, (GLUquadric * quad, GLdouble base, GLdouble top, GLdouble height, GLint slices, GLint stacks),
         (quad, base, top, height, slices, stacks), base, top, height, slices, stacks)
PASS_GLU(gluDisk, (GLUquadric * quad, GLdouble inner, GLdouble outer, GLint slices, GLint loops),
         (quad, inner, outer, slices, loops), inner, outer, slices, loops)
PASS_GLU(gluPartialDisk,
         (GLUquadric * quad, GLdouble inner, GLdouble outer, GLint slices, GLint loops, GLdouble start, GLdouble sweep),
         (quad, inner, outer, slices, loops, start, sweep), inner, outer, slices, loops, start, sweep)
