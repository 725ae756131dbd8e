#include "ogllight.h"

#include <zk/_zkcomtypes/pointproperty.h>
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glcolor.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/matrixmode.h>
#include <zk/host/formreading.h>
#include <zk/host/message.h>

#include <algorithm>
#include <exception>

namespace zk {

static const ReferenceProperty<TZKOglLight, TZkOglCanvas> lightCanvasProperty("ZkOglCanvas");

TZKOglLight::TZKOglLight(QObject* owner) : Tlight(owner) {}

TZKOglLight::~TZKOglLight() {
    AnnounceRemoval();
    SetEnabled(false);
    SetZkOglCanvas(nullptr);
}

void TZKOglLight::SetZkOglCanvas(TZkOglCanvas* canvas) {
    // Each of these may repaint, and user code then delete the light or the canvas.
    const QPointer<TZKOglLight> self = this;
    const QPointer<TZkOglCanvas> joined = canvas;
    const bool enabled = enabled_;
    if (canvas_)
        leaveCanvas();
    if (!joined || !self)
        return;
    Tlight::SetEnabled(enabled);  // a light that goes from one canvas to another shines on
    canvas_ = canvas;
    FreeNotification(canvas);
    canvas->AddLight(this);
    SetEnabled(enabled_);
    if (self && enabled_ && CheckCurrent())
        Update();
    if (self)
        Invalidate();
}

void TZKOglLight::leaveCanvas() {
    const QPointer<TZKOglLight> self = this;
    const QPointer<TZkOglCanvas> canvas = canvas_;
    const auto isBound = [&] { return self && canvas && canvas_ == canvas; };
    const ChangeBracket bracket(canvas);
    if (!isBound())
        return;
    try {
        if (enabled_)
            SetEnabled(false);
        if (isBound())
            canvas->RemoveLight(this);
    } catch (const std::exception&) {
        ShowMessage(QStringLiteral("error destroying light :") + QString::number(handle_ - GL_LIGHT0));
    }
    if (!isBound())
        return;
    RemoveFreeNotification(canvas);
    canvas_ = nullptr;
    // The numbers of the others close up: a light that joins later gets the number of its place, which must be free.
    canvas->CheckLightHandle();
}

void TZKOglLight::Notification(QObject* component, TOperation operation) {
    Tlight::Notification(component, operation);
    if (operation == TOperation::opRemove && canvas_ && component == canvas_)
        SetZkOglCanvas(nullptr);
}

bool TZKOglLight::CheckCurrent() {
    return canvas_ && canvas_->CheckCurrent();
}

void TZKOglLight::Invalidate() {
    if (CheckCurrent())
        canvas_->Refresh();
}

void TZKOglLight::pass(unsigned parameter, double value) {
    const auto number = GLfloat(value);
    glLightfv(GLenum(handle_), parameter, &number);
}

void TZKOglLight::pass(unsigned parameter, TColor color) {
    glLightfv(GLenum(handle_), parameter, ToGlColor(color).data());
}

// Under an identity model-view matrix OpenGL takes the value as it is, so that the light stays put when the model
// moves.
void TZKOglLight::passInEyeCoordinates(unsigned parameter, const float* value) {
    const MatrixModeScope mode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glLightfv(GLenum(handle_), parameter, value);
    glPopMatrix();
}

double TZKOglLight::GEtattenuation() const {
    return Tlight::GEtattenuation();
}

void TZKOglLight::setattenuation(double attenuation) {
    Tlight::setattenuation(attenuation);
    if (!shines())
        return;
    pass(unsigned(GEtattenuationMode()), attenuation);
    Invalidate();
}

std::int32_t TZKOglLight::GEtattenuationMode() const {
    return Tlight::GEtattenuationMode();
}

void TZKOglLight::setattenuationMode(std::int32_t mode) {
    Tlight::setattenuationMode(mode);
}

TXYZ TZKOglLight::GetPosition() const {
    return Tlight::GetPosition();
}

void TZKOglLight::SetPosition(const TXYZ& position) {
    Tlight::SetPosition(position);
    if (!shines())
        return;
    TBAse eyeFrame = canvas_->GetprojectionBAse();
    eyeFrame.Origin = canvas_->Auge();
    const TXYZ q = Mul(BaseGetRel(eyeFrame, position), canvas_->GetScale());
    const GLfloat value[4] = {GLfloat(q.x), GLfloat(q.y), GLfloat(q.z), 1.0F};
    passInEyeCoordinates(GL_POSITION, value);
    Invalidate();
}

void TZKOglLight::SetPositionOld(const TXYZ& position) {
    if (!shines())
        return;
    const TXYZ q = BaseGetRel(canvas_->GetprojectionBAse(), Mul(position, canvas_->GetScale()));
    const GLfloat value[4] = {GLfloat(q.x), GLfloat(q.y), GLfloat(q.z), 1.0F};
    passInEyeCoordinates(GL_POSITION, value);
    Invalidate();
}

TXYZ TZKOglLight::GetDirection() const {
    return Tlight::GetDirection();
}

void TZKOglLight::SetDirection(const TXYZ& direction) {
    Tlight::SetDirection(direction);
    if (!shines())
        return;
    const TBAse frame = canvas_->GetprojectionBAse();
    const TXYZ v = Sub(BaseGetRel(frame, Mul(direction, canvas_->GetScale())), BaseGetRel(frame, TXYZ{0, 0, 0}));
    const GLfloat value[3] = {GLfloat(v.x), GLfloat(v.y), GLfloat(v.z)};
    passInEyeCoordinates(GL_SPOT_DIRECTION, value);
    Invalidate();
}

void TZKOglLight::SetEnabled(bool enabled) {
    Tlight::SetEnabled(enabled);
    if (!CheckCurrent() || handle_ < GL_LIGHT0)
        return;
    if (enabled) {
        glEnable(GL_LIGHTING);
        glEnable(GLenum(handle_));
        const QPointer<TZKOglLight> self = this;
        Update();
        if (!self)
            return;
    } else {
        glDisable(GLenum(handle_));
        OGLError();
    }
    Invalidate();
}

TColor TZKOglLight::GetAmbient() const {
    return Tlight::GetAmbient();
}

void TZKOglLight::SetAmbient(TColor color) {
    Tlight::SetAmbient(color);
    if (!shines())
        return;
    pass(GL_AMBIENT, color);
    Invalidate();
}

TColor TZKOglLight::GetDiffuse() const {
    return Tlight::GetDiffuse();
}

void TZKOglLight::SetDiffuse(TColor color) {
    Tlight::SetDiffuse(color);
    if (!shines())
        return;
    pass(GL_DIFFUSE, color);
    Invalidate();
}

TColor TZKOglLight::GetSpecular() const {
    return Tlight::GetSpecular();
}

void TZKOglLight::SetSpecular(TColor color) {
    Tlight::SetSpecular(color);
    if (!shines())
        return;
    pass(GL_SPECULAR, color);
    Invalidate();
}

double TZKOglLight::getSpotExponent() const {
    return Tlight::getSpotExponent();
}

void TZKOglLight::SetSpotExponent(double exponent) {
    Tlight::SetSpotExponent(exponent);
    if (!shines())
        return;
    pass(GL_SPOT_EXPONENT, std::clamp(exponent, 0.0, 128.0));
    Invalidate();
}

double TZKOglLight::getSpotCutOff() const {
    return Tlight::getSpotCutOff();
}

void TZKOglLight::SetSpotCutOff(double degrees) {
    Tlight::SetSpotCutOff(degrees);
    if (!shines())
        return;
    if (degrees > 90)
        degrees = 180;
    pass(GL_SPOT_CUTOFF, degrees);
    canvas_->SetTriangleResolution(degrees >= 90 ? 0 : canvas_->GetDefaultTriangleResolution());
    Invalidate();
}

QString TZKOglLight::GetLightPosition() const {
    return xyztoStr(GetPosition());
}

void TZKOglLight::SetLightPosition(const QString& text) {
    SetPosition(Strtoxyz(text));
}

QString TZKOglLight::GetLightDirection() const {
    return xyztoStr(GetDirection());
}

void TZKOglLight::SetLightDirection(const QString& text) {
    SetDirection(Strtoxyz(text));
}

void TZKOglLight::Update() {
    if (!CheckCurrent())
        return;
    const auto position = [this] { SetLightPosition(GetLightPosition()); };
    const auto direction = [this] { SetLightDirection(GetLightDirection()); };
    const auto ambient = [this] { SetAmbient(GetAmbient()); };
    const auto diffuse = [this] { SetDiffuse(GetDiffuse()); };
    const auto specular = [this] { SetSpecular(GetSpecular()); };
    const auto attenuation = [this] { setattenuation(GEtattenuation()); };
    const auto cutOff = [this] { SetSpotCutOff(getSpotCutOff()); };
    const auto exponent = [this] { SetSpotExponent(getSpotExponent()); };
    InBracket(canvas_, {this}, position, OGLError, direction, OGLError, ambient, OGLError, diffuse, OGLError, specular,
              OGLError, attenuation, OGLError, cutOff, OGLError, exponent, OGLError);
}

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TZKOglLight::readCanvas() const {
    return ComponentRef(GetZKOglCanvas());
}

void TZKOglLight::writeCanvas(const ComponentRef& ref) {
    WriteReference(*this, "ZkOglCanvas", ref,
                   [this](QObject* object) { SetZkOglCanvas(static_cast<TZkOglCanvas*>(object)); });
}

void TZKOglLight::writePosition(const QString& text) {
    WritePointText(*this, "LightPosition", text, [this](const QString& point) { SetLightPosition(point); });
}

void TZKOglLight::writeDirection(const QString& text) {
    WritePointText(*this, "LightDirection", text, [this](const QString& point) { SetLightDirection(point); });
}

}  // namespace zk
