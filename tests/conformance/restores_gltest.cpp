// What each public operation leaves changed in OpenGL: what it is for, and nothing besides. And no error is pending
// after any of them.
#include "glform.h"
#include "glstate.h"
#include "picturefiles.h"
#include "tables.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkxyarrays.h>

#include <functional>

using namespace zk;
using namespace zk::test;

namespace {

/// What is drawn changes the pixels, and the last vertex's normal and place in the texture.
const QStringList drawing{"colors of the pixels", "depths of the pixels", "GL_CURRENT_NORMAL",
                          "GL_CURRENT_TEXTURE_COORDS"};
/// A repaint is told of; the background is cleared with its colour.
const QStringList repaint{"colors of the pixels", "depths of the pixels", "GL_CURRENT_NORMAL",
                          "GL_CURRENT_TEXTURE_COORDS", "GL_COLOR_CLEAR_VALUE"};
const QStringList modelView{"GL_MODELVIEW_MATRIX"};

struct Operation {
    const char* name;
    std::function<void(TZkOglCanvas& canvas)> run;
    QStringList changes;
};

/// A square with a hole.
void drawFace(TZkOglCanvas& canvas) {
    TlistOFxyzArray list;
    for (const double size : {2.0, 1.0}) {
        TXYZARRAY& outline = *list.AddArray();
        for (const TXYZ& corner : {TXYZ{0, 0, 0}, TXYZ{size, 0, 0}, TXYZ{size, size, 0}, TXYZ{0, size, 0}})
            ArrayAppendData(outline, &corner);
    }
    canvas.PolyPolyline3D(list);
}

const std::vector<Operation>& operations() {
    static const QStringList view = modelView + repaint + QStringList{"GL_PROJECTION_MATRIX"};
    static const std::vector<Operation> all{
        // drawing
        {"PolyPolyline3D", drawFace, drawing},
        {"Sphere", [](TZkOglCanvas& c) { c.Sphere(1, 8); }, drawing},
        {"Sphere of nothing", [](TZkOglCanvas& c) { c.Sphere(-1, 0); }, drawing},
        {"Cylinder", [](TZkOglCanvas& c) { c.Cylinder(1, 0.5, 2, 8, 3); }, drawing},
        {"Cylinder of nothing", [](TZkOglCanvas& c) { c.Cylinder(-1, -1, -1, -8, -3); }, drawing},
        {"Disk", [](TZkOglCanvas& c) { c.Disk(0.5, 1, 8, 2); }, drawing},
        {"PartialDisk", [](TZkOglCanvas& c) { c.PartialDisk(0, 1, 8, 2, 10, 200); }, drawing},
        {"DrawOrg", [](TZkOglCanvas& c) { c.DrawOrg(); }, repaint},
        {"DrawLights", [](TZkOglCanvas& c) { c.DrawLights(); }, repaint},
        {"Refresh", [](TZkOglCanvas& c) { c.Refresh(); }, repaint},
        {"BeginPaint and EndPaint",
         [](TZkOglCanvas& c) {
             c.BeginPaint();
             c.EndPaint();
         },
         repaint},
        {"Picture",
         [](TZkOglCanvas& c) {
             c.Picture({40, 30}, 2);
         },
         repaint},
        {"SetHit", [](TZkOglCanvas& c) { c.SetHit(3); }, {}},
        // picking
        {"Select", [](TZkOglCanvas& c) { c.Select(50, 50); }, {}},
        {"SelectAt",
         [](TZkOglCanvas& c) {
             c.SelectAt({50.5, 49.5});
         },
         {}},
        {"InsideOf",
         [](TZkOglCanvas& c) {
             c.InsideOf({0.5, 0.5, 0.5});
         },
         {"GL_CURRENT_TEXTURE_COORDS", "clip plane"}},
        {"Bulleye and Select",
         [](TZkOglCanvas& c) {
             c.Bulleye(50, 50, 0.5);
             c.Select(50, 50);
             c.Refresh();
         },
         repaint + QStringList{"clip plane"}},
        // single states
        {"EnableClipplane",
         [](TZkOglCanvas& c) {
             c.EnableClipplane(4, {0, 0, 1}, {0, 0, -1});
         },
         {"clip plane 4", "GL_CLIP_PLANE4 enabled"}},
        {"DisableClipplane", [](TZkOglCanvas& c) { c.DisableClipplane(-1); }, {"GL_CLIP_PLANE"}},
        {"SetClockWise", [](TZkOglCanvas& c) { c.SetClockWise(!c.GetClockWise()); }, {"GL_FRONT_FACE"}},
        {"SetTriangleResolution", [](TZkOglCanvas& c) { c.SetTriangleResolution(3); }, {}},
        {"SetTranslucent", [](TZkOglCanvas& c) { c.SetTranslucent(0.5); }, {}},
        {"SetLightModelTwoSided", [](TZkOglCanvas& c) { c.SetLightModelTwoSided(true); },
         repaint + QStringList{"GL_LIGHT_MODEL_TWO_SIDE"}},
        {"SetColor", [](TZkOglCanvas& c) { c.SetColor(0x404040); }, repaint},
        {"SetmatrixMode", [](TZkOglCanvas& c) { c.SetmatrixMode(GL_TEXTURE); }, {"GL_MATRIX_MODE"}},
        {"SetRenderMode", [](TZkOglCanvas& c) { c.SetRenderMode(GL_RENDER); }, {}},
        {"SetViewport",
         [](TZkOglCanvas& c) {
             c.SetViewport({0, 0, 50, 50});
         },
         {"GL_VIEWPORT", "of the pixels"}},
        {"SetStdViewport", [](TZkOglCanvas& c) { c.SetStdViewport(80, 60); },
         modelView + repaint + QStringList{"GL_VIEWPORT", "light"}},
        // viewing
        {"SetprojectionMode",
         [](TZkOglCanvas& c) { c.SetprojectionMode(c.GetBlickwinkel() == 0 ? 0 : 1); },
         {"GL_PROJECTION_MATRIX"}},
        {"Frustum", [](TZkOglCanvas& c) { c.Frustum(-1, 1, -1, 1, 1, 10); }, {"GL_PROJECTION_MATRIX"}},
        {"SetBlickWinkel", [](TZkOglCanvas& c) { c.SetBlickWinkel(25); }, view + QStringList{"light"}},
        {"SetBlickWinkelOld", [](TZkOglCanvas& c) { c.SetBlickWinkelOld(c.GetBlickwinkel()); }, view},
        {"SetUnitsPerCm", [](TZkOglCanvas& c) { c.SetUnitsPerCm(20); }, modelView + repaint + QStringList{"light"}},
        {"SetZoomFactor", [](TZkOglCanvas& c) { c.SetZoomFactor(2); }, modelView + repaint + QStringList{"light"}},
        {"SetDefaultUnitsPerCM", [](TZkOglCanvas& c) { c.SetDefaultUnitsPerCM(20); }, repaint},
        {"SetTextureScale",
         [](TZkOglCanvas& c) {
             c.SetTextureScale({2, 2, 2});
         },
         {"GL_TEXTURE_MATRIX"}},
        {"SetOglModelMatrix", [](TZkOglCanvas& c) { c.SetOglModelMatrix(Identity); }, modelView},
        {"SetModelMatrix", [](TZkOglCanvas& c) { c.SetModelMatrix(Identity); }, modelView},
        {"OGLTranslate",
         [](TZkOglCanvas& c) {
             c.OGLTranslate({1, 2, 3});
         },
         modelView},
        {"SetProjectionbase",
         [](TZkOglCanvas& c) {
             c.SetProjectionbase({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}});
         },
         modelView + repaint + QStringList{"light"}},
        {"SetTranslation",
         [](TZkOglCanvas& c) {
             c.SetTranslation({1, 2, 3});
         },
         modelView + repaint + QStringList{"light"}},
        {"Setdrehwinkel", [](TZkOglCanvas& c) { c.Setdrehwinkel(30); }, modelView + repaint + QStringList{"light"}},
        {"SetDrehGerade",
         [](TZkOglCanvas& c) {
             c.SetDrehGerade({{1, 0, 0}, {0, 1, 0}});
         },
         modelView + repaint + QStringList{"light"}},
        // lights
        {"CheckLightHandle", [](TZkOglCanvas& c) { c.CheckLightHandle(); }, repaint},
        {"a light's colour", [](TZkOglCanvas& c) { c.getLights()->getLights(0)->SetAmbient(0x123456); },
         repaint + QStringList{"light 0 GL_AMBIENT"}},
        {"a light's place",
         [](TZkOglCanvas& c) {
             c.getLights()->getLights(0)->SetPosition({1, 2, 3});
         },
         repaint + QStringList{"light 0 GL_POSITION"}},
        {"a light's direction",
         [](TZkOglCanvas& c) {
             c.getLights()->getLights(0)->SetDirection({1, 2, 3});
         },
         repaint + QStringList{"light 0 GL_SPOT_DIRECTION"}},
        {"a spot", [](TZkOglCanvas& c) { c.getLights()->getLights(0)->SetSpotCutOff(30); },
         repaint + QStringList{"light 0 GL_SPOT_CUTOFF"}},
        {"a light that goes out", [](TZkOglCanvas& c) { c.getLights()->getLights(0)->SetEnabled(false); },
         repaint + QStringList{"light 0 enabled"}},
        // scenes
        {"Changed", [](TZkOglCanvas& c) { c.Scenes()[0]->Changed(nullptr); }, repaint},
        {"DoUpdateNow", [](TZkOglCanvas& c) { c.Scenes()[0]->DoUpdateNow(); }, repaint},
        {"a hidden scene", [](TZkOglCanvas& c) { c.Scenes()[0]->SetVisible(false); }, repaint},
        {"a moved scene",
         [](TZkOglCanvas& c) {
             c.Scenes()[0]->SetTranslation({1, 2, 3});
         },
         repaint},
        {"Play", [](TZkOglCanvas& c) { c.Scenes()[0]->Play(); }, drawing},
        {"Play, compiling",
         [](TZkOglCanvas& c) {
             c.Scenes()[0]->Invalidate();
             c.Scenes()[0]->Play();
         },
         drawing},
        {"a scene that leaves", [](TZkOglCanvas& c) { c.Scenes()[0]->SetZkOglCanvas(nullptr); }, {}},
        {"a shape that leaves",
         [](TZkOglCanvas& c) { static_cast<TCustomShape*>(c.Scenes()[0]->GetZkShape(0))->SetDisplayList(nullptr); },
         repaint},
    };
    return all;
}

