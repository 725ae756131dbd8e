#include "inside.h"

#include <cstddef>
#include <span>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zk {
namespace {

// Whether the edge from j to i is crossed to the right of p.
template <class P>
bool Crosses(const P& pi, const P& pj, const P& p) {
    if (!((pi.y <= p.y && p.y < pj.y) || (pj.y <= p.y && p.y < pi.y)))
        return false;
    const double xi = pi.x;
    const double yi = pi.y;
    return (pj.x - xi) * (p.y - yi) / (pj.y - yi) + xi > p.x;
}

// Most edges lie wholly above or wholly below the ray: they are passed in runs, so many at a time.
constexpr std::size_t Step = 8;

template <bool Above, class P, class Y>
bool IsOn(const P& p, Y y) {
    return Above ? p.y > y : p.y <= y;
}

template <bool Above, class P, class Y>
bool AllOn(const P* at, Y y) {
    bool all = true;
    for (std::size_t k = 0; k < Step; ++k)
        all &= IsOn<Above>(at[k], y);
    return all;
}

#ifdef __SSE2__
// Whole points are compared, x as well, and only what comes out for y is looked at: cheaper than to take the y apart.
template <bool Above>
bool AllOn(const TXY* at, double y) {
    const __m128d ray = _mm_set1_pd(y);
    const auto on = [&](std::size_t k) {
        const __m128d point = _mm_loadu_pd(&at[k].x);
        return Above ? _mm_cmpgt_pd(point, ray) : _mm_cmple_pd(point, ray);
    };
    __m128d all = on(0);
    for (std::size_t k = 1; k < Step; ++k)
        all = _mm_and_pd(all, on(k));
    return (_mm_movemask_pd(all) & 2) != 0;
}
#endif

// The first point from i on that is not on this side of the ray.
template <bool Above, class P, class Y>
std::size_t Pass(std::span<const P> points, std::size_t i, Y y) {
    while (i + Step <= points.size() && AllOn<Above>(points.data() + i, y))
        i += Step;
    while (i < points.size() && IsOn<Above>(points[i], y))
        ++i;
    return i;
}

template <class P>
bool Inside(const P& p, std::span<const P> points) {
    const std::size_t count = points.size();
    if (count == 0)
        return false;
    bool inside = Crosses(points[0], points[count - 1], p);
    std::size_t i = 1;
    while (i < count) {
        const auto before = points[i - 1].y;
        if (before > p.y)
            i = Pass<true>(points, i, p.y);
        else if (before <= p.y)
            i = Pass<false>(points, i, p.y);
        if (i < count) {
            inside ^= Crosses(points[i], points[i - 1], p);
            ++i;
        }
    }
    return inside;
}

}  // namespace

bool PktInside(const TXY& p, const TXYARRAY& poly) {
    return Inside<TXY>(p, poly.Items());
}

bool PktInside(const TXYI& p, const TXYIARRAY& poly) {
    return Inside<TXYI>(p, poly.Items());
}

}  // namespace zk
