#include "allcomponents.h"
#include "print.h"

#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>
#include <zk/forms/formloader.h>
#include <zk/forms/formtext.h>
#include <zk/host/message.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QLayout>
#include <QLocale>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

class FormLoaderTest : public testing::Test {
  protected:
    void SetUp() override {
        old_ = SetMessageHandler([this](const std::string& text) { messages << QString::fromStdString(text); });
        oldLog_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }
    void TearDown() override {
        QCoreApplication::processEvents();
        SetMessageHandler(old_);
        qInstallMessageHandler(oldLog_);
        EXPECT_EQ(FormReading::Current(), nullptr);
    }

    /// A form of these elements.
    QWidget* load(const QByteArray& widgets, const QByteArray& rest = {}) {
        return loadFile(R"(<ui version="4.0"><class>Form</class><widget class="QWidget" name="Form">)" + widgets +
                        "</widget>" + rest + "</ui>");
    }
    QWidget* loadFile(QByteArray file) {
        form_.reset();
        QBuffer buffer(&file);
        form_.reset(loader.Load(buffer));
        return form_.get();
    }
    template <class T>
    T* find(const char* name) {
        return form_->findChild<T*>(QString::fromLatin1(name));
    }
    QStringList faults() const {
        QStringList texts;
        for (const FormFault& fault : loader.Faults())
            texts << fault.Text();
        return texts;
    }
    static QByteArray component(const QByteArray& type, const QByteArray& name, const QByteArray& properties = {}) {
        return "<widget class=\"zk::" + type + "\" name=\"" + name + "\">" + properties + "</widget>";
    }
    static QByteArray property(const QByteArray& name, const QByteArray& value) {
        return "<property name=\"" + name + "\" stdset=\"0\">" + value + "</property>";
    }
    static QByteArray reference(const QByteArray& name, const QByteArray& target) {
        return property(name, "<cstring>" + target + "</cstring>");
    }

    FormLoader loader;
    QStringList messages;

  private:
    std::unique_ptr<QWidget> form_;
    MessageHandler old_;
    QtMessageHandler oldLog_;
};

TEST_F(FormLoaderTest, WithoutOpenGlTheFormIsTheSame) {
    QFile file(FormFile("allcomponents.ui"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QWidget* form = loadFile(file.readAll());
    ASSERT_TRUE(form);
    EXPECT_FALSE(find<TZkOglCanvas>("canvas")->HasContext());
    EXPECT_EQ(ValuesOf(*form), ValuesOf(*BuiltInCode()));
    EXPECT_EQ(faults(), QStringList());
    form->show();
    QCoreApplication::processEvents();
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormLoaderTest, ComponentsBelongToWhatTheyStandIn) {
    load(R"(<widget class="QGroupBox" name="group">)" + component("TZKOglBox", "inner") + "</widget>" +
         component("TZKOglBox", "outer",
                   property("geometry", "<rect><x>3</x><y>4</y><width>5</width><height>6</height></rect>")));
    EXPECT_EQ(find<TZKOglBox>("inner")->parent()->objectName(), "group");
    EXPECT_EQ(find<TZKOglBox>("outer")->parent()->objectName(), "Form");
    EXPECT_EQ(find<TZKOglBox>("outer")->geometry(), QRect(3, 4, 5, 6));
    EXPECT_FALSE(find<TZKOglBox>("outer")->ComponentState().testFlag(csLoading));
}

TEST_F(FormLoaderTest, ControlsInLayouts) {
    load(R"(<layout class="QVBoxLayout" name="layout"><property name="leftMargin"><number>7</number></property>
        <item><widget class="zk::TZKOglControl" name="control"><property name="minimumSize"><size><width>50</width>
        <height>40</height></size></property><property name="BevelWidth" stdset="0"><number>3</number></property>
        <layout class="QVBoxLayout" name="within"><property name="leftMargin"><number>9</number></property><item>
        <widget class="QLabel" name="label"><property name="text"><string>hello</string></property></widget></item></layout>
        <property name="BevelInner" stdset="0"><enum>zk::bevel::bvSpace</enum></property>
        </widget></item><item><widget class="zk::TZKOglNav" name="nav"/></item></layout>)" +
         component("TZkOglCanvas", "canvas", reference("WinControl", "control")));
    auto* control = find<TZKOglControl>("control");
    ASSERT_TRUE(control);
    EXPECT_EQ(control->minimumSize(), QSize(50, 40));
    EXPECT_EQ(control->GetBevelWidth(), 3);
    EXPECT_EQ(control->GetBevelInner(), bevel::bvSpace);
    EXPECT_EQ(control->Canvas(), find<TZkOglCanvas>("canvas"));
    EXPECT_EQ(find<QLabel>("label")->text(), "hello");
    EXPECT_EQ(find<QLabel>("label")->parent(), control);
    EXPECT_EQ(control->layout()->contentsMargins().left(), 9);
    EXPECT_TRUE(find<TZKOglNav>("nav"));
    EXPECT_EQ(faults(), QStringList());
}

TEST_F(FormLoaderTest, AControlMayBeTheForm) {
    QWidget* form = loadFile(R"(<ui version="4.0"><widget class="zk::TZKOglControl" name="it">
        <property name="BevelWidth"><number>4</number></property>)" +
                             component("TZkOglCanvas", "canvas", reference("WinControl", "it")) + "</widget></ui>");
    auto* control = qobject_cast<TZKOglControl*>(form);
    ASSERT_TRUE(control);
    EXPECT_EQ(control->GetBevelWidth(), 4);
    EXPECT_EQ(control->Canvas(), find<TZkOglCanvas>("canvas"));
}

