#include "picturefiles.h"
#include "support.h"

#include <zk/_zkcomtypes/texture.h>
#include <zk/_zkcomtypes/textureregistry.h>
#include <zk/host/message.h>

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <array>

using namespace zk;
using namespace zk::test;

namespace {

// Each test starts and ends with an empty registry; slots are never given away again, so that indexes count on.
class TextureRegistry : public testing::Test {
  protected:
    TextureRegistry()
        : old_(SetMessageHandler([this](const std::string& text) { texts_ << QString::fromStdString(text); })) {
        ZkRemoveTextures();
    }
    ~TextureRegistry() override {
        ZkRemoveTextures();
        SetMessageHandler(old_);
        EXPECT_EQ(texts_, QStringList());
    }

    QStringList takeMessages() { return std::exchange(texts_, {}); }
    QString bmp(const QString& name, const QSize& size = {4, 4}) const {
        return files.Write(name, Bmp(Gradient(size)));
    }
    static int next() { return int(GlbTextures().size()); }

    Files files;

  private:
    QStringList texts_;
    MessageHandler old_;
};

using Pixel = std::array<std::uint8_t, 3>;

Pixel pixelAt(const TPixels& pixels, int index) {
    const auto at = std::size_t(index) * 3;
    return {pixels->at(at), pixels->at(at + 1), pixels->at(at + 2)};
}

Pixel pixelOf(const QImage& picture, int x, int y) {
    const QColor color = picture.pixelColor(x, y);
    return {std::uint8_t(color.red()), std::uint8_t(color.green()), std::uint8_t(color.blue())};
}

}  // namespace

TEST_F(TextureRegistry, ASquarePictureIsStoredWithRowsAndColumnsExchanged) {
    const QImage picture = Gradient({8, 8});
    const PTextureItem item = ZkgetTextureItem(files.Write("a.bmp", Bmp(picture)));
    ASSERT_TRUE(item);
    EXPECT_EQ(item->Width, 8);
    EXPECT_EQ(item->Height, 8);
    EXPECT_EQ(item->Name, files.Path("a.bmp"));
    ASSERT_EQ(item->Pixels->size(), 192U);
    for (int x = 0; x < 8; ++x)
        for (int y = 0; y < 8; ++y)
            EXPECT_EQ(pixelAt(item->Pixels, x * 8 + y), pixelOf(picture, x, y));
}

TEST_F(TextureRegistry, InAWidePictureTheRightPartFallsOutside) {
    const QImage picture = Gradient({8, 4});
    const PTextureItem item = ZkgetTextureItem(files.Write("a.bmp", Bmp(picture)));
    ASSERT_TRUE(item);
    ASSERT_EQ(item->Pixels->size(), 8U * 4 * 3);
    for (int x = 0; x < 4; ++x) {
        for (int y = 0; y < 4; ++y)
            EXPECT_EQ(pixelAt(item->Pixels, x * 8 + y), pixelOf(picture, x, y));
        for (int rest = 4; rest < 8; ++rest)
            EXPECT_EQ(pixelAt(item->Pixels, x * 8 + rest), (Pixel{0, 0, 0}));
    }
}

TEST_F(TextureRegistry, InATallPictureLaterColumnsOverwriteEarlierOnes) {
    const QImage picture = Gradient({2, 8});
    const PTextureItem item = ZkgetTextureItem(files.Write("a.bmp", Bmp(picture)));
    ASSERT_TRUE(item);
    ASSERT_EQ(item->Pixels->size(), 2U * 8 * 3);
    // The second column begins at index 2 and overwrites all that the first has put there.
    for (int index = 0; index < 16; ++index) {
        const Pixel expected = index < 2    ? pixelOf(picture, 0, index)
                               : index < 10 ? pixelOf(picture, 1, index - 2)
                                            : Pixel{0, 0, 0};
        EXPECT_EQ(pixelAt(item->Pixels, index), expected) << index;
    }
}

