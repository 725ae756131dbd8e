#include <zk/_zkdevice/canvas2d.h>
#include <zk/_zkdevice/device.h>
#include <zk/_zkxyz/array.h>

#include <QImage>
#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <vector>

using namespace zk;

namespace {

/// Writes down every operation with its arguments, and answers with values of its own.
class Paper : public DrawingCanvas {
  public:
    std::string Take() {
        std::string text = notes.str();
        notes.str({});
        return text;
    }

    QRect GetClipRect() const override { return note("GetClipRect"), QRect(1, 2, 3, 4); }
    QPoint GetPenPos() const override { return note("GetPenPos"), QPoint(5, 6); }
    TColor GetPixel(int x, int y) const override { return note("GetPixel", x, y), 0x070809; }
    void SetBrush(const QBrush& value) override { note("SetBrush", value.color().name().toStdString()); }
    void SetFont(const QFont& value) override { note("SetFont", value.pixelSize()); }
    void SetHandle(QPaintDevice* value) override { note("SetHandle", handle = value); }
    void SetPen(const QPen& value) override { note("SetPen", value.width()); }
    void SetPenPos(const QPoint& value) override { note("SetPenPos", value); }
    void SetPixel(int x, int y, TColor value) override { note("SetPixel", x, y, value); }
    QBrush GetBrush() const override { return note("GetBrush"), QBrush(Qt::red); }
    QPainter::CompositionMode GetCopyMode() const override {
        return note("GetCopyMode"), QPainter::CompositionMode_Plus;
    }
    QFont GetFont() const override {
        QFont font;
        font.setPixelSize(33);
        return note("GetFont"), font;
    }
    QPen GetPen() const override { return note("GetPen"), QPen(Qt::red, 7); }
    int GetTextFlags() const override { return note("GetTextFlags"), 11; }
    QPaintDevice* GetHandle() const override { return note("GetHandle"), handle; }
    void SetCopyMode(QPainter::CompositionMode value) override { note("SetCopyMode", int(value)); }
    void SetTextFlags(int value) override { note("SetTextFlags", value); }
    void Arc(int a, int b, int c, int d, int e, int f, int g, int h) override { note("Arc", a, b, c, d, e, f, g, h); }
    void BrushCopy(const QRect& dest, const QImage& image, const QRect& source, TColor color) override {
        note("BrushCopy", dest, image.width(), source, color);
    }
    void Chord(int a, int b, int c, int d, int e, int f, int g, int h) override {
        note("Chord", a, b, c, d, e, f, g, h);
    }
    void DrawFocusRect(const QRect& rect) override { note("DrawFocusRect", rect); }
    void Ellipse(int a, int b, int c, int d) override { note("Ellipse", a, b, c, d); }
    void FillRect(const QRect& rect) override { note("FillRect", rect); }
    void LineTo(int x, int y) override { note("LineTo", x, y); }
    void MoveTo(int x, int y) override { note("MoveTo", x, y); }
    void Polygon(std::span<const QPoint> points) override { note("Polygon", points); }
    void Polyline(std::span<const QPoint> points) override { note("Polyline", points); }
    void PolyPolyline(std::span<const QPoint> points, std::span<const int> counts) override {
        note("PolyPolyline", points, counts);
    }
    void PolyBezier(std::span<const QPoint> points) override { note("PolyBezier", points); }
    QSize TextExtent(const QString& text) const override { return note("TextExtent", text), QSize(12, 13); }
    int TextHeight(const QString& text) const override { return note("TextHeight", text), 14; }
    void TextOut(int x, int y, const QString& text) override { note("TextOut", x, y, text); }
    void TextRect(const QRect& rect, int x, int y, const QString& text) override { note("TextRect", rect, x, y, text); }
    int TextWidth(const QString& text) const override { return note("TextWidth", text), 15; }

    mutable std::ostringstream notes;
    QPaintDevice* handle = nullptr;

