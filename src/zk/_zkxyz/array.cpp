#include "array.h"

#include <zk/_zkxyz/blocks.h>
#include <zk/_zkxyz/message.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <new>
#include <vector>

namespace zk {
namespace {

constexpr int DefaultDelta = 5;
constexpr std::int64_t ModestBytes = 10000;

std::size_t ItemBytes(const TARRAY& arr) {
    return static_cast<std::size_t>(std::max(arr.ItemSize, 0));
}

std::size_t Bytes(const TARRAY& arr, std::int64_t items) {
    return static_cast<std::size_t>(std::max<std::int64_t>(items, 0)) * ItemBytes(arr);
}

char* At(const TARRAY& arr, std::int64_t i) {
    return static_cast<char*>(arr.Data) + Bytes(arr, i);
}

bool Full(const TARRAY& arr) {
    return arr.Count >= arr.Capacity;
}

// Elements have bytes, and there is no block to put them in.
bool LacksBlock(const TARRAY& arr) {
    return !arr.Data && arr.ItemSize > 0;
}

// Capacity grows by Delta until needed elements fit, in one step.
void GrowBy(TARRAY& arr, int delta, std::int64_t needed) {
    const std::int64_t capacity = std::max(arr.Capacity, 0);
    const std::int64_t steps = (needed - capacity + delta - 1) / delta;
    const std::int64_t wanted = capacity + steps * delta;
    if (wanted > std::numeric_limits<std::int32_t>::max())
        throw std::bad_alloc();
    if (ItemBytes(arr) > 0)
        arr.Data = detail::BlockGrow(&arr, arr.Data, arr.Data ? Bytes(arr, capacity) : 0, Bytes(arr, wanted));
    arr.Capacity = static_cast<std::int32_t>(wanted);
    arr.Delta = delta;
}

// The growth of ArrayInsert and Arraysetcount: all slots that are not in use are zero afterwards.
void GrowZeroed(TARRAY& arr, std::int64_t needed) {
    const int oldCapacity = arr.Capacity;
    GrowBy(arr, arr.Delta > 0 ? arr.Delta : DefaultDelta, needed);
    if (arr.Data && arr.Count >= 0 && arr.Count < oldCapacity)
        std::memset(At(arr, arr.Count), 0, Bytes(arr, oldCapacity - arr.Count));
}

// The growth of ArrayInsertData and ArrayAppendData: without a Delta there is none.
bool GrowPlain(TARRAY& arr) {
    if (arr.Delta <= 0)
        return false;
    GrowBy(arr, arr.Delta, std::int64_t{arr.Count} + 1);
    return true;
}

// What is to be written may lie in the block that is about to move or to be shifted: it is set aside first.
class Payload {
  public:
    Payload(const TARRAY& arr, const void* p, std::size_t bytes) : data_(p), bytes_(bytes) {
        const auto* from = static_cast<const char*>(p);
        const auto* begin = static_cast<const char*>(arr.Data);
        const std::size_t held = Bytes(arr, arr.Capacity);
        if (!begin || !from || std::less<>()(from, begin) || !std::less<>()(from, begin + held))
            return;
        bytes_ = std::min(bytes, static_cast<std::size_t>(begin + held - from));
        copy_.assign(from, from + bytes_);
        data_ = copy_.data();
    }

    void WriteTo(void* slot) const {
        if (data_ && bytes_ > 0)
            std::memcpy(slot, data_, bytes_);
    }

