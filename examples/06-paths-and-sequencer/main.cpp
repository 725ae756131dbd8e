// Paths and sequencer: a ball runs along a path, and lamps go on and off, each by a timer of its own, on one clock.

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>

#include <QApplication>

#include <cmath>
#include <numbers>

using namespace zk;

namespace {

constexpr int lampCount = 12;
constexpr TColor dark = 0x485868;
constexpr TColor bright = 0x40C8FF;

TXYZ onCircle(double radius, double height, double part) {
    const double angle = 2 * std::numbers::pi * part;
    return {radius * std::sin(angle), height, radius * std::cos(angle)};
}

TZKOglSphere* addBall(TZKOglScene& scene, double radius, TColor diffuse) {
    auto* ball = new TZKOglSphere(&scene);
    ball->SetDisplayList(&scene);
    ball->SetR(radius);
    ball->SetResolution(24);
    ball->getAttributes()->getMaterial()->SetMAterialKind(
        {.Ambient = 0x202020, .Diffuse = diffuse, .Specular = 0x606060, .Shininess = 30, .Translucent = 1});
    return ball;
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.setWindowTitle("Paths and sequencer");
    control.QWidget::resize(480, 360);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    canvas.SetUnitsPerCm(44);
    canvas.SetBlickWinkel(20);
    canvas.SetBackgroundQColor("#1C2838");
    canvas.SetProjectionbase({{0, 0.4, 0}, {1, 0, 0}, {0, 0.84, -0.5426}, {0, 0.5426, 0.84}});
    TZKOglLight light;
    light.SetZkOglCanvas(&canvas);
    light.SetLightPosition("-4/8/6");
    light.setattenuation(0.1);
    light.SetEnabled(true);
    TZKOglScene scene(&control);
    scene.SetZkOglCanvas(&canvas);

    TZKOglBox floor;
    floor.SetDisplayList(&scene);
    floor.SetA(10);
    floor.SetB(0.2);
    floor.SetC(9);
    floor.Set_translation("-5/-0.5/-4.5");
    floor.getAttributes()->getMaterial()->SetMAterialKind({.Ambient = 0x181410, .Diffuse = 0x605040, .Translucent = 1});

    // A path in waves, closed: the last point is the first. On each tick the ball goes where the path is then.
    TZKOglSphere* runner = addBall(scene, 0.55, 0x4A62E8);
    TZKOglWay way(&control);
    QStringList points;
    for (int i = 0; i <= 72; ++i)
        points += xyztoStr(onCircle(2.6, 1 + 0.6 * std::sin(2 * std::numbers::pi * i / 24), i / 72.0));
    for (const QString& point : points) {
        TZKOglSphere* dot = addBall(scene, 0.06, 0xB09070);
        dot->SetResolution(8);
        dot->Set_translation(point);
    }
    way.SetData(points);
    way.SetTimerDelay(40);  // milliseconds
    way.SetHowLong(6000);   // for once round
    runner->Settranslation(way.GetActualPosition());
    QObject::connect(&way, &TZKOglWay::OnTimer, [&] { runner->Settranslation(way.GetActualPosition()); });
    way.SetActive(true);

    // Each lamp's timer counts the ticks of the sequencer: it waits for its turn, and then for once round.
    TZkOglSequencer sequencer(&control);
    sequencer.SetInterval(160);
    TZKOglSphere* lit = nullptr;
    for (int i = 0; i < lampCount; ++i) {
        TZKOglSphere* lamp = addBall(scene, 0.3, dark);
        lamp->Settranslation(onCircle(3.8, 0, double(i) / lampCount));
        auto* timer = new TZkOglTimer(&control);
        timer->SetDisplacement(i);
        timer->SetIntervals(lampCount);
        timer->SetEnabled(true);
        timer->SetSequencer(&sequencer);
        QObject::connect(timer, &TZkOglTimer::Ontimer, [&lit, &canvas, lamp] {
            const ChangeBracket bracket(&canvas);  // one repaint for both
            if (lit)
                lit->getAttributes()->getMaterial()->SetEmission(0);
            lit = lamp;
            lit->getAttributes()->getMaterial()->SetEmission(bright);
        });
    }

    control.show();
    return QApplication::exec();
}
