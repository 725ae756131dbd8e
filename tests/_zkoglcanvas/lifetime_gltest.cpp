#include "glform.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/rendercontext.h>

#include <QDockWidget>
#include <QMainWindow>
#include <QWindow>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using namespace zk;
using namespace zk::test;

namespace {

/// Everything that refers to one another, on one window.
struct World {
    World() {
        scene = form.AddScene();
        other = form.AddScene();
        box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        shape = new TZKOglShape(form.window.get());
        shape->SetDisplayList(scene);
        light = new TZKOglLight(form.window.get());
        light->SetZkOglCanvas(form.canvas);
        light->SetEnabled(true);
        parts = {form.canvas, form.control, scene.data(), other.data(), box.data(), shape.data(), light.data()};
    }

    /// No reference to what is gone, no OpenGL error, and whatever is left still works.
    void Check() {
        QPointer<TZkOglCanvas> canvas = qobject_cast<TZkOglCanvas*>(parts[0]);
        QPointer<TZKOglControl> control = qobject_cast<TZKOglControl*>(parts[1]);
        if (canvas) {
            EXPECT_EQ(canvas->GetWinControl(), control.data());
            EXPECT_EQ(canvas->HasContext(), control != nullptr);
            std::vector<TZKOglScene*> scenes;
            for (TZKOglScene* s : {scene.data(), other.data()})
                if (s)
                    scenes.push_back(s);
            EXPECT_EQ(canvas->Scenes(), scenes);
            EXPECT_EQ(canvas->getLights()->Count(), light ? 1 : 0);
            EXPECT_EQ(PendingError(*canvas), 0U);
            canvas->Refresh();
            canvas->Select(150, 150);
            canvas->SetBlickWinkel(20);
            canvas->SetZoomFactor(1.5);
            EXPECT_EQ(PendingError(*canvas), 0U);
        }
        if (control) {
            EXPECT_EQ(control->Canvas(), canvas.data());
            control->PAint();
            control->QWidget::resize(control->width() - 1, control->height());
        }
        if (scene) {
            EXPECT_EQ(scene->GetZkOglCanvas(), canvas.data());
            EXPECT_EQ(scene->GetShapeCount(), (box ? 1 : 0) + (shape ? 1 : 0));
            scene->Changed(nullptr);
            scene->SetTranslation({1, 0, 0});
        }
        if (box) {
            EXPECT_EQ(box->GetDisplayList(), scene.data());
            EXPECT_EQ(box->GetZkOglcanvas(), scene ? canvas.data() : nullptr);
            box->SetA(box->GetA() + 1);
        }
        if (shape)
            shape->Setdrehwinkel(10);
        if (light) {
            EXPECT_EQ(light->GetZKOglCanvas(), canvas.data());
            light->SetPosition({1, 1, 1});
        }
        EXPECT_EQ(form.messages.Take(), QStringList());
    }

    GlForm form;
    QPointer<TZKOglScene> scene;
    QPointer<TZKOglScene> other;
    QPointer<TZKOglBox> box;
    QPointer<TZKOglShape> shape;
    QPointer<TZKOglLight> light;
    std::array<QPointer<QObject>, 7> parts;
};

}  // namespace

// Every pair in both orders, then the rest with the window: each deletion leaves a world that works.
TEST(Lifetime, DeletionInEveryOrder) {
    for (int first = 0; first < 7; ++first)
        for (int second = 0; second < 7; ++second) {
            if (second == first)
                continue;
            World world;
            for (const int victim : {first, second}) {
                delete world.parts[std::size_t(victim)];
                if (victim == 0)
                    world.form.canvas = nullptr;
                if (victim == 1)
                    world.form.control = nullptr;
                world.Check();
                if (testing::Test::HasFailure()) {
                    ADD_FAILURE() << "after deleting " << first << ", " << second << " at " << victim;
                    return;
                }
            }
        }
}

TEST(Lifetime, AllDeletedOneByOneInManyOrders) {
    std::array<int, 7> order{0, 1, 2, 3, 4, 5, 6};
    int round = 0;
    do {
        if (++round % 421 != 0)  // a spread over all 5040
            continue;
        World world;
        for (const int victim : order) {
            delete world.parts[std::size_t(victim)];
            if (victim == 0)
                world.form.canvas = nullptr;
            if (victim == 1)
                world.form.control = nullptr;
            world.Check();
        }
    } while (std::next_permutation(order.begin(), order.end()));
    EXPECT_EQ(round, 5040);
}

TEST(Lifetime, DeletionWhileABracketIsOpen) {
    for (int victim = 0; victim < 7; ++victim) {
        World world;
        world.form.canvas->SetChanging(true);
        world.box->SetA(5);
        delete world.parts[std::size_t(victim)];
        if (victim == 0)
            world.form.canvas = nullptr;
        if (victim == 1)
            world.form.control = nullptr;
        if (world.form.canvas)
            world.form.canvas->SetChanging(false);
        world.Check();
    }
}

