#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkogltools/customshape.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

using namespace zk;
using namespace zk::test;

namespace {

Calls canvasUnits(const std::string& factor) {
    return OnMatrix("GL_MODELVIEW", "glScaled(" + factor + ", " + factor + ", " + factor + ")");
}

/// A form of 400 pixels with one scene, and a shape that marks where its geometry comes.
struct ShapeStage {
    ShapeStage() : form({400, 400}), scene(form.AddScene()), shape(new TZKOglShape(form.window.get())) {
        shape->SetDisplayList(scene);
    }
    // The calls of the shape's play, in a list that is compiled.
    Calls Play() {
        GlRecorder recorder;
        scene->Changed(nullptr);
        const std::string list = std::to_string(scene->ListName());
        Calls calls = Section(recorder.Calls(), "glNewList(" + list + ", GL_COMPILE_AND_EXECUTE)", "glEndList()");
        if (calls.size() < 2)
            return {};
        return Calls(calls.begin() + 1, calls.end() - 1);
    }
    GlForm form;
    TZKOglScene* scene;
    TZKOglShape* shape;
};

const std::string white = "0.996094, 0.996094, 0.996094";
const std::string grey = "0.5, 0.5, 0.5";

Calls ownAttributes() {
    return Calls{"glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)"} + Material(white, grey, grey, grey, "0.2") + NoTexture();
}

// The attributes before were those of the scene, which has the same.
Calls restoredAttributes() {
    return NoTexture() + Material(white, grey, grey, grey, "0.2");
}

}  // namespace

TEST(CustomShape, PlayPlacesNamesScalesDrawsAndUndoes) {
    ShapeStage stage;
    stage.shape->Settranslation({4, 5, 6});
    stage.shape->SetDrehgeradePkt("1/2/3");
    stage.shape->SetDrehgeradeRichtung("0/1/0");
    stage.shape->Setdrehwinkel(30);
    stage.shape->SetScale(2);
    QObject::connect(stage.shape, &TZkShape::OnPlay, [] { GlRecorder::Record("geometry"); });
    EXPECT_EQ(stage.Play(),
              (ownAttributes() +
               Calls{"glTranslated(4, 5, 6)", "glTranslated(1, 2, 3)", "glRotated(30, 0, 1, 0)",
                     "glTranslated(-1, -2, -3)", "glLoadName(" + std::to_string(stage.shape->HitName()) + ")"} +
               canvasUnits("2") + Calls{"geometry", "geometry"} + canvasUnits("0.5") + restoredAttributes() +
               // the two moves by the axis point in each other's place: the matrix is not what it was
               Calls{"glTranslated(-1, -2, -3)", "glRotated(-30, 0, 1, 0)", "glTranslated(1, 2, 3)",
                     "glTranslated(-4, -5, -6)"}));
}

TEST(CustomShape, ParentAttributesLeavesTheAttributesAlone) {
    ShapeStage stage;
    stage.shape->SetParentAttributes(true);
    EXPECT_EQ(
        stage.Play(),
        (Calls({"glTranslated(0, 0, 0)", "glTranslated(0, 0, 0)", "glRotated(0, 0, 0, 1)", "glTranslated(0, 0, 0)",
                "glLoadName(" + std::to_string(stage.shape->HitName()) + ")"}) +
         canvasUnits("1") + canvasUnits("1") +
         Calls{"glTranslated(0, 0, 0)", "glRotated(0, 0, 0, 1)", "glTranslated(0, 0, 0)", "glTranslated(0, 0, 0)"}));
}

TEST(CustomShape, NohitLoadsNoName) {
    ShapeStage stage;
    stage.shape->SetNohit(true);
    stage.shape->SetParentAttributes(true);
    GlRecorder recorder;
    stage.scene->Changed(nullptr);
    EXPECT_EQ(recorder.Count("glLoadName"), 0);
}

