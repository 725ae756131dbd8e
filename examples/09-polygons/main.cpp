// Polygons: an island and a cloud of rain. Where does it rain on the island? The intersection of the two outlines says
// so, their union is what the map shows framed, and the island is painted in the convex pieces that OpenGL draws it in.

#include <zk/_zkcomtypes/pointtext.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkogltools.h>
#include <zk/_zkxyarrays.h>

#include <QApplication>

#include <cmath>
#include <vector>

using namespace zk;

namespace {

// In centimetres on the map, x to the right and y up; the last point is joined to the first.
const std::vector<TXY> island{
    {3.2, -0.1}, {2.6, 0.4},  {2, 0.7},     {1.7, 1},     {1.4, 1.3},   {1.1, 1.5},   {0.8, 1.7},   {0.6, 2.2},
    {0.3, 2.6},  {-0.3, 2.4}, {-0.7, 2.2},  {-1, 1.9},    {-1.5, 2},    {-1.9, 2},    {-2.4, 2},    {-2.8, 1.8},
    {-3.2, 1.6}, {-3.7, 1.3}, {-3.8, 0.8},  {-4.1, 0.4},  {-4.3, -0.1}, {-4.5, -0.6}, {-4.7, -1.3}, {-4.1, -1.7},
    {-3.6, -2},  {-2.8, -2},  {-2.1, -1.9}, {-1.6, -1.7}, {-1.2, -1.4}, {-0.9, -1.5}, {-0.7, -2.1}, {-0.3, -2.4},
    {0.1, -2.3}, {0.6, -2.5}, {1.2, -2.4},  {1.8, -2.3},  {2.2, -2},    {2.8, -1.7},  {3.2, -1.2},  {3.6, -0.7},
};
const std::vector<TXY> cloud{
    {4.5, 1},       {4.7, 1.33},   {4.71, 1.7},   {4.49, 2.03},  {4.07, 2.22},  {3.56, 2.25},  {3.3, 2.63},
    {2.9, 2.9},     {2.39, 2.98},  {1.88, 2.85},  {1.44, 2.56},  {0.92, 2.7},   {0.4, 2.67},   {0, 2.45},
    {-0.22, 2.09},  {-0.25, 1.69}, {-0.65, 1.49}, {-0.89, 1.18}, {-0.89, 0.82}, {-0.65, 0.51}, {-0.25, 0.31},
    {-0.22, -0.09}, {0, -0.45},    {0.4, -0.67},  {0.92, -0.7},  {1.44, -0.56}, {1.88, -0.85}, {2.39, -0.98},
    {2.9, -0.9},    {3.3, -0.63},  {3.56, -0.25}, {4.07, -0.22}, {4.49, -0.03}, {4.71, 0.3},   {4.7, 0.67},
};

ArrayOwner<TXYARRAY> polygon(const std::vector<TXY>& points) {
    ArrayOwner<TXYARRAY> made;
    ArrayAddData(*made, int(points.size()), points.data());
    return made;
}

// Square centimetres; holes count negative.
double area(const TlistOFXYArray& outlines) {
    double sum = 0;
    for (int i = 0; i < outlines.Count(); ++i)
        sum -= Vekt(*outlines[i]) / 2;
    return std::abs(sum);
}

// A flat shape of one outline, `height` above the map.
template <class Outline>
void add(TZKOglScene* scene, const Outline& outline, double height, TColor color, TPAMode mode = glfill) {
    QStringList lines;
    for (const auto& point : outline.Items())
        lines.prepend(xyztoStr({point.x, point.y, height}));  // outlines run counter-clockwise, and fronts clockwise
    auto* plane = new TZKOglPlane(scene);
    plane->SetDisplayList(scene);
    plane->SetData(lines);
    plane->getAttributes()->getPolyStyle()->SetMode(mode);
    plane->getAttributes()->getMaterial()->SetMAterialKind({.Emission = color, .Translucent = 1});
}

}  // namespace

void MakePolygons(TZkOglCanvas& canvas) {
    canvas.SetUnitsPerCm(46);
    canvas.SetBackgroundQColor("#86B4D8");
    auto* scene = new TZKOglScene(&canvas);
    scene->SetZkOglCanvas(&canvas);

    TlistOFXYArray rained;
    SetOperation(*polygon(island), *polygon(cloud), rained, false);
    TlistOFXYArray together;
    SetOperation(*polygon(island), *polygon(cloud), together, true);

    ArrayOwner<TXYZARRAY> ground;
    To3d(Unitbase, *polygon(island), *ground);
    TlistOFxyzArray pieces;
    DOConvex(*ground, pieces);
    const TColor greens[] = {0x60B070, 0x78C888, 0x8CD89C, 0x50A060};
    for (int i = 0; i < pieces.Count(); ++i)
        add(scene, *pieces[i], 0, greens[i % 4]);

    add(scene, *polygon(cloud), 0.2, 0xFFFFFF, glline);
    for (int i = 0; i < rained.Count(); ++i)
        add(scene, *rained[i], 0.1, 0xA87840);
    for (int i = 0; i < together.Count(); ++i)
        add(scene, *together[i], 0.3, 0x403020, glline);

    canvas.GetWinControl()->setWindowTitle(QString("It rains on %1 of the island's %2 square centimetres")
                                               .arg(area(rained), 0, 'f', 1)
                                               .arg(std::abs(Vekt(*polygon(island))) / 2, 0, 'f', 1));
}

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    TZKOglControl control;
    control.QWidget::resize(520, 360);
    TZkOglCanvas canvas;
    canvas.SetWinControl(&control);
    MakePolygons(canvas);
    control.show();
    return QApplication::exec();
}
