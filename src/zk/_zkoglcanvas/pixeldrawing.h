#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

namespace zk {

/// Copies pixels into the window's back buffer as they are, with OpenGL 1.1 alone. While it lives, every step of OpenGL
/// that would change or cut them is off; afterwards all state is as it was. Needs the window's context current.
class PixelDrawing {
  public:
    /// `window` is the size of the window in device pixels.
    explicit PixelDrawing(const QSize& window);
    ~PixelDrawing();
    PixelDrawing(const PixelDrawing&) = delete;
    PixelDrawing& operator=(const PixelDrawing&) = delete;

    /// Rows of RGBA bytes from the bottom up, in the place of everything that is there.
    void Replace(const void* rgba);

    /// An image of premultiplied RGBA (`QImage::Format_RGBA8888_Premultiplied`) over what is there; `corner` is its
    /// upper left one, in device pixels from the window's.
    void Over(const QImage& image, const QPoint& corner);

  private:
    QSize window_;
};

}  // namespace zk
