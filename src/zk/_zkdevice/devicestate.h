#pragma once

#include <cstdint>

namespace zk {

/// What a device is doing. The singular and the plural stand crossed, the enumeration is the one in the plural.
enum TDeviceStates : std::uint8_t {
    DsPainting,  ///< between `BeginPaint` and `EndPaint`
    DsChanging,  ///< for descendants; `TZKDevice` never sets it
};

/// A set of `TDeviceStates`, one byte; `DsPainting` is the lowest bit.
class TDeviceState {
  public:
    /// Nothing is being done.
    constexpr TDeviceState() = default;
    /// Whether `state` is in the set.
    constexpr bool Contains(TDeviceStates state) const { return bits_ & bit(state); }
    /// Adds `state`.
    constexpr void Include(TDeviceStates state) { bits_ = std::uint8_t(bits_ | bit(state)); }
    /// Takes `state` out.
    constexpr void Exclude(TDeviceStates state) { bits_ = std::uint8_t(bits_ & ~bit(state)); }
    /// The set as a number: bit n is the state with the ordinal n.
    constexpr std::uint8_t Bits() const { return bits_; }

    friend constexpr bool operator==(const TDeviceState&, const TDeviceState&) = default;

  private:
    static constexpr unsigned bit(TDeviceStates state) { return state < 8 ? 1U << state : 0U; }

    std::uint8_t bits_ = 0;
};

}  // namespace zk
