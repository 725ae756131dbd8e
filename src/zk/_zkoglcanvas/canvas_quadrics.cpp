#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/pickcorners.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <utility>
#include <vector>

namespace zk {

namespace {

// GLU takes at most 239 slices, and as many stacks of a sphere, whatever it is asked for. Nothing bounds the stacks of
// a cylinder and the loops of a disk: a slip of the keyboard would draw for hours.
constexpr int mostRings = 1000;
constexpr int mostSphereStacks = 239;

/// A surface that GLU turns about the z axis, with its fronts counter-clockwise. A pick is sent the same corners in
/// arrays; what GLU refuses is nothing there, too.
class Quadric {
  public:
    Quadric(GLenum orientation, bool picked) : orientation_(orientation), quadric_(nullptr, &gluDeleteQuadric) {
        if (picked)
            return;
        quadric_.reset(gluNewQuadric());
        gluQuadricTexture(quadric_.get(), GL_TRUE);
        gluQuadricOrientation(quadric_.get(), orientation);
    }

    void Sphere(double radius, int slices, int stacks) const {
        if (quadric_) {
            gluSphere(quadric_.get(), radius, slices, stacks);
            return;
        }
        if (slices < 2 || stacks < 1 || radius < 0)
            return;
        std::vector<PickRing> outline;
        stacks = std::min(stacks, mostSphereStacks);
        for (int i = 0; i <= stacks; ++i) {
            const double angle = std::numbers::pi * i / stacks;
            const bool isPole = i == 0 || i == stacks;
            outline.push_back({isPole ? 0 : radius * std::sin(angle), -radius * std::cos(angle)});
        }
        pick(std::move(outline), slices, 0, 360);
    }

    void Mantle(double baseRadius, double topRadius, double height, int slices, int stacks) const {
        stacks = std::min(stacks, mostRings);
        if (quadric_) {
            gluCylinder(quadric_.get(), baseRadius, topRadius, height, slices, stacks);
            return;
        }
        if (slices >= 2 && baseRadius >= 0 && topRadius >= 0 && height >= 0)
            pick(rings({baseRadius, 0}, {topRadius, height}, stacks), slices, 0, 360);
    }

    void Sector(double innerRadius, double outerRadius, int slices, int loops, double startAngle,
                double sweepAngle) const {
        loops = std::min(loops, mostRings);
        if (quadric_) {
            gluPartialDisk(quadric_.get(), innerRadius, outerRadius, slices, loops, startAngle, sweepAngle);
            return;
        }
        if (slices < 2 || !(outerRadius > 0) || innerRadius < 0 || innerRadius > outerRadius)
            return;
        if (sweepAngle < -360 || sweepAngle > 360)
            sweepAngle = 360;
        if (sweepAngle < 0) {
            startAngle += sweepAngle;
            sweepAngle = -sweepAngle;
        }
        pick(rings({outerRadius, 0}, {innerRadius, 0}, loops), slices, startAngle, sweepAngle);
    }

    void Disk(double innerRadius, double outerRadius, int slices, int loops) const {
        if (quadric_)
            gluDisk(quadric_.get(), innerRadius, outerRadius, slices, std::min(loops, mostRings));
        else
            Sector(innerRadius, outerRadius, slices, loops, 0, 360);
    }

  private:
    // A straight piece of an outline; no ring where there is nothing between rings.
    static std::vector<PickRing> rings(const PickRing& from, const PickRing& to, int count) {
        std::vector<PickRing> outline;
        for (int i = 0; i <= count && count > 0; ++i)
            outline.push_back({std::lerp(from.radius, to.radius, double(i) / count),
                               std::lerp(from.height, to.height, double(i) / count)});
        return outline;
    }

    void pick(std::vector<PickRing> outline, int slices, double startAngle, double sweepAngle) const {
        if (orientation_ == GLU_INSIDE)
            std::reverse(outline.begin(), outline.end());
        PickCorners().Draw(GL_QUADS, TurnedAroundZ(outline, slices, startAngle, sweepAngle));
    }

    GLenum orientation_;
    std::unique_ptr<GLUquadric, decltype(&gluDeleteQuadric)> quadric_;
};

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
    const Quadric sphere(GLU_OUTSIDE, picksCorners());
    sphere.Sphere(radius, slices, slices);
    endStrips();
}

void TZkOglCanvas::Cylinder(double baseRadius, double topRadius, double height, int slices, int stacks) {
    if (!CheckCurrent())
        return;
    const double reach = std::max(baseRadius, topRadius);
    quadricFills({-reach, -reach, std::min(0.0, height)}, {reach, reach, std::max(0.0, height)}, slices, stacks);
    const CounterClockwise fronts(*this);
    const Quadric mantle(GLU_OUTSIDE, picksCorners());
    const Quadric top(GLU_OUTSIDE, picksCorners());
    const Quadric bottom(GLU_INSIDE, picksCorners());
    mantle.Mantle(baseRadius, topRadius, height, slices, stacks);
    endStrips();  // here already: a disk begins with its normal, and that is a change of state, too
    bottom.Disk(0, baseRadius, slices, slices);
    endStrips();
    OGLTranslate({0, 0, height});
    top.Disk(0, topRadius, slices, slices);
    endStrips();
    OGLTranslate({0, 0, -height});
}

void TZkOglCanvas::Disk(double innerRadius, double outerRadius, int slices, int loops) {
    if (!CheckCurrent())
        return;
    quadricFills({-outerRadius, -outerRadius, 0}, {outerRadius, outerRadius, 0}, slices, loops);
    const CounterClockwise fronts(*this);
    const Quadric disk(GLU_OUTSIDE, picksCorners());
    disk.Disk(innerRadius, outerRadius, slices, loops);
    endStrips();
}

void TZkOglCanvas::PartialDisk(double innerRadius, double outerRadius, int slices, int loops, double startAngle,
                               double sweepAngle) {
    if (!CheckCurrent())
        return;
    quadricFills({-outerRadius, -outerRadius, 0}, {outerRadius, outerRadius, 0}, slices, loops);
    const CounterClockwise fronts(*this);
    const Quadric disk(GLU_OUTSIDE, picksCorners());
    disk.Sector(innerRadius, outerRadius, slices, loops, startAngle, sweepAngle);
    endStrips();
}

}  // namespace zk
