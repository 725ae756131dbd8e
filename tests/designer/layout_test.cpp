// Icons of components never stand in a layout: the compiled form could not put them there.
#include "formeditor.h"

#include <QHash>
#include <QLayout>
#include <QRegularExpression>
#include <QSplitter>
#include <QUndoStack>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

using Manager = QDesignerFormWindowManagerInterface;

class LayoutTest : public testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        ASSERT_TRUE(editor.Open(FormText(
            "<widget class=\"QPushButton\" name=\"first\"><property name=\"geometry\"><rect><x>10</x><y>10</y><width>80"
            "</width><height>30</height></rect></property></widget>"
            "<widget class=\"QPushButton\" name=\"second\"><property "
            "name=\"geometry\"><rect><x>10</x><y>60</y><width>80"
            "</width><height>30</height></rect></property></widget>" +
            WidgetText("TZKOglBox", "box").replace("<x>10<", "<x>100<") +
            WidgetText("TZKOglScene", "scene").replace("<x>10<", "<x>200<"))));
        places = {{"box", editor.Widget("box")->geometry()}, {"scene", editor.Widget("scene")->geometry()}};
    }
    void TearDown() override {
        for (const char* const name : {"box", "scene"}) {
            ASSERT_TRUE(editor.Widget(name));
            EXPECT_TRUE(editor.Widget(name)->isVisibleTo(editor.Form()));
            EXPECT_EQ(editor.Widget(name)->parentWidget(), editor.Form()->mainContainer());
            EXPECT_EQ(editor.Widget(name)->geometry(), places[name]);
        }
        // In the file, too: an icon is within the form's element, and in none of a layout's.
        const QString saved = editor.Save();
        EXPECT_TRUE(saved.contains(QRegularExpression("\n  <widget class=\"zk::TZKOglBox\"")));
        EXPECT_TRUE(editor.Open(saved));
        EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());
        EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
    }
    bool laidOut(const char* name) const {
        const QWidget* const widget = editor.Widget(name);
        const QWidget* const parent = widget->parentWidget();
        return qobject_cast<const QSplitter*>(parent) || (parent->layout() && parent->layout()->indexOf(widget) >= 0);
    }

    FormEditor editor;
    QHash<QString, QRect> places;
};

class FormLayoutTest : public LayoutTest {};  // a form is no splitter

TEST_P(FormLayoutTest, TakesTheWidgetsOnly) {
    editor.Select({});
    editor.Form()->selectWidget(editor.Form()->mainContainer());
    editor.Trigger(GetParam());
    EXPECT_TRUE(laidOut("first"));
    EXPECT_TRUE(laidOut("second"));
    EXPECT_FALSE(laidOut("box"));
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_FALSE(laidOut("first"));
    editor.Undo()->redo();
    FormEditor::Settle();
    EXPECT_TRUE(laidOut("first"));
    EXPECT_FALSE(laidOut("box"));
}

TEST_P(LayoutTest, OfWhatIsSelectedTakesTheWidgetsOnly) {
    editor.Select({"first", "box", "second"});
    editor.Trigger(GetParam());
    EXPECT_TRUE(laidOut("first"));
    EXPECT_TRUE(laidOut("second"));
    EXPECT_EQ(editor.Widget("first")->parentWidget(), editor.Widget("second")->parentWidget());
    EXPECT_FALSE(laidOut("box"));
    editor.Undo()->undo();
    FormEditor::Settle();
    EXPECT_FALSE(laidOut("first"));
}

TEST_P(LayoutTest, OfIconsAloneIsNone) {
    editor.Select({"scene", "box"});
    editor.Trigger(GetParam());
    EXPECT_FALSE(laidOut("first"));
    EXPECT_FALSE(laidOut("box"));
    EXPECT_FALSE(editor.Undo()->canUndo());
}

INSTANTIATE_TEST_SUITE_P(Actions, LayoutTest,
                         testing::Values(int(Manager::HorizontalLayoutAction), int(Manager::VerticalLayoutAction),
                                         int(Manager::SplitHorizontalAction), int(Manager::SplitVerticalAction),
                                         int(Manager::GridLayoutAction), int(Manager::FormLayoutAction)));

INSTANTIATE_TEST_SUITE_P(Actions, FormLayoutTest,
                         testing::Values(int(Manager::HorizontalLayoutAction), int(Manager::VerticalLayoutAction),
                                         int(Manager::GridLayoutAction), int(Manager::FormLayoutAction)));

TEST(LayoutReadTest, AnIconThatAFileHasInALayoutIsTakenOut) {
    FormEditor editor;
    ASSERT_TRUE(editor.Open(FormText(
        "<layout class=\"QVBoxLayout\" name=\"column\"><item><widget class=\"QPushButton\" name=\"first\"/></item>"
        "<item><widget class=\"zk::TZKOglBox\" name=\"box\"/></item></layout>")));
    EXPECT_LT(editor.Form()->mainContainer()->layout()->indexOf(editor.Widget("box")), 0);
    EXPECT_EQ(editor.Form()->mainContainer()->layout()->indexOf(editor.Widget("first")), 0);
    const QString saved = editor.Save();
    ASSERT_TRUE(editor.Open(saved));
    EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
}

}  // namespace
}  // namespace zk::test
