#include "entry.h"

#include "session.h"
#include "standin.h"

#include <zk/forms/formclasses.h>
#include <zk/host/component.h>

#include <QIcon>
#include <QPixmap>

namespace zk {

const QList<EntryText>& EntryTexts() {
    static const QList<EntryText> texts = {
        {"TZKOglShape", "shape", "A shape that the program draws itself",
         "Stands in a scene like every shape; what is seen is drawn in OnPlay, with OpenGL or with the canvas's own "
         "operations."},
        {"TZKOglBox", "box", "A box with Length, Width and Height",
         "Reaches from the origin of its frame along x, y and z, in centimetres. Choose its Scene and switch Visible "
         "on."},
        {"TZKOglSphere", "sphere", "A sphere of radius R",
         "Lies about the origin of its frame; Resolution says how fine it is divided."},
        {"TZKOglPlane", "plane", "Flat polygons, given as points",
         "Data has one point x/y/z a line; any other line, an empty one for instance, ends a polygon."},
        {"TZKOglCylinder", "cylinder", "A cylinder, a frustum or a cone",
         "Stands upon the origin of its frame along z, from BaseRadius to TopRadius."},
        {"TZKOglRefShape", "refShape", "Shows another shape once more",
         "Draws its ReferenceShape in a place of its own. A click on the copy is a click on this component."},
        {"TZkOglCanvas", "canvas", "Draws scenes into a control with OpenGL",
         "The control is chosen in WinControl. The canvas has the background and the view: the scale in pixels per "
         "centimetre, the zoom, the view angle and the transform of the model."},
        {"TZKOglControl", "control", "The window that a canvas draws into",
         "Passes the mouse events on to the shape under the pointer. Choose it in the WinControl of a canvas."},
        {"TZKOglScene", "scene", "A set of shapes that belong together",
         "Is drawn by its ZkOglCanvas while Visible is on. Shapes join it with their Scene."},
        {"TZKOglRefScene", "refScene", "Shows another scene once more",
         "Draws its ReferenceScene in a place of its own, on the same canvas."},
        {"TZKOglLight", "light", "A light of a canvas",
         "Shines on what its ZkOglCanvas shows while Enabled is on, from LightPosition, as a spot if SpotCutOff is 90 "
         "degrees or less."},
        {"TZKOglWay", "way", "A path along which things move",
         "While Active is on it goes along its Points in HowLong milliseconds and tells each step in OnTimer."},
        {"TZKOglNav", "nav", "A cube that turns the view",
         "Dragging the cube turns the view of its ZkOglCanvas; its menu has fixed views."},
        {"TZkOglSequencer", "sequencer", "The clock that timers follow",
         "Ticks every Interval milliseconds while Enabled is on, and drives the timers that have chosen it."},
        {"TZkOglTimer", "timer", "Tells an event at beats of a sequencer",
         "Follows its Sequencer: begins after Displacement ticks, and tells Ontimer at every Intervals of them."},
    };
    return texts;
}

Entry::Entry(const EntryText& text, QObject* parent) : QObject(parent), text_(text) {}

QString Entry::name() const {
    return QStringLiteral("zk::") + QLatin1String(text_.className);
}

QString Entry::group() const {
    return QStringLiteral("ZKOgl");
}

QString Entry::toolTip() const {
    return tr(text_.toolTip);
}

QString Entry::whatsThis() const {
    return tr(text_.description);
}

QString Entry::includeFile() const {
    const FormClass* const type = FindFormClass(name());
    return type ? QStringLiteral("<%1>").arg(QLatin1String(type->Header)) : QString();
}

QIcon Entry::icon() const {
    return QIcon(QStringLiteral(":/zkogl/%1.png").arg(QString::fromLatin1(text_.className).toUpper()));
}

QWidget* Entry::createWidget(QWidget* parent) {
    const FormClass* const type = FindFormClass(name());
    if (!type)
        return nullptr;
    QObject* const component = type->Make(type->IsWidget ? parent : nullptr);
    ComponentBase::Of(component)->SetDesigning(true);
    if (type->IsWidget)
        return static_cast<QWidget*>(component);
    return new StandIn(component, icon().pixmap(20, 20), parent);
}

QString Entry::domXml() const {
    const FormClass* const type = FindFormClass(name());
    QSize size = StandIn::IconSize();
    if (type && type->IsWidget)
        size = text_.className == QLatin1String("TZKOglNav") ? QSize(80, 80) : QSize(150, 150);
    return QStringLiteral(
               R"(<ui language="c++" displayname="%5"><widget class="%1" name="%2"><property name="geometry"><rect>)"
               R"(<x>0</x><y>0</y><width>%3</width><height>%4</height></rect></property></widget><customwidgets><customwidget>)"
               R"(<class>%1</class><extends>QWidget</extends></customwidget></customwidgets></ui>)")
        .arg(name(), QLatin1String(text_.name))
        .arg(size.width())
        .arg(size.height())
        .arg(QLatin1String(text_.className));
}

void Entry::initialize(QDesignerFormEditorInterface* core) {
    DesignerSession::Start(core);
}

}  // namespace zk
