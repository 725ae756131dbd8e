// Forms of many shapes, from the file to the picture on the screen: read by the loader, by the calls that uic makes of
// the file, and built with setters, in one run. Milliseconds, medians of seven; "values" is the time until all values
// are there, "picture" until they can be seen.
//
// Usage: form_benchmark [shapes...]; 1000 and 4000 where none is given.
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools.h>
#include <zk/forms.h>

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace {

using namespace zk;
using Form = std::unique_ptr<QWidget>;

const char* kindOf(int index) {
    static const char* const kinds[] = {"TZKOglBox", "TZKOglSphere", "TZKOglCylinder"};
    return kinds[index % 3];
}

QString placeOf(int index) {
    return QStringLiteral("%1/%2/%3").arg(index % 10 - 5).arg(index / 10 % 10 - 5).arg(-(index / 100));
}

QColor colorOf(int index) {
    return QColor(index * 7 % 256, index * 13 % 256, index * 29 % 256);
}

QByteArray fileOf(int shapes) {
    const auto color = [](const QColor& c) {
        return QByteArray("<color><red>") + QByteArray::number(c.red()) + "</red><green>" +
               QByteArray::number(c.green()) + "</green><blue>" + QByteArray::number(c.blue()) + "</blue></color>";
    };
    const QByteArray place =
        "<property name=\"geometry\"><rect><x>1</x><y>2</y><width>76</width><height>46</height>"
        "</rect></property>";
    QByteArray file =
        "<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\"><property "
        "name=\"geometry\"><rect><x>0</x><y>0</y><width>820</width><height>620</height></rect></property>";
    for (int i = 0; i < shapes; ++i)
        file += QByteArray("<widget class=\"zk::") + kindOf(i) + "\" name=\"shape" + QByteArray::number(i) + "\">" +
                place + "<property name=\"Scene\" stdset=\"0\"><cstring>scene</cstring></property>" +
                "<property name=\"TransformBy\" stdset=\"0\"><cstring>" + placeOf(i).toUtf8() +
                "</cstring></property><property name=\"RotateBy\" stdset=\"0\"><double>30</double></property>" +
                "<property name=\"Attributes.Material.Diffuse\" stdset=\"0\">" + color(colorOf(i)) +
                "</property><property name=\"Attributes.Material.Emission\" stdset=\"0\">" + color(Qt::black) +
                "</property></widget>";
    return file + "<widget class=\"zk::TZKOglScene\" name=\"scene\">" + place +
           "<property name=\"ZkOglCanvas\" stdset=\"0\"><cstring>canvas</cstring></property></widget>" +
           "<widget class=\"zk::TZkOglCanvas\" name=\"canvas\">" + place +
           "<property name=\"WinControl\" stdset=\"0\"><cstring>control</cstring></property></widget>" +
           "<widget class=\"zk::TZKOglControl\" name=\"control\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
           "<width>800</width><height>600</height></rect></property></widget></widget></ui>";
}

Form byLoader(QByteArray& file) {
    QBuffer buffer(&file);
    FormLoader loader;
    return Form(loader.Load(buffer));
}

TCustomShape* made(int index, QWidget* form) {
    auto* shape = static_cast<TCustomShape*>(FindFormClass(QString::fromLatin1(kindOf(index)))->Make(form));
    shape->setObjectName(QStringLiteral("shape%1").arg(index));
    return shape;
}

Form asUicDoes(int shapes) {
    auto form = std::make_unique<QWidget>();
    form->resize(820, 620);
    const QRect place(1, 2, 76, 46);
    for (int i = 0; i < shapes; ++i) {
        TCustomShape* shape = made(i, form.get());
        shape->setGeometry(place);
        shape->setProperty("Scene", QVariant(QByteArray("scene")));
        shape->setProperty("TransformBy", QVariant(placeOf(i).toUtf8()));
        shape->setProperty("RotateBy", QVariant(30.0));
        shape->setProperty("Attributes.Material.Diffuse", QVariant(colorOf(i)));
        shape->setProperty("Attributes.Material.Emission", QVariant(QColor(Qt::black)));
    }
    auto* scene = new TZKOglScene(form.get());
    scene->setObjectName(QStringLiteral("scene"));
    scene->setGeometry(place);
    scene->setProperty("ZkOglCanvas", QVariant(QByteArray("canvas")));
    auto* canvas = new TZkOglCanvas(form.get());
    canvas->setObjectName(QStringLiteral("canvas"));
    canvas->setGeometry(place);
    canvas->setProperty("WinControl", QVariant(QByteArray("control")));
    auto* control = new TZKOglControl(form.get());
    control->setObjectName(QStringLiteral("control"));
    control->setGeometry(QRect(10, 10, 800, 600));
    return form;
}

Form withSetters(int shapes) {
    auto form = std::make_unique<QWidget>();
    form->resize(820, 620);
    auto* control = new TZKOglControl(form.get());
    control->setGeometry(QRect(10, 10, 800, 600));
    auto* canvas = new TZkOglCanvas(form.get());
    canvas->SetWinControl(control);
    auto* scene = new TZKOglScene(form.get());
    scene->SetZkOglCanvas(canvas);
    for (int i = 0; i < shapes; ++i) {
        TCustomShape* shape = made(i, form.get());
        shape->Set_translation(placeOf(i));
        shape->Setdrehwinkel(30);
        shape->getAttributes()->getMaterial()->setDiffuseColor(colorOf(i));
        shape->getAttributes()->getMaterial()->setEmissionColor(Qt::black);
        shape->SetDisplayList(scene);
    }
    return form;
}

void measure(const char* name, int shapes, const std::function<Form()>& make) {
    std::vector<double> values;
    std::vector<double> pictures;
    for (int run = 0; run < 7; ++run) {
        int compilations = 0;
        QElapsedTimer timer;
        timer.start();
        const Form form = make();
        values.push_back(double(timer.nsecsElapsed()) / 1e6);
        auto* scene = form->findChild<TZKOglScene*>();
        FormReading::EndNow();
        if (scene->GetShapeCount() != shapes)
            std::abort();
        QObject::connect(scene->GetZkOglCanvas(), &TZkOglCanvas::OnAfterCompile, [&compilations] { ++compilations; });
        form->show();
        while (compilations == 0)
            QCoreApplication::processEvents();
        scene->GetZkOglCanvas()->CheckCurrent();
        glFinish();
        pictures.push_back(double(timer.nsecsElapsed()) / 1e6);
        QTest::qWait(50);
        if (compilations != 1)
            std::abort();
    }
    std::sort(values.begin(), values.end());
    std::sort(pictures.begin(), pictures.end());
    std::printf("%6d shapes  %-14s values %8.1f  picture %8.1f  (slowest %8.1f)\n", shapes, name, values[3],
                pictures[3], pictures.back());
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    std::vector<int> counts;
    for (int i = 1; i < argc; ++i)
        if (std::atoi(argv[i]) > 0)
            counts.push_back(std::atoi(argv[i]));
    if (counts.empty())
        counts = {1000, 4000};
    for (const int shapes : counts) {
        QByteArray file = fileOf(shapes);
        measure("loader", shapes, [&file] { return byLoader(file); });
        measure("as uic does", shapes, [shapes] { return asUicDoes(shapes); });
        measure("with setters", shapes, [shapes] { return withSetters(shapes); });
    }
    return 0;
}
