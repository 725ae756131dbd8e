#include "baseline.h"

#include <QDir>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace zk::test {

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
                const QRgb a = actual.pixel(x, y);
                const QRgb b = expected.pixel(x, y);
                const int differences[]{std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                        std::abs(qBlue(a) - qBlue(b))};
                off += *std::max_element(std::begin(differences), std::end(differences)) > clearly ? 1 : 0;
                sum += differences[0] + differences[1] + differences[2];
            }
        }
        const qint64 pixels = qint64(actual.width()) * actual.height();
        if (off * 100 <= pixels && sum < pixels * 3)
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
