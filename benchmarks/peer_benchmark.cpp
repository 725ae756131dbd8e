// A canvas with thousands of shapes beside two scene libraries that Debian has, on the same driver in one run: the
// same objects in the same places, 800 x 600 pixels. Each library draws the way its own users write it, in a process of
// its own. The canvas swaps twice a repaint, as it does on the screen; the others once.
//
// Usage: peer_benchmark [objects...]; 10000 where none is given. With --picture FILE LIBRARY KIND OBJECTS, what one of
// them draws.
#include "peer.h"
#include "ratios.h"
#include "scene_inputs.h"

#include <zk/host/glsurface.h>

#include <QApplication>
#include <QImage>
#include <QOpenGLContext>
#include <QWindow>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace zk;
using namespace zk::bench;

constexpr int width = 800;
constexpr int height = 600;

enum Measure { first, repaint, moved, recoloured, pick, pickNothing, memory, measures };
constexpr std::array<const char*, measures> measureNames{"from nothing to the first picture",
                                                         "repaint",
                                                         "one moved, repaint",
                                                         "one recoloured, repaint",
                                                         "pick in the middle",
                                                         "pick beside everything",
                                                         "memory"};
constexpr const char* unitOf(int measure) {
    return measure == memory ? "MiB" : "ms";
}
using Measures = std::array<double, measures>;

void tell(const Measures& values) {
    for (const double value : values)
        std::printf("%f ", value);
    std::printf("\n");
    std::fflush(stdout);
}

// The rows are the axes of the form's projection base.
constexpr double eye[3][3] = {{0.8, 0, -0.6}, {-0.24, 0.916, -0.32}, {0.55, 0.4, 0.733}};

Measures ours(Kind kind, int count, const std::string& picture) {
    Form form;
    TZkOglCanvas& canvas = *form.canvas;
    const std::vector<TCustomShape*> some = build(form, kind, 3);
    canvas.SetChanging(false);
    delete some.front()->GetDisplayList();
    Measures values{};
    const double before = residentMiB();
    std::vector<TCustomShape*> shapes;
    values[first] = milliseconds(1, [&] {
        shapes = build(form, kind, count);
        canvas.SetChanging(false);
    });
    values[memory] = residentMiB() - before;
    values[repaint] = milliseconds(15, [&] { canvas.Refresh(); });
    TCustomShape* one = shapes[std::size_t(count / 2)];
    values[moved] = milliseconds(15, [&] { one->Settranslation(Add(one->GetTranslation(), TXYZ{0.001, 0, 0})); });
    Tmaterial* material = one->getAttributes()->getMaterial();
    values[recoloured] = milliseconds(15, [&] { material->SetDiffuse(material->GetDiffuse() ^ 1); });
    canvas.Select(width / 2, height / 2);
    values[pick] = milliseconds(15, [&] { canvas.Select(width / 2, height / 2); });
    values[pickNothing] = milliseconds(15, [&] { canvas.Select(3, 3); });
    if (!picture.empty())
        canvas.Picture(QSize(width, height)).save(QString::fromStdString(picture));
    return values;
}

std::vector<PeerObject> objectsFor(Kind kind, int count) {
    std::vector<PeerObject> objects;
    for (const Place& place : places(count)) {
        const GlColor color = ToGlColor(place.color);
        const Form3D form = formOf(kind, objects.size());
        objects.push_back({form == Form3D::box      ? PeerForm::box
                           : form == Form3D::sphere ? PeerForm::sphere
                                                    : PeerForm::cone,
                           place.at.x, place.at.y, color[0], color[1], color[2]});
    }
    return objects;
}

Measures theirs(const std::function<std::unique_ptr<Peer>()>& make, Kind kind, int count, const std::string& picture) {
    QWindow window;
    window.setSurfaceType(QSurface::OpenGLSurface);
    window.setFormat(GlSurface::RequestedFormat());
    window.resize(width, height);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        std::fprintf(stderr, "the window was not exposed\n");
    QOpenGLContext context;
    context.setFormat(window.requestedFormat());
    if (!context.create() || !context.makeCurrent(&window))
        return {};
    const auto show = [&](Peer& peer) {
        peer.Draw();
        context.swapBuffers(&window);
    };
    {
        const auto some = make();
        some->Build(objectsFor(kind, 3), sizeOf(3), eye, width, height);
        show(*some);
    }
    Measures values{};
    const double before = residentMiB();
    const auto peer = make();
    values[first] = milliseconds(1, [&] {
        peer->Build(objectsFor(kind, count), sizeOf(count), eye, width, height);
        show(*peer);
    });
    show(*peer);  // caches are made when a picture is drawn again
    show(*peer);
    values[memory] = residentMiB() - before;
    values[repaint] = milliseconds(15, [&] { show(*peer); });
    const auto one = std::size_t(count / 2);
    values[moved] = milliseconds(15, [&] {
        peer->Move(one, 0.001);
        show(*peer);
    });
    float red = 0;
    values[recoloured] = milliseconds(15, [&] {
        peer->Recolour(one, red = 1 - red, 0.5F, 0.5F);
        show(*peer);
    });
    peer->Pick(width / 2, height / 2);
    values[pick] = milliseconds(15, [&] { peer->Pick(width / 2, height / 2); });
    values[pickNothing] = milliseconds(15, [&] { peer->Pick(3, 3); });
    if (!picture.empty()) {
        peer->Draw();
        QImage image(width, height, QImage::Format_RGB888);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, image.bits());
        image.mirrored().save(QString::fromStdString(picture));
    }
    return values;
}