TEST_F(TextureRegistry, SizesArePowersOfTwo) {
    const PTextureItem item = ZkgetTextureItem(bmp("a.bmp", {300, 200}));
    ASSERT_TRUE(item);
    EXPECT_EQ(item->Width, 256);
    EXPECT_EQ(item->Height, 128);
    EXPECT_EQ(item->Pixels->size(), 256U * 128 * 3);
    const PTextureItem one = ZkgetTextureItem(bmp("one.bmp", {1, 1}));
    ASSERT_TRUE(one);
    EXPECT_EQ(one->Width, 1);
    EXPECT_EQ(one->Height, 1);
    EXPECT_EQ(one->Pixels->size(), 3U);
}

TEST_F(TextureRegistry, EveryFormatIsRegistered) {
    for (const auto& [name, content] : {std::pair("a.bmp", Bmp(Gradient({4, 4}))),
                                        {"b.jpg", Jpeg(Gradient({4, 4}), false)},
                                        {"c.jpeg", Jpeg(Gradient({4, 4}), true)},
                                        {"d.ICO", Icon({Gradient({16, 16})})},
                                        {"e.WMF", Wmf()},
                                        {"f.emf", Emf()}}) {
        const PTextureItem item = ZkgetTextureItem(files.Write(name, content));
        ASSERT_TRUE(item) << name;
        EXPECT_EQ(item->Pixels->size(), std::size_t(item->Width) * std::size_t(item->Height) * 3) << name;
    }
}

TEST_F(TextureRegistry, NamesAreFoundInAnyCaseAndInPart) {
    const int first = next();
    std::uint8_t failed = 7;
    EXPECT_EQ(ZkAddtexture(bmp("wall.bmp"), failed), first);
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(ZkIndexOfTexture("WALL.BMP"), first);
    EXPECT_EQ(ZkIndexOfTexture("all.b"), first) << "a part is enough";
    EXPECT_EQ(ZkIndexOfTexture(""), -1);
    EXPECT_EQ(ZkIndexOfTexture("wall.bmp2"), -1);
    EXPECT_EQ(ZkgetTextureItem("Wall.Bmp"), GlbTextures().at(std::size_t(first)));
    failed = 7;
    EXPECT_EQ(ZkAddtexture("WALL.BMP", failed), first);
    EXPECT_EQ(failed, 7) << "a picture that is known leaves it alone";
    EXPECT_EQ(next(), first + 1);

    bmp("drywall.bmp");
    EXPECT_EQ(ZkAddtexture(files.Path("drywall.bmp"), failed), first + 1);
    EXPECT_EQ(ZkIndexOfTexture("wall.bmp"), first) << "the first that contains it";
    ZkRemoveTexture(files.Path("wall.bmp"));
    EXPECT_EQ(ZkIndexOfTexture("wall.bmp"), first + 1) << "and then the next";
}

TEST_F(TextureRegistry, WhatCannotBeLoadedIsToldEachTimeAndNotRegistered) {
    const int before = next();
    for (int twice = 0; twice < 2; ++twice) {
        std::uint8_t failed = 0;
        EXPECT_EQ(ZkAddtexture("a.gif", failed), -1);
        EXPECT_EQ(failed, 1);
        EXPECT_EQ(takeMessages(), QStringList("unknown filetype: a.gif"));
        EXPECT_EQ(ZkAddtexture("", failed), -1);
        EXPECT_EQ(takeMessages(), QStringList("unknown filetype: "));
        EXPECT_EQ(ZkgetTextureItem(files.Path("missing.bmp")), nullptr);
        EXPECT_EQ(takeMessages(), QStringList("can't load texture: " + files.Path("missing.bmp")));
    }
    QDir().mkdir(files.Path("folder.bmp"));
    for (const QString& name :
         {files.Path("folder.bmp"), files.Write("empty.jpg", {}), files.Write("lie.ico", Bmp(Gradient({4, 4}))),
          files.Write("cut.bmp", Bmp(Gradient({4, 4})).left(70)), files.Write("cut.wmf", Wmf().left(100)),
          files.Write("lie.emf", Wmf())}) {
        EXPECT_EQ(ZkgetTextureItem(name), nullptr) << name.toStdString();
        EXPECT_EQ(takeMessages(), QStringList("can't load texture: " + name));
    }
    EXPECT_EQ(next(), before);
    EXPECT_TRUE(ZkgetTextureItem(bmp("missing.bmp"))) << "once it is there";
}

