#include "glform.h"
#include "mainwindow.h"

#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/_zkogltools.h>

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QScreen>
#include <QSet>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <memory>

using namespace zk;
using zk::test::GlForm;
using zk::test::MessageCatcher;

namespace {

/// The pages of what the examples show.
class Themes : public testing::Test {
  protected:
    Themes() {
        window->setGeometry(20, 20, 1100, 720);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        GlForm::Settle();
    }
    ~Themes() override { EXPECT_EQ(messages.Take(), QStringList()); }

    gallery::ThemePage* show(int index) {
        gallery::ThemePage* page = window->Themes().at(std::size_t(index));
        window->ShowTheme(page);
        GlForm::Settle();
        return page;
    }
    QImage picture(const QWidget* widget) {
        GlForm::Settle();
        const QRect area = widget->contentsRect().translated(widget->mapToGlobal(QPoint(0, 0)));
        return window->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    }
    QPoint inWindow(const QWidget* control, const TXYI& at) {
        return control->mapTo(window.get(), control->contentsRect().topLeft() + QPoint(at.x, at.y));
    }

    MessageCatcher messages;
    std::unique_ptr<gallery::MainWindow> window = std::make_unique<gallery::MainWindow>();
};

}  // namespace

TEST_F(Themes, EveryPageShowsSomethingThatCanBeClicked) {
    int canvases = 0;
    for (int i = 0; i < int(window->Themes().size()); ++i) {
        gallery::ThemePage* page = show(i);
        SCOPED_TRACE(page->Title().toStdString());
        EXPECT_EQ(window->ClickText(), page->Hint());
        const QImage image = picture(page);
        QSet<QRgb> colors;
        for (int y = 0; y < image.height(); y += 2)
            for (int x = 0; x < image.width(); x += 2)
                colors += image.pixel(x, y);
        EXPECT_GT(colors.size(), 4);
        TZkOglCanvas* canvas = page->Canvas();
        if (!canvas)
            continue;
        ++canvases;
        EXPECT_EQ(zk::test::PendingError(*canvas), 0U);
        bool isMet = false;
        for (int y = 60; y < canvas->GetHeight() && !isMet; y += 20) {
            for (int x = 60; x < canvas->GetWidth() && !isMet; x += 20) {
                isMet = canvas->Select(x, y);
                if (isMet)
                    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, inWindow(page->Control(), {x, y}));
            }
        }
        ASSERT_TRUE(isMet);
        ASSERT_TRUE(window->Properties()->Component());
        EXPECT_NE(window->Properties()->Component()->objectName(), "");
        EXPECT_TRUE(window->Properties()->isVisible());
    }
    EXPECT_EQ(canvases, 6);
}

// A key that two have would choose neither of them.
TEST_F(Themes, EveryPageHasAKeyOfItsOwnAndSoHasAllThatIsOnIt) {
    auto* pages = window->findChild<QTabWidget*>("pages");
    EXPECT_EQ(pages->count(), 9);
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        QStringList texts;
        for (int i = 0; i < pages->count(); ++i)
            texts += pages->tabText(i);
        for (const auto* button : window->findChildren<QAbstractButton*>())
            texts += button->isVisible() || button->objectName() == "cancelRecording" ? button->text() : QString();
        for (const auto* label : window->findChildren<QLabel*>())
            texts += label->isVisible() && label->buddy() ? label->text() : QString();
        QMap<QChar, QString> owners;
        for (const QString& text : texts) {
            const qsizetype at = text.indexOf('&');
            if (at < 0)
                continue;
            const QChar key = text[at + 1].toLower();
            EXPECT_FALSE(owners.contains(key)) << owners[key].toStdString() << " and " << text.toStdString();
            owners[key] = text;
        }
        EXPECT_GE(owners.size(), 10);
    }
}

TEST_F(Themes, AShapeThatIsDraggedHasItsPlaceInThePanel) {
    gallery::ThemePage* page = show(2);
    auto* ball = dynamic_cast<TZKOglSphere*>(page->Canvas()->Scenes().front()->GetZkShape(2));
    ASSERT_TRUE(ball);
    const TXYZ start = ball->GetTranslation();
    const QPoint from = inWindow(page->Control(), page->Canvas()->WtoPixel(start));
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, from);
    QTest::mouseMove(window->windowHandle(), from + QPoint(-60, 20));
    GlForm::Settle();
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, from + QPoint(-60, 20));
    GlForm::Settle();
    EXPECT_LT(ball->GetTranslation().x, start.x - 0.3);
    EXPECT_EQ(window->Properties()->Component(), ball);
    EXPECT_EQ(qobject_cast<QLineEdit*>(window->Properties()->EditorOf("TransformBy"))->text(), ball->Get_translation());
}

TEST_F(Themes, WhatMovesIsClickedToo) {
    TTimer::DriveTime(true);
    window->ShowMotion(true);
    GlForm::Settle();
    gallery::MotionPage* page = window->Motion();
    const TXYI at = page->Canvas()->WtoPixel(page->Balloon()->GetTranslation());
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, inWindow(page->Control(), at));
    EXPECT_EQ(window->Properties()->Component(), page->Balloon());
    const QString before = qobject_cast<QLineEdit*>(window->Properties()->EditorOf("TransformBy"))->text();
    TTimer::AdvanceTime(1000);
    GlForm::Settle();
    EXPECT_NE(qobject_cast<QLineEdit*>(window->Properties()->EditorOf("TransformBy"))->text(), before);
    TTimer::DriveTime(false);
}

TEST_F(Themes, GoWithTheWindowWhileTheMouseDrags) {
    gallery::ThemePage* page = show(2);
    auto* shape = dynamic_cast<TCustomShape*>(page->Canvas()->Scenes().front()->GetZkShape(2));
    const QPoint from = inWindow(page->Control(), page->Canvas()->WtoPixel(shape->GetTranslation()));
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, from);
    delete shape;
    QTest::mouseMove(window->windowHandle(), from + QPoint(20, 20));
    GlForm::Settle();
    window.reset();
    GlForm::Settle();
}
