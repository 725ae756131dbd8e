#include <zk/_zkmath/matrix.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyz/constants.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

using namespace zk;

constexpr double Pi = std::numbers::pi;

TXYZ Transformed(const TXYZ& p, const Tmatrix& M) {
    return {p.x * M[0][0] + p.y * M[1][0] + p.z * M[2][0] + M[3][0],
            p.x * M[0][1] + p.y * M[1][1] + p.z * M[2][1] + M[3][1],
            p.x * M[0][2] + p.y * M[1][2] + p.z * M[2][2] + M[3][2]};
}

void ExpectNear(const TXYZ& a, const TXYZ& b, double tolerance = 1e-14) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

void ExpectNear(const Tmatrix& a, const Tmatrix& b, double tolerance = 1e-14) {
    for (int k = 0; k < 16; ++k)
        EXPECT_NEAR(a.data()[k], b.data()[k], tolerance) << "element " << k;
}

class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double Number() { return distribution_(engine_); }
    TXYZ Point() { return {Number(), Number(), Number()}; }
    Tmatrix Matrix() {
        Tmatrix m;
        for (int k = 0; k < 16; ++k)
            m.data()[k] = Number();
        return m;
    }

  private:
    std::mt19937 engine_;
    std::uniform_real_distribution<double> distribution_{-3, 3};
};

TEST(Matrix, Translation) {
    const Tmatrix M = TranslationToMatrix3d({5, 6, 7});
    EXPECT_EQ(M, (Tmatrix{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {5, 6, 7, 1}}}));
    Tmatrix out;
    TranslationToMatrix3d({5, 6, 7}, out);
    EXPECT_EQ(out, M);
}

TEST(Matrix, RotationTurnsAgainstTheRightHandSense) {
    const Tmatrix M = RotationToMatrix3d({Nullxyz, Ez}, Pi / 2);
    ExpectNear(Transformed(Ex, M), {0, -1, 0});
    ExpectNear(Transformed(Ey, M), {1, 0, 0});
    EXPECT_EQ(Transformed(Ez, M), Ez);
    ExpectNear(Transformed(Ey, RotationToMatrix3d({Nullxyz, Ex}, Pi / 2)), {0, 0, -1});
    ExpectNear(Transformed(Ez, RotationToMatrix3d({Nullxyz, Ey}, Pi / 2)), {-1, 0, 0});
}

TEST(Matrix, RotationAboutALineOffTheOrigin) {
    const Tmatrix M = RotationToMatrix3d({{1, 0, 0}, {0, 0, 5}}, Pi);
    ExpectNear(Transformed({1, 0, 0}, M), {1, 0, 0});
    ExpectNear(Transformed({2, 0, 0}, M), {0, 0, 0});
    ExpectNear(Transformed({1, 2, 3}, M), {1, -2, 3});
}

TEST(Matrix, RotationElements) {
    // About the diagonal by a third of a turn: the axes change places.
    const Tmatrix M = RotationToMatrix3d({Nullxyz, {1, 1, 1}}, 2 * Pi / 3);
    ExpectNear(M, {{{0, 0, 1, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}}});
    Tmatrix out;
    RotationToMatrix3d({Nullxyz, {1, 1, 1}}, 2 * Pi / 3, out);
    EXPECT_EQ(out, M);
}

TEST(Matrix, RotationByNothingIsIdentity) {
    EXPECT_TRUE(Equals(RotationToMatrix3d({{1, 2, 3}, {4, 5, 6}}, 0), Identity));
}

TEST(Matrix, RotationWithoutAnAxisScales) {
    const Tmatrix M = RotationToMatrix3d({Nullxyz, Nullxyz}, Pi / 3);
    ExpectNear(M, {{{0.5, 0, 0, 0}, {0, 0.5, 0, 0}, {0, 0, 0.5, 0}, {0, 0, 0, 1}}});
}

TEST(Matrix, RotationsKeepLengthsAndTheirLine) {
    Random random(4);
    for (int i = 0; i < 1000; ++i) {
        const TGerade g{random.Point(), random.Point()};
        const double angle = 3 * random.Number();
        const Tmatrix M = RotationToMatrix3d(g, angle);
        ASSERT_NEAR(Determinante(M), 1, 1e-12);
        const TXYZ on = Add(g.Origin, Mul(g.Direction, random.Number()));
        ExpectNear(Transformed(on, M), on, 1e-12);
        const TXYZ p = random.Point();
        ASSERT_NEAR(Dist(Transformed(p, M), g.Origin), Dist(p, g.Origin), 1e-12);
        ExpectNear(Mulmat(M, RotationToMatrix3d(g, -angle)), Identity, 1e-12);
    }
}

