#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

struct Seen {
    int pixels = 0;
    QPointF middle;
    QRect box;
};

/// Where the program's picture shows something else than its background.
Seen runAt(double part) {
    const QTemporaryDir folder;
    const QString file = folder.filePath("ellipse.png");
    QProcess process;
    process.start(ELLIPSE_PROGRAM, {"--at", QString::number(part), "--picture", file});
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    const QImage image(file);
    EXPECT_EQ(image.size(), QSize(480, 360));
    Seen seen;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == image.pixel(0, 0))
                continue;
            ++seen.pixels;
            seen.middle += QPointF(x, y);
            seen.box |= QRect(x, y, 1, 1);
        }
    }
    if (seen.pixels > 0)
        seen.middle /= seen.pixels;
    return seen;
}

}  // namespace

TEST(EllipseExample, TheBoxIsWhereItsFrameIs) {
    constexpr double pixelsPerCm = 30;
    for (const double part : {0.0, 0.25, 0.4, 0.75, 3.25}) {
        const Seen seen = runAt(part);
        const double angle = 2 * std::numbers::pi * part;
        EXPECT_NEAR(seen.middle.x(), 240 + 5 * std::cos(angle) * pixelsPerCm, 1.5) << part;
        EXPECT_NEAR(seen.middle.y(), 180 - 3 * std::sin(angle) * pixelsPerCm, 1.5) << part;
        EXPECT_NEAR(seen.pixels, 1.2 * 0.6 * pixelsPerCm * pixelsPerCm, 60) << part;
        // At the ends of the axes it heads along the picture's edges.
        const bool isUpright = part == 0.0;
        if (part != 0.4) {
            EXPECT_NEAR(seen.box.width(), isUpright ? 18 : 36, 2) << part;
            EXPECT_NEAR(seen.box.height(), isUpright ? 36 : 18, 2) << part;
        }
    }
}
