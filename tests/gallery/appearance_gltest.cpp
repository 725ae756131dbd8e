#include "glform.h"
#include "mainwindow.h"

#include <zk/_zkoglextools/navigator.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

using namespace zk;
using zk::test::GlForm;
using zk::test::MessageCatcher;

namespace {

/// As desktops with dark colours have it.
QPalette darkPalette() {
    QPalette palette(QColor(49, 54, 59));
    palette.setColor(QPalette::Base, QColor(35, 38, 41));
    palette.setColor(QPalette::AlternateBase, QColor(49, 54, 59));
    for (QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText, QPalette::BrightText})
        palette.setColor(role, QColor(239, 240, 241));
    palette.setColor(QPalette::ToolTipBase, QColor(49, 54, 59));
    palette.setColor(QPalette::PlaceholderText, QColor(161, 169, 177));
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    palette.setColor(QPalette::HighlightedText, QColor(35, 38, 41));
    return palette;
}

// Relative luminance and contrast as the guidelines for accessible web content have them: from 1 to 21, and 4.5 is
// enough for small text.
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

QColor mostFrequent(const QImage& image) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    return std::max_element(counts.begin(), counts.end(),
                            [](const auto& a, const auto& b) { return a.second < b.second; })
        ->first;
}

/// How far the pixel that stands out most stands out.
double bestContrast(const QImage& image) {
    const QColor ground = mostFrequent(image);
    double best = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            best = std::max(best, contrast(ground, image.pixelColor(x, y)));
    return best;
}

/// The gallery under colours or a direction of its own, which the program has back afterwards.
class Appearance : public testing::Test {
  protected:
    ~Appearance() override {
        window.reset();
        QApplication::setPalette(paletteBefore);
        QApplication::setLayoutDirection(Qt::LeftToRight);
        EXPECT_EQ(messages.Take(), QStringList());
    }
    void show() {
        window = std::make_unique<gallery::MainWindow>();
        window->setGeometry(20, 20, 1100, 720);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        GlForm::Settle();
    }
    /// What the user sees of a widget.
    QImage pictureOf(const QWidget* widget) {
        GlForm::Settle();
        const QRect area(widget->mapTo(window.get(), QPoint(0, 0)), widget->size());
        const QImage picture = window->screen()->grabWindow(window->winId()).toImage();
        keep(picture);
        return picture.copy(area);
    }
    QImage scene() {
        const QWidget* control = window->Control();
        return pictureOf(control).copy(control->contentsRect());
    }
    void click(const QPoint& at) {
        const QWidget* control = window->Control();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          control->mapTo(window.get(), control->contentsRect().topLeft() + at));
        GlForm::Settle();
    }
    void clickBox(const char* name) {
        click(window->PixelOf(window->Shapes()->MiddleOf(int(window->Shapes()->Names().indexOf(QLatin1String(name))))));
    }
    QWidget* editorOf(const char* path) {
        QWidget* editor = window->Properties()->EditorOf(QLatin1String(path));
        if (!editor)
            throw std::runtime_error(path);
        return editor;
    }
    QPlainTextEdit* code() { return window->findChild<QPlainTextEdit*>("code"); }

    /// The left edge within the window.
    int leftOf(const QWidget* widget) const { return widget->mapTo(window.get(), QPoint(0, 0)).x(); }

    /// With ZKOGL_LOOK=<folder> in the environment, the last picture of each test goes there, for somebody's eyes.
    static void keep(const QImage& picture) {
        const QString folder = qEnvironmentVariable("ZKOGL_LOOK");
        static int number = 0;
        if (!folder.isEmpty())
            picture.save(QDir(folder).filePath(
                QStringLiteral("%1-%2.png")
                    .arg(QString::fromLatin1(testing::UnitTest::GetInstance()->current_test_info()->name()))
                    .arg(++number)));
    }

    MessageCatcher messages;
    QPalette paletteBefore = QApplication::palette();
    std::unique_ptr<gallery::MainWindow> window;
};

class DarkColors : public Appearance {
  protected:
    DarkColors() {
        QApplication::setPalette(darkPalette());
        show();
    }

    /// Every widget that shows text on the page, with the contrast that its text has on the screen.
    void expectTextsToStandOut() {
        int texts = 0;
        const QImage whole = pictureOf(window.get());
        for (const QWidget* widget : window->findChildren<QWidget*>()) {
            const auto* label = qobject_cast<const QLabel*>(widget);
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            const auto* line = qobject_cast<const QLineEdit*>(widget);
            const auto* box = qobject_cast<const QComboBox*>(widget);
            const bool hasText = (label && !label->text().trimmed().isEmpty()) ||
                                 (button && button->text().length() > 1) || (line && !line->text().isEmpty()) || box;
            const QRect seen = widget->visibleRegion().boundingRect();
            if (!hasText || !widget->isVisible() || !widget->isEnabled() || seen != widget->rect())
                continue;
            const QImage image = whole.copy(QRect(widget->mapTo(window.get(), QPoint(0, 0)), widget->size()));
            EXPECT_GT(bestContrast(image), 4.5)
                << widget->metaObject()->className() << " " << qPrintable(widget->objectName()) << " "
                << qPrintable(label    ? label->text()
                              : button ? button->text()
                                       : QString());
            EXPECT_LT(luminance(mostFrequent(image)), 0.2)
                << widget->metaObject()->className() << " " << qPrintable(widget->objectName()) << " is no dark one";
            ++texts;
        }
        EXPECT_GT(texts, 1);
    }
};

