#pragma once

#include <zk/_zkxyz/errors.h>
#include <zk/export.h>

#include <QObject>

#include <cstdint>

namespace zk {

/// An object was to be copied into one that cannot take it: "Cannot assign a … to a …".
class ZKCOMTYPES_API EAssignError : public EError {
  public:
    using EError::EError;
};

class TZkgraphicsobject;

/// Who is told of the changes of an attribute object directly, before `OnChange`. An object has one at most: the set
/// that owns it. There are four attribute objects to every shape, and a connection costs more memory than the values.
class ChangeListener {
  public:
    /// A value of `object` may have changed; it must not be deleted here.
    virtual void ObjectChanged(TZkgraphicsobject* object) = 0;

  protected:
    ~ChangeListener() = default;
};

/// Base of the attribute objects: values that tell their owner of every change, singly or in batches.
///
/// A handler of `OnChange` may change any attribute object, and delete the component that owns the sender, but not the
/// sender itself (`deleteLater` is fine): the operation that raised the event is still at work on it.
class ZKCOMTYPES_API TZkgraphicsobject : public QObject {
    Q_OBJECT
  public:
    explicit TZkgraphicsobject(QObject* parent = nullptr);

    /// Opens (true) or closes (false) a batch of changes. While the count of open batches is not 0, `OnChange` is held
    /// back; the call that closes the last batch raises it once, whether something changed or not.
    ///
    /// The count is signed and never clamped, by choice: a surplus close takes it below 0, raises nothing, and every
    /// later change stays silent until a matching open brings it back to 0.
    virtual void SetChanging(bool Value);

    /// Raises `OnChange` if no batch is open (the count is exactly 0).
    virtual void ChangeD();

    /// Copies this object into `Dest`. No attribute object supports it: always raises `EAssignError`. Values are copied
    /// with the `Set…` operations instead.
    virtual void AssignTo(QObject* Dest);

    /// True from the opening of a batch until the count is back below 1.
    bool GetChanging() const { return changing_; }

    /// The listener must outlive the object or be taken away (null).
    void SetChangeListener(ChangeListener* listener) { listener_ = listener; }

    /// True while `OnChange` is being told. Whoever owns the object lets go of it with `Dispose`.
    bool IsTelling() const { return telling_ > 0; }

    /// Deletes an object, or, while it is telling of a change, has it deleted when the event loop runs next: what it
    /// tells of may end in a repaint, in which user code deletes its owner.
    static void Dispose(TZkgraphicsobject* object);

  Q_SIGNALS:
    /// A value may have changed; `sender` is this object. Setters do not compare with the old value.
    void OnChange(QObject* sender);

  protected:
    /// The object is telling of changes for the length of a scope.
    class Telling {
      public:
        /// `object` must outlive this.
        explicit Telling(TZkgraphicsobject& object) : object_(object) { ++object_.telling_; }
        ~Telling() { --object_.telling_; }
        Telling(const Telling&) = delete;
        Telling& operator=(const Telling&) = delete;

      private:
        TZkgraphicsobject& object_;
    };

    ChangeListener* listener_ = nullptr;
    std::int32_t changeCount_ = 0;
    bool changing_ = false;

  private:
    std::uint16_t telling_ = 0;
};

}  // namespace zk
