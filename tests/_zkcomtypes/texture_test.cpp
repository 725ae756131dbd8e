#include "support.h"

#include <zk/_zkcomtypes/texture.h>

#include <gtest/gtest.h>

using namespace zk;

namespace {

constexpr TBAse Moved{{1, 2, 3}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}};

TPixels pixels(std::size_t count) {
    return std::make_shared<const std::vector<std::uint8_t>>(count, std::uint8_t(7));
}

TTextureKind other() {
    TTextureKind kind;
    kind.Visible = false;
    kind.EnvMode = glblend;
    kind.Picture = QStringLiteral("wall.bmp");
    kind.Base = Moved;
    kind.Filter = gllinear;
    kind.Repeat = false;
    kind.WorldWidth = 2.5;
    kind.WorldHeight = 3.5;
    kind.BaseFix = true;
    return kind;
}

}  // namespace

TEST(TextureKind, TheDefault) {
    EXPECT_TRUE(tkDefault.Visible);
    EXPECT_EQ(glmodulate, tkDefault.EnvMode);
    EXPECT_TRUE(tkDefault.Picture.isEmpty());
    EXPECT_EQ(Unitbase, tkDefault.Base);
    EXPECT_EQ(glnearest, tkDefault.Filter);
    EXPECT_EQ(0, tkDefault.Width);
    EXPECT_EQ(0, tkDefault.Height);
    EXPECT_TRUE(tkDefault.Repeat);
    EXPECT_EQ(1.0, tkDefault.WorldWidth);
    EXPECT_EQ(1.0, tkDefault.WorldHeight);
    EXPECT_FALSE(tkDefault.BaseFix);
    EXPECT_EQ(nullptr, tkDefault.Pixels);
    EXPECT_EQ(TTextureKind(), tkDefault);
}

TEST(Texture, ANewOneIsTheDefaultButInvisible) {
    const TTexture texture;
    TTextureKind expected = tkDefault;
    expected.Visible = false;
    EXPECT_EQ(expected, texture.GettextureKind());
    EXPECT_TRUE(texture.IsBaseSet());
    EXPECT_FALSE(texture.GetChanging());
}

TEST(Texture, EverySetterStoresAndNotifiesAlways) {
    TTexture texture;
    Changes changes(texture);
    for (int twice = 0; twice < 2; ++twice) {
        texture.SetVisible(true);
        EXPECT_EQ(1, changes.take());
        texture.SetRepeat(false);
        EXPECT_EQ(1, changes.take());
        texture.SetFilter(gllinear);
        EXPECT_EQ(1, changes.take());
        texture.SetEnvmode(gldecal);
        EXPECT_EQ(1, changes.take());
        texture.SetWorldWidth(4);
        EXPECT_EQ(1, changes.take());
        texture.SetWorldheight(5);
        EXPECT_EQ(1, changes.take());
        texture.SetWidth(-6);
        EXPECT_EQ(1, changes.take());
        texture.SetHeight(7);
        EXPECT_EQ(1, changes.take());
        texture.SetbaseFix(true);
        EXPECT_EQ(1, changes.take());
        texture.Setbase(Moved);
        EXPECT_EQ(1, changes.take());
    }
    EXPECT_TRUE(texture.GetVisible());
    EXPECT_FALSE(texture.GetREpeat());
    EXPECT_EQ(gllinear, texture.GetFilter());
    EXPECT_EQ(gldecal, texture.GetEnvmode());
    EXPECT_EQ(4, texture.getWorldwidth());
    EXPECT_EQ(5, texture.getWorldHeight());
    EXPECT_EQ(-6, texture.getwidth());
    EXPECT_EQ(7, texture.getHeight());
    EXPECT_TRUE(texture.GetbaseFix());
    EXPECT_EQ(Moved, texture.getBAse());
}

TEST(Texture, PixelsAreStoredWithoutNotification) {
    TTexture texture;
    Changes changes(texture);
    const TPixels data = pixels(12);
    texture.SetPixels(data);
    EXPECT_EQ(0, changes.take());
    EXPECT_EQ(data, texture.GetPixels());
    EXPECT_EQ(data, texture.GettextureKind().Pixels);
    EXPECT_EQ(0, texture.getwidth());
}

