#include "svg.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPoint>
#include <QRectF>
#include <QString>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <deque>
#include <initializer_list>
#include <string>
#include <utility>

extern "C" {
#include <libwmf/api.h>
#include <libwmf/font.h>
#include <libwmf/svg.h>
}

namespace {

// libwmf looks for the fonts of a PostScript printer and reads no file without them. It needs a font's name and the
// width of its text only, which Qt knows for whatever font will stand in.

/// Of the three families of a printer, which are all that libwmf puts into a document.
const char* familyOf(const wmfFont& font) {
    const QString name = QString::fromLatin1(font.lfFaceName).toLower();
    const auto isOneOf = [&name](std::initializer_list<const char*> parts) {
        return std::any_of(parts.begin(), parts.end(),
                           [&name](const char* part) { return name.contains(QLatin1String(part)); });
    };
    if (isOneOf({"arial", "helvetica", "sans", "tahoma", "verdana", "calibri", "univers"}))
        return "Helvetica";
    if (isOneOf({"courier", "mono", "console", "fixed", "typewriter"}))
        return "Courier";
    constexpr unsigned swiss = 2;
    constexpr unsigned modern = 3;
    const unsigned kind = font.lfPitchAndFamily >> 4U;
    return kind == swiss ? "Helvetica" : kind == modern ? "Courier" : "Times";
}

bool isBold(const wmfFont& font) {
    return font.lfWeight > 550;
}

void nameFont(wmfAPI* /*api*/, wmfFont* font) {
    static std::deque<std::pair<std::string, wmfIPAFont>> fonts;  // a font keeps the address of its entry
    std::string name = familyOf(*font);
    const bool isTimes = name == "Times";
    const bool isItalic = font->lfItalic != 0;
    if (isBold(*font) || isItalic)
        name += std::string("-") + (isBold(*font) ? "Bold" : "") + (isItalic ? isTimes ? "Italic" : "Oblique" : "");
    else if (isTimes)
        name += "-Roman";
    auto& [kept, info] = fonts.emplace_back(name, wmfIPAFont{});
    info.ps_name = kept.data();
    font->user_data = &info;
}

/// In points, for a font of one point.
float widthOf(wmfAPI* /*api*/, wmfFont* font, char* text) {
    constexpr int em = 100;
    QFont qtFont(QString::fromLatin1(familyOf(*font)));
    qtFont.setPixelSize(em);
    qtFont.setBold(isBold(*font));
    qtFont.setItalic(font->lfItalic != 0);
    return float(QFontMetricsF(qtFont).horizontalAdvance(QString::fromLatin1(text)) / em);
}

/// What the file says about its picture, in its own units.
struct Frame {
    QRectF Box;               ///< what is to be seen
    double UnitsPerInch = 0;  ///< 0: not told
    QRectF Window;            ///< its sides may be negative: then the axis runs the other way
};

/// Reads the header that not every file has, and the first records that set origin and extent of the window.
Frame frameOf(const QByteArray& file) {
    constexpr qsizetype placeableBytes = 22;
    constexpr qsizetype headerBytes = 18;
    constexpr quint16 setWindowOrigin = 0x020B;
    constexpr quint16 setWindowExtent = 0x020C;
    const auto number = [&file](qsizetype at) {
        return double(at + 2 <= file.size() ? qFromLittleEndian<qint16>(file.constData() + at) : 0);
    };
    Frame frame;
    qsizetype at = 0;
    if (file.startsWith(QByteArray::fromHex("D7CDC69A"))) {
        frame.Box = QRectF(QPointF(number(6), number(8)), QPointF(number(10), number(12))).normalized();
        frame.UnitsPerInch = number(14);
        at = placeableBytes;
    }
    at += headerBytes;
    bool hasOrigin = false;
    while (at + 10 <= file.size() && !(hasOrigin && !frame.Window.isNull())) {
        const auto words = qFromLittleEndian<quint32>(file.constData() + at);
        const auto what = qFromLittleEndian<quint16>(file.constData() + at + 4);
        if (what == setWindowOrigin) {
            frame.Window = QRectF(QPointF(number(at + 8), number(at + 6)), frame.Window.size());
            hasOrigin = true;
        } else if (what == setWindowExtent) {
            frame.Window.setSize(QSizeF(number(at + 8), number(at + 6)));
        }
        if (words < 3)
            break;
        at += qsizetype(words) * 2;
    }
    if (frame.UnitsPerInch <= 0 || frame.Box.isEmpty()) {
        frame.Box = frame.Window.normalized();
        frame.UnitsPerInch = 0;
    }
    return frame;
}

/// libwmf draws the window 1024 units wide and high, and shows what is drawn, where it should show the box.
wmfD_Rect boxOf(const Frame& frame) {
    constexpr double side = 1024;
    const auto in = [&frame](const QPointF& point) {
        return QPointF((point.x() - frame.Window.x()) / frame.Window.width() * side,
                       (point.y() - frame.Window.y()) / frame.Window.height() * side);
    };
    const QRectF box = QRectF(in(frame.Box.topLeft()), in(frame.Box.bottomRight())).normalized();
    return {{float(box.left()), float(box.top())}, {float(box.right()), float(box.bottom())}};
}

}  // namespace

