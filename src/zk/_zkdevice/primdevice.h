#pragma once

#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/export.h>
#include <zk/host/color.h>
#include <zk/host/component.h>

#include <QBrush>
#include <QFont>
#include <QPainter>
#include <QPen>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <span>

class QImage;
class QPaintDevice;

namespace zk {

/// An operation was called on a base class that only names it; the text names class and operation.
class ZKDEVICE_API EAbstractError : public EError {
  public:
    using EError::EError;
};

/// A surface that draws 2D primitives: what a projection device draws its projected lines on.
///
/// This class only names the operations; each one raises `EAbstractError`. Coordinates are the pixels of the surface
/// (device-independent pixels of a widget), y down; angles do not occur. "Box" arguments are left, top, right and
/// bottom, right and bottom not included.
class ZKDEVICE_API TZKPrimdevice : public TComponent {
    Q_OBJECT
  public:
    explicit TZKPrimdevice(QObject* owner = nullptr);
    ~TZKPrimdevice() override;

    /// What can be drawn on.
    virtual QRect GetClipRect();
    /// Where `LineTo` begins.
    virtual QPoint GetPenPos();
    /// The colour of a pixel.
    virtual TColor GetPixel(int X, int Y);
    virtual void SetBrush(const QBrush& Value);
    virtual void SetFont(const QFont& Value);
    /// What is drawn on; not owned.
    virtual void SetHandle(QPaintDevice* Value);
    virtual void SetPen(const QPen& Value);
    virtual void SetPenPos(const QPoint& Value);
    virtual void SetPixel(int X, int Y, TColor Value);
    /// What insides are filled with.
    virtual QBrush GetBrush();
    /// How `BrushCopy` meets what is there already.
    virtual QPainter::CompositionMode GetCopyMode();
    /// The font of texts.
    virtual QFont GetFont();
    /// Colour, width and pattern of outlines, and the colour of texts.
    virtual QPen GetPen();
    /// Qt::AlignmentFlag and Qt::TextFlag values.
    virtual int GetTextFlags();
    virtual QPaintDevice* GetHandle();
    virtual void SetCopyMode(QPainter::CompositionMode Value);
    virtual void SetTextFlags(int Value);

    /// The part of the ellipse in the box (X1, Y1, X2, Y2) that runs counter-clockwise from the ray through (X3, Y3) to
    /// the ray through (X4, Y4).
    virtual void Arc(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4);
    /// Copies a part of an image, leaving the pixels of one colour to the brush.
    virtual void BrushCopy(const QRect& Dest, const QImage& Image, const QRect& Source, TColor Color);
    /// As `Arc`, closed by a line and filled.
    virtual void Chord(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4);
    /// The edge of a rectangle as the mark of the keyboard's focus.
    virtual void DrawFocusRect(const QRect& Rect);
    /// The ellipse that fills the box, with outline and inside.
    virtual void Ellipse(int X1, int Y1, int X2, int Y2);
    /// Fills with the brush, without an outline.
    virtual void FillRect(const QRect& Rect);
    /// Draws from the pen position, which moves to (X, Y).
    virtual void LineTo(int X, int Y);
    /// Moves the pen without drawing.
    virtual void MoveTo(int X, int Y);
    /// Closed and filled.
    virtual void Polygon(std::span<const QPoint> Points);
    /// The points joined by lines, open.
    virtual void Polyline(std::span<const QPoint> Points);
    /// One open polyline for each array of the list.
    virtual void PolyPolyline(const TlistOFXYiArray& List);
    /// The first point, then groups of two control points and an end point.
    virtual void PolyBezier(std::span<const QPoint> Points);
    /// Width and height of a text in the font, in pixels.
    virtual QSize TextExtent(const QString& Text);
    /// Height of a text in the font, in pixels.
    virtual int TextHeight(const QString& Text);
    /// (X, Y) is the upper left corner of the text.
    virtual void TextOut(int X, int Y, const QString& Text);
    /// The same, clipped to a rectangle.
    virtual void TextRect(const QRect& Rect, int X, int Y, const QString& Text);
    /// Width of a text in the font, in pixels.
    virtual int TextWidth(const QString& Text);
};

}  // namespace zk
