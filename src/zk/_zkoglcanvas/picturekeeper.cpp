#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/picturekeeper.h>

#include <QOpenGLFramebufferObject>

#include <vector>

namespace zk {

namespace {

class FramebufferKeeper final : public PictureKeeper {
  public:
    void Keep(const QSize& size) override {
        if (size.isEmpty())
            return;
        if (!picture_ || picture_->size() != size)
            picture_ = std::make_unique<QOpenGLFramebufferObject>(size, QOpenGLFramebufferObject::NoAttachment,
                                                                  GLenum(GL_TEXTURE_2D), GLenum(GL_RGB8));
        copy(picture_.get(), nullptr);
    }

    void BringBack() override {
        if (picture_)
            copy(nullptr, picture_.get());
    }

  private:
    // Null stands for the window. A scissor rectangle that user code left behind would cut the copy.
    void copy(QOpenGLFramebufferObject* target, QOpenGLFramebufferObject* source) {
        const QRect whole(QPoint(0, 0), picture_->size());
        const GLboolean scissor = glIsEnabled(GL_SCISSOR_TEST);
        if (scissor)
            glDisable(GL_SCISSOR_TEST);
        QOpenGLFramebufferObject::blitFramebuffer(target, whole, source, whole);
        if (scissor)
            glEnable(GL_SCISSOR_TEST);
    }

    std::unique_ptr<QOpenGLFramebufferObject> picture_;
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
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        for (const GLenum step : {GL_LIGHTING, GL_TEXTURE_1D, GL_TEXTURE_2D, GL_FOG, GL_BLEND, GL_ALPHA_TEST, GL_DEPTH_TEST,
                                  GL_STENCIL_TEST, GL_SCISSOR_TEST, GL_COLOR_LOGIC_OP})
            glDisable(step);
        for (GLenum plane = GL_CLIP_PLANE0; plane <= GL_CLIP_PLANE5; ++plane)
            glDisable(plane);
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glPixelZoom(1, 1);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
        glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
        glViewport(0, 0, size_.width(), size_.height());
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
        glRasterPos2i(-1, -1);
        glDrawPixels(size_.width(), size_.height(), GL_RGBA, GL_UNSIGNED_BYTE, pixels_.data());
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
        glPopClientAttrib();
        glPopAttrib();
    }

  private:
    QSize size_;
    std::vector<unsigned char> pixels_;
};

}  // namespace

PictureKeeper::Way PictureKeeper::BestWay() {
    return QOpenGLFramebufferObject::hasOpenGLFramebufferBlit() ? Way::FramebufferObject : Way::Pixels;
}

std::unique_ptr<PictureKeeper> PictureKeeper::Create(Way way) {
    if (way == Way::FramebufferObject)
        return std::make_unique<FramebufferKeeper>();
    return std::make_unique<PixelKeeper>();
}

}  // namespace zk
