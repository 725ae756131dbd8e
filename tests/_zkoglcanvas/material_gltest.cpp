// Materials and polygon attributes that are the canvas's current ones: what each setter hands to OpenGL, and what
// OpenGL holds afterwards.
#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/oglmaterial.h>
#include <zk/_zkoglcanvas/oglpolyattributes.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>

using namespace zk;
using namespace zk::test;

namespace {

std::array<GLfloat, 4> material(GLenum face, GLenum parameter) {
    std::array<GLfloat, 4> values{};
    glGetMaterialfv(face, parameter, values.data());
    return values;
}

using Values = std::array<GLfloat, 4>;

}  // namespace

TEST(Material, OpenGlIsAskedForColours) {
    GlForm form;
    Tmaterial* material = form.canvas->getAttributes()->getMaterial();
    EXPECT_EQ(material->GetAmbient(), 0xFFFFFFU);
    EXPECT_EQ(material->GetDiffuse(), 0x808080U);
    EXPECT_EQ(material->GetSpecular(), 0xFFFFFFU);
    EXPECT_EQ(material->GetEmission(), 0x808080U);
    EXPECT_NEAR(material->GetShininess(), 0.1, 1e-6);
    EXPECT_EQ(material->GetTranslucent(), 1);
    GLfloat diffuse[4];
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    EXPECT_EQ(diffuse[3], 1);
    const GLfloat green[4] = {0, 0.5, 0, 1};
    glMaterialfv(GL_FRONT, GL_AMBIENT, green);
    EXPECT_EQ(material->GetAmbient(), 0x008000U);
    material->SetTranslucent(0.25);
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    EXPECT_EQ(diffuse[3], 0.25);
    material->SetDiffuse(0x0000FF);
    glGetMaterialfv(GL_FRONT, GL_DIFFUSE, diffuse);
    EXPECT_EQ(diffuse[0], 255 / 256.0F);
    EXPECT_EQ(diffuse[3], 0.25);
    material->SetShininess(500);
    OGLError();
    EXPECT_EQ(form.messages.Take(), QStringList{"Error: GL_INVALID_VALUE"});
}

