#pragma once

#include <zk/_zkcomtypes/attributes.h>
#include <zk/_zkcomtypes/shape.h>
#include <zk/_zkoglcanvas/hit.h>
#include <zk/_zkoglcanvas/keptshape.h>
#include <zk/export.h>
#include <zk/host/componentref.h>

#include <memory>

namespace zk {

class TZkOglCanvas;

/// The base of every solid in a scene: a place, attributes, visibility and mouse events around a geometry that `Doplay`
/// draws.
///
/// **Place.** The geometry is scaled by `Scale`, turned by `RotateBy` degrees about the line through `RotationPoint`
/// along `RotationLine`, then moved by `TransformBy` (centimetres). The turn is OpenGL's: counter-clockwise for a
/// viewer that the line points at. No matrix is saved: after drawing the same steps are undone, except that the two
/// moves by the `RotationPoint` are undone in each other's order. With a rotation point off the origin that leaves a
/// remainder, which the shapes after this one in the scene inherit; a scene of shapes that turn about points of their
/// own is laid out with that in mind.
///
/// **Changes.** Every setter marks the scene and repaints, unless a `SetChanging` bracket is open or a form is being
/// loaded.
///
/// **Cost.** What a shape of this library draws is kept from one compilation of its scene to the next, until the shape
/// changes. A shape with a handler for `OnPlay`, one of a class that overrides `Doplay` or `Play`, and a copy
/// (`TZKOglRefShape`) are played each time.
class ZKOGLTOOLS_API TCustomShape : public TZkShape, public HitTarget, public KeptShape {
    Q_OBJECT
    Q_PROPERTY(zk::Tattributes* Attributes READ getAttributes WRITE setAttributes)
    Q_PROPERTY(zk::ComponentRef Scene READ readScene WRITE writeScene)
    Q_PROPERTY(QString TransformBy READ Get_translation WRITE writeTranslation)
    Q_PROPERTY(double RotateBy READ Getdrehwinkel WRITE Setdrehwinkel)
    Q_PROPERTY(QString RotationPoint READ GetDrehgeradePkt WRITE writeRotationPoint)
    Q_PROPERTY(QString RotationLine READ GetDrehgeradeRichtung WRITE writeRotationLine)
    Q_PROPERTY(double Scale READ GetScale WRITE SetScale)
    Q_PROPERTY(bool Visible READ GetVisible WRITE SetVisible)
    Q_PROPERTY(bool ParentAttributes READ GetParentAttributes WRITE SetParentAttributes)
    Q_PROPERTY(bool Nohit READ GetNohit WRITE SetNohit)

  public:
    explicit TCustomShape(QObject* owner = nullptr);
    ~TCustomShape() override;

    /// The canvas of the shape's scene, or null.
    TZkOglCanvas* GetZkOglcanvas() const;
    /// Makes the canvas's context current; false without one.
    bool checkCurrent() const;

    /// Joins a scene at its end, leaving the present one; null leaves only.
    void SetDisplayList(TDisplayList* scene) override;

    /// Marks the scene for compilation and repaints its canvas; not within a `SetChanging` bracket, nor while the
    /// component is loaded, stored or destroyed.
    void Invalidate();
    /// `Invalidate`, for the attributes to call.
    void Changed(QObject* sender);
    /// Opens (true) or closes (false) a bracket; closing the outermost one invalidates.
    void SetChanging(bool changing);

    Tattributes* getAttributes() const { return attributes_.get(); }
    /// Takes the values of `source` over; the object itself stays the caller's.
    void setAttributes(Tattributes* source);

    /// By how much it is moved, in centimetres.
    TXYZ GetTranslation() const { return translation_; }
    void Settranslation(const TXYZ& by);
    /// The line that it is turned about; its direction need not be of unit length.
    TGerade GetDrehGerade() const { return drehGerade_; }
    void SetDrehGerade(const TGerade& line);
    /// In degrees.
    Q_SLOT void Setdrehwinkel(double degrees);
    double Getdrehwinkel() const { return drehwinkel_; }
    /// As text "x/y/z"; a malformed text raises `EConvertError` and changes nothing. Point and direction of the
    /// rotation line are set apart: setting one keeps the other.
    void Set_translation(const QString& text);
    QString Get_translation() const;
    /// The point of the rotation line as text "x/y/z"; its direction stays.
    void SetDrehgeradePkt(const QString& text);
    QString GetDrehgeradePkt() const;
    /// The direction of the rotation line as text "x/y/z"; its point stays.
    void SetDrehgeradeRichtung(const QString& text);
    QString GetDrehgeradeRichtung() const;

