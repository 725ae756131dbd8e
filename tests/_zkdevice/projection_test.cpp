#include <zk/_zkdevice/device.h>
#include <zk/_zkmath/vector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

using namespace zk;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

}  // namespace

TEST(Projection, ANewDeviceMapsTheOriginToItsMiddle) {
    const TZKDevice device;
    EXPECT_EQ((TXYI{90, 90}), device.WtoPixel({0, 0, 0}));
    EXPECT_EQ((TXYI{120, 60}), device.WtoPixel({1, 1, 0}));
    EXPECT_EQ((TXYI{60, 120}), device.WtoPixel({-1, -1, 0}));
    EXPECT_EQ((TXYI{120, 60}), device.WtoPixel({1, 1, 5}));
    EXPECT_EQ((TXYI{120, 60}), device.WtoPixel({1, 1, -5}));
}

TEST(Projection, TheEyeInParallelProjectionIsTheOrigin) {
    TZKDevice device;
    EXPECT_EQ(0.0, device.AugeAbstand());
    EXPECT_EQ(Nullxyz, device.Auge());
    TBAse base = Unitbase;
    base.Origin = {1, 2, 3};
    device.SetProjectionbase(base);
    EXPECT_EQ((TXYZ{1, 2, 3}), device.Auge());
}

TEST(Projection, EyeDistances) {
    TZKDevice device;
    const auto distance = [&device](double angle) {
        device.SetBlickWinkel(angle);
        return device.AugeAbstand();
    };
    EXPECT_EQ(0.0, distance(0));
    EXPECT_EQ(0.0, distance(1e-11));  // 0 within the tolerance
    EXPECT_EQ(1000.0, distance(90));
    EXPECT_EQ(1000.0, distance(180));
    EXPECT_EQ(1000.0, distance(90 + 1e-11));
    EXPECT_NEAR(3.0, distance(45), 1e-14);
    EXPECT_NEAR(3.0 / std::tan(std::numbers::pi / 6), distance(30), 1e-14);
    EXPECT_NEAR(-3.0, distance(135), 1e-14);
    EXPECT_NEAR(-3.0, distance(-45), 1e-14);
    EXPECT_NEAR(3.0, distance(225), 1e-13);
}

TEST(Projection, TheEyeDistanceFollowsWidthAndScale) {
    TZKDevice device;
    device.SetBlickWinkel(45);
    device.SetWidth(360);
    EXPECT_NEAR(6.0, device.AugeAbstand(), 1e-14);
    device.SetHeight(1000);
    EXPECT_NEAR(6.0, device.AugeAbstand(), 1e-14);
    device.SetUnitsPerCm(60);
    EXPECT_NEAR(3.0, device.AugeAbstand(), 1e-14);
}

TEST(Projection, TheEyeIsOnTheZAxis) {
    TZKDevice device;
    device.SetBlickWinkel(45);
    const TXYZ eye = device.Auge();
    EXPECT_EQ(0, eye.x);
    EXPECT_EQ(0, eye.y);
    EXPECT_NEAR(3, eye.z, 1e-14);

    device.SetProjectionbase({{1, 2, 3}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}});
    EXPECT_NEAR(4, device.Auge().x, 1e-14);
    EXPECT_EQ(2, device.Auge().y);
    EXPECT_EQ(3, device.Auge().z);
}

TEST(Projection, CentralProjectionShrinksWhatIsFarther) {
    TZKDevice device;
    device.SetBlickWinkel(45);  // the eye is 3 before the plane
    const auto at = [&device](double z) { return device.Projection(TXYZ{1, 1, z}); };
    EXPECT_NEAR(1.0, at(0).x, 1e-14);
    EXPECT_NEAR(1.0, at(0).y, 1e-14);
    EXPECT_NEAR(0.5, at(-3).x, 1e-14);
    EXPECT_NEAR(0.5, at(-3).y, 1e-14);
    EXPECT_NEAR(1.5, at(1).x, 1e-14);
    EXPECT_NEAR(-3.0, at(4).x, 1e-13);  // behind the eye it comes out mirrored
    EXPECT_EQ((TXYI{105, 75}), device.WtoPixel({1, 1, -3}));
    // the edge of the view: at the half angle of 45 degrees from the axis
    EXPECT_EQ((TXYI{180, 90}), device.WtoPixel({3, 0, 0}));
}