TEST(CustomShape, ScalesNextToNothingAreIgnoredAndNegativeOnesAreNot) {
    ShapeStage stage;
    std::vector<double> units;
    QObject::connect(stage.shape, &TZkShape::OnPlay, [&] { units.push_back(stage.form.canvas->GetUnitsPerCm()); });
    const auto played = [&](double scale) {
        stage.shape->SetScale(scale);
        units.clear();
        stage.Play();
        EXPECT_EQ(stage.form.canvas->GetUnitsPerCm(), 30);
        return units.empty() ? -1 : units.back();
    };
    EXPECT_EQ(played(0), 30);
    EXPECT_EQ(played(1e-5), 30);
    EXPECT_EQ(played(-1e-5), 30);
    EXPECT_EQ(played(1.1e-5), 30 * 1.1e-5);
    EXPECT_EQ(played(3), 90);
    EXPECT_EQ(played(-2), -60);
}

TEST(CustomShape, AnInvisibleShapePlaysNothing) {
    ShapeStage stage;
    int played = 0;
    QObject::connect(stage.shape, &TZkShape::OnPlay, [&] { ++played; });
    stage.shape->SetVisible(false);
    EXPECT_EQ(stage.Play(), Calls{});
    EXPECT_EQ(played, 0);
}

TEST(CustomShape, AShapeWithoutACanvasDrawsNothing) {
    TZKOglShape lonely;
    int played = 0;
    QObject::connect(&lonely, &TZkShape::OnPlay, [&] { ++played; });
    lonely.Play();
    TZKOglScene scene;
    lonely.SetDisplayList(&scene);
    scene.Play();
    lonely.Play();
    EXPECT_EQ(played, 0);
    EXPECT_FALSE(lonely.checkCurrent());
    EXPECT_EQ(lonely.GetZkOglcanvas(), nullptr);
}

// The remainder of a turn about a point off the origin moves the shapes after it.
TEST(CustomShape, TheIncompleteUndoIsSeenByTheNextShape) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* turned = form.AddBox(scene, 0x00FF00, {1, 1, 1}, {0, 0, 0});
    form.AddBox(scene, 0x0000FF, {1, 1, 1}, {-3, -3, 0});
    turned->SetDrehgeradePkt("1/0/0");
    turned->Setdrehwinkel(180);
    // T(1) R T(-1) T(-1) R' T(1) moves by 4 along x
    form.canvas->Refresh();
    EXPECT_EQ(form.PixelAt({150 - 75 + 120, 150 + 75}), red);
    EXPECT_EQ(form.PixelAt({150 - 75, 150 + 75}), black);
}

TEST(CustomShape, ChangesRepaintOnceAndBracketsHoldThemBack) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.canvas->Refresh();
    form.TakeSwaps();
    const auto repaints = [&] {
        const bool recompiled = scene->IsCompiled();
        EXPECT_TRUE(recompiled);
        return form.TakeSwaps() / 2;
    };
    box->Settranslation({0, 0, 0});
    EXPECT_EQ(repaints(), 1);
    box->Setdrehwinkel(0);  // the same value, and yet
    EXPECT_EQ(repaints(), 1);
    box->SetDrehgeradePkt("0/0/0");
    EXPECT_EQ(repaints(), 1);
    box->SetDrehgeradeRichtung("0/0/1");
    EXPECT_EQ(repaints(), 1);
    box->SetScale(1);
    EXPECT_EQ(repaints(), 1);
    box->SetVisible(true);
    EXPECT_EQ(repaints(), 1);
    box->SetParentAttributes(false);
    EXPECT_EQ(repaints(), 0);
    box->SetParentAttributes(true);
    EXPECT_EQ(repaints(), 1);
    box->SetNohit(true);
    EXPECT_EQ(repaints(), 0);
    box->getAttributes()->getPolyStyle()->SetMode(glline);
    EXPECT_EQ(repaints(), 1);
    Tattributes source;
    source.getMaterial()->SetDiffuse(0x112233);
    source.getPolyStyle()->SetStyle(gltriangles);
    box->setAttributes(&source);
    EXPECT_EQ(repaints(), 1);
    EXPECT_EQ(box->getAttributes()->getMaterial()->GetDiffuse(), 0x112233U);
    EXPECT_EQ(box->getAttributes()->getPolyStyle()->GetStyle(), gltriangles) << "a shape takes the style over, too";
    box->setAttributes(nullptr);
    box->setAttributes(box->getAttributes());
    EXPECT_EQ(repaints(), 0);

    box->SetChanging(true);
    box->SetChanging(true);
    box->SetA(1);
    box->SetChanging(false);
    EXPECT_EQ(repaints(), 0);
    box->SetChanging(false);
    EXPECT_EQ(repaints(), 1);
}

