#pragma once

#include <QObject>
#include <QPointer>

class QDesignerFormEditorInterface;
class QMenu;
class QToolButton;
class QWidget;

namespace zk {

class ComponentSheet;

/// Help with the properties that are more than a text to type: the components that a reference may refer to, and the
/// picture files. The property editor's own "..." button gets it, and the context menu of a component.
class PropertyHelp : public QObject {
    Q_OBJECT
  public:
    PropertyHelp(QDesignerFormEditorInterface* core, QObject* parent);

    /// Fills a menu with what the property may refer to. A choice sets it, for all that are selected on the form, as
    /// one step of the undo stack.
    void FillMenu(QMenu* menu, QWidget* widget, const QString& property);
    /// Asks for the picture file. Confirming sets the property, as above; cancelling changes nothing.
    void AskForPicture(QWidget* widget, const QString& property);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void adopt(QToolButton* button);
    void set(QWidget* widget, const QString& property, const QByteArray& value);

    QDesignerFormEditorInterface* core_;
};

/// A component's part of the context menu on the form.
QObject* MakeTaskMenu(PropertyHelp* help, QWidget* widget, QObject* parent);

}  // namespace zk