TEST_F(FormLoaderTest, ConnectionsBetweenComponentsAndWidgets) {
    load(component("TZkOglSequencer", "clock", property("Enabled", "<bool>false</bool>")) +
             R"(<widget class="QPushButton" name="button"/><widget class="QLabel" name="label"/>)",
         R"(<connections><connection><sender>clock</sender><signal>OnTimer(QObject*)</signal><receiver>label</receiver>
            <slot>clear()</slot></connection></connections>)");
    auto* label = find<QLabel>("label");
    label->setText("full");
    find<TZkOglSequencer>("clock")->Timer();
    EXPECT_EQ(label->text(), "");
}

TEST_F(FormLoaderTest, AClassDerivedFromAComponentIsMadeAsThat) {
    load(R"(<widget class="MyBox" name="box"><property name="Length"><double>3</double></property></widget>
        <widget class="MyControl" name="control"/>)",
         R"(<customwidgets><customwidget><class>MyBox</class><extends>zk::TZKOglBox</extends><header>mybox.h</header>
            </customwidget><customwidget><class>MyControl</class><extends>zk::TZKOglControl</extends></customwidget>
            <customwidget><class>A</class><extends>B</extends></customwidget>
            <customwidget><class>B</class><extends>A</extends></customwidget></customwidgets>)");
    ASSERT_TRUE(find<TZKOglBox>("box"));
    EXPECT_EQ(find<TZKOglBox>("box")->GetA(), 3);
    EXPECT_TRUE(find<TZKOglControl>("control"));
    EXPECT_EQ(faults(), QStringList());
}

TEST_F(FormLoaderTest, EveryKindOfValue) {
    load(
        component("TZKOglBox", "box",
                  property("Length", "<number>3</number>") + property("Width", "<float>1.5</float>") +
                      property("Height", "<longLong>2</longLong>") + property("TransformBy", "<string>1/2/3</string>") +
                      property("Nohit", "<bool>true</bool>") +
                      property("Attributes.Material.Ambient",
                               R"(<color alpha="128"><red>1</red><green>2</green><blue>3</blue></color>)") +
                      property("Attributes.Texture.Filter", "<enum>zk::gllinear</enum>") +
                      property("Attributes.Texture.EnvMode", "<string>gldecal</string>")) +
        component("TZKOglCylinder", "cylinder",
                  property("Stacks", "<UInt>7</UInt>") + property("Resolution", "<uLongLong>9</uLongLong>")) +
        component("TZKOglPlane", "plane", property("Data", "<stringlist><string>a</string><string/></stringlist>")) +
        component("TZKOglControl", "control", property("BevelEdges", "<set>zk::bevel::beLeft|zk::bevel::beTop</set>")));
    auto* box = find<TZKOglBox>("box");
    EXPECT_EQ(box->GetA(), 3);
    EXPECT_EQ(box->GetB(), 1.5);
    EXPECT_EQ(box->GetC(), 2);
    EXPECT_EQ(box->Get_translation(), "1/2/3");
    EXPECT_TRUE(box->GetNohit());
    EXPECT_EQ(box->getAttributes()->getMaterial()->ambientColor(), QColor(1, 2, 3));
    EXPECT_EQ(box->getAttributes()->getTexture()->GetFilter(), gllinear);
    EXPECT_EQ(box->getAttributes()->getTexture()->GetEnvmode(), gldecal);
    EXPECT_EQ(find<TZKOglCylinder>("cylinder")->GetStacks(), 7);
    EXPECT_EQ(find<TZKOglCylinder>("cylinder")->GetResolution(), 9);
    EXPECT_EQ(find<TZKOglPlane>("plane")->GetData(), (QStringList{"a", ""}));
    EXPECT_EQ(find<TZKOglControl>("control")->GetBevelEdges(), bevel::TBevelEdges(bevel::beLeft | bevel::beTop));
    EXPECT_EQ(faults(), QStringList());
}

