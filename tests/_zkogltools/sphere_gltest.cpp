#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkogltools/sphere.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

TZKOglSphere* addSphere(GlForm& form, TZKOglScene* scene) {
    auto* sphere = new TZKOglSphere(form.window.get());
    GlForm::MakeFlat(sphere->getAttributes()->getMaterial(), 0x0000FF);
    sphere->SetDisplayList(scene);
    return sphere;
}

Calls drawn(TZKOglSphere* sphere) {
    GlRecorder recorder;
    sphere->Doplay();
    return recorder.CallsTo({"gluSphere"});
}

}  // namespace

TEST(Sphere, HandsRadiusAndResolutionToTheCanvas) {
    GlForm form;
    TZKOglSphere* sphere = addSphere(form, form.AddScene());
    EXPECT_EQ(drawn(sphere), Calls{"gluSphere(1, 1, 10, 10)"});
    sphere->SetR(2.5);
    sphere->SetResolution(30);
    EXPECT_EQ(drawn(sphere), Calls{"gluSphere(1, 2.5, 30, 30)"});
    sphere->SetR(0);
    EXPECT_EQ(drawn(sphere), Calls{});
    sphere->SetR(1e-11);
    EXPECT_EQ(drawn(sphere), Calls{}) << "0 within the tolerance of the geometry";
}

TEST(Sphere, AResolutionBelowOneIsOneAndMarksNothing) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglSphere* sphere = addSphere(form, scene);
    form.canvas->Refresh();
    form.TakeSwaps();
    for (const int resolution : {0, -1, std::numeric_limits<int>::min()}) {
        sphere->SetResolution(resolution);
        EXPECT_EQ(sphere->GetResolution(), 1);
    }
    EXPECT_TRUE(scene->IsCompiled());
    EXPECT_EQ(form.TakeSwaps(), 0);
    sphere->SetResolution(40);
    sphere->Invalidate();
    EXPECT_EQ(form.TakeSwaps(), 2);
}

TEST(Sphere, ANewResolutionShowsWithTheNextCompilation) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglSphere* sphere = addSphere(form, scene);
    sphere->SetR(3);
    sphere->SetResolution(4);
    sphere->Invalidate();
    const QPointF nearTheRim{150 + 30 * 2.7 * 0.7071, 150 - 30 * 2.7 * 0.7071};
    EXPECT_EQ(form.PixelAt(nearTheRim), QColor(0, 0, 0)) << "four slices make a square, corners on the axes";
    sphere->SetResolution(60);
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt(nearTheRim), QColor(0, 0, 0));
    scene->Changed(nullptr);
    EXPECT_EQ(form.PixelAt(nearTheRim), QColor(254, 0, 0));
}

TEST(Sphere, PropertiesInTheirOrder) {
    TZKOglSphere sphere;
    const QMetaObject& meta = TZKOglSphere::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names += meta.property(i).name();
    EXPECT_EQ(names, (QStringList{"R", "Resolution"}));
    EXPECT_EQ(sphere.property("R").toDouble(), 1.0);
    EXPECT_EQ(sphere.property("Resolution").toInt(), 10);
    EXPECT_TRUE(sphere.setProperty("R", 2.5));
    EXPECT_TRUE(sphere.setProperty("Resolution", 7));
    EXPECT_EQ(sphere.property("R").toDouble(), 2.5);
    EXPECT_EQ(sphere.property("Resolution").toInt(), 7);
}
