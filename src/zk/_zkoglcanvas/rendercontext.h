#pragma once

#include <zk/_zkoglcanvas/picturekeeper.h>
#include <zk/export.h>
#include <zk/host/glsurface.h>

#include <QString>

#include <functional>
#include <memory>

class QOpenGLContext;

namespace zk {

/// An OpenGL rendering context on the surface of one control, and the two swaps of a repaint.
class ZKOGLCANVAS_API RenderContext {
  public:
    /// A context on `surface`, current afterwards, or null with the reason in words in `whyNot`: the window system has
    /// no OpenGL, or only OpenGL ES or a core profile, which have no display lists. `surface` must outlive the context.
    static std::unique_ptr<RenderContext> Create(GlSurface& surface, QString& whyNot);

    /// Makes the context current, so that what lives in it can go, then deletes it.
    ~RenderContext();

    /// The surface that is drawn into.
    GlSurface& Surface() const { return surface_; }
    /// Qt's context; owned.
    QOpenGLContext& Handle() const { return *context_; }

    /// Makes the context current unless the window system says that it is. False when that failed; then no context is
    /// current, so that what follows reaches nobody's picture instead of another canvas's.
    bool MakeCurrent();

    /// True when the context is the current one, on its surface.
    bool IsCurrent() const;

    /// True until the first swap after the window has got another size. Some drivers take notice of a new size only
    /// with a swap: what is drawn before it is cut off at the old one.
    /// False with `Workaround::NewSize` off.
    bool IsSizeNew() const;

    /// Keeps what has been drawn into the back buffer for `PresentAgain`, without showing it.
    void Keep();

    /// Shows what has been drawn into the back buffer, and the overlay above it: the first swap of a repaint. The
    /// picture without the overlay is kept for `PresentAgain`.
    void Present();

    /// Shows the picture of the last `Present` once more, with the overlay of now: the second swap of a repaint, and
    /// every further one.
    void PresentAgain();

    /// Draws over each picture that is shown; called with the context current. Empty (at first) draws nothing.
    void SetOverlay(std::function<void()> overlay) { overlay_ = std::move(overlay); }

    /// Brings the picture of the last `Present` back into the back buffer, without showing it.
    void BringBack();

    /// False before the first `Present`, and when the window has another size than it had then.
    bool HasPicture() const { return keptSize_ == surface_.PixelSize(); }

    /// Replaces the exchange of front and back buffer; an empty function brings the window system's back. It is called
    /// with the context current. For tests and for measuring.
    void SetSwap(std::function<void(RenderContext&)> swap) { swap_ = std::move(swap); }

    /// The window system's own swap.
    void SwapBuffers();

    /// Runs calls of OpenGL that must not become part of a list. While one is compiled they run in a second context
    /// that shares its lists and texture objects with this one; nothing else of this context's state is there, and what
    /// they set is not set here. Where the driver refuses a second context they do become part of the list.
    void OutsideOfLists(const std::function<void()>& calls);

    /// Keeps pictures another way than the best one, to work around a driver. Takes effect at the next `Present`.
    void SetKeeping(PictureKeeper::Way way);

  private:
    RenderContext(GlSurface& surface, std::unique_ptr<QOpenGLContext> context);

    void swap();

    GlSurface& surface_;
    std::unique_ptr<QOpenGLContext> context_;
    std::unique_ptr<QOpenGLContext> second_;  ///< made when it is needed
    std::unique_ptr<PictureKeeper> keeper_;
    std::function<void(RenderContext&)> swap_;
    std::function<void()> overlay_;
    QSize swappedSize_;
    QSize keptSize_;
};

}  // namespace zk
