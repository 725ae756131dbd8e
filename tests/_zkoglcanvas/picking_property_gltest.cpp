// What a pick finds is what an independent computation finds: the flat faces of the shapes, cut by the column or
// pyramid of the pick. Run once at each pixel ratio (QT_SCALE_FACTOR).
#include "glform.h"
#include "random.h"
#include "rounds.h"

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkxyarrays.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>

using namespace zk;
using namespace zk::test;

namespace {

constexpr double pi = std::numbers::pi;

/// Shapes whose edge is as near as this to the edge of the column, in centimetres, are left undecided: OpenGL computes
/// with seven digits.
constexpr double margin = 0.004;
/// And so are faces that are seen edge-on: the cosine of the angle to their normal.
constexpr double edgeOn = 0.02;

using Polygon = std::vector<TXYZ>;

// --- the shapes as flat faces
// -----------------------------------------------------------------------------------------

/// What makes one hit record: faces whose fronts are seen counter-clockwise.
using Part = std::vector<Polygon>;

std::vector<Part> facesOf(const TZKOglBox& box) {
    const double a = box.GetA();
    const double b = box.GetB();
    const double c = box.GetC();
    return {{{{0, 0, 0}, {0, b, 0}, {a, b, 0}, {a, 0, 0}}}, {{{0, 0, c}, {a, 0, c}, {a, b, c}, {0, b, c}}},
            {{{0, 0, 0}, {a, 0, 0}, {a, 0, c}, {0, 0, c}}}, {{{a, 0, 0}, {a, b, 0}, {a, b, c}, {a, 0, c}}},
            {{{a, b, 0}, {0, b, 0}, {0, b, c}, {a, b, c}}}, {{{0, b, 0}, {0, 0, 0}, {0, 0, c}, {0, b, c}}}};
}

/// A ring of GLU's begins on the y axis and runs towards the x axis.
TXYZ onRing(double radius, double z, int slice, int slices) {
    const double angle = 2 * pi * slice / slices;
    return {radius * std::sin(angle), radius * std::cos(angle), z};
}

/// The belt between two rings, outwards for a lower ring that comes first.
void addBelt(Part& part, double lowRadius, double low, double highRadius, double high, int slices) {
    for (int i = 0; i < slices; ++i)
        part.push_back({onRing(lowRadius, low, i + 1, slices), onRing(lowRadius, low, i, slices),
                        onRing(highRadius, high, i, slices), onRing(highRadius, high, i + 1, slices)});
}

std::vector<Part> facesOf(const TZKOglSphere& sphere) {
    Part part;
    const int n = sphere.GetResolution();
    const auto ring = [&](int i) {
        const double angle = pi * i / n;
        return std::pair(sphere.GetR() * std::sin(angle), -sphere.GetR() * std::cos(angle));
    };
    for (int i = 0; i < n; ++i)
        addBelt(part, ring(i).first, ring(i).second, ring(i + 1).first, ring(i + 1).second, n);
    return {part};
}

std::vector<Part> facesOf(const TZKOglCylinder& cylinder) {
    Part part;
    const int n = cylinder.GetResolution();
    const double height = cylinder.GetCylinderHeight();
    addBelt(part, cylinder.GetBaseRadius(), 0, cylinder.GetTopRadius(), height, n);
    Polygon top;
    Polygon bottom;
    for (int i = 0; i < n; ++i) {
        bottom.push_back(onRing(cylinder.GetBaseRadius(), 0, i, n));
        top.push_back(onRing(cylinder.GetTopRadius(), height, n - i, n));
    }
    part.push_back(bottom);
    if (cylinder.GetTopRadius() > 0)
        part.push_back(top);
    return {part};
}

std::vector<Part> facesOf(const TZKOglPlane& plane) {
    Polygon outline;
    for (const QString& line : plane.GetData())
        outline.push_back(Strtoxyz(line));
    // Seen from its first point the polygons here are stars: a fan of triangles fills them.
    Part part;
    for (std::size_t i = 2; i < outline.size(); ++i)
        part.push_back({outline[0], outline[i], outline[i - 1]});  // fronts of planes are seen clockwise
    return {part};
}

std::vector<Part> facesOf(const TCustomShape& shape) {
    if (const auto* box = qobject_cast<const TZKOglBox*>(&shape))
        return facesOf(*box);
    if (const auto* sphere = qobject_cast<const TZKOglSphere*>(&shape))
        return facesOf(*sphere);
    if (const auto* cylinder = qobject_cast<const TZKOglCylinder*>(&shape))
        return facesOf(*cylinder);
    return facesOf(*qobject_cast<const TZKOglPlane*>(&shape));
}

// --- where they are
// ---------------------------------------------------------------------------------------------------

Tmatrix moving(const TXYZ& by) {
    return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {by.x, by.y, by.z, 1}}};
}

