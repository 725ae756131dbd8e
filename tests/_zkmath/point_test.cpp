#include <zk/_zkmath/point.h>
#include <zk/_zkxyz/constants.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using namespace zk;

TEST(Point, NewptMakesThePointOfItsNumbers) {
    EXPECT_EQ(Newpt(1.0, 2.0, 3.0), (TXYZ{1, 2, 3}));
    EXPECT_EQ(Newpt(1, 2, 3), (TXYZ{1, 2, 3}));
    EXPECT_EQ(Newpt(1.5, 2.5), (TXY{1.5, 2.5}));
    EXPECT_EQ(Newpt(1, 2), (TXYI{1, 2}));
    EXPECT_EQ(Newpti(-3, 4), (TXYI{-3, 4}));
    EXPECT_TRUE((std::is_same_v<decltype(Newpt(1, 2)), TXYI>));
    EXPECT_TRUE((std::is_same_v<decltype(Newpt(1, 2.5)), TXY>));
    EXPECT_EQ(Newpt(1, 2.5), (TXY{1, 2.5}));
    EXPECT_EQ(Newpt(1.5f, 2), (TXY{1.5, 2}));
}

TEST(Point, NewptOfFourKeepsTheOrderOfTheCorners) {
    EXPECT_EQ(Newpt(1.0, 2.0, 3.0, 4.0), (TXYBox{{1, 2}, {3, 4}}));
    EXPECT_EQ(Newpt(3, 4, 1, 2), (TXYBox{{3, 4}, {1, 2}}));
}

TEST(Point, ExtendingTheInvertedBoxGivesThePoint) {
    EXPECT_EQ(Extend(SmallRect2d, TXY{3, -4}), (TXYBox{{3, -4}, {3, -4}}));
    EXPECT_EQ(Extend(SmallRect3d, TXYZ{3, -4, 5}), (TXYZBox{{3, -4, 5}, {3, -4, 5}}));
    EXPECT_EQ(Extend(SmallRect, TXYI{3, -4}), (TRect{3, -4, 3, -4}));
}

TEST(Point, ExtendingAccumulates) {
    EXPECT_EQ(Extend(Extend(Extend(SmallRect2d, TXY{1, 5}), TXY{3, 2}), TXY{2, 3}), (TXYBox{{1, 2}, {3, 5}}));
    EXPECT_EQ(Extend(Extend(SmallRect3d, TXYZ{1, 5, 0}), TXYZ{3, 2, -1}), (TXYZBox{{1, 2, -1}, {3, 5, 0}}));
    EXPECT_EQ(Extend(Extend(SmallRect, TXYI{1, 5}), TXYI{3, 2}), (TRect{1, 2, 3, 5}));
    EXPECT_EQ(Extend(BigRect2d, TXY{1, 5}), BigRect2d);
}

TEST(Point, ExtendingByNaNChangesNothing) {
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Extend(TXYBox{{1, 2}, {3, 5}}, TXY{NaN, 0}), (TXYBox{{1, 0}, {3, 5}}));
}

}  // namespace
