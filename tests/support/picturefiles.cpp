#include "picturefiles.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace zk::test {

namespace {

/// Numbers in the order of bytes that all these formats have.
class Bytes : public QByteArray {
  public:
    Bytes& Word(int value) { return put(quint16(value)); }
    Bytes& Long(qint64 value) { return put(quint32(value)); }
    Bytes& Longs(std::initializer_list<qint64> values) {
        for (const qint64 value : values)
            Long(value);
        return *this;
    }
    Bytes& Words(std::initializer_list<int> values) {
        for (const int value : values)
            Word(value);
        return *this;
    }
    Bytes& Text(const char* text, qsizetype size) {
        append(QByteArray(text).leftJustified(size, '\0'));
        return *this;
    }

  private:
    template <class Number>
    Bytes& put(Number value) {
        const Number little = qToLittleEndian(value);
        append(reinterpret_cast<const char*>(&little), sizeof little);
        return *this;
    }
};

QByteArray written(const QImage& picture, const char* format, bool progressive = false) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    if (QByteArray(format) == "jpg")
        writer.setQuality(95);
    writer.write(picture);
    return buffer.data();
}

QByteArray bmpFile(int width, int height, int bits, int packing, const QByteArray& palette, const QByteArray& pixels) {
    Bytes file;
    const auto offset = 54 + palette.size();
    file.append("BM");
    file.Longs({offset + pixels.size(), 0, offset, 40, width, height});
    file.Words({1, bits});
    file.Longs({packing, pixels.size(), 2835, 2835, palette.size() / 4, 0});
    return file + palette + pixels;
}

Bytes wmfRecord(int what, std::initializer_list<int> parameters) {
    return Bytes().Long(3 + qint64(parameters.size())).Word(what).Words(parameters);
}

Bytes emfRecord(int what, const QByteArray& parameters) {
    Bytes record = Bytes().Longs({what, 8 + parameters.size()});
    record.append(parameters);
    return record;
}

}  // namespace

QImage Gradient(const QSize& size) {
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            picture.setPixel(x, y, qRgb(x * 255 / qMax(1, size.width() - 1), y * 255 / qMax(1, size.height() - 1), 80));
    return picture;
}

QByteArray Bmp(const QImage& picture) {
    return written(picture, "bmp");
}

QByteArray Jpeg(const QImage& picture, bool progressive) {
    return written(picture, "jpg", progressive);
}

QByteArray Bmp16(const QImage& picture) {
    Bytes pixels;
    for (int y = picture.height() - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            pixels.Word(qRed(pixel) >> 3 << 10 | qGreen(pixel) >> 3 << 5 | qBlue(pixel) >> 3);
        }
        if (picture.width() % 2 != 0)
            pixels.Word(0);
    }
    return bmpFile(picture.width(), picture.height(), 16, 0, {}, pixels);
}

QByteArray BmpRuns(int width, const std::vector<QRgb>& colors) {
    Bytes palette;
    Bytes pixels;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        palette.Long(colors[i] & 0xFFFFFFU);
        pixels.append(char(width)).append(char(i)).append('\0').append('\0');  // a run, the end of the row
    }
    pixels.append('\0').append('\1');
    return bmpFile(width, int(colors.size()), 8, 1, palette, pixels);
}

QByteArray Icon(const std::vector<QImage>& images) {
    Bytes directory;
    Bytes content;
    directory.Words({0, 1, int(images.size())});
    for (const QImage& image : images) {
        const int width = image.width();
        const int height = image.height();
        Bytes bitmap;  // twice as high as it says: a mask of one bit for each pixel follows
        bitmap.Longs({40, width, 2 * height}).Words({1, 32}).Longs({0, 0, 0, 0, 0, 0});
        for (int y = height - 1; y >= 0; --y)
            for (int x = 0; x < width; ++x)
                bitmap.Long(image.pixel(x, y));
        bitmap.append(QByteArray((width + 31) / 32 * 4 * height, '\0'));
        directory.append(char(width)).append(char(height)).append('\0').append('\0');
        directory.Words({1, 32}).Longs({bitmap.size(), 6 + 16 * qint64(images.size()) + content.size()});
        content.append(bitmap);
    }
    return directory + content;
}

