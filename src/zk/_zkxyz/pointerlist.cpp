#include "pointerlist.h"

#include <zk/_zkxyz/errors.h>

#include <algorithm>
#include <string>
#include <utility>

namespace zk {
namespace {

[[noreturn]] void BadIndex(int i) {
    throw EListError("List index out of bounds (" + std::to_string(i) + ")");
}

}  // namespace

std::size_t TPointerList::Checked(int i) const {
    if (i < 0 || i >= Count())
        BadIndex(i);
    return static_cast<std::size_t>(i);
}

int TPointerList::Add(void* item) {
    items_.push_back(item);
    return Count() - 1;
}

void TPointerList::Insert(int i, void* item) {
    if (i < 0 || i > Count())
        BadIndex(i);
    items_.insert(items_.begin() + i, item);
}

void TPointerList::Exchange(int i, int j) {
    const std::size_t first = Checked(i);
    const std::size_t second = Checked(j);
    std::swap(items_[first], items_[second]);
}

int TPointerList::IndexOf(const void* item) const {
    const auto found = std::find(items_.begin(), items_.end(), item);
    return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void TPointerList::Delete(int i) {
    void* item = items_[Checked(i)];
    items_.erase(items_.begin() + i);
    if (item)
        Dropped(item);
}

int TPointerList::Remove(const void* item) {
    const int i = IndexOf(item);
    if (i >= 0)
        Delete(i);
    return i;
}

void TPointerList::Pack() {
    std::erase(items_, nullptr);
}

void TPointerList::Clear() {
    // An item leaves before anybody is told, so that the list is in order if being told throws.
    while (!items_.empty()) {
        void* item = items_.back();
        items_.pop_back();
        if (item)
            Dropped(item);
    }
}

void TPointerList::Dropped(void* /*item*/) {}

}  // namespace zk
