#include "glcalls.h"
#include "glform.h"
#include "glrecorder.h"

#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkoglcanvas/glapi.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

using namespace zk;
using namespace zk::test;

namespace {

/// Where OpenGL draws a point, in pixels of the client area (y down).
TXY projected(TZkOglCanvas& canvas, const TXYZ& p) {
    EXPECT_TRUE(canvas.CheckCurrent());
    GLdouble model[16];
    GLdouble projection[16];
    GLint viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, model);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    GLdouble x = 0;
    GLdouble y = 0;
    GLdouble z = 0;
    gluProject(p.x, p.y, p.z, model, projection, viewport, &x, &y, &z);
    const double ratio = canvas.GetWinControl()->devicePixelRatioF();
    return {x / ratio, canvas.GetHeight() - y / ratio};
}

void expectAgreement(TZkOglCanvas& canvas, const TXYZ& p) {
    const TXYI pixel = canvas.WtoPixel(p);
    const TXY drawn = projected(canvas, p);
    EXPECT_NEAR(pixel.x, drawn.x, 1.0) << "x of (" << p.x << ", " << p.y << ", " << p.z << ")";
    EXPECT_NEAR(pixel.y, drawn.y, 1.0) << "y of (" << p.x << ", " << p.y << ", " << p.z << ")";
}

}  // namespace

TEST(Viewing, TheViewportIsACentredSquareOfTheLargerSide) {
    GlForm form({300, 300});
    GlRecorder recorder;
    form.control->resize(400, 300);
    GlForm::Settle();
    EXPECT_EQ(recorder.CallsTo({"glViewport"}).back(), "glViewport(0, -50, 400, 400)");
    EXPECT_EQ(form.canvas->getViewPort(), (TRect{0, -50, 400, 350}));
    EXPECT_EQ(form.canvas->GetScale(), 2.0 * 30 / 400);
    form.canvas->SetViewport({10, 20, 110, 220});
    EXPECT_EQ(form.canvas->getViewPort(), (TRect{10, 20, 110, 220}));
}

TEST(Viewing, AnglesHaveTheirLimits) {
    GlForm form;
    form.canvas->SetBlickWinkel(30);
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 30);
    EXPECT_EQ(form.canvas->GetprojectionMode(), 1);
    GLdouble projection[16];
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    EXPECT_NEAR(projection[0], 1 / std::tan(std::numbers::pi / 6), 1e-6);
    EXPECT_NEAR(projection[10], -(200.0 + 0.1) / (200.0 - 0.1), 1e-6);

    form.canvas->SetBlickWinkel(60);
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 30);
    form.canvas->SetBlickWinkel(45.000001);
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 30);
    form.canvas->SetBlickWinkel(std::nan(""));
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 30);
    form.canvas->SetBlickWinkel(45);
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 45);
    form.canvas->SetBlickWinkel(1.5);
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 0);
    EXPECT_EQ(form.canvas->GetprojectionMode(), 0);
    form.canvas->SetBlickWinkel(std::numbers::pi);  // degrees, but parallel all the same
    EXPECT_EQ(form.canvas->GetprojectionMode(), 0);
    form.canvas->SetBlickWinkel(-20);
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 0);
}

TEST(Viewing, TheFrustumIsThatOfTheHalfAngle) {
    GlForm form;
    GlRecorder recorder;
    form.canvas->SetBlickWinkel(45);
    EXPECT_EQ(recorder.CallsTo({"glFrustum"}), Calls{"glFrustum(-0.1, 0.1, -0.1, 0.1, 0.1, 200)"});
    recorder.Clear();
    form.canvas->SetprojectionMode(7);
    EXPECT_EQ(recorder.Calls(), OnMatrix("GL_PROJECTION", "glLoadIdentity()"));
}

TEST(Viewing, TheEyeStandsWhereThePlaneFillsTheView) {
    GlForm form({400, 400});
    EXPECT_EQ(form.canvas->AugeAbstand(), 0);
    form.canvas->SetBlickWinkel(45);
    EXPECT_NEAR(form.canvas->AugeAbstand(), 1 / 0.15, 1e-9);
    form.canvas->SetClockWise(false);
    EXPECT_NEAR(form.canvas->AugeAbstand(), -1 / 0.15, 1e-9);
    form.canvas->SetClockWise(true);
    // the old variant stores nothing
    form.canvas->SetBlickWinkelOld(20);
    EXPECT_EQ(form.canvas->GetBlickwinkel(), 45);
    EXPECT_EQ(form.canvas->GetprojectionMode(), 1);
}

