// What a step can do. The model goes first: what happens inside of the real operation finds it up to date.
#include "parts.h"
#include "world.h"

#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/_zkxyz/errors.h>

#include <QCoreApplication>
#include <QEvent>
#include <QTest>

#include <algorithm>
#include <utility>

namespace zk::test {

namespace {

constexpr int fewParts = 24;
constexpr int mostParts = 44;
constexpr int mostLights = 8;  // that every OpenGL has

}  // namespace

void World::Step(Choices& choices) {
    ++step_;
    disturbed_ = false;
    heard_.clear();
    using Member = void (World::*)(Choices&);
    static constexpr std::pair<int, Member> steps[] = {
        {12, &World::create},   {7, &World::removeOne}, {16, &World::bind},      {8, &World::refer},
        {4, &World::reparent},  {3, &World::rename},    {8, &World::bracket},    {8, &World::flag},
        {4, &World::listShape}, {6, &World::ask},       {6, &World::tick},       {3, &World::navigate},
        {4, &World::mouse},     {8, &World::paint},     {2, &World::pick},       {4, &World::attributes},
        {10, &World::setValue}, {4, &World::arm},       {1, &World::lightClass}, {2, &World::events},
        {1, &World::size},
    };
    int total = 0;
    for (const auto& step : steps)
        total += step.first;
    // A small world is soon a larger one.
    int at = int(parts_.size()) < fewParts && choices.OneIn(2) ? 0 : choices.Below(total);
    for (const auto& [weight, member] : steps) {
        if (at < weight) {
            try {
                (this->*member)(choices);
            } catch (const std::exception& error) {
                fail(std::string("exception: ") + error.what());
            }
            break;
        }
        at -= weight;
    }
    check();
    gone_.clear();
}

// --- coming and going ------------------------------------------------------------------------------------------------

void World::create(Choices& choices) {
    if (int(parts_.size()) >= mostParts) {
        removeOne(choices);
        return;
    }
    // What others refer to should be there, but OpenGL's contexts are dear.
    static constexpr std::pair<int, Kind> weights[] = {
        {1, Kind::Form},      {1, Kind::Plain},    {1, Kind::Panel},    {3, Kind::Canvas}, {3, Kind::Control},
        {6, Kind::Scene},     {4, Kind::RefScene}, {3, Kind::Box},      {3, Kind::Sphere}, {2, Kind::Cylinder},
        {2, Kind::Plane},     {4, Kind::Shape},    {5, Kind::RefShape}, {4, Kind::Light},  {2, Kind::Navigator},
        {3, Kind::Sequencer}, {4, Kind::Timer},    {2, Kind::Way},      {2, Kind::Device}, {1, Kind::Ellipse},
        {1, Kind::Clock},     {5, Kind::Watcher}};
    int total = 0;
    for (const auto& weight : weights)
        total += weight.first;
    int at = choices.Below(total);
    Kind kind = Kind::Scene;
    for (const auto& [weight, which] : weights) {
        if (at < weight) {
            kind = which;
            break;
        }
        at -= weight;
    }
    const auto count = [this](Kind which) { return all([which](const Part& p) { return p.kind == which; }).size(); };
    const std::size_t most = kind == Kind::Form                              ? 3
                             : kind == Kind::Light                           ? mostLights
                             : kind == Kind::Canvas || kind == Kind::Control ? 3
                                                                             : mostParts;
    if (count(kind) >= most)
        return;
    Part* owner = nullptr;
    if (kind != Kind::Form && !choices.OneIn(8)) {
        owner = IsWidget(kind) || !choices.OneIn(6)
                    ? anyOf(choices, {Kind::Form})
                    : any(choices, [](const Part& part) { return part.kind != Kind::Panel; });
    }
    Part* const part = make(kind, owner);
    if (!choices.OneIn(3))
        listen(part);
    say("create " + nameOf(part) + " of " + nameOf(owner) + (part->listened ? ", listened to" : ""));
}

void World::deletePart(Part* part, bool later) {
    QObject* const object = part->object;
    deleting_.push_back(part);
    modelDelete(part);
    if (later) {
        object->deleteLater();
        QCoreApplication::sendPostedEvents(object, QEvent::DeferredDelete);
    } else {
        delete object;
    }
    deleting_.pop_back();
}

void World::remove(Choices& choices, bool nested) {
    Part* const part = any(choices, [&](const Part& candidate) {
        if (candidate.kind == Kind::Form && !choices.OneIn(6))
            return false;
        // Whoever deletes the owner of what is being deleted deletes that twice: nobody can make up for it.
        for (const Part* root : deleting_)
            for (const Part* above = root; above; above = above->owner)
                if (above == &candidate)
                    return false;
        return true;
    });
    if (!part)
        return;
    const bool later = !nested && choices.OneIn(4);
    say("delete " + nameOf(part) + (later ? " later" : ""));
    deletePart(part, later);
}

void World::removeOne(Choices& choices) {
    remove(choices, false);
}

void World::reparent(Choices& choices) {
    Part* const part = any(choices, [](const Part& candidate) { return candidate.kind != Kind::Form; });
    if (!part)
        return;
    Part* owner = nullptr;
    if (!choices.OneIn(6))
        owner = any(choices, [&](const Part& candidate) {
            if (IsWidget(part->kind) ? candidate.kind != Kind::Form : candidate.kind == Kind::Panel)
                return false;
            for (const Part* above = &candidate; above; above = above->owner)
                if (above == part)
                    return false;
            return true;
        });
    say("give " + nameOf(part) + " to " + nameOf(owner));
    if (std::exchange(part->owner, owner) == owner)
        return;
    if (part->kind == Kind::Navigator && owner)
        part->hasDevice = true;
    if (IsWidget(part->kind)) {
        auto* const widget = static_cast<QWidget*>(part->object.data());
        widget->setParent(owner ? static_cast<QWidget*>(owner->object.data()) : nullptr);
        if (options_.live && owner)
            widget->show();
    } else {
        part->object->setParent(owner ? owner->object.data() : nullptr);
    }
}

void World::rename(Choices& choices) {
    Part* const part = any(choices, [](const Part&) { return true; });
    if (!part)
        return;
    part->name = QStringLiteral("%1_%2").arg(QLatin1String(KindName(part->kind))).arg(choices.Below(30));
    say("rename " + nameOf(part) + " " + part->name.toStdString());
    part->object->setObjectName(part->name);
}

// --- references ------------------------------------------------------------------------------------------------------

void World::realBind(Part* part, Part* target) {
    QObject* const to = target ? target->object.data() : nullptr;
    if (auto* canvas = As<TZkOglCanvas>(*part))
        canvas->SetWinControl(static_cast<QWidget*>(to));
    else if (auto* scene = As<TZKOglScene>(*part))
        scene->SetZkOglCanvas(static_cast<TZkOglCanvas*>(to));
    else if (auto* shape = As<TZkShape>(*part))
        shape->SetDisplayList(static_cast<TDisplayList*>(to));
    else if (auto* light = As<TZKOglLight>(*part))
        light->SetZkOglCanvas(static_cast<TZkOglCanvas*>(to));
    else if (auto* navigator = As<TZKOglNav>(*part))
        navigator->SetZkOglCanvas(static_cast<TZkOglCanvas*>(to));
    else if (auto* timer = As<TZkOglTimer>(*part))
        timer->SetSequencer(static_cast<TZkOglSequencer*>(to));
    else if (auto* device = As<TZKCanvas3d>(*part))
        device->Setcontrol(static_cast<QWidget*>(to));
}

void World::bind(Choices& choices) {
    Part* const part = any(choices, [&](const Part& candidate) {
        if (candidate.kind == Kind::Canvas && options_.live && !choices.OneIn(5))
            return false;
        return candidate.kind == Kind::Way || ReferencePropertyOf(candidate.kind) != nullptr;
    });
    if (!part)
        return;
    const char* const property = ReferencePropertyOf(part->kind);
    const auto fits = [part](const Part& candidate) {
        if (IsShape(part->kind) || part->kind == Kind::Way)
            return IsScene(candidate.kind);
        if (part->kind == Kind::Timer)
            return candidate.kind == Kind::Sequencer;
        if (part->kind == Kind::Canvas || part->kind == Kind::Device)
            return candidate.kind == Kind::Control || candidate.kind == Kind::Panel;
        return candidate.kind == Kind::Canvas;
    };
    Part* const target = choices.OneIn(5) ? nullptr : any(choices, fits);
    const bool throughProperty = property && choices.OneIn(2);
    if (throughProperty && choices.OneIn(6)) {
        Part* const wrong = any(choices, [&](const Part& candidate) {
            const bool anyWidget = part->kind == Kind::Canvas || part->kind == Kind::Device;
            return !fits(candidate) && !(anyWidget && IsWidget(candidate.kind));
        });
        if (wrong) {
            say("bind " + nameOf(part) + " to " + nameOf(wrong) + ", which does not fit");
            try {
                part->object->setProperty(property, QVariant::fromValue(ComponentRef(wrong->object)));
                fail("it was not refused");
            } catch (const EError&) {
            }
            return;
        }
    }
    say("bind " + nameOf(part) + " to " + nameOf(target) + (throughProperty ? " through its property" : ""));
    modelBind(part, target);
    if (throughProperty)
        part->object->setProperty(property,
                                  QVariant::fromValue(ComponentRef(target ? target->object.data() : nullptr)));
    else
        realBind(part, target);
}

void World::refer(Choices& choices) {
    Part* const part = anyOf(choices, {Kind::RefScene, Kind::RefShape});
    if (!part)
        return;
    const bool scene = part->kind == Kind::RefScene;
    Part* const target = choices.OneIn(6) ? nullptr : any(choices, [scene](const Part& candidate) {
        return scene ? IsScene(candidate.kind) : IsShape(candidate.kind);
    });
    // Itself, or one that refers to it; circles of three and more are accepted.
    const bool circle = target && (target == part || target->reference == part);
    say("refer " + nameOf(part) + " to " + nameOf(target) + (circle ? ", which is refused" : ""));
    if (!circle)
        part->reference = target;
    bool refused = false;
    QObject* const to = target ? target->object.data() : nullptr;
    try {
        if (choices.OneIn(2))
            part->object->setProperty(scene ? "ReferenceScene" : "ReferenceShape",
                                      QVariant::fromValue(ComponentRef(to)));
        else if (scene)
            As<TZKOglRefScene>(*part)->SetReference(static_cast<TZKOglScene*>(to));
        else
            As<TZKOglRefShape>(*part)->SetReference(static_cast<TCustomShape*>(to));
    } catch (const EError& error) {
        refused = std::string(error.what()) == " Zyklischer Verweis ";
    }
    if (refused != circle)
        fail(circle ? "the circle is accepted" : "the reference is refused");
}

void World::listShape(Choices& choices) {
    Part* const scene = any(choices, [](const Part& part) { return IsScene(part.kind); });
    Part* const shape = any(choices, [&](const Part& part) {
        return (IsShape(part.kind) || part.kind == Kind::Way) && (!part.to || part.to == scene);
    });
    if (!scene || !shape)
        return;
    if (choices.OneIn(2)) {
        say("list " + nameOf(shape) + " in " + nameOf(scene));
        scene->list.push_back(shape);
        As<TDisplayList>(*scene)->AddShape(As<TZkShape>(*shape));
    } else {
        say("unlist " + nameOf(shape) + " of " + nameOf(scene));
        const auto first = std::find(scene->list.begin(), scene->list.end(), shape);
        if (first != scene->list.end())
            scene->list.erase(first);
        As<TDisplayList>(*scene)->RemoveShape(As<TZkShape>(*shape));
    }
}

void World::ask(Choices& choices) {
    Part* const watcher = anyOf(choices, {Kind::Watcher});
    Part* const part = any(choices, [](const Part&) { return true; });
    if (!watcher || !part)
        return;
    auto* const real = static_cast<Watcher*>(watcher->object.data());
    if (choices.OneIn(4)) {
        say(nameOf(watcher) + " no longer asks of " + nameOf(part));
        watcher->asked.erase(part);
        real->RemoveFreeNotification(part->object);
    } else {
        say(nameOf(watcher) + " asks of " + nameOf(part));
        if (part != watcher)
            watcher->asked.insert(part);
        real->FreeNotification(part->object);
    }
}

void World::lightClass(Choices& choices) {
    Part* const canvas = anyOf(choices, {Kind::Canvas});
    if (!canvas)
        return;
    say("another class of lights for " + nameOf(canvas));
    const std::vector<Part*> lights = canvas->lights;
    for (Part* light : lights)
        deleting_.push_back(light);
    auto* const real = As<TZkOglCanvas>(*canvas);
    // One of them may own others, or the canvas.
    for (auto light = lights.rbegin(); light != lights.rend(); ++light)
        if (std::any_of(parts_.begin(), parts_.end(), [&](const auto& part) { return part.get() == *light; }))
            modelDelete(*light);
    real->SetLightClass({"TZKOglLight", [](QObject* owner) -> Tlight* { return new TZKOglLight(owner); }});
    deleting_.resize(deleting_.size() - lights.size());
}

// --- events ----------------------------------------------------------------------------------------------------------

void World::arm(Choices& choices) {
    trap_ = 1 + choices.Below(6);
    bait_ = std::uint32_t(choices.Below(65536));
    say("something happens within event " + std::to_string(trap_));
}

void World::tick(Choices& choices) {
    Part* const part = anyOf(choices, {Kind::Sequencer, Kind::Sequencer, Kind::Timer, Kind::Way, Kind::Clock});
    if (!part)
        return;
    std::vector<Event> events;
    std::vector<Part*> timers;
    if (part->kind == Kind::Timer)
        timers = {part};
    else if (part->kind == Kind::Sequencer)
        timers = part->list;
    if (part->kind == Kind::Sequencer && !timers.empty() && choices.OneIn(5)) {
        Part* const timer = choices.Of(timers);
        say("take " + nameOf(timer) + " out of " + nameOf(part));
        std::erase(part->list, timer);
        As<TZkOglSequencer>(*part)->removetimer(As<TZkOglTimer>(*timer));
        return;
    }
    say("tick " + nameOf(part));
    if (part->kind != Kind::Timer && part->listened)
        events.emplace_back(part->id, "OnTimer");
    bool known = true;
    for (Part* timer : timers) {
        known = known && timer->phaseKnown;
        modelTick(timer, events);
    }
    if (auto* timer = As<TZkOglTimer>(*part))
        timer->Timer();
    else if (auto* way = As<TZKOglWay>(*part))
        way->TimerDoTimer(way);
    else
        As<TTimer>(*part)->Timer();
    if (known)
        expectEvents(events);
    // Whom something in between kept from being ticked is not asked for the rest of its life.
    if (disturbed_)
        for (Part* timer : timers)
            timer->phaseKnown = false;
}

void World::navigate(Choices& choices) {
    Part* const part = anyOf(choices, {Kind::Navigator});
    if (!part)
        return;
    auto* const navigator = As<TZKOglNav>(*part);
    switch (choices.Below(4)) {
        case 0:
            say("the cube of " + nameOf(part) + " goes");
            part->hasDevice = false;
            delete navigator->Device();
            break;
        case 1:
            say(nameOf(part) + ": Aufriss");
            navigator->ClickAufriss();
            break;
        case 2:
            say(nameOf(part) + ": double click");
            navigator->DblClick();
            break;
        default: {
            say("drag " + nameOf(part));
            const QPointer<TZKOglNav> self = navigator;
            const bool quiet = !part->to;  // otherwise repaints may be heard as well
            std::vector<Event> events;
            if (part->hasDevice && part->listened)
                events.emplace_back(part->id, "OnNav3D");
            navigator->MouseDown(Qt::LeftButton, ssLeft, 1, 1);
            if (self)
                navigator->MouseMove(ssLeft, 1 + choices.Below(20), choices.Below(20));
            if (quiet)
                expectEvents(events);
            break;
        }
    }
}

void World::mouse(Choices& choices) {
    Part* const part =
        any(choices, [](const Part& candidate) { return IsShape(candidate.kind) || candidate.kind == Kind::Control; });
    if (!part)
        return;
    say("press on " + nameOf(part));
    std::vector<Event> events;
    if (part->listened)
        events.emplace_back(part->id, "OnMouseDown");
    if (auto* shape = As<TCustomShape>(*part)) {
        shape->MouseDown(Qt::LeftButton, ssLeft, 3, 4);
        expectEvents(events);
        return;
    }
    // What lies under the pointer hears of it before.
    As<TZKOglControl>(*part)->MouseDown(Qt::LeftButton, ssLeft, choices.Below(40), choices.Below(30));
    if (!disturbed_ && part->listened && (heard_.empty() || heard_.back() != events.front()))
        fail("the control's own event is missing");
}

void World::paint(Choices& choices) {
    Part* const canvas = anyOf(choices, {Kind::Canvas});
    if (!canvas)
        return;
    auto* const real = As<TZkOglCanvas>(*canvas);
    say("repaint " + nameOf(canvas));
    if (!hasContext(canvas)) {
        real->Refresh();
        expectEvents({});
        return;
    }
    if (paints(canvas) && real->Context()->IsSizeNew()) {
        real->Refresh();  // which draws twice
        return;
    }
    const std::vector<Event> events = paints(canvas) ? paintEvents(canvas) : std::vector<Event>();
    real->SetAutoCompile(false);
    const QPointer<TZkOglCanvas> self = real;
    real->Refresh();
    if (self)
        real->SetAutoCompile(canvas->autoCompile);
    expectEvents(events);
}

void World::pick(Choices& choices) {
    Part* const canvas = anyOf(choices, {Kind::Canvas});
    if (!canvas)
        return;
    auto* const real = As<TZkOglCanvas>(*canvas);
    if (choices.OneIn(3)) {
        say("what is inside, " + nameOf(canvas));
        real->InsideOf({0.5, 0.5, 0.5});
    } else {
        say("pick in " + nameOf(canvas));
        real->Select(choices.Below(40), choices.Below(30));
    }
}

void World::events(Choices& choices) {
    say("the event loop");
    inEventLoop_ = true;
    QCoreApplication::processEvents();
    if (options_.live && choices.OneIn(4))
        QTest::qWait(5);
    inEventLoop_ = false;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void World::size(Choices& choices) {
    Part* const part = anyOf(choices, {Kind::Control, Kind::Panel, Kind::Navigator});
    if (!part)
        return;
    say("resize " + nameOf(part));
    static_cast<QWidget*>(part->object.data())->resize(10 + choices.Below(60), 10 + choices.Below(40));
}

}  // namespace zk::test
