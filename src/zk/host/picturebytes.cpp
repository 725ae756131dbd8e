#include "picturebytes.h"

#include <QtEndian>

namespace zk {

namespace {

/// The numbers of a file; those beyond its end are 0.
class Bytes {
  public:
    explicit Bytes(const QByteArray& file) : file_(file) {}

    qint64 Size() const { return file_.size(); }
    unsigned Byte(qint64 at) const { return at >= 0 && at < Size() ? uchar(file_[at]) : 0U; }
    unsigned Word(qint64 at) const { return Byte(at) | Byte(at + 1) << 8; }
    quint32 Long(qint64 at) const { return Word(at) | quint32(Word(at + 2)) << 16; }
    unsigned BigWord(qint64 at) const { return Byte(at) << 8 | Byte(at + 1); }

  private:
    const QByteArray& file_;
};

/// True when the run lengths from `at` on come to the mark of their end. `bits` per pixel: 4 or 8.
bool runsEnd(const Bytes& bytes, qint64 at, unsigned bits) {
    while (at + 2 <= bytes.Size()) {
        const unsigned count = bytes.Byte(at);
        const unsigned what = bytes.Byte(at + 1);
        at += 2;
        if (count > 0 || what == 0)
            continue;  // so many pixels of one colour, or the end of a row
        if (what == 1)
            return true;
        const unsigned pixelBytes = (what * bits + 7) / 8;
        at += what == 2 ? 2 : qint64(pixelBytes + pixelBytes % 2);  // a move, or pixels one by one
    }
    return false;
}

}  // namespace

std::optional<qint64> ScansOfWholeJpeg(const QByteArray& file) {
    constexpr unsigned startOfImage = 0xD8;
    constexpr unsigned endOfImage = 0xD9;
    constexpr unsigned startOfScan = 0xDA;
    const Bytes bytes(file);
    if (bytes.BigWord(0) != (0xFF00U | startOfImage))
        return std::nullopt;
    qint64 scans = 0;
    bool inScan = false;
    for (qint64 at = 2; at + 1 < bytes.Size();) {
        const unsigned marker = bytes.Byte(at + 1);
        // Inside a scan a byte of FF is followed by 00; the marks D0 to D7 are part of it.
        if (bytes.Byte(at) != 0xFF || marker == 0xFF || (inScan && (marker == 0 || (marker & 0xF8) == 0xD0))) {
            if (!inScan && bytes.Byte(at) != 0xFF)
                return std::nullopt;
            ++at;
            continue;
        }
        if (marker == endOfImage)
            return scans > 0 ? std::optional(scans) : std::nullopt;
        inScan = marker == startOfScan;
        scans += inScan ? 1 : 0;
        at += 2 + qint64(bytes.BigWord(at + 2));
    }
    return std::nullopt;
}

bool IsWholeBmp(const QByteArray& file) {
    enum : quint32 { rgb = 0, runs8 = 1, runs4 = 2, fields = 3, alphaFields = 6 };
    constexpr qint64 header = 14;
    const Bytes bytes(file);
    if (!file.startsWith("BM") || bytes.Size() < header + 12)
        return false;
    const bool isOld = bytes.Long(header) == 12;  // the format's first version has sizes of 16 bits
    const qint64 width = isOld ? qint64(bytes.Word(18)) : qint64(qint32(bytes.Long(18)));
    const qint64 height = isOld ? qint64(bytes.Word(20)) : qAbs(qint64(qint32(bytes.Long(22))));
    const qint64 bits = isOld ? bytes.Word(24) : bytes.Word(28);
    const quint32 packing = isOld ? quint32(rgb) : bytes.Long(30);
    const qint64 pixels = qMax(qint64(bytes.Long(10)), header + qint64(bytes.Long(header)));
    if (width <= 0 || height <= 0 || bits <= 0 || bits > 32)
        return false;
    if (packing == runs8 || packing == runs4)
        return runsEnd(bytes, pixels, packing == runs8 ? 8 : 4);
    if (packing != rgb && packing != fields && packing != alphaFields)
        return false;
    // Rows are filled up to four bytes; the last may do without.
    const qint64 row = (width * bits + 31) / 32 * 4;
    return pixels + row * (height - 1) + (width * bits + 7) / 8 <= bytes.Size();
}

bool IsWholeIcon(const QByteArray& file) {
    constexpr qint64 header = 6;
    constexpr qint64 entry = 16;
    const Bytes bytes(file);
    const qint64 count = bytes.Word(4);
    if (bytes.Word(0) != 0 || bytes.Word(2) != 1 || count < 1)
        return false;
    for (qint64 i = 0; i < count; ++i) {
        const qint64 at = header + i * entry;
        const qint64 size = bytes.Long(at + 8);
        if (size == 0 || qint64(bytes.Long(at + 12)) + size > bytes.Size() || at + entry > bytes.Size())
            return false;
    }
    return true;
}

}  // namespace zk
