#include "blocks.h"

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define ZK_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZK_ADDRESS_SANITIZER 1
#endif
#endif
#ifdef ZK_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace zk::detail {
namespace {

struct Loan {
    std::uintptr_t block;
    bool outgrown;
};

// Block sizes by key, side by side in one piece of memory: blocks come and go too often for an allocation each. A key
// stands at the place that its bits say, or behind it with no gap in between.
class Sizes {
  public:
    std::size_t* Find(std::uintptr_t key) {
        if (entries_.empty())
            return nullptr;
        for (std::size_t i = Home(key);; i = Behind(i)) {
            if (entries_[i].key == key)
                return &entries_[i].bytes;
            if (entries_[i].key == Free)
                return nullptr;
        }
    }

    // The key is not there yet. Throws std::bad_alloc; never where as many have been here before.
    void Add(std::uintptr_t key, std::size_t bytes) {
        if (2 * (used_ + 1) > entries_.size())
            Grow();
        ++used_;
        Put({key, bytes});
    }

    void Remove(std::uintptr_t key) {
        std::size_t gap = Home(key);
        while (entries_[gap].key != key)
            gap = Behind(gap);
        // What stands behind moves up, unless it would come to stand before its place.
        for (std::size_t i = Behind(gap); entries_[i].key != Free; i = Behind(i)) {
            const std::size_t mask = entries_.size() - 1;
            if (((i - Home(entries_[i].key)) & mask) >= ((i - gap) & mask)) {
                entries_[gap] = entries_[i];
                gap = i;
            }
        }
        entries_[gap] = {};
        --used_;
    }

  private:
    static constexpr std::uintptr_t Free = 0;
    struct Entry {
        std::uintptr_t key = Free;
        std::size_t bytes = 0;
    };

    // The upper bits of the product depend on all bits of the key.
    std::size_t Home(std::uintptr_t key) const {
        return static_cast<std::size_t>(key * std::uint64_t{0x9e3779b97f4a7c15} >> shift_);
    }
    std::size_t Behind(std::size_t i) const { return (i + 1) & (entries_.size() - 1); }
    void Put(const Entry& entry) {
        std::size_t i = Home(entry.key);
        while (entries_[i].key != Free)
            i = Behind(i);
        entries_[i] = entry;
    }
    void Grow() {
        std::vector<Entry> before(entries_.empty() ? 64 : 2 * entries_.size());
        before.swap(entries_);
        shift_ = 64 - std::countr_zero(entries_.size());
        for (const Entry& entry : before)
            if (entry.key != Free)
                Put(entry);
    }

    std::vector<Entry> entries_;  // a power of two of them, at least half of them free
    std::size_t used_ = 0;
    int shift_ = 64;
};

struct Registry {
    std::mutex mutex;
    Sizes sizes;                                     // by Key of the block: bytes really allocated
    std::unordered_map<std::uintptr_t, Loan> loans;  // by Key of the record
};

// Never destroyed: static arrays may be cleared after it would have been.
Registry& TheRegistry() {
    static auto* registry = new Registry;
    return *registry;
}

// Complemented, so that a leak checker does not take the registry for the owner of every block.
std::uintptr_t Key(const void* address) {
    return ~reinterpret_cast<std::uintptr_t>(address);
}

void ShowBytes([[maybe_unused]] void* block, [[maybe_unused]] std::size_t visible,
               [[maybe_unused]] std::size_t allocated) {
#ifdef ZK_ADDRESS_SANITIZER
    __asan_unpoison_memory_region(block, visible);
    __asan_poison_memory_region(static_cast<char*>(block) + visible, allocated - visible);
#endif
}

bool OnLoan(const Registry& registry, const void* record, const void* block) {
    if (registry.loans.empty())
        return false;
    const auto loan = registry.loans.find(Key(record));
    return loan != registry.loans.end() && !loan->second.outgrown && loan->second.block == Key(block);
}

}  // namespace

void* BlockNew(std::size_t bytes) {
    if (bytes == 0)
        return nullptr;
    void* block = std::calloc(bytes, 1);
    if (!block)
        throw std::bad_alloc();
    try {
        Registry& registry = TheRegistry();
        const std::lock_guard lock(registry.mutex);
        registry.sizes.Add(Key(block), bytes);
    } catch (...) {
        std::free(block);
        throw;
    }
    return block;
}

void* BlockGrow(const void* record, void* block, std::size_t oldBytes, std::size_t newBytes) {
    Registry& registry = TheRegistry();
    std::unique_lock lock(registry.mutex);
    const std::size_t* const known = registry.sizes.Find(Key(block));
    const bool lent = block && OnLoan(registry, record, block);
    if (!block || lent || !known) {
        lock.unlock();
        void* own = BlockNew(newBytes);
        if (block && oldBytes > 0)
            std::memcpy(own, block, oldBytes < newBytes ? oldBytes : newBytes);
        if (lent) {
            lock.lock();
            registry.loans[Key(record)].outgrown = true;
        }
        return own;
    }
    std::size_t allocated = *known;
    if (newBytes > allocated) {
        const std::size_t before = allocated;
        const std::uintptr_t keyBefore = Key(block);
        ShowBytes(block, allocated, allocated);
        const std::size_t generous = newBytes > 2 * allocated ? newBytes : 2 * allocated;
        void* moved = std::realloc(block, generous);
        allocated = generous;
        if (!moved) {
            moved = std::realloc(block, newBytes);
            allocated = newBytes;
        }
        if (!moved) {
            ShowBytes(block, oldBytes, before);
            throw std::bad_alloc();
        }
        block = moved;
        // Out and in again, so that there is room and nothing can fail once the block has moved.
        registry.sizes.Remove(keyBefore);
        registry.sizes.Add(Key(block), allocated);
    }
    lock.unlock();
    ShowBytes(block, newBytes, allocated);
    std::memset(static_cast<char*>(block) + oldBytes, 0, newBytes - oldBytes);
    return block;
}

bool BlockFree(const void* record, void* block) noexcept {
    Registry& registry = TheRegistry();
    {
        const std::lock_guard lock(registry.mutex);
        const std::size_t* const bytes = registry.sizes.Find(Key(block));
        if (!bytes || OnLoan(registry, record, block))
            return false;
        ShowBytes(block, *bytes, *bytes);
        registry.sizes.Remove(Key(block));
    }
    std::free(block);
    return true;
}

void LoanBegin(const void* record, const void* block) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.loans[Key(record)] = {Key(block), false};
}

bool LoanEnd(const void* record) noexcept {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto loan = registry.loans.find(Key(record));
    if (loan == registry.loans.end())
        return false;
    const bool outgrown = loan->second.outgrown;
    registry.loans.erase(loan);
    return outgrown;
}

}  // namespace zk::detail
