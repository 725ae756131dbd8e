// Union and intersection of whatever two polygons the bytes make. They end, hand out finite points, throw nothing
// but "stack error", and on the small grid not even that; there, a point is inside of the results as it is inside of
// the two.
#include "polygonbytes.h"

#include <zk/_zkmath/inside.h>
#include <zk/_zkxyarrays/setoperation.h>
#include <zk/_zkxyz/errors.h>
#include <zk/_zkxyz/message.h>

#include <cmath>
#include <cstdlib>
#include <cstring>

using namespace zk;

namespace {

void Require(bool holds) {
    if (!holds)
        std::abort();
}

ArrayOwner<TXYARRAY> Array(const std::vector<TXY>& points) {
    ArrayOwner<TXYARRAY> array;
    ArrayAddData(*array, static_cast<int>(points.size()), points.data());
    return array;
}

bool Inside(const TXY& p, const TlistOFXYArray& list) {
    bool inside = false;
    for (int i = 0; i < list.Count(); ++i)
        inside ^= PktInside(p, *list[i]);
    return inside;
}

void CheckPoints(const TlistOFXYArray& list) {
    for (int i = 0; i < list.Count(); ++i)
        for (const TXY& p : list[i]->Items())
            Require(std::isfinite(p.x) && std::isfinite(p.y));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool quiet = (SetMessageHandler([](const std::string&) {}), true);
    static_cast<void>(quiet);
    if (size > 4096)
        return 0;
    const bool onGrid = size > 0 && data[0] % 3 == 0;
    PolygonBytes bytes(data, size);
    const auto a = Array(bytes.First());
    const auto b = Array(bytes.Next(255));
    TlistOFXYArray united, common;
    try {
        SetOperation(*a, *b, united, true);
        SetOperation(*a, *b, common, false);
    } catch (const EError& e) {
        Require(std::strcmp(e.what(), "stack error") == 0 && !onGrid);
        return 0;
    }
    // A single point that is no number, or takes no part otherwise, is handed back as it came.
    if (a->Count > 1 && b->Count > 1) {
        CheckPoints(united);
        CheckPoints(common);
    }
    if (onGrid)
        for (double x = -0.61803; x < 16; x += 1.7)
            for (double y = -0.41421; y < 16; y += 1.9) {
                const bool inA = PktInside(TXY{x, y}, *a);
                const bool inB = PktInside(TXY{x, y}, *b);
                Require(Inside({x, y}, united) == (inA || inB));
                Require(Inside({x, y}, common) == (inA && inB));
            }
    return 0;
}
