#include "refshape.h"

#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkxyz/errors.h>
#include <zk/host/formreading.h>

#include <QScopeGuard>

namespace zk {

static const ReferenceProperty<TZKOglRefShape, TCustomShape> referenceProperty("ReferenceShape");
static const ReferenceTarget<TZKOglRefShape> refShapeTarget;

TZKOglRefShape::TZKOglRefShape(QObject* owner) : TCustomShape(owner) {}

TZKOglRefShape::~TZKOglRefShape() {
    AnnounceRemoval();
}

void TZKOglRefShape::SetReference(TCustomShape* shape) {
    const TCustomShape* seen = shape;
    // The shape and what it refers to, no further: a longer circle is none of this check's business, Doplay copes.
    const auto* refers = qobject_cast<const TZKOglRefShape*>(shape);
    if (refers && refers != this && refers->reference_)
        seen = refers->reference_;
    if (seen == this)
        throw EError(" Zyklischer Verweis ");

    if (reference_ != shape) {
        if (reference_)
            RemoveFreeNotification(reference_);
        reference_ = shape;
        if (reference_)
            FreeNotification(reference_);
    }
    if (checkCurrent())
        Invalidate();
}

void TZKOglRefShape::Notification(QObject* component, TOperation operation) {
    TCustomShape::Notification(component, operation);
    if (operation == TOperation::opRemove && reference_ && component == reference_)
        SetReference(nullptr);
}

void TZKOglRefShape::Doplay() {
    // A shape of another canvas would draw into that canvas's picture, in the middle of this one's list.
    if (!reference_ || playing_ || !checkCurrent() || reference_->GetZkOglcanvas() != GetZkOglcanvas())
        return;
    const QPointer<TZKOglRefShape> self = this;
    playing_ = true;
    const auto played = qScopeGuard([&self] {
        if (self)
            self->playing_ = false;
    });
    PlayCopy(*reference_, GetVisible());
}

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TZKOglRefShape::readReference() const {
    return ComponentRef(GetReference());
}

void TZKOglRefShape::writeReference(const ComponentRef& ref) {
    WriteReference(*this, "ReferenceShape", ref,
                   [this](QObject* object) { SetReference(static_cast<TCustomShape*>(object)); });
}

}  // namespace zk
