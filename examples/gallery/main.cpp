#include "mainwindow.h"
#include "pictures.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QRegularExpression>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>

namespace {

constexpr int success = 0;
constexpr int failure = 1;
constexpr int wrongUse = 2;

void say(std::FILE* stream, const QString& text) {
    std::fputs(qUtf8Printable(text), stream);
    std::fflush(stream);
}

// Not larger than the screen: a picture can be taken only of what lies on it.
void place(QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    window.resize(QSize(1100, 720).boundedTo(screen.size()));
    window.move(screen.center() - window.rect().center());
}

}  // namespace

int main(int argc, char** argv) {
    // Whoever asks for help gets it without a display, too: QApplication would end the program there.
    const bool asksForHelp = std::any_of(
        argv, argv + argc, [](std::string_view argument) { return argument == "--help" || argument == "-h"; });
    const std::unique_ptr<QCoreApplication> application =
        asksForHelp ? std::make_unique<QCoreApplication>(argc, argv) : std::make_unique<QApplication>(argc, argv);
    QCoreApplication::setApplicationName("gallery");

    QCommandLineParser parser;
    parser.setApplicationDescription("Boxes in a window, to look at and to click, and a page of what moves.");
    const QCommandLineOption help({"h", "help"}, "Prints this text.");
    const QCommandLineOption picture("picture", "Writes a picture of the window as a PNG file and exits.", "file");
    const QCommandLineOption size("size",
                                  "With --picture: not the window but what its scene shows, in so many pixels, such as "
                                  "4000x3000; the window stays hidden.",
                                  "width x height");
    const QCommandLineOption pictures("pictures",
                                      "Writes several pictures into a folder, prints their paths and exits.", "folder");
    const QCommandLineOption frames("frames",
                                    "Writes a series of pictures of what moves into a folder, prints their paths and "
                                    "exits.",
                                    "folder");
    const QCommandLineOption count("count", "How many pictures --frames writes, 25 for each second (25).", "number");
    const QCommandLineOption smoke("smoke", "Exits after so many seconds.", "seconds");
    parser.addOptions({help, picture, size, pictures, frames, count, smoke});

    const auto refuse = [](const QString& why) {
        say(stderr, QStringLiteral("gallery: %1\nTry gallery --help.\n").arg(why));
        return wrongUse;
    };
    const bool understood = parser.parse(QCoreApplication::arguments());
    if (asksForHelp) {
        say(stdout, parser.helpText());
        return success;
    }
    if (!understood)
        return refuse(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("nothing is known of \"%1\".").arg(parser.positionalArguments().constFirst()));
    if (int(parser.isSet(picture)) + int(parser.isSet(pictures)) + int(parser.isSet(frames)) > 1)
        return refuse("one picture, several, or a series.");
    bool isNumber = true;
    const int frameCount = parser.isSet(count) ? parser.value(count).toInt(&isNumber) : 25;
    if (!isNumber || frameCount < 1 || frameCount > 9999)
        return refuse(QStringLiteral("\"%1\" is no number of pictures, from 1 to 9999.").arg(parser.value(count)));
    if (parser.isSet(count) && !parser.isSet(frames))
        return refuse("--count goes with --frames.");
    QSize pixels;
    if (parser.isSet(size)) {
        const QRegularExpressionMatch match =
            QRegularExpression("^([0-9]{1,5})x([0-9]{1,5})$").match(parser.value(size));
        pixels = QSize(match.captured(1).toInt(), match.captured(2).toInt());
        if (pixels.isEmpty())
            return refuse(QStringLiteral("\"%1\" is no size in pixels, such as 4000x3000.").arg(parser.value(size)));
        if (!parser.isSet(picture))
            return refuse("--size goes with --picture.");
    }
    const double seconds = parser.isSet(smoke) ? parser.value(smoke).toDouble(&isNumber) : 0;
    if (!isNumber || !(seconds >= 0 && seconds <= 3600))
        return refuse(QStringLiteral("\"%1\" is no number of seconds, from 0 to 3600.").arg(parser.value(smoke)));

    gallery::MainWindow window;
    place(window);
    if (!pixels.isEmpty()) {
        const QString error = gallery::WriteScene(window, pixels, parser.value(picture));
        if (error.isEmpty())
            return success;
        say(stderr, QStringLiteral("gallery: no picture: %1.\n").arg(error));
        return failure;
    }
    window.show();

    if (parser.isSet(picture) || parser.isSet(pictures) || parser.isSet(frames)) {
        QStringList paths;
        const QString error = parser.isSet(picture) ? gallery::WritePicture(window, parser.value(picture))
                              : parser.isSet(pictures)
                                  ? gallery::WritePictures(window, parser.value(pictures), paths)
                                  : gallery::WriteFrames(window, parser.value(frames), frameCount, paths);
        for (const QString& path : paths)
            say(stdout, path + '\n');
        if (error.isEmpty())
            return success;
        say(stderr, QStringLiteral("gallery: no picture: %1.\n").arg(error));
        return failure;
    }
    if (parser.isSet(smoke))
        QTimer::singleShot(int(seconds * 1000), application.get(), &QApplication::quit);
    return QApplication::exec();
}
