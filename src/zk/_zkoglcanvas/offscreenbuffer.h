#pragma once

#include <QImage>
#include <QOpenGLContext>
#include <QPoint>
#include <QPointer>
#include <QSize>

namespace zk {

/// A place besides the window that the current context draws into: color and depth in a framebuffer object. What was
/// drawn into before comes back when it goes. Needs the context current; when that one has gone it does nothing more.
class OffscreenBuffer {
  public:
    /// `IsComplete` tells whether the driver gave it.
    explicit OffscreenBuffer(const QSize& size);
    ~OffscreenBuffer();
    OffscreenBuffer(const OffscreenBuffer&) = delete;
    OffscreenBuffer& operator=(const OffscreenBuffer&) = delete;

    /// Whether the current context has framebuffer objects that can be copied; false without a context.
    static bool IsAvailable();

    /// The largest size that the driver gives, which is empty where it has no framebuffer objects.
    static QSize LargestSize();

    bool IsComplete() const { return complete_; }

    /// Copies the lower left part of what has been drawn into `image` (`QImage::Format_RGB32`). Its upper left corner
    /// comes to `corner`; `size` lies inside of both.
    void CopyTo(QImage& image, const QPoint& corner, const QSize& size) const;

  private:
    QPointer<QOpenGLContext> context_;
    int drawBefore_ = 0;
    int readBefore_ = 0;
    unsigned framebuffer_ = 0;
    unsigned color_ = 0;
    unsigned depth_ = 0;
    bool complete_ = false;
};

}  // namespace zk
