#include "recordbar.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QStandardPaths>

#include <utility>

namespace gallery {

RecordBar::RecordBar(std::function<QImage()> take, QWidget* parent)
    : QWidget(parent),
      record(new QPushButton(tr("Record p&ictures..."))),
      progress(new QProgressBar),
      cancel(new QPushButton(tr("&Stop"))),
      take_(std::move(take)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : std::initializer_list<QWidget*>{record, progress, cancel})
        row->addWidget(widget);
    record->setObjectName("record");
    progress->setObjectName("recording");
    progress->setAccessibleName(tr("Recording"));
    progress->setFormat(tr("%v of %m pictures"));
    progress->setMaximumWidth(200);
    cancel->setObjectName("cancelRecording");
    connect(record, &QPushButton::clicked, this, &RecordBar::Ask);
    connect(cancel, &QPushButton::clicked, &recorder_, &Recorder::Cancel);
    connect(&recorder_, &Recorder::Progress, this, [this](int written, int count) {
        progress->setMaximum(count);
        progress->setValue(written);
    });
    connect(&recorder_, &Recorder::Ended, this, [this](const QString& summary) {
        showState(false);
        Q_EMIT Said(summary);
    });
    showState(false);
}

void RecordBar::showState(bool recording) {
    const bool hadFocus = record->hasFocus() || cancel->hasFocus();
    record->setVisible(!recording);
    progress->setVisible(recording);
    cancel->setVisible(recording);
    if (hadFocus)
        (recording ? cancel : record)->setFocus();
}

void RecordBar::Record(const QString& folder, int count) {
    showState(true);
    recorder_.Start(folder, count, take_);
}

void RecordBar::Ask() {
    // Not exec(): a nested event loop would still run when the window is closed.
    auto* dialog = new QDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Record a series of pictures"));
    auto* form = new QFormLayout(dialog);
    auto* folder = new QLineEdit(
        QDir(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)).filePath(QStringLiteral("zkogl")));
    folder->setObjectName("folder");
    folder->setMinimumWidth(320);
    auto* browse = new QPushButton(tr("&Browse..."));
    auto* place = new QHBoxLayout;
    place->addWidget(folder, 1);
    place->addWidget(browse);
    auto* count = new QSpinBox;
    count->setObjectName("count");
    count->setRange(1, 9999);
    count->setValue(50);
    count->setSuffix(tr(" (25 to a second)"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(tr("&Folder"), place);
    static_cast<QLabel*>(form->labelForField(place))->setBuddy(folder);
    form->addRow(tr("&Pictures"), count);
    form->addRow(buttons);
    connect(browse, &QPushButton::clicked, dialog, [dialog, folder] {
        auto* files = new QFileDialog(dialog, tr("Folder for the pictures"), folder->text());
        files->setAttribute(Qt::WA_DeleteOnClose);
        files->setFileMode(QFileDialog::Directory);
        connect(files, &QFileDialog::fileSelected, folder, &QLineEdit::setText);
        files->open();
    });
    connect(folder, &QLineEdit::textChanged, buttons, [buttons](const QString& text) {
        buttons->button(QDialogButtonBox::Ok)->setEnabled(!text.trimmed().isEmpty());
    });
    connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    connect(dialog, &QDialog::accepted, this, [this, folder, count] { Record(folder->text(), count->value()); });
    dialog->open();
}

}  // namespace gallery
