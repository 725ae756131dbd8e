#pragma once

#include <QImage>
#include <QString>
#include <gtest/gtest.h>

#include <vector>

namespace zk::test {

/// True when a picture looks like the one that is kept as `name`.png in tests/baselines: the same size, no more than
/// one pixel in two hundred off by more than a tenth of a color's range, and all of them off by less than 1 in 255 on
/// average. A pixel may be that of its neighbour in the other picture: drivers round edges another way.
///
/// Where it does not, the picture is left in the build folder's test-pictures, together with the one that was expected.
/// With ZKOGL_BASELINES=write in the environment the picture is kept instead: look at it before it is committed.
testing::AssertionResult LooksLikeBaseline(const QImage& picture, const QString& name);

/// Pictures beside each other, each row as high as its highest, on grey.
QImage Sheet(const std::vector<std::vector<QImage>>& rows);

}  // namespace zk::test
