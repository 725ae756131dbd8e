#include "segment.h"

#include <zk/_zkmath/vector.h>

#include <cmath>

namespace zk {
namespace {

constexpr double Parallel = 1e-6;

}  // namespace

bool _Cross(const TXY& a, const TXY& b, const TXY& c, const TXY& d, double& s, double& t, double& den) {
    den = 0;
    if (Equals(a, b) || Equals(c, d) || (Equals(a, c) && Equals(b, d)))
        return false;
    const TXY u = Sub(b, a);
    const TXY v = Sub(d, c);
    const TXY w = Sub(a, c);
    const double determinant = v.x * u.y - v.y * u.x;
    den = determinant;
    s = 0;
    t = 0;
    if (Equals(b, c)) {
        s = 1;
        den = 0;
        return true;
    }
    if (Equals(b, d)) {
        s = 1;
        t = 1;
        den = 0;
        return true;
    }
    if (std::fabs(determinant) > Parallel) {
        t = (w.x * u.y - w.y * u.x) / determinant;
        s = (w.x * v.y - w.y * v.x) / determinant;
        return true;
    }
    if (!Equals(w.x * u.y, w.y * u.x))
        return false;
    const double e0 = Skal(Sub(c, a), u);
    const double e1 = Skal(Sub(d, a), u);
    const double length2 = Skal(u, u);
    if ((Less(e0, length2) && Less(length2, e1)) || (Less(e1, length2) && Less(length2, e0))) {
        s = 1;
        t = Skal(Sub(b, c), v) / (v.x * v.x + v.y * v.y);
        return true;
    }
    if (Less(0, e1) && Less(e1, length2)) {
        t = 1;
        s = e1 / length2;
        return true;
    }
    return false;
}

}  // namespace zk
