// Picking and dragging: the shape under the pointer gets the mouse's events. The one that is pressed glows and follows
// the pointer over the floor.

#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>

#include <QApplication>

using namespace zk;

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.setWindowTitle("Drag the pieces");
    control.QWidget::resize(480, 360);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    canvas.SetUnitsPerCm(44);
    canvas.SetBlickWinkel(20);
    canvas.SetBackgroundQColor("#262E3A");
    canvas.SetProjectionbase({{0, 0, 0}, {1, 0, 0}, {0, 0.8, -0.6}, {0, 0.6, 0.8}});
    TZKOglLight light;
    light.SetZkOglCanvas(&canvas);
    light.SetLightPosition("-4/9/5");
    light.setattenuation(0.1);
    light.SetEnabled(true);
    TZKOglScene scene;
    scene.SetZkOglCanvas(&canvas);

    // Where the sight through a pixel meets the floor.
    const auto onFloor = [&canvas](int x, int y) {
        const TXY seen = canvas.GetProjectionKoord({x, y});
        return canvas.Projection(BaseGetAbs(canvas.GetprojectionBAse(), seen.x, seen.y, 0), {{0, 0, 0}, {0, 1, 0}});
    };
    TCustomShape* dragged = nullptr;
    TXYZ grip;  // where on the floor it was taken last

    const auto add = [&](TCustomShape* shape, const TXYZ& at, TColor color) {
        shape->SetDisplayList(&scene);
        shape->Settranslation(at);
        Tmaterial* material = shape->getAttributes()->getMaterial();
        material->SetMAterialKind({.Ambient = 0x303030, .Diffuse = color, .Translucent = 1});
        QObject::connect(shape, &TCustomShape::OnMouseDown,
                         [&, shape, material](QObject*, Qt::MouseButton, TShiftState, int x, int y) {
                             dragged = shape;
                             grip = onFloor(x, y);
                             material->SetEmission(0x303030);
                         });
    };
    TZKOglBox floor;
    floor.SetA(9);
    floor.SetB(0.2);
    floor.SetC(7);
    floor.SetNohit(true);  // the mouse does not meet it
    add(&floor, {-4.5, -0.2, -3.5}, 0x706050);
    TZKOglBox brick;
    brick.SetA(1.8);
    brick.SetC(0.9);
    add(&brick, {-3.2, 0, -0.6}, 0x4A62E8);
    TZKOglSphere ball;
    ball.SetR(0.8);
    ball.SetResolution(32);
    add(&ball, {0.2, 0.8, 1.4}, 0x3CB0F2);
    TZKOglCylinder cone;
    cone.SetBaseRadius(0.9);
    cone.SetResolution(40);
    cone.SetDrehgeradeRichtung("1/0/0");
    cone.Setdrehwinkel(-90);  // from along z to along y
    add(&cone, {2.4, 0, -1}, 0x62B858);

    QObject::connect(&control, &TZKOglControl::OnMouseMove, [&](QObject*, TShiftState, int x, int y) {
        if (!dragged)
            return;
        const TXYZ now = onFloor(x, y);
        dragged->Settranslation(Add(dragged->GetTranslation(), Sub(now, grip)));
        grip = now;
    });
    QObject::connect(&control, &TZKOglControl::OnMouseUp, [&] {
        if (dragged)
            dragged->getAttributes()->getMaterial()->SetEmission(0);
        dragged = nullptr;
    });

    control.show();
    return QApplication::exec();
}
