#include "formeditor.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QFile>
#include <QMessageBox>
#include <QPluginLoader>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <QUndoStack>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormEditorPluginInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerObjectInspectorInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerWidgetBoxInterface>
#include <QtDesigner/QExtensionManager>
#include <gtest/gtest.h>

#include <memory>

namespace zk::test {

namespace {

// The editor, from the first test that asks for it to the end of the program.
class Program : public testing::Environment {
  public:
    void Start() {
        if (core)
            return;
        QDesignerComponents::initializeResources();
        window = std::make_unique<QWidget>();
        window->resize(1200, 900);
        core.reset(QDesignerComponents::createFormEditor(nullptr));
        core->setTopLevel(window.get());
        core->setWidgetBox(QDesignerComponents::createWidgetBox(core.get(), window.get()));
        core->setPropertyEditor(QDesignerComponents::createPropertyEditor(core.get(), window.get()));
        core->setObjectInspector(QDesignerComponents::createObjectInspector(core.get(), window.get()));
        new QDesignerIntegration(core.get(), core.get());
        QDesignerComponents::initializePlugins(core.get());
        for (QObject* plugin : QPluginLoader::staticInstances()) {  // the editor of connections is one
            auto* const part = qobject_cast<QDesignerFormEditorPluginInterface*>(plugin);
            if (part && !part->isInitialized())
                part->initialize(core.get());
        }
        QDesignerComponents::createTaskMenu(core.get(), core.get());
        core->widgetBox()->setGeometry(0, 0, 290, 700);
        core->objectInspector()->setGeometry(0, 700, 290, 200);
        core->propertyEditor()->setGeometry(900, 0, 300, 900);
        window->show();
        FormEditor::Settle();
    }
    void TearDown() override {
        if (!core)
            return;
        // The editor's parts ask the editor to their end.
        delete core->widgetBox();
        delete core->propertyEditor();
        delete core->objectInspector();
        core.reset();
        window.reset();
        FormEditor::Settle();
    }