    double GetScale() const { return scale_; }
    /// What the canvas's units are multiplied by while the geometry is drawn; 0, or a magnitude of at most 1e-5, leaves
    /// them alone. A negative scale mirrors the geometry, fronts and backs change places.
    Q_SLOT void SetScale(double scale);
    /// Whether the shape is drawn; off at first.
    bool GetVisible() const { return visible_; }
    Q_SLOT void SetVisible(bool visible);
    bool GetParentAttributes() const { return parentAttributes_; }
    /// True: draws with the attributes that are in force on the canvas, and leaves them alone.
    void SetParentAttributes(bool value);
    bool GetNohit() const { return nohit_; }
    /// True: a pick does not see the shape, and sees what lies behind it.
    void SetNohit(bool nohit) { nohit_ = nohit; }

    /// Repaints if the scene waits for its compilation, so that shapes that are loaded into a scene that is already
    /// there show, all of them with one repaint.
    void Loaded() override;

    /// Draws the shape into the current context; the scene calls it. Without a canvas nothing is drawn.
    void Play() override;

    /// The geometry, in the shape's own frame.
    virtual void Doplay();

    bool CanBeKept() const override;
    /// The shape's own `GetVisible`.
    bool IsShown() const override { return visible_; }
    const Tattributes* KeptAttributes() const override { return parentAttributes_ ? nullptr : attributes_.get(); }
    Drawn DrawKept(const FaceStyle& style) override;
    bool Remainder(TXYZ& by) const override;

    /// Each tells the event of the same name, with this shape as sender.
    void MouseDown(Qt::MouseButton button, TShiftState shift, int x, int y) override;
    /// As `MouseDown`.
    void MouseMove(TShiftState shift, int x, int y) override;
    /// As `MouseDown`.
    void MouseUp(Qt::MouseButton button, TShiftState shift, int x, int y) override;

  Q_SIGNALS:
    /// A button went down over the shape; `x` and `y` in pixels of the control's client area.
    void OnMouseDown(QObject* sender, Qt::MouseButton button, zk::TShiftState shift, int x, int y);
    /// The pointer has moved over the shape; pixels as in `OnMouseDown`.
    void OnMouseMove(QObject* sender, zk::TShiftState shift, int x, int y);
    /// A button was let go over the shape; pixels as in `OnMouseDown`.
    void OnMouseUp(QObject* sender, Qt::MouseButton button, zk::TShiftState shift, int x, int y);

  protected:
    /// True if the shape is of this very class, and `Doplay` draws from the shape's own values alone, through the
    /// canvas.
    virtual bool DrawsOnlyItself() const { return false; }

    /// The shape draws something else from now on. Every `Invalidate` implies it.
    void DropDrawing() { ++Kept().Version; }

    /// Plays `shape` for a shape that draws it as its own geometry: visible as told, and never named for picking, so
    /// that a click on it is a click on the shape that is being played. `shape` is left as it was.
    static void PlayCopy(TCustomShape& shape, bool visible);

  private:
    ComponentRef readScene() const;
    void writeScene(const ComponentRef& ref);
    void writeTranslation(const QString& text);
    void writeRotationPoint(const QString& text);
    void writeRotationLine(const QString& text);

    void mark();
    void showCopy(bool visible);

    TXYZ translation_{0, 0, 0};
    TGerade drehGerade_{{0, 0, 0}, {0, 0, 1}};
    double drehwinkel_ = 0;
    std::unique_ptr<Tattributes> attributes_;
    bool visible_ = false;
    bool parentAttributes_ = false;
    double scale_ = 1.0;
    bool nohit_ = false;
    bool playedAsCopy_ = false;
    int changeCount_ = 0;
    bool changing_ = false;
};

}  // namespace zk
