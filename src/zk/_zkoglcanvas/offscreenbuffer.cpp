#include "offscreenbuffer.h"

#include <zk/_zkoglcanvas/glapi.h>

#include <QByteArray>
#include <QOpenGLExtraFunctions>

#include <algorithm>
#include <cstring>
#include <vector>

namespace zk {

namespace {

QOpenGLExtraFunctions& gl() {
    return *QOpenGLContext::currentContext()->extraFunctions();
}

}  // namespace

bool OffscreenBuffer::IsAvailable() {
    const QOpenGLContext* context = QOpenGLContext::currentContext();
    return context && (context->format().majorVersion() >= 3 ||
                       context->hasExtension(QByteArrayLiteral("GL_ARB_framebuffer_object")));
}

QSize OffscreenBuffer::LargestSize() {
    if (!IsAvailable())
        return {0, 0};
    GLint side = 0;
    GLint viewport[2] = {0, 0};
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &side);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    return {std::min(side, viewport[0]), std::min(side, viewport[1])};
}

OffscreenBuffer::OffscreenBuffer(const QSize& size) {
    if (size.isEmpty() || size.boundedTo(LargestSize()) != size)
        return;
    context_ = QOpenGLContext::currentContext();
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &drawBefore_);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &readBefore_);
    GLint renderbufferBefore = 0;
    glGetIntegerv(GL_RENDERBUFFER_BINDING, &renderbufferBefore);
    gl().glGenFramebuffers(1, &framebuffer_);
    gl().glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    const auto attach = [&size](GLuint& buffer, GLenum format, GLenum place) {
        gl().glGenRenderbuffers(1, &buffer);
        gl().glBindRenderbuffer(GL_RENDERBUFFER, buffer);
        gl().glRenderbufferStorage(GL_RENDERBUFFER, format, size.width(), size.height());
        gl().glFramebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, buffer);
    };
    attach(color_, GL_RGB8, GL_COLOR_ATTACHMENT0);
    attach(depth_, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
    gl().glBindRenderbuffer(GL_RENDERBUFFER, GLuint(renderbufferBefore));
    complete_ = gl().glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    while (!complete_ && glGetError() != GL_NO_ERROR) {
        // Out of memory, most likely: `IsComplete` says so, and nobody is to find the error later.
    }
}

OffscreenBuffer::~OffscreenBuffer() {
    if (!context_ || context_ != QOpenGLContext::currentContext())
        return;
    gl().glBindFramebuffer(GL_DRAW_FRAMEBUFFER, GLuint(drawBefore_));
    gl().glBindFramebuffer(GL_READ_FRAMEBUFFER, GLuint(readBefore_));
    gl().glDeleteFramebuffers(1, &framebuffer_);
    gl().glDeleteRenderbuffers(1, &color_);
    gl().glDeleteRenderbuffers(1, &depth_);
}

void OffscreenBuffer::CopyTo(QImage& image, const QPoint& corner, const QSize& size) const {
    std::vector<QRgb> pixels(std::size_t(size.width()) * std::size_t(size.height()));
    gl().glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer_);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glPixelStorei(GL_PACK_SKIP_ROWS, 0);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_PACK_SWAP_BYTES, GL_FALSE);
    // The words of QRgb, whichever way round the machine has their bytes; what is read has no alpha, which reads as 1.
    glReadPixels(0, 0, size.width(), size.height(), GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels.data());
    glPopClientAttrib();
    for (int y = 0; y < size.height(); ++y) {  // OpenGL's first row is the lowest
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(corner.y() + size.height() - 1 - y)) + corner.x();
        std::memcpy(row, pixels.data() + std::size_t(y) * std::size_t(size.width()),
                    std::size_t(size.width()) * sizeof(QRgb));
    }
}

}  // namespace zk
