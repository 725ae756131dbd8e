#pragma once

#include <zk/_zkoglcanvas/scene.h>
#include <zk/export.h>
#include <zk/host/componentref.h>

namespace zk {

/// A scene that draws another one in its own place: the same shapes, seen several times.
///
/// ```
/// auto* copy = new zk::TZKOglRefScene(form);
/// copy->SetZkOglCanvas(canvas);
/// copy->SetReference(wheels);
/// copy->SetTranslation({10, 0, 0});
/// ```
///
/// The reference is drawn with its own attributes, but placed and shown or hidden as this scene is: its own transform
/// and `Visible` do not matter here. As the transform lies outside of what a scene compiles, however many reference
/// scenes show it from one list. (A reference whose own `Visible` is another than this scene's is compiled for every
/// repaint: the flag is changed and changed back, and each change marks it.) Shapes of a reference scene's own are
/// drawn before the reference.
///
/// The reference must be on the same canvas to be drawn. A reference scene may refer to another one; where they refer
/// to each other in a circle, each is drawn once.
class ZKOGLCANVAS_API TZKOglRefScene : public TZKOglScene {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef ReferenceScene READ readReference WRITE writeReference)

  public:
    explicit TZKOglRefScene(QObject* owner = nullptr);
    ~TZKOglRefScene() override;

    /// The scene that is drawn, not owned, or null.
    TZKOglScene* GetReference() const { return reference_; }

    /// Raises `EError` " Zyklischer Verweis " and keeps the old reference if `scene` is this scene, or refers to it.
    /// Longer circles are accepted.
    void SetReference(TZKOglScene* scene);

    /// Draws nothing without a reference.
    void Play() override;
    void Notification(QObject* component, TOperation operation) override;

  private:
    ComponentRef readReference() const;
    void writeReference(const ComponentRef& ref);

    TZKOglScene* reference_ = nullptr;
    bool playing_ = false;
};

}  // namespace zk
