// A canvas with thousands of shapes beside OpenGL written by hand for the same picture, in one run on the same driver,
// 800 x 600 pixels. The ratios are what counts: times depend on the machine and on what else runs on it.
//
// The hand-written column draws what a programmer would write for these objects: one display list with a material, a
// matrix and the geometry of each object, called at every repaint; a list of its own for each object where one of them
// changes. It clears and shows the picture as often as the canvas does.
//
// Usage: scene_benchmark [objects...]; 1000 and 10000 where none is given.
#include "ratios.h"
#include "scene_inputs.h"

#include <zk/_zkoglcanvas/rendercontext.h>

#include <QApplication>
#include <QImage>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zk;
using namespace zk::bench;

/// The same geometry as the library's, straight into OpenGL.
class ByHand {
  public:
    ByHand(Kind kind, int count) : kind_(kind), size_(sizeOf(count)), places_(places(count)) {}
    ~ByHand() { glDeleteLists(first_, GLsizei(places_.size()) + 1); }

    void Compile() {
        first_ = glGenLists(GLsizei(places_.size()) + 1);
        const bool textured = kind_ == Kind::textured;
        if (textured)
            upload();
        glNewList(first_, GL_COMPILE);
        if (textured) {
            glBindTexture(GL_TEXTURE_2D, texture_);
            glEnable(GL_TEXTURE_2D);
        }
        for (std::size_t i = 0; i < places_.size(); ++i)
            draw(i);
        if (textured)
            glDisable(GL_TEXTURE_2D);
        glEndList();
    }
    void CompileNested() {
        for (std::size_t i = 0; i < places_.size(); ++i)
            compileOne(i);
        glNewList(first_, GL_COMPILE);
        if (kind_ == Kind::textured) {
            glBindTexture(GL_TEXTURE_2D, texture_);
            glEnable(GL_TEXTURE_2D);
        }
        for (std::size_t i = 0; i < places_.size(); ++i)
            glCallList(first_ + 1 + GLuint(i));
        glDisable(GL_TEXTURE_2D);
        glEndList();
    }
    void Move(std::size_t i, double by) {
        places_[i].at.x += by;
        compileOne(i);
    }
    void Draw() const { glCallList(first_); }

  private:
    void compileOne(std::size_t i) {
        glNewList(first_ + 1 + GLuint(i), GL_COMPILE);
        draw(i);
        glEndList();
    }
    void draw(std::size_t i) const {
        const Place& place = places_[i];
        const GlColor color = ToGlColor(place.color);
        glMaterialfv(GL_FRONT, GL_AMBIENT_AND_DIFFUSE, color.data());
        glPushMatrix();
        glTranslated(place.at.x, place.at.y, place.at.z);
        switch (formOf(kind_, i)) {
            case Form3D::box:
                box();
                break;
            case Form3D::sphere:
                sphere();
                break;
            case Form3D::cylinder:
                cylinder();
                break;
            case Form3D::quad:
                quad();
        }
        glPopMatrix();
    }
    void upload() {
        glGenTextures(1, &texture_);
        glBindTexture(GL_TEXTURE_2D, texture_);
        const QImage picture = picture256().convertToFormat(QImage::Format_RGB888);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glTexImage2D(GL_TEXTURE_2D, 0, 3, 256, 256, 0, GL_RGB, GL_UNSIGNED_BYTE, picture.constBits());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glBindTexture(GL_TEXTURE_2D, 0);
    }
    void quad() const {
        glBegin(GL_QUADS);
        glNormal3d(0, 0, 1);
        for (const auto& [x, y] : {std::pair(0, 0), {0, 1}, {1, 1}, {1, 0}}) {
            glTexCoord2f(float(x), float(y));
            glVertex3d(x * size_, y * size_, 0);
        }
        glEnd();
    }
    void box() const {
        static const double normals[6][3] = {{0, 0, -1}, {0, 0, 1}, {0, -1, 0}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 0}};
        static const double corners[6][4][3] = {
            {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{0, 0, 1}, {0, 1, 1}, {1, 1, 1}, {1, 0, 1}},
            {{1, 0, 0}, {0, 0, 0}, {0, 0, 1}, {1, 0, 1}}, {{1, 1, 0}, {1, 0, 0}, {1, 0, 1}, {1, 1, 1}},
            {{0, 1, 0}, {1, 1, 0}, {1, 1, 1}, {0, 1, 1}}, {{0, 0, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1}}};
        glBegin(GL_QUADS);
        for (int face = 0; face < 6; ++face) {
            glNormal3dv(normals[face]);
            for (const auto& corner : corners[face])
                glVertex3d(corner[0] * size_, corner[1] * size_, corner[2] * size_);
        }
        glEnd();
    }
    void sphere() const {
        GLUquadric* quadric = gluNewQuadric();
        gluQuadricTexture(quadric, GL_TRUE);
        glFrontFace(GL_CCW);
        gluSphere(quadric, size_ / 2, 20, 20);
        glFrontFace(GL_CW);
        gluDeleteQuadric(quadric);
    }
    void cylinder() const {
        GLUquadric* quadric = gluNewQuadric();
        gluQuadricTexture(quadric, GL_TRUE);
        glFrontFace(GL_CCW);
        gluCylinder(quadric, size_ / 2, 0, size_, 10, 5);
        gluQuadricOrientation(quadric, GLU_INSIDE);
        gluDisk(quadric, 0, size_ / 2, 10, 10);
        glFrontFace(GL_CW);
        gluDeleteQuadric(quadric);
    }

    Kind kind_;
    double size_;
    std::vector<Place> places_;
    GLuint first_ = 0;
    GLuint texture_ = 0;
};

