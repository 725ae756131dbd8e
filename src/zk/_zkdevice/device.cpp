#include "device.h"

#include <zk/_zkmath/frame.h>
#include <zk/_zkmath/plane.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/transform.h>
#include <zk/_zkxyarrays/walk.h>

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace zk {

namespace {

constexpr double farAway = 1000.0;  // the eye distance for angles that have no tangent, or none worth having

// Nearest, ties to even, whatever the rounding mode; clamped to the range, 0 for what is not a number.
std::int32_t roundToPixel(double value) {
    if (std::isnan(value))
        return 0;
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    if (value <= lowest)
        return std::numeric_limits<std::int32_t>::min();
    if (value >= highest)
        return std::numeric_limits<std::int32_t>::max();
    const double below = std::floor(value);
    const double fraction = value - below;
    const auto whole = std::int32_t(below);
    return fraction > 0.5 || (fraction == 0.5 && whole % 2 != 0) ? whole + 1 : whole;
}

// Sums that come round again where they leave 32 bits.
std::int32_t add(std::int32_t a, std::int32_t b) {
    return std::int32_t(std::uint32_t(a) + std::uint32_t(b));
}
std::int32_t sub(std::int32_t a, std::int32_t b) {
    return std::int32_t(std::uint32_t(a) - std::uint32_t(b));
}

}  // namespace

TZKDevice::TZKDevice(QObject* owner)
    : TComponent(owner),
      lightClass_(Tlight::Class()),
      lights_(std::make_unique<TLights>(lightClass_)),
      attributes_(new Tattributes) {}

TZKDevice::~TZKDevice() {
    AnnounceRemoval();
    delete attributes_.data();
    lights_->Clear();
}

void TZKDevice::AddLight(Tlight* Light) {
    lights_->Add(Light);
}
void TZKDevice::RemoveLight(Tlight* Light) {
    lights_->Remove(Light);
}

std::int32_t TZKDevice::GetHeight() const {
    return sub(bounds_.bottom, bounds_.top);
}
std::int32_t TZKDevice::GetWidth() const {
    return sub(bounds_.right, bounds_.left);
}
void TZKDevice::SetHeight(std::int32_t Value) {
    bounds_.bottom = add(bounds_.top, Value);
}
void TZKDevice::SetWidth(std::int32_t Value) {
    bounds_.right = add(bounds_.left, Value);
}

Tattributes* TZKDevice::getAttributes() const {
    return attributes_;
}

TBAse TZKDevice::GetDrawBAse() const {
    return MAtrixToBase(GetModelMatrix());
}
void TZKDevice::SetDrawbase(const TBAse& Value) {
    SetModelMatrix(BAseToMAtrix(Value));
}

TBAse TZKDevice::GetprojectionBAse() const {
    return projectionBase_;
}
void TZKDevice::SetProjectionbase(const TBAse& Value) {
    projectionBase_ = Value;
}

void TZKDevice::SetBlickWinkel(double Value) {
    blickwinkel_ = Value;
}
double TZKDevice::GetBlickwinkel() const {
    return blickwinkel_;
}

void TZKDevice::SetDefaultUNits(double Value) {
    defaultUNits_ = Value;
}
void TZKDevice::SetUnitsPerCm(double Value) {
    unitsPerCm_ = Value;
}

void TZKDevice::Setenabled2d(bool Value) {
    enabled2d_ = Value;
}
void TZKDevice::Setenabled3d(bool Value) {
    enabled3d_ = Value;
}

Tmatrix TZKDevice::GetModelMatrix() const {
    return modelMatrix_;
}
void TZKDevice::SetModelMatrix(const Tmatrix& Value) {
    modelMatrix_ = Value;
}

void TZKDevice::SetPRimdevice(TZKPrimdevice* Value) {
    primdevice_ = Value;
}

void TZKDevice::SetChanging(bool Value) {
    // Unsigned, so that a count that runs off one end comes back at the other.
    if (Value) {
        changeCount_ = std::int32_t(std::uint32_t(changeCount_) + 1U);
        changing_ = true;
    } else {
        changeCount_ = std::int32_t(std::uint32_t(changeCount_) - 1U);
    }
    if (changeCount_ < 1) {
        changing_ = false;
        Refresh();
    }
}

void TZKDevice::Refresh() {
    if (IsLoadingOrStoring() || deviceStates_.Contains(DsPainting) || changing_ || changeCount_ != 0)
        return;
    const QPointer<TZKDevice> self = this;  // a handler may delete the device while it paints
    try {
        BeginPaint();
        if (self)
            EndPaint();
    } catch (...) {
        // An error that left the drawing ended the paint, and must not keep the device from painting ever again.
        if (self)
            deviceStates_.Exclude(DsPainting);
        throw;
    }
}

void TZKDevice::BeginPaint() {
    deviceStates_.Include(DsPainting);
}
void TZKDevice::EndPaint() {
    deviceStates_.Exclude(DsPainting);
}

void TZKDevice::Loaded() {
    TComponent::Loaded();
    changeCount_ = 0;
    SetChanging(true);
    SetBlickWinkel(GetBlickwinkel());
    SetProjectionbase(GetprojectionBAse());
    SetChanging(false);
}

double TZKDevice::AugeAbstand() const {
    const double angle = GetBlickwinkel();
    if (Equals(angle, 0))
        return 0.0;
    if (Equals(angle, 90) || Equals(angle, 180))
        return farAway;
    return GetWidth() / (2 * std::tan(angle * std::numbers::pi / 180) * unitsPerCm_);
}

TXYZ TZKDevice::Auge() const {
    const TBAse base = GetprojectionBAse();
    return Add(base.Origin, Mul(base.ZAxis, AugeAbstand()));
}

TXYZ TZKDevice::Projection(const TXYZ& P, const TPlane& Plane) const {
    const bool parallel = Equals(GetBlickwinkel(), 0);
    const TXYZ direction = parallel ? GetprojectionBAse().ZAxis : Sub(Auge(), P);
    TXYZ image;
    double along = 0;  // of no interest
    _Cross(NewGerade(P, direction), Plane, image, along);
    return image;
}

TXY TZKDevice::Projection(const TXYZ& P) const {
    const TBAse base = GetprojectionBAse();
    const TXYZ image = BaseGetRel(base, Projection(P, NewPlane(base)));
    return {image.x, image.y};
}

TXYI TZKDevice::GetDeviceKoord(const TXY& Q) const {
    return {roundToPixel(GetWidth() / 2 + Q.x * unitsPerCm_), roundToPixel(GetHeight() / 2 - Q.y * unitsPerCm_)};
}

TXY TZKDevice::GetProjectionKoord(const TXYI& D) const {
    return {(double(D.x) - GetWidth() / 2) / unitsPerCm_, -(double(D.y) - GetHeight() / 2) / unitsPerCm_};
}

TXYI TZKDevice::WtoPixel(const TXYZ& P) const {
    return GetDeviceKoord(Projection(P));
}

void TZKDevice::Poly3dtoScr(const TXYZARRAY& A, TXYIARRAY& B) const {
    Arraysetcount(B, A.Count);
    const auto points = A.Items();
    const auto pixels = B.Items();
    std::transform(points.begin(), points.begin() + std::ptrdiff_t(std::min(points.size(), pixels.size())),
                   pixels.begin(), [this](const TXYZ& point) { return WtoPixel(point); });
}

void TZKDevice::Moveto3d(const TXYZ& P) {
    if (!primdevice_ || !enabled3d_)
        return;
    const TXYI pixel = WtoPixel(P);
    primdevice_->MoveTo(pixel.x, pixel.y);
}

void TZKDevice::LineTo3d(const TXYZ& P) {
    if (!primdevice_ || !enabled3d_)
        return;
    const TXYI pixel = WtoPixel(P);
    primdevice_->LineTo(pixel.x, pixel.y);
}

void TZKDevice::PolyPolyline3D(const TlistOFxyzArray& L) {
    if (!enabled3d_ || !primdevice_)
        return;
    TlistOFXYiArray pixels;
    for (int i = 0; i < L.Count(); ++i) {
        TXYIARRAY* target = pixels.AddArray();
        if (const TXYZARRAY* source = L.Getitem(i))
            Poly3dtoScr(*source, *target);
    }
    primdevice_->PolyPolyline(pixels);
}

void TZKDevice::PolyLine3D(const TXYZARRAY& A) {
    // The list owns what is in it, and A is the caller's: it comes out again even when drawing throws.
    struct Borrowed {
        explicit Borrowed(const TXYZARRAY& array) { list.Add(const_cast<TXYZARRAY*>(&array)); }
        ~Borrowed() { list.Take(0); }
        TlistOFxyzArray list;
    } const borrowed(A);
    PolyPolyline3D(borrowed.list);
}

void TZKDevice::Circle2d(const TXY&, double) {}

void TZKDevice::SetLightClass(const TLightClass& LightClass) {
    lightClass_ = LightClass;
    FreeLights();
}

void TZKDevice::FreeLights() {
    // The new list first: a light that goes takes itself out of whatever list the device has then.
    const std::unique_ptr<TLights> old = std::exchange(lights_, std::make_unique<TLights>(lightClass_));
}

TAttributesKind TZKDevice::getAttributeskind() const {
    TAttributesKind kind;
    const Tattributes* attributes = getAttributes();
    if (!attributes)
        return kind;
    if (const TTexture* texture = attributes->getTexture())
        kind.Texture = texture->GettextureKind();
    if (const Tmaterial* material = attributes->getMaterial())
        kind.Material = material->GetMAterialKind();
    if (const TPolyAttributes* polyStyle = attributes->getPolyStyle()) {
        kind.Mode = polyStyle->GetMode();
        kind.Style = polyStyle->GetStyle();
    }
    return kind;
}

void TZKDevice::SetAttributeskind(const TAttributesKind& Kind) {
    Tattributes* attributes = getAttributes();
    if (!attributes)
        return;
    if (TTexture* texture = attributes->getTexture())
        texture->SettextureKind(Kind.Texture);
    if (Tmaterial* material = attributes->getMaterial())
        material->SetMAterialKind(Kind.Material);
    if (TPolyAttributes* polyStyle = attributes->getPolyStyle()) {
        polyStyle->SetMode(Kind.Mode);
        polyStyle->SetStyle(Kind.Style);
    }
}

const TlistOFxyzArray* TZKDevice::Checktrf(const TlistOFxyzArray& L, Tmatrix& M, bool& Transformed) const {
    Transformed = false;
    M = GetModelMatrix();
    if (Equals(M, Identity))
        return &L;
    auto copy = std::make_unique<TlistOFxyzArray>();
    _Copy(L, *copy);
    MatMul(M, *copy);
    Transformed = true;
    return copy.release();
}

void TZKDevice::CloseCheck(const TlistOFxyzArray* L, const Tmatrix& M, bool Transformed) {
    if (!Transformed)
        return;
    const std::unique_ptr<const TlistOFxyzArray> copy(L);
    SetModelMatrix(M);
}

}  // namespace zk
