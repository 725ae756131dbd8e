// User code in handlers may do whatever a user would try. Nothing crashes, nothing repaints for ever, OpenGL's state is
// in order afterwards, and the application goes on.
#include "glform.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools.h>

#include <QCoreApplication>
#include <QDialog>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <utility>

using namespace zk;
using namespace zk::test;

namespace {

/// A form with a canvas, a scene and three boxes, all of which a handler may take away.
struct HandlerStage {
    HandlerStage() : form({200, 200}) {
        scene = form.AddScene();
        for (const TXYZ& at : {TXYZ{-3, -1, -1}, TXYZ{-1, -1, -1}, TXYZ{1, -1, -1}})
            boxes.emplace_back(form.AddBox(scene, 0x0000FF, {1.8, 1.8, 1.8}, at));
        other = form.AddScene();
        form.AddBox(other, 0x00FF00, {1, 1, 1}, {-0.5, 2, 0});
        form.canvas->Refresh();
    }
    ~HandlerStage() {
        if (!canvas())
            form.canvas = nullptr;
    }
    TZkOglCanvas* canvas() const { return alive.data(); }

    GlForm form;
    QPointer<TZkOglCanvas> alive{form.canvas};
    QPointer<TZKOglScene> scene;
    QPointer<TZKOglScene> other;
    std::vector<QPointer<TCustomShape>> boxes;
};

struct Action {
    const char* name;
    std::function<void(HandlerStage&)> run;
};

struct Handler {
    const char* name;
    std::function<void(HandlerStage&, const std::function<void()>&)> connect;
    std::function<void(HandlerStage&)> trigger;
};

const Action actions[]{
    {"AddAShape",
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.form.AddBox(stage.scene, 0xFF0000, {1, 1, 1}, {0, -3, 0});
     }},
    {"RemoveTheShape",
     [](HandlerStage& stage) {
         if (stage.boxes[1])
             stage.boxes[1]->SetDisplayList(nullptr);
     }},
    {"RemoveAllShapes",
     [](HandlerStage& stage) {
         for (const QPointer<TCustomShape>& box : stage.boxes)
             if (box)
                 box->SetDisplayList(nullptr);
     }},
    {"MoveTheShapeToTheOtherScene",
     [](HandlerStage& stage) {
         if (stage.boxes[1] && stage.other)
             stage.boxes[1]->SetDisplayList(stage.other);
     }},
    {"DeleteTheShape", [](HandlerStage& stage) { delete stage.boxes[1].data(); }},
    {"DeleteTheNextShape", [](HandlerStage& stage) { delete stage.boxes[2].data(); }},
    {"DeleteTheFirstShape", [](HandlerStage& stage) { delete stage.boxes[0].data(); }},
    {"DeleteTheScene", [](HandlerStage& stage) { delete stage.scene.data(); }},
    {"DeleteTheOtherScene", [](HandlerStage& stage) { delete stage.other.data(); }},
    {"DeleteTheCanvas", [](HandlerStage& stage) { delete stage.alive.data(); }},
    {"TakeTheSceneAway",
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->SetZkOglCanvas(nullptr);
     }},
    {"TakeTheControlAway",
     [](HandlerStage& stage) {
         if (stage.canvas())
             stage.canvas()->SetWinControl(nullptr);
     }},
    {"ChangeTheMaterial",
     [](HandlerStage& stage) {
         if (stage.boxes[1])
             stage.boxes[1]->getAttributes()->getMaterial()->SetEmission(0x00FFFF);
     }},
    {"ChangeTheScenesMaterial",
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->getAttributes()->getMaterial()->SetEmission(0x00FFFF);
     }},
    {"MoveTheShape",
     [](HandlerStage& stage) {
         if (stage.boxes[1])
             stage.boxes[1]->Settranslation({0, 1, 0});
     }},
    {"HideTheScene",
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->SetVisible(!stage.scene->GetVisible());
     }},
    {"Repaint",
     [](HandlerStage& stage) {
         if (stage.canvas())
             stage.canvas()->Refresh();
     }},
    {"UpdateNow",
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->DoUpdateNow();
     }},
    {"Pick",
     [](HandlerStage& stage) {
         if (stage.canvas())
             stage.canvas()->Select(100, 100);
     }},
    {"ChangeTheView",
     [](HandlerStage& stage) {
         if (stage.canvas())
             stage.canvas()->SetBlickWinkel(stage.canvas()->GetBlickwinkel() > 0 ? 0 : 20);
     }},
    {"Resize", [](HandlerStage& stage) { stage.form.window->resize(stage.form.window->size() + QSize(1, 1)); }},
    {"OpenADialog",
     [](HandlerStage&) {
         QDialog dialog;
         QTimer::singleShot(30, &dialog, &QDialog::accept);
         dialog.exec();
     }},
    {"LeaveTheMatrixChanged",
     [](HandlerStage& stage) {
         if (stage.canvas())
             stage.canvas()->OGLTranslate({0.1, 0, 0});
     }},
    {"Throw", [](HandlerStage&) { throw std::runtime_error("user code gave up"); }},
};