TEST(CustomShape, AShapeThatIsLoadedInvalidatesNothing) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.canvas->Refresh();
    form.TakeSwaps();
    box->BeginLoading();
    box->SetA(7);
    box->Set_translation("1/1/1");
    EXPECT_EQ(form.TakeSwaps(), 0);
    EXPECT_TRUE(scene->IsCompiled());
    box->Loaded();
    box->SetA(8);
    EXPECT_EQ(form.TakeSwaps(), 2);
}

TEST(CustomShape, LeavingASceneRepaintsTheCanvas) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    ASSERT_EQ(form.PixelAt({150, 150}), red);
    box->SetDisplayList(nullptr);
    EXPECT_EQ(form.PixelAt({150, 150}), black);
    EXPECT_EQ(box->GetZkOglcanvas(), nullptr);
    box->SetDisplayList(scene);
    EXPECT_EQ(form.PixelAt({150, 150}), red);
    delete box;
    EXPECT_EQ(form.PixelAt({150, 150}), black);
    EXPECT_EQ(scene->GetShapeCount(), 0);
}

TEST(CustomShape, TextsSetOneHalfOfTheLine) {
    TZKOglBox box;
    box.SetDrehgeradePkt("1/2/3");
    EXPECT_EQ(box.GetDrehGerade(), (TGerade{{1, 2, 3}, {0, 0, 1}}));
    box.SetDrehgeradeRichtung("0/1/0");
    EXPECT_EQ(box.GetDrehGerade(), (TGerade{{1, 2, 3}, {0, 1, 0}}));
    EXPECT_THROW(box.Set_translation("1/2"), EConvertError);
    EXPECT_THROW(box.SetDrehgeradePkt("x/2/3"), EConvertError);
    EXPECT_THROW(box.SetDrehgeradeRichtung(""), EConvertError);
    EXPECT_EQ(box.Get_translation(), "0/0/0");
    EXPECT_EQ(box.GetDrehGerade(), (TGerade{{1, 2, 3}, {0, 1, 0}}));
}

TEST(CustomShape, PropertiesInTheirOrder) {
    TZKOglBox box;
    const QMetaObject& meta = TCustomShape::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names += meta.property(i).name();
    EXPECT_EQ(names, (QStringList{"Attributes", "Scene", "TransformBy", "RotateBy", "RotationPoint", "RotationLine",
                                  "Scale", "Visible", "ParentAttributes", "Nohit"}));
    EXPECT_EQ(box.property("TransformBy").toString(), "0/0/0");
    EXPECT_EQ(box.property("RotateBy").toDouble(), 0);
    EXPECT_EQ(box.property("RotationPoint").toString(), "0/0/0");
    EXPECT_EQ(box.property("RotationLine").toString(), "0/0/1");
    EXPECT_EQ(box.property("Scale").toDouble(), 1);
    EXPECT_TRUE(box.property("Visible").toBool());
    EXPECT_FALSE(box.property("ParentAttributes").toBool());
    EXPECT_FALSE(box.property("Nohit").toBool());
    EXPECT_EQ(box.property("Scene").value<TDisplayList*>(), nullptr);
    EXPECT_EQ(box.property("Attributes").value<Tattributes*>(), box.getAttributes());
    for (const char* name : {"TransformBy", "RotationPoint", "RotationLine"}) {
        ASSERT_TRUE(box.setProperty(name, "1/2.5/-3")) << name;
        EXPECT_EQ(box.property(name).toString(), "1/2.5/-3") << name;
    }
    for (const char* name : {"RotateBy", "Scale"}) {
        ASSERT_TRUE(box.setProperty(name, 12.5)) << name;
        EXPECT_EQ(box.property(name).toDouble(), 12.5) << name;
    }
}

