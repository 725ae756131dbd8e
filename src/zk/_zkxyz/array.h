#pragma once

#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/records.h>
#include <zk/export.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

// The growable array that polygons, polylines and every buffer of points are held in: a plain record, handled through
// free routines. It has neither constructor nor destructor. A declared array is empty and without a block; ArrayInit
// makes it ready, ArrayClear or ArrayDispose frees its block, and a copy of the record shares the block. Where an
// exception may pass, hold it in an ArrayOwner.
//
// Elements are plain values, moved as raw memory. No routine reads or writes outside the block, whatever index it is
// given. What bad input gives is said at each routine; beyond that:
// - an allocation that fails, or a capacity above what 32 bits hold, throws std::bad_alloc and changes nothing;
// - an array that ought to have a block and has none (ArrayInit refused it) keeps its Count and drops what is written
//   to it, until it grows;
// - an ItemSize of 0 gives an array that counts and holds nothing.
namespace zk {

/// The record of every growable array; see `array.h` on how it is handled.
struct TARRAY {
    std::uint32_t Reserved = 0;  ///< 0, not used
    std::int32_t ItemSize = 0;   ///< bytes per element
    std::int32_t Delta = 0;      ///< growth step in elements
    std::int32_t Capacity = 0;   ///< elements allocated, as the growth by Delta makes it
    std::int32_t Count = 0;      ///< elements in use
    void* Data = nullptr;        ///< the block of Capacity * ItemSize bytes, or null
};

/// An array of T: the same record, with ItemSize fixed by the type.
template <class T>
struct TypedARRAY : TARRAY {
    /// What the elements are.
    using Item = T;

    /// The elements in use. Empty when the array has no block, or was made ready for elements of another size.
    std::span<T> Items() { return {static_cast<T*>(Data), Usable()}; }
    std::span<const T> Items() const { return {static_cast<const T*>(Data), Usable()}; }

    /// Element i, 0-based; EListError when there is none.
    T& operator[](int i) { return Items()[Checked(i)]; }
    const T& operator[](int i) const { return Items()[Checked(i)]; }