/// Counter-clockwise for a viewer that the axis points at.
Tmatrix turning(const TXYZ& direction, double degrees) {
    const TXYZ axis = Normalize(direction);
    const double angle = degrees * pi / 180;
    Tmatrix matrix = Identity;
    int row = 0;
    for (const TXYZ& unit : {UnitX, UnitY, UnitZ}) {
        const TXYZ image = Add(Add(Mul(unit, std::cos(angle)), Mul(Vekt(axis, unit), std::sin(angle))),
                               Mul(axis, Skal(axis, unit) * (1 - std::cos(angle))));
        matrix[row][0] = image.x;
        matrix[row][1] = image.y;
        matrix[row][2] = image.z;
        ++row;
    }
    return matrix;
}

Tmatrix chain(std::initializer_list<Tmatrix> steps) {
    Tmatrix result = Identity;
    for (const Tmatrix& step : steps)
        result = Mulmat(result, step);
    return result;
}

struct Solid {
    const TCustomShape* shape = nullptr;
    std::vector<Part> parts;  ///< in view coordinates: centimetres, the projection plane at z = 0
};

/// Every shape that can be hit, in the order in which they are drawn.
std::vector<Solid> solidsOf(const TZkOglCanvas& canvas) {
    std::vector<Solid> solids;
    const TBAse base = canvas.GetprojectionBAse();
    for (TZKOglScene* scene : canvas.Scenes()) {
        if (!scene->GetVisible())
            continue;
        Tmatrix behind = scene->TrfMAtrix();
        for (int i = 0; i < scene->GetShapeCount(); ++i) {
            const auto* shape = qobject_cast<TCustomShape*>(scene->GetZkShape(i));
            if (!shape->GetVisible())
                continue;
            const TGerade line = shape->GetDrehGerade();
            const TXYZ back = Mul(line.Origin, -1.0);
            const Tmatrix apply = chain({moving(back), turning(line.Direction, shape->Getdrehwinkel()),
                                         moving(line.Origin), moving(shape->GetTranslation())});
            Tmatrix scale = Identity;
            scale[0][0] = scale[1][1] = scale[2][2] = shape->GetScale();
            const Tmatrix place = chain({scale, apply, behind});
            // What undoing the place leaves: see TCustomShape.
            behind = chain({moving(Mul(shape->GetTranslation(), -1.0)), moving(line.Origin),
                            turning(line.Direction, -shape->Getdrehwinkel()), moving(back), apply, behind});
            if (shape->GetNohit())
                continue;
            Solid solid{shape, facesOf(*shape)};
            for (Part& part : solid.parts)
                for (Polygon& face : part)
                    for (TXYZ& point : face) {
                        MatMul(place, point);
                        const TXYZ relative = Sub(point, base.Origin);
                        point = {Skal(relative, base.XAxis), Skal(relative, base.YAxis), Skal(relative, base.ZAxis)};
                    }
            solids.push_back(std::move(solid));
        }
    }
    return solids;
}

// --- what the pick sees
// -----------------------------------------------------------------------------------------------

/// Keeps the points with a distance of at least 0.
struct HalfSpace {
    TXYZ normal;
    double offset;
    double Distance(const TXYZ& point) const { return Skal(normal, point) + offset; }
};

