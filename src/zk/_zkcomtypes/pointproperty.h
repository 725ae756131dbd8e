#pragma once

#include <zk/export.h>
#include <zk/host/component.h>

#include <QString>
#include <QStringList>

#include <functional>

namespace zk {

/// A point's text out of a form as `Strtoxyz` takes it here: forms go from one country to the next, so the decimal
/// separator may be a point or a comma, whatever the current locale has. What is no point either way stays as it is.
ZKCOMTYPES_API QString PointTextOfForm(const QString& text);

/// For the WRITE function of a property that is the text of a point: runs `set`, while a form is read with
/// `PointTextOfForm` of the text. A text that is no point is a fault of the form then; otherwise `set`'s error is
/// passed on.
ZKCOMTYPES_API void WritePointText(ComponentBase& component, const char* property, const QString& text,
                                   const std::function<void(const QString&)>& set);

/// The same for lists: each line as `PointTextOfForm` gives it, while a form is read. Nothing is a fault here.
ZKCOMTYPES_API QStringList PointTextsOfForm(const ComponentBase& component, const QStringList& lines);

}  // namespace zk
