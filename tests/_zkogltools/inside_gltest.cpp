// Which solid contains a point.
#include "glform.h"
#include "random.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools.h>
#include <zk/_zkxyarrays.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <optional>

using namespace zk;
using namespace zk::test;

namespace {

/// A solid, and how far inside of it a point is (negative outside), in parts of its size. Computed without OpenGL.
struct Solid {
    TCustomShape* shape = nullptr;
    std::function<double(const TXYZ&)> depth;  // in the coordinates of the shape
    double scale = 1;
    TXYZ at{0, 0, 0};
    TXYZ axis{0, 0, 1};
    TXYZ origin{0, 0, 0};
    double degrees = 0;

    double DepthOf(const TXYZ& world) const {
        TXYZ point = Sub(Sub(world, at), origin);
        const double angle = -degrees * std::numbers::pi / 180;
        const TXYZ unit = Normalize(axis);
        const TXYZ across = Mul(Vekt(unit, point), std::sin(angle));
        const TXYZ along = Mul(unit, Skal(unit, point) * (1 - std::cos(angle)));
        point = Add(Add(Add(Mul(point, std::cos(angle)), across), along), origin);
        return depth(Mul(point, 1 / scale));
    }
    /// From the shape's own coordinates into the world.
    TXYZ World(const TXYZ& own) const {
        TXYZ point = Sub(Mul(own, scale), origin);
        const double angle = degrees * std::numbers::pi / 180;
        const TXYZ unit = Normalize(axis);
        const TXYZ across = Mul(Vekt(unit, point), std::sin(angle));
        const TXYZ along = Mul(unit, Skal(unit, point) * (1 - std::cos(angle)));
        return Add(Add(Add(Add(Mul(point, std::cos(angle)), across), along), origin), at);
    }
};

/// One of the solids, two centimetres large, in its own place.
Solid makeSolid(int kind, QObject* owner) {
    Solid solid;
    switch (kind) {
        case 0: {
            auto* box = new TZKOglBox(owner);
            box->SetA(2);
            box->SetB(1.5);
            box->SetC(1);
            solid.shape = box;
            solid.depth = [](const TXYZ& p) { return std::min({p.x, 2 - p.x, p.y, 1.5 - p.y, p.z, 1 - p.z}); };
            break;
        }
        case 1: {
            auto* sphere = new TZKOglSphere(owner);
            sphere->SetR(1);
            sphere->SetResolution(36);
            solid.shape = sphere;
            solid.depth = [](const TXYZ& p) { return 1 - Len(p); };
            break;
        }
        case 2: {
            auto* cylinder = new TZKOglCylinder(owner);
            cylinder->SetBaseRadius(0.8);
            cylinder->SetTopRadius(0.8);
            cylinder->SetCylinderHeight(1.6);
            cylinder->SetResolution(36);
            solid.shape = cylinder;
            solid.depth = [](const TXYZ& p) { return std::min({0.8 - std::hypot(p.x, p.y), p.z, 1.6 - p.z}); };
            break;
        }
        default: {
            auto* cone = new TZKOglCylinder(owner);
            cone->SetBaseRadius(1);
            cone->SetTopRadius(0);
            cone->SetCylinderHeight(2);
            cone->SetResolution(36);
            solid.shape = cone;
            solid.depth = [](const TXYZ& p) { return std::min({(1 - p.z / 2 - std::hypot(p.x, p.y)), p.z, 2 - p.z}); };
        }
    }
    return solid;
}

void place(Solid& solid, TZKOglScene* scene) {
    solid.shape->SetScale(solid.scale);
    solid.shape->Settranslation(solid.at);
    solid.shape->SetDrehGerade({solid.origin, solid.axis});
    solid.shape->Setdrehwinkel(solid.degrees);
    solid.shape->SetDisplayList(scene);
}

constexpr double undecided = 0.03;  // of a solid's size: its surface is made of facets

}  // namespace

