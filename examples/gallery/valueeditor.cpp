#include "valueeditor.h"

#include <zk/host/componentref.h>

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QLineEdit>
#include <QMetaEnum>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <limits>

using namespace zk;

namespace gallery {

ValueEditor::ValueEditor(const QObject& object, const QMetaProperty& property, QWidget* parent)
    : QObject(parent), property_(property), parent_(parent) {
    if (property.isEnumType())
        makeChoice();
    else if (property.metaType() == QMetaType::fromType<ComponentRef>())
        makeReference(object);
    else if (property.typeId() == QMetaType::Bool)
        makeCheckBox();
    else if (property.typeId() == QMetaType::Int)
        makeWholeNumber();
    else if (property.typeId() == QMetaType::Double)
        makeNumber();
    else if (property.typeId() == QMetaType::QColor)
        makeColor();
    else if (property.typeId() == QMetaType::QStringList)
        makeLines();
    else
        makeText();
}

void ValueEditor::adopt(QWidget* widget) {
    widget_ = widget;
    widget_->setFocusPolicy(Qt::StrongFocus);
    widget_->installEventFilter(this);
    // Numbers with signs and slashes between them: they would be turned about where the language runs from right to
    // left.
    QWidget* text = widget->findChild<QLineEdit*>();
    if (qobject_cast<QLineEdit*>(widget) || qobject_cast<QPlainTextEdit*>(widget))
        text = widget;
    if (text)
        text->setLayoutDirection(Qt::LeftToRight);
}

// The wheel turns the sheet, and a value only where the keyboard is.
bool ValueEditor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel && watched == widget_ && !widget_->hasFocus()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::FocusOut) {
        if (auto* lines = qobject_cast<QPlainTextEdit*>(watched); lines && lines->document()->isModified()) {
            lines->document()->setModified(false);
            Q_EMIT Edited(lines->toPlainText().split(QLatin1Char('\n')));
        }
    }
    return QObject::eventFilter(watched, event);
}

void ValueEditor::Show(const QVariant& value) {
    const auto* line = qobject_cast<QLineEdit*>(widget_);
    if (line && line->hasFocus() && line->isModified())
        return;
    if (shown_.isValid() && shown_ == value && !line)
        return;
    shown_ = value;
    const QSignalBlocker silence(widget_);
    show_(value);
}

void ValueEditor::makeCheckBox() {
    auto* box = new QCheckBox(parent_);
    connect(box, &QCheckBox::toggled, this, &ValueEditor::Edited);
    show_ = [box](const QVariant& value) { box->setChecked(value.toBool()); };
    adopt(box);
}

void ValueEditor::makeChoice() {
    auto* list = new QComboBox(parent_);
    const QMetaEnum names = property_.enumerator();
    for (int i = 0; i < names.keyCount(); ++i)
        list->addItem(QString::fromLatin1(names.key(i)), names.value(i));
    connect(list, &QComboBox::activated, this, [this, list] {
        shown_ = {};  // a choice may be one that reads as another afterwards
        Q_EMIT Edited(list->currentText());
    });
    show_ = [list](const QVariant& value) { list->setCurrentIndex(list->findData(value.toInt())); };
    adopt(list);
}

// Whatever lies in the same window and is of the class that the property takes.
void ValueEditor::makeReference(const QObject& object) {
    auto* list = new QComboBox(parent_);
    list->addItem(tr("(none)"));
    const QMetaObject* kind = ReferenceKind(object.metaObject(), property_.name());
    const QObject* form = &object;
    while (form->parent() && !(form->isWidgetType() && static_cast<const QWidget*>(form)->isWindow()))
        form = form->parent();
    for (QObject* candidate : form->findChildren<QObject*>()) {
        if (kind && candidate != &object && candidate->metaObject()->inherits(kind) &&
            !candidate->objectName().isEmpty())
            list->addItem(candidate->objectName(), QVariant::fromValue(ComponentRef(candidate)));
    }
    connect(list, &QComboBox::activated, this, [this, list](int index) {
        shown_ = {};
        Q_EMIT Edited(index == 0 ? QVariant::fromValue(ComponentRef()) : list->itemData(index));
    });
    show_ = [list](const QVariant& value) {
        const auto ref = value.value<ComponentRef>();
        int found = 0;
        for (int i = 1; i < list->count(); ++i)
            if (ref.Object() && list->itemData(i).value<ComponentRef>() == ref)
                found = i;
        list->setCurrentIndex(found);
    };
    adopt(list);
}

void ValueEditor::makeWholeNumber() {
    auto* box = new QSpinBox(parent_);
    box->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    box->setKeyboardTracking(false);
    connect(box, &QSpinBox::valueChanged, this, &ValueEditor::Edited);
    show_ = [box](const QVariant& value) { box->setValue(value.toInt()); };
    adopt(box);
}

void ValueEditor::makeNumber() {
    auto* box = new QDoubleSpinBox(parent_);
    box->setLocale(QLocale::c());
    box->setDecimals(4);
    box->setRange(-1e6, 1e6);
    box->setSingleStep(property_.name() == QByteArray("RotateBy") ? 5 : 0.1);
    box->setKeyboardTracking(false);
    connect(box, &QDoubleSpinBox::valueChanged, this, &ValueEditor::Edited);
    show_ = [box](const QVariant& value) { box->setValue(value.toDouble()); };
    adopt(box);
}

void ValueEditor::makeColor() {
    auto* button = new QPushButton(parent_);
    connect(button, &QPushButton::clicked, this, &ValueEditor::askForColor);
    show_ = [button](const QVariant& value) {
        const auto color = value.value<QColor>();
        QPixmap swatch(20, 12);
        swatch.fill(color);
        button->setIcon(swatch);
        button->setText(color.name());
    };
    adopt(button);
}

void ValueEditor::askForColor() {
    const auto before = shown_.value<QColor>();
    // Not exec(): a nested event loop would still run when the window is closed.
    auto* dialog = new QColorDialog(before, widget_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::currentColorChanged, this, [this](const QColor& color) { Q_EMIT Edited(color); });
    connect(dialog, &QColorDialog::rejected, this, [this, before] { Q_EMIT Edited(before); });
    dialog->open();
}

void ValueEditor::makeLines() {
    auto* lines = new QPlainTextEdit(parent_);
    lines->setTabChangesFocus(true);
    lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    lines->setFixedHeight(lines->fontMetrics().lineSpacing() * 5);
    show_ = [lines](const QVariant& value) { lines->setPlainText(value.toStringList().join(QLatin1Char('\n'))); };
    adopt(lines);
}

void ValueEditor::makeText() {
    auto* line = new QLineEdit(parent_);
    connect(line, &QLineEdit::editingFinished, this, [this, line] {
        if (!line->isModified())
            return;
        line->setModified(false);
        Q_EMIT Edited(line->text());
    });
    show_ = [line](const QVariant& value) {
        line->setText(value.toString());
        line->setCursorPosition(0);  // a text that is too long shows its beginning
    };
    adopt(line);
}

}  // namespace gallery
