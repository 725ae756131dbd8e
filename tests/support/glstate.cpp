#include "glstate.h"

#include <zk/_zkoglcanvas/glapi.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <vector>

namespace zk::test {

namespace {

struct Question {
    GLenum what;
    int count;
    const char* name;
};

#define ASK(what, count) \
    { what, count, #what }

const Question values[] = {
    ASK(GL_CURRENT_COLOR, 4), ASK(GL_CURRENT_NORMAL, 3), ASK(GL_CURRENT_TEXTURE_COORDS, 4),
    ASK(GL_CURRENT_RASTER_POSITION, 4), ASK(GL_CURRENT_RASTER_POSITION_VALID, 1), ASK(GL_EDGE_FLAG, 1),
    // matrices
    ASK(GL_MODELVIEW_MATRIX, 16), ASK(GL_PROJECTION_MATRIX, 16), ASK(GL_TEXTURE_MATRIX, 16), ASK(GL_MATRIX_MODE, 1),
    ASK(GL_MODELVIEW_STACK_DEPTH, 1), ASK(GL_PROJECTION_STACK_DEPTH, 1), ASK(GL_TEXTURE_STACK_DEPTH, 1),
    ASK(GL_VIEWPORT, 4), ASK(GL_DEPTH_RANGE, 2),
    // stacks, modes and lists
    ASK(GL_ATTRIB_STACK_DEPTH, 1), ASK(GL_CLIENT_ATTRIB_STACK_DEPTH, 1), ASK(GL_NAME_STACK_DEPTH, 1),
    ASK(GL_RENDER_MODE, 1), ASK(GL_LIST_BASE, 1), ASK(GL_LIST_INDEX, 1), ASK(GL_LIST_MODE, 1),
    // rasterising
    ASK(GL_POINT_SIZE, 1), ASK(GL_LINE_WIDTH, 1), ASK(GL_LINE_STIPPLE_PATTERN, 1), ASK(GL_LINE_STIPPLE_REPEAT, 1),
    ASK(GL_CULL_FACE_MODE, 1), ASK(GL_FRONT_FACE, 1), ASK(GL_POLYGON_MODE, 2), ASK(GL_POLYGON_OFFSET_FACTOR, 1),
    ASK(GL_POLYGON_OFFSET_UNITS, 1), ASK(GL_SHADE_MODEL, 1),
    // pixels
    ASK(GL_SCISSOR_BOX, 4), ASK(GL_ALPHA_TEST_FUNC, 1), ASK(GL_ALPHA_TEST_REF, 1), ASK(GL_STENCIL_FUNC, 1),
    ASK(GL_STENCIL_REF, 1), ASK(GL_DEPTH_FUNC, 1), ASK(GL_BLEND_SRC, 1), ASK(GL_BLEND_DST, 1), ASK(GL_LOGIC_OP_MODE, 1),
    ASK(GL_DRAW_BUFFER, 1), ASK(GL_READ_BUFFER, 1), ASK(GL_COLOR_WRITEMASK, 4), ASK(GL_DEPTH_WRITEMASK, 1),
    ASK(GL_STENCIL_WRITEMASK, 1), ASK(GL_COLOR_CLEAR_VALUE, 4), ASK(GL_DEPTH_CLEAR_VALUE, 1),
    ASK(GL_UNPACK_ALIGNMENT, 1), ASK(GL_UNPACK_ROW_LENGTH, 1), ASK(GL_UNPACK_SKIP_ROWS, 1),
    ASK(GL_UNPACK_SKIP_PIXELS, 1), ASK(GL_PACK_ALIGNMENT, 1), ASK(GL_PACK_ROW_LENGTH, 1), ASK(GL_PACK_SKIP_ROWS, 1),
    ASK(GL_PACK_SKIP_PIXELS, 1), ASK(GL_RED_SCALE, 1), ASK(GL_RED_BIAS, 1), ASK(GL_ZOOM_X, 1), ASK(GL_ZOOM_Y, 1),
    // light, fog, hints
    ASK(GL_LIGHT_MODEL_AMBIENT, 4), ASK(GL_LIGHT_MODEL_TWO_SIDE, 1), ASK(GL_LIGHT_MODEL_LOCAL_VIEWER, 1),
    ASK(GL_COLOR_MATERIAL_FACE, 1), ASK(GL_COLOR_MATERIAL_PARAMETER, 1), ASK(GL_FOG_MODE, 1), ASK(GL_FOG_DENSITY, 1),
    ASK(GL_FOG_COLOR, 4), ASK(GL_PERSPECTIVE_CORRECTION_HINT, 1), ASK(GL_LINE_SMOOTH_HINT, 1),
    // textures
    ASK(GL_TEXTURE_BINDING_2D, 1), ASK(GL_TEXTURE_BINDING_1D, 1)};

const Question enables[] = {ASK(GL_ALPHA_TEST, 1),     ASK(GL_AUTO_NORMAL, 1),     ASK(GL_BLEND, 1),
                            ASK(GL_CLIP_PLANE0, 1),    ASK(GL_CLIP_PLANE1, 1),     ASK(GL_CLIP_PLANE2, 1),
                            ASK(GL_CLIP_PLANE3, 1),    ASK(GL_CLIP_PLANE4, 1),     ASK(GL_CLIP_PLANE5, 1),
                            ASK(GL_COLOR_LOGIC_OP, 1), ASK(GL_COLOR_MATERIAL, 1),  ASK(GL_CULL_FACE, 1),
                            ASK(GL_DEPTH_TEST, 1),     ASK(GL_DITHER, 1),          ASK(GL_FOG, 1),
                            ASK(GL_LIGHTING, 1),       ASK(GL_LINE_SMOOTH, 1),     ASK(GL_LINE_STIPPLE, 1),
                            ASK(GL_NORMALIZE, 1),      ASK(GL_POINT_SMOOTH, 1),    ASK(GL_POLYGON_OFFSET_FILL, 1),
                            ASK(GL_POLYGON_SMOOTH, 1), ASK(GL_POLYGON_STIPPLE, 1), ASK(GL_SCISSOR_TEST, 1),
                            ASK(GL_STENCIL_TEST, 1),   ASK(GL_TEXTURE_1D, 1),      ASK(GL_TEXTURE_2D, 1),
                            ASK(GL_TEXTURE_GEN_S, 1),  ASK(GL_TEXTURE_GEN_T, 1),   ASK(GL_POLYGON_OFFSET_LINE, 1)};

const Question materials[] = {ASK(GL_AMBIENT, 4), ASK(GL_DIFFUSE, 4), ASK(GL_SPECULAR, 4), ASK(GL_EMISSION, 4),
                              ASK(GL_SHININESS, 1)};

const Question lights[] = {ASK(GL_AMBIENT, 4),
                           ASK(GL_DIFFUSE, 4),
                           ASK(GL_SPECULAR, 4),
                           ASK(GL_POSITION, 4),
                           ASK(GL_SPOT_DIRECTION, 3),
                           ASK(GL_SPOT_EXPONENT, 1),
                           ASK(GL_SPOT_CUTOFF, 1),
                           ASK(GL_CONSTANT_ATTENUATION, 1),
                           ASK(GL_LINEAR_ATTENUATION, 1),
                           ASK(GL_QUADRATIC_ATTENUATION, 1)};

const Question textures[] = {ASK(GL_TEXTURE_MAG_FILTER, 1), ASK(GL_TEXTURE_MIN_FILTER, 1), ASK(GL_TEXTURE_WRAP_S, 1),
                             ASK(GL_TEXTURE_WRAP_T, 1), ASK(GL_TEXTURE_BORDER_COLOR, 4)};

const Question environments[] = {ASK(GL_TEXTURE_ENV_MODE, 1), ASK(GL_TEXTURE_ENV_COLOR, 4)};

#undef ASK

template <class T>
std::string text(const T* numbers, int count) {
    std::string joined;
    for (int i = 0; i < count; ++i) {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%s%.9g", i ? ", " : "",
                      double(numbers[i]) == 0 ? 0.0 : double(numbers[i]));
        joined += buffer;
    }
    return joined;
}

// Enough to tell two pictures apart.
std::string checksum(const std::vector<std::uint8_t>& bytes) {
    std::uint64_t sum = 14695981039346656037ULL;
    for (const std::uint8_t byte : bytes)
        sum = (sum ^ byte) * 1099511628211ULL;
    return std::to_string(sum);
}

std::string pixels(GLenum format, GLenum type, int bytesEach) {
    GLint port[4] = {};
    glGetIntegerv(GL_VIEWPORT, port);
    std::vector<std::uint8_t> bytes(std::size_t(port[2]) * std::size_t(port[3]) * std::size_t(bytesEach));
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, port[2], port[3], format, type, bytes.data());
    glPopClientAttrib();
    return checksum(bytes);
}

}  // namespace