std::string input;  // what the rows are about

void row(const char* what, double ours, double byHand, const char* unit = "ms") {
    NoteRow(input, what, unit, ours, {{"OpenGL by hand", byHand}});
    if (byHand > 0)
        std::printf("  %-34s %9.3f %9.3f %s  %5.2f\n", what, ours, byHand, unit, ours / byHand);
    else
        std::printf("  %-34s %9.3f %9s %s\n", what, ours, "-", unit);
    std::fflush(stdout);
}

void paint(TZkOglCanvas& canvas, const ByHand& drawing) {
    canvas.CheckCurrent();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glPushMatrix();
    drawing.Draw();
    glPopMatrix();
    canvas.Context()->Present();
    canvas.Context()->PresentAgain();
}

void compare(Kind kind, const char* name, int count) {
    Form form;
    TZkOglCanvas& canvas = *form.canvas;
    const double emptyRepaint = milliseconds(41, [&] { canvas.Refresh(); });
    {
        // What the driver compiles when it first sees such shapes, some 70 ms, is nobody's.
        const std::vector<TCustomShape*> few = build(form, kind, 3);
        canvas.SetChanging(false);
        for (const TCustomShape* shape : few)
            delete shape;
    }

    std::printf("%d %s                           ZKOgl   by hand      ratio\n", count, name);
    input = std::to_string(count) + " " + name;

    double compileByHand = 0;
    double repaintByHand = 0;
    double changeByHand = 0;
    double pickByHand = 0;
    const auto paintByHand = [&canvas](const ByHand& drawing) { paint(canvas, drawing); };
    {
        canvas.CheckCurrent();
        ByHand drawing(kind, count);
        compileByHand = milliseconds(1, [&] { drawing.Compile(); });
        repaintByHand = milliseconds(15, [&] { paintByHand(drawing); });
        GLuint buffer[1024];
        // Not where primitives of several kinds follow each other: drivers crash on such a list (docs/drivers.md).
        pickByHand = kind != Kind::boxes ? 0 : milliseconds(5, [&] {
            glSelectBuffer(1024, buffer);
            glRenderMode(GL_SELECT);
            glInitNames();
            glPushName(1);
            canvas.EnableClipplane(0, {0.1, 0, 0}, {-1, 0, 0});
            canvas.EnableClipplane(1, {-0.1, 0, 0}, {1, 0, 0});
            drawing.Draw();
            canvas.DisableClipplane(-1);
            glRenderMode(GL_RENDER);
        });
    }
    {
        ByHand nested(kind, count);
        nested.Compile();
        nested.CompileNested();
        paintByHand(nested);
        changeByHand = milliseconds(15, [&] {
            nested.Move(std::size_t(count / 2), 0.001);
            paintByHand(nested);
        });
    }

    std::vector<TCustomShape*> shapes = build(form, kind, count);
    const double compile = milliseconds(1, [&] { canvas.SetChanging(false); });
    const double repaint = milliseconds(15, [&] { canvas.Refresh(); });
    TCustomShape* one = shapes[std::size_t(count / 2)];
    const double move = milliseconds(15, [&] { one->Settranslation(Add(one->GetTranslation(), TXYZ{0.001, 0, 0})); });
    const double color = milliseconds(15, [&] {
        one->getAttributes()->getMaterial()->SetDiffuse(one->getAttributes()->getMaterial()->GetDiffuse() ^ 1);
    });
    const double pick = milliseconds(15, [&] { canvas.Select(400, 300); });
    const double pickNothing = milliseconds(15, [&] { canvas.Select(3, 3); });

    row("compile (without the first repaint)", std::max(0.0, compile - repaint), compileByHand);
    row("repaint", repaint, repaintByHand);
    row("one moved, repaint", move, changeByHand);
    row("one recoloured, repaint", color, changeByHand);
    row("pick in the middle", pick, pickByHand);
    row("pick beside everything", pickNothing, pickByHand);
    row("an empty canvas's repaint", emptyRepaint, 0);
}

