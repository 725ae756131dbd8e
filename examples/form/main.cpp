// A form without code: everything that the window shows and does stands in a .ui file, which is read while the program
// runs. A click on the box switches the light; the controls beside the picture change the view. Nothing is connected
// here.
//
//     form                  the form of this example, scene.ui
//     form FILE             any other one
//     form --picture FILE   a picture of it

#include <zk/forms.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QScreen>
#include <QTimer>

#include <cstdio>
#include <memory>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption picture("picture", "Writes a picture of the window as a PNG file and exits.", "file");
    parser.addOption(picture);
    parser.addPositionalArgument("form", "The form to show; that of this example if none is named.", "[form]");
    parser.addHelpOption();
    parser.process(application);

    zk::FormLoader loader;
    loader.SetTelling(false);
    const QString file = parser.positionalArguments().value(0, QStringLiteral(":/scene.ui"));
    const std::unique_ptr<QWidget> window(loader.LoadFile(file));
    for (const zk::FormFault& fault : loader.Faults())
        std::fprintf(stderr, "%s\n", qUtf8Printable(fault.Text()));
    if (!window)
        return 1;
    window->show();
    bool written = true;
    if (parser.isSet(picture))
        QTimer::singleShot(500, &application, [&] {
            written = window->screen()->grabWindow(window->winId()).save(parser.value(picture), "PNG");
            QApplication::quit();
        });
    const int result = QApplication::exec();
    return written ? result : 1;
}
