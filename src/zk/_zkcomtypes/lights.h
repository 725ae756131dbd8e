#pragma once

#include <zk/_zkcomtypes/light.h>
#include <zk/export.h>

#include <QPointer>

#include <vector>

namespace zk {

/// The lights of a device, in order. The list owns them: destroying it deletes every light still in it, the last one
/// first. A light that is deleted elsewhere (by its owner, usually a form) is no longer in the list.
class ZKCOMTYPES_API TLights {
  public:
    /// An empty list for lights of a kind. The kind is remembered, not enforced.
    explicit TLights(const TLightClass& LightClass = Tlight::Class());
    /// Deletes the lights that are still in the list, the last one first.
    ~TLights();
    TLights(const TLights&) = delete;
    TLights& operator=(const TLights&) = delete;

    /// The kind that the list was made for.
    const TLightClass& LightClass() const { return lightClass_; }

    /// How many lights are in the list.
    int Count() const;

    /// The light at `Index`, from 0; raises `EListError` outside the list. Never null.
    Tlight* getLights(int Index) const;

    /// Appends a light and returns its index; one that is in the list already is in it twice then. Null is not added:
    /// −1.
    int Add(Tlight* Light);

    /// The first index of the light, or −1.
    int IndexOf(const Tlight* Light) const;

    /// Takes the first occurrence out, without deleting the light; returns the index it had, or −1.
    int Remove(const Tlight* Light);

    /// Takes the light at `Index` out, without deleting it; raises `EListError` outside the list.
    void Delete(int Index);

    /// Empties the list without deleting any light: they are whoever else's they are.
    void Clear();

  private:
    void pack() const;

    TLightClass lightClass_;
    mutable std::vector<QPointer<Tlight>> lights_;  ///< entries of deleted lights are dropped at the next look
};

}  // namespace zk
