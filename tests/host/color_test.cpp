#include <zk/host/color.h>

#include <QGuiApplication>
#include <QPalette>
#include <gtest/gtest.h>

using namespace zk;

TEST(Color, TheLowByteIsRed) {
    EXPECT_EQ(QColor(255, 0, 0), ToQColor(0x0000FF));
    EXPECT_EQ(QColor(0, 255, 0), ToQColor(0x00FF00));
    EXPECT_EQ(QColor(0, 0, 255), ToQColor(0xFF0000));
    EXPECT_EQ(QColor(0x12, 0x34, 0x56), ToQColor(0x563412));
    EXPECT_EQ(0x563412U, FromQColor(QColor(0x12, 0x34, 0x56)));
}

TEST(Color, EveryChannelSurvivesTheRoundTrip) {
    for (TColor i = 0; i < 256; ++i)
        for (const TColor color : {i, i << 8, i << 16, i | i << 8 | i << 16})
            EXPECT_EQ(color, FromQColor(ToQColor(color)));
}

TEST(Color, AlphaIsDroppedAndNeverMade) {
    EXPECT_EQ(0x0000FFU, FromQColor(QColor(255, 0, 0, 7)));
    EXPECT_EQ(255, ToQColor(0x0000FF).alpha());
}

TEST(Color, AnInvalidColorIsBlack) {
    EXPECT_EQ(0U, FromQColor(QColor()));
    EXPECT_EQ(0U, FromQColor(QColor(QStringLiteral("no such color"))));
}

TEST(Color, ColorsOfOtherModelsAreConverted) {
    EXPECT_EQ(0x00FF00U, FromQColor(QColor::fromHsv(120, 255, 255)));
}

TEST(Color, TheHighestByteIsDroppedBelowTheSystemColors) {
    EXPECT_EQ(0x123456U, ColorToRGB(0x02123456));
    EXPECT_EQ(0x123456U, ColorToRGB(0x7F123456));
    EXPECT_EQ(0xFFFFFFU, ColorToRGB(0xFFFFFF));
}

TEST(Color, SystemColorsComeFromThePalette) {
    const QPalette before = QGuiApplication::palette();
    QPalette palette = before;
    int shade = 1;
    const auto distinct = [&palette, &shade](QPalette::ColorRole role) {
        const QColor color(shade, 2 * shade, 3 * shade);
        ++shade;
        palette.setColor(role, color);
        return FromQColor(color);
    };
    const TColor button = distinct(QPalette::Button);
    const TColor window = distinct(QPalette::Window);
    const TColor base = distinct(QPalette::Base);
    const TColor shadow = distinct(QPalette::Shadow);
    const TColor buttonText = distinct(QPalette::ButtonText);
    const TColor windowText = distinct(QPalette::WindowText);
    const TColor highlight = distinct(QPalette::Highlight);
    const TColor highlightText = distinct(QPalette::HighlightedText);
    const TColor dark = distinct(QPalette::Dark);
    const TColor placeholder = distinct(QPalette::PlaceholderText);
    const TColor light = distinct(QPalette::Light);
    const TColor midlight = distinct(QPalette::Midlight);
    const TColor tipText = distinct(QPalette::ToolTipText);
    const TColor tipBase = distinct(QPalette::ToolTipBase);
    QGuiApplication::setPalette(palette);

    EXPECT_EQ(button, ColorToRGB(clScrollBar));
    EXPECT_EQ(button, ColorToRGB(clMenu));
    EXPECT_EQ(button, ColorToRGB(clBtnFace));
    EXPECT_EQ(window, ColorToRGB(clBackground));
    EXPECT_EQ(window, ColorToRGB(clAppWorkSpace));
    EXPECT_EQ(base, ColorToRGB(clWindow));
    EXPECT_EQ(shadow, ColorToRGB(clWindowFrame));
    EXPECT_EQ(shadow, ColorToRGB(cl3DDkShadow));
    EXPECT_EQ(buttonText, ColorToRGB(clMenuText));
    EXPECT_EQ(buttonText, ColorToRGB(clBtnText));
    EXPECT_EQ(windowText, ColorToRGB(clWindowText));
    EXPECT_EQ(highlight, ColorToRGB(clHighlight));
    EXPECT_EQ(highlightText, ColorToRGB(clHighlightText));
    EXPECT_EQ(dark, ColorToRGB(clBtnShadow));
    EXPECT_EQ(placeholder, ColorToRGB(clGrayText));
    EXPECT_EQ(light, ColorToRGB(clBtnHighlight));
    EXPECT_EQ(midlight, ColorToRGB(cl3DLight));
    EXPECT_EQ(tipText, ColorToRGB(clInfoText));
    EXPECT_EQ(tipBase, ColorToRGB(clInfoBk));
    EXPECT_EQ(highlight, FromQColor(ToQColor(clHighlight)));

    QGuiApplication::setPalette(before);
}

TEST(Color, AnUnknownSystemColorIsBlack) {
    EXPECT_EQ(0U, ColorToRGB(0x80000002));
    EXPECT_EQ(0U, ColorToRGB(0x80FFFFFF));
    EXPECT_EQ(0U, ColorToRGB(0xFFFFFFFF));
    EXPECT_EQ(QColor(0, 0, 0), ToQColor(0xFFFFFFFF));
}
