#include "world.h"

#include "parts.h"

#include <zk/_zkoglcanvas/glapi.h>
#include <zk/host/message.h>

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <string_view>
#include <utility>

namespace zk::test {

namespace {

constexpr std::size_t stepsShown = 60;
long compared = 0;

}  // namespace

const char* KindName(Kind kind) {
    static const char* const names[] = {"form",     "object",  "panel",      "canvas", "control", "scene",
                                        "refscene", "box",     "sphere",     "cone",   "plane",   "shape",
                                        "refshape", "light",   "navigator",  "clock",  "timer",   "way",
                                        "device",   "ellipse", "plainclock", "watcher"};
    return names[int(kind)];
}

bool IsShape(Kind kind) {
    return kind >= Kind::Box && kind <= Kind::RefShape;
}

bool IsScene(Kind kind) {
    return kind == Kind::Scene || kind == Kind::RefScene;
}

bool IsWidget(Kind kind) {
    return kind == Kind::Form || kind == Kind::Panel || kind == Kind::Control || kind == Kind::Navigator;
}

bool IsComponent(Kind kind) {
    return kind != Kind::Form && kind != Kind::Plain && kind != Kind::Panel;
}

World::World(const Options& options) : options_(options) {
    handler_ = SetMessageHandler([this](const std::string& text) { messages_ += QString::fromStdString(text); });
    TTimer::DriveTime(true);
    make(Kind::Form, nullptr);
    make(Kind::Form, nullptr);
}

World::~World() {
    ending_ = true;
    trap_ = 0;
    while (!parts_.empty()) {
        Part* const part = parts_.back().get();
        QObject* const object = part->object;
        modelDelete(part);
        delete object;
    }
    gone_.clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    TTimer::DriveTime(false);
    SetMessageHandler(handler_);
}

long World::Compared() {
    return compared;
}

// --- objects ---------------------------------------------------------------------------------------------------------

namespace {

QObject* newObject(Kind kind, QObject* owner) {
    QWidget* const widget = qobject_cast<QWidget*>(owner);
    switch (kind) {
        case Kind::Form:
        case Kind::Panel:
            return new QWidget(widget);
        case Kind::Plain:
            return new QObject(owner);
        case Kind::Canvas:
            return new TZkOglCanvas(owner);
        case Kind::Control:
            return new TZKOglControl(widget);
        case Kind::Scene:
            return new TZKOglScene(owner);
        case Kind::RefScene:
            return new TZKOglRefScene(owner);
        case Kind::Box:
            return new TZKOglBox(owner);
        case Kind::Sphere:
            return new TZKOglSphere(owner);
        case Kind::Cylinder:
            return new TZKOglCylinder(owner);
        case Kind::Plane:
            return new TZKOglPlane(owner);
        case Kind::Shape:
            return new TZKOglShape(owner);
        case Kind::RefShape:
            return new TZKOglRefShape(owner);
        case Kind::Light:
            return new TZKOglLight(owner);
        case Kind::Navigator:
            return new TZKOglNav(widget);
        case Kind::Sequencer:
            return new TZkOglSequencer(owner);
        case Kind::Timer:
            return new TZkOglTimer(owner);
        case Kind::Way:
            return new TZKOglWay(owner);
        case Kind::Device:
            return new TZKCanvas3d(owner);
        case Kind::Ellipse:
            return new TEllipseWay(owner);
        case Kind::Clock:
            return new TTimer(owner);
        case Kind::Watcher:
        case Kind::Count:
            break;
    }
    return nullptr;
}

}  // namespace

Part* World::make(Kind kind, Part* owner) {
    auto part = std::make_unique<Part>();
    part->id = ++lastId_;
    part->kind = kind;
    part->owner = owner;
    QObject* const parent = owner ? owner->object.data() : nullptr;
    QObject* const object = kind == Kind::Watcher ? new Watcher(parent, *this, *part) : newObject(kind, parent);
    part->object = object;
    part->address = object;
    part->name = QStringLiteral("%1%2").arg(QLatin1String(KindName(kind))).arg(part->id);
    object->setObjectName(part->name);
    part->visible = IsShape(kind) || IsScene(kind);
    part->hasDevice = kind == Kind::Navigator && owner;
    if (IsWidget(kind)) {
        auto* const widget = static_cast<QWidget*>(object);
        widget->setGeometry(10 + part->id % 7 * 10, 10, kind == Kind::Form ? 160 : 40, kind == Kind::Form ? 120 : 30);
        if (options_.live && (kind == Kind::Form || owner))
            widget->show();
    }
    Part* const made = part.get();
    parts_.push_back(std::move(part));
    return made;
}

void World::listen(Part* part) {
    const int id = part->id;
    QObject* const object = part->object;
    const auto hear = [this, id](const char* event) { return [this, id, event] { heard(id, event); }; };
    if (auto* list = qobject_cast<TDisplayList*>(object))
        QObject::connect(list, &TDisplayList::OnPlay, hear("OnPlay"));
    if (auto* shape = qobject_cast<TZkShape*>(object))
        QObject::connect(shape, &TZkShape::OnPlay, hear("OnPlay"));
    if (auto* shape = qobject_cast<TCustomShape*>(object)) {
        QObject::connect(shape, &TCustomShape::OnMouseDown, hear("OnMouseDown"));
        QObject::connect(shape, &TCustomShape::OnMouseMove, hear("OnMouseMove"));
        QObject::connect(shape, &TCustomShape::OnMouseUp, hear("OnMouseUp"));
    }
    if (auto* canvas = qobject_cast<TZkOglCanvas*>(object)) {
        QObject::connect(canvas, &TZkOglCanvas::OnBeforeCompile, hear("OnBeforeCompile"));
        QObject::connect(canvas, &TZkOglCanvas::OnAfterCompile, hear("OnAfterCompile"));
    }
    if (auto* control = qobject_cast<TZKOglControl*>(object)) {
        QObject::connect(control, &TZKOglControl::OnMouseDown, hear("OnMouseDown"));
        QObject::connect(control, &TZKOglControl::OnMouseMove, hear("OnMouseMove"));
        QObject::connect(control, &TZKOglControl::OnMouseUp, hear("OnMouseUp"));
        QObject::connect(control, &TZKOglControl::OnResize, hear("OnResize"));
    }
    if (auto* timer = qobject_cast<TTimer*>(object))
        QObject::connect(timer, &TTimer::OnTimer, hear("OnTimer"));
    if (auto* timer = qobject_cast<TZkOglTimer*>(object))
        QObject::connect(timer, &TZkOglTimer::Ontimer, hear("Ontimer"));
    if (auto* way = qobject_cast<TZKOglWay*>(object))
        QObject::connect(way, &TZKOglWay::OnTimer, hear("OnTimer"));
    if (auto* navigator = qobject_cast<TZKOglNav*>(object))
        QObject::connect(navigator, &TZKOglNav::OnNav3D, hear("OnNav3D"));
    part->listened = true;
}

// Any of them may be the moment at which the program does something else.
void World::heard(int id, const char* event) {
    if (ending_)
        return;
    heard_.emplace_back(id, event);
    // Qt's own code that resizes a widget does not live through the end of that widget.
    if (std::string_view(event) != "OnResize")
        spring();
}

void World::told(Part* watcher, const QObject* gone) {
    if (ending_)
        return;
    for (const std::unique_ptr<Part>& part : gone_)
        if (part->address == gone) {
            ++watcher->told[part.get()];
            spring();
            return;
        }
    // What a component owns for itself, the clock of a way for instance, is a sibling of what it owns besides.
    const bool known = std::any_of(parts_.begin(), parts_.end(), [gone](const auto& p) { return p->address == gone; });
    if (known || gone->parent() != watcher->object->parent())
        fail(nameOf(watcher) + " is told of something that is still there or was never known");
}

void World::spring() {
    if (trap_ == 0 || inEventLoop_ || --trap_ > 0)
        return;
    disturbed_ = true;
    RandomChoices choices(bait_, 0);
    say("  in an event:");
    if (choices.OneIn(3))
        bind(choices);
    else
        remove(choices, true);
}

std::vector<Part*> World::all(const std::function<bool(const Part&)>& which) const {
    std::vector<Part*> found;
    for (const std::unique_ptr<Part>& part : parts_)
        if (which(*part))
            found.push_back(part.get());
    return found;
}

Part* World::any(Choices& choices, const std::function<bool(const Part&)>& which) const {
    std::vector<Part*> found = all(which);
    return found.empty() ? nullptr : choices.Of(found);
}

Part* World::anyOf(Choices& choices, std::initializer_list<Kind> kinds) const {
    return any(choices,
               [&](const Part& part) { return std::find(kinds.begin(), kinds.end(), part.kind) != kinds.end(); });
}

// --- what is said ----------------------------------------------------------------------------------------------------

std::string World::nameOf(const Part* part) {
    return part ? KindName(part->kind) + std::to_string(part->id) : "none";
}

void World::say(const std::string& text) {
    steps_.push_back(text);
    static const bool trace = qEnvironmentVariableIsSet("ZKOGL_MODEL_TRACE");
    if (trace)
        std::fprintf(stderr, "%d %s\n", step_, text.c_str());
}

std::string World::Program() const {
    std::string text;
    const std::size_t first = steps_.size() > stepsShown ? steps_.size() - stepsShown : 0;
    for (std::size_t i = first; i < steps_.size(); ++i)
        text += steps_[i] + "\n";
    return text;
}

void World::fail(const std::string& what) {
    if (failure_.empty())
        failure_ = what;
}

// --- what is compared ------------------------------------------------------------------------------------------------

void World::expectEvents(const std::vector<Event>& expected) {
    if (disturbed_)
        return;
    ++compared;
    if (heard_ == expected)
        return;
    const auto text = [](const std::vector<Event>& events) {
        std::string all;
        for (const Event& event : events)
            all += " " + std::to_string(event.first) + "." + std::string(event.second);
        return all;
    };
    fail("events: expected" + text(expected) + "; heard" + text(heard_));
}

namespace {

template <class Real, class Modelled>
bool sameList(const Real& real, const Modelled& modelled) {
    return std::equal(real.begin(), real.end(), modelled.begin(), modelled.end(),
                      [](const QObject* object, const Part* part) { return object == part->address; });
}

}  // namespace

void World::checkPart(const Part& part) {
    const auto differs = [&](const char* what) { fail(nameOf(&part) + ": " + what); };
    const auto refers = [&](const QObject* real, const Part* modelled, const char* what) {
        if (real != (modelled ? modelled->address : nullptr))
            differs(what);
    };
    if (!part.object)
        return differs("is gone");
    refers(part.object->parent(), part.owner, "owner");
    if (part.object->objectName() != part.name)
        differs("name");
    if (const auto* canvas = As<TZkOglCanvas>(part)) {
        refers(canvas->GetWinControl(), part.to, "WinControl");
        if (!sameList(canvas->Scenes(), part.list))
            differs("scenes");
        std::vector<Tlight*> lights;
        for (int i = 0; i < canvas->getLights()->Count(); ++i)
            lights.push_back(canvas->getLights()->getLights(i));
        if (!sameList(lights, part.lights))
            differs("lights");
        if (canvas->GetAutoCompile() != part.autoCompile)
            differs("AutoCompile");
        if (canvas->GetChanging() != (part.brackets > 0))
            differs("brackets");
        if (canvas->HasContext() && !options_.live)
            differs("has a context");
    } else if (const auto* control = As<TZKOglControl>(part)) {
        refers(reinterpret_cast<const QObject*>(control->Canvas()), part.shown, "Canvas");
    } else if (const auto* scene = As<TZKOglScene>(part)) {
        refers(scene->GetZkOglCanvas(), part.to, "ZkOglCanvas");
        if (scene->GetVisible() != part.visible)
            differs("Visible");
        std::vector<TZkShape*> shapes;
        for (int i = 0; i < scene->GetShapeCount(); ++i)
            shapes.push_back(scene->GetZkShape(i));
        if (!sameList(shapes, part.list))
            differs("shapes");
        if (const auto* copy = As<TZKOglRefScene>(part))
            refers(copy->GetReference(), part.reference, "ReferenceScene");
        if (part.to && static_cast<const TZkOglCanvas*>(part.to->address)->HasContext() != (scene->ListName() != 0))
            differs("list");
    } else if (const auto* shape = As<TZkShape>(part)) {
        refers(shape->GetDisplayList(), part.to, "Scene");
        if (const auto* solid = As<TCustomShape>(part))
            if (solid->GetVisible() != part.visible)
                differs("Visible");
        if (const auto* copy = As<TZKOglRefShape>(part))
            refers(copy->GetReference(), part.reference, "ReferenceShape");
    } else if (const auto* light = As<TZKOglLight>(part)) {
        refers(light->GetZKOglCanvas(), part.to, "ZkOglCanvas");
        if (light->GetEnabled() != part.enabled)
            differs("Enabled");
        if (part.to && static_cast<const TZkOglCanvas*>(part.to->address)->HasContext()) {
            const auto& lights = part.to->lights;
            const auto place = std::find(lights.begin(), lights.end(), &part) - lights.begin();
            if (light->GetHandle() != GL_LIGHT0 + place)
                differs("number");
        }
    } else if (const auto* navigator = As<TZKOglNav>(part)) {
        refers(navigator->GetZkOglCanvas(), part.to, "ZkOglCanvas");
        if ((navigator->Device() != nullptr) != part.hasDevice)
            differs("device");
    } else if (const auto* sequencer = As<TZkOglSequencer>(part)) {
        std::vector<TZkOglTimer*> timers;
        for (int i = 0; i < sequencer->TimerCount(); ++i)
            timers.push_back(sequencer->Timerat(i));
        if (!sameList(timers, part.list))
            differs("timers");
    } else if (const auto* timer = As<TZkOglTimer>(part)) {
        refers(timer->GetSequencer(), part.to, "Sequencer");
        if (timer->GetEnabled() != part.enabled)
            differs("Enabled");
    } else if (const auto* device = As<TZKCanvas3d>(part)) {
        refers(device->GetControl(), part.to, "Control");
    }
    if (step_ % 16 == 0)
        checkProperties(part);
}

// What a form would write: the reference, and the name it has now.
void World::checkProperties(const Part& part) {
    const auto reads = [&](const char* property, const Part* modelled) {
        const auto ref = part.object->property(property).value<ComponentRef>();
        if (ref.Object() != (modelled ? modelled->address : nullptr))
            fail(nameOf(&part) + ": property " + property);
        if (ref.Name() != (modelled ? modelled->name : QString()))
            fail(nameOf(&part) + ": name in property " + property);
    };
    if (const char* property = ReferencePropertyOf(part.kind))
        reads(property, part.to);
    if (part.kind == Kind::RefScene)
        reads("ReferenceScene", part.reference);
    if (part.kind == Kind::RefShape)
        reads("ReferenceShape", part.reference);
}

void World::checkMessages() {
    for (const QString& text : std::as_const(messages_)) {
        const bool noOpenGl = !options_.live && text == QLatin1String("error SetPixelFormat");
        if (!noOpenGl && !options_.wild)
            fail("message: " + text.toStdString());
    }
    messages_.clear();
}

void World::check() {
    for (const std::unique_ptr<Part>& part : gone_)
        if (part->object)
            fail(nameOf(part.get()) + " is still there");
    // A control that a canvas has left is taken by another one that is bound to it, when its window is exposed.
    for (const std::unique_ptr<Part>& part : parts_) {
        if (part->kind != Kind::Control || part->shown || !part->object || !options_.live)
            continue;
        const auto* canvas = static_cast<const TZKOglControl*>(part->object.data())->Canvas();
        for (const std::unique_ptr<Part>& other : parts_)
            if (other->kind == Kind::Canvas && other->to == part.get() &&
                other->address == static_cast<const void*>(canvas))
                part->shown = other.get();
    }
    for (const std::unique_ptr<Part>& part : parts_)
        checkPart(*part);
    for (const std::unique_ptr<Part>& part : parts_) {
        if (part->kind != Kind::Watcher)
            continue;
        for (const auto& [gone, times] : part->told)
            if (times != 1)
                fail(nameOf(part.get()) + " is told " + std::to_string(times) + " times of " + nameOf(gone));
            else if (!part->expect.count(gone) && !disturbed_)
                fail(nameOf(part.get()) + " is told of " + nameOf(gone) + ", which is none of its business");
        for (const auto& expected : part->expect)
            if (!part->told.count(expected.first))
                fail(nameOf(part.get()) + " is not told of " + nameOf(expected.first));
        part->told.clear();
        part->expect.clear();
    }
    if (options_.live)
        for (const std::unique_ptr<Part>& part : parts_)
            if (part->kind == Kind::Canvas && part->object) {
                auto* canvas = static_cast<TZkOglCanvas*>(part->object.data());
                if (step_ % 8 == 0 && canvas->CheckCurrent()) {
                    const unsigned error = glGetError();
                    if (error != GL_NO_ERROR)
                        fail(nameOf(part.get()) + ": OpenGL error " + std::to_string(error) + " pending");
                }
            }
    checkMessages();
}

void World::End() {
    say("the end");
    ++step_;
    trap_ = 0;
    disturbed_ = false;
    for (const auto& which : {false, true}) {
        // forms first, with all that they own; then the rest
        for (Part* part : all([which](const Part& p) { return which || p.kind == Kind::Form; })) {
            if (std::none_of(parts_.begin(), parts_.end(), [part](const auto& p) { return p.get() == part; }))
                continue;
            QObject* const object = part->object;
            modelDelete(part);
            delete object;
            check();
            gone_.clear();
        }
    }
    if (!parts_.empty())
        fail("something is left");
}

}  // namespace zk::test
