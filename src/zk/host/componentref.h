#pragma once

#include <zk/export.h>

#include <QByteArray>
#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QString>

namespace zk {

/// The value of a property that refers to another component: that component, or the name of one that is still to be
/// found, as a form holds it.
///
/// ```
/// scene->setProperty("ZkOglCanvas", QVariant::fromValue(canvas));   // a pointer of the library's classes
/// scene->setProperty("ZkOglCanvas", "canvas1");                     // a name: see `FormReading`
/// auto* canvas = scene->property("ZkOglCanvas").value<zk::TZkOglCanvas*>();
/// ```
///
/// The component is guarded: one that has gone reads as none. Texts (UTF-8 as QByteArray), `QObject*`, `QWidget*` and
/// pointers to the library's components convert to it and back. A pointer to a class of your own goes in as
/// `ComponentRef(pointer)`, or after `RegisterReferenceTarget<TMyShape>()`.
class ZKHOST_API ComponentRef {
  public:
    ComponentRef() = default;
    /// Null refers to none.
    explicit ComponentRef(QObject* object) : object_(object) {}
    /// The component of that name; an empty name refers to none.
    static ComponentRef Named(const QString& name);

    /// Null where there is only a name, or nothing.
    QObject* Object() const { return object_; }
    /// The name that is looked for, or that the component has now.
    QString Name() const { return object_ ? object_->objectName() : name_; }
    /// True for neither a component nor a name.
    bool IsNull() const { return !object_ && name_.isEmpty(); }

    /// The same component, or the same name and no component yet.
    friend bool operator==(const ComponentRef& a, const ComponentRef& b) {
        return a.object_ == b.object_ && (a.object_ || a.name_ == b.name_);
    }
    /// The opposite.
    friend bool operator!=(const ComponentRef& a, const ComponentRef& b) { return !(a == b); }

  private:
    QPointer<QObject> object_;
    QString name_;
};

/// Lets `T*` convert to a `ComponentRef` and back. Calling it again changes nothing.
template <class T>
void RegisterReferenceTarget() {
    if (!QMetaType::hasRegisteredConverterFunction<T*, ComponentRef>())
        QMetaType::registerConverter<T*, ComponentRef>([](T* object) { return ComponentRef(object); });
    if (!QMetaType::hasRegisteredConverterFunction<ComponentRef, T*>())
        QMetaType::registerConverter<ComponentRef, T*>(
            [](const ComponentRef& ref) { return qobject_cast<T*>(ref.Object()); });
}

/// Does so at program start; one object beside a class, in static storage.
template <class T>
class ReferenceTarget {
  public:
    ReferenceTarget() { RegisterReferenceTarget<T>(); }
};

/// The class whose objects a reference property takes, or null where the class has no reference property of that name.
/// `property` may be a property of a base class of `component`.
ZKHOST_API const QMetaObject* ReferenceKind(const QMetaObject* component, const char* property);

/// Says what `ReferenceKind` answers.
ZKHOST_API void DeclareReference(const QMetaObject& component, const char* property, const QMetaObject& kind);

/// Does so at program start; one object beside the class that has the property, in static storage.
template <class Component, class Target>
class ReferenceProperty {
  public:
    /// `name` is the property's.
    explicit ReferenceProperty(const char* name) {
        DeclareReference(Component::staticMetaObject, name, Target::staticMetaObject);
        RegisterReferenceTarget<Target>();
    }
};

}  // namespace zk

Q_DECLARE_METATYPE(zk::ComponentRef)
