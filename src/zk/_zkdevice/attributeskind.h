#pragma once

#include <zk/_zkcomtypes/materialkind.h>
#include <zk/_zkcomtypes/texturekind.h>

namespace zk {

/// A whole attribute set by value.
struct TAttributesKind {
    TTextureKind Texture;
    Tmaterialkind Material;
    TPAMode Mode = glfill;
    TPAStyle Style = glpolygon;

    friend bool operator==(const TAttributesKind&, const TAttributesKind&) = default;
};

}  // namespace zk
