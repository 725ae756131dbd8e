// Every value of every enumeration and every constant, held against values.txt.
#include "tables.h"

#include <zk/_zkcomtypes.h>
#include <zk/_zkdevice.h>
#include <zk/_zkmath/tolerance.h>
#include <zk/_zkxyz.h>

#include <QMetaEnum>

using namespace zk;
using namespace zk::test;

namespace {

struct ValueRow {
    QStringList columns;
    friend void PrintTo(const ValueRow& row, std::ostream* out) { *out << row.columns.join(u' ').toStdString(); }
};

std::vector<ValueRow> valueRows(const QString& kind) {
    std::vector<ValueRow> chosen;
    for (const QStringList& columns : ReadTable("values.txt"))
        if (columns[0] == kind)
            chosen.push_back({columns.mid(1)});
    return chosen;
}

std::vector<double> numbers(const QString& text) {
    std::vector<double> found;
    for (const QString& number : text.split(u' ', Qt::SkipEmptyParts))
        found.push_back(number.startsWith("0x") ? number.mid(2).toInt(nullptr, 16) : number.toDouble());
    return found;
}

template <class Number, class Record>
std::vector<double> inMemory(const Record& record) {
    static_assert(sizeof(Record) % sizeof(Number) == 0);
    const auto* first = reinterpret_cast<const Number*>(&record);
    return std::vector<double>(first, first + sizeof(Record) / sizeof(Number));
}

std::vector<double> parts(const Tmaterialkind& kind) {
    return {double(kind.Ambient), double(kind.Diffuse), double(kind.Specular), double(kind.Emission),
            kind.Shininess,       double(kind.Face),    kind.Translucent};
}

std::vector<double> parts(const TTextureKind& kind) {
    std::vector<double> all{double(kind.Visible), double(kind.EnvMode)};
    for (const double number : inMemory<double>(kind.Base))
        all.push_back(number);
    for (const double number : {double(kind.Filter), double(kind.Width), double(kind.Height), double(kind.Repeat),
                                kind.WorldWidth, kind.WorldHeight, double(kind.BaseFix)})
        all.push_back(number);
    return all;
}

std::map<QString, std::vector<double>> constants() {
    return {
        {"Ex", inMemory<double>(Ex)},
        {"Ey", inMemory<double>(Ey)},
        {"Ez", inMemory<double>(Ez)},
        {"UnitX", inMemory<double>(UnitX)},
        {"UnitY", inMemory<double>(UnitY)},
        {"UnitZ", inMemory<double>(UnitZ)},
        {"Nullxyz", inMemory<double>(Nullxyz)},
        {"Nullxy", inMemory<double>(Nullxy)},
        {"Nullxyi", inMemory<std::int32_t>(Nullxyi)},
        {"NullMat", inMemory<double>(NullMat)},
        {"Identity", inMemory<double>(Identity)},
        {"Orthoprojection", inMemory<double>(Orthoprojection)},
        {"Unitbase", inMemory<double>(Unitbase)},
        {"BigRect", inMemory<std::int32_t>(BigRect)},
        {"BigRect2d", inMemory<double>(BigRect2d)},
        {"BigRect3d", inMemory<double>(BigRect3d)},
        {"SmallRect", inMemory<std::int32_t>(SmallRect)},
        {"SmallRect2d", inMemory<double>(SmallRect2d)},
        {"SmallRect3d", inMemory<double>(SmallRect3d)},
        {"maNone", parts(maNone)},
        {"maGray", parts(maGray)},
        {"maRed", parts(maRed)},
        {"maAqua", parts(maAqua)},
        {"maNavy", parts(maNavy)},
        {"maEisen", parts(maEisen)},
        {"maLtGray", parts(maLtGray)},
        {"tkDefault", parts(tkDefault)},
        {"EPS", {EPS}},
        {"PicNameLength", {double(PicNameLength)}},
    };
}

/// What OpenGL is handed for a value, as far as an object says so without OpenGL.
int openGlNumber(const QString& type, int value, int otherwise) {
    TPolyAttributes style;
    Tmaterial material;
    if (type == "TPAMode") {
        style.SetMode(TPAMode(value));
        return int(style.GLMode());
    }
    if (type == "TPAStyle") {
        style.SetStyle(TPAStyle(value));
        return int(style.GLStyle());
    }
    if (type == "TMFace") {
        material.SetFace(TMFace(value));
        return int(material.GLFace());
    }
    return otherwise;
}

std::string valueName(const testing::TestParamInfo<ValueRow>& row) {
    const bool constant = row.param.columns[1][0].isDigit() || row.param.columns[1][0] == u'-';
    return TestName(constant ? row.param.columns[0] : row.param.columns[0] + '_' + row.param.columns[1]);
}

}  // namespace

class Enumerations : public testing::TestWithParam<ValueRow> {};

TEST_P(Enumerations, Value) {
    const QStringList& row = GetParam().columns;
    Count("enumeration values", row[0]);
    const int ordinal = row[2].toInt();
    if (row[0] == "TDeviceStates") {
        static_assert(sizeof(TDeviceStates) == 1 && sizeof(TDeviceState) == 1);
        EXPECT_EQ(row[1] == "DsPainting" ? DsPainting : DsChanging, ordinal);
        TDeviceState states;
        states.Include(TDeviceStates(ordinal));
        EXPECT_EQ(states.Bits(), 1 << ordinal);
        return;
    }
    const int index = zk::staticMetaObject.indexOfEnumerator(row[0].toLatin1());
    ASSERT_GE(index, 0);
    const QMetaEnum meta = zk::staticMetaObject.enumerator(index);
    ASSERT_LT(ordinal, meta.keyCount());
    EXPECT_EQ(meta.key(ordinal), row[1].toStdString());
    EXPECT_EQ(meta.value(ordinal), ordinal);
    if (row.value(3).isEmpty())
        return;
    const int number = row[3].startsWith("0x") ? row[3].mid(2).toInt(nullptr, 16) : row[3].toInt();
    EXPECT_EQ(openGlNumber(row[0], ordinal, number), number);
}

INSTANTIATE_TEST_SUITE_P(Table, Enumerations, testing::ValuesIn(valueRows("enum")), valueName);

TEST(EnumerationsTable, HasAllValues) {
    std::map<QString, int> counts;
    for (const ValueRow& row : valueRows("enum"))
        ++counts[row.columns[0]];
    for (int i = 0; i < zk::staticMetaObject.enumeratorCount(); ++i) {
        const QMetaEnum meta = zk::staticMetaObject.enumerator(i);
        EXPECT_EQ(meta.keyCount(), counts[meta.enumName()]) << meta.enumName();
    }
}

class Constants : public testing::TestWithParam<ValueRow> {};

TEST_P(Constants, Value) {
    const QStringList& row = GetParam().columns;
    Count("constants", "constant");
    const auto all = constants();
    ASSERT_TRUE(all.count(row[0])) << row[0].toStdString();
    EXPECT_EQ(numbers(row[1]), all.at(row[0]));
}

INSTANTIATE_TEST_SUITE_P(Table, Constants, testing::ValuesIn(valueRows("constant")), valueName);

TEST(ConstantsTable, HasAllConstants) {
    EXPECT_EQ(valueRows("constant").size(), constants().size());
}
