#pragma once

#include <zk/export.h>

#include <QObject>
#include <QString>
#include <QStringView>

#include <span>

namespace zk {

/// A component that forms can hold.
struct ZKFORMS_API FormClass {
    const char* Name;                  ///< as forms write it: "zk::TZKOglBox"
    const char* Header;                ///< to include: "zk/_zkogltools/box.h"
    const QMetaObject* Class;          ///< the meta-object of that very class
    bool IsWidget;                     ///< a control; the others show nothing of their own
    QObject* (*Make)(QObject* owner);  ///< a new one, owned by `owner`; a control needs a widget or null there

    /// The name without the namespace: "TZKOglBox".
    QString ShortName() const;
};

/// The page of form designers that the components are on.
inline constexpr char FormPage[] = "ZKOgl";

/// All fifteen, in the order in which they stand on their page.
ZKFORMS_API std::span<const FormClass> FormClasses();

/// The one of that name, written with the namespace or without; null where there is none.
ZKFORMS_API const FormClass* FindFormClass(QStringView name);

}  // namespace zk
