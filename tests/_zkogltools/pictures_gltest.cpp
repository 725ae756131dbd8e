// What shapes, materials, lights and textures look like, held against pictures that were looked at once.
#include "baseline.h"
#include "glform.h"
#include "picturefiles.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools.h>

#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

constexpr QSize small(84, 84);  // 2.8 cm

TZKOglLight* addLamp(GlForm& form, const TXYZ& at = {20, 30, 40}) {
    auto* light = new TZKOglLight(form.window.get());
    light->setattenuation(0);
    light->SetZkOglCanvas(form.canvas);
    light->SetPosition(at);
    light->SetAmbient(0x282828);
    light->SetDiffuse(0xC0C0C0);
    light->SetSpecular(0xC0C0C0);
    light->SetEnabled(true);
    return light;
}

void lookFromAbove(GlForm& form) {
    form.canvas->SetProjectionbase({{0, 0, 0}, {0.8, 0, -0.6}, {-0.24, 0.916515, -0.32}, {0.55, 0.4, 0.733}});
}

/// Shiny, of one color.
void paint(TCustomShape& shape, TColor color) {
    Tmaterialkind kind = maNone;
    kind.Ambient = color;
    kind.Diffuse = color;
    kind.Specular = 0xFFFFFF;
    kind.Emission = 0;
    kind.Shininess = 30;
    shape.getAttributes()->getMaterial()->SetMAterialKind(kind);
}

TZKOglSphere* addSphere(GlForm& form, TZKOglScene* scene, double radius) {
    auto* sphere = new TZKOglSphere(form.window.get());
    sphere->SetR(radius);
    sphere->SetResolution(24);
    paint(*sphere, 0x30A0E0);
    sphere->SetDisplayList(scene);
    return sphere;
}

TZKOglBox* addBox(GlForm& form, TZKOglScene* scene, const TXYZ& size, const TXYZ& at, TColor color) {
    auto* box = new TZKOglBox(form.window.get());
    box->SetA(size.x);
    box->SetB(size.y);
    box->SetC(size.z);
    box->Settranslation(at);
    paint(*box, color);
    box->SetDisplayList(scene);
    return box;
}

void showPicture(TCustomShape& shape) {
    TTexture* texture = shape.getAttributes()->getTexture();
    ZkAddBitmaptexture("zk-pictures", [] {
        QImage checks(64, 64, QImage::Format_RGB32);
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x)
                checks.setPixel(x, y, (x / 8 + y / 8) % 2 != 0 ? qRgb(255, 255, 255) : qRgb(4 * x, 4 * y, 60));
        return checks;
    }());
    texture->SetPicture("zk-pictures.bmp");
    texture->SetVisible(true);
}

}  // namespace

TEST(Pictures, AnotherPictureDoesNotPass) {
    const QImage kept(QStringLiteral(ZKOGL_SOURCE "/tests/baselines/translucent.png"));
    ASSERT_FALSE(kept.isNull());
    EXPECT_TRUE(LooksLikeBaseline(kept, "translucent"));
    QImage other = kept;
    for (int x = 0; x < other.width(); ++x)
        other.setPixel(x, 40, qRgb(0, 0, 255));  // one line in another color
    EXPECT_FALSE(LooksLikeBaseline(other, "translucent"));
    EXPECT_FALSE(LooksLikeBaseline(kept.copy(0, 0, kept.width(), kept.height() - 1), "translucent"));
    EXPECT_FALSE(LooksLikeBaseline(kept, "no such picture"));
    other = kept.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < other.height(); ++y)
        for (int x = 0; x < other.width(); ++x)
            other.setPixel(x, y, other.pixel(x, y) ^ 0x040404U);  // a little everywhere
    EXPECT_FALSE(LooksLikeBaseline(other, "translucent"));
}

TEST(Pictures, ALitSphereOfEachPreset) {
    std::vector<QImage> row;
    for (const Tmaterialkind& kind : {maGray, maAqua, maNavy, maLtGray, maRed, maNone}) {
        GlForm form(small);
        addLamp(form);
        TZKOglSphere* sphere = addSphere(form, form.AddScene(), 1.2);
        sphere->getAttributes()->getMaterial()->SetMAterialKind(kind);
        row.push_back(form.Screen());
    }
    EXPECT_TRUE(LooksLikeBaseline(Sheet({row}), "presets"));
}

