#include <zk/_zkmath/frame.h>
#include <zk/_zkmath/matrix.h>
#include <zk/_zkmath/plane.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyz/constants.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <string>

namespace {

using namespace zk;

constexpr double Pi = std::numbers::pi;
const TBAse Counted{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};
// Orthonormal: x up, y to the right, z towards -y.
const TBAse Turned{{1, 2, 3}, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}};

double Difference(const Tmatrix& a, const Tmatrix& b) {
    double most = 0;
    for (int k = 0; k < 16; ++k)
        most = std::max(most, std::fabs(a.data()[k] - b.data()[k]));
    return most;
}

TEST(Frame, ToAMatrixAndBack) {
    const Tmatrix M = BAseToMAtrix(Counted);
    EXPECT_EQ(M, (Tmatrix{{{4, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 12, 0}, {1, 2, 3, 1}}}));
    EXPECT_EQ(MAtrixToBase(M), Counted);
    EXPECT_EQ(BAseToMAtrix(Unitbase), Identity);
    EXPECT_EQ(MAtrixToBase(Identity), Unitbase);
    Tmatrix out;
    BAseToMAtrix(Counted, out);
    EXPECT_EQ(out, M);
    TBAse b;
    MAtrixToBase(M, b);
    EXPECT_EQ(b, Counted);
}

TEST(Frame, ColumnThreeOfAMatrixIsIgnored) {
    Tmatrix M = BAseToMAtrix(Counted);
    for (int i = 0; i < 4; ++i)
        M[i][3] = 99;
    EXPECT_EQ(MAtrixToBase(M), Counted);
}

TEST(Frame, TransformMovesAndTurns) {
    TBAse b = Unitbase;
    TransformBAse(TranslationToMatrix3d({1, 2, 3}), b);
    EXPECT_EQ(b, (TBAse{{1, 2, 3}, Ex, Ey, Ez}));
    TransformBAse(RotationToMatrix3d({Nullxyz, Ez}, Pi / 2), b);
    EXPECT_TRUE(Equals(b.Origin, TXYZ{2, -1, 3}));
    EXPECT_TRUE(Equals(b.XAxis, TXYZ{0, -1, 0}));
    EXPECT_TRUE(Equals(b.YAxis, TXYZ{1, 0, 0}));
    EXPECT_TRUE(Equals(b.ZAxis, Ez));
}

TEST(Frame, TransformScalesTheAxes) {
    TBAse b{{1, 1, 1}, Ex, Ey, Ez};
    TransformBAse(Mul(Identity, 2), b);
    EXPECT_EQ(b, (TBAse{{2, 2, 2}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}}));
}

TEST(Frame, TransformDividesByTheLastElementOnly) {
    Tmatrix M = Identity;
    M[3][3] = 2;
    M[0][3] = M[1][3] = M[2][3] = 99;
    TBAse b{{2, 4, 6}, Ex, Ey, Ez};
    TransformBAse(M, b);
    EXPECT_EQ(b, (TBAse{{1, 2, 3}, {0.5, 0, 0}, {0, 0.5, 0}, {0, 0, 0.5}}));
}

TEST(Frame, AbsoluteCoordinates) {
    EXPECT_EQ(BaseGetAbs(Counted, 1, 10, 100), (TXYZ{1075, 1187, 1299}));
    EXPECT_EQ(BaseGetAbs(Counted, {1, 10, 100}), (TXYZ{1075, 1187, 1299}));
    EXPECT_EQ(BaseGetAbs(Turned, 1, 2, 3), (TXYZ{3, 5, 4}));
    TXYZ p;
    BaseGetAbs(Turned, 1, 2, 3, p);
    EXPECT_EQ(p, (TXYZ{3, 5, 4}));
    p = {1, 2, 3};
    BaseGetAbs(Turned, p, p);
    EXPECT_EQ(p, (TXYZ{3, 5, 4}));
}

