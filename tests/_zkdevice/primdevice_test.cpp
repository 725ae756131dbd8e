#include <zk/_zkdevice/primdevice.h>

#include <QImage>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace zk;

TEST(PrimDevice, EveryOperationOfTheBaseIsAbstract) {
    TZKPrimdevice device;
    const std::array<QPoint, 2> points{};
    const TlistOFXYiArray list;
    const std::vector<std::pair<const char*, std::function<void()>>> operations{
        {"GetClipRect", [&] { device.GetClipRect(); }},
        {"GetPenPos", [&] { device.GetPenPos(); }},
        {"GetPixel", [&] { device.GetPixel(0, 0); }},
        {"SetBrush", [&] { device.SetBrush(QBrush()); }},
        {"SetFont", [&] { device.SetFont(QFont()); }},
        {"SetHandle", [&] { device.SetHandle(nullptr); }},
        {"SetPen", [&] { device.SetPen(QPen()); }},
        {"SetPenPos", [&] { device.SetPenPos(QPoint()); }},
        {"SetPixel", [&] { device.SetPixel(0, 0, 0); }},
        {"GetBrush", [&] { device.GetBrush(); }},
        {"GetCopyMode", [&] { device.GetCopyMode(); }},
        {"GetFont", [&] { device.GetFont(); }},
        {"GetPen", [&] { device.GetPen(); }},
        {"GetTextFlags", [&] { device.GetTextFlags(); }},
        {"GetHandle", [&] { device.GetHandle(); }},
        {"SetCopyMode", [&] { device.SetCopyMode(QPainter::CompositionMode_Source); }},
        {"SetTextFlags", [&] { device.SetTextFlags(0); }},
        {"Arc", [&] { device.Arc(0, 0, 0, 0, 0, 0, 0, 0); }},
        {"BrushCopy", [&] { device.BrushCopy(QRect(), QImage(), QRect(), 0); }},
        {"Chord", [&] { device.Chord(0, 0, 0, 0, 0, 0, 0, 0); }},
        {"DrawFocusRect", [&] { device.DrawFocusRect(QRect()); }},
        {"Ellipse", [&] { device.Ellipse(0, 0, 0, 0); }},
        {"FillRect", [&] { device.FillRect(QRect()); }},
        {"LineTo", [&] { device.LineTo(0, 0); }},
        {"MoveTo", [&] { device.MoveTo(0, 0); }},
        {"Polygon", [&] { device.Polygon(points); }},
        {"Polyline", [&] { device.Polyline(points); }},
        {"PolyPolyline", [&] { device.PolyPolyline(list); }},
        {"PolyBezier", [&] { device.PolyBezier(points); }},
        {"TextExtent", [&] { device.TextExtent(QString()); }},
        {"TextHeight", [&] { device.TextHeight(QString()); }},
        {"TextOut", [&] { device.TextOut(0, 0, QString()); }},
        {"TextRect", [&] { device.TextRect(QRect(), 0, 0, QString()); }},
        {"TextWidth", [&] { device.TextWidth(QString()); }},
    };
    EXPECT_EQ(34U, operations.size());
    for (const auto& [name, call] : operations) {
        try {
            call();
            ADD_FAILURE() << name;
        } catch (const EAbstractError& error) {
            EXPECT_EQ(std::string("Abstract error: TZKPrimdevice.") + name, error.what());
        }
    }
}

TEST(PrimDevice, IsAComponent) {
    QObject form;
    const auto* device = new TZKPrimdevice(&form);
    EXPECT_EQ(&form, device->Owner());
    EXPECT_EQ(device, ComponentBase::Of(device));
}
