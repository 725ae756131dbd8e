#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/matrixmode.h>
#include <zk/_zkoglcanvas/rendercontext.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zk {

namespace {

constexpr double nearDistance = 0.1;
constexpr double farDistance = 200.0;
constexpr double greatestAngle = 45.0;
constexpr double smallestAngle = 2.0;

double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

// A scale of 0 shows nothing; dividing by it would lose the matrix for good.
double inverse(double scale) {
    return scale == 0 ? 1.0 : 1.0 / scale;
}

}  // namespace

/// Keeps the place of all lights in the world while the view changes: takes their positions and directions, and gives
/// them back at the end of its scope, which pushes them to OpenGL in the new view.
class TZkOglCanvas::LightKeeper {
  public:
    explicit LightKeeper(const TZkOglCanvas& canvas) {
        for (Tlight* light : canvas.lightList())
            kept_.push_back({light, light->GetPosition(), light->GetDirection()});
    }
    ~LightKeeper() {
        for (const Kept& kept : kept_) {
            if (!kept.light)
                continue;
            kept.light->SetPosition(kept.position);
            if (kept.light)
                kept.light->SetDirection(kept.direction);
        }
    }
    LightKeeper(const LightKeeper&) = delete;
    LightKeeper& operator=(const LightKeeper&) = delete;

  private:
    struct Kept {
        QPointer<Tlight> light;
        TXYZ position;
        TXYZ direction;
    };
    std::vector<Kept> kept_;
};

// --- projection -----------------------------------------------------------------------------------------------------

void TZkOglCanvas::SetprojectionMode(int mode) {
    projectionMode_ = mode;
    if (!CheckCurrent())
        return;
    const MatrixModeScope matrix(GL_PROJECTION);
    glLoadIdentity();
    if (mode == 0) {
        glOrtho(-1, 1, -1, 1, -5, 5);
    } else if (mode == 1) {
        const double edge = nearDistance * std::tan(radians(GetBlickwinkel()));
        Frustum(-edge, edge, -edge, edge, nearDistance, farDistance);
    }
    OGLError();
}

void TZkOglCanvas::Frustum(double left, double right, double bottom, double top, double near, double far) {
    if (!CheckCurrent())
        return;
    const MatrixModeScope matrix(GL_PROJECTION);
    glLoadIdentity();
    glFrustum(left, right, bottom, top, near, far);
}

double TZkOglCanvas::GetBlickwinkel() const {
    return TZKDevice::GetBlickwinkel();
}

void TZkOglCanvas::SetBlickWinkel(double degrees) {
    if (degrees > greatestAngle || std::isnan(degrees))
        return;
    if (degrees < smallestAngle)
        degrees = 0;
    if (!context_) {
        TZKDevice::SetBlickWinkel(degrees);
        return;
    }
    const auto turn = [&] {
        const LightKeeper lights(*this);
        OGLTranslate(Auge());
        TZKDevice::SetBlickWinkel(degrees);
        // The angle is in degrees; that pi also selects the parallel projection is an old habit of this setter.
        SetprojectionMode(Equals(degrees, 0) || Equals(degrees, std::numbers::pi) ? 0 : 1);
        OGLTranslate(Mul(Auge(), -1.0));
    };
    InBracket(*this, turn, OGLError);
}

void TZkOglCanvas::SetBlickWinkelOld(double degrees) {
    if (!CheckCurrent())
        return;
    OGLTranslate(Auge());
    SetprojectionMode(Equals(degrees, 0) || Equals(degrees, std::numbers::pi) ? 0 : 1);
    OGLTranslate(Mul(Auge(), -1.0));
}

double TZkOglCanvas::AugeAbstand() const {
    const double angle = GetBlickwinkel();
    if (Equals(angle, 0))
        return 0;
    if (Equals(angle, 90) || Equals(angle, 180))
        return 1000.0;
    return orientationSign_ / (std::tan(radians(angle)) * scale_);
}

// --- viewport and scale ---------------------------------------------------------------------------------------------

void TZkOglCanvas::SetViewport(const TRect& viewport) {
    if (!CheckCurrent())
        return;
    const double ratio = context_->Surface().PixelRatio();
    const auto pixels = [ratio](int length) { return GLint(std::lround(length * ratio)); };
    glViewport(pixels(viewport.left), pixels(viewport.top), pixels(viewport.right - viewport.left),
               pixels(viewport.bottom - viewport.top));
}

