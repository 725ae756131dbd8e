#include "polygons.h"
#include "rounds.h"

#include <zk/_zkmath/inside.h>
#include <zk/_zkmath/matrix.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/convex.h>
#include <zk/_zkxyarrays/orientation.h>
#include <zk/_zkxyarrays/transform.h>
#include <zk/_zkxyz/message.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>

namespace {

using namespace zk;
using Poly = std::vector<TXYZ>;
using Faces = std::vector<Poly>;

void Fill(TlistOFxyzArray& list, const Faces& faces) {
    for (const Poly& p : faces)
        ArrayAddData(*list.AddArray(), static_cast<int>(p.size()), p.data());
}

Faces Contents(const TlistOFxyzArray& list) {
    Faces faces;
    for (int i = 0; i < list.Count(); ++i)
        faces.push_back(Points(*list[i]));
    return faces;
}

Faces Pieces(const Faces& faces) {
    TlistOFxyzArray in, out;
    Fill(in, faces);
    DOConvex(in, out);
    return Contents(out);
}

// Twice the area as a vector, seen from the first point.
TXYZ AreaOf(const Poly& p) {
    TXYZ sum;
    for (std::size_t i = 1; i + 1 < p.size(); ++i)
        sum = Add(sum, Vekt(Sub(p[i], p[0]), Sub(p[i + 1], p[0])));
    return sum;
}

bool In(const TXYZ& p, const Poly& poly) {
    std::vector<TXY> flat;
    for (const TXYZ& v : poly)
        flat.push_back({v.x, v.y});
    return PktInside(TXY{p.x, p.y}, *Polygon(flat));
}

// Everything that is promised of the pieces of a face in a plane z = const.
void ExpectCovered(const Faces& faces, const Faces& pieces, std::mt19937& random) {
    const double sign = AreaOf(faces[0]).z > 0 ? 1 : -1;
    double expected = std::fabs(AreaOf(faces[0]).z);
    for (std::size_t i = 1; i < faces.size(); ++i)
        expected -= std::fabs(AreaOf(faces[i]).z);
    double sum = 0;
    double size = 0;
    for (const TXYZ& p : faces[0])
        size = std::max({size, std::fabs(p.x), std::fabs(p.y)});
    for (const Poly& piece : pieces) {
        ASSERT_GE(piece.size(), 3u);
        sum += sign * AreaOf(piece).z;
        for (std::size_t i = 0; i < piece.size(); ++i) {
            const TXYZ& p = piece[i];
            const TXYZ& q = piece[(i + 1) % piece.size()];
            const TXYZ& r = piece[(i + 2) % piece.size()];
            const TXYZ u = Sub(q, p), v = Sub(r, q);
            ASSERT_GE(sign * Vekt(u, v).z, -1e-11 * Len(u) * Len(v));
        }
    }
    ASSERT_NEAR(sum / expected, 1, 1e-12);
    std::uniform_real_distribution<double> number(-size, size);
    for (int i = 0; i < 100; ++i) {
        const TXYZ p{number(random), number(random), 0};
        bool inside = In(p, faces[0]);
        for (std::size_t k = 1; k < faces.size(); ++k)
            inside = inside && !In(p, faces[k]);
        const auto times = std::ranges::count_if(pieces, [&](const Poly& piece) { return In(p, piece); });
        ASSERT_EQ(times, inside ? 1 : 0);
    }
}

Poly Ring(std::mt19937& random, int n, TXYZ centre, double low, double high) {
    std::uniform_real_distribution<double> radius(low, high);
    Poly p;
    for (int i = 0; i < n; ++i) {
        const double r = radius(random);
        const double angle = 6.283185307179586 * i / n;
        p.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle), centre.z});
    }
    if (random() % 2)
        std::ranges::reverse(p);
    return p;
}

Poly Rect(double x, double y, double w, double h) {
    return {{x, y, 0}, {x + w, y, 0}, {x + w, y + h, 0}, {x, y + h, 0}};
}

