#include "canvas.h"

#include <zk/_zkcomtypes/pointproperty.h>
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath/tolerance.h>
#include <zk/_zkoglcanvas/control.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glcolor.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/ogllight.h>
#include <zk/_zkoglcanvas/oglmaterial.h>
#include <zk/_zkoglcanvas/oglpolyattributes.h>
#include <zk/_zkoglcanvas/ogltexture.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/_zkoglcanvas/scene.h>
#include <zk/_zkoglcanvas/textureobjects.h>
#include <zk/host/controlcanvas.h>
#include <zk/host/drawinglayer.h>
#include <zk/host/formreading.h>
#include <zk/host/message.h>

#include <QMetaMethod>
#include <QOpenGLContext>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zk {

static const ReferenceProperty<TZkOglCanvas, QWidget> winControlProperty("WinControl");
static const ReferenceTarget<TZkOglCanvas> canvasTarget;

TZkOglCanvas::TZkOglCanvas(QObject* owner) : TZKDevice(owner) {
    SetLightClass({"TZKOglLight", [](QObject* lightOwner) -> Tlight* { return new TZKOglLight(lightOwner); }});
    SetColor(0);
    defaultUnitsPerCM_ = GetUnitsPerCm();
    connect(&TextureNews::Get(), &TextureNews::Removed, this, &TZkOglCanvas::dropTexture);
}

TZkOglCanvas::~TZkOglCanvas() {
    AnnounceRemoval();
    SetWinControl(nullptr);
    while (!scenes_.empty())
        DeleteDisplayList(int(scenes_.size()) - 1);
}

// --- the control and its context ------------------------------------------------------------------------------------

void TZkOglCanvas::SetWinControl(QWidget* control) {
    // Brackets may repaint, and user code then delete the canvas or the control.
    const QPointer<TZkOglCanvas> self = this;
    const QPointer<QWidget> joined = control;
    QWidget* const old = winControl_;
    if (old && old != control) {
        RemoveFreeNotification(old);
        if (auto* host = qobject_cast<TZKOglControl*>(old); host && host->Canvas() == this)
            host->SetCanvas(nullptr);
    }
    if (controlCanvas_)
        controlCanvas_->SetControl(control);
    if (!control) {
        Setdc(nullptr);
        if (self)
            winControl_ = nullptr;
        return;
    }
    FreeNotification(control);
    const auto setSurface = [&] {
        if (joined)
            Setdc(GlSurface::Of(joined));
    };
    const auto bind = [&] {
        winControl_ = joined;
        if (!joined)
            return;
        takeSize();
        if (!self || !joined)
            return;
        if (auto* host = qobject_cast<TZKOglControl*>(control))
            host->SetCanvas(this);
    };
    InBracket(*this, setSurface, bind);
}

void TZkOglCanvas::takeSize() {
    // A control may be smaller than its frame.
    const QSize client = winControl_->contentsRect().size().expandedTo({0, 0});
    const QPointer<TZkOglCanvas> self = this;
    SetLeft(0);
    SetTop(0);
    SetHeight(client.height());
    if (self)
        SetWidth(client.width());
}

void TZkOglCanvas::Setdc(GlSurface* surface) {
    if (surface == surface_)
        return;
    const QPointer<GlSurface> joined = surface;
    const auto leave = [&] {
        if (context_)
            releaseContext(surface != nullptr);
    };
    const auto change = [&] { changeSurface(joined); };
    const auto enter = [&] {
        if (surface_)
            makeContext();
    };
    InBracket(*this, leave, change, enter);
}

void TZkOglCanvas::changeSurface(GlSurface* surface) {
    if (surface_) {
        disconnect(surface_, nullptr, this, nullptr);
        surface_->RemoveUser();
        surface_->update();  // another canvas may be bound to the control: it is its turn
    }
    surface_ = surface;
    useLayer(surface_ ? DrawingLayer::Of(surface_->Control()) : nullptr);
    if (surface_) {
        surface_->AddUser();
        connect(surface_, &GlSurface::Lost, this, &TZkOglCanvas::surfaceLost);
        connect(surface_, &GlSurface::Restored, this, &TZkOglCanvas::surfaceRestored);
        connect(surface_, &GlSurface::Exposed, this, &TZkOglCanvas::surfaceExposed);
        connect(surface_, &GlSurface::Resized, this, &TZkOglCanvas::surfaceResized);
        connect(surface_, &GlSurface::PixelRatioChanged, this, &TZkOglCanvas::surfaceRatioChanged);
    }
}

