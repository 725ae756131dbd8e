#pragma once

#include <zk/export.h>

#include <cstddef>
#include <vector>

namespace zk {

/// A list of untyped pointers, the base of the list classes. It does not own what the pointers point to; a descendant
/// that does overrides Dropped, and calls Clear in its destructor. Indexes are 0-based; every bad index throws
/// EListError("List index out of bounds (<index>)") and changes nothing.
class ZKXYZ_API TPointerList {
  public:
    TPointerList() = default;
    virtual ~TPointerList() = default;
    TPointerList(const TPointerList&) = delete;
    TPointerList& operator=(const TPointerList&) = delete;

    /// How many items there are.
    int Count() const { return static_cast<int>(items_.size()); }

    /// Appends item and returns its index.
    int Add(void* item);
    /// Inserts item before the item at i; i = Count appends.
    void Insert(int i, void* item);

    /// The item at i.
    void* Get(int i) const { return items_[Checked(i)]; }
    /// Stores item at i. The item that was there is no longer the list's business.
    void Put(int i, void* item) { items_[Checked(i)] = item; }
    /// The item at i.
    void* operator[](int i) const { return Get(i); }

    /// Swaps two items.
    void Exchange(int i, int j);

    /// The first index that holds item, or -1.
    int IndexOf(const void* item) const;

    /// Drops the item at i; those after it move down.
    void Delete(int i);
    /// Drops the first item that is item, and returns the index it had, or -1.
    int Remove(const void* item);

    /// Removes the null items, keeping the order.
    void Pack();

    /// Drops every item, from the last to the first.
    virtual void Clear();

  protected:
    /// Told of each item that is not null, when it has left by Delete, Remove or Clear.
    virtual void Dropped(void* item);

  private:
    std::size_t Checked(int i) const;

    std::vector<void*> items_;
};

}  // namespace zk
