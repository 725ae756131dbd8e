#pragma once

#include <zk/_zkcomtypes/attributes.h>
#include <zk/_zkcomtypes/displaylist.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/keptshape.h>
#include <zk/export.h>
#include <zk/host/componentref.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace zk {

/// A group of shapes that a canvas draws under one transform and one set of attributes. What it draws is compiled into
/// an OpenGL display list, and replayed until something in it changes.
///
/// The transform lies outside the list: moving a scene compiles nothing. The setters of the transform repaint at once.
/// A scene belongs to at most one canvas, which does not own it, and does not own its shapes.
///
/// **Cost.** What its shapes draw is kept from one compilation to the next where nobody but this library draws them
/// (see `TCustomShape`), each in a list of its own that the scene's list calls: to compile a scene of which one shape
/// has changed is to draw that shape and to call the others.
///
/// During a pick the shapes are played one by one instead of through the list, and only those that can reach the
/// pick's clip planes (user code is always asked), without compiling and without the
/// canvas's compile events: some drivers lose or crash on primitives of several kinds in a list that is played in
/// selection mode. `OnPlay` handlers are therefore called for picks, too (`TZkOglCanvas::IsSelecting`).
class ZKOGLCANVAS_API TZKOglScene : public TDisplayList {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef ZkOglCanvas READ readCanvas WRITE writeCanvas)
    Q_PROPERTY(bool Visible READ GetVisible WRITE SetVisible)
    Q_PROPERTY(QString TransformBy READ Get_translation WRITE writeTranslation)
    Q_PROPERTY(double RotateBy READ Getdrehwinkel WRITE Setdrehwinkel)
    Q_PROPERTY(QString RotationPoint READ GetDrehgeradePkt WRITE writeRotationPoint)
    Q_PROPERTY(QString RotationLine READ GetDrehgeradeRichtung WRITE writeRotationLine)
    Q_PROPERTY(zk::Tattributes* Attributes READ getAttributes WRITE setAttributes)

  public:
    explicit TZKOglScene(QObject* owner = nullptr);
    ~TZKOglScene() override;

    TZkOglCanvas* GetZkOglCanvas() const { return canvas_; }
    /// Leaves the present canvas and joins another (or none) at the end of its scenes.
    void SetZkOglCanvas(TZkOglCanvas* canvas);

    /// Unlike the shapes' flag this one repaints at once and compiles every scene of the canvas again.
    Q_SLOT void SetVisible(bool visible) override;
    /// Draws the scene; the canvas calls it. A scene that is being played is not played again inside itself.
    void Play() override;
    /// What the list holds is out of date; the next repaint compiles it again. Does not repaint.
    void Invalidate() override;
    /// `Invalidate`, and one repaint. The attributes call it when they change.
    void Changed(QObject* sender);
    /// Repaints and compiles every scene of the canvas again.
    void DoUpdateNow();
    void Notification(QObject* component, TOperation operation) override;
    /// Repaints if the scene is not compiled.
    void Loaded() override;

    /// True when the list holds what the scene shows.
    bool IsCompiled() const { return compiled_; }
    /// OpenGL's name of the list, 0 for none.
    unsigned ListName() const { return list_; }

    /// A shape is somewhere else or has another form: where shapes are is found out anew at the next compilation, and
    /// until then picks play them all. The shapes call it; `Invalidate` implies it.
    void ForgetBounds() { planIsCurrent_ = false; }

    /// Lets go of all that is kept of what shapes drew; the next repaint compiles the scene. Needs the context current.
    void ForgetDrawings();

    Tattributes* getAttributes() const { return attributes_.get(); }
    /// Takes the values of `attributes` over; the object itself stays the caller's.
    void setAttributes(Tattributes* attributes);

    /// Rotation, then translation.
    Tmatrix TrfMAtrix() const;
    /// By how much it is moved, in centimetres.
    TXYZ GetTranslation() const { return translation_; }
    void SetTranslation(const TXYZ& by);
    /// The line that it is turned about; its direction need not be of unit length.
    TGerade GetDrehGerade() const { return drehGerade_; }
    void SetDrehGerade(const TGerade& line);
    /// In degrees about the rotation line.
    Q_SLOT void Setdrehwinkel(double degrees);
    double Getdrehwinkel() const { return drehwinkel_; }
    /// As text "x/y/z"; a malformed text raises `EConvertError` and changes nothing.
    void Set_translation(const QString& text);
    QString Get_translation() const;
    /// The point of the rotation line as text "x/y/z"; its direction stays.
    void SetDrehgeradePkt(const QString& text);
    QString GetDrehgeradePkt() const;
    /// The direction of the rotation line as text "x/y/z"; its point stays.
    void SetDrehgeradeRichtung(const QString& text);
    QString GetDrehgeradeRichtung() const;

  protected:
    void PlayShape(std::size_t index, TZkShape& shape) override;
    std::size_t NextToPlay(std::size_t index, std::size_t count) override;

  private:
    struct Planned;
    struct Group;
    struct PickVolume;

    ComponentRef readCanvas() const;
    void writeCanvas(const ComponentRef& ref);
    void writeTranslation(const QString& text);
    void writeRotationPoint(const QString& text);
    void writeRotationLine(const QString& text);

    void compileAndPlay();
    void deleteLists(TZkOglCanvas* canvas);
    void plan();
    bool drawsHere(const TZkShape& shape) const;
    void lookAtShapes();
    TTextureKind pictureOf(const TTexture& texture, const TTextureKind& before);
    void regroup();
    bool canStay(const Group& group, std::size_t first) const;
    std::size_t newGroup(std::size_t first);
    bool playGroup(std::size_t index);
    void bringBackAttributes();
    void pickShape(std::size_t index, TZkShape& shape);

    TZkOglCanvas* canvas_ = nullptr;
    unsigned list_ = 0;
    bool compiled_ = false;
    bool empty_ = true;  // nothing was ever compiled into the list: a handler may have refused
    TXYZ translation_{0, 0, 0};
    TGerade drehGerade_{{0, 0, 0}, {0, 0, 1}};
    double drehwinkel_ = 0;
    std::unique_ptr<Tattributes> attributes_;

    std::vector<Planned> plan_;  // what the last compilation made of each entry of the list of shapes
    std::vector<Group> groups_;
    bool planIsCurrent_ = false;
    bool forgotten_ = false;  // `ForgetDrawings` since the compilation began

    // While the shapes are played:
    bool playing_ = false;
    bool compiling_ = false;
    bool userCodeRan_ = false;        // anything may be other than it was planned
    bool attributesChanged_ = false;  // groups leave their attributes behind
    TAttributesKind inForce_;         // what shapes with `ParentAttributes` draw with
    FaceStyle faces_;                 // how faces are drawn
    std::size_t playedUntil_ = 0;     // the entries before this one have been drawn with their group
    std::unique_ptr<PickVolume> pick_;
};

}  // namespace zk
