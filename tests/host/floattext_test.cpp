#include <zk/_zkxyz/errors.h>
#include <zk/host/floattext.h>

#include <QLocale>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

using namespace zk;

namespace {

class InLocale {
  public:
    explicit InLocale(const QLocale& locale) : before_() { QLocale::setDefault(locale); }
    ~InLocale() { QLocale::setDefault(before_); }

  private:
    QLocale before_;
};

class FloatText : public testing::Test {
  private:
    InLocale plain_{QLocale::c()};
};

std::string text(double value) {
    return FloatToStr(value).toStdString();
}

bool takes(const QString& s) {
    double value = 0;
    return TryStrToFloat(s, value);
}

}  // namespace

TEST_F(FloatText, FixedNotationInTheMiddle) {
    EXPECT_EQ("0", text(0.0));
    EXPECT_EQ("0", text(-0.0));
    EXPECT_EQ("1", text(1));
    EXPECT_EQ("-1", text(-1));
    EXPECT_EQ("0.1", text(0.1));
    EXPECT_EQ("-0.1", text(-0.1));
    EXPECT_EQ("2.5", text(2.5));
    EXPECT_EQ("-3", text(-3));
    EXPECT_EQ("10", text(10));
    EXPECT_EQ("100", text(100));
    EXPECT_EQ("123.456", text(123.456));
    EXPECT_EQ("1000000", text(1e6));
}

TEST_F(FloatText, FifteenDigitsAreShown) {
    EXPECT_EQ("0.333333333333333", text(1.0 / 3));
    EXPECT_EQ("0.666666666666667", text(2.0 / 3));
    EXPECT_EQ("3.14159265358979", text(std::acos(-1.0)));
    EXPECT_EQ("0.3", text(0.1 + 0.2));
    EXPECT_EQ("123456789012345", text(123456789012345.0));
    EXPECT_EQ("12345678901234.6", text(12345678901234.56));
}

TEST_F(FloatText, TheUpperEndOfFixedNotation) {
    EXPECT_EQ("100000000000000", text(1e14));
    EXPECT_EQ("999999999999999", text(999999999999999.0));
    EXPECT_EQ("-999999999999999", text(-999999999999999.0));
    EXPECT_EQ("1E15", text(1e15));
    EXPECT_EQ("1E15", text(999999999999999.9));  // rounded to 15 digits it is 1e15
    EXPECT_EQ("1.23456789012346E15", text(1234567890123456.0));
    EXPECT_EQ("1E20", text(1e20));
    EXPECT_EQ("-1E20", text(-1e20));
    EXPECT_EQ("1E100", text(1e100));
    EXPECT_EQ("1.79769313486232E308", text(std::numeric_limits<double>::max()));
}

TEST_F(FloatText, TheLowerEndOfFixedNotation) {
    EXPECT_EQ("0.0001", text(1e-4));
    EXPECT_EQ("0.00001", text(1e-5));
    EXPECT_EQ("0.000012345", text(1.2345e-5));
    EXPECT_EQ("0.00001", text(9.9999999999999999e-6));  // rounded to 15 digits it is 1e-5
    EXPECT_EQ("9.9E-6", text(9.9e-6));
    EXPECT_EQ("1E-6", text(1e-6));
    EXPECT_EQ("-2.5E-7", text(-2.5e-7));
    EXPECT_EQ("2.2250738585072E-308", text(std::numeric_limits<double>::min()));
    EXPECT_EQ("4.94065645841247E-324", text(std::numeric_limits<double>::denorm_min()));
}