template <class Sender, class Signal>
void connectTo(Sender* sender, Signal signal, HandlerStage& stage, const std::function<void()>& run) {
    QObject::connect(sender, signal, stage.form.window.get(), [run] { run(); });
}

const Handler handlers[]{
    {"ShapePlays",
     [](HandlerStage& stage, const std::function<void()>& run) {
         connectTo(stage.boxes[1].data(), &TZkShape::OnPlay, stage, run);
     },
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->DoUpdateNow();
     }},
    {"ScenePlays",
     [](HandlerStage& stage, const std::function<void()>& run) {
         connectTo(stage.scene.data(), &TDisplayList::OnPlay, stage, run);
     },
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->DoUpdateNow();
     }},
    {"ShapeIsPicked",
     [](HandlerStage& stage, const std::function<void()>& run) {
         QPointer<TZkOglCanvas> canvas = stage.canvas();
         connectTo(stage.boxes[1].data(), &TZkShape::OnPlay, stage, [canvas, run] {
             if (canvas && canvas->IsSelecting())
                 run();
         });
     },
     [](HandlerStage& stage) {
         if (stage.canvas())
             stage.canvas()->Select(100, 100);
     }},
    {"BeforeCompile",
     [](HandlerStage& stage, const std::function<void()>& run) {
         connectTo(stage.canvas(), &TZkOglCanvas::OnBeforeCompile, stage, run);
     },
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->DoUpdateNow();
     }},
    {"AfterCompile",
     [](HandlerStage& stage, const std::function<void()>& run) {
         connectTo(stage.canvas(), &TZkOglCanvas::OnAfterCompile, stage, run);
     },
     [](HandlerStage& stage) {
         if (stage.scene)
             stage.scene->DoUpdateNow();
     }},
    {"MouseDown",
     [](HandlerStage& stage, const std::function<void()>& run) {
         connectTo(stage.boxes[1].data(), &TCustomShape::OnMouseDown, stage, run);
     },
     [](HandlerStage& stage) {
         if (stage.canvas() && stage.canvas()->HasContext())
             stage.form.Click({100, 100});
     }},
    {"MouseUp",
     [](HandlerStage& stage, const std::function<void()>& run) {
         connectTo(stage.boxes[1].data(), &TCustomShape::OnMouseUp, stage, run);
     },
     [](HandlerStage& stage) {
         if (stage.canvas() && stage.canvas()->HasContext())
             stage.form.Click({100, 100});
     }},
};

class Handlers : public testing::TestWithParam<std::tuple<Handler, Action>> {};

void PrintTo(const Handler& handler, std::ostream* out) {
    *out << handler.name;
}
void PrintTo(const Action& action, std::ostream* out) {
    *out << action.name;
}

}  // namespace

TEST_P(Handlers, MayDoWhatTheyWant) {
    const auto& [handler, action] = GetParam();
    HandlerStage stage;
    int calls = 0;
    // Not deeper than three: a handler that calls itself for ever would do so anywhere.
    int depth = 0;
    handler.connect(stage, [&, run = action.run] {
        ++calls;
        if (depth >= 3)
            return;
        ++depth;
        const auto back = qScopeGuard([&depth] { --depth; });
        run(stage);
    });
    const Tmatrix view = stage.canvas()->GetOglModelMatrix();
    stage.form.TakeSwaps();
    for (int i = 0; i < 3; ++i)
        handler.trigger(stage);
    EXPECT_GE(calls, 1);
    GlForm::Settle();
    EXPECT_LT(calls, 100) << "no end of repaints";
    const int swaps = stage.form.TakeSwaps();
    EXPECT_LT(swaps, 150);
    GlForm::Settle();
    EXPECT_EQ(stage.form.TakeSwaps(), 0) << "it comes to rest";

    for (const QString& text : stage.form.messages.Take())
        EXPECT_EQ(text, QStringLiteral("user code gave up"));
    if (!stage.canvas() || !stage.canvas()->CheckCurrent())
        return;
    EXPECT_FALSE(stage.canvas()->IsPainting());
    EXPECT_FALSE(stage.canvas()->IsSelecting());
    GLint list = -1;
    glGetIntegerv(GL_LIST_INDEX, &list);
    EXPECT_EQ(list, 0) << "no list is under construction";
    GLint mode = 0;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    EXPECT_EQ(mode, GL_RENDER);
    EXPECT_EQ(PendingError(*stage.canvas()), 0U);
    const std::string name = action.name;
    const bool isOutsideOfRepaints = std::string(handler.name).starts_with("Mouse");
    if (name != "ChangeTheView" && name != "Resize" && !(name == "LeaveTheMatrixChanged" && isOutsideOfRepaints)) {
        EXPECT_TRUE(Equals(stage.canvas()->GetOglModelMatrix(), view)) << "the view is as it was";
    }
    stage.canvas()->Refresh();
    if (stage.canvas())
        stage.canvas()->Select(10, 10);
    stage.form.messages.Take();
}

