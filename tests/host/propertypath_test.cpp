#include "formparts.h"

#include <zk/host/propertypath.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zk::test {
namespace {

constexpr auto yes = PropertyWritten::Yes;
constexpr auto unknown = PropertyWritten::NoSuchProperty;
constexpr auto bad = PropertyWritten::BadValue;

PropertyWritten write(QObject& object, const char* path, const QVariant& value) {
    return WriteProperty(object, QString::fromUtf8(path), value);
}

TEST(PropertyPath, PropertiesOfTheObjectAndOfThoseThatItOwns) {
    Part part;
    Inner deeper;
    part.Owned.Deeper = &deeper;
    EXPECT_EQ(write(part, "Size", 2.5), yes);
    EXPECT_EQ(part.Size, 2.5);
    EXPECT_EQ(write(part, "Owned.Color", QColor(Qt::red)), yes);
    EXPECT_EQ(part.Owned.Color, QColor(Qt::red));
    EXPECT_EQ(write(part, "Owned.Deeper.Text", QByteArray("\xC3\xA4")), yes);
    EXPECT_EQ(deeper.Text, QStringLiteral("ä"));
    EXPECT_EQ(ReadProperty(part, QStringLiteral("Owned.Color")).value<QColor>(), QColor(Qt::red));
    EXPECT_EQ(ReadProperty(part, QStringLiteral("Owned.Deeper.Text")).toString(), QStringLiteral("ä"));
    const PropertyPlace place = FindProperty(part, QStringLiteral("Owned.Deeper.Text"));
    EXPECT_EQ(place.Object, &deeper);
    EXPECT_STREQ(place.Property.name(), "Text");
}

TEST(PropertyPath, WhatIsNotThere) {
    Part part;
    for (const char* path : {"", ".", "size", "Size.", ".Size", "Size.Color", "Owned.", "Owned..Color", "Owned.color",
                             "Owned.Deeper.Text", "Nothing.Color"}) {
        EXPECT_EQ(write(part, path, 2), unknown) << path;
        EXPECT_FALSE(ReadProperty(part, QString::fromUtf8(path)).isValid()) << path;
        EXPECT_FALSE(FindProperty(part, QString::fromUtf8(path)).IsValid()) << path;
    }
    EXPECT_EQ(write(part, "Owned", QVariant::fromValue(&part.Owned)), unknown) << "it cannot be written";
    QString whyNot;
    EXPECT_EQ(WriteProperty(part, QStringLiteral("Hue"), 2, &whyNot), unknown);
    EXPECT_EQ(whyNot, QStringLiteral("there is no such property"));
}

TEST(PropertyPath, Enumerations) {
    Part part;
    for (const char* name : {"Second", "zk::test::Inner::Second", "Inner::Second", "zk::test::Inner::Kind::Second"}) {
        part.Owned.Sort = Inner::First;
        EXPECT_EQ(write(part, "Owned.Sort", QString::fromUtf8(name)), yes) << name;
        EXPECT_EQ(part.Owned.Sort, Inner::Second) << name;
        part.Owned.Sort = Inner::First;
        EXPECT_EQ(write(part, "Owned.Sort", QByteArray(name)), yes) << name;
        EXPECT_EQ(part.Owned.Sort, Inner::Second) << name;
    }
    EXPECT_EQ(write(part, "Owned.Sort", QVariant::fromValue(Inner::Third)), yes);
    EXPECT_EQ(part.Owned.Sort, Inner::Third);
    EXPECT_EQ(write(part, "Owned.Sort", 1), yes);
    EXPECT_EQ(part.Owned.Sort, Inner::Second);
    for (const QVariant& value :
         {QVariant(3), QVariant(-1), QVariant(257), QVariant(QStringLiteral("Fourth")), QVariant(QString()),
          QVariant(QStringLiteral("First|Second")), QVariant(1.5), QVariant(std::numeric_limits<double>::quiet_NaN()),
          QVariant(QColor(Qt::red)), QVariant(), QVariant::fromValue(Inner::Kind(9))}) {
        EXPECT_EQ(write(part, "Owned.Sort", value), bad) << ValueText(value).toStdString();
        EXPECT_EQ(part.Owned.Sort, Inner::Second);
    }
}

TEST(PropertyPath, Flags) {
    Part part;
    EXPECT_EQ(write(part, "Owned.Edges", QByteArray("zk::test::Inner::Left|zk::test::Inner::Top")), yes);
    EXPECT_EQ(part.Owned.Edges, Inner::Sides(Inner::Left | Inner::Top));
    EXPECT_EQ(write(part, "Owned.Edges", QStringLiteral("Right")), yes);
    EXPECT_EQ(part.Owned.Edges, Inner::Sides(Inner::Right));
    EXPECT_EQ(write(part, "Owned.Edges", QVariant::fromValue(Inner::Sides(Inner::Left))), yes);
    EXPECT_EQ(part.Owned.Edges, Inner::Sides(Inner::Left));
    EXPECT_EQ(write(part, "Owned.Edges", 6), yes);
    EXPECT_EQ(part.Owned.Edges, Inner::Sides(Inner::Right | Inner::Top));
    EXPECT_EQ(write(part, "Owned.Edges", 8), bad);
    EXPECT_EQ(write(part, "Owned.Edges", QStringLiteral("Left|Bottom")), bad);
    EXPECT_EQ(part.Owned.Edges, Inner::Sides(Inner::Right | Inner::Top));
    EXPECT_EQ(write(part, "Owned.Edges", QString()), yes);
    EXPECT_EQ(part.Owned.Edges, Inner::Sides());
}

TEST(PropertyPath, NumbersThatFit) {
    Part part;
    EXPECT_EQ(write(part, "Count", 3.0), yes);
    EXPECT_EQ(part.Count, 3);
    EXPECT_EQ(write(part, "Count", QByteArray("4")), yes);
    EXPECT_EQ(part.Count, 4);
    for (const QVariant& value :
         {QVariant(1e300), QVariant(2.5), QVariant(qlonglong(1) << 40), QVariant(QStringLiteral("five")),
          QVariant(std::numeric_limits<quint64>::max()), QVariant(std::numeric_limits<double>::infinity())})
        EXPECT_EQ(write(part, "Count", value), bad) << ValueText(value).toStdString();
    EXPECT_EQ(part.Count, 4);
    EXPECT_EQ(write(part, "Size", 7), yes);
    EXPECT_EQ(part.Size, 7);
    EXPECT_EQ(write(part, "Size", QByteArray("1.5")), yes);
    EXPECT_EQ(part.Size, 1.5);
    for (const QVariant& value :
         {QVariant(std::nan("")), QVariant(-HUGE_VAL), QVariant(QStringLiteral("nan")), QVariant(QString())})
        EXPECT_EQ(write(part, "Size", value), bad) << ValueText(value).toStdString();
    EXPECT_EQ(part.Size, 1.5);
    EXPECT_EQ(write(part, "Owned.On", QByteArray("true")), yes);
    EXPECT_TRUE(part.Owned.On);
    EXPECT_EQ(write(part, "Owned.On", QByteArray("maybe")), bad);
    EXPECT_EQ(write(part, "Owned.Color", QByteArray("#00ff00")), yes);
    EXPECT_EQ(part.Owned.Color, QColor(0, 255, 0));
    EXPECT_EQ(write(part, "Owned.Color", QByteArray("greenish")), bad);
    EXPECT_EQ(part.Owned.Color, QColor(0, 255, 0));
}

TEST(PropertyPath, AnErrorOfTheSetterIsTheReason) {
    Part part;
    QString whyNot;
    EXPECT_EQ(WriteProperty(part, QStringLiteral("Place"), QStringLiteral("nowhere"), &whyNot), bad);
    EXPECT_EQ(whyNot, QStringLiteral("nowhere is no place"));
    EXPECT_EQ(part.Place, QStringLiteral("here"));
    EXPECT_EQ(WriteProperty(part, QStringLiteral("Size"), QStringLiteral("big"), &whyNot), bad);
    EXPECT_EQ(whyNot, QStringLiteral("this is no value of type double"));
}

}  // namespace
}  // namespace zk::test
