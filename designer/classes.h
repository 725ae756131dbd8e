#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace zk {

/// A component that a form can hold.
struct FormClass {
    const char* name;    ///< with namespace
    const char* header;  ///< as it is included
    QObject* (*create)(QObject* owner);
    bool isWidget;
};

/// The class of this name, or null.
const FormClass* FindFormClass(const QString& name);

}  // namespace zk
