#include "support.h"

#include <zk/_zkcomtypes/material.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace zk;

TEST(Material, ANewOne) {
    const Tmaterial material;
    EXPECT_EQ(0xFFFFFFU, material.GetAmbient());
    EXPECT_EQ(0x808080U, material.GetDiffuse());
    EXPECT_EQ(0x808080U, material.GetSpecular());
    EXPECT_EQ(0x808080U, material.GetEmission());
    EXPECT_EQ(0.2, material.GetShininess());
    EXPECT_EQ(glfront, material.GetFace());
    EXPECT_EQ(1.0, material.GetTranslucent());
    EXPECT_EQ(NoDefMat, material.GetDefKind());
}

TEST(Material, Presets) {
    const auto preset = [](TColor emission) {
        Tmaterialkind kind;
        kind.Ambient = 0;
        kind.Diffuse = 0;
        kind.Specular = 0xFFFFFF;
        kind.Emission = emission;
        kind.Shininess = 0.0;
        kind.Face = glfront;
        kind.Translucent = 1.0;
        return kind;
    };
    EXPECT_EQ(preset(0x808080), maNone);
    EXPECT_EQ(preset(0x808080), maGray);
    EXPECT_EQ(preset(0x0000FF), maRed);
    EXPECT_EQ(preset(0xFFFF00), maAqua);
    EXPECT_EQ(preset(0x800000), maNavy);
    EXPECT_EQ(preset(0xFF00FF), maEisen);
    EXPECT_EQ(preset(0xC0C0C0), maLtGray);
    EXPECT_EQ(255, ToQColor(maRed.Emission).red());
    EXPECT_EQ(QColor(0, 255, 255), ToQColor(maAqua.Emission));
}

TEST(Material, EverySetterStoresAndNotifiesOnce) {
    Tmaterial material;
    Changes changes(material);
    material.SetAmbient(1);
    EXPECT_EQ(1, changes.take());
    material.SetDiffuse(2);
    EXPECT_EQ(1, changes.take());
    material.SetSpecular(3);
    EXPECT_EQ(1, changes.take());
    material.SetEmission(clHighlight);
    EXPECT_EQ(1, changes.take());
    material.SetShininess(5.5);
    EXPECT_EQ(1, changes.take());
    material.SetTranslucent(0.25);
    EXPECT_EQ(1, changes.take());
    material.SetFace(glback);
    EXPECT_EQ(1, changes.take());
    EXPECT_EQ((Tmaterialkind{1, 2, 3, clHighlight, 5.5, glback, 0.25}), material.GetMAterialKind());
}

TEST(Material, TheSameColourTwiceNotifiesTwice) {
    Tmaterial material;
    Changes changes(material);
    material.SetAmbient(0xFFFFFF);
    material.SetAmbient(0xFFFFFF);
    EXPECT_EQ(2, changes.take());
}

TEST(Material, NothingIsRangeChecked) {
    Tmaterial material;
    material.SetTranslucent(-7);
    EXPECT_EQ(-7, material.GetTranslucent());
    material.SetShininess(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan(material.GetShininess()));
    material.SetFace(TMFace(200));
    EXPECT_EQ(200, material.GetFace());
}

TEST(Material, FacesOfOpenGL) {
    Tmaterial material;
    EXPECT_EQ(0x404U, material.GLFace());
    material.SetFace(glback);
    EXPECT_EQ(0x405U, material.GLFace());
    material.SetFace(glfrontandback);
    EXPECT_EQ(0x408U, material.GLFace());
    for (int other = 3; other < 256; ++other) {
        material.SetFace(TMFace(other));
        EXPECT_EQ(0U, material.GLFace()) << other;
    }
}

