#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/ogllight.h>
#include <zk/_zkxyarrays.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

#include <functional>

using namespace zk;
using namespace zk::test;

namespace {

TZKOglLight* addLight(GlForm& form, bool enabled = true) {
    auto* light = new TZKOglLight(form.window.get());
    light->SetZkOglCanvas(form.canvas);
    light->SetEnabled(enabled);
    return light;
}

Calls lightCalls(const GlRecorder& recorder) {
    return recorder.CallsTo({"glLightfv", "glEnable", "glDisable"});
}

}  // namespace

TEST(Light, EnablingPassesEverythingInItsOrder) {
    GlForm form;  // scale 0.2
    TZKOglLight* light = addLight(form, false);
    form.canvas->SetChanging(true);
    GlRecorder recorder;
    light->SetDiffuse(0x0000FF);
    light->SetPosition({1, 2, 3});
    light->SetSpotExponent(2);
    EXPECT_EQ(lightCalls(recorder), Calls{}) << "a light that is off passes nothing";
    light->SetEnabled(true);
    EXPECT_EQ(
        lightCalls(recorder),
        (Calls{"glEnable(GL_LIGHTING)", "glEnable(GL_LIGHT0)", "glLightfv(GL_LIGHT0, GL_POSITION, {0.2, 0.4, 0.6, 1})",
               "glLightfv(GL_LIGHT0, GL_SPOT_DIRECTION, {0, 0, -0.2})",
               "glLightfv(GL_LIGHT0, GL_AMBIENT, {0.996094, 0.996094, 0.996094, 1})",
               "glLightfv(GL_LIGHT0, GL_DIFFUSE, {0.996094, 0, 0, 1})",
               "glLightfv(GL_LIGHT0, GL_SPECULAR, {0.996094, 0.996094, 0.996094, 1})",
               "glLightfv(GL_LIGHT0, GL_LINEAR_ATTENUATION, {1})", "glLightfv(GL_LIGHT0, GL_SPOT_CUTOFF, {180})",
               "glLightfv(GL_LIGHT0, GL_SPOT_EXPONENT, {2})"}));
    recorder.Clear();
    light->SetEnabled(false);
    EXPECT_EQ(lightCalls(recorder), Calls{"glDisable(GL_LIGHT0)"});
    form.canvas->SetChanging(false);
}

TEST(Light, EachSetterPassesItsOwnValueAndRepaintsOnce) {
    GlForm form;
    TZKOglLight* light = addLight(form);
    form.TakeSwaps();
    const auto passed = [&](const std::function<void()>& set) {
        GlRecorder recorder;
        set();
        EXPECT_EQ(form.TakeSwaps(), 2);
        return recorder.CallsTo({"glLightfv"});
    };
    EXPECT_EQ(passed([&] { light->SetAmbient(0x00FF00); }),
              Calls{"glLightfv(GL_LIGHT0, GL_AMBIENT, {0, 0.996094, 0, 1})"});
    EXPECT_EQ(passed([&] { light->setattenuation(0.5); }), Calls{"glLightfv(GL_LIGHT0, GL_LINEAR_ATTENUATION, {0.5})"});
    light->setattenuationMode(GL_QUADRATIC_ATTENUATION);
    EXPECT_EQ(passed([&] { light->setattenuation(0.25); }),
              Calls{"glLightfv(GL_LIGHT0, GL_QUADRATIC_ATTENUATION, {0.25})"});
    EXPECT_EQ(passed([&] { light->SetSpotExponent(200); }), Calls{"glLightfv(GL_LIGHT0, GL_SPOT_EXPONENT, {128})"});
    EXPECT_EQ(passed([&] { light->SetSpotExponent(-1); }), Calls{"glLightfv(GL_LIGHT0, GL_SPOT_EXPONENT, {0})"});
    EXPECT_EQ(passed([&] { light->SetSpotCutOff(120); }), Calls{"glLightfv(GL_LIGHT0, GL_SPOT_CUTOFF, {180})"});
    EXPECT_EQ(form.canvas->GetTriangleResolution(), 0);
    EXPECT_EQ(passed([&] { light->SetSpotCutOff(45); }), Calls{"glLightfv(GL_LIGHT0, GL_SPOT_CUTOFF, {45})"});
    EXPECT_EQ(form.canvas->GetTriangleResolution(), 2.0);
    EXPECT_EQ(passed([&] {
                  light->SetDirection({0, 1, 0});
              }),
              Calls{"glLightfv(GL_LIGHT0, GL_SPOT_DIRECTION, {0, 0.2, 0})"});
}

