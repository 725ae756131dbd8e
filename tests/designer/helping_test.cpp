#include "formeditor.h"

#include <QApplication>
#include <QCompleter>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QUndoStack>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

class HelpingTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(editor.Open(FormText(WidgetText("TZKOglScene", "scene") + WidgetText("TZKOglScene", "wheels") +
                                         WidgetText("TZKOglBox", "box") + WidgetText("TZKOglBox", "lid") +
                                         WidgetText("TZkOglCanvas", "canvas") + WidgetText("TZKOglControl", "control") +
                                         "<widget class=\"QFrame\" name=\"frame\"/>")));
    }
    void TearDown() override { EXPECT_EQ(FormEditor::TakeMessages(), QStringList()); }

    /// The open menu's entries, the checked one in brackets.
    static QStringList entries(const QMenu* menu) {
        QStringList texts;
        for (const QAction* action : menu->actions()) {
            if (!action->isSeparator())
                texts.append(action->isChecked() ? '[' + action->text() + ']' : action->text());
        }
        return texts;
    }
    static void choose(const QMenu* menu, const QString& text) {
        for (QAction* action : menu->actions()) {
            if (action->text() == text)
                action->trigger();
        }
        FormEditor::Settle();
    }
    QMenu* openMenu(const QString& property) {
        QToolButton* const button = editor.OpenEditor(property);
        EXPECT_TRUE(button);
        if (!button)
            return nullptr;
        button->click();
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_TRUE(menu);
        return menu;
    }
    QFileDialog* dialog() const {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* const found = qobject_cast<QFileDialog*>(widget);
            if (found && found->isVisible())
                return found;
        }
        return nullptr;
    }
    std::string value(const QString& name, const QString& property) {
        return editor.Value(name, property).toByteArray().toStdString();
    }

    FormEditor editor;
};

TEST_F(HelpingTest, AReferenceOffersWhatFits) {
    editor.Select({"box"});
    QMenu* menu = openMenu("Scene");
    EXPECT_EQ(entries(menu), QStringList({"[(none)]", "scene", "wheels"}));
    choose(menu, "wheels");
    menu->close();
    EXPECT_EQ(value("box", "Scene"), "wheels");
    EXPECT_EQ(value("lid", "Scene"), "");
    menu = openMenu("Scene");
    EXPECT_EQ(entries(menu), QStringList({"(none)", "scene", "[wheels]"}));
    menu->close();
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(value("box", "Scene"), "");
}

TEST_F(HelpingTest, AControlOfACanvasIsAnyWidgetButNoIcon) {
    editor.Select({"canvas"});
    QMenu* const menu = openMenu("WinControl");
    EXPECT_EQ(entries(menu), QStringList({"[(none)]", "Form", "control", "frame"}));
    menu->close();
}

TEST_F(HelpingTest, AReferenceIsSetForAllThatAreSelected) {
    editor.Select({"box", "lid"});
    QMenu* const menu = openMenu("Scene");
    choose(menu, "scene");
    menu->close();
    EXPECT_EQ(value("box", "Scene"), "scene");
    EXPECT_EQ(value("lid", "Scene"), "scene");
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(value("box", "Scene"), "");
    EXPECT_EQ(value("lid", "Scene"), "");
}

TEST_F(HelpingTest, ATypedNameIsCompleted) {
    editor.Select({"box"});
    QToolButton* const button = editor.OpenEditor("Scene");
    ASSERT_TRUE(button);
    const auto* const line = button->parentWidget()->findChild<QLineEdit*>();
    ASSERT_TRUE(line && line->completer());
    EXPECT_EQ(line->completer()->completionCount(), 2);
}

TEST_F(HelpingTest, APictureIsChosenInADialogWithAPreview) {
    const QTemporaryDir folder;
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::green);
    const QString first = folder.filePath("first.bmp");
    const QString second = folder.filePath("second.bmp");
    ASSERT_TRUE(picture.save(first));
    ASSERT_TRUE(picture.save(second));
    editor.Set("box", "Attributes.Texture.Picture", first.toUtf8());

    editor.Select({"lid", "box"});
    QToolButton* button = editor.OpenEditor("Attributes.Texture.Picture");
    ASSERT_TRUE(button);
    button->click();
    FormEditor::Settle();
    QFileDialog* chooser = dialog();
    ASSERT_TRUE(chooser);
    // The dialog reads the folder on a thread of its own.
    EXPECT_TRUE(QTest::qWaitFor([&] { return chooser->selectedFiles() == QStringList(first); }));
    const auto* const preview = chooser->findChild<QLabel*>("preview");
    ASSERT_TRUE(preview);
    ASSERT_FALSE(preview->pixmap().isNull());
    EXPECT_EQ(preview->pixmap().toImage().pixelColor(4, 4), QColor(Qt::green));
    chooser->reject();
    FormEditor::Settle();
    EXPECT_EQ(value("box", "Attributes.Texture.Picture"), first.toStdString()) << "cancelling changes nothing";
    EXPECT_EQ(value("lid", "Attributes.Texture.Picture"), "");
    EXPECT_EQ(dialog(), nullptr);

    button = editor.OpenEditor("Attributes.Texture.Picture");
    ASSERT_TRUE(button);
    button->click();
    FormEditor::Settle();
    chooser = dialog();
    ASSERT_TRUE(chooser);
    EXPECT_TRUE(QTest::qWaitFor([&] { return chooser->selectedFiles() == QStringList(first); }));
    chooser->findChild<QLineEdit*>("fileNameEdit")->setText("second.bmp");
    EXPECT_TRUE(QTest::qWaitFor([&] { return chooser->selectedFiles() == QStringList(second); }));
    static_cast<QDialog*>(chooser)->accept();
    FormEditor::Settle();
    EXPECT_EQ(value("box", "Attributes.Texture.Picture"), second.toStdString());
    EXPECT_EQ(value("lid", "Attributes.Texture.Picture"), second.toStdString()) << "for all that are selected";

    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_EQ(value("box", "Attributes.Texture.Picture"), first.toStdString());
    EXPECT_EQ(value("lid", "Attributes.Texture.Picture"), "");
    editor.Reset("box", "Attributes.Texture.Picture");
    EXPECT_EQ(value("box", "Attributes.Texture.Picture"), "");
    EXPECT_FALSE(editor.Save().contains("Picture"));
}

TEST_F(HelpingTest, TheContextMenuHasTheReferencesAndThePicture) {
    auto* const menu =
        qt_extension<QDesignerTaskMenuExtension*>(editor.Core()->extensionManager(), editor.Widget("box"));
    ASSERT_TRUE(menu);
    QStringList texts;
    for (const QAction* action : menu->taskActions())
        texts.append(action->text());
    EXPECT_EQ(texts, QStringList({"Scene", "Attributes.Texture.Picture..."}));
    QMenu* const scenes = menu->taskActions().first()->menu();
    ASSERT_TRUE(scenes);
    Q_EMIT scenes->aboutToShow();
    EXPECT_EQ(entries(scenes), QStringList({"[(none)]", "scene", "wheels"}));
    choose(scenes, "scene");
    EXPECT_EQ(value("box", "Scene"), "scene");
}

}  // namespace
}  // namespace zk::test
