#include "customshape.h"

#include <zk/_zkcomtypes/pointproperty.h>
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/polygonmode.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/host/formreading.h>

#include <QMetaMethod>
#include <QScopeGuard>

#include <cmath>
#include <numbers>
#include <utility>

namespace zk {

namespace {

constexpr double smallestScale = 1e-5;

void translate(const TXYZ& by) {
    glTranslated(by.x, by.y, by.z);
}

void translateBack(const TXYZ& by) {
    glTranslated(-by.x, -by.y, -by.z);
}

/// The place of a shape, as it was when drawing it began: a handler may change or delete the shape meanwhile.
struct Placement {
    TXYZ translation;
    TGerade line;
    double degrees;

    void Apply() const {
        translate(translation);
        translate(line.Origin);
        glRotated(degrees, line.Direction.x, line.Direction.y, line.Direction.z);
        translateBack(line.Origin);
    }

    // The two moves by the axis point stand in each other's place, on purpose: see the comment of the class.
    void Undo() const {
        translateBack(line.Origin);
        glRotated(-degrees, line.Direction.x, line.Direction.y, line.Direction.z);
        translate(line.Origin);
        translateBack(translation);
    }

    /// False for a line without a direction worth the name: drivers differ in what they make of it.
    bool IsDefined() const { return degrees == 0 || (std::isfinite(degrees) && Len(line.Direction) > 1e-3); }

    /// As OpenGL turns: counter-clockwise for whom the direction points at. After O. Rodrigues, 1840.
    TXYZ Turned(const TXYZ& point) const {
        if (degrees == 0)
            return point;
        const double angle = degrees * std::numbers::pi / 180.0;
        const TXYZ axis = Mul(line.Direction, 1.0 / Len(line.Direction));
        const TXYZ across = Mul(Vekt(axis, point), std::sin(angle));
        const TXYZ along = Mul(axis, Skal(axis, point) * (1 - std::cos(angle)));
        return Add(Add(Mul(point, std::cos(angle)), across), along);
    }

    TXYZ Placed(const TXYZ& point) const { return Add(Add(Turned(Sub(point, line.Origin)), line.Origin), translation); }

