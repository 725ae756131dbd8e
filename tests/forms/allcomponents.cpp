#include "allcomponents.h"

#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>
#include <zk/forms/formclasses.h>
#include <zk/host/componentref.h>
#include <zk/host/propertypath.h>

#include <QMetaProperty>

namespace zk::test {

namespace {

template <class T>
T* make(QWidget* form, const char* name) {
    auto* made = new T(form);
    made->setObjectName(QString::fromLatin1(name));
    return made;
}

void paint(Tattributes* attributes, const QColor& diffuse, const QColor& specular = Qt::black) {
    attributes->getMaterial()->setAmbientColor(QColor(60, 60, 60));
    attributes->getMaterial()->setDiffuseColor(diffuse);
    attributes->getMaterial()->setSpecularColor(specular);
    attributes->getMaterial()->setEmissionColor(Qt::black);
}

void addValues(QStringList& values, const QString& path, const QObject& object, int first) {
    const QMetaObject* meta = object.metaObject();
    for (int i = first; i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const QString name = path + '.' + property.name();
        const QVariant value = property.read(&object);
        if (value.metaType().flags() & QMetaType::PointerToQObject)
            addValues(values, name, *value.value<QObject*>(), QObject::staticMetaObject.propertyCount());
        else if (property.isEnumType())
            values << name + ": " + property.enumerator().valueToKeys(value.toInt());
        else
            values << name + ": " + ValueText(value);
    }
}

}  // namespace

QString FormFile(const QString& name) {
    return QStringLiteral(ZKOGL_FORMS "/") + name;
}

std::unique_ptr<QWidget> BuiltInCode() {
    auto form = std::make_unique<QWidget>();
    QWidget* const f = form.get();
    form->setObjectName(QStringLiteral("AllComponents"));
    form->resize(760, 340);
    form->setWindowTitle(QStringLiteral("All components"));

    auto* control = make<TZKOglControl>(f, "control");
    control->setGeometry(10, 10, 308, 308);
    control->SetBevelKind(bevel::bkTile);
    control->SetBevelWidth(2);
    control->SetBevelInner(bevel::bvLowered);
    auto* canvas = make<TZkOglCanvas>(f, "canvas");
    canvas->SetWinControl(control);
    canvas->SetUnitsPerCm(45);
    canvas->SetBackgroundQColor(QColor(30, 40, 60));
    canvas->SetBlickWinkel(12);
    canvas->SetDrehgeradeRichtung(QStringLiteral("0/1/0"));
    canvas->Setdrehwinkel(20);
    auto* nav = make<TZKOglNav>(f, "nav");
    nav->SetBounds(330, 10, 80, 80);
    nav->SetCaption(QStringLiteral("view"));
    nav->SetZkOglCanvas(canvas);
    auto* lamp = make<TZKOglLight>(f, "lamp");
    lamp->SetZkOglCanvas(canvas);
    lamp->setAmbientColor(QColor(90, 90, 90));
    lamp->setDiffuseColor(QColor(255, 250, 240));
    lamp->SetLightPosition(QStringLiteral("4/5/9"));
    lamp->SetEnabled(true);

    auto* again = make<TZKOglRefScene>(f, "again");
    again->SetZkOglCanvas(canvas);
    again->Set_translation(QStringLiteral("-3/1.8/0"));
    again->Setdrehwinkel(40);
    auto* solids = make<TZKOglScene>(f, "solids");
    solids->SetZkOglCanvas(canvas);
    solids->Set_translation(QStringLiteral("0.5/0/0"));
    auto* flats = make<TZKOglScene>(f, "flats");
    flats->SetZkOglCanvas(canvas);
    flats->getAttributes()->getMaterial()->setDiffuseColor(QColor(120, 60, 160));
    flats->getAttributes()->getMaterial()->setEmissionColor(QColor(20, 0, 30));
    again->SetReference(flats);

    auto* twin = make<TZKOglRefShape>(f, "twin");
    twin->SetDisplayList(solids);
    twin->Set_translation(QStringLiteral("0/2.2/0"));
    auto* box = make<TZKOglBox>(f, "box");
    paint(box->getAttributes(), QColor(220, 40, 30));
    box->SetDisplayList(solids);
    box->Set_translation(QStringLiteral("-2.5/-1/0"));
    box->Setdrehwinkel(25);
    box->SetDrehgeradeRichtung(QStringLiteral("1/1/0"));
    box->SetA(1.5);
    box->SetB(1);
    box->SetC(2);
    auto* wire = make<TZKOglBox>(f, "wire");
    paint(wire->getAttributes(), QColor(40, 70, 220));
    wire->getAttributes()->getPolyStyle()->SetMode(glline);
    wire->SetDisplayList(solids);
    wire->Set_translation(QStringLiteral("1.2/-2.5/0"));
    wire->SetNohit(true);
    auto* ball = make<TZKOglSphere>(f, "ball");
    paint(ball->getAttributes(), QColor(40, 180, 60), QColor(200, 200, 200));
    ball->getAttributes()->getMaterial()->SetShininess(20);
    ball->SetDisplayList(solids);
    ball->SetR(0.9);
    ball->SetResolution(24);
    twin->SetReference(ball);
    auto* cone = make<TZKOglCylinder>(f, "cone");
    paint(cone->getAttributes(), QColor(200, 180, 40));
    cone->SetDisplayList(solids);
    cone->Set_translation(QStringLiteral("2.2/0.5/0"));
    cone->SetBaseRadius(0.8);
    cone->SetTopRadius(0.2);
    cone->SetCylinderHeight(1.7);
    cone->SetDrehgeradeRichtung(QStringLiteral("1/0/0"));
    cone->Setdrehwinkel(-60);
    auto* tri = make<TZKOglPlane>(f, "tri");
    tri->SetDisplayList(flats);
    tri->SetParentAttributes(true);
    tri->SetData({"-1/0/0.2", "0/1.2/0.2", "1/0/0.2", "", "-1/-0.2/0.2", "1/-0.2/0.2", "1/-0.6/0.2"});
    auto* own = make<TZKOglShape>(f, "own");
    own->SetDisplayList(flats);
    own->SetVisible(false);
    own->SetScale(1.5);

    auto* clock = make<TZkOglSequencer>(f, "clock");
    clock->SetInterval(40);
    auto* beat = make<TZkOglTimer>(f, "beat");
    beat->SetDisplacement(2);
    beat->SetIntervals(3);
    beat->SetEnabled(true);
    beat->SetSequencer(clock);
    auto* path = make<TZKOglWay>(f, "path");
    path->SetData({"0/0/0", "3/0/0", "3/3/0", "0/0/0"});
    path->SetHowLong(5000);
    path->SetCenter(QStringLiteral("1/1/0"));
    path->SetActive(true);
    return form;
}

QStringList ValuesOf(const QWidget& form) {
    QStringList values;
    for (const QObject* object : form.findChildren<QObject*>()) {
        const FormClass* one = FindFormClass(QString::fromLatin1(object->metaObject()->className()));
        if (!one || object->objectName().isEmpty())
            continue;
        addValues(values, object->objectName(), *object,
                  (one->IsWidget ? QWidget::staticMetaObject : QObject::staticMetaObject).propertyCount());
        if (const auto* way = qobject_cast<const TZKOglWay*>(object))
            values << object->objectName() + QStringLiteral(" steps by %1").arg(way->Step());
        if (const auto* scene = qobject_cast<const TZKOglScene*>(object))
            for (int i = 0; i < scene->GetShapeCount(); ++i)
                values << object->objectName() +
                              QStringLiteral(" has %1: %2").arg(i).arg(scene->GetZkShape(i)->objectName());
        if (const auto* canvas = qobject_cast<const TZkOglCanvas*>(object))
            for (const TZKOglScene* scene : canvas->Scenes())
                values << object->objectName() + QStringLiteral(" plays ") + scene->objectName();
    }
    values.sort();
    return values;
}

}  // namespace zk::test
