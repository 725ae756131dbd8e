#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/pickcorners.h>
#include <zk/_zkoglcanvas/polygonmode.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/_zkxyarrays.h>
#include <zk/host/workarounds.h>

#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

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

/// The closing edge of a face is implied.
std::span<const TXYZ> withoutClosingPoint(const TXYZARRAY& face) {
    const std::span<const TXYZ> points = face.Items();
    return points.size() > 1 && Equals(points.back(), points.front()) ? points.first(points.size() - 1) : points;
}

void sendPicked(GLenum primitive, const TlistOFxyzArray& faces) {
    PickCorners pick;
    std::vector<PickCorner> corners;
    for (int i = 0; i < faces.Count(); ++i) {
        corners.clear();
        for (const TXYZ& point : withoutClosingPoint(*faces.Getitem(i)))
            corners.push_back({float(point.x), float(point.y), float(point.z)});
        pick.Draw(primitive, corners);
    }
}

/// True for triangles and plane, strictly convex quadrilaterals, which most faces are: they need no cutting.
bool isConvex(const TXYZARRAY& face, const TXYZ& normal) {
    const std::span<const TXYZ> points = withoutClosingPoint(face);
    if (points.size() != 3 && points.size() != 4)
        return false;
    // Squares are compared, which saves the roots. Where they would leave the range of numbers the answer is no.
    constexpr double leastSine = 1e-6;
    constexpr double flat = 1e-9;
    const std::size_t count = points.size();
    std::array<TXYZ, 4> edges{};  // from each point to the next
    std::array<double, 4> squares{};
    for (std::size_t i = 0; i < count; ++i) {
        edges[i] = Sub(points[(i + 1) % count], points[i]);
        squares[i] = Skal(edges[i], edges[i]);
    }
    int sense = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t before = (i + count - 1) % count;
        const double turn = Skal(Vekt(edges[before], edges[i]), normal);
        const double rise = Skal(edges[i], normal);
        if (!(turn * turn > leastSine * leastSine * squares[before] * squares[i]) ||
            !(rise * rise <= flat * flat * squares[i]))
            return false;
        const int side = turn > 0 ? 1 : -1;
        if (sense != 0 && side != sense)
            return false;
        sense = side;
    }
    return true;
}

}  // namespace

/// What is drawn into a list: how, what it fills, and the run of primitives that is open.
struct TZkOglCanvas::DrawingInto {
    FaceStyle style;
    Drawn drawn;
    GLenum open = noPrimitive;

    static constexpr GLenum noPrimitive = ~0U;

    /// Faces in one list need no `glBegin` of their own: their triangles come in runs, which OpenGL draws much faster
    /// than as many polygons.
    void BeginRun(GLenum primitive) {
        if (open == primitive)
            return;
        EndRun();
        glBegin(primitive);
        open = primitive;
    }
    void EndRun() {
        if (open != noPrimitive)
            glEnd();
        open = noPrimitive;
    }

    /// Several strips or loops have been drawn, and something comes that ends them.
    bool hasStrips = false;
    void EndStrips() {
        EndRun();
        if (!std::exchange(hasStrips, false) || style.Mode != GL_FILL || !IsOn(Workaround::ListStrips))
            return;
        glBegin(GL_TRIANGLES);  // of no area, which draws nothing: a primitive of another kind
        for (int corner = 0; corner < 3; ++corner)
            glVertex3d(0, 0, 0);
        glEnd();
    }
};

FaceStyle TZkOglCanvas::GetFaceStyle() {
    const TTexture* texture = getAttributes()->getTexture();
    const bool textured = texture->GetVisible();
    return {unsigned(GetPolyGonMode()[0]),
            getAttributes()->getPolyStyle()->GLStyle(),
            triangleResolution_,
            orientationSign_,
            GetClockWise(),
            textured,
            textured ? texture->getBAse() : Unitbase};
}

Drawn TZkOglCanvas::DrawInto(const FaceStyle& style, const std::function<void()>& draw) {
    DrawingInto into{style, {}, DrawingInto::noPrimitive};
    const auto end = qScopeGuard([this, &into, outer = drawingInto_] {
        into.EndStrips();
        drawingInto_ = outer;
    });
    drawingInto_ = &into;
    draw();
    return into.drawn;
}

