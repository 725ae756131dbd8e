#pragma once

#include <zk/_zkdevice/primdevice.h>
#include <zk/export.h>
#include <zk/host/drawingcanvas.h>

#include <QPointer>

namespace zk {

/// A 2D device that hands every operation on to a canvas of the host (`DrawingCanvas`, where the operations are
/// described), with the same arguments. Without a canvas nothing is drawn and the getters give empty values.
class ZKDEVICE_API TZkCanvas : public TZKPrimdevice {
    Q_OBJECT
  public:
    explicit TZkCanvas(QObject* owner = nullptr);
    ~TZkCanvas() override;

    /// Not owned; reads as null after it was deleted.
    DrawingCanvas* GetCanvas() const { return canvas_; }
    void SetCanvas(DrawingCanvas* Value) { canvas_ = Value; }

    QRect GetClipRect() override;
    QPoint GetPenPos() override;
    TColor GetPixel(int X, int Y) override;
    void SetBrush(const QBrush& Value) override;
    void SetFont(const QFont& Value) override;
    void SetHandle(QPaintDevice* Value) override;
    void SetPen(const QPen& Value) override;
    void SetPenPos(const QPoint& Value) override;
    void SetPixel(int X, int Y, TColor Value) override;
    QBrush GetBrush() override;
    QPainter::CompositionMode GetCopyMode() override;
    QFont GetFont() override;
    QPen GetPen() override;
    int GetTextFlags() override;
    QPaintDevice* GetHandle() override;
    void SetCopyMode(QPainter::CompositionMode Value) override;
    void SetTextFlags(int Value) override;
    void Arc(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4) override;
    void BrushCopy(const QRect& Dest, const QImage& Image, const QRect& Source, TColor Color) override;
    void Chord(int X1, int Y1, int X2, int Y2, int X3, int Y3, int X4, int Y4) override;
    void DrawFocusRect(const QRect& Rect) override;
    void Ellipse(int X1, int Y1, int X2, int Y2) override;
    void FillRect(const QRect& Rect) override;
    void LineTo(int X, int Y) override;
    void MoveTo(int X, int Y) override;
    void Polygon(std::span<const QPoint> Points) override;
    void Polyline(std::span<const QPoint> Points) override;
    /// All polylines in one call of the canvas.
    void PolyPolyline(const TlistOFXYiArray& List) override;
    void PolyBezier(std::span<const QPoint> Points) override;
    QSize TextExtent(const QString& Text) override;
    int TextHeight(const QString& Text) override;
    void TextOut(int X, int Y, const QString& Text) override;
    void TextRect(const QRect& Rect, int X, int Y, const QString& Text) override;
    int TextWidth(const QString& Text) override;

  private:
    QPointer<DrawingCanvas> canvas_;
};

}  // namespace zk