TEST(Projection, OntoAnyPlane) {
    TZKDevice device;
    const TPlane slanted{{0, 0, 1}, Normalize(TXYZ{1, 0, 1})};
    TXYZ image = device.Projection({1, 2, 7}, slanted);
    EXPECT_NEAR(1, image.x, 1e-14);
    EXPECT_NEAR(2, image.y, 1e-14);
    EXPECT_NEAR(0, image.z, 1e-14);

    device.SetBlickWinkel(45);
    image = device.Projection({1, 0, 0}, {{0, 0, -3}, {0, 0, 1}});
    EXPECT_NEAR(2, image.x, 1e-14);
    EXPECT_NEAR(0, image.y, 1e-14);
    EXPECT_NEAR(-3, image.z, 1e-14);
}

TEST(Projection, ALineParallelToThePlaneLeavesThePoint) {
    TZKDevice device;
    const TPlane upright{{5, 0, 0}, {1, 0, 0}};
    EXPECT_EQ((TXYZ{1, 2, 3}), device.Projection({1, 2, 3}, upright));
    device.SetBlickWinkel(45);
    const TXYZ level{1, 2, device.Auge().z};  // as high as the eye
    EXPECT_EQ(level, device.Projection(level, {{0, 0, 0}, {0, 0, 1}}));
}

TEST(Projection, TheEyeItselfHasNoImage) {
    TZKDevice device;
    device.SetBlickWinkel(45);
    const TXY image = device.Projection(device.Auge());
    EXPECT_EQ(0, image.x);
    EXPECT_EQ(0, image.y);
}

TEST(Projection, CoordinatesAreThoseOfTheProjectionBase) {
    TZKDevice device;
    device.SetProjectionbase({{10, 20, 30}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}});
    const TXY image = device.Projection(TXYZ{99, 21, 32});
    EXPECT_NEAR(1, image.x, 1e-13);
    EXPECT_NEAR(2, image.y, 1e-13);
    EXPECT_EQ((TXYI{120, 30}), device.WtoPixel({99, 21, 32}));
}

TEST(Projection, TheModelMatrixIsNotPartOfIt) {
    TZKDevice device;
    Tmatrix moved = Identity;
    moved[3][0] = 100;
    device.SetModelMatrix(moved);
    EXPECT_EQ((TXYI{120, 60}), device.WtoPixel({1, 1, 0}));
}

TEST(Projection, OddSizesAreHalvedDownwards) {
    TZKDevice device;
    device.SetWidth(181);
    device.SetHeight(183);
    EXPECT_EQ((TXYI{90, 91}), device.GetDeviceKoord({0, 0}));
    EXPECT_EQ((TXY{0, 0}), device.GetProjectionKoord({90, 91}));
    device.SetWidth(-181);
    EXPECT_EQ(-90, device.GetDeviceKoord({0, 0}).x);  // towards zero
}

TEST(Projection, PixelsAreRoundedToTheNearestTiesToEven) {
    TZKDevice device;
    device.SetUnitsPerCm(1);
    const auto pixel = [&device](double x) { return device.GetDeviceKoord({x, 0}).x - 90; };
    EXPECT_EQ(0, pixel(0.25));
    EXPECT_EQ(0, pixel(0.5));
    EXPECT_EQ(1, pixel(0.75));
    EXPECT_EQ(2, pixel(1.5));
    EXPECT_EQ(2, pixel(2.5));
    EXPECT_EQ(4, pixel(3.5));
    EXPECT_EQ(0, pixel(-0.5));
    EXPECT_EQ(-2, pixel(-1.5));
    EXPECT_EQ(-92, pixel(-91.5));  // ties beyond zero too
    EXPECT_EQ(-92, pixel(-92.5));
    EXPECT_EQ(90, device.GetDeviceKoord({0, 0.5}).y);
    EXPECT_EQ(88, device.GetDeviceKoord({0, 1.5}).y);
}

TEST(Projection, PixelsAreClampedTo32Bits) {
    TZKDevice device;
    EXPECT_EQ((TXYI{Highest, Lowest}), device.GetDeviceKoord({1e300, 1e300}));
    EXPECT_EQ((TXYI{Lowest, Highest}), device.GetDeviceKoord({-1e300, -1e300}));
    EXPECT_EQ((TXYI{Highest, Lowest}), device.GetDeviceKoord({Inf, Inf}));
    EXPECT_EQ((TXYI{0, 0}), device.GetDeviceKoord({NaN, NaN}));
    device.SetUnitsPerCm(NaN);
    EXPECT_EQ((TXYI{0, 0}), device.WtoPixel({1, 1, 1}));
    device.SetUnitsPerCm(1);
    device.SetWidth(0);
    EXPECT_EQ(Highest, device.GetDeviceKoord({2147483646.5, 0}).x + 1);
    EXPECT_EQ(Highest, device.GetDeviceKoord({2147483647.0, 0}).x);
    EXPECT_EQ(Highest, device.GetDeviceKoord({2147483647.5, 0}).x);
    EXPECT_EQ(Lowest, device.GetDeviceKoord({-2147483648.0, 0}).x);
    EXPECT_EQ(Lowest, device.GetDeviceKoord({-2147483647.75, 0}).x);
    EXPECT_EQ(Lowest + 1, device.GetDeviceKoord({-2147483647.25, 0}).x);
}

