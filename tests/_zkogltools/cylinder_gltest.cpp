#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkogltools/cylinder.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

TEST(Cylinder, ANewOneIsACone) {
    GlForm form;
    auto* cylinder = new TZKOglCylinder(form.window.get());
    cylinder->SetDisplayList(form.AddScene());
    GlRecorder recorder;
    cylinder->Doplay();
    EXPECT_EQ(recorder.CallsTo({"gluCylinder", "gluDisk"}),
              (Calls{"gluCylinder(1, 3, 0, 2, 10, 5)", "gluDisk(3, 0, 3, 10, 10)", "gluDisk(2, 0, 0, 10, 10)"}));
}

TEST(Cylinder, EverySetterRepaintsAndTakesAnyValue) {
    GlForm form;
    auto* cylinder = new TZKOglCylinder(form.window.get());
    cylinder->SetDisplayList(form.AddScene());
    form.canvas->Refresh();
    form.TakeSwaps();
    const auto repaintsOnce = [&form] { return form.TakeSwaps() == 2; };
    cylinder->SetBaseRadius(-1);
    EXPECT_TRUE(repaintsOnce());
    cylinder->SetTopRadius(2);
    EXPECT_TRUE(repaintsOnce());
    cylinder->SetCylinderHeight(-3);
    EXPECT_TRUE(repaintsOnce());
    cylinder->SetStacks(-4);
    EXPECT_TRUE(repaintsOnce());
    cylinder->SetResolution(0);
    EXPECT_TRUE(repaintsOnce());
    EXPECT_EQ(cylinder->GetBaseRadius(), -1);
    EXPECT_EQ(cylinder->GetCylinderHeight(), -3);
    EXPECT_EQ(cylinder->GetStacks(), -4);
    EXPECT_EQ(cylinder->GetResolution(), 0);
}

// Both ends are closed and look outwards: from either side a lid is seen, with the back faces culled.
TEST(Cylinder, BothEndsAreClosed) {
    GlForm form;
    auto* cylinder = new TZKOglCylinder(form.window.get());
    GlForm::MakeFlat(cylinder->getAttributes()->getMaterial(), 0x0000FF);
    cylinder->SetTopRadius(3);
    cylinder->SetResolution(40);
    cylinder->SetDrehgeradeRichtung("0/1/0");
    cylinder->SetDisplayList(form.AddScene());
    for (const double angle : {0.0, 40.0, 90.0, 140.0, 180.0, 270.0}) {
        cylinder->Setdrehwinkel(angle);
        const double way = angle * 3.14159265358979 / 180;
        // the middle of the solid, and a point of the lid that is towards the viewer
        EXPECT_EQ(form.PixelAt({150 + 30 * std::sin(way), 150}), QColor(254, 0, 0)) << angle;
        EXPECT_EQ(form.PixelAt({150 + 30 * std::sin(way), 150 - 60}), QColor(254, 0, 0)) << angle;
    }
}

TEST(Cylinder, PropertiesInTheirOrder) {
    TZKOglCylinder cylinder;
    const QMetaObject& meta = TZKOglCylinder::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names += meta.property(i).name();
    EXPECT_EQ(names, (QStringList{"BaseRadius", "TopRadius", "CylinderHeight", "Stacks", "Resolution"}));
    const double defaults[] = {3, 0, 2, 5, 10};
    for (int i = 0; i < names.size(); ++i) {
        EXPECT_EQ(cylinder.property(qPrintable(names[i])).toDouble(), defaults[i]) << names[i].toStdString();
        ASSERT_TRUE(cylinder.setProperty(qPrintable(names[i]), 7 + i));
        EXPECT_EQ(cylinder.property(qPrintable(names[i])).toDouble(), 7 + i);
    }
}