TEST(Viewing, ZoomScalesTheMatrixByOneCall) {
    GlForm form;
    form.canvas->SetDefaultUnitsPerCM(1);
    form.canvas->SetUnitsPerCm(1);
    GlRecorder recorder;
    form.canvas->SetZoomFactor(2);
    EXPECT_EQ(form.canvas->GetUnitsPerCm(), 2);
    EXPECT_EQ(form.canvas->GetZoomFactor(), 2);
    EXPECT_EQ(recorder.CallsTo({"glScaled", "glLoadMatrixd"}), Calls{"glScaled(2, 2, 2)"});
    form.canvas->SetZoomFactor(0);
    EXPECT_EQ(form.canvas->GetUnitsPerCm(), 2);
    form.canvas->SetDefaultUnitsPerCM(0);
    EXPECT_EQ(form.canvas->GetZoomFactor(), 1);
}

TEST(Viewing, AViewComesBackFromZeroAndOtherImpossibleUnits) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.canvas->Refresh();
    const QImage before = form.Screen();
    for (const double units : {0.0, -30.0, 1e-300, 1e300, double(INFINITY), double(NAN)}) {
        form.canvas->SetUnitsPerCm(units);
        form.canvas->SetUnitsPerCm(30);
        GlForm::Settle();
        EXPECT_EQ(form.Screen(), before) << units;
        EXPECT_EQ(PendingError(*form.canvas), 0U) << units;
    }
}

TEST(Viewing, ThePictureMovesByPlusTheTranslation) {
    GlForm form;
    TZKOglScene* scene = form.AddScene();
    form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
    form.canvas->SetTranslation({3, 2, 0});
    // 3 cm to the right and 2 up, at 30 pixels each
    EXPECT_EQ(form.PixelAt({240, 90}), QColor(254, 0, 0));
    EXPECT_EQ(form.PixelAt({150, 150}), QColor(0, 0, 0));
    EXPECT_EQ(form.canvas->GetprojectionBAse(), (TBAse{{-3, -2, 0}, UnitX, UnitY, UnitZ}));
    // with a scale the origin is brought in by the eye, not by the matrix that is loaded
    GlRecorder recorder;
    form.canvas->SetTranslation({1, 2, 3});
    ASSERT_FALSE(recorder.CallsTo({"glLoadMatrixd"}).empty());
    EXPECT_EQ(recorder.CallsTo({"glLoadMatrixd"})[0],
              "glLoadMatrixd({0.2, 0, 0, 0, 0, 0.2, 0, 0, 0, 0, 0.2, 0, 0, 0, 0, 1})");
    ASSERT_GE(recorder.CallsTo({"glTranslated"}).size(), 2U);
    EXPECT_EQ(recorder.CallsTo({"glTranslated"})[1], "glTranslated(1, 2, 3)");
}

// What is seen depends on what the properties are, not on the order in which they were set.
TEST(Viewing, TheOrderOfSettersDoesNotMatter) {
    const auto picture = [](const std::vector<int>& order) {
        GlForm form;
        TZKOglScene* scene = form.AddScene();
        TZKOglBox* box = form.AddBox(scene, 0x0000FF, {2, 2, 2}, {-1, -1, -1});
        box->getAttributes()->getMaterial()->SetDiffuse(0xFFFFFF);
        auto* light = new TZKOglLight(form.window.get());
        light->SetPosition({2, 3, 5});
        light->SetZkOglCanvas(form.canvas);
        light->SetEnabled(true);
        for (const int step : order) {
            if (step == 0)
                form.canvas->SetZoomFactor(1.7);
            else if (step == 1)
                form.canvas->SetTranslation({1, -1, 0.5});
            else if (step == 2)
                form.canvas->SetBlickWinkel(25);
            else if (step == 3)
                form.control->resize(320, 260);
            else
                form.canvas->Setdrehwinkel(35);
        }
        GlForm::Settle();
        const QImage image = form.Screen();
        EXPECT_FALSE(image.isNull());
        return image;
    };
    const QImage reference = picture({0, 1, 2, 3, 4});
    std::vector<int> order{0, 1, 2, 3, 4};
    std::mt19937 random(7);
    for (int i = 0; i < 6; ++i) {
        std::shuffle(order.begin(), order.end(), random);
        const QImage image = picture(order);
        ASSERT_EQ(image.size(), reference.size());
        int different = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor a = image.pixelColor(x, y);
                const QColor b = reference.pixelColor(x, y);
                different +=
                    std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue()) > 6;
            }
        EXPECT_LE(different, 60) << "edges may differ by rounding";
    }
}

