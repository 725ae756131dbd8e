// A box that travels an ellipse. The frame that `TEllipseWay` computes says where the box is and which way it heads; a
// timer moves the parameter on.
//
//     ellipse                                  until the window is closed
//     ellipse --at 0.25 --picture file.png     a picture of it a quarter of the way round

#include <zk/_zkdevice.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>
#include <zk/_zkxyarrays.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <cmath>
#include <cstdio>
#include <numbers>

namespace {

constexpr zk::TXYZ size{1.2, 0.6, 0.6};  // along its way, across it, up

/// Puts the box into the frame: its middle at the origin, its length along the first axis.
void place(zk::TZKOglBox& box, const zk::TBAse& frame) {
    const zk::ChangeBracket bracket(box.GetZkOglcanvas());
    const double heading = std::atan2(frame.XAxis.y, frame.XAxis.x);
    const zk::TXYZ middle = zk::Add(zk::Add(zk::Mul(frame.XAxis, size.x / 2), zk::Mul(frame.YAxis, size.y / 2)),
                                    zk::Mul(frame.ZAxis, size.z / 2));
    box.Setdrehwinkel(heading * 180.0 / std::numbers::pi);  // about the z axis, which is where a new shape's line is
    box.Settranslation(zk::Sub(frame.Origin, middle));
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption at("at", "Starts so far round, from 0 to 1.", "part", "0");
    const QCommandLineOption picture("picture", "Writes a picture of the window as a PNG file and exits.", "file");
    parser.addOptions({at, picture});
    parser.addHelpOption();
    parser.process(application);

    QWidget window;
    window.setWindowTitle("A box on an ellipse");
    window.resize(480, 360);
    auto* control = new zk::TZKOglControl(&window);
    control->SetBevelKind(zk::bevel::bkNone);
    control->setGeometry(window.rect());
    auto* canvas = new zk::TZkOglCanvas(&window);
    canvas->SetWinControl(control);
    canvas->SetColor(0x402000);

    auto* scene = new zk::TZKOglScene(&window);
    scene->SetZkOglCanvas(canvas);
    auto* box = new zk::TZKOglBox(&window);
    box->SetA(size.x);
    box->SetB(size.y);
    box->SetC(size.z);
    box->getAttributes()->getMaterial()->SetEmission(0x0080FF);
    box->SetDisplayList(scene);

    auto* way = new zk::TEllipseWay(&window);
    way->SetA(5);  // centimetres
    way->SetB(3);
    way->SetPAram(parser.value(at).toDouble());
    place(*box, way->Base());

    auto* sequencer = new zk::TZkOglSequencer(&window);
    sequencer->SetInterval(20);  // milliseconds
    auto* timer = new zk::TZkOglTimer(&window);
    timer->SetIntervals(1);
    timer->SetSequencer(sequencer);
    QObject::connect(timer, &zk::TZkOglTimer::Ontimer, box, [box, way] {
        way->SetPAram(way->GetParam() + 0.004);  // runs on for ever: `Cyclic` wraps it
        place(*box, way->Base());
    });

    window.show();
    if (parser.isSet(picture)) {
        QTimer::singleShot(500, &window, [&] {
            const QPixmap seen = window.screen()->grabWindow(window.winId());
            if (!seen.save(parser.value(picture)))
                std::fprintf(stderr, "%s cannot be written\n", qPrintable(parser.value(picture)));
            QCoreApplication::exit(QFile::exists(parser.value(picture)) ? 0 : 1);
        });
    } else {
        timer->SetEnabled(true);
    }
    return QApplication::exec();
}
