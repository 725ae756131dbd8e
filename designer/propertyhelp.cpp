#include "propertyhelp.h"

#include "picturedialog.h"
#include "propertysheet.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCompleter>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>

#include <memory>
#include <vector>

namespace zk {

PropertyHelp::PropertyHelp(QDesignerFormEditorInterface* core, QObject* parent) : QObject(parent), core_(core) {
    qApp->installEventFilter(this);  // the property editor makes its editors when they are needed
}

void PropertyHelp::set(QWidget* widget, const QString& property, const QByteArray& value) {
    auto* const form = QDesignerFormWindowInterface::findFormWindow(widget);
    if (!form)
        return;
    QDesignerFormWindowCursorInterface* const cursor = form->cursor();
    bool selected = false;
    for (int i = 0; i < cursor->selectedWidgetCount(); ++i)
        selected = selected || cursor->selectedWidget(i) == widget;
    if (selected)
        cursor->setProperty(property, value);
    else
        cursor->setWidgetProperty(widget, property, value);
}

void PropertyHelp::FillMenu(QMenu* menu, QWidget* widget, const QString& property) {
    menu->clear();
    const ComponentSheet* const sheet = ComponentSheet::Of(widget);
    const int index = sheet ? sheet->indexOf(property) : -1;
    if (index < 0)
        return;
    const QWidget* const target = sheet->Target(index);
    const auto add = [&](const QString& text, const QString& name) {
        QAction* const action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(target ? name == target->objectName() : name.isEmpty());
        connect(action, &QAction::triggered, this, [this, guard = QPointer(widget), property, name] {
            if (guard)
                set(guard, property, name.toUtf8());
        });
    };
    add(tr("(none)"), {});
    menu->addSeparator();
    for (const QString& name : sheet->Candidates(index))
        add(name, name);
}

void PropertyHelp::AskForPicture(QWidget* widget, const QString& property) {
    const ComponentSheet* const sheet = ComponentSheet::Of(widget);
    const int index = sheet ? sheet->indexOf(property) : -1;
    if (index < 0)
        return;
    auto* const dialog = new PictureDialog(core_->topLevel(), QString::fromUtf8(sheet->property(index).toByteArray()));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, [this, guard = QPointer(widget), property](const QString& file) {
        if (guard)
            set(guard, property, file.toUtf8());
    });
    dialog->open();
}

bool PropertyHelp::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        auto* const button = qobject_cast<QToolButton*>(watched);
        const QDesignerPropertyEditorInterface* const editor = core_->propertyEditor();
        if (button && editor && button->text() == QLatin1String("...") && editor->isAncestorOf(button))
            QMetaObject::invokeMethod(
                this,
                [this, guard = QPointer(button)] {
                    if (guard)
                        adopt(guard);
                },
                Qt::QueuedConnection);
    }
    return false;
}

void PropertyHelp::adopt(QToolButton* button) {
    const QDesignerPropertyEditorInterface* const editor = core_->propertyEditor();
    auto* const widget = qobject_cast<QWidget*>(editor->object());
    const ComponentSheet* const sheet = ComponentSheet::Of(widget);
    const QString property = editor->currentPropertyName();
    const int index = sheet ? sheet->indexOf(property) : -1;
    if (index < 0)
        return;
    const QPointer<QWidget> guard(widget);
    if (sheet->KindOf(index) == ComponentSheet::Kind::Reference) {
        disconnect(button, &QToolButton::clicked, nullptr, nullptr);
        connect(button, &QToolButton::clicked, this, [this, button, guard, property] {
            if (!guard)
                return;
            auto* const menu = new QMenu(button);
            menu->setAttribute(Qt::WA_DeleteOnClose);
            FillMenu(menu, guard, property);
            menu->popup(button->mapToGlobal(QPoint(0, button->height())));
        });
        if (auto* const line = button->parentWidget()->findChild<QLineEdit*>()) {
            auto* const completer = new QCompleter(sheet->Candidates(index), line);
            completer->setCompletionMode(QCompleter::PopupCompletion);
            line->setCompleter(completer);
        }
    } else if (sheet->IsPicture(index)) {
        disconnect(button, &QToolButton::clicked, nullptr, nullptr);
        connect(button, &QToolButton::clicked, this, [this, guard, property] {
            if (guard)
                AskForPicture(guard, property);
        });
    }
}

namespace {

class TaskMenu : public QObject, public QDesignerTaskMenuExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
  public:
    TaskMenu(PropertyHelp* help, QWidget* widget, QObject* parent) : QObject(parent) {
        const ComponentSheet* const sheet = ComponentSheet::Of(widget);
        for (int i = 0; sheet && i < sheet->count(); ++i) {
            const QString property = sheet->propertyName(i);
            if (sheet->KindOf(i) == ComponentSheet::Kind::Reference) {
                auto* const action = new QAction(property, this);
                QMenu* const menu = menus_.emplace_back(std::make_unique<QMenu>()).get();
                connect(menu, &QMenu::aboutToShow, help,
                        [help, menu, widget, property] { help->FillMenu(menu, widget, property); });
                action->setMenu(menu);
                actions_.append(action);
            } else if (sheet->IsPicture(i)) {
                auto* const action = new QAction(property + QStringLiteral("..."), this);
                connect(action, &QAction::triggered, help,
                        [help, widget, property] { help->AskForPicture(widget, property); });
                actions_.append(action);
            }
        }
    }

    QList<QAction*> taskActions() const override { return actions_; }

  private:
    QList<QAction*> actions_;
    std::vector<std::unique_ptr<QMenu>> menus_;  // an action does not own its menu
};

}  // namespace

QObject* MakeTaskMenu(PropertyHelp* help, QWidget* widget, QObject* parent) {
    return new TaskMenu(help, widget, parent);
}

}  // namespace zk

#include "propertyhelp.moc"
