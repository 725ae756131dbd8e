// User drawing: a shape whose picture the program makes itself, with OpenGL. It has a place, a material and mouse
// events like any other shape, and is called from a list until something changes: a click gives the knot another form.

#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools.h>

#include <QApplication>

#include <cmath>
#include <memory>
#include <numbers>

using namespace zk;

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;

// A line that winds about a ring, `turns` times while it goes round it twice.
TXYZ knot(double part, int turns) {
    const double along = 2 * fullTurn * part;
    const double around = turns * fullTurn * part;
    const double radius = 2.1 + 0.8 * std::cos(around);
    return {radius * std::cos(along), radius * std::sin(along), 0.8 * std::sin(around)};
}

// A ring of the tube about that line: its points from the middle, each of unit length.
TXYZ onTube(double part, double angle, int turns) {
    const TXYZ ahead = Normalize(Sub(knot(part + 0.001, turns), knot(part, turns)));
    const TXYZ side = Normalize(Vekt(ahead, {0, 0, 1}));
    const TXYZ up = Vekt(side, ahead);
    return Add(Mul(side, std::cos(angle)), Mul(up, std::sin(angle)));
}

void drawTube(int turns) {
    constexpr int rings = 240;
    constexpr int sides = 20;
    for (int i = 0; i < rings; ++i) {
        glBegin(GL_QUAD_STRIP);
        for (int j = 0; j <= sides; ++j) {
            for (const int ring : {i + 1, i}) {  // fronts are clockwise
                const double part = double(ring) / rings;
                const TXYZ normal = onTube(part, fullTurn * j / sides, turns);
                const TXYZ point = Add(knot(part, turns), Mul(normal, 0.45));
                glNormal3d(normal.x, normal.y, normal.z);
                glVertex3d(point.x, point.y, point.z);
            }
        }
        glEnd();
    }
}

}  // namespace

void MakeUserDrawing(TZkOglCanvas& canvas) {
    canvas.SetUnitsPerCm(40);
    canvas.SetBlickWinkel(16);
    canvas.SetBackgroundQColor("#202838");
    auto* light = new TZKOglLight(&canvas);
    light->SetZkOglCanvas(&canvas);
    light->SetLightPosition("-5/6/9");
    light->setattenuation(0.1);
    light->SetEnabled(true);
    auto* scene = new TZKOglScene(&canvas);
    scene->SetZkOglCanvas(&canvas);

    auto turns = std::make_shared<int>(3);
    auto* shape = new TZKOglShape(&canvas);
    shape->SetDisplayList(scene);
    shape->SetDrehgeradeRichtung("1/0.2/0");
    shape->Setdrehwinkel(-20);
    shape->getAttributes()->getMaterial()->SetMAterialKind(
        {.Ambient = 0x302818, .Diffuse = 0xC8A030, .Specular = 0xC0C0C0, .Shininess = 50, .Translucent = 1});
    QObject::connect(shape, &TZKOglShape::OnPlay, [turns] { drawTube(*turns); });
    QObject::connect(shape, &TZKOglShape::OnMouseDown, [=] {
        *turns = *turns == 3 ? 5 : 3;
        shape->Invalidate();
    });
}

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.setWindowTitle("Click the knot");
    control.QWidget::resize(340, 290);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    MakeUserDrawing(canvas);
    control.show();
    return QApplication::exec();
}
