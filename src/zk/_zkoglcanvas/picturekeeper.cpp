#include "picturekeeper.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/offscreenbuffer.h>
#include <zk/_zkoglcanvas/pixeldrawing.h>
#include <zk/host/workarounds.h>

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

#include <vector>

namespace zk {

namespace {

class FramebufferKeeper final : public PictureKeeper {
  public:
    ~FramebufferKeeper() override { release(); }

    void Keep(const QSize& size) override {
        if (size.isEmpty())
            return;
        const State state;
        if (size != size_)
            make(size);
        copy(windowBuffer(), framebuffer_);
    }

    void BringBack() override {
        if (framebuffer_ == 0)
            return;
        const State state;
        copy(framebuffer_, windowBuffer());
    }

  private:
    static QOpenGLExtraFunctions& gl() { return *QOpenGLContext::currentContext()->extraFunctions(); }
    static GLuint windowBuffer() { return QOpenGLContext::currentContext()->defaultFramebufferObject(); }

    // What user code may have left behind and a copy changes or is cut by: bindings, buffers of the window, scissor.
    class State {
      public:
        State() {
            glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &draw_);
            glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &read_);
            glGetIntegerv(GL_RENDERBUFFER_BINDING, &renderbuffer_);
            glPushAttrib(GL_SCISSOR_BIT);
            glDisable(GL_SCISSOR_TEST);
            gl().glBindFramebuffer(GL_FRAMEBUFFER, windowBuffer());
            glGetIntegerv(GL_READ_BUFFER, &readBuffer_);
            glGetIntegerv(GL_DRAW_BUFFER, &drawBuffer_);
            if (windowBuffer() == 0) {
                glReadBuffer(GL_BACK);
                glDrawBuffer(GL_BACK);
            }
        }
        ~State() {
            gl().glBindFramebuffer(GL_FRAMEBUFFER, windowBuffer());
            if (windowBuffer() == 0) {
                glReadBuffer(GLenum(readBuffer_));
                glDrawBuffer(GLenum(drawBuffer_));
            }
            glPopAttrib();
            gl().glBindRenderbuffer(GL_RENDERBUFFER, GLuint(renderbuffer_));
            gl().glBindFramebuffer(GL_DRAW_FRAMEBUFFER, GLuint(draw_));
            gl().glBindFramebuffer(GL_READ_FRAMEBUFFER, GLuint(read_));
        }
        State(const State&) = delete;
        State& operator=(const State&) = delete;

      private:
        GLint draw_ = 0;
        GLint read_ = 0;
        GLint renderbuffer_ = 0;
        GLint readBuffer_ = 0;
        GLint drawBuffer_ = 0;
    };

    void make(const QSize& size) {
        release();
        gl().glGenRenderbuffers(1, &renderbuffer_);
        gl().glBindRenderbuffer(GL_RENDERBUFFER, renderbuffer_);
        gl().glRenderbufferStorage(GL_RENDERBUFFER, GL_RGB8, size.width(), size.height());
        gl().glGenFramebuffers(1, &framebuffer_);
        gl().glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
        gl().glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, renderbuffer_);
        size_ = size;
    }

    void release() {
        if (framebuffer_ == 0 || !QOpenGLContext::currentContext())
            return;
        gl().glDeleteFramebuffers(1, &framebuffer_);
        gl().glDeleteRenderbuffers(1, &renderbuffer_);
        framebuffer_ = 0;
        renderbuffer_ = 0;
    }

    void copy(GLuint from, GLuint to) const {
        gl().glBindFramebuffer(GL_READ_FRAMEBUFFER, from);
        gl().glBindFramebuffer(GL_DRAW_FRAMEBUFFER, to);
        gl().glBlitFramebuffer(0, 0, size_.width(), size_.height(), 0, 0, size_.width(), size_.height(),
                               GL_COLOR_BUFFER_BIT, GL_NEAREST);
    }

    QSize size_;
    GLuint framebuffer_ = 0;
    GLuint renderbuffer_ = 0;
};

class PixelKeeper final : public PictureKeeper {
  public:
    void Keep(const QSize& size) override {
        size_ = size;
        pixels_.resize(std::size_t(size.width()) * std::size_t(size.height()) * 4);
        if (size.isEmpty())
            return;
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        glPixelStorei(GL_PACK_SKIP_ROWS, 0);
        glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
        glReadPixels(0, 0, size.width(), size.height(), GL_RGBA, GL_UNSIGNED_BYTE, pixels_.data());
        glPopClientAttrib();
    }

    void BringBack() override {
        if (pixels_.empty())
            return;
        PixelDrawing(size_).Replace(pixels_.data());
    }

  private:
    QSize size_;
    std::vector<unsigned char> pixels_;
};

class NoKeeper final : public PictureKeeper {
  public:
    void Keep(const QSize& /*size*/) override {}
    void BringBack() override {}
};

}  // namespace

PictureKeeper::Way PictureKeeper::BestWay() {
    if (!IsOn(Workaround::KeptPicture))
        return Way::Nothing;
    return OffscreenBuffer::IsAvailable() ? Way::FramebufferObject : Way::Pixels;
}

std::unique_ptr<PictureKeeper> PictureKeeper::Create(Way way) {
    if (way == Way::FramebufferObject)
        return std::make_unique<FramebufferKeeper>();
    if (way == Way::Pixels)
        return std::make_unique<PixelKeeper>();
    return std::make_unique<NoKeeper>();
}

}  // namespace zk
