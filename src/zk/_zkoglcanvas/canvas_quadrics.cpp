#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>

#include <algorithm>
#include <memory>

namespace zk {

namespace {

// GLU takes at most 239 slices, and as many stacks of a sphere, whatever it is asked for. Nothing bounds the stacks of
// a cylinder and the loops of a disk: a slip of the keyboard would draw for hours.
constexpr int mostRings = 1000;

// A pick meets a flat face and a straight mantle just as well undivided, and some drivers keep memory of every corner
// that is sent in selection mode ("selection-corners" in docs/drivers.md).
int ringsOf(int asked, bool picked) {
    return std::min(asked, picked ? 1 : mostRings);
}

using Quadric = std::unique_ptr<GLUquadric, decltype(&gluDeleteQuadric)>;

Quadric newQuadric(GLenum orientation) {
    Quadric quadric(gluNewQuadric(), &gluDeleteQuadric);
    gluQuadricTexture(quadric.get(), GL_TRUE);
    gluQuadricOrientation(quadric.get(), orientation);
    return quadric;
}

/// GLU's fronts are counter-clockwise: they are that for the length of a scope.
class CounterClockwise {
  public:
    explicit CounterClockwise(TZkOglCanvas& canvas) : canvas_(canvas), before_(canvas.GetClockWise()) {
        canvas_.SetClockWise(false);
    }
    ~CounterClockwise() { canvas_.SetClockWise(before_); }
    CounterClockwise(const CounterClockwise&) = delete;
    CounterClockwise& operator=(const CounterClockwise&) = delete;

  private:
    TZkOglCanvas& canvas_;
    bool before_;
};

}  // namespace

void TZkOglCanvas::Sphere(double radius, int slices) {
    if (!CheckCurrent())
        return;
    quadricFills({-radius, -radius, -radius}, {radius, radius, radius}, slices, slices);
    const CounterClockwise fronts(*this);
    const Quadric sphere = newQuadric(GLU_OUTSIDE);
    gluSphere(sphere.get(), radius, slices, slices);
    endStrips();
}

void TZkOglCanvas::Cylinder(double baseRadius, double topRadius, double height, int slices, int stacks) {
    if (!CheckCurrent())
        return;
    const double reach = std::max(baseRadius, topRadius);
    quadricFills({-reach, -reach, std::min(0.0, height)}, {reach, reach, std::max(0.0, height)}, slices, stacks);
    const CounterClockwise fronts(*this);
    const Quadric mantle = newQuadric(GLU_OUTSIDE);
    const Quadric top = newQuadric(GLU_OUTSIDE);
    const Quadric bottom = newQuadric(GLU_INSIDE);
    const int loops = ringsOf(slices, selecting_);
    gluCylinder(mantle.get(), baseRadius, topRadius, height, slices, ringsOf(stacks, selecting_));
    endStrips();  // here already: a disk begins with its normal, and that is a change of state, too
    gluDisk(bottom.get(), 0, baseRadius, slices, loops);
    endStrips();
    OGLTranslate({0, 0, height});
    gluDisk(top.get(), 0, topRadius, slices, loops);
    endStrips();
    OGLTranslate({0, 0, -height});
}

void TZkOglCanvas::Disk(double innerRadius, double outerRadius, int slices, int loops) {
    if (!CheckCurrent())
        return;
    quadricFills({-outerRadius, -outerRadius, 0}, {outerRadius, outerRadius, 0}, slices, loops);
    const CounterClockwise fronts(*this);
    const Quadric disk = newQuadric(GLU_OUTSIDE);
    gluDisk(disk.get(), innerRadius, outerRadius, slices, ringsOf(loops, selecting_));
    endStrips();
}

void TZkOglCanvas::PartialDisk(double innerRadius, double outerRadius, int slices, int loops, double startAngle,
                               double sweepAngle) {
    if (!CheckCurrent())
        return;
    quadricFills({-outerRadius, -outerRadius, 0}, {outerRadius, outerRadius, 0}, slices, loops);
    const CounterClockwise fronts(*this);
    const Quadric disk = newQuadric(GLU_OUTSIDE);
    gluPartialDisk(disk.get(), innerRadius, outerRadius, slices, ringsOf(loops, selecting_), startAngle, sweepAngle);
    endStrips();
}

}  // namespace zk