TEST(Viewing, WtoPixelIsWhereOpenGlDraws) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(-3, 3);
    for (const QSize& size : {QSize(300, 300), QSize(400, 260), QSize(200, 380)}) {
        GlForm form(size);
        for (int round = 0; round < 40; ++round) {
            form.canvas->SetChanging(true);
            form.canvas->SetBlickWinkel(round % 3 == 0 ? 0 : 5 + round);
            form.canvas->SetZoomFactor(0.3 + (round % 7) * 0.2);
            form.canvas->SetDrehGerade({{coordinate(random), coordinate(random), coordinate(random)},
                                        {coordinate(random), coordinate(random), coordinate(random)}});
            form.canvas->Setdrehwinkel(coordinate(random) * 60);
            form.canvas->SetTranslation({coordinate(random), coordinate(random), coordinate(random)});
            form.canvas->SetChanging(false);
            for (int i = 0; i < 5; ++i)
                expectAgreement(*form.canvas, {coordinate(random), coordinate(random), coordinate(random)});
        }
    }
}

TEST(Viewing, TheModelMatrixHidesTheScale) {
    GlForm form({400, 400});
    EXPECT_TRUE(Equals(form.canvas->GetModelMatrix()[0][0], 0.15 / 0.15) ||
                std::fabs(form.canvas->GetModelMatrix()[0][0] - 1) < 1e-6);
    Tmatrix m = TranslationToMatrix3d({1, 2, 3});
    form.canvas->SetModelMatrix(m);
    EXPECT_NEAR(form.canvas->GetOglModelMatrix()[3][0], 0.15, 1e-6);
    EXPECT_NEAR(form.canvas->GetOglModelMatrix()[0][0], 0.15, 1e-6);
    EXPECT_EQ(form.canvas->GetOglModelMatrix()[3][3], 1);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            EXPECT_NEAR(form.canvas->GetModelMatrix()[i][j], m[i][j], 1e-6);
}

TEST(Viewing, EveryOperationLeavesTheMatrixModeAsItWas) {
    GlForm form;
    form.canvas->SetBlickWinkel(30);
    form.canvas->SetmatrixMode(GL_TEXTURE);
    form.canvas->SetprojectionMode(1);
    form.canvas->Frustum(-1, 1, -1, 1, 1, 2);
    form.canvas->SetBlickWinkel(20);
    form.canvas->SetBlickWinkelOld(20);
    form.canvas->SetUnitsPerCm(20);
    form.canvas->SetTextureScale({2, 3, 4});
    form.canvas->SetProjectionbase(Unitbase);
    form.canvas->SetModelMatrix(Identity);
    form.canvas->OGLTranslate({1, 2, 3});
    form.canvas->SetStdViewport(300, 200);
    EXPECT_EQ(form.canvas->GetmatrixMode(), GL_TEXTURE);
    form.canvas->SetmatrixMode(GL_MODELVIEW);
    EXPECT_EQ(form.canvas->getTextureScale(), (TXYZ{2, 3, 4}));
    EXPECT_EQ(form.canvas->GetRenderMode(), GL_RENDER);
}

TEST(Viewing, TheTransformAsText) {
    GlForm form;
    form.canvas->Set_translation("1/2.5/-3");
    form.canvas->SetDrehgeradePkt("4/5/6");
    form.canvas->SetDrehgeradeRichtung("0/1/0");
    form.canvas->Setdrehwinkel(15);
    EXPECT_EQ(form.canvas->property("TransformBy").toString(), "1/2.5/-3");
    EXPECT_EQ(form.canvas->property("RotationPoint").toString(), "4/5/6");
    EXPECT_EQ(form.canvas->property("RotationLine").toString(), "0/1/0");
    EXPECT_EQ(form.canvas->property("RotateBy").toDouble(), 15);
    EXPECT_THROW(form.canvas->Set_translation("1/2"), EConvertError);
    EXPECT_THROW(form.canvas->SetDrehgeradePkt("a/b/c"), EConvertError);
    EXPECT_THROW(form.canvas->SetDrehgeradeRichtung(""), EConvertError);
    EXPECT_EQ(form.canvas->Get_translation(), "1/2.5/-3");
    EXPECT_EQ(form.canvas->GetDrehgeradePkt(), "4/5/6");
    EXPECT_EQ(form.canvas->GetDrehgeradeRichtung(), "0/1/0");
    // a malformed text leaves no bracket open
    form.TakeSwaps();
    form.canvas->Refresh();
    EXPECT_EQ(form.TakeSwaps(), 2);
}

