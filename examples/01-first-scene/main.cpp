// A first scene: a ball and a box under a light. The control is the widget, the canvas draws into it what stands in its
// scenes.

#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>

#include <QApplication>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    zk::TZKOglControl control;
    zk::TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    canvas.SetUnitsPerCm(80);  // pixels to a centimetre
    canvas.SetBackgroundQColor("#1C2C48");

    zk::TZKOglLight light;
    light.SetZkOglCanvas(&canvas);
    light.SetLightPosition("-3/4/6");  // x to the right, y up, z towards you: centimetres
    light.setattenuation(0.1);         // how soon it fades
    light.SetEnabled(true);

    zk::TZKOglScene scene;
    scene.SetZkOglCanvas(&canvas);
    zk::TZKOglSphere ball;
    ball.SetDisplayList(&scene);
    ball.SetResolution(40);
    ball.Set_translation("-1.2/0/0");
    ball.getAttributes()->getMaterial()->SetMAterialKind(
        {.Ambient = 0x203060, .Diffuse = 0x50A0FF, .Specular = 0x808080, .Shininess = 30, .Translucent = 1});
    zk::TZKOglBox box;
    box.SetDisplayList(&scene);
    box.Set_translation("0.6/-0.8/0");
    box.SetDrehgeradeRichtung("1/1/0");
    box.Setdrehwinkel(40);  // degrees
    box.getAttributes()->getMaterial()->SetMAterialKind({.Ambient = 0x403010, .Diffuse = 0xE0A030, .Translucent = 1});

    control.QWidget::resize(480, 360);
    control.show();
    return QApplication::exec();
}
