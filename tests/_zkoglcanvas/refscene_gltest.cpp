#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/refscene.h>
#include <zk/_zkogltools/oglshape.h>
#include <zk/_zkxyz/errors.h>

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

TZKOglRefScene* addReference(GlForm& form, TZKOglScene* to, const TXYZ& at) {
    auto* scene = new TZKOglRefScene(form.window.get());
    scene->SetZkOglCanvas(form.canvas);
    scene->SetTranslation(at);
    scene->SetReference(to);
    return scene;
}

// Where a point of the world is seen, in a form of 300 pixels.
QPointF at(double x, double y) {
    return {150 + 30 * x, 150 - 30 * y};
}

}  // namespace

TEST(RefScene, DrawsAnotherSceneInItsOwnPlace) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    scene->SetTranslation({-4, -4, 0});
    TZKOglRefScene* copy = addReference(form, scene, {2, 1, 0});
    EXPECT_EQ(form.PixelAt(at(-3.5, -3.5)), red);
    EXPECT_EQ(form.PixelAt(at(2.5, 1.5)), red) << "the copy's own transform, not on top of the other's";
    EXPECT_EQ(form.PixelAt(at(-1.5, -2.5)), black);
    copy->Setdrehwinkel(180);
    EXPECT_EQ(form.PixelAt(at(1.5, 0.5)), red);
    EXPECT_EQ(form.PixelAt(at(2.5, 1.5)), black);
    EXPECT_EQ(scene->Get_translation(), "-4/-4/0");
    EXPECT_EQ(scene->Getdrehwinkel(), 0);
    EXPECT_EQ(scene->GetDrehGerade(), (TGerade{{0, 0, 0}, {0, 0, 1}}));
}

TEST(RefScene, FiveCopiesCompileOnce) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    std::vector<TZKOglRefScene*> copies;
    for (int i = 0; i < 5; ++i)
        copies.push_back(addReference(form, scene, {-4.0 + i, 2, 0}));
    const std::string list = std::to_string(scene->ListName());
    GlRecorder recorder;
    scene->Changed(nullptr);
    EXPECT_EQ(recorder.Count("glNewList(" + list + ", GL_COMPILE_AND_EXECUTE)"), 0);
    const Calls compiled = recorder.CallsTo({"glNewList"});
    EXPECT_EQ(std::count(compiled.begin(), compiled.end(), "glNewList(" + list + ", GL_COMPILE_AND_EXECUTE)"), 1);
    const Calls called = recorder.CallsTo({"glCallList"});
    EXPECT_EQ(std::count(called.begin(), called.end(), "glCallList(" + list + ")"), 5);

    recorder.Clear();
    copies[3]->SetTranslation({-1, -3, 0});
    EXPECT_EQ(recorder.Count("glNewList"), 0) << "moving a copy compiles nothing";
    EXPECT_EQ(form.PixelAt(at(-0.5, -2.5)), red);
    EXPECT_EQ(form.PixelAt(at(-0.5, 2.5)), black);
}

TEST(RefScene, ShowsTheReferenceAsItIsItselfShown) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    scene->SetTranslation({-4, -4, 0});
    TZKOglRefScene* copy = addReference(form, scene, {2, 1, 0});
    scene->SetVisible(false);
    EXPECT_EQ(form.PixelAt(at(-3.5, -3.5)), black);
    EXPECT_EQ(form.PixelAt(at(2.5, 1.5)), red) << "a prototype may be hidden";
    EXPECT_EQ(form.PixelAt(at(0.5, 0.5)), black) << "its list must not show in the middle of nowhere";
    EXPECT_FALSE(scene->GetVisible());
    scene->SetVisible(true);
    copy->SetVisible(false);
    EXPECT_EQ(form.PixelAt(at(-3.5, -3.5)), red);
    EXPECT_EQ(form.PixelAt(at(2.5, 1.5)), black);
    EXPECT_TRUE(scene->GetVisible());
    EXPECT_EQ(form.PixelAt(at(0.5, 0.5)), black);
}

