#include "modulo.h"

#include <zk/_zkmath/tolerance.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace zk {
namespace {
// Up to here the loops are run as they stand, which takes well under a millisecond.
constexpr double MaxPeriods = 100000;
}  // namespace

int _modulo(int a, int m) {
    if (m == 0)
        return 0;
    // In 64 bits, where neither the smallest int by -1 nor the sum can overflow.
    const std::int64_t wide = m;
    std::int64_t rest = a % wide;
    if (rest < 0)
        rest += wide;
    return static_cast<int>(rest);
}

double _modulo(double a, double m) {
    if (std::isinf(a))
        return std::numeric_limits<double>::quiet_NaN();
    if (std::isnan(a) || !(m > 0))
        return a;
    if ((std::fabs(a) + EPS) / m > MaxPeriods) {
        // So far away, or with so small a period, repeated subtraction would take forever or not change a at all.
        double rest = std::fmod(a + EPS, m);
        if (rest < 0)
            rest += m;
        return rest - EPS;
    }
    while (Less(m, a) || Equals(m, a))
        a -= m;
    while (Less(a, 0))
        a += m;
    return a;
}

}  // namespace zk
