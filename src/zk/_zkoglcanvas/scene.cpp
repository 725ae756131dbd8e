#include "scene.h"

#include <zk/_zkcomtypes/pointproperty.h>
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/matrixmode.h>
#include <zk/_zkoglcanvas/polygonmode.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/_zkoglcanvas/sceneplan.h>
#include <zk/host/formreading.h>
#include <zk/host/message.h>
#include <zk/host/workarounds.h>

#include <QScopeGuard>

#include <numbers>

namespace zk {

static const ReferenceProperty<TZKOglScene, TZkOglCanvas> sceneCanvasProperty("ZkOglCanvas");
static const ReferenceTarget<TZKOglScene> sceneTarget;

TZKOglScene::TZKOglScene(QObject* owner) : TDisplayList(owner), attributes_(std::make_unique<Tattributes>()) {
    attributes_->HookChanges(this, [this](QObject* sender) { Changed(sender); });
    SetVisible(true);
}

TZKOglScene::~TZKOglScene() {
    AnnounceRemoval();
    SetZkOglCanvas(nullptr);
    TZkgraphicsobject::Dispose(attributes_.release());
}

void TZKOglScene::SetZkOglCanvas(TZkOglCanvas* canvas) {
    if (canvas_) {
        TZkOglCanvas* const old = canvas_;
        old->DeleteDisplayList(old->IndexOfDisplayList(this));
        RemoveFreeNotification(old);
        deleteLists(old);
    }
    canvas_ = canvas;
    if (canvas_) {
        FreeNotification(canvas_);
        canvas_->AddDisplayList(this);
        if (canvas_->CheckCurrent()) {
            if (list_ == 0) {
                list_ = glGenLists(1);
                empty_ = true;
            }
            if (list_ == 0)
                ShowMessage(QStringLiteral("displaylist ") + objectName() +
                            QStringLiteral(" konnte nicht erstell werden "));
        }
    }
    Invalidate();
}

// Without a context they have gone with it.
void TZKOglScene::deleteLists(TZkOglCanvas* canvas) {
    if (canvas->CheckCurrent() && list_ != 0)
        glDeleteLists(list_, 1);
    list_ = 0;
    ForgetDrawings();
}

void TZKOglScene::ForgetDrawings() {
    if (canvas_ && canvas_->HasContext())
        for (const Group& group : groups_)
            glDeleteLists(group.list, 1);
    groups_.clear();
    plan_.clear();
    forgotten_ = true;
    Invalidate();
}

void TZKOglScene::Notification(QObject* component, TOperation operation) {
    const bool ownShape = operation == TOperation::opRemove && INdexOfShape(component) >= 0;
    TDisplayList::Notification(component, operation);
    if (operation != TOperation::opRemove)
        return;
    if (canvas_ && component == canvas_)
        SetZkOglCanvas(nullptr);
    if (ownShape) {
        Invalidate();
        if (canvas_)
            canvas_->Refresh();
    }
}

void TZKOglScene::Loaded() {
    TDisplayList::Loaded();
    if (canvas_ && !compiled_)
        canvas_->Refresh();
}

void TZKOglScene::Invalidate() {
    compiled_ = false;
    planIsCurrent_ = false;
}

// What changes does so before the bracket opens: after a surplus close it is the opening that repaints, and user code
// in that repaint may delete the scene.
void TZKOglScene::Changed(QObject* /*sender*/) {
    Invalidate();
    const ChangeBracket bracket(canvas_);
}

void TZKOglScene::DoUpdateNow() {
    if (!canvas_ || !canvas_->CheckCurrent())
        return;
    const QPointer<TZkOglCanvas> canvas = canvas_;
    const bool autoCompile = canvas->GetAutoCompile();
    canvas->SetAutoCompile(false);
    canvas->Refresh();
    if (canvas)
        canvas->SetAutoCompile(autoCompile);
}

void TZKOglScene::SetVisible(bool visible) {
    if (visible == GetVisible())
        return;
    TDisplayList::SetVisible(visible);
    if (!canvas_ || !canvas_->CheckCurrent())
        return;
    if (!canvas_->IsPainting() && glIsList(list_)) {
        // The list runs once outside the paint cycle; within one it would show, wherever the matrix is. It may leave
        // matrix and attributes changed; the view must not keep that.
        const Tmatrix matrix = canvas_->GetOglModelMatrix();
        const MatrixModeScope modelView(GL_MODELVIEW);
        glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_POLYGON_BIT | GL_TEXTURE_BIT);
        glCallList(list_);
        glPopAttrib();
        canvas_->SetOglModelMatrix(matrix);
    }
    Invalidate();
    DoUpdateNow();
    OGLError();
}

// --- playing --------------------------------------------------------------------------------------------------------