TEST_F(FormLoaderTest, EachFaultIsToldOnceAndTheFormOpens) {
    QWidget* form = load(
        component("TZKOglBox", "box",
                  property("Hue", "<number>7</number>") + property("Attributes.Hue", "<number>8</number>") +
                      reference("Scene", "nothing") + property("TransformBy", "<cstring>1/x/3</cstring>") +
                      property("Length", "<double>long</double>") + property("Width", "<number>2</number>")) +
        component(
            "TZKOglSphere", "ball",
            reference("Scene", "lamp") + property("Resolution", "<double>1e99</double>") +
                property("Attributes.Material.Diffuse", "<color><red>300</red><green>0</green><blue>0</blue></color>") +
                property("Attributes.PolyStyle.Mode", "<enum>zk::TPAMode::glround</enum>") +
                property("Visible", "<pixmap>x.png</pixmap>")) +
        component("TZKOglLight", "lamp", property("LightPosition", "<cstring>here</cstring>")) +
        component("TZKOglRefShape", "mirror", reference("ReferenceShape", "mirror")) +
        component("TZKOglRefScene", "one", reference("ReferenceScene", "two")) +
        component("TZKOglRefScene", "two", reference("ReferenceScene", "one")) +
        component("TZKOglWay", "path",
                  property("Points", "<stringlist><string>0/0/0</string><string>1/1</string></stringlist>") +
                      property("Center", "<cstring>mid</cstring>")) +
        component("TZKOglControl", "control",
                  property("BevelKind", "<enum>zk::bevel::bkRound</enum>") + property("Curve", "<number>1</number>")) +
        R"(<widget class="Unknown" name="what"/>)");
    ASSERT_TRUE(form);
    const QStringList expected{
        "what = \"Unknown\": there is no such class",
        "box.Hue = \"7\": there is no such property",
        "box.Attributes.Hue = \"8\": there is no such property",
        "box.TransformBy = \"1/x/3\": '1/x/3' is not a point: 'x' is not a valid floating point value",
        "box.Length = \"long\": this is no value of type double",
        "ball.Resolution = \"1e99\": this is no value of type int",
        "ball.Attributes.Material.Diffuse = \"300/0/0\": this is no value of type QColor",
        "ball.Attributes.PolyStyle.Mode = \"zk::TPAMode::glround\": this is no value of type zk::TPAMode",
        "ball.Visible = \"x.png\": this is no value of type bool",
        "lamp.LightPosition = \"here\": 'here' is not a point: 'here' is not a valid floating point value",
        "mirror.ReferenceShape = \"mirror\":  Zyklischer Verweis ",
        "two.ReferenceScene = \"one\":  Zyklischer Verweis ",
        "path.Points = \"1/1\": '1/1' is not a point: '' is not a valid floating point value",
        "path.Center = \"mid\": 'mid' is not a point: 'mid' is not a valid floating point value",
        "control.BevelKind = \"zk::bevel::bkRound\": this is no value of type zk::bevel::TBevelKind",
        "control.Curve = \"1\": there is no such property",
        "box.Scene = \"nothing\": there is no component of that name",
        "ball.Scene = \"lamp\": this is a zk::TZKOglLight, not a zk::TDisplayList"};
    EXPECT_EQ(faults(), expected);
    EXPECT_EQ(messages, QStringList{expected.join('\n')});
    EXPECT_EQ(find<TZKOglBox>("box")->GetB(), 2) << "what is right is taken";
    EXPECT_EQ(find<TZKOglBox>("box")->property("Hue"), QVariant(7)) << "nothing is lost";
    EXPECT_EQ(find<TZKOglRefScene>("one")->GetReference(), find<TZKOglRefScene>("two"));
    EXPECT_EQ(find<TZKOglWay>("path")->GetData(), (QStringList{"0/0/0", "1/1"}));
    for (const FormClass& one : FormClasses())
        for (QObject* object : form->findChildren<QObject*>())
            if (object->metaObject() == one.Class) {
                EXPECT_FALSE(ComponentBase::Of(object)->IsLoadingOrStoring()) << one.Name;
            }
}

