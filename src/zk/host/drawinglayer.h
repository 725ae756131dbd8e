#pragma once

#include <zk/export.h>

#include <QColor>
#include <QImage>
#include <QObject>
#include <QPainter>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QRegion>
#include <QWidget>

#include <functional>

namespace zk {

/// What is drawn on a control outside of its paint events: it lies above what the control paints, below the control's
/// children, and stays until the control is next painted.
///
/// There is one layer to a control, shared by all that draw on it. Its coordinates are those of the control's contents
/// rectangle, in device-independent pixels. A repaint of a part of the control takes away what lies in that part;
/// drawings that have not been on the screen yet stay until they have. What is drawn during a paint event is shown with
/// it, and not kept: the control draws it again.
///
/// Where the control carries a picture of its own (a visible `GlSurface`), that picture covers what the control paints.
/// The canvas that made it wipes the layer at its repaints, and shows the layer above the picture when `Show` asks so.
class ZKHOST_API DrawingLayer : public QObject {
    Q_OBJECT
  public:
    /// The layer of a control, made at the first call; owned by the control. Null for null, and for a control that is
    /// being destroyed.
    static DrawingLayer* Of(QWidget* control);
    /// The layer of a control if it has one already, else null.
    static DrawingLayer* Find(const QWidget* control);

    /// The control whose layer this is.
    QWidget* Control() const { return static_cast<QWidget*>(parent()); }

    /// What can be drawn on now: the contents rectangle, at (0, 0); during a paint event the part that is painted.
    QRect ClipRect() const;

    /// Calls `paint` with a painter on the layer that touches nothing outside of `area`. It must not draw through the
    /// layer again.
    void Draw(const QRect& area, const std::function<void(QPainter&)>& paint);

    /// The colour that is seen at a pixel: of the layer, or of what lies below. Black outside.
    QColor PixelAt(const QPoint& pixel);

    /// Takes everything away that has been drawn.
    void Wipe();

    /// Shows now what would be shown when the event loop runs next.
    void Flush();

    // --- for the canvas that makes the control's picture ---

    /// Drawing does nothing while muted.
    void SetMuted(bool muted) { muted_ = muted; }
    /// The rectangle of the layer that holds anything, in the display's pixels, premultiplied RGBA; `corner` receives
    /// its upper left one. Null when there is nothing.
    QImage Pixels(QPoint& corner) const;
    /// What there was to show has been shown.
    void Shown() { showPending_ = false; }
    /// Who knows the colours of the picture. `maker` is who made it last.
    void SetPicture(QObject* maker, std::function<QColor(const QPoint&)> pixelAt);
    /// The last maker, if it lives.
    QObject* PictureMaker() const { return maker_; }

  Q_SIGNALS:
    /// Something has been drawn above the control's picture.
    void Show();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Sheet {
        QImage image;
        QRegion area;  // where there is anything
    };

    explicit DrawingLayer(QWidget* control);

    bool belowPicture() const;
    void prepare(Sheet& sheet) const;
    static void clear(Sheet& sheet, const QRegion& region);
    void ask(const QRect& area);
    Q_INVOKABLE void showNow();
    void renderBelow(QImage& image, const QPoint& pixel);
    void paintControl(QEvent* event, const QRegion& painted);

    Sheet kept_;     // has been shown
    Sheet fresh_;    // is to be shown by a paint event that has been asked for
    Sheet painted_;  // drawn by the control during the paint event that is under way
    QRegion asked_;  // of paint events, in the control's coordinates
    QRegion painting_;
    bool inPaint_ = false;
    bool muted_ = false;
    bool showPending_ = false;
    QPointer<QObject> maker_;
    std::function<QColor(const QPoint&)> pictureAt_;
};

}  // namespace zk
