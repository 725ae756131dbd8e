#pragma once

#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkogltools.h>

#include <QElapsedTimer>
#include <QImage>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <unistd.h>
#include <vector>

// Pictures of many objects for the benchmarks of scenes, and how these are measured.
namespace zk::bench {

enum class Kind { boxes, mixed, spheres, textured };

enum class Form3D { box, sphere, cylinder, quad };

inline Form3D formOf(Kind kind, std::size_t index) {
    switch (kind) {
        case Kind::boxes:
            return Form3D::box;
        case Kind::mixed:
            return index % 3 == 0 ? Form3D::box : index % 3 == 1 ? Form3D::sphere : Form3D::cylinder;
        case Kind::spheres:
            return Form3D::sphere;
        case Kind::textured:
            break;
    }
    return Form3D::quad;
}

/// What all textured objects share.
inline QImage picture256() {
    QImage picture(256, 256, QImage::Format_RGB32);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x)
            picture.setPixel(x, y, qRgb(x, y, (x ^ y) & 255));
    return picture;
}

inline double residentMiB() {
    long pages = 0;
    long resident = 0;
    if (FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(file);
    }
    return double(resident) * double(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

/// The median time of a few runs, in milliseconds. OpenGL has finished when it is taken.
inline double milliseconds(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        glFinish();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

struct Place {
    TXYZ at;
    TColor color;
};

/// Objects beside each other on a grid that fills the picture: what counts is their number, not the pixels they fill.
inline std::vector<Place> places(int count) {
    std::vector<Place> all;
    const int side = std::max(1, int(std::ceil(std::sqrt(double(count)))));
    const double step = 18.0 / side;
    for (int i = 0; i < count; ++i)
        all.push_back({{(i % side) * step - 9, (i / side) * step - 9, 0},
                       TColor(0x404040 + (unsigned(i) * 2654435761U) % 0xBFBFBF)});
    return all;
}

inline double sizeOf(int count) {
    return 18.0 * 0.6 / std::max(1.0, std::ceil(std::sqrt(double(count))));
}

struct Form {
    Form() {
        control = new TZKOglControl(&window);
        control->SetBevelKind(bevel::bkNone);
        control->setGeometry(0, 0, 800, 600);
        window.resize(800, 600);
        canvas = new TZkOglCanvas(&window);
        canvas->SetWinControl(control);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            std::fprintf(stderr, "the window was not exposed\n");
        auto* light = new TZKOglLight(&window);
        light->SetPosition({10, 20, 30});
        light->SetZkOglCanvas(canvas);
        light->SetEnabled(true);
        canvas->SetProjectionbase({{0, 0, 0}, {0.8, 0, -0.6}, {-0.24, 0.916, -0.32}, {0.55, 0.4, 0.733}});
        QTest::qWait(50);
    }
    QWidget window;
    TZKOglControl* control;
    TZkOglCanvas* canvas;
};

inline TCustomShape* newShape(Kind kind, int i, double size, QObject* owner) {
    switch (formOf(kind, std::size_t(i))) {
        case Form3D::box: {
            auto* box = new TZKOglBox(owner);
            box->SetA(size);
            box->SetB(size);
            box->SetC(size);
            return box;
        }
        case Form3D::sphere: {
            auto* sphere = new TZKOglSphere(owner);
            sphere->SetR(size / 2);
            sphere->SetResolution(20);
            return sphere;
        }
        case Form3D::quad: {
            auto* plane = new TZKOglPlane(owner);
            plane->SetData({"0/0/0", "0/1/0", "1/1/0", "1/0/0"});
            plane->SetScale(size);
            ZkAddBitmaptexture("scene-benchmark", picture256());
            plane->getAttributes()->getTexture()->SetPicture("scene-benchmark.bmp");
            plane->getAttributes()->getTexture()->SetFilter(gllinear);
            plane->getAttributes()->getTexture()->SetVisible(true);
            return plane;
        }
        case Form3D::cylinder:
        default: {
            auto* cylinder = new TZKOglCylinder(owner);
            cylinder->SetBaseRadius(size / 2);
            cylinder->SetTopRadius(0);
            cylinder->SetCylinderHeight(size);
            return cylinder;
        }
    }
}

/// The scene, inside a bracket that is left open.
inline std::vector<TCustomShape*> build(Form& form, Kind kind, int count) {
    form.canvas->SetChanging(true);
    auto* scene = new TZKOglScene(&form.window);
    scene->SetZkOglCanvas(form.canvas);
    std::vector<TCustomShape*> shapes;
    for (const Place& place : places(count)) {
        TCustomShape* shape = newShape(kind, int(shapes.size()), sizeOf(count), scene);
        shape->Settranslation(place.at);
        Tmaterialkind material = maNone;
        material.Emission = 0;
        material.Ambient = place.color;
        material.Diffuse = place.color;
        shape->getAttributes()->getMaterial()->SetMAterialKind(material);
        shape->SetDisplayList(scene);
        shapes.push_back(shape);
    }
    return shapes;
}

}  // namespace zk::bench