TEST(Viewing, WithoutAContextTheSettersStore) {
    TZkOglCanvas canvas;
    canvas.SetBlickWinkel(30);
    EXPECT_EQ(canvas.GetBlickwinkel(), 30);
    canvas.SetBlickWinkel(50);
    EXPECT_EQ(canvas.GetBlickwinkel(), 30);
    canvas.SetUnitsPerCm(45);
    EXPECT_EQ(canvas.GetScale(), 2.0 * 45 / 180);
    canvas.SetTranslation({1, 2, 3});
    EXPECT_EQ(canvas.GetprojectionBAse().Origin, (TXYZ{-1, -2, -3}));
    canvas.SetModelMatrix(TranslationToMatrix3d({1, 1, 1}));
    EXPECT_EQ(canvas.GetModelMatrix(), TranslationToMatrix3d({1, 1, 1}));
    EXPECT_EQ(canvas.getViewPort(), TRect{});
    canvas.SetWidth(0);
    canvas.SetHeight(0);
    EXPECT_EQ(canvas.GetScale(), 2.0 * 45 / 180) << "a size of nothing keeps the scale";
    canvas.SetClockWise(false);
    EXPECT_FALSE(canvas.GetClockWise());
    canvas.SetClockWise(true);
    EXPECT_TRUE(canvas.GetClockWise());
}

TEST(Viewing, WithoutAContextWhatIsOpenGlsAloneIsNothing) {
    TZkOglCanvas canvas;
    const GlRecorder recorder;
    canvas.SetmatrixMode(GL_PROJECTION);
    EXPECT_EQ(canvas.GetmatrixMode(), 0);
    canvas.SetRenderMode(GL_SELECT);
    EXPECT_EQ(canvas.GetRenderMode(), 0);
    canvas.SetOglModelMatrix(TranslationToMatrix3d({1, 2, 3}));
    EXPECT_EQ(canvas.GetOglModelMatrix(), Identity);
    canvas.Frustum(-1, 1, -1, 1, 1, 2);
    canvas.SetBlickWinkelOld(30);
    EXPECT_EQ(canvas.GetBlickwinkel(), 0);
    canvas.BeginPaint();
    canvas.EndPaint();
    EXPECT_TRUE(canvas.Places().empty());
    EXPECT_EQ(recorder.Calls(), Calls{});
}

TEST(Viewing, APaintingThatBeginsWithinAChangeDrawsNothing) {
    GlForm form;
    form.TakeSwaps();
    const ChangeBracket bracket(form.canvas);
    const GlRecorder recorder;
    form.canvas->BeginPaint();
    form.canvas->EndPaint();
    EXPECT_EQ(recorder.Calls(), Calls{});
    EXPECT_EQ(form.TakeSwaps(), 0);
}

// Published properties: names and order are those of stored forms.
TEST(CanvasProperties, NamesOrderAndDefaults) {
    TZkOglCanvas canvas;
    const QMetaObject* meta = canvas.metaObject();
    QStringList names;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        names += meta->property(i).name();
    EXPECT_EQ(names,
              (QStringList{"WinControl", "UnitsPerCM", "DefaultTriangleResolution", "AutoCompile", "LightModelTwoSided",
                           "BackgroundColor", "ZoomFactor", "DefaultUnitsPerCM", "SelectEnabled", "PointOfView",
                           "TransformBy", "RotateBy", "RotationPoint", "RotationLine"}));
    EXPECT_EQ(canvas.property("UnitsPerCM").toDouble(), 30);
    EXPECT_EQ(canvas.property("DefaultUnitsPerCM").toDouble(), 30);
    EXPECT_EQ(canvas.property("DefaultTriangleResolution").toDouble(), 2);
    EXPECT_EQ(canvas.GetTriangleResolution(), 0);
    EXPECT_TRUE(canvas.property("AutoCompile").toBool());
    EXPECT_FALSE(canvas.property("LightModelTwoSided").toBool());
    EXPECT_EQ(canvas.property("BackgroundColor").value<QColor>(), QColor(Qt::black));
    EXPECT_EQ(canvas.property("ZoomFactor").toDouble(), 1);
    EXPECT_TRUE(canvas.property("SelectEnabled").toBool());
    EXPECT_EQ(canvas.property("PointOfView").toDouble(), 0);
    EXPECT_EQ(canvas.property("TransformBy").toString(), "0/0/0");
    EXPECT_EQ(canvas.property("RotateBy").toDouble(), 0);
    EXPECT_EQ(canvas.property("RotationPoint").toString(), "0/0/0");
    EXPECT_EQ(canvas.property("RotationLine").toString(), "0/0/1");
    EXPECT_EQ(canvas.GetScale(), 1);
    EXPECT_EQ(canvas.getTextureScale(), (TXYZ{1, 1, 1}));
    EXPECT_EQ(canvas.GetLightClass().name, "TZKOglLight");
    const std::unique_ptr<Tlight> light(canvas.GetLightClass().create(nullptr));
    EXPECT_NE(qobject_cast<TZKOglLight*>(light.get()), nullptr);
}
