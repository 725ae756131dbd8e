#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

namespace gallery {

class MainWindow;

/// What the user sees in the window, without the frame that the desktop puts around it. The window is shown if need be.
/// Null where the desktop gives no pictures of its windows (some do not); `whyNot` then says so in words.
QImage PictureOf(MainWindow& window, QString& whyNot);

/// Writes such a picture as a PNG file. An empty text for success, else what went wrong, in words.
QString WritePicture(MainWindow& window, const QString& path);

/// Writes what the scene of the window shows as a PNG file of `size` pixels, as much of the world as in a control whose
/// longer side has 800 pixels. The window need not be shown. An empty text for success, else what went wrong, in words.
QString WriteScene(MainWindow& window, const QSize& size, const QString& path);

/// Writes several pictures into a folder, which is made if need be, showing what the gallery can do; the paths of those
/// that were written go to `paths`. An empty text for success, else what went wrong, in words.
QString WritePictures(MainWindow& window, const QString& folder, QStringList& paths);

/// Writes `count` pictures of the page of what moves into a folder, which is made if need be: "frame-0001.png" and so
/// on, one for each 40 milliseconds of the animation, however long each of them takes. The paths of those that were
/// written go to `paths`. An empty text for success, else what went wrong, in words.
QString WriteFrames(MainWindow& window, const QString& folder, int count, QStringList& paths);

}  // namespace gallery
