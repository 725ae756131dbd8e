#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/export.h>

// Lists of untyped pointers in the layout of TARRAY. They own their block of pointers and never what the pointers
// point to. Taking an item out has two phases, by design: ListRemoveItem and AtDelete leave a null hole, so that
// indexes stay good while a list is being walked, and ListPack closes the holes afterwards.
//
// Indexes are 0-based; an index outside the list reads as null and writes nothing.
namespace zk {

/// ItemSize and Reserved are not touched by the routines below: elements are always pointers.
struct TItemArray : TARRAY {};

/// A list of texts. The library itself keeps its texts elsewhere; it holds one pointer per item and is used with the
/// item list routines.
struct TStrLIST : TItemArray {};
/// A list of variants, in the same way.
struct TVariantLIST : TItemArray {};

/// Makes list ready: empty, Delta and Capacity := delta, a block of delta pointers. Unlike ArrayInit a delta of 0 stays
/// 0, and the first item makes it 5. A negative delta counts as 0. A block that list had is not freed.
ZKXYZ_API void ListInit(TItemArray& list, int delta);

/// A list on the heap, made ready by ListInit. It goes with ListFree and delete.
ZKXYZ_API TItemArray* ListCreate(int delta);

/// Appends item.
ZKXYZ_API void Listadd(TItemArray& list, void* item);

/// Inserts item before the item at i; i = Count appends. Grows by Delta when full (a Delta of 0 becomes 5). Nothing for
/// an i outside 0..Count.
ZKXYZ_API void AtInsert(TItemArray& list, int i, void* item);

/// The item at i, null outside the list.
ZKXYZ_API void* ListAt(const TItemArray& list, int i);

/// Stores item at i; nothing outside the list.
ZKXYZ_API void ListAtPut(TItemArray& list, int i, void* item);

/// Swaps two items; nothing when either index is outside the list.
ZKXYZ_API void ListExchange(TItemArray& list, int i, int j);

/// The number of slots, holes included.
ZKXYZ_API int LISTCOUNT(const TItemArray& list);

/// The first index that holds item, or -1. For a null item the first hole.
ZKXYZ_API int IndexOF(const TItemArray& list, const void* item);

/// Sets the first slot that holds item to null. The slot stays.
ZKXYZ_API void ListRemoveItem(TItemArray& list, const void* item);

/// Sets slot i to null. The slot stays; nothing outside the list.
ZKXYZ_API void AtDelete(TItemArray& list, int i);

/// Removes all null slots, keeping the order.
ZKXYZ_API void ListPack(TItemArray& list);

/// Count := 0. The block stays, the items are not freed.
ZKXYZ_API void DeleteAll(TItemArray& list);

/// Frees the block of pointers; Data null, Capacity and Count 0. Neither the record nor the items are freed.
ZKXYZ_API void ListFree(TItemArray& list);

static_assert(sizeof(TItemArray) == sizeof(TARRAY) && std::is_standard_layout_v<TItemArray>);

}  // namespace zk
