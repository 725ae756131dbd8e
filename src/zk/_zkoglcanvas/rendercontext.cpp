#include "rendercontext.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/host/workarounds.h>

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QScopeGuard>
#include <QWindow>

namespace zk {

namespace {

QString refusal(const char* reason) {
    return QCoreApplication::translate("zk::RenderContext",
                                       "No picture can be shown here: %1 OpenGL 1.1 or later in the "
                                       "compatibility profile is needed.")
        .arg(QCoreApplication::translate("zk::RenderContext", reason));
}

}  // namespace

std::unique_ptr<RenderContext> RenderContext::Create(GlSurface& surface, QString& whyNot) {
    QWindow* window = surface.Window();
    if (!window) {
        whyNot = refusal("the window system made no window for OpenGL.");
        return nullptr;
    }
    auto context = std::make_unique<QOpenGLContext>();
    context->setFormat(window->requestedFormat());
    if (!context->create()) {
        whyNot = refusal("the window system refused an OpenGL context.");
        return nullptr;
    }
    if (!context->makeCurrent(window)) {
        whyNot = refusal("the OpenGL context could not be made current.");
        return nullptr;
    }
    if (context->isOpenGLES() || context->format().profile() == QSurfaceFormat::CoreProfile ||
        !glGetString(GL_VERSION)) {
        context->doneCurrent();
        whyNot = refusal("the window system offers OpenGL ES or a core profile only.");
        return nullptr;
    }
    // A context over a broken connection counts as made and current, but does nothing.
    const GLuint list = glGenLists(1);
    if (list == 0) {
        context->doneCurrent();
        whyNot = refusal("OpenGL is there, but does not answer.");
        return nullptr;
    }
    glDeleteLists(list, 1);
    return std::unique_ptr<RenderContext>(new RenderContext(surface, std::move(context)));
}

RenderContext::RenderContext(GlSurface& surface, std::unique_ptr<QOpenGLContext> context)
    : surface_(surface), context_(std::move(context)), keeper_(PictureKeeper::Create(PictureKeeper::BestWay())) {}

RenderContext::~RenderContext() {
    MakeCurrent();
    keeper_.reset();
    second_.reset();
    if (QOpenGLContext::currentContext() == context_.get())
        context_->doneCurrent();
}

bool RenderContext::IsCurrent() const {
    return QOpenGLContext::currentContext() == context_.get() && surface_.Window() &&
           context_->surface() == surface_.Window();
}

bool RenderContext::IsSizeNew() const {
    return surface_.PixelSize() != swappedSize_ && IsOn(Workaround::NewSize);
}

bool RenderContext::MakeCurrent() {
    if (IsCurrent())
        return true;
    QWindow* window = surface_.Window();
    if (window && context_->makeCurrent(window))
        return true;
    if (QOpenGLContext* other = QOpenGLContext::currentContext())
        other->doneCurrent();
    return false;
}

void RenderContext::SwapBuffers() {
    // The window system does not define a swap of a window that nobody sees.
    if (surface_.IsExposed())
        context_->swapBuffers(surface_.Window());
}

void RenderContext::swap() {
    swappedSize_ = surface_.PixelSize();
    if (swap_)
        swap_(*this);
    else
        SwapBuffers();
}

void RenderContext::Keep() {
    if (!MakeCurrent())
        return;
    keptSize_ = surface_.PixelSize();
    keeper_->Keep(keptSize_);
}

void RenderContext::BringBack() {
    if (MakeCurrent())
        keeper_->BringBack();
}

void RenderContext::Present() {
    if (!MakeCurrent())
        return;
    Keep();
    if (overlay_)
        overlay_();
    swap();
}

void RenderContext::PresentAgain() {
    if (!MakeCurrent())
        return;
    BringBack();
    if (overlay_)
        overlay_();
    swap();
}

void RenderContext::OutsideOfLists(const std::function<void()>& calls) {
    GLint list = 0;
    glGetIntegerv(GL_LIST_INDEX, &list);
    if (list != 0 && !second_) {
        second_ = std::make_unique<QOpenGLContext>();
        second_->setFormat(context_->format());
        second_->setShareContext(context_.get());
        if (!second_->create())
            second_.reset();
    }
    if (list == 0 || !second_ || !second_->shareContext() || !second_->makeCurrent(surface_.Window())) {
        MakeCurrent();
        calls();
        return;
    }
    const auto back = qScopeGuard([this] { MakeCurrent(); });
    calls();
    glFinish();  // what the first context shows next is complete
}

void RenderContext::SetKeeping(PictureKeeper::Way way) {
    if (!MakeCurrent())
        return;
    keeper_ = PictureKeeper::Create(way);
    keptSize_ = {};
}

}  // namespace zk
