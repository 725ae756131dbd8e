#pragma once

#include <cstddef>

// The blocks behind TARRAY and TItemArray. Not for use outside this unit.
//
// The records are plain and any pointer can stand in their Data field, so that the blocks which were allocated here are
// kept in a registry: nothing else is ever freed or moved. The registry also knows how large a block really is. It
// grows geometrically, whatever step the records grow by, so that many small steps cost linear time. There is no header
// in front of the block: Data is the allocator's own address, and a sanitizer sees both ends of it; the spare room
// behind the visible part is closed to it too.
//
// Safe to call from several threads at once.
namespace zk::detail {

// A zero-filled block; null for 0 bytes. Throws std::bad_alloc.
void* BlockNew(std::size_t bytes);

// Makes block, of which oldBytes are visible, newBytes long and returns its new address. The new bytes are zero. A
// block that is not ours, or is on loan to record, is copied into a new block and stays. Throws std::bad_alloc and
// leaves everything as it is.
void* BlockGrow(const void* record, void* block, std::size_t oldBytes, std::size_t newBytes);

// Frees block. False, and nothing done, when it is not ours or is on loan to record.
bool BlockFree(const void* record, void* block) noexcept;

// record uses a block that belongs to somebody else.
void LoanBegin(const void* record, const void* block);

// Ends the loan of record, if there is one. True when the record has grown out of it, into a block of its own.
bool LoanEnd(const void* record) noexcept;

}  // namespace zk::detail