  private:
    const void* data_;
    std::size_t bytes_;
    std::vector<char> copy_;
};

void MoveUp(TARRAY& arr, int i) {
    if (arr.Data && i < arr.Count)
        std::memmove(At(arr, i + 1), At(arr, i), Bytes(arr, arr.Count - i));
}

}  // namespace

void ArrayInit(TARRAY& arr, int itemSize, int delta) {
    detail::LoanEnd(&arr);
    arr.Reserved = 0;
    arr.Data = nullptr;
    arr.Count = 0;
    arr.Delta = delta > 0 ? delta : DefaultDelta;
    arr.Capacity = arr.Delta;
    arr.ItemSize = std::max(itemSize, 0);
    if (std::int64_t{arr.Delta} * arr.ItemSize > ModestBytes) {
        ShowMessage("bescheidenheit ist eine tugend");
        return;
    }
    arr.Data = detail::BlockNew(Bytes(arr, arr.Capacity));
}

void ArrayClear(TARRAY& arr) {
    const std::size_t bytes = Bytes(arr, arr.Capacity);
    void* block = std::exchange(arr.Data, nullptr);
    arr.Count = 0;
    arr.Capacity = 0;
    arr.Delta = 0;
    if (!block)
        return;
    // The record is in order before anything is said: a message may run the caller's code.
    if (!detail::BlockFree(&arr, block)) {
        if (bytes == 0)
            return;
        ShowMessage("exception bei FreeMem von ArrayClear");
        MessageBeep();
    } else if (bytes > ModestBytes) {
        ShowMessage("bescheidenheit ist eine tugend (freigeben)");
    }
}

void ArrayDispose(TARRAY& arr) {
    if (arr.Data)
        detail::BlockFree(&arr, arr.Data);
    arr.Data = nullptr;
    arr.Capacity = 0;
    arr.Count = 0;
}

void ArrayCopy(TARRAY& dst, const TARRAY& src) {
    if (&dst == &src)
        return;
    if (dst.Data == src.Data)
        dst.Data = nullptr;
    ArrayClear(dst);
    ArrayInit(dst, src.ItemSize, src.Capacity);
    dst.Count = src.Count;
    if (dst.Data && src.Data)
        std::memcpy(dst.Data, src.Data, std::min(Bytes(src, src.Capacity), Bytes(dst, dst.Capacity)));
}

void* ArrayGetData(TARRAY& arr, int i) {
    const bool inside = arr.Data && arr.ItemSize > 0 && i >= 0 && i < arr.Capacity;
    return inside ? At(arr, i) : nullptr;
}

const void* ArrayGetData(const TARRAY& arr, int i) {
    const bool inside = arr.Data && arr.ItemSize > 0 && i >= 0 && i < arr.Capacity;
    return inside ? At(arr, i) : nullptr;
}

void* ArrayInsert(TARRAY& arr, int i) {
    if (i < 0)
        i = arr.Count;
    if (i > arr.Count)
        return nullptr;
    if (Full(arr))
        GrowZeroed(arr, std::int64_t{arr.Count} + 1);
    if (LacksBlock(arr))
        return nullptr;
    MoveUp(arr, i);
    ++arr.Count;
    void* slot = ArrayGetData(arr, i);
    if (slot)
        std::memset(slot, 0, ItemBytes(arr));
    return slot;
}

void Arraysetcount(TARRAY& arr, int n) {
    n = std::max(n, 0);
    if (n > arr.Capacity)
        GrowZeroed(arr, n);
    arr.Count = n;
}

void ArrayInsertData(TARRAY& arr, int i, const void* p) {
    const Payload payload(arr, p, ItemBytes(arr));
    if (Full(arr) && !GrowPlain(arr))
        return;
    if (LacksBlock(arr))
        return;
    const bool inside = i >= 0 && i <= arr.Count;
    if (inside)
        MoveUp(arr, i);
    ++arr.Count;
    if (inside && arr.Data)
        payload.WriteTo(At(arr, i));
}

void ArrayAdd(TARRAY& arr, const void* p) {
    ArrayInsertData(arr, arr.Count, p);
}

void ArrayAppendData(TARRAY& arr, const void* p) {
    const Payload payload(arr, p, ItemBytes(arr));
    if (Full(arr) && !GrowPlain(arr))
        return;
    if (LacksBlock(arr))
        return;
    if (arr.Data)
        payload.WriteTo(At(arr, arr.Count));
    ++arr.Count;
}

void ArrayAddData(TARRAY& arr, int n, const void* p) {
    if (n <= 0)
        return;
    const int old = arr.Count;
    if (n > std::numeric_limits<std::int32_t>::max() - old)
        throw std::bad_alloc();
    const Payload payload(arr, p, Bytes(arr, n));
    Arraysetcount(arr, old + n);
    if (arr.Data)
        payload.WriteTo(At(arr, old));
}

void ArrayDeleteData(TARRAY& arr, int i) {
    if (i < 0 || i >= arr.Count)
        return;
    if (arr.Data && i + 1 < arr.Count)
        std::memmove(At(arr, i), At(arr, i + 1), Bytes(arr, arr.Count - i - 1));
    --arr.Count;
}

void ArrayDeletedaten(TARRAY& arr, int i, int n) {
    if (i < 0 || n < 0 || i > arr.Count || n > arr.Count - i)
        return;
    const int moved = std::min(arr.Count - i - n + 1, arr.Capacity - i - n);
    if (arr.Data && moved > 0)
        std::memmove(At(arr, i), At(arr, i + n), Bytes(arr, moved));
    arr.Count -= n;
}

void InitXY(TXYARRAY& a, int n, const void* p) {
    n = std::max(n, 0);
    ArrayInit(a, static_cast<int>(sizeof(TXY)), n);
    a.Count = n;
    if (a.Data && p)
        std::memcpy(a.Data, p, Bytes(a, n));
}

}  // namespace zk