TEST_F(FormLoaderTest, FaultsNeedNotBeTold) {
    loader.SetTelling(false);
    ASSERT_TRUE(load(component("TZKOglBox", "box", reference("Scene", "nothing"))));
    EXPECT_EQ(faults().size(), 1);
    EXPECT_EQ(messages, QStringList());
    load({});
    EXPECT_EQ(faults(), QStringList()) << "those of the last form";
}

TEST_F(FormLoaderTest, LongerCirclesOfReferencesAreNoFault) {
    ASSERT_TRUE(load(component("TZKOglRefShape", "a", reference("ReferenceShape", "b")) +
                     component("TZKOglRefShape", "b", reference("ReferenceShape", "c")) +
                     component("TZKOglRefShape", "c", reference("ReferenceShape", "a"))));
    EXPECT_EQ(faults(), QStringList());
    EXPECT_EQ(find<TZKOglRefShape>("c")->GetReference(), find<TZKOglRefShape>("a"));
}

TEST_F(FormLoaderTest, AnEmptyReferenceIsNone) {
    load(component("TZKOglBox", "box", reference("Scene", "")) + component("TZKOglScene", ""));
    EXPECT_EQ(faults(), QStringList());
    EXPECT_EQ(find<TZKOglBox>("box")->GetDisplayList(), nullptr);
}

TEST_F(FormLoaderTest, OfTwoOfTheSameNameTheOneThatFitsIsMeant) {
    load(component("TZKOglBox", "box", reference("Scene", "same")) + component("TZKOglLight", "same") +
         component("TZKOglScene", "same"));
    EXPECT_EQ(faults(), QStringList());
    EXPECT_EQ(find<TZKOglBox>("box")->GetDisplayList(), find<TZKOglScene>("same"));
}

TEST_F(FormLoaderTest, ValuesMayComeInWhateverOrder) {
    const QByteArray zoom = property("ZoomFactor", "<double>3</double>");
    const QByteArray units = property("DefaultUnitsPerCM", "<double>20</double>");
    const QByteArray points = property(
        "Points", "<stringlist><string>0/0/0</string><string>1/0/0</string><string>0/0/0</string></stringlist>");
    const QByteArray active = property("Active", "<bool>true</bool>");
    load(component("TZkOglCanvas", "a", zoom + units) + component("TZkOglCanvas", "b", units + zoom) +
         component("TZkOglCanvas", "c", property("UnitsPerCM", "<double>50</double>") + units) +
         component("TZKOglWay", "way1", points + active) + component("TZKOglWay", "way2", active + points));
    EXPECT_EQ(find<TZkOglCanvas>("a")->GetUnitsPerCm(), 60);
    EXPECT_EQ(find<TZkOglCanvas>("b")->GetUnitsPerCm(), 60);
    EXPECT_EQ(find<TZkOglCanvas>("c")->GetUnitsPerCm(), 50);
    EXPECT_EQ(find<TZKOglWay>("way1")->Step(), 0.2) << "the default length of a run counts";
    EXPECT_EQ(find<TZKOglWay>("way2")->Step(), 0.2);
    for (const char* name : {"way1", "way2"}) {
        auto* way = find<TZKOglWay>(name);
        EXPECT_TRUE(way->findChild<TTimer*>() == nullptr || way->findChild<TTimer*>()->GetEnabled()) << name;
        way->TimerDoTimer(nullptr);
        EXPECT_EQ(way->Position(), 0.2) << name;
    }
}

