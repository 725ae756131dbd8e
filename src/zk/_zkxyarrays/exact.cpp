#include "exact.h"

#include <cstddef>
#include <vector>

namespace zk::detail {
namespace {

// A number as a sum of doubles that do not overlap, from the smallest to the largest, without zeros.
using Sum = std::vector<double>;

struct Pair {
    double high;
    double low;
};

Pair AddExactly(double a, double b) {
    const double high = a + b;
    const double back = high - a;
    return {high, (a - (high - back)) + (b - back)};
}

// Halves of a number, of 26 bits each.
Pair Split(double a) {
    const double c = 134217729.0 * a;
    const double high = c - (c - a);
    return {high, a - high};
}

Pair MulExactly(double a, double b) {
    const double high = a * b;
    const Pair as = Split(a);
    const Pair bs = Split(b);
    const double low = as.low * bs.low - (((high - as.high * bs.high) - as.low * bs.high) - as.high * bs.low);
    return {high, low};
}

void Push(Sum& sum, double part) {
    if (part != 0)
        sum.push_back(part);
}

// sum + b
Sum Plus(const Sum& sum, double b) {
    Sum result;
    result.reserve(sum.size() + 1);
    double carry = b;
    for (const double part : sum) {
        const Pair p = AddExactly(carry, part);
        carry = p.high;
        Push(result, p.low);
    }
    Push(result, carry);
    return result;
}

Sum Plus(const Sum& a, const Sum& b) {
    Sum result = a;
    for (const double part : b)
        result = Plus(result, part);
    return result;
}

Sum Negative(Sum sum) {
    for (double& part : sum)
        part = -part;
    return sum;
}

Sum Times(const Sum& sum, double b) {
    Sum result;
    for (const double part : sum) {
        const Pair p = MulExactly(part, b);
        result = Plus(Plus(result, p.low), p.high);
    }
    return result;
}

Sum Times(const Sum& a, const Sum& b) {
    Sum result;
    for (const double part : b)
        result = Plus(result, Times(a, part));
    return result;
}

Sum Difference(double a, double b) {
    const Pair p = AddExactly(a, -b);
    Sum result;
    Push(result, p.low);
    Push(result, p.high);
    return result;
}

Sum TurnSum(const TXY& a, const TXY& b, const TXY& c) {
    return Plus(Times(Difference(b.x, a.x), Difference(c.y, a.y)),
                Negative(Times(Difference(b.y, a.y), Difference(c.x, a.x))));
}

int Sign(const Sum& sum) {
    return sum.empty() ? 0 : sum.back() > 0 ? 1 : -1;
}

}  // namespace

double ExactTurn(const TXY& a, const TXY& b, const TXY& c) {
    const Pair bx = AddExactly(b.x, -a.x);
    const Pair by = AddExactly(b.y, -a.y);
    const Pair cx = AddExactly(c.x, -a.x);
    const Pair cy = AddExactly(c.y, -a.y);
    if (bx.low == 0 && by.low == 0 && cx.low == 0 && cy.low == 0) {
        // The usual case on a grid: the differences are exact already.
        const Pair left = MulExactly(bx.high, cy.high);
        const Pair right = MulExactly(by.high, cx.high);
        if (left.high != right.high)
            return (left.high - right.high) + (left.low - right.low);
        return left.low - right.low;
    }
    double value = 0;
    for (const double part : TurnSum(a, b, c))
        value += part;
    return value;
}

int CompareAlong(const TXY& p0, const TXY& p1, const TXY& q0, const TXY& q1, const TXY& r0, const TXY& r1) {
    const Sum q = TurnSum(q0, q1, p0);
    const Sum r = TurnSum(r0, r1, p0);
    const Sum wholeQ = Plus(q, Negative(TurnSum(q0, q1, p1)));
    const Sum wholeR = Plus(r, Negative(TurnSum(r0, r1, p1)));
    return Sign(Plus(Times(q, wholeR), Negative(Times(r, wholeQ)))) * Sign(wholeQ) * Sign(wholeR);
}

bool InsideExactly(const TXY& p, std::span<const TXY> points) {
    bool inside = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const TXY& from = points[i == 0 ? points.size() - 1 : i - 1];
        const TXY& to = points[i];
        const bool up = from.y <= p.y && p.y < to.y;
        const bool down = to.y <= p.y && p.y < from.y;
        if ((up && Orientation(from, to, p) > 0) || (down && Orientation(from, to, p) < 0))
            inside = !inside;
    }
    return inside;
}

}  // namespace zk::detail
