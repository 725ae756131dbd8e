#include "values.h"

#include <zk/host/component.h>
#include <zk/host/componentref.h>
#include <zk/host/propertypath.h>

#include <QColor>
#include <QMetaProperty>
#include <QStringList>

#include <climits>
#include <exception>
#include <limits>
#include <map>

namespace zk::test {

namespace {

void addPaths(std::vector<QString>& paths, const QString& prefix, const QObject& object, bool owned) {
    const QMetaObject* const meta = object.metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (!QByteArray(property.enclosingMetaObject()->className()).startsWith("zk::"))
            continue;  // a widget's
        if (property.metaType() == QMetaType::fromType<ComponentRef>())
            continue;
        const QString name = prefix + QString::fromLatin1(property.name());
        if (property.metaType().flags() & QMetaType::PointerToQObject) {
            if (const auto* child = property.read(&object).value<QObject*>(); child && !owned)
                addPaths(paths, name + QLatin1Char('.'), *child, prefix.count(QLatin1Char('.')) > 0);
        } else {
            paths.push_back(name);
        }
    }
}

template <class T>
T oneOf(Choices& choices, std::initializer_list<T> values) {
    return values.begin()[choices.Below(int(values.size()))];
}

double number(const QString& name, Choices& choices, bool wild) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    // A face of 8 x 8 in triangles of a perimeter of 0.5 is work enough.
    if (name.endsWith(QLatin1String("DefaultTriangleResolution")))
        return wild ? oneOf(choices, {0.0, 1.0, 2.0, 4.0, -1.0, none, infinity, 1e300})
                    : oneOf(choices, {0.0, 0.5, 1.0, 2.0, 4.0});
    if (wild && choices.OneIn(2))
        return oneOf(choices,
                     {none, infinity, -infinity, 1e300, -1e300, 1e-300, 1e20, -1e10, 1e-7, -0.0, 180.0, 500.0});
    // OpenGL refuses these when they are negative, and says so.
    const bool notNegative = name.contains(QLatin1String("Shininess")) || name.startsWith(QLatin1String("Spot")) ||
                             name.startsWith(QLatin1String("Attenuation"));
    const double value = oneOf(choices, {0.0, 1.0, 2.0, 0.5, 8.0, -1.0, -0.25, 1e-9, 30.0, 45.0});
    if (notNegative && value < 0)
        return -value;
    const bool extent = name == QLatin1String("Length") || name == QLatin1String("Width") ||
                        name == QLatin1String("Height") || name == QLatin1String("Scale");
    return extent && value > 8 ? 3 : value;
}

int wholeNumber(const QString& name, Choices& choices, bool wild) {
    // The work goes with their square.
    const bool steps = name == QLatin1String("Resolution") || name == QLatin1String("Stacks");
    if (wild && choices.OneIn(2))
        return steps ? oneOf(choices, {-1, 0, 1, INT_MIN, 40}) : oneOf(choices, {INT_MIN, INT_MAX, -1, 0, 100000});
    return steps ? 1 + choices.Below(12) : choices.Below(13);
}

QString text(Choices& choices, bool wild) {
    if (wild && choices.OneIn(2))
        return oneOf<QString>(choices,
                              {QString(), QStringLiteral("1/2"), QStringLiteral("//"), QStringLiteral("nan/inf/1"),
                               QStringLiteral("1e999/0/0"), QStringLiteral("1/2/3/4"), QString(300, u'x'),
                               QStringLiteral("1e300/-1e300/1e300")});
    return oneOf<QString>(
        choices, {QStringLiteral("0/0/0"), QStringLiteral("1/0/0"), QStringLiteral("0/1/0"), QStringLiteral("0/0/1"),
                  QStringLiteral("1/2/3"), QStringLiteral("-0.5/0.25/-1"), QStringLiteral("1/1/1")});
}

}  // namespace

const std::vector<QString>& ValuePaths(const QObject& object) {
    static std::map<const QMetaObject*, std::vector<QString>> known;
    const auto [place, isNew] = known.try_emplace(object.metaObject());
    if (isNew)
        addPaths(place->second, QString(), object, false);
    return place->second;
}

QVariant ValueFor(const QObject& object, const QString& path, Choices& choices, bool wild) {
    const PropertyPlace place = FindProperty(object, path);
    if (!place.IsValid() || !place.Property.isWritable())
        return {};
    const QMetaProperty& property = place.Property;
    if (property.isEnumType()) {
        const QMetaEnum values = property.enumerator();
        return values.isFlag() ? QVariant(choices.Below(16)) : QVariant(values.value(choices.Below(values.keyCount())));
    }
    switch (property.typeId()) {
        case QMetaType::Bool:
            return choices.OneIn(2);
        case QMetaType::Double:
            return number(path, choices, wild);
        case QMetaType::Int:
            return wholeNumber(path, choices, wild);
        case QMetaType::QColor:
            return QColor(choices.Below(256), choices.Below(256), choices.Below(256));
        case QMetaType::QString:
            if (path.endsWith(QLatin1String("Picture")))
                return wild && choices.OneIn(4) ? QVariant(QStringLiteral("nothing.bmp")) : QVariant();
            return text(choices, wild);
        case QMetaType::QStringList: {
            QStringList lines;
            const int count = choices.Below(7);
            for (int i = 0; i < count; ++i)
                lines << text(choices, wild);
            return lines;
        }
        default:
            return {};
    }
}

void SetValue(QObject& object, const QString& path, const QVariant& value, bool wild) {
    if (!wild) {
        WriteProperty(object, path, value);
        return;
    }
    const PropertyPlace place = FindProperty(object, path);
    try {
        place.Property.write(place.Object, value);
    } catch (const std::exception&) {
        // A text that is no point.
    }
}

}  // namespace zk::test
