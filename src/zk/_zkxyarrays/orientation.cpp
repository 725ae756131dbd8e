#include "orientation.h"

#include <zk/_zkmath/vector.h>

#include <algorithm>

namespace zk {

double Vekt(const TXYARRAY& poly) {
    double sum = 0;
    const auto points = poly.Items();
    const TXY* previous = points.empty() ? nullptr : &points.back();
    for (const TXY& current : points) {
        sum += Vekt(*previous, current);
        previous = &current;
    }
    return sum;
}

TXYZ Vekt(const TXYZARRAY& poly) {
    TXYZ sum;
    const auto points = poly.Items();
    const TXYZ* previous = points.empty() ? nullptr : &points.back();
    for (const TXYZ& current : points) {
        sum = Add(sum, Vekt(current, *previous));
        previous = &current;
    }
    return sum;
}

TXYZ Vekt(const TlistOFxyzArray& list) {
    TXYZ sum;
    for (int i = 0; i < list.Count(); ++i)
        if (const TXYZARRAY* poly = list.Getitem(i))
            sum = Add(sum, Vekt(*poly));
    return sum;
}

void Invertiere(TXYARRAY& poly) {
    std::ranges::reverse(poly.Items());
}

void Invertiere(TXYZARRAY& poly) {
    std::ranges::reverse(poly.Items());
}

}  // namespace zk
