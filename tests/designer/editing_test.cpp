#include "formeditor.h"

#include <QColor>
#include <QUndoStack>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

class EditingTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(editor.OpenEmpty()); }
    void TearDown() override { EXPECT_EQ(FormEditor::TakeMessages(), QStringList()); }

    void add(const QString& className, const QString& name, const QString& properties = {}) {
        editor.Paste(WidgetText(className, name, properties));
        ASSERT_TRUE(editor.Widget(name)) << name.toStdString();
    }
    QByteArray reference(const QString& name, const QString& property) {
        return editor.Value(name, property).toByteArray();
    }
    /// What a component itself refers to, by the name of the widget that stands for it.
    QString bound(const QString& name, const QString& property) {
        auto* const target = editor.Component(name)->property(property.toLatin1()).value<QObject*>();
        if (!target)
            return {};
        return target->isWidgetType() ? target->objectName() : target->parent()->objectName();
    }

    FormEditor editor;
};

TEST_F(EditingTest, AReferenceIsANameAndBindsTheComponent) {
    add("TZKOglScene", "scene");
    add("TZKOglBox", "box");
    EXPECT_EQ(reference("box", "Scene"), "");
    editor.Set("box", "Scene", QByteArray("scene"));
    EXPECT_EQ(reference("box", "Scene"), "scene");
    EXPECT_EQ(bound("box", "Scene"), "scene");

    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(reference("box", "Scene"), "");
    EXPECT_EQ(bound("box", "Scene"), "");
    editor.Undo()->redo();
    FormEditor::Settle();
    EXPECT_EQ(bound("box", "Scene"), "scene");
    editor.Reset("box", "Scene");
    EXPECT_EQ(reference("box", "Scene"), "");
    EXPECT_EQ(bound("box", "Scene"), "");
}

TEST_F(EditingTest, AReferenceFollowsTheNewNameOfItsTarget) {
    add("TZKOglScene", "scene");
    add("TZKOglBox", "box");
    editor.Set("box", "Scene", QByteArray("scene"));
    editor.Set("scene", "objectName", "wheels");
    EXPECT_EQ(reference("box", "Scene"), "wheels");
    EXPECT_EQ(bound("box", "Scene"), "wheels");
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(reference("box", "Scene"), "scene");
}

TEST_F(EditingTest, ADeletedTargetIsNoneAndAnUndoBringsItBack) {
    add("TZKOglScene", "scene");
    add("TZKOglBox", "box");
    editor.Set("box", "Scene", QByteArray("scene"));
    editor.Select({"scene"});
    editor.Delete();
    EXPECT_EQ(editor.Widget("scene"), nullptr);
    EXPECT_EQ(reference("box", "Scene"), "");
    EXPECT_EQ(bound("box", "Scene"), "");
    EXPECT_FALSE(editor.Save().contains("\"Scene\""));
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(reference("box", "Scene"), "scene");
    EXPECT_EQ(bound("box", "Scene"), "scene");
    EXPECT_TRUE(editor.Save().contains("<cstring>scene</cstring>"));
}

TEST_F(EditingTest, ADeletedComponentLeavesWhatItBelongedTo) {
    add("TZKOglScene", "scene");
    add("TZKOglBox", "box");
    editor.Set("box", "Scene", QByteArray("scene"));
    QObject* const box = editor.Component("box");
    editor.Select({"box"});
    editor.Delete();
    EXPECT_EQ(box->property("Scene").value<QObject*>(), nullptr);
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(bound("box", "Scene"), "scene");
}

TEST_F(EditingTest, PastedComponentsReferToEachOther) {
    add("TZKOglScene", "scene");
    add("TZKOglBox", "box");
    editor.Set("box", "Scene", QByteArray("scene"));
    editor.Select({"scene", "box"});
    editor.Copy();
    editor.PasteAgain();
    ASSERT_TRUE(editor.Widget("scene_2"));
    ASSERT_TRUE(editor.Widget("box_2"));
    EXPECT_EQ(reference("box_2", "Scene"), "scene_2");
    EXPECT_EQ(bound("box_2", "Scene"), "scene_2");
    EXPECT_EQ(bound("box", "Scene"), "scene");
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_FALSE(editor.Widget("box_2"));
    editor.Undo()->redo();
    FormEditor::Settle();
    EXPECT_EQ(bound("box_2", "Scene"), "scene_2");
}

