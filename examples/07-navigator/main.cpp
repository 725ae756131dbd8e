// The navigator: a panel whose cube turns the view of a canvas, by dragging it or with the arrow keys. A right click
// has the plan and the elevation.

#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>

#include <QApplication>
#include <QHBoxLayout>

using namespace zk;

namespace {

void color(TCustomShape* shape, TColor diffuse) {
    shape->getAttributes()->getMaterial()->SetMAterialKind(
        {.Ambient = (diffuse & 0xFCFCFC) / 4, .Diffuse = diffuse, .Translucent = 1});
}

void addBox(TZKOglScene* castle, const TXYZ& at, const TXYZ& size, TColor diffuse) {
    auto* box = new TZKOglBox(castle);
    box->SetDisplayList(castle);
    box->SetA(size.x);
    box->SetB(size.y);
    box->SetC(size.z);
    box->Settranslation(at);
    color(box, diffuse);
}

void addRound(TZKOglScene* castle, const TXYZ& at, double base, double top, double height, TColor diffuse) {
    auto* cylinder = new TZKOglCylinder(castle);
    cylinder->SetDisplayList(castle);
    cylinder->SetBaseRadius(base);
    cylinder->SetTopRadius(top);
    cylinder->SetCylinderHeight(height);
    cylinder->SetResolution(32);
    cylinder->SetDrehgeradeRichtung("1/0/0");
    cylinder->Setdrehwinkel(-90);  // from along z to along y
    cylinder->Settranslation(at);
    color(cylinder, diffuse);
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle("The navigator");
    window.resize(600, 360);
    auto* control = new TZKOglControl;
    auto* navigator = new TZKOglNav;
    auto* row = new QHBoxLayout(&window);
    row->addWidget(control, 1);
    row->addWidget(navigator, 0, Qt::AlignTop);

    auto* canvas = new TZkOglCanvas(&window);
    canvas->SetWinControl(control);
    canvas->SetUnitsPerCm(44);
    canvas->SetBlickWinkel(18);
    canvas->SetBackgroundQColor("#B8D4E8");
    canvas->SetProjectionbase({{0, 0, 0}, {0.8, 0, -0.6}, {-0.252, 0.9075, -0.336}, {0.5445, 0.42, 0.726}});
    auto* sun = new TZKOglLight(&window);
    sun->SetZkOglCanvas(canvas);
    sun->SetLightPosition("-4/10/14");
    sun->setattenuation(0.08);
    sun->SetEnabled(true);

    auto* castle = new TZKOglScene(&window);
    castle->SetZkOglCanvas(canvas);
    castle->SetTranslation({0, -1, 0});
    addBox(castle, {-3, -0.2, -3}, {6, 0.2, 6}, 0x60A860);
    for (const double x : {-1.8, 1.8}) {
        for (const double z : {-1.8, 1.8}) {
            addRound(castle, {x, 0, z}, 0.5, 0.5, 2, 0xB8C8D8);
            addRound(castle, {x, 2, z}, 0.65, 0, 1, 0x4050C8);
        }
        addBox(castle, {x - 0.1, 0, -1.8}, {0.2, 1.2, 3.6}, 0xA8B8C8);
        addBox(castle, {-1.8, 0, x - 0.1}, {3.6, 1.2, 0.2}, 0xA8B8C8);
    }
    addBox(castle, {-0.7, 0, -0.7}, {1.4, 2.2, 1.4}, 0xA0C0D8);
    addRound(castle, {0, 2.2, 0}, 1.1, 0, 1.2, 0xA06048);
    addBox(castle, {-0.35, 0, 1.86}, {0.7, 0.9, 0.06}, 0x305078);

    navigator->DblClick();              // puts the cube into the middle
    navigator->SetZkOglCanvas(canvas);  // its cube takes the view that the canvas has

    window.show();
    return QApplication::exec();
}