TEST(DOConvex, AConvexFaceIsOnePieceAsItIs) {
    EXPECT_EQ(Pieces({Square3d}), Faces{Square3d});
    const Poly triangle{{0, 0, 1}, {0, 2, 3}, {5, 0, 1}};
    EXPECT_EQ(Pieces({triangle}), Faces{triangle});
    // With vertices that are no corners.
    const Poly straight{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};
    EXPECT_EQ(Pieces({straight}), Faces{straight});
    // Many corners, in each of the directions, wherever the face lies.
    for (const TXY& at : {TXY{0, 0}, TXY{-20, -30}, TXY{40, -3}, TXY{-3, 50}}) {
        Poly octagon;
        for (const TXY& p : {TXY{2, 0}, TXY{4, 0}, TXY{5, 0}, TXY{6, 1}, TXY{7, 2}, TXY{7, 3}, TXY{7, 5}, TXY{6, 6},
                             TXY{5, 7}, TXY{4, 7}, TXY{2, 7}, TXY{1, 6}, TXY{0, 5}, TXY{0, 4}, TXY{0, 2}, TXY{1, 1}})
            octagon.push_back({at.x + p.x, at.y + p.y, 0});
        EXPECT_EQ(Pieces({octagon}), Faces{octagon}) << at.x << "/" << at.y;
    }
    TlistOFxyzArray out;
    DOConvex(*Polygon3d(Square3d), out);
    DOConvex(*Polygon3d(Square3d), out);
    EXPECT_EQ(Contents(out), (Faces{Square3d, Square3d}));
}

TEST(DOConvex, AnLIsTwoPieces) {
    std::mt19937 random(1);
    Poly l{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 2, 0}};
    for (int turn = 0; turn < 2; ++turn) {
        const Faces pieces = Pieces({l});
        EXPECT_EQ(pieces.size(), 2u);
        ExpectCovered({l}, pieces, random);
        std::ranges::reverse(l);
    }
}

// Which coordinates decide is chosen by the face; in its own coordinate plane it has one choice only.
TEST(DOConvex, InEachCoordinatePlane) {
    const TXY l[] = {{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}};
    for (int plane = 0; plane < 3; ++plane)
        for (const bool reversed : {false, true}) {
            Poly face;
            for (const TXY& p : l)
                face.push_back(plane == 0 ? TXYZ{7, p.x, p.y} : plane == 1 ? TXYZ{p.x, 7, p.y} : TXYZ{p.x, p.y, 7});
            if (reversed)
                std::reverse(face.begin(), face.end());
            const Faces pieces = Pieces({face});
            ASSERT_EQ(pieces.size(), 2U) << "plane " << plane;
            const TXYZ area = Add(AreaOf(pieces[0]), AreaOf(pieces[1]));
            EXPECT_EQ(std::fabs(area.x) + std::fabs(area.y) + std::fabs(area.z), 6) << "plane " << plane;
            EXPECT_EQ(std::fabs(plane == 0 ? area.x : plane == 1 ? area.y : area.z), 6) << "plane " << plane;
        }
}

