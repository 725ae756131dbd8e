// Several canvases side by side, several on one control, and canvases that move from window to window.
#include "glform.h"
#include "glrecorder.h"
#include "glstate.h"
#include "picturefiles.h"
#include "rounds.h"
#include "sanitizers.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/_zkoglcanvas/textureobjects.h>

#include <QDockWidget>
#include <QMainWindow>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <random>
#include <unistd.h>

using namespace zk;
using namespace zk::test;

namespace {

/// Everything that lives in a context: lists, a picture, lights, a view.
struct Content {
    Content(GlForm& form, const QString& picture, TColor color) {
        const ChangeBracket bracket(form.canvas);
        scene = form.AddScene();
        box = form.AddBox(scene, color, {2, 2, 2}, {-1, -1, -1});
        lit = new TZKOglSphere(form.window.get());
        lit->Settranslation({2.5, 2.5, 0});
        Tmaterialkind kind = maNone;
        kind.Diffuse = 0xFFFFFF;
        kind.Emission = 0;
        lit->getAttributes()->getMaterial()->SetMAterialKind(kind);
        lit->SetDisplayList(scene);
        second = form.AddScene();
        textured = new TZKOglPlane(form.window.get());
        textured->SetData({"0/0/0", "0/1/0", "1/1/0", "1/0/0"});
        textured->SetScale(2);
        textured->Settranslation({-4, -4, 0});
        GlForm::MakeFlat(textured->getAttributes()->getMaterial(), 0xFFFFFF);
        textured->getAttributes()->getTexture()->SetPicture(picture);
        textured->getAttributes()->getTexture()->SetVisible(true);
        textured->SetDisplayList(second);
        for (int i = 0; i < 3; ++i) {
            lights[i] = new TZKOglLight(form.window.get());
            lights[i]->SetDiffuse(TColor(0xFF) << (8 * i));
            lights[i]->SetPosition({3.0 - 2 * i, 3, 5});
            lights[i]->SetZkOglCanvas(form.canvas);
            lights[i]->SetEnabled(i != 1);
        }
    }

    TZKOglScene* scene;
    TZKOglScene* second;
    TZKOglBox* box;
    TZKOglSphere* lit;
    TZKOglPlane* textured;
    TZKOglLight* lights[3];
};

class Several : public testing::Test {
  protected:
    Several() {
        ZkRemoveTextures();
        QImage image(2, 2, QImage::Format_RGB32);
        image.fill(Qt::yellow);
        picture = files.Write("several.bmp", Bmp(image));
    }
    ~Several() override { ZkRemoveTextures(); }

    Files files;
    QString picture;
};

/// One thing that a program does to a canvas.
void change(int step, TZkOglCanvas& canvas, const Content& content) {
    switch (step % 11) {
        case 0:
            canvas.SetBlickWinkel(step % 40);
            break;
        case 1:
            content.box->Setdrehwinkel(step);
            break;
        case 2:
            canvas.Select(step % 300, 150);
            break;
        case 3:
            canvas.SetTranslation({0.01 * (step % 50), 0, 0});
            break;
        case 4:
            content.lit->getAttributes()->getMaterial()->SetDiffuse(TColor(step) * 0x010307 & 0xFFFFFF);
            break;
        case 5:
            content.lights[step % 3]->SetPosition({step % 5 - 2.0, 3, 4});
            break;
        case 6:
            canvas.SetColor(TColor(step % 100) << 16);
            break;
        case 7:
            content.scene->Setdrehwinkel(step % 20);
            break;
        case 8:
            content.textured->SetVisible(step % 3 != 0);
            break;
        case 9:
            canvas.SetZoomFactor(0.8 + step % 7 * 0.1);
            break;
        default:
            canvas.Refresh();
            break;
    }
}

testing::AssertionResult isHit(TZkOglCanvas& canvas, const QPoint& at, const HitTarget* shape) {
    canvas.Select(at.x(), at.y());
    for (const THitItem& hit : canvas.Hits())
        if (HitTarget::Of(hit.HitObject) == shape)
            return testing::AssertionSuccess();
    return testing::AssertionFailure() << canvas.Hits().size() << " hits, but not this shape";
}

/// How many objects of each kind OpenGL holds in the context.
std::string livingObjects(TZkOglCanvas& canvas) {
    if (!canvas.CheckCurrent())
        return "no context";
    QOpenGLExtraFunctions& gl = *QOpenGLContext::currentContext()->extraFunctions();
    int lists = 0;
    int textures = 0;
    int framebuffers = 0;
    int renderbuffers = 0;
    for (GLuint name = 1; name < 5000; ++name) {
        lists += glIsList(name);
        textures += glIsTexture(name);
        framebuffers += gl.glIsFramebuffer(name);
        renderbuffers += gl.glIsRenderbuffer(name);
    }
    return std::to_string(lists) + " lists, " + std::to_string(textures) + " textures, " +
           std::to_string(framebuffers) + " framebuffers, " + std::to_string(renderbuffers) + " renderbuffers";
}

/// What the process has in memory, in MiB; 0 where it does not say much: with sanitizers freed memory is not used
/// again.
double memoryInUse() {
#ifdef ZKOGL_ADDRESS_SANITIZER
    return 0;
#else
    std::ifstream file("/proc/self/statm");
    long all = 0;
    long resident = 0;
    file >> all >> resident;
    return double(resident) * double(sysconf(_SC_PAGESIZE)) / (1 << 20);
#endif
}

}  // namespace

