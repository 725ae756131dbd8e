#include "formreading.h"

#include <zk/_zkxyz/errors.h>
#include <zk/host/message.h>

#include <QCoreApplication>
#include <QEvent>
#include <QList>
#include <QSet>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <exception>

namespace zk {

namespace {

QPointer<FormReading>& current() {
    static QPointer<FormReading> reading;
    return reading;
}

QString nameOf(const QObject& object) {
    return object.objectName().isEmpty() ? QString::fromLatin1(object.metaObject()->className()) : object.objectName();
}

QObject* rootOf(const QObject* object) {
    while (object->parent())
        object = object->parent();
    return const_cast<QObject*>(object);
}

bool isAtOrBelow(const QObject* object, const QObject* scope) {
    while (object && object != scope)
        object = object->parent();
    return object;
}

// An object whose destructor has begun is no longer of the class that it is asked for.
bool is(const QObject* object, const QMetaObject* kind) {
    return object && (!kind || kind->cast(object));
}

QString aClass(const QMetaObject* kind) {
    return QStringLiteral("a ") + QString::fromLatin1(kind ? kind->className() : "component");
}

}  // namespace

QString FormFault::Text() const {
    QString text = Component;
    if (!Property.isEmpty())
        text += QLatin1Char('.') + Property;
    // Values of any length come from files.
    constexpr int shown = 200;
    if (!Value.isNull())
        text +=
            QStringLiteral(" = \"") + (Value.size() > shown ? Value.left(shown) + QStringLiteral("...") : Value) + '"';
    return text + QStringLiteral(": ") + Reason;
}

// --- beginning and ending -------------------------------------------------------------------------------------------

FormReading::FormReading() : outer_(current()) {
    current() = this;
}

FormReading::~FormReading() {
    if (current() == this)
        current() = outer_;
    if (ended_)
        return;
    // Whoever made it has left without ending it, by an error perhaps: the components must not stay silent for ever.
    for (const QPointer<QObject>& object : components_)
        if (ComponentBase* component = ComponentBase::Of(object))
            component->state_ &= ~TComponentState(csLoading);
}

FormReading* FormReading::Current() {
    FormReading* reading = current();
    while (reading && reading->ended_)
        reading = reading->outer_;
    return reading;
}

FormReading& FormReading::Need() {
    if (FormReading* reading = Current())
        return *reading;
    auto* reading = new FormReading;
    reading->endsBySelf_ = true;
    if (QCoreApplication::instance())
        reading->setParent(QCoreApplication::instance());
    QMetaObject::invokeMethod(
        reading, [reading] { endBySelf(reading); }, Qt::QueuedConnection);
    return *reading;
}

bool FormReading::IsReading(const ComponentBase& component) {
    return component.ComponentState().testFlag(csLoading) && Current();
}

void FormReading::endBySelf(const QPointer<FormReading>& reading) {
    if (!reading || reading->ended_)
        return;
    const std::vector<FormFault> faults = reading->End();
    if (reading)
        reading->deleteLater();
    Tell(faults);
}

void FormReading::EndNow() {
    const QPointer<FormReading> reading = Current();
    if (reading && reading->endsBySelf_)
        endBySelf(reading);
}

std::vector<FormFault> FormReading::End() {
    if (ended_)
        return {};
    applyRest();
    ended_ = true;
    if (current() == this)
        current() = outer_;
    std::vector<FormFault> faults = std::move(faults_);
    loadAll();  // what it calls may delete this
    return faults;
}

void FormReading::loadAll() {
    // Widgets have no sign by which code that was made from a form begins them: they are those that were never loaded.
    if (endsBySelf_)
        for (const QPointer<QObject>& root : std::as_const(roots_))
            if (root)
                for (QWidget* widget : root->findChildren<QWidget*>())
                    if (ComponentBase* component = ComponentBase::Of(widget); component && !component->loaded_)
                        components_.emplace_back(widget);
    const std::vector<QPointer<QObject>> components = std::move(components_);
    for (const bool last : {false, true}) {
        for (const QPointer<QObject>& object : components) {
            ComponentBase* component = ComponentBase::Of(object);
            if (!component || component->IsLoadedLast() != last || (component->ComponentState() & csDestroying))
                continue;
            try {
                component->loaded_ = true;
                component->Loaded();
            } catch (const std::exception& error) {
                ShowMessage(QString::fromUtf8(error.what()));
            }
        }
    }
}

void FormReading::Tell(const std::vector<FormFault>& faults) {
    if (faults.empty())
        return;
    constexpr std::size_t shown = 20;
    QStringList lines;
    for (const FormFault& fault : faults)
        if (const QString line = fault.Text(); lines.size() < qsizetype(shown) && !lines.contains(line))
            lines << line;
    if (faults.size() > shown)
        lines << QStringLiteral("and %1 more").arg(faults.size() - shown);
    ShowMessage(lines.join(QLatin1Char('\n')));
}

void FormReading::Begin(ComponentBase& component) {
    lastBegun_ = component.AsObject();
    if (component.ComponentState() & (csLoading | csDestroying))
        return;
    component.BeginLoading();
    components_.emplace_back(component.AsObject());
    watchWindow(component.AsObject());
}

// The window may be shown before the event loop runs, and its canvases then want to know what they show.
void FormReading::watchWindow(const QObject* component) {
    const QObject* owner = component->parent();
    if (!owner || owner == lastOwner_)
        return;
    lastOwner_ = owner;
    QObject* root = rootOf(owner);
    if (roots_.value(root))
        return;
    takeIn(root);
    if (endsBySelf_ && root->isWidgetType())
        root->installEventFilter(this);
}

bool FormReading::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && endsBySelf_ && static_cast<QWidget*>(watched)->isWindow())
        endBySelf(this);
    return false;
}

