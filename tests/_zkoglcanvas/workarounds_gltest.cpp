// Each driver workaround does what docs/drivers.md says, and can be switched off.
#include "glform.h"
#include "glrecorder.h"
#include "sanitizers.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/glsurface.h>
#include <zk/host/workarounds.h>

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QProcess>
#include <QWindow>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

using namespace zk;
using namespace zk::test;

namespace {

const QColor magenta(255, 0, 255);

/// Off for its scope.
class Off {
  public:
    explicit Off(Workaround workaround) : workaround_(workaround) { SetOn(workaround, false); }
    ~Off() { SetOn(workaround_, true); }
    Off(const Off&) = delete;
    Off& operator=(const Off&) = delete;

  private:
    Workaround workaround_;
};

}  // namespace

TEST(Workarounds, AllAreOnAndCanBeSwitched) {
    for (const Workaround workaround : AllWorkarounds) {
        EXPECT_TRUE(IsOn(workaround)) << NameOf(workaround);
        {
            const Off off(workaround);
            for (const Workaround other : AllWorkarounds)
                EXPECT_EQ(IsOn(other), other != workaround) << NameOf(other);
        }
        EXPECT_TRUE(IsOn(workaround));
    }
}

// The next test starts it in a process of its own with some of them named.
TEST(WorkaroundsOfTheEnvironment, AreOff) {
    const QByteArray off = qgetenv("ZKOGL_WORKAROUNDS_OFF");
    for (const Workaround workaround : AllWorkarounds)
        EXPECT_EQ(IsOn(workaround), !off.contains(NameOf(workaround).data())) << NameOf(workaround);
}

TEST(Workarounds, TheEnvironmentNamesThoseThatAreOff) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZKOGL_WORKAROUNDS_OFF", " surface-type,new-size, ,nonsense");
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=WorkaroundsOfTheEnvironment.*",
                                                            "--gtest_also_run_disabled_tests", "--gtest_output="});
    ASSERT_TRUE(process.waitForFinished());
    const QString output = process.readAllStandardOutput() + process.readAllStandardError();
    EXPECT_EQ(process.exitCode(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains("[  PASSED  ] 1 test")) << output.toStdString();
    EXPECT_TRUE(output.contains("there is no workaround \"nonsense\"")) << output.toStdString();
    EXPECT_EQ(output.count("there is no workaround"), 1);
}

TEST(Workarounds, SelectionListsAPickPlaysTheShapes) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.canvas->Refresh();
    const auto listsInAPick = [&] {
        GlRecorder recorder;
        EXPECT_TRUE(form.canvas->Select(150, 150));
        EXPECT_EQ(HitTarget::Of(form.canvas->Hits()[0].HitObject), box);
        return recorder.Count("glCallList");
    };
    EXPECT_EQ(listsInAPick(), 0);
    {
        const Off off(Workaround::SelectionLists);
        EXPECT_EQ(listsInAPick(), 1);
        EXPECT_FALSE(form.canvas->Select(10, 10));
        scene->Invalidate();
        EXPECT_EQ(listsInAPick(), 0) << "a list that is out of date is not played";
    }
    EXPECT_EQ(listsInAPick(), 0);
}

