// Textures: pictures on shapes. These are painted by the program; SetPicture takes the name of a picture file as well.

#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>

#include <QApplication>
#include <QPainter>

using namespace zk;

namespace {

// The rows of a square picture run upwards on a shape.
QImage bricks() {
    QImage picture(128, 128, QImage::Format_RGB32);
    picture.fill("#C8BCA8");
    QPainter painter(&picture);
    for (int row = 0; row < 4; ++row)
        for (int i = -1; i < 2; ++i)
            painter.fillRect(32 * row + 2, 64 * i + row % 2 * 32 + 2, 28, 60, "#B86450");
    return picture;
}

QImage beachBall() {
    QImage picture(256, 256, QImage::Format_RGB32);
    QPainter painter(&picture);
    for (int i = 0; i < 8; ++i)
        painter.fillRect(0, 32 * i, 256, 32, i % 2 ? QColor("white") : QColor::fromHsv(90 * (i / 2), 210, 240));
    return picture;
}

QImage chessboard() {
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill("#E8E0D0");
    QPainter painter(&picture);
    painter.fillRect(0, 0, 32, 32, "#507090");
    painter.fillRect(32, 32, 32, 32, "#507090");
    return picture;
}

void cover(TCustomShape* shape, const QString& picture, double width, double height) {
    shape->getAttributes()->getMaterial()->SetMAterialKind(
        {.Ambient = 0x606060, .Diffuse = 0xFFFFFF, .Translucent = 1});
    TTexture* texture = shape->getAttributes()->getTexture();
    texture->SetPicture(picture);
    texture->SetWorldWidth(width);  // of one repetition, in centimetres
    texture->SetWorldheight(height);
    texture->SetFilter(gllinear);
    texture->SetVisible(true);
}

}  // namespace

void MakeTextures(TZkOglCanvas& canvas) {
    canvas.SetUnitsPerCm(50);
    canvas.SetBlickWinkel(20);
    canvas.SetBackgroundQColor("#BCD8EC");
    canvas.SetProjectionbase({{0, 0.4, 0}, {0.96, 0, -0.28}, {-0.112, 0.9165, -0.384}, {0.2566, 0.4, 0.8798}});
    auto* light = new TZKOglLight(&canvas);
    light->SetZkOglCanvas(&canvas);
    light->SetLightPosition("-3/8/9");
    light->setattenuation(0.1);
    light->SetEnabled(true);

    ZkAddBitmaptexture("bricks", bricks());
    ZkAddBitmaptexture("beach-ball", beachBall());
    ZkAddBitmaptexture("chessboard", chessboard());

    auto* scene = new TZKOglScene(&canvas);
    scene->SetZkOglCanvas(&canvas);
    auto* floor = new TZKOglBox(&canvas);
    floor->SetDisplayList(scene);
    floor->SetA(7);
    floor->SetB(0.2);
    floor->SetC(5);
    floor->Set_translation("-3.5/-1.2/-2.5");
    cover(floor, "chessboard", 1, 1);
    // The frame in which the picture lies; without one each face has its own.
    floor->getAttributes()->getTexture()->Setbase({{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}});
    auto* wall = new TZKOglBox(&canvas);
    wall->SetDisplayList(scene);
    wall->SetA(2);
    wall->SetB(2);
    wall->SetC(1);
    wall->Set_translation("-2.2/-1/-1");
    cover(wall, "bricks", 1, 1);
    auto* ball = new TZKOglSphere(&canvas);
    ball->SetDisplayList(scene);
    ball->SetResolution(48);
    ball->SetDrehgeradeRichtung("1/0/0.6");
    ball->Setdrehwinkel(-60);
    ball->Set_translation("1.6/0/0.3");
    cover(ball, "beach-ball", 1, 1);
}

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.setWindowTitle("Textures");
    control.QWidget::resize(480, 360);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    MakeTextures(canvas);
    control.show();
    return QApplication::exec();
}