TEST(Material, EachSetterPassesItsValue) {
    GlForm form;
    Tmaterial* current = form.canvas->getAttributes()->getMaterial();
    const auto passed = [&](const std::function<void()>& set) {
        GlRecorder recorder;
        set();
        return recorder.Calls();
    };
    constexpr GLfloat most = 255 / 256.0F;
    EXPECT_EQ(passed([&] { current->SetAmbient(0x0000FF); }),
              Calls{"glMaterialfv(GL_FRONT, GL_AMBIENT, {0.996094, 0, 0, 1})"});
    EXPECT_EQ(material(GL_FRONT, GL_AMBIENT), (Values{most, 0, 0, 1}));
    EXPECT_EQ(passed([&] { current->SetDiffuse(0x00FF00); }),
              Calls{"glMaterialfv(GL_FRONT, GL_DIFFUSE, {0, 0.996094, 0, 1})"});
    EXPECT_EQ(material(GL_FRONT, GL_DIFFUSE), (Values{0, most, 0, 1}));
    EXPECT_EQ(passed([&] { current->SetSpecular(0xFF0000); }),
              Calls{"glMaterialfv(GL_FRONT, GL_SPECULAR, {0, 0, 0.996094, 1})"});
    EXPECT_EQ(material(GL_FRONT, GL_SPECULAR), (Values{0, 0, most, 1}));
    EXPECT_EQ(passed([&] { current->SetEmission(0x804020); }),
              Calls{"glMaterialfv(GL_FRONT, GL_EMISSION, {0.125, 0.25, 0.5, 1})"});
    EXPECT_EQ(material(GL_FRONT, GL_EMISSION), (Values{0.125F, 0.25F, 0.5F, 1}));
    EXPECT_EQ(passed([&] { current->SetShininess(64); }), Calls{"glMaterialfv(GL_FRONT, GL_SHININESS, {64})"});
    EXPECT_EQ(material(GL_FRONT, GL_SHININESS)[0], 64);
    EXPECT_EQ(passed([&] { current->SetTranslucent(0.5); }),
              Calls{"glMaterialfv(GL_FRONT, GL_DIFFUSE, {0, 0.996094, 0, 0.5})"});
    EXPECT_EQ(material(GL_FRONT, GL_DIFFUSE), (Values{0, most, 0, 0.5F}));
    EXPECT_EQ(passed([&] { current->SetDiffuse(0x0000FF); }),
              Calls{"glMaterialfv(GL_FRONT, GL_DIFFUSE, {0.996094, 0, 0, 0.5})"})
        << "the translucency stays";
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

TEST(Material, TheFaceSaysWhichSideIsMeant) {
    GlForm form;
    Tmaterial* current = form.canvas->getAttributes()->getMaterial();
    current->SetEmission(0);
    current->SetFace(glback);
    current->SetEmission(0x000080);
    EXPECT_EQ(material(GL_FRONT, GL_EMISSION), (Values{0, 0, 0, 1}));
    EXPECT_EQ(material(GL_BACK, GL_EMISSION), (Values{0.5F, 0, 0, 1}));
    EXPECT_EQ(current->GetEmission(), 0x80U);
    current->SetFace(glfrontandback);
    current->SetEmission(0x008000);
    EXPECT_EQ(material(GL_FRONT, GL_EMISSION), (Values{0, 0.5F, 0, 1}));
    EXPECT_EQ(material(GL_BACK, GL_EMISSION), (Values{0, 0.5F, 0, 1}));
    EXPECT_EQ(current->GetEmission(), 0x8000U);
    EXPECT_EQ(PendingError(*form.canvas), 0U);
}

TEST(Material, APresetIsPassedWhole) {
    GlForm form;
    Tmaterial* current = form.canvas->getAttributes()->getMaterial();
    form.canvas->SetChanging(true);
    for (const auto& [kind, emission] : {std::pair(matGray, maGray.Emission),
                                         {matAqua, maAqua.Emission},
                                         {matNavy, maNavy.Emission},
                                         {matLtGray, maRed.Emission},
                                         {matRed, maLtGray.Emission}}) {
        current->SetMatKind(kind);
        EXPECT_EQ(current->GetEmission(), emission) << int(kind);
        EXPECT_EQ(current->GetAmbient(), 0U) << int(kind);
        EXPECT_EQ(current->GetDefKind(), NoDefMat) << int(kind);
    }
    form.canvas->SetChanging(false);
}

TEST(Material, WithoutACanvasItHasNoDefaults) {
    GlForm form;  // any context
    form.canvas->CheckCurrent();
    GlRecorder recorder;
    TOglMaterial alone;
    recorder.Clear();
    alone.SetParent(nullptr);
    EXPECT_EQ(recorder.Calls(), Calls{});
    alone.SetParent(form.canvas);
    EXPECT_EQ(recorder.Calls(), (Calls{"glMaterialfv(GL_FRONT, GL_SPECULAR, {0.996094, 0.996094, 0.996094, 1})",
                                       "glMaterialfv(GL_FRONT, GL_EMISSION, {0.5, 0.5, 0.5, 1})",
                                       "glMaterialfv(GL_FRONT, GL_AMBIENT, {0.996094, 0.996094, 0.996094, 1})",
                                       "glMaterialfv(GL_FRONT, GL_DIFFUSE, {0.5, 0.5, 0.5, 1})",
                                       "glMaterialfv(GL_FRONT, GL_SHININESS, {0.1})",
                                       "glMaterialfv(GL_FRONT, GL_DIFFUSE, {0.5, 0.5, 0.5, 1})"}));
}

TEST(PolyAttributes, OfACanvasCallNothing) {
    GlForm form;
    auto* style = qobject_cast<TOglPolyAttributes*>(form.canvas->getAttributes()->getPolyStyle());
    ASSERT_NE(style, nullptr);
    GlRecorder recorder;
    style->SetMode(glline);
    style->SetStyle(gllineloop);
    EXPECT_EQ(recorder.Calls(), Calls{});
    EXPECT_EQ(style->GLMode(), 0x1B01U);
    EXPECT_EQ(style->GLStyle(), 2U);
}