class Column {
  public:
    Column(const TZkOglCanvas& canvas, const QPointF& pixel)
        : scale_(canvas.GetScale()), eye_(canvas.AugeAbstand()), parallel_(canvas.GetBlickwinkel() == 0) {
        constexpr double reach = 0.1;
        const double x = (pixel.x() - canvas.GetWidth() / 2) / canvas.GetUnitsPerCm();
        const double y = (canvas.GetHeight() / 2 - pixel.y()) / canvas.GetUnitsPerCm();
        const double half = 1 / scale_;  // of the viewport's square
        addRange(x - reach, x + reach, y - reach, y + reach);
        addRange(-half, half, -half, half);
        const double nearest = parallel_ ? 5 / scale_ : eye_ - 0.1 / scale_;
        const double farthest = parallel_ ? -5 / scale_ : eye_ - 200 / scale_;
        add({0, 0, -1}, nearest);
        add({0, 0, 1}, -farthest);
    }

    /// What is left of a face, with all planes moved outwards by `by`.
    Polygon Cut(Polygon face, double by) const {
        for (const HalfSpace& space : spaces_) {
            Polygon kept;
            for (std::size_t i = 0; i < face.size(); ++i) {
                const TXYZ& from = face[i];
                const TXYZ& to = face[(i + 1) % face.size()];
                const double a = space.Distance(from) + by;
                const double b = space.Distance(to) + by;
                if (a >= 0)
                    kept.push_back(from);
                if ((a > 0 && b < 0) || (a < 0 && b > 0))
                    kept.push_back(Add(from, Mul(Sub(to, from), a / (a - b))));
            }
            face = std::move(kept);
        }
        return face;
    }

    /// Above 0 for a face that is seen counter-clockwise; how steeply it is seen.
    double Facing(const Polygon& face) const {
        TXYZ normal = Nullxyz;
        for (std::size_t i = 0; i < face.size(); ++i)
            normal = Add(normal, Vekt(Sub(face[i], face[0]), Sub(face[(i + 1) % face.size()], face[0])));
        if (Len(normal) < 1e-9)
            return 0;
        const TXYZ towards = parallel_ ? UnitZ : Sub(TXYZ{0, 0, eye_}, face[0]);
        return Skal(normal, towards) / Len(normal) / Len(towards);
    }

    /// From 0 at the near to 1 at the far plane, as the depth buffer has it.
    double Depth(const TXYZ& point) const {
        if (parallel_)
            return (1 - scale_ * point.z / 5) / 2;
        const double ahead = scale_ * (eye_ - point.z);
        return (1 + (200.1 * ahead - 2 * 200 * 0.1) / (199.9 * ahead)) / 2;
    }

  private:
    void addRange(double left, double right, double lower, double upper) {
        if (parallel_) {
            add({-1, 0, 0}, right);
            add({1, 0, 0}, -left);
            add({0, -1, 0}, upper);
            add({0, 1, 0}, -lower);
            return;
        }
        // A bound in the plane z = 0 shrinks to nothing at the eye.
        add({-1, 0, -right / eye_}, right);
        add({1, 0, left / eye_}, -left);
        add({0, -1, -upper / eye_}, upper);
        add({0, 1, lower / eye_}, -lower);
    }
    void add(const TXYZ& normal, double offset) {
        const double length = Len(normal);
        spaces_.push_back({Mul(normal, 1 / length), offset / length});
    }

    double scale_;
    double eye_;
    bool parallel_;
    std::vector<HalfSpace> spaces_;
};

/// What is known of a hit record before the pick.
struct Expected {
    bool certain = false;
    bool possible = false;
    double least = 0;     ///< its depth, from the faces that are certain
    double greatest = 0;  ///< and from all that are possible
};

Expected expect(const Column& column, const Part& part) {
    Expected expected;
    for (const Polygon& face : part) {
        const double facing = column.Facing(face);
        if (facing < -edgeOn)
            continue;
        const Polygon most = column.Cut(face, margin);
        if (most.empty())
            continue;
        expected.possible = true;
        for (const TXYZ& point : most)
            expected.greatest = std::max(expected.greatest, column.Depth(point));
        const Polygon least = column.Cut(face, -margin);
        if (least.empty() || facing < edgeOn)
            continue;
        expected.certain = true;
        for (const TXYZ& point : least)
            expected.least = std::max(expected.least, column.Depth(point));
    }
    return expected;
}

// --- random scenes
// ----------------------------------------------------------------------------------------------------

