#include "session.h"

#include "formkeeper.h"
#include "propertyhelp.h"
#include "propertysheet.h"

#include <zk/forms/formclasses.h>

#include <QAction>
#include <QScopedValueRollback>
#include <QWidget>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

namespace zk {

void DesignerSession::Start(QDesignerFormEditorInterface* core) {
    if (!core->findChild<DesignerSession*>(QString(), Qt::FindDirectChildrenOnly))
        new DesignerSession(core);
}

DesignerSession::DesignerSession(QDesignerFormEditorInterface* core)
    : QObject(core), core_(core), help_(new PropertyHelp(core, this)) {
    core->extensionManager()->registerExtensions(this, Q_TYPEID(QDesignerPropertySheetExtension));
    core->extensionManager()->registerExtensions(this, Q_TYPEID(QDesignerDynamicPropertySheetExtension));
    core->extensionManager()->registerExtensions(this, Q_TYPEID(QDesignerTaskMenuExtension));
    if (core->formWindowManager())
        watchForms();
    else  // the editor is still being put together
        QMetaObject::invokeMethod(this, &DesignerSession::watchForms, Qt::QueuedConnection);
}

void DesignerSession::watchForms() {
    QDesignerFormWindowManagerInterface* const manager = core_->formWindowManager();
    if (!manager)
        return;
    connect(
        manager, &QDesignerFormWindowManagerInterface::formWindowAdded, this,
        [](QDesignerFormWindowInterface* form) { FormKeeper::Of(form); }, Qt::QueuedConnection);
    using Manager = QDesignerFormWindowManagerInterface;
    for (const Manager::Action kind :
         {Manager::HorizontalLayoutAction, Manager::VerticalLayoutAction, Manager::SplitHorizontalAction,
          Manager::SplitVerticalAction, Manager::GridLayoutAction, Manager::FormLayoutAction}) {
        QAction* const action = manager->action(kind);
        if (!action)
            continue;
        connect(action, &QAction::triggered, this, [manager, action] {
            if (FormKeeper* keeper = FormKeeper::Of(manager->activeFormWindow()))
                keeper->LayOutAgain(action);
        });
    }
    for (int i = 0; i < manager->formWindowCount(); ++i)
        FormKeeper::Of(manager->formWindow(i));
}

QObject* DesignerSession::extension(QObject* object, const QString& iid) const {
    auto* const widget = qobject_cast<QWidget*>(object);
    if (!widget || askingForBase_)
        return nullptr;
    if (iid == Q_TYPEID(QDesignerPropertySheetExtension) || iid == Q_TYPEID(QDesignerDynamicPropertySheetExtension))
        return sheet(widget);
    if (iid == Q_TYPEID(QDesignerTaskMenuExtension))
        return menu(widget);
    return nullptr;
}

QObject* DesignerSession::sheet(QWidget* widget) const {
    if (ComponentSheet* known = sheets_.value(widget))
        return known;
    const QString className = QString::fromLatin1(widget->metaObject()->className());
    if (!FindFormClass(className))
        return nullptr;
    QScopedValueRollback<bool> asking(askingForBase_, true);
    auto* const base = qt_extension<QDesignerPropertySheetExtension*>(core_->extensionManager(), widget);
    if (!base)
        return nullptr;
    auto* const self = const_cast<DesignerSession*>(this);
    auto* const made = new ComponentSheet(core_, widget, base, pristine(className), self);
    sheets_.insert(widget, made);
    connect(widget, &QObject::destroyed, self, &DesignerSession::forget);
    return made;
}

QObject* DesignerSession::menu(QWidget* widget) const {
    if (!sheet(widget))
        return nullptr;
    QObject*& known = menus_[widget];
    if (!known)
        known = MakeTaskMenu(help_, widget, const_cast<DesignerSession*>(this));
    return known;
}

void DesignerSession::forget(QObject* object) {
    delete menus_.take(object);
    delete sheets_.take(object);
}

// A component that nobody changes: its values are the defaults.
const QObject* DesignerSession::pristine(const QString& className) const {
    std::shared_ptr<QObject>& component = pristine_[className];
    if (!component)
        component.reset(FindFormClass(className)->Make(nullptr));
    return component.get();
}

}  // namespace zk
