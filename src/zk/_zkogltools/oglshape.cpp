#include "oglshape.h"

#include <zk/host/componentref.h>

namespace zk {

static const ReferenceTarget<TZKOglShape> oglShapeTarget;

TZKOglShape::TZKOglShape(QObject* owner) : TCustomShape(owner) {}

TZKOglShape::~TZKOglShape() {
    AnnounceRemoval();
}

void TZKOglShape::Doplay() {
    Q_EMIT OnPlay(this);
}

}  // namespace zk
