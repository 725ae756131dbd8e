#include "svg.h"

#include <QtEndian>

#include <emf2svg.h>

namespace {

/// The frame that the header gives in hundredths of a millimetre, in dots of the device that it gives in both.
QSize sizeOf(const QByteArray& file) {
    constexpr qsizetype headerBytes = 88;
    if (file.size() < headerBytes)
        return {};
    const auto number = [&file](qsizetype at) { return double(qFromLittleEndian<qint32>(file.constData() + at)); };
    const auto dots = [&number](qsizetype from, qsizetype to, qsizetype device, qsizetype millimetres) {
        const double size = (number(to) - number(from)) / 100.0 * number(device) / number(millimetres);
        return size >= 1 && size < 1e6 ? int(size + 0.5) : 0;
    };
    return {dots(24, 32, 72, 80), dots(28, 36, 76, 84)};
}

}  // namespace

Svg SvgOfEmf(QByteArray file) {
    constexpr qsizetype signature = 40;
    const QSize size = sizeOf(file);
    if (size.isEmpty() || file.mid(signature, 4) != " EMF")
        return {};
    generatorOptions options{};
    options.emfplus = true;
    options.svgDelimiter = true;
    char* text = nullptr;
    std::size_t length = 0;
    if (emf2svg(file.data(), std::size_t(file.size()), &text, &length, &options) == 0 || !text)
        return {};
    return {QByteArray(text, qsizetype(length)), size, true};
}
