#pragma once

#include "world.h"

#include <zk/_zkdevice.h>
#include <zk/_zkoglcanvas.h>
#include <zk/_zkoglextools.h>
#include <zk/_zkogltools.h>

namespace zk::test {

const char* KindName(Kind kind);
bool IsShape(Kind kind);
bool IsScene(Kind kind);
bool IsWidget(Kind kind);
bool IsComponent(Kind kind);

/// The property that holds `Part::to`; null for kinds without one.
const char* ReferencePropertyOf(Kind kind);

/// The object, if it is of the class.
template <class T>
T* As(const Part& part) {
    return qobject_cast<T*>(part.object.data());
}

/// A component that tells of what it is told.
class Watcher : public TComponent {
  public:
    Watcher(QObject* owner, World& world, Part& part) : TComponent(owner), world_(world), part_(part) {}
    ~Watcher() override { AnnounceRemoval(); }
    void Notification(QObject* component, TOperation operation) override {
        TComponent::Notification(component, operation);
        world_.told(&part_, component);
    }

  private:
    World& world_;
    Part& part_;
};

}  // namespace zk::test
