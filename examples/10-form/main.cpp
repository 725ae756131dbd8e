// A form without code: all that the window shows and does stands in scene.ui, which Qt Designer edits. A click on the
// box switches the light; the controls beside the picture change the view. Any other such file can be named as
// argument.

#include <zk/forms.h>

#include <QApplication>

#include <memory>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    zk::FormLoader loader;
    const std::unique_ptr<QWidget> window(loader.LoadFile(argc > 1 ? argv[1] : ":/scene.ui"));
    if (!window)
        return 1;  // a message has said why
    window->show();
    return QApplication::exec();
}
