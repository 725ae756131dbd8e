#include <zk/host/component.h>

#include <QHash>

#include <algorithm>

namespace zk {

namespace {

// Which QObjects are components. Asking it is cheaper than a cross cast, and still right for an object whose
// destructors are already running.
QHash<const QObject*, ComponentBase*>& registry() {
    static QHash<const QObject*, ComponentBase*> components;
    return components;
}

std::uint64_t nextEpoch() {
    static std::uint64_t epoch = 0;
    return ++epoch;
}

}  // namespace

ComponentBase::ComponentBase(QObject* self) : self_(self) { registry().insert(self, this); }

ComponentBase::~ComponentBase() {
    AnnounceRemoval();
    for (const Watched& watched : watched_) {
        if (ComponentBase* other = Of(watched.object))
            std::erase(other->watchers_, this);
        else
            QObject::disconnect(watched.connection);
    }
    registry().remove(self_);
}

ComponentBase* ComponentBase::Of(const QObject* object) { return object ? registry().value(object) : nullptr; }

void ComponentBase::FreeNotification(QObject* other) {
    if (!other || other == self_ ||
        std::any_of(watched_.begin(), watched_.end(), [other](const Watched& w) { return w.object == other; }))
        return;
    if (ComponentBase* component = Of(other)) {
        component->watchers_.push_back(this);
        watched_.push_back({other, {}});
        return;
    }
    watched_.push_back({other, QObject::connect(other, &QObject::destroyed, self_, [this](QObject* gone) {
                            forget(gone);
                            Notification(gone, TOperation::opRemove);
                        })});
}

void ComponentBase::RemoveFreeNotification(QObject* other) {
    const auto found =
        std::find_if(watched_.begin(), watched_.end(), [other](const Watched& w) { return w.object == other; });
    if (found == watched_.end())
        return;
    if (ComponentBase* component = Of(other))
        std::erase(component->watchers_, this);
    else
        QObject::disconnect(found->connection);
    watched_.erase(found);
}

void ComponentBase::forget(const QObject* object) {
    std::erase_if(watched_, [object](const Watched& w) { return w.object == object; });
}

void ComponentBase::Notification(QObject*, TOperation) {}

void ComponentBase::Loaded() { state_ &= ~TComponentState(csLoading); }

void ComponentBase::tell(ComponentBase& other, std::uint64_t epoch) {
    if (other.lastEpoch_ == epoch)
        return;
    other.lastEpoch_ = epoch;
    other.forget(self_);
    other.Notification(self_, TOperation::opRemove);
}

void ComponentBase::AnnounceRemoval() {
    if (state_ & csDestroying)
        return;
    state_ |= csDestroying;
    const std::uint64_t epoch = nextEpoch();

    // A handler may delete further components. So nothing is copied: each round looks at what is still there, and the
    // epoch keeps a component that moved within the list, or stands in both lists, from being told twice.
    while (!watchers_.empty()) {
        ComponentBase* watcher = watchers_.back();
        watchers_.pop_back();
        tell(*watcher, epoch);
    }
    if (const QObject* owner = Owner()) {
        for (qsizetype i = owner->children().size() - 1; i >= 0; --i) {
            if (i >= owner->children().size())
                continue;
            QObject* sibling = owner->children().at(i);
            if (sibling == self_)
                continue;
            if (ComponentBase* component = Of(sibling))
                tell(*component, epoch);
        }
    }
}

TComponent::TComponent(QObject* owner) : QObject(owner), ComponentBase(this) {}

TComponent::~TComponent() { AnnounceRemoval(); }

}  // namespace zk