TEST(Pictures, MaterialsOneValueAtATime) {
    std::vector<QImage> row;
    const auto take = [&row](const std::function<void(Tmaterial&)>& set) {
        GlForm form(small);
        addLamp(form);
        TZKOglSphere* sphere = addSphere(form, form.AddScene(), 1.2);
        set(*sphere->getAttributes()->getMaterial());
        row.push_back(form.Screen());
    };
    take([](Tmaterial&) {});
    take([](Tmaterial& material) { material.SetDiffuse(0x0000FF); });
    take([](Tmaterial& material) { material.SetSpecular(0); });
    take([](Tmaterial& material) { material.SetEmission(0x004000); });
    take([](Tmaterial& material) { material.SetShininess(2); });
    take([](Tmaterial& material) { material.SetTranslucent(0.4); });
    EXPECT_TRUE(LooksLikeBaseline(Sheet({row}), "materials"));
}

TEST(Pictures, TranslucentBoxesInFrontOfEachOther) {
    GlForm form(small);
    addLamp(form);
    lookFromAbove(form);
    TZKOglScene* scene = form.AddScene();
    addBox(form, scene, {1.4, 1.4, 0.4}, {-0.9, -0.7, -1}, 0x0000FF);
    TZKOglBox* front = addBox(form, scene, {0.8, 0.8, 0.8}, {-0.1, -0.7, 0}, 0x00FF00);
    front->getAttributes()->getMaterial()->SetTranslucent(0.5);
    TZKOglBox* nearest = addBox(form, scene, {1.2, 0.3, 0.3}, {-0.6, -0.2, 1}, 0xFF0000);
    nearest->getAttributes()->getMaterial()->SetTranslucent(0.25);
    EXPECT_TRUE(LooksLikeBaseline(form.Screen(), "translucent"));
}

TEST(Pictures, FrontsAndBacksWithTwoSidedLight) {
    std::vector<QImage> row;
    for (const bool twoSided : {false, true}) {
        GlForm form(small);
        addLamp(form);
        lookFromAbove(form);
        form.canvas->SetLightModelTwoSided(twoSided);
        form.canvas->CheckCurrent();
        glDisable(GL_CULL_FACE);
        TZKOglScene* scene = form.AddScene();
        for (const bool reversed : {false, true}) {
            auto* plane = new TZKOglPlane(form.window.get());
            QStringList corners{"-0.9/-0.9/0", "-0.9/0.9/0", "0.9/0.9/0", "0.9/-0.9/0"};
            if (reversed)
                std::reverse(corners.begin(), corners.end());
            plane->SetData(corners);
            plane->Settranslation({reversed ? 0.9 : -0.9, 0, reversed ? 0.5 : -0.5});
            paint(*plane, 0x00FFFF);
            plane->getAttributes()->getMaterial()->SetFace(glfrontandback);
            plane->SetDisplayList(scene);
        }
        form.canvas->Refresh();
        row.push_back(form.Screen());
    }
    EXPECT_TRUE(LooksLikeBaseline(Sheet({row}), "two-sided"));
}

TEST(Pictures, ASpotLightOnAPlane) {
    std::vector<QImage> row;
    for (const double cutOff : {180.0, 25.0, 10.0}) {
        GlForm form(small);
        form.canvas->SetDefaultTriangleResolution(0.4);
        auto* plane = new TZKOglPlane(form.window.get());
        plane->SetData({"-1.3/-1.3/0", "-1.3/1.3/0", "1.3/1.3/0", "1.3/-1.3/0"});
        paint(*plane, 0xFFFFFF);
        plane->SetDisplayList(form.AddScene());
        TZKOglLight* light = addLamp(form, {0, 0, 2});
        light->SetDirection({0, 0, -1});
        light->SetSpotExponent(1);
        light->SetSpotCutOff(cutOff);
        form.canvas->Refresh();
        row.push_back(form.Screen());
    }
    EXPECT_TRUE(LooksLikeBaseline(Sheet({row}), "spot"));
}