    std::unique_ptr<QWidget> window;
    std::unique_ptr<QDesignerFormEditorInterface> core;
};

Program* const program = [] {
    auto* const made = new Program;  // the test runner owns it
    testing::AddGlobalTestEnvironment(made);
    return made;
}();

}  // namespace

FormEditor::FormEditor() {
    program->Start();
    window_ = program->window.get();
    core_ = program->core.get();
}

FormEditor::~FormEditor() {
    Close();
    QGuiApplication::clipboard()->clear();
    Settle();
}

bool FormEditor::Open(const QString& contents) {
    Close();
    form_ = core_->formWindowManager()->createFormWindow(window_);
    QByteArray bytes = contents.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QString error;
    const bool opened = form_->setContents(&buffer, &error);
    EXPECT_TRUE(opened) << error.toStdString();
    if (!opened)
        return false;
    form_->setGeometry(QRect(QPoint(300, 0), form_->mainContainer()->size()));
    form_->show();
    core_->formWindowManager()->setActiveFormWindow(form_);
    form_->editWidgets();
    Settle();
    return true;
}

bool FormEditor::OpenEmpty() {
    return Open(FormText({}));
}

void FormEditor::Close() {
    if (!form_)
        return;
    core_->formWindowManager()->removeFormWindow(form_);
    delete form_;
    form_ = nullptr;
    Settle();
}

QString FormEditor::Save() const {
    return form_->contents();
}

// Designer's main window is what usually keeps the actions up to date.
void FormEditor::Trigger(int action) {
    QDesignerFormWindowManagerInterface* const manager = core_->formWindowManager();
    QMetaObject::invokeMethod(manager, "slotUpdateActions");
    QAction* const chosen = manager->action(QDesignerFormWindowManagerInterface::Action(action));
    EXPECT_TRUE(chosen->isEnabled()) << chosen->text().toStdString();
    chosen->trigger();
    Settle();
}

QUndoStack* FormEditor::Undo() const {
    return form_->commandHistory();
}

void FormEditor::Paste(const QString& widgets) {
    const QString form = FormText(widgets);
    QGuiApplication::clipboard()->setText(form.mid(form.indexOf(QLatin1String("<ui"))));
    Settle();
    PasteAgain();
}

void FormEditor::PasteAgain() {
    form_->clearSelection(false);
    form_->selectWidget(form_->mainContainer());
    Trigger(QDesignerFormWindowManagerInterface::PasteAction);
}

void FormEditor::Select(const QStringList& names) {
    form_->clearSelection(false);
    for (const QString& name : names)
        form_->selectWidget(Widget(name), true);
    Settle();
}

void FormEditor::Copy() {
    Trigger(QDesignerFormWindowManagerInterface::CopyAction);
}

void FormEditor::Delete() {
    Trigger(QDesignerFormWindowManagerInterface::DeleteAction);
}

QWidget* FormEditor::Widget(const QString& name) const {
    for (QWidget* widget : form_->mainContainer()->findChildren<QWidget*>(name)) {
        if (form_->isManaged(widget))
            return widget;
    }
    return nullptr;
}

QObject* FormEditor::Component(const QString& name) const {
    QWidget* const widget = Widget(name);
    if (!widget)
        return nullptr;
    for (QObject* child : widget->children()) {
        if (!child->isWidgetType() &&
            QLatin1String(child->metaObject()->className()) == QLatin1String(widget->metaObject()->className()))
            return child;
    }
    return widget;
}

QDesignerPropertySheetExtension* FormEditor::Sheet(const QString& name) const {
    return qt_extension<QDesignerPropertySheetExtension*>(core_->extensionManager(), Widget(name));
}

QVariant FormEditor::Value(const QString& name, const QString& property) const {
    const auto* sheet = Sheet(name);
    const int index = sheet->indexOf(property);
    EXPECT_GE(index, 0) << property.toStdString();
    return sheet->property(index);
}

void FormEditor::Set(const QString& name, const QString& property, const QVariant& value) {
    form_->cursor()->setWidgetProperty(Widget(name), property, value);
    Settle();
}

void FormEditor::Reset(const QString& name, const QString& property) {
    form_->cursor()->resetWidgetProperty(Widget(name), property);
    Settle();
}

QToolButton* FormEditor::OpenEditor(const QString& property) {
    QDesignerPropertyEditorInterface* const editor = core_->propertyEditor();
    for (auto* tree : editor->findChildren<QTreeWidget*>()) {
        const auto lines = tree->findItems(property, Qt::MatchExactly | Qt::MatchRecursive);
        if (lines.isEmpty())
            continue;
        tree->scrollToItem(lines.first());
        tree->setCurrentItem(lines.first());
        Settle();
        QTest::mouseClick(
            tree->viewport(), Qt::LeftButton, {},
            QPoint(tree->columnViewportPosition(1) + 20, tree->visualItemRect(lines.first()).center().y()));
        Settle();
        EXPECT_EQ(editor->currentPropertyName().toStdString(), property.toStdString());
        for (auto* button : tree->viewport()->findChildren<QToolButton*>()) {
            if (button->isVisible() && button->text() == QLatin1String("..."))
                return button;
        }
    }
    return nullptr;
}

void FormEditor::Settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

QStringList FormEditor::TakeMessages() {
    Settle();
    QStringList texts;
    for (bool found = true; found;) {
        found = false;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QMessageBox*>(widget);
            if (!box || !box->isVisible())
                continue;
            texts.append(box->text());
            box->close();
            Settle();
            found = true;
            break;
        }
    }
    return texts;
}

QString FormText(const QString& widgets) {
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Form</class>
 <widget class="QWidget" name="Form">
  <property name="geometry"><rect><x>0</x><y>0</y><width>400</width><height>300</height></rect></property>
  <property name="windowTitle"><string>Form</string></property>
%1 </widget>
 <resources/>
 <connections/>
</ui>
)")
        .arg(widgets);
}

QString WidgetText(const QString& className, const QString& name, const QString& properties) {
    return QStringLiteral(
               "<widget class=\"zk::%1\" name=\"%2\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
               "<width>76</width><height>46</height></rect></property>%3</widget>\n")
        .arg(className, name, properties);
}

std::vector<std::string> ChangedLines(const QString& a, const QString& b) {
    const QStringList before = a.split(QLatin1Char('\n'));
    const QStringList after = b.split(QLatin1Char('\n'));
    std::vector<std::string> changed;
    for (qsizetype i = 0; i < after.size(); ++i) {
        if (i >= before.size() || before[i] != after[i])
            changed.push_back(after[i].trimmed().toStdString());
    }
    return changed;
}

bool KeepForm(const QString& name, const QString& contents) {
    if (qgetenv("ZKOGL_BASELINES") != "write")
        return false;
    QFile file(QStringLiteral(ZKOGL_FORMS "/") + name);
    return file.open(QIODevice::WriteOnly) && file.write(contents.toUtf8()) > 0;
}

QString KeptForm(const QString& name) {
    QFile file(QStringLiteral(ZKOGL_FORMS "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll());
}

}  // namespace zk::test
