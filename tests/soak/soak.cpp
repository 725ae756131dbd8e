// The gallery in use for a long time: what moves moves, boxes are clicked, the window is resized, forms are opened and
// closed. Every now and then, always with the same things on the screen, it writes down what the process holds, and at
// the end it fails if that has grown, or if anything was complained about on the way.
//
// Time is driven, so a round is 40 milliseconds of the animation however long the machine takes for it.

#include "mainwindow.h"

#include <zk/_zkxyz/message.h>
#include <zk/forms.h>
#include <zk/host/timer.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

constexpr int roundLength = 40;  // milliseconds of the animation
constexpr QSize windowSize(1000, 700);
// Room for the caches of Qt and of the driver, which come and go by half a megabyte and more. A leak of a hundred bytes
// a round is more than that within an hour; the figures that are printed show it earlier.
constexpr qint64 heapRoom = 1536 * 1024;

// What the process holds; -1 where the system does not tell.
struct Holdings {
    qint64 heap = -1;      // bytes in blocks that are not free
    qint64 resident = -1;  // bytes of memory
    qint64 handles = -1;   // open files, sockets and the like
};

qint64 residentMemory() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').constFirst().toLongLong() * 1024;
    }
    return -1;
}

Holdings holdings() {
    Holdings now;
#if defined(__GLIBC__)
    const struct mallinfo2 heap = mallinfo2();
    now.heap = qint64(heap.uordblks + heap.hblkhd);
#endif
    now.resident = residentMemory();
    const QDir handles("/proc/self/fd");
    if (handles.exists())
        now.handles = handles.entryList(QDir::NoDotAndDotDot | QDir::System | QDir::AllEntries).size();
    return now;
}

struct Counts {
    qint64 rounds = 0, clicks = 0, sizes = 0, forms = 0, complaints = 0;
};
Counts counts;

void complain(const QString& text) {
    // The first few say what is wrong, the others how bad it is.
    if (++counts.complaints <= 20)
        std::fprintf(stderr, "soak: %s\n", qUtf8Printable(text));
}

class Soak {
  public:
    Soak(bool everything, unsigned seed) : everything_(everything), random_(seed) {
        window_.resize(windowSize);
        window_.show();
        window_.ShowMotion(true);
        settle();
    }

    void Round() {
        zk::TTimer::AdvanceTime(roundLength);
        QCoreApplication::processEvents();
        const qint64 round = ++counts.rounds;
        if (!everything_)
            return;
        if (round % 2 == 0)
            click();
        if (round % 10 == 0)
            resize();
        if (round % 25 == 0)
            window_.ShowMotion((round / 25) % 4 != 0);
        if (round % 50 == 0)
            openForm();
    }

    // The same picture each time, whatever was done before.
    Holdings Sample() {
        window_.ShowMotion(true);
        window_.resize(windowSize);
        settle();
        return holdings();
    }

  private:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }

    // Deleted later is deleted now, and what the window system has to say has been said.
    static void settle() {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
    }

    static void send(QWidget* control, QEvent::Type type, const QPointF& at, Qt::MouseButton button) {
        const bool down = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, at, control->mapToGlobal(at), button, down ? button : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(control, &event);
    }

    void click() {
        zk::TZKOglControl* control = window_.Control()->isVisible() ? window_.Control() : window_.Motion()->Control();
        const QPointF at(upTo(control->width()), upTo(control->height()));
        const Qt::MouseButton button = upTo(3) ? Qt::LeftButton : Qt::RightButton;
        send(control, QEvent::MouseMove, at, Qt::NoButton);
        send(control, QEvent::MouseButtonPress, at, button);
        send(control, QEvent::MouseButtonRelease, at, button);
        ++counts.clicks;
    }

    void resize() {
        window_.resize(700 + upTo(400), 500 + upTo(300));
        QCoreApplication::processEvents();
        ++counts.sizes;
    }

    void openForm() {
        zk::FormLoader loader;
        const std::unique_ptr<QWidget> form(loader.LoadFile(ZKOGL_SOAK_FORM));
        if (!form) {
            complain("the form could not be loaded");
            return;
        }
        form->show();
        settle();
        ++counts.forms;
    }

    const bool everything_;
    std::mt19937 random_;
    gallery::MainWindow window_;
};

void say(const char* when, const Holdings& now) {
    std::printf("%s: %lld rounds, %lld clicks, %lld sizes, %lld forms; heap %.3f MB, memory %.1f MB, %lld handles\n",
                when, counts.rounds, counts.clicks, counts.sizes, counts.forms, double(now.heap) / 1e6,
                double(now.resident) / 1e6, now.handles);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("The gallery in use for a long time; fails if it holds more and more.");
    parser.addHelpOption();
    const QCommandLineOption minutes("minutes", "Ends after so many minutes.", "number");
    const QCommandLineOption rounds("rounds", "Ends after so many rounds of 40 ms of the animation (600).", "number",
                                    "600");
    const QCommandLineOption animation("animation", "Nothing but the animation.");
    const QCommandLineOption seed("seed", "Of what is done at random (1).", "number", "1");
    parser.addOptions({minutes, rounds, animation, seed});
    parser.process(application);

    zk::SetMessageHandler([](const std::string& text) { complain(QString::fromStdString(text)); });
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        // Without a runtime folder of the desktop Qt says so once.
        if (type != QtDebugMsg && type != QtInfoMsg && !text.contains("XDG_RUNTIME_DIR"))
            complain(text);
    });
    zk::TTimer::DriveTime(true);

    const double minutesAsked = parser.value(minutes).toDouble();
    const qint64 roundsAsked = parser.value(rounds).toLongLong();
    std::vector<Holdings> samples;
    {
        Soak soak(!parser.isSet(animation), parser.value(seed).toUInt());
        QElapsedTimer clock;
        clock.start();
        constexpr int sampleCount = 12;
        qint64 done = 0;
        const auto progress = [&] {
            return minutesAsked > 0 ? double(clock.elapsed()) / (minutesAsked * 60000)
                                    : double(done) / double(roundsAsked);
        };
        for (int sample = 1; sample <= sampleCount; ++sample) {
            for (; progress() < double(sample) / sampleCount; ++done)
                soak.Round();
            samples.push_back(soak.Sample());
            say(qPrintable(QString("%1 min").arg(double(clock.elapsed()) / 60000, 0, 'f', 1)), samples.back());
        }
    }

    // The first third warms up. The least that was held in each of the others: now and then the driver still has
    // something of the last picture when the sample is taken.
    const auto least = [&samples](std::size_t third, qint64 Holdings::*what) {
        const std::size_t length = samples.size() / 3;
        qint64 smallest = samples[third * length].*what;
        for (std::size_t i = third * length; i < (third + 1) * length; ++i)
            smallest = std::min(smallest, samples[i].*what);
        return smallest;
    };
    const qint64 grown = least(2, &Holdings::heap) - least(1, &Holdings::heap);
    const qint64 handles = least(2, &Holdings::handles) - least(1, &Holdings::handles);
    std::printf("from the second third to the last one: heap %+lld bytes, handles %+lld; %lld complaints\n", grown,
                handles, counts.complaints);
    return grown <= heapRoom && handles <= 0 && counts.complaints == 0 ? 0 : 1;
}
