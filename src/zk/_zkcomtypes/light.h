#pragma once

#include <zk/_zkcomtypes/glvalues.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>
#include <zk/host/color.h>
#include <zk/host/component.h>

#include <functional>

namespace zk {

class Tlight;

/// A kind of light: what a list of lights is made for.
struct TLightClass {
    QString name;  ///< the class name
    /// Makes a light of the kind; `owner` (may be null) deletes it.
    std::function<Tlight*(QObject* owner)> create;
};

/// The parameters of one light. This class stores them and does nothing else: no checks, no notification. A light bound
/// to OpenGL overrides the setters and publishes properties.
///
/// A new light is off, sits at (0, 0, 2), shines along (0, 0, −1), is white, has no spot (cut-off 180 degrees) and spot
/// exponent 1, which is on purpose not OpenGL's 0.
class ZKCOMTYPES_API Tlight : public TComponent {
    Q_OBJECT
  public:
    explicit Tlight(QObject* owner = nullptr);
    ~Tlight() override;

    /// A light has one attenuation factor, and a mode that says which of OpenGL's three it is. At start it is 1.0 and
    /// linear (`glvalue::LinearAttenuation`).
    virtual double GEtattenuation() const;
    virtual void setattenuation(double Value);
    /// Which of OpenGL's three the factor is: `glvalue::ConstantAttenuation`, `LinearAttenuation` or
    /// `QuadraticAttenuation`.
    virtual std::int32_t GEtattenuationMode() const;
    virtual void setattenuationMode(std::int32_t Value);

    /// World coordinates.
    virtual TXYZ GetPosition() const;
    virtual void SetPosition(const TXYZ& Value);
    /// Where a spot shines, in world coordinates.
    virtual void SetDirection(const TXYZ& Value);
    virtual TXYZ GetDirection() const;

    /// Switches the light on or off.
    virtual void SetEnabled(bool Value);

    /// What it adds to every surface, wherever that is turned.
    virtual TColor GetAmbient() const;
    virtual void SetAmbient(TColor Value);
    /// What surfaces that face the light scatter.
    virtual TColor GetDiffuse() const;
    virtual void SetDiffuse(TColor Value);
    /// The colour of highlights.
    virtual TColor GetSpecular() const;
    virtual void SetSpecular(TColor Value);

    /// How much the light of a spot falls off from its axis outwards; 0 is even.
    virtual void SetSpotExponent(double Value);
    /// Degrees.
    virtual void SetSpotCutOff(double Value);
    virtual double getSpotExponent() const;
    virtual double getSpotCutOff() const;

    /// The number under which OpenGL knows the light; −1 is none. Given by the canvas.
    void SetHandle(std::int32_t Value);

    /// The kind "Tlight".
    static const TLightClass& Class();

  protected:
    TXYZ position_{0, 0, 2};
    TXYZ direction_{0, 0, -1};
    bool enabled_ = false;
    std::int32_t handle_ = -1;
    double spotExponent_ = 1.0;
    double spotCutOff_ = 180.0;
    TColor ambient_ = 0xFFFFFF;
    TColor diffuse_ = 0xFFFFFF;
    TColor specular_ = 0xFFFFFF;
    double attenuation_ = 1.0;
    std::int32_t attenuationMode_ = std::int32_t(glvalue::LinearAttenuation);
};

}  // namespace zk
