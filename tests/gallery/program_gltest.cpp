#include "print.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Result {
    int code = -1;
    QString output;
    QString errors;
};

Result run(const QStringList& arguments, bool withDisplay = true) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!withDisplay) {
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        environment.insert("QT_QPA_PLATFORM", "offscreen");
    }
    process.setProcessEnvironment(environment);
    process.start(GALLERY_PROGRAM, arguments);
    Result result;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    if (process.exitStatus() == QProcess::NormalExit)
        result.code = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

int colorsOf(const QImage& image) {
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colors += image.pixel(x, y);
    return int(colors.size());
}

}  // namespace

TEST(GalleryProgram, WritesAPictureOfItsWindow) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("window.png");
    const Result result = run({"--picture", path});
    EXPECT_EQ(result.code, 0) << result.errors.toStdString();
    const QImage image(path);
    ASSERT_EQ(image.size(), QSize(1100, 720));
    // the picture on the left: dark background at the edges, coloured boxes in the middle
    EXPECT_LT(image.pixelColor(20, 20).lightness(), 80);
    EXPECT_GT(image.pixelColor(20, 20).blue(), 40);
    EXPECT_GT(colorsOf(image.copy(0, 0, 750, 690)), 100);
    EXPECT_GT(image.pixelColor(1090, 700).lightness(), 150) << "the panel beside it";
}

TEST(GalleryProgram, WritesItsSceneLargerThanTheScreen) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("scene.png");
    const Result result = run({"--picture", path, "--size", "3000x2000"});
    EXPECT_EQ(result.code, 0) << result.errors.toStdString();
    const QImage image(path);
    ASSERT_EQ(image.size(), QSize(3000, 2000));
    EXPECT_LT(image.pixelColor(20, 20).lightness(), 80);
    EXPECT_GT(colorsOf(image), 100);
}

TEST(GalleryProgram, WritesSeveralPicturesAndSaysWhere) {
    const QTemporaryDir folder;
    const Result result = run({"--pictures", folder.filePath("a/b")});
    EXPECT_EQ(result.code, 0) << result.errors.toStdString();
    const QStringList paths = result.output.split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(paths.size(), 13);
    QList<QImage> images;
    for (const QString& path : paths) {
        const QImage image(path);
        EXPECT_EQ(image.size(), QSize(1100, 720)) << path.toStdString();
        EXPECT_FALSE(images.contains(image)) << path.toStdString();
        images += image;
    }
}

// The same series each time, however long the pictures take.
TEST(GalleryProgram, WritesASeriesOfFrames) {
    const QTemporaryDir folder;
    QList<QImage> series[2];
    for (int run_ = 0; run_ < 2; ++run_) {
        const Result result = run({"--frames", folder.filePath(QString::number(run_)), "--count", "4"});
        EXPECT_EQ(result.code, 0) << result.errors.toStdString();
        const QStringList paths = result.output.split('\n', Qt::SkipEmptyParts);
        ASSERT_EQ(paths.size(), 4);
        EXPECT_TRUE(paths.last().endsWith("frame-0004.png"));
        for (const QString& path : paths) {
            const QImage image(path);
            EXPECT_EQ(image.size(), QSize(1100, 720));
            EXPECT_FALSE(series[run_].contains(image)) << path.toStdString();
            series[run_] += image;
        }
    }
    EXPECT_EQ(series[0], series[1]);
}

TEST(GalleryProgram, WritesItsWindowWithoutOpenGLToo) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("window.png");
    const Result result = run({"--picture", path}, false);
    EXPECT_EQ(result.code, 0) << result.errors.toStdString();
    EXPECT_GT(colorsOf(QImage(path)), 20);
}

TEST(GalleryProgram, RunsOnWithoutOpenGL) {
    EXPECT_EQ(run({"--smoke", "0.5"}, false).code, 0);
}

TEST(GalleryProgram, RunsForAWhile) {
    EXPECT_EQ(run({"--smoke", "0.5"}).code, 0);
}

TEST(GalleryProgram, RefusesWhatItDoesNotKnow) {
    for (const QStringList& arguments : {QStringList{"--nonsense"},
                                         {"--picture"},
                                         {"boxes"},
                                         {"--smoke", "soon"},
                                         {"--smoke", "-1"},
                                         {"--picture", "a.png", "--pictures", "b"},
                                         {"--frames", "a", "--pictures", "b"},
                                         {"--frames", "a", "--count", "0"},
                                         {"--frames", "a", "--count", "many"},
                                         {"--picture", "a.png", "--size", "large"},
                                         {"--picture", "a.png", "--size", "0x5"},
                                         {"--picture", "a.png", "--size", "100000x5"},
                                         {"--size", "10x10"},
                                         {"--count", "3"}}) {
        const Result result = run(arguments, false);
        EXPECT_EQ(result.code, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(result.errors.contains("gallery: ")) << result.errors.toStdString();
    }
}

TEST(GalleryProgram, SaysWhyAPictureCouldNotBeWritten) {
    const QTemporaryDir folder;
    const Result one = run({"--picture", folder.filePath("none/window.png")}, false);
    EXPECT_EQ(one.code, 1);
    EXPECT_TRUE(one.errors.contains("gallery: no picture: "));
    const QString file = folder.filePath("file");
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    EXPECT_EQ(run({"--pictures", file + "/inside"}, false).code, 1);
}

TEST(GalleryProgram, ExplainsItself) {
    const Result result = run({"--help"}, false);
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.output.contains("--picture <file>"));
}
