#include "exampledriver.h"

#include "glform.h"

#include <zk/host/timer.h>

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <vector>

namespace zk::test {

QWidget* ExampleWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible())
            return widget;
    throw std::runtime_error("the example shows no window");
}

QImage SeenOf(const QWidget* widget) {
    GlForm::Settle();
    const QRect area = widget->contentsRect().translated(widget->mapToGlobal(QPoint(0, 0)));
    return widget->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
}

namespace {

QPoint inWindow(const QWidget* widget, const QPoint& at) {
    return widget->mapTo(ExampleWindow(), widget->contentsRect().topLeft() + at);
}

}  // namespace

void Press(const QWidget* widget, const QPoint& at) {
    QTest::mousePress(ExampleWindow()->windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow(widget, at));
}

void MoveTo(const QWidget* widget, const QPoint& at) {
    QTest::mouseMove(ExampleWindow()->windowHandle(), inWindow(widget, at));
    GlForm::Settle();
}

void Release(const QWidget* widget, const QPoint& at) {
    QTest::mouseRelease(ExampleWindow()->windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow(widget, at));
    GlForm::Settle();
}

}  // namespace zk::test

// The example's own `main` calls this one instead of Qt's, as a program's functions come before those of its libraries.
// So what is tested is the program as the user builds it, and nothing of the tests stands in its source.
int QApplication::exec() {
    using namespace zk::test;
    zk::TTimer::DriveTime(true);
    const QStringList texts = arguments();
    std::vector<QByteArray> bytes;
    for (const QString& text : texts)
        bytes.push_back(text.toLocal8Bit());
    std::vector<char*> words;
    for (QByteArray& word : bytes)
        words.push_back(word.data());
    int count = int(words.size());
    words.push_back(nullptr);
    testing::InitGoogleTest(&count, words.data());
    testing::UnitTest& tests = *testing::UnitTest::GetInstance();

    const MessageCatcher messages;
    ExampleWindow()->move(20, 20);
    if (!QTest::qWaitForWindowExposed(ExampleWindow()))
        return 1;
    GlForm::Settle();
    const int result = RUN_ALL_TESTS();
    for (const QString& message : messages.Texts())
        std::fprintf(stderr, "a message: %s\n", qUtf8Printable(message));
    if (tests.test_to_run_count() == 0)
        std::fprintf(stderr, "no test was run\n");
    return result != 0 || !messages.Texts().isEmpty() || tests.test_to_run_count() == 0 ? 1 : 0;
}
