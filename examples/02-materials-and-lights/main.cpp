// Materials and lights: five balls, each of another material, on a floor. A lamp hangs over them, a blue light comes
// from the right, and a spot draws its circle on the floor.

#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>

#include <QApplication>

using namespace zk;

namespace {

// A colour is 0xBBGGRR. `Ambient` is what a surface shows of the light that is everywhere, `Diffuse` of the light that
// falls on it, `Specular` of its mirror image, the smaller the greater `Shininess` (0 to 128) is. `Emission` needs no
// light.
constexpr Tmaterialkind chalk{.Ambient = 0x303438, .Diffuse = 0xD8E4F0, .Translucent = 1};
constexpr Tmaterialkind plastic{
    .Ambient = 0x101040, .Diffuse = 0x2828D0, .Specular = 0xC0C0C0, .Shininess = 60, .Translucent = 1};
constexpr Tmaterialkind gold{
    .Ambient = 0x103040, .Diffuse = 0x2080A0, .Specular = 0x60C8FF, .Shininess = 16, .Translucent = 1};
constexpr Tmaterialkind ember{.Ambient = 0x000020, .Diffuse = 0x103060, .Emission = 0x1060E0, .Translucent = 1};
constexpr Tmaterialkind glass{
    .Ambient = 0x403020, .Diffuse = 0xF0D0A0, .Specular = 0xFFFFFF, .Shininess = 100, .Translucent = 0.35};
constexpr Tmaterialkind slate{.Ambient = 0x282420, .Diffuse = 0x807870, .Translucent = 1};

void addLight(TZkOglCanvas& canvas, const QString& position, const QColor& color, double cutOff) {
    auto* light = new TZKOglLight(&canvas);
    light->SetZkOglCanvas(&canvas);
    light->SetLightPosition(position);
    light->setAmbientColor("#303030");
    light->setDiffuseColor(color);
    light->setSpecularColor(color);
    light->setattenuation(0.2);  // how soon it fades with the distance
    light->SetLightDirection("0/-1/0");
    light->SetSpotCutOff(cutOff);  // degrees from its direction to where the cone of light ends; 180 is no spot
    light->SetEnabled(true);
}

}  // namespace

void MakeMaterialsAndLights(TZkOglCanvas& canvas) {
    canvas.SetUnitsPerCm(44);
    canvas.SetBlickWinkel(18);  // degrees: in perspective
    // From above: the directions to the right, up and towards the viewer.
    canvas.SetProjectionbase({{0, -0.4, 0.6}, {1, 0, 0}, {0, 0.8, -0.6}, {0, 0.6, 0.8}});
    addLight(canvas, "-4/6/5", "#C0B8A8", 180);
    addLight(canvas, "8/3/2", "#204080", 180);
    addLight(canvas, "0/5/2.6", "#FFE0B0", 14);
    canvas.SetDefaultTriangleResolution(0.5);  // a spot is as round as the triangles are small
    canvas.SetBackgroundQColor("#181C24");

    auto* scene = new TZKOglScene(&canvas);
    scene->SetZkOglCanvas(&canvas);
    auto* floor = new TZKOglBox(&canvas);
    floor->SetDisplayList(scene);
    floor->SetA(11);
    floor->SetB(0.2);
    floor->SetC(6);
    floor->Set_translation("-5.5/-1.2/-2.5");
    floor->getAttributes()->getMaterial()->SetMAterialKind(slate);

    // The glass comes last: what shows through it has to be there before.
    double x = -4;
    for (const Tmaterialkind& material : {chalk, plastic, gold, ember, glass}) {
        auto* ball = new TZKOglSphere(&canvas);
        ball->SetDisplayList(scene);
        ball->SetR(0.9);
        ball->SetResolution(48);
        ball->Settranslation({x, -0.1, 0});
        ball->getAttributes()->getMaterial()->SetMAterialKind(material);
        x += 2;
    }
}

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.setWindowTitle("Materials and lights");
    control.QWidget::resize(560, 320);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    MakeMaterialsAndLights(canvas);
    control.show();
    return QApplication::exec();
}
