#pragma once

#include <zk/export.h>

#include <QSize>

#include <memory>

namespace zk {

/// Keeps the picture in the back buffer over a swap.
///
/// After a swap the back buffer holds the same picture, the one before, or nothing defined, as the driver likes. A
/// repaint swaps twice, and both swaps must show the new picture; so it is copied away before the first swap and
/// brought back before the second. Both calls need the context current that the keeper was made in, and leave OpenGL's
/// state as it was. The keeper is destroyed in that context, too.
class ZKOGLCANVAS_API PictureKeeper {
  public:
    virtual ~PictureKeeper() = default;

    /// Copies the back buffer away; `size` is that of the window in device pixels.
    virtual void Keep(const QSize& size) = 0;

    /// Puts what `Keep` copied into the back buffer again. Nothing happens before the first `Keep`.
    virtual void BringBack() = 0;

    /// How pictures are kept.
    enum class Way {
        FramebufferObject,  ///< in the driver's memory; wherever framebuffer objects can be copied
        Pixels,             ///< read and drawn as pixels, which OpenGL 1.1 can do: slower, works everywhere
        Nothing,            ///< not at all: for drivers whose swap leaves the picture in the back buffer
    };

    /// The best way that the current context offers; `Nothing` with `Workaround::KeptPicture` off.
    static Way BestWay();

    /// A keeper of that way, in the context that is current.
    static std::unique_ptr<PictureKeeper> Create(Way way);
};

}  // namespace zk
