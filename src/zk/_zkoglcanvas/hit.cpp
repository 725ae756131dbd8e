#include "hit.h"

#include <unordered_map>

namespace zk {

namespace {

std::unordered_map<std::int32_t, HitTarget*>& targets() {
    // never destroyed: a target may live in static storage itself
    static auto& table = *new std::unordered_map<std::int32_t, HitTarget*>;
    return table;
}

std::int32_t nextName() {
    static std::int32_t last = 0;
    do {
        last = last == INT32_MAX ? 1 : last + 1;
    } while (last == HitTarget::NoHit || targets().count(last) != 0);
    return last;
}

}  // namespace

HitTarget::HitTarget() : name_(nextName()) {
    targets().emplace(name_, this);
}

HitTarget::~HitTarget() {
    targets().erase(name_);
}

HitTarget* HitTarget::Of(std::int32_t name) {
    const auto found = targets().find(name);
    return found == targets().end() ? nullptr : found->second;
}

}  // namespace zk