TRect TZkOglCanvas::getViewPort() {
    if (!CheckCurrent())
        return {};
    GLint port[4] = {0, 0, 0, 0};
    glGetIntegerv(GL_VIEWPORT, port);
    const double ratio = context_->Surface().PixelRatio();
    const auto points = [ratio](GLint length) { return int(std::lround(length / ratio)); };
    return {points(port[0]), points(port[1]), points(port[0] + port[2]), points(port[1] + port[3])};
}

void TZkOglCanvas::SetStdViewport(int width, int height) {
    const int side = std::max(width, height);
    const int left = width / 2 - side / 2;
    const int top = height / 2 - side / 2;
    SetViewport({left, top, left + side, top + side});
    SetUnitsPerCm(GetUnitsPerCm());
}

void TZkOglCanvas::SetHeight(std::int32_t height) {
    TZKDevice::SetHeight(height);
    SetStdViewport(GetWidth(), GetHeight());
}

void TZkOglCanvas::SetWidth(std::int32_t width) {
    TZKDevice::SetWidth(width);
    SetStdViewport(GetWidth(), GetHeight());
}

void TZkOglCanvas::SetUnitsPerCm(double unitsPerCm) {
    const double old = scale_;
    TZKDevice::SetUnitsPerCm(unitsPerCm);
    const int side = std::max(GetHeight(), GetWidth());
    if (side != 0)
        scale_ = 2.0 * GetUnitsPerCm() / side;
    if (!CheckCurrent())
        return;
    const double factor = scale_ / old;
    if (std::isfinite(factor)) {
        const MatrixModeScope matrix(GL_MODELVIEW);
        glScaled(factor, factor, factor);
    }
    if (IsPainting())
        return;  // a shape scales its own drawing only; what follows is about the view as a whole
    // Scaling the matrix leaves what was translated by the old scale where it was: the origin of the projection base,
    // and the lights, which OpenGL holds in eye coordinates. And a scale next to nothing, or beyond all bounds, took
    // the matrix's numbers with it.
    const bool harmless = std::fabs(factor) > 1e-6 && std::fabs(factor) < 1e6;
    const bool placed = !Equals(TZKDevice::GetprojectionBAse().Origin, Nullxyz) || !lightList().empty();
    if (!harmless || (placed && factor != 1.0)) {
        InBracket(*this, [this] { rebuildModelView(); });
    } else {
        Refresh();
    }
}

void TZkOglCanvas::SetDefaultUnitsPerCM(double unitsPerCm) {
    defaultUnitsPerCM_ = unitsPerCm;
    Refresh();
}

double TZkOglCanvas::GetZoomFactor() const {
    return defaultUnitsPerCM_ == 0 ? 1.0 : TZKDevice::GetUnitsPerCm() / defaultUnitsPerCM_;
}

void TZkOglCanvas::SetZoomFactor(double factor) {
    if (factor != 0)
        SetUnitsPerCm(defaultUnitsPerCM_ * factor);
}

void TZkOglCanvas::SetTextureScale(const TXYZ& scale) {
    const TXYZ old = textureScale_;
    textureScale_ = scale;
    if (!CheckCurrent())
        return;
    const MatrixModeScope matrix(GL_TEXTURE);
    glScaled(scale.x / old.x, scale.y / old.y, scale.z / old.z);
}

// --- the model-view matrix ------------------------------------------------------------------------------------------

Tmatrix TZkOglCanvas::GetOglModelMatrix() const {
    Tmatrix matrix = Identity;
    if (context_ && context_->MakeCurrent())
        glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
    return matrix;
}

void TZkOglCanvas::SetOglModelMatrix(const Tmatrix& matrix) {
    if (!CheckCurrent())
        return;
    const MatrixModeScope mode(GL_MODELVIEW);
    glLoadMatrixd(matrix.data());
    OGLError();
}

Tmatrix TZkOglCanvas::GetModelMatrix() const {
    if (!context_)
        return TZKDevice::GetModelMatrix();
    return Mul(GetOglModelMatrix(), inverse(scale_));
}