TEST_F(TextureRegistry, AnItemLoadsItsPictureAgain) {
    const QString name = bmp("a.bmp", {4, 4});
    const PTextureItem item = ZkgetTextureItem(name);
    ASSERT_TRUE(item);
    const TPixels before = item->Pixels;
    bmp("a.bmp", {8, 2});
    EXPECT_FALSE(item->MakeByteArray());
    EXPECT_EQ(item->Width, 8);
    EXPECT_EQ(item->Height, 2);
    EXPECT_EQ(before->size(), 48U) << "who holds the old pixels keeps them";
    QFile::remove(name);
    EXPECT_TRUE(item->MakeByteArray());
    EXPECT_EQ(takeMessages(), QStringList("can't load texture: " + name));
    EXPECT_EQ(item->Pixels, nullptr);
    EXPECT_EQ(item->Width, 0);
    EXPECT_EQ(item->Height, 0);
}

TEST_F(TextureRegistry, AnItemOnItsOwn) {
    std::uint8_t failed = 7;
    const TTextureItem item(bmp("a.bmp"), failed);
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(item.Width, 4);
    EXPECT_EQ(ZkIndexOfTexture("a.bmp"), -1);
    const TTextureItem none(files.Path("b.bmp"), failed);
    EXPECT_EQ(failed, 1);
    EXPECT_EQ(takeMessages().size(), 1);
}

TEST_F(TextureRegistry, APictureInMemoryIsRegisteredUnderATemporaryName) {
    const QImage picture = Gradient({4, 4});
    const QString file = QDir::tempPath() + "/zk-registry-test.bmp";
    const bool existed = QFile::exists(file);
    ZkAddBitmaptexture("zk-registry-test", picture);
    EXPECT_EQ(QFile::exists(file), existed);
    const int index = ZkIndexOfTexture("zk-registry-test");
    ASSERT_GE(index, 0);
    const PTextureItem item = GlbTextures().at(std::size_t(index));
    EXPECT_EQ(item->Name, file);
    EXPECT_EQ(pixelAt(item->Pixels, 1), pixelOf(picture, 0, 1));
    ZkAddBitmaptexture("zk-registry-test", Gradient({8, 8}));
    EXPECT_EQ(ZkgetTextureItem("zk-registry-test.bmp"), item) << "a picture that is known stays";
    ZkAddBitmaptexture("zk-nothing", QImage());
    EXPECT_EQ(takeMessages(), QStringList("can't load texture: " + QDir::tempPath() + "/zk-nothing.bmp"));
    EXPECT_EQ(ZkIndexOfTexture("zk-nothing"), -1);
}

TEST_F(TextureRegistry, ARemovedPictureLeavesAnEmptySlot) {
    const int first = next();
    const QString a = bmp("a.bmp");
    const QString b = bmp("b.bmp");
    PTextureItem item = ZkgetTextureItem(a);
    ASSERT_TRUE(ZkgetTextureItem(b));
    int told = 0;
    QObject context;
    QObject::connect(&TextureNews::Get(), &TextureNews::Removed, &context, [&](const TPixels& pixels) {
        ++told;
        EXPECT_EQ(pixels, item->Pixels);
    });
    ZkRemoveTexture(a);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(next(), first + 2);
    EXPECT_EQ(GlbTextures().at(std::size_t(first)), nullptr);
    EXPECT_EQ(ZkIndexOfTexture(a), -1);
    EXPECT_EQ(ZkIndexOfTexture(b), first + 1);
    ZkRemoveTexture(a);
    ZkRemoveTexture("never seen");
    ZkRemoveTexture("");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(item->Pixels->size(), 48U) << "who holds it keeps it";
    EXPECT_EQ(item.use_count(), 1);
    const PTextureItem again = ZkgetTextureItem(a);
    EXPECT_NE(again, item);
    EXPECT_EQ(ZkIndexOfTexture(a), first + 2);
    item = again;
}

