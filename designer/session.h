#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QtDesigner/QAbstractExtensionFactory>

#include <memory>

class QDesignerFormEditorInterface;

namespace zk {

class ComponentSheet;
class PropertyHelp;

/// What the plugin adds to one form editor: the property sheets and the menus of the components, and the keeper of each
/// form.
class DesignerSession : public QObject, public QAbstractExtensionFactory {
    Q_OBJECT
    Q_INTERFACES(QAbstractExtensionFactory)
  public:
    /// Does nothing for an editor that has it. It goes with the editor.
    static void Start(QDesignerFormEditorInterface* core);

    QObject* extension(QObject* object, const QString& iid) const override;

  private:
    explicit DesignerSession(QDesignerFormEditorInterface* core);

    void watchForms();
    void forget(QObject* object);
    QObject* sheet(QWidget* widget) const;
    QObject* menu(QWidget* widget) const;
    const QObject* pristine(const QString& className) const;

    QDesignerFormEditorInterface* core_;
    mutable bool askingForBase_ = false;
    mutable QHash<QObject*, ComponentSheet*> sheets_;
    mutable QHash<QObject*, QObject*> menus_;
    PropertyHelp* help_;
    mutable QHash<QString, std::shared_ptr<QObject>> pristine_;
};

}  // namespace zk
