#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/polygonmode.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/_zkogltools/customshape.h>

#include <QScopeGuard>

#include <cmath>

namespace zk {

namespace {

constexpr double smallestScale = 1e-5;

void translate(const TXYZ& by) {
    glTranslated(by.x, by.y, by.z);
}

void translateBack(const TXYZ& by) {
    glTranslated(-by.x, -by.y, -by.z);
}

}  // namespace

TCustomShape::TCustomShape(QObject* owner) : TZkShape(owner), attributes_(std::make_unique<Tattributes>()) {
    attributes_->HookChanges(this, [this](QObject* sender) { Changed(sender); });
    SetVisible(true);
}

TCustomShape::~TCustomShape() {
    AnnounceRemoval();
}

TZkOglCanvas* TCustomShape::GetZkOglcanvas() const {
    const auto* scene = qobject_cast<TZKOglScene*>(GetDisplayList());
    return scene ? scene->GetZkOglCanvas() : nullptr;
}

bool TCustomShape::checkCurrent() const {
    TZkOglCanvas* canvas = GetZkOglcanvas();
    return canvas && canvas->CheckCurrent();
}

// --- changes --------------------------------------------------------------------------------------------------------

void TCustomShape::Invalidate() {
    if (IsLoadingOrStoring() || (ComponentState() & csDestroying) || changing_)
        return;
    const ChangeBracket bracket(checkCurrent() ? GetZkOglcanvas() : nullptr);
    if (TDisplayList* scene = GetDisplayList())
        scene->Invalidate();
}

void TCustomShape::Changed(QObject* /*sender*/) {
    Invalidate();
}

void TCustomShape::SetChanging(bool changing) {
    if (changing) {
        ++changeCount_;
        changing_ = true;
    } else {
        --changeCount_;
    }
    if (changeCount_ < 1) {
        changing_ = false;
        Invalidate();
    }
}

void TCustomShape::SetDisplayList(TDisplayList* scene) {
    const QPointer<TZkOglCanvas> left = scene ? nullptr : GetZkOglcanvas();
    Invalidate();
    TZkShape::SetDisplayList(scene);
    if (left)
        left->Refresh();
    Invalidate();
}

// --- properties -----------------------------------------------------------------------------------------------------

void TCustomShape::setAttributes(Tattributes* source) {
    if (!source || source == attributes_.get())
        return;
    SetChanging(true);
    attributes_->getPolyStyle()->SetMode(source->getPolyStyle()->GetMode());
    attributes_->getPolyStyle()->SetStyle(source->getPolyStyle()->GetStyle());
    attributes_->SetMaterial(source->getMaterial());
    attributes_->SetTexture(source->getTexture());
    SetChanging(false);
}

void TCustomShape::Settranslation(const TXYZ& by) {
    translation_ = by;
    Invalidate();
}

void TCustomShape::SetDrehGerade(const TGerade& line) {
    drehGerade_ = line;
    Invalidate();
}

void TCustomShape::Setdrehwinkel(double degrees) {
    drehwinkel_ = degrees;
    Invalidate();
}

void TCustomShape::Set_translation(const QString& text) {
    Settranslation(Strtoxyz(text));
}

QString TCustomShape::Get_translation() const {
    return xyztoStr(translation_);
}

void TCustomShape::SetDrehgeradePkt(const QString& text) {
    SetDrehGerade({Strtoxyz(text), drehGerade_.Direction});
}

QString TCustomShape::GetDrehgeradePkt() const {
    return xyztoStr(drehGerade_.Origin);
}

void TCustomShape::SetDrehgeradeRichtung(const QString& text) {
    SetDrehGerade({drehGerade_.Origin, Strtoxyz(text)});
}

QString TCustomShape::GetDrehgeradeRichtung() const {
    return xyztoStr(drehGerade_.Direction);
}

void TCustomShape::SetScale(double scale) {
    scale_ = scale;
    if (checkCurrent())
        Invalidate();
}

void TCustomShape::SetVisible(bool visible) {
    visible_ = visible;
    if (checkCurrent())
        Invalidate();
}

void TCustomShape::SetParentAttributes(bool value) {
    if (value == parentAttributes_)
        return;
    parentAttributes_ = value;
    if (checkCurrent())
        Invalidate();
}

// --- playing --------------------------------------------------------------------------------------------------------

void TCustomShape::Play() {
    const QPointer<TZkOglCanvas> canvas = GetZkOglcanvas();
    if (!canvas || !canvas->CheckCurrent() || !visible_)
        return;
    const QPointer<TCustomShape> self = this;
    // A handler may delete or change the shape while it is drawn; what was done is undone by these.
    const TXYZ translation = translation_;
    const TGerade line = drehGerade_;
    const double angle = drehwinkel_;
    // In a pick nothing gets a colour; only how polygons are rasterised decides what is met.
    const bool ownAttributes = !parentAttributes_ && !canvas->IsSelecting();
    TAttributesKind savedAttributes;

    if (!parentAttributes_)
        _GlPolyGonMode(int(attributes_->getMaterial()->GLFace()), int(attributes_->getPolyStyle()->GLMode()));
    if (ownAttributes) {
        savedAttributes = canvas->getAttributeskind();
        canvas->getAttributes()->setPolyStyle(attributes_->getPolyStyle());
        canvas->getAttributes()->SetMaterial(attributes_->getMaterial());
        canvas->getAttributes()->SetTexture(attributes_->getTexture());
        OGLError();
    }

    translate(translation);
    translate(line.Origin);
    glRotated(angle, line.Direction.x, line.Direction.y, line.Direction.z);
    translateBack(line.Origin);
    OGLError();
    if (!nohit_) {
        canvas->SetHit(HitName());
        OGLError();
    }

    const double units = canvas->GetUnitsPerCm();
    const auto undo = qScopeGuard([&] {
        if (!canvas || !canvas->CheckCurrent())
            return;
        canvas->SetUnitsPerCm(units);
        if (ownAttributes)
            canvas->SetAttributeskind(savedAttributes);
        // The two moves by the axis point stand in each other's place, on purpose: see the class comment.
        translateBack(line.Origin);
        glRotated(-angle, line.Direction.x, line.Direction.y, line.Direction.z);
        translate(line.Origin);
        translateBack(translation);
        OGLError();
    });
    if (std::fabs(scale_) > smallestScale)
        canvas->SetUnitsPerCm(units * scale_);
    // What a pick must not see is not drawn in it: its geometry would count as that of the shape named before. A copy
    // is meant to count as that.
    if (nohit_ && !playedAsCopy_ && canvas->IsSelecting())
        return;
    Doplay();
    if (self)
        TZkShape::Play();
}

void TCustomShape::Doplay() {}

void TCustomShape::PlayCopy(TCustomShape& shape, bool visible) {
    const QPointer<TCustomShape> copied = &shape;
    const bool wasVisible = shape.visible_;
    const bool wasNohit = shape.nohit_;
    const bool wasCopy = shape.playedAsCopy_;
    // Each change marks the scene of the copied shape for compilation. A pick must not do that.
    const auto show = [&copied](bool on) {
        if (const TZkOglCanvas* canvas = copied->GetZkOglcanvas(); canvas && canvas->IsSelecting())
            copied->visible_ = on;
        else
            copied->SetVisible(on);
    };
    const auto restore = qScopeGuard([&] {
        if (!copied)
            return;
        copied->playedAsCopy_ = wasCopy;
        copied->SetNohit(wasNohit);
        show(wasVisible);
    });
    show(visible);
    if (copied)
        copied->SetNohit(true);
    if (copied) {
        copied->playedAsCopy_ = true;
        copied->Play();
    }
}

// --- the mouse ------------------------------------------------------------------------------------------------------

void TCustomShape::MouseDown(Qt::MouseButton button, TShiftState shift, int x, int y) {
    Q_EMIT OnMouseDown(this, button, shift, x, y);
}

void TCustomShape::MouseMove(TShiftState shift, int x, int y) {
    Q_EMIT OnMouseMove(this, shift, x, y);
}

void TCustomShape::MouseUp(Qt::MouseButton button, TShiftState shift, int x, int y) {
    Q_EMIT OnMouseUp(this, button, shift, x, y);
}

}  // namespace zk