TEST(Material, AKindGoesThroughTheSettersInOrder) {
    struct Recorder : Tmaterial {
        void SetFace(TMFace value) override { note('F'), Tmaterial::SetFace(value); }
        void SetAmbient(TColor value) override { note('A'), Tmaterial::SetAmbient(value); }
        void SetDiffuse(TColor value) override { note('D'), Tmaterial::SetDiffuse(value); }
        void SetSpecular(TColor value) override { note('S'), Tmaterial::SetSpecular(value); }
        void SetEmission(TColor value) override { note('E'), Tmaterial::SetEmission(value); }
        void SetShininess(double value) override { note('H'), Tmaterial::SetShininess(value); }
        void SetTranslucent(double value) override { note('T'), Tmaterial::SetTranslucent(value); }
        void note(char c) { calls += c; }
        std::string calls;
    } material;
    Changes changes(material);
    const Tmaterialkind kind{1, 2, 3, 4, 5, glfrontandback, 6};
    material.SetMAterialKind(kind);
    EXPECT_EQ("FADSEHT", material.calls);
    EXPECT_EQ(kind, material.GetMAterialKind());
    EXPECT_EQ(8, changes.take());
}

TEST(Material, AKindIsReadThroughTheGetters) {
    struct Other : Tmaterial {
        TColor GetEmission() const override { return 0x123456; }
        TMFace GetFace() const override { return glback; }
    } const material;
    EXPECT_EQ(0x123456U, material.GetMAterialKind().Emission);
    EXPECT_EQ(glback, material.GetMAterialKind().Face);
    EXPECT_EQ(0x405U, material.GLFace());
}

TEST(Material, APredefinedKindAppliesItsPreset) {
    const std::pair<TDefmatKind, Tmaterialkind> cases[] = {
        {matGray, maGray},  {matAqua, maAqua},
        {matNavy, maNavy},  {matLtGray, maRed},  // these two are crossed on purpose
        {matRed, maLtGray},
    };
    for (const auto& [kind, preset] : cases) {
        Tmaterial material;
        material.SetFace(glback);
        material.SetMatKind(kind);
        EXPECT_EQ(preset, material.GetMAterialKind()) << int(kind);
        EXPECT_EQ(NoDefMat, material.GetDefKind());
    }
}

TEST(Material, LightGrayIsRedAndRedIsLightGray) {
    Tmaterial material;
    material.SetMatKind(matLtGray);
    EXPECT_EQ(0x0000FFU, material.GetEmission());
    EXPECT_EQ(NoDefMat, material.GetDefKind());
    material.SetMatKind(matRed);
    EXPECT_EQ(0xC0C0C0U, material.GetEmission());
}

TEST(Material, APresetIsATriggerThatWorksEachTime) {
    Tmaterial material;
    material.SetMatKind(matAqua);
    material.SetEmission(0);
    material.SetMatKind(matAqua);
    EXPECT_EQ(0xFFFF00U, material.GetEmission());
}

TEST(Material, EventsOfAPreset) {
    Tmaterial material;
    Changes changes(material);
    material.SetMatKind(matGray);
    // seven setters, of which the first resets the kind with an event of its own, then the record and the kind
    EXPECT_EQ(7 + 1 + 1 + 1, changes.take());
    material.SetChanging(true);
    material.SetMatKind(matGray);
    material.SetChanging(false);
    EXPECT_EQ(1, changes.take());
}

TEST(Material, TheStoredKindAgainDoesNothing) {
    Tmaterial material;
    Changes changes(material);
    material.SetMatKind(NoDefMat);
    EXPECT_EQ(0, changes.take());
}

TEST(Material, AnUnknownKindIsStoredAndAppliesNothing) {
    Tmaterial material;
    Changes changes(material);
    const Tmaterialkind before = material.GetMAterialKind();
    material.SetMatKind(TDefmatKind(77));
    EXPECT_EQ(77, material.GetDefKind());
    EXPECT_EQ(before, material.GetMAterialKind());
    EXPECT_EQ(1, changes.take());
    material.SetMatKind(TDefmatKind(77));
    EXPECT_EQ(0, changes.take());
    // a setter resets it, with an event of its own
    material.SetAmbient(1);
    EXPECT_EQ(2, changes.take());
    EXPECT_EQ(NoDefMat, material.GetDefKind());
}

