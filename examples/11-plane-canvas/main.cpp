// A plain canvas, without OpenGL: points of space become pixels of any widget, and lines, discs and texts are drawn
// there. Planets travel on ellipses about a sun.

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkdevice.h>
#include <zk/_zkogltools/ellipseway.h>
#include <zk/host/timer.h>

#include <QApplication>

#include <memory>

using namespace zk;

namespace {

struct Planet {
    const char* name;
    QColor color;
    int radius;           // pixels
    double a, b;          // the half axes of its way, in centimetres
    double speed, start;  // in parts of the way, for each tick
};

const Planet planets[] = {
    {"Ash", "#B8A890", 5, 1.6, 1.5, 0.008, 0.10},
    {"Moss", "#68B070", 8, 2.8, 2.6, 0.005, 0.85},
    {"Coral", "#E06850", 7, 4.2, 3.8, 0.003, 0.62},
    {"Great Blue", "#5080D8", 14, 6.2, 5.4, 0.002, 0.37},
};

class Sky : public QWidget {
  public:
    Sky() {
        setPalette(QColor("#101828"));
        setAutoFillBackground(true);
        device_.Setcontrol(this);
        device_.SetUnitsPerCm(41);
        device_.SetBlickWinkel(20);
        device_.SetProjectionbase({{0, 0, 0}, {1, 0, 0}, {0, 0.5, 0.866}, {0, -0.866, 0.5}});  // slanting
        clock_.SetInterval(40);
        connect(&clock_, &TTimer::OnTimer, this, [this] {
            ++ticks_;
            update();
        });
    }

  protected:
    void resizeEvent(QResizeEvent*) override {
        device_.SetWidth(width());
        device_.SetHeight(height());
    }

    void paintEvent(QPaintEvent*) override {
        TZKPrimdevice& pen = *device_.GetPrimdevice();
        disc({0, 0, 0}, 22, "#FFD050");
        for (const Planet& planet : planets) {
            TEllipseWay way;
            way.SetA(planet.a);
            way.SetB(planet.b);
            pen.SetPen(QColor("#40506C"));
            for (int i = 0; i <= 90; ++i) {
                way.SetPAram(i / 90.0);
                i == 0 ? device_.Moveto3d(way.Base().Origin) : device_.LineTo3d(way.Base().Origin);
            }
            way.SetPAram(planet.start + planet.speed * ticks_);  // runs on for ever
            const TXYI at = disc(way.Base().Origin, planet.radius, planet.color);
            pen.SetPen(QColor("#C0C8D8"));
            pen.TextOut(at.x + planet.radius + 4, at.y - 8, planet.name);
        }
    }

  private:
    TXYI disc(const TXYZ& middle, int radius, const QColor& color) {
        const TXYI at = device_.WtoPixel(middle);
        TZKPrimdevice& pen = *device_.GetPrimdevice();
        pen.SetPen(color);
        pen.SetBrush(color);
        pen.Ellipse(at.x - radius, at.y - radius, at.x + radius + 1, at.y + radius + 1);
        return at;
    }

    TZKCanvas3d device_;
    TTimer clock_{this};
    int ticks_ = 0;
};

}  // namespace

QWidget* MakePlaneCanvas() {
    return new Sky;
}

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const std::unique_ptr<QWidget> sky(MakePlaneCanvas());
    sky->setWindowTitle("A plain canvas");
    sky->resize(560, 360);
    sky->show();
    return QApplication::exec();
}
