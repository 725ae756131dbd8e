#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/polygonmode.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/_zkxyarrays.h>

#include <array>
#include <span>
#include <utility>

namespace zk {

namespace {

/// Appends the triangles of a convex piece, each closed: four points, the last equal to the first.
void appendTriangles(const TXYZARRAY& piece, TlistOFxyzArray& triangles) {
    const std::span<const TXYZ> points = piece.Items();
    for (std::size_t i = 2; i < points.size(); ++i) {
        const std::array<TXYZ, 4> corners{points[0], points[i - 1], points[i], points[0]};
        ArrayAddData(*triangles.AddArray(), int(corners.size()), corners.data());
    }
}

/// OpenGL fills convex polygons only. The pieces of a face that it can fill, with a perimeter of at most `perimeter` if
/// that is not 0.
void fillable(const TlistOFxyzArray& face, double perimeter, TlistOFxyzArray& pieces) {
    if (perimeter == 0) {
        DOConvex(face, pieces);
        return;
    }
    TlistOFxyzArray convex;
    DOConvex(face, convex);
    TlistOFxyzArray triangles;
    for (int i = 0; i < convex.Count(); ++i)
        appendTriangles(*convex.Getitem(i), triangles);
    RefineTriangles(triangles, perimeter, pieces);
}

}  // namespace

void TZkOglCanvas::PolyPolyline3D(const TlistOFxyzArray& polygons) {
    if (!CheckCurrent() || polygons.Count() == 0)
        return;
    const TXYZARRAY& outline = *polygons.Getitem(0);
    const TXYZ areaNormal = Vekt(outline);
    if (Equals(Len(areaNormal), 0))
        return;
    const TXYZ normal = Mul(Normalize(areaNormal), orientationSign_);
    glNormal3d(normal.x, normal.y, normal.z);
    OGLError();

    const TTexture* texture = getAttributes()->getTexture();
    const bool textured = texture->GetVisible();
    TBAse frame = Unitbase;
    if (textured)
        frame = texture->IsBaseSet() ? texture->getBAse() : NewBAse(outline);

    TlistOFxyzArray pieces;
    const bool filled = GetPolyGonMode()[0] == GL_FILL;
    if (filled)
        fillable(polygons, triangleResolution_, pieces);
    const TlistOFxyzArray& drawn = filled ? pieces : polygons;

    glPushName(1);
    const GLenum style = getAttributes()->getPolyStyle()->GLStyle();
    for (int i = 0; i < drawn.Count(); ++i) {
        std::span<const TXYZ> points = std::as_const(*drawn.Getitem(i)).Items();
        if (points.size() > 1 && Equals(points.back(), points.front()))
            points = points.first(points.size() - 1);  // the closing edge is implied
        glBegin(style);
        for (const TXYZ& point : points) {
            if (textured) {
                const TXYZ relative = BaseGetRel(frame, point);
                glTexCoord2f(GLfloat(relative.x), GLfloat(relative.y));
            }
            glVertex3d(point.x, point.y, point.z);
        }
        glEnd();
    }
    glPopName();
}

void TZkOglCanvas::EnableClipplane(int index, const TXYZ& point, const TXYZ& normal) {
    if (!CheckCurrent())
        return;
    const GLdouble equation[4] = {normal.x, normal.y, normal.z, -Skal(normal, point)};
    glClipPlane(GLenum(GL_CLIP_PLANE0 + index), equation);
    OGLError();
    glEnable(GLenum(GL_CLIP_PLANE0 + index));
    OGLError();
}

void TZkOglCanvas::DisableClipplane(int index) {
    if (!CheckCurrent())
        return;
    if (index < 0) {
        for (int i = 0; i < 6; ++i)
            glDisable(GLenum(GL_CLIP_PLANE0 + i));
    } else {
        glDisable(GLenum(GL_CLIP_PLANE0 + index));
    }
    OGLError();
}

void TZkOglCanvas::SetClockWise(bool clockwise) {
    orientationSign_ = clockwise ? 1.0 : -1.0;
    if (!CheckCurrent())
        return;
    glFrontFace(clockwise ? GL_CW : GL_CCW);
    OGLError();
}

bool TZkOglCanvas::GetClockWise() {
    if (!CheckCurrent())
        return orientationSign_ > 0;
    GLint orientation = 0;
    glGetIntegerv(GL_FRONT_FACE, &orientation);
    return orientation == GL_CW;
}

void TZkOglCanvas::SetTriangleResolution(double perimeter) {
    if (perimeter == triangleResolution_)
        return;
    triangleResolution_ = perimeter;
    for (auto scene = scenes_.rbegin(); scene != scenes_.rend(); ++scene)
        (*scene)->Invalidate();
}

void TZkOglCanvas::SetDefaultTriangleResolution(double perimeter) {
    if (perimeter == defaultTriangleResolution_)
        return;
    defaultTriangleResolution_ = perimeter;
    SetTriangleResolution(perimeter);
}

void TZkOglCanvas::SetTranslucent(double /*translucency*/) {}

}  // namespace zk
