#pragma once

#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace zk::test {

/// The lines of a table beside the tests, cut into their columns.
std::vector<QStringList> ReadTable(const char* name);

/// A name that the test runner accepts.
std::string TestName(const QString& text);

/// Counts a promise that was looked at, for the table at the end.
void Count(const QString& group, const QString& what);

}  // namespace zk::test