TEST(Texture, PixelsLiveAsLongAsATextureHoldsThem) {
    TTexture texture;
    TPixels data = pixels(3);
    const std::weak_ptr<const std::vector<std::uint8_t>> watch = data;
    texture.SetPixels(data);
    data.reset();
    ASSERT_FALSE(watch.expired());
    EXPECT_EQ(7, texture.GetPixels()->at(2));
    texture.SetPixels(nullptr);
    EXPECT_TRUE(watch.expired());
}

TEST(Texture, ADescriptionIsTakenOverInOneEvent) {
    TTexture texture;
    Changes changes(texture);
    texture.SettextureKind(other());
    EXPECT_EQ(1, changes.take());
    EXPECT_EQ(other(), texture.GettextureKind());
}

TEST(Texture, PixelsAndSizeOfADescriptionAreIgnored) {
    TTexture texture;
    texture.SetPixels(pixels(12));
    texture.SetWidth(2);
    texture.SetHeight(2);
    TTextureKind kind = other();
    kind.Pixels = pixels(48);
    kind.Width = 4;
    kind.Height = 4;
    texture.SettextureKind(kind);
    EXPECT_EQ(nullptr, texture.GetPixels());
    EXPECT_EQ(0, texture.getwidth());
    EXPECT_EQ(0, texture.getHeight());
    EXPECT_EQ(QStringLiteral("wall.bmp"), texture.GetPicture());

    texture.SetPixels(pixels(12));
    texture.SetWidth(2);
    kind.Picture.clear();
    texture.SettextureKind(kind);
    EXPECT_EQ(nullptr, texture.GetPixels());
    EXPECT_EQ(0, texture.getwidth());
}

TEST(Texture, ADescriptionGoesThroughTheSetters) {
    struct Recorder : TTexture {
        void SetPixels(const TPixels& value) override { calls += 'P', TTexture::SetPixels(value); }
        void SetWorldWidth(double value) override { calls += 'W', TTexture::SetWorldWidth(value); }
        void SetWorldheight(double value) override { calls += 'H', TTexture::SetWorldheight(value); }
        void SetEnvmode(TTexEnvMode value) override { calls += 'E', TTexture::SetEnvmode(value); }
        void Setbase(const TBAse& value) override { calls += 'B', TTexture::Setbase(value); }
        void SetFilter(TTexFilter value) override { calls += 'F', TTexture::SetFilter(value); }
        void SetRepeat(bool value) override { calls += 'R', TTexture::SetRepeat(value); }
        void SetVisible(bool value) override { calls += 'V', TTexture::SetVisible(value); }
        std::string calls;
    } texture;
    texture.SettextureKind(tkDefault);
    EXPECT_EQ("PWHEBFRV", texture.calls);
}

TEST(Texture, AnotherPictureKeepsTheRestAndNotifiesTwice) {
    TTexture texture;
    texture.SettextureKind(other());
    Changes changes(texture);
    texture.SetPicture(QStringLiteral("door.bmp"));
    EXPECT_EQ(2, changes.take());  // the batch, and the name
    TTextureKind expected = other();
    expected.Picture = QStringLiteral("door.bmp");
    EXPECT_EQ(expected, texture.GettextureKind());
    texture.SetPicture(QString());
    EXPECT_EQ(2, changes.take());
    EXPECT_TRUE(texture.GetPicture().isEmpty());
}

TEST(Texture, TheCurrentPictureAgainDoesNothing) {
    TTexture texture;
    texture.SetPicture(QStringLiteral("wall.bmp"));
    texture.SetPixels(pixels(3));
    Changes changes(texture);
    texture.SetPicture(QStringLiteral("wall.bmp"));
    EXPECT_EQ(0, changes.take());
    EXPECT_NE(nullptr, texture.GetPixels());
    texture.SetPicture(QStringLiteral("WALL.BMP"));  // case counts
    EXPECT_EQ(2, changes.take());
    EXPECT_EQ(QStringLiteral("WALL.BMP"), texture.GetPicture());
    TTexture fresh;
    Changes none(fresh);
    fresh.SetPicture(QString());
    EXPECT_EQ(0, none.take());
}