/// A canvas with a light and a shape of every kind, with and without a picture.
struct Stage {
    explicit Stage(double angle) : form({100, 100}) {
        const QString picture = files.Write("wall.bmp", Bmp(Gradient({8, 8})));
        form.canvas->SetChanging(true);
        form.canvas->SetBlickWinkel(angle);
        light.SetZkOglCanvas(form.canvas);
        light.SetEnabled(true);
        scene = form.AddScene();
        QObject* owner = form.window.get();
        shapes = {new TZKOglBox(owner),   new TZKOglSphere(owner), new TZKOglCylinder(owner),
                  new TZKOglPlane(owner), new TZKOglShape(owner),  new TZKOglRefShape(owner)};
        static_cast<TZKOglPlane*>(shapes[3])->SetData({"0/0/0", "1/0/0", "1/1/0", "", "0/0/1", "1/0/1", "0/1/1"});
        QObject::connect(shapes[4], &TZkShape::OnPlay, owner, [this] { form.canvas->Disk(0, 1, 8, 2); });
        static_cast<TZKOglRefShape*>(shapes[5])->SetReference(shapes[0]);
        for (TCustomShape* shape : shapes) {
            shape->SetDisplayList(scene);
            shape->Settranslation({0.25, 0.5, 0.75});
        }
        shapes[0]->getAttributes()->getTexture()->SetPicture(picture);
        shapes[0]->getAttributes()->getTexture()->SetVisible(true);
        shapes[0]->SetScale(1.5);
        shapes[1]->SetParentAttributes(true);
        shapes[2]->getAttributes()->getPolyStyle()->SetMode(glline);
        form.canvas->SetChanging(false);
        form.canvas->CheckCurrent();
    }

