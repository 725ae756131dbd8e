#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/glsurface.h>

#include <QOpenGLContext>
#include <QTest>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

TEST(Context, TheInitialStateComesInItsOrder) {
    GlForm form;
    form.canvas->SetWinControl(nullptr);
    GlRecorder recorder;
    form.canvas->SetWinControl(form.control);
    const Calls calls = Section(recorder.Calls(), "glEnable(GL_CULL_FACE)", "glFrontFace(GL_CW)");
    EXPECT_EQ(calls, (Calls{"glEnable(GL_CULL_FACE)", "glCullFace(GL_BACK)", "glShadeModel(GL_SMOOTH)",
                            "glEnable(GL_DEPTH_TEST)", "glDepthFunc(GL_LESS)", "glEnable(GL_BLEND)",
                            "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)", "glEnable(GL_NORMALIZE)",
                            "glFrontFace(GL_CW)"}));
    // the square viewport, the parallel projection, the name stack and the light follow
    EXPECT_EQ(recorder.CallsTo({"glOrtho"})[0], "glOrtho(-1, 1, -1, 1, -5, 5)");
    EXPECT_EQ(recorder.Count("glInitNames"), 1);
    EXPECT_EQ(recorder.CallsTo({"glEnable"}).back(), "glEnable(GL_LIGHTING)");
}

TEST(Context, TheFormatIsTheOneAskedFor) {
    GlForm form;
    ASSERT_TRUE(form.canvas->CheckCurrent());
    const auto bits = [](GLenum which) {
        GLint value = -1;
        glGetIntegerv(which, &value);
        return value;
    };
    EXPECT_EQ(bits(GL_RED_BITS), 8);
    EXPECT_EQ(bits(GL_GREEN_BITS), 8);
    EXPECT_EQ(bits(GL_BLUE_BITS), 8);
    EXPECT_EQ(bits(GL_ALPHA_BITS), 0);
    EXPECT_GE(bits(GL_DEPTH_BITS), 24);
    EXPECT_EQ(bits(GL_STENCIL_BITS), 0);
    GLboolean doubleBuffered = GL_FALSE;
    glGetBooleanv(GL_DOUBLEBUFFER, &doubleBuffered);
    EXPECT_TRUE(doubleBuffered);
}

TEST(Context, TheSameControlTwiceTakesTheSizeAgainOnly) {
    GlForm form({300, 200});
    RenderContext* context = form.canvas->Context();
    form.canvas->SetWidth(10);
    form.canvas->SetWinControl(form.control);
    EXPECT_EQ(form.canvas->Context(), context);
    EXPECT_EQ(form.canvas->GetWidth(), 300);
    EXPECT_EQ(form.canvas->GetHeight(), 200);
    EXPECT_EQ(form.canvas->GetLeft(), 0);
    EXPECT_EQ(form.canvas->GetTop(), 0);
}

TEST(Context, TheAttributesAreBoundToOpenGl) {
    GlForm form;
    Tattributes* attributes = form.canvas->getAttributes();
    EXPECT_NE(qobject_cast<TOglMaterial*>(attributes->getMaterial()), nullptr);
    EXPECT_NE(qobject_cast<TOglTexture*>(attributes->getTexture()), nullptr);
    auto* style = qobject_cast<TOglPolyAttributes*>(attributes->getPolyStyle());
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(style->Canvas(), form.canvas);

    // Unbinding keeps them; another control gets new ones.
    form.canvas->SetWinControl(nullptr);
    EXPECT_NE(qobject_cast<TOglMaterial*>(attributes->getMaterial()), nullptr);
    form.canvas->SetWinControl(form.control);
    EXPECT_NE(qobject_cast<TOglMaterial*>(form.canvas->getAttributes()->getMaterial()), nullptr);
}

