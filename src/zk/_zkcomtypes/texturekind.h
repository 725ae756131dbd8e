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
/// The greatest length of a picture's name.
inline constexpr int PicNameLength = 255;

/// A picture's pixels, three bytes (red, green, blue) each, shared by all who show the picture: they live as long as
/// anyone holds them. Null means no picture.
using TPixels = std::shared_ptr<const std::vector<std::uint8_t>>;

/// A whole texture description by value: for presets, and to copy one texture into another. A default one is
/// `tkDefault`.
struct TTextureKind {
    bool Visible = true;               ///< whether the picture is laid on
    TTexEnvMode EnvMode = glmodulate;  ///< how it is combined with the colour beneath
    QString Picture;                   ///< picture file, empty for none
    TBAse Base = Unitbase;             ///< the frame in which the texture is laid
    TTexFilter Filter = glnearest;     ///< how it is sampled
    std::int32_t Width = 0;            ///< pixels of the loaded picture
    std::int32_t Height = 0;           ///< pixels, too
    bool Repeat = true;                ///< whether it is repeated beyond its edges
    double WorldWidth = 1.0;           ///< world size of one repetition along the base's X axis
    double WorldHeight = 1.0;          ///< and along its Y axis
    bool BaseFix = false;              ///< kept along; nothing in the library asks for it
    TPixels Pixels;                    ///< of the loaded picture, or null

    friend bool operator==(const TTextureKind&, const TTextureKind&) = default;
};

/// Visible, no picture, unit frame, repeated, one world unit wide and high.
inline const TTextureKind tkDefault{};

}  // namespace zk
