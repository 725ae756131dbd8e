#pragma once

#include <zk/export.h>

#include <array>
#include <string_view>

namespace zk {

/// What the library does only because some drivers or window systems need it; docs/drivers.md says why, and what is
/// lost without. All are on at first, but for those that the environment names in ZKOGL_WORKAROUNDS_OFF, separated by
/// commas. For finding out whether a driver is at fault, and for drivers that are not.
enum class Workaround {
    SelectionLists,    ///< "selection-lists": a pick plays the shapes, never the compiled list
    KeptPicture,       ///< "kept-picture": the picture is kept over a swap; asked when a context is made
    NewSize,           ///< "new-size": the first repaint in a new size draws twice
    DesktopOpenGl,     ///< "desktop-opengl": asks for desktop OpenGL; asked when a window is made
    ListStrips,        ///< "list-strips": what is kept of strips ends in a primitive of another kind
    SurfaceType,       ///< "surface-type": makes the native window anew for OpenGL; asked when a window is made
    WaylandChild,      ///< "wayland-child": the top-level window tells when there is something to paint; asked as above
    SelectionCorners,  ///< "selection-corners": picks are sent out of arrays, not corner by corner
};

/// Each of them once.
inline constexpr std::array<Workaround, 8> AllWorkarounds{
    Workaround::SelectionLists, Workaround::KeptPicture, Workaround::NewSize,      Workaround::DesktopOpenGl,
    Workaround::ListStrips,     Workaround::SurfaceType, Workaround::WaylandChild, Workaround::SelectionCorners};

/// The name in the environment.
ZKHOST_API std::string_view NameOf(Workaround workaround);

/// Whether it is done.
ZKHOST_API bool IsOn(Workaround workaround);
/// Switches it on or off; some are asked only when a window or a context is made.
ZKHOST_API void SetOn(Workaround workaround, bool on);

}  // namespace zk
