#include "formkeeper.h"

#include "propertysheet.h"
#include "standin.h"

#include <zk/_zkoglcanvas/canvas.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QUndoStack>
#include <QWidget>
#include <QXmlStreamReader>
#include <QtDesigner/QDesignerFormWindowInterface>

#include <utility>

namespace zk {

FormKeeper* FormKeeper::Of(QDesignerFormWindowInterface* form) {
    if (!form)
        return nullptr;
    if (auto* keeper = form->findChild<FormKeeper*>(QString(), Qt::FindDirectChildrenOnly))
        return keeper;
    return new FormKeeper(form);
}

FormKeeper::FormKeeper(QDesignerFormWindowInterface* form) : QObject(form), form_(form) {
    connect(form, &QDesignerFormWindowInterface::widgetManaged, this, &FormKeeper::Schedule);
    connect(form, &QDesignerFormWindowInterface::widgetUnmanaged, this, &FormKeeper::Schedule);
    connect(form, &QDesignerFormWindowInterface::widgetRemoved, this, &FormKeeper::Schedule);
    connect(form, &QDesignerFormWindowInterface::mainContainerChanged, this, &FormKeeper::Schedule);
    connect(form, &QDesignerFormWindowInterface::changed, this, &FormKeeper::Schedule);
    Schedule();
}

bool FormKeeper::Has(QWidget* widget) const {
    return widget && form_->isManaged(widget);
}

QWidget* FormKeeper::Find(const QString& name) const {
    QWidget* const container = form_->mainContainer();
    if (!container || name.isEmpty())
        return nullptr;
    if (container->objectName() == name)
        return container;
    for (QWidget* widget : container->findChildren<QWidget*>(name)) {
        if (Has(widget))
            return widget;
    }
    return nullptr;
}

QList<QWidget*> FormKeeper::Widgets() const {
    QList<QWidget*> widgets;
    QWidget* const container = form_->mainContainer();
    if (!container)
        return widgets;
    widgets.append(container);
    for (QWidget* widget : container->findChildren<QWidget*>()) {
        if (Has(widget))
            widgets.append(widget);
    }
    return widgets;
}

void FormKeeper::Schedule() {
    if (!std::exchange(scheduled_, true))
        QMetaObject::invokeMethod(this, &FormKeeper::Resolve, Qt::QueuedConnection);
}

void FormKeeper::Resolve() {
    scheduled_ = false;
    followPaste();
    bool changed = false;
    for (ComponentSheet* sheet : ComponentSheet::All()) {
        if (sheet->Keeper() == this)
            changed = sheet->Resolve() || changed;
    }
    if (!changed)
        return;
    for (QWidget* widget : Widgets()) {  // a scene that is taken from a canvas stays in the canvas's picture
        if (auto* canvas = qobject_cast<TZkOglCanvas*>(StandIn::Running(widget)))
            canvas->Refresh();
    }
}

// What is pasted gets new names where the old ones are taken. References among the pasted components follow; the names
// that they had are in the clipboard, in the order in which the components were made.
void FormKeeper::followPaste() {
    QSet<const QObject*> now;
    QList<QWidget*> added;
    for (QWidget* widget : Widgets()) {
        now.insert(widget);
        if (!known_.contains(widget) && ComponentSheet::Of(widget))
            added.append(widget);
    }
    std::swap(known_, now);
    if (added.isEmpty())
        return;

    QList<std::pair<QString, QString>> copied;  // class and name
    QXmlStreamReader xml(QGuiApplication::clipboard()->text());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("widget"))
            continue;
        const auto attributes = xml.attributes();
        copied.append(
            {attributes.value(QLatin1String("class")).toString(), attributes.value(QLatin1String("name")).toString()});
    }
    if (xml.hasError())
        return;
    QHash<QString, QString> newNames;
    qsizetype next = 0;
    for (const auto& [type, name] : copied) {
        if (next < added.size() && type == QLatin1String(added[next]->metaObject()->className()))
            newNames.insert(name, added[next++]->objectName());
    }
    if (next != added.size())
        return;
    for (QWidget* widget : added)
        ComponentSheet::Of(widget)->Follow(newNames);
}

}  // namespace zk
