#include "pickcorners.h"

#include <zk/_zkoglcanvas/glapi.h>

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

// Of later versions than 1.1, whose names some systems' headers end with.
#ifndef GL_ARRAY_BUFFER_BINDING
#define GL_ARRAY_BUFFER_BINDING 0x8894
#endif
#ifndef GL_VERTEX_ARRAY_BINDING
#define GL_VERTEX_ARRAY_BINDING 0x85B5
#endif
#ifndef GL_CURRENT_PROGRAM
#define GL_CURRENT_PROGRAM 0x8B8D
#endif

namespace zk {

namespace {

constexpr int mostSlices = 239;

GLint valueOf(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

// Older contexts do not know the questions, and would take note of an error.
bool isNothingBound(const QOpenGLContext& context) {
    const std::pair<int, int> version = context.format().version();
    return (version < std::pair(1, 5) || valueOf(GL_ARRAY_BUFFER_BINDING) == 0) &&
           (version < std::pair(2, 0) || valueOf(GL_CURRENT_PROGRAM) == 0) &&
           (version < std::pair(3, 0) || valueOf(GL_VERTEX_ARRAY_BINDING) == 0);
}

bool canPoint() {
    const QOpenGLContext* context = QOpenGLContext::currentContext();
    return context && valueOf(GL_CLIENT_ATTRIB_STACK_DEPTH) < valueOf(GL_MAX_CLIENT_ATTRIB_STACK_DEPTH) &&
           isNothingBound(*context);
}

}  // namespace

PickCorners::PickCorners() : asArrays_(canPoint()) {
    if (!asArrays_)
        return;
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    for (const GLenum array :
         {GL_COLOR_ARRAY, GL_EDGE_FLAG_ARRAY, GL_INDEX_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
        glDisableClientState(array);
    QOpenGLContext* context = QOpenGLContext::currentContext();
    if (context->format().version() >= std::pair(2, 0))
        context->functions()->glDisableVertexAttribArray(0);  // it would stand in for the corners
    glEnableClientState(GL_VERTEX_ARRAY);
}

PickCorners::~PickCorners() {
    if (asArrays_)
        glPopClientAttrib();
}

void PickCorners::Draw(unsigned primitive, std::span<const PickCorner> corners) {
    if (corners.empty())
        return;
    if (asArrays_) {
        glVertexPointer(3, GL_FLOAT, 0, corners.data());
        glDrawArrays(primitive, 0, GLsizei(corners.size()));
        return;
    }
    glBegin(primitive);
    for (const PickCorner& corner : corners)
        glVertex3fv(corner.data());
    glEnd();
}

std::vector<PickCorner> TurnedAroundZ(std::span<const PickRing> outline, int slices, double startAngle,
                                      double sweepAngle) {
    slices = std::clamp(slices, 1, mostSlices);
    std::vector<std::pair<double, double>> directions;  // x and y
    directions.reserve(std::size_t(slices) + 1);
    for (int i = 0; i <= slices; ++i) {
        const bool closes = i == slices && std::fabs(sweepAngle) == 360;
        const double angle = closes ? startAngle : startAngle + sweepAngle * i / slices;
        const double radians = angle * std::numbers::pi / 180;
        directions.emplace_back(std::sin(radians), std::cos(radians));
    }
    std::vector<PickCorner> corners;
    corners.reserve(outline.size() * std::size_t(slices) * 4);
    for (std::size_t ring = 1; ring < outline.size(); ++ring) {
        for (std::size_t slice = 0; slice < std::size_t(slices); ++slice) {
            const auto add = [&](const PickRing& place, const std::pair<double, double>& direction) {
                corners.push_back({float(place.radius * direction.first), float(place.radius * direction.second),
                                   float(place.height)});
            };
            add(outline[ring - 1], directions[slice + 1]);
            add(outline[ring - 1], directions[slice]);
            add(outline[ring], directions[slice]);
            add(outline[ring], directions[slice + 1]);
        }
    }
    return corners;
}

}  // namespace zk