TEST(Context, UnbindingLeavesNothingToPaintInto) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    ASSERT_NE(scene->ListName(), 0U);
    form.canvas->SetWinControl(nullptr);
    EXPECT_FALSE(form.canvas->HasContext());
    EXPECT_EQ(form.canvas->Getdc(), nullptr);
    EXPECT_EQ(form.canvas->GetWinControl(), nullptr);
    EXPECT_EQ(form.control->Canvas(), nullptr);
    EXPECT_EQ(scene->ListName(), 0U);
    EXPECT_EQ(scene->GetZkOglCanvas(), form.canvas);
    EXPECT_FALSE(form.canvas->CheckCurrent());
    EXPECT_EQ(form.canvas->GetmatrixMode(), 0);
    EXPECT_EQ(form.canvas->GetRenderMode(), 0);
    EXPECT_FALSE(form.canvas->Select(10, 10));
    form.canvas->Refresh();
    EXPECT_EQ(form.TakeSwaps(), 0);
    scene->DoUpdateNow();
    scene->Play();

    form.canvas->SetWinControl(form.control);
    EXPECT_NE(scene->ListName(), 0U);
    EXPECT_FALSE(scene->IsCompiled() && form.canvas->Scenes().empty());
}

// Everything that was set before there was a context, or under another one, is in force in a new one.
TEST(Context, ANewContextTakesOverTheViewTheLightsAndTheScenes) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x00FF00, {2, 2, 2}, {1, 1, -1});
    auto* light = new TZKOglLight(form.window.get());
    light->SetZkOglCanvas(form.canvas);
    light->SetEnabled(true);
    form.canvas->SetBlickWinkel(30);
    form.canvas->SetZoomFactor(1.5);
    form.canvas->SetTranslation({-1, 0, 0.5});
    form.canvas->SetLightModelTwoSided(true);
    form.canvas->SetTextureScale({2, 1, 1});
    GlForm::Settle();
    const QImage before = form.Screen();
    const Tmatrix view = form.canvas->GetOglModelMatrix();

    form.canvas->SetWinControl(nullptr);
    form.canvas->SetWinControl(form.control);
    GlForm::Settle();
    EXPECT_EQ(form.Screen(), before);
    EXPECT_TRUE(Equals(form.canvas->GetOglModelMatrix(), view));
    EXPECT_EQ(light->GetHandle(), GL_LIGHT0);
    EXPECT_TRUE(glIsEnabled(GL_LIGHT0));
    GLint twoSided = 0;
    glGetIntegerv(GL_LIGHT_MODEL_TWO_SIDE, &twoSided);
    EXPECT_EQ(twoSided, 1);
    GLdouble texture[16];
    glGetDoublev(GL_TEXTURE_MATRIX, texture);
    EXPECT_EQ(texture[0], 2);
}

