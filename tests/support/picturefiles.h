#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

#include <initializer_list>

namespace zk::test {

// Picture files of all formats, as bytes. What Qt writes, Qt writes; the rest is put together here.

/// A picture whose every pixel tells its place: red grows with x, green with y, blue is 80.
QImage Gradient(const QSize& size);

QByteArray Bmp(const QImage& picture);
/// Five bits for each color, the highest of 16 unused.
QByteArray Bmp16(const QImage& picture);
/// With run lengths: one row after the other in a single color, of `colors`, first the lowest.
QByteArray BmpRuns(int width, const std::vector<QRgb>& colors);
QByteArray Jpeg(const QImage& picture, bool progressive);
/// An icon with these images, each with an alpha channel.
QByteArray Icon(const std::vector<QImage>& images);

/// A metafile of 2000 × 1000 units, 720 to the inch (267 × 133 dots): the left half is red, the right half blank but
/// for a blue ellipse in its middle, and the text "Zk" stands black in the red.
QByteArray Wmf();
/// The same picture of 267 × 133 dots.
QByteArray Emf();

/// A folder of its own that goes with all that is in it.
class Files {
  public:
    QString Write(const QString& name, const QByteArray& content) const;
    QString Path(const QString& name) const { return folder_.filePath(name); }

  private:
    QTemporaryDir folder_;
};

}  // namespace zk::test
