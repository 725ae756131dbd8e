#include "formeditor.h"

#include <QColor>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

TEST(SavingTest, ASavedFormIsReadAndWrittenAgainToTheByte) {
    FormEditor editor;
    const QString kept = KeptForm("scene.ui");
    ASSERT_TRUE(editor.Open(kept));
    KeepForm("scene.ui", editor.Save());
    EXPECT_EQ(editor.Save().toStdString(), kept.toStdString());
    const QString saved = editor.Save();
    ASSERT_TRUE(editor.Open(saved));
    EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

TEST(SavingTest, AChangedPropertyIsOneChangedLine) {
    FormEditor editor;
    const QString kept = KeptForm("scene.ui");
    ASSERT_TRUE(editor.Open(kept));
    editor.Set("box", "Length", 3.5);
    EXPECT_EQ(ChangedLines(kept, editor.Save()), std::vector<std::string>{"<double>3.500000000000000</double>"});
    editor.Set("box", "Length", 2.5);
    editor.Set("box", "TransformBy", QByteArray("1/2/3"));
    EXPECT_EQ(ChangedLines(kept, editor.Save()), std::vector<std::string>{"<cstring>1/2/3</cstring>"});
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

}  // namespace
}  // namespace zk::test
