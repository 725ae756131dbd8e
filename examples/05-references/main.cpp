// References: a flower has one petal, seen nine times, and a meadow one daisy, seen many times. What a reference shows
// is drawn where and how the reference stands, and when the original changes, so do all.

#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>

#include <QApplication>

using namespace zk;

namespace {

template <class Shape>
Shape* add(TZKOglScene* scene, TColor color) {
    auto* shape = new Shape(scene->GetZkOglCanvas());
    shape->SetDisplayList(scene);
    shape->getAttributes()->getMaterial()->SetMAterialKind(
        {.Ambient = (color & 0xFEFEFE) / 2, .Diffuse = color, .Translucent = 1});
    return shape;
}

TZKOglScene* makeDaisy(TZkOglCanvas* canvas, TColor color) {
    auto* daisy = new TZKOglScene(canvas);
    daisy->SetZkOglCanvas(canvas);
    auto* stem = add<TZKOglCylinder>(daisy, 0x408840);
    stem->SetBaseRadius(0.07);
    stem->SetTopRadius(0.07);
    stem->SetCylinderHeight(2);
    stem->SetDrehgeradeRichtung("1/0/0");
    stem->Setdrehwinkel(90);  // from along z to along -y
    auto* middle = add<TZKOglSphere>(daisy, 0x20B8F8);
    middle->SetR(0.3);
    middle->SetResolution(20);
    auto* petal = add<TZKOglSphere>(daisy, color);
    petal->SetR(0.22);
    petal->SetResolution(16);
    petal->Set_translation("0.5/0/0");
    for (int i = 1; i < 9; ++i) {
        auto* another = new TZKOglRefShape(canvas);
        another->SetReference(petal);
        another->Setdrehwinkel(40 * i);  // about the z axis
        another->SetDisplayList(daisy);
    }
    return daisy;
}

void plant(TZKOglScene* daisy, const TXYZ& at) {
    auto* another = new TZKOglRefScene(daisy->GetZkOglCanvas());
    another->SetReference(daisy);
    another->SetTranslation(at);
    another->SetZkOglCanvas(daisy->GetZkOglCanvas());
}

}  // namespace

void MakeReferences(TZkOglCanvas& canvas) {
    canvas.SetUnitsPerCm(36);
    canvas.SetBlickWinkel(22);
    canvas.SetBackgroundQColor("#B4DCF4");
    canvas.SetProjectionbase({{0, 1.2, 0}, {1, 0, 0}, {0, 0.92, -0.392}, {0, 0.392, 0.92}});
    auto* sun = new TZKOglLight(&canvas);
    sun->SetZkOglCanvas(&canvas);
    sun->SetLightPosition("-6/12/12");
    sun->setattenuation(0.1);
    sun->SetEnabled(true);

    auto* ground = new TZKOglScene(&canvas);
    ground->SetZkOglCanvas(&canvas);
    auto* grass = add<TZKOglBox>(ground, 0x58B068);
    grass->SetA(12);
    grass->SetB(0.2);
    grass->SetC(8);
    grass->Set_translation("-6/-0.2/-4");

    TZKOglScene* daisy = makeDaisy(&canvas, 0xF8F8F8);
    daisy->SetTranslation({0, 2, 1.5});
    for (const TXYZ& at : {TXYZ{-3.2, 2, -1.2}, TXYZ{-1.7, 2, 1}, TXYZ{1.5, 2, -2.4}, TXYZ{3.4, 2, 0.6}})
        plant(daisy, at);
    TZKOglScene* mauve = makeDaisy(&canvas, 0xC868B0);
    mauve->SetTranslation({1.8, 1.6, 1});
    for (const TXYZ& at : {TXYZ{-3, 1.5, 1.6}, TXYZ{-0.9, 1.7, -1.6}, TXYZ{3.6, 1.6, -2.2}})
        plant(mauve, at);
}

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.setWindowTitle("References");
    control.QWidget::resize(360, 270);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    MakeReferences(canvas);
    control.show();
    return QApplication::exec();
}