  private:
    std::size_t Usable() const {
        const bool usable = Data != nullptr && ItemSize == static_cast<std::int32_t>(sizeof(T)) && Count > 0;
        return usable ? static_cast<std::size_t>(Count < Capacity ? Count : Capacity) : 0;
    }
    std::size_t Checked(int i) const {
        if (i < 0 || static_cast<std::size_t>(i) >= Usable())
            throw EListError("List index out of bounds (" + std::to_string(i) + ")");
        return static_cast<std::size_t>(i);
    }
};

/// Points of the plane: a polygon or a polyline.
struct TXYARRAY : TypedARRAY<TXY> {};
/// Points in space.
struct TXYZARRAY : TypedARRAY<TXYZ> {};
/// Points of pixels.
struct TXYIARRAY : TypedARRAY<TXYI> {};
/// Whole numbers, indexes for instance.
struct TintegerARRAY : TypedARRAY<std::int32_t> {};

/// Any growable array.
template <class A>
concept AnyARRAY = std::derived_from<A, TARRAY>;

/// One whose type says what its elements are.
template <class A>
concept AnyTypedARRAY = AnyARRAY<A> && requires {
    typename A::Item;
};

/// Allocates a zero-filled record on the heap and stores its address in p. The record goes with delete, after
/// ArrayClear or ArrayDispose.
template <AnyARRAY A>
void ArrayNew(A*& p) {
    p = new A{};
}
template <AnyARRAY A>
A* ArrayNew() {
    return new A{};
}

/// Makes arr ready: empty, Delta := delta (5 when delta is 0 or negative), Capacity := Delta, and a zero-filled block
/// of Delta * ItemSize bytes. A block that arr had is not freed. A negative itemSize counts as 0. A first block of more
/// than 10000 bytes is immodest: the message "bescheidenheit ist eine tugend" is shown, and the array has no block
/// (Data null, Capacity as asked for). Later growth has no limit, so a large array is made with a small delta and
/// Arraysetcount.
ZKXYZ_API void ArrayInit(TARRAY& arr, int itemSize, int delta);
template <AnyTypedARRAY A>
void ArrayInit(A& arr, int delta = 5) {
    ArrayInit(arr, static_cast<int>(sizeof(typename A::Item)), delta);
}

/// Frees the block; Count, Capacity and Delta become 0, ItemSize stays. When the block had more than 10000 bytes, the
/// message "bescheidenheit ist eine tugend (freigeben)" is shown. A Data that is no block of this unit is left alone,
/// with the message "exception bei FreeMem von ArrayClear" and a beep.
ZKXYZ_API void ArrayClear(TARRAY& arr);

/// Frees the block without a word; Data null, Capacity and Count 0. Delta stays, so that the array can be used again.
ZKXYZ_API void ArrayDispose(TARRAY& arr);

/// Clears dst, makes it ready with src's ItemSize and src's Capacity as its Delta, and copies count and block. A src of
/// more than 10000 bytes runs into the limit of ArrayInit: dst then has the count and no block (_Copy of _zkxyarrays
/// has no limit). A copy of src onto itself, or onto a record that shares its block, leaves src as it is.
ZKXYZ_API void ArrayCopy(TARRAY& dst, const TARRAY& src);

/// The address of element i. The slots between Count and Capacity count as elements here; null outside the block.
ZKXYZ_API void* ArrayGetData(TARRAY& arr, int i);
ZKXYZ_API const void* ArrayGetData(const TARRAY& arr, int i);

/// Makes room for a zero-filled element at i, at the end when i is negative, and returns its address. Grows by Delta
/// when full (a Delta of 0 becomes 5); after a growth the unused slots are zero. Null, and nothing done, when i is
/// above Count or the array has no block.
ZKXYZ_API void* ArrayInsert(TARRAY& arr, int i);

/// Count := n, growing by Delta (a Delta of 0 becomes 5) until n elements fit. Shrinking keeps the block; new elements
/// are whatever the block holds, which is zero after a growth. A negative n counts as 0.
ZKXYZ_API void Arraysetcount(TARRAY& arr, int n);

/// Makes room at i as ArrayInsert does, and copies one element from p into it. Unlike ArrayInsert it does nothing on a
/// full array whose Delta is 0 (after ArrayClear: call ArrayInit first). A null p leaves what the slot holds. An i
/// outside 0..Count moves and copies nothing, and still counts one element more: the array's own choice. p may point
/// into the array.
ZKXYZ_API void ArrayInsertData(TARRAY& arr, int i, const void* p);

/// ArrayInsertData at the end.
ZKXYZ_API void ArrayAdd(TARRAY& arr, const void* p);

/// Copies one element from p to the end, growing as ArrayInsertData does. A null p leaves what the slot holds.
ZKXYZ_API void ArrayAppendData(TARRAY& arr, const void* p);

/// Appends n elements from p, growing as Arraysetcount does. A null p appends what the block holds; an n of 0 or less
/// nothing. p may point into the array; no more is then read than the block has.
ZKXYZ_API void ArrayAddData(TARRAY& arr, int n, const void* p);

/// Takes element i out; those above it move down by one. Nothing for an i outside 0..Count-1.
ZKXYZ_API void ArrayDeleteData(TARRAY& arr, int i);

/// Takes n elements out from i on. One element more than remain moves down, where the block has one: the slot after the
/// last element comes along, by choice. Nothing when i..i+n is not within 0..Count.
ZKXYZ_API void ArrayDeletedaten(TARRAY& arr, int i, int n);

/// Makes a ready for n points (as its Delta) and copies them from p; a null p gives n zero points. n is limited as in
/// ArrayInit: above 625 points a has the count and no block. A negative n counts as 0.
ZKXYZ_API void InitXY(TXYARRAY& a, int n, const void* p);

/// Holds an array, and frees its block (without a message) when it goes.
template <AnyTypedARRAY A>
class ArrayOwner {
  public:
    /// An array that is ready, as by ArrayInit.
    explicit ArrayOwner(int delta = 5) { ArrayInit(array_, delta); }
    /// Frees the block.
    ~ArrayOwner() { ArrayDispose(array_); }
    /// Takes the block over; other is left without one.
    ArrayOwner(ArrayOwner&& other) noexcept : array_(std::exchange(other.array_, A{})) {}
    /// Exchanges the blocks.
    ArrayOwner& operator=(ArrayOwner&& other) noexcept {
        std::swap(array_, other.array_);
        return *this;
    }

    /// The array; it stays owned here.
    A& Get() { return array_; }
    const A& Get() const { return array_; }
    /// The array; it stays owned here.
    A& operator*() { return array_; }
    const A& operator*() const { return array_; }
    /// The array; it stays owned here.
    A* operator->() { return &array_; }
    const A* operator->() const { return &array_; }

    /// Hands the array over: the caller frees it from now on.
    A Release() { return std::exchange(array_, A{}); }

  private:
    A array_;
};

static_assert(offsetof(TARRAY, Reserved) == 0 && offsetof(TARRAY, ItemSize) == 4 && offsetof(TARRAY, Delta) == 8 &&
              offsetof(TARRAY, Capacity) == 12 && offsetof(TARRAY, Count) == 16);
// The pointer is as wide as the platform's, and so is its alignment.
static_assert(offsetof(TARRAY, Data) == (sizeof(void*) == 8 ? 24 : 20));
static_assert(sizeof(TARRAY) == (sizeof(void*) == 8 ? 32 : 24));
static_assert(detail::IsRecord<TARRAY>);
static_assert(sizeof(TXYARRAY) == sizeof(TARRAY) && sizeof(TXYZARRAY) == sizeof(TARRAY) &&
              sizeof(TXYIARRAY) == sizeof(TARRAY) && sizeof(TintegerARRAY) == sizeof(TARRAY));
static_assert(std::is_trivially_copyable_v<TXYARRAY> && std::is_standard_layout_v<TXYARRAY>);

}  // namespace zk
