#include "propertypanel.h"

#include "valueeditor.h"

#include <zk/host/propertypath.h>

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QGridLayout>
#include <QVBoxLayout>

#include <algorithm>

using namespace zk;

namespace gallery {

PropertyPanel::PropertyPanel(QWidget* parent)
    : QWidget(parent),
      chooser_(new QComboBox),
      scroller_(new QScrollArea),
      fault_(new QLabel),
      code_(new QPlainTextEdit),
      copy_(new QPushButton(tr("Cop&y the code"))) {
    auto* column = new QVBoxLayout(this);
    chooser_->setObjectName("component");
    chooser_->setAccessibleName(tr("Component"));
    chooser_->addItem(tr("Click a shape, or choose one"));
    connect(chooser_, &QComboBox::activated, this,
            [this](int index) { SetComponent(chooser_->itemData(index).value<QPointer<QObject>>()); });
    column->addWidget(chooser_);
    scroller_->setWidgetResizable(true);
    scroller_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller_->setFocusPolicy(Qt::NoFocus);
    column->addWidget(scroller_, 3);
    fault_->setWordWrap(true);
    fault_->hide();
    column->addWidget(fault_);
    auto* caption = new QLabel(tr("What you have c&hanged, in C++:"));
    caption->setBuddy(code_);
    column->addWidget(caption);
    code_->setObjectName("code");
    code_->setReadOnly(true);
    code_->setTabChangesFocus(true);
    code_->setLayoutDirection(Qt::LeftToRight);  // C++ runs so in every language
    code_->setLineWrapMode(QPlainTextEdit::NoWrap);
    code_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    code_->setPlaceholderText(tr("Nothing yet"));
    column->addWidget(code_, 1);
    copy_->setObjectName("copyCode");
    column->addWidget(copy_);
    connect(copy_, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(Code()); });
    buildSheet();
    showCode();
}

void PropertyPanel::SetComponent(QObject* component) {
    if (component == component_ && component)
        return UpdateValues();
    if (component_)
        component_->disconnect(this);
    component_ = component;
    if (component_)
        connect(component_, &QObject::destroyed, this, &PropertyPanel::leaveComponent, Qt::QueuedConnection);
    buildSheet();
}

void PropertyPanel::SetComponents(const QList<QObject*>& components) {
    while (chooser_->count() > 1)
        chooser_->removeItem(chooser_->count() - 1);
    for (QObject* component : components)
        chooser_->addItem(component->objectName(), QVariant::fromValue(QPointer<QObject>(component)));
    SetComponent(nullptr);
}

// Later than it goes: the whole window may be about to.
void PropertyPanel::leaveComponent() {
    if (!component_)
        buildSheet();
    showCode();
}

void PropertyPanel::buildSheet() {
    rows_.clear();
    fault_->hide();
    fault_->clear();
    int chosen = 0;
    for (int i = 1; i < chooser_->count(); ++i)
        if (component_ && chooser_->itemData(i).value<QPointer<QObject>>() == component_)
            chosen = i;
    chooser_->setCurrentIndex(chosen);
    auto* sheet = new QWidget;
    auto* grid = new QGridLayout(sheet);
    grid->setColumnStretch(1, 1);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setVerticalSpacing(3);
    QString group;
    for (const PropertyRow& row : component_ ? PropertiesOf(*component_) : std::vector<PropertyRow>()) {
        int line = grid->rowCount();
        if (row.Group != group) {
            group = row.Group;
            grid->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(group)), line++, 0, 1, 2);
        }
        const PropertyPlace place = FindProperty(*component_, row.Path);
        auto* editor = new ValueEditor(*place.Object, row.Property, sheet);
        auto* name = new QLabel(QString::fromLatin1(row.Property.name()));
        name->setToolTip(row.Path);
        name->setBuddy(editor->Widget());
        editor->Widget()->setObjectName(row.Path);
        editor->Widget()->setAccessibleName(row.Path);
        connect(editor, &ValueEditor::Edited, this,
                [this, path = row.Path](const QVariant& value) { edit(path, value); });
        grid->addWidget(name, line, 0);
        grid->addWidget(editor->Widget(), line, 1);
        rows_.push_back({row.Path, editor});
    }
    grid->setRowStretch(grid->rowCount(), 1);
    // An editor may be the one whose signal asks for another sheet.
    if (QWidget* old = scroller_->takeWidget())
        old->deleteLater();
    scroller_->setWidget(sheet);
    UpdateValues();
}

void PropertyPanel::UpdateValues() {
    updateWaits_ = false;
    if (!component_)
        return;
    for (const Row& row : rows_)
        row.editor->Show(ReadProperty(*component_, row.path));
    showCode();
}

void PropertyPanel::UpdateSoon() {
    if (std::exchange(updateWaits_, true))
        return;
    QMetaObject::invokeMethod(this, &PropertyPanel::UpdateValues, Qt::QueuedConnection);
}

// A value may change others, too, as a predefined material does the colours; all that is another one afterwards counts.
void PropertyPanel::edit(const QString& path, const QVariant& value) {
    if (!component_)
        return;
    const QPointer<QObject> component = component_;
    std::vector<QVariant> before;
    for (const Row& row : rows_)
        before.push_back(ReadProperty(*component, row.path));
    QString whyNot;
    const bool taken = WriteProperty(*component, path, value, &whyNot) == PropertyWritten::Yes;
    if (component != component_ || !component)
        return;  // a handler has other plans
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const bool isKnown = std::any_of(changes_.begin(), changes_.end(), [&](const Change& change) {
            return change.component == component && change.path == rows_[i].path;
        });
        if (!isKnown && ReadProperty(*component, rows_[i].path) != before[i])
            changes_.push_back({component, rows_[i].path, before[i]});
    }
    fault_->setText(taken ? QString() : tr("%1: %2").arg(path, whyNot));
    fault_->setVisible(!taken);
    UpdateValues();
    Q_EMIT Edited(component);
}

QString PropertyPanel::Code() const {
    QString code;
    for (const Change& change : changes_)
        if (change.component && ReadProperty(*change.component, change.path) != change.before)
            code += SetterCall(*change.component, change.path) + QLatin1Char('\n');
    return code;
}

void PropertyPanel::showCode() {
    const QString code = Code();
    if (code_->toPlainText() != code)
        code_->setPlainText(code);
    copy_->setEnabled(!code.isEmpty());
}

void PropertyPanel::TakeBack() {
    while (!changes_.empty()) {
        const Change change = changes_.back();
        changes_.pop_back();
        if (change.component)
            WriteProperty(*change.component, change.path, change.before);
    }
    UpdateValues();
    showCode();
}

QWidget* PropertyPanel::EditorOf(const QString& path) const {
    for (const Row& row : rows_)
        if (row.path == path)
            return row.editor->Widget();
    return nullptr;
}

}  // namespace gallery