TEST(InsideOf, ABox) {
    GlForm form;
    TZKOglBox* box = form.AddBox(form.AddScene(), 0x0000FF, {2, 2, 2}, {1, 1, 1});
    const auto inside = [&form](const TXYZ& point) { return form.canvas->InsideOf(point); };
    EXPECT_EQ(inside({2, 2, 2}), box->HitName());
    EXPECT_EQ(inside({1.01, 2.99, 1.01}), box->HitName());
    EXPECT_EQ(inside({2, 2, 4}), -1) << "above";
    EXPECT_EQ(inside({2, 2, 0}), -1) << "below";
    EXPECT_EQ(inside({0, 2, 2}), -1) << "beside";
    EXPECT_EQ(inside({2, 3.01, 2}), -1);
    EXPECT_EQ(inside({2, 2, 9e4}), -1);
    EXPECT_EQ(inside({2, 2, -9e4}), -1);
    EXPECT_EQ(inside({NAN, 2, 2}), -1);
    EXPECT_EQ(inside({2, INFINITY, 2}), -1);
    // A corner below the point: three faces meet in the needle and count once.
    box->SetDrehgeradeRichtung("1/-1/0");
    box->Setdrehwinkel(std::atan(std::sqrt(2.0)) * 180 / std::numbers::pi);
    box->Settranslation({0, 0, 0});
    const double diagonal = std::sqrt(12.0);
    int found = 0;
    for (const double z : {diagonal / 2, -diagonal / 2})
        found += inside({0, 0, z}) == box->HitName() ? 1 : 0;
    EXPECT_EQ(found, 1);
    EXPECT_EQ(inside({0, 0, diagonal + 0.1}), -1);
    EXPECT_EQ(inside({0, 0, -diagonal - 0.1}), -1);
}

TEST(InsideOf, AnyPlaceAnyTurnAnyScale) {
    int inside = 0;
    int outside = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Random random(seed);
        GlForm form(QSize(120, 90));
        TZKOglScene* scene = form.AddScene();
        Solid solid = makeSolid(int(seed % 4), form.window.get());
        solid.scale = std::pow(10, random.Between(-0.7, 2)) * (seed % 7 == 0 ? -1 : 1);
        const double size = std::fabs(solid.scale);
        solid.at = random.Point(seed % 2 != 0 ? 5 * size : 1000);
        solid.axis = random.Point(1);
        solid.origin = random.Point(size);
        solid.degrees = random.Between(-360, 360);
        place(solid, scene);
        if (seed % 5 == 0)
            form.canvas->SetBlickWinkel(20);
        if (seed % 3 == 0)
            form.canvas->SetTranslation({5, 5, 5});  // of the canvas: plays no part
        for (int i = 0; i < 12; ++i) {
            const TXYZ point = solid.World(i % 2 != 0 ? random.Point(1.1) : random.Point(2.5));
            const double depth = solid.DepthOf(point);
            if (std::fabs(depth) < undecided)
                continue;
            const int expected = depth > 0 ? solid.shape->HitName() : -1;
            (depth > 0 ? inside : outside) += 1;
            EXPECT_EQ(form.canvas->InsideOf(point), expected)
                << "seed " << seed << " scale " << solid.scale << " depth " << depth;
        }
    }
    EXPECT_GT(inside, 40);
    EXPECT_GT(outside, 150);
}

