#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools/box.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

TEST(Box, SixFacesInTheirOrder) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {1, 2, 3}, {0, 0, 0});
    form.canvas->Refresh();
    GlRecorder recorder;
    box->Doplay();
    EXPECT_EQ(recorder.Calls(), Face({0, 0, -1}, {{0, 0, 0}, {1, 0, 0}, {1, 2, 0}, {0, 2, 0}}) +
                                    Face({0, 0, 1}, {{0, 0, 3}, {0, 2, 3}, {1, 2, 3}, {1, 0, 3}}) +
                                    Face({0, -1, 0}, {{1, 0, 0}, {0, 0, 0}, {0, 0, 3}, {1, 0, 3}}) +
                                    Face({1, 0, 0}, {{1, 2, 0}, {1, 0, 0}, {1, 0, 3}, {1, 2, 3}}) +
                                    Face({0, 1, 0}, {{0, 2, 0}, {1, 2, 0}, {1, 2, 3}, {0, 2, 3}}) +
                                    Face({-1, 0, 0}, {{0, 0, 0}, {0, 2, 0}, {0, 2, 3}, {0, 0, 3}}));
}

TEST(Box, FacesWithoutAreaAreLeftOut) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {1, 2, 0}, {0, 0, 0});
    form.canvas->Refresh();
    GlRecorder recorder;
    box->Doplay();
    EXPECT_EQ(recorder.Count("glBegin"), 2);
    box->SetA(0);
    recorder.Clear();
    box->Doplay();
    EXPECT_EQ(recorder.Count("glBegin"), 0);
}

TEST(Box, PropertiesInTheirOrder) {
    TZKOglBox box;
    const QMetaObject& meta = TZKOglBox::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names += meta.property(i).name();
    EXPECT_EQ(names, (QStringList{"Length", "Width", "Height"}));
    for (const QString& name : names) {
        EXPECT_EQ(box.property(qPrintable(name)).toDouble(), 1.0);
        ASSERT_TRUE(box.setProperty(qPrintable(name), 2.5));
        EXPECT_EQ(box.property(qPrintable(name)).toDouble(), 2.5);
    }
}

// From every side a box shows its outside: with the back faces culled it covers the same pixels as without.
TEST(Box, EveryFaceLooksOutwards) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    const auto covered = [&] {
        const QImage screen = form.Screen();
        int count = 0;
        for (int y = 0; y < screen.height(); ++y)
            for (int x = 0; x < screen.width(); ++x)
                count += screen.pixelColor(x, y) == QColor(254, 0, 0);
        return count;
    };
    const char* const axes[] = {"1/0/0", "0/1/0", "1/1/0", "1/2/3"};
    for (const char* axis : axes)
        for (const double angle : {0.0, 35.0, 90.0, 145.0, 180.0, 270.0}) {
            box->SetDrehgeradeRichtung(axis);
            box->Setdrehwinkel(angle);
            const int culled = covered();
            QObject handlers;
            QObject::connect(scene, &TDisplayList::OnPlay, &handlers, [] { glDisable(GL_CULL_FACE); });
            scene->Changed(nullptr);
            // an edge that meets the middle of pixels may fall to either of its faces
            EXPECT_NEAR(covered(), culled, culled * 0.01) << axis << " " << angle;
            EXPECT_GT(culled, 3000);
            glEnable(GL_CULL_FACE);
        }
}