FormFault FormReading::Fault(FormFault::Kind kind, const QObject& component, const QString& property,
                             const QString& value, const QString& reason) {
    return {kind, nameOf(component), property, value, reason};
}

// --- names ----------------------------------------------------------------------------------------------------------

void FormReading::takeIn(QObject* root) {
    roots_.insert(root, root);
    const auto add = [this](QObject* object) {
        if (!object->objectName().isEmpty())
            names_[object->objectName()].append(object);
    };
    add(root);
    for (QObject* object : root->findChildren<QObject*>())
        add(object);
}

QObject* FormReading::find(const QObject* scope, const QString& name, const QMetaObject* kind) const {
    const auto found = names_.constFind(name);
    if (found == names_.constEnd())
        return nullptr;
    for (const QPointer<QObject>& object : *found)
        if (object && object->objectName() == name && is(object, kind) && isAtOrBelow(object, scope))
            return object;
    return nullptr;
}

// A component has got a name: it may be waited for.
void FormReading::named(QObject* object) {
    const QString name = object->objectName();
    if (name.isEmpty() || ended_)
        return;
    names_[name].append(object);
    const auto waits = waiting_.find(name);
    if (waits == waiting_.end())
        return;
    const QList<Key> keys = std::move(*waits);
    waiting_.erase(waits);
    for (const Key& key : keys) {
        const auto at = wanted_.find(key);
        if (at == wanted_.end() || at->second.name != name || !at->second.component)
            continue;
        const Wanted wanted = at->second;
        const QObject* component = wanted.component;
        const QMetaObject* kind = ReferenceKind(component->metaObject(), wanted.property);
        if (!component->parent() || !is(object, kind) || !isAtOrBelow(object, component->parent())) {
            waiting_[name].append(key);
            continue;
        }
        wanted_.erase(at);
        apply(wanted, object);
    }
}

void FormReading::Want(ComponentBase& component, const char* property, const QString& name) {
    QObject* const object = component.AsObject();
    const Key key{object, property};
    wanted_.erase(key);
    if (name.isEmpty() || ended_)
        return;
    watchWindow(object);
    const Wanted wanted{object, property, name, ++order_};
    const QMetaObject* kind = ReferenceKind(object->metaObject(), property);
    QObject* const target = object->parent() ? find(object->parent(), name, kind) : nullptr;
    if (target) {
        apply(wanted, target);
        return;
    }
    wanted_.insert({key, wanted});
    waiting_[name].append(key);
}