TEST_F(FormLoaderTest, ADelayDividesTheRunOfTheForm) {
    const QByteArray delay = property("TimerDelay", "<number>30</number>");
    const QByteArray run = property("HowLong", "<number>3000</number>");
    const QByteArray points = property(
        "Points", "<stringlist><string>0/0/0</string><string>1/0/0</string><string>0/0/0</string></stringlist>");
    load(component("TZKOglWay", "a", delay + points + run) + component("TZKOglWay", "b", run + points + delay) +
         component("TZKOglWay", "c", points + delay));
    TZKOglWay code;
    code.SetData({"0/0/0", "1/0/0", "0/0/0"});
    code.SetHowLong(3000);
    code.SetTimerDelay(30);
    for (const char* name : {"a", "b"}) {
        EXPECT_EQ(find<TZKOglWay>(name)->GetTimerDelay(), 30) << name;
        EXPECT_EQ(find<TZKOglWay>(name)->Step(), code.Step()) << name;
    }
    EXPECT_EQ(find<TZKOglWay>("c")->GetTimerDelay(), 25) << "the divisor of the run that a new way has";
    // As a form designer reads it, value by value.
    TZKOglWay designed;
    designed.SetDesigning(true);
    designed.setProperty("TimerDelay", 30);
    EXPECT_EQ(designed.GetTimerDelay(), 25);
    designed.setProperty("HowLong", 3000);
    EXPECT_EQ(designed.GetTimerDelay(), 30);
    TZKOglWay running;
    running.setProperty("TimerDelay", 30);
    running.setProperty("HowLong", 3000);
    EXPECT_EQ(running.GetTimerDelay(), 25) << "by choice";
}

TEST_F(FormLoaderTest, PointsThatAreNoneAreToldOnceWhateverIsComputedOfThem) {
    load(component("TZKOglWay", "way",
                   property("Points", "<stringlist><string>here</string></stringlist>") +
                       property("TimerDelay", "<number>100</number>") + property("HowLong", "<number>1000</number>") +
                       property("Active", "<bool>true</bool>")));
    EXPECT_EQ(faults(), QStringList{"way.Points = \"here\": 'here' is not a point: 'here' is not a valid floating "
                                    "point value"});
    EXPECT_EQ(find<TZKOglWay>("way")->GetHowLong(), 1000);
    EXPECT_EQ(find<TZKOglWay>("way")->GetTimerDelay(), 100);
}

TEST_F(FormLoaderTest, TheNavigatorTakesTheViewOfTheWholeForm) {
    const QByteArray canvas = component(
        "TZkOglCanvas", "canvas", property("RotateBy", "<double>30</double>") + reference("RotationLine", "1/1/0"));
    const QByteArray nav = component("TZKOglNav", "nav", reference("ZkOglCanvas", "canvas"));
    load(canvas + nav);
    const TBAse base = find<TZKOglNav>("nav")->GetBase();
    EXPECT_NE(base.XAxis, Unitbase.XAxis);
    load(nav + canvas);
    EXPECT_EQ(find<TZKOglNav>("nav")->GetBase().XAxis, base.XAxis);
    EXPECT_EQ(find<TZKOglNav>("nav")->GetBase().YAxis, base.YAxis);
}

TEST_F(FormLoaderTest, PointsAreReadInEveryCountry) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    load(component("TZKOglBox", "box", reference("TransformBy", "1.5/0/-2.25")) +
         component("TZKOglSphere", "ball", reference("TransformBy", "1,5/0/-2,25")) +
         component("TZKOglPlane", "plane", property("Data", "<stringlist><string>0.5/0/0</string></stringlist>")) +
         component(
             "TZKOglWay", "way",
             property("Points", "<stringlist><string>0.5/0/0</string></stringlist>") + reference("Center", "0.5/1/2")));
    EXPECT_EQ(faults(), QStringList());
    EXPECT_EQ(find<TZKOglBox>("box")->GetTranslation(), (TXYZ{1.5, 0, -2.25}));
    EXPECT_EQ(find<TZKOglSphere>("ball")->GetTranslation(), (TXYZ{1.5, 0, -2.25}));
    EXPECT_EQ(find<TZKOglPlane>("plane")->GetData(), QStringList{"0,5/0/0"});
    EXPECT_EQ(find<TZKOglWay>("way")->GetData(), QStringList{"0,5/0/0"});
    EXPECT_EQ(find<TZKOglWay>("way")->GetCenter(), "0,5/1/2");
    QLocale::setDefault(before);
}