// --- two windows
// ------------------------------------------------------------------------------------------------------

// Whatever the two do in turns, each shows what it would show alone.
TEST_F(Several, TwoWindowsDoNotDisturbEachOther) {
    const auto alone = [this](TColor color, int from) {
        GlForm form;
        const Content content(form, picture, color);
        for (int step = from; step < from + 120; ++step)
            change(step, *form.canvas, content);
        GlForm::Settle();
        form.canvas->Refresh();
        form.canvas->CheckCurrent();
        return std::pair(form.Screen(), CurrentGlState());
    };
    const auto [redAlone, redState] = alone(0x0000FF, 0);
    const auto [greenAlone, greenState] = alone(0x00FF00, 37);
    EXPECT_NE(redAlone, greenAlone);

    GlForm one;
    GlForm other;
    other.window->move(420, 30);
    const Content redContent(one, picture, 0x0000FF);
    const Content greenContent(other, picture, 0x00FF00);
    for (int step = 0; step < 120; ++step) {
        change(step, *one.canvas, redContent);
        change(step + 37, *other.canvas, greenContent);
        if (step % 20 == 0)
            GlForm::Settle();
    }
    GlForm::Settle();
    one.canvas->Refresh();
    other.canvas->Refresh();
    EXPECT_EQ(one.Screen(), redAlone);
    EXPECT_EQ(other.Screen(), greenAlone);
    one.canvas->CheckCurrent();
    EXPECT_EQ(Difference(redState, CurrentGlState()), "");
    other.canvas->CheckCurrent();
    EXPECT_EQ(Difference(greenState, CurrentGlState()), "");
}

TEST_F(Several, WhicheverWindowIsClosedFirstTheOtherGoesOn) {
    for (const bool firstOne : {true, false}) {
        auto one = std::make_unique<GlForm>();
        auto other = std::make_unique<GlForm>();
        other->window->move(420, 30);
        const Content redContent(*one, picture, 0x0000FF);
        const Content greenContent(*other, picture, 0x00FF00);
        for (int step = 0; step < 10; ++step) {
            change(step, *one->canvas, redContent);
            change(step, *other->canvas, greenContent);
        }
        GlForm& left = firstOne ? *other : *one;
        const Content& content = firstOne ? greenContent : redContent;
        GlForm::Settle();
        left.canvas->Refresh();
        const QImage before = left.Screen();
        (firstOne ? one : other).reset();
        EXPECT_EQ(QOpenGLContext::currentContext() == nullptr,
                  QOpenGLContext::currentContext() != &left.canvas->Context()->Handle());
        left.canvas->Refresh();
        EXPECT_EQ(left.Screen(), before);
        for (int step = 10; step < 30; ++step)
            change(step, *left.canvas, content);
        left.canvas->SetTranslation({0, 0, 0});
        EXPECT_TRUE(isHit(*left.canvas, {150, 150}, content.box));
        EXPECT_EQ(left.PixelAt({150, 150}), firstOne ? green : red);
    }
}

