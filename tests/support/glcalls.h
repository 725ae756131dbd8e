#pragma once

#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

namespace zk::test {

/// Streams of calls, put together from pieces.
using Calls = std::vector<std::string>;

inline Calls operator+(Calls a, const Calls& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// A call with numbers as arguments, in the recorder's notation.
inline std::string Call(const std::string& name, std::initializer_list<double> numbers) {
    std::string text = name + "(";
    const char* separator = "";
    for (const double number : numbers) {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.6g", number == 0 ? 0.0 : number);
        text += separator + std::string(buffer);
        separator = ", ";
    }
    return text + ")";
}

/// One operation on one of OpenGL's matrices, the mode saved and restored.
inline Calls OnMatrix(const char* matrix, const std::string& call) {
    return {std::string("glMatrixMode(") + matrix + ")", call, "glMatrixMode(GL_MODELVIEW)"};
}

/// What a material hands to OpenGL: colours as "r, g, b" of bytes / 256, an opaque material for the front.
inline Calls Material(const std::string& ambient, const std::string& diffuse, const std::string& specular,
                      const std::string& emission, const std::string& shininess) {
    const auto call = [](const char* parameter, const std::string& values) {
        return std::string("glMaterialfv(GL_FRONT, ") + parameter + ", {" + values + "})";
    };
    return {call("GL_AMBIENT", ambient + ", 1"),   call("GL_DIFFUSE", diffuse + ", 1"),
            call("GL_SPECULAR", specular + ", 1"), call("GL_EMISSION", emission + ", 1"),
            call("GL_SHININESS", shininess),       call("GL_DIFFUSE", diffuse + ", 1")};
}

/// What a texture without a picture hands to OpenGL.
inline Calls NoTexture(const std::string& filter = "GL_NEAREST") {
    return Calls{"glBindTexture(GL_TEXTURE_2D, 0)"} + OnMatrix("GL_TEXTURE", "glScaled(1, 1, 1)") +
           OnMatrix("GL_TEXTURE", "glScaled(1, 1, 1)") +
           Calls{"glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, 8448)",
                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, " + filter + ")",
                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, " + filter + ")",
                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
                 "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)",
                 "glDisable(GL_TEXTURE_2D)"};
}

/// A flat face with its normal: the corners in drawing order.
inline Calls Face(std::initializer_list<double> normal, std::initializer_list<std::initializer_list<double>> corners) {
    Calls calls{Call("glNormal3d", normal), "glPushName(1)", "glBegin(9)"};
    for (const auto& corner : corners)
        calls.push_back(Call("glVertex3d", corner));
    return calls + Calls{"glEnd()", "glPopName()"};
}

/// The calls from the first that is `from` to the next that is `to`, both included; all that follow `from` if there is
/// no `to`.
inline Calls Section(const Calls& calls, const std::string& from, const std::string& to) {
    Calls section;
    for (const std::string& call : calls) {
        if (section.empty() && call != from)
            continue;
        section.push_back(call);
        if (call == to && section.size() > 1)
            break;
    }
    return section;
}

}  // namespace zk::test