TEST(Pictures, TexturesOneValueAtATime) {
    std::vector<QImage> row;
    const auto take = [&row](const std::function<void(TTexture&)>& set) {
        GlForm form(small);
        addLamp(form);
        auto* plane = new TZKOglPlane(form.window.get());
        plane->SetData({"-0.3/-0.3/0", "-0.3/1.3/0", "1.3/1.3/0", "1.3/-0.3/0"});
        plane->Settranslation({-0.6, -0.6, 0});
        plane->SetScale(1.4);
        paint(*plane, 0x40C0FF);
        showPicture(*plane);
        set(*plane->getAttributes()->getTexture());
        plane->SetDisplayList(form.AddScene());
        row.push_back(form.Screen());
    };
    take([](TTexture&) {});
    take([](TTexture& texture) { texture.SetFilter(gllinear); });
    take([](TTexture& texture) { texture.SetRepeat(false); });
    take([](TTexture& texture) { texture.SetEnvmode(gldecal); });
    take([](TTexture& texture) { texture.SetEnvmode(glblend); });
    take([](TTexture& texture) { texture.Setbase({{0.3, 0, 0}, {0.8, 0.6, 0}, {-0.6, 0.8, 0}, {0, 0, 1}}); });
    EXPECT_TRUE(LooksLikeBaseline(Sheet({row}), "textures"));
}

TEST(Pictures, EveryShapeInEveryMode) {
    struct Form {
        const char* name;
        std::function<TCustomShape*(GlForm&, TZKOglScene*)> make;
    };
    const auto cylinder = [](double base, double top) {
        return [base, top](GlForm& form, TZKOglScene*) -> TCustomShape* {
            auto* shape = new TZKOglCylinder(form.window.get());
            shape->SetBaseRadius(base);
            shape->SetTopRadius(top);
            shape->SetCylinderHeight(1.4);
            return shape;
        };
    };
    const Form forms[]{
        {"box",
         [](GlForm& form, TZKOglScene*) -> TCustomShape* {
             auto* shape = new TZKOglBox(form.window.get());
             shape->SetA(1.2);
             shape->SetB(0.9);
             shape->SetC(0.7);
             return shape;
         }},
        {"sphere",
         [](GlForm& form, TZKOglScene*) -> TCustomShape* {
             auto* shape = new TZKOglSphere(form.window.get());
             shape->SetR(0.8);
             shape->SetResolution(10);
             return shape;
         }},
        {"cylinder", cylinder(0.7, 0.7)},
        {"cone", cylinder(0.8, 0)},
        {"plane",
         [](GlForm& form, TZKOglScene*) -> TCustomShape* {
             auto* shape = new TZKOglPlane(form.window.get());
             // a frame whose outline turns back on itself round the hole, rubbish, and a triangle
             shape->SetData({"-1/-1/0", "-1/1/0", "1/1/0", "1/-1/0", "0.5/-0.6/0", "0.5/0.5/0", "-0.5/0.5/0",
                             "-0.5/-0.6/0", "0.5/-0.6/0", "1/-1/0", "--", "no point", "0/0/0", "-0.3/-0.4/0.2",
                             "0.3/-0.4/0.2", ""});
             return shape;
         }},
        {"reference",
         [](GlForm& form, TZKOglScene* scene) -> TCustomShape* {
             TZKOglBox* box = addBox(form, scene, {0.5, 1, 0.5}, {-1, 0, 0}, 0x00FFFF);
             box->SetVisible(false);
             auto* shape = new TZKOglRefShape(form.window.get());
             shape->SetReference(box);
             return shape;
         }},
    };
    std::vector<std::vector<QImage>> rows;
    for (const Form& one : forms) {
        rows.emplace_back();
        for (const bool textured : {false, true}) {
            for (const TPAMode mode : {glfill, glline, glpoint}) {
                GlForm form(small);
                addLamp(form);
                lookFromAbove(form);
                TZKOglScene* scene = form.AddScene();
                TCustomShape* shape = one.make(form, scene);
                paint(*shape, 0x30A0E0);
                shape->getAttributes()->getPolyStyle()->SetMode(mode);
                if (textured)
                    showPicture(*shape);
                shape->SetDisplayList(scene);
                rows.back().push_back(form.Screen());
            }
        }
        // Scaled, and turned about a line that does not pass through the origin.
        GlForm form(small);
        addLamp(form);
        lookFromAbove(form);
        TZKOglScene* scene = form.AddScene();
        TCustomShape* shape = one.make(form, scene);
        paint(*shape, 0x30A0E0);
        shape->SetScale(0.6);
        shape->SetDrehGerade({{0.6, 0, 0}, {0, 0, 1}});
        shape->Setdrehwinkel(120);
        shape->SetDisplayList(scene);
        rows.back().push_back(form.Screen());
    }
    EXPECT_TRUE(LooksLikeBaseline(Sheet(rows), "shapes"));
}
