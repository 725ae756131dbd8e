#pragma once

#include <zk/_zkcomtypes/enums.h>
#include <zk/_zkxyz/constants.h>
#include <zk/_zkxyz/records.h>

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace zk {

/// The name of a picture file, at most `PicNameLength` characters.
using PicName = QString;
inline constexpr int PicNameLength = 255;

/// A picture's pixels, three bytes (red, green, blue) each, shared by all who show the picture: they live as long as
/// anyone holds them. Null means no picture.
using TPixels = std::shared_ptr<const std::vector<std::uint8_t>>;

/// A whole texture description by value: for presets, and to copy one texture into another. A default one is
/// `tkDefault`.
struct TTextureKind {
    bool Visible = true;
    TTexEnvMode EnvMode = glmodulate;
    QString Picture;        ///< picture file, empty for none
    TBAse Base = Unitbase;  ///< the frame in which the texture is laid
    TTexFilter Filter = glnearest;
    std::int32_t Width = 0;  ///< pixels of the loaded picture
    std::int32_t Height = 0;
    bool Repeat = true;
    double WorldWidth = 1.0;   ///< world size of one repetition along the base's X axis
    double WorldHeight = 1.0;  ///< and along its Y axis
    bool BaseFix = false;
    TPixels Pixels;

    friend bool operator==(const TTextureKind&, const TTextureKind&) = default;
};

/// Visible, no picture, unit frame, repeated, one world unit wide and high.
inline const TTextureKind tkDefault{};

}  // namespace zk
