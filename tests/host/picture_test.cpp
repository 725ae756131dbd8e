#include "picturefiles.h"

#include <zk/host/picture.h>
#include <zk/host/picturebytes.h>

#include <QColor>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QtEndian>
#include <gtest/gtest.h>

#include <cmath>

using namespace zk;
using namespace zk::test;

namespace {

int distance(QRgb one, QRgb other) {
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

// How far a picture is from the gradient of its size, in the worst pixel.
int distanceFromGradient(const QImage& picture) {
    const QImage expected = Gradient(picture.size());
    int worst = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            worst = std::max(worst, distance(picture.pixel(x, y), expected.pixel(x, y)));
    return worst;
}

class Picture : public testing::Test {
  protected:
    QImage load(const QString& name, const QByteArray& content) const {
        const QString file = files.Write(name, content);
        return LoadPicture(file, PictureFormatOf(name).value());
    }

    Files files;
};

}  // namespace

TEST_F(Picture, TheEndingOfTheNameSaysTheFormat) {
    EXPECT_EQ(PictureFormatOf("a.bmp"), PictureFormat::bmp);
    EXPECT_EQ(PictureFormatOf("a.BMP"), PictureFormat::bmp);
    EXPECT_EQ(PictureFormatOf("a.jpg"), PictureFormat::jpeg);
    EXPECT_EQ(PictureFormatOf("a.Jpeg"), PictureFormat::jpeg);
    EXPECT_EQ(PictureFormatOf("a.ico"), PictureFormat::icon);
    EXPECT_EQ(PictureFormatOf("a.wmf"), PictureFormat::wmf);
    EXPECT_EQ(PictureFormatOf("a.bmp.EMF"), PictureFormat::emf);
    for (const char* name : {"", "bmp", "a", "a.gif", "a.png", "a.bmpx", "a.bmp ", "a.bmp/b"})
        EXPECT_EQ(PictureFormatOf(name), std::nullopt) << name;
}

TEST_F(Picture, PowersOfTwo) {
    for (const auto& [side, power] : {std::pair(-5, 0),
                                      {0, 0},
                                      {1, 1},
                                      {2, 2},
                                      {3, 2},
                                      {4, 4},
                                      {200, 128},
                                      {300, 256},
                                      {1023, 512},
                                      {1024, 1024},
                                      {2147483647, 1 << 30}})
        EXPECT_EQ(PowerOfTwoNotAbove(side), power) << side;
}

TEST_F(Picture, EverySizeBecomesPowersOfTwo) {
    for (const auto& [size, expected] : {std::pair(QSize(300, 200), QSize(256, 128)),
                                         {QSize(1, 1), QSize(1, 1)},
                                         {QSize(2, 2), QSize(2, 2)},
                                         {QSize(3, 3), QSize(2, 2)},
                                         {QSize(1000, 2), QSize(512, 2)},
                                         {QSize(1, 700), QSize(1, 512)},
                                         {QSize(256, 256), QSize(256, 256)}}) {
        const QImage picture = load("a.bmp", Bmp(Gradient(size)));
        EXPECT_EQ(picture.size(), expected);
        EXPECT_EQ(picture.format(), QImage::Format_RGB32);
        // What is not scaled keeps every pixel.
        EXPECT_LE(distanceFromGradient(picture), size == expected ? 0 : size == QSize(300, 200) ? 3 : 255);
    }
}

TEST_F(Picture, BitmapsOfManyKinds) {
    const QImage gradient = Gradient({64, 32});
    EXPECT_EQ(distanceFromGradient(load("a.bmp", Bmp(gradient))), 0);
    EXPECT_LE(distanceFromGradient(load("a.bmp", Bmp16(gradient))), 8);
    EXPECT_EQ(load("a.bmp", Bmp16(Gradient({33, 7}))).size(), QSize(32, 4));
    const QImage bits = load("a.bmp", Bmp(gradient.convertToFormat(QImage::Format_Mono)));
    EXPECT_EQ(bits.size(), QSize(64, 32));
    EXPECT_LE(distanceFromGradient(load("a.bmp", Bmp(gradient.convertToFormat(QImage::Format_Indexed8)))), 100);

    const QImage runs = load("a.bmp", BmpRuns(16, {qRgb(255, 0, 0), qRgb(0, 255, 0)}));
    ASSERT_EQ(runs.size(), QSize(16, 2));
    EXPECT_EQ(runs.pixelColor(0, 0), QColor(0, 255, 0));
    EXPECT_EQ(runs.pixelColor(15, 1), QColor(255, 0, 0));
}

// Their rows may hold pixels one by one, filled up to two bytes, and moves over pixels that keep the first color.
TEST_F(Picture, RunLengthsWithPixelsOneByOneAndMoves) {
    const QRgb red = qRgb(255, 0, 0);
    const QRgb blue = qRgb(0, 0, 255);
    QByteArray start = BmpRuns(4, {red, blue});
    start.chop(2 * 4 + 2);
    const auto pixelsOf = [&](const QByteArray& runs) {
        const QImage picture = load("a.bmp", start + QByteArray::fromHex(runs));
        std::vector<QRgb> pixels;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                pixels.push_back(picture.pixel(x, y));
        return pixels;
    };
    // Of the pixels one by one "00 01" is no mark of the end.
    EXPECT_EQ(pixelsOf("0003000101000100 0000 00020100 0301 0001"),
              (std::vector<QRgb>{red, blue, blue, blue, red, blue, blue, red}));
    EXPECT_TRUE(pixelsOf("0004010100010000 00020001").empty()) << "no mark of the end";
    EXPECT_TRUE(pixelsOf("00040101").empty()) << "pixels are missing";

    start[28] = 4;  // four bits for each pixel
    start[30] = 2;
    EXPECT_EQ(pixelsOf("000401000000 0401 0001"), (std::vector<QRgb>{red, blue, red, blue, red, blue, red, red}));
    EXPECT_TRUE(pixelsOf("00040001 0000").empty()) << "no mark of the end";
    start[30] = 4;  // a JPEG in a BMP
    EXPECT_TRUE(pixelsOf("000401000000 0401 0001").empty());
}

TEST_F(Picture, JpegsOfBothKinds) {
    for (const bool progressive : {false, true}) {
        const QByteArray file = Jpeg(Gradient({128, 64}), progressive);
        EXPECT_EQ(ScansOfWholeJpeg(file).value_or(0) > 1, progressive);
        for (const char* name : {"a.jpg", "a.jpeg", "a.JPG"})
            EXPECT_LE(distanceFromGradient(load(name, file)), 12) << name;
    }
    EXPECT_FALSE(load("a.jpg", Jpeg(Gradient({64, 64}).convertToFormat(QImage::Format_Grayscale8), false)).isNull());
    EXPECT_FALSE(load("a.jpg", Jpeg(Gradient({64, 64}), false) + QByteArray(1000, 'x')).isNull())
        << "what follows the picture does not matter";
}

// Of the format's first version, whose header has sizes of 16 bits and palettes colors of three bytes.
TEST_F(Picture, BitmapsOfTheFirstVersion) {
    const QByteArray whole = QByteArray("BM") + QByteArray::fromHex(
                                                    "30000000 00000000 20000000 0C000000 0400 0200 0100 0100"
                                                    "FF0000 0000FF"      // blue, red
                                                    "A0000000 50000000"  // the lower row first
                                                    "0000000000000000");
    const QImage picture = load("a.bmp", whole);
    ASSERT_EQ(picture.size(), QSize(4, 2));
    EXPECT_EQ(picture.pixel(0, 1), qRgb(255, 0, 0));
    EXPECT_EQ(picture.pixel(1, 1), qRgb(0, 0, 255));
    EXPECT_EQ(picture.pixel(0, 0), qRgb(0, 0, 255));
    EXPECT_EQ(picture.pixel(1, 0), qRgb(255, 0, 0));
    for (const qsizetype left : {qsizetype(25), qsizetype(31), qsizetype(36)})
        EXPECT_TRUE(load("a.bmp", whole.left(left)).isNull()) << left;
}

TEST_F(Picture, AJpegWhoseSegmentsDoNotFollowEachOther) {
    QByteArray file = Jpeg(Gradient({16, 16}), false);
    ASSERT_TRUE(ScansOfWholeJpeg(file).has_value());
    file.insert(2, '\0');
    EXPECT_EQ(ScansOfWholeJpeg(file), std::nullopt);
    EXPECT_TRUE(load("a.jpg", file).isNull());
    file[2] = '\xFF';  // segments may be filled up with these
    EXPECT_EQ(ScansOfWholeJpeg(file), 1);
    EXPECT_LE(distanceFromGradient(load("a.jpg", file)), 12);
}

TEST_F(Picture, OfAnIconWithABrokenImageTheOthersCount) {
    QImage large(32, 32, QImage::Format_ARGB32);
    large.fill(Qt::blue);
    QImage small(16, 16, QImage::Format_ARGB32);
    small.fill(Qt::red);
    QByteArray file = Icon({small, large});
    file[6 + 2 * 16 + 16 * 16 * 4 + 40 + 16 * 4 + 14] = 3;  // bits of a pixel of the second
    const QImage picture = load("a.ico", file);
    ASSERT_EQ(picture.size(), QSize(16, 16));
    EXPECT_EQ(picture.pixelColor(5, 5), QColor(255, 0, 0));
}

TEST_F(Picture, OfAnIconTheLargestImageOverWhite) {
    QImage large(32, 32, QImage::Format_ARGB32);
    large.fill(qRgba(0, 0, 255, 255));
    large.setPixel(0, 0, qRgba(0, 255, 0, 0));
    large.setPixel(1, 0, qRgba(0, 0, 0, 128));
    QImage small(16, 16, QImage::Format_ARGB32);
    small.fill(qRgba(255, 0, 0, 255));
    for (const std::vector<QImage>& order : {std::vector{small, large}, {large, small}, {large}}) {
        const QImage picture = load("a.ico", Icon(order));
        ASSERT_EQ(picture.size(), QSize(32, 32));
        EXPECT_EQ(picture.pixelColor(31, 31), QColor(0, 0, 255));
        EXPECT_EQ(picture.pixelColor(0, 0), QColor(255, 255, 255));
        EXPECT_NEAR(picture.pixelColor(1, 0).red(), 127, 2);
    }
    QImage odd(48, 40, QImage::Format_ARGB32);
    odd.fill(Qt::red);
    EXPECT_EQ(load("a.ico", Icon({small, odd})).size(), QSize(32, 32));
}

TEST_F(Picture, MetafilesAreDrawnAtTheirFinalSize) {
    ASSERT_FALSE(MetafileProgram().isEmpty());
    for (const auto& [name, content] : {std::pair("a.wmf", Wmf()), {"a.emf", Emf()}}) {
        const QImage picture = load(name, content);
        ASSERT_EQ(picture.size(), QSize(256, 128)) << name;
        EXPECT_LE(distance(picture.pixel(10, 120), qRgb(255, 0, 0)), 3) << name;
        EXPECT_LE(distance(picture.pixel(192, 64), qRgb(0, 0, 255)), 3) << name;
        EXPECT_EQ(picture.pixelColor(250, 4), QColor(255, 255, 255)) << name;
        EXPECT_LE(distance(picture.pixel(123, 5), qRgb(255, 0, 0)), 3) << name;
        EXPECT_LE(distance(picture.pixel(133, 5), qRgb(255, 255, 255)), 3) << name;
        int black = 0;
        int between = 0;
        for (int y = 0; y < 128; ++y) {
            for (int x = 0; x < 126; ++x)
                black += distance(picture.pixel(x, y), qRgb(0, 0, 0)) < 40 ? 1 : 0;
            for (int x = 136; x < 256; ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                between += pixel.red() > 20 && pixel.red() < 235 ? 1 : 0;
            }
        }
        EXPECT_GT(black, 300) << name << ": the text is there";
        EXPECT_LT(black, 6000) << name;
        EXPECT_GT(between, 50) << name << ": edges are smooth";
    }
}

TEST_F(Picture, FilesThatCannotBeLoaded) {
    const std::vector<std::pair<QString, QByteArray>> whole{{"a.bmp", Bmp(Gradient({40, 30}))},
                                                            {"b.bmp", Bmp16(Gradient({40, 30}))},
                                                            {"c.bmp", BmpRuns(9, {1, 2, 3})},
                                                            {"a.jpg", Jpeg(Gradient({40, 30}), false)},
                                                            {"b.jpg", Jpeg(Gradient({40, 30}), true)},
                                                            {"a.ico", Icon({Gradient({16, 16})})},
                                                            {"a.wmf", Wmf()},
                                                            {"a.emf", Emf()}};
    for (const auto& [name, content] : whole) {
        const PictureFormat format = PictureFormatOf(name).value();
        ASSERT_FALSE(load(name, content).isNull()) << name.toStdString();
        EXPECT_TRUE(LoadPicture(files.Path("missing-" + name), format).isNull());
        EXPECT_TRUE(LoadPicture(QDir(files.Path(".")).absolutePath(), format).isNull()) << "a directory";
        EXPECT_TRUE(LoadPicture("/dev/zero", format).isNull()) << "without end";
        EXPECT_TRUE(LoadPicture(QString(), format).isNull());
        EXPECT_TRUE(load(name, {}).isNull()) << name.toStdString() << " empty";
        EXPECT_TRUE(load(name, QByteArray(1000, '\0')).isNull()) << name.toStdString();
        EXPECT_TRUE(load(name, QByteArray(1000, 'x')).isNull()) << name.toStdString();
        for (const qsizetype left : {qsizetype(1), qsizetype(10), content.size() / 2, content.size() - 9})
            EXPECT_TRUE(load(name, content.left(left)).isNull()) << name.toStdString() << " cut to " << left;
        for (const auto& [other, lie] : whole) {
            if (PictureFormatOf(other) != format) {
                EXPECT_TRUE(load(name, lie).isNull()) << other.toStdString() << " as " << name.toStdString();
            }
        }
    }
}

TEST_F(Picture, FilesBeyondTheLimits) {
    QByteArray bmp = Bmp(Gradient({4, 4}));
    for (const auto& [at, value] : {std::pair(18, 0x7FFFFFFF), {22, 0x7FFFFFFF}, {18, 20000}, {18, 0}, {18, -4}}) {
        QByteArray file = bmp;
        const qint32 little = qToLittleEndian(qint32(value));
        file.replace(at, 4, QByteArray(reinterpret_cast<const char*>(&little), 4));
        EXPECT_TRUE(load("a.bmp", file).isNull()) << at << ' ' << value;
    }
    QByteArray jpeg = Jpeg(Gradient({16, 16}), true);
    // Thousands of scans over a picture that is large, but not too large.
    const qsizetype scan = jpeg.lastIndexOf(QByteArray::fromHex("FFDA"));
    const QByteArray last = jpeg.mid(scan, jpeg.size() - 2 - scan);
    jpeg.chop(2);
    for (int i = 0; i < 5000; ++i)
        jpeg += last;
    jpeg += QByteArray::fromHex("FFD9");
    const qsizetype frame = jpeg.indexOf(QByteArray::fromHex("FFC2"));
    jpeg.replace(frame + 5, 4, QByteArray::fromHex("10001000"));
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(load("a.jpg", jpeg).isNull());
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(Picture, APictureInMemory) {
    EXPECT_TRUE(ScaledToPowerOfTwo(QImage()).isNull());
    EXPECT_EQ(ScaledToPowerOfTwo(Gradient({5, 9})).size(), QSize(4, 8));
    QImage clear(2, 2, QImage::Format_ARGB32_Premultiplied);
    clear.fill(Qt::transparent);
    EXPECT_EQ(ScaledToPowerOfTwo(clear).pixelColor(1, 1), QColor(255, 255, 255));
    EXPECT_TRUE(ScaledToPowerOfTwo(QImage(PictureLimits::Side + 1, 1, QImage::Format_Mono)).isNull());
}

// What the program for metafiles says is believed as far as it fits together.
TEST_F(Picture, TheAnswerOfTheProgramIsChecked) {
    const QString program = files.Path("program");
    const auto answer = [&](const QByteArray& text) {
        files.Write("program", "#!/bin/sh\ncat > /dev/null\nprintf '" + text + "'\n");
        QFile(program).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        SetMetafileProgram(program);
        const QImage picture = load("a.wmf", Wmf());
        SetMetafileProgram(QString());
        return picture;
    };
    const QImage two = answer("2 1\\nabcABC");
    ASSERT_EQ(two.size(), QSize(2, 1));
    EXPECT_EQ(two.pixel(0, 0), qRgb('a', 'b', 'c'));
    EXPECT_EQ(two.pixel(1, 0), qRgb('A', 'B', 'C'));
    for (const char* text : {"", "2 1", "2 1\\nabcAB", "2 1\\nabcABCD", "2\\nabcABC", "2 1 1\\nabcABC", "0 1\\n",
                             "1 0\\n", "-1 -1\\nabc", "x y\\nabc", "1000000 1000000\\nabc", "99999999999 1\\nabc"})
        EXPECT_TRUE(answer(text).isNull()) << text;
    EXPECT_TRUE(answer("2 1\\nabcABC'; exit 1; echo '").isNull()) << "it says itself that it failed";
}

TEST_F(Picture, WithoutTheProgramNoMetafile) {
    SetMetafileProgram(files.Path("nothing"));
    EXPECT_TRUE(load("a.wmf", Wmf()).isNull());
    SetMetafileProgram(QStringLiteral("/bin/false"));
    EXPECT_TRUE(load("a.wmf", Wmf()).isNull());
    SetMetafileProgram(QStringLiteral("/bin/true"));
    EXPECT_TRUE(load("a.emf", Emf()).isNull());
    SetMetafileProgram(QStringLiteral("/bin/cat"));
    EXPECT_TRUE(load("a.emf", Emf()).isNull());
    SetMetafileProgram(QStringLiteral("/usr/bin/yes"));  // does not end
    EXPECT_TRUE(load("a.emf", Emf()).isNull());
    SetMetafileProgram(QString());
    EXPECT_FALSE(load("a.emf", Emf()).isNull());
}
