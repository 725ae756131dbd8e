#pragma once

#include <QObject>
#include <QString>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace zk {

/// How one component stands in Designer's widget box, beside what its class itself says.
struct EntryText {
    const char* className;    ///< without namespace
    const char* name;         ///< what the first one on a form is called
    const char* toolTip;      ///< one line
    const char* description;  ///< a few sentences
};

/// The fifteen components, in the order of the widget box.
const QList<EntryText>& EntryTexts();

/// One component in Designer's widget box.
class Entry : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
  public:
    /// `text` must outlive the entry.
    Entry(const EntryText& text, QObject* parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    QString domXml() const override;
    void initialize(QDesignerFormEditorInterface* core) override;

  private:
    const EntryText& text_;
};

}  // namespace zk
