#include "itemlist.h"

#include <zk/_zkxyz/blocks.h>

#include <algorithm>
#include <limits>
#include <new>
#include <span>

namespace zk {
namespace {

constexpr int DefaultDelta = 5;

std::size_t Bytes(std::int64_t items) {
    return static_cast<std::size_t>(std::max<std::int64_t>(items, 0)) * sizeof(void*);
}

std::span<void*> Slots(const TItemArray& list) {
    const int count = std::clamp(list.Count, 0, std::max(list.Capacity, 0));
    return {static_cast<void**>(list.Data), list.Data ? static_cast<std::size_t>(count) : 0};
}

bool Inside(const TItemArray& list, int i) {
    return i >= 0 && static_cast<std::size_t>(i) < Slots(list).size();
}

}  // namespace

void ListInit(TItemArray& list, int delta) {
    detail::LoanEnd(&list);
    list.Count = 0;
    list.Delta = std::max(delta, 0);
    list.Capacity = list.Delta;
    list.Data = nullptr;
    list.Data = detail::BlockNew(Bytes(list.Capacity));
}

TItemArray* ListCreate(int delta) {
    auto* list = new TItemArray;
    try {
        ListInit(*list, delta);
    } catch (...) {
        delete list;
        throw;
    }
    return list;
}

void Listadd(TItemArray& list, void* item) {
    AtInsert(list, list.Count, item);
}

void AtInsert(TItemArray& list, int i, void* item) {
    if (i < 0 || i > list.Count)
        return;
    if (list.Count >= list.Capacity) {
        const int delta = list.Delta > 0 ? list.Delta : DefaultDelta;
        const std::int64_t wanted = std::int64_t{list.Capacity} + delta;
        if (wanted > std::numeric_limits<std::int32_t>::max())
            throw std::bad_alloc();
        list.Data = detail::BlockGrow(&list, list.Data, list.Data ? Bytes(list.Capacity) : 0, Bytes(wanted));
        list.Delta = delta;
        list.Capacity = static_cast<std::int32_t>(wanted);
    }
    if (!list.Data)
        return;
    ++list.Count;
    const std::span<void*> slots = Slots(list);
    std::move_backward(slots.begin() + i, slots.end() - 1, slots.end());
    slots[static_cast<std::size_t>(i)] = item;
}

void* ListAt(const TItemArray& list, int i) {
    return Inside(list, i) ? Slots(list)[static_cast<std::size_t>(i)] : nullptr;
}

void ListAtPut(TItemArray& list, int i, void* item) {
    if (Inside(list, i))
        Slots(list)[static_cast<std::size_t>(i)] = item;
}

void ListExchange(TItemArray& list, int i, int j) {
    if (Inside(list, i) && Inside(list, j))
        std::swap(Slots(list)[static_cast<std::size_t>(i)], Slots(list)[static_cast<std::size_t>(j)]);
}

int LISTCOUNT(const TItemArray& list) {
    return list.Count;
}

int IndexOF(const TItemArray& list, const void* item) {
    const std::span<void*> slots = Slots(list);
    const auto found = std::find(slots.begin(), slots.end(), item);
    return found == slots.end() ? -1 : static_cast<int>(found - slots.begin());
}

void ListRemoveItem(TItemArray& list, const void* item) {
    AtDelete(list, IndexOF(list, item));
}

void AtDelete(TItemArray& list, int i) {
    ListAtPut(list, i, nullptr);
}

void ListPack(TItemArray& list) {
    const std::span<void*> slots = Slots(list);
    const auto end = std::remove(slots.begin(), slots.end(), nullptr);
    list.Count = static_cast<std::int32_t>(end - slots.begin());
}

void DeleteAll(TItemArray& list) {
    list.Count = 0;
}

void ListFree(TItemArray& list) {
    if (list.Data)
        detail::BlockFree(&list, list.Data);
    list.Data = nullptr;
    list.Capacity = 0;
    list.Count = 0;
}

}  // namespace zk
