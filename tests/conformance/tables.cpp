#include "tables.h"

#include <QFile>

#include <cstdio>

namespace zk::test {

namespace {

std::map<QString, std::map<QString, int>>& counts() {
    static std::map<QString, std::map<QString, int>> all;
    return all;
}

/// Prints how much was looked at when all tests have run.
class Totals : public testing::Environment {
  public:
    void TearDown() override {
        std::printf("\n%-24s %s\n", "looked at", "count");
        int sum = 0;
        for (const auto& [group, members] : counts()) {
            int inGroup = 0;
            for (const auto& member : members) {
                if (members.size() > 1)
                    std::printf("  %-22s %5d\n", qPrintable(member.first), member.second);
                inGroup += member.second;
            }
            std::printf("%-24s %5d\n", qPrintable(group), inGroup);
            sum += inGroup;
        }
        std::printf("%-24s %5d\n\n", "in all", sum);
    }
};

const testing::Environment* const totals = testing::AddGlobalTestEnvironment(new Totals);

}  // namespace

std::vector<QStringList> ReadTable(const char* name) {
    QFile file(QStringLiteral(ZKOGL_TABLES "/") + QLatin1String(name));
    std::vector<QStringList> rows;
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString& line : lines) {
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        QStringList columns = line.split(u'|');
        for (QString& column : columns)
            column = column.trimmed();
        rows.push_back(columns);
    }
    return rows;
}

std::string TestName(const QString& text) {
    std::string name;
    for (const char c : text.toStdString())
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

void Count(const QString& group, const QString& what) {
    ++counts()[group][what];
}

}  // namespace zk::test