    /// What `Undo` leaves of `Apply`: the turn cancels, the moves by the axis point leave twice the way that the turn
    /// takes it.
    TXYZ Remainder() const {
        if (degrees == 0 || line.Origin == Nullxyz)
            return Nullxyz;
        return Mul(Sub(line.Origin, Turned(line.Origin)), 2.0);
    }
};

}  // namespace

static const ReferenceProperty<TCustomShape, TDisplayList> sceneProperty("Scene");
static const ReferenceTarget<TCustomShape> customShapeTarget;

TCustomShape::TCustomShape(QObject* owner) : TZkShape(owner), attributes_(std::make_unique<Tattributes>()) {
    attributes_->HookChanges(this, [this](QObject* sender) { Changed(sender); });
    SetVisible(true);
}

TCustomShape::~TCustomShape() {
    AnnounceRemoval();
    TZkgraphicsobject::Dispose(attributes_.release());
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
    DropDrawing();
    if (auto* scene = qobject_cast<TZKOglScene*>(GetDisplayList()))
        scene->ForgetBounds();
    mark();
}

void TCustomShape::mark() {
    if (IsLoadingOrStoring() || (ComponentState() & csDestroying) || changing_)
        return;
    // Before the bracket opens: after a surplus close that repaints, and the shape may not be there any more.
    if (TDisplayList* scene = GetDisplayList())
        scene->Invalidate();
    const ChangeBracket bracket(checkCurrent() ? GetZkOglcanvas() : nullptr);
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

void TCustomShape::Loaded() {
    TZkShape::Loaded();
    const auto* scene = qobject_cast<TZKOglScene*>(GetDisplayList());
    if (scene && scene->GetVisible() && !scene->IsCompiled())
        mark();
}

void TCustomShape::SetDisplayList(TDisplayList* scene) {
    // Each of these may repaint, and what is called then may delete the shape or the scene.
    const QPointer<TCustomShape> self = this;
    const QPointer<TDisplayList> joined = scene;
    const QPointer<TZkOglCanvas> left = scene ? nullptr : GetZkOglcanvas();
    Invalidate();
    if (self)
        TZkShape::SetDisplayList(joined);
    if (left)
        left->Refresh();
    if (self)
        Invalidate();
}

// --- properties -----------------------------------------------------------------------------------------------------

void TCustomShape::setAttributes(Tattributes* source) {
    if (!source || source == attributes_.get())
        return;
    // After a surplus close the opening repaints, and so may every step: user code then may delete the shape, or the
    // one that the attributes are of.
    const QPointer<TCustomShape> self = this;
    const StillAlive alive({this, source});
    SetChanging(true);
    alive.Run([&] { attributes_->getPolyStyle()->SetMode(source->getPolyStyle()->GetMode()); },
              [&] { attributes_->getPolyStyle()->SetStyle(source->getPolyStyle()->GetStyle()); },
              [&] { attributes_->SetMaterial(source->getMaterial()); },
              [&] { attributes_->SetTexture(source->getTexture()); });
    if (self)
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
    const Placement placement{translation_, drehGerade_, drehwinkel_};
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

    placement.Apply();
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
        placement.Undo();
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

// As SetVisible, but the shape itself draws as before when the copy is done.
void TCustomShape::showCopy(bool visible) {
    visible_ = visible;
    // A pick must not mark anything for compilation.
    if (TZkOglCanvas* canvas = GetZkOglcanvas(); canvas && !canvas->IsSelecting() && canvas->CheckCurrent())
        mark();
}

void TCustomShape::PlayCopy(TCustomShape& shape, bool visible) {
    const QPointer<TCustomShape> copied = &shape;
    const bool wasVisible = shape.visible_;
    const bool wasNohit = shape.nohit_;
    const bool wasCopy = shape.playedAsCopy_;
    const auto restore = qScopeGuard([&] {
        if (!copied)
            return;
        copied->playedAsCopy_ = wasCopy;
        copied->nohit_ = wasNohit;
        copied->showCopy(wasVisible);
    });
    shape.showCopy(visible);
    if (!copied)
        return;
    copied->nohit_ = true;
    copied->playedAsCopy_ = true;
    copied->Play();
}

// --- what a scene keeps ---------------------------------------------------------------------------------------------

bool TCustomShape::CanBeKept() const {
    static const QMetaMethod onPlay = QMetaMethod::fromSignal(&TZkShape::OnPlay);
    if (!DrawsOnlyItself() || isSignalConnected(onPlay) || playedAsCopy_)
        return false;
    if (!Placement{translation_, drehGerade_, drehwinkel_}.IsDefined())
        return false;
    if (parentAttributes_)
        return true;
    const Tmaterial* material = attributes_->getMaterial();
    const TTexture* texture = attributes_->getTexture();
    const TPolyAttributes* style = attributes_->getPolyStyle();
    // Values that OpenGL refuses are to be refused at every compilation. A material for the back leaves the front to
    // the shapes before it.
    return material && texture && style && material->GetFace() == glfront && material->GetShininess() >= 0 &&
           material->GetShininess() <= 128 && style->GetMode() >= glpoint && style->GetMode() <= glfill;
}

Drawn TCustomShape::DrawKept(const FaceStyle& style) {
    const Placement placement{translation_, drehGerade_, drehwinkel_};
    const double scale = std::fabs(scale_) > smallestScale ? scale_ : 1.0;
    // Without a remainder the matrix comes back as it was; with one, by the very steps that leave it.
    const bool leavesRemainder = !(placement.Remainder() == Nullxyz);
    if (!leavesRemainder)
        glPushMatrix();
    if (drehwinkel_ != 0)
        placement.Apply();
    else
        translate(translation_);
    if (leavesRemainder)
        glPushMatrix();
    if (!nohit_)
        glLoadName(GLuint(HitName()));
    if (scale != 1.0)
        glScaled(scale, scale, scale);
    Drawn drawn = GetZkOglcanvas()->DrawInto(style, [this] { Doplay(); });
    glPopMatrix();
    if (leavesRemainder)
        placement.Undo();

    const Bounds geometry = std::exchange(drawn.Box, Bounds());
    for (int corner = 0; corner < 8 && !geometry.IsEmpty(); ++corner) {
        const TXYZ point{corner & 1 ? geometry.High.x : geometry.Low.x, corner & 2 ? geometry.High.y : geometry.Low.y,
                         corner & 4 ? geometry.High.z : geometry.Low.z};
        drawn.Box.Add(placement.Placed(Mul(point, scale)));
    }
    return drawn;
}

bool TCustomShape::Remainder(TXYZ& by) const {
    const Placement placement{translation_, drehGerade_, drehwinkel_};
    if (!placement.IsDefined())
        return false;
    by = placement.Remainder();
    return true;
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

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TCustomShape::readScene() const {
    return ComponentRef(GetDisplayList());
}

void TCustomShape::writeScene(const ComponentRef& ref) {
    WriteReference(*this, "Scene", ref,
                   [this](QObject* object) { SetDisplayList(static_cast<TDisplayList*>(object)); });
}

void TCustomShape::writeTranslation(const QString& text) {
    WritePointText(*this, "TransformBy", text, [this](const QString& point) { Set_translation(point); });
}

void TCustomShape::writeRotationPoint(const QString& text) {
    WritePointText(*this, "RotationPoint", text, [this](const QString& point) { SetDrehgeradePkt(point); });
}

void TCustomShape::writeRotationLine(const QString& text) {
    WritePointText(*this, "RotationLine", text, [this](const QString& point) { SetDrehgeradeRichtung(point); });
}

}  // namespace zk
