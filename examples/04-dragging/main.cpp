// Picking and dragging: whenever the mouse does something the canvas knows which shapes lie under the pointer. The one
// that is pressed glows, and follows the pointer over the floor.

#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>

#include <QApplication>
#include <QPointer>

#include <memory>

using namespace zk;

namespace {

struct Grip {
    QPointer<TCustomShape> shape;
    TXYZ at;  // where on the floor it was taken last
};

// Where the sight through a pixel meets the floor.
TXYZ onFloor(const TZkOglCanvas& canvas, int x, int y) {
    const TXY seen = canvas.GetProjectionKoord({x, y});
    return canvas.Projection(BaseGetAbs(canvas.GetprojectionBAse(), seen.x, seen.y, 0), {{0, 0, 0}, {0, 1, 0}});
}

void glow(TCustomShape* shape, TColor color) {
    if (shape)
        shape->getAttributes()->getMaterial()->SetEmission(color);
}

}  // namespace

void MakeDragging(TZkOglCanvas& canvas) {
    canvas.SetUnitsPerCm(44);
    canvas.SetBlickWinkel(20);
    canvas.SetBackgroundQColor("#262E3A");
    canvas.SetProjectionbase({{0, 0, 0}, {1, 0, 0}, {0, 0.8, -0.6}, {0, 0.6, 0.8}});
    auto* light = new TZKOglLight(&canvas);
    light->SetZkOglCanvas(&canvas);
    light->SetLightPosition("-4/9/5");
    light->setattenuation(0.1);
    light->SetEnabled(true);
    auto* scene = new TZKOglScene(&canvas);
    scene->SetZkOglCanvas(&canvas);

    const auto add = [scene](TCustomShape* shape, const TXYZ& at, TColor color) {
        shape->SetDisplayList(scene);
        shape->Settranslation(at);
        shape->getAttributes()->getMaterial()->SetMAterialKind(
            {.Ambient = 0x303030, .Diffuse = color, .Translucent = 1});
    };
    auto* floor = new TZKOglBox(&canvas);
    floor->SetA(9);
    floor->SetB(0.2);
    floor->SetC(7);
    floor->SetNohit(true);  // the mouse does not meet it
    add(floor, {-4.5, -0.2, -3.5}, 0x706050);
    auto* brick = new TZKOglBox(&canvas);
    brick->SetA(1.8);
    brick->SetC(0.9);
    add(brick, {-3.2, 0, -0.6}, 0x4A62E8);
    auto* ball = new TZKOglSphere(&canvas);
    ball->SetR(0.8);
    ball->SetResolution(32);
    add(ball, {0.2, 0.8, 1.4}, 0x3CB0F2);
    auto* cone = new TZKOglCylinder(&canvas);
    cone->SetBaseRadius(0.9);
    cone->SetResolution(40);
    cone->SetDrehgeradeRichtung("1/0/0");
    cone->Setdrehwinkel(-90);  // from along z to along y
    add(cone, {2.4, 0, -1}, 0x62B858);

    auto* control = qobject_cast<TZKOglControl*>(canvas.GetWinControl());
    auto grip = std::make_shared<Grip>();
    QObject::connect(control, &TZKOglControl::OnMouseDown, &canvas, [=, &canvas](QObject*, auto, auto, int x, int y) {
        if (canvas.Hits().empty())
            return;
        // Of what lies under the pointer the farthest comes first; the last is what one sees.
        grip->shape = dynamic_cast<TCustomShape*>(HitTarget::Of(canvas.Hits().back().HitObject));
        grip->at = onFloor(canvas, x, y);
        glow(grip->shape, 0x303030);
    });
    QObject::connect(control, &TZKOglControl::OnMouseMove, &canvas, [=, &canvas](QObject*, auto, int x, int y) {
        if (!grip->shape)
            return;
        const TXYZ now = onFloor(canvas, x, y);
        grip->shape->Settranslation(Add(grip->shape->GetTranslation(), Sub(now, grip->at)));
        grip->at = now;
    });
    QObject::connect(control, &TZKOglControl::OnMouseUp, &canvas, [=] {
        glow(grip->shape, 0);
        grip->shape = nullptr;
    });
}

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.setWindowTitle("Drag the pieces");
    control.QWidget::resize(480, 360);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    MakeDragging(canvas);
    control.show();
    return QApplication::exec();
}
