#pragma once

#include "choices.h"

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zk {
class TZkOglCanvas;
class TZKOglScene;
}  // namespace zk

namespace zk::test {

enum class Kind {
    Form,
    Plain,  // a QObject that is no component
    Panel,  // a widget that is no component
    Canvas,
    Control,
    Scene,
    RefScene,
    Box,
    Sphere,
    Cylinder,
    Plane,
    Shape,
    RefShape,
    Light,
    Navigator,
    Sequencer,
    Timer,
    Way,
    Device,
    Ellipse,
    Clock,
    Watcher,
    Count
};

/// What the model knows of one object.
struct Part {
    int id = 0;
    Kind kind = Kind::Form;
    QPointer<QObject> object;
    const QObject* address = nullptr;  // also when it has gone
    Part* owner = nullptr;
    QString name;

    Part* to = nullptr;           // scene, light, navigator: canvas; shape, way: scene; timer: sequencer; canvas,
                                  // device: control
    Part* reference = nullptr;    // of a reference scene or shape
    Part* shown = nullptr;        // a control's canvas
    std::vector<Part*> list;      // canvas: scenes; scene: shapes; sequencer: timers
    std::vector<Part*> lights;    // of a canvas
    std::set<Part*> asked;        // of a watcher: of whom it wants to be told
    std::map<Part*, int> told;    // of a watcher: of whom it was told since the step began
    std::map<Part*, int> expect;  // and of whom it was to be told
    bool listened = false;        // its `OnPlay` is
    bool visible = false;
    bool enabled = false;
    bool autoCompile = true;
    int brackets = 0;  // open ones, of a canvas
    int ticks = 0;     // a timer's count
    bool started = false;
    bool phaseKnown = true;
    int displacement = 0;
    int intervals = 0;
    bool hasDevice = false;   // of a navigator
    bool playing = false;     // while the model plays it
    bool playingOwn = false;  // and, of a scene, its own shapes
};

/// Live objects of every class, beside a model of what each refers to, is listed in and is told of. `Step` does
/// something to both, a program's step; what differs then is a fault of one of the two.
class World {
  public:
    struct Options {
        bool live = false;  ///< with windows and OpenGL
        bool wild = false;  ///< values that no form has: not finite, huge, malformed. OpenGL may complain of them
    };

    explicit World(const Options& options);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    void Step(Choices& choices);
    /// What differs, with the last steps; empty while nothing does.
    const std::string& Failure() const { return failure_; }
    /// The steps, one on a line.
    std::string Program() const;
    /// Removes everything, and looks once more.
    void End();

    /// How many of the steps' predictions of events were compared.
    static long Compared();

  private:
    friend class Watcher;

    using Event = std::pair<int, std::string_view>;  // whose, and its name

    // objects
    Part* make(Kind kind, Part* owner);
    void listen(Part* part);
    void heard(int id, const char* event);
    void told(Part* watcher, const QObject* gone);
    void spring();
    std::vector<Part*> all(const std::function<bool(const Part&)>& which) const;
    Part* any(Choices& choices, const std::function<bool(const Part&)>& which) const;
    Part* anyOf(Choices& choices, std::initializer_list<Kind> kinds) const;

    // the model
    void modelDelete(Part* part);
    void modelLeave(Part* part);
    void modelSetWinControl(Part* canvas, Part* control);
    void modelBind(Part* part, Part* target);
    void modelAnnounce(Part* part);
    void modelTick(Part* timer, std::vector<Event>& events);
    std::vector<Event> paintEvents(Part* canvas);
    void playScene(Part* scene, std::vector<Event>& events);
    void playOneScene(Part* scene, std::vector<Event>& events);
    void playShape(Part* shape, std::vector<Event>& events);
    static Part* canvasOf(const Part& shape);
    bool hasContext(const Part* canvas) const;
    bool paints(const Part* canvas) const;

    // steps
    void create(Choices& choices);
    void remove(Choices& choices, bool nested);
    void removeOne(Choices& choices);
    void bind(Choices& choices);
    void refer(Choices& choices);
    void reparent(Choices& choices);
    void rename(Choices& choices);
    void bracket(Choices& choices);
    void flag(Choices& choices);
    void listShape(Choices& choices);
    void ask(Choices& choices);
    void tick(Choices& choices);
    void navigate(Choices& choices);
    void mouse(Choices& choices);
    void paint(Choices& choices);
    void pick(Choices& choices);
    void attributes(Choices& choices);
    void setValue(Choices& choices);
    void arm(Choices& choices);
    void lightClass(Choices& choices);
    void events(Choices& choices);
    void size(Choices& choices);

    void deletePart(Part* part, bool later);
    void realBind(Part* part, Part* target);
    void expectEvents(const std::vector<Event>& expected);
    void readBack(Part* part);
    void say(const std::string& text);
    static std::string nameOf(const Part* part);
    void fail(const std::string& what);
    void check();
    void checkPart(const Part& part);
    void checkProperties(const Part& part);
    void checkMessages();

    Options options_;
    std::vector<std::unique_ptr<Part>> parts_;
    std::vector<std::unique_ptr<Part>> gone_;  // in this step
    std::vector<Part*> deleting_;              // by steps that are under way
    int lastId_ = 0;
    int step_ = 0;
    std::vector<std::string> steps_;
    std::string failure_;
    std::vector<Event> heard_;
    int trap_ = 0;            // at which event from now on
    std::uint32_t bait_ = 0;  // what happens then
    bool disturbed_ = false;
    bool ending_ = false;
    bool inEventLoop_ = false;
    QStringList messages_;
    std::function<void(const std::string&)> handler_;  // that was there before
};

}  // namespace zk::test
