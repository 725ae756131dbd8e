// `WtoPixel` and OpenGL put a point at the same place, whatever the view; and where they do not. Run once at each pixel
// ratio (QT_SCALE_FACTOR).
#include "glform.h"
#include "random.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkxyarrays.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace zk;
using namespace zk::test;

namespace {

/// Where OpenGL puts a point of its model coordinates, in pixels of the client area (y down).
TXY placed(TZkOglCanvas& canvas, const TXYZ& p) {
    EXPECT_TRUE(canvas.CheckCurrent());
    GLdouble model[16];
    GLdouble projection[16];
    GLint viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, model);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    TXYZ window{};
    gluProject(p.x, p.y, p.z, model, projection, viewport, &window.x, &window.y, &window.z);
    const double ratio = canvas.GetWinControl()->devicePixelRatioF();
    const double height = qRound(canvas.GetHeight() * ratio);
    return {window.x / ratio, (height - window.y) / ratio};
}

/// One pixel; where the display's pixels do not fit into ours, the edges of the viewport are rounded to them.
double tolerance(const GlForm& form) {
    const double ratio = form.control->devicePixelRatioF();
    return ratio == std::floor(ratio) ? 1.0 : 1.0 + 0.5 / ratio;
}

/// Puts the window where none of its corners lies between pixels of the display.
void moveToWholePixels(GlForm& form) {
    form.window->move(40, 40);
    form.control->move(20, 20);
    form.window->resize(form.window->size() + QSize(0, 20));
    GlForm::Settle();
}

TXYZ moved(TXYZ point, const Tmatrix& by) {
    MatMul(by, point);
    return point;
}

/// How far before the eye a point lies, in the units of the near and the far plane.
double depthOf(const TZkOglCanvas& canvas, const TXYZ& p) {
    const TBAse base = canvas.GetprojectionBAse();
    return canvas.GetScale() * Skal(base.ZAxis, Sub(canvas.Auge(), p));
}

bool isBetweenThePlanes(const TZkOglCanvas& canvas, const TXYZ& p) {
    const double depth = depthOf(canvas, p);
    return canvas.GetBlickwinkel() == 0 ? std::fabs(depth) < 4.99 : depth > 0.101 && depth < 199;
}

constexpr QRgb background = 0xFF000000;

/// A shape of user code that draws points, the first in the colour 0x000008, the next in 0x000010 and so on.
class Points {
  public:
    Points(GlForm& form, TZKOglScene* scene) : shape(new TZKOglShape(form.window.get())) {
        shape->SetDisplayList(scene);
        QObject::connect(shape, &TZkShape::OnPlay, [this] {
            glPushAttrib(GL_ALL_ATTRIB_BITS);
            glDisable(GL_LIGHTING);
            glDisable(GL_BLEND);
            glDisable(GL_DEPTH_TEST);
            glBegin(GL_POINTS);
            for (std::size_t i = 0; i < points.size(); ++i) {
                const GLuint color = GLuint(i + 1) * 8;
                glColor3ub(GLubyte(color >> 16), GLubyte(color >> 8), GLubyte(color));
                glVertex3d(points[i].x, points[i].y, points[i].z);
            }
            glEnd();
            glPopAttrib();
        });
    }

    /// The pixels of the picture that have each point's colour, in pixels of the client area.
    std::vector<std::vector<TXY>> Find(GlForm& form) const {
        const QImage screen = form.Screen().convertToFormat(QImage::Format_RGB32);
        const double ratio = screen.devicePixelRatio();
        std::vector<std::vector<TXY>> found(points.size());
        for (int y = 0; y < screen.height(); ++y) {
            const auto* line = reinterpret_cast<const QRgb*>(screen.constScanLine(y));
            for (int x = 0; x < screen.width(); ++x) {
                const std::size_t index = (line[x] & 0xFFFFFF) / 8;
                if (line[x] != background && index >= 1 && index <= points.size())
                    found[index - 1].push_back({(x + 0.5) / ratio, (y + 0.5) / ratio});
            }
        }
        return found;
    }

    TZKOglShape* shape;
    std::vector<TXYZ> points;
};