TEST(InsideOf, AmongManySolids) {
    Random random(7);
    GlForm form(QSize(120, 90));
    TZKOglScene* scene = form.AddScene();
    scene->SetTranslation({3, -2, 1});
    std::vector<Solid> solids;
    {
        const ChangeBracket bracket(form.canvas);
        for (int i = 0; i < 60; ++i) {
            Solid solid = makeSolid(i % 4, form.window.get());
            solid.at = random.Point(6);
            solid.axis = random.Point(1);
            solid.degrees = random.Between(-180, 180);
            if (i % 6 == 5)
                QObject::connect(solid.shape, &TZkShape::OnPlay, form.canvas, [] {});  // played each time
            place(solid, scene);
            solids.push_back(solid);
        }
    }
    std::array<int, 4> seen{};
    for (int i = 0; i < 300; ++i) {
        const TXYZ point = i % 3 == 0
                               ? random.Point(7)
                               : Add(random.Point(1), Add(solids[std::size_t(random.Below(60))].at, TXYZ{3, -2, 1}));
        int containing = 0;
        bool isClear = true;
        for (const Solid& solid : solids) {
            const double depth = solid.DepthOf(Sub(point, TXYZ{3, -2, 1}));
            isClear = isClear && std::fabs(depth) > undecided;
            containing += depth > 0 ? 1 : 0;
        }
        if (!isClear)
            continue;
        const int answer = form.canvas->InsideOf(point);
        ++seen[std::size_t(std::min(containing, 3))];
        if (containing % 2 == 0) {
            EXPECT_EQ(answer, -1) << containing;
            continue;
        }
        const auto found = std::find_if(solids.begin(), solids.end(),
                                        [answer](const Solid& solid) { return solid.shape->HitName() == answer; });
        ASSERT_NE(found, solids.end()) << containing;
        EXPECT_GT(found->DepthOf(Sub(point, TXYZ{3, -2, 1})), 0) << "it does contain the point";
    }
    EXPECT_GT(seen[0], 20);
    EXPECT_GT(seen[1], 10);
}

TEST(InsideOf, SolidsInsideEachOtherCountByParity) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* outer = form.AddBox(scene, 0xFF, {6, 6, 6}, {-3, -3, -3});
    TZKOglBox* middle = form.AddBox(scene, 0xFF, {4, 4, 4}, {-2, -2, -2});
    EXPECT_EQ(form.canvas->InsideOf({2.5, 0, 0}), outer->HitName());
    EXPECT_EQ(form.canvas->InsideOf({0, 0, 2.5}), outer->HitName()) << "above the inner one";
    EXPECT_EQ(form.canvas->InsideOf({0, 0, -2.5}), outer->HitName()) << "below it";
    EXPECT_EQ(form.canvas->InsideOf({0, 0, 0}), -1) << "in two of them";
    form.AddBox(scene, 0xFF, {1, 1, 1}, {-0.5, -0.5, -0.5});
    EXPECT_EQ(form.canvas->InsideOf({0, 0, 0}), outer->HitName()) << "in three";
    outer->SetVisible(false);
    EXPECT_EQ(form.canvas->InsideOf({1, 1, 1}), middle->HitName());
    middle->SetNohit(true);
    EXPECT_EQ(form.canvas->InsideOf({1, 1, 1}), -1) << "what no pick meets is no solid";
}

TEST(InsideOf, AboveAndBetweenSolidsThatStandOnEachOther) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* lower = form.AddBox(scene, 0xFF, {2, 2, 2}, {-1, -1, -4});
    TZKOglBox* upper = form.AddBox(scene, 0xFF, {2, 2, 2}, {-1, -1, -2});
    TZKOglBox* top = form.AddBox(scene, 0xFF, {2, 2, 2}, {-1, -1, 3});
    EXPECT_EQ(form.canvas->InsideOf({0, 0, -3}), lower->HitName());
    EXPECT_EQ(form.canvas->InsideOf({0, 0, -1}), upper->HitName()) << "though another is below";
    EXPECT_EQ(form.canvas->InsideOf({0, 0, 1}), -1) << "between two";
    EXPECT_EQ(form.canvas->InsideOf({0, 0, 4}), top->HitName());
    EXPECT_EQ(form.canvas->InsideOf({0, 0, 6}), -1);
    EXPECT_EQ(form.canvas->InsideOf({0, 0, -5}), -1);
}

