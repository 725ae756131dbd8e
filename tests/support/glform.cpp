#include "glform.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/glsurface.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace zk::test {

MessageCatcher::MessageCatcher()
    : old_(SetMessageHandler([this](const std::string& text) { texts_ += QString::fromStdString(text); })) {}

MessageCatcher::~MessageCatcher() {
    SetMessageHandler(old_);
}

GlForm::GlForm(const QSize& client) : window(std::make_unique<QWidget>()) {
    control = new TZKOglControl(window.get());
    control->SetBevelKind(bevel::bkNone);
    control->setObjectName("control");
    control->setGeometry(QRect(QPoint(20, 10), client));
    window->setGeometry(QRect(QPoint(40, 30), client + QSize(40, 20)));
    canvas = new TZkOglCanvas(window.get());
    canvas->setObjectName("canvas");
    canvas->SetWinControl(control);
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get()))
        ADD_FAILURE() << "the window was not exposed";
    Settle();
    CountSwaps();
}

GlForm::~GlForm() {
    if (window && canvas) {
        EXPECT_EQ(PendingError(*canvas), 0U);
    }
    window.reset();
    EXPECT_EQ(messages.Take(), QStringList());
}

void GlForm::CountSwaps() {
    swaps = 0;
    if (canvas->Context())
        canvas->Context()->SetSwap([this](RenderContext& context) {
            ++swaps;
            context.SwapBuffers();
        });
}

TZKOglScene* GlForm::AddScene() {
    auto* scene = new TZKOglScene(window.get());
    scene->SetZkOglCanvas(canvas);
    return scene;
}

void GlForm::MakeFlat(Tmaterial* material, TColor color) {
    Tmaterialkind kind = maNone;
    kind.Specular = 0;
    kind.Emission = color;
    material->SetMAterialKind(kind);
}

TZKOglBox* GlForm::AddBox(TZKOglScene* scene, TColor color, const TXYZ& size, const TXYZ& at) {
    auto* box = new TZKOglBox(window.get());
    box->SetA(size.x);
    box->SetB(size.y);
    box->SetC(size.z);
    box->Settranslation(at);
    MakeFlat(box->getAttributes()->getMaterial(), color);
    box->SetDisplayList(scene);
    return box;
}

void GlForm::Settle() {
    // Exposures and paints come from the window system a little later than the calls that cause them.
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QTest::qWait(15);
    }
}

QImage GlForm::Screen() {
    const QPoint corner = control->mapToGlobal(control->contentsRect().topLeft());
    const QSize size = control->contentsRect().size();
    return control->screen()->grabWindow(0, corner.x(), corner.y(), size.width(), size.height()).toImage();
}

QColor GlForm::PixelAt(const QPointF& client) {
    const QImage image = Screen();
    return image.pixelColor((client * image.devicePixelRatio()).toPoint());
}

QWindow* GlForm::MouseWindow() const {
    return GlSurface::Find(control)->Window();
}

void GlForm::Click(const QPoint& client) {
    if (GlSurface::Find(control)->isVisible())
        QTest::mouseClick(MouseWindow(), Qt::LeftButton, Qt::NoModifier, client);
    else
        QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier, client + control->contentsRect().topLeft());
}

unsigned PendingError(TZkOglCanvas& canvas) {
    return canvas.CheckCurrent() ? glGetError() : 0;
}

}  // namespace zk::test
