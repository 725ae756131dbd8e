#pragma once

#include <zk/_zkcomtypes/enums.h>
#include <zk/_zkcomtypes/graphicsobject.h>
#include <zk/_zkcomtypes/materialkind.h>
#include <zk/export.h>

#include <QColor>

namespace zk {

/// The material of a surface.
///
/// A new one has a white ambient ($FFFFFF) and grey ($808080) diffuse, specular and emitted colour, shininess 0.2, face
/// `glfront`, translucency 1. Nothing is range-checked. Every setter stores, resets `DefKind` to `NoDefMat` and
/// notifies, without comparing with the old value.
///
/// Colours are `TColor` here and QColor to Qt; a system colour reads as QColor with the value that it has then.
class ZKCOMTYPES_API Tmaterial : public TZkgraphicsobject {
    Q_OBJECT
    Q_PROPERTY(QColor Ambient READ ambientColor WRITE setAmbientColor)
    Q_PROPERTY(QColor Diffuse READ diffuseColor WRITE setDiffuseColor)
    Q_PROPERTY(QColor Specular READ specularColor WRITE setSpecularColor)
    Q_PROPERTY(QColor Emission READ emissionColor WRITE setEmissionColor)
    Q_PROPERTY(double Shininess READ GetShininess WRITE SetShininess)
    Q_PROPERTY(double Translucent READ GetTranslucent WRITE SetTranslucent)
    Q_PROPERTY(zk::TDefmatKind DefKind READ GetDefKind WRITE SetMatKind)
  public:
    explicit Tmaterial(QObject* parent = nullptr);

    /// 1 is opaque, 0 invisible.
    virtual double GetTranslucent() const;
    virtual void SetTranslucent(double Value);
    /// The side of faces that the material is for.
    virtual TMFace GetFace() const;
    virtual void SetFace(TMFace Value);
    /// How it answers to light from everywhere.
    virtual TColor GetAmbient() const;
    virtual void SetAmbient(TColor Value);
    /// The colour that it scatters in the light.
    virtual TColor GetDiffuse() const;
    virtual void SetDiffuse(TColor Value);
    /// The colour of its highlights.
    virtual TColor GetSpecular() const;
    virtual void SetSpecular(TColor Value);
    /// The colour in which it shines by itself, without any light.
    virtual TColor GetEmission() const;
    virtual void SetEmission(TColor Value);
    /// How small and sharp highlights are: 0 to 128 for OpenGL.
    virtual double GetShininess() const;
    virtual void SetShininess(double Value);

    /// OpenGL's number of the face (`glvalue::Front`, `Back`, `FrontAndBack`); 0 for a stored value that is none.
    std::uint32_t GLFace() const;

    /// The whole state, read through the virtual getters.
    Tmaterialkind GetMAterialKind() const;

    /// Sets face, ambient, diffuse, specular, emission, shininess and translucency in this order through the virtual
    /// setters, then notifies once more: eight events unless a batch is open.
    void SetMAterialKind(const Tmaterialkind& Kind);

    /// Applies a preset and notifies. Deliberately, `matLtGray` applies `maRed` and `matRed` applies `maLtGray`; forms
    /// rely on it. Does nothing when `Kind` is the stored kind; `NoDefMat` and unknown kinds apply no preset.
    ///
    /// Since every setter resets the kind, it reads `NoDefMat` again when a preset has been applied: writing it is a
    /// trigger, and writing the same kind twice applies the preset twice.
    void SetMatKind(TDefmatKind Kind);
    /// The preset that was applied last, or `NoDefMat` after any other setter; see `SetMatKind`.
    TDefmatKind GetDefKind() const { return defKind_; }

    QColor ambientColor() const { return ToQColor(GetAmbient()); }
    void setAmbientColor(const QColor& color) { SetAmbient(FromQColor(color)); }
    QColor diffuseColor() const { return ToQColor(GetDiffuse()); }
    void setDiffuseColor(const QColor& color) { SetDiffuse(FromQColor(color)); }
    QColor specularColor() const { return ToQColor(GetSpecular()); }
    void setSpecularColor(const QColor& color) { SetSpecular(FromQColor(color)); }
    QColor emissionColor() const { return ToQColor(GetEmission()); }
    void setEmissionColor(const QColor& color) { SetEmission(FromQColor(color)); }

  protected:
    TColor ambient_ = 0;
    TColor diffuse_ = 0;
    TColor specular_ = 0;
    TColor emission_ = 0;
    double shininess_ = 0;
    TMFace face_ = glfront;
    double translucent_ = 0;
    TDefmatKind defKind_ = NoDefMat;

  private:
    /// What every setter ends in.
    void stored();
};

}  // namespace zk