TEST_F(FloatText, WhatIsNoNumberHasAName) {
    EXPECT_EQ("NAN", text(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ("NAN", text(-std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ("INF", text(std::numeric_limits<double>::infinity()));
    EXPECT_EQ("-INF", text(-std::numeric_limits<double>::infinity()));
}

TEST_F(FloatText, NumbersAreRead) {
    EXPECT_EQ(0.1, StrToFloat("0.1"));
    EXPECT_EQ(1e20, StrToFloat("1E20"));
    EXPECT_EQ(1e20, StrToFloat("1e+20"));
    EXPECT_EQ(-2.5e-7, StrToFloat("-2.5E-7"));
    EXPECT_EQ(5, StrToFloat("+5"));
    EXPECT_EQ(5, StrToFloat("5."));
    EXPECT_EQ(0.5, StrToFloat(".5"));
    EXPECT_EQ(-0.5, StrToFloat("-.5"));
    EXPECT_EQ(7, StrToFloat("007"));
    EXPECT_EQ(1e10, StrToFloat("1e0010"));
    EXPECT_EQ(0, StrToFloat("0"));
    EXPECT_TRUE(std::signbit(StrToFloat("-0")));
}

TEST_F(FloatText, BlanksAroundTheNumberAreIgnored) {
    EXPECT_EQ(1.5, StrToFloat("  1.5"));
    EXPECT_EQ(1.5, StrToFloat("1.5   "));
    EXPECT_EQ(1.5, StrToFloat("\t1.5\n"));
    EXPECT_FALSE(takes("1 .5"));
    EXPECT_FALSE(takes("- 1"));
}

TEST_F(FloatText, RubbishIsRefused) {
    for (const char* rubbish :
         {"",     " ",        ".",    "-",   "+",    "--1",   "+-1", "1e",  "1e+", "e5",   ".e5", "a",
          "1a",   "a1",       "0x10", "$10", "1,5",  "1.2.3", "1_0", "inf", "INF", "-INF", "nan", "NAN",
          "1e5.", "infinity", "1.5f", "1/2", "1e 5", "1-",    "1 2", "1'0", "#1",  "1d5",  "0b1", "1,000.5"})
        EXPECT_FALSE(takes(QString::fromLatin1(rubbish))) << rubbish;
    EXPECT_FALSE(takes(QString(QChar(0))));
    EXPECT_FALSE(takes(QStringLiteral("1") + QChar(0)));
    EXPECT_FALSE(takes(QStringLiteral("\u0661")));   // an Arabic digit
    EXPECT_FALSE(takes(QStringLiteral("\u22121")));  // a typographic minus
    EXPECT_FALSE(takes(QString()));
}

TEST_F(FloatText, TheRangeOfDoubleIsTheLimit) {
    EXPECT_EQ(std::numeric_limits<double>::max(), StrToFloat("1.7976931348623157E308"));
    EXPECT_FALSE(takes("1.8E308"));
    EXPECT_FALSE(takes("-1.8E308"));
    EXPECT_FALSE(takes("1E5000"));
    EXPECT_FALSE(takes("1E99999999999999999999"));
    EXPECT_FALSE(takes(QString(400, '9')));
    EXPECT_FALSE(takes(QString(6000, '9')));
    EXPECT_FALSE(takes(QStringLiteral("1") + QString(6000, '0') + QStringLiteral("e-1")));

    EXPECT_EQ(5e-324, StrToFloat("4.94065645841247E-324"));
    EXPECT_EQ(0, StrToFloat("1E-400"));
    EXPECT_EQ(0, StrToFloat("1E-5000"));
    EXPECT_EQ(0, StrToFloat("123.456E-5000"));
    EXPECT_EQ(0, StrToFloat("1E-99999999999999999999"));
    EXPECT_EQ(0, StrToFloat(QStringLiteral("0.") + QString(400, '0') + QStringLiteral("1")));
    EXPECT_EQ(0, StrToFloat(QStringLiteral("0.") + QString(6000, '0') + QStringLiteral("1")));
    EXPECT_TRUE(std::signbit(StrToFloat("-1E-400")));
    EXPECT_EQ(0, StrToFloat("0E99999"));
    EXPECT_EQ(0, StrToFloat("0E99999999999999999999"));
    EXPECT_EQ(10, StrToFloat(QStringLiteral("0.") + QString(400, '0') + QStringLiteral("1e402")));
    EXPECT_EQ(1, StrToFloat(QStringLiteral("1") + QString(400, '0') + QStringLiteral("e-400")));
}

TEST_F(FloatText, ARefusedTextLeavesTheValue) {
    double value = 42;
    EXPECT_FALSE(TryStrToFloat("x", value));
    EXPECT_EQ(42, value);
    EXPECT_TRUE(TryStrToFloat("7", value));
    EXPECT_EQ(7, value);
}

TEST_F(FloatText, TheErrorNamesTheText) {
    try {
        StrToFloat("1.2.3");
        FAIL();
    } catch (const EConvertError& error) {
        EXPECT_STREQ("'1.2.3' is not a valid floating point value", error.what());
    }
    EXPECT_THROW(StrToFloat(""), EConvertError);
}

TEST_F(FloatText, VeryLongTextsAreReadInOneGo) {
    EXPECT_NEAR(1.0 / 9, StrToFloat(QStringLiteral("0.") + QString(1000000, '1')), 1e-15);
    EXPECT_EQ(1, StrToFloat(QString(1000000, ' ') + QStringLiteral("1") + QString(1000000, ' ')));
    EXPECT_FALSE(takes(QString(1000000, '-')));
}

TEST_F(FloatText, FifteenDigitsSurviveTheRoundTrip) {
    std::mt19937_64 random(20);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value))
            continue;
        const QString once = FloatToStr(value);
        const double back = StrToFloat(once);
        EXPECT_LE(std::fabs(back - value), std::fabs(value) * 1e-14) << once.toStdString();
        EXPECT_EQ(once, FloatToStr(back));
    }
}

TEST_F(FloatText, EveryNumberOfFifteenDigitsComesBackExactly) {
    std::mt19937_64 random(21);
    for (int i = 0; i < 20000; ++i) {
        const double value = double(random() % 1000000000000000U) / 1e6;
        EXPECT_EQ(value, StrToFloat(FloatToStr(value)));
    }
}

TEST(FloatTextLocale, TheSeparatorIsThatOfTheCurrentLocale) {
    const InLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ("2,5", text(2.5));
    EXPECT_EQ("-2,5E-7", text(-2.5e-7));
    EXPECT_EQ("1234567,5", text(1234567.5));  // no group separators
    EXPECT_EQ(2.5, StrToFloat("2,5"));
    EXPECT_FALSE(takes("2.5"));
    EXPECT_FALSE(takes("1.234,5"));
}

TEST(FloatTextLocale, TheSeparatorIsLookedUpEachTime) {
    {
        const InLocale german(QLocale(QLocale::German, QLocale::Germany));
        EXPECT_EQ("0,1", text(0.1));
    }
    const InLocale plain(QLocale::c());
    EXPECT_EQ("0.1", text(0.1));
}
