#include "formeditor.h"

#include <QColor>
#include <QFile>
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

// Forms of the examples: they open without a fault, and what is saved stays as it is.
TEST(SavingTest, TheFormsOfTheExamplesAreEdited) {
    FormEditor editor;
    for (const char* const name : {"gallery/mainwindow.ui", "10-form/scene.ui"}) {
        QFile file(QStringLiteral(ZKOGL_EXAMPLES "/") + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        const QString form = QString::fromUtf8(file.readAll());
        ASSERT_TRUE(editor.Open(form));
        const QString saved = editor.Save();
        EXPECT_GE(saved.count("stdset=\"0\""), form.count("stdset=\"0\"")) << name;
        EXPECT_EQ(saved.count("<connection>"), form.count("<connection>")) << name;
        ASSERT_TRUE(editor.Open(saved));
        EXPECT_EQ(editor.Save().toStdString(), saved.toStdString()) << name;
        for (const QString& message : FormEditor::TakeMessages())  // the gallery makes its picture when it starts
            EXPECT_TRUE(message.startsWith("can't load texture")) << message.toStdString();
    }
}

}  // namespace
}  // namespace zk::test