void TZkOglCanvas::quadricFills(const TXYZ& low, const TXYZ& high, int slices, int stacks) {
    if (!drawingInto_)
        return;
    drawingInto_->EndRun();
    drawingInto_->drawn.Box.Add(low);
    drawingInto_->drawn.Box.Add(high);
    drawingInto_->drawn.Vertices += 2 * std::int64_t(std::clamp(slices, 0, 240)) * std::clamp(stacks, 0, 1000);
}

// Called before the state changes: behind a change it would be too late.
void TZkOglCanvas::endStrips() {
    if (!drawingInto_)
        return;
    drawingInto_->hasStrips = true;
    drawingInto_->EndStrips();
}

bool TZkOglCanvas::picksCorners() const {
    return selecting_ && IsOn(Workaround::SelectionCorners);
}

void TZkOglCanvas::PolyPolyline3D(const TlistOFxyzArray& polygons) {
    // No user code runs while a list is drawn into: the context that was current is.
    if ((!drawingInto_ && !CheckCurrent()) || polygons.Count() == 0)
        return;
    const TXYZARRAY& outline = *polygons.Getitem(0);
    const TXYZ areaNormal = Vekt(outline);
    if (Equals(Len(areaNormal), 0))
        return;
    const FaceStyle style = drawingInto_ ? drawingInto_->style : GetFaceStyle();
    const TXYZ normal = Mul(Normalize(areaNormal), style.Orientation);

    // Every texture here has a base: that of its default description, if nothing else.
    const bool textured = style.Textured;
    const TBAse& frame = style.TextureBase;

    const bool filled = style.Mode == GL_FILL;
    const bool asItIs = !filled || (style.Resolution == 0 && polygons.Count() == 1 && isConvex(outline, normal));
    TlistOFxyzArray pieces;
    if (!asItIs)
        fillable(polygons, style.Resolution, pieces);
    const TlistOFxyzArray& drawn = asItIs ? polygons : pieces;

    const auto draw = [&](std::span<const TXYZ> points) {
        for (const TXYZ& point : points) {
            if (textured) {
                const TXYZ relative = BaseGetRel(frame, point);
                glTexCoord2f(GLfloat(relative.x), GLfloat(relative.y));
            }
            glVertex3d(point.x, point.y, point.z);
        }
    };
    if (drawingInto_) {
        for (int i = 0; i < drawn.Count(); ++i) {
            const std::span<const TXYZ> points = withoutClosingPoint(*drawn.Getitem(i));
            for (const TXYZ& point : points)
                drawingInto_->drawn.Box.Add(point);
            drawingInto_->drawn.Vertices += std::int64_t(points.size());
            if (!filled || style.Primitive != GL_POLYGON) {
                drawingInto_->EndRun();
                drawingInto_->hasStrips = true;
                drawingInto_->BeginRun(style.Primitive);
                glNormal3d(normal.x, normal.y, normal.z);
                draw(points);
                drawingInto_->EndRun();
                continue;
            }
            if (points.size() == 4) {
                // Begun at its second corner, drivers cut it along the diagonal that they cut a polygon along.
                drawingInto_->BeginRun(GL_QUADS);
                glNormal3d(normal.x, normal.y, normal.z);
                draw(std::array<TXYZ, 4>{points[1], points[2], points[3], points[0]});
                continue;
            }
            // The triangles that drivers make of a convex polygon.
            drawingInto_->BeginRun(GL_TRIANGLES);
            glNormal3d(normal.x, normal.y, normal.z);  // one outside of a run would make drivers draw it more slowly
            for (std::size_t corner = 2; corner < points.size(); ++corner)
                draw(std::array<TXYZ, 3>{points[0], points[corner - 1], points[corner]});
        }
        return;
    }

    glNormal3d(normal.x, normal.y, normal.z);
    OGLError();
    glPushName(1);
    if (picksCorners()) {
        sendPicked(style.Primitive, drawn);
        glPopName();
        return;
    }
    for (int i = 0; i < drawn.Count(); ++i) {
        glBegin(style.Primitive);
        draw(withoutClosingPoint(*drawn.Getitem(i)));
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
