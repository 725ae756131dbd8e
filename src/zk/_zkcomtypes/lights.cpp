#include "lights.h"

#include <zk/_zkxyz/errors.h>

#include <algorithm>
#include <string>

namespace zk {

namespace {

[[noreturn]] void badIndex(int index) {
    throw EListError("List index out of bounds (" + std::to_string(index) + ")");
}

}  // namespace

TLights::TLights(const TLightClass& LightClass) : lightClass_(LightClass) {}

TLights::~TLights() {
    // A light that goes may take itself and others out of the list, so each look starts anew.
    while (!lights_.empty()) {
        const QPointer<Tlight> light = lights_.back();
        lights_.pop_back();
        delete light.data();
    }
}

void TLights::pack() const {
    std::erase_if(lights_, [](const QPointer<Tlight>& light) { return light.isNull(); });
}

int TLights::Count() const {
    pack();
    return int(lights_.size());
}

Tlight* TLights::getLights(int Index) const {
    if (Index < 0 || Index >= Count())
        badIndex(Index);
    return lights_[std::size_t(Index)];
}

int TLights::Add(Tlight* Light) {
    if (!Light)
        return -1;
    pack();
    lights_.emplace_back(Light);
    return int(lights_.size()) - 1;
}

int TLights::IndexOf(const Tlight* Light) const {
    pack();
    const auto found = std::find_if(lights_.begin(), lights_.end(),
                                    [Light](const QPointer<Tlight>& light) { return light.data() == Light; });
    return found == lights_.end() ? -1 : int(found - lights_.begin());
}

int TLights::Remove(const Tlight* Light) {
    const int index = IndexOf(Light);
    if (index >= 0)
        Delete(index);
    return index;
}

void TLights::Delete(int Index) {
    if (Index < 0 || Index >= Count())
        badIndex(Index);
    lights_.erase(lights_.begin() + Index);
}

void TLights::Clear() {
    lights_.clear();
}

}  // namespace zk
