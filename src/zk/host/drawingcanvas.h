#pragma once

#include <zk/export.h>
#include <zk/host/color.h>

#include <QBrush>
#include <QFont>
#include <QObject>
#include <QPainter>
#include <QPen>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <functional>
#include <span>

class QImage;
class QPaintDevice;

namespace zk {

/// A surface for drawing call by call: it remembers pen, brush, font and pen position between the calls, and every call
/// is drawn at once.
///
/// Coordinates are device-independent pixels, x to the right, y down. Lines include both of their ends. A box is left,
/// top, right and bottom, in any order; right and bottom are not included. Outlines and texts are drawn in the pen's
/// colour, insides with the brush; texts have no background. Lines are not smoothed. At first the pen is black and one
/// pixel wide, the brush white, the font the application's, the pen at (0, 0).
///
/// This class draws on a paint device (`SetHandle`), a QImage for instance; without one it draws nothing.
/// `ControlCanvas` draws on a control.
class ZKHOST_API DrawingCanvas : public QObject {
    Q_OBJECT
  public:
    explicit DrawingCanvas(QObject* parent = nullptr);
    ~DrawingCanvas() override;

    /// What is drawn on; not owned, and must be set to null before it goes. Nothing is drawn while another painter is
    /// at work on it.
    virtual QPaintDevice* GetHandle() const;
    virtual void SetHandle(QPaintDevice* Value);

    /// What can be drawn on at the moment. Empty without a device.
    virtual QRect GetClipRect() const;

    /// Where `LineTo` begins.
    virtual QPoint GetPenPos() const;
    virtual void SetPenPos(const QPoint& Value);
    /// Colour, width and pattern of outlines, and the colour of texts.
    virtual QPen GetPen() const;
    virtual void SetPen(const QPen& Value);
    /// What insides are filled with.
    virtual QBrush GetBrush() const;
    virtual void SetBrush(const QBrush& Value);
    /// The font of texts.
    virtual QFont GetFont() const;
    virtual void SetFont(const QFont& Value);
    /// How `BrushCopy` meets what is there already.
    virtual QPainter::CompositionMode GetCopyMode() const;
    virtual void SetCopyMode(QPainter::CompositionMode Value);
    /// Qt::AlignmentFlag and Qt::TextFlag values; 0 at first. The alignment says which point of a text is put at the
    /// given position: upper left for 0.
    virtual int GetTextFlags() const;
    virtual void SetTextFlags(int Value);

    /// The colour of a pixel; black outside, and where the device cannot be read (only images can).
    virtual TColor GetPixel(int X, int Y) const;
    virtual void SetPixel(int X, int Y, TColor Value);

    /// The part of the ellipse in the box that runs counter-clockwise from the ray through (X3, Y3) to the one through
    /// (X4, Y4); all of it where the two are the same.
    virtual void Arc(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4);
    /// Copies `Source` of an image, stretched to `Dest`, and draws the brush in the place of pixels of the colour.
    virtual void BrushCopy(const QRect& Dest, const QImage& Image, const QRect& Source, TColor Color);
    /// As `Arc`, closed by a line and filled.
    virtual void Chord(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4);
    /// Every second pixel of the rectangle's edge, in the desktop's text colour.
    virtual void DrawFocusRect(const QRect& Rect);
    /// The ellipse that fills the box, with outline and inside.
    virtual void Ellipse(int X1, int Y1, int X2, int Y2);
    /// With the brush, without an outline.
    virtual void FillRect(const QRect& Rect);
    /// Draws from the pen position, which moves to (X, Y).
    virtual void LineTo(int X, int Y);
    /// Moves the pen without drawing.
    virtual void MoveTo(int X, int Y);
    /// Closed and filled; where it covers itself twice it has a hole.
    virtual void Polygon(std::span<const QPoint> Points);
    /// The points joined by lines, open.
    virtual void Polyline(std::span<const QPoint> Points);
    /// Several polylines in one stroke: the points of all, one after the other, and how many each has. Counts below 2
    /// draw nothing, counts beyond the points end with them.
    virtual void PolyPolyline(std::span<const QPoint> Points, std::span<const int> Counts);
    /// The first point, then groups of two control points and an end point; what is no whole group is left out.
    virtual void PolyBezier(std::span<const QPoint> Points);
    /// A box with outline and inside.
    virtual void Rectangle(int X1, int Y1, int X2, int Y2);
    /// Width and height of a text in the font, in pixels.
    virtual QSize TextExtent(const QString& Text) const;
    /// Height of a text in the font, in pixels.
    virtual int TextHeight(const QString& Text) const;
    /// A text at a point; which of its points that is says `GetTextFlags`.
    virtual void TextOut(int X, int Y, const QString& Text);
    /// The same, within a rectangle only.
    virtual void TextRect(const QRect& Rect, int X, int Y, const QString& Text);
    /// Width of a text in the font, in pixels.
    virtual int TextWidth(const QString& Text) const;

  protected:
    /// Calls `paint` with a painter on the surface that has pen, brush and font of this canvas. Nothing is painted
    /// outside of `area`. Does nothing where nothing can be drawn.
    virtual void Draw(const QRect& area, const std::function<void(QPainter&)>& paint);

    /// Gives `painter` the pen, the brush and the font of this canvas.
    void Equip(QPainter& painter) const;

  private:
    QRect reach(std::span<const QPoint> points) const;
    QRect textBox(int x, int y, const QString& text) const;
    void drawArc(const QRect& box, const QPoint& from, const QPoint& to, bool closed);

    QPaintDevice* handle_ = nullptr;
    QPoint penPos_;
    QPen pen_{Qt::black};
    QBrush brush_{Qt::white};
    QFont font_;
    QPainter::CompositionMode copyMode_ = QPainter::CompositionMode_SourceOver;
    int textFlags_ = 0;
};

}  // namespace zk
