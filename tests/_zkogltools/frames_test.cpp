#include "print.h"

#include <zk/_zkmath.h>
#include <zk/_zkogltools/ellipseway.h>
#include <zk/_zkxyz/errors.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

#include <numbers>

using namespace zk;

namespace {

void expectPoint(const TXYZ& actual, const TXYZ& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
    EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

/// What the base hands to a descendant.
class Probe : public TBaseFun {
  public:
    TBAse CalculateBAse(double t) override {
        last = t;
        ++count;
        TBAse base = Unitbase;
        base.Origin = {t, 0, 0};
        return base;
    }
    double last = -1;
    int count = 0;
};

}  // namespace

TEST(BaseFun, StartsWithTheUnitFrame) {
    TBaseFun fun;
    EXPECT_EQ(fun.GetMin(), 0);
    EXPECT_EQ(fun.GetMax(), 1);
    EXPECT_EQ(fun.GetParam(), 0);
    EXPECT_TRUE(fun.GetCyclic());
    EXPECT_EQ(fun.Base(), Unitbase);
    EXPECT_EQ(fun.CalculateBAse(0.3), Unitbase);
    EXPECT_EQ(TStdBases().CalculateBAse(0.3), Unitbase);
}

TEST(BaseFun, TheParameterIsDividedByTheWidthOfTheRange) {
    Probe probe;
    probe.SetMAx(3);
    probe.SetMin(1);
    probe.SetPAram(1);
    EXPECT_EQ(probe.last, 0.5) << "the lower end is not subtracted";
    EXPECT_EQ(probe.Base().Origin.x, 0.5);
    probe.SetPAram(3);
    EXPECT_EQ(probe.last, 1.5);
}

TEST(BaseFun, AnEmptyRangeGivesTheUnitFrame) {
    Probe probe;
    probe.SetPAram(0.7);
    probe.SetMin(1);
    EXPECT_EQ(probe.Base(), Unitbase);
    probe.SetMin(1 + 1e-11);
    EXPECT_EQ(probe.Base(), Unitbase) << "empty within the tolerance of the geometry";
    EXPECT_EQ(probe.GetBase(), Unitbase);
    EXPECT_EQ(probe.GetParam(), 0.7);
}

TEST(BaseFun, ACyclicParameterComesBackIntoTheRange) {
    Probe probe;
    const auto used = [&probe](double param) {
        probe.SetPAram(param);
        return probe.last;
    };
    EXPECT_EQ(used(0), 0);
    EXPECT_EQ(used(1), 1) << "the ends stay";
    EXPECT_EQ(used(1.25), 0.25);
    EXPECT_EQ(used(-0.25), 0.75);
    EXPECT_EQ(used(17.5), 0.5);
    EXPECT_EQ(probe.GetParam(), 17.5) << "what was set is what is read";
    probe.SetCyclic(false);
    EXPECT_EQ(probe.last, 0.5) << "the flag computes nothing";
    EXPECT_EQ(used(17.5), 17.5);
    probe.SetCyclic(true);
    probe.SetMin(2);
    probe.SetMAx(6);
    EXPECT_EQ(used(7), 3.0 / 4);
    EXPECT_EQ(used(1), 5.0 / 4);
    probe.SetMin(6);
    probe.SetMAx(2);
    EXPECT_EQ(used(7), 3.0 / -4) << "a range that runs backwards wraps at the same ends";
}

TEST(StdBases, TurnsThenMoves) {
    TStdBases base;
    EXPECT_EQ(base.GetWorldBAse(), Unitbase);
    base.Set_translation("1/2/3");
    EXPECT_EQ(base.GetWorldBAse().Origin, (TXYZ{1, 2, 3}));
    base.SetDrehgeradeRichtung("0/1/0");
    base.SetDrehgeradePkt("1/0/0");
    EXPECT_EQ(base.GetDrehgeradeRichtung(), "0/1/0") << "each half of the line keeps the other";
    EXPECT_EQ(base.GetDrehgeradePkt(), "1/0/0");
    base.Setdrehwinkel(0.5);
    const double radians = 0.5 * 180 / std::numbers::pi;
    EXPECT_EQ(base.TrfMAtrix(),
              Mulmat(RotationToMatrix3d({{1, 0, 0}, {0, 1, 0}}, radians), TranslationToMatrix3d({1, 2, 3})));
    TBAse moved = Unitbase;
    TransformBAse(base.TrfMAtrix(), moved);
    EXPECT_EQ(base.GetWorldBAse(), moved);
}

TEST(StdBases, AMalformedTextChangesNothing) {
    TStdBases base;
    base.Set_translation("1/2/3");
    EXPECT_THROW(base.Set_translation("1/2"), EConvertError);
    EXPECT_THROW(base.SetDrehgeradePkt("a/b/c"), EConvertError);
    EXPECT_THROW(base.SetDrehgeradeRichtung(""), EConvertError);
    EXPECT_EQ(base.Get_translation(), "1/2/3");
    EXPECT_EQ(base.GetDrehgeradePkt(), "0/0/0");
    EXPECT_EQ(base.GetDrehgeradeRichtung(), "0/0/1");
}

TEST(EllipseWay, RunsAroundTheCircle) {
    TEllipseWay way;
    way.SetPAram(0);
    expectPoint(way.Base().Origin, {1, 0, 0});
    expectPoint(way.Base().XAxis, {0, -1, 0});
    expectPoint(way.Base().YAxis, {1, 0, 0});
    expectPoint(way.Base().ZAxis, {0, 0, 1});
    way.SetPAram(0.25);
    expectPoint(way.Base().Origin, {0, 1, 0});
    expectPoint(way.Base().XAxis, {1, 0, 0});
    way.SetPAram(0.5);
    expectPoint(way.Base().Origin, {-1, 0, 0});
    way.SetPAram(1);
    expectPoint(way.Base().Origin, {1, 0, 0});
}

TEST(EllipseWay, TheHalfAxesMoveTheOriginOnlyAndShowLater) {
    TEllipseWay way;
    way.SetPAram(0);
    way.SetA(5);
    way.SetB(2);
    expectPoint(way.Base().Origin, {1, 0, 0});
    way.ReCalc();
    expectPoint(way.Base().Origin, {5, 0, 0});
    way.SetPAram(0.125);
    const double half = std::numbers::sqrt2 / 2;
    expectPoint(way.Base().Origin, {5 * half, 2 * half, 0});
    expectPoint(way.Base().XAxis, {half, -half, 0});
}

TEST(EllipseWay, IsPlacedInTheWorld) {
    TEllipseWay way;
    way.Set_translation("10/0/0");
    way.SetDrehgeradeRichtung("1/0/0");
    // a quarter turn: the angle is multiplied by 180 / pi before it is taken as radians
    way.Setdrehwinkel(std::numbers::pi / 2 * std::numbers::pi / 180);
    way.SetPAram(0.25);
    const TXYZ turned = Mul(Sub(way.Base().Origin, TXYZ{10, 0, 0}), 1.0);
    EXPECT_NEAR(turned.y, 0, 1e-12);
    EXPECT_NEAR(std::fabs(turned.z), 1, 1e-12);
    expectPoint(way.Base().XAxis, {1, 0, 0});
    EXPECT_NEAR(Skal(way.Base().XAxis, way.Base().YAxis), 0, 1e-12);
    expectPoint(Vekt(way.Base().XAxis, way.Base().YAxis), way.Base().ZAxis);
    TXYZ onWay{0, 1, 0};
    expectPoint(BaseGetAbs(way.GetWorldBAse(), onWay), way.Base().Origin);
}

TEST(EllipseWay, PropertiesInTheirOrder) {
    TEllipseWay way;
    const QMetaObject& meta = TEllipseWay::staticMetaObject;
    QStringList names;
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta.propertyCount(); ++i)
        names += meta.property(i).name();
    EXPECT_EQ(names, (QStringList{"Param", "Min", "Max", "Cyclic", "A", "B", "DrehWinkel", "Drehgerade_Richtung",
                                  "_Translation"}));
    const double defaults[] = {0, 0, 1, 1, 1, 1, 0};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(way.property(qPrintable(names[i])).toDouble(), defaults[i]) << names[i].toStdString();
    EXPECT_EQ(way.property("Drehgerade_Richtung").toString(), "0/0/1");
    EXPECT_EQ(way.property("_Translation").toString(), "0/0/0");
    for (const char* name : {"Param", "Min", "Max", "A", "B", "DrehWinkel"}) {
        ASSERT_TRUE(way.setProperty(name, 0.625)) << name;
        EXPECT_EQ(way.property(name).toDouble(), 0.625) << name;
    }
    ASSERT_TRUE(way.setProperty("_Translation", "1/2.5/-3"));
    EXPECT_EQ(way.property("_Translation").toString(), "1/2.5/-3");
}