// `plainAttributes`: another context follows, and until it has its own attribute objects, plain ones stand in.
void TZkOglCanvas::releaseContext(bool plainAttributes) {
    context_->MakeCurrent();
    if (plainAttributes) {
        getAttributes()->ReplacePolyStyle(new TPolyAttributes);
        getAttributes()->ReplaceMaterial(new Tmaterial);
        getAttributes()->ReplaceTexture(new TTexture);
    }
    textures_.reset();
    context_.reset();
    rebindScenes();
}

// A picture has left the registry. Scenes that show it load it again when they are compiled.
void TZkOglCanvas::dropTexture(const TPixels& pixels) {
    if (!textures_)
        return;
    QOpenGLContext* const before = QOpenGLContext::currentContext();
    QSurface* const surface = before ? before->surface() : nullptr;
    if (CheckCurrent() && textures_->Drop(pixels))
        for (TZKOglScene* scene : scenes_)
            scene->ForgetDrawings();
    // Whoever draws at the moment goes on.
    if (before && surface && before != QOpenGLContext::currentContext())
        before->makeCurrent(surface);
}

void TZkOglCanvas::makeContext() {
    if (!surface_->Window())
        ShowMessage(QStringLiteral("error SetPixelFormat"));
    QString whyNot;
    context_ = RenderContext::Create(*surface_, whyNot);
    surface_->ShowNotice(whyNot);
    if (!context_)
        return;
    textures_ = std::make_unique<TextureObjects>(*context_);
    context_->SetOverlay([this] { drawLayer(); });

    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glShadeModel(GL_SMOOTH);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    // The model-view matrix carries the scale of the view and of each shape. Without this, light would grow and fade
    // with the zoom.
    glEnable(GL_NORMALIZE);
    OGLError();

    SetClockWise(true);
    OGLError();

    auto* material = new TOglMaterial;
    material->SetParent(this);
    OGLError();
    auto* texture = new TOglTexture(this);
    auto* polyStyle = new TOglPolyAttributes(this);
    getAttributes()->ReplacePolyStyle(polyStyle);
    OGLError();
    getAttributes()->ReplaceMaterial(material);
    OGLError();
    getAttributes()->ReplaceTexture(texture);
    OGLError();

    SetprojectionMode(0);
    const TRect port = getViewPort();
    const int side = std::max(port.right - port.left, port.bottom - port.top);
    const auto half = [](int twice) { return int(std::nearbyint(twice / 2.0)); };
    SetViewport({half(port.left + port.right - side), half(port.top + port.bottom - side),
                 half(port.left + port.right + side), half(port.top + port.bottom + side)});
    glInitNames();
    rebindScenes();
    glEnable(GL_LIGHTING);
    const QPointer<TZkOglCanvas> self = this;
    CheckLightHandle();
    if (!self || !CheckCurrent())
        return;
    OGLError();
    restoreView();
}

// A new context starts with OpenGL's own state; what the canvas was set to before comes back here.
void TZkOglCanvas::restoreView() {
    scale_ = 1.0;
    const TXYZ textureScale = textureScale_;
    textureScale_ = {1, 1, 1};
    SetTextureScale(textureScale);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, lightModelTwoSided_);
    SetprojectionMode(Equals(GetBlickwinkel(), 0) ? 0 : 1);
    const QPointer<TZkOglCanvas> self = this;
    SetStdViewport(GetWidth(), GetHeight());
    if (self)
        rebuildModelView();
}

void TZkOglCanvas::rebindScenes() {
    const std::vector<TZKOglScene*> scenes = scenes_;  // each goes to the end of the list, so the order stays
    for (TZKOglScene* scene : scenes)
        if (IndexOfDisplayList(scene) >= 0)
            scene->SetZkOglCanvas(this);
}

void TZkOglCanvas::surfaceLost() {
    if (!context_)
        return;
    InBracket(*this, [this] {
        if (context_)
            releaseContext(true);
    });
}

void TZkOglCanvas::surfaceRestored() {
    if (context_)
        return;
    InBracket(*this, [this] {
        if (!context_ && surface_)
            makeContext();
    });
}

void TZkOglCanvas::surfaceExposed() {
    auto* host = qobject_cast<TZKOglControl*>(winControl_);
    if (!host) {
        Refresh();
        return;
    }
    if (!host->Canvas()) {
        // The canvas that had taken the control over has gone, perhaps after the control got another size.
        SetWinControl(host);
        return;
    }
    if (host->Canvas() == this)  // another canvas may have taken the control over
        host->PAint();
}