TEST(Material, PublishedProperties) {
    EXPECT_EQ((Published{{"Ambient", "QColor"},
                         {"Diffuse", "QColor"},
                         {"Specular", "QColor"},
                         {"Emission", "QColor"},
                         {"Shininess", "double"},
                         {"Translucent", "double"},
                         {"DefKind", "zk::TDefmatKind"}}),
              published(Tmaterial::staticMetaObject));
}

TEST(Material, PropertiesShowColoursAsQtDoes) {
    Tmaterial material;
    EXPECT_EQ(QColor(255, 255, 255), material.property("Ambient").value<QColor>());
    EXPECT_EQ(QColor(128, 128, 128), material.property("Diffuse").value<QColor>());
    EXPECT_EQ(QColor(128, 128, 128), material.property("Specular").value<QColor>());
    EXPECT_EQ(QColor(128, 128, 128), material.property("Emission").value<QColor>());

    const QColor color(0x12, 0x34, 0x56);
    for (const char* name : {"Ambient", "Diffuse", "Specular", "Emission"}) {
        EXPECT_TRUE(material.setProperty(name, color)) << name;
        EXPECT_EQ(color, material.property(name).value<QColor>()) << name;
    }
    EXPECT_EQ(0x563412U, material.GetAmbient());
    EXPECT_EQ(0x563412U, material.GetDiffuse());
    EXPECT_EQ(0x563412U, material.GetSpecular());
    EXPECT_EQ(0x563412U, material.GetEmission());
    EXPECT_TRUE(material.setProperty("Ambient", QStringLiteral("#ff0000")));
    EXPECT_EQ(0x0000FFU, material.GetAmbient());
}

TEST(Material, PropertiesOfNumbers) {
    Tmaterial material;
    EXPECT_EQ(0.2, material.property("Shininess").toDouble());
    EXPECT_EQ(1.0, material.property("Translucent").toDouble());
    EXPECT_TRUE(material.setProperty("Shininess", 12.5));
    EXPECT_TRUE(material.setProperty("Translucent", 0.5));
    EXPECT_EQ(12.5, material.GetShininess());
    EXPECT_EQ(0.5, material.GetTranslucent());
    EXPECT_FALSE(material.setProperty("Shininess", QStringLiteral("bright")));
    EXPECT_EQ(12.5, material.GetShininess());
}

TEST(Material, TheKindIsPublishedByName) {
    Tmaterial material;
    EXPECT_EQ(NoDefMat, material.property("DefKind").value<TDefmatKind>());
    EXPECT_TRUE(material.setProperty("DefKind", QStringLiteral("matNavy")));
    EXPECT_EQ(0x800000U, material.GetEmission());
    EXPECT_TRUE(material.setProperty("DefKind", int(matAqua)));
    EXPECT_EQ(0xFFFF00U, material.GetEmission());
    EXPECT_TRUE(material.setProperty("DefKind", QVariant::fromValue(matGray)));
    EXPECT_EQ(0x808080U, material.GetEmission());
    EXPECT_FALSE(material.setProperty("DefKind", QStringLiteral("matPlaid")));
    EXPECT_EQ(0x808080U, material.GetEmission());
    EXPECT_EQ(NoDefMat, material.GetDefKind());
}

TEST(Material, EveryPropertyIsStoredAndWritable) {
    const QMetaObject& meta = Tmaterial::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        EXPECT_TRUE(meta.property(i).isStored()) << meta.property(i).name();
        EXPECT_TRUE(meta.property(i).isWritable()) << meta.property(i).name();
        EXPECT_TRUE(meta.property(i).isReadable()) << meta.property(i).name();
    }
}
