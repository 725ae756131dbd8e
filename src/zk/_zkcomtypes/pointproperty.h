#pragma once

#include <zk/host/component.h>

#include <QString>
#include <QStringList>

#include <functional>

namespace zk {

/// A point's text out of a form as `Strtoxyz` takes it here: forms go from one country to the next, so the decimal
/// separator may be a point or a comma, whatever the current locale has. What is no point either way stays as it is.
QString PointTextOfForm(const QString& text);

/// For the WRITE function of a property that is the text of a point: runs `set`, while a form is read with
/// `PointTextOfForm` of the text. A text that is no point is a fault of the form then; otherwise `set`'s error is
/// passed on.
void WritePointText(ComponentBase& component, const char* property, const QString& text,
                    const std::function<void(const QString&)>& set);

/// The same for lists: each line as `PointTextOfForm` gives it, while a form is read. Nothing is a fault here.
QStringList PointTextsOfForm(const ComponentBase& component, const QStringList& lines);

}  // namespace zk
