#include "baseline.h"

#include <QDir>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace zk::test {

namespace {

int difference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

/// How far the pixel is from the nearest color among those of `other` at its place and beside it. An edge, of a shape
/// or of a texel, that meets the middle of pixels falls to one side or the other as the driver rounds, and the same
/// driver rounds another way on another processor.
int differenceNear(const QImage& picture, const QImage& other, int x, int y) {
    const QRgb color = picture.pixel(x, y);
    int least = difference(color, other.pixel(x, y));
    for (int dy = -1; dy <= 1 && least > 0; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            if (other.valid(x + dx, y + dy))
                least = std::min(least, difference(color, other.pixel(x + dx, y + dy)));
        }
    }
    return least;
}

}  // namespace

testing::AssertionResult LooksLikeBaseline(const QImage& picture, const QString& name) {
    constexpr int clearly = 25;
    const QString file = QStringLiteral(ZKOGL_BASELINES "/") + name + QStringLiteral(".png");
    if (qgetenv("ZKOGL_BASELINES") == "write") {
        QDir().mkpath(QStringLiteral(ZKOGL_BASELINES));
        const bool written = picture.convertToFormat(QImage::Format_RGB888).save(file);
        return written ? testing::AssertionSuccess()
                       : testing::AssertionFailure() << "cannot write " << qPrintable(file);
    }
    const QImage expected = QImage(file).convertToFormat(QImage::Format_RGB32);
    const QImage actual = picture.convertToFormat(QImage::Format_RGB32);
    qint64 off = 0;
    qint64 sum = 0;
    if (expected.size() == actual.size()) {
        for (int y = 0; y < actual.height(); ++y) {
            for (int x = 0; x < actual.width(); ++x) {
                const int distance =
                    std::max(differenceNear(actual, expected, x, y), differenceNear(expected, actual, x, y));
                off += distance > clearly ? 1 : 0;
                sum += distance;
            }
        }
        const qint64 pixels = qint64(actual.width()) * actual.height();
        if (off * 200 <= pixels && sum < pixels)
            return testing::AssertionSuccess();
    }
    const QString left = QStringLiteral(ZKOGL_TEST_PICTURES "/") + name;
    QDir().mkpath(QStringLiteral(ZKOGL_TEST_PICTURES));
    actual.save(left + QStringLiteral(".png"));
    expected.save(left + QStringLiteral("-expected.png"));
    if (expected.isNull())
        return testing::AssertionFailure() << "there is no " << qPrintable(file);
    return testing::AssertionFailure() << off << " of " << actual.width() << " x " << actual.height()
                                       << " pixels differ (expected size " << expected.width() << " x "
                                       << expected.height() << "); see " << qPrintable(left) << ".png";
}

QImage Sheet(const std::vector<std::vector<QImage>>& rows) {
    constexpr int gap = 2;
    int width = 0;
    int height = -gap;
    const auto highest = [](const std::vector<QImage>& row) {
        int most = 0;
        for (const QImage& image : row)
            most = std::max(most, image.height());
        return most;
    };
    for (const std::vector<QImage>& row : rows) {
        int rowWidth = -gap;
        for (const QImage& image : row)
            rowWidth += image.width() + gap;
        width = std::max(width, rowWidth);
        height += highest(row) + gap;
    }
    QImage sheet(width, height, QImage::Format_RGB32);
    sheet.fill(Qt::gray);
    QPainter painter(&sheet);
    int y = 0;
    for (const std::vector<QImage>& row : rows) {
        int x = 0;
        for (const QImage& image : row) {
            painter.drawImage(x, y, image);
            x += image.width() + gap;
        }
        y += highest(row) + gap;
    }
    return sheet;
}

}  // namespace zk::test