GlState CurrentGlState() {
    GlState state;
    GLdouble numbers[16] = {};
    GLfloat floats[16] = {};
    for (const Question& question : values) {
        glGetDoublev(question.what, numbers);
        state[question.name] = text(numbers, question.count);
    }
    for (const Question& question : enables)
        state[std::string(question.name) + " enabled"] = glIsEnabled(question.what) ? "yes" : "no";
    for (GLenum plane = 0; plane < 6; ++plane) {
        glGetClipPlane(GL_CLIP_PLANE0 + plane, numbers);
        state["clip plane " + std::to_string(plane)] = text(numbers, 4);
    }
    for (const GLenum face : {GL_FRONT, GL_BACK}) {
        for (const Question& question : materials) {
            glGetMaterialfv(face, question.what, floats);
            state[std::string(face == GL_FRONT ? "front " : "back ") + question.name] = text(floats, question.count);
        }
    }
    for (GLenum light = 0; light < 8; ++light) {
        const std::string name = "light " + std::to_string(light) + " ";
        state[name + "enabled"] = glIsEnabled(GL_LIGHT0 + light) ? "yes" : "no";
        for (const Question& question : lights) {
            glGetLightfv(GL_LIGHT0 + light, question.what, floats);
            state[name + question.name] = text(floats, question.count);
        }
    }
    for (const Question& question : textures) {
        glGetTexParameterfv(GL_TEXTURE_2D, question.what, floats);
        state[question.name] = text(floats, question.count);
    }
    for (const Question& question : environments) {
        glGetTexEnvfv(GL_TEXTURE_ENV, question.what, floats);
        state[question.name] = text(floats, question.count);
    }
    state["colors of the pixels"] = pixels(GL_RGB, GL_UNSIGNED_BYTE, 3);
    state["depths of the pixels"] = pixels(GL_DEPTH_COMPONENT, GL_FLOAT, 4);
    return state;
}

std::string Difference(const GlState& before, const GlState& after) {
    std::string lines;
    for (const auto& [name, value] : before) {
        const auto found = after.find(name);
        if (found == after.end() || found->second != value)
            lines += name + ": " + value + " -> " + (found == after.end() ? "nothing" : found->second) + "\n";
    }
    return lines;
}

}  // namespace zk::test
