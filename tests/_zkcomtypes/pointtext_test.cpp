#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkxyz/errors.h>

#include <QElapsedTimer>
#include <QLocale>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

using namespace zk;

namespace {

class PointText : public testing::Test {
  protected:
    PointText() { QLocale::setDefault(QLocale::c()); }
    ~PointText() override { QLocale::setDefault(before_); }

  private:
    QLocale before_;
};

std::string text(const TXYZ& p) {
    return xyztoStr(p).toStdString();
}

using Pieces = std::vector<QString>;

Pieces separated(const QString& s, const QString& sep1, const QString& sep2, const QString& sep3,
                 std::size_t count = 3) {
    Pieces parts(count, QStringLiteral("-"));
    Separate(s, sep1, sep2, sep3, parts);
    return parts;
}

Pieces bySlash(const char* s, std::size_t count = 3) {
    return separated(QString::fromLatin1(s), QString(), QString(), QStringLiteral("/"), count);
}

}  // namespace

TEST_F(PointText, APointAsText) {
    EXPECT_EQ("1/2.5/-3", text({1, 2.5, -3}));
    EXPECT_EQ("0.1/0/1E20", text({0.1, 0, 1E20}));
    EXPECT_EQ("0/0/0", text({}));
    EXPECT_EQ("-2.5E-7/1E15/999999999999999", text({-2.5e-7, 1e15, 999999999999999.0}));
}

TEST_F(PointText, ATextAsPoint) {
    EXPECT_EQ((TXYZ{1, 2.5, -3}), Strtoxyz("1/2.5/-3"));
    EXPECT_EQ((TXYZ{1, 2, 3}), Strtoxyz("1 / 2 /3"));
    EXPECT_EQ((TXYZ{1, 2, 3}), Strtoxyz("  1/  2/  3  "));
    EXPECT_EQ((TXYZ{0.1, 0, 1e20}), Strtoxyz("0.1/0/1E20"));
    EXPECT_EQ((TXYZ{1, 2, 3}), Strtoxyz("1/2/3/4"));
    EXPECT_EQ((TXYZ{1, 2, 3}), Strtoxyz("1/2/3/rubbish/"));
}

TEST_F(PointText, WhatIsNoPointRaises) {
    for (const char* rubbish :
         {"",    " ",     "1",       "1/2",   "1/2/",  "/2/3",  "1//3",    "1/a/3",   "1/2/3a",  "//",
          "///", "1;2;3", "1,5/2/3", "1/ /3", "a/b/c", "1/2 3", "1\\2\\3", "NAN/0/0", "0/INF/0", "1/2/3 4"}) {
        EXPECT_THROW(Strtoxyz(QString::fromLatin1(rubbish)), EConvertError) << rubbish;
        EXPECT_FALSE(CheckStrtoxyz(QString::fromLatin1(rubbish))) << rubbish;
    }
}

TEST_F(PointText, TheErrorNamesTheTextAndTheBadPiece) {
    try {
        Strtoxyz("1/a/3");
        FAIL();
    } catch (const EConvertError& error) {
        EXPECT_STREQ("'1/a/3' is not a point: 'a' is not a valid floating point value", error.what());
    }
    try {
        Strtoxyz("1/2");
        FAIL();
    } catch (const EConvertError& error) {
        EXPECT_STREQ("'1/2' is not a point: '' is not a valid floating point value", error.what());
    }
}

TEST_F(PointText, CheckingAgreesWithConverting) {
    EXPECT_TRUE(CheckStrtoxyz("1/2.5/-3"));
    EXPECT_TRUE(CheckStrtoxyz("1 / 2 /3"));
    EXPECT_TRUE(CheckStrtoxyz("1/2/3/4"));
    EXPECT_FALSE(CheckStrtoxyz(""));
    EXPECT_FALSE(CheckStrtoxyz(QString()));
    EXPECT_FALSE(CheckStrtoxyz("1//3"));
    EXPECT_FALSE(CheckStrtoxyz("1/2"));

    std::mt19937 random(7);
    const QString alphabet = QStringLiteral("01./ -+eEx,");
    for (int i = 0; i < 20000; ++i) {
        QString s;
        for (unsigned n = random() % 12; n > 0; --n)
            s += alphabet.at(qsizetype(random() % std::size_t(alphabet.size())));
        bool converts = true;
        try {
            Strtoxyz(s);
        } catch (const EConvertError&) {
            converts = false;
        }
        EXPECT_EQ(converts, CheckStrtoxyz(s)) << s.toStdString();
    }
}

TEST_F(PointText, PointsComeBackFromTheirTexts) {
    std::mt19937_64 random(8);
    const auto number = [&random] {
        return double(std::int64_t(random() % 2000000000000000U) - 1000000000000000) / 1e6;
    };
    for (int i = 0; i < 5000; ++i) {
        const TXYZ p{number(), number(), number()};
        EXPECT_EQ(p, Strtoxyz(xyztoStr(p)));
    }
}

