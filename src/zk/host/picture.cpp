#include "picture.h"

#include <zk/host/picturebytes.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QList>
#include <QPainter>
#include <QProcess>

#include <array>
#include <utility>

namespace zk {

namespace {

QString metafileProgram;  // NOLINT: set once by an application that deploys the program elsewhere

bool fits(const QSize& size) {
    return size.width() > 0 && size.height() > 0 && size.width() <= PictureLimits::Side &&
           size.height() <= PictureLimits::Side && qint64(size.width()) * size.height() <= PictureLimits::BitmapPixels;
}

QByteArray contentOf(const QString& name) {
    const QFileInfo info(name);
    // Devices and pipes have no end.
    if (!info.isFile() || info.size() > PictureLimits::FileBytes)
        return {};
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.read(PictureLimits::FileBytes);
}

/// Qt's reader for one format, which does not look for others when the content does not fit.
class Reader {
  public:
    Reader(const QByteArray& content, const char* format) {
        buffer_.setData(content);
        buffer_.open(QIODevice::ReadOnly);
        reader_.setDecideFormatFromContent(false);
        reader_.setAutoDetectImageFormat(false);
        reader_.setDevice(&buffer_);
        reader_.setFormat(format);
    }

    QImageReader* operator->() { return &reader_; }
    QImage Read() {
        if (!fits(reader_.size()))
            return {};
        // Qt leaves the memory of pixels that run lengths leave out as it was: they get the first color.
        QImage picture(reader_.size(), reader_.imageFormat());
        picture.fill(0);
        return reader_.read(&picture) ? picture : QImage();
    }

  private:
    QBuffer buffer_;
    QImageReader reader_;
};

QImage loadIcon(const QByteArray& content) {
    if (!IsWholeIcon(content))
        return {};
    QImage largest;
    const int count = Reader(content, "ico")->imageCount();
    for (int i = 0; i < count; ++i) {
        Reader reader(content, "ico");
        if (!reader->jumpToImage(i))
            continue;
        const QImage image = reader.Read();
        const auto area = [](const QImage& of) { return qint64(of.width()) * of.height(); };
        if (std::pair(area(image), image.depth()) > std::pair(area(largest), largest.depth()))
            largest = image;
    }
    return largest;
}

QImage loadMetafile(const QByteArray& content, const QString& format) {
    const QString program = MetafileProgram();
    if (program.isEmpty())
        return {};
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, {format});
    if (!process.waitForStarted(PictureLimits::MetafileMilliseconds))
        return {};
    process.write(content);
    process.closeWriteChannel();
    // The size in one line, then the rows: red, green and blue of each pixel.
    constexpr qint64 mostBytes = 32 + 3 * PictureLimits::DrawnPixels;
    QDeadlineTimer deadline(PictureLimits::MetafileMilliseconds);
    QByteArray drawn;
    while (drawn.size() <= mostBytes && process.waitForReadyRead(int(deadline.remainingTime())))
        drawn += process.readAll();
    if (drawn.size() > mostBytes ||
        !(process.state() == QProcess::NotRunning || process.waitForFinished(int(deadline.remainingTime())))) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    drawn += process.readAll();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    const qsizetype lineEnd = drawn.left(32).indexOf('\n');
    const QList<QByteArray> size = drawn.left(lineEnd).split(' ');
    if (lineEnd < 0 || size.size() != 2)
        return {};
    const int width = size[0].toInt();
    const int height = size[1].toInt();
    if (width < 1 || height < 1 || qint64(width) * height > PictureLimits::DrawnPixels)
        return {};
    if (drawn.size() - lineEnd - 1 != qsizetype(width) * height * 3)
        return {};
    return QImage(reinterpret_cast<const uchar*>(drawn.constData()) + lineEnd + 1, width, height, qsizetype(width) * 3,
                  QImage::Format_RGB888)
        .convertToFormat(QImage::Format_RGB32);
}

}  // namespace

std::optional<PictureFormat> PictureFormatOf(const QString& name) {
    static constexpr std::array<std::pair<QLatin1StringView, PictureFormat>, 6> endings{{
        {QLatin1StringView(".jpg"), PictureFormat::jpeg},
        {QLatin1StringView(".jpeg"), PictureFormat::jpeg},
        {QLatin1StringView(".ico"), PictureFormat::icon},
        {QLatin1StringView(".wmf"), PictureFormat::wmf},
        {QLatin1StringView(".emf"), PictureFormat::emf},
        {QLatin1StringView(".bmp"), PictureFormat::bmp},
    }};
    for (const auto& [ending, format] : endings)
        if (name.endsWith(ending, Qt::CaseInsensitive))
            return format;
    return std::nullopt;
}

int PowerOfTwoNotAbove(int side) {
    if (side < 1)
        return 0;
    int power = 1;
    while (power <= side / 2)
        power *= 2;
    return power;
}

QImage ScaledToPowerOfTwo(const QImage& picture) {
    if (!fits(picture.size()))
        return {};
    const QSize size(PowerOfTwoNotAbove(picture.width()), PowerOfTwoNotAbove(picture.height()));
    QImage scaled = picture;
    if (scaled.hasAlphaChannel()) {
        QImage opaque(picture.size(), QImage::Format_RGB32);
        opaque.fill(Qt::white);
        QPainter(&opaque).drawImage(0, 0, picture);
        scaled = opaque;
    }
    if (scaled.size() != size)
        scaled =
            scaled.convertToFormat(QImage::Format_RGB32).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return scaled.convertToFormat(QImage::Format_RGB32);
}

QImage LoadPicture(const QString& file, PictureFormat format) {
    const QByteArray content = contentOf(file);
    if (content.isEmpty())
        return {};
    switch (format) {
        case PictureFormat::jpeg: {
            const std::optional<qint64> scans = ScansOfWholeJpeg(content);
            const QSize size = scans ? Reader(content, "jpg")->size() : QSize();
            if (!fits(size) || *scans * size.width() * size.height() > PictureLimits::JpegScannedPixels)
                return {};
            return ScaledToPowerOfTwo(Reader(content, "jpg").Read());
        }
        case PictureFormat::icon:
            return ScaledToPowerOfTwo(loadIcon(content));
        case PictureFormat::wmf:
            return loadMetafile(content, QStringLiteral("wmf"));
        case PictureFormat::emf:
            return loadMetafile(content, QStringLiteral("emf"));
        case PictureFormat::bmp: {
            if (!IsWholeBmp(content))
                return {};
            // The format has no alpha that its readers agree on.
            const QImage picture = Reader(content, "bmp").Read();
            return ScaledToPowerOfTwo(picture.convertToFormat(QImage::Format_RGB32));
        }
    }
    return {};
}

QString MetafileProgram() {
    if (!metafileProgram.isEmpty())
        return metafileProgram;
    const QString name = QStringLiteral(ZKOGL_METAFILE_NAME);
    const QStringList folders{
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString(),
        QStringLiteral(ZKOGL_METAFILE_INSTALLED),
        QStringLiteral(ZKOGL_METAFILE_BUILT),
    };
    for (const QString& folder : folders) {
        const QFileInfo program(QDir(folder), name);
        if (!folder.isEmpty() && program.isFile() && program.isExecutable())
            return program.absoluteFilePath();
    }
    return {};
}

void SetMetafileProgram(const QString& path) {
    metafileProgram = path;
}

}  // namespace zk