class RightToLeft : public Appearance {
  protected:
    RightToLeft() { QApplication::setLayoutDirection(Qt::RightToLeft); }
};

}  // namespace

TEST_F(DarkColors, EveryTextOfTheFirstPageStandsOut) {
    expectTextsToStandOut();
}

TEST_F(DarkColors, EveryTextOfThePropertiesStandsOut) {
    clickBox("Cube");
    expectTextsToStandOut();
    EXPECT_GT(bestContrast(pictureOf(code())), 4.5) << "that nothing has been changed yet";
    window->Properties()->findChild<QScrollArea*>()->verticalScrollBar()->setValue(400);
    expectTextsToStandOut();
    editorOf("Length")->setFocus();
    QTest::keyClick(editorOf("Length"), Qt::Key_Up);
    EXPECT_FALSE(window->Properties()->Code().isEmpty());
    EXPECT_GT(bestContrast(pictureOf(code()->viewport())), 4.5);
}

TEST_F(DarkColors, EveryTextOfTheOtherPagesStandsOut) {
    window->ShowMotion(true);
    expectTextsToStandOut();
    for (gallery::ThemePage* page : window->Themes()) {
        SCOPED_TRACE(qPrintable(page->Title()));
        window->ShowTheme(page);
        expectTextsToStandOut();
    }
}

TEST_F(DarkColors, TheNavigatorsCubeIsSeen) {
    window->ShowMotion(true);
    auto* navigator = window->Motion()->findChild<TZKOglNav*>();
    ASSERT_TRUE(navigator);
    EXPECT_GT(bestContrast(pictureOf(navigator)), 4.5);
}

TEST_F(DarkColors, TheControlsFrameIsSeen) {
    TZKOglControl control;
    control.SetBevelKind(bevel::bkTile);
    control.SetBevelWidth(4);
    control.resize(200, 100);
    const QImage picture = control.grab().toImage();
    const QColor ground = darkPalette().color(QPalette::Window);
    const QColor left = picture.pixelColor(1, 50);
    const QColor right = picture.pixelColor(198, 50);
    EXPECT_GT(luminance(left), luminance(ground)) << "the light falls from the upper left, as on everything else";
    EXPECT_LT(luminance(right), luminance(ground));
    EXPECT_GT(contrast(left, right), 2);
}

TEST_F(RightToLeft, ThePanelsStandOnTheLeft) {
    show();
    EXPECT_LT(leftOf(window->Panel()), leftOf(window->Control()));
    const QWidget* axis = window->Panel()->axis;
    for (const QLabel* label : window->Panel()->findChildren<QLabel*>()) {
        if (label->text() == "about") {
            EXPECT_GT(leftOf(label), leftOf(axis));
        }
    }
    clickBox("Cube");
    EXPECT_LT(leftOf(window->Properties()), leftOf(window->Control()));
}

TEST_F(RightToLeft, ThePictureIsNotMirrored) {
    QApplication::setLayoutDirection(Qt::LeftToRight);
    show();
    const QImage before = scene();
    QApplication::setLayoutDirection(Qt::RightToLeft);
    GlForm::Settle();
    ASSERT_LT(leftOf(window->Panel()), leftOf(window->Control()));
    EXPECT_EQ(scene(), before);
    EXPECT_NE(scene().mirrored(true, false), before);
}

TEST_F(RightToLeft, ClicksMeetWhatIsSeen) {
    show();
    for (const char* name : {"Cube", "Tower"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(window->Shapes()->Names().contains(QLatin1String(name)));
        clickBox(name);
        EXPECT_EQ(window->ClickText(), QStringLiteral("Clicked: %1 (left)").arg(QLatin1String(name)));
    }
}

TEST_F(RightToLeft, CodeAndValuesReadFromLeftToRight) {
    show();
    clickBox("Cube");
    EXPECT_EQ(code()->layoutDirection(), Qt::LeftToRight);
    EXPECT_EQ(editorOf("TransformBy")->layoutDirection(), Qt::LeftToRight);
    pictureOf(window.get());
}

TEST_F(RightToLeft, TheNavigatorsCubeIsNotMirrored) {
    QApplication::setLayoutDirection(Qt::LeftToRight);
    show();
    window->ShowMotion(true);
    const auto* navigator = window->Motion()->findChild<TZKOglNav*>();
    const QImage before = pictureOf(navigator);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(pictureOf(navigator), before);
}
