// A pick leaves OpenGL, and what is seen, as it was.
#include "glform.h"
#include "glstate.h"
#include "picturefiles.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

// Shapes of every kind, with a picture, lights, transforms of all sorts, shapes that are not hit and copies.
void populate(GlForm& form, const QString& picture) {
    const ChangeBracket bracket(form.canvas);
    TZKOglScene* scene = form.AddScene();
    scene->SetTranslation({0.2, 0.1, 0});
    scene->Setdrehwinkel(20);
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    box->SetDrehGerade({{0.1, 0, 0}, {0, 1, 1}});
    box->Setdrehwinkel(30);
    auto* sphere = new TZKOglSphere(form.window.get());
    sphere->SetScale(1.5);
    sphere->getAttributes()->getTexture()->SetPicture(picture);
    sphere->getAttributes()->getTexture()->SetVisible(true);
    sphere->SetDisplayList(scene);
    auto* cone = new TZKOglCylinder(form.window.get());
    cone->SetNohit(true);
    cone->getAttributes()->getPolyStyle()->SetMode(glline);
    cone->SetDisplayList(scene);
    TZKOglScene* second = form.AddScene();
    auto* drawn = new TZKOglShape(form.window.get());
    QObject::connect(drawn, &TZkShape::OnPlay, [&form] { form.canvas->Disk(0.2, 1, 10, 2); });
    drawn->SetDisplayList(second);
    auto* copy = new TZKOglRefShape(form.window.get());
    copy->SetReference(sphere);
    copy->Settranslation({1, 1, 0});
    copy->SetDisplayList(second);
    for (int i = 0; i < 2; ++i) {
        auto* light = new TZKOglLight(form.window.get());
        light->SetPosition({2.0 * i, 3, 5});
        light->SetZkOglCanvas(form.canvas);
        light->SetEnabled(true);
    }
}

}  // namespace

TEST(PickState, EveryStateOfOpenGlIsAsItWas) {
    Files files;
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::yellow);
    const QString name = files.Write("picked.bmp", Bmp(picture));
    for (const double angle : {0.0, 25.0}) {
        for (const bool moved : {false, true}) {
            GlForm form;
            populate(form, name);
            form.canvas->SetBlickWinkel(angle);
            if (moved) {
                form.canvas->SetTranslation({0.5, 0.2, 0});
                form.canvas->SetDrehGerade({{0, 0, 0}, {1, 2, 3}});
                form.canvas->Setdrehwinkel(33);
                form.canvas->SetZoomFactor(1.3);
            }
            form.canvas->Refresh();
            GlForm::Settle();
            const QImage screen = form.Screen();
            ASSERT_TRUE(form.canvas->CheckCurrent());
            const GlState before = CurrentGlState();
            form.TakeSwaps();
            int hits = 0;
            for (int x = 100; x < 200; x += 7)
                hits += form.canvas->Select(x, 150);
            EXPECT_GT(hits, 5);
            EXPECT_EQ(Difference(before, CurrentGlState()), "") << "angle " << angle << ", moved " << moved;
            EXPECT_EQ(form.TakeSwaps(), 0);
            EXPECT_EQ(form.Screen(), screen);
            form.canvas->Refresh();
            EXPECT_EQ(form.Screen(), screen) << "and in the next repaint";
            EXPECT_EQ(Difference(before, CurrentGlState()), "") << "after a repaint";
        }
    }
    ZkRemoveTextures();
}

// Values that user code has set in the context.
TEST(PickState, WhatUserCodeHasSetStays) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    ASSERT_TRUE(form.canvas->CheckCurrent());
    form.canvas->OGLTranslate({0.1, 0.2, 0});
    glLineWidth(2);
    glPointSize(3);
    glColor3d(0.25, 0.5, 0.75);
    glNormal3d(0, 1, 0);
    glDepthFunc(GL_LEQUAL);
    glPolygonMode(GL_BACK, GL_LINE);
    glShadeModel(GL_FLAT);
    glDisable(GL_CULL_FACE);
    glEnable(GL_FOG);
    glPushAttrib(GL_ENABLE_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    const GlState before = CurrentGlState();
    EXPECT_TRUE(form.canvas->Select(150, 150));
    EXPECT_FALSE(form.canvas->Select(10, 10));
    EXPECT_EQ(Difference(before, CurrentGlState()), "");
}

// No room on OpenGL's stack of attributes: the pick finds what it finds all the same.
TEST(PickState, AFullStackOfAttributesDoesNoHarm) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    ASSERT_TRUE(form.canvas->CheckCurrent());
    GLint most = 0;
    glGetIntegerv(GL_MAX_ATTRIB_STACK_DEPTH, &most);
    for (int i = 0; i < most; ++i)
        glPushAttrib(GL_ENABLE_BIT);
    EXPECT_TRUE(form.canvas->Select(150, 150));
    GLint depth = 0;
    glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, most);
    for (int i = 0; i < most; ++i)
        glPopAttrib();
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

// A handler may take the context away in the midst of a pick.
TEST(PickState, AContextThatGoesDuringThePickIsLetGo) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    auto* shape = new TZKOglShape(form.window.get());
    QObject::connect(shape, &TZkShape::OnPlay, [&] {
        if (!form.canvas->IsSelecting())
            return;
        form.canvas->SetWinControl(nullptr);
        form.canvas->SetWinControl(form.control);
    });
    shape->SetDisplayList(scene);
    form.canvas->Select(150, 150);
    form.messages.Take();  // names were pushed onto a stack that is gone
    delete shape;
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    GlForm::Settle();
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(254, 0, 0));
    EXPECT_TRUE(form.canvas->Select(150, 150));
}
