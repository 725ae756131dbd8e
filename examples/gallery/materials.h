#pragma once

#include <zk/_zkcomtypes/materialkind.h>

namespace gallery {

/// A material that shows the shades of its colour. A new material glows in grey, which hides what the light does; this
/// one takes nearly all its colour from the light.
inline zk::Tmaterialkind MaterialOf(zk::TColor color) {
    const auto shade = [color](double factor) {
        const auto channel = [&](int shift) { return zk::TColor(double((color >> shift) & 0xFF) * factor) << shift; };
        return channel(0) | channel(8) | channel(16);
    };
    zk::Tmaterialkind kind = zk::maNone;  // opaque, for the fronts of faces
    kind.Ambient = shade(0.8);
    kind.Diffuse = color;
    kind.Specular = 0x303030;
    kind.Emission = shade(0.06);
    kind.Shininess = 24;
    return kind;
}

}  // namespace gallery
