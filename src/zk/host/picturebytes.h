#pragma once

#include <QByteArray>

#include <optional>

namespace zk {

// Is a picture file all there? Readers make something up for what is missing, and call that a success.

/// The number of scans of a JPEG file from its start to its end marker; none where it is no such file, or cut short.
/// What follows the end marker does not matter.
std::optional<qint64> ScansOfWholeJpeg(const QByteArray& file);

/// True for a bitmap file that holds every row its header speaks of; with run lengths, up to the mark of its end.
bool IsWholeBmp(const QByteArray& file);

/// True for an icon file (not a cursor) with at least one image, all of which lie inside the file.
bool IsWholeIcon(const QByteArray& file);

}  // namespace zk
