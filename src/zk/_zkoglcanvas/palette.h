#pragma once

#include <zk/export.h>

#include <cstdint>
#include <vector>

namespace zk {

/// How a pixel of a palette display is divided into red, green and blue.
struct TPixelLayout {
    int ColorBits = 0;   ///< bits of a pixel
    int RedBits = 0;     ///< bits of red
    int RedShift = 0;    ///< place of the lowest bit of red, and so on
    int GreenBits = 0;   ///< bits of green
    int GreenShift = 0;  ///< of the lowest bit of green
    int BlueBits = 0;    ///< bits of blue
    int BlueShift = 0;   ///< of the lowest bit of blue
};

/// One colour of a palette.
struct TPaletteEntry {
    std::uint8_t Red = 0;    ///< 0 to 255
    std::uint8_t Green = 0;  ///< 0 to 255
    std::uint8_t Blue = 0;   ///< 0 to 255
    friend bool operator==(const TPaletteEntry&, const TPaletteEntry&) = default;
};

/// The palette in which every pixel value shows the colour that its bits say: 2^ColorBits entries, each channel spread
/// over 0 to 255 (whole numbers, cut off). Empty for a layout with less than 1 or more than 16 bits a pixel, which no
/// palette display has; a channel without bits, or outside the pixel, is 0.
///
/// For a surface that says it needs a palette. None of today's window systems has such displays, so nothing in this
/// library asks for one.
ZKOGLCANVAS_API std::vector<TPaletteEntry> BuildPalette(const TPixelLayout& layout);

}  // namespace zk
