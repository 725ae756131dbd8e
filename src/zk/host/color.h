#pragma once

#include <zk/export.h>

#include <QColor>

#include <cstdint>

namespace zk {

/// A colour as the components store it: low byte red, then green, then blue, e.g. 0x0000FF is red. A value with the
/// highest bit set names a colour of the desktop's palette instead (the `cl…` constants below).
using TColor = std::uint32_t;

/// Colours of the desktop's palette; `ColorToRGB` looks them up each time, so they follow a change of the palette.
enum TSystemColor : TColor {
    clScrollBar = 0x80000000,
    clBackground = 0x80000001,
    clMenu = 0x80000004,
    clWindow = 0x80000005,
    clWindowFrame = 0x80000006,
    clMenuText = 0x80000007,
    clWindowText = 0x80000008,
    clAppWorkSpace = 0x8000000C,
    clHighlight = 0x8000000D,
    clHighlightText = 0x8000000E,
    clBtnFace = 0x8000000F,
    clBtnShadow = 0x80000010,
    clGrayText = 0x80000011,
    clBtnText = 0x80000012,
    clBtnHighlight = 0x80000014,
    cl3DDkShadow = 0x80000015,
    cl3DLight = 0x80000016,
    clInfoText = 0x80000017,
    clInfoBk = 0x80000018,
};

/// The red, green and blue of a colour (0x00BBGGRR). A system colour is resolved through the application's palette,
/// black where there is no GUI application or the index is unknown; the highest byte of other values is dropped.
ZKHOST_API TColor ColorToRGB(TColor color);

/// The colour as Qt's, always opaque; system colours are resolved.
ZKHOST_API QColor ToQColor(TColor color);

/// Qt's colour as ours; its alpha is dropped, an invalid colour becomes black.
ZKHOST_API TColor FromQColor(const QColor& color);

}  // namespace zk
