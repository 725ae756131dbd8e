#include "pictures.h"

#include "frames.h"
#include "mainwindow.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

using namespace zk;

namespace gallery {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("gallery::Pictures", text);
}

void runEventLoopFor(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

// Windows are mapped and painted some time after show(). Without a picture on the screen there is nothing to take.
bool waitUntilShown(MainWindow& window) {
    if (!window.isVisible())
        window.show();
    window.raise();
    QDeadlineTimer deadline(10000);
    while (!window.windowHandle()->isExposed()) {
        if (deadline.hasExpired())
            return false;
        runEventLoopFor(10);
    }
    runEventLoopFor(200);
    return true;
}

// A press and a release of the left button where the middle of a box is seen.
void click(MainWindow& window, int index) {
    TZKOglControl* control = window.Control();
    const QPointF position = control->contentsRect().topLeft() + window.PixelOf(window.Shapes()->MiddleOf(index));
    const QPointF onScreen = control->mapToGlobal(position);
    QMouseEvent press(QEvent::MouseButtonPress, position, onScreen, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, position, onScreen, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(control, &press);
    QApplication::sendEvent(control, &release);
}

QImage fromScreen(MainWindow& window, QString& whyNot) {
    // What OpenGL draws is not in QWidget::grab().
    const QImage picture = window.screen()->grabWindow(window.winId()).toImage();
    if (picture.isNull())
        whyNot = tr("this desktop gives no pictures of its windows");
    return picture;
}

}  // namespace

QImage PictureOf(MainWindow& window, QString& whyNot) {
    if (!waitUntilShown(window)) {
        whyNot = tr("the window did not come up on the screen");
        return {};
    }
    return fromScreen(window, whyNot);
}

QString WritePicture(MainWindow& window, const QString& path) {
    QString whyNot;
    const QImage picture = PictureOf(window, whyNot);
    return picture.isNull() ? whyNot : WriteWhole(picture, path);
}

QString WriteScene(MainWindow& window, const QSize& size, const QString& path) {
    constexpr double shownSide = 800;
    const double ratio = std::max(size.width(), size.height()) / shownSide;
    const QImage picture = window.Canvas()->Picture(size, ratio);
    return picture.isNull() ? tr("OpenGL gave none of that size") : WriteWhole(picture, path);
}

QString WritePictures(MainWindow& window, const QString& folder, QStringList& paths) {
    if (!QDir().mkpath(folder))
        return tr("%1: the folder could not be made").arg(folder);
    const DrivenTime driven;
    SidePanel* panel = window.Panel();
    std::vector<std::pair<QString, std::function<void()>>> views = {
        {"1-overview", [] {}},
        {"2-perspective", [panel] { panel->angle->SetValue(28); }},
        {"3-zoomed",
         [panel] {
             panel->zoom->SetValue(1.6);
             panel->moveX->SetValue(-1.8);
         }},
        {"4-rotated",
         [panel] {
             panel->angle->SetValue(20);
             panel->rotation->SetValue(70);
         }},
        {"5-clicked",
         [&window, panel] {
             panel->angle->SetValue(24);
             click(window, int(window.Shapes()->Names().indexOf("Cube")));
         }},
        {"6-motion",
         [&window] {
             window.ShowMotion(true);
             TTimer::AdvanceTime(1500);
         }},
    };
    for (ThemePage* page : window.Themes()) {
        const QString name = page->Title().remove(QLatin1Char('&')).toLower();
        views.emplace_back(QStringLiteral("%1-%2").arg(views.size() + 1).arg(name),
                           [&window, page] { window.ShowTheme(page); });
    }
    for (const auto& [name, show] : views) {
        window.Reset();
        show();
        const QString path = QDir(folder).filePath(name + QStringLiteral(".png"));
        if (const QString error = WritePicture(window, path); !error.isEmpty())
            return error;
        paths += path;
    }
    return {};
}

QString WriteFrames(MainWindow& window, const QString& folder, int count, QStringList& paths) {
    FrameSeries series(folder);
    if (QString error = series.Begin(); !error.isEmpty())
        return error;
    window.ShowMotion(true);
    if (!waitUntilShown(window))
        return tr("the window did not come up on the screen");
    QString error;
    for (int i = 0; i < count && error.isEmpty(); ++i) {
        series.Advance();
        runEventLoopFor(20);  // until the navigator and what the window system paints are there, too
        const QImage picture = fromScreen(window, error);
        if (!picture.isNull())
            error = series.Write(picture);
    }
    paths += series.Paths();
    return error;
}

}  // namespace gallery