TCustomShape* randomShape(Random& random, QObject* owner) {
    switch (random.Below(4)) {
        case 0: {
            auto* box = new TZKOglBox(owner);
            box->SetA(random.Between(0.1, 2));
            box->SetB(random.Between(0.1, 2));
            box->SetC(random.Between(0.1, 2));
            return box;
        }
        case 1: {
            auto* sphere = new TZKOglSphere(owner);
            sphere->SetR(random.Between(0.1, 1));
            sphere->SetResolution(random.Below(12) + 3);
            return sphere;
        }
        case 2: {
            auto* cylinder = new TZKOglCylinder(owner);
            cylinder->SetBaseRadius(random.Between(0.1, 0.8));
            cylinder->SetTopRadius(random.OneIn(3) ? 0 : random.Between(0.1, 0.8));
            cylinder->SetCylinderHeight(random.Between(0.2, 2));
            cylinder->SetResolution(random.Below(12) + 3);
            cylinder->SetStacks(random.Below(4) + 1);
            return cylinder;
        }
        default: {
            auto* plane = new TZKOglPlane(owner);
            QStringList data;
            const int corners = random.Below(5) + 3;
            const double wide = random.Between(0.3, 1.5);
            const double high = random.Between(0.3, 1.5);
            for (int i = 0; i < corners; ++i) {
                const TXYZ point = onRing(1, 0, i, corners);
                data +=
                    xyztoStr({std::round(wide * point.x * 1000) / 1000, std::round(high * point.y * 1000) / 1000, 0.5});
            }
            if (random.OneIn(3))  // an arrowhead, which OpenGL cannot fill by itself
                data = QStringList{"0/0/0", "-1/-0.5/0", "0/1/0", "1/-0.5/0"};
            plane->SetData(data);
            return plane;
        }
    }
}

void populate(Random& random, GlForm& form, std::vector<TCustomShape*>& shapes) {
    for (int s = 0; s < 2; ++s) {
        TZKOglScene* scene = form.AddScene();
        scene->SetTranslation(random.Point(0.5));
        scene->SetDrehGerade({random.Point(1), random.Direction()});
        scene->Setdrehwinkel(random.Between(-180, 180));
        TCustomShape* last = nullptr;
        for (int i = 0; i < 14; ++i) {
            TCustomShape* shape = randomShape(random, form.window.get());
            shape->Settranslation(random.Point(2.5));
            if (!random.OneIn(3)) {
                // Off the origin it moves the shapes behind it.
                shape->SetDrehGerade({random.OneIn(4) ? random.Point(0.3) : TXYZ(Nullxyz), random.Direction()});
                shape->Setdrehwinkel(random.Between(-180, 180));
            }
            if (random.OneIn(4))
                shape->SetScale(random.OneIn(3) ? -random.Between(0.5, 1.5) : random.Between(0.3, 2));
            shape->SetNohit(random.OneIn(6));
            shape->SetVisible(!random.OneIn(10));
            if (random.OneIn(5))  // played each time, as user code draws it
                QObject::connect(shape, &TZkShape::OnPlay, shape, [] {});
            shape->SetDisplayList(scene);
            shapes.push_back(shape);
            if (last && random.OneIn(5)) {
                // two at exactly the same place
                auto* one = new TZKOglBox(form.window.get());
                auto* twin = new TZKOglBox(form.window.get());
                const TXYZ at = random.Point(2);
                one->Settranslation(at);
                twin->Settranslation(at);
                for (TZKOglBox* box : {one, twin}) {
                    box->SetVisible(true);
                    box->SetDisplayList(scene);
                    shapes.push_back(box);
                }
            }
            last = shape;
        }
    }
}

void setView(Random& random, GlForm& form, bool parallel) {
    const ChangeBracket bracket(form.canvas);
    form.canvas->SetBlickWinkel(parallel ? 0 : random.Between(3, 45));
    form.canvas->SetZoomFactor(random.Between(0.7, 2));
    form.canvas->SetProjectionbase(random.Frame(1));
}

}  // namespace

