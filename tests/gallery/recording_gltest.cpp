#include "glform.h"
#include "mainwindow.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;
using zk::test::GlForm;
using zk::test::MessageCatcher;

namespace {

class Recording : public testing::Test {
  protected:
    Recording() {
        window->setGeometry(20, 20, 800, 500);
        window->ShowMotion(true);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        GlForm::Settle();
    }
    ~Recording() override {
        window.reset();
        EXPECT_FALSE(TTimer::IsTimeDriven()) << "the time is the clock's again";
        EXPECT_EQ(messages.Take(), QStringList());
    }

    gallery::RecordBar* bar() { return window->Recording(); }
    QString folder() { return place.filePath("pictures"); }
    QStringList files() {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    void waitForEnd() {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !bar()->IsRecording(); }, 60000));
    }

    QTemporaryDir place;
    MessageCatcher messages;
    std::unique_ptr<gallery::MainWindow> window = std::make_unique<gallery::MainWindow>();
};

}  // namespace

TEST_F(Recording, WritesAPictureForEachStepOfTheAnimation) {
    const double angle = window->Motion()->Ride()->Angle();
    bar()->Record(folder(), 4);
    EXPECT_TRUE(bar()->progress->isVisible());
    EXPECT_FALSE(bar()->record->isVisible());
    waitForEnd();
    EXPECT_EQ(files(), QStringList({"frame-0001.png", "frame-0002.png", "frame-0003.png", "frame-0004.png"}));
    EXPECT_NEAR(window->Motion()->Ride()->Angle(), angle + 4 * 1.2, 1e-9) << "a tick for each picture";
    EXPECT_EQ(window->ClickText(), QStringLiteral("4 of 4 pictures are in %1").arg(folder()));
    EXPECT_FALSE(bar()->progress->isVisible());
    EXPECT_TRUE(bar()->record->isVisible());
    const QSize size = window->Motion()->Control()->contentsRect().size();
    QImage before;
    for (const QString& file : files()) {
        const QImage image(QDir(folder()).filePath(file));
        EXPECT_EQ(image.size(), size);
        EXPECT_NE(image, before);
        before = image;
    }
}

TEST_F(Recording, CanBeCancelledByTheMouseWhileItRuns) {
    bar()->Record(folder(), 5000);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar()->progress->value() >= 3; }, 60000));
    EXPECT_EQ(bar()->progress->maximum(), 5000);
    const QPoint at = bar()->cancel->mapTo(window.get(), bar()->cancel->rect().center());
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, at);
    EXPECT_FALSE(bar()->IsRecording());
    const QStringList left = files();
    EXPECT_GE(left.size(), 3);
    EXPECT_EQ(window->ClickText(),
              QStringLiteral("%1 of 5000 pictures are in %2 (cancelled)").arg(left.size()).arg(folder()));
    for (const QString& file : left)
        EXPECT_FALSE(QImage(QDir(folder()).filePath(file)).isNull()) << file.toStdString();
    GlForm::Settle();
    EXPECT_EQ(files(), left) << "nothing comes after it";
}

TEST_F(Recording, SaysWhatWentWrong) {
    QFile file(folder());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    bar()->Record(folder(), 3);
    EXPECT_FALSE(bar()->IsRecording());
    EXPECT_EQ(window->ClickText(),
              QStringLiteral("0 of 3 pictures are in %1 (%1: the folder could not be made)").arg(folder()));
    EXPECT_TRUE(bar()->record->isVisible());
}

TEST_F(Recording, AFileThatCannotBeWrittenEndsIt) {
    QDir().mkpath(QDir(folder()).filePath("frame-0002.png"));  // a folder is in the way
    bar()->Record(folder(), 3);
    waitForEnd();
    EXPECT_TRUE(window->ClickText().startsWith(QStringLiteral("1 of 3 pictures are in %1 (").arg(folder())))
        << window->ClickText().toStdString();
    EXPECT_EQ(files(), QStringList({"frame-0001.png", "frame-0002.png"}));
}

TEST_F(Recording, TheButtonAsksWhereToAndHowMany) {
    QTest::mouseClick(bar()->record, Qt::LeftButton);
    auto* dialog = bar()->findChild<QDialog*>();
    ASSERT_TRUE(dialog);
    auto* where = dialog->findChild<QLineEdit*>("folder");
    auto* ok = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    where->clear();
    EXPECT_FALSE(ok->isEnabled());
    QTest::keyClicks(where, folder());
    dialog->findChild<QSpinBox*>("count")->setValue(2);
    QTest::mouseClick(ok, Qt::LeftButton);
    waitForEnd();
    EXPECT_EQ(files().size(), 2);

    QTest::mouseClick(bar()->record, Qt::LeftButton);
    GlForm::Settle();
    dialog = bar()->findChild<QDialog*>();
    ASSERT_TRUE(dialog);
    dialog->reject();
    EXPECT_FALSE(bar()->IsRecording());
}

TEST_F(Recording, RecordsTheOtherPagesAsWell) {
    for (gallery::ThemePage* page : {window->Themes().front(), window->Themes().back()}) {
        window->ShowTheme(page);
        GlForm::Settle();
        bar()->Record(folder(), 2);
        waitForEnd();
        const QImage first(QDir(folder()).filePath("frame-0001.png"));
        const QImage second(QDir(folder()).filePath("frame-0002.png"));
        EXPECT_FALSE(first.isNull());
        EXPECT_EQ(first == second, page->Canvas() != nullptr) << "the planets move, the balls do not";
    }
}

TEST_F(Recording, GoesWithTheWindow) {
    bar()->Record(folder(), 1000);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar()->progress->value() >= 1; }, 60000));
    window.reset();
    GlForm::Settle();
    for (const QString& file : files())
        EXPECT_FALSE(QImage(QDir(folder()).filePath(file)).isNull()) << file.toStdString();
}
