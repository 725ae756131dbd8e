#include "component.h"

#include <zk/host/formreading.h>
#include <zk/host/propertypath.h>

#include <QDynamicPropertyChangeEvent>
#include <QHash>

#include <algorithm>
#include <utility>

namespace zk {

namespace {

// Which QObjects are components. Asking it is cheaper than a cross cast, and still right for an object whose
// destructors are already running.
QHash<const QObject*, ComponentBase*>& registry() {
    static auto& components = *new QHash<const QObject*, ComponentBase*>;  // outlives components in static storage
    return components;
}

std::uint64_t nextSerial() {
    static std::uint64_t serial = 0;
    return ++serial;
}

// How many components have gone, to tell cheaply that none has.
std::uint64_t gone = 0;

}  // namespace

ComponentBase::ComponentBase(QObject* self) : self_(self), serial_(nextSerial()) {
    registry().insert(self, this);
    if (FormReading* reading = FormReading::Current())
        QObject::connect(self, &QObject::objectNameChanged, reading, [reading, self] { reading->named(self); });
}

ComponentBase::~ComponentBase() {
    AnnounceRemoval();
    for (const Watched& watched : watched_)
        stopWatching(watched);
    registry().remove(self_);
    ++gone;
}

ComponentBase* ComponentBase::Of(const QObject* object) {
    return object ? registry().value(object) : nullptr;
}

void ComponentBase::FreeNotification(QObject* other) {
    if (!other || other == self_)
        return;
    ComponentBase* component = Of(other);
    const auto found =
        std::find_if(watched_.begin(), watched_.end(), [other](const Watched& w) { return w.object == other; });
    if (found != watched_.end()) {
        // A plain object that was asked for when it had told of its end already leaves a request that nothing answers,
        // and another object may stand in its place now.
        if (component || found->connection)
            return;
        watched_.erase(found);
    }
    if (component) {
        if (component->state_ & csDestroying)
            return;
        component->watchers_.push_back(this);
        watched_.push_back({other, {}});
        return;
    }
    watched_.push_back({other, QObject::connect(other, &QObject::destroyed, self_, [this](QObject* object) {
                            forget(object);
                            Notification(object, TOperation::opRemove);
                        })});
}

void ComponentBase::RemoveFreeNotification(QObject* other) {
    const auto found =
        std::find_if(watched_.begin(), watched_.end(), [other](const Watched& w) { return w.object == other; });
    if (found == watched_.end())
        return;
    stopWatching(*found);
    watched_.erase(found);
}

void ComponentBase::stopWatching(const Watched& watched) {
    if (watched.connection)
        QObject::disconnect(watched.connection);
    else if (ComponentBase* other = Of(watched.object))
        std::erase(other->watchers_, this);
}

bool ComponentBase::watches(const QObject* object) const {
    return std::any_of(watched_.begin(), watched_.end(), [object](const Watched& w) { return w.object == object; });
}

void ComponentBase::forget(const QObject* object) {
    std::erase_if(watched_, [object](const Watched& w) { return w.object == object; });
}

void ComponentBase::Notification(QObject*, TOperation) {}

void ComponentBase::Loaded() {
    state_ &= ~TComponentState(csLoading);
}

void ComponentBase::AnnounceRemoval() {
    if (state_ & csDestroying)
        return;
    state_ |= csDestroying;

    // Who is to be told is settled first. The mark keeps a component that both asked and has the same owner from being
    // told twice, and it is read only here, where no handler can run: a handler may remove further components, whose
    // marks then overwrite this one.
    struct Addressee {
        ComponentBase* component;
        QObject* object;
        std::uint64_t serial;
        bool asked;
    };
    std::vector<Addressee> addressees;
    const std::uint64_t mark = nextSerial();
    const auto settle = [&addressees, mark](ComponentBase* other, bool asked) {
        if (other->mark_ == mark)
            return;
        other->mark_ = mark;
        addressees.push_back({other, other->self_, other->serial_, asked});
    };
    const std::vector<ComponentBase*> watchers = std::exchange(watchers_, {});
    for (auto watcher = watchers.rbegin(); watcher != watchers.rend(); ++watcher)
        settle(*watcher, true);
    if (const QObject* owner = Owner()) {
        const QObjectList& siblings = owner->children();
        for (auto sibling = siblings.rbegin(); sibling != siblings.rend(); ++sibling) {
            ComponentBase* component = *sibling != self_ ? Of(*sibling) : nullptr;
            if (component)
                settle(component, false);
        }
    }

    const std::uint64_t goneBefore = gone;
    for (const Addressee& addressee : addressees) {
        // A handler may have deleted it, and something else may stand in its place.
        if (gone != goneBefore) {
            const ComponentBase* now = Of(addressee.object);
            if (!now || now->serial_ != addressee.serial)
                continue;
        }
        ComponentBase* other = addressee.component;
        const bool related = Owner() && other->Owner() == Owner();
        if (addressee.asked && !related && !other->watches(self_))
            continue;  // it has taken its request back
        other->forget(self_);
        other->Notification(self_, TOperation::opRemove);
    }
}

void ComponentBase::TakeDynamicProperty(QEvent* event) {
    if (event->type() != QEvent::DynamicPropertyChange)
        return;
    const QByteArray name = static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName();
    const bool ofOwned = name.contains('.');
    // Names that begin with an underscore are Qt's own.
    const bool unknown = !ofOwned && !name.startsWith('_') && FormReading::IsReading(*this) &&
                         FormReading::Current()->lastBegun_ == self_;
    const QVariant value = ofOwned || unknown ? self_->property(name) : QVariant();
    if (!value.isValid())
        return;
    const QString path = QString::fromUtf8(name);
    const QString text = ValueText(value);
    const auto fault = [&](FormFault::Kind kind, const QString& reason) {
        FormReading::Need().AddFault(FormReading::Fault(kind, *self_, path, text, reason));
    };
    if (unknown) {
        fault(FormFault::Kind::UnknownProperty, QStringLiteral("there is no such property"));
        return;
    }
    const QPointer<QObject> self = self_;
    QString whyNot;
    switch (WriteProperty(*self_, path, value, &whyNot)) {
        case PropertyWritten::Yes:
            break;
        case PropertyWritten::NoSuchProperty:
            fault(FormFault::Kind::UnknownProperty, whyNot);
            break;
        case PropertyWritten::BadValue:
            fault(FormFault::Kind::MalformedValue, whyNot);
            break;
    }
    if (self)
        self->setProperty(name, QVariant());
}

TComponent::TComponent(QObject* owner) : QObject(owner), ComponentBase(this) {}

TComponent::~TComponent() {
    AnnounceRemoval();
}

void TComponent::setGeometry(const QRect& place) {
    geometry_ = place;
    FormReading::Need().Begin(*this);
}

bool TComponent::event(QEvent* event) {
    TakeDynamicProperty(event);
    return QObject::event(event);
}

}  // namespace zk
