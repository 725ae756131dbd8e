// Steps that change values: brackets, switches, properties and attributes.
#include "parts.h"
#include "values.h"
#include "world.h"

#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/propertypath.h>

namespace zk::test {

void World::bracket(Choices& choices) {
    Part* const canvas = anyOf(choices, {Kind::Canvas});
    if (!canvas)
        return;
    auto* const real = As<TZkOglCanvas>(*canvas);
    const bool open = canvas->brackets < 1 ? !choices.OneIn(8) : choices.OneIn(3);
    say((open ? "open " : "close ") + nameOf(canvas));
    canvas->brackets += open ? 1 : -1;
    // One that closes it, or makes up for one close too many, repaints.
    const bool compiles = !canvas->autoCompile && hasContext(canvas) && !real->Context()->IsSizeNew();
    const std::vector<Event> events = paints(canvas) ? paintEvents(canvas) : std::vector<Event>();
    real->SetChanging(open);
    // A handler may have deleted the canvas, and what would have come after it does not.
    if (canvas->object && (compiles || !hasContext(canvas)))
        expectEvents(events);
}

void World::flag(Choices& choices) {
    Part* const part = any(choices, [](const Part& candidate) {
        return IsShape(candidate.kind) || IsScene(candidate.kind) || candidate.kind == Kind::Light ||
               candidate.kind == Kind::Timer || candidate.kind == Kind::Canvas;
    });
    if (!part)
        return;
    const bool on = choices.OneIn(2);
    say("switch " + nameOf(part) + (on ? " on" : " off"));
    if (auto* canvas = As<TZkOglCanvas>(*part)) {
        part->autoCompile = on;
        canvas->SetAutoCompile(on);
    } else if (auto* scene = As<TZKOglScene>(*part)) {
        part->visible = on;
        scene->SetVisible(on);
    } else if (auto* shape = As<TCustomShape>(*part)) {
        if (choices.OneIn(3)) {
            shape->SetNohit(on);
        } else if (choices.OneIn(3)) {
            shape->SetParentAttributes(on);
        } else {
            part->visible = on;
            shape->SetVisible(on);
        }
    } else if (auto* light = As<TZKOglLight>(*part)) {
        part->enabled = on;
        light->SetEnabled(on);
    } else if (auto* timer = As<TZkOglTimer>(*part)) {
        part->enabled = on;
        timer->SetEnabled(on);
    }
}

void World::setValue(Choices& choices) {
    Part* const part = any(
        choices, [](const Part& candidate) { return IsComponent(candidate.kind) && candidate.kind != Kind::Watcher; });
    if (!part)
        return;
    const std::vector<QString>& paths = ValuePaths(*part->object);
    if (paths.empty())
        return;
    const QString path = choices.Of(paths);
    const QVariant value = ValueFor(*part->object, path, choices, options_.wild);
    if (!value.isValid())
        return;
    say("set " + nameOf(part) + "." + path.toStdString() + " to " + ValueText(value).toStdString());
    SetValue(*part->object, path, value, options_.wild);
    readBack(part);
}

// Values that the model has an eye on are what the object says; a value may have been refused.
void World::readBack(Part* part) {
    if (!part->object)
        return;
    if (const auto* canvas = As<TZkOglCanvas>(*part))
        part->autoCompile = canvas->GetAutoCompile();
    if (const auto* scene = As<TZKOglScene>(*part))
        part->visible = scene->GetVisible();
    if (const auto* shape = As<TCustomShape>(*part))
        part->visible = shape->GetVisible();
    if (const auto* light = As<TZKOglLight>(*part))
        part->enabled = light->GetEnabled();
    if (const auto* timer = As<TZkOglTimer>(*part)) {
        part->enabled = timer->GetEnabled();
        part->displacement = timer->GetDisplacement();
        part->intervals = timer->GetIntervals();
    }
}

void World::attributes(Choices& choices) {
    const auto has = [](const Part& part) { return IsShape(part.kind) || IsScene(part.kind); };
    Part* const part = any(choices, has);
    Part* const source = any(choices, has);
    if (!part)
        return;
    const auto of = [](const Part& from) {
        const auto* scene = As<TZKOglScene>(from);
        return scene ? scene->getAttributes() : As<TCustomShape>(from)->getAttributes();
    };
    Tattributes* const own = of(*part);
    switch (choices.Below(4)) {
        case 0: {
            say("attributes of " + nameOf(source) + " for " + nameOf(part));
            if (auto* scene = As<TZKOglScene>(*part))
                scene->setAttributes(of(*source));
            else
                As<TCustomShape>(*part)->setAttributes(of(*source));
            break;
        }
        case 1: {
            say("another material for " + nameOf(part));
            const QPointer<Tmaterial> old = own->getMaterial();
            auto* const material = new Tmaterial;
            own->ReplaceMaterial(material);
            if (old || own->getMaterial() != material)
                fail("the material was not replaced");
            break;
        }
        case 2: {
            say("another texture for " + nameOf(part));
            const QPointer<TTexture> old = own->getTexture();
            auto* const texture = new TTexture;
            own->ReplaceTexture(texture);
            if (old || own->getTexture() != texture)
                fail("the texture was not replaced");
            break;
        }
        default: {
            say("a batch of changes of " + nameOf(part));
            int changes = 0;
            const QMetaObject::Connection counting =
                QObject::connect(own->getMaterial(), &Tmaterial::OnChange, own, [&] { ++changes; });
            const QPointer<Tmaterial> material = own->getMaterial();
            const int count = choices.Below(4);
            material->SetChanging(true);
            for (int i = 0; i < count; ++i)
                material->SetDiffuse(TColor(choices.Below(256)));
            material->SetChanging(false);
            if (changes != 1)
                fail("a batch of changes tells of " + std::to_string(changes));
            QObject::disconnect(counting);
            break;
        }
    }
}

}  // namespace zk::test
