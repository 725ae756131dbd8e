#pragma once

#include <zk/export.h>

#include <QImage>
#include <QSize>
#include <QString>

#include <optional>

namespace zk {

/// What a picture file is read as. Its name's ending alone decides that, not its content.
enum class PictureFormat { jpeg, icon, wmf, emf, bmp };

/// The format that the name's ending stands for, in any case: .jpg and .jpeg, .ico, .wmf, .emf, .bmp.
ZKHOST_API std::optional<PictureFormat> PictureFormatOf(const QString& name);

/// The greatest power of two that is not above `side`; 0 for sides below 1.
ZKHOST_API int PowerOfTwoNotAbove(int side);

/// What a picture file may take. A file beyond a limit is not loaded.
struct PictureLimits {
    static constexpr qint64 FileBytes = 128LL << 20;          ///< of the file
    static constexpr int Side = 16384;                        ///< pixels
    static constexpr qint64 BitmapPixels = 32LL << 20;        ///< of the picture as it is stored
    static constexpr qint64 DrawnPixels = 64LL << 20;         ///< of a metafile as it is drawn
    static constexpr qint64 JpegScannedPixels = 512LL << 20;  ///< pixels times scans: a progressive JPEG has about ten
    static constexpr int MetafileMilliseconds = 10'000;       ///< to draw a metafile
};

/// Loads a picture at the greatest power-of-two size that is not above its own, in each direction apart: what
/// OpenGL 1.1 takes as a texture. A null image where the file cannot be read as `format`: it is missing, no regular
/// file, empty, cut short, something else than its name says, or beyond `PictureLimits`.
///
/// The result has no alpha: what is transparent in an icon, and what a metafile leaves blank, is white. Pixels are
/// averaged where the picture gets smaller. Of an icon file the largest image is taken, of several as large the one
/// with the most colours. A metafile is drawn at its final size, with smooth edges; its own size is that in its header
/// at 96 dots per inch (WMF), or in dots of its reference device (EMF).
///
/// Metafiles are drawn by a program of its own (`MetafileProgram`), so that whatever a file does to the libraries that
/// read it, the application goes on.
ZKHOST_API QImage LoadPicture(const QString& file, PictureFormat format);

/// As `LoadPicture` does with a picture that is in memory: scaled, without alpha. Null for a null image or one beyond
/// the limits.
ZKHOST_API QImage ScaledToPowerOfTwo(const QImage& picture);

/// The program that draws metafiles, or an empty text if there is none: then no metafile can be loaded. It is looked
/// for beside the application, where it was installed, and where it was built; `SetMetafileProgram` names it for
/// applications that carry it along elsewhere.
ZKHOST_API QString MetafileProgram();
ZKHOST_API void SetMetafileProgram(const QString& path);

}  // namespace zk
