#include "setoperation.h"

#include <zk/_zkmath/inside.h>
#include <zk/_zkxyarrays/overlay.h>
#include <zk/_zkxyz/errors.h>

#include <cstddef>
#include <span>

namespace zk {
namespace {

// Outlines that do not fit together are split where they cross themselves, over and over: so many times at points that
// keep so many bits, and then from the beginning with fewer.
constexpr int Rounds = 4;
constexpr int Bits[] = {52, 44, 36, 28};

void Append(TlistOFXYArray& list, std::span<const TXY> points) {
    ArrayAddData(*list.AddArray(), static_cast<int>(points.size()), points.data());
}

// One of the polygons, or both, have no area. A lone point crosses nothing and is inside of the other or not.
void WithoutArea(const TXYARRAY& a, const TXYARRAY& b, const detail::Outline (&outlines)[2], TlistOFXYArray& result,
                 bool unite) {
    const TXYARRAY* const given[2] = {&a, &b};
    for (int of = 0; of < 2; ++of) {
        const auto points = given[of]->Items();
        const bool lonePoint = points.size() == 1 && PktInside(points[0], *given[1 - of]) != unite;
        if (lonePoint || (unite && !outlines[of].work.empty()))
            Append(result, points);
    }
}

// Appends all of the result, or nothing where the stretches of the outlines do not fit together.
bool TryAppend(const TXYARRAY& a, const TXYARRAY& b, const detail::Outline (&outlines)[2], TlistOFXYArray& result,
               bool unite) {
    detail::Overlay overlay(outlines);
    detail::Rings rings;
    try {
        overlay.Lay();
        if (overlay.Crosses())
            rings = overlay.Trace(unite);
    } catch (const EError&) {
        return false;
    }
    if (!overlay.Crosses()) {
        if (overlay.Inside(0) != unite)
            Append(result, a.Items());
        if (overlay.Inside(1) != unite)
            Append(result, b.Items());
    }
    std::size_t begin = 0;
    for (const std::size_t end : rings.ends) {
        Append(result, std::span(rings.points).subspan(begin, end - begin));
        begin = end;
    }
    return true;
}

}  // namespace

void SetOperation(const TXYARRAY& a, const TXYARRAY& b, TlistOFXYArray& result, bool unite) {
    detail::Outline outlines[2];
    detail::Prepare(a.Items(), b.Items(), outlines);
    if (outlines[0].work.empty() || outlines[1].work.empty()) {
        WithoutArea(a, b, outlines, result, unite);
        return;
    }
    if (TryAppend(a, b, outlines, result, unite))
        return;
    for (const int bits : Bits) {
        detail::Outline split[2] = {outlines[0], outlines[1]};
        for (int round = 0; round < Rounds && detail::SplitWhereShared(split, bits); ++round)
            if (TryAppend(a, b, split, result, unite))
                return;
    }
    throw EError("stack error");
}

}  // namespace zk
