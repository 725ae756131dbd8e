#include <zk/_zkxyz/records.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace zk;

TEST(Records, OccupyTheirSizes) {
    EXPECT_EQ(sizeof(TXY), 16u);
    EXPECT_EQ(sizeof(TXYI), 8u);
    EXPECT_EQ(sizeof(TXYZ), 24u);
    EXPECT_EQ(sizeof(Tmatrix), 128u);
    EXPECT_EQ(sizeof(TBAse), 96u);
    EXPECT_EQ(sizeof(TPlane), 48u);
    EXPECT_EQ(sizeof(TGerade), 48u);
    EXPECT_EQ(sizeof(TRect), 16u);
    EXPECT_EQ(sizeof(TXYBox), 32u);
    EXPECT_EQ(sizeof(TXYZBox), 48u);
}

TEST(Records, LieInMemoryInFieldOrder) {
    const TBAse b{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};
    double numbers[12];
    std::memcpy(numbers, &b, sizeof b);
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(numbers[i], i + 1);

    const TRect r{1, 2, 3, 4};
    std::int32_t ints[4];
    std::memcpy(ints, &r, sizeof r);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(ints[i], i + 1);
}

TEST(Records, MatrixIsRowMajor) {
    Tmatrix m;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            m[i][j] = 4 * i + j;
    const Tmatrix& constant = m;
    for (int k = 0; k < 16; ++k)
        EXPECT_EQ(constant.data()[k], k);
    EXPECT_EQ(constant[3][1], 13);
    m.data()[13] = 99;
    EXPECT_EQ(m.e[3][1], 99);
}

TEST(Records, AreZeroWhenDeclaredWithoutAValue) {
    TXYZ p;
    EXPECT_EQ(p, (TXYZ{0, 0, 0}));
    TXYI q;
    EXPECT_EQ(q, (TXYI{0, 0}));
    Tmatrix m;
    for (int k = 0; k < 16; ++k)
        EXPECT_EQ(m.data()[k], 0);
}

TEST(Records, CompareExactly) {
    EXPECT_EQ((TXY{1, 2}), (TXY{1, 2}));
    EXPECT_NE((TXY{1, 2}), (TXY{1, 2 + 1e-15}));
    EXPECT_NE((TPlane{{0, 0, 0}, {0, 0, 1}}), (TPlane{{0, 0, 0}, {0, 0, -1}}));
    EXPECT_NE((TGerade{{0, 0, 0}, {0, 0, 1}}), (TGerade{{0, 0, 1}, {0, 0, 1}}));
    Tmatrix m;
    Tmatrix n;
    EXPECT_EQ(m, n);
    n[3][3] = 1;
    EXPECT_NE(m, n);
}

}  // namespace
