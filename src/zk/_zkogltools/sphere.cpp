#include "sphere.h"

#include <zk/_zkmath/tolerance.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/host/componentref.h>

#include <algorithm>
#include <typeinfo>

namespace zk {

static const ReferenceTarget<TZKOglSphere> sphereTarget;

TZKOglSphere::TZKOglSphere(QObject* owner) : TCustomShape(owner) {}

TZKOglSphere::~TZKOglSphere() {
    AnnounceRemoval();
}

void TZKOglSphere::SetR(double radius) {
    r_ = radius;
    Invalidate();
}

void TZKOglSphere::SetResolution(int resolution) {
    resolution_ = std::max(resolution, 1);
    DropDrawing();
}

bool TZKOglSphere::DrawsOnlyItself() const {
    return typeid(*this) == typeid(TZKOglSphere);
}

void TZKOglSphere::Doplay() {
    if (Equals(r_, 0) || Equals(double(resolution_), 0))
        return;
    if (checkCurrent())
        GetZkOglcanvas()->Sphere(r_, resolution_);
}

}  // namespace zk
