#include "shape.h"

namespace zk {

TZkShape::TZkShape(QObject* owner) : TComponent(owner) {}

TZkShape::~TZkShape() {
    AnnounceRemoval();
}

void TZkShape::SetDisplayList(TDisplayList* L) {
    // Leaving invalidates the old list, which may repaint, and a handler may delete either of the two.
    const QPointer<TZkShape> self(this);
    const QPointer<TDisplayList> list(L);
    if (displayList_)
        displayList_->RemoveShape(this);
    if (!self)
        return;
    displayList_ = list;
    if (list)
        list->AddShape(this);
}

void TZkShape::Notification(QObject* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation == TOperation::opRemove && component == displayList_.data())
        displayList_ = nullptr;
}

void TZkShape::Play() {
    Q_EMIT OnPlay(this);
}

}  // namespace zk
