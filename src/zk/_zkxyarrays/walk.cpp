#include <zk/_zkmath/modulo.h>
#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/walk.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zk {
namespace {

template <class A>
typename A::Item Value(const A& poly, double u) {
    const auto points = poly.Items();
    if (points.empty())
        return {};
    if (!std::isfinite(u))
        return points[0];
    const int count = static_cast<int>(points.size());
    const double whole = std::trunc(u);
    // Exact, and within the range of int however large u is.
    const int k = _modulo(static_cast<int>(std::fmod(whole, count)), count);
    const auto& p0 = points[static_cast<std::size_t>(k)];
    const auto& p1 = points[static_cast<std::size_t>((k + 1) % count)];
    return Add(p0, Mul(Sub(p1, p0), u - whole));
}

template <class A>
void Copy(const A& src, A& dst) {
    if (&src == &dst)
        return;
    if (!dst.Data && dst.ItemSize == 0)
        ArrayInit(dst);
    const auto from = src.Items();
    Arraysetcount(dst, static_cast<int>(from.size()));
    const auto to = dst.Items();
    std::copy_n(from.begin(), std::min(from.size(), to.size()), to.begin());
}

}  // namespace

TXY _value(const TXYARRAY& poly, double u) {
    return Value(poly, u);
}

TXYZ _value(const TXYZARRAY& poly, double u) {
    return Value(poly, u);
}

void _Copy(const TXYARRAY& src, TXYARRAY& dst) {
    Copy(src, dst);
}

void _Copy(const TXYZARRAY& src, TXYZARRAY& dst) {
    Copy(src, dst);
}

void _Copy(const TlistOFxyzArray& src, TlistOFxyzArray& dst) {
    if (&src == &dst)
        return;
    dst.Clear();
    for (int i = 0; i < src.Count(); ++i)
        if (const TXYZARRAY* array = src.Getitem(i))
            Copy(*array, *dst.AddArray());
}

}  // namespace zk