// The component is there.
void FormReading::apply(const Wanted& wanted, QObject* target) {
    try {
        wanted.component->setProperty(wanted.property, QVariant::fromValue(ComponentRef(target)));
    } catch (const std::exception& error) {
        if (wanted.component)
            AddFault(Fault(FormFault::Kind::RefusedReference, *wanted.component, QString::fromLatin1(wanted.property),
                           wanted.name, QString::fromUtf8(error.what())));
    }
}

void FormReading::applyRest() {
    std::vector<Wanted> rest;
    for (const auto& [key, wanted] : wanted_)
        if (wanted.component)
            rest.push_back(wanted);
    wanted_.clear();
    waiting_.clear();
    if (rest.empty())
        return;
    std::sort(rest.begin(), rest.end(), [](const Wanted& a, const Wanted& b) { return a.order < b.order; });

    // Plain widgets got their names unseen, and what had no parent may have one now.
    names_.clear();
    QSet<const QObject*> seen;
    for (const Wanted& wanted : rest) {
        QObject* const root = rootOf(wanted.component);
        if (seen.contains(root))
            continue;
        seen.insert(root);
        takeIn(root);
    }
    for (const Wanted& wanted : rest) {
        if (!wanted.component)
            continue;
        const QMetaObject* kind = ReferenceKind(wanted.component->metaObject(), wanted.property);
        QObject* target = nullptr;
        for (const QObject* scope = wanted.component->parent(); scope && !target; scope = scope->parent())
            target = find(scope, wanted.name, kind);
        if (target) {
            apply(wanted, target);
            continue;
        }
        const QObject* other = find(rootOf(wanted.component), wanted.name, nullptr);
        const QString property = QString::fromLatin1(wanted.property);
        if (other)
            AddFault(Fault(FormFault::Kind::WrongKind, *wanted.component, property, wanted.name,
                           QStringLiteral("this is %1, not %2").arg(aClass(other->metaObject()), aClass(kind))));
        else
            AddFault(Fault(FormFault::Kind::NoSuchComponent, *wanted.component, property, wanted.name,
                           QStringLiteral("there is no component of that name")));
    }
}

// --- what setters of properties call --------------------------------------------------------------------------------

void WriteReference(ComponentBase& component, const char* property, const ComponentRef& ref,
                    const std::function<void(QObject*)>& set) {
    QObject* const target = ref.Object();
    if (!target && !ref.IsNull()) {
        FormReading::Need().Want(component, property, ref.Name());
        return;
    }
    if (FormReading* reading = FormReading::Current())
        reading->Want(component, property, QString());
    const QPointer<QObject> self = component.AsObject();
    const auto fail = [&](FormFault::Kind kind, const QString& reason) {
        const FormFault fault = FormReading::Fault(kind, *self, QString::fromLatin1(property), ref.Name(), reason);
        if (!FormReading::IsReading(component))
            throw EError(fault.Text().toStdString());
        FormReading::Current()->AddFault(fault);
    };
    const QMetaObject* kind = ReferenceKind(self->metaObject(), property);
    if (target && !is(target, kind)) {
        fail(FormFault::Kind::WrongKind,
             QStringLiteral("this is %1, not %2").arg(aClass(target->metaObject()), aClass(kind)));
        return;
    }
    try {
        set(target);
    } catch (const std::exception& error) {
        if (!self || !FormReading::IsReading(component))
            throw;
        fail(FormFault::Kind::RefusedReference, QString::fromUtf8(error.what()));
    }
}

void WriteText(ComponentBase& component, const char* property, const QString& text, const std::function<void()>& set) {
    try {
        set();
    } catch (const std::exception& error) {
        if (!FormReading::IsReading(component))
            throw;
        FormReading::Current()->AddFault(FormReading::Fault(FormFault::Kind::MalformedValue, *component.AsObject(),
                                                            QString::fromLatin1(property), text,
                                                            QString::fromUtf8(error.what())));
    }
}

}  // namespace zk
