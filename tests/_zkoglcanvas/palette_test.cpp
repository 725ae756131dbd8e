#include <zk/_zkoglcanvas/palette.h>

#include <gtest/gtest.h>

using namespace zk;

TEST(Palette, EightBitsOfThreeThreeTwo) {
    const std::vector<TPaletteEntry> palette = BuildPalette({8, 3, 0, 3, 3, 2, 6});
    ASSERT_EQ(palette.size(), 256U);
    EXPECT_EQ(palette[0], (TPaletteEntry{0, 0, 0}));
    EXPECT_EQ(palette[255], (TPaletteEntry{255, 255, 255}));
    EXPECT_EQ(palette[1], (TPaletteEntry{36, 0, 0}));        // 1 * 255 div 7
    EXPECT_EQ(palette[4 << 3], (TPaletteEntry{0, 145, 0}));  // 4 * 255 div 7
    EXPECT_EQ(palette[2 << 6], (TPaletteEntry{0, 0, 170}));  // 2 * 255 div 3
}

TEST(Palette, ImpossibleLayoutsGiveNothing) {
    EXPECT_TRUE(BuildPalette({0, 3, 0, 3, 3, 2, 6}).empty());
    EXPECT_TRUE(BuildPalette({-1, 3, 0, 3, 3, 2, 6}).empty());
    EXPECT_TRUE(BuildPalette({24, 8, 0, 8, 8, 8, 16}).empty());
    EXPECT_EQ(BuildPalette({1, 0, 0, 40, 0, 1, -3})[1], (TPaletteEntry{0, 0, 0}));
    EXPECT_EQ(BuildPalette({16, 5, 11, 6, 5, 5, 0}).size(), 65536U);
}