TEST(Projection, NoUnitsPerCmIsNoCrash) {
    TZKDevice device;
    device.SetUnitsPerCm(0);
    EXPECT_EQ((TXYI{90, 90}), device.WtoPixel({1, 1, 1}));
    EXPECT_TRUE(std::isinf(device.GetProjectionKoord({91, 89}).x));
    EXPECT_TRUE(std::isinf(device.GetProjectionKoord({91, 89}).y));
    EXPECT_TRUE(std::isnan(device.GetProjectionKoord({90, 90}).x));
    device.SetBlickWinkel(45);
    EXPECT_TRUE(std::isinf(device.AugeAbstand()));
    device.WtoPixel({1, 1, 1});
    device.SetWidth(0);
    EXPECT_TRUE(std::isnan(device.AugeAbstand()));
    device.WtoPixel({1, 1, 1});
}

TEST(Projection, RubbishNeverLeavesTheLanguage) {
    TZKDevice device;
    const double rubbish[] = {0, -0.0, 1e-320, 1e308, -1e308, Inf, -Inf, NaN, 45, 90};
    for (const double angle : rubbish)
        for (const double units : rubbish)
            for (const double value : rubbish) {
                device.SetBlickWinkel(angle);
                device.SetUnitsPerCm(units);
                device.SetProjectionbase({{value, 0, 0}, {1, value, 0}, {0, 1, value}, {0, 0, value}});
                device.WtoPixel({value, 1, value});
                device.GetProjectionKoord({Lowest, Highest});
            }
}

TEST(Projection, PixelsAndPlaneAreInverses) {
    TZKDevice device;
    device.SetWidth(641);
    device.SetHeight(480);
    device.SetUnitsPerCm(37.5);
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> coordinate(-50, 50);
    for (int i = 0; i < 2000; ++i) {
        const TXY q{coordinate(random), coordinate(random)};
        const TXY back = device.GetProjectionKoord(device.GetDeviceKoord(q));
        EXPECT_NEAR(q.x, back.x, 0.5 / 37.5 + 1e-9);
        EXPECT_NEAR(q.y, back.y, 0.5 / 37.5 + 1e-9);
        const TXYI d{std::int32_t(random() % 2000) - 1000, std::int32_t(random() % 2000) - 1000};
        EXPECT_EQ(d, device.GetDeviceKoord(device.GetProjectionKoord(d)));
    }
}

TEST(Projection, DownIsPositiveOnTheDevice) {
    const TZKDevice device;
    EXPECT_EQ((TXY{1, 1}), device.GetProjectionKoord({120, 60}));
    EXPECT_EQ((TXY{-3, 3}), device.GetProjectionKoord({0, 0}));
    EXPECT_NEAR(71582791.3, device.GetProjectionKoord({Lowest, Lowest}).y, 1);
}

TEST(Projection, OverridesTakePart) {
    struct Other : TZKDevice {
        double AugeAbstand() const override { return 4; }
        double GetBlickwinkel() const override { return 10; }
        std::int32_t GetWidth() const override { return 100; }
        std::int32_t GetHeight() const override { return 50; }
        TBAse GetprojectionBAse() const override {
            TBAse base = Unitbase;
            base.Origin.z = 1;
            return base;
        }
    } const device;
    EXPECT_EQ((TXYZ{0, 0, 5}), device.Auge());
    EXPECT_EQ((TXYI{50, 25}), device.WtoPixel({0, 0, 0}));
    // seen from 5, the plane at 1: a point at 0 is moved to 4/5
    EXPECT_EQ((TXYI{74, 1}), device.WtoPixel({1, 1, 0}));
}

TEST(Projection, AngleAndEyeAgreeThroughTheTangent) {
    struct Other : TZKDevice {
        double GetBlickwinkel() const override { return 45; }
        std::int32_t GetWidth() const override { return 60; }
    } const device;
    EXPECT_NEAR(1.0, device.AugeAbstand(), 1e-14);
}
