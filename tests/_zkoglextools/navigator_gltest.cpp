#include "glform.h"
#include "glrecorder.h"
#include "navsupport.h"
#include "sanitizers.h"

#include <zk/_zkoglextools.h>

#include <QMenu>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <functional>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

using namespace zk;
using namespace zk::test;

namespace {

/// A canvas with three boxes of different colours, and a navigator beside it; the mouse works on the window.
class NavForm : public GlForm {
  public:
    NavForm() {
        TZKOglScene* scene = AddScene();
        AddBox(scene, 0x0000FF, {1, 1, 1}, {2, 0, 0});
        AddBox(scene, 0x00FF00, {1, 1, 1}, {0, 2, 0});
        AddBox(scene, 0xFF0000, {1, 1, 1}, {0, 0, 2});
        window->resize(600, 340);
        nav = new TZKOglNav(window.get());
        nav->SetBounds(400, 20, 160, 120);
        nav->SetZkOglCanvas(canvas);
        nav->show();
        QObject::connect(nav, &TZKOglNav::OnNav3D, [this] { ++steps; });
        Settle();
    }
    void mouse(const std::function<void(QWindow*, const QPoint&)>& act, const QPoint& at) {
        act(window->windowHandle(), nav->mapTo(window.get(), at));
    }
    void press(const QPoint& at) {
        mouse([](QWindow* w, const QPoint& p) { QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, p); }, at);
    }
    void move(const QPoint& at) {
        mouse([](QWindow* w, const QPoint& p) { QTest::mouseMove(w, p); }, at);
    }
    void release(const QPoint& at) {
        mouse([](QWindow* w, const QPoint& p) { QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, p); }, at);
    }
    /// What is on the screen in the place of the navigator.
    QImage panel() const {
        const QPoint corner = nav->mapToGlobal(QPoint(0, 0));
        return nav->screen()->grabWindow(0, corner.x(), corner.y(), nav->width(), nav->height()).toImage();
    }

    TZKOglNav* nav = nullptr;
    int steps = 0;
};

// 0 where the C library does not tell, or a sanitizer has the heap.
long long heapInUse() {
#if defined(__GLIBC__) && !defined(ZKOGL_ADDRESS_SANITIZER)
    return static_cast<long long>(mallinfo2().uordblks);
#else
    return 0;
#endif
}

}  // namespace

TEST(NavigatorDrag, TheMouseTurnsCubeAndPicture) {
    NavForm form;
    form.nav->DblClick();
    const QSize size = form.nav->size();
    TBAse expected = form.nav->GetBase();
    QPoint at(80, 60);
    form.press(at);
    const std::vector<QPoint> path{{90, 60}, {90, 75}, {110, 90}, {60, 40}, {150, 10}, {-20, 130}};
    for (const QPoint& to : path) {
        const QImage before = form.Screen();
        form.TakeSwaps();
        form.move(to);
        expected = dragged(expected, to.x() - at.x(), to.y() - at.y(), size);
        at = to;
        EXPECT_LT(difference(form.nav->GetBase(), expected), 1e-9);
        TBAse view = expected;
        view.Origin = {0, 0, 0};
        EXPECT_LT(difference(form.canvas->GetprojectionBAse(), view), 1e-9);
        EXPECT_EQ(form.TakeSwaps(), 2) << "one repaint a step";
        GlForm::Settle();
        EXPECT_FALSE(form.Screen() == before) << "the picture turns";
        expectCube(form.panel(), form.nav->GetBase(), size);
    }
    EXPECT_EQ(form.steps, int(path.size()));
    form.release(at);
    form.move({50, 50});
    EXPECT_EQ(form.steps, int(path.size()));
    EXPECT_LT(difference(form.nav->GetBase(), expected), 1e-9);
}

