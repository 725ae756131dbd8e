#include <zk/_zkogltools/oglshape.h>

namespace zk {

TZKOglShape::TZKOglShape(QObject* owner) : TCustomShape(owner) {}

TZKOglShape::~TZKOglShape() {
    AnnounceRemoval();
}

void TZKOglShape::Doplay() {
    Q_EMIT OnPlay(this);
}

}  // namespace zk