TEST(InsideOf, APlaneContainsNothing) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    for (const bool reversed : {false, true}) {
        auto* plane = new TZKOglPlane(form.window.get());
        QStringList corners{"-2/-2/0", "-2/2/0", "2/2/0.5", "2/-2/0.5"};
        if (reversed)
            std::reverse(corners.begin(), corners.end());
        plane->SetData(corners);
        plane->SetDisplayList(scene);
        for (const double z : {1.0, -1.0, 5.0, -5.0})
            EXPECT_EQ(form.canvas->InsideOf({0.3, 0.2, z}), -1) << reversed << ' ' << z;
        delete plane;
    }
    TZKOglBox* box = form.AddBox(scene, 0xFF, {2, 2, 2}, {-1, -1, -1});
    auto* plane = new TZKOglPlane(form.window.get());
    plane->SetData({"-2/-2/0", "-2/2/0", "2/2/0", "2/-2/0"});
    plane->SetDisplayList(scene);
    EXPECT_EQ(form.canvas->InsideOf({0.3, 0.2, 0.5}), box->HitName()) << "a plane through a box";
    EXPECT_EQ(form.canvas->InsideOf({0.3, 0.2, -0.5}), box->HitName());
    EXPECT_EQ(form.canvas->InsideOf({0.3, 0.2, 1.5}), -1);
}

TEST(InsideOf, LeavesEverythingAsItWas) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.canvas->Refresh();
    const QImage before = form.Screen();
    form.canvas->CheckCurrent();
    const auto state = [] {
        std::vector<GLdouble> values(40);
        glGetDoublev(GL_PROJECTION_MATRIX, values.data());
        glGetDoublev(GL_MODELVIEW_MATRIX, values.data() + 16);
        glGetDoublev(GL_VIEWPORT, values.data() + 32);
        for (const GLenum name : {GLenum(GL_CULL_FACE_MODE), GLenum(GL_MATRIX_MODE), GLenum(GL_RENDER_MODE),
                                  GLenum(GL_FRONT_FACE), GLenum(GL_NAME_STACK_DEPTH), GLenum(GL_ATTRIB_STACK_DEPTH)}) {
            GLdouble value = 0;
            glGetDoublev(name, &value);
            values.push_back(value);
        }
        for (GLenum plane = 0; plane < 6; ++plane)
            values.push_back(glIsEnabled(GL_CLIP_PLANE0 + plane));
        return values;
    };
    const auto expected = state();
    form.TakeSwaps();
    EXPECT_EQ(form.canvas->InsideOf({0, 0, 0}), box->HitName());
    EXPECT_EQ(state(), expected);
    EXPECT_EQ(form.TakeSwaps(), 0) << "nothing is shown";
    EXPECT_FALSE(form.canvas->IsSelecting());
    ASSERT_EQ(form.canvas->Hits().size(), 1U);
    EXPECT_EQ(form.canvas->Hits().front().HitObject, box->HitName());
    form.canvas->Refresh();
    EXPECT_EQ(form.Screen(), before);
    EXPECT_EQ(PendingError(*form.canvas), 0U);

    TZkOglCanvas unbound;
    EXPECT_EQ(unbound.InsideOf({0, 0, 0}), -1);
    int answer = 0;
    QObject::connect(box, &TZkShape::OnPlay, form.canvas, [&] { answer = form.canvas->InsideOf({0, 0, 0}); });
    scene->DoUpdateNow();
    EXPECT_EQ(answer, -1) << "not from within a repaint";
}

// User code runs while the needle is played.
TEST(InsideOf, HandlersMayTakeTheControlAndTheCanvasAway) {
    for (const bool deletes : {false, true}) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        form.canvas->Refresh();
        QObject::connect(box, &TZkShape::OnPlay, form.window.get(), [&] {
            if (!form.canvas || !form.canvas->IsSelecting())
                return;
            if (deletes)
                delete std::exchange(form.canvas, nullptr);
            else
                form.canvas->SetWinControl(nullptr);
        });
        TZkOglCanvas* const canvas = form.canvas;
        const int answer = canvas->InsideOf({0, 0, 0});
        EXPECT_EQ(answer, -1) << "nothing is known";
        if (deletes) {
            EXPECT_EQ(form.canvas, nullptr);
            continue;
        }
        EXPECT_FALSE(canvas->IsSelecting());
        EXPECT_TRUE(canvas->Hits().empty());
        QObject::disconnect(box, &TZkShape::OnPlay, form.window.get(), nullptr);
        canvas->SetWinControl(form.control);
        EXPECT_EQ(canvas->InsideOf({0, 0, 0}), box->HitName());
    }
}
