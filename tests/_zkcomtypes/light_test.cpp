#include <zk/_zkcomtypes/light.h>
#include <zk/_zkcomtypes/lightmodel.h>

#include <QMetaProperty>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;

namespace {

class Open : public Tlight {
  public:
    using Tlight::enabled_;
    using Tlight::handle_;
    using Tlight::Tlight;
};

}  // namespace

TEST(Light, ANewOne) {
    const Open light;
    EXPECT_EQ((TXYZ{0, 0, 2}), light.GetPosition());
    EXPECT_EQ((TXYZ{0, 0, -1}), light.GetDirection());
    EXPECT_FALSE(light.enabled_);
    EXPECT_EQ(-1, light.handle_);
    EXPECT_EQ(1.0, light.getSpotExponent());
    EXPECT_EQ(180.0, light.getSpotCutOff());
    EXPECT_EQ(0xFFFFFFU, light.GetAmbient());
    EXPECT_EQ(0xFFFFFFU, light.GetDiffuse());
    EXPECT_EQ(0xFFFFFFU, light.GetSpecular());
    EXPECT_EQ(1.0, light.GEtattenuation());
    EXPECT_EQ(0x1208, light.GEtattenuationMode());
}

TEST(Light, SettersStoreWhatTheyAreGiven) {
    Open light;
    light.SetPosition({1, 2, 3});
    light.SetDirection({4, 5, 6});
    light.SetEnabled(true);
    light.SetHandle(0x4001);
    light.SetSpotExponent(-3);
    light.SetSpotCutOff(200);
    light.SetAmbient(0x112233);
    light.SetDiffuse(clWindow);
    light.SetSpecular(0x778899);
    light.setattenuation(-0.5);
    light.setattenuationMode(5);
    EXPECT_EQ((TXYZ{1, 2, 3}), light.GetPosition());
    EXPECT_EQ((TXYZ{4, 5, 6}), light.GetDirection());
    EXPECT_TRUE(light.enabled_);
    EXPECT_EQ(0x4001, light.handle_);
    EXPECT_EQ(-3, light.getSpotExponent());
    EXPECT_EQ(200, light.getSpotCutOff());
    EXPECT_EQ(0x112233U, light.GetAmbient());
    EXPECT_EQ(TColor(clWindow), light.GetDiffuse());
    EXPECT_EQ(0x778899U, light.GetSpecular());
    EXPECT_EQ(-0.5, light.GEtattenuation());
    EXPECT_EQ(5, light.GEtattenuationMode());
}

TEST(Light, PublishesNothingOfItsOwn) {
    const QMetaObject& meta = Tlight::staticMetaObject;
    EXPECT_EQ(meta.propertyOffset(), meta.propertyCount());
}

TEST(Light, BelongsToItsOwner) {
    auto form = std::make_unique<QObject>();
    const QPointer<Tlight> light = new Tlight(form.get());
    EXPECT_EQ(form.get(), light->Owner());
    form.reset();
    EXPECT_TRUE(light.isNull());
}

TEST(Light, ItsClassMakesLights) {
    const TLightClass& lightClass = Tlight::Class();
    EXPECT_EQ(QStringLiteral("Tlight"), lightClass.name);
    QObject form;
    const Tlight* light = lightClass.create(&form);
    ASSERT_NE(nullptr, light);
    EXPECT_EQ(&form, light->Owner());
    const std::unique_ptr<Tlight> ownerless(lightClass.create(nullptr));
    EXPECT_EQ(nullptr, ownerless->Owner());
}

TEST(LightModel, ANewOneIsAllZero) {
    const TLightModel model;
    EXPECT_EQ(0U, model.Getambient());
    EXPECT_EQ(0.0, model.GetLocalViewer());
    EXPECT_FALSE(model.GetTwoside());
}

TEST(LightModel, SettersStore) {
    TLightModel model;
    model.SetAmbient(0x123456);
    model.SetLocalviewer(0.75);
    model.SetTwoside(true);
    EXPECT_EQ(0x123456U, model.Getambient());
    EXPECT_EQ(0.75, model.GetLocalViewer());
    EXPECT_TRUE(model.GetTwoside());
}
