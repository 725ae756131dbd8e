#pragma once

#include <zk/_zkcomtypes/material.h>
#include <zk/_zkcomtypes/polyattributes.h>
#include <zk/_zkcomtypes/texture.h>
#include <zk/export.h>

#include <QPointer>

#include <functional>
#include <vector>

namespace zk {

/// An attribute set: how polygons are drawn, their material and their texture.
///
/// It owns one object of each kind, as QObject children. They live as long as the set; one that is deleted from outside
/// all the same reads as null from then on, and operations that need it do nothing.
///
/// A change of an owned object is told by that object, not by the set. `HookChanges` listens to all four.
class ZKCOMTYPES_API Tattributes : public TZkgraphicsobject, private ChangeListener {
    Q_OBJECT
    Q_PROPERTY(zk::TPolyAttributes* PolyStyle READ getPolyStyle WRITE setPolyStyle)
    Q_PROPERTY(zk::Tmaterial* Material READ getMaterial WRITE SetMaterial)
    Q_PROPERTY(zk::TTexture* Texture READ getTexture WRITE SetTexture)
  public:
    /// What `HookChanges` calls.
    using TChangeHandler = std::function<void(QObject* sender)>;

    /// Holds new objects of the base classes; an owner that is bound to OpenGL replaces them by its own kinds.
    explicit Tattributes(QObject* parent = nullptr);
    ~Tattributes() override;

    /// The owned objects; null only after a `Replace…(nullptr)` or a deletion from outside.
    TPolyAttributes* getPolyStyle() const { return polyStyle_; }
    /// As `getPolyStyle`.
    Tmaterial* getMaterial() const { return material_; }
    /// As `getPolyStyle`.
    TTexture* getTexture() const { return texture_; }

    /// The `Set…` operations copy the argument's values into the owned object through its virtual setters and then
    /// notify; the argument is never taken over. It may be null (nothing happens) or the owned object itself.
    virtual void SetMaterial(Tmaterial* M);
    /// Copies the mode only; the style stays, by choice: it says what is being drawn right now, not how it looks.
    virtual void setPolyStyle(TPolyAttributes* P);
    /// Copies the whole description; see `SetMaterial`.
    virtual void SetTexture(TTexture* T);

    /// The `Replace…` operations delete the owned object and own the argument instead, whatever owned it before;
    /// nothing is notified, hooks move over to the new object. The argument may be null, which leaves none, or the
    /// object owned already, which changes nothing.
    virtual void ReplaceMaterial(Tmaterial* M);
    /// As `ReplaceMaterial`.
    virtual void ReplacePolyStyle(TPolyAttributes* P);
    /// As `ReplaceMaterial`.
    virtual void ReplaceTexture(TTexture* T);

    /// Always raises `EAssignError`.
    void AssignTo(QObject* Dest) override;

    /// Calls `handler` with the sender, before anything that is connected, at every `OnChange` of this set and of the
    /// three objects that it owns, now or after a `Replace…`, for as long as `receiver` lives. Each call adds a hook. A
    /// null receiver or empty handler is ignored.
    void HookChanges(QObject* receiver, TChangeHandler handler);

    /// Removes every hook of `receiver`.
    void UnhookChanges(QObject* receiver);

  private:
    struct Hook {
        QPointer<QObject> receiver;
        TChangeHandler handler;
    };

    void ObjectChanged(TZkgraphicsobject* object) override;
    void letGo(QObject* object);
    template <class T>
    void replace(QPointer<T>& owned, T* object);
    void release(TZkgraphicsobject* object);

    QPointer<TPolyAttributes> polyStyle_;
    QPointer<Tmaterial> material_;
    QPointer<TTexture> texture_;
    std::vector<Hook> hooks_;
};

}  // namespace zk