// Of the planes through two axes the face is seen in one that it has an area in, oblique ones and single triangles,
// too.
TEST(DOConvex, InPlanesThroughOneAxis) {
    for (const double sign : {1.0, -1.0})
        for (int axis = 0; axis < 3; ++axis)
            for (const bool triangle : {false, true}) {
                Poly face;
                for (const TXY& p : {TXY{0, 0}, TXY{10, 0}, TXY{10, 1}, TXY{0, 1}}) {
                    const double along = p.y, across = p.x, other = sign * p.x;
                    face.push_back(axis == 0   ? TXYZ{along, across, other}
                                   : axis == 1 ? TXYZ{across, along, other}
                                               : TXYZ{across, other, along});
                }
                if (triangle)
                    face.pop_back();
                const Faces pieces = Pieces({face});
                ASSERT_EQ(pieces.size(), 1U) << axis << " " << sign;
                EXPECT_EQ(pieces[0].size(), face.size()) << axis << " " << sign;
            }
    for (const Poly& face : {Poly{{0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, Poly{{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}})
        EXPECT_EQ(Pieces({face}).size(), 1U);
}

// How near a hole may come to the outline depends on the face's size, not on where it lies.
TEST(DOConvex, FarAwayAHoleComesAsNearToTheOutline) {
    const double at = 1048576, gap = std::ldexp(1.0, -28);
    const Poly hole{{at + gap, at + 2, 0}, {at + gap, at + 4, 0}, {at + 2, at + 4, 0}, {at + 2, at + 2, 0}};
    double area = 0, narrow = 0;
    for (const Poly& piece : Pieces({Rect(at, at, 8, 8), hole})) {
        area += AreaOf(piece).z;
        for (const TXYZ& p : piece)
            narrow = std::max(narrow, p.x == at + gap ? 1.0 : 0.0);
    }
    EXPECT_NEAR(area / 2, 64 - (2 - gap) * 2, 1e-10);
    EXPECT_EQ(narrow, 1);
}

// A spike has no area, wherever the face lies and whichever way it points.
TEST(DOConvex, SpikesInEveryDirection) {
    for (const TXY& at : {TXY{10, 10}, TXY{-30, 20}, TXY{0, 0}, TXY{-7, -9}})
        for (const TXY& tip : {TXY{5, 0}, TXY{3, 4}, TXY{0, 5}, TXY{1, 6}, TXY{6, 1}, TXY{7, -3}, TXY{-3, 7}}) {
            const TXYZ corner{at.x + 2, at.y + 2, 0};
            const Poly face{{at.x, at.y, 0}, {at.x + 2, at.y, 0}, corner, {corner.x + tip.x, corner.y + tip.y, 0},
                            corner,          {at.x, at.y + 2, 0}};
            double area = 0;
            for (const Poly& piece : Pieces({face})) {
                area += AreaOf(piece).z;
                for (const TXYZ& p : piece)
                    EXPECT_TRUE(p.x <= corner.x && p.y <= corner.y) << tip.x << "/" << tip.y;
            }
            EXPECT_EQ(area, 8) << at.x << "/" << at.y << ", " << tip.x << "/" << tip.y;
        }
}

TEST(DOConvex, HolesStayOpen) {
    std::mt19937 random(2);
    const Poly outline = Rect(0, 0, 10, 10);
    for (int turn = 0; turn < 4; ++turn) {
        Faces faces{outline, Rect(2, 2, 2, 3), Rect(6, 1, 2, 2), Rect(5, 5, 4, 4)};
        if (turn & 1)
            std::ranges::reverse(faces[0]);
        if (turn & 2)
            std::ranges::reverse(faces[2]);
        ExpectCovered(faces, Pieces(faces), random);
    }
    const Faces frame{outline, Rect(4, 4, 2, 2)};
    EXPECT_LE(Pieces(frame).size(), 6u);
}

// The way by which a hole is joined to the outline serves as one of the cuts that its corners need.
TEST(DOConvex, HolesTakeFewPieces) {
    EXPECT_EQ(Pieces({Rect(0, 0, 9, 9), Rect(3, 3, 3, 3)}).size(), 4u);
    EXPECT_LE(Pieces({Rect(0, 0, 30, 9), Rect(3, 3, 3, 3), Rect(7, 3, 3, 3)}).size(), 7u);
    // Three of its corners see no vertex that a single cut could go to.
    const Poly diamond{{5, 1, 0}, {9, 5, 0}, {5, 9, 0}, {1, 5, 0}};
    EXPECT_EQ(Pieces({Rect(0, 0, 10, 10), diamond}).size(), 7u);
}

// Of two holes equally near to the outline the first one is joined to it, the other to that one: the outline gets one
// vertex, beside the first.
TEST(DOConvex, TheFirstOfEquallyNearHolesComesFirst) {
    const Poly outline = Rect(0, 0, 10, 4);
    const Poly left = Rect(2, 1, 2, 2);
    const Poly right = Rect(4.5, 1, 2, 2);
    for (const bool leftFirst : {true, false}) {
        const Faces faces = leftFirst ? Faces{outline, left, right} : Faces{outline, right, left};
        std::vector<double> added;
        for (const Poly& piece : Pieces(faces))
            for (const TXYZ& p : piece)
                if ((p.y == 0 || p.y == 4) && p.x != 0 && p.x != 10)
                    added.push_back(p.x);
        ASSERT_FALSE(added.empty());
        for (const double x : added)
            EXPECT_EQ(x <= 4, leftFirst) << x;
    }
}

TEST(DOConvex, AHoleThatTouches) {
    std::mt19937 random(3);
    const Poly outline = Rect(0, 0, 4, 4);
    const Poly corner{{0, 0, 0}, {2, 1, 0}, {1, 2, 0}};              // in a corner of the outline
    const Poly edge{{2, 0, 0}, {3, 1, 0}, {1, 1, 0}};                // on an edge
    const Poly diamond{{2, 0, 0}, {4, 2, 0}, {2, 4, 0}, {0, 2, 0}};  // on all four
    const Poly along = Rect(1, 0, 2, 1);                             // along an edge
    const Poly other{{3, 1, 0}, {3.5, 3, 0}, {2.5, 3, 0}};           // another hole
    for (const Faces& faces :
         {Faces{outline, corner}, Faces{outline, edge}, Faces{outline, diamond}, Faces{outline, along},
          Faces{outline, edge, other}, Faces{outline, other, edge, {{1, 1, 0}, {1, 3, 0}, {0.5, 2, 0}}}})
        ExpectCovered(faces, Pieces(faces), random);
    // On an edge that is not along an axis, where the touching point cannot be exact.
    const Poly tilted{{0, 0, 0}, {3, 1, 0}, {2, 4, 0}, {-1, 3, 0}};
    const Poly touching{{0.3 * 3, 0.3, 0}, {1.2, 1.5, 0}, {0.8, 1.6, 0}};
    ExpectCovered({tilted, touching}, Pieces({tilted, touching}), random);
}

TEST(DOConvex, HolesThatAreLeftOut) {
    const Poly outline = Rect(0, 0, 4, 4);
    EXPECT_EQ(Pieces({outline, Rect(6, 1, 1, 1)}), Faces{outline});
    EXPECT_EQ(Pieces({outline, Rect(4, 1, 1, 1)}), Faces{outline}) << "outside, along an edge";
    EXPECT_EQ(Pieces({outline, Rect(4, 4, 1, 1)}), Faces{outline}) << "outside, in a corner";
    EXPECT_EQ(Pieces({outline, {{1, 1, 0}, {2, 2, 0}}}), Faces{outline});
    EXPECT_EQ(Pieces({outline, {{1, 1, 0}, {2, 2, 0}, {3, 3, 0}}}), Faces{outline});
    EXPECT_EQ(Pieces({outline, {}}), Faces{outline});
    EXPECT_EQ(Pieces({outline, {{std::numeric_limits<double>::quiet_NaN(), 1, 0}, {2, 2, 0}, {1, 2, 0}}}),
              Faces{outline});
    EXPECT_EQ(Pieces({outline, {{1, 1, 1e11}, {2, 2, 1e11}, {1, 2, 1e11}}}), Faces{outline});
    std::mt19937 random(4);
    const Faces frame{outline, Rect(1, 1, 2, 2)};
    ExpectCovered(frame, Pieces({outline, Rect(1, 1, 2, 2), Rect(1.5, 1.5, 0.5, 0.5)}), random);
}

TEST(DOConvex, OutlinesWithoutPieces) {
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    const double Infinity = std::numeric_limits<double>::infinity();
    for (const Poly& p :
         {Poly{}, Poly{{0, 0, 0}}, Poly{{0, 0, 0}, {1, 0, 0}}, Poly{{0, 0, 0}, {1, 1, 1}, {2, 2, 2}},
          Poly(7, TXYZ{1, 2, 3}), Poly{{0, 0, 0}, {NaN, 0, 0}, {1, 1, 0}}, Poly{{0, 0, 0}, {Infinity, 0, 0}, {1, 1, 0}},
          Poly{{0, 0, 0}, {1e300, 0, 0}, {0, 1e300, 0}}}) {
        EXPECT_TRUE(Pieces({p}).empty());
        EXPECT_TRUE(Pieces({p, Square3d}).empty());
    }
    EXPECT_TRUE(Pieces({}).empty());
    TlistOFxyzArray in, out;
    in.Add(nullptr);
    DOConvex(in, out);
    EXPECT_EQ(out.Count(), 0);
}

// What is next to nothing, as rounding leaves it behind, is taken for nothing and comes out as it is.
TEST(DOConvex, CoordinatesNextToNothing) {
    for (const double tiny : {1e-59, 1e-61, 1e-100, 1e-300, 5e-324, -1e-70}) {
        const Poly l{{tiny, -tiny, 0}, {2, tiny, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {-tiny, 2, 0}, {tiny, tiny, 0}};
        const Faces pieces = Pieces({l});
        ASSERT_LE(pieces.size(), 3u);
        double sum = 0;
        for (const Poly& piece : pieces) {
            sum += AreaOf(piece).z / 2;
            for (const TXYZ& p : piece)
                EXPECT_EQ(std::ranges::count(l, p), 1) << tiny;
        }
        EXPECT_DOUBLE_EQ(sum, 3) << tiny;
    }
    Poly dust = Rect(0, 0, 1, 1);
    for (TXYZ& p : dust)
        p = Mul(p, 1e-61);
    EXPECT_TRUE(Pieces({dust}).empty());
    EXPECT_EQ(Pieces({Rect(0, 0, 1, 1), dust}), Faces{Rect(0, 0, 1, 1)});
}

TEST(DOConvex, RepeatedPointsCountOnce) {
    const Poly closed{{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}};
    EXPECT_EQ(Pieces({closed}), Faces{Square3d});
}

TEST(DOConvex, SpikesAndBridges) {
    std::mt19937 random(5);
    // A hole that is joined to the outline already.
    const Poly keyhole{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0},
                       {1, 1, 0}, {1, 3, 0}, {3, 3, 0}, {3, 1, 0}, {1, 1, 0}};
    double sum = 0;
    for (const Poly& piece : Pieces({keyhole}))
        sum += AreaOf(piece).z / 2;
    EXPECT_DOUBLE_EQ(sum, 12);
    const Poly spike{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {5, 1, 0}, {2, 1, 0}, {2, 2, 0}, {0, 2, 0}};
    sum = 0;
    for (const Poly& piece : Pieces({spike}))
        sum += AreaOf(piece).z / 2;
    EXPECT_DOUBLE_EQ(sum, 4);
}

TEST(DOConvex, RandomFaces) {
    std::mt19937 random(6);
    std::size_t pieces = 0;
    for (int round = 0; round < test::Rounds(400); ++round) {
        Faces faces{Ring(random, 3 + round % 80, {0, 0, 0}, round % 3 ? 0.95 : 0.3, 1)};
        if (round % 3)
            for (int i = 0; i < round % 7; ++i) {
                const double angle = 6.283185307179586 * i / (round % 7);
                faces.push_back(
                    Ring(random, 3 + round % 11, {0.33 * std::cos(angle), 0.33 * std::sin(angle), 0}, 0.03, 0.13));
            }
        if (faces[0].size() < 8 && faces.size() > 1)
            faces.resize(1);
        const Faces out = Pieces(faces);
        SCOPED_TRACE(round);
        ASSERT_NO_FATAL_FAILURE(ExpectCovered(faces, out, random));
        EXPECT_EQ(out, Pieces(faces));
        pieces += out.size();
    }
    // To cut ears off and join them again, and no more, takes 9,700; to turn diagonals once only, 8,954.
    EXPECT_LT(pieces, 8920u);
}

TEST(DOConvex, HolesOnAGrid) {
    std::mt19937 random(7);
    for (int round = 0; round < 100; ++round) {
        Faces faces{Rect(0, 0, 20, 20)};
        for (int x = 0; x < 20; x += 4)
            for (int y = 0; y < 20; y += 4)
                if (random() % 2)
                    faces.push_back(Rect(x + 1 + static_cast<int>(random() % 2), y + 1,
                                         1 + static_cast<int>(random() % 2), 1 + static_cast<int>(random() % 3)));
        SCOPED_TRACE(round);
        ASSERT_NO_FATAL_FAILURE(ExpectCovered(faces, Pieces(faces), random));
    }
}

TEST(DOConvex, InAnyPlaneAndSize) {
    std::mt19937 random(8);
    std::uniform_real_distribution<double> number(-3, 3);
    for (int round = 0; round < 100; ++round) {
        Faces faces{Ring(random, 40, {0, 0, 0}, 0.6, 1), Ring(random, 9, {0.1, 0, 0}, 0.1, 0.4)};
        const double area = Len(AreaOf(faces[0])) - Len(AreaOf(faces[1]));
        const double size = std::pow(10, 2 * number(random));
        const Tmatrix turn =
            Mulmat(RotationToMatrix3d({{0, 0, 0}, {number(random), number(random), number(random)}}, number(random)),
                   TranslationToMatrix3d({number(random), number(random), number(random)}));
        for (Poly& p : faces)
            for (TXYZ& v : p) {
                MatMul(turn, v);
                v = Mul(v, size);
            }
        const TXYZ normal = Normalize(AreaOf(faces[0]));
        double sum = 0;
        for (const Poly& piece : Pieces(faces)) {
            sum += Skal(AreaOf(piece), normal);
            for (const TXYZ& p : piece)
                ASSERT_NEAR(Skal(Sub(p, faces[0][0]), normal), 0, 1e-12 * size * 10);
        }
        ASSERT_NEAR(sum / (size * size) / area, 1, 1e-12);
    }
}

TEST(DOConvex, WildInputEnds) {
    std::mt19937 random(9);
    for (int round = 0; round < test::Rounds(1500); ++round) {
        Faces faces(1 + random() % 3);
        const int grid = 2 + static_cast<int>(random() % 6);
        for (Poly& p : faces) {
            p.resize(random() % 14);
            for (TXYZ& v : p)
                v = {static_cast<double>(random() % grid), static_cast<double>(random() % grid), 0};
        }
        for (const Poly& piece : Pieces(faces))
            ASSERT_GE(piece.size(), 3u);
    }
}

TEST(DOConvex, NumbersBeyondReasonEnd) {
    const double Infinity = std::numeric_limits<double>::infinity();
    const double strange[] = {std::numeric_limits<double>::quiet_NaN(),
                              Infinity,
                              -Infinity,
                              std::numeric_limits<double>::max(),
                              9e69,
                              -9e69,
                              1e30,
                              1e-30,
                              1e-59,
                              -1e-300,
                              0,
                              1,
                              2};
    std::mt19937 random(10);
    std::size_t pieces = 0;
    for (int round = 0; round < test::Rounds(3000); ++round) {
        Faces faces(1 + random() % 3);
        // Every other round without those that leave no pieces.
        const std::size_t first = round % 2 ? 4 : 0;
        for (Poly& p : faces) {
            p.resize(3 + random() % 9);
            for (TXYZ& v : p)
                for (double* x : {&v.x, &v.y, &v.z})
                    *x = strange[first + random() % (std::size(strange) - first)];
        }
        for (const Poly& piece : Pieces(faces)) {
            ++pieces;
            ASSERT_GE(piece.size(), 3u);
            for (const TXYZ& p : piece)
                ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z));
        }
    }
    EXPECT_GT(pieces, std::size_t(test::Rounds(2000)));
}

// --- cases as files ---

struct FaceCase {
    Faces faces;
    double area = 0;
    std::size_t count = 0;
};

// "outline" or "hole", then a vertex on each line; "pieces area <number> count <number>".
FaceCase ReadFace(const std::filesystem::path& file) {
    FaceCase c;
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        std::string ignored;
        if (line.empty() || line[0] == '#')
            continue;
        if (line == "outline" || line == "hole") {
            c.faces.emplace_back();
        } else if (line.starts_with("pieces")) {
            words >> ignored >> ignored >> c.area >> ignored >> c.count;
        } else if (!c.faces.empty()) {
            TXYZ p;
            words >> p.x >> p.y >> p.z;
            c.faces.back().push_back(p);
        }
        EXPECT_FALSE(words.fail()) << file << ": " << line;
    }
    return c;
}