/// What the objects take beyond a window with the first of them, in a process that does nothing else.
double memory(Kind kind, int count, bool byHand) {
    Form form;
    std::unique_ptr<ByHand> first = std::make_unique<ByHand>(kind, 3);
    std::unique_ptr<ByHand> all;
    double before = 0;
    if (byHand) {
        form.canvas->CheckCurrent();
        first->Compile();
        paint(*form.canvas, *first);
        before = residentMiB();
        all = std::make_unique<ByHand>(kind, count);
        all->Compile();
        paint(*form.canvas, *all);
    } else {
        first.reset();
        build(form, kind, 3);
        form.canvas->SetChanging(false);
        before = residentMiB();
        build(form, kind, count);
        form.canvas->SetChanging(false);
    }
    const double used = residentMiB() - before;
    form.canvas->CheckCurrent();
    return used;
}

}  // namespace

int main(int argc, char* argv[]) {
    struct Kinds {
        Kind kind;
        const char* name;
    };
    const Kinds kinds[] = {{Kind::boxes, "boxes"},
                           {Kind::mixed, "boxes, spheres and cones"},
                           {Kind::spheres, "spheres"},
                           {Kind::textured, "quads with one picture"}};
    if (argc == 4) {
        QApplication application(argc, argv);
        const std::string task = argv[1];
        const Kinds& one = kinds[std::clamp(std::atoi(argv[2]), 0, 3)];
        if (task == "--memory" || task == "--memory-by-hand") {
            std::printf("%f\n", memory(one.kind, std::atoi(argv[3]), task != "--memory"));
            std::fflush(stdout);
            std::_Exit(0);  // taking ten thousand components down again takes a while, and is not asked for
        }
        compare(one.kind, one.name, std::atoi(argv[3]));
        std::fflush(stdout);
        std::_Exit(0);
    }
    // Frames take up to 2.5 times as long when the allocator gives memory back and fetches it again: not what is
    // compared here. Each comparison has a process of its own, so that its memory can be told.
    setenv("MALLOC_TRIM_THRESHOLD_", "1000000000", 1);
    setenv("MALLOC_MMAP_THRESHOLD_", "1000000000", 1);
    std::vector<std::string> counts;
    std::copy_if(argv + 1, argv + argc, std::back_inserter(counts), [](const char* arg) { return std::atoi(arg) > 0; });
    if (counts.empty())
        counts = {"1000", "10000"};
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    const auto run = [&self](const char* task, int kind, const std::string& count) {
        std::fflush(stdout);
        return popen(("'" + self + "' " + task + " " + std::to_string(kind) + " " + count).c_str(), "r");
    };
    const auto number = [&run](const char* task, int kind, const std::string& count) {
        double value = 0;
        FILE* output = run(task, kind, count);
        if (!output || std::fscanf(output, "%lf", &value) != 1)
            value = 0;
        if (output)
            pclose(output);
        return value;
    };
    for (const std::string& count : counts) {
        for (int kind = 0; kind < 4; ++kind) {
            if (FILE* output = run("--one", kind, count)) {
                char line[256];
                while (std::fgets(line, sizeof line, output))
                    std::fputs(line, stdout);
                if (pclose(output) != 0)
                    return 1;
            }
            input = count + " " + kinds[kind].name;
            row("memory", number("--memory", kind, count), number("--memory-by-hand", kind, count), "MiB");
        }
    }
    return 0;
}
