#pragma once

#include "properties.h"

#include <QComboBox>
#include <QLabel>
#include <QList>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QWidget>

#include <vector>

namespace gallery {

class ValueEditor;

/// The properties of one component, to look at and to change, and beneath them what has been changed so far, as the
/// C++ that does the same. Whoever it belongs to says which component, and when its values may be others.
class PropertyPanel : public QWidget {
    Q_OBJECT
  public:
    explicit PropertyPanel(QWidget* parent = nullptr);

    QObject* Component() const { return component_; }
    /// Shows another component; none for null. One that goes is left.
    void SetComponent(QObject* component);
    /// Shows the values that the component has now. Cheap where they are the same.
    void UpdateValues();
    /// Lets `UpdateValues` happen once, from the event loop.
    void UpdateSoon();

    /// One call for each property that is another one than before it was edited, of all components.
    QString Code() const;
    /// Gives back to every property that was edited the value that it had.
    void TakeBack();

    /// The widget of a property; null for one that is not shown.
    QWidget* EditorOf(const QString& path) const;
    /// What can be chosen in the panel, by name. Nothing is shown at first.
    void SetComponents(const QList<QObject*>& components);

    /// Why the last value was not taken; empty where it was.
    QString Fault() const { return fault_->text(); }

  Q_SIGNALS:
    /// A property was edited.
    void Edited(QObject* component);

  private:
    struct Row {
        QString path;
        ValueEditor* editor;
    };
    struct Change {
        QPointer<QObject> component;
        QString path;
        QVariant before;
    };

    void buildSheet();
    void leaveComponent();
    void edit(const QString& path, const QVariant& value);
    void showCode();

    QPointer<QObject> component_;
    std::vector<Row> rows_;
    std::vector<Change> changes_;
    bool updateWaits_ = false;
    QComboBox* chooser_;
    QScrollArea* scroller_;
    QLabel* fault_;
    QPlainTextEdit* code_;
    QPushButton* copy_;
};

}  // namespace gallery