TEST(RefScene, RefusesItselfAndWhatRefersToIt) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglRefScene* a = addReference(form, scene, {0, 0, 0});
    TZKOglRefScene* b = addReference(form, a, {0, 0, 0});
    const auto refusal = [](TZKOglRefScene* to, TZKOglScene* reference) -> std::string {
        try {
            to->SetReference(reference);
        } catch (const EError& error) {
            return error.what();
        }
        return "accepted";
    };
    EXPECT_EQ(refusal(a, a), " Zyklischer Verweis ");
    EXPECT_EQ(refusal(a, b), " Zyklischer Verweis ");
    EXPECT_EQ(a->GetReference(), scene);
    EXPECT_EQ(refusal(b, scene), "accepted");
    EXPECT_EQ(refusal(b, nullptr), "accepted");
    EXPECT_EQ(b->GetReference(), nullptr);
}

// A circle of three passes the check, which looks two levels deep. Playing it ends all the same.
TEST(RefScene, ALongerCircleIsPlayedOnce) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    TZKOglRefScene* a = addReference(form, nullptr, {0, 0, 0});
    TZKOglRefScene* b = addReference(form, a, {0, 0, 0});
    TZKOglRefScene* c = addReference(form, b, {0, 0, 0});
    a->SetReference(c);
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt(at(0.5, 0.5)), red);
    form.canvas->Select(165, 135);
}

TEST(RefScene, LosesItsReferenceWithIt) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    TZKOglRefScene* copy = addReference(form, scene, {2, 1, 0});
    ASSERT_EQ(form.PixelAt(at(2.5, 1.5)), red);
    delete scene;
    EXPECT_EQ(copy->GetReference(), nullptr);
    EXPECT_EQ(form.PixelAt(at(2.5, 1.5)), black);

    // also with another owner, and when it goes while it is drawn
    auto* lonely = new TZKOglScene;
    lonely->SetZkOglCanvas(form.canvas);
    auto* shape = new TZKOglShape(form.window.get());
    shape->SetDisplayList(lonely);
    copy->SetReference(lonely);
    QObject::connect(shape, &TZkShape::OnPlay, [&] {
        delete lonely;
        lonely = nullptr;
    });
    shape->Invalidate();
    EXPECT_EQ(lonely, nullptr);
    EXPECT_EQ(copy->GetReference(), nullptr);
    form.canvas->Refresh();

    // and the other way round
    TZKOglScene* prototype = form.AddScene();
    auto* drawn = new TZKOglShape(form.window.get());
    drawn->SetDisplayList(prototype);
    prototype->SetTranslation({1, 2, 3});
    copy->SetReference(prototype);
    QObject::connect(drawn, &TZkShape::OnPlay, [&] {
        if (prototype->Get_translation() == "1/2/3")
            return;
        delete copy;
        copy = nullptr;
    });
    form.canvas->DeleteDisplayList(form.canvas->IndexOfDisplayList(prototype));  // only the copy plays it
    drawn->Invalidate();
    EXPECT_EQ(copy, nullptr);
    EXPECT_EQ(prototype->Get_translation(), "1/2/3") << "its own place comes back whatever happens";
}

TEST(RefScene, ASceneOfAnotherCanvasIsNotDrawn) {
    GlForm form;
    GlForm other;
    TZKOglScene* scene = other.AddScene();
    other.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    addReference(form, scene, {0, 0, 0});
    form.canvas->Refresh();
    EXPECT_EQ(PendingError(*other.canvas), 0U);
    EXPECT_TRUE(form.canvas->CheckCurrent());
    auto* homeless = new TZKOglScene(form.window.get());
    addReference(form, homeless, {0, 0, 0});
    form.canvas->Refresh();
}

TEST(RefScene, APickThroughACopyFindsTheShapeAndCompilesNothing) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {1, 1, 1}, {0, 0, 0});
    scene->SetTranslation({-4, -4, 0});
    addReference(form, scene, {2, 1, 0});
    scene->SetVisible(false);
    scene->TDisplayList::SetVisible(true);
    form.canvas->Refresh();
    scene->TDisplayList::SetVisible(false);
    ASSERT_TRUE(scene->IsCompiled());
    ASSERT_TRUE(form.canvas->Select(150 + 75, 150 - 45));
    EXPECT_EQ(form.canvas->Hits()[0].HitObject, box->HitName());
    EXPECT_FALSE(form.canvas->Select(150 - 105, 150 + 105)) << "the hidden prototype itself";
    EXPECT_TRUE(scene->IsCompiled());
    EXPECT_FALSE(scene->GetVisible());
}