TEST(Texture, APictureNameIsCutTo255Characters) {
    TTexture texture;
    texture.SetPicture(QString(255, 'a'));
    EXPECT_EQ(QString(255, 'a'), texture.GetPicture());
    Changes changes(texture);
    texture.SetPicture(QString(300, 'a'));  // the same once it is cut
    EXPECT_EQ(0, changes.take());
    texture.SetPicture(QString(1000000, 'b'));
    EXPECT_EQ(QString(255, 'b'), texture.GetPicture());
    TTextureKind kind = tkDefault;
    kind.Picture = QString(256, 'c');
    texture.SettextureKind(kind);
    EXPECT_EQ(QString(255, 'c'), texture.GetPicture());
}

TEST(Texture, ACutLeavesNoHalfCharacter) {
    TTexture texture;
    texture.SetPicture(QString(254, 'a') + QStringLiteral("\U0001F600"));
    EXPECT_EQ(QString(254, 'a'), texture.GetPicture());
    texture.SetPicture(QString(253, 'a') + QStringLiteral("\U0001F600tail"));
    EXPECT_EQ(QString(253, 'a') + QStringLiteral("\U0001F600"), texture.GetPicture());
}

TEST(Texture, InsideABatchThereIsOneEvent) {
    TTexture texture;
    Changes changes(texture);
    texture.SetChanging(true);
    texture.SetPicture(QStringLiteral("wall.bmp"));
    texture.SettextureKind(other());
    EXPECT_EQ(0, changes.take());
    texture.SetChanging(false);
    EXPECT_EQ(1, changes.take());
}

TEST(Texture, PublishedProperties) {
    EXPECT_EQ((Published{{"Picture", "QString"},
                         {"Repeating", "bool"},
                         {"Filter", "zk::TTexFilter"},
                         {"EnvMode", "zk::TTexEnvMode"},
                         {"Visible", "bool"},
                         {"BaseFix", "bool"},
                         {"WorldWidth", "double"},
                         {"WorldHeight", "double"}}),
              published(TTexture::staticMetaObject));
}

TEST(Texture, PropertiesReadAndWrite) {
    TTexture texture;
    EXPECT_EQ(QString(), texture.property("Picture").toString());
    EXPECT_TRUE(texture.property("Repeating").toBool());
    EXPECT_EQ(glnearest, texture.property("Filter").value<TTexFilter>());
    EXPECT_EQ(glmodulate, texture.property("EnvMode").value<TTexEnvMode>());
    EXPECT_FALSE(texture.property("Visible").toBool());
    EXPECT_FALSE(texture.property("BaseFix").toBool());
    EXPECT_EQ(1.0, texture.property("WorldWidth").toDouble());
    EXPECT_EQ(1.0, texture.property("WorldHeight").toDouble());

    EXPECT_TRUE(texture.setProperty("Picture", QStringLiteral("wall.bmp")));
    EXPECT_TRUE(texture.setProperty("Repeating", false));
    EXPECT_TRUE(texture.setProperty("Filter", QStringLiteral("gllinear")));
    EXPECT_TRUE(texture.setProperty("EnvMode", QStringLiteral("glblend")));
    EXPECT_TRUE(texture.setProperty("Visible", true));
    EXPECT_TRUE(texture.setProperty("BaseFix", true));
    EXPECT_TRUE(texture.setProperty("WorldWidth", 2.5));
    EXPECT_TRUE(texture.setProperty("WorldHeight", 3.5));

    TTextureKind expected = other();
    expected.Visible = true;
    expected.Base = Unitbase;
    EXPECT_EQ(expected, texture.GettextureKind());
    EXPECT_EQ(QStringLiteral("wall.bmp"), texture.property("Picture").toString());
    EXPECT_EQ(gllinear, texture.property("Filter").value<TTexFilter>());
    EXPECT_EQ(2.5, texture.property("WorldWidth").toDouble());
}
