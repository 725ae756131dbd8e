#include <zk/_zkxyz/blocks.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>

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

struct Registry {
    std::mutex mutex;
    std::unordered_map<std::uintptr_t, std::size_t> sizes;  // by Key of the block: bytes really allocated
    std::unordered_map<std::uintptr_t, Loan> loans;         // by Key of the record
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
        registry.sizes.emplace(Key(block), bytes);
    } catch (...) {
        std::free(block);
        throw;
    }
    return block;
}

void* BlockGrow(const void* record, void* block, std::size_t oldBytes, std::size_t newBytes) {
    Registry& registry = TheRegistry();
    std::unique_lock lock(registry.mutex);
    const auto found = registry.sizes.find(Key(block));
    const bool lent = block && OnLoan(registry, record, block);
    if (!block || lent || found == registry.sizes.end()) {
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
    std::size_t allocated = found->second;
    if (newBytes > allocated) {
        // The node travels with the block, so that nothing can fail once the block has moved.
        auto node = registry.sizes.extract(found);
        ShowBytes(block, allocated, allocated);
        const std::size_t generous = newBytes > 2 * allocated ? newBytes : 2 * allocated;
        void* moved = std::realloc(block, generous);
        allocated = generous;
        if (!moved) {
            moved = std::realloc(block, newBytes);
            allocated = newBytes;
        }
        if (!moved) {
            ShowBytes(block, oldBytes, node.mapped());
            registry.sizes.insert(std::move(node));
            throw std::bad_alloc();
        }
        block = moved;
        node.key() = Key(block);
        node.mapped() = allocated;
        registry.sizes.insert(std::move(node));
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
        const auto found = registry.sizes.find(Key(block));
        if (found == registry.sizes.end() || OnLoan(registry, record, block))
            return false;
        ShowBytes(block, found->second, found->second);
        registry.sizes.erase(found);
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
