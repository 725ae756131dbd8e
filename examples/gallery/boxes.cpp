#include "boxes.h"

#include "materials.h"

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice.h>
#include <zk/_zkmath.h>
#include <zk/_zkxyarrays.h>

#include <QImage>
#include <QPainter>

#include <array>
#include <numbers>

using namespace zk;

namespace gallery {

namespace {

constexpr double liftHeight = 2.0;  // centimetres

struct Paint {
    const char* name;
    TColor color;  // red in the lowest byte
};

constexpr std::array paints{
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "coral"), 0x4A62E8},
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "amber"), 0x3CB0F2},
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "leaf"), 0x62B858},
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "teal"), 0xA8A42E},
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "sky"), 0xE89A46},
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "indigo"), 0xC4605A},
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "plum"), 0xB052A4},
    Paint{QT_TRANSLATE_NOOP("gallery::Boxes", "ivory"), 0xC8DCE6},
};

enum PaintIndex { coral, amber, leaf, teal, sky, indigo, plum, ivory };

struct Plan {
    const char* name;
    TXYZ size;     // along the box's own x, y, z
    TXYZ centre;   // in the scene
    TXYZ axis;     // the box is turned about this direction, through its centre,
    double angle;  // by so many degrees, counter-clockwise seen from the tip
    PaintIndex paint;
    int on;  // the box that it stands on: lifting that one lifts both
};

constexpr int nothing = -1;

constexpr TXYZ up{0, 1, 0};
constexpr TXYZ front{0, 0, 1};

const std::array plans{
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Tower"), {2.2, 7.0, 2.2}, {-4.4, 3.5, -2.2}, up, 0, sky, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Cap"), {1.4, 1.0, 1.4}, {-4.4, 7.5, -2.2}, up, 45, coral, 0},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "West post"), {1.0, 4.0, 1.6}, {-0.6, 2.0, -2.6}, up, 0, ivory, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "East post"), {1.0, 4.0, 1.6}, {3.4, 2.0, -2.6}, up, 0, ivory, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Lintel"), {6.0, 0.9, 2.0}, {1.4, 4.45, -2.6}, up, 0, plum, 2},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Cube"), {2.4, 2.4, 2.4}, {1.5, 1.2, 1.6}, up, 28, amber, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Lid"), {1.6, 0.5, 1.6}, {1.5, 2.65, 1.6}, up, 62, indigo, 5},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Brick"), {3.2, 1.0, 1.5}, {-2.6, 0.5, 2.6}, up, -24, coral, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Plank"), {0.4, 5.0, 1.4}, {6.15, 1.6, -2.4}, front, 52, teal, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Step"), {2.6, 0.8, 2.6}, {5.6, 0.4, 2.4}, up, 0, leaf, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Die"), {1.3, 1.3, 1.3}, {5.6, 1.93, 2.4}, {1, 0, -1}, 54.7356, ivory, 9},
};

// The place of a box's corner, which is what `TransformBy` moves, from the place of its centre. Turning about the
// centre by a `RotationPoint` would do, too, but leaves a remainder for the shapes that follow in the scene; turning
// about the corner does not.
TXYZ cornerOf(const Plan& plan) {
    TXYZ half = Mul(plan.size, 0.5);
    // The library's rotation matrices turn the other way round than a shape's `RotateBy`.
    MatMul(RotationToMatrix3d({Nullxyz, plan.axis}, -plan.angle * std::numbers::pi / 180.0), half);
    return Sub(plan.centre, half);
}

/// A square tile with its joint, a centimetre wide once it is laid.
QImage tile() {
    constexpr int side = 64;
    QImage picture(side, side, QImage::Format_RGB32);
    picture.fill(QColor(240, 240, 240));
    QPainter painter(&picture);
    painter.setPen(QPen(QColor(150, 150, 150), 2));
    painter.drawRect(0, 0, side - 1, side - 1);
    return picture;
}

}  // namespace

Boxes::Boxes(TZKOglScene* scene, QObject* form) : QObject(form), canvas_(scene->GetZkOglCanvas()) {
    const ChangeBracket bracket(canvas_);
    addFloor(scene, form);
    for (const Plan& plan : plans) {
        auto* box = new TZKOglBox(form);
        box->setObjectName(tr(plan.name));
        box->SetA(plan.size.x);
        box->SetB(plan.size.y);
        box->SetC(plan.size.z);
        box->SetDrehgeradeRichtung(xyztoStr(plan.axis));
        box->Setdrehwinkel(plan.angle);
        box->SetDisplayList(scene);
        items_.push_back({box, plan.paint, false});
        showMaterial(Count() - 1);
    }
    showPlaces();
}

void Boxes::addFloor(TZKOglScene* scene, QObject* form) {
    auto* floor = new TZKOglBox(form);
    floor->setObjectName(tr("Floor"));
    floor->SetA(17);
    floor->SetB(0.4);
    floor->SetC(10);
    floor->Settranslation({-8.0, -0.4, -5.0});
    floor->getAttributes()->getMaterial()->SetMAterialKind(MaterialOf(0x6E625A));
    ZkAddBitmaptexture(QStringLiteral("gallery-tile"), tile());
    TTexture* texture = floor->getAttributes()->getTexture();
    texture->SetPicture(QStringLiteral("gallery-tile.bmp"));
    texture->SetFilter(gllinear);
    texture->Setbase({Nullxyz, {1, 0, 0}, {0, 0, 1}, {0, 1, 0}});  // lies on the ground
    texture->SetVisible(true);
    floor->SetNohit(true);  // what stands on it is meant to be clicked, it counts as background
    floor->SetDisplayList(scene);
}

double Boxes::heightOf(int index) const {
    const int below = plans.at(std::size_t(index)).on;
    return (IsLifted(index) ? liftHeight : 0) + (below == nothing ? 0 : heightOf(below));
}

void Boxes::showPlaces() {
    for (int i = 0; i < Count(); ++i)
        At(i)->Settranslation(Add(cornerOf(plans.at(std::size_t(i))), Mul(up, heightOf(i))));
}

void Boxes::showMaterial(int index) {
    const Paint& paint = paints.at(std::size_t(items_.at(std::size_t(index)).material));
    At(index)->getAttributes()->getMaterial()->SetMAterialKind(MaterialOf(paint.color));
}

int Boxes::IndexOf(const QObject* shape) const {
    for (int i = 0; i < Count(); ++i)
        if (At(i) == shape)
            return i;
    return -1;
}

QStringList Boxes::Names() const {
    QStringList names;
    for (const Item& item : items_)
        names += item.box->objectName();
    return names;
}

void Boxes::ToggleLift(int index) {
    const ChangeBracket bracket(canvas_);
    Item& item = items_.at(std::size_t(index));
    item.lifted = !item.lifted;
    showPlaces();
}

TXYZ Boxes::MiddleOf(int index) const {
    return Add(plans.at(std::size_t(index)).centre, Mul(up, heightOf(index)));
}

QString Boxes::MaterialName(int index) const {
    return tr(paints.at(std::size_t(items_.at(std::size_t(index)).material)).name);
}

void Boxes::NextMaterial(int index) {
    const ChangeBracket bracket(canvas_);
    Item& item = items_.at(std::size_t(index));
    item.material = (item.material + 1) % int(paints.size());
    showMaterial(index);
}

void Boxes::Reset() {
    const ChangeBracket bracket(canvas_);
    for (int i = 0; i < Count(); ++i) {
        items_[std::size_t(i)].material = plans.at(std::size_t(i)).paint;
        items_[std::size_t(i)].lifted = false;
        showMaterial(i);
    }
    showPlaces();
}

}  // namespace gallery
