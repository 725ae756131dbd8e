#include <zk/_zkmath/inside.h>

#include <cstddef>
#include <span>

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

template <class P>
bool Inside(const P& p, std::span<const P> points) {
    const std::size_t count = points.size();
    if (count == 0)
        return false;
    bool inside = Crosses(points[0], points[count - 1], p);
    const P* const at = points.data();
    std::size_t i = 1;
    while (i < count) {
        // Most edges lie wholly above or wholly below the ray: they are passed in runs, four at a time.
        if (at[i - 1].y > p.y) {
            while (i + 4 <= count && (at[i].y > p.y) & (at[i + 1].y > p.y) & (at[i + 2].y > p.y) & (at[i + 3].y > p.y))
                i += 4;
            while (i < count && at[i].y > p.y)
                ++i;
        } else if (at[i - 1].y <= p.y) {
            while (i + 4 <= count &&
                   (at[i].y <= p.y) & (at[i + 1].y <= p.y) & (at[i + 2].y <= p.y) & (at[i + 3].y <= p.y))
                i += 4;
            while (i < count && at[i].y <= p.y)
                ++i;
        }
        if (i < count) {
            inside ^= Crosses(at[i], at[i - 1], p);
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
