#include "between.h"

#include <zk/_zkmath/tolerance.h>
#include <zk/_zkmath/vector.h>

#include <cstdint>

namespace zk {

bool Between(double m, double a, double b, double c) {
    const double s = _modulo(b - a, m);
    const double t = _modulo(c - a, m);
    if (Equals(0, s))
        return true;
    if (!Less(0, s))
        return false;
    return Less(s, t);
}

bool Between(int m, int a, int b, int c) {
    // In 64 bits, where the differences cannot overflow.
    std::int64_t s = std::int64_t{b} - a;
    if (s < 0)
        s += m;
    std::int64_t t = std::int64_t{c} - a;
    if (t < 0)
        t += m;
    if (t == 0)
        t += m;
    if (s <= 0)
        return false;
    return s < t;
}

bool Between(const TXY& a, const TXY& b, const TXY& c) {
    if (Less(Vekt(a, b), 0))
        return Less(0, Vekt(a, c)) || Less(0, Vekt(c, b));
    return Less(0, Vekt(a, c)) && Less(0, Vekt(c, b));
}

}  // namespace zk