TEST_F(PointText, TheLocaleSetsTheDecimalSeparator) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ("0,5/2/-1,25", text({0.5, 2, -1.25}));
    EXPECT_EQ((TXYZ{0.5, 2, -1.25}), Strtoxyz("0,5/2/-1,25"));
    EXPECT_FALSE(CheckStrtoxyz("0.5/2/3"));
}

TEST_F(PointText, HugeTextsTakeLinearTime) {
    const qsizetype size = 10000000;
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(CheckStrtoxyz(QString(size, '/')));
    EXPECT_FALSE(CheckStrtoxyz(QString(size, ' ')));
    EXPECT_FALSE(CheckStrtoxyz(QString(size, '1') + QStringLiteral("/x")));
    EXPECT_TRUE(CheckStrtoxyz(QStringLiteral("1/2/3/") + QString(size, '/')));
    EXPECT_TRUE(CheckStrtoxyz(QStringLiteral("1/") + QString(size, ' ') + QStringLiteral("2/3")));
    EXPECT_THROW(Strtoxyz(QString(size, 'x')), EConvertError);
    std::vector<QString> parts(100000);
    Separate(QStringLiteral("ab/ ").repeated(100000), QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("/"),
             parts);
    EXPECT_EQ(QStringLiteral("ab"), parts.back());
    EXPECT_LT(timer.elapsed(), 60000);
}

TEST(Separating, CutsAtTheThirdSeparator) {
    EXPECT_EQ((Pieces{"1", "2", "3"}), bySlash("1/2/3"));
    EXPECT_EQ((Pieces{"1", "2", "3"}), bySlash("1/2/3/4"));
    EXPECT_EQ((Pieces{"", "", ""}), bySlash("//"));
    EXPECT_EQ((Pieces{"1", "", "3"}), bySlash("1//3"));
    EXPECT_EQ((Pieces{"1", "2", ""}), bySlash("1/2/"));
}

TEST(Separating, PiecesThatAreNotReachedKeepTheirContents) {
    EXPECT_EQ((Pieces{"-", "-", "-"}), bySlash(""));
    EXPECT_EQ((Pieces{"1", "-", "-"}), bySlash("1"));
    EXPECT_EQ((Pieces{"1", "2", "-"}), bySlash("1/2"));
}

TEST(Separating, BlanksAreDroppedBehindASeparatorOnly) {
    EXPECT_EQ((Pieces{" 1 ", "2 ", "3 "}), bySlash(" 1 /   2 / 3 "));
    EXPECT_EQ((Pieces{"1", "\t2", "3"}), bySlash("1/\t2/3"));
    EXPECT_EQ((Pieces{"1", "", "3"}), bySlash("1/  /3"));
}

TEST(Separating, TheFirstTwoSeparatorsBecomeBlanks) {
    EXPECT_EQ((Pieces{" 1", "2 ", "-"}), separated("(1/2)", "(", ")", "/"));
    EXPECT_EQ((Pieces{" (1", "2 )", "-"}), separated("((1/2))", "(", ")", "/"));  // the first occurrence alone
    EXPECT_EQ((Pieces{" b1", "2", "-"}), separated("ab1/2", "ab", "", "/"));      // and its first character alone
    EXPECT_EQ((Pieces{"  1", "2", "-"}), separated("((1/2", "(", "(", "/"));      // one after the other
    EXPECT_EQ((Pieces{"1", "2", "-"}), separated("1/2", "x", "y", "/"));
}

TEST(Separating, TheThirdMayBecomeABlankBeforeItIsLookedFor) {
    EXPECT_EQ((Pieces{"1 2", "3", "-"}), separated("1/2/3", "/", "", "/"));
    EXPECT_EQ((Pieces{"1 2 3", "-", "-"}), separated("1/2/3", "/", "/", "/"));
}

TEST(Separating, ALongSeparatorIsSkippedWhole) {
    EXPECT_EQ((Pieces{"1", "2", "3"}), separated("1::2:: 3", "", "", "::"));
    EXPECT_EQ((Pieces{"", ":", "-"}), separated(":::", "", "", "::"));
}

TEST(Separating, AnEmptySeparatorOccursNowhere) {
    EXPECT_EQ((Pieces{"1/2", "-", "-"}), separated("1/2", "", "", ""));
}

TEST(Separating, AnyNumberOfPartsIsFilled) {
    EXPECT_EQ((Pieces{"1"}), bySlash("1/2/3", 1));
    EXPECT_EQ((Pieces{}), bySlash("1/2/3", 0));
    EXPECT_EQ((Pieces{"1", "2", "3", "4", "-"}), bySlash("1/2/3/4", 5));
}

TEST(Separating, TheTextMayBeOneOfTheParts) {
    std::array<QString, 3> parts{QStringLiteral("1/2/3"), QString(), QString()};
    Separate(parts[0], QString(), QString(), QStringLiteral("/"), parts);
    EXPECT_EQ((std::array<QString, 3>{"1", "2", "3"}), parts);
}

TEST(PrintLine, GoesNowhere) {
    PrintLn(QStringLiteral("******* changecount "));
}