TEST(DOConvexCases, ComeOutAsTheirFilesSay) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(CASES_DIR)) {
        if (!entry.path().filename().string().starts_with("face_"))
            continue;
        ++files;
        SCOPED_TRACE(entry.path().filename());
        FaceCase c = ReadFace(entry.path());
        for (int turn = 0; turn < 2; ++turn) {
            const Faces pieces = Pieces(c.faces);
            // The other way round the cuts may come out differently.
            if (turn == 0) {
                EXPECT_EQ(pieces.size(), c.count);
            }
            const TXYZ whole = AreaOf(c.faces[0]);
            double area = 0;
            for (const Poly& piece : pieces)
                area += Skal(AreaOf(piece), whole) / Len(whole) / 2;
            EXPECT_NEAR(area, c.area, 1e-12 * c.area);
            std::ranges::reverse(c.faces[0]);
        }
    }
    EXPECT_GE(files, 13);
}

// --- RefineTriangles ---

Faces Refined(const Faces& faces, double d) {
    TlistOFxyzArray in, out;
    Fill(in, faces);
    RefineTriangles(in, d, out);
    return Contents(out);
}

double Perimeter(const Poly& p) {
    return Dist(p[0], p[1]) + Dist(p[1], p[2]) + Dist(p[2], p[0]);
}

