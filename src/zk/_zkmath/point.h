#pragma once

#include <zk/_zkmath/modulo.h>
#include <zk/_zkxyz/records.h>

// Making points and boxes from numbers.
namespace zk {

/// A point in space.
constexpr TXYZ Newpt(double x, double y, double z) {
    return {x, y, z};
}

/// A point in the plane.
constexpr TXY Newpt(double x, double y) {
    return {x, y};
}

/// Two whole numbers make a point of pixels; as soon as one of them is not whole, a point of doubles.
constexpr TXYI Newpt(int x, int y) {
    return {x, y};
}

/// A point in the plane, of numbers of any two kinds that are not both whole.
template <class X, class Y>
requires detail::MixedNumbers<X, Y>
constexpr TXY Newpt(X x, Y y) {
    return {static_cast<double>(x), static_cast<double>(y)};
}

/// A point of pixels.
constexpr TXYI Newpti(int x, int y) {
    return {x, y};
}

/// The box with the corners (x1, y1) and (x2, y2), stored in that order whichever is the lower.
constexpr TXYBox Newpt(double x1, double y1, double x2, double y2) {
    return {{x1, y1}, {x2, y2}};
}

/// The smallest box that holds box and p. Starting from SmallRect, SmallRect2d or SmallRect3d the first point sets both
/// corners (points within the bounds of BigRect, that is). Coordinates that are NaN change nothing.
constexpr TRect Extend(const TRect& box, const TXYI& p) {
    return {p.x < box.left ? p.x : box.left, p.y < box.top ? p.y : box.top, p.x > box.right ? p.x : box.right,
            p.y > box.bottom ? p.y : box.bottom};
}

/// The same for points in the plane.
constexpr TXYBox Extend(const TXYBox& box, const TXY& p) {
    return {{p.x < box.Min.x ? p.x : box.Min.x, p.y < box.Min.y ? p.y : box.Min.y},
            {p.x > box.Max.x ? p.x : box.Max.x, p.y > box.Max.y ? p.y : box.Max.y}};
}

/// The same for points in space.
constexpr TXYZBox Extend(const TXYZBox& box, const TXYZ& p) {
    return {{p.x < box.Min.x ? p.x : box.Min.x, p.y < box.Min.y ? p.y : box.Min.y, p.z < box.Min.z ? p.z : box.Min.z},
            {p.x > box.Max.x ? p.x : box.Max.x, p.y > box.Max.y ? p.y : box.Max.y, p.z > box.Max.z ? p.z : box.Max.z}};
}

}  // namespace zk
