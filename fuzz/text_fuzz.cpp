// Points as text, and lists of them. The first byte says how the rest is used: as one point, as a text that is taken
// apart, as the data of a plane or as the points of a way. What is no point is refused by all who read it; what is one
// survives being written and read again.
#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkoglextools/way.h>
#include <zk/_zkogltools/plane.h>
#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/message.h>

#include <QCoreApplication>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

using namespace zk;

namespace {

void Require(bool holds) {
    if (!holds)
        std::abort();
}

bool Same(double a, double b) {
    // Fifteen digits are written.
    return a == b || (std::isnan(a) && std::isnan(b)) || std::fabs(a - b) <= 1e-14 * std::fabs(a);
}

void Point(const QString& text) {
    TXYZ point{7, 7, 7};
    const bool is = TryStrtoxyz(text, point);
    Require(CheckStrtoxyz(text) == is);
    bool raised = false;
    TXYZ same{0, 0, 0};
    try {
        same = Strtoxyz(text);
    } catch (const EError&) {
        raised = true;
    }
    Require(raised == !is);
    if (!is)
        return;
    Require(Same(point.x, same.x) && Same(point.y, same.y) && Same(point.z, same.z));
    TXYZ again{7, 7, 7};
    const QString written = xyztoStr(point);
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z))
        return;
    // A number next to the largest one may be written as one beyond it.
    if (!TryStrtoxyz(written, again))
        Require(std::fabs(point.x) > 1e308 || std::fabs(point.y) > 1e308 || std::fabs(point.z) > 1e308);
    else
        Require(Same(point.x, again.x) && Same(point.y, again.y) && Same(point.z, again.z));
}

void Apart(const QString& text) {
    // Lines: the text, then the three separators.
    const QStringList lines = text.split(u'\n');
    std::array<QString, 3> parts{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    Separate(lines[0], lines.value(1), lines.value(2), lines.value(3), parts);
    qsizetype length = 0;
    for (const QString& part : parts)
        length += part.size();
    Require(length <= lines[0].size() + 3);
    if (lines[0].isEmpty())
        Require(parts[0] == u'a' && parts[1] == u'b' && parts[2] == u'c');
    std::array<QString, 1> one;
    Separate(lines[0], {}, {}, lines.value(1), one);
    Separate(lines[0], {}, {}, QStringLiteral("/"), std::span<QString>());
}

void Data(const QString& text) {
    TZKOglPlane plane;
    const QStringList lines = text.split(u'\n');
    plane.SetData(lines);
    Require(plane.GetData() == lines);
    plane.Doplay();  // without a canvas: nothing
    plane.setProperty("Data", lines);
    Require(plane.GetData().size() <= lines.size() || lines.size() == 1);
}

void Points(const QString& text) {
    TZKOglWay way;
    const QStringList lines = text.split(u'\n');
    way.SetData(lines);
    Require(way.GetData() == lines);
    const auto guarded = [](auto call) {
        try {
            call();
        } catch (const EError&) {
        }
    };
    guarded([&] { Require(way.COunt() == lines.size() || way.COunt() == lines.size() - 1); });
    guarded([&] { way.SetHowLong(int(lines.value(1).size()) * 10 + 1); });
    guarded([&] { way.SetTimerDelay(int(lines.value(2).size())); });
    guarded([&] { way.SetCenter(lines.value(3)); });
    way.SetActive(true);
    for (int i = 0; i < 5; ++i) {
        way.TimerDoTimer(&way);
        guarded([&] { way.GetActualPosition(); });
        guarded([&] { way.GetActualDirection(); });
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "text_fuzz";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static const bool quiet = (SetMessageHandler([](const std::string&) {}), true);
    static_cast<void>(quiet);
    if (size < 1 || size > 4096)
        return 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    switch (data[0] % 4) {
        case 0:
            Point(text);
            break;
        case 1:
            Apart(text);
            break;
        case 2:
            Data(text);
            break;
        default:
            Points(text);
            break;
    }
    return 0;
}