void TZkOglCanvas::surfaceResized() {
    // A TZKOglControl says so itself, after its own resize event.
    if (!context_ || !winControl_ || qobject_cast<TZKOglControl*>(winControl_))
        return;
    InBracket(*this, [this] {
        if (winControl_)
            takeSize();
    });
}

void TZkOglCanvas::surfaceRatioChanged() {
    if (context_)
        SetStdViewport(GetWidth(), GetHeight());
}

void TZkOglCanvas::Notification(QObject* component, TOperation operation) {
    TZKDevice::Notification(component, operation);
    if (operation != TOperation::opRemove)
        return;
    if (component == winControl_) {
        SetWinControl(nullptr);
        return;
    }
    const auto found = std::find_if(scenes_.begin(), scenes_.end(), [component](const TZKOglScene* scene) {
        return static_cast<const QObject*>(scene) == component;
    });
    if (found != scenes_.end())
        DeleteDisplayList(int(found - scenes_.begin()));
}

bool TZkOglCanvas::CheckCurrent() {
    if (!context_)
        return false;
    context_->MakeCurrent();
    return true;
}

int TZkOglCanvas::GetmatrixMode() {
    GLint mode = 0;
    if (CheckCurrent())
        glGetIntegerv(GL_MATRIX_MODE, &mode);
    return mode;
}

void TZkOglCanvas::SetmatrixMode(int mode) {
    if (!CheckCurrent())
        return;
    glMatrixMode(GLenum(mode));
    OGLError();
}

int TZkOglCanvas::GetRenderMode() {
    GLint mode = 0;
    if (CheckCurrent())
        glGetIntegerv(GL_RENDER_MODE, &mode);
    return mode;
}

void TZkOglCanvas::SetRenderMode(int mode) {
    if (!CheckCurrent())
        return;
    glRenderMode(GLenum(mode));
    OGLError();
}

// --- the paint cycle ------------------------------------------------------------------------------------------------

void TZkOglCanvas::Refresh() {
    if (!context_ || (ComponentState() & csDestroying))
        return;
    const QPointer<TZkOglCanvas> self = this;
    const bool outer = std::exchange(refreshing_, true);
    const auto back = qScopeGuard([&] {
        if (self)
            refreshing_ = outer;
    });
    TZKDevice::Refresh();
}

void TZkOglCanvas::SetChanging(bool changing) {
    PrintLn([&] { return QStringLiteral("%1 %2 changing ").arg(changeCount_).arg(changing); });
    TZKDevice::SetChanging(changing);
}

void TZkOglCanvas::BeginPaint() {
    presented_ = false;
    TZKDevice::BeginPaint();
    if (changeCount_ != 0) {
        PrintLn([&] { return QStringLiteral("******* changecount %1").arg(changeCount_); });
        return;
    }
    if (!context_ || !context_->MakeCurrent())
        return;
    PrintLn(QStringLiteral("TZkOglCanvas.BeginPaint"));
    if (selecting_) {
        // Nothing is drawn in selection mode, so there is nothing to clear and nothing to show.
        const QPointer<DrawingLayer> layer = layer_;
        const auto heard = qScopeGuard([layer] {
            if (layer)
                layer->SetMuted(false);
        });
        if (layer)
            layer->SetMuted(true);
        playScenes();
        return;
    }
    if (!surface_->IsExposed())
        return;
    const QPointer<TZkOglCanvas> self = this;
    drawPicture();
    if (!self || !context_)
        return;
    presented_ = true;
    if (!context_->IsSizeNew()) {
        context_->Present();
        if (!refreshing_)
            context_->BringBack();
        return;
    }
    // This swap may be the one that tells the driver of the window's new size, so that the picture is drawn anew for
    // the next. The scenes replay what they have just compiled.
    context_->Present();
    drawPicture();
    if (self && context_)
        context_->Keep();
}

void TZkOglCanvas::clear() {
    const GlColor background = ToGlColor(backgroundColor_);
    glClearColor(background[0], background[1], background[2], background[3]);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    OGLError();
}

void TZkOglCanvas::drawPicture() {
    const QPointer<TZkOglCanvas> self = this;
    ++pictureNumber_;
    clear();
    beginLayer();
    playScenes();
    if (self && focusFrame_ != HitTarget::NoHit)
        findFocusFrame();
}

