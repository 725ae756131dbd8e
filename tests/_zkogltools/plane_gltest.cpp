#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkogltools/plane.h>

#include <QElapsedTimer>
#include <QMetaProperty>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

struct PlaneStage {
    PlaneStage() : scene(form.AddScene()), plane(new TZKOglPlane(form.window.get())) {
        GlForm::MakeFlat(plane->getAttributes()->getMaterial(), 0x0000FF);
        plane->SetDisplayList(scene);
    }
    // The corners of each polygon that is drawn.
    std::vector<int> Corners(const QStringList& lines) {
        plane->SetData(lines);
        GlRecorder recorder;
        plane->Doplay();
        std::vector<int> corners;
        for (const std::string& call : recorder.CallsTo({"glBegin", "glVertex3d"})) {
            if (call.rfind("glBegin", 0) == 0)
                corners.push_back(0);
            else
                ++corners.back();
        }
        return corners;
    }
    QColor At(double x, double y) { return form.PixelAt({150 + 30 * x, 150 - 30 * y}); }
    GlForm form;
    TZKOglScene* scene;
    TZKOglPlane* plane;
};

const QStringList triangle{"0/0/0", "1/0/0", "1/1/0"};

}  // namespace

TEST(Plane, LinesThatAreNoPointsSeparatePolygons) {
    PlaneStage stage;
    using Counts = std::vector<int>;
    EXPECT_EQ(stage.Corners(triangle), Counts({3}));
    EXPECT_EQ(stage.Corners(triangle + QStringList{""} + triangle), Counts({3, 3}));
    EXPECT_EQ(stage.Corners(triangle + QStringList{"", "rubbish/1"} + triangle), Counts({3, 3}));
    EXPECT_EQ(stage.Corners(triangle + QStringList{""}), Counts({3}));
    EXPECT_EQ(stage.Corners(QStringList{"hello"} + triangle), Counts({3}));
    EXPECT_EQ(stage.Corners({}), Counts());
    EXPECT_EQ(stage.Corners({""}), Counts());
    EXPECT_EQ(stage.Corners({"1//3", "1/2", "a/b/c", "/", "1/2/3/4"}), Counts()) << "one point has no area";
    EXPECT_EQ(stage.Corners({" 0 / 0 /0", "1/0/0/9", "1/1/0"}), Counts({3}));
}

TEST(Plane, DrawsThePointsInTheirOrder) {
    PlaneStage stage;
    stage.plane->SetData({"0/0/1", "0/2/1", "3/2/1", "3/0/1"});
    GlRecorder recorder;
    stage.plane->Doplay();
    EXPECT_EQ(recorder.Calls(), Face({0, 0, 1}, {{0, 0, 1}, {0, 2, 1}, {3, 2, 1}, {3, 0, 1}}));
}

TEST(Plane, DataMarksTheSceneButDoesNotRepaint) {
    PlaneStage stage;
    stage.form.canvas->Refresh();
    stage.form.TakeSwaps();
    QStringList lines{"-1/-1/0", "-1/1/0", "1/1/0", "1/-1/0"};
    stage.plane->SetData(lines);
    lines.clear();
    EXPECT_EQ(stage.plane->GetData().size(), 4) << "a copy, not the caller's list";
    EXPECT_FALSE(stage.scene->IsCompiled());
    EXPECT_EQ(stage.form.TakeSwaps(), 0);
    EXPECT_EQ(stage.At(0, 0), black);
    stage.form.canvas->Refresh();
    EXPECT_EQ(stage.At(0, 0), red);
}

// Front seen clockwise; the way around the hole runs against it and shares its first and last edge.
TEST(Plane, AnOutlineMayRunAroundAHole) {
    PlaneStage stage;
    stage.plane->SetData({"-3/-3/0", "-3/3/0", "3/3/0", "3/-3/0", "-3/-3/0",  //
                          "-1/-1/0", "1/-1/0", "1/1/0", "-1/1/0", "-1/-1/0"});
    stage.form.canvas->Refresh();
    EXPECT_EQ(stage.At(0, 0), black);
    EXPECT_EQ(stage.At(0.8, -0.8), black);
    EXPECT_EQ(stage.At(2, 0), red);
    EXPECT_EQ(stage.At(-2, 0), red);
    EXPECT_EQ(stage.At(0, 2), red);
    EXPECT_EQ(stage.At(0, -2), red);
    EXPECT_EQ(stage.At(-1.7, -2.2), red);
    EXPECT_EQ(stage.At(-2.2, -1.7), red);
}

TEST(Plane, SeveralPolygonsAndAConcaveOne) {
    PlaneStage stage;
    stage.plane->SetData({"-4/-1/0", "-4/1/0", "-2/1/0", "-2/-1/0", "next",  //
                          "0/-2/0", "0/2/0", "4/2/0", "1/0/0", "4/-2/0"});
    stage.form.canvas->Refresh();
    EXPECT_EQ(stage.At(-3, 0), red);
    EXPECT_EQ(stage.At(-1, 0), black);
    EXPECT_EQ(stage.At(0.5, 0), red);
    EXPECT_EQ(stage.At(3, 0), black);
    EXPECT_EQ(stage.At(2.5, 1.5), red);
    EXPECT_EQ(stage.At(2.5, -1.5), red);
}

// A hundred thousand lines are read at every compilation; this would take minutes if anything in it were quadratic.
TEST(Plane, HundredThousandLines) {
    PlaneStage stage;
    QStringList lines;
    for (int i = 0; i < 25000; ++i) {
        const QString x = QString::number(i % 100 * 0.05 - 2.5);
        const QString y = QString::number(i / 100 * 0.02 - 2.5);
        lines += {x + "/" + y + "/0", x + "/" + y + "/1", QString::number(i) + "/0/1", ""};
    }
    ASSERT_EQ(lines.size(), 100000);
    stage.plane->SetData(lines);
    stage.form.canvas->Refresh();
    EXPECT_TRUE(stage.scene->IsCompiled());
    EXPECT_EQ(stage.plane->property("Data").toStringList().size(), 100000);
}

TEST(Plane, OnePropertyAndNoCanvasNeeded) {
    TZKOglPlane plane;
    const QMetaObject& meta = TZKOglPlane::staticMetaObject;
    ASSERT_EQ(meta.propertyCount() - meta.propertyOffset(), 1);
    EXPECT_STREQ(meta.property(meta.propertyOffset()).name(), "Data");
    EXPECT_EQ(plane.property("Data").toStringList(), QStringList());
    ASSERT_TRUE(plane.setProperty("Data", triangle));
    EXPECT_EQ(plane.GetData(), triangle);
    plane.Doplay();
}
