#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

#include <stdexcept>

// What the tests see of an example that runs: they are called in the place of its event loop, when its window is up.
namespace zk::test {

/// The window of the example.
QWidget* ExampleWindow();

/// A child of the window, or the window itself, by its class.
template <class Widget>
Widget* InExample() {
    if (auto* self = qobject_cast<Widget*>(ExampleWindow()))
        return self;
    if (auto* child = ExampleWindow()->findChild<Widget*>())
        return child;
    throw std::runtime_error("the example has none of these");
}

/// What the user sees of a widget, or of the picture alone in a control.
QImage SeenOf(const QWidget* widget);

/// Real events of the left button, at a place of a widget, or of the picture alone in a control.
void Press(const QWidget* widget, const QPoint& at);
void MoveTo(const QWidget* widget, const QPoint& at);
void Release(const QWidget* widget, const QPoint& at);

}  // namespace zk::test