/// One step of a program that changes its view.
void changeView(Random& random, TZkOglCanvas& canvas, TZKOglLight& light) {
    switch (random.Below(9)) {
        case 0:
            canvas.SetBlickWinkel(random.Below(3) == 0 ? 0 : random.Between(2, 45));
            break;
        case 1:
            canvas.SetZoomFactor(std::exp(random.Between(-1.2, 1.2)));
            break;
        case 2:
            canvas.SetProjectionbase(random.Frame(2));
            break;
        case 3:
            canvas.SetTranslation(random.Point(2));
            break;
        case 4:
            canvas.SetDrehGerade({random.Point(2), random.Point(3)});
            break;
        case 5:
            canvas.Setdrehwinkel(random.Between(-400, 400));
            break;
        case 6:
            canvas.SetDefaultUnitsPerCM(random.Between(15, 60));
            break;
        case 7:
            light.SetZkOglCanvas(light.GetZKOglCanvas() ? nullptr : &canvas);  // with lights the zoom takes another way
            break;
        default:
            if (auto* control = canvas.GetWinControl())
                control->resize(2 * random.Below(100) + 120, 2 * random.Below(100) + 120);
            break;
    }
}

}  // namespace

TEST(WtoPixel, IsWhereOpenGlPutsAPointInEveryView) {
    Random random(2101);
    GlForm form({300, 300});
    auto* light = new TZKOglLight(form.window.get());
    int compared = 0;
    for (int round = 0; round < 400; ++round) {
        {
            const ChangeBracket bracket(random.Below(2) ? form.canvas : nullptr);
            for (int steps = random.Below(4) + 1; steps > 0; --steps)
                changeView(random, *form.canvas, *light);
        }
        for (int i = 0; i < 40; ++i) {
            const TXYZ point = random.Point(4);
            const TXY drawn = placed(*form.canvas, point);
            const bool inside =
                QRectF(-1, -1, form.canvas->GetWidth() + 2, form.canvas->GetHeight() + 2).contains(drawn.x, drawn.y);
            if (!inside || !isBetweenThePlanes(*form.canvas, point))
                continue;
            ++compared;
            const TXYI pixel = form.canvas->WtoPixel(point);
            ASSERT_NEAR(pixel.x, drawn.x, tolerance(form)) << "round " << round;
            ASSERT_NEAR(pixel.y, drawn.y, tolerance(form)) << "round " << round;
        }
    }
    EXPECT_GT(compared, 6000);
}

// The picture itself: the pixel that has the point's colour.
TEST(WtoPixel, IsThePixelThatIsSeen) {
    Random random(2102);
    int seen = 0;
    for (const QSize& size : {QSize(300, 300), QSize(400, 260), QSize(200, 380), QSize(301, 301), QSize(201, 380)}) {
        GlForm form(size);
        moveToWholePixels(form);
        const double ratio = form.control->devicePixelRatioF();
        TZKOglScene* scene = form.AddScene();
        Points points(form, scene);
        for (int view = 0; view < 12; ++view) {
            form.canvas->SetChanging(true);
            form.canvas->SetBlickWinkel(view % 3 == 0 ? 0 : random.Between(2, 45));
            form.canvas->SetZoomFactor(random.Between(0.4, 2));
            form.canvas->SetProjectionbase(random.Frame(1));
            // Points of a scene lie where its transform brings them.
            scene->SetTranslation(random.Point(0.5));
            scene->Setdrehwinkel(random.Between(-180, 180));
            points.points.clear();
            for (int i = 0; i < 24; ++i)
                points.points.push_back(random.Point(3));
            scene->Changed(nullptr);
            form.canvas->SetChanging(false);
            const auto found = points.Find(form);
            for (std::size_t i = 0; i < found.size(); ++i) {
                const TXYZ world = moved(points.points[i], scene->TrfMAtrix());
                const TXYI pixel = form.canvas->WtoPixel(world);
                const bool inside = pixel.x > 1 && pixel.x < size.width() - 2 && pixel.y > 1 &&
                                    pixel.y < size.height() - 2 && isBetweenThePlanes(*form.canvas, world);
                ASSERT_LE(found[i].size(), 1U);
                if (found[i].empty()) {
                    // two points may share a pixel
                    const bool covered = std::any_of(
                        points.points.begin() + std::ptrdiff_t(i) + 1, points.points.end(), [&](const TXYZ& other) {
                            const TXYI at = form.canvas->WtoPixel(moved(other, scene->TrfMAtrix()));
                            return std::abs(at.x - pixel.x) <= 1 && std::abs(at.y - pixel.y) <= 1;
                        });
                    EXPECT_FALSE(inside && !covered) << "point " << i << " of view " << view << " is not seen";
                    continue;
                }
                ++seen;
                const TXY drawn = placed(*form.canvas, world);
                EXPECT_NEAR(found[i][0].x, drawn.x, 0.51 / ratio);
                EXPECT_NEAR(found[i][0].y, drawn.y, 0.51 / ratio);
                EXPECT_NEAR(pixel.x, drawn.x, tolerance(form));
                EXPECT_NEAR(pixel.y, drawn.y, tolerance(form));
            }
        }
    }
    EXPECT_GT(seen, 600);
}

