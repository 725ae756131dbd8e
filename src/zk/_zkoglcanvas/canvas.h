#pragma once

#include <zk/_zkdevice/device.h>
#include <zk/_zkoglcanvas/hit.h>
#include <zk/_zkoglcanvas/keptshape.h>
#include <zk/export.h>
#include <zk/host/componentref.h>
#include <zk/host/glsurface.h>

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zk {

class ControlCanvas;
class DrawingLayer;
class RenderContext;
class TextureObjects;
class TZKOglScene;
class TZkCanvas;

/// A projection device that draws with OpenGL into a control: it owns the control's rendering context and the viewing
/// set-up, plays its scenes at every repaint and finds what lies under a pixel.
///
/// ```
/// auto* canvas = new zk::TZkOglCanvas(form);
/// canvas->SetWinControl(control);      // any QWidget; a TZKOglControl also hands on its mouse events
/// scene->SetZkOglCanvas(canvas);
/// canvas->SetBlickWinkel(30);          // degrees; a perspective view
/// ```
///
/// **Units.** Sizes and pixels are Qt's device-independent pixels of the control, x to the right, y down; on a display
/// with a pixel ratio of 2 OpenGL draws four times as many of its own pixels and the picture is the same size, but
/// finer. World coordinates are centimetres, `UnitsPerCM` pixels each at zoom 1; the viewer looks along -z, x to the
/// right, y up. The viewport is a square of the larger side of the control, centred; what lies outside the control is
/// cut off. `WtoPixel` says where a point is seen; docs/architecture.md lists the few views where it is elsewhere.
///
/// **Repaints.** Every setter that changes the picture repaints at once, or when the outermost `SetChanging` bracket
/// closes. Nothing is painted while the window is not exposed; the exposure paints it. The first repaint in a new size
/// draws twice, as some drivers take notice of the size only when the first picture is shown.
///
/// **Context.** There is none until `WinControl` is set and again after the control has gone. Without one (also where
/// the window system refuses OpenGL; the control then says so in words) setters only store. A context that is lost with
/// its window comes back with it. All on the GUI thread.
class ZKOGLCANVAS_API TZkOglCanvas : public TZKDevice {
    Q_OBJECT
    Q_PROPERTY(zk::ComponentRef WinControl READ readWinControl WRITE writeWinControl)
    Q_PROPERTY(double UnitsPerCM READ GetUnitsPerCm WRITE SetUnitsPerCm)
    Q_PROPERTY(double DefaultTriangleResolution READ GetDefaultTriangleResolution WRITE writeDefaultResolution)
    Q_PROPERTY(bool AutoCompile READ GetAutoCompile WRITE SetAutoCompile)
    Q_PROPERTY(bool LightModelTwoSided READ GetLightModelTwoSided WRITE SetLightModelTwoSided)
    Q_PROPERTY(QColor BackgroundColor READ GetBackgroundQColor WRITE SetBackgroundQColor)
    Q_PROPERTY(double ZoomFactor READ GetZoomFactor WRITE writeZoomFactor)
    Q_PROPERTY(double DefaultUnitsPerCM READ GetDefaultUnitsPerCM WRITE writeDefaultUnitsPerCM)
    Q_PROPERTY(bool SelectEnabled READ GetSelectEnabled WRITE SetSelectEnabled)
    Q_PROPERTY(double PointOfView READ GetBlickwinkel WRITE SetBlickWinkel)
    Q_PROPERTY(QString TransformBy READ Get_translation WRITE writeTranslation)
    Q_PROPERTY(double RotateBy READ Getdrehwinkel WRITE Setdrehwinkel)
    Q_PROPERTY(QString RotationPoint READ GetDrehgeradePkt WRITE writeRotationPoint)
    Q_PROPERTY(QString RotationLine READ GetDrehgeradeRichtung WRITE writeRotationLine)

  public:
    explicit TZkOglCanvas(QObject* owner = nullptr);
    ~TZkOglCanvas() override;

    // --- the control and its context (canvas.cpp) ---

    QWidget* GetWinControl() const { return winControl_; }
    /// Binds the canvas to a control, or unbinds it (null). The control is not owned; when it goes, the canvas unbinds.
    void SetWinControl(QWidget* control);

    /// The surface that is drawn into, or null.
    GlSurface* Getdc() const { return surface_; }
    /// Replaces the surface: the rendering context of the old one goes, one for the new one is made and set up. Nothing
    /// happens when it is the same.
    void Setdc(GlSurface* surface);

    /// The rendering context, or null.
    RenderContext* Context() const { return context_.get(); }
    bool HasContext() const { return context_ != nullptr; }
    /// The pictures that the rendering context holds; null without one.
    TextureObjects* Textures() const { return textures_.get(); }

    /// Makes the rendering context current, if there is one, unless it is already. Everything that calls OpenGL for
    /// this canvas calls it first. True when there is a context.
    bool CheckCurrent();
    /// The same without an answer.
    void CheckCurrent1() { CheckCurrent(); }

    /// OpenGL's matrix mode and render mode. Without a context the getters give 0 and, as with every call to OpenGL
    /// here, the setters do nothing: the context of another canvas may be the current one.
    int GetmatrixMode();
    void SetmatrixMode(int mode);
    /// OpenGL's render mode; see `GetmatrixMode`.
    int GetRenderMode();
    void SetRenderMode(int mode);

    /// Repaints if there is a context, nothing is being changed, loaded or painted.
    void Refresh() override;
    void SetChanging(bool changing) override;
    /// A repaint in two steps: the first shows the scenes, the second shows them together with what was painted into
    /// the current context in between.
    void BeginPaint() override;
    /// The second step of a repaint; see `BeginPaint`.
    void EndPaint() override;
    void Notification(QObject* component, TOperation operation) override;

    TColor GetColor() const { return backgroundColor_; }
    /// The background; a different colour repaints.
    void SetColor(TColor color);
    /// What GetColor() gives, for Qt.
    QColor GetBackgroundQColor() const { return ToQColor(backgroundColor_); }
    void SetBackgroundQColor(const QColor& color) { SetColor(FromQColor(color)); }

    bool GetSelectEnabled() const { return selectEnabled_; }
    /// Whether the control looks for the shape under the pointer on every mouse event; on at first.
    Q_SLOT void SetSelectEnabled(bool enabled) { selectEnabled_ = enabled; }

    // --- pictures without a window (canvas_picture.cpp) ---

    /// The scenes as a control of `size` pixels would show them on a display of `pixelRatio` pixels to the
    /// device-independent one: `Picture({4 * width, 4 * height}, 4)` is the picture of a control of `width` x `height`
    /// four times as fine, and without the ratio a larger size shows more of the world. May be larger than the screen;
    /// for saving and for printing.
    ///
    /// The window, if there is one, stays as it is. A canvas without a control draws into one that is never shown, for
    /// which the window system is needed all the same. What is drawn in 2D over the picture is not in it; lines and
    /// points are as many pixels wide as on the screen. Handlers run as in a repaint.
    ///
    /// Null (`QImage::isNull`) for an empty size or a ratio that is not positive, within a repaint or a pick, without
    /// OpenGL or framebuffer objects in the driver, and where there is no memory: the picture takes 4 bytes for each
    /// pixel.
    QImage Picture(const QSize& size, double pixelRatio = 1);

    // --- scenes (canvas.cpp) ---

    /// The scenes in the order in which they are played.
    std::vector<TZKOglScene*> Scenes() const { return scenes_; }
    /// Called by a scene that is given this canvas, and by one that is taken away.
    void AddDisplayList(TZKOglScene* scene);
    /// Takes the scene at `index` out; nothing outside the list.
    void DeleteDisplayList(int index);
    /// The scene's place in the order of playing, or -1.
    int IndexOfDisplayList(const TZKOglScene* scene) const;

    bool GetAutoCompile() const { return autoCompile_; }
    /// On (at first): a scene is compiled once and replayed until it changes. Off: compiled anew at every repaint.
    void SetAutoCompile(bool on) { autoCompile_ = on; }
    /// Called by a scene around its compilation. Returns whether it may compile.
    bool AskBeforeCompile();
    /// Raises `OnAfterCompile`.
    void TellAfterCompile();

    // --- viewing (canvas_viewing.cpp) ---

    /// 0 is parallel, 1 perspective with the view angle; any other mode leaves OpenGL's projection the identity.
    void SetprojectionMode(int mode);
    int GetprojectionMode() const { return projectionMode_; }
    /// Sets OpenGL's projection to the pyramid of `glFrustum`, until the view is set again. Nothing without a context.
    void Frustum(double left, double right, double bottom, double top, double near, double far);

    double GetBlickwinkel() const override;
    /// The view angle in degrees, from the axis to the edge of the view. Above 45 nothing changes; below 2 it becomes
    /// 0, the parallel projection. Lights keep their place in the world.
    Q_SLOT void SetBlickWinkel(double degrees) override;
    /// An earlier form of the setter that stores nothing and moves no light.
    void SetBlickWinkelOld(double degrees);
    /// The distance of the eye from the projection plane in centimetres; 0 in the parallel projection. Negative, with
    /// the eye behind the plane, while front faces are counter-clockwise.
    double AugeAbstand() const override;

    /// The viewport for a control of that size in pixels: a square of the larger side, centred.
    void SetStdViewport(int width, int height);
    /// In device-independent pixels; the rectangle's top is OpenGL's lower edge.
    void SetViewport(const TRect& viewport);
    TRect getViewPort();
    void SetHeight(std::int32_t height) override;
    void SetWidth(std::int32_t width) override;

    /// What model coordinates are multiplied by so that a centimetre takes `UnitsPerCM` pixels of the viewport.
    double GetScale() const { return scale_; }
    /// Pixels per centimetre. 0 shows nothing until another value comes; a negative value mirrors the picture.
    void SetUnitsPerCm(double unitsPerCm) override;
    /// The pixels per centimetre that count as zoom 1.
    double GetDefaultUnitsPerCM() const { return defaultUnitsPerCM_; }
    void SetDefaultUnitsPerCM(double unitsPerCm);
    /// `UnitsPerCM` / `DefaultUnitsPerCM`, or 1 where the latter is 0.
    double GetZoomFactor() const;
    /// 0 is ignored.
    Q_SLOT void SetZoomFactor(double factor);

    /// What texture coordinates are multiplied by, along each axis; 1 at first. Must not be 0.
    TXYZ getTextureScale() const { return textureScale_; }
    void SetTextureScale(const TXYZ& scale);

    TBAse GetprojectionBAse() const override;
    /// The frame that the viewer looks at: its axes are the directions to the right, up and towards the viewer, its
    /// origin the middle of the picture. Lights keep their place in the world.
    void SetProjectionbase(const TBAse& base) override;

    /// OpenGL's model-view matrix as it is, and without the scale. Without a context the identity and the stored
    /// matrix.
    Tmatrix GetOglModelMatrix() const;
    void SetOglModelMatrix(const Tmatrix& matrix);
    Tmatrix GetModelMatrix() const override;
    void SetModelMatrix(const Tmatrix& matrix) override;
    /// Multiplies the model-view matrix by a translation, in centimetres.
    void OGLTranslate(const TXYZ& by);

    /// The rotation, then the translation, of the model.
    Tmatrix TrfMAtrix() const;
    /// Moves the picture of the model by `by` centimetres.
    void SetTranslation(const TXYZ& by);
    TXYZ GetTranslation() const { return translation_; }
    /// The line that the model is turned about, in world coordinates; its direction need not be of unit length.
    void SetDrehGerade(const TGerade& line);
    TGerade GetDrehGerade() const { return drehGerade_; }
    /// Turns the model about the rotation line, in degrees; see `RotationToMatrix3d` for the sense.
    Q_SLOT void Setdrehwinkel(double degrees);
    double Getdrehwinkel() const { return drehwinkel_; }
    /// The same as text "x/y/z"; a malformed text raises `EConvertError` and changes nothing.
    void Set_translation(const QString& text);
    QString Get_translation() const;
    /// The point of the rotation line as text "x/y/z"; its direction stays.
    void SetDrehgeradePkt(const QString& text);
    QString GetDrehgeradePkt() const;
    /// The direction of the rotation line as text "x/y/z"; its point stays.
    void SetDrehgeradeRichtung(const QString& text);
    QString GetDrehgeradeRichtung() const;

    // --- picking (canvas_picking.cpp) ---

    /// Finds what lies within 0.1 cm of the pixel and fills the hit list. The picture on the screen does not change.
    /// True when there was something. False without a context, and from within a repaint.
    bool Select(int x, int y);
    /// The same for a position between pixels, as a display with a pixel ratio above 1 reports it.
    bool SelectAt(const QPointF& position);
    /// The hit object of the solid that contains a point of model space (where scenes are placed; the canvas's own
    /// transform plays no part), or -1. A needle of 0.0002 cm runs from the point 1 km down the z axis and another one
    /// up; a shape contains the point if both leave it once more often than they enter it.
    ///
    /// Solids are the shapes that are closed: boxes, spheres, cylinders and cones in any place, turned, scaled and
    /// mirrored; `TZKOglShape`s whose faces close. A plane contains nothing. Of solids inside each other an odd number
    /// must contain the point, and the one whose far side is farthest down, the outermost, is the answer; with an even
    /// number it is -1. Points within a few needle widths of a surface may fall on either side of it, and so may, in
    /// solids of more than 1000 cm, those within a millionth of their size.
    ///
    /// The shapes are played four times as in a pick, or up to twelve where the first answer is not clear. Afterwards
    /// `Hits` has what the lower needle met, and the clip planes 0 to 4 are off.
    int InsideOf(const TXYZ& point);
    /// Repaints so that only what lies within `halfWidth` (in centimetres of the projection plane) of a pixel is seen,
    /// in a column or in the pyramid from the eye. The clip planes 0 to 3 stay on, so later repaints show the same;
    /// the next `Select` shows everything again.
    void Bulleye(int x, int y, double halfWidth);
    /// What the last pick found, farthest first; of two at the same depth the one drawn later comes first.
    const std::vector<THitItem>& Hits() const { return hits_; }
    /// What a click could meet if nothing lay before it, in the order in which it is drawn, and where it is seen:
    /// visible shapes without `Nohit` that reach into the client area and that a clip plane leaves something of. Empty
    /// without a context, from within a repaint, a pick or a `SetChanging` bracket. The shapes are played as for a
    /// pick, and neither `Hits` nor the screen change.
    ///
    /// OpenGL's feedback mode tells the corners of what is drawn. Of what comes to more than 64 MiB of them the rest is
    /// left out, which no scene does that can be moved smoothly.
    std::vector<THitPlace> Places();
    /// True while `Places` plays the scenes, which `IsSelecting` tells, too: names are passed through instead of
    /// loaded.
    bool IsFindingPlaces() const { return findingPlaces_; }
    /// How many pictures have been drawn; while it stays the same, so does what `Places` says.
    std::uint64_t PictureNumber() const { return pictureNumber_; }
    /// Makes the hit list that of a pick that met this alone, at depth 0: for events that come from elsewhere than the
    /// mouse.
    void SetSingleHit(std::int32_t hitObject) { hits_ = {THitItem{hitObject, 0, 1}}; }
    /// Shows a frame around the place of something that a click can meet, above the picture, and keeps it there in
    /// later repaints; each of them plays the shapes once more to find it. `HitTarget::NoHit` (at first): no frame.
    /// `place` is where `Places` says that it is seen now; without it the shapes are played here, too.
    void SetFocusFrame(std::int32_t hitObject, const std::optional<QRectF>& place = {});
    std::int32_t GetFocusFrame() const { return focusFrame_; }
    /// Ends selection mode and fills the hit list from what it recorded.
    void readSelectBuffer();
    /// Loads a name for what is drawn next.
    void SetHit(int name);
    /// True between `BeginPaint` and `EndPaint`, in a pick, too.
    bool IsPainting() const { return deviceStates_.Contains(DsPainting); }
    /// True while a pick plays the scenes: nothing that is drawn will be seen.
    bool IsSelecting() const { return selecting_; }

    // --- drawing (canvas_primitives.cpp) ---

    /// Draws one planar face: the first array is its outline, the others are holes in it, in any direction. Filled
    /// faces are cut into convex pieces, and those into triangles of at most the triangle resolution if that is not 0;
    /// in the other polygon modes the arrays are drawn as they are. An outline without area draws nothing. What
    /// `DOConvex` leaves out (see there) is not filled.
    void PolyPolyline3D(const TlistOFxyzArray& polygons) override;

    /// Shows only what lies on the side of the plane through `point` that `normal` points to, in the model coordinates
    /// in force. `index` is 0 to 5.
    void EnableClipplane(int index, const TXYZ& point, const TXYZ& normal);
    /// A negative index: all six.
    void DisableClipplane(int index);

    /// Which way round a face shows its front. Clockwise in a new context.
    void SetClockWise(bool clockwise);
    bool GetClockWise();

    double GetTriangleResolution() const { return triangleResolution_; }
    /// The greatest perimeter of a triangle that faces are divided into; 0 does not divide. A change compiles all
    /// scenes again at the next repaint.
    void SetTriangleResolution(double perimeter);
    /// The triangle resolution while there is a spot light, in centimetres of perimeter; 2 at first.
    double GetDefaultTriangleResolution() const { return defaultTriangleResolution_; }
    void SetDefaultTriangleResolution(double perimeter);
    /// Does nothing: translucency is the material's own, in the alpha of its diffuse colour.
    void SetTranslucent(double translucency);

    /// How the next face would be drawn. Needs a context.
    FaceStyle GetFaceStyle();
    /// Runs `draw`, whose faces and quadrics go into the list that is being compiled as `style` says, whatever is in
    /// force now. Texture coordinates and names for picking are left out. The box is in the coordinates of the
    /// drawing.
    Drawn DrawInto(const FaceStyle& style, const std::function<void()>& draw);

    // --- quadrics (canvas_quadrics.cpp) ---
    //
    // GLU's solids, with normals and texture coordinates, at the origin of the model coordinates in force, fronts
    // outwards. Radii and heights in centimetres, angles in degrees. GLU draws nothing where it refuses an argument
    // (less than 2 slices or 1 stack or loop, negative radii), and at most 239 slices; stacks and loops end at 1000.

    /// As many stacks as slices.
    void Sphere(double radius, int slices);
    /// From z = 0 to `height`, closed by a disk at either end; a radius of 0 makes a tip. The disks have as many loops
    /// as slices.
    void Cylinder(double baseRadius, double topRadius, double height, int slices, int stacks);
    /// A disk in the plane z = 0, seen from above; a ring if the inner radius is not 0.
    void Disk(double innerRadius, double outerRadius, int slices, int loops);
    /// The sector of `sweepAngle` from `startAngle` on, measured from the y axis towards the x axis.
    void PartialDisk(double innerRadius, double outerRadius, int slices, int loops, double startAngle,
                     double sweepAngle);

    // --- lights (canvas_lights.cpp) ---

    /// Appends a light, which is numbered by its place, and passes it to OpenGL.
    void AddLight(Tlight* light) override;
    /// Takes a light out; the numbers of those behind it move up.
    void RemoveLight(Tlight* light) override;
    /// Numbers all lights by their place in the list and pushes them to OpenGL again.
    void CheckLightHandle();
    /// Whether backs are lit with normals of their own; off at first.
    bool GetLightModelTwoSided() const { return lightModelTwoSided_; }
    void SetLightModelTwoSided(bool on);

    // --- drawing over the picture (canvas_overlay.cpp) ---

    /// The 2D canvas of the window control, in its pixels; null without one. Made at the first call, owned by the
    /// canvas, and from then on the canvas's 2D device. What it draws appears above the picture, in a repaint with it
    /// and otherwise when the event loop runs next, and stays until the next repaint. Drawing in a pick does nothing.
    TZkCanvas* GetZKCanvas();
    /// Draws the axes of the model over the picture: white lines of one centimetre, with "x+", "y+" and "z+" at their
    /// ends. Nothing without a context.
    void DrawOrg();
    /// Draws a square of 8 pixels over the picture at the place of every light that is on, with the pen and the brush
    /// of the 2D canvas. Nothing without a context.
    void DrawLights();

  Q_SIGNALS:
    /// A scene is about to be compiled; `DoCompile` comes true, and false keeps what the scene's list holds.
    void OnBeforeCompile(QObject* sender, bool& DoCompile);
    /// A scene has been compiled; what becomes of `DoCompile` does not matter.
    void OnAfterCompile(QObject* sender, bool& DoCompile);

  private:
    class LightKeeper;
    struct DrawingInto;

    ComponentRef readWinControl() const;
    void writeWinControl(const ComponentRef& ref);
    void writeDefaultResolution(double perimeter);
    void writeZoomFactor(double factor);
    void writeDefaultUnitsPerCM(double unitsPerCm);
    void writeTranslation(const QString& text);
    void writeRotationPoint(const QString& text);
    void writeRotationLine(const QString& text);

    void surfaceLost();
    void surfaceRestored();
    void surfaceExposed();
    void surfaceResized();
    void surfaceRatioChanged();
    void takeSize();
    void releaseContext(bool plainAttributes);
    void changeSurface(GlSurface* surface);
    void makeContext();
    void restoreView();
    void rebuildModelView();
    void applyModelTransform();
    void rebindScenes();
    void dropTexture(const TPixels& pixels);
    void clear();
    void drawPicture();
    QImage pictureOfContext(const QSize& size, double pixelRatio);
    bool drawParts(QImage& picture, double pixelRatio);
    void playScenes();
    void setClipPlanesAround(const TXY& point, double halfWidth);
    TXY projectionPoint(const QPointF& pixel) const;
    std::vector<THitPlace> findPlaces(const std::function<void()>& play);
    void findFocusFrame();
    void drawFocusFrame();
    void beginSelection();
    void endSelection();
    bool isClear(const TXYZ& point, int& answer);
    std::vector<THitItem> needle(const TXYZ& point, bool down, unsigned culled);
    std::vector<Tlight*> lightList() const;
    void useLayer(DrawingLayer* layer);
    void beginLayer();
    void showLayer();
    void drawLayer();
    QColor pictureAt(const QPoint& pixel);
    void endStrips();
    bool picksCorners() const;
    void quadricFills(const TXYZ& low, const TXYZ& high, int slices, int stacks);

    QWidget* winControl_ = nullptr;
    QPointer<GlSurface> surface_;  // goes with the control, and a plain widget tells of that only afterwards
    std::unique_ptr<RenderContext> context_;
    QPointer<DrawingLayer> layer_;  // what is drawn over the picture
    QPointer<TZkCanvas> zkCanvas_;
    QPointer<ControlCanvas> controlCanvas_;
    std::unique_ptr<TextureObjects> textures_;
    std::vector<TZKOglScene*> scenes_;
    std::vector<THitItem> hits_;
    std::vector<float> feedback_;  // what OpenGL writes into while it is in feedback mode
    bool findingPlaces_ = false;
    std::uint64_t pictureNumber_ = 0;
    std::int32_t focusFrame_ = HitTarget::NoHit;
    std::optional<QRectF> focusPlace_;  // in the picture on the screen
    bool autoCompile_ = true;
    bool lightModelTwoSided_ = false;
    bool selectEnabled_ = true;
    bool selecting_ = false;
    bool presented_ = false;
    bool refreshing_ = false;             // BeginPaint and EndPaint follow each other
    DrawingInto* drawingInto_ = nullptr;  // while `DrawInto` runs
    TColor backgroundColor_ = 0;
    double defaultUnitsPerCM_ = 0;
    double zoomOfForm_ = 0;  // as the form that is being read has it

    int projectionMode_ = 0;
    double orientationSign_ = 1.0;
    double scale_ = 1.0;
    double triangleResolution_ = 0;
    double defaultTriangleResolution_ = 2.0;
    TXYZ textureScale_{1, 1, 1};
    TXYZ translation_{0, 0, 0};
    TGerade drehGerade_{{0, 0, 0}, {0, 0, 1}};
    double drehwinkel_ = 0;
};

}  // namespace zk
