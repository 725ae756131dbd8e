#pragma once

#include <zk/_zkcomtypes/enums.h>
#include <zk/host/color.h>

namespace zk {

/// The whole state of a material by value: for presets, and to copy one material into another.
struct Tmaterialkind {
    TColor Ambient = 0;      ///< answers to light from everywhere
    TColor Diffuse = 0;      ///< scattered in the light
    TColor Specular = 0;     ///< of highlights
    TColor Emission = 0;     ///< shines by itself
    double Shininess = 0;    ///< of highlights, 0 to 128 for OpenGL
    TMFace Face = glfront;   ///< the side it is for
    double Translucent = 0;  ///< 1 is opaque, 0 invisible

    friend bool operator==(const Tmaterialkind&, const Tmaterialkind&) = default;
};

/// The presets carry their colour in Emission and leave Ambient and Diffuse black on purpose: they look the same under
/// any light, and without one.
inline constexpr Tmaterialkind maNone{0x000000, 0x000000, 0xFFFFFF, 0x808080, 0.0, glfront, 1.0};
inline constexpr Tmaterialkind maGray{0x000000, 0x000000, 0xFFFFFF, 0x808080, 0.0, glfront, 1.0};
inline constexpr Tmaterialkind maRed{0x000000, 0x000000, 0xFFFFFF, 0x0000FF, 0.0, glfront, 1.0};
inline constexpr Tmaterialkind maAqua{0x000000, 0x000000, 0xFFFFFF, 0xFFFF00, 0.0, glfront, 1.0};
inline constexpr Tmaterialkind maNavy{0x000000, 0x000000, 0xFFFFFF, 0x800000, 0.0, glfront, 1.0};
inline constexpr Tmaterialkind maEisen{0x000000, 0x000000, 0xFFFFFF, 0xFF00FF, 0.0, glfront, 1.0};
inline constexpr Tmaterialkind maLtGray{0x000000, 0x000000, 0xFFFFFF, 0xC0C0C0, 0.0, glfront, 1.0};

}  // namespace zk
