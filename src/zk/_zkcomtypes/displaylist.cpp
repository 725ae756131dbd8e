#include "displaylist.h"

#include <zk/_zkcomtypes/shape.h>
#include <zk/_zkxyz/errors.h>
#include <zk/host/componentref.h>

#include <algorithm>
#include <string>

namespace zk {

static const ReferenceTarget<TDisplayList> displayListTarget;

TDisplayList::TDisplayList(QObject* owner) : TComponent(owner) {}

TDisplayList::~TDisplayList() {
    AnnounceRemoval();
}

void TDisplayList::AddShape(TZkShape* S) {
    if (S) {
        shapes_.emplace_back(S);
        if (++entries_[S] == 1)
            connect(S, &QObject::destroyed, this, &TDisplayList::shapeDestroyed);
    }
    Invalidate();
}

void TDisplayList::RemoveShape(TZkShape* S) {
    removeFirst(S);
    Invalidate();
}

void TDisplayList::removeFirst(const QObject* shape) {
    const auto known = entries_.find(shape);
    if (known == entries_.end())
        return;
    const auto found = std::find_if(shapes_.begin(), shapes_.end(),
                                    [shape](const QPointer<TZkShape>& entry) { return entry.data() == shape; });
    if (found == shapes_.end())  // it is being destroyed, and its entries are null already
        return;
    holes_ = playing_ > 0;
    if (holes_)
        found->clear();
    else
        shapes_.erase(found);
    if (--known->second > 0)
        return;
    entries_.erase(known);
    disconnect(shape, &QObject::destroyed, this, &TDisplayList::shapeDestroyed);
}

// The entries of the shape are null already.
void TDisplayList::shapeDestroyed(QObject* shape) {
    entries_.erase(shape);
    pack();
}

void TDisplayList::pack() {
    holes_ = playing_ > 0;
    if (!holes_)
        std::erase_if(shapes_, [](const QPointer<TZkShape>& entry) { return entry.isNull(); });
}

TZkShape* TDisplayList::GetZkShape(int Index) const {
    if (!holes_ && Index >= 0 && Index < int(shapes_.size())) {
        if (TZkShape* shape = shapes_[std::size_t(Index)])
            return shape;
    }
    int index = Index;
    for (const QPointer<TZkShape>& entry : shapes_) {
        if (entry && index-- == 0)
            return entry;
    }
    throw EListError("List index out of bounds (" + std::to_string(Index) + ")");
}

int TDisplayList::GetShapeCount() const {
    if (!holes_)
        return int(shapes_.size());
    return int(
        std::count_if(shapes_.begin(), shapes_.end(), [](const QPointer<TZkShape>& entry) { return !entry.isNull(); }));
}

int TDisplayList::INdexOfShape(const QObject* C) const {
    if (!entries_.contains(C))
        return -1;
    int index = 0;
    for (const QPointer<TZkShape>& entry : shapes_) {
        if (!entry)
            continue;
        if (entry.data() == C)
            return index;
        ++index;
    }
    return -1;
}

void TDisplayList::Notification(QObject* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation == TOperation::opRemove)
        removeFirst(component);
}

void TDisplayList::SetVisible(bool Value) {
    visible_ = Value;
}

void TDisplayList::Play() {
    if (!visible_)
        return;
    const QPointer<TDisplayList> self(this);
    Q_EMIT OnPlay(this);
    if (!self)
        return;
    const std::size_t count = shapes_.size();

    // Taken back however the loop is left, unless the list is gone.
    struct Playing {
        explicit Playing(const QPointer<TDisplayList>& played) : list(played) { ++list->playing_; }
        ~Playing() {
            if (list && --list->playing_ == 0 && list->holes_)
                list->pack();
        }
        const QPointer<TDisplayList>& list;
    } const playing(self);

    for (std::size_t i = NextToPlay(0, count); i < count; i = NextToPlay(i + 1, count)) {
        TZkShape* shape = shapes_[i];
        if (shape && !(shape->ComponentState() & csDestroying))
            PlayShape(i, *shape);
        if (!self)
            return;
    }
}

void TDisplayList::PlayShape(std::size_t /*index*/, TZkShape& shape) {
    shape.Play();
}

TZkShape* TDisplayList::Entry(std::size_t index) const {
    return shapes_[index];
}

std::size_t TDisplayList::NextToPlay(std::size_t index, std::size_t /*count*/) {
    return index;
}

void TDisplayList::Invalidate() {}

}  // namespace zk
