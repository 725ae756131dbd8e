#include "walk.h"

#include <zk/_zkmath/modulo.h>
#include <zk/_zkmath/tolerance.h>
#include <zk/_zkmath/vector.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

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

void _Copy(const TXYARRAY& src, double u1, double u2, TXYARRAY& dst) {
    const auto points = src.Items();
    const double count = static_cast<double>(points.size());
    std::vector<TXY> part;
    // Into [0, count), and exactly whole when within the tolerance of it.
    const auto position = [&](double u) {
        if (!std::isfinite(u))
            return 0.0;
        double v = std::fmod(u, count);
        if (v < 0)
            v += count;
        const double whole = std::nearbyint(v);
        if (Equals(v, whole))
            v = whole;
        return v < count ? v : 0.0;
    };
    if (!points.empty()) {
        const double from = position(u1);
        double to = position(u2);
        part.push_back(_value(src, from));
        if (Less(from, to))
            to -= count;
        if (Less(to, from)) {
            for (double k = std::ceil(from) - 1; k > to; --k)
                part.push_back(points[static_cast<std::size_t>(k < 0 ? k + count : k)]);
            part.push_back(_value(src, to < 0 ? to + count : to));
        }
    }
    if (!dst.Data && dst.ItemSize == 0)
        ArrayInit(dst);
    Arraysetcount(dst, static_cast<int>(part.size()));
    const auto into = dst.Items();
    std::copy_n(part.begin(), std::min(part.size(), into.size()), into.begin());
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