QByteArray Wmf() {
    enum : int {
        setMapMode = 0x0103,
        setWindowOrigin = 0x020B,
        setWindowExtent = 0x020C,
        createPen = 0x02FA,
        createBrush = 0x02FC,
        createFont = 0x02FB,
        selectObject = 0x012D,
        setBackgroundMode = 0x0102,
        rectangle = 0x041B,
        ellipse = 0x0418,
        textOut = 0x0521
    };
    constexpr int noPen = 5;
    const Bytes records[]{
        wmfRecord(setMapMode, {8}),
        wmfRecord(setWindowOrigin, {0, 0}),
        wmfRecord(setWindowExtent, {1000, 2000}),
        wmfRecord(setBackgroundMode, {1}),
        wmfRecord(createPen, {noPen, 0, 0, 0, 0}),
        wmfRecord(selectObject, {0}),
        wmfRecord(createBrush, {0, 0x00FF, 0, 0}),
        wmfRecord(selectObject, {1}),
        wmfRecord(rectangle, {1000, 1000, 0, 0}),
        wmfRecord(createBrush, {0, 0, 0x00FF, 0}),
        wmfRecord(selectObject, {2}),
        wmfRecord(ellipse, {900, 1900, 100, 1100}),
        wmfRecord(createFont, {-600, 0, 0, 0, 700, 0, 0, 0, 0, 0x7241, 0x6169, 0x006C}),
        wmfRecord(selectObject, {3}),
        wmfRecord(textOut, {2, 0x6B5A, 200, 200}),
        wmfRecord(0, {}),
    };
    QByteArray content;
    qsizetype longest = 0;
    for (const Bytes& record : records) {
        content += record;
        longest = std::max(longest, record.size());
    }
    Bytes placeable;
    placeable.Long(0x9AC6CDD7).Words({0, 0, 0, 2000, 1000, 720}).Long(0);
    quint16 sum = 0;
    for (qsizetype i = 0; i < placeable.size(); i += 2)
        sum ^= qFromLittleEndian<quint16>(placeable.constData() + i);
    placeable.Word(sum);
    Bytes header;
    header.Words({1, 9, 0x300}).Long((18 + content.size()) / 2).Word(4).Long(longest / 2).Word(0);
    return placeable + header + content;
}

QByteArray Emf() {
    enum : int {
        header = 1,
        endOfFile = 14,
        setBackgroundMode = 18,
        setTextColor = 24,
        selectObject = 37,
        createBrush = 39,
        ellipse = 42,
        rectangle = 43,
        createFont = 82,
        textOut = 84
    };
    constexpr qint64 nullPen = 0x80000008;
    Bytes font;
    font.Long(3).Longs({-80, 0, 0, 0, 700, 0, 0});
    const QString face = QStringLiteral("Arial");
    font.append(QByteArray(reinterpret_cast<const char*>(face.utf16()), face.size() * 2).leftJustified(64, '\0'));
    font.append(QByteArray(332 - 8 - font.size(), '\0'));
    Bytes text;
    text.Longs({0, 0, 0, 0, 1, 0, 0, 27, 27, 2, 76, 0, 0, 0, 0, 0, 80}).Words({'Z', 'k'}).Longs({50, 45});
    QByteArray content =
        emfRecord(setBackgroundMode, Bytes().Long(1)) + emfRecord(selectObject, Bytes().Long(nullPen)) +
        emfRecord(createBrush, Bytes().Longs({1, 0, 0x0000FF, 0})) + emfRecord(selectObject, Bytes().Long(1)) +
        emfRecord(rectangle, Bytes().Longs({0, 0, 133, 133})) +
        emfRecord(createBrush, Bytes().Longs({2, 0, 0xFF0000, 0})) + emfRecord(selectObject, Bytes().Long(2)) +
        emfRecord(ellipse, Bytes().Longs({147, 13, 253, 120})) + emfRecord(createFont, font) +
        emfRecord(selectObject, Bytes().Long(3)) + emfRecord(setTextColor, Bytes().Long(0)) + emfRecord(textOut, text) +
        emfRecord(endOfFile, Bytes().Longs({0, 16, 20}));
    constexpr qint64 dots = 1000;  // of the device, which is 250 mm wide and high
    constexpr qint64 millimetres = 250;
    const auto hundredths = [](qint64 size) { return size * millimetres * 100 / dots; };
    Bytes start;
    start.Longs({0, 0, 266, 132, 0, 0, hundredths(267), hundredths(133)}).append(" EMF");
    start.Longs({0x10000, 88 + content.size(), 14}).Words({4, 0});
    start.Longs({0, 0, 0, dots, dots, millimetres, millimetres});
    return emfRecord(header, start) + content;
}

QString Files::Write(const QString& name, const QByteArray& content) const {
    QFile file(Path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(file.fileName()));
    return file.fileName();
}

}  // namespace zk::test
