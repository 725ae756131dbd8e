#include "refscene.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath/plane.h>
#include <zk/_zkxyz/errors.h>
#include <zk/host/formreading.h>

#include <QScopeGuard>

namespace zk {

namespace {

/// Gives a scene the place and the visibility of another for the length of a scope.
class Borrowed {
  public:
    Borrowed(TZKOglScene& scene, const TZKOglScene& placedAs)
        : scene_(&scene),
          visible_(scene.GetVisible()),
          translation_(scene.GetTranslation()),
          angle_(scene.Getdrehwinkel()),
          line_(scene.GetDrehGerade()) {
        show(placedAs.GetVisible());
        place(placedAs.GetTranslation(), placedAs.Getdrehwinkel(), placedAs.GetDrehGerade());
    }
    ~Borrowed() {
        if (!scene_)
            return;
        place(translation_, angle_, line_);
        show(visible_);
    }
    Borrowed(const Borrowed&) = delete;
    Borrowed& operator=(const Borrowed&) = delete;

  private:
    void show(bool visible) {
        if (!scene_)
            return;
        // A pick plays the shapes themselves and must not mark anything for compilation.
        if (scene_->GetZkOglCanvas() && scene_->GetZkOglCanvas()->IsSelecting())
            scene_->TDisplayList::SetVisible(visible);
        else
            scene_->SetVisible(visible);
    }
    void place(const TXYZ& translation, double angle, const TGerade& line) {
        if (scene_)
            scene_->SetTranslation(translation);
        if (scene_)
            scene_->Setdrehwinkel(angle);
        if (scene_)
            scene_->SetDrehGerade(NewGerade(line.Origin, line.Direction));
    }

    QPointer<TZKOglScene> scene_;
    bool visible_;
    TXYZ translation_;
    double angle_;
    TGerade line_;
};

}  // namespace

static const ReferenceProperty<TZKOglRefScene, TZKOglScene> referenceProperty("ReferenceScene");
static const ReferenceTarget<TZKOglRefScene> refSceneTarget;

TZKOglRefScene::TZKOglRefScene(QObject* owner) : TZKOglScene(owner) {}

TZKOglRefScene::~TZKOglRefScene() {
    AnnounceRemoval();
}

void TZKOglRefScene::SetReference(TZKOglScene* scene) {
    const TZKOglScene* seen = scene;
    // The scene and what it refers to, no further: a longer circle is none of this check's business, Play copes.
    const auto* refers = qobject_cast<const TZKOglRefScene*>(scene);
    if (refers && refers != this && refers->reference_)
        seen = refers->reference_;
    if (seen == this)
        throw EError(" Zyklischer Verweis ");

    if (reference_ != scene) {
        if (reference_)
            RemoveFreeNotification(reference_);
        reference_ = scene;
        if (reference_)
            FreeNotification(reference_);
    }
    if (GetZkOglCanvas() && GetZkOglCanvas()->CheckCurrent())
        Changed(this);
}

void TZKOglRefScene::Notification(QObject* component, TOperation operation) {
    TZKOglScene::Notification(component, operation);
    if (operation == TOperation::opRemove && reference_ && component == reference_)
        SetReference(nullptr);
}

void TZKOglRefScene::Play() {
    if (!reference_ || playing_ || !GetZkOglCanvas() || !GetZkOglCanvas()->HasContext())
        return;
    const QPointer<TZKOglRefScene> self = this;
    playing_ = true;
    const auto played = qScopeGuard([&self] {
        if (self)
            self->playing_ = false;
    });
    // Another canvas's scene would draw into that canvas, in the middle of nowhere.
    const bool here = reference_->GetZkOglCanvas() == GetZkOglCanvas();
    if (!here) {
        TZKOglScene::Play();
        return;
    }
    const Borrowed placed(*reference_, *this);
    TZKOglScene::Play();
    if (self && reference_)
        reference_->Play();
}

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TZKOglRefScene::readReference() const {
    return ComponentRef(GetReference());
}

void TZKOglRefScene::writeReference(const ComponentRef& ref) {
    WriteReference(*this, "ReferenceScene", ref,
                   [this](QObject* object) { SetReference(static_cast<TZKOglScene*>(object)); });
}

}  // namespace zk
