#include "polygons.h"

#include <zk/_zkmath/matrix.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/transform.h>
#include <zk/_zkxyz/constants.h>

#include <gtest/gtest.h>

namespace {

using namespace zk;

// Every element its own, so that a row taken for a column shows.
const Tmatrix M{{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};

TEST(Transform, OfAPoint) {
    TXYZ p{1, 10, 100};
    MatMul(M, p);
    EXPECT_EQ(p, (TXYZ{964, 1076, 1188}));
    TXY q{1, 10};
    MatMul(M, q);
    EXPECT_EQ(q, (TXY{64, 76}));
}

TEST(Transform, DoesNotDivide) {
    Tmatrix halved = Identity;
    halved[3][3] = 2;
    TXYZ p{1, 2, 3};
    MatMul(halved, p);
    EXPECT_EQ(p, (TXYZ{1, 2, 3}));
    TXY q{1, 2};
    MatMul(halved, q);
    EXPECT_EQ(q, (TXY{1, 2}));
}

TEST(Transform, OfArrays) {
    const Tmatrix move = TranslationToMatrix3d({10, 20, 30});
    auto square = Polygon(Square);
    MatMul(move, *square);
    EXPECT_EQ(Points(*square), (std::vector<TXY>{{10, 20}, {11, 20}, {11, 21}, {10, 21}}));
    auto square3d = Polygon3d(Square3d);
    MatMul(move, *square3d);
    EXPECT_EQ(Points(*square3d), (std::vector<TXYZ>{{10, 20, 30}, {11, 20, 30}, {11, 21, 30}, {10, 21, 30}}));
    TXYARRAY none;
    MatMul(move, none);
    EXPECT_EQ(none.Count, 0);
}

TEST(Transform, OfLists) {
    const Tmatrix move = TranslationToMatrix3d({10, 20, 30});
    TlistOFXYArray flat;
    TlistOFxyzArray space;
    for (int i = 0; i < 2; ++i) {
        ArrayAddData(*flat.AddArray(), 4, Square.data());
        ArrayAddData(*space.AddArray(), 4, Square3d.data());
    }
    flat.Add(nullptr);
    space.Add(nullptr);
    MatMul(move, flat);
    MatMul(move, space);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ((*flat[i])[2], (TXY{11, 21}));
        EXPECT_EQ((*space[i])[2], (TXYZ{11, 21, 30}));
    }
}

}  // namespace