TEST(WtoPixel, AThousandStepsOfTheZoomDoNotLoseThePlace) {
    Random random(2103);
    for (const double angle : {0.0, 30.0}) {
        GlForm form({300, 300});
        form.canvas->SetBlickWinkel(angle);
        for (int i = 0; i < 10; ++i) {
            form.canvas->SetZoomFactor(random.Between(0.3, 3));
            const ChangeBracket bracket(form.canvas);  // without a repaint for each
            for (int step = 1; step < 100; ++step)
                form.canvas->SetZoomFactor(random.Between(0.3, 3));
        }
        for (int i = 0; i < 50; ++i) {
            const TXYZ point = random.Point(2);
            const TXY drawn = placed(*form.canvas, point);
            EXPECT_NEAR(form.canvas->WtoPixel(point).x, drawn.x, tolerance(form));
            EXPECT_NEAR(form.canvas->WtoPixel(point).y, drawn.y, tolerance(form));
        }
    }
}

TEST(WtoPixel, AMirroredPictureIsFollowed) {
    Random random(2104);
    for (const double angle : {0.0, 25.0}) {
        GlForm form({300, 200});
        form.canvas->SetBlickWinkel(angle);
        form.canvas->SetUnitsPerCm(-30);
        for (int i = 0; i < 50; ++i) {
            const TXYZ point = random.Point(2);
            const TXY drawn = placed(*form.canvas, point);
            EXPECT_NEAR(form.canvas->WtoPixel(point).x, drawn.x, tolerance(form));
            EXPECT_NEAR(form.canvas->WtoPixel(point).y, drawn.y, tolerance(form));
        }
    }
}

// --- where they part ------------------------------------------------------------------------------------------------

// An odd height below an even width: the square viewport begins half a pixel lower than the control's middle, and
// half the height is rounded down.
TEST(WtoPixelParts, OneLineInAnOddHeightBelowAnEvenWidth) {
    for (const QSize& size : {QSize(400, 301), QSize(401, 301), QSize(400, 300), QSize(300, 401), QSize(301, 400)}) {
        GlForm form(size);
        const TXY drawn = placed(*form.canvas, {0, 0, 0});
        const TXYI pixel = form.canvas->WtoPixel({0, 0, 0});
        EXPECT_EQ(pixel, (TXYI{size.width() / 2, size.height() / 2}));
        if (form.control->devicePixelRatioF() != 1) {
            EXPECT_LE(std::fabs(drawn.x - pixel.x), tolerance(form) + 0.01);
            EXPECT_LE(std::fabs(drawn.y - pixel.y), tolerance(form) + 0.01);
            continue;
        }
        EXPECT_LE(std::fabs(drawn.x - pixel.x), 0.5);
        if (size == QSize(400, 301)) {
            EXPECT_EQ(drawn.y - pixel.y, 1.0);
        } else {
            EXPECT_LE(std::fabs(drawn.y - pixel.y), 0.5) << size.width() << " x " << size.height();
        }
    }
}

TEST(WtoPixelParts, WhatLiesBeyondThePlanesHasAPixelButIsNotDrawn) {
    GlForm form({300, 300});
    TZKOglScene* scene = form.AddScene();
    Points points(form, scene);
    const auto seen = [&](const TXYZ& point) {
        points.points = {point};
        scene->Changed(nullptr);
        EXPECT_EQ(form.canvas->WtoPixel(point), (TXYI{150, 150}));
        return !points.Find(form)[0].empty();
    };
    // 5 units of the eye are 25 cm at 30 pixels a centimetre in 300 pixels
    EXPECT_TRUE(seen({0, 0, 24.9}));
    EXPECT_FALSE(seen({0, 0, 25.1}));
    EXPECT_TRUE(seen({0, 0, -24.9}));
    EXPECT_FALSE(seen({0, 0, -25.1}));
    // the eye at 5 cm; the near plane half a centimetre before it, the far one at 1000 cm
    form.canvas->SetBlickWinkel(45);
    EXPECT_NEAR(form.canvas->AugeAbstand(), 5, 1e-9);
    EXPECT_TRUE(seen({0, 0, 4.49}));
    EXPECT_FALSE(seen({0, 0, 4.51}));
    EXPECT_FALSE(seen({0, 0, 6})) << "behind the eye";
    EXPECT_TRUE(seen({0, 0, -994}));
    EXPECT_FALSE(seen({0, 0, -996}));
}

