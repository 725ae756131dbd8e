#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkxyarrays.h>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace zk;
using namespace zk::test;

namespace {

void add(TlistOFxyzArray& list, const std::vector<TXYZ>& points) {
    ArrayAddData(*list.AddArray(), int(points.size()), points.data());
}

/// A scene that draws one face in flat red, seen from its front.
struct FaceStage {
    explicit FaceStage(std::initializer_list<std::vector<TXYZ>> arrays) : form({300, 300}), scene(form.AddScene()) {
        for (const auto& array : arrays)
            add(face, array);
        shape = new TZKOglShape(form.window.get());
        GlForm::MakeFlat(shape->getAttributes()->getMaterial(), 0x0000FF);
        QObject::connect(shape, &TZkShape::OnPlay, [this] { form.canvas->PolyPolyline3D(face); });
        shape->SetDisplayList(scene);
    }
    GlForm form;
    TZKOglScene* scene;
    TZKOglShape* shape = nullptr;
    TlistOFxyzArray face;
};

// clockwise, seen from the viewer: a front
const std::vector<TXYZ> bigSquare{{-3, -3, 0}, {-3, 3, 0}, {3, 3, 0}, {3, -3, 0}};
const std::vector<TXYZ> smallSquare{{-1, -1, 0}, {-1, 1, 0}, {1, 1, 0}, {1, -1, 0}};

}  // namespace

TEST(Primitives, AHoleIsOpenWhicheverWayItRuns) {
    std::vector<TXYZ> reversed(smallSquare.rbegin(), smallSquare.rend());
    for (const auto& hole : {smallSquare, reversed}) {
        FaceStage stage({bigSquare, hole});
        EXPECT_EQ(stage.form.PixelAt({150, 150}), black);
        EXPECT_EQ(stage.form.PixelAt({100, 150}), red);
        EXPECT_EQ(stage.form.PixelAt({150, 200}), red);
        EXPECT_EQ(stage.form.PixelAt({30, 150}), black);
        // and a pick goes through it
        EXPECT_FALSE(stage.form.canvas->Select(150, 150));
        EXPECT_TRUE(stage.form.canvas->Select(100, 150));
    }
}

TEST(Primitives, AConcaveFaceIsFilledAsItIs) {
    FaceStage stage({{{-3, -3, 0}, {-3, 3, 0}, {-1, 3, 0}, {-1, -1, 0}, {3, -1, 0}, {3, -3, 0}}});
    EXPECT_EQ(stage.form.PixelAt({90, 90}), red);
    EXPECT_EQ(stage.form.PixelAt({210, 210}), red);
    EXPECT_EQ(stage.form.PixelAt({180, 120}), black);
}

TEST(Primitives, TheOtherModesDrawTheArraysAsTheyAre) {
    FaceStage stage({bigSquare, smallSquare});
    stage.shape->getAttributes()->getPolyStyle()->SetMode(glline);
    EXPECT_EQ(stage.form.PixelAt({100, 150}), black) << "not filled";
    GlRecorder recorder;
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    stage.form.canvas->PolyPolyline3D(stage.face);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    EXPECT_EQ(recorder.Count("glBegin"), 2);
    EXPECT_EQ(recorder.Count("glVertex3d"), 8);
}

TEST(Primitives, ARepeatedLastPointIsLeftOut) {
    GlForm form;
    form.canvas->CheckCurrent();
    TlistOFxyzArray closed;
    add(closed, {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 0}});
    GlRecorder recorder;
    form.canvas->PolyPolyline3D(closed);
    EXPECT_EQ(recorder.Calls(), Face({0, 0, 1}, {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}}));
    recorder.Clear();
    form.canvas->SetClockWise(false);
    form.canvas->PolyPolyline3D(closed);
    EXPECT_EQ(recorder.CallsTo({"glNormal3d"}), Calls{"glNormal3d(0, 0, -1)"});
    form.canvas->SetClockWise(true);
}