TEST_F(FormLoaderTest, OfTwoValuesOfAPropertyTheFirstCounts) {
    load(component("TZKOglBox", "box",
                   property("Length", "<double>2</double><double>3</double>") +
                       property("Width", "<double>4<number>9</number></double>") + property("Height", "")));
    EXPECT_EQ(find<TZKOglBox>("box")->GetA(), 2);
    EXPECT_EQ(find<TZKOglBox>("box")->GetB(), 4) << "what stands in a value is none of it";
    EXPECT_EQ(faults(), QStringList{"box.Height: this is no value of type double"});
}

TEST_F(FormLoaderTest, TruthIsTrueOrFalse) {
    load(component("TZKOglBox", "a", property("Nohit", "<bool> true </bool>")) +
         component("TZKOglBox", "b", property("Nohit", "<bool>yes</bool>")) +
         component("TZKOglBox", "c", property("Visible", "<bool>false</bool>")) +
         component("TZKOglBox", "d", property("Visible", "<bool>0</bool>")));
    EXPECT_TRUE(find<TZKOglBox>("a")->GetNohit());
    EXPECT_FALSE(find<TZKOglBox>("b")->GetNohit());
    EXPECT_FALSE(find<TZKOglBox>("c")->GetVisible());
    EXPECT_TRUE(find<TZKOglBox>("d")->GetVisible());
    EXPECT_EQ(faults(), (QStringList{"b.Nohit = \"yes\": this is no value of type bool",
                                     "d.Visible = \"0\": this is no value of type bool"}));
}

TEST_F(FormLoaderTest, ColorsAndPlacesHaveTheirLimits) {
    const auto color = [](const QByteArray& attribute, const QByteArray& channels) {
        return property("Attributes.Material.Ambient", "<color" + attribute + ">" + channels + "</color>");
    };
    const QByteArray channels = "<red>1</red><green>2</green><blue>255</blue>";
    const auto place = [](const QByteArray& x, const QByteArray& width) {
        return property("geometry",
                        "<rect><x>" + x + "</x><y>4</y><width>" + width + "</width><height>6</height></rect>");
    };
    load(component("TZKOglBox", "a", color("", channels) + place("-16777216", "16777216")) +
         component("TZKOglBox", "b", color(" alpha=\"256\"", channels) + place("16777217", "5")) +
         component("TZKOglBox", "c", color(" alpha=\"half\"", channels) + place("here", "5")) +
         component("TZKOglBox", "d", color("", channels + "<white>1</white>") + place("3", "-16777217")) +
         component("TZKOglBox", "e", color("", "<red>-1</red>")));
    EXPECT_EQ(find<TZKOglBox>("a")->getAttributes()->getMaterial()->ambientColor(), QColor(1, 2, 255));
    EXPECT_EQ(find<TZKOglBox>("a")->geometry(), QRect(-16777216, 4, 16777216, 6));
    const QRect unplaced = TZKOglBox().geometry();
    for (const char* name : {"b", "c", "d", "e"}) {
        EXPECT_EQ(find<TZKOglBox>(name)->geometry(), unplaced) << name;
        EXPECT_NE(find<TZKOglBox>(name)->getAttributes()->getMaterial()->ambientColor(), QColor(1, 2, 255)) << name;
    }
    const QString path = QStringLiteral(".Attributes.Material.Ambient = \"");
    const QString why = QStringLiteral("\": this is no value of type QColor");
    EXPECT_EQ(faults(), (QStringList{"b" + path + "1/2/255" + why, "c" + path + "1/2/255" + why,
                                     "d" + path + "1/2/255/1" + why, "e" + path + "-1" + why}));
}

TEST_F(FormLoaderTest, WhatStandsInAComponentIsLeftOut) {
    load(component("TZKOglBox", "box",
                   R"(<widget class="QLabel" name="label"/><layout class="QVBoxLayout"/><attribute name="x"/>)" +
                       property("Length", "<double>2</double>")));
    EXPECT_EQ(find<QLabel>("label"), nullptr);
    EXPECT_EQ(find<TZKOglBox>("box")->GetA(), 2);
}

TEST_F(FormLoaderTest, ComponentsWhoseWidgetCannotBeMadeBelongToTheForm) {
    ASSERT_TRUE(load(R"(<widget class="Unknown" name="what">)" + component("TZKOglBox", "box") + "</widget>"));
    ASSERT_TRUE(find<TZKOglBox>("box"));
    EXPECT_EQ(find<TZKOglBox>("box")->parent()->objectName(), "Form");
    EXPECT_EQ(faults(), QStringList{"what = \"Unknown\": there is no such class"});
}