TEST(WtoPixelParts, PlacesOfScenesAndShapesAreNotAsked) {
    GlForm form({300, 300});
    moveToWholePixels(form);
    TZKOglScene* scene = form.AddScene();
    Points points(form, scene);
    points.points = {{0, 0, 0}};
    scene->SetTranslation({1, 0, 0});
    points.shape->Settranslation({0, 2, 0});
    points.shape->SetScale(2);
    EXPECT_EQ(form.canvas->WtoPixel({0, 0, 0}), (TXYI{150, 150}));
    const auto found = points.Find(form);
    ASSERT_EQ(found[0].size(), 1U);
    EXPECT_NEAR(found[0][0].x, 180, 0.51);
    EXPECT_NEAR(found[0][0].y, 90, 0.51);
    // While a shape with a scale draws, a centimetre of the canvas is one of the shape's.
    TXYI inside{};
    QObject::connect(points.shape, &TZkShape::OnPlay, [&] { inside = form.canvas->WtoPixel({1, 1, 0}); });
    scene->Changed(nullptr);
    EXPECT_EQ(inside, (TXYI{210, 90}));
    EXPECT_EQ(form.canvas->WtoPixel({1, 1, 0}), (TXYI{180, 120}));
}

TEST(WtoPixelParts, MatricesThatAreSetPastTheViewAreNotAsked) {
    GlForm form({300, 300});
    form.canvas->OGLTranslate({1, 0, 0});
    EXPECT_EQ(form.canvas->WtoPixel({0, 0, 0}), (TXYI{150, 150}));
    EXPECT_NEAR(placed(*form.canvas, {0, 0, 0}).x, 180, 0.01);
    form.canvas->SetProjectionbase(Unitbase);
    EXPECT_NEAR(placed(*form.canvas, {0, 0, 0}).x, 150, 0.01) << "the frame's setter brings the view back";
    form.canvas->SetModelMatrix(TranslationToMatrix3d({0, 1, 0}));
    EXPECT_EQ(form.canvas->WtoPixel({0, 0, 0}), (TXYI{150, 150}));
    EXPECT_NEAR(placed(*form.canvas, {0, 0, 0}).y, 120, 0.51);
}

// An angle of pi draws in parallel and is computed with an eye.
TEST(WtoPixelParts, TheAngleOfPi) {
    GlForm form({300, 300});
    form.canvas->SetBlickWinkel(std::numbers::pi);
    EXPECT_EQ(form.canvas->GetprojectionMode(), 0);
    const TXYZ onThePlane{2, 1, 0};
    EXPECT_NEAR(placed(*form.canvas, onThePlane).x, form.canvas->WtoPixel(onThePlane).x, 1);
    const TXYZ before{2, 1, 20};
    EXPECT_NEAR(placed(*form.canvas, before).x, 210, 0.51);
    EXPECT_GT(form.canvas->WtoPixel(before).x, 215);
}

// Fronts that are counter-clockwise put the eye behind the plane.
TEST(WtoPixelParts, CounterclockwiseFrontsInPerspective) {
    GlForm form({300, 300});
    form.canvas->SetBlickWinkel(30);
    const TXYZ point{1, 1, 2};
    const TXYI before = form.canvas->WtoPixel(point);
    const TXY drawn = placed(*form.canvas, point);
    EXPECT_NEAR(before.x, drawn.x, 1);
    form.canvas->SetClockWise(false);
    EXPECT_NEAR(placed(*form.canvas, point).x, drawn.x, 0.01) << "OpenGL's matrices stay until the view is set again";
    EXPECT_LT(form.canvas->WtoPixel(point).x, before.x - 10);
    form.canvas->SetClockWise(true);
    EXPECT_EQ(form.canvas->WtoPixel(point), before);
}

// Both multiply by the axes, but the device first moves a point along the frame's z axis into its plane.
TEST(WtoPixelParts, FramesWhoseZAxisIsNotUprightOrNotOfUnitLength) {
    GlForm form({300, 300});
    const auto parts = [&](const TBAse& frame, const TXYZ& point) {
        form.canvas->SetProjectionbase(frame);
        return std::fabs(placed(*form.canvas, point).x - form.canvas->WtoPixel(point).x) > 1;
    };
    const TXYZ point{1, 1, 1};
    const TBAse longer{{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
    const TBAse sheared{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 1}};
    const TBAse slanted{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0.6, 0, 0.8}};
    EXPECT_FALSE(parts(longer, point)) << "in parallel a length only scales";
    EXPECT_FALSE(parts(sheared, point));
    EXPECT_TRUE(parts(slanted, point));
    form.canvas->SetBlickWinkel(30);
    EXPECT_TRUE(parts(longer, point));
    EXPECT_FALSE(parts(sheared, point));
    EXPECT_TRUE(parts(slanted, point));
    EXPECT_FALSE(parts(Unitbase, point));
}
