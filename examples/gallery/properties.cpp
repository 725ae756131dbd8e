#include "properties.h"

#include <zk/host/componentref.h>
#include <zk/host/propertypath.h>

#include <QColor>
#include <QLocale>
#include <QMetaEnum>

#include <array>
#include <cmath>
#include <utility>

using namespace zk;

namespace gallery {

namespace {

QString plainName(const QMetaObject& type) {
    return QString::fromLatin1(type.className()).section(QStringLiteral("::"), -1);
}

const QMetaObject& classOf(const QMetaProperty& property, const QObject& object) {
    const QMetaObject* type = object.metaObject();
    while (type->propertyOffset() > property.propertyIndex())
        type = type->superClass();
    return *type;
}

QObject* ownedObject(const QMetaProperty& property, const QObject& object) {
    const bool isObject = property.metaType().flags().testFlag(QMetaType::PointerToQObject);
    return isObject ? property.read(&object).value<QObject*>() : nullptr;
}

void addOf(const QObject& object, const QString& path, const QString& group, std::vector<PropertyRow>& rows) {
    const QMetaObject* type = object.metaObject();
    std::vector<std::pair<QString, QObject*>> owned;
    for (int i = path.isEmpty() ? 0 : QObject::staticMetaObject.propertyCount(); i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        const QString name = QString::fromLatin1(property.name());
        if (QObject* next = ownedObject(property, object))
            owned.emplace_back(name, next);
        else if (property.isReadable() && property.isWritable())
            rows.push_back({path + name, group.isEmpty() ? plainName(classOf(property, object)) : group, property});
    }
    for (const auto& [name, next] : owned)
        addOf(*next, path + name + QLatin1Char('.'), group.isEmpty() ? name : group + QString::fromUtf8(" → ") + name,
              rows);
}

/// How a property is set in C++ where that is not "Set" and its name.
struct Setter {
    const char* path;
    const char* call;
};

constexpr std::array setters{
    Setter{"objectName", "setObjectName"},
    Setter{"Scene", "SetDisplayList"},
    Setter{"TransformBy", "Set_translation"},
    Setter{"RotateBy", "Setdrehwinkel"},
    Setter{"RotationPoint", "SetDrehgeradePkt"},
    Setter{"RotationLine", "SetDrehgeradeRichtung"},
    Setter{"ReferenceShape", "SetReference"},
    Setter{"ReferenceScene", "SetReference"},
    Setter{"UnitsPerCM", "SetUnitsPerCm"},
    Setter{"BackgroundColor", "SetBackgroundQColor"},
    Setter{"PointOfView", "SetBlickWinkel"},
    Setter{"Attenuation", "setattenuation"},
    Setter{"Ambient", "setAmbientColor"},
    Setter{"Diffuse", "setDiffuseColor"},
    Setter{"Specular", "setSpecularColor"},
    Setter{"Length", "SetA"},
    Setter{"Width", "SetB"},
    Setter{"Height", "SetC"},
    Setter{"Attributes.PolyStyle.Mode", "getAttributes()->getPolyStyle()->SetMode"},
    Setter{"Attributes.Material.Ambient", "getAttributes()->getMaterial()->setAmbientColor"},
    Setter{"Attributes.Material.Diffuse", "getAttributes()->getMaterial()->setDiffuseColor"},
    Setter{"Attributes.Material.Specular", "getAttributes()->getMaterial()->setSpecularColor"},
    Setter{"Attributes.Material.Emission", "getAttributes()->getMaterial()->setEmissionColor"},
    Setter{"Attributes.Material.Shininess", "getAttributes()->getMaterial()->SetShininess"},
    Setter{"Attributes.Material.Translucent", "getAttributes()->getMaterial()->SetTranslucent"},
    Setter{"Attributes.Material.DefKind", "getAttributes()->getMaterial()->SetMatKind"},
    Setter{"Attributes.Texture.Picture", "getAttributes()->getTexture()->SetPicture"},
    Setter{"Attributes.Texture.Repeating", "getAttributes()->getTexture()->SetRepeat"},
    Setter{"Attributes.Texture.Filter", "getAttributes()->getTexture()->SetFilter"},
    Setter{"Attributes.Texture.EnvMode", "getAttributes()->getTexture()->SetEnvmode"},
    Setter{"Attributes.Texture.Visible", "getAttributes()->getTexture()->SetVisible"},
    Setter{"Attributes.Texture.BaseFix", "getAttributes()->getTexture()->SetbaseFix"},
    Setter{"Attributes.Texture.WorldWidth", "getAttributes()->getTexture()->SetWorldWidth"},
    Setter{"Attributes.Texture.WorldHeight", "getAttributes()->getTexture()->SetWorldheight"},
};

QString setterOf(const QString& path) {
    for (const Setter& setter : setters)
        if (path == QLatin1String(setter.path))
            return QLatin1String(setter.call);
    return QStringLiteral("Set") + path;
}

QString quoted(const QString& text) {
    QString literal;
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            literal += QLatin1Char('\\');
        literal += c == QLatin1Char('\n') ? QStringLiteral("\\n") : QString(c);
    }
    return QLatin1Char('"') + literal + QLatin1Char('"');
}

QString literalOf(const QMetaProperty& property, const QVariant& value) {
    if (property.isEnumType()) {
        const QMetaEnum names = property.enumerator();
        return QStringLiteral("zk::") + QString::fromLatin1(names.valueToKey(value.toInt()));
    }
    if (value.canConvert<ComponentRef>() && property.metaType() == QMetaType::fromType<ComponentRef>()) {
        const QObject* target = value.value<ComponentRef>().Object();
        return target ? VariableName(*target) : QStringLiteral("nullptr");
    }
    switch (value.typeId()) {
        case QMetaType::Double: {
            const double number = value.toDouble();
            const bool isPlain = number == 0 || (std::fabs(number) >= 1e-5 && std::fabs(number) < 1e15);
            return QString::number(number, isPlain ? 'f' : 'g', QLocale::FloatingPointShortest);
        }
        case QMetaType::QColor:
            return quoted(value.value<QColor>().name());
        case QMetaType::QString:
            return quoted(value.toString());
        case QMetaType::QStringList: {
            QStringList lines;
            for (const QString& line : value.toStringList())
                lines += quoted(line);
            return QLatin1Char('{') + lines.join(QStringLiteral(", ")) + QLatin1Char('}');
        }
        default:
            return value.toString();
    }
}

}  // namespace

std::vector<PropertyRow> PropertiesOf(const QObject& component) {
    std::vector<PropertyRow> rows;
    addOf(component, {}, {}, rows);
    return rows;
}

QString VariableName(const QObject& component) {
    const QString text = component.objectName().isEmpty() ? plainName(*component.metaObject()) : component.objectName();
    QString name;
    bool isNewWord = false;
    for (const QChar c : text) {
        if (c.unicode() > 0x7F || !c.isLetterOrNumber())
            isNewWord = !name.isEmpty();
        else
            name += std::exchange(isNewWord, false) ? c.toUpper() : name.isEmpty() ? c.toLower() : c;
    }
    return name.isEmpty() || name[0].isDigit() ? QStringLiteral("shape") + name : name;
}

QString SetterCall(const QObject& component, const QString& path) {
    const PropertyPlace place = FindProperty(component, path);
    if (!place.IsValid())
        return {};
    return QStringLiteral("%1->%2(%3);")
        .arg(VariableName(component), setterOf(path), literalOf(place.Property, place.Property.read(place.Object)));
}

}  // namespace gallery
