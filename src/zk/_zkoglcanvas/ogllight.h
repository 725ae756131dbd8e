#pragma once

#include <zk/_zkcomtypes/light.h>
#include <zk/export.h>
#include <zk/host/componentref.h>

#include <QColor>

namespace zk {

class TZkOglCanvas;

/// A light of a canvas. Its number is its place in the canvas's list of lights.
///
/// Position and direction are in world coordinates (centimetres) and stay there whatever the view does; every light is
/// positional. OpenGL's attenuation however counts in units of the view, half the larger side of the control, so that a
/// light reaches as far in the picture at every zoom. While a light is off nothing is passed to OpenGL; switching it on
/// passes everything.
class ZKOGLCANVAS_API TZKOglLight : public Tlight {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef ZkOglCanvas READ readCanvas WRITE writeCanvas)
    Q_PROPERTY(double Attenuation READ GEtattenuation WRITE setattenuation)
    Q_PROPERTY(QColor Ambient READ ambientColor WRITE setAmbientColor)
    Q_PROPERTY(QColor Diffuse READ diffuseColor WRITE setDiffuseColor)
    Q_PROPERTY(QColor Specular READ specularColor WRITE setSpecularColor)
    Q_PROPERTY(bool Enabled READ GetEnabled WRITE SetEnabled)
    Q_PROPERTY(double SpotCutOff READ getSpotCutOff WRITE SetSpotCutOff)
    Q_PROPERTY(double SpotExponent READ getSpotExponent WRITE SetSpotExponent)
    Q_PROPERTY(QString LightPosition READ GetLightPosition WRITE writePosition)
    Q_PROPERTY(QString LightDirection READ GetLightDirection WRITE writeDirection)

  public:
    explicit TZKOglLight(QObject* owner = nullptr);
    ~TZKOglLight() override;

    TZkOglCanvas* GetZKOglCanvas() const { return canvas_; }
    /// Leaves the present canvas and shines in another; with null it is switched off. An error on the way out is shown
    /// as "error destroying light :" and the light's index, and does not stop it.
    void SetZkOglCanvas(TZkOglCanvas* canvas);

    double GEtattenuation() const override;
    void setattenuation(double attenuation) override;
    std::int32_t GEtattenuationMode() const override;
    void setattenuationMode(std::int32_t mode) override;
    TXYZ GetPosition() const override;
    void SetPosition(const TXYZ& position) override;
    /// An earlier form that stores nothing and measures from the origin of the projection base instead of the eye.
    void SetPositionOld(const TXYZ& position);
    void SetDirection(const TXYZ& direction) override;
    TXYZ GetDirection() const override;
    /// Off at first. Switching it on passes everything to OpenGL.
    bool GetEnabled() const { return enabled_; }
    Q_SLOT void SetEnabled(bool enabled) override;
    TColor GetAmbient() const override;
    void SetAmbient(TColor color) override;
    TColor GetDiffuse() const override;
    void SetDiffuse(TColor color) override;
    TColor GetSpecular() const override;
    void SetSpecular(TColor color) override;
    /// OpenGL takes 0 to 128; for what lies outside it gets the nearer end.
    void SetSpotExponent(double exponent) override;
    /// In degrees from the axis; for more than 90 OpenGL gets 180, which is no spot. A spot needs finer triangles, so
    /// the canvas's triangle resolution follows: its default below 90, else 0.
    void SetSpotCutOff(double degrees) override;
    double getSpotExponent() const override;
    double getSpotCutOff() const override;

    /// As text "x/y/z"; a malformed text raises `EConvertError` and changes nothing.
    QString GetLightPosition() const;
    void SetLightPosition(const QString& text);
    /// As text "x/y/z"; a malformed text raises `EConvertError` and changes nothing.
    QString GetLightDirection() const;
    void SetLightDirection(const QString& text);

    /// OpenGL's number of the light, `GL_LIGHT0` + index, or -1.
    std::int32_t GetHandle() const { return handle_; }

    /// Makes the canvas's context current; false without one.
    bool CheckCurrent();
    /// Repaints the canvas.
    void Invalidate();
    /// Passes everything to OpenGL. Position and direction make the way through their text, so they are those that a
    /// form would store.
    void Update();

    void Notification(QObject* component, TOperation operation) override;

    QColor ambientColor() const { return ToQColor(GetAmbient()); }
    void setAmbientColor(const QColor& color) { SetAmbient(FromQColor(color)); }
    QColor diffuseColor() const { return ToQColor(GetDiffuse()); }
    void setDiffuseColor(const QColor& color) { SetDiffuse(FromQColor(color)); }
    QColor specularColor() const { return ToQColor(GetSpecular()); }
    void setSpecularColor(const QColor& color) { SetSpecular(FromQColor(color)); }

  private:
    ComponentRef readCanvas() const;
    void writeCanvas(const ComponentRef& ref);
    void writePosition(const QString& text);
    void writeDirection(const QString& text);

    bool shines() { return enabled_ && CheckCurrent(); }
    void leaveCanvas();
    void pass(unsigned parameter, double value);
    void pass(unsigned parameter, TColor color);
    void passInEyeCoordinates(unsigned parameter, const float* value);

    TZkOglCanvas* canvas_ = nullptr;
};

}  // namespace zk
