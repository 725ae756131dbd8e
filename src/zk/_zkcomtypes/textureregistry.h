#pragma once

#include <zk/_zkcomtypes/texturekind.h>
#include <zk/export.h>

#include <QImage>
#include <QObject>

#include <cstdint>
#include <memory>
#include <vector>

namespace zk {

/// One picture of the registry: its pixels as OpenGL takes them.
class ZKCOMTYPES_API TTextureItem {
  public:
    /// Loads the picture `Name`. `Failed` comes back as 1 where that is not possible, which a message has told then,
    /// and as 0 otherwise.
    TTextureItem(const QString& Name, std::uint8_t& Failed);

    /// A picture in memory, under a name. A null picture is one that cannot be loaded.
    TTextureItem(const QString& Name, const QImage& picture, std::uint8_t& Failed);

    /// Loads the picture again. True where that failed: then the item is left without pixels, size 0.
    ///
    /// The picture is brought to the greatest power-of-two sides that are not above its own (see `LoadPicture`, which
    /// also says what can be loaded and within which limits). The pixel in column x, row y, counted from the upper
    /// left, goes to the three bytes from 3 · (x · Width + y) on, x running slower: a square picture is stored with
    /// rows and columns exchanged. In one that is wider than high the bytes that this puts behind the end of the 3 ·
    /// Width · Height are left out; in one that is higher than wide later columns overwrite earlier ones. Bytes that
    /// nothing is put into are 0.
    ///
    /// Messages: "unknown filetype: " and the name where its ending stands for no format, "can't load texture: " and
    /// the name where the file cannot be read.
    bool MakeByteArray();

    TPixels Pixels;           ///< null where the picture could not be loaded
    std::int32_t Height = 0;  ///< pixels
    std::int32_t Width = 0;   ///< pixels
    QString Name;             ///< the file name under which it was registered

  private:
    bool take(const QImage& picture);
};

/// Shared by the registry and by whoever shows the picture.
using PTextureItem = std::shared_ptr<TTextureItem>;

/// The pictures that are registered, each file once, for the whole process. A slot whose picture has been removed is
/// null; later pictures go to the end. On the GUI thread, as everything that shows pictures.
ZKCOMTYPES_API const std::vector<PTextureItem>& GlbTextures();

/// The first picture whose name contains `Name`, in any case; −1 if there is none, and for an empty name. A part of the
/// name is enough on purpose: "A.BMP" finds what was registered with a path before it.
ZKCOMTYPES_API int ZkIndexOfTexture(const QString& Name);

/// The index of a picture, loaded and registered if it is not known yet. Where it cannot be loaded a message tells so,
/// `Failed` comes back as 1, the result is −1 and nothing is registered: the next call tries again. `Failed` comes back
/// as 0 from a picture that was loaded and is left alone by one that was known.
ZKCOMTYPES_API int ZkAddtexture(const QString& Name, std::uint8_t& Failed);

/// Registers a picture that is in memory, as if it had been loaded from the file `Name`.bmp of the directory for
/// temporary files. No file is written. A picture that is known under that name stays.
ZKCOMTYPES_API void ZkAddBitmaptexture(const QString& Name, const QImage& Bitmap);

/// The picture itself, loaded if need be; null where that is not possible.
ZKCOMTYPES_API PTextureItem ZkgetTextureItem(const QString& Name);

/// Takes a picture out of the registry, and its texture objects out of OpenGL. Its slot stays empty. Whoever holds the
/// item or its pixels keeps them; a texture that is shown afterwards loads the file again.
ZKCOMTYPES_API void ZkRemoveTexture(const QString& Name);

/// Every picture, from the last to the first.
ZKCOMTYPES_API void ZkRemoveTextures();

/// Tells of pictures that leave the registry.
class ZKCOMTYPES_API TextureNews : public QObject {
    Q_OBJECT
  public:
    /// The one there is.
    static TextureNews& Get();

  Q_SIGNALS:
    /// A picture has left; `pixels` are those it had.
    void Removed(const zk::TPixels& pixels);
};

}  // namespace zk