  private:
    template <class... Arguments>
    void note(const char* name, const Arguments&... arguments) const {
        notes << name;
        (put(arguments), ...);
        notes << ';';
    }
    template <class T>
    void put(const T& value) const {
        notes << ' ' << value;
    }
    void put(const QString& text) const { notes << ' ' << text.toStdString(); }
    void put(const QPoint& point) const { notes << ' ' << point.x() << ',' << point.y(); }
    void put(const QRect& rect) const {
        notes << ' ' << rect.x() << ',' << rect.y() << ',' << rect.width() << ',' << rect.height();
    }
    template <class T>
    void put(const std::span<const T>& values) const {
        notes << " (";
        for (const T& value : values)
            put(value);
        notes << ')';
    }
};

void add(TlistOFXYiArray& list, const std::vector<TXYI>& points) {
    TXYIARRAY* line = list.AddArray();
    for (const TXYI& point : points)
        ArrayAppendData(*line, &point);
}

}  // namespace

TEST(Canvas2d, EveryOperationGoesToTheCanvasWithItsArguments) {
    Paper paper;
    TZkCanvas canvas;
    canvas.SetCanvas(&paper);
    EXPECT_EQ(canvas.GetCanvas(), &paper);
    TZKPrimdevice& device = canvas;
    const std::array<QPoint, 2> points{QPoint(1, 2), QPoint(3, 4)};
    const QImage image(6, 7, QImage::Format_RGB32);
    QImage target(8, 9, QImage::Format_RGB32);

    EXPECT_EQ(device.GetClipRect(), QRect(1, 2, 3, 4));
    EXPECT_EQ(device.GetPenPos(), QPoint(5, 6));
    EXPECT_EQ(device.GetPixel(1, 2), 0x070809U);
    EXPECT_EQ(paper.Take(), "GetClipRect;GetPenPos;GetPixel 1 2;");
    device.SetBrush(QBrush(QColor(1, 2, 3)));
    QFont font;
    font.setPixelSize(21);
    device.SetFont(font);
    device.SetPen(QPen(Qt::black, 4));
    device.SetPenPos({8, 9});
    device.SetPixel(1, 2, 3);
    EXPECT_EQ(paper.Take(), "SetBrush #010203;SetFont 21;SetPen 4;SetPenPos 8,9;SetPixel 1 2 3;");
    device.SetHandle(&target);
    EXPECT_EQ(paper.handle, &target);
    EXPECT_EQ(device.GetHandle(), &target);
    paper.Take();
    EXPECT_EQ(device.GetBrush(), QBrush(Qt::red));
    EXPECT_EQ(device.GetCopyMode(), QPainter::CompositionMode_Plus);
    EXPECT_EQ(device.GetFont().pixelSize(), 33);
    EXPECT_EQ(device.GetPen(), QPen(Qt::red, 7));
    EXPECT_EQ(device.GetTextFlags(), 11);
    EXPECT_EQ(paper.Take(), "GetBrush;GetCopyMode;GetFont;GetPen;GetTextFlags;");
    device.SetCopyMode(QPainter::CompositionMode_Xor);
    device.SetTextFlags(5);
    EXPECT_EQ(paper.Take(), "SetCopyMode 11;SetTextFlags 5;");
    device.Arc(1, 2, 3, 4, 5, 6, 7, 8);
    device.Chord(8, 7, 6, 5, 4, 3, 2, 1);
    device.BrushCopy(QRect(1, 2, 3, 4), image, QRect(5, 6, 7, 8), 9);
    device.DrawFocusRect(QRect(1, 2, 3, 4));
    device.Ellipse(1, 2, 3, 4);
    device.FillRect(QRect(5, 6, 7, 8));
    EXPECT_EQ(paper.Take(),
              "Arc 1 2 3 4 5 6 7 8;Chord 8 7 6 5 4 3 2 1;BrushCopy 1,2,3,4 6 5,6,7,8 9;DrawFocusRect 1,2,3,4;"
              "Ellipse 1 2 3 4;FillRect 5,6,7,8;");
    device.LineTo(1, 2);
    device.MoveTo(3, 4);
    device.Polygon(points);
    device.Polyline(points);
    device.PolyBezier(points);
    EXPECT_EQ(paper.Take(), "LineTo 1 2;MoveTo 3 4;Polygon ( 1,2 3,4);Polyline ( 1,2 3,4);PolyBezier ( 1,2 3,4);");
    EXPECT_EQ(device.TextExtent("a"), QSize(12, 13));
    EXPECT_EQ(device.TextHeight("b"), 14);
    EXPECT_EQ(device.TextWidth("c"), 15);
    device.TextOut(1, 2, "d");
    device.TextRect(QRect(1, 2, 3, 4), 5, 6, "e");
    EXPECT_EQ(paper.Take(), "TextExtent a;TextHeight b;TextWidth c;TextOut 1 2 d;TextRect 1,2,3,4 5 6 e;");
}