// The control itself goes while it looks for what was clicked, or tells of its new size.
TEST(HandlersOfAControl, MayDeleteIt) {
    for (const bool resizes : {false, true}) {
        HandlerStage stage;
        const QPointer<TZKOglControl> control = stage.form.control;
        const auto deleteIt = [&stage] { delete std::exchange(stage.form.control, nullptr); };
        if (resizes)
            connectTo(control.data(), &TZKOglControl::OnResize, stage, deleteIt);
        else
            connectTo(stage.boxes[1].data(), &TZkShape::OnPlay, stage, [&] {
                if (stage.canvas()->IsSelecting())
                    deleteIt();
            });
        if (resizes) {
            QResizeEvent event(QSize(90, 80), control->size());
            QCoreApplication::sendEvent(control, &event);
        } else {
            const QPointF middle(100, 100);
            QMouseEvent event(QEvent::MouseButtonPress, middle, control->mapToGlobal(middle), Qt::LeftButton,
                              Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(control, &event);
        }
        EXPECT_FALSE(control);
        ASSERT_TRUE(stage.canvas());
        EXPECT_FALSE(stage.canvas()->HasContext());
        EXPECT_FALSE(stage.canvas()->IsSelecting());
        EXPECT_FALSE(stage.canvas()->GetWinControl());
        stage.canvas()->Refresh();
        EXPECT_EQ(stage.form.messages.Take(), QStringList());
    }
}

INSTANTIATE_TEST_SUITE_P(All, Handlers, testing::Combine(testing::ValuesIn(handlers), testing::ValuesIn(actions)),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) + std::get<1>(test.param).name;
                         });

// Leaving a scene and joining another repaint in between.
TEST(Handlers, TheShapeThatChangesScenesMayGo) {
    for (const bool leave : {false, true}) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        TZKOglScene* other = leave ? nullptr : form.AddScene();
        QPointer<TZKOglBox> box = form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
        auto* shape = new TZKOglShape(form.window.get());
        shape->SetDisplayList(scene);
        QObject::connect(shape, &TZkShape::OnPlay, shape, [&] { delete box; });
        box->SetDisplayList(other);
        EXPECT_EQ(box, nullptr);
        EXPECT_EQ(scene->GetShapeCount(), 1);
        EXPECT_EQ(other ? other->GetShapeCount() : 0, 0);
    }
}

