#pragma once

#include <QMetaProperty>
#include <QObject>
#include <QString>
#include <QVariant>

#include <vector>

namespace gallery {

/// One line of a property sheet.
struct PropertyRow {
    QString Path;   ///< "Length", "Attributes.Material.Ambient"
    QString Group;  ///< the class that has it, "TZKOglBox", or the way to the owned object, "Attributes → Material"
    QMetaProperty Property;
};

/// The properties of a component as form designers show them: its name, its own ones in the order of the classes, then
/// those of the objects that it owns.
std::vector<PropertyRow> PropertiesOf(const QObject& component);

/// The name that a component's variable has in code: "West post" is westPost.
QString VariableName(const QObject& component);

/// The call that gives a property the value it has now: `westPost->SetA(2);`
QString SetterCall(const QObject& component, const QString& path);

}  // namespace gallery