void TZkOglCanvas::SetModelMatrix(const Tmatrix& matrix) {
    if (!context_)
        TZKDevice::SetModelMatrix(matrix);
    else
        SetOglModelMatrix(Mul(matrix, scale_));
}

void TZkOglCanvas::OGLTranslate(const TXYZ& by) {
    if (!CheckCurrent())
        return;
    const MatrixModeScope mode(GL_MODELVIEW);
    glTranslated(by.x, by.y, by.z);
}

// --- the projection base --------------------------------------------------------------------------------------------

TBAse TZkOglCanvas::GetprojectionBAse() const {
    if (context_)
        context_->MakeCurrent();
    return TZKDevice::GetprojectionBAse();
}

void TZkOglCanvas::SetProjectionbase(const TBAse& base) {
    const TXYZ oldEye = Auge();
    TZKDevice::SetProjectionbase(base);
    if (!context_)
        return;
    const auto move = [&] {
        const LightKeeper lights(*this);
        OGLTranslate(oldEye);
        TBAse scaled = base;
        if (scale_ != 0) {
            scaled.XAxis = Mul(base.XAxis, scale_);
            scaled.YAxis = Mul(base.YAxis, scale_);
            scaled.ZAxis = Mul(base.ZAxis, scale_);
            scaled.Origin = Nullxyz;  // OGLTranslate brings the origin in, with the eye
        }
        // OpenGL's columns are the axes: a point's eye coordinates are its products with them.
        SetOglModelMatrix({{{scaled.XAxis.x, scaled.YAxis.x, scaled.ZAxis.x, 0},
                            {scaled.XAxis.y, scaled.YAxis.y, scaled.ZAxis.y, 0},
                            {scaled.XAxis.z, scaled.YAxis.z, scaled.ZAxis.z, 0},
                            {-scaled.Origin.x, -scaled.Origin.y, -scaled.Origin.z, 1}}});
        OGLTranslate(Mul(Auge(), -1.0));
    };
    InBracket(*this, move, OGLError);
}

void TZkOglCanvas::rebuildModelView() {
    SetProjectionbase(TZKDevice::GetprojectionBAse());
}

// --- the model transform --------------------------------------------------------------------------------------------

Tmatrix TZkOglCanvas::TrfMAtrix() const {
    return Mulmat(RotationToMatrix3d(drehGerade_, radians(drehwinkel_)), TranslationToMatrix3d(translation_));
}

// The model moves one way, so the frame from which it is seen moves the other.
void TZkOglCanvas::applyModelTransform() {
    const Tmatrix m = TrfMAtrix();
    SetProjectionbase({{-m[3][0], -m[3][1], -m[3][2]},
                       {m[0][0], m[1][0], m[2][0]},
                       {m[0][1], m[1][1], m[2][1]},
                       {m[0][2], m[1][2], m[2][2]}});
}

void TZkOglCanvas::SetTranslation(const TXYZ& by) {
    InBracket(*this, [&] {
        translation_ = by;
        applyModelTransform();
    });
}

void TZkOglCanvas::SetDrehGerade(const TGerade& line) {
    InBracket(*this, [&] {
        drehGerade_ = line;
        applyModelTransform();
    });
}

void TZkOglCanvas::Setdrehwinkel(double degrees) {
    InBracket(*this, [&] {
        drehwinkel_ = degrees;
        SetDrehGerade(drehGerade_);
    });
}

void TZkOglCanvas::Set_translation(const QString& text) {
    SetTranslation(Strtoxyz(text));
}

QString TZkOglCanvas::Get_translation() const {
    return xyztoStr(translation_);
}

void TZkOglCanvas::SetDrehgeradePkt(const QString& text) {
    SetDrehGerade({Strtoxyz(text), drehGerade_.Direction});
}

QString TZkOglCanvas::GetDrehgeradePkt() const {
    return xyztoStr(drehGerade_.Origin);
}

void TZkOglCanvas::SetDrehgeradeRichtung(const QString& text) {
    SetDrehGerade({drehGerade_.Origin, Strtoxyz(text)});
}

QString TZkOglCanvas::GetDrehgeradeRichtung() const {
    return xyztoStr(drehGerade_.Direction);
}

}  // namespace zk
