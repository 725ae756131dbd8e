#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/oglpolyattributes.h>

namespace zk {

TOglPolyAttributes::TOglPolyAttributes(TZkOglCanvas* canvas) : canvas_(canvas) {}

TZkOglCanvas* TOglPolyAttributes::Canvas() const {
    return qobject_cast<TZkOglCanvas*>(canvas_.data());
}

}  // namespace zk
