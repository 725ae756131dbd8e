// What every step must do, in terms of the model alone.
#include "parts.h"
#include "world.h"

#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/glsurface.h>

#include <algorithm>
#include <utility>

namespace zk::test {

const char* ReferencePropertyOf(Kind kind) {
    if (IsShape(kind))
        return "Scene";
    switch (kind) {
        case Kind::Canvas:
            return "WinControl";
        case Kind::Scene:
        case Kind::RefScene:
        case Kind::Light:
        case Kind::Navigator:
            return "ZkOglCanvas";
        case Kind::Timer:
            return "Sequencer";
        case Kind::Device:
            return "Control";
        default:
            return nullptr;
    }
}

// --- removal ---------------------------------------------------------------------------------------------------------

// All other components of the same owner are told of a component, and all who asked of whatever they asked for.
void World::modelAnnounce(Part* part) {
    for (const std::unique_ptr<Part>& other : parts_) {
        if (other->kind != Kind::Watcher || other.get() == part)
            continue;
        const bool related = IsComponent(part->kind) && part->owner && part->owner == other->owner;
        if (related || other->asked.count(part))
            other->expect[part] = 1;
        other->asked.erase(part);
    }
}

// Nothing refers to it or lists it any more.
void World::modelLeave(Part* part) {
    if (part->kind == Kind::Canvas)
        modelSetWinControl(part, nullptr);
    for (const std::unique_ptr<Part>& other : parts_) {
        if (other->to == part) {
            other->to = nullptr;
            if (other->kind == Kind::Light)
                other->enabled = false;
        }
        if (other->reference == part)
            other->reference = nullptr;
        if (other->shown == part)
            other->shown = nullptr;
        std::erase(other->list, part);
        std::erase(other->lights, part);
    }
}

void World::modelDelete(Part* part) {
    // A widget deletes its children before it says that it goes; any other object the other way round.
    const bool childrenFirst = part->kind == Kind::Form || part->kind == Kind::Panel;
    if (!childrenFirst) {
        modelAnnounce(part);
        modelLeave(part);
    }
    const QObjectList children = part->object ? part->object->children() : QObjectList();
    for (const QObject* child : children)
        for (std::size_t i = 0; i < parts_.size(); ++i)
            if (parts_[i]->address == child && parts_[i].get() != part) {
                modelDelete(parts_[i].get());
                break;
            }
    if (childrenFirst) {
        modelAnnounce(part);
        modelLeave(part);
    }
    const auto place = std::find_if(parts_.begin(), parts_.end(), [part](const auto& p) { return p.get() == part; });
    if (place == parts_.end())
        return;
    gone_.push_back(std::move(*place));
    parts_.erase(place);
}

// --- references ------------------------------------------------------------------------------------------------------

void World::modelSetWinControl(Part* canvas, Part* control) {
    Part* const old = canvas->to;
    if (old && old != control && old->shown == canvas)
        old->shown = nullptr;
    canvas->to = control;
    if (control && control->kind == Kind::Control)
        control->shown = canvas;
}

void World::modelBind(Part* part, Part* target) {
    if (part->kind == Kind::Canvas) {
        modelSetWinControl(part, target);
        return;
    }
    Part* const old = std::exchange(part->to, target);
    if (IsScene(part->kind)) {
        if (old)
            std::erase(old->list, part);
        if (target)
            target->list.push_back(part);
    } else if (part->kind == Kind::Light) {
        if (old)
            std::erase(old->lights, part);
        if (target)
            target->lights.push_back(part);
        else if (old)
            part->enabled = false;
    } else if (part->kind == Kind::Timer) {
        // It stays with the sequencer before.
        if (target && std::find(target->list.begin(), target->list.end(), part) == target->list.end())
            target->list.push_back(part);
    } else if (IsShape(part->kind) || part->kind == Kind::Way) {
        if (old) {
            const auto first = std::find(old->list.begin(), old->list.end(), part);
            if (first != old->list.end())
                old->list.erase(first);
        }
        if (target)
            target->list.push_back(part);
    }
}

// --- ticks -----------------------------------------------------------------------------------------------------------

void World::modelTick(Part* timer, std::vector<Event>& events) {
    const auto raise = [&] {
        if (timer->enabled && timer->listened)
            events.emplace_back(timer->id, "Ontimer");
    };
    if (!timer->started && timer->ticks == timer->displacement) {
        raise();
        timer->ticks = 0;
        timer->started = true;
    }
    if (timer->ticks == timer->intervals) {
        raise();
        timer->ticks = 0;
    }
    ++timer->ticks;
}

// --- repaints --------------------------------------------------------------------------------------------------------

bool World::hasContext(const Part* canvas) const {
    return canvas && As<TZkOglCanvas>(*canvas)->HasContext();
}

bool World::paints(const Part* canvas) const {
    const auto* real = As<TZkOglCanvas>(*canvas);
    return real->HasContext() && real->Getdc() && real->Getdc()->IsExposed() && canvas->brackets == 0;
}

Part* World::canvasOf(const Part& shape) {
    return shape.to ? shape.to->to : nullptr;
}

/// Of a repaint that compiles every scene.
std::vector<World::Event> World::paintEvents(Part* canvas) {
    std::vector<Event> events;
    for (Part* scene : canvas->list)
        playScene(scene, events);
    return events;
}

void World::playScene(Part* scene, std::vector<Event>& events) {
    if (scene->kind == Kind::Scene) {
        playOneScene(scene, events);
        return;
    }
    Part* const reference = scene->reference;
    if (!reference || scene->playing || !hasContext(scene->to))
        return;
    scene->playing = true;
    if (reference->to != scene->to) {
        playOneScene(scene, events);
    } else {
        const bool visible = std::exchange(reference->visible, scene->visible);
        playOneScene(scene, events);
        playScene(reference, events);
        reference->visible = visible;
    }
    scene->playing = false;
}

void World::playOneScene(Part* scene, std::vector<Event>& events) {
    if (!hasContext(scene->to) || !scene->visible || scene->playingOwn)
        return;
    scene->playingOwn = true;
    if (scene->to->listened)
        events.emplace_back(scene->to->id, "OnBeforeCompile");
    if (scene->listened)
        events.emplace_back(scene->id, "OnPlay");
    for (Part* shape : scene->list)
        playShape(shape, events);
    if (scene->to->listened)
        events.emplace_back(scene->to->id, "OnAfterCompile");
    scene->playingOwn = false;
}

void World::playShape(Part* shape, std::vector<Event>& events) {
    const auto onPlay = [&] {
        if (shape->listened)
            events.emplace_back(shape->id, "OnPlay");
    };
    if (shape->kind == Kind::Way) {
        onPlay();
        return;
    }
    Part* const canvas = canvasOf(*shape);
    if (!hasContext(canvas) || !shape->visible)
        return;
    if (shape->kind == Kind::Shape)
        onPlay();  // its geometry is what the handlers draw
    Part* const reference = shape->reference;
    if (reference && !shape->playing && canvasOf(*reference) == canvas) {
        shape->playing = true;
        const bool visible = std::exchange(reference->visible, shape->visible);
        playShape(reference, events);
        reference->visible = visible;
        shape->playing = false;
    }
    onPlay();
}

}  // namespace zk::test