TEST(Canvas2d, AllPolylinesAreOneCall) {
    Paper paper;
    TZkCanvas canvas;
    canvas.SetCanvas(&paper);
    TlistOFXYiArray list;
    add(list, {{1, 2}, {3, 4}, {5, 6}});
    add(list, {{7, 8}, {9, 10}});
    canvas.PolyPolyline(list);
    EXPECT_EQ(paper.Take(), "PolyPolyline ( 1,2 3,4 5,6 7,8 9,10) ( 3 2);");
    list.AddArray();
    list.TPointerList::Add(nullptr);
    add(list, {{-1, -2}});
    canvas.PolyPolyline(list);
    EXPECT_EQ(paper.Take(), "PolyPolyline ( 1,2 3,4 5,6 7,8 9,10 -1,-2) ( 3 2 0 0 1);");
    canvas.PolyPolyline(TlistOFXYiArray());
    EXPECT_EQ(paper.Take(), "PolyPolyline () ();");
}

TEST(Canvas2d, WithoutACanvasNothingIsDrawn) {
    TZkCanvas canvas;
    const std::array<QPoint, 2> points{};
    TlistOFXYiArray list;
    add(list, {{1, 2}, {3, 4}});
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(canvas.GetCanvas(), nullptr);
        EXPECT_EQ(canvas.GetClipRect(), QRect());
        EXPECT_EQ(canvas.GetPenPos(), QPoint());
        EXPECT_EQ(canvas.GetPixel(1, 1), 0U);
        EXPECT_EQ(canvas.GetBrush(), QBrush());
        EXPECT_EQ(canvas.GetCopyMode(), QPainter::CompositionMode_SourceOver);
        EXPECT_EQ(canvas.GetFont(), QFont());
        EXPECT_EQ(canvas.GetPen(), QPen());
        EXPECT_EQ(canvas.GetTextFlags(), 0);
        EXPECT_EQ(canvas.GetHandle(), nullptr);
        EXPECT_EQ(canvas.TextExtent("a"), QSize(0, 0));
        EXPECT_EQ(canvas.TextHeight("a"), 0);
        EXPECT_EQ(canvas.TextWidth("a"), 0);
        canvas.SetBrush({});
        canvas.SetFont({});
        canvas.SetHandle(nullptr);
        canvas.SetPen({});
        canvas.SetPenPos({});
        canvas.SetPixel(0, 0, 0);
        canvas.SetCopyMode(QPainter::CompositionMode_Xor);
        canvas.SetTextFlags(1);
        canvas.Arc(0, 0, 0, 0, 0, 0, 0, 0);
        canvas.BrushCopy({}, {}, {}, 0);
        canvas.Chord(0, 0, 0, 0, 0, 0, 0, 0);
        canvas.DrawFocusRect({});
        canvas.Ellipse(0, 0, 0, 0);
        canvas.FillRect({});
        canvas.LineTo(0, 0);
        canvas.MoveTo(0, 0);
        canvas.Polygon(points);
        canvas.Polyline(points);
        canvas.PolyPolyline(list);
        canvas.PolyBezier(points);
        canvas.TextOut(0, 0, "a");
        canvas.TextRect({}, 0, 0, "a");
        // and again with one that has gone
        Paper gone;
        canvas.SetCanvas(&gone);
    }
}

TEST(Canvas2d, ADeviceDrawsThroughIt) {
    QImage image(180, 180, QImage::Format_RGB32);
    image.fill(Qt::white);
    DrawingCanvas paper;
    paper.SetHandle(&image);
    TZkCanvas canvas;
    canvas.SetCanvas(&paper);
    TZKDevice device;
    device.SetPRimdevice(&canvas);
    device.Moveto3d({-1, 0, 0});
    device.LineTo3d({1, 0, 0});
    int black = 0;
    for (int x = 0; x < 180; ++x)
        black += image.pixelColor(x, 90) == QColor(Qt::black);
    EXPECT_EQ(black, 61);
    EXPECT_EQ(image.pixelColor(60, 90), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(120, 90), QColor(Qt::black));
}