TEST(Lifetime, TheWindowTakesEverythingAlong) {
    World world;
    world.form.window.reset();
    for (const QPointer<QObject>& part : world.parts)
        EXPECT_EQ(part, nullptr);
    world.form.canvas = nullptr;
}

TEST(Lifetime, ComponentsOfSeveralOwners) {
    QObject elsewhere;
    auto* scene = new TZKOglScene(&elsewhere);
    auto* box = new TZKOglBox;
    auto* light = new TZKOglLight(&elsewhere);
    {
        GlForm form;
        scene->SetZkOglCanvas(form.canvas);
        box->SetDisplayList(scene);
        light->SetZkOglCanvas(form.canvas);
        light->SetEnabled(true);
        EXPECT_EQ(form.canvas->Scenes().size(), 1U);
        EXPECT_EQ(form.canvas->getLights()->Count(), 1);
    }
    EXPECT_EQ(scene->GetZkOglCanvas(), nullptr);
    EXPECT_EQ(scene->ListName(), 0U);
    EXPECT_EQ(light->GetZKOglCanvas(), nullptr);
    GlForm form;
    scene->SetZkOglCanvas(form.canvas);
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt({160, 140}), QColor(178, 178, 178))
        << "the initial material: a grey emission, and white under OpenGL's ambient light of 0.2";
    delete box;  // its scene has another owner and is not told, but never plays it again
    EXPECT_EQ(scene->GetShapeCount(), 0);
    scene->Changed(nullptr);
    EXPECT_EQ(form.PixelAt({160, 140}), QColor(0, 0, 0));
}

TEST(Lifetime, OpenGlObjectsGoWithTheirOwners) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    const unsigned list = scene->ListName();
    ASSERT_TRUE(glIsList(list) || list != 0);
    form.canvas->Refresh();
    ASSERT_TRUE(glIsList(list));
    delete scene;
    form.canvas->CheckCurrent();
    EXPECT_FALSE(glIsList(list));
    unsigned greatest = 0;
    for (int i = 0; i < 200; ++i) {
        TZKOglScene* next = form.AddScene();
        greatest = std::max(greatest, next->ListName());
        form.canvas->Refresh();
        delete next;
    }
    form.canvas->CheckCurrent();
    for (unsigned name = 1; name <= greatest; ++name)
        EXPECT_FALSE(glIsList(name)) << name;
}

TEST(Lifetime, AControlThatMovesToAnotherWindowDrawsOn) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    const auto shown = [&](const char* step) {
        GlForm::Settle();
        const QPoint middle = form.control->contentsRect().center();
        EXPECT_EQ(form.PixelAt(middle), QColor(254, 0, 0)) << step;
        int pressed = 0;
        QObject handlers;
        QObject::connect(box, &TCustomShape::OnMouseDown, &handlers, [&] { ++pressed; });
        form.Click(middle);
        EXPECT_EQ(pressed, 1) << step;
        EXPECT_EQ(PendingError(*form.canvas), 0U) << step;
    };
    shown("at first");
    form.control->hide();
    GlForm::Settle();
    form.control->show();
    shown("hidden and shown");
    form.window->hide();
    form.window->show();
    shown("its window hidden and shown");

    QMainWindow second;
    second.setGeometry(420, 60, 320, 320);
    second.setCentralWidget(form.control);
    second.show();
    shown("in another window");
    form.control->setParent(nullptr);
    form.control->move(500, 400);
    form.control->show();
    shown("a window of its own");

    auto* dock = new QDockWidget(&second);
    dock->setWidget(form.control);
    second.addDockWidget(Qt::LeftDockWidgetArea, dock);
    form.control->show();
    shown("docked");
    dock->setFloating(true);
    shown("floating");
    dock->setFloating(false);
    shown("docked again");

    form.control->setParent(form.window.get());
    form.control->setGeometry(20, 10, 300, 300);
    form.control->show();
    second.hide();
    shown("back at home");
}

// The window system may take the native window away and give another.
TEST(Lifetime, AContextThatIsLostComesBack) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    auto* light = new TZKOglLight(form.window.get());
    light->SetZkOglCanvas(form.canvas);
    light->SetEnabled(true);
    form.canvas->SetBlickWinkel(20);
    GlForm::Settle();
    const QImage before = form.Screen();
    QWindow* window = form.canvas->Getdc()->windowHandle();
    window->destroy();
    EXPECT_FALSE(form.canvas->HasContext());
    EXPECT_EQ(form.canvas->GetWinControl(), form.control);
    form.canvas->SetZoomFactor(1.2);
    form.canvas->SetZoomFactor(1);
    window->create();
    window->setVisible(true);
    GlForm::Settle();
    EXPECT_TRUE(form.canvas->HasContext());
    EXPECT_EQ(form.Screen(), before);
    EXPECT_TRUE(glIsEnabled(GL_LIGHT0));
}
