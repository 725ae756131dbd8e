#include "picturedialog.h"

#include <zk/host/picture.h>

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>

namespace zk {

namespace {
constexpr int previewSide = 160;
}

PictureDialog::PictureDialog(QWidget* parent, const QString& file)
    : QFileDialog(parent, tr("Choose a picture")), picture_(new QLabel) {
    setOption(QFileDialog::DontUseNativeDialog);  // the desktop's has no room for the preview
    setFileMode(QFileDialog::ExistingFile);
    setNameFilters({tr("Pictures (*.bmp *.jpg *.jpeg *.ico *.wmf *.emf)"), tr("All files (*)")});
    picture_->setObjectName(QStringLiteral("preview"));
    picture_->setFixedSize(previewSide, previewSide);
    picture_->setAlignment(Qt::AlignCenter);
    picture_->setFrameShape(QFrame::StyledPanel);
    if (auto* grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(picture_, 0, grid->columnCount(), grid->rowCount(), 1, Qt::AlignTop);
    connect(this, &QFileDialog::currentChanged, this, &PictureDialog::showPreview);
    if (!file.isEmpty()) {
        const QFileInfo info(file);
        if (info.absoluteDir().exists())
            setDirectory(info.absoluteDir());
        selectFile(info.absoluteFilePath());
    }
    showPreview(file);
}

void PictureDialog::showPreview(const QString& file) {
    const auto format = PictureFormatOf(file);
    preview_ = format && QFileInfo(file).isFile() ? LoadPicture(file, *format) : QImage();
    if (preview_.isNull())
        picture_->setText(QFileInfo(file).isFile() ? tr("No picture") : QString());
    else
        picture_->setPixmap(QPixmap::fromImage(
            preview_.scaled(picture_->contentsRect().size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

}  // namespace zk
