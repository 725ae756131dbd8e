#pragma once

#include <zk/_zkogltools/customshape.h>
#include <zk/export.h>
#include <zk/host/componentref.h>

#include <QPointer>

namespace zk {

/// A shape that draws another one, in its own place: the other's placement applies inside this one's.
///
/// The reference is drawn with its own attributes, visible when this shape is, whatever its own `Visible` says. A click
/// on the copy is a click on this shape, never on the reference. The reference must be in a scene of the same canvas to
/// be drawn; what shows is how it was when this shape's scene was last compiled.
///
/// A reference shape may refer to another one; where they refer to each other in a circle, each is drawn once inside
/// itself.
class ZKOGLTOOLS_API TZKOglRefShape : public TCustomShape {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef ReferenceShape READ readReference WRITE writeReference)

  public:
    explicit TZKOglRefShape(QObject* owner = nullptr);
    ~TZKOglRefShape() override;

    /// The shape that is drawn, not owned, or null.
    TCustomShape* GetReference() const { return reference_; }

    /// Raises `EError` " Zyklischer Verweis " and keeps the old reference if `shape` is this shape, or refers to it.
    /// Longer circles are accepted.
    void SetReference(TCustomShape* shape);

    void Doplay() override;
    void Notification(QObject* component, TOperation operation) override;

  private:
    ComponentRef readReference() const;
    void writeReference(const ComponentRef& ref);

    TCustomShape* reference_ = nullptr;
    bool playing_ = false;
};

}  // namespace zk
