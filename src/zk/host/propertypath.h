#pragma once

#include <zk/export.h>

#include <QMetaProperty>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

namespace zk {

/// A property of an object, or of an object that it owns: "Length", "Attributes.Material.Ambient".
struct PropertyPlace {
    QPointer<QObject> Object;  ///< who has it
    QMetaProperty Property;    ///< which one

    /// True if there is such a property.
    bool IsValid() const { return Object && Property.isValid(); }
};

/// Follows the readable object properties that a path names. Not valid where a name on the way is no such property, is
/// none at the moment, or the last one is unknown.
ZKHOST_API PropertyPlace FindProperty(const QObject& object, const QString& path);

/// The value of a property; not valid where there is none.
ZKHOST_API QVariant ReadProperty(const QObject& object, const QString& path);

/// A value as a user would read it in a message.
ZKHOST_API QString ValueText(const QVariant& value);

/// What became of a value.
enum class PropertyWritten { Yes, NoSuchProperty, BadValue };

/// Writes a property through its setter, with a value as a form may hold it: besides what Qt converts, texts may be
/// given as UTF-8 bytes and enumerations by name, with or without scopes in front, flags joined by "|". Where the value
/// is no value of the property (also a number that is not finite or does not fit, and a number that is none of an
/// enumeration) nothing is written; an error that the setter raises goes no further. `whyNot` gets the reason in words.
ZKHOST_API PropertyWritten WriteProperty(QObject& object, const QString& path, const QVariant& value,
                                         QString* whyNot = nullptr);

}  // namespace zk
