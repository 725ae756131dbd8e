#pragma once

#include <zk/export.h>

#include <QFlags>
#include <QObject>
#include <QRect>
#include <QString>

class QEvent;

#include <cstdint>
#include <vector>

namespace zk {

/// What a notification tells of: a component that goes (the only one that is sent today).
enum class TOperation { opInsert, opRemove };

/// What a component is going through.
enum TComponentStateFlag {
    csLoading = 1,      ///< values are being read from a form; `Loaded` follows
    csReading = 2,      ///< a stream is being read right now
    csWriting = 4,      ///< values are being written
    csUpdating = 8,     ///< an inherited form is being brought up to date
    csDesigning = 16,   ///< the component stands in a form designer
    csDestroying = 32,  ///< the destructor has begun
};
/// Any of the states.
Q_DECLARE_FLAGS(TComponentState, TComponentStateFlag)

/// What every component has, whether it is a widget or not: state, `Loaded`, and the news that another component goes.
///
/// A component is a QObject that also derives from this class (see `TComponent` for those that are no widgets). Its
/// owner is its QObject parent, its name the `objectName`.
///
/// **Removal.** When a component goes, `Notification(component, opRemove)` is called exactly once on every other
/// component of the same owner and on every component that asked for it with `FreeNotification`. It happens at the
/// start of the destructor of the library's class, so that the object can still be identified by pointer, name and
/// class. Whoever is told drops its reference, and may delete further components. GUI thread only.
class ZKHOST_API ComponentBase {
  public:
    ComponentBase(const ComponentBase&) = delete;
    ComponentBase& operator=(const ComponentBase&) = delete;
    virtual ~ComponentBase();

    /// The component as a QObject. Never null.
    QObject* AsObject() const { return self_; }

    /// The QObject parent, usually the form; null for a component without owner.
    QObject* Owner() const { return self_->parent(); }

    /// What the component is going through.
    TComponentState ComponentState() const { return state_; }

    /// Asks that this component be told, through `Notification`, when `other` goes. `other` may be a component or any
    /// QObject, a plain QWidget for instance (which is then told of from its last base destructor: by pointer only).
    /// Asking twice, or asking for itself, for null or for a component that is already going, changes nothing.
    void FreeNotification(QObject* other);

    /// Takes the request back. Nothing happens where there was none.
    void RemoveFreeNotification(QObject* other);

    /// `component` is about to go (`opRemove`). The base does nothing; an override calls the inherited one first.
    virtual void Notification(QObject* component, TOperation operation);

    /// The component's values have been read from a form. The base clears `csLoading`.
    virtual void Loaded();

    /// A form loader calls this before it sets the values of a form, and `Loaded` when all components have theirs. See
    /// `FormReading`, which does both.
    void BeginLoading() { state_ |= csLoading; }

    /// True for components that show others: their `Loaded` comes after that of all others of the form.
    virtual bool IsLoadedLast() const { return false; }

    /// Marks the component as standing in a form designer.
    void SetDesigning(bool on) { state_.setFlag(csDesigning, on); }

    /// True from the start of a read, write or inherited update to its end, and while values are loaded: nothing is
    /// repainted then.
    bool IsLoadingOrStoring() const { return state_ & (csLoading | csReading | csWriting | csUpdating); }

    /// The component that `object` is, or null. Safe for an object that is being destroyed.
    static ComponentBase* Of(const QObject* object);

  protected:
    /// `self` is the object that this is a part of.
    explicit ComponentBase(QObject* self);

    /// Tells the others, once, that this component goes. Every library class calls it first in its destructor, while
    /// the object still is of that class; the call from this class's own destructor is for those that do not.
    void AnnounceRemoval();

    /// For `event` of a component: what forms write to the properties of owned objects ("Attributes.Material.Ambient")
    /// arrives as a dynamic property of that name. It is written where it belongs, and the dynamic property goes. A
    /// value that is none is a fault of the form (`FormReading`), whether or not one is being read, and so is, while
    /// one is read, the name of a property that the component does not have.
    void TakeDynamicProperty(QEvent* event);

    TComponentState state_;

  private:
    friend class FormReading;

    struct Watched {
        QObject* object;
        QMetaObject::Connection connection;  ///< for an object that is no component
    };

    void stopWatching(const Watched& watched);
    bool watches(const QObject* object) const;
    void forget(const QObject* object);

    QObject* self_;
    std::uint64_t serial_;                  ///< no other component ever has it
    std::vector<ComponentBase*> watchers_;  ///< who asked to be told of this one
    std::vector<Watched> watched_;          ///< whom this one asked to be told of
    std::uint64_t mark_ = 0;                ///< the last removal that this one is to be told of
    bool loaded_ = false;                   ///< a form reading has called `Loaded`
};

/// A component that is no widget.
class ZKHOST_API TComponent : public QObject, public ComponentBase {
    Q_OBJECT
  public:
    /// `owner` deletes the component with itself; it may be null.
    explicit TComponent(QObject* owner = nullptr);
    ~TComponent() override;

    /// Where the component's icon stands on a form that is being edited. A component shows nothing there; the place is
    /// kept so that the form can be written again. As code made from a form sets it before any other value, it begins
    /// the reading of the form: see `FormReading`.
    void setGeometry(const QRect& place);
    QRect geometry() const { return geometry_; }

  protected:
    bool event(QEvent* event) override;

  private:
    QRect geometry_;
};

}  // namespace zk

Q_DECLARE_OPERATORS_FOR_FLAGS(zk::TComponentState)
