// The scene on the edited form, as the user sees it while editing.
#include "formeditor.h"
#include "rounds.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QFile>
#include <QLabel>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUndoStack>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerWidgetBoxInterface>
#include <gtest/gtest.h>

namespace zk::test {
namespace {

class LiveTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(editor.Open(KeptForm("scene.ui")));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(editor.Window()));
        settle();
    }
    void TearDown() override { EXPECT_EQ(FormEditor::TakeMessages(), QStringList()); }

    static void settle() {
        FormEditor::Settle();
        QTest::qWait(50);  // the window system shows what was painted
    }
    /// What the user sees of a widget of the form.
    QImage seen(const QString& name) const {
        const QWidget* const widget = editor.Widget(name);
        const QRect place(widget->mapToGlobal(QPoint()), widget->size());
        return widget->screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height()).toImage();
    }
    /// How much of the control is not background.
    int drawn() const {
        const QImage picture = seen("control");
        int count = 0;
        for (int y = 10; y < picture.height() - 10; ++y) {
            for (int x = 10; x < picture.width() - 10; ++x)
                count += picture.pixelColor(x, y) != QColor(40, 60, 90);
        }
        return count;
    }

    FormEditor editor;
};

TEST_F(LiveTest, TheSceneIsSeenWhileItIsEdited) {
    const int first = drawn();
    EXPECT_GT(first, 500);
    EXPECT_LT(first, 20000);
    editor.Set("box", "Length", 5.0);
    settle();
    const int longer = drawn();
    EXPECT_GT(longer, first * 3 / 2);
    editor.Undo()->undo();
    settle();
    EXPECT_EQ(drawn(), first);

    editor.Select({"box"});
    editor.Delete();
    settle();
    EXPECT_EQ(drawn(), 0);
    editor.Undo()->undo();
    editor.Form()->clearSelection();
    settle();
    EXPECT_EQ(drawn(), first);

    editor.Set("scene", "ZkOglCanvas", QByteArray());
    settle();
    EXPECT_EQ(drawn(), 0);
    editor.Undo()->undo();
    settle();
    EXPECT_EQ(drawn(), first);
}

TEST_F(LiveTest, TheControlIsEmptyWithoutItsCanvasAndFullAgain) {
    const int first = drawn();
    editor.Select({"canvas"});
    editor.Delete();
    settle();
    EXPECT_GT(drawn(), 30000) << "the form's own colour";
    editor.Undo()->undo();
    editor.Form()->clearSelection();
    settle();
    EXPECT_EQ(drawn(), first);
    // And the other way round.
    editor.Select({"control"});
    editor.Delete();
    settle();
    editor.Undo()->undo();
    editor.Form()->clearSelection();
    settle();
    EXPECT_EQ(drawn(), first);
}

TEST_F(LiveTest, AClickOnThePictureSelectsTheControl) {
    editor.Form()->clearSelection();
    settle();
    const QImage before = seen("control");
    QWidget* const control = editor.Widget("control");
    QWindow* const window = editor.Window()->windowHandle();
    QTest::mouseClick(window, Qt::LeftButton, {}, control->mapTo(editor.Window(), control->rect().center()));
    settle();
    EXPECT_EQ(editor.Form()->cursor()->selectedWidgetCount(), 1);
    EXPECT_TRUE(editor.Form()->cursor()->isWidgetSelected(control));
    // The handles of the selection lie over the picture, at the corners of the control and between them.
    const QImage after = seen("control");
    for (const QPoint& corner : {QPoint(0, 0), QPoint(197, 0), QPoint(0, 197), QPoint(197, 197), QPoint(98, 0)}) {
        const QRect handle(corner, QSize(3, 3));
        EXPECT_NE(after.copy(handle), before.copy(handle)) << corner.x() << " " << corner.y();
    }
    EXPECT_EQ(after.copy(10, 10, 180, 180), before.copy(10, 10, 180, 180));
}

TEST_F(LiveTest, FormsOpenAndCloseWithoutLeavingAnything) {
    const QString kept = KeptForm("scene.ui");
    editor.Close();
    const qsizetype widgets = QApplication::allWidgets().size();
    for (int i = 0; i < Rounds(50); ++i) {
        ASSERT_TRUE(editor.Open(kept));
        if (i % 10 == 0) {
            editor.Set("box", "Length", 4.0 + i);
            editor.Select({"canvas", "scene"});
            editor.Delete();
            editor.Undo()->undo();
        }
        editor.Close();
    }
    settle();
    EXPECT_LE(QApplication::allWidgets().size(), widgets + 2);
}

