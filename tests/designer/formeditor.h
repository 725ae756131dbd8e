#pragma once

#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <string>
#include <vector>

class QDesignerFormEditorInterface;
class QDesignerFormWindowInterface;
class QDesignerPropertySheetExtension;
class QToolButton;
class QUndoStack;

namespace zk::test {

/// Designer's form editor within the test program, with one form at a time.
///
/// There is one editor in a test program, as in Designer, whose parts do not stand a second one. A test's own object is
/// a turn at it: the form is closed at its end.
class FormEditor {
  public:
    FormEditor();
    ~FormEditor();
    FormEditor(const FormEditor&) = delete;
    FormEditor& operator=(const FormEditor&) = delete;

    /// Opens a form from the text of its file; false with a failure where Designer refuses it.
    bool Open(const QString& contents);
    /// Opens an empty form.
    bool OpenEmpty();
    void Close();
    QString Save() const;

    QDesignerFormEditorInterface* Core() const { return core_; }
    QDesignerFormWindowInterface* Form() const { return form_; }
    QUndoStack* Undo() const;
    QWidget* Window() const { return window_; }

    /// Puts widgets onto the form as a paste does: `xml` is a `<widget>` element or several.
    void Paste(const QString& widgets);
    /// Selects the named widgets and nothing else.
    void Select(const QStringList& names);
    void Copy();
    void PasteAgain();
    void Delete();

    /// The widget of this name that is on the form, or null.
    QWidget* Widget(const QString& name) const;
    /// The component behind it.
    QObject* Component(const QString& name) const;

    QDesignerPropertySheetExtension* Sheet(const QString& name) const;
    QVariant Value(const QString& name, const QString& property) const;
    /// Sets a property as the property editor does, with a step of the undo stack.
    void Set(const QString& name, const QString& property, const QVariant& value);
    void Reset(const QString& name, const QString& property);

    /// Opens the property editor's line for a property of what is selected, and gives its "..." button.
    QToolButton* OpenEditor(const QString& property);

    /// Lets the event loop run until nothing is to be done.
    static void Settle();
    /// The texts of the message boxes on show, which are closed.
    static QStringList TakeMessages();

    /// Triggers an action of the manager of form windows (`QDesignerFormWindowManagerInterface::Action`).
    void Trigger(int action);

  private:
    QWidget* window_;
    QDesignerFormEditorInterface* core_;
    QDesignerFormWindowInterface* form_ = nullptr;
};

/// The text of a form with these `<widget>` elements on it.
QString FormText(const QString& widgets);
/// The element of a component at a place, with properties.
QString WidgetText(const QString& className, const QString& name, const QString& properties = {});
/// The lines of `b` that are not the same in `a`, where both have as many.
std::vector<std::string> ChangedLines(const QString& a, const QString& b);
/// With ZKOGL_BASELINES=write in the environment keeps a form beside the tests, and tells so.
bool KeepForm(const QString& name, const QString& contents);
/// A form that is kept beside the tests.
QString KeptForm(const QString& name);

}  // namespace zk::test
