#include "pointproperty.h"

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/host/formreading.h>

#include <QLocale>

namespace zk {

QString PointTextOfForm(const QString& text) {
    if (CheckStrtoxyz(text))
        return text;
    const QString separator = QLocale().decimalPoint();
    QString here = text;
    here.replace(QLatin1Char('.'), separator).replace(QLatin1Char(','), separator);
    return CheckStrtoxyz(here) ? here : text;
}

void WritePointText(ComponentBase& component, const char* property, const QString& text,
                    const std::function<void(const QString&)>& set) {
    const bool reading = FormReading::IsReading(component);
    WriteText(component, property, text, [&] { set(reading ? PointTextOfForm(text) : text); });
}

QStringList PointTextsOfForm(const ComponentBase& component, const QStringList& lines) {
    if (!FormReading::IsReading(component))
        return lines;
    QStringList here;
    here.reserve(lines.size());
    for (const QString& line : lines)
        here << PointTextOfForm(line);
    return here;
}

}  // namespace zk
