#include "box.h"

#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkxyz/array.h>
#include <zk/host/componentref.h>

#include <algorithm>
#include <array>
#include <typeinfo>

namespace zk {

static const ReferenceTarget<TZKOglBox> boxTarget;

TZKOglBox::TZKOglBox(QObject* owner) : TCustomShape(owner) {}

TZKOglBox::~TZKOglBox() {
    AnnounceRemoval();
}

void TZKOglBox::SetA(double length) {
    a_ = length;
    Invalidate();
}

void TZKOglBox::SetB(double width) {
    b_ = width;
    Invalidate();
}

void TZKOglBox::SetC(double height) {
    c_ = height;
    Invalidate();
}

bool TZKOglBox::DrawsOnlyItself() const {
    return typeid(*this) == typeid(TZKOglBox);
}

void TZKOglBox::Doplay() {
    const double a = a_;
    const double b = b_;
    const double c = c_;
    using Face = std::array<TXYZ, 4>;
    const std::array<Face, 6> faces{
        Face{{{0, 0, 0}, {a, 0, 0}, {a, b, 0}, {0, b, 0}}}, Face{{{0, 0, c}, {0, b, c}, {a, b, c}, {a, 0, c}}},
        Face{{{a, 0, 0}, {0, 0, 0}, {0, 0, c}, {a, 0, c}}}, Face{{{a, b, 0}, {a, 0, 0}, {a, 0, c}, {a, b, c}}},
        Face{{{0, b, 0}, {a, b, 0}, {a, b, c}, {0, b, c}}}, Face{{{0, 0, 0}, {0, b, 0}, {0, b, c}, {0, 0, c}}}};

    ArrayOwner<TXYZARRAY> face(4);
    Arraysetcount(*face, 4);
    TZkOglCanvas* canvas = GetZkOglcanvas();
    for (const Face& corners : faces) {
        std::copy(corners.begin(), corners.end(), face->Items().begin());
        canvas->PolyLine3D(*face);
    }
}

}  // namespace zk
