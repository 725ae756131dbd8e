#pragma once

#include <zk/_zkxyz/records.h>

#include <cmath>
#include <span>

// Decisions about points that are right to the last bit, whatever rounding does: plain arithmetic where it is clear
// enough, exact arithmetic where it is not. Not for use outside this unit. Coordinates are finite, below 2^240, and
// multiples of 2^-262, so that nothing overflows or is lost.
namespace zk::detail {

// (b - a) x (c - a), with a bound of its error.
struct Turn {
    double value;
    double error;
};

inline Turn RoughTurn(const TXY& a, const TXY& b, const TXY& c) {
    const double left = (b.x - a.x) * (c.y - a.y);
    const double right = (b.y - a.y) * (c.x - a.x);
    return {left - right, 3.4e-16 * (std::fabs(left) + std::fabs(right))};
}

// The same, exact but for one rounding of the result, whose sign is exact.
double ExactTurn(const TXY& a, const TXY& b, const TXY& c);

// 1 where a, b, c run counter-clockwise with y up, -1 clockwise, 0 on a line. rough is their RoughTurn.
inline int Orientation(const Turn& rough, const TXY& a, const TXY& b, const TXY& c) {
    if (rough.value > rough.error)
        return 1;
    if (rough.value < -rough.error)
        return -1;
    const double exact = ExactTurn(a, b, c);
    return (exact > 0) - (exact < 0);
}
inline int Orientation(const TXY& a, const TXY& b, const TXY& c) {
    return Orientation(RoughTurn(a, b, c), a, b, c);
}

// -1 where, on the way from p0 to p1, the line q0-q1 is crossed before the line r0-r1, 1 where after, 0 in the same
// point. The ends p0 and p1 are on different sides of both.
int CompareAlong(const TXY& p0, const TXY& p1, const TXY& q0, const TXY& q1, const TXY& r0, const TXY& r1);

// Whether p is inside the closed polygon, by the rule of PktInside and without any rounding; p itself is strictly left
// of what counts. For a p on the outline that is the side just above the ray that leaves it to the right.
bool InsideExactly(const TXY& p, std::span<const TXY> points);

}  // namespace zk::detail
