// What the property editor shows of each component, and what of it goes into the form's file and comes back.
#include "formeditor.h"

#include <QColor>
#include <QLocale>
#include <QMetaProperty>
#include <QUndoStack>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace zk::test {
namespace {

const char* const componentNames[] = {"TZKOglShape",    "TZKOglBox",       "TZKOglSphere", "TZKOglPlane",
                                      "TZKOglCylinder", "TZKOglRefShape",  "TZkOglCanvas", "TZKOglControl",
                                      "TZKOglScene",    "TZKOglRefScene",  "TZKOglLight",  "TZKOglWay",
                                      "TZKOglNav",      "TZkOglSequencer", "TZkOglTimer"};

bool isReference(const QMetaProperty& property) {
    return QByteArrayView(property.typeName()) == "zk::ComponentRef";
}

/// The published properties of an object and of the objects that it owns, with their paths.
void published(const QObject* object, const QString& path, std::set<std::string>& names, bool top) {
    const QMetaObject* const type = object->metaObject();
    const int first = top && object->isWidgetType() ? QWidget::staticMetaObject.propertyCount()
                                                    : QObject::staticMetaObject.propertyCount();
    for (int i = first; i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        const QString name = path + QLatin1String(property.name());
        if (!isReference(property) && property.metaType().flags() & QMetaType::PointerToQObject)
            published(property.read(object).value<QObject*>(), name + '.', names, false);
        else
            names.insert(name.toStdString());
    }
}

class PropertyTest : public testing::TestWithParam<const char*> {};

TEST_P(PropertyTest, TheSheetHasEveryPublishedProperty) {
    FormEditor editor;
    ASSERT_TRUE(editor.Open(FormText(WidgetText(GetParam(), "it"))));
    std::set<std::string> expected;
    published(editor.Component("it"), {}, expected, true);
    EXPECT_GE(expected.size(), 2u);
    std::set<std::string> shown;
    const auto* const sheet = editor.Sheet("it");
    for (int i = 0; i < sheet->count(); ++i) {
        if (sheet->isVisible(i))
            shown.insert(sheet->propertyName(i).toStdString());
        EXPECT_EQ(sheet->indexOf(sheet->propertyName(i)), i);
    }
    for (const std::string& name : expected)
        EXPECT_EQ(shown.count(name), 1u) << name;
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

// Every property that has a type with an obvious other value gets it: the component has it at once, the file holds it,
// and the form that is read from the file has it again.
TEST_P(PropertyTest, EveryPropertyIsSetStoredAndReadAgain) {
    FormEditor editor;
    ASSERT_TRUE(editor.Open(FormText(WidgetText(GetParam(), "it"))));
    const QString before = editor.Save();
    std::map<QString, QVariant> values;
    {
        const auto* const sheet = editor.Sheet("it");
        std::set<std::string> names;
        published(editor.Component("it"), {}, names, true);
        for (const std::string& text : names) {
            const QString name = QString::fromStdString(text);
            if (name == "ZoomFactor")
                continue;  // another way to set UnitsPerCM
            const QVariant old = sheet->property(sheet->indexOf(name));
            switch (old.typeId()) {
                case QMetaType::Double:
                    values[name] = old.toDouble() + 3.5;
                    break;
                case QMetaType::Int:
                    // (A way's delay is made a divisor of its duration, the one of before while a form is read.)
                    values[name] = name == "TimerDelay" ? 1000 : old.toInt() + 1000;
                    break;
                case QMetaType::Bool:
                    values[name] = !old.toBool();
                    break;
                case QMetaType::QColor:
                    values[name] = QColor(10, 20, 30);
                    break;
                case QMetaType::QByteArray:
                    if (QByteArrayView(old.toByteArray()).contains('/'))
                        values[name] = QByteArray("0.5/1/-2");
                    else if (name == "Caption")
                        values[name] = QByteArray(
                            "Gr\xC3\xBC\xC3\x9F"
                            "e <&> \"x\"");
                    break;
                default:
                    break;
            }
        }
    }
    EXPECT_FALSE(values.empty());
    for (const auto& [name, value] : values) {
        editor.Set("it", name, value);
        EXPECT_EQ(editor.Value("it", name), value) << name.toStdString();
    }
    const QString saved = editor.Save();
    std::map<QString, QVariant> kept;
    for (const auto& [name, value] : values) {
        EXPECT_TRUE(saved.contains('"' + name + "\" stdset=\"0\"")) << name.toStdString();
        kept[name] = editor.Value("it", name);
    }
    ASSERT_TRUE(editor.Open(saved));
    for (const auto& [name, value] : kept)
        EXPECT_EQ(editor.Value("it", name), value) << name.toStdString();
    EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());

    for (const auto& [name, value] : kept)
        editor.Reset("it", name);
    EXPECT_EQ(editor.Save().toStdString(), before.toStdString());
    while (editor.Undo()->canUndo())
        editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(Components, PropertyTest, testing::ValuesIn(componentNames),
                         [](const auto& one) { return std::string(one.param); });

TEST(TriggerTest, APresetOfAMaterialIsStoredAsItsColoursAndUndone) {
    FormEditor editor;
    const QString kind = "<property name=\"Attributes.Material.DefKind\" stdset=\"0\"><enum>zk::%1</enum></property>";
    ASSERT_TRUE(editor.Open(FormText(WidgetText("TZKOglBox", "box"))));
    const QString before = editor.Save();
    // An enumeration's value as Designer holds it comes from a form's file only.
    editor.Paste(WidgetText("TZKOglBox", "navy", kind.arg("matNavy")));
    const QColor navy = editor.Value("navy", "Attributes.Material.Diffuse").value<QColor>();
    const QColor plain = editor.Value("box", "Attributes.Material.Diffuse").value<QColor>();
    EXPECT_NE(navy, plain);
    const QString saved = editor.Save();
    EXPECT_FALSE(saved.contains("DefKind"));
    EXPECT_TRUE(saved.contains("Attributes.Material.Diffuse"));
    ASSERT_TRUE(editor.Open(saved));
    EXPECT_EQ(editor.Value("navy", "Attributes.Material.Diffuse").value<QColor>(), navy);
    EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());

    editor.Set("box", "Attributes.Material.DefKind", 3);  // matNavy
    EXPECT_EQ(editor.Value("box", "Attributes.Material.Diffuse").value<QColor>(), navy);
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(editor.Value("box", "Attributes.Material.Diffuse").value<QColor>(), plain);
    EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());
    editor.Undo()->redo();
    FormEditor::Settle();
    EXPECT_EQ(editor.Value("box", "Attributes.Material.Diffuse").value<QColor>(), navy);
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

TEST(FaultTest, AFormWithFaultsOpensTellsEachOnceAndLosesNothing) {
    FormEditor editor;
    const auto reference = [](const QString& property, const QString& name) {
        return QStringLiteral("<property name=\"%1\" stdset=\"0\"><cstring>%2</cstring></property>")
            .arg(property, name);
    };
    ASSERT_TRUE(editor.Open(FormText(
        WidgetText("TZKOglBox", "box", reference("Scene", "nowhere") + reference("TransformBy", "1;2;3")) +
        WidgetText("TZKOglSphere", "sphere", reference("Scene", "box")) +
        WidgetText("TZKOglRefShape", "a", reference("ReferenceShape", "b")) +
        WidgetText("TZKOglRefShape", "b", reference("ReferenceShape", "a")) +
        WidgetText("TZKOglScene", "scene", "<property name=\"Colour\" stdset=\"0\"><number>7</number></property>"))));
    QStringList messages = FormEditor::TakeMessages();
    messages.sort();
    ASSERT_EQ(messages.size(), 4) << messages.join('\n').toStdString();
    EXPECT_TRUE(messages[0].contains("Zyklischer Verweis")) << messages[0].toStdString();
    EXPECT_TRUE(messages[1].startsWith("box.Scene = \"nowhere\"")) << messages[1].toStdString();
    EXPECT_TRUE(messages[2].startsWith("box.TransformBy = \"1;2;3\"")) << messages[2].toStdString();
    EXPECT_TRUE(messages[3].startsWith("sphere.Scene = \"box\"")) << messages[3].toStdString();
    const QString saved = editor.Save();
    for (const char* const text : {"nowhere", "1;2;3", "<cstring>box</cstring>", "<cstring>a</cstring>",
                                   "<cstring>b</cstring>", "\"Colour\"", "<number>7</number>"})
        EXPECT_TRUE(saved.contains(QLatin1String(text))) << text;
    editor.Set("box", "Length", 3.0);
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList()) << "each is told once";
}

TEST(LocaleTest, AFormFromElsewhereIsReadAndStaysAsItIs) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    {
        FormEditor editor;
        ASSERT_TRUE(editor.Open(FormText(WidgetText(
            "TZKOglBox", "box", "<property name=\"TransformBy\" stdset=\"0\"><cstring>0.5/1/2</cstring></property>"))));
        EXPECT_EQ(editor.Component("box")->property("TransformBy").toString(), "0,5/1/2");
        EXPECT_TRUE(editor.Save().contains("<cstring>0.5/1/2</cstring>"));
        editor.Set("box", "RotationPoint", QByteArray("1,5/0/0"));
        EXPECT_EQ(editor.Component("box")->property("RotationPoint").toString(), "1,5/0/0");
        EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
    }
    QLocale::setDefault(before);
}

}  // namespace
}  // namespace zk::test