TEST(Light, NumbersFollowThePlaceInTheList) {
    GlForm form;
    TZKOglLight* a = addLight(form);
    TZKOglLight* b = addLight(form);
    TZKOglLight* c = addLight(form);
    EXPECT_EQ(a->GetHandle(), GL_LIGHT0);
    EXPECT_EQ(b->GetHandle(), GL_LIGHT1);
    EXPECT_EQ(c->GetHandle(), GL_LIGHT2);
    delete a;
    EXPECT_EQ(b->GetHandle(), GL_LIGHT0);
    EXPECT_EQ(c->GetHandle(), GL_LIGHT1);
    EXPECT_FALSE(glIsEnabled(GL_LIGHT2));
    TZKOglLight* d = addLight(form);
    EXPECT_EQ(d->GetHandle(), GL_LIGHT2);

    form.canvas->SetWinControl(nullptr);
    TZKOglLight* e = addLight(form);
    EXPECT_EQ(e->GetHandle(), -1) << "without a context there is no number yet";
    form.canvas->SetWinControl(form.control);
    EXPECT_EQ(e->GetHandle(), GL_LIGHT3);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(glIsEnabled(GLenum(GL_LIGHT0 + i))) << i;
    // a light beyond OpenGL's last is OpenGL's error, told to the user
    for (int i = 0; i < 5; ++i)
        addLight(form);
    EXPECT_TRUE(form.messages.Take().contains("Error: GL_INVALID_ENUM"));
    PendingError(*form.canvas);
    qDeleteAll(form.window->findChildren<TZKOglLight*>());
    EXPECT_EQ(form.canvas->getLights()->Count(), 0);
    form.messages.Take();
}

TEST(Light, UnbindingSwitchesOffAndRebindingShinesOn) {
    GlForm form;
    TZKOglLight* light = addLight(form);
    light->SetZkOglCanvas(nullptr);
    EXPECT_FALSE(light->GetEnabled());
    EXPECT_FALSE(glIsEnabled(GL_LIGHT0));
    EXPECT_EQ(form.canvas->getLights()->Count(), 0);
    light->SetZkOglCanvas(form.canvas);
    light->SetEnabled(true);
    light->SetZkOglCanvas(form.canvas);
    EXPECT_TRUE(light->GetEnabled());
    EXPECT_EQ(form.canvas->getLights()->Count(), 1);
    delete form.canvas;
    form.canvas = nullptr;
    EXPECT_EQ(light->GetZKOglCanvas(), nullptr);
    light->SetEnabled(true);
    light->SetPosition({1, 2, 3});
    light->Update();
}

// Lights stay where they are in the world: in eye coordinates they move as the view does.
TEST(Light, StaysInTheWorldWhileTheViewChanges) {
    GlForm form;
    TZKOglLight* light = addLight(form);
    light->SetPosition({1, 2, 3});
    const auto inEye = [&] {
        GLfloat p[4];
        form.canvas->CheckCurrent();
        glGetLightfv(GL_LIGHT0, GL_POSITION, p);
        return TXYZ{p[0], p[1], p[2]};
    };
    const auto expected = [&] {
        TXYZ p = light->GetPosition();
        MatMul(form.canvas->GetOglModelMatrix(), p);
        return p;
    };
    const auto check = [&](const char* what) {
        const TXYZ is = inEye();
        const TXYZ should = expected();
        EXPECT_NEAR(is.x, should.x, 1e-5) << what;
        EXPECT_NEAR(is.y, should.y, 1e-5) << what;
        EXPECT_NEAR(is.z, should.z, 1e-5) << what;
        EXPECT_EQ(light->GetPosition(), (TXYZ{1, 2, 3})) << what;
    };
    check("at first");
    form.canvas->SetBlickWinkel(30);
    check("perspective");
    form.canvas->Setdrehwinkel(40);
    check("turned");
    form.canvas->SetDrehgeradeRichtung("1/1/0");
    check("turned about another line");
    form.canvas->SetTranslation({1, -2, 0.5});
    check("moved");
    form.canvas->SetZoomFactor(2.5);
    check("zoomed");
    form.control->resize(200, 340);
    check("resized");
    form.canvas->SetBlickWinkel(0);
    check("parallel again");
    form.canvas->Select(100, 100);
    check("picked");
}