struct Library {
    const char* name;
    std::function<std::unique_ptr<Peer>()> make;  // none: ours
};

std::vector<Library> libraries() {
    return {
        {"ZKOgl", {}},
#if defined(WITH_COIN)
            {"Coin", NewCoin},
#endif
#if defined(WITH_OSG)
            {"OSG", NewOsg},
#endif
    };
}

constexpr std::array<std::pair<Kind, const char*>, 3> kinds{
    {{Kind::boxes, "boxes"}, {Kind::mixed, "boxes, spheres and cones"}, {Kind::spheres, "spheres"}}};

// In this process.
void measureOne(const Library& library, int kind, int count, const std::string& picture) {
    const Kind what = kinds[std::size_t(kind)].first;
    tell(library.make ? theirs(library.make, what, count, picture) : ours(what, count, picture));
    std::_Exit(0);  // taking ten thousand objects down again takes a while, and is not asked for
}

Measures inAProcess(const std::string& self, int library, int kind, const std::string& count) {
    const std::string command =
        "'" + self + "' --one " + std::to_string(library) + " " + std::to_string(kind) + " " + count;
    Measures values{};
    std::fflush(stdout);
    FILE* output = popen(command.c_str(), "r");
    for (double& value : values)
        if (!output || std::fscanf(output, "%lf", &value) != 1)
            value = std::numeric_limits<double>::quiet_NaN();
    if (output)
        pclose(output);
    return values;
}

void table(const std::string& self, int kind, const std::string& count) {
    const std::vector<Library> all = libraries();
    std::printf("%-42s", (count + " " + kinds[std::size_t(kind)].second).c_str());
    std::vector<Measures> values;
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::printf(" %9s", all[i].name);
        values.push_back(inAProcess(self, int(i), kind, count));
    }
    std::printf("   ratio to the best of the others\n");
    for (int measure = 0; measure < measures; ++measure) {
        const std::string what = measureNames[std::size_t(measure)];
        std::printf("  %-40s", (what + ", " + unitOf(measure)).c_str());
        double best = std::numeric_limits<double>::infinity();
        std::vector<Other> others;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double value = values[i][std::size_t(measure)];
            std::printf(" %9.3f", value);
            if (i == 0)
                continue;
            best = std::min(best, value);
            others.emplace_back(all[i].name, value);
        }
        NoteRow(count + " " + kinds[std::size_t(kind)].second, what, unitOf(measure), values[0][std::size_t(measure)],
                others);
        std::printf("   %5.2f\n", values[0][std::size_t(measure)] / best);
    }
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const bool isPicture = arguments.size() == 5 && arguments[0] == "--picture";
    if (isPicture || (arguments.size() == 4 && arguments[0] == "--one")) {
        QApplication application(argc, argv);
        const std::size_t at = isPicture ? 2 : 1;
        const std::vector<Library> all = libraries();
        const auto library = std::size_t(std::clamp(std::atoi(arguments[at].c_str()), 0, int(all.size()) - 1));
        const int kind = std::clamp(std::atoi(arguments[at + 1].c_str()), 0, int(kinds.size()) - 1);
        measureOne(all[library], kind, std::max(1, std::atoi(arguments[at + 2].c_str())),
                   isPicture ? arguments[1] : std::string());
    }
    // As in scene_benchmark: what the allocator gives back and takes again decides over a factor of two.
    setenv("MALLOC_TRIM_THRESHOLD_", "1000000000", 1);
    setenv("MALLOC_MMAP_THRESHOLD_", "1000000000", 1);
    std::vector<std::string> counts;
    for (const std::string& argument : arguments)
        if (std::atoi(argument.c_str()) > 0)
            counts.push_back(argument);
    if (counts.empty())
        counts = {"10000"};
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    for (const std::string& count : counts)
        for (int kind = 0; kind < int(kinds.size()); ++kind)
            table(self, kind, count);
    return 0;
}
