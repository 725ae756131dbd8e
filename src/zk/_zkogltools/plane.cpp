#include "plane.h"

#include <zk/_zkcomtypes/pointproperty.h>
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkxyz/array.h>
#include <zk/host/componentref.h>

#include <typeinfo>

namespace zk {

static const ReferenceTarget<TZKOglPlane> planeTarget;

TZKOglPlane::TZKOglPlane(QObject* owner) : TCustomShape(owner) {}

TZKOglPlane::~TZKOglPlane() {
    AnnounceRemoval();
}

void TZKOglPlane::SetData(const QStringList& lines) {
    data_ = lines;
    DropDrawing();
    if (TDisplayList* scene = GetDisplayList())
        scene->Invalidate();
}

void TZKOglPlane::writeData(const QStringList& lines) {
    SetData(PointTextsOfForm(*this, lines));
}

bool TZKOglPlane::DrawsOnlyItself() const {
    return typeid(*this) == typeid(TZKOglPlane);
}

void TZKOglPlane::Doplay() {
    TCustomShape::Doplay();
    TZkOglCanvas* canvas = GetZkOglcanvas();
    if (data_.isEmpty() || !canvas)
        return;

    ArrayOwner<TXYZARRAY> polygon(1);
    Arraysetcount(*polygon, 1);
    polygon->Items()[0] = Nullxyz;  // what is handed on if the first line is a separator: a point, which draws nothing
    int start = 0;
    for (int i = 0; i < int(data_.size()); ++i) {
        TXYZ point;
        if (TryStrtoxyz(data_[i], point)) {
            Arraysetcount(*polygon, i + 1 - start);
            if (const auto points = polygon->Items(); !points.empty())
                points.back() = point;
        } else {
            start = i + 1;
            canvas->PolyLine3D(*polygon);
            Arraysetcount(*polygon, 0);
        }
    }
    canvas->PolyLine3D(*polygon);
}

}  // namespace zk