TEST(Frame, RelativeCoordinates) {
    EXPECT_EQ(BaseGetRel(Turned, {3, 5, 4}), (TXYZ{1, 2, 3}));
    double x = 0, y = 0, z = 0;
    BaseGetRel(Turned, {3, 5, 4}, x, y, z);
    EXPECT_EQ((TXYZ{x, y, z}), (TXYZ{1, 2, 3}));
    TXYZ p{3, 5, 4};
    BaseGetRel(Turned, p, p);
    EXPECT_EQ(p, (TXYZ{1, 2, 3}));
    // Axes that are not orthonormal: the dot products as they are.
    EXPECT_EQ(BaseGetRel(Counted, {2, 3, 4}), (TXYZ{15, 24, 33}));
}

TEST(Frame, ResultsMayLieInTheFrame) {
    TBAse b = Turned;
    BaseGetAbs(b, 1, 2, 3, b.Origin);
    EXPECT_EQ(b.Origin, (TXYZ{3, 5, 4}));
    b = Turned;
    BaseGetRel(b, {3, 5, 4}, b.XAxis.x, b.YAxis.y, b.ZAxis.z);
    EXPECT_EQ(b.XAxis.x, 1);
    EXPECT_EQ(b.YAxis.y, 2);
    EXPECT_EQ(b.ZAxis.z, 3);
}

TEST(Frame, ArraysToThePlaneAndBack) {
    ArrayOwner<TXYZARRAY> space;
    ArrayOwner<TXYARRAY> flat;
    ArrayOwner<TXYZARRAY> back;
    for (int i = 0; i < 7; ++i) {
        const TXYZ p = BaseGetAbs(Turned, i, 2 * i, 3);
        ArrayAdd(*space, &p);
    }
    Arraysetcount(*flat, 40);
    To2d(Turned, *space, *flat);
    ASSERT_EQ(flat->Count, 7);
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ((*flat)[i], (TXY{static_cast<double>(i), 2.0 * i}));
    To3d(Turned, *flat, *back);
    ASSERT_EQ(back->Count, 7);
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ((*back)[i], BaseGetAbs(Turned, i, 2 * i, 0));
}

TEST(Frame, ArraysThatWereNeverMadeReadyAreMadeReady) {
    TXYZARRAY space;
    TXYARRAY flat;
    To2d(Turned, space, flat);
    EXPECT_EQ(flat.Count, 0);
    EXPECT_EQ(flat.ItemSize, 16);
    Arraysetcount(flat, 3);
    To3d(Turned, flat, space);
    EXPECT_EQ(space.Items().size(), 3u);
    EXPECT_EQ(space[2], Turned.Origin);
    ArrayDispose(flat);
    ArrayDispose(space);
}

TEST(Frame, PolyPolygonDoesNothing) {
    TlistOFxyzArray list;
    list.AddArray();
    PolyPolygonToListOfXYZArray(nullptr, nullptr, 5, list);
    EXPECT_EQ(list.Count(), 1);
}

// The frame that comes from turning the unit frame by angle about axis, then moving it.
TBAse Rotated(const TXYZ& axis, double angle, const TXYZ& move) {
    TBAse b = MAtrixToBase(RotationToMatrix3d({Nullxyz, axis}, angle));
    b.Origin = move;
    return b;
}

// Splits b and puts it together again.
void ExpectSplits(const TBAse& b, double tolerance, const std::string& what) {
    TXYZ t;
    TGerade g;
    double w = 0;
    BaseToTGW(b, t, g, w);
    EXPECT_EQ(t, b.Origin) << what;
    EXPECT_EQ(g.Origin, Nullxyz) << what;
    EXPECT_LE(std::fabs(w), Pi) << what;
    const double components[3] = {g.Direction.x, g.Direction.y, g.Direction.z};
    EXPECT_EQ(std::count(components, components + 3, 1.0) > 0, true) << what;
    const Tmatrix together = Mulmat(RotationToMatrix3d(g, w), TranslationToMatrix3d(t));
    EXPECT_LE(Difference(together, BAseToMAtrix(b)), tolerance) << what;
}

TEST(FrameSplit, WithoutRotation) {
    TXYZ t;
    TGerade g;
    double w = 77;
    BaseToTGW({{1, 2, 3}, Ex, Ey, Ez}, t, g, w);
    EXPECT_EQ(t, (TXYZ{1, 2, 3}));
    EXPECT_EQ(g, (TGerade{Nullxyz, Ez}));
    EXPECT_EQ(w, 0);
}