TEST(Context, AnotherControlGetsTheSamePictureAndScenesKeepTheirOrder) {
    GlForm form;
    auto* second = new TZKOglControl(form.window.get());
    second->SetBevelKind(bevel::bkNone);
    second->setGeometry(0, 0, 300, 300);
    TZKOglScene* a = form.AddScene();
    TZKOglScene* b = form.AddScene();
    form.AddBox(a, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    GlForm::Settle();
    const QImage before = form.Screen();

    second->show();
    form.control->hide();
    form.canvas->SetWinControl(second);
    EXPECT_EQ(second->Canvas(), form.canvas);
    EXPECT_EQ(form.control->Canvas(), nullptr);
    EXPECT_EQ(form.canvas->Scenes(), (std::vector<TZKOglScene*>{a, b}));
    std::swap(form.control, second);
    GlForm::Settle();
    EXPECT_EQ(form.Screen(), before);
}

TEST(Context, NoControlHasNoSurface) {
    EXPECT_EQ(GlSurface::Of(nullptr), nullptr);
    EXPECT_EQ(GlSurface::Find(nullptr), nullptr);
}

TEST(Context, AnyWidgetWillDo) {
    GlForm form;
    form.canvas->SetWinControl(nullptr);
    auto* plain = new QWidget(form.window.get());
    plain->setGeometry(0, 0, 200, 100);
    plain->show();
    form.canvas->SetWinControl(plain);
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    GlForm::Settle();
    const auto at = [&](const QPoint& p) {
        const QPoint global = plain->mapToGlobal(p);
        return plain->screen()->grabWindow(0, global.x(), global.y(), 1, 1).toImage().pixelColor(0, 0);
    };
    EXPECT_EQ(at({100, 50}), QColor(254, 0, 0));
    // it follows the widget's size, and paints again when something lay over it
    plain->resize(100, 100);
    GlForm::Settle();
    EXPECT_EQ(form.canvas->GetWidth(), 100);
    EXPECT_EQ(at({50, 50}), QColor(254, 0, 0));
    // without a canvas the widget shows itself again
    form.canvas->SetWinControl(nullptr);
    plain->setStyleSheet("background: #123456");
    GlForm::Settle();
    EXPECT_EQ(at({50, 50}), QColor(0x12, 0x34, 0x56));
    form.canvas->SetWinControl(plain);
    GlForm::Settle();
    EXPECT_EQ(at({50, 50}), QColor(254, 0, 0));
    delete plain;
    EXPECT_EQ(form.canvas->GetWinControl(), nullptr);
    EXPECT_FALSE(form.canvas->HasContext());
}

TEST(Context, EachCanvasDrawsInItsOwnContextOnly) {
    GlForm first;
    GlForm second;
    first.canvas->SetColor(0x0000FF);
    second.canvas->SetColor(0x00FF00);
    TZkOglCanvas unbound;
    ASSERT_TRUE(first.canvas->CheckCurrent());
    const QOpenGLContext* current = QOpenGLContext::currentContext();
    GlRecorder recorder;
    unbound.SetWidth(77);
    unbound.SetprojectionMode(1);
    unbound.SetClockWise(false);
    unbound.OGLTranslate({1, 2, 3});
    unbound.EnableClipplane(0, {0, 0, 0}, {1, 0, 0});
    unbound.SetTextureScale({2, 2, 2});
    unbound.SetLightModelTwoSided(true);
    EXPECT_EQ(recorder.Calls(), Calls{});
    EXPECT_EQ(QOpenGLContext::currentContext(), current);
    first.canvas->Refresh();
    second.canvas->Refresh();
    GlForm::Settle();
    second.window->raise();
    second.canvas->Refresh();
    EXPECT_EQ(second.PixelAt({10, 10}), QColor(0, 254, 0));
}

TEST(Context, BackgroundColours) {
    GlForm form;
    form.TakeSwaps();
    form.canvas->SetColor(0);
    EXPECT_EQ(form.TakeSwaps(), 0) << "the same colour repaints nothing";
    GlRecorder recorder;
    form.canvas->SetColor(0xFFFFFF);
    EXPECT_EQ(form.TakeSwaps(), 2);
    EXPECT_EQ(recorder.CallsTo({"glClearColor"}), Calls{"glClearColor(0.996094, 0.996094, 0.996094, 1)"});
    EXPECT_EQ(form.PixelAt({5, 5}), QColor(254, 254, 254));
    EXPECT_EQ(form.canvas->property("BackgroundColor").value<QColor>(), QColor(Qt::white));
    ASSERT_TRUE(form.canvas->setProperty("BackgroundColor", QColor(0x11, 0x22, 0x33)));
    EXPECT_EQ(form.canvas->GetColor(), 0x332211U);
}

TEST(Context, ColoursAreBytesDividedBy256) {
    EXPECT_EQ(ToGlColor(0xFFFFFF), (GlColor{255 / 256.0F, 255 / 256.0F, 255 / 256.0F, 1}));
    EXPECT_EQ(ToGlColor(0x010080, 0.5F), (GlColor{0.5F, 0, 1 / 256.0F, 0.5F}));
    for (TColor byte = 0; byte < 256; ++byte) {
        const TColor color = byte | ((255 - byte) << 8) | ((byte ^ 0x55) << 16);
        EXPECT_EQ(FromGlColor(ToGlColor(color).data()), color);
    }
    const float beyond[4] = {-1, 2, 0.5, 1};
    EXPECT_EQ(FromGlColor(beyond), 0x80FF00U);
}

TEST(Context, EveryErrorHasItsText) {
    GlForm form;
    ASSERT_TRUE(form.canvas->CheckCurrent());
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList());
    glEnable(0xFFFF);
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Error: GL_INVALID_ENUM"});
    glViewport(0, 0, -1, 1);
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Error: GL_INVALID_VALUE"});
    glEnd();
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Error: GL_INVALID_OPERATION"});
    for (int i = 0; i < 100; ++i)
        glPushMatrix();
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Error: GL_STACK_OVERFLOW"});
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    for (int i = 0; i < depth; ++i)
        glPopMatrix();
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Error: GL_STACK_UNDERFLOW"});
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList());
}
