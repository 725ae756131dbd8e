#include "support.h"

#include <zk/_zkcomtypes/polyattributes.h>

#include <gtest/gtest.h>

using namespace zk;

TEST(PolyAttributes, ANewOne) {
    const TPolyAttributes attributes;
    EXPECT_EQ(glfill, attributes.GetMode());
    EXPECT_EQ(glpolygon, attributes.GetStyle());
}

TEST(PolyAttributes, SettersStoreAndNotifyAlways) {
    TPolyAttributes attributes;
    Changes changes(attributes);
    attributes.SetMode(glline);
    attributes.SetMode(glline);
    EXPECT_EQ(2, changes.take());
    attributes.SetStyle(gllines);
    attributes.SetStyle(gllines);
    EXPECT_EQ(2, changes.take());
    EXPECT_EQ(glline, attributes.GetMode());
    EXPECT_EQ(gllines, attributes.GetStyle());
}

TEST(PolyAttributes, NumbersOfOpenGL) {
    TPolyAttributes attributes;
    for (int mode = 0; mode < 3; ++mode) {
        attributes.SetMode(TPAMode(mode));
        EXPECT_EQ(0x1B00U + unsigned(mode), attributes.GLMode());
    }
    for (int style = 0; style < 10; ++style) {
        attributes.SetStyle(TPAStyle(style));
        EXPECT_EQ(unsigned(style), attributes.GLStyle());
    }
    attributes.SetMode(glline);
    EXPECT_EQ(0x1B01U, attributes.GLMode());
    attributes.SetStyle(grtrianglefan);
    EXPECT_EQ(6U, attributes.GLStyle());
}

TEST(PolyAttributes, NumbersGoThroughTheGetters) {
    struct Other : TPolyAttributes {
        TPAMode GetMode() const override { return glpoint; }
        TPAStyle GetStyle() const override { return glquads; }
    } const attributes;
    EXPECT_EQ(0x1B00U, attributes.GLMode());
    EXPECT_EQ(7U, attributes.GLStyle());
}

TEST(PolyAttributes, OnlyTheModeIsPublished) {
    EXPECT_EQ((Published{{"Mode", "zk::TPAMode"}}), published(TPolyAttributes::staticMetaObject));
    TPolyAttributes attributes;
    EXPECT_EQ(glfill, attributes.property("Mode").value<TPAMode>());
    EXPECT_TRUE(attributes.setProperty("Mode", QStringLiteral("glpoint")));
    EXPECT_EQ(glpoint, attributes.GetMode());
    EXPECT_TRUE(attributes.setProperty("Mode", 1));
    EXPECT_EQ(glline, attributes.GetMode());
}

TEST(PolyAttributes, ValuesBeyondTheLastNameAreStored) {
    TPolyAttributes attributes;
    attributes.SetMode(TPAMode(255));
    attributes.SetStyle(TPAStyle(255));
    EXPECT_EQ(0x1B00U + 255, attributes.GLMode());
    EXPECT_EQ(255U, attributes.GLStyle());
}
