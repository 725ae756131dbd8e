#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

const std::string whiteRgb = "0.996094, 0.996094, 0.996094";
const std::string greyRgb = "0.5, 0.5, 0.5";
const std::string blackRgb = "0, 0, 0";

// 400 pixels, 30 a centimetre: the scale is 2 * 30 / 400, and so is a translation by 1.
std::string loadMatrix(const std::string& translation) {
    return "glLoadMatrixd({0.15, 0, 0, 0, 0, 0.15, 0, 0, 0, 0, 0.15, 0, " + translation + ", 1})";
}

// A scene's own attributes are the initial ones here, the canvas's those that a canvas gives itself.
Calls enterScene(const std::string& translation) {
    return Calls{"glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)"} + Material(whiteRgb, greyRgb, greyRgb, greyRgb, "0.2") +
           NoTexture() + OnMatrix("GL_MODELVIEW", loadMatrix(translation));
}

Calls leaveScene() {
    return NoTexture("GL_LINEAR") + Material(whiteRgb, greyRgb, whiteRgb, greyRgb, "0.1") +
           OnMatrix("GL_MODELVIEW", loadMatrix("0, 0, 0"));
}

// The calls of a repaint that belong to its scenes.
Calls playOf(const GlRecorder& recorder) {
    const Calls& calls = recorder.Calls();
    Calls play;
    for (std::size_t i = 2; i < calls.size() && calls[i].rfind("glPushAttrib", 0) != 0; ++i)
        play.push_back(calls[i]);
    while (!play.empty() && play.back().rfind("glDisable(3089)", 0) == 0)  // the scissor test, around a swap
        play.pop_back();
    return play;
}

}  // namespace

TEST(SceneStream, ASceneIsCompiledThenReplayed) {
    GlForm form({400, 400});
    TZKOglScene* scene = form.AddScene();
    scene->SetTranslation({1, 2, 3});
    const std::string list = std::to_string(scene->ListName());

    GlRecorder recorder;
    scene->Invalidate();
    form.canvas->Refresh();
    ASSERT_GE(recorder.Calls().size(), 2U);
    EXPECT_EQ(recorder.Calls()[0], "glClearColor(0, 0, 0, 1)");
    EXPECT_EQ(recorder.Calls()[1], "glClear(16640)");
    const Calls compilation{"glDeleteLists(" + list + ", 1)", "glNewList(" + list + ", GL_COMPILE_AND_EXECUTE)",
                            "glEndList()"};
    EXPECT_EQ(playOf(recorder), enterScene("0.15, 0.3, 0.45") + compilation + leaveScene());
    EXPECT_TRUE(scene->IsCompiled());

    recorder.Clear();
    form.canvas->Refresh();
    EXPECT_EQ(playOf(recorder), enterScene("0.15, 0.3, 0.45") + Calls{"glCallList(" + list + ")"} + leaveScene());
}

TEST(SceneStream, EveryRepaintCompilesWithoutAutoCompile) {
    GlForm form({400, 400});
    form.AddScene();
    form.canvas->SetAutoCompile(false);
    GlRecorder recorder;
    form.canvas->Refresh();
    form.canvas->Refresh();
    EXPECT_EQ(recorder.Count("glNewList"), 2);
    EXPECT_EQ(recorder.Count("glCallList"), 0);
}

TEST(SceneStream, AnInvisibleSceneIsSkippedAndStaysCompiled) {
    GlForm form({400, 400});
    TZKOglScene* scene = form.AddScene();
    form.canvas->Refresh();
    scene->TDisplayList::SetVisible(false);
    GlRecorder recorder;
    form.canvas->Refresh();
    EXPECT_EQ(playOf(recorder), Calls{});
    EXPECT_TRUE(scene->IsCompiled());
}

TEST(SceneStream, ScenesArePlayedInTheOrderOfTheirRegistration) {
    GlForm form;
    TZKOglScene* first = form.AddScene();
    TZKOglScene* second = form.AddScene();
    form.canvas->Refresh();
    GlRecorder recorder;
    form.canvas->Refresh();
    EXPECT_EQ(recorder.CallsTo({"glCallList", "glNewList"}),
              (Calls{"glCallList(" + std::to_string(first->ListName()) + ")",
                     "glCallList(" + std::to_string(second->ListName()) + ")"}));
    first->SetZkOglCanvas(form.canvas);
    EXPECT_EQ(form.canvas->Scenes(), (std::vector<TZKOglScene*>{second, first}));
}

TEST(SceneStream, AHandlerRefusesCompilation) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    scene->SetTranslation({1, 0, 0});
    int asked = 0;
    int told = 0;
    auto refuse = QObject::connect(form.canvas, &TZkOglCanvas::OnBeforeCompile, [&](QObject* sender, bool& compile) {
        EXPECT_EQ(sender, form.canvas);
        EXPECT_TRUE(compile);
        compile = false;
        ++asked;
    });
    QObject::connect(form.canvas, &TZkOglCanvas::OnAfterCompile, [&](QObject* sender, bool&) {
        EXPECT_EQ(sender, form.canvas);
        ++told;
    });
    scene->Invalidate();
    GlRecorder recorder;
    form.canvas->Refresh();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(scene->IsCompiled());
    EXPECT_EQ(recorder.Count("glNewList"), 0);
    // Its transform stays in force for the rest of the repaint, and is gone at the next.
    EXPECT_EQ(recorder.CallsTo({"glLoadMatrixd"}).size(), 2U);
    form.canvas->Refresh();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(form.canvas->GetOglModelMatrix()[3][0], 0);

    QObject::disconnect(refuse);
    scene->Changed(nullptr);
    EXPECT_EQ(told, 1);
}

TEST(SceneStream, TogglingVisibleRepaintsAndCompilesAllScenes) {
    GlForm form;
    TZKOglScene* first = form.AddScene();
    TZKOglScene* second = form.AddScene();
    form.TakeSwaps();
    GlRecorder recorder;
    first->SetVisible(false);
    EXPECT_EQ(form.TakeSwaps(), 2);
    EXPECT_EQ(recorder.CallsTo({"glCallList", "glNewList"}),
              (Calls{"glCallList(" + std::to_string(first->ListName()) + ")",
                     "glNewList(" + std::to_string(second->ListName()) + ", GL_COMPILE_AND_EXECUTE)"}));
    EXPECT_TRUE(form.canvas->GetAutoCompile());
    first->SetVisible(false);
    EXPECT_EQ(form.TakeSwaps(), 0);
}