TEST(FrameSplit, AboutTheAxes) {
    TXYZ t;
    TGerade g;
    double w = 0;
    const TXYZ axes[3] = {Ex, Ey, Ez};
    for (const TXYZ& axis : axes) {
        for (const double angle : {0.3, 1.0, Pi / 2, 2.0, 3.0, -0.3, -Pi / 2, -3.0}) {
            BaseToTGW(Rotated(axis, angle, {1, 2, 3}), t, g, w);
            EXPECT_TRUE(Equals(g.Direction, axis)) << angle;
            EXPECT_NEAR(w, angle, 1e-14);
            ExpectSplits(Rotated(axis, angle, {1, 2, 3}), 1e-15, std::to_string(angle));
        }
        ExpectSplits(Rotated(axis, Pi, {1, 2, 3}), 1e-15, "half turn");
        ExpectSplits(Rotated(Mul(axis, -1), Pi, {1, 2, 3}), 1e-15, "half turn backwards");
    }
}

TEST(FrameSplit, ExactHalfTurns) {
    ExpectSplits({{1, 2, 3}, Ex, {0, -1, 0}, {0, 0, -1}}, 1e-15, "x");
    ExpectSplits({{1, 2, 3}, {-1, 0, 0}, Ey, {0, 0, -1}}, 1e-15, "y");
    ExpectSplits({{1, 2, 3}, {-1, 0, 0}, {0, -1, 0}, Ez}, 1e-15, "z");
    ExpectSplits({{1, 2, 3}, Ey, Ex, {0, 0, -1}}, 1e-15, "between x and y");
}

TEST(FrameSplit, SetsTheFirstComponentThatIsPinnedDown) {
    TXYZ t;
    TGerade g;
    double w = 0;
    BaseToTGW(Rotated({-2, 1, 4}, 1, Nullxyz), t, g, w);
    EXPECT_TRUE(Equals(g.Direction, TXYZ{1, -0.5, -2}));
    EXPECT_NEAR(w, -1, 1e-14);
    BaseToTGW(Rotated({0, -2, 1}, 1, Nullxyz), t, g, w);
    EXPECT_TRUE(Equals(g.Direction, TXYZ{0, 1, -0.5}));
    EXPECT_NEAR(w, -1, 1e-14);
}

// A component next to nothing is not divided by, as the others would become enormous.
TEST(FrameSplit, PassesOverWhatIsNextToNothing) {
    struct Case {
        TXYZ axis;
        double angle;
        int set;
    };
    const Case cases[]{{{5e-6, 1, 0}, Pi / 2, 1},
                       {{5e-6, 0, 1}, Pi / 2, 2},
                       {{0, 5e-6, 1}, Pi / 2, 2},
                       {{5e-6, 5e-6, 1}, 1.2, 2},
                       {{2, 1, 0}, 1.186, 0},
                       {{2, 0, 1}, 1.186, 0},
                       {{0, 2, 1}, 1.186, 1},
                       {{1, 2, 0}, 1.186, 0},
                       {{0, 1, 2}, 1.186, 1},
                       {{2, 1, 0}, std::acos(0.375), 0},
                       {{0, 2, 1}, std::acos(0.375), 1},
                       {{2, 0, 1}, std::acos(0.375), 0}};
    for (const Case& c : cases) {
        TXYZ t;
        TGerade g;
        double w = 0;
        BaseToTGW(Rotated(c.axis, c.angle, {1, 2, 3}), t, g, w);
        const double components[3] = {g.Direction.x, g.Direction.y, g.Direction.z};
        EXPECT_EQ(components[c.set], 1) << c.axis.x << "/" << c.axis.y << "/" << c.axis.z;
        EXPECT_NEAR(std::fabs(w), c.angle, 1e-9);
    }
}