// A repaint is what a change of attributes ends in. Whatever is in it, the change comes to its end.
TEST(Handlers, TheShapeOrSceneWhoseAttributesChangeMayGo) {
    for (int what = 0; what < 8; ++what) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        TZKOglScene* victims = form.AddScene();
        QPointer<TZKOglBox> box = form.AddBox(victims, 0x0000FF, {1, 1, 1}, {0, 0, 0});
        auto* shape = new TZKOglShape(form.window.get());
        shape->SetDisplayList(scene);
        form.canvas->SetAutoCompile(false);
        const bool ofScene = what % 2 != 0;
        Tattributes* const attributes = ofScene ? victims->getAttributes() : box->getAttributes();
        const QPointer<QObject> victim = ofScene ? static_cast<QObject*>(victims) : box;
        QObject::connect(shape, &TZkShape::OnPlay, shape, [&] { delete victim; });
        if (what / 2 == 0)
            attributes->getMaterial()->SetDiffuse(0x123456);
        else if (what / 2 == 1)
            attributes->getMaterial()->SetMatKind(matAqua);
        else if (what / 2 == 2)
            attributes->getTexture()->SetWorldWidth(2);
        else
            attributes->SetMaterial(shape->getAttributes()->getMaterial());
        EXPECT_EQ(victim, nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// After a surplus close a bracket repaints when it opens, before anything in it has happened.
TEST(Handlers, WhatChangesMayGoWhenABracketOpens) {
    for (int what = 0; what < 6; ++what) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        TZKOglScene* victims = form.AddScene();
        QPointer<TZKOglBox> box = form.AddBox(victims, 0x0000FF, {1, 1, 1}, {0, 0, 0});
        auto* shape = new TZKOglShape(form.window.get());
        shape->SetDisplayList(scene);
        form.canvas->SetAutoCompile(false);
        form.canvas->SetChanging(false);
        const QPointer<QObject> victim = what < 5 ? static_cast<QObject*>(victims) : box;
        QObject::connect(shape, &TZkShape::OnPlay, shape, [&] { delete victim; });
        if (what == 0)
            victims->Changed(nullptr);
        else if (what == 1)
            victims->SetTranslation({1, 2, 3});
        else if (what == 2)
            victims->Setdrehwinkel(5);
        else if (what == 3)
            victims->SetDrehGerade({{0, 0, 0}, {0, 1, 0}});
        else if (what == 4)
            victims->setAttributes(shape->getAttributes());
        else
            box->SetA(3);
        EXPECT_EQ(victim, nullptr) << what;
        form.canvas->SetChanging(true);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Then every part of a change may repaint, and what changes may go in any of these repaints.
TEST(Handlers, WhatChangesMayGoInAnyRepaintOfAChange) {
    struct Parts {
        GlForm& form;
        TZKOglBox* box;
        TZKOglLight* light;
        TZKOglShape* other;
    };
    struct Change {
        const char* name;
        std::function<void(const Parts&)> make;
    };
    const Change changes[]{
        {"angle", [](const Parts& p) { p.form.canvas->SetBlickWinkel(20); }},
        {"frame",
         [](const Parts& p) {
             p.form.canvas->SetProjectionbase({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}});
         }},
        {"translation",
         [](const Parts& p) {
             p.form.canvas->SetTranslation({1, 2, 3});
         }},
        {"rotation", [](const Parts& p) { p.form.canvas->Setdrehwinkel(30); }},
        {"scale", [](const Parts& p) { p.form.canvas->SetZoomFactor(2); }},
        {"pick", [](const Parts& p) { p.form.canvas->Select(100, 100); }},
        {"bulleye", [](const Parts& p) { p.form.canvas->Bulleye(100, 100, 1); }},
        {"picture",
         [](const Parts& p) {
             p.form.canvas->Picture({20, 20});
         }},
        {"no control", [](const Parts& p) { p.form.canvas->SetWinControl(nullptr); }},
        {"another control", [](const Parts& p) { p.form.canvas->SetWinControl(p.form.window.get()); }},
        {"size", [](const Parts& p) { p.form.control->resize(150, 150); }},
        {"texture", [](const Parts& p) { p.form.canvas->getAttributes()->getTexture()->SettextureKind({}); }},
        {"attributes", [](const Parts& p) { p.box->setAttributes(p.other->getAttributes()); }},
        {"light on", [](const Parts& p) { p.light->SetEnabled(true); }},
        {"light moves", [](const Parts& p) { p.light->SetZkOglCanvas(nullptr); }},
        {"light joins", [](const Parts& p) { p.light->SetZkOglCanvas(p.form.canvas); }},
        {"light anew", [](const Parts& p) { p.light->Update(); }},
    };
    int gone = 0;
    for (const Change& change : changes) {
        const std::string name = change.name;
        for (int which = 0; which < 3; ++which) {
            if ((which == 1 && name != "attributes") ||
                (which == 2 && name.find("light") == name.npos && name != "angle"))
                continue;
            for (int repaint = 1; repaint <= 3; ++repaint) {
                SCOPED_TRACE(name + ", part " + std::to_string(which) + " in repaint " + std::to_string(repaint));
                GlForm form;
                TZKOglScene* scene = form.AddScene();
                TZKOglScene* scenes = form.AddScene();
                const Parts parts{form, form.AddBox(scenes, 0x0000FF, {1, 1, 1}, {0, 0, 0}),
                                  new TZKOglLight(form.window.get()), new TZKOglShape(form.window.get())};
                parts.light->SetZkOglCanvas(form.canvas);
                parts.light->SetEnabled(true);
                parts.other->SetDisplayList(scene);
                form.canvas->SetAutoCompile(false);
                const QPointer<TZkOglCanvas> canvas = form.canvas;
                const QPointer<QObject> victim = which == 0   ? static_cast<QObject*>(form.canvas)
                                                 : which == 1 ? static_cast<QObject*>(parts.box)
                                                              : static_cast<QObject*>(parts.light);
                canvas->SetChanging(false);
                int played = 0;
                QObject::connect(parts.other, &TZkShape::OnPlay, parts.other, [&] {
                    if (++played == repaint)
                        delete victim;
                });
                change.make(parts);
                gone += victim ? 0 : 1;
                QObject::disconnect(parts.other, nullptr, parts.other, nullptr);
                if (!canvas)
                    form.canvas = nullptr;
                else
                    canvas->SetChanging(true);
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                form.messages.Take();
            }
        }
    }
    EXPECT_GT(gone, 30);
}
