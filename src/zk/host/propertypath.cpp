#include "propertypath.h"

#include <QByteArray>
#include <QColor>
#include <QMetaEnum>
#include <QStringList>

#include <cmath>
#include <exception>
#include <limits>

namespace zk {

namespace {

QObject* objectIn(const QVariant& value) {
    const bool isObject = value.metaType().flags().testFlag(QMetaType::PointerToQObject);
    return isObject ? value.value<QObject*>() : nullptr;
}

bool isText(const QVariant& value) {
    return value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QByteArray;
}

// Without the scopes, which not every version of Qt takes in the form that a compiler would.
QByteArray plainKeys(const QByteArray& keys) {
    QByteArrayList plain;
    for (const QByteArray& key : keys.split('|'))
        plain << key.mid(key.lastIndexOf(':') + 1).trimmed();
    return plain.join('|');
}

bool isWhole(const QVariant& value, qint64& number) {
    switch (value.typeId()) {
        case QMetaType::Double:
        case QMetaType::Float: {
            const double real = value.toDouble();
            if (!(std::fabs(real) < 9e15) || real != std::trunc(real))
                return false;
            number = qint64(real);
            return true;
        }
        case QMetaType::ULongLong:
            number = value.toLongLong();
            return value.toULongLong() <= quint64(std::numeric_limits<qint64>::max());
        case QMetaType::QColor:
            return false;
        default: {
            bool ok = false;
            number = value.toLongLong(&ok);
            return ok;
        }
    }
}

// The value as one of the enumeration's numbers, or false.
bool enumValue(const QMetaEnum& names, const QVariant& value, int& number) {
    bool ok = false;
    if (isText(value)) {
        const QByteArray keys = plainKeys(value.toByteArray());
        if (names.isFlag() && keys.isEmpty()) {
            number = 0;
            return true;
        }
        number = names.isFlag() ? names.keysToValue(keys, &ok) : names.keyToValue(keys, &ok);
        return ok;
    }
    qint64 whole = 0;
    if (!isWhole(value, whole) || whole < 0 || whole > std::numeric_limits<int>::max())
        return false;
    number = int(whole);
    if (!names.isFlag())
        return names.valueToKey(number);
    int all = 0;
    for (int i = 0; i < names.keyCount(); ++i)
        all |= names.value(i);
    return (number & ~all) == 0;
}

// Brings the value to the property's type; false where it is no value of it.
bool fit(const QMetaProperty& property, QVariant& value) {
    if (property.isEnumType()) {
        if (property.isFlagType() && value.metaType() == property.metaType())
            return true;
        int number = 0;
        if (!enumValue(property.enumerator(), value, number))
            return false;
        value = number;
        return true;
    }
    if (value.typeId() == QMetaType::QByteArray && property.typeId() != QMetaType::QByteArray)
        value = QString::fromUtf8(value.toByteArray());
    switch (property.typeId()) {
        case QMetaType::Int: {
            qint64 whole = 0;
            if (!isWhole(value, whole) || whole < std::numeric_limits<int>::min() ||
                whole > std::numeric_limits<int>::max())
                return false;
            value = int(whole);
            return true;
        }
        case QMetaType::Double: {
            bool ok = false;
            const double real = value.toDouble(&ok);
            value = real;
            return ok && std::isfinite(real);
        }
        case QMetaType::Bool: {
            const QString text = value.toString();
            if (value.typeId() == QMetaType::QString && text != QLatin1String("true") && text != QLatin1String("false"))
                return false;
            return value.convert(QMetaType(QMetaType::Bool));
        }
        case QMetaType::QColor:
            return value.convert(QMetaType(QMetaType::QColor)) && value.value<QColor>().isValid();
        default:
            return value.metaType() == property.metaType() || value.convert(property.metaType());
    }
}

}  // namespace

PropertyPlace FindProperty(const QObject& object, const QString& path) {
    const QStringList names = path.split(QLatin1Char('.'));
    const QObject* at = &object;
    for (qsizetype i = 0; i + 1 < names.size() && at; ++i) {
        const QMetaObject* meta = at->metaObject();
        const int index = meta->indexOfProperty(names[i].toUtf8());
        at = index < 0 ? nullptr : objectIn(meta->property(index).read(at));
    }
    if (!at)
        return {};
    const QMetaObject* meta = at->metaObject();
    const int index = meta->indexOfProperty(names.last().toUtf8());
    return {const_cast<QObject*>(at), index < 0 ? QMetaProperty() : meta->property(index)};
}

QVariant ReadProperty(const QObject& object, const QString& path) {
    const PropertyPlace place = FindProperty(object, path);
    return place.IsValid() ? place.Property.read(place.Object) : QVariant();
}

QString ValueText(const QVariant& value) {
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char('\n'));
    const QString text = value.toString();
    return text.isNull() && value.isValid() ? QString::fromLatin1(value.typeName()) : text;
}

PropertyWritten WriteProperty(QObject& object, const QString& path, const QVariant& value, QString* whyNot) {
    const auto because = [whyNot](const QString& reason) {
        if (whyNot)
            *whyNot = reason;
    };
    const PropertyPlace place = FindProperty(object, path);
    if (!place.IsValid() || !place.Property.isWritable()) {
        because(QStringLiteral("there is no such property"));
        return PropertyWritten::NoSuchProperty;
    }
    QVariant fitting = value;
    if (!value.isValid() || !fit(place.Property, fitting)) {
        because(QStringLiteral("this is no value of type ") + QString::fromLatin1(place.Property.typeName()));
        return PropertyWritten::BadValue;
    }
    try {
        if (place.Property.write(place.Object, fitting))
            return PropertyWritten::Yes;
        because(QStringLiteral("the property does not take it"));
    } catch (const std::exception& error) {
        because(QString::fromUtf8(error.what()));
    }
    return PropertyWritten::BadValue;
}

}  // namespace zk