const double Height = std::sqrt(0.75);
const Poly Equilateral{{0, 0, 0}, {1, 0, 0}, {0.5, Height, 0}, {0, 0, 0}};

TEST(RefineTriangles, SmallEnoughStays) {
    EXPECT_EQ(Refined({Equilateral}, 3.1), (Faces{{{0, 0, 0}, {1, 0, 0}, {0.5, Height, 0}}}));
    // The perimeter itself is small enough.
    const Poly right{{0, 0, 0}, {3, 0, 0}, {3, 4, 0}, {9, 9, 9}};
    EXPECT_EQ(Refined({right}, 12).size(), 1u);
}

TEST(RefineTriangles, FourOfOneInOrder) {
    const Poly right{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {0, 0, 0}};
    EXPECT_EQ(Refined({right}, 7), (Faces{{{0, 0, 0}, {2, 0, 0}, {0, 2, 0}},
                                          {{2, 0, 0}, {4, 0, 0}, {2, 2, 0}},
                                          {{2, 2, 0}, {0, 4, 0}, {0, 2, 0}},
                                          {{2, 0, 0}, {2, 2, 0}, {0, 2, 0}}}));
    EXPECT_EQ(Refined({Equilateral}, 3).size(), 1u);
    const Faces four = Refined({Equilateral}, 2);
    ASSERT_EQ(four.size(), 4u);
    for (const Poly& p : four)
        EXPECT_NEAR(Perimeter(p), 1.5, 1e-15);
}

