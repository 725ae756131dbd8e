#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/pointerlist.h>

#include <memory>

namespace zk {

/// A list of heap arrays that owns both the records and their blocks. Each array is in a list at most once. Freeing an
/// array of more than 10000 bytes shows the message of ArrayClear. A bad index throws EListError.
template <class A>
class TArrayList : public TPointerList {
  public:
    ~TArrayList() override {
        while (Count() > 0) {
            try {
                TArrayList::Clear();
            } catch (...) {
                // Only a message handler can have thrown, when its array had gone. A destructor has nobody to tell, and
                // goes on with the others.
            }
        }
    }

    /// Appends a new empty array with Delta 5 and returns it. The list owns it.
    A* AddArray() {
        ArrayOwner<A> ready(5);
        A* array = ArrayNew<A>();
        try {
            TPointerList::Add(array);
        } catch (...) {
            delete array;
            throw;
        }
        *array = ready.Release();
        return array;
    }

    /// Appends an array made by ArrayNew, which the list owns from now on, and returns its index; the index it has when
    /// it is in the list already.
    int Add(A* array) {
        const int there = array ? IndexOf(array) : -1;
        return there >= 0 ? there : TPointerList::Add(array);
    }

    /// The array at i, still owned by the list.
    A* Getitem(int i) const { return static_cast<A*>(Get(i)); }
    /// The array at i, still owned by the list.
    A* operator[](int i) const { return Getitem(i); }

    /// Puts array, made by ArrayNew, at i. The list owns it from now on; where it was in the list before, a null is
    /// left. The array that was at i is returned and is the caller's.
    A* Setitem(int i, A* array) {
        A* old = Getitem(i);
        if (old == array)
            return nullptr;
        const int there = array ? IndexOf(array) : -1;
        if (there >= 0)
            TPointerList::Put(there, nullptr);
        TPointerList::Put(i, array);
        return old;
    }
    /// As `Setitem`.
    A* Put(int i, A* array) { return Setitem(i, array); }

    /// Takes the array at i out of the list and hands it to the caller; those after it move down.
    A* Take(int i) {
        A* array = Getitem(i);
        TPointerList::Put(i, nullptr);
        Delete(i);
        return array;
    }

  protected:
    /// Frees the array.
    void Dropped(void* item) override {
        const auto free = [](A* array) { delete array; };
        const std::unique_ptr<A, decltype(free)> record(static_cast<A*>(item), free);
        ArrayClear(*record);
    }
};

/// Polygons of the plane.
class TlistOFXYArray : public TArrayList<TXYARRAY> {};
/// Polygons of pixels.
class TlistOFXYiArray : public TArrayList<TXYIARRAY> {};
/// Polygons in space: a face is its outline and its holes.
class TlistOFxyzArray : public TArrayList<TXYZARRAY> {};
/// Lists of indexes.
class TlistOFIndarray : public TArrayList<TintegerARRAY> {};

}  // namespace zk
