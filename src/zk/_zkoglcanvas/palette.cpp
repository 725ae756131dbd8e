#include "palette.h"

namespace zk {

namespace {

constexpr int mostBits = 16;

std::uint8_t channel(unsigned pixel, int bits, int shift) {
    if (bits < 1 || bits > mostBits || shift < 0 || shift >= mostBits)
        return 0;
    const unsigned greatest = (1U << bits) - 1;
    return std::uint8_t(((pixel >> shift) & greatest) * 255U / greatest);
}

}  // namespace

std::vector<TPaletteEntry> BuildPalette(const TPixelLayout& layout) {
    if (layout.ColorBits < 1 || layout.ColorBits > mostBits)
        return {};
    std::vector<TPaletteEntry> palette(std::size_t(1) << layout.ColorBits);
    for (unsigned pixel = 0; pixel < palette.size(); ++pixel)
        palette[pixel] = {channel(pixel, layout.RedBits, layout.RedShift),
                          channel(pixel, layout.GreenBits, layout.GreenShift),
                          channel(pixel, layout.BlueBits, layout.BlueShift)};
    return palette;
}

}  // namespace zk
