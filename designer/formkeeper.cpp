#include "formkeeper.h"

#include "propertysheet.h"
#include "standin.h"

#include <zk/_zkoglcanvas/canvas.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLayout>
#include <QPointer>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QUndoStack>
#include <QWidget>
#include <QWindow>
#include <QXmlStreamReader>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerLayoutDecorationExtension>
#include <QtDesigner/QDesignerMetaDataBaseInterface>
#include <QtDesigner/QExtensionManager>

#include <algorithm>
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
    if (!widget || form_->isManaged(widget))
        return widget;
    // A page of a tab widget, say, is known to Designer, but only its container is managed.
    if (!form_->core()->metaDataBase()->item(widget))
        return false;
    QWidget* around = widget->parentWidget();
    while (around && around != form_->mainContainer() && !form_->isManaged(around))
        around = around->parentWidget();
    return around;
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
    leaveLayouts();
    bool changed = false;
    for (ComponentSheet* sheet : ComponentSheet::All()) {
        if (sheet->Keeper() == this)
            changed = sheet->Resolve() || changed;
    }
    if (!changed)
        return;
    for (QWidget* widget : Widgets()) {  // a scene that is taken from a canvas stays in the canvas's picture
        if (auto* canvas = qobject_cast<TZkOglCanvas*>(StandIn::Running(widget))) {
            keepIconsAbove(canvas->GetWinControl());
            canvas->Refresh();
        }
    }
}

// What holds a picture is a window of the window system, and so is everything beside it from then on, one above the
// other in the order in which they became windows. An icon that lies over a picture must not vanish behind it.
void FormKeeper::keepIconsAbove(QWidget* control) {
    for (QWidget* widget = control; widget && widget != form_->mainContainer(); widget = widget->parentWidget()) {
        if (!widget->windowHandle() || !widget->parentWidget())
            return;
        bool icon = false;
        bool other = false;
        for (QObject* child : widget->parentWidget()->children()) {
            auto* const sibling = qobject_cast<QWidget*>(child);
            if (sibling && sibling != widget && Has(sibling) && sibling->geometry().intersects(widget->geometry()))
                (dynamic_cast<StandIn*>(sibling) ? icon : other) = true;
        }
        if (icon && !other)
            widget->windowHandle()->lower();
    }
}

// --- layouts --------------------------------------------------------------------------------------------------------

namespace {

QSplitter* splitterOf(const QWidget* widget) {
    return qobject_cast<QSplitter*>(widget->parentWidget());
}

// Looks into the layouts within a layout, too.
bool holds(QLayout* layout, const QWidget* widget) {
    if (!layout)
        return false;
    for (int i = 0; i < layout->count(); ++i) {
        if (layout->itemAt(i)->widget() == widget || holds(layout->itemAt(i)->layout(), widget))
            return true;
    }
    return false;
}

bool isLaidOut(const QWidget* widget) {
    return splitterOf(widget) || (widget->parentWidget() && holds(widget->parentWidget()->layout(), widget));
}

}  // namespace

QList<QWidget*> FormKeeper::icons() const {
    QList<QWidget*> found;
    for (QWidget* widget : Widgets()) {
        if (dynamic_cast<StandIn*>(widget))
            found.append(widget);
    }
    return found;
}

void FormKeeper::LayOutAgain(QAction* action) {
    if (layingOut_)
        return;
    const QList<QWidget*> all = icons();
    const auto caught = std::find_if(all.begin(), all.end(), isLaidOut);
    if (caught == all.end())
        return;
    const QScopedValueRollback<bool> again(layingOut_, true);
    const QPointer<QWidget> container = (*caught)->parentWidget();
    QList<QWidget*> others;
    for (QObject* child : container->children()) {
        auto* const widget = qobject_cast<QWidget*>(child);
        if (widget && Has(widget) && !all.contains(widget) && isLaidOut(widget))
            others.append(widget);
    }
    form_->commandHistory()->undo();

    for (QWidget* icon : all)
        icon->hide();  // what cannot be seen is not laid out
    form_->clearSelection(false);
    if (container && Has(container) && !others.isEmpty())
        form_->selectWidget(container);
    else
        for (QWidget* widget : others)
            form_->selectWidget(widget);
    form_->emitSelectionChanged();
    if (!others.isEmpty()) {
        action->setEnabled(true);  // it looks at the selection later
        action->trigger();
    }
    for (QWidget* icon : all)
        icon->show();
}

// What was dropped, pasted or read into a layout is taken out of it, and stays where it is.
void FormKeeper::leaveLayouts() {
    QExtensionManager* const manager = form_->core()->extensionManager();
    for (QWidget* icon : icons()) {
        if (!isLaidOut(icon))
            continue;
        QWidget* const container = icon->parentWidget();
        const QPoint at = icon->pos();
        if (splitterOf(icon)) {
            icon->setParent(form_->mainContainer());
        } else if (auto* layout = qt_extension<QDesignerLayoutDecorationExtension*>(manager, container)) {
            layout->removeWidget(icon);
        } else {
            container->layout()->removeWidget(icon);
        }
        icon->setGeometry(QRect(at, StandIn::IconSize()));
        icon->show();
        if (ComponentSheet* const sheet = ComponentSheet::Of(icon))
            sheet->setChanged(sheet->indexOf(QStringLiteral("geometry")), true);
    }
}

// --- pasting --------------------------------------------------------------------------------------------------------

// What is pasted gets new names where the old ones are taken. References among the pasted components follow; the names
// that they had are in the clipboard, in the order in which the components were made.
void FormKeeper::followPaste() {
    QList<QWidget*> added;
    for (QWidget* widget : Widgets()) {
        if (!ComponentSheet::Of(widget) || known_.contains(widget))
            continue;  // one that an undo brings back is known, too
        added.append(widget);
        known_.insert(widget);
        connect(widget, &QObject::destroyed, this, [this](const QObject* gone) { known_.remove(gone); });
    }
    if (added.isEmpty() || !form_->commandHistory()->canUndo())
        return;  // what a file brings has its own names, whatever is in the clipboard

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
