#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/_zkxyarrays.h>

namespace zk {

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

    glPushName(1);
    const GLenum style = getAttributes()->getPolyStyle()->GLStyle();
    for (int i = 0; i < polygons.Count(); ++i) {
        const TXYZARRAY& polygon = *polygons.Getitem(i);
        std::span<const TXYZ> points = polygon.Items();
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
