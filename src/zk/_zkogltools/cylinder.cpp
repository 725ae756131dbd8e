#include "cylinder.h"

#include <zk/_zkoglcanvas/canvas.h>
#include <zk/host/componentref.h>

#include <typeinfo>

namespace zk {

static const ReferenceTarget<TZKOglCylinder> cylinderTarget;

TZKOglCylinder::TZKOglCylinder(QObject* owner) : TCustomShape(owner) {}

TZKOglCylinder::~TZKOglCylinder() {
    AnnounceRemoval();
}

void TZKOglCylinder::SetBaseRadius(double radius) {
    baseRadius_ = radius;
    Invalidate();
}

void TZKOglCylinder::SetTopRadius(double radius) {
    topRadius_ = radius;
    Invalidate();
}

void TZKOglCylinder::SetCylinderHeight(double height) {
    height_ = height;
    Invalidate();
}

void TZKOglCylinder::SetStacks(int stacks) {
    stacks_ = stacks;
    Invalidate();
}

void TZKOglCylinder::SetResolution(int resolution) {
    resolution_ = resolution;
    Invalidate();
}

bool TZKOglCylinder::DrawsOnlyItself() const {
    return typeid(*this) == typeid(TZKOglCylinder);
}

void TZKOglCylinder::Doplay() {
    if (checkCurrent())
        GetZkOglcanvas()->Cylinder(baseRadius_, topRadius_, height_, resolution_, stacks_);
}

}  // namespace zk