TEST(NavigatorViews, TheMenuAndTheDoubleClickShowTheDesignedViews) {
    NavForm form;
    const QSize size = form.nav->size();
    const auto choose = [&](int entry) {
        form.TakeSwaps();
        form.nav->findChild<QMenu*>()->actions()[entry]->trigger();
        const int swaps = form.TakeSwaps();
        GlForm::Settle();
        expectCube(form.panel(), form.nav->GetBase(), size);
        return swaps;
    };
    form.press({80, 60});
    form.move({100, 70});
    form.release({100, 70});

    EXPECT_EQ(choose(0), 2);  // Grundriss
    EXPECT_EQ(form.canvas->GetprojectionBAse(), Unitbase);
    EXPECT_EQ(form.PixelAt({150 + 75, 150 - 15}), QColor(254, 0, 0));
    EXPECT_EQ(form.PixelAt({150 + 15, 150 - 75}), QColor(0, 254, 0));
    EXPECT_EQ(form.PixelAt({150 + 15, 150 - 15}), QColor(0, 0, 254));

    EXPECT_EQ(choose(1), 2);  // Aufriss: y to the right, z up
    EXPECT_EQ(form.canvas->GetprojectionBAse(), (TBAse{{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}}));
    EXPECT_EQ(form.PixelAt({150 + 75, 150 - 15}), QColor(0, 254, 0));
    EXPECT_EQ(form.PixelAt({150 + 15, 150 - 75}), QColor(0, 0, 254));

    EXPECT_EQ(choose(2), 0);  // Schraeriss
    EXPECT_EQ(form.canvas->GetprojectionBAse(), (TBAse{{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}}));

    form.mouse([](QWindow* w, const QPoint& p) { QTest::mouseDClick(w, Qt::LeftButton, Qt::NoModifier, p); }, {80, 60});
    GlForm::Settle();
    EXPECT_EQ(form.canvas->GetprojectionBAse(), Unitbase);
    EXPECT_EQ(form.nav->GetBase().Origin, (TXYZ{0.5, 0.5, 0.5}));
    expectCube(form.panel(), form.nav->GetBase(), size);
}

TEST(NavigatorDrag, TheRepaintThatItCausesMayDeleteIt) {
    NavForm form;
    const QPointer<TZKOglNav> nav = form.nav;
    form.canvas->SetAutoCompile(false);
    QObject::connect(form.canvas, &TZkOglCanvas::OnBeforeCompile, [&nav] { delete nav; });
    form.press({80, 60});
    form.move({90, 60});
    EXPECT_FALSE(nav);
    EXPECT_EQ(form.steps, 0) << "nobody is left to tell of the turn";
    EXPECT_NE(form.canvas->GetprojectionBAse().XAxis, Unitbase.XAxis);
}

TEST(NavigatorViews, TheMenuOpensWithTheRightButton) {
    NavForm form;
    auto* menu = form.nav->findChild<QMenu*>();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(80, 60), form.nav->mapToGlobal(QPoint(80, 60)));
    QCoreApplication::sendEvent(form.nav, &event);
    EXPECT_TRUE(QTest::qWaitFor([menu] { return menu->isVisible(); }));
    menu->close();
}

// Ten minutes of animation, in driven time: a shape on a closed path, the eye on another one, timers on a sequencer. At
// the end of every run everything is where it was at the end of the first.
TEST(Animation, TenMinutesWithoutDrift) {
    GlForm form({64, 64});
    TTimer::DriveTime(true);
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    auto* shapeWay = new TZKOglWay(form.window.get());
    auto* eyeWay = new TZKOglWay(form.window.get());
    for (TZKOglWay* way : {shapeWay, eyeWay}) {
        way->SetData({"3/0/0", "0/3/0", "-3/0/0", "0/-3/0", "3/0/0"});
        way->SetTimerDelay(way == shapeWay ? 200 : 500);
        way->SetHowLong(way == shapeWay ? 4000 : 10000);
        way->SetActive(true);
    }
    QObject::connect(shapeWay, &TZKOglWay::OnTimer, [&] { box->Settranslation(shapeWay->GetActualPosition()); });
    QObject::connect(eyeWay, &TZKOglWay::OnTimer, [&] {
        TBAse base = Unitbase;
        base.Origin = eyeWay->GetActualPosition();
        form.canvas->SetProjectionbase(base);
    });
    auto* sequencer = new TZkOglSequencer(form.window.get());
    sequencer->SetInterval(100);
    int events = 0;
    for (int i = 0; i < 3; ++i) {
        auto* timer = new TZkOglTimer(form.window.get());
        timer->SetDisplacement(i);
        timer->SetIntervals(5);
        timer->SetEnabled(true);
        timer->SetSequencer(sequencer);
        QObject::connect(timer, &TZkOglTimer::Ontimer, [&] { ++events; });
    }
    TTimer::AdvanceTime(20000);
    const QImage first = form.Screen();
    const TXYZ place = box->GetTranslation();
    {
        // Each repaint lets go of as many kept drawings as it makes; the scene's own list keeps its name.
        const GlRecorder recorder;
        TTimer::AdvanceTime(20000);
        EXPECT_EQ(recorder.Count("glGenLists"), 100);
        EXPECT_EQ(recorder.Count("glNewList"), recorder.Count("glDeleteLists"));
    }
    const auto memory = heapInUse();
    for (int run = 2; run < 30; ++run)
        TTimer::AdvanceTime(20000);
    EXPECT_LT(heapInUse() - memory, 100 * 1024) << "bytes more than after the second run";
    EXPECT_EQ(box->GetTranslation(), place);
    EXPECT_TRUE(form.Screen() == first);
    EXPECT_EQ(events, 3 * 600 * 2);
    TTimer::DriveTime(false);
}