TEST_F(TextureRegistry, RemovingAllLeavesNone) {
    // One name contains the other, so that removing by name alone would miss one of them.
    const PTextureItem one = ZkgetTextureItem(bmp("xa.bmp"));
    std::uint8_t failed = 0;
    ASSERT_GE(ZkAddtexture(bmp("a.bmp.bmp"), failed), 0);
    ZkRemoveTextures();
    for (const PTextureItem& item : GlbTextures())
        EXPECT_EQ(item, nullptr);
    ZkRemoveTextures();
    EXPECT_EQ(one.use_count(), 1);
}

// --- textures -------------------------------------------------------------------------------------------------------

TEST_F(TextureRegistry, TexturesWithOnePictureShareItsPixels) {
    const QString name = bmp("a.bmp", {8, 4});
    TTexture one;
    TTexture other;
    one.SetPicture(name);
    other.SetPicture(name.toUpper());
    EXPECT_NE(one.GetPixels(), nullptr);
    EXPECT_EQ(one.GetPixels(), other.GetPixels());
    EXPECT_EQ(one.getwidth(), 8);
    EXPECT_EQ(one.getHeight(), 4);
    EXPECT_EQ(one.GettextureKind().Pixels, one.GetPixels());
    one.SetPicture(QString());
    EXPECT_EQ(one.GetPixels(), nullptr);
    EXPECT_EQ(one.getwidth(), 0);
    EXPECT_NE(other.GetPixels(), nullptr);
}

TEST_F(TextureRegistry, ATextureOutlivesItsPicture) {
    auto texture = std::make_unique<TTexture>();
    texture->SetPicture(bmp("a.bmp"));
    const TPixels pixels = texture->GetPixels();
    ZkRemoveTexture("a.bmp");
    EXPECT_EQ(texture->GetPixels(), pixels);
    EXPECT_EQ(pixelAt(pixels, 0), (Pixel{0, 0, 80}));
    texture->SettextureKind(texture->GettextureKind());
    EXPECT_NE(texture->GetPixels(), pixels) << "set again, it loads the file again";
    texture.reset();
    EXPECT_EQ(pixels.use_count(), 1);
}

TEST_F(TextureRegistry, APictureThatCannotBeLoadedIsNone) {
    TTexture texture;
    texture.SetPicture(bmp("a.bmp"));
    Changes changes(texture);
    texture.SetPicture("nothing.gif");
    EXPECT_EQ(takeMessages(), QStringList("unknown filetype: nothing.gif"));
    EXPECT_EQ(changes.take(), 2);
    EXPECT_EQ(texture.GetPicture(), "nothing.gif");
    EXPECT_EQ(texture.GetPixels(), nullptr);
    EXPECT_EQ(texture.getwidth(), 0);
    EXPECT_EQ(texture.getHeight(), 0);
    texture.SetPicture("nothing.gif");
    EXPECT_EQ(takeMessages(), QStringList()) << "the current name asks for nothing";
}

TEST_F(TextureRegistry, ADescriptionsOwnPixelsAndSizeAreIgnored) {
    TTexture texture;
    TTextureKind kind;
    kind.Picture = bmp("a.bmp", {8, 4});
    kind.Width = 3;
    kind.Height = 5;
    kind.Pixels = std::make_shared<const std::vector<std::uint8_t>>(45);
    texture.SettextureKind(kind);
    EXPECT_EQ(texture.getwidth(), 8);
    EXPECT_EQ(texture.getHeight(), 4);
    EXPECT_EQ(texture.GetPixels(), ZkgetTextureItem(kind.Picture)->Pixels);
}
