#include "oglpolyattributes.h"

#include <zk/_zkoglcanvas/canvas.h>

namespace zk {

TOglPolyAttributes::TOglPolyAttributes(TZkOglCanvas* canvas) : canvas_(canvas) {}

TZkOglCanvas* TOglPolyAttributes::Canvas() const {
    return qobject_cast<TZkOglCanvas*>(canvas_.data());
}

}  // namespace zk