TEST(Matrix, ScalingAlongALine) {
    const Tmatrix M = StreckungToMAtrix3d({1, 0, 0}, {5, 0, 0}, 3);
    EXPECT_EQ(Transformed({1, 0, 0}, M), (TXYZ{1, 0, 0}));
    EXPECT_EQ(Transformed({2, 7, 8}, M), (TXYZ{4, 7, 8}));
    Tmatrix out;
    StreckungToMAtrix3d({1, 0, 0}, {5, 0, 0}, 3, out);
    EXPECT_EQ(out, M);
    EXPECT_TRUE(Equals(StreckungToMAtrix3d({1, 2, 3}, {4, 5, 7}, 1), Identity));
    EXPECT_TRUE(Equals(StreckungToMAtrix3d({1, 2, 3}, {1, 2, 3}, 5), Identity));
}

TEST(Matrix, ScalingMultipliesAlongAndKeepsAcross) {
    Random random(5);
    for (int i = 0; i < 1000; ++i) {
        const TXYZ a = random.Point();
        const TXYZ b = random.Point();
        const double f = random.Number();
        const Tmatrix M = StreckungToMAtrix3d(a, b, f);
        ExpectNear(Transformed(a, M), a, 1e-12);
        ExpectNear(Transformed(b, M), Add(a, Mul(Sub(b, a), f)), 1e-12);
        const TXYZ across = Vekt(Sub(b, a), random.Point());
        ExpectNear(Transformed(Add(a, across), M), Add(a, across), 1e-11);
        ASSERT_NEAR(Determinante(M), f, 1e-11);
    }
}

TEST(Matrix, ProductIsFirstTheLeftThenTheRight) {
    const Tmatrix A{{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};
    const Tmatrix B{{{2, 0, 1, 0}, {0, 3, 0, 1}, {1, 0, 2, 0}, {0, 1, 0, 4}}};
    const Tmatrix C{{{5, 10, 7, 18}, {17, 26, 19, 38}, {29, 42, 31, 58}, {41, 58, 43, 78}}};
    EXPECT_EQ(Mulmat(A, B), C);
    EXPECT_EQ(Mulmat(A, Identity), A);
    EXPECT_EQ(Mulmat(Identity, A), A);
    EXPECT_EQ(Mulmat(A, NullMat), NullMat);
    const Tmatrix turnThenMove = Mulmat(RotationToMatrix3d({Nullxyz, Ez}, Pi / 2), TranslationToMatrix3d({10, 0, 0}));
    ExpectNear(Transformed(Ex, turnThenMove), {10, -1, 0});
}

TEST(Matrix, ProductMayGoWhereAFactorWas) {
    const Tmatrix A{{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};
    const Tmatrix B{{{2, 0, 1, 0}, {0, 3, 0, 1}, {1, 0, 2, 0}, {0, 1, 0, 4}}};
    const Tmatrix C = Mulmat(A, B);
    Tmatrix left = A;
    Mulmat(left, B, left);
    EXPECT_EQ(left, C);
    Tmatrix right = B;
    Mulmat(A, right, right);
    EXPECT_EQ(right, C);
    Tmatrix both = A;
    Mulmat(both, both, both);
    EXPECT_EQ(both, Mulmat(A, A));
}

TEST(Matrix, Determinant) {
    EXPECT_EQ(Determinante(Identity), 1);
    EXPECT_EQ(Determinante(NullMat), 0);
    EXPECT_EQ(Determinante(Mul(Identity, 2)), 8);
    EXPECT_EQ(Determinante({{{2, 0, 0, 0}, {0, 3, 0, 0}, {0, 0, 5, 0}, {0, 0, 0, 7}}}), 210);
    EXPECT_EQ(Determinante({{{0, 1, 0, 0}, {1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}), -1);
    EXPECT_EQ(Determinante({{{0, 0, 0, 1}, {0, 1, 0, 0}, {0, 0, 1, 0}, {1, 0, 0, 0}}}), -1);
    EXPECT_EQ(Determinante({{{1, 2, 3, 4}, {2, 5, 1, 3}, {4, 1, 2, 6}, {3, 2, 5, 1}}}), 315);
}

TEST(Matrix, ProductsAndDeterminantsAgree) {
    Random random(6);
    for (int i = 0; i < 1000; ++i) {
        const Tmatrix A = random.Matrix();
        const Tmatrix B = random.Matrix();
        const Tmatrix C = random.Matrix();
        ExpectNear(Mulmat(Mulmat(A, B), C), Mulmat(A, Mulmat(B, C)), 1e-11);
        const double product = Determinante(A) * Determinante(B);
        ASSERT_NEAR(Determinante(Mulmat(A, B)), product, 1e-9 * (1 + std::fabs(product)));
    }
}

}  // namespace