// --- two canvases on one control
// --------------------------------------------------------------------------------------

namespace {

/// Two canvases with a box each, on the one control of a window.
struct Shared {
    Shared() {
        redBox = form.AddBox(form.AddScene(), 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        guest = new TZkOglCanvas(form.window.get());
        auto* scene = new TZKOglScene(form.window.get());
        scene->SetZkOglCanvas(guest);
        greenBox = form.AddBox(scene, 0x00FF00, {2, 2, 2}, {-1, -1, -1});
    }

    void ExpectShown(TZkOglCanvas* canvas, const char* when) {
        TZKOglBox* const box = canvas == guest ? greenBox : redBox;
        GlForm::Settle();
        const QPoint middle = form.control->contentsRect().center();
        EXPECT_EQ(form.control->Canvas(), canvas) << when;
        EXPECT_EQ(form.PixelAt(middle), canvas == guest ? green : red) << when;
        int pressed = 0;
        const auto connection = QObject::connect(box, &TCustomShape::OnMouseDown, [&pressed] { ++pressed; });
        form.Click(middle);
        QObject::disconnect(connection);
        EXPECT_EQ(pressed, 1) << when;
        EXPECT_EQ(PendingError(*canvas), 0U) << when;
    }

    GlForm form;
    TZkOglCanvas* guest;
    TZKOglBox* redBox;
    TZKOglBox* greenBox;
};

}  // namespace

TEST_F(Several, TwoCanvasesTakeTurnsOnOneControl) {
    Shared shared;
    GlForm& form = shared.form;
    shared.ExpectShown(form.canvas, "at first");
    for (int turn = 0; turn < 6; ++turn) {
        TZkOglCanvas* const now = turn % 2 ? form.canvas : shared.guest;
        TZkOglCanvas* const off = turn % 2 ? shared.guest : form.canvas;
        now->SetWinControl(form.control);
        shared.ExpectShown(now, "its turn");
        // Who paints last is seen; who is on turn paints when the window must be painted.
        off->Refresh();
        if (off->HasContext()) {
            EXPECT_EQ(form.PixelAt({20, 20}), black);
            EXPECT_EQ(form.PixelAt({150, 150}), turn % 2 ? green : red);
            EXPECT_TRUE(isHit(*off, {150, 150}, turn % 2 ? shared.greenBox : shared.redBox));
        }
        now->Refresh();
        shared.ExpectShown(now, "after the other painted");
        off->SetBlickWinkel(10 + turn);
        (turn % 2 ? shared.greenBox : shared.redBox)->Setdrehwinkel(0);
        now->SetZoomFactor(1 + 0.1 * turn);
        shared.ExpectShown(now, "after both changed");
        form.window->hide();
        form.window->show();
        shared.ExpectShown(now, "hidden and shown");
    }
}

TEST_F(Several, TheSizeIsTakenWithTheTurn) {
    Shared shared;
    GlForm& form = shared.form;
    shared.guest->SetWinControl(form.control);
    form.control->resize(200, 260);
    GlForm::Settle();
    EXPECT_EQ(shared.guest->GetWidth(), 200);
    shared.ExpectShown(shared.guest, "resized");
    form.canvas->SetWinControl(form.control);
    EXPECT_EQ(form.canvas->GetWidth(), 200);
    EXPECT_EQ(form.canvas->GetHeight(), 260);
    shared.ExpectShown(form.canvas, "the other's turn");
}

TEST_F(Several, WhenTheOneOnTurnGoesTheOtherTakesTheControl) {
    for (const bool deleted : {false, true}) {
        Shared shared;
        GlForm& form = shared.form;
        shared.guest->SetWinControl(form.control);
        shared.ExpectShown(shared.guest, "its turn");
        form.control->resize(260, 260);
        GlForm::Settle();
        if (deleted)
            delete shared.guest;
        else
            shared.guest->SetWinControl(nullptr);
        shared.ExpectShown(form.canvas, deleted ? "deleted" : "unbound");
        EXPECT_EQ(form.canvas->GetWidth(), 260);
    }
}

TEST_F(Several, WhenTheOneOffTurnGoesNothingIsSeenOfIt) {
    for (const bool deleted : {false, true}) {
        Shared shared;
        shared.guest->SetWinControl(shared.form.control);
        shared.ExpectShown(shared.guest, "its turn");
        if (deleted) {
            delete shared.form.canvas;
            shared.form.canvas = nullptr;
        } else {
            shared.form.canvas->SetWinControl(nullptr);
        }
        shared.ExpectShown(shared.guest, deleted ? "deleted" : "unbound");
        shared.guest->SetWinControl(nullptr);
        GlForm::Settle();
        EXPECT_EQ(shared.form.control->Canvas(), nullptr);
    }
}

// --- from window to window
// --------------------------------------------------------------------------------------------

TEST_F(Several, ManyMovesBetweenWindowsLeaveNothingBehind) {
    GlForm form;
    GlForm other;
    other.window->move(420, 30);
    delete std::exchange(other.canvas, nullptr);
    const Content content(form, picture, 0x0000FF);
    form.canvas->SetBlickWinkel(20);
    form.canvas->SetProjectionbase(Unitbase);  // a new context begins with matrices made anew, to the last digit
    TZKOglControl* const controls[] = {form.control, other.control};
    GlForm::Settle();
    form.canvas->Refresh();
    const QImage expected = form.Screen();
    ASSERT_EQ(expected.pixelColor(150, 150), red);
    const std::string objects = livingObjects(*form.canvas);
    double memory = 0;
    for (int move = 1; move <= Rounds(100); ++move) {
        form.control = controls[move % 2];
        form.canvas->SetWinControl(form.control);
        for (int wait = 0; wait < 500 && form.Screen() != expected; ++wait)
            QTest::qWait(2);  // the window that is bound must come to be seen
        ASSERT_EQ(form.Screen(), expected) << "move " << move;
        ASSERT_EQ(livingObjects(*form.canvas), objects) << "move " << move;
        if (move == 20)
            memory = memoryInUse();
    }
    EXPECT_LT(memoryInUse() - memory, 4) << "MiB";
    EXPECT_TRUE(isHit(*form.canvas, {150, 150}, content.box));
    form.control = controls[0];
    other.control = controls[1];
}

TEST_F(Several, AThousandChangesLeaveNothingBehind) {
    GlForm form;
    const Content content(form, picture, 0x0000FF);
    for (int step = 0; step < 110; ++step)
        change(step, *form.canvas, content);
    const std::string objects = livingObjects(*form.canvas);
    EXPECT_EQ(objects.substr(objects.find(',')), ", 1 textures, 1 framebuffers, 1 renderbuffers");
    const double memory = memoryInUse();
    for (int step = 110; step < 1100; ++step)
        change(step, *form.canvas, content);
    EXPECT_EQ(livingObjects(*form.canvas), objects);
    EXPECT_LT(memoryInUse() - memory, 4) << "MiB";
}

namespace {

/// What can be seen of the state: lights that are off keep what was set for them last, or nothing.
GlState shownState() {
    GlState state = CurrentGlState();
    for (int light = 0; light < 8; ++light) {
        const std::string name = "light " + std::to_string(light) + " ";
        if (state[name + "enabled"] == "no")
            std::erase_if(state, [&](const auto& entry) {
                return entry.first.starts_with(name) && entry.first != name + "enabled";
            });
    }
    return state;
}

}  // namespace

// --- contexts that are lost
// -------------------------------------------------------------------------------------------

// Each way to lose a context, and what must be back afterwards: every state of OpenGL, the lists, the picture once, the
// lights with their numbers, and what is under the pointer.
TEST_F(Several, AContextThatIsLostComesBackWhole) {
    GlForm form;
    const Content content(form, picture, 0x0000FF);
    {
        const ChangeBracket bracket(form.canvas);
        form.canvas->SetBlickWinkel(20);
        form.canvas->SetZoomFactor(1.1);
        form.canvas->SetTranslation({0.1, 0, 0});
        form.canvas->SetTextureScale({1, 2, 1});
        form.canvas->SetLightModelTwoSided(true);
    }
    QMainWindow second;
    second.setGeometry(420, 60, 400, 400);
    auto* dock = new QDockWidget(&second);
    second.addDockWidget(Qt::LeftDockWidgetArea, dock);
    second.show();
    GlForm::Settle();
    form.canvas->Refresh();
    form.canvas->CheckCurrent();
    const QImage withALight = form.Screen();
    const GlState state = shownState();
    delete content.lights[0];  // the numbers close up
    form.canvas->Refresh();
    ASSERT_NE(form.Screen(), withALight);

    const auto home = [&] {
        form.control->setParent(form.window.get());
        form.control->setGeometry(20, 10, 300, 300);
        form.control->show();
    };
    const std::vector<std::pair<const char*, std::function<void()>>> ways{
        {"unbound and bound",
         [&] {
             form.canvas->SetWinControl(nullptr);
             form.canvas->SetWinControl(form.control);
         }},
        {"native window destroyed",
         [&] {
             QWindow* window = form.canvas->Getdc()->windowHandle();
             window->destroy();
             EXPECT_FALSE(form.canvas->HasContext());
             window->create();
             window->setVisible(true);
         }},
        {"another parent",
         [&] {
             form.control->setParent(&second);
             form.control->show();
             GlForm::Settle();
         }},
        {"a window of its own",
         [&] {
             form.control->setParent(nullptr);
             form.control->show();
             GlForm::Settle();
         }},
        {"docked and undocked",
         [&] {
             dock->setWidget(form.control);
             form.control->show();
             GlForm::Settle();
             dock->setFloating(true);
             GlForm::Settle();
             dock->setFloating(false);
             GlForm::Settle();
         }},
        {"without a window for a while",
         [&] {
             form.control->setParent(nullptr);
             form.control->hide();
             content.box->Setdrehwinkel(90);
             content.lights[2]->SetEnabled(false);
             form.canvas->SetZoomFactor(2);
             form.canvas->Refresh();
             form.canvas->SetZoomFactor(1.1);
             content.lights[2]->SetEnabled(true);
             content.box->Setdrehwinkel(0);
         }},
    };
    GlForm::Settle();
    form.canvas->Refresh();
    form.canvas->CheckCurrent();
    const QImage expected = form.Screen();
    const GlState expectedState = shownState();
    EXPECT_NE(Difference(state, expectedState), "") << "a light has gone";
    for (const auto& [name, lose] : ways) {
        SCOPED_TRACE(name);
        GlRecorder recorder;
        lose();
        home();
        form.window->raise();
        GlForm::Settle();
        form.canvas->Refresh();
        ASSERT_TRUE(form.canvas->CheckCurrent());
        EXPECT_EQ(form.Screen(), expected);
        EXPECT_EQ(Difference(expectedState, shownState()), "");
        EXPECT_EQ(form.canvas->Textures()->Count(), 1U);
        for (const TZKOglScene* scene : {content.scene, content.second})
            EXPECT_TRUE(glIsList(scene->ListName()));
        EXPECT_NE(content.scene->ListName(), content.second->ListName());
        EXPECT_EQ(form.canvas->Scenes(), (std::vector<TZKOglScene*>{content.scene, content.second}));
        EXPECT_EQ(content.lights[1]->GetHandle(), GL_LIGHT0);
        EXPECT_EQ(content.lights[2]->GetHandle(), GL_LIGHT1);
        EXPECT_FALSE(glIsEnabled(GL_LIGHT0));
        EXPECT_TRUE(glIsEnabled(GL_LIGHT1));
        EXPECT_FALSE(glIsEnabled(GL_LIGHT2));
        EXPECT_TRUE(isHit(*form.canvas, {150, 150}, content.box));
        EXPECT_TRUE(isHit(*form.canvas, {60, 240}, content.textured));
        recorder.Clear();
        form.canvas->Refresh();
        EXPECT_EQ(recorder.Count("glTexImage2D"), 0);
        EXPECT_EQ(recorder.Count("glNewList"), 0);
        EXPECT_EQ(form.messages.Take(), QStringList());
    }
}