// A swap that leaves nothing behind: what the second swap shows is the picture, or not.
TEST(Workarounds, KeptPictureBothSwapsShowIt) {
    GlForm form;
    form.AddBox(form.AddScene(), 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    const auto seen = [&] {
        form.canvas->Context()->SetSwap([](RenderContext& context) {
            context.SwapBuffers();
            glPushAttrib(GL_COLOR_BUFFER_BIT);
            glClearColor(1, 0, 1, 1);
            glClear(GL_COLOR_BUFFER_BIT);
            glPopAttrib();
        });
        form.canvas->Refresh();
        return form.PixelAt({150, 150});
    };
    EXPECT_EQ(seen(), red);
    form.canvas->Context()->SetKeeping(PictureKeeper::Way::Nothing);
    EXPECT_EQ(seen(), magenta);
    form.canvas->Context()->SetKeeping(PictureKeeper::Way::Pixels);
    EXPECT_EQ(seen(), red);
    form.canvas->Context()->SetKeeping(PictureKeeper::Way::FramebufferObject);
    EXPECT_EQ(seen(), red);
    {
        const Off off(Workaround::KeptPicture);
        EXPECT_EQ(seen(), red) << "asked when a context is made";
        form.canvas->SetWinControl(nullptr);
        form.canvas->SetWinControl(form.control);
        GlForm::Settle();
        EXPECT_EQ(seen(), magenta);
    }
    form.canvas->SetWinControl(nullptr);
    form.canvas->SetWinControl(form.control);
    GlForm::Settle();
    EXPECT_EQ(seen(), red);
}

TEST(Workarounds, NewSizeTheFirstRepaintDrawsTwice) {
    GlForm form;
    form.AddBox(form.AddScene(), 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    const auto drawn = [&](int width) {
        GlRecorder recorder;
        form.canvas->SetChanging(true);
        form.control->resize(width, 200);
        form.canvas->SetChanging(false);
        const int first = recorder.Count("glClear");
        recorder.Clear();
        form.canvas->Refresh();
        EXPECT_EQ(recorder.Count("glClear"), 1);
        return first;
    };
    EXPECT_EQ(drawn(250), 2);
    {
        const Off off(Workaround::NewSize);
        EXPECT_EQ(drawn(260), 1);
    }
    EXPECT_EQ(drawn(270), 2);
}

TEST(Workarounds, DesktopOpenGlIsAskedFor) {
    EXPECT_EQ(GlSurface::RequestedFormat().renderableType(), QSurfaceFormat::OpenGL);
    const Off off(Workaround::DesktopOpenGl);
    EXPECT_EQ(GlSurface::RequestedFormat().renderableType(), QSurfaceFormat::DefaultRenderableType);
    GlForm form;  // here the default is the same
    EXPECT_FALSE(QOpenGLContext::currentContext()->isOpenGLES());
}

TEST(Workarounds, ListStripsEndInATriangle) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* sphere = new TZKOglSphere(form.window.get());
    auto* cone = new TZKOglCylinder(form.window.get());
    const auto triangles = [&](TCustomShape* shape) {
        shape->SetDisplayList(scene);
        GlRecorder recorder;
        scene->DoUpdateNow();
        shape->SetDisplayList(nullptr);
        const std::vector<std::string>& calls = recorder.Calls();
        return std::count(calls.begin(), calls.end(), "glBegin(" + std::to_string(GL_TRIANGLES) + ")");
    };
    EXPECT_EQ(triangles(sphere), 1);
    EXPECT_EQ(triangles(cone), 3) << "each end begins with a change of state: a normal, a translation";
    EXPECT_EQ(triangles(form.AddBox(scene, 0, {1, 1, 1}, {0, 0, 0})), 0) << "one run of faces";
    sphere->getAttributes()->getPolyStyle()->SetMode(glpoint);
    EXPECT_EQ(triangles(sphere), 0) << "its corners would be seen";
    sphere->getAttributes()->getPolyStyle()->SetMode(glfill);
    const Off off(Workaround::ListStrips);
    EXPECT_EQ(triangles(sphere), 0);
    EXPECT_EQ(triangles(cone), 0);
}

#if defined(__GLIBC__) && !defined(ZKOGL_ADDRESS_SANITIZER)
// The heap of the whole process, the driver's part of it included. The sanitizers' heap does not tell.
qint64 heap() {
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks + info.hblkhd);
}

template <class Shape>
qint64 grownByChanges(void (Shape::*change)(double)) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    std::vector<Shape*> shapes;
    for (int i = 0; i < 20; ++i) {
        shapes.push_back(new Shape(form.window.get()));
        shapes.back()->SetDisplayList(scene);
    }
    const auto changeThem = [&](int times) {
        for (int i = 0; i < times; ++i) {
            form.canvas->SetChanging(true);
            for (Shape* shape : shapes)
                (shape->*change)(1 + i % 2);
            form.canvas->SetChanging(false);
        }
    };
    changeThem(20);
    const qint64 before = heap();
    changeThem(200);
    return heap() - before;
}

TEST(Workarounds, ListStripsGiveTheirMemoryBack) {
    EXPECT_LE(grownByChanges(&TZKOglSphere::SetR), 64 * 1024);
    EXPECT_LE(grownByChanges(&TZKOglCylinder::SetCylinderHeight), 64 * 1024);
}

template <class Shape>
qint64 grownByPicks() {
    GlForm form;
    auto* shape = new Shape(form.window.get());
    shape->SetDisplayList(form.AddScene());
    const auto pick = [&](int times) {
        for (int i = 0; i < times; ++i) {
            EXPECT_TRUE(form.canvas->Select(150 + i % 5, 150));
            if (i % 10 == 0) {
                form.canvas->InsideOf({0, 0, 0});
                form.canvas->Places();
            }
        }
    };
    pick(100);
    const qint64 before = heap();
    pick(200);
    return heap() - before;
}

TEST(Workarounds, SelectionCornersKeepNoMemory) {
    EXPECT_LE(grownByPicks<TZKOglSphere>(), 64 * 1024);
    EXPECT_LE(grownByPicks<TZKOglCylinder>(), 64 * 1024);
    EXPECT_LE(grownByPicks<TZKOglBox>(), 64 * 1024);
}
#endif

TEST(Workarounds, SurfaceTypeTheWindowIsMadeAnew) {
    GlForm form;
    form.canvas->SetWinControl(nullptr);
    auto* control = new TZKOglControl(form.window.get());
    control->setGeometry(0, 0, 200, 200);
    {
        const Off off(Workaround::SurfaceType);
        form.canvas->SetWinControl(control);
        EXPECT_FALSE(form.canvas->HasContext());
        EXPECT_EQ(form.messages.Take(), QStringList{"error SetPixelFormat"});
        EXPECT_NE(form.canvas->Getdc()->Notice(), QString()) << "the control says so in words";
        form.canvas->Refresh();
        EXPECT_FALSE(form.canvas->Select(10, 10));
    }
    delete control;
    form.canvas->SetWinControl(form.control);
    EXPECT_TRUE(form.canvas->HasContext());
    EXPECT_EQ(form.canvas->Getdc()->Window()->surfaceType(), QSurface::OpenGLSurface);
}
