#pragma once

#include <QByteArray>
#include <QSize>

/// A metafile as an SVG document, and its size in pixels; empty where it cannot be read.
struct Svg {
    QByteArray Document;
    QSize Size;
    bool HasViewBox = false;  ///< false: all of `Size` is to be seen, from (0, 0) on
};

/// Through libwmf. The size is that of the header at 96 dots per inch; without one, that of what is drawn.
Svg SvgOfWmf(QByteArray file);

/// Through libemf2svg. The size is in dots of the device that the header names.
Svg SvgOfEmf(QByteArray file);