TEST_F(FormLoaderTest, ThoseKeepTheOrderOfTheFile) {
    QByteArray parts;
    QStringList names;
    for (int i = 0; i < 20; ++i) {
        const QByteArray number = QByteArray::number(i);
        parts += R"(<widget class="Unknown" name="what)" + number + "\">" + component("TZKOglBox", "box" + number) +
                 "</widget>";
        names << QStringLiteral("box%1").arg(i);
    }
    QWidget* form = load(parts);
    QStringList made;
    for (const QObject* child : form->children())
        if (qobject_cast<const TZKOglBox*>(child))
            made << child->objectName();
    EXPECT_EQ(made, names);
}

TEST_F(FormLoaderTest, FilesThatAreNoForms) {
    const std::vector<std::pair<QByteArray, const char*>> files = {
        {"", "document"},
        {"no xml", "line 1"},
        {"<html/>", "it is no form"},
        {"<ui/>", ""},
        {R"(<ui version="4.0"><widget class="zk::TZKOglBox" name="box"/></ui>)", ""},
        {R"(<ui version="4.0"><widget class="QWidget" name="Form">)", "line 1"},
        {"<ui version=\"4.0\"><widget class=\"QWidget\" name=\"Form\"><widget class=\"zk::TZKOglBox\"></ui>", "line 1"},
        {"<?xml version=\"1.0\"?><!DOCTYPE ui [<!ENTITY a \"b\">]><ui version=\"4.0\">&c;</ui>", "line 1"},
        {QByteArray(R"(<ui version="4.0">)") + QByteArray("<widget class=\"QWidget\">").repeated(250),
         "nested too deeply"},
        {QByteArray(R"(<ui version="4.0">)") + QByteArray("<a>").repeated(100000), "nested too deeply"},
        {R"(<ui version="4.0"><widget class="QWidget">)" + QByteArray("<widget class=\"QWidget\"/>").repeated(100001),
         "too many widgets"},
        {QByteArray((64 << 20) + 1, ' '), "too large"},
    };
    for (const auto& [file, why] : files) {
        messages.clear();
        EXPECT_EQ(loadFile(file), nullptr);
        ASSERT_EQ(loader.Faults().size(), 1U) << file.left(100).toStdString();
        EXPECT_EQ(loader.Faults()[0].What, FormFault::Kind::UnreadableFile);
        EXPECT_EQ(loader.Faults()[0].Component, "form");
        EXPECT_TRUE(loader.Faults()[0].Reason.contains(why)) << loader.Faults()[0].Reason.toStdString();
        EXPECT_FALSE(loader.Faults()[0].Reason.isEmpty());
        EXPECT_EQ(messages, QStringList{loader.Faults()[0].Text()});
    }
}

TEST_F(FormLoaderTest, FilesByName) {
    const QTemporaryDir folder;
    EXPECT_EQ(loader.LoadFile(folder.filePath("none.ui")), nullptr);
    ASSERT_EQ(loader.Faults().size(), 1U);
    EXPECT_EQ(loader.Faults()[0].Component, folder.filePath("none.ui"));
    EXPECT_EQ(messages.size(), 1);
    QWidget parent;
    QWidget* form = loader.LoadFile(FormFile("allcomponents.ui"), &parent);
    ASSERT_TRUE(form);
    EXPECT_EQ(form->parent(), &parent);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(form->windowTitle(), "All components");
    EXPECT_EQ(form->size(), QSize(760, 340));
}

TEST_F(FormLoaderTest, AFormWithinTheLoadingOfAnotherKeepsToItself) {
    QWidget outer;
    TZKOglBox box(&outer);
    box.setObjectName("outerBox");
    box.setGeometry(QRect());
    box.setProperty("Scene", QByteArray("late"));
    ASSERT_TRUE(load(component("TZKOglScene", "late")));
    EXPECT_EQ(box.GetDisplayList(), nullptr) << "another form";
    TZKOglScene late(&outer);
    late.setObjectName("late");
    EXPECT_EQ(box.GetDisplayList(), &late);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(FormLoaderTest, FormsAreOpenedAndDeletedManyTimes) {
    QFile file(FormFile("allcomponents.ui"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    for (int i = 0; i < 50; ++i)
        ASSERT_TRUE(loadFile(text));
    EXPECT_EQ(messages, QStringList());
}

}  // namespace
}  // namespace zk::test
