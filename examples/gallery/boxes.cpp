#include "boxes.h"

#include "materials.h"

#include <zk/_zkdevice.h>
#include <zk/_zkmath.h>
#include <zk/_zkxyarrays.h>

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

/// What the form does not say of a box.
struct Plan {
    const char* name;
    PaintIndex paint;
    int on;  // the box that it stands on: lifting that one lifts both
};

constexpr int nothing = -1;

constexpr TXYZ up{0, 1, 0};

constexpr std::array plans{
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Tower"), sky, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Cap"), coral, 0},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "West post"), ivory, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "East post"), ivory, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Lintel"), plum, 2},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Cube"), amber, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Lid"), indigo, 5},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Brick"), coral, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Plank"), teal, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Step"), leaf, nothing},
    Plan{QT_TRANSLATE_NOOP("gallery::Boxes", "Die"), ivory, 9},
};

// From the corner of a box, which is what `TransformBy` moves, to its middle. Each box is turned about its corner:
// turning about the middle by a `RotationPoint` would leave a remainder for the shapes that follow in the scene.
TXYZ cornerToMiddle(const TZKOglBox& box) {
    TXYZ half = Mul(TXYZ{box.GetA(), box.GetB(), box.GetC()}, 0.5);
    // The library's rotation matrices turn the other way round than a shape's `RotateBy`.
    const TGerade axis{Nullxyz, box.GetDrehGerade().Direction};
    MatMul(RotationToMatrix3d(axis, -box.Getdrehwinkel() * std::numbers::pi / 180.0), half);
    return half;
}

}  // namespace

Boxes::Boxes(const std::vector<TZKOglBox*>& boxes, TZkOglCanvas* canvas, QObject* form)
    : QObject(form), canvas_(canvas) {
    for (std::size_t i = 0; i < plans.size(); ++i) {
        TZKOglBox* const box = boxes.at(i);
        box->setObjectName(tr(plans[i].name));
        items_.push_back({box, box->GetTranslation(), plans[i].paint, false});
    }
}

double Boxes::heightOf(int index) const {
    const int below = plans.at(std::size_t(index)).on;
    return (IsLifted(index) ? liftHeight : 0) + (below == nothing ? 0 : heightOf(below));
}

void Boxes::showPlaces() {
    for (int i = 0; i < Count(); ++i)
        At(i)->Settranslation(Add(items_[std::size_t(i)].place, Mul(up, heightOf(i))));
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
    return Add(At(index)->GetTranslation(), cornerToMiddle(*At(index)));
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