// The picture is shown twice, as BeginPaint and EndPaint may also be called apart: what is painted between them comes
// upon the picture and is shown with the second swap.
void TZkOglCanvas::EndPaint() {
    if (context_) {
        TZKDevice::EndPaint();
        CheckCurrent1();
        if (presented_) {
            if (!refreshing_)
                context_->Keep();
            context_->PresentAgain();
        }
        presented_ = false;
    }
    TZKDevice::EndPaint();
}

void TZkOglCanvas::playScenes() {
    const QPointer<TZkOglCanvas> self = this;
    const Tmatrix view = GetOglModelMatrix();
    // A handler may take scenes away or add some: an added one is played at the next repaint.
    const std::vector<TZKOglScene*> scenes = scenes_;
    for (TZKOglScene* scene : scenes) {
        if (!context_ || IndexOfDisplayList(scene) < 0)
            continue;
        try {
            scene->Play();
        } catch (const std::exception& error) {
            // User code is drawing here. What it throws must not reach the event loop, nor stop the other scenes.
            ShowMessage(QString::fromUtf8(error.what()));
        }
        if (!self)
            return;
    }
    // A scene whose compilation is refused leaves its transform in force for those after it, but not for the next
    // repaint.
    if (context_ && !(GetOglModelMatrix() == view))
        SetOglModelMatrix(view);
}

void TZkOglCanvas::SetColor(TColor color) {
    if (color == backgroundColor_)
        return;
    backgroundColor_ = color;
    if (CheckCurrent())
        Refresh();
}

// --- scenes ---------------------------------------------------------------------------------------------------------

void TZkOglCanvas::AddDisplayList(TZKOglScene* scene) {
    scenes_.push_back(scene);
    FreeNotification(scene);
}

void TZkOglCanvas::DeleteDisplayList(int index) {
    if (index < 0 || index >= int(scenes_.size()))
        return;
    TZKOglScene* scene = scenes_[std::size_t(index)];
    scenes_.erase(scenes_.begin() + index);
    if (IndexOfDisplayList(scene) < 0)
        RemoveFreeNotification(scene);
}

int TZkOglCanvas::IndexOfDisplayList(const TZKOglScene* scene) const {
    const auto found = std::find(scenes_.begin(), scenes_.end(), scene);
    return found == scenes_.end() ? -1 : int(found - scenes_.begin());
}

bool TZkOglCanvas::AskBeforeCompile() {
    bool compile = true;
    if (isSignalConnected(QMetaMethod::fromSignal(&TZkOglCanvas::OnBeforeCompile)))
        Q_EMIT OnBeforeCompile(this, compile);
    return compile;
}

void TZkOglCanvas::TellAfterCompile() {
    bool compile = true;
    Q_EMIT OnAfterCompile(this, compile);
}

// --- the properties of forms -----------------------------------------------------------------------------------------

ComponentRef TZkOglCanvas::readWinControl() const {
    return ComponentRef(GetWinControl());
}

void TZkOglCanvas::writeWinControl(const ComponentRef& ref) {
    WriteReference(*this, "WinControl", ref, [this](QObject* object) { SetWinControl(static_cast<QWidget*>(object)); });
}

// Lights that shine decide which resolution is in force, also those that a form has before this value.
void TZkOglCanvas::writeDefaultResolution(double perimeter) {
    SetDefaultTriangleResolution(perimeter);
    if (!FormReading::IsReading(*this))
        return;
    for (Tlight* light : lightList())
        if (const auto* shines = qobject_cast<TZKOglLight*>(light); shines && shines->GetEnabled())
            light->SetSpotCutOff(light->getSpotCutOff());
}

// The zoom is of the default, whichever of the two a form has first.
void TZkOglCanvas::writeZoomFactor(double factor) {
    SetZoomFactor(factor);
    zoomOfForm_ = factor;
}

void TZkOglCanvas::writeDefaultUnitsPerCM(double unitsPerCm) {
    SetDefaultUnitsPerCM(unitsPerCm);
    if (FormReading::IsReading(*this))
        SetZoomFactor(zoomOfForm_);
}

void TZkOglCanvas::writeTranslation(const QString& text) {
    WritePointText(*this, "TransformBy", text, [this](const QString& point) { Set_translation(point); });
}

void TZkOglCanvas::writeRotationPoint(const QString& text) {
    WritePointText(*this, "RotationPoint", text, [this](const QString& point) { SetDrehgeradePkt(point); });
}

void TZkOglCanvas::writeRotationLine(const QString& text) {
    WritePointText(*this, "RotationLine", text, [this](const QString& point) { SetDrehgeradeRichtung(point); });
}

}  // namespace zk