TEST(Primitives, FacesWithoutAreaDrawNothing) {
    GlForm form;
    form.canvas->CheckCurrent();
    TlistOFxyzArray face;
    GlRecorder recorder;
    form.canvas->PolyPolyline3D(face);
    add(face, {});
    form.canvas->PolyPolyline3D(face);
    TlistOFxyzArray line;
    add(line, {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
    form.canvas->PolyPolyline3D(line);
    EXPECT_EQ(recorder.Calls(), Calls{});
}

// With a resolution every triangle has at most that perimeter, and the same is covered.
TEST(Primitives, TheTriangleResolutionRefines) {
    FaceStage stage({bigSquare, smallSquare});
    stage.form.canvas->Refresh();
    const QImage coarse = stage.form.Screen();
    GlRecorder recorder;
    stage.form.canvas->SetTriangleResolution(2);
    EXPECT_FALSE(stage.scene->IsCompiled()) << "every scene is compiled again";
    stage.form.canvas->Refresh();
    std::vector<TXYZ> corners;
    int triangles = 0;
    for (const std::string& call : recorder.Calls()) {
        if (call == "glBegin(9)")
            corners.clear();
        TXYZ p;
        if (std::sscanf(call.c_str(), "glVertex3d(%lf, %lf, %lf)", &p.x, &p.y, &p.z) == 3)
            corners.push_back(p);
        if (call == "glEnd()") {
            ASSERT_EQ(corners.size(), 3U);
            const double perimeter =
                Dist(corners[0], corners[1]) + Dist(corners[1], corners[2]) + Dist(corners[2], corners[0]);
            EXPECT_LE(perimeter, 2 + 1e-4);
            ++triangles;
        }
    }
    EXPECT_GT(triangles, 100);
    const QImage fine = stage.form.Screen();
    int different = 0;
    for (int y = 0; y < fine.height(); ++y)
        for (int x = 0; x < fine.width(); ++x)
            different += fine.pixel(x, y) != coarse.pixel(x, y);
    EXPECT_EQ(different, 0);
    stage.form.canvas->SetDefaultTriangleResolution(3);
    EXPECT_EQ(stage.form.canvas->GetTriangleResolution(), 3);
}

TEST(Primitives, ClipPlanes) {
    FaceStage stage({bigSquare});
    stage.form.canvas->EnableClipplane(0, {0.5, 0, 0}, {1, 0, 0});
    stage.form.canvas->Refresh();
    EXPECT_EQ(stage.form.PixelAt({150, 150}), black);
    EXPECT_EQ(stage.form.PixelAt({180, 150}), red);
    GlRecorder recorder;
    stage.form.canvas->DisableClipplane(-1);
    EXPECT_EQ(recorder.Calls(),
              (Calls{"glDisable(GL_CLIP_PLANE0)", "glDisable(GL_CLIP_PLANE1)", "glDisable(GL_CLIP_PLANE2)",
                     "glDisable(GL_CLIP_PLANE3)", "glDisable(GL_CLIP_PLANE4)", "glDisable(GL_CLIP_PLANE5)"}));
    recorder.Clear();
    stage.form.canvas->EnableClipplane(3, {1, 2, 3}, {0, 0, 2});
    EXPECT_EQ(recorder.Calls(), (Calls{"glClipPlane(GL_CLIP_PLANE3, {0, 0, 2, -6})", "glEnable(GL_CLIP_PLANE3)"}));
    stage.form.canvas->DisableClipplane(3);
}

TEST(Primitives, OrientationOfFronts) {
    GlForm form;
    EXPECT_TRUE(form.canvas->GetClockWise());
    GlRecorder recorder;
    form.canvas->SetClockWise(false);
    EXPECT_EQ(recorder.Calls(), Calls{"glFrontFace(GL_CCW)"});
    EXPECT_FALSE(form.canvas->GetClockWise());
    form.canvas->SetClockWise(true);
    EXPECT_TRUE(form.canvas->GetClockWise());
}
