#include <zk/_zkmath/vector.h>
#include <zk/_zkxyarrays/convex.h>

#include <cmath>

namespace zk {
namespace {

// Every step makes four of one: this many make more triangles than memory holds.
constexpr int MostSteps = 16;

void Refine(const TXYZ& a, const TXYZ& b, const TXYZ& c, double d, int steps, TlistOFxyzArray& target) {
    const double perimeter = Len(Sub(b, a)) + Len(Sub(c, a)) + Len(Sub(c, b));
    if (perimeter <= d || steps == 0) {
        TXYZARRAY& triangle = *target.AddArray();
        Arraysetcount(triangle, 3);
        triangle[0] = a;
        triangle[1] = b;
        triangle[2] = c;
        return;
    }
    const TXYZ mab = Mul(Add(a, b), 0.5);
    const TXYZ mac = Mul(Add(a, c), 0.5);
    const TXYZ mbc = Mul(Add(c, b), 0.5);
    Refine(a, mab, mac, d, steps - 1, target);
    Refine(mab, b, mbc, d, steps - 1, target);
    Refine(mbc, c, mac, d, steps - 1, target);
    Refine(mab, mbc, mac, d, steps - 1, target);
}

}  // namespace

void RefineTriangles(const TlistOFxyzArray& source, double d, TlistOFxyzArray& target) {
    const int count = source.Count();
    for (int i = 0; i < count; ++i) {
        const TXYZARRAY* array = source.Getitem(i);
        if (!array)
            continue;
        const auto points = array->Items();
        if (points.size() == 3 || points.size() < 3)
            continue;
        // Taken out first: target may be the list that is being read.
        const TXYZ a = points[0];
        const TXYZ b = points[1];
        const TXYZ c = points[2];
        const double perimeter = Len(Sub(b, a)) + Len(Sub(c, a)) + Len(Sub(c, b));
        const bool reachable = d > 0 && std::isfinite(perimeter);
        Refine(a, b, c, d, reachable ? MostSteps : 0, target);
    }
}

}  // namespace zk