// So small a turn pins down no component: the largest is set, and the first of equal ones.
TEST(FrameSplit, OfATinyTurnTheLargestIsSet) {
    TXYZ t;
    TGerade g;
    double w = 0;
    const double angle = 1e-6;
    BaseToTGW({Nullxyz, {1, 0, angle}, {0, 1, angle}, {-angle, -angle, 1}}, t, g, w);
    EXPECT_EQ(g.Direction, (TXYZ{1, -1, 0}));
    BaseToTGW({Nullxyz, {1, angle, angle}, {-angle, 1, 0}, {-angle, 0, 1}}, t, g, w);
    EXPECT_EQ(g.Direction.y, 1);
    EXPECT_EQ(g.Direction.z, -1);
}

TEST(FrameSplit, AHalfTurnHasAPositiveAngle) {
    TXYZ t;
    TGerade g;
    double w = 0;
    for (const TXYZ& axis : {Ex, Ey, Ez}) {
        const auto side = [](double component) { return component == 0 ? -1.0 : 1.0; };
        BaseToTGW({Nullxyz, {side(axis.x), 0, 0}, {0, side(axis.y), 0}, {0, 0, side(axis.z)}}, t, g, w);
        EXPECT_EQ(g.Direction, axis);
        EXPECT_EQ(w, Pi);
    }
}

TEST(FrameSplit, RandomRotations) {
    std::mt19937 random(9);
    std::normal_distribution<double> number;
    std::uniform_real_distribution<double> angle(-Pi, Pi);
    for (int i = 0; i < 10000; ++i) {
        const TXYZ axis{number(random), number(random), number(random)};
        const TXYZ move{number(random), number(random), number(random)};
        ExpectSplits(Rotated(axis, angle(random), move), 4e-15, "round " + std::to_string(i));
        if (HasFailure())
            break;
    }
}

TEST(FrameSplit, AnglesNearNothingAndNearAHalfTurn) {
    std::mt19937 random(10);
    std::normal_distribution<double> number;
    for (int i = 0; i < 1000; ++i) {
        const TXYZ axis{number(random), number(random), number(random)};
        for (const double tiny : {0.0, 1e-18, 1e-15, 1e-12, 1e-9, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3})
            for (const double angle : {tiny, -tiny, Pi - tiny, tiny - Pi}) {
                ExpectSplits(Rotated(axis, angle, {1, 2, 3}), 4e-15, std::to_string(i) + ": " + std::to_string(angle));
                if (HasFailure())
                    return;
            }
    }
}

TEST(FrameSplit, TinyAnglesAreNotLost) {
    TXYZ t;
    TGerade g;
    double w = 0;
    for (const double angle : {1e-3, 1e-6, 1e-9, 1e-12, 1e-15}) {
        BaseToTGW(Rotated({3, 4, 0}, angle, Nullxyz), t, g, w);
        EXPECT_NEAR(std::fabs(w) / angle, 1, 1e-9) << angle;
    }
}

TEST(FrameSplit, ResultMayLieInTheFrame) {
    TBAse b = Rotated({1, 2, 3}, 1, {4, 5, 6});
    TGerade g;
    double w = 0;
    BaseToTGW(b, b.XAxis, g, w);
    EXPECT_EQ(b.XAxis, (TXYZ{4, 5, 6}));
    EXPECT_TRUE(Equals(g.Direction, TXYZ{1, 2, 3}));
}

TEST(FrameSplit, FramesWithoutARotationOfTheirOwnGiveFiniteNumbers) {
    TXYZ t;
    TGerade g;
    double w = 0;
    for (const TBAse& b :
         {Counted, PlaneToBase({Nullxyz, Ez}), PlaneToBase({Nullxyz, {0.6, 0, 0.8}}), TBAse{},
          TBAse{Nullxyz, {-1, 0, 0}, {0, -1, 0}, {0, 0, -1}}, TBAse{Nullxyz, {1, 1e-300, 0}, {0, 5, 0}, {0, 0, 5}}}) {
        BaseToTGW(b, t, g, w);
        EXPECT_TRUE(std::isfinite(w));
        EXPECT_TRUE(std::isfinite(g.Direction.x + g.Direction.y + g.Direction.z));
    }
}

}  // namespace