void TZKOglScene::Play() {
    if (!canvas_ || !canvas_->HasContext() || list_ == 0 || !GetVisible() || playing_)
        return;
    const QPointer<TZkOglCanvas> canvas = canvas_;
    const QPointer<TZKOglScene> self = this;
    playing_ = true;
    const auto played = qScopeGuard([&self] {
        if (self)
            self->playing_ = false;
    });
    // User code may have left another of OpenGL's matrices to work on.
    const int mode = canvas->GetmatrixMode();
    const auto modeBack = qScopeGuard([&canvas, mode] {
        if (mode != GL_MODELVIEW && canvas)
            canvas->SetmatrixMode(mode);
    });
    if (mode != GL_MODELVIEW)
        canvas->SetmatrixMode(GL_MODELVIEW);
    const Tmatrix savedMatrix = canvas->GetModelMatrix();
    const TAttributesKind savedAttributes = canvas->getAttributeskind();
    auto restore = qScopeGuard([&] {
        if (!canvas || !canvas->HasContext())
            return;
        canvas->SetAttributeskind(savedAttributes);
        canvas->SetModelMatrix(savedMatrix);
    });

    _GlPolyGonMode(int(attributes_->getMaterial()->GLFace()), int(attributes_->getPolyStyle()->GLMode()));
    canvas->getAttributes()->setPolyStyle(attributes_->getPolyStyle());
    canvas->getAttributes()->SetMaterial(attributes_->getMaterial());
    canvas->getAttributes()->SetTexture(attributes_->getTexture());
    OGLError();
    canvas->SetModelMatrix(Mulmat(TrfMAtrix(), savedMatrix));
    OGLError();

    if (canvas->IsSelecting()) {
        if (compiled_ && empty_)
            return;  // a scene that was refused before it had ever been compiled shows nothing
        if (compiled_ && canvas->GetAutoCompile() && !IsOn(Workaround::SelectionLists) && !canvas->IsFindingPlaces()) {
            glCallList(list_);
            return;
        }
        pick_ = std::make_unique<PickVolume>();
        const auto picked = qScopeGuard([&self] {
            if (self)
                self->pick_.reset();
        });
        TDisplayList::Play();
        return;
    }
    if (compiled_ && canvas->GetAutoCompile()) {
        if (glIsList(list_))
            glCallList(list_);
        OGLError();
        return;
    }
    OGLError();
    const bool compile = canvas->AskBeforeCompile();
    if (!self || !canvas || !canvas_ || list_ == 0)
        return;  // the handler has taken the scene away
    if (!compile) {
        // Whoever refuses draws instead, in the transform and with the attributes of this scene: they stay in force.
        compiled_ = true;
        restore.dismiss();
        return;
    }
    compileAndPlay();
}

void TZKOglScene::compileAndPlay() {
    const QPointer<TZKOglScene> self = this;
    const QPointer<TZkOglCanvas> canvas = canvas_;
    forgotten_ = false;
    plan();
    glDeleteLists(list_, 1);
    glNewList(list_, GL_COMPILE_AND_EXECUTE);
    OGLError();
    {
        const auto end = qScopeGuard([&canvas, &self] {
            if (self)
                self->compiling_ = false;
            if (canvas && canvas->CheckCurrent())
                glEndList();
        });
        compiling_ = true;
        TDisplayList::Play();
    }
    OGLError();
    if (!self)
        return;
    compiled_ = !forgotten_;
    empty_ = false;
    if (canvas)
        canvas->TellAfterCompile();
}

// --- attributes and transform ---------------------------------------------------------------------------------------

void TZKOglScene::setAttributes(Tattributes* attributes) {
    if (!attributes || attributes == attributes_.get())
        return;
    InBracket(
        canvas_, {this, attributes}, [&] { attributes_->setPolyStyle(attributes->getPolyStyle()); },
        [&] { attributes_->SetMaterial(attributes->getMaterial()); },
        [&] { attributes_->SetTexture(attributes->getTexture()); }, [&] { Invalidate(); });
}

Tmatrix TZKOglScene::TrfMAtrix() const {
    return Mulmat(RotationToMatrix3d(drehGerade_, drehwinkel_ * std::numbers::pi / 180.0),
                  TranslationToMatrix3d(translation_));
}

void TZKOglScene::SetTranslation(const TXYZ& by) {
    translation_ = by;
    const ChangeBracket bracket(canvas_);
}

void TZKOglScene::SetDrehGerade(const TGerade& line) {
    drehGerade_ = line;
    const ChangeBracket bracket(canvas_);
}

void TZKOglScene::Setdrehwinkel(double degrees) {
    drehwinkel_ = degrees;
    const ChangeBracket bracket(canvas_);
}

void TZKOglScene::Set_translation(const QString& text) {
    SetTranslation(Strtoxyz(text));
}

QString TZKOglScene::Get_translation() const {
    return xyztoStr(translation_);
}

void TZKOglScene::SetDrehgeradePkt(const QString& text) {
    SetDrehGerade({Strtoxyz(text), drehGerade_.Direction});
}

QString TZKOglScene::GetDrehgeradePkt() const {
    return xyztoStr(drehGerade_.Origin);
}

void TZKOglScene::SetDrehgeradeRichtung(const QString& text) {
    SetDrehGerade({drehGerade_.Origin, Strtoxyz(text)});
}

QString TZKOglScene::GetDrehgeradeRichtung() const {
    return xyztoStr(drehGerade_.Direction);
}

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TZKOglScene::readCanvas() const {
    return ComponentRef(GetZkOglCanvas());
}

void TZKOglScene::writeCanvas(const ComponentRef& ref) {
    WriteReference(*this, "ZkOglCanvas", ref,
                   [this](QObject* object) { SetZkOglCanvas(static_cast<TZkOglCanvas*>(object)); });
}

void TZKOglScene::writeTranslation(const QString& text) {
    WritePointText(*this, "TransformBy", text, [this](const QString& point) { Set_translation(point); });
}

void TZKOglScene::writeRotationPoint(const QString& text) {
    WritePointText(*this, "RotationPoint", text, [this](const QString& point) { SetDrehgeradePkt(point); });
}

void TZKOglScene::writeRotationLine(const QString& text) {
    WritePointText(*this, "RotationLine", text, [this](const QString& point) { SetDrehgeradeRichtung(point); });
}

}  // namespace zk