    Files files;
    GlForm form;
    TZKOglLight light;
    TZKOglScene* scene = nullptr;
    std::vector<TCustomShape*> shapes;
};

/// The lines of a difference that are not among what may change.
std::string unexpected(const GlState& before, const QStringList& mayChange) {
    QString rest;
    for (const QString& line : QString::fromStdString(Difference(before, CurrentGlState())).split(u'\n')) {
        bool allowed = line.isEmpty();
        for (const QString& name : mayChange)
            allowed = allowed || line.section(u':', 0, 0).contains(name);
        if (!allowed)
            rest += line + u'\n';
    }
    return rest.toStdString();
}

}  // namespace

class Restores : public testing::TestWithParam<std::size_t> {};

TEST_P(Restores, AllButWhatItIsFor) {
    const Operation& operation = operations()[GetParam()];
    Count("operations", "operation");
    // Whatever matrix a program works on besides.
    for (const auto& [angle, mode] : {std::pair(0.0, GL_PROJECTION), std::pair(20.0, GL_TEXTURE)}) {
        Stage stage(angle);
        TZkOglCanvas& canvas = *stage.form.canvas;
        canvas.SetmatrixMode(mode);
        const GlState before = CurrentGlState();
        operation.run(canvas);
        canvas.CheckCurrent();
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << operation.name;
        EXPECT_EQ(unexpected(before, operation.changes), "")
            << operation.name << ", angle " << angle << ", matrix mode " << mode;
        canvas.SetmatrixMode(GL_MODELVIEW);
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, Restores, testing::Range(std::size_t(0), operations().size()),
                         [](const testing::TestParamInfo<std::size_t>& index) {
                             return TestName(operations()[index.param].name);
                         });

// A shape that is turned about a point off the origin leaves a remainder in the matrix; all others leave it as it was.
// (A scale is undone by the canvas within a repaint only: the scenes above have one.)
TEST(RestoresShapes, WhatTheyPlayWith) {
    Stage stage(0);
    stage.shapes[0]->SetScale(1);
    stage.form.canvas->SetHit(1);
    const auto looks = {0, 1, 2, 3};
    for (TCustomShape* shape : stage.shapes)
        for (const int look : looks) {
            Count("shapes", shape->metaObject()->className());
            stage.form.canvas->SetChanging(true);  // what follows is played once, by hand
            shape->Setdrehwinkel(look == 1 ? 30 : 0);
            shape->SetNohit(look == 2);
            shape->SetVisible(look != 3);
            const GlState before = CurrentGlState();
            const Tmatrix matrix = stage.form.canvas->GetOglModelMatrix();
            shape->Play();
            EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
            // How polygons are rasterised is set by whoever draws next; steps and their undoing leave the last digits
            // of the matrix.
            EXPECT_EQ(unexpected(before, drawing + modelView + QStringList{"GL_POLYGON_MODE"}), "")
                << shape->metaObject()->className() << " " << look;
            const Tmatrix now = stage.form.canvas->GetOglModelMatrix();
            for (std::size_t i = 0; i < 16; ++i)
                EXPECT_NEAR(now[i / 4][i % 4], matrix[i / 4][i % 4], 1e-6);
            stage.form.canvas->SetModelMatrix(Identity);
            stage.form.canvas->SetChanging(false);
        }
}
