#pragma once

#include <QMetaProperty>
#include <QObject>
#include <QVariant>
#include <QWidget>

#include <functional>

namespace gallery {

/// A widget that shows the value of a property and edits it, as its type asks for: a check box, a list of choices or of
/// components, a number, a colour or text.
class ValueEditor : public QObject {
    Q_OBJECT
  public:
    /// `object` has the property and must outlive the editor; `parent` owns the widget.
    ValueEditor(const QObject& object, const QMetaProperty& property, QWidget* parent);

    QWidget* Widget() const { return widget_; }
    /// Shows a value. A text that is being typed stays.
    void Show(const QVariant& value);

  Q_SIGNALS:
    /// The user wants another value; it may be none of the property.
    void Edited(const QVariant& value);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void makeCheckBox();
    void makeChoice();
    void makeReference(const QObject& object);
    void makeWholeNumber();
    void makeNumber();
    void makeColor();
    void makeLines();
    void makeText();
    void adopt(QWidget* widget);
    void askForColor();

    QMetaProperty property_;
    QWidget* parent_;
    QWidget* widget_ = nullptr;
    std::function<void(const QVariant&)> show_;
    QVariant shown_;
};

}  // namespace gallery
