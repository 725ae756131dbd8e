#pragma once

#include <zk/export.h>
#include <zk/host/shiftstate.h>

#include <QRectF>
#include <QtGlobal>

#include <cstdint>

namespace zk {

/// What a pick can meet: a shape that takes part in mouse events.
///
/// OpenGL's names have 32 bits and outlive what they name, so a pick never carries a pointer: every target gets a
/// number for its life, and `Of` gives the target back, or none once it is gone. Numbers are not used again.
class ZKOGLCANVAS_API HitTarget {
  public:
    /// Gives the target its number.
    HitTarget();
    /// The number stands for nothing from now on.
    virtual ~HitTarget();
    HitTarget(const HitTarget&) = delete;
    HitTarget& operator=(const HitTarget&) = delete;

    /// The number that is loaded as OpenGL's name before the target draws; positive, never `NoHit`.
    std::int32_t HitName() const { return name_; }

    /// The living target of a number, or null.
    static HitTarget* Of(std::int32_t name);

    /// The name that lies on the name stack before any target has loaded its own: what is drawn under it is nobody's.
    static constexpr std::int32_t NoHit = 0xFFFF;

    /// The mouse events of what lies under the pointer; `x` and `y` in pixels of the control's client area.
    virtual void MouseDown(Qt::MouseButton button, TShiftState shift, int x, int y) = 0;
    /// As `MouseDown`.
    virtual void MouseMove(TShiftState shift, int x, int y) = 0;
    /// As `MouseDown`.
    virtual void MouseUp(Qt::MouseButton button, TShiftState shift, int x, int y) = 0;

  private:
    std::int32_t name_;
};

/// One thing that lay under the pointer.
struct THitItem {
    /// The first name of the hit record: `HitTarget::Of` gives the shape.
    std::int32_t HitObject = HitTarget::NoHit;
    /// The record's greatest window depth, as an unsigned number divided by 2147483647 and by the canvas's scale: 0 at
    /// the near plane, growing with the distance.
    double Depth = 0;
    /// How many names the record held.
    std::int32_t NameCount = 0;
};

/// Where something that a click can meet is seen.
struct THitPlace {
    /// As that of `THitItem`.
    std::int32_t HitObject = HitTarget::NoHit;
    /// The rectangle around it in pixels of the client area, cut off at its edges; without area for what is seen from
    /// its edge.
    QRectF Place;
};

}  // namespace zk
