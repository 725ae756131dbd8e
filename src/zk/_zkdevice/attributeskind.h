#pragma once

#include <zk/_zkcomtypes/materialkind.h>
#include <zk/_zkcomtypes/texturekind.h>

namespace zk {

/// A whole attribute set by value.
struct TAttributesKind {
    TTextureKind Texture;        ///< the texture
    Tmaterialkind Material;      ///< the material
    TPAMode Mode = glfill;       ///< how polygons are rasterised
    TPAStyle Style = glpolygon;  ///< what a run of points is drawn as

    friend bool operator==(const TAttributesKind&, const TAttributesKind&) = default;
};

}  // namespace zk