TEST(Light, PositionsAsText) {
    TZKOglLight light;
    light.SetLightPosition("1/2.5/-3");
    EXPECT_EQ(light.GetPosition(), (TXYZ{1, 2.5, -3}));
    EXPECT_EQ(light.GetLightDirection(), "0/0/-1");
    EXPECT_THROW(light.SetLightPosition("1/2"), EConvertError);
    EXPECT_THROW(light.SetLightDirection("rubbish"), EConvertError);
    EXPECT_EQ(light.GetLightPosition(), "1/2.5/-3");
    const QMetaObject* meta = light.metaObject();
    QStringList names;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        names += meta->property(i).name();
    EXPECT_EQ(names, (QStringList{"ZkOglCanvas", "Attenuation", "Ambient", "Diffuse", "Specular", "Enabled",
                                  "SpotCutOff", "SpotExponent", "LightPosition", "LightDirection"}));
}

TEST(Light, TwoSidedLighting) {
    GlForm form;
    GlRecorder recorder;
    form.canvas->SetLightModelTwoSided(true);
    form.canvas->SetLightModelTwoSided(true);
    EXPECT_EQ(recorder.CallsTo({"glLightModeli"}), Calls{"glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1)"});
}

TEST(Light, AnErrorWhileItLeavesIsTold) {
    struct Refusing : TZkOglCanvas {
        using TZkOglCanvas::TZkOglCanvas;
        void RemoveLight(Tlight* light) override {
            if (refuses)
                throw std::runtime_error("no");
            TZkOglCanvas::RemoveLight(light);
        }
        bool refuses = false;
    };
    GlForm form;
    auto* canvas = new Refusing(form.window.get());
    canvas->SetWinControl(form.control);
    std::vector<std::unique_ptr<TZKOglLight>> lights;
    for (int i = 0; i < 2; ++i) {
        lights.push_back(std::make_unique<TZKOglLight>());
        lights.back()->SetZkOglCanvas(canvas);
    }
    canvas->refuses = true;
    lights[1]->SetZkOglCanvas(nullptr);
    EXPECT_EQ(form.messages.Take(), QStringList{"error destroying light :1"});
    EXPECT_EQ(lights[1]->GetZKOglCanvas(), nullptr) << "it has left all the same";
    canvas->refuses = false;
    canvas->RemoveLight(lights[1].get());
    lights.clear();
    delete canvas;
}

// The earlier variant: only passed on, scaled before it is seen from the projection base, whose own origin counts.
TEST(Light, TheOldPositionIsPassedAndNotStored) {
    GlForm form;
    TZKOglLight* light = addLight(form, false);
    TBAse base = Unitbase;
    base.Origin = {0.5, 0, -1};
    form.canvas->SetProjectionbase(base);
    const TXYZ before = light->GetPosition();
    form.TakeSwaps();
    {
        const GlRecorder recorder;
        light->SetPositionOld({1, 2, 3});
        EXPECT_EQ(recorder.Calls(), Calls{}) << "a light that is off passes nothing";
    }
    light->SetEnabled(true);
    form.TakeSwaps();
    const GlRecorder recorder;
    light->SetPositionOld({1, 2, 3});
    EXPECT_EQ(recorder.CallsTo({"glLightfv"}), Calls{"glLightfv(GL_LIGHT0, GL_POSITION, {-0.3, 0.4, 1.6, 1})"});
    EXPECT_EQ(light->GetPosition(), before);
    EXPECT_EQ(form.TakeSwaps(), 2);
}
