#pragma once

#include <zk/_zkcomtypes/material.h>
#include <zk/export.h>

#include <QPointer>

namespace zk {

class TZkOglCanvas;

/// A material that is OpenGL's current one: every setter passes its value on, and the colours are read back from
/// OpenGL.
///
/// It acts on the context that is current and makes none current: whoever sets a material is about to draw with it.
/// Colours go to the material's face (`GLFace`).
class ZKOGLCANVAS_API TOglMaterial : public Tmaterial {
    Q_OBJECT
  public:
    /// A material without a canvas; see `SetParent`.
    TOglMaterial();

    /// Makes the values of `kind` OpenGL's current material, without an object; only those that differ from `before`,
    /// if it is known what the material of that face was.
    static void Pass(const Tmaterialkind& kind, const Tmaterialkind* before = nullptr);

    /// The canvas; one that is not null sets the defaults: specular and ambient white, emission and diffuse grey,
    /// shininess 0.1, opaque, for the front.
    void SetParent(TZkOglCanvas* canvas);

    double GetTranslucent() const override;
    /// The alpha of the diffuse colour, from 0 (invisible) to 1 (opaque).
    void SetTranslucent(double translucent) override;
    TColor GetAmbient() const override;
    void SetAmbient(TColor color) override;
    TColor GetDiffuse() const override;
    void SetDiffuse(TColor color) override;
    TColor GetSpecular() const override;
    void SetSpecular(TColor color) override;
    TColor GetEmission() const override;
    void SetEmission(TColor color) override;
    double GetShininess() const override;
    /// Goes to OpenGL only (0 to 128, anything else is OpenGL's error); the object itself stores no shininess, and
    /// nothing is told of the change.
    void SetShininess(double shininess) override;

  private:
    TColor ask(unsigned parameter) const;
    void pass(unsigned parameter, TColor color, double alpha) const;

    QPointer<QObject> canvas_;
};

}  // namespace zk
