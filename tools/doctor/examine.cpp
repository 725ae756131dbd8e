#include "examine.h"

#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/_zkogltools.h>
#include <zk/host/message.h>
#include <zk/host/picture.h>
#include <zk/host/workarounds.h>

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QOpenGLContext>
#include <QScreen>
#include <QSysInfo>
#include <QWidget>

#include <functional>
#include <string>

using namespace zk;

namespace {

constexpr int side = 200;

QString glText(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text ? QString::fromLatin1(reinterpret_cast<const char*>(text)) : QStringLiteral("unknown");
}

QString profileOf(const QSurfaceFormat& format) {
    switch (format.profile()) {
        case QSurfaceFormat::CoreProfile:
            return QStringLiteral("core profile");
        case QSurfaceFormat::CompatibilityProfile:
            return QStringLiteral("compatibility profile");
        case QSurfaceFormat::NoProfile:
            break;
    }
    return QStringLiteral("no profile");
}

QString namesOf(bool on) {
    QStringList names;
    for (const Workaround workaround : AllWorkarounds)
        if (IsOn(workaround) == on)
            names += QString::fromUtf8(NameOf(workaround).data());
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

bool waitUntil(const std::function<bool()>& come) {
    const QDeadlineTimer deadline(5000);
    while (!come() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
    return come();
}

/// What is in the back buffer after a swap: OpenGL promises nothing.
QString swapBehaviour(RenderContext& context) {
    const auto fill = [](float red, float green) {
        glClearColor(red, green, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
    };
    fill(1, 0);
    context.SwapBuffers();
    fill(0, 1);
    context.SwapBuffers();
    GLubyte pixel[4] = {0, 0, 0, 0};
    glReadPixels(side / 2, side / 2, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    if (pixel[1] > 200)
        return QStringLiteral("copies: the picture stays");
    if (pixel[0] > 200)
        return QStringLiteral("exchanges: the picture before comes back");
    return QStringLiteral("loses the picture");
}

class Patient {
  public:
    Patient() {
        control_ = new TZKOglControl(&window_);
        control_->SetBevelKind(bevel::bkNone);
        control_->setGeometry(0, 0, side, side);
        canvas_ = new TZkOglCanvas(&window_);
        canvas_->SetWinControl(control_);
        canvas_->SetUnitsPerCm(50);
        window_.setWindowTitle(QStringLiteral("zkogl-doctor"));
        window_.resize(side, side);
        window_.show();
        waitUntil([this] { return canvas_->HasContext() && canvas_->Getdc()->IsExposed(); });
    }

    TZkOglCanvas& Canvas() { return *canvas_; }
    TZKOglControl& Control() { return *control_; }

    /// A red box in the middle.
    TZKOglBox* AddBox() {
        scene_ = new TZKOglScene(&window_);
        scene_->SetZkOglCanvas(canvas_);
        auto* box = new TZKOglBox(&window_);
        box->Settranslation({-0.5, -0.5, -0.5});
        box->getAttributes()->getMaterial()->setEmissionColor(Qt::red);
        box->SetDisplayList(scene_);
        return box;
    }

  private:
    QWidget window_;
    TZKOglControl* control_;
    TZkOglCanvas* canvas_;
    TZKOglScene* scene_ = nullptr;
};

}  // namespace

Examination Examine() {
    Examination found;
    const auto say = [&found](const char* name, const QString& value) {
        found.lines += QString::fromLatin1(name) + QStringLiteral(": ") + value;
    };
    const auto tried = [&](const char* name, bool well, const QString& otherwise) {
        say(name, well ? QStringLiteral("well") : QStringLiteral("FAILS: ") + otherwise);
        found.healthy = found.healthy && well;
    };
    QStringList messages;
    const auto before =
        SetMessageHandler([&messages](const std::string& text) { messages += QString::fromStdString(text); });

    say("system", QSysInfo::prettyProductName() + QStringLiteral(", ") + QSysInfo::currentCpuArchitecture());
    say("window system", QGuiApplication::platformName());
    say("Qt", QString::fromLatin1(qVersion()) + QStringLiteral(", built with " QT_VERSION_STR));
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        say("screen", QStringLiteral("%1 x %2, pixel ratio %3")
                          .arg(screen->geometry().width())
                          .arg(screen->geometry().height())
                          .arg(screen->devicePixelRatio()));
    say("workarounds on", namesOf(true));
    say("workarounds off", namesOf(false));
    say("metafiles", MetafileProgram().isEmpty() ? QStringLiteral("cannot be loaded: zkogl-metafile was not found")
                                                 : MetafileProgram());

    {
        Patient patient;
        TZkOglCanvas& canvas = patient.Canvas();
        if (!canvas.CheckCurrent()) {
            const GlSurface* surface = canvas.Getdc();
            tried("OpenGL", false, surface && !surface->Notice().isEmpty() ? surface->Notice() : messages.join(' '));
        } else {
            const QSurfaceFormat format = QOpenGLContext::currentContext()->format();
            say("OpenGL", glText(GL_VERSION) + QStringLiteral(", ") + profileOf(format));
            say("renderer", glText(GL_RENDERER) + QStringLiteral(", ") + glText(GL_VENDOR));
            say("GLU", QString::fromLatin1(reinterpret_cast<const char*>(gluGetString(GLU_VERSION))));
            say("depth", QStringLiteral("%1 bits").arg(format.depthBufferSize()));
            say("swap", canvas.Getdc()->IsExposed() ? swapBehaviour(*canvas.Context())
                                                    : QStringLiteral("unknown: the window did not come up"));

            int compiled = 0;
            QObject::connect(&canvas, &TZkOglCanvas::OnAfterCompile, &canvas, [&compiled] { ++compiled; });
            TZKOglBox* box = patient.AddBox();
            canvas.Refresh();
            const QImage picture = canvas.Picture({side, side});
            tried("drawing",
                  !picture.isNull() && picture.pixelColor(side / 2, side / 2).red() > 200 &&
                      picture.pixelColor(5, 5).red() < 50,
                  picture.isNull() ? QStringLiteral("no framebuffer objects") : QStringLiteral("a box is not seen"));
            canvas.Refresh();
            tried("lists", compiled == 1 && canvas.Picture({side, side}) == picture,
                  QStringLiteral("compiled %1 times, or played otherwise").arg(compiled));
            const bool hit = canvas.Select(side / 2, side / 2);
            tried("picking", hit && HitTarget::Of(canvas.Hits().front().HitObject) == box && !canvas.Select(5, 5),
                  QStringLiteral("a box is not found, or nothing is taken for one"));
            const GLenum error = glGetError();
            tried("errors", error == GL_NO_ERROR && messages.isEmpty(),
                  QStringLiteral("%1 %2").arg(error).arg(messages.join(' ')));
        }
    }
    SetMessageHandler(before);
    return found;
}
