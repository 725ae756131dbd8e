#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>

class QDesignerFormWindowInterface;
class QAction;
class QWidget;

namespace zk {

class ComponentSheet;

/// Keeps the components of one edited form bound to each other as their references say: whenever something comes, goes
/// or is set, the references are looked at again, once, from the event loop.
class FormKeeper : public QObject {
    Q_OBJECT
  public:
    /// The keeper of a form, made at the first call and owned by the form; null for a null form.
    static FormKeeper* Of(QDesignerFormWindowInterface* form);

    QDesignerFormWindowInterface* Form() const { return form_; }

    /// The widget of this name that belongs to the form and is not deleted from it, or null.
    QWidget* Find(const QString& name) const;
    /// False for a widget that has been deleted from the form, and is only kept for an undo.
    bool Has(QWidget* widget) const;
    /// Everything on the form, from the outside to the inside, in the order in which it was put there.
    QList<QWidget*> Widgets() const;

    /// Looks at the references soon, or now.
    void Schedule();
    Q_INVOKABLE void Resolve();

    /// Designer has just laid something out by `action`. An icon has no place in a layout: it would be no widget there
    /// when the form runs. If one is caught, the layout is made once more without it.
    void LayOutAgain(QAction* action);

  private:
    explicit FormKeeper(QDesignerFormWindowInterface* form);

    void followPaste();
    void leaveLayouts();
    void keepIconsAbove(QWidget* control);
    QList<QWidget*> icons() const;

    QDesignerFormWindowInterface* form_;
    bool scheduled_ = false;
    bool layingOut_ = false;
    QSet<const QObject*> known_;  ///< the components that have been on the form
};

}  // namespace zk