Svg SvgOfWmf(QByteArray file) {
    constexpr double dotsPerInch = 96;
    wmfAPI_Options options{};
    options.function = wmf_svg_function;
    wmfAPI* api = nullptr;
    constexpr unsigned long flags = WMF_OPT_FUNCTION | WMF_OPT_IGNORE_NONFATAL | WMF_OPT_NO_ERROR | WMF_OPT_NO_DEBUG;
    if (wmf_api_create(&api, flags, &options) != wmf_E_None)
        return {};
    auto* fonts = static_cast<wmfFontData*>(api->font_data);
    fonts->map = nameFont;
    fonts->stringwidth = widthOf;
    if (wmf_mem_open(api, reinterpret_cast<unsigned char*>(file.data()), long(file.size())) != wmf_E_None)
        return {};
    wmf_svg_t* svg = WMF_SVG_GetData(api);
    if (wmf_scan(api, 0, &svg->bbox) != wmf_E_None)
        return {};
    const Frame frame = frameOf(file);
    QSizeF size = frame.Box.size();
    if (frame.UnitsPerInch > 0)
        size *= dotsPerInch / frame.UnitsPerInch;
    if (frame.Window.width() != 0 && frame.Window.height() != 0)
        svg->bbox = boxOf(frame);
    else if (size.isEmpty())
        size = QSizeF(double(svg->bbox.BR.x) - double(svg->bbox.TL.x), double(svg->bbox.BR.y) - double(svg->bbox.TL.y));
    if (!(size.width() >= 1 && size.width() < 1e6 && size.height() >= 1 && size.height() < 1e6))
        return {};
    svg->width = unsigned(std::lround(size.width()));
    svg->height = unsigned(std::lround(size.height()));
    svg->flags |= WMF_SVG_INLINE_IMAGES;
    svg->out = wmf_stream_create(api, nullptr);
    wmfD_Rect drawn{};  // comes back as what is drawn
    if (!svg->out || wmf_play(api, 0, &drawn) != wmf_E_None)
        return {};
    char* text = nullptr;
    unsigned long length = 0;
    wmf_stream_destroy(api, svg->out, &text, &length);
    // The program ends soon: nothing is handed back.
    QByteArray document(text, qsizetype(length));
    // What the file calls a transparent background concerns gaps of lines, hatches and text. libwmf makes the fillings
    // of brushes translucent for it.
    document.replace("fill-opacity:0.5", "fill-opacity:1.0");
    return {document, QSize(int(svg->width), int(svg->height))};
}
