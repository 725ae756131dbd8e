// Designer without usable OpenGL: this program runs without a display.
#include "formeditor.h"
#include "rounds.h"

#include <QLabel>
#include <QUndoStack>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

TEST(NoOpenGlTest, TheControlSaysWhyItIsEmptyAndEditingGoesOn) {
    FormEditor editor;
    ASSERT_TRUE(editor.Open(KeptForm("scene.ui")));
    const auto* const label = editor.Widget("control")->findChild<QLabel*>();
    ASSERT_TRUE(label);
    EXPECT_TRUE(label->text().contains("OpenGL")) << label->text().toStdString();
    editor.Set("box", "Length", 5.0);
    EXPECT_EQ(editor.Component("box")->property("Length").toDouble(), 5.0);
    editor.Undo()->undo();
    EXPECT_EQ(editor.Save().toStdString(), KeptForm("scene.ui").toStdString());
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

TEST(NoOpenGlTest, FormsOpenAndCloseManyTimes) {
    FormEditor editor;
    for (int i = 0; i < Rounds(50); ++i)
        ASSERT_TRUE(editor.Open(KeptForm("scene.ui")));
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

}  // namespace
}  // namespace zk::test