TEST_F(LiveTest, IconsLieOverThePicture) {
    QFile file(QStringLiteral(ZKOGL_EXAMPLES "/10-form/scene.ui"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(editor.Open(QString::fromUtf8(file.readAll())));
    settle();
    const QColor plain = editor.Widget("canvas")->palette().color(QPalette::Window);
    for (const char* const name : {"canvas", "lamp", "scene", "box", "cone"}) {
        ASSERT_TRUE(editor.Widget("control")->geometry().contains(editor.Widget(name)->geometry())) << name;
        EXPECT_EQ(seen(name).pixelColor(10, 10), plain) << name;
    }
}

// A preview is a running form: no icons, bound components, events. The click reaches the shape under the pointer.
TEST_F(LiveTest, APreviewRuns) {
    QString form = KeptForm("scene.ui");
    form.replace("  <widget class=\"zk::TZKOglNav\"",
                 "  <widget class=\"QCheckBox\" name=\"hit\"/>\n  <widget class=\"zk::TZKOglNav\"");
    form.replace(" <connections/>",
                 " <connections><connection><sender>box</sender><signal>OnMouseDown(QObject*,Qt::MouseButton,"
                 "zk::TShiftState,int,int)</signal><receiver>hit</receiver><slot>toggle()</slot></connection>"
                 "<connection><sender>hit</sender><signal>toggled(bool)</signal><receiver>light</receiver>"
                 "<slot>SetEnabled(bool)</slot></connection></connections>");
    ASSERT_TRUE(editor.Open(form));
    const QString saved = editor.Save();
    EXPECT_TRUE(saved.contains("<signal>OnMouseDown(QObject*,Qt::MouseButton,zk::TShiftState,int,int)</signal>"));
    editor.Core()->formWindowManager()->showPreview();
    settle();
    QWidget* preview = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowTitle().contains("Preview"))
            preview = widget;
    }
    ASSERT_TRUE(preview);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(preview));
    settle();
    EXPECT_EQ(FormEditor::TakeMessages(), QStringList());
    for (const char* const icon : {"box", "scene", "canvas", "light", "plane"})
        EXPECT_FALSE(preview->findChild<QWidget*>(icon)->isVisible()) << icon;
    auto* const control = preview->findChild<QWidget*>("control");
    auto* const hit = preview->findChild<QCheckBox*>("hit");
    ASSERT_TRUE(control && hit);

    const auto click = [&](const QPoint& point) {
        QTest::mouseClick(preview->windowHandle(), Qt::LeftButton, {}, control->mapTo(preview, point));
        settle();
    };
    click(QPoint(20, 20));
    EXPECT_FALSE(hit->isChecked()) << "beside the box";
    click(QPoint(110, 118));
    EXPECT_TRUE(hit->isChecked()) << "on the box";
    EXPECT_TRUE(preview->findChild<QWidget*>("light")->property("Enabled").toBool());
    click(QPoint(110, 118));
    EXPECT_FALSE(hit->isChecked()) << "told once for a click";
    EXPECT_FALSE(preview->findChild<QWidget*>("light")->property("Enabled").toBool());
    editor.Core()->formWindowManager()->closeAllPreviews();
    settle();
    EXPECT_EQ(editor.Save().toStdString(), saved.toStdString());
}

// With the mouse, from the widget box to the form.
TEST_F(LiveTest, AComponentIsDroppedOntoTheForm) {
    editor.Form()->clearSelection();
    QAbstractItemView* view = nullptr;
    QModelIndex line;
    for (auto* candidate : editor.Core()->widgetBox()->findChildren<QAbstractItemView*>()) {
        const QModelIndexList found = candidate->model()->match(candidate->model()->index(0, 0), Qt::DisplayRole,
                                                                "TZKOglSphere", 1, Qt::MatchExactly);
        if (!found.isEmpty()) {
            view = candidate;
            line = found.first();
        }
    }
    ASSERT_TRUE(view);
    for (QWidget* parent = view->parentWidget(); parent; parent = parent->parentWidget()) {
        if (auto* const tree = qobject_cast<QTreeWidget*>(parent)) {  // the pages lie one below the other
            tree->expandAll();
            settle();
            tree->scrollToBottom();
            settle();
        }
    }
    ASSERT_FALSE(view->viewport()->visibleRegion().isEmpty());

    QWindow* const window = editor.Window()->windowHandle();
    const auto at = [&](const QWidget* widget, const QPoint& point) { return widget->mapTo(editor.Window(), point); };
    const QPoint from = at(view->viewport(), view->visualRect(line).center());
    QWidget* const form = editor.Form()->mainContainer();
    const QPoint to = at(form, QPoint(340, 200));
    // The drag has an event loop of its own from the press on.
    int step = 0;
    QTimer mouse;
    QObject::connect(&mouse, &QTimer::timeout, window, [&] {
        if (++step <= 10)
            QTest::mouseMove(window, from + (to - from) * step / 10);
        else if (step == 11)
            QTest::mouseRelease(window, Qt::LeftButton, {}, to);
        else
            mouse.stop();
    });
    mouse.start(20);
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !mouse.isActive(); }));
    settle();
    const QWidget* const sphere = editor.Widget("sphere");
    ASSERT_TRUE(sphere);
    EXPECT_EQ(sphere->size(), QSize(76, 46));
    EXPECT_TRUE(QRect(300, 150, 76, 80).contains(sphere->geometry().center()));
    editor.Undo()->undo();
    settle();
    EXPECT_EQ(editor.Widget("sphere"), nullptr);
    editor.Undo()->redo();
    settle();
    EXPECT_TRUE(editor.Widget("sphere"));
}

}  // namespace
}  // namespace zk::test