TEST_F(EditingTest, TheClipboardIsNothingToAFormThatIsOpened) {
    add("TZKOglScene", "front");
    add("TZKOglScene", "back");
    add("TZKOglBox", "box");
    editor.Select({"front", "back", "box"});
    editor.Copy();
    const QString back = WidgetText("TZKOglScene", "back");
    const QString front = WidgetText("TZKOglScene", "front");
    const QString box =
        WidgetText("TZKOglBox", "box", "<property name=\"Scene\" stdset=\"0\"><cstring>back</cstring></property>");
    for (const QString& scenes : {back + front, front + back}) {  // one of them in the clipboard's order
        ASSERT_TRUE(editor.Open(FormText(scenes + box)));
        EXPECT_EQ(reference("box", "Scene"), "back");
        EXPECT_EQ(bound("box", "Scene"), "back");
    }
}

TEST_F(EditingTest, APastedComponentAloneRefersToTheOriginal) {
    add("TZKOglScene", "scene");
    add("TZKOglBox", "box");
    editor.Set("box", "Scene", QByteArray("scene"));
    editor.Select({"box"});
    editor.Copy();
    editor.PasteAgain();
    EXPECT_EQ(reference("box_2", "Scene"), "scene");
    EXPECT_EQ(bound("box_2", "Scene"), "scene");
}

TEST_F(EditingTest, PropertiesOfOwnedObjectsAreSetAndUndone) {
    add("TZKOglBox", "box");
    const auto live = [&] {
        return editor.Component("box")
            ->property("Attributes")
            .value<QObject*>()
            ->property("Material")
            .value<QObject*>();
    };
    const QColor before = live()->property("Diffuse").value<QColor>();
    editor.Set("box", "Attributes.Material.Diffuse", QColor(1, 2, 3));
    EXPECT_EQ(live()->property("Diffuse").value<QColor>(), QColor(1, 2, 3));
    EXPECT_EQ(editor.Value("box", "Attributes.Material.Diffuse").value<QColor>(), QColor(1, 2, 3));
    editor.Undo()->undo();
    EXPECT_EQ(live()->property("Diffuse").value<QColor>(), before);
    editor.Undo()->redo();
    editor.Reset("box", "Attributes.Material.Diffuse");
    EXPECT_EQ(live()->property("Diffuse").value<QColor>(), before);
    EXPECT_FALSE(editor.Save().contains("Diffuse"));
}

TEST_F(EditingTest, AComponentThatIsNoWidgetShowsNothingOfAWidget) {
    add("TZKOglBox", "box");
    const auto* const sheet = editor.Sheet("box");
    QStringList visible;
    for (int i = 0; i < sheet->count(); ++i) {
        if (sheet->isVisible(i))
            visible.append(sheet->propertyName(i));
    }
    EXPECT_EQ(visible, QStringList({"objectName",
                                    "geometry",
                                    "Scene",
                                    "TransformBy",
                                    "RotateBy",
                                    "RotationPoint",
                                    "RotationLine",
                                    "Scale",
                                    "Visible",
                                    "ParentAttributes",
                                    "Nohit",
                                    "Length",
                                    "Width",
                                    "Height",
                                    "Attributes.PolyStyle.Mode",
                                    "Attributes.Material.Ambient",
                                    "Attributes.Material.Diffuse",
                                    "Attributes.Material.Specular",
                                    "Attributes.Material.Emission",
                                    "Attributes.Material.Shininess",
                                    "Attributes.Material.Translucent",
                                    "Attributes.Material.DefKind",
                                    "Attributes.Texture.Picture",
                                    "Attributes.Texture.Repeating",
                                    "Attributes.Texture.Filter",
                                    "Attributes.Texture.EnvMode",
                                    "Attributes.Texture.Visible",
                                    "Attributes.Texture.BaseFix",
                                    "Attributes.Texture.WorldWidth",
                                    "Attributes.Texture.WorldHeight"}));
    EXPECT_EQ(sheet->propertyGroup(sheet->indexOf("Length")), "TZKOglBox");
    EXPECT_EQ(sheet->propertyGroup(sheet->indexOf("Attributes.Material.Ambient")), "Attributes → Material");
}

}  // namespace
}  // namespace zk::test