TEST(RefineTriangles, ThreePointsArePassedOver) {
    EXPECT_TRUE(Refined({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 0, 0}, {1, 0, 0}}, {}}, 100).empty());
    // Points beyond the third are not looked at.
    EXPECT_EQ(Refined({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {7, 7, 7}, {8, 8, 8}}}, 100).size(), 1u);
}

TEST(RefineTriangles, CoversTheSame) {
    const Poly p{{0, 0, 1}, {5, 1, 2}, {2, 7, 3}, {0, 0, 1}};
    TXYZ sum;
    for (const Poly& t : Refined({p}, 2)) {
        EXPECT_LE(Perimeter(t), 2);
        sum = Add(sum, AreaOf(t));
    }
    EXPECT_LT(Dist(sum, AreaOf({p[0], p[1], p[2]})), 1e-11);
}

TEST(RefineTriangles, AppendsAndMayReadWhatItWrites) {
    TlistOFxyzArray list;
    Fill(list, {Equilateral, Equilateral});
    RefineTriangles(list, 2, list);
    EXPECT_EQ(list.Count(), 2 + 8);
}

TEST(RefineTriangles, BoundsThatCannotBeReached) {
    const double NaN = std::numeric_limits<double>::quiet_NaN();
    const double Infinity = std::numeric_limits<double>::infinity();
    for (const double d : {0.0, -1.0, NaN})
        EXPECT_EQ(Refined({Equilateral}, d).size(), 1u);
    EXPECT_EQ(Refined({{{NaN, 0, 0}, {1, 0, 0}, {0, 1, 0}, {NaN, 0, 0}}}, 1).size(), 1u);
    EXPECT_EQ(Refined({{{Infinity, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}}}, 1).size(), 1u);
    // A triangle of one point is as small as it gets.
    EXPECT_EQ(Refined({Poly(4, TXYZ{1, 1, 1})}, 1e-300).size(), 1u);
}

TEST(RefineTriangles, PiecesOfAFaceClosedToFourPointsCoverTheFace) {
    // What a caller does with the pieces of DOConvex: fans of closed triangles.
    const Faces face{Rect(0, 0, 10, 10), Rect(3, 3, 2, 5)};
    Faces closed;
    for (const Poly& piece : Pieces(face))
        for (std::size_t i = 1; i + 1 < piece.size(); ++i)
            closed.push_back({piece[0], piece[i], piece[i + 1], piece[0]});
    double sum = 0;
    for (const Poly& t : Refined(closed, 2))
        sum += AreaOf(t).z / 2;
    EXPECT_NEAR(sum, 90, 1e-10);
}

}  // namespace
