#include "formparts.h"

#include <QWidget>

namespace zk::test {

static const ReferenceProperty<Part, Part> nextProperty("Next");
static const ReferenceProperty<Part, QWidget> panelProperty("Panel");

Part::Part(QObject* owner, const QString& name) : TComponent(owner) {
    setObjectName(name);
}

void Part::SetNext(Part* next) {
    if (next == this)
        throw EError("not itself");
    Next = next;
    if (next)
        Order << objectName() + QStringLiteral(" got ") + next->objectName();
}

void Part::SetPlace(const QString& place) {
    if (place == QLatin1String("nowhere"))
        throw EConvertError("nowhere is no place");
    Place = place;
}

void Part::Loaded() {
    TComponent::Loaded();
    ++TimesLoaded;
    Order << objectName();
}

void Part::writeNext(const ComponentRef& ref) {
    WriteReference(*this, "Next", ref, [this](QObject* object) { SetNext(static_cast<Part*>(object)); });
}

ComponentRef Part::readPanel() const {
    return ComponentRef(Panel);
}

void Part::writePanel(const ComponentRef& ref) {
    WriteReference(*this, "Panel", ref, [this](QObject* object) { Panel = static_cast<QWidget*>(object); });
}

void Part::writePlace(const QString& place) {
    WriteText(*this, "Place", place, [this, &place] { SetPlace(place); });
}

}  // namespace zk::test
