#pragma once

#include <QFileDialog>

class QLabel;

namespace zk {

/// Asks for a picture file that a texture can show, and shows the one that is chosen before it is taken.
class PictureDialog : public QFileDialog {
    Q_OBJECT
  public:
    /// Begins with `file`, if it names one.
    PictureDialog(QWidget* parent, const QString& file);

    /// The picture of the file that is chosen, as far as it fits; null for one that cannot be shown.
    const QImage& Preview() const { return preview_; }

  private:
    void showPreview(const QString& file);

    QLabel* picture_;
    QImage preview_;
};

}  // namespace zk