// Normals stay at unit length: light depends neither on the zoom nor on a shape's scale.
TEST(CustomShape, ShadingDoesNotDependOnZoomOrScale) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0, {2, 2, 2}, {-1, -1, -1});
    Tmaterialkind kind = maNone;
    kind.Specular = 0;
    kind.Emission = 0;
    kind.Diffuse = 0x80C0FF;
    box->getAttributes()->getMaterial()->SetMAterialKind(kind);
    auto* light = new TZKOglLight(form.window.get());
    light->setattenuation(0);
    light->SetAmbient(0);
    light->SetPosition({0, 0, 1000});
    light->SetZkOglCanvas(form.canvas);
    light->SetEnabled(true);
    const QColor lit = form.PixelAt({150, 150});
    EXPECT_GT(lit.red(), 240);
    for (const double zoom : {0.25, 0.5, 2.0, 4.0}) {
        form.canvas->SetZoomFactor(zoom);
        EXPECT_EQ(form.PixelAt({150, 150}), lit) << zoom;
    }
    form.canvas->SetZoomFactor(1);
    for (const double scale : {0.3, 3.0}) {
        box->SetScale(scale);
        EXPECT_EQ(form.PixelAt({129, 171}), lit) << scale;
    }
}

TEST(CustomShape, MouseEventsCarryTheirArguments) {
    TZKOglBox box;
    QStringList told;
    const auto note = [&](const char* what, QObject* sender, int button, TShiftState shift, int x, int y) {
        EXPECT_EQ(sender, &box);
        told += QString("%1 %2 %3 %4 %5").arg(what).arg(button).arg(int(shift)).arg(x).arg(y);
    };
    QObject::connect(&box, &TCustomShape::OnMouseDown,
                     [&](QObject* s, Qt::MouseButton b, TShiftState h, int x, int y) { note("down", s, b, h, x, y); });
    QObject::connect(&box, &TCustomShape::OnMouseMove,
                     [&](QObject* s, TShiftState h, int x, int y) { note("move", s, 0, h, x, y); });
    QObject::connect(&box, &TCustomShape::OnMouseUp,
                     [&](QObject* s, Qt::MouseButton b, TShiftState h, int x, int y) { note("up", s, b, h, x, y); });
    box.MouseDown(Qt::RightButton, ssRight, 3, 4);
    box.MouseMove(ssCtrl, -1, 2);
    box.MouseUp(Qt::LeftButton, {}, 7, 8);
    EXPECT_EQ(told, (QStringList{"down 2 16 3 4", "move 0 4 -1 2", "up 1 0 7 8"}));
}

// As a form loader does it: every component is told that it is loaded from a form, gets its values in whatever order,
// and is told that all have theirs.
TEST(CustomShape, AFormOfAThousandComponentsRepaintsOnce) {
    for (const bool canvasFirst : {true, false}) {
        GlForm form;
        std::vector<TComponent*> components;
        const auto loading = [&components](auto* component) {
            component->BeginLoading();
            components.push_back(component);
            return component;
        };
        form.TakeSwaps();
        if (canvasFirst)
            loading(form.canvas);
        auto* scene = loading(new TZKOglScene(form.window.get()));
        for (int i = 0; i < 1000; ++i) {
            auto* box = loading(new TZKOglBox(form.window.get()));
            if (i % 2 == 0)
                box->SetDisplayList(scene);
            box->setProperty("TransformBy", QStringLiteral("%1/0/0").arg(i % 10 - 5));
            box->setProperty("A", 0.5);
            box->getAttributes()->getMaterial()->SetEmission(0x00FF00);
            box->setProperty("Scale", 1.5);
            if (i % 2 != 0)
                box->SetDisplayList(scene);
            if (i == 500) {
                if (!canvasFirst)
                    loading(form.canvas);
                scene->SetZkOglCanvas(form.canvas);
                auto* light = loading(new TZKOglLight(form.window.get()));
                light->SetZkOglCanvas(form.canvas);
                light->SetEnabled(true);
                light->setProperty("LightPosition", "1/2/3");
                form.canvas->setProperty("PointOfView", 20.0);
                form.canvas->setProperty("BackgroundColor", QColor(10, 20, 30));
                form.canvas->setProperty("UnitsPerCM", 25.0);
            }
        }
        EXPECT_EQ(form.TakeSwaps(), 0) << "nothing is shown before all is there";
        for (TComponent* component : components)
            component->Loaded();
        EXPECT_EQ(form.TakeSwaps(), 2) << "one repaint";
        EXPECT_TRUE(scene->IsCompiled());
        EXPECT_EQ(scene->GetShapeCount(), 1000);
    }
}
