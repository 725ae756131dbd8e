// Picture files of every format: the first byte says which, the rest is the file. Whatever it holds, loading ends with
// a picture of power-of-two sides or with none; metafiles are drawn by their own program, which may come to any end.
#include <zk/host/picture.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

using namespace zk;

namespace {

void Require(bool holds) {
    if (!holds)
        std::abort();
}

bool IsPowerOfTwo(int side) {
    return side > 0 && PowerOfTwoNotAbove(side) == side;
}

// Readers of pictures speak to standard error.
void BeQuiet(QtMsgType /*type*/, const QMessageLogContext& /*where*/, const QString& /*text*/) {}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "picture_fuzz";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static const QTemporaryDir folder;
    static const auto quiet = qInstallMessageHandler(BeQuiet);
    static_cast<void>(quiet);
    if (size < 2 || size > 65536)
        return 0;
    constexpr PictureFormat formats[] = {PictureFormat::bmp, PictureFormat::jpeg, PictureFormat::icon,
                                         PictureFormat::wmf, PictureFormat::emf};
    QFile file(folder.filePath(QStringLiteral("picture")));
    Require(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(data + 1), qint64(size - 1));
    file.close();
    const QImage picture = LoadPicture(file.fileName(), formats[data[0] % std::size(formats)]);
    if (!picture.isNull())
        Require(IsPowerOfTwo(picture.width()) && IsPowerOfTwo(picture.height()) &&
                picture.format() == QImage::Format_RGB32 &&
                qint64(picture.width()) * picture.height() <= PictureLimits::DrawnPixels);
    return 0;
}
