#pragma once

#include <zk/forms/formclasses.h>

#include <QByteArray>
#include <QRect>
#include <QString>
#include <QVariant>

#include <vector>

namespace zk {

/// One value that a form has for a component. Not valid where its text is none of its kind.
struct FormValue {
    QString Property;
    QVariant Value;
    QString Text;  ///< as it stands in the file
};

/// A component in a form's file.
struct FormEntry {
    const FormClass* Class;
    QString ClassName;  ///< as it stands in the file
    QString Name;
    QString Parent;  ///< the name of the widget that it stands in
    std::vector<FormValue> Values;
    bool HasPlace = false;
    QRect Place;  ///< of its icon
};

/// A form's file, taken apart: the components, and the file without them, which any reader of forms can make widgets
/// of. Controls stay there, but only with what every widget has.
struct FormText {
    QByteArray Rest;
    std::vector<FormEntry> Components;  ///< that are no widgets, in the order of the file
    std::vector<FormEntry> Controls;
    QString Error;  ///< why the file is none; empty if it is one
};

/// What a file may have. Beyond that it is refused: reading goes down with the elements, and memory is taken for each
/// widget before anything of it can be seen.
struct FormLimits {
    static constexpr qint64 Bytes = 64 << 20;
    static constexpr int Depth = 200;       ///< elements within each other
    static constexpr int Widgets = 100000;  ///< components among them
};

FormText TakeApart(const QByteArray& file);

}  // namespace zk
