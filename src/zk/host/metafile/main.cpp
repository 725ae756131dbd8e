// Draws a metafile for `zk::LoadPicture`: the file comes in on standard input, its format ("wmf" or "emf") is the
// argument; on standard output go "<width> <height>" in a line and the rows of red, green and blue bytes. The exit
// status is 0 if that is all there.
//
// A program of its own, because the libraries that read metafiles do not stand every file: whatever happens here, the
// application that asked only finds that the picture cannot be loaded.

#include "svg.h"

#include <zk/host/picture.h>

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPoint>
#include <QRect>
#include <QSvgRenderer>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

// Sanitizers map more address space than any limit would leave.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool limitsMemory = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool limitsMemory = false;
#else
constexpr bool limitsMemory = true;
#endif
#else
constexpr bool limitsMemory = true;
#endif

void limitResources() {
#ifdef Q_OS_UNIX
    const auto limit = [](int resource, rlim_t value) {
        const rlimit both{value, value};
        setrlimit(decltype(RLIMIT_CPU)(resource), &both);
    };
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, zk::PictureLimits::MetafileMilliseconds / 1000 + 1);
    if (limitsMemory)
        limit(RLIMIT_AS, rlim_t(2) << 30);
#endif
}

bool draw(const Svg& svg, QFile& out) {
    const QSize size(zk::PowerOfTwoNotAbove(svg.Size.width()), zk::PowerOfTwoNotAbove(svg.Size.height()));
    if (size.isEmpty() || svg.Size.width() > zk::PictureLimits::Side || svg.Size.height() > zk::PictureLimits::Side ||
        qint64(size.width()) * size.height() > zk::PictureLimits::DrawnPixels)
        return false;
    QSvgRenderer renderer;
    if (!renderer.load(svg.Document))
        return false;
    if (!svg.HasViewBox)
        renderer.setViewBox(QRect(QPoint(0, 0), svg.Size));
    renderer.setAspectRatioMode(Qt::IgnoreAspectRatio);
    QImage picture(size, QImage::Format_RGB32);
    if (picture.isNull())
        return false;
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
        renderer.render(&painter, QRectF(QPointF(0, 0), size));
    }
    out.write(QByteArray::number(size.width()) + ' ' + QByteArray::number(size.height()) + '\n');
    for (int y = 0; y < size.height(); ++y) {
        const QImage row = picture.copy(0, y, size.width(), 1).convertToFormat(QImage::Format_RGB888);
        if (out.write(reinterpret_cast<const char*>(row.constScanLine(0)), qint64(size.width()) * 3) < 0)
            return false;
    }
    return out.flush();
}

}  // namespace

int main(int argc, char** argv) {
    limitResources();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QFile in;
    QFile out;
    if (arguments.size() != 2 || !in.open(stdin, QIODevice::ReadOnly) || !out.open(stdout, QIODevice::WriteOnly))
        return 1;
    const QByteArray file = in.read(zk::PictureLimits::FileBytes);
    const Svg svg = arguments[1] == QLatin1String("wmf") ? SvgOfWmf(file) : SvgOfEmf(file);
    if (svg.Document.isEmpty() || !draw(svg, out))
        return 1;
    // Nothing is tidied up: a heap that a file has spoilt must not spoil a picture that is complete.
    std::fflush(stdout);
    std::_Exit(0);
}