TEST(PickingProperty, TheShapesInTheColumnAreHitInTheirOrder) {
    Random random(4101);
    int hits = 0;
    int misses = 0;
    int undecided = 0;
    int ties = 0;
    for (int round = 0; round < Rounds(24); ++round) {
        const QSize size(160 + 2 * random.Below(100), 161 + random.Below(200));
        GlForm form(size);
        const double ratio = form.control->devicePixelRatioF();
        form.canvas->SetChanging(true);
        std::vector<TCustomShape*> shapes;
        populate(random, form, shapes);
        form.canvas->SetChanging(false);
        for (int view = 0; view < 3; ++view) {
            setView(random, form, (round + view) % 2 == 0);
            const std::vector<Solid> solids = solidsOf(*form.canvas);
            for (int pick = 0; pick < 30; ++pick) {
                // a pixel of the display
                const QPointF pixel(std::floor(random.Between(0, size.width() * ratio)) / ratio,
                                    std::floor(random.Between(0, size.height() * ratio)) / ratio);
                if (pick % 2) {
                    form.canvas->SelectAt(pixel);
                } else {
                    QMouseEvent press(QEvent::MouseButtonPress, pixel, form.control->mapToGlobal(pixel), Qt::LeftButton,
                                      Qt::LeftButton, Qt::NoModifier);
                    QCoreApplication::sendEvent(form.control, &press);
                }
                SCOPED_TRACE(testing::Message()
                             << "round " << round << ", view " << view << ", at " << pixel.x() << ", " << pixel.y());
                const std::vector<THitItem>& found = form.canvas->Hits();
                const auto depthOf = [&](const THitItem& item) {
                    return item.Depth * form.canvas->GetScale() * 2147483647.0 / 4294967295.0;
                };
                const auto isNear = [&](const THitItem& item, const Expected& expected) {
                    return depthOf(item) > expected.least - 1e-5 && depthOf(item) < expected.greatest + 1e-5;
                };
                const Column column(*form.canvas, pixel);
                std::size_t explained = 0;
                for (const Solid& solid : solids) {
                    std::vector<Expected> parts;
                    for (const Part& part : solid.parts)
                        parts.push_back(expect(column, part));
                    std::vector<THitItem> ofShape;
                    for (const THitItem& item : found)
                        if (HitTarget::Of(item.HitObject) == static_cast<const HitTarget*>(solid.shape))
                            ofShape.push_back(item);
                    explained += ofShape.size();
                    for (const Expected& part : parts) {
                        const bool isHit = std::any_of(ofShape.begin(), ofShape.end(),
                                                       [&](const THitItem& item) { return isNear(item, part); });
                        if (part.certain) {
                            EXPECT_TRUE(isHit) << solid.shape->metaObject()->className() << " at depth " << part.least
                                               << " to " << part.greatest << ", found " << ofShape.size();
                            ++hits;
                        } else {
                            part.possible ? ++undecided : ++misses;
                        }
                    }
                    for (const THitItem& item : ofShape)
                        EXPECT_TRUE(
                            std::any_of(parts.begin(), parts.end(),
                                        [&](const Expected& part) { return part.possible && isNear(item, part); }))
                            << solid.shape->metaObject()->className() << " at depth " << depthOf(item);
                }
                EXPECT_EQ(explained, found.size()) << "hits of nobody, or of shapes that cannot be hit";
                for (std::size_t i = 1; i < found.size(); ++i) {
                    EXPECT_GE(found[i - 1].Depth, found[i].Depth) << "farthest first";
                    if (found[i - 1].Depth != found[i].Depth)
                        continue;
                    ++ties;
                    const auto drawn = [&](const THitItem& item) {
                        return std::find_if(solids.begin(), solids.end(),
                                            [&](const Solid& solid) {
                                                return HitTarget::Of(item.HitObject) ==
                                                       static_cast<const HitTarget*>(solid.shape);
                                            }) -
                               solids.begin();
                    };
                    EXPECT_GE(drawn(found[i - 1]), drawn(found[i])) << "of two at the same depth the later first";
                }
            }
            if (HasFailure())
                return;
        }
    }
    EXPECT_GT(hits, Rounds(3000));
    EXPECT_GT(misses, Rounds(20000));
    EXPECT_LT(undecided, hits / 5);
    EXPECT_GT(ties, Rounds(20));
}
