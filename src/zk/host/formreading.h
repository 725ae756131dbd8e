#pragma once

#include <zk/export.h>
#include <zk/host/component.h>
#include <zk/host/componentref.h>

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace zk {

/// What was wrong with one value of a form. The form is opened all the same, without that value.
struct ZKHOST_API FormFault {
    /// What can be wrong.
    enum class Kind {
        UnknownProperty,   ///< the component has no such property
        NoSuchComponent,   ///< a reference to a name that nothing on the form has
        WrongKind,         ///< a reference to a component that does not fit
        RefusedReference,  ///< a reference that fits and is not taken, such as one to itself
        MalformedValue,    ///< a text, number or name that is no value of the property
        UnknownClass,      ///< of a component; `Value` is the class
        UnreadableFile,    ///< of the whole form; nothing was loaded
    };
    Kind What;          ///< which of them
    QString Component;  ///< its name, or its class where it has none
    QString Property;   ///< with dots where it is one of an owned object
    QString Value;      ///< as text
    QString Reason;     ///< in words

    /// One line: component, property, value and reason.
    QString Text() const;
};

/// The time in which the components of a form get their values: they are being loaded (`csLoading`), so nothing is
/// repainted; names of components that do not exist yet wait for them; what is wrong is collected.
///
/// It begins with the first component that is given a place on a form (`TComponent::setGeometry`, which code generated
/// from a form calls), or that is given the name of a component that does not exist, and ends by itself when the event
/// loop runs next, at the latest when the window is shown. A loader that has the whole form in its hands makes an
/// object of this class instead, and ends it. At the end, in this order:
///
/// - names that still wait are looked for again, first among what has the same owner, then further and further out;
/// - `Loaded` is called once on every component, and last on those that show the others (`IsLoadedLast`), so that each
///   canvas repaints once;
/// - the faults are told in one message, each of them once.
///
/// A reference by name is set as soon as there is a component of that name and of the right class at or below the
/// component's owner, so references work when the code that a form was made into returns, also those that point
/// forwards. GUI thread only.
class ZKHOST_API FormReading : public QObject {
    Q_OBJECT
  public:
    /// In force until it ends or goes; what was in force before waits meanwhile.
    FormReading();
    ~FormReading() override;

    /// The reading in force, or null.
    static FormReading* Current();
    /// The reading in force, or a new one that ends by itself.
    static FormReading& Need();

    /// True while the component's values come from a form: errors in them are collected instead of raised.
    static bool IsReading(const ComponentBase& component);

    /// The component is being loaded from now on, until this ends.
    void Begin(ComponentBase& component);

    /// The property shall refer to the component of that name. Of several calls for the same property the last counts;
    /// an empty name withdraws it.
    void Want(ComponentBase& component, const char* property, const QString& name);

    /// Adds a fault to those that are told at the end.
    void AddFault(const FormFault& fault) { faults_.push_back(fault); }
    /// A fault of a component's property.
    static FormFault Fault(FormFault::Kind kind, const QObject& component, const QString& property,
                           const QString& value, const QString& reason);

    /// Ends the reading and gives its faults, which are told to nobody else. Components that are made by what `Loaded`
    /// calls belong to the next reading.
    std::vector<FormFault> End();

    /// Ends the reading that would end by itself, if there is one: to have everything loaded at once after the code
    /// that was made from a form has run.
    static void EndNow();

    /// Shows faults in one message; nothing happens without any.
    static void Tell(const std::vector<FormFault>& faults);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    friend class ComponentBase;

    struct Wanted {
        QPointer<QObject> component;
        QByteArray property;
        QString name;
        quint64 order;
    };
    using Key = std::pair<const QObject*, QByteArray>;

    void watchWindow(const QObject* component);
    void takeIn(QObject* root);
    void named(QObject* object);
    QObject* find(const QObject* scope, const QString& name, const QMetaObject* kind) const;
    void apply(const Wanted& wanted, QObject* target);
    void applyRest();
    void loadAll();
    static void endBySelf(const QPointer<FormReading>& reading);

    QPointer<FormReading> outer_;
    bool endsBySelf_ = false;
    bool ended_ = false;
    quint64 order_ = 0;
    std::vector<QPointer<QObject>> components_;
    std::map<Key, Wanted> wanted_;
    QHash<QString, QList<Key>> waiting_;              // by the name that is waited for
    QHash<QString, QList<QPointer<QObject>>> names_;  // what is known to have had a name
    QHash<const QObject*, QPointer<QObject>> roots_;  // trees whose names are known
    QPointer<const QObject> lastOwner_;
    QPointer<QObject> lastBegun_;
    std::vector<FormFault> faults_;
};

/// For the WRITE function of a reference property: hands the object that `ref` refers to, or null, to `set`; a name is
/// looked for, and waits for its component if there is none yet. An object that is not of the property's class, and one
/// that `set` refuses with an error, is a fault while a form is read and raises `EError` otherwise.
ZKHOST_API void WriteReference(ComponentBase& component, const char* property, const ComponentRef& ref,
                               const std::function<void(QObject*)>& set);

/// For the WRITE function of a property with text: runs `set`. An error that it raises is a fault while a form is read
/// and passed on otherwise.
ZKHOST_API void WriteText(ComponentBase& component, const char* property, const QString& text,
                          const std::function<void()>& set);

}  // namespace zk
