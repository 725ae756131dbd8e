#include "drawinglayer.h"

#include <zk/host/glsurface.h>

#include <QBackingStore>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QPoint>
#include <QSize>
#include <QString>

#include <utility>

namespace zk {

namespace {

double ratioOf(const QWidget& control) {
    const GlSurface* surface = GlSurface::Find(&control);
    return surface ? surface->PixelRatio() : control.devicePixelRatioF();
}

// A control is painted onto its window, but also onto the pictures that programs take of it.
bool paintsOntoItsWindow(QWidget& control) {
    const QPainter painter(&control);
    QBackingStore* store = control.backingStore();
    return store && painter.isActive() && painter.paintEngine()->paintDevice() == store->paintDevice();
}

}  // namespace

DrawingLayer* DrawingLayer::Find(const QWidget* control) {
    return control ? control->findChild<DrawingLayer*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

DrawingLayer* DrawingLayer::Of(QWidget* control) {
    if (!control)
        return nullptr;
    if (DrawingLayer* existing = Find(control))
        return existing;
    return new DrawingLayer(control);
}

DrawingLayer::DrawingLayer(QWidget* control) : QObject(control) {
    setObjectName(QStringLiteral("zkDrawingLayer"));
    control->installEventFilter(this);
}

bool DrawingLayer::belowPicture() const {
    const GlSurface* surface = GlSurface::Find(Control());
    return surface && !surface->isHidden();
}

QRect DrawingLayer::ClipRect() const {
    const QRect contents = Control()->contentsRect();
    const QRect all(QPoint(0, 0), contents.size());
    return inPaint_ ? painting_.boundingRect().translated(-contents.topLeft()) & all : all;
}

// In the size of the control and the fineness of its display; what a sheet of another size held stays where it was.
void DrawingLayer::prepare(Sheet& sheet) const {
    const double ratio = ratioOf(*Control());
    const QSize size = Control()->contentsRect().size();
    const QSize pixels(qRound(size.width() * ratio), qRound(size.height() * ratio));
    if (sheet.image.size() == pixels && sheet.image.devicePixelRatio() == ratio)
        return;
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    if (!sheet.area.isEmpty()) {
        QPainter painter(&image);
        painter.drawImage(QPoint(0, 0), sheet.image);
    }
    sheet.image = image;
}

void DrawingLayer::clear(Sheet& sheet, const QRegion& region) {
    sheet.area -= region;
    if (sheet.area.isEmpty()) {
        sheet = {};
        return;
    }
    QPainter painter(&sheet.image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& rect : region)
        painter.fillRect(rect, Qt::transparent);
}

void DrawingLayer::Draw(const QRect& area, const std::function<void(QPainter&)>& paint) {
    const QRect reached = area & ClipRect();
    if (muted_ || reached.isEmpty())
        return;
    Sheet& sheet = inPaint_ ? painted_ : belowPicture() ? kept_ : fresh_;
    prepare(sheet);
    QRegion region(reached);
    if (inPaint_)
        region &= painting_.translated(-Control()->contentsRect().topLeft());
    {
        QPainter painter(&sheet.image);
        if (!painter.isActive())
            return;
        painter.setClipRegion(region);
        paint(painter);
    }
    sheet.area += region;
    if (!inPaint_)
        ask(reached);
}

void DrawingLayer::ask(const QRect& area) {
    if (!belowPicture()) {
        const QRect place = area.translated(Control()->contentsRect().topLeft());
        asked_ += place;
        Control()->update(place);
        return;
    }
    if (!std::exchange(showPending_, true))
        QMetaObject::invokeMethod(this, "showNow", Qt::QueuedConnection);
}

void DrawingLayer::showNow() {
    if (std::exchange(showPending_, false))
        Q_EMIT Show();
}

void DrawingLayer::Flush() {
    if (!asked_.isEmpty() && !inPaint_)
        Control()->repaint(asked_);
    showNow();
}

void DrawingLayer::Wipe() {
    const QRegion had = kept_.area + fresh_.area;
    kept_ = {};
    fresh_ = {};
    showPending_ = false;
    if (!had.isEmpty() && !belowPicture())
        Control()->update(had.translated(Control()->contentsRect().topLeft()));
}

QImage DrawingLayer::Pixels(QPoint& corner) const {
    if (kept_.area.isEmpty())
        return {};
    const QRectF extent = kept_.area.boundingRect();
    const double ratio = kept_.image.devicePixelRatio();
    const QRect pixels = QRectF(extent.topLeft() * ratio, extent.size() * ratio).toAlignedRect() & kept_.image.rect();
    corner = pixels.topLeft();
    return kept_.image.copy(pixels).convertToFormat(QImage::Format_RGBA8888_Premultiplied);
}

void DrawingLayer::SetPicture(QObject* maker, std::function<QColor(const QPoint&)> pixelAt) {
    maker_ = maker;
    pictureAt_ = std::move(pixelAt);
}

// What the control paints at a pixel, without what lies above; what it draws through the layer goes to its sheet.
void DrawingLayer::renderBelow(QImage& image, const QPoint& pixel) {
    const QRect place(pixel, QSize(1, 1));
    inPaint_ = true;
    painting_ = place;
    Control()->render(&image, QPoint(0, 0), place, QWidget::DrawWindowBackground);
    inPaint_ = false;
}

QColor DrawingLayer::PixelAt(const QPoint& pixel) {
    const QRect contents = Control()->contentsRect();
    if (!QRect(QPoint(0, 0), contents.size()).contains(pixel))
        return Qt::black;
    QImage one(1, 1, QImage::Format_ARGB32_Premultiplied);
    one.fill(Control()->palette().color(Control()->backgroundRole()));
    if (belowPicture() && maker_ && pictureAt_)
        one.setPixelColor(0, 0, pictureAt_(pixel));
    else if (!inPaint_)
        renderBelow(one, contents.topLeft() + pixel);
    QPainter painter(&one);
    for (const Sheet* sheet : {&kept_, &fresh_, &painted_}) {
        const double ratio = sheet->image.devicePixelRatio();
        if (sheet->area.contains(pixel))
            painter.drawImage(QPoint(0, 0), sheet->image, QRectF(QPointF(pixel) * ratio, QSizeF(1, 1)).toAlignedRect());
    }
    painter.end();
    if (!inPaint_)
        painted_ = {};
    QColor color = one.pixelColor(0, 0);
    color.setAlpha(255);
    return color;
}

bool DrawingLayer::eventFilter(QObject* watched, QEvent* event) {
    if (watched != parent() || event->type() != QEvent::Paint || inPaint_ || belowPicture())
        return QObject::eventFilter(watched, event);
    paintControl(event, static_cast<QPaintEvent*>(event)->region());
    return true;
}

// The control paints itself, then what has been drawn comes over it. A paint event that the layer did not ask for is a
// repaint: it takes away what has been shown. Pictures that are taken of the control change nothing.
void DrawingLayer::paintControl(QEvent* event, const QRegion& painted) {
    const QPointer<DrawingLayer> self = this;
    QWidget* const control = Control();
    const QPoint corner = control->contentsRect().topLeft();
    const QRegion region = painted.translated(-corner);
    const bool onScreen = paintsOntoItsWindow(*control);
    if (onScreen && !painted.subtracted(asked_).isEmpty())
        clear(kept_, region);

    inPaint_ = true;
    painting_ = painted;
    static_cast<QObject*>(control)->event(event);
    if (!self)
        return;
    inPaint_ = false;

    QPainter painter(control);
    if (painter.isActive()) {
        painter.setClipRegion(painted & control->contentsRect());
        for (const Sheet* sheet : {&painted_, &kept_, &fresh_}) {
            if (!sheet->area.isEmpty())
                painter.drawImage(corner, sheet->image);
        }
    }
    painted_ = {};
    if (!onScreen)
        return;
    asked_ = (asked_ & control->rect()) - painted;
    const QRegion seen = fresh_.area & region;
    if (seen.isEmpty())
        return;
    prepare(kept_);
    {
        QPainter keeper(&kept_.image);
        keeper.setClipRegion(seen);
        keeper.drawImage(QPoint(0, 0), fresh_.image);
    }
    kept_.area += seen;
    clear(fresh_, seen);
}

}  // namespace zk
