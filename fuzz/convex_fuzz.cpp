// Convex pieces of whatever face the bytes make: an outline and holes in a plane that depends on the first byte. They
// end and hand out finite points, at least three a piece. For an outline that crosses nothing nobody knows here what is
// covered; the tests do.
#include "polygonbytes.h"

#include <zk/_zkxyarrays/convex.h>
#include <zk/_zkxyz/message.h>

#include <cmath>
#include <cstdlib>

using namespace zk;

namespace {

void Require(bool holds) {
    if (!holds)
        std::abort();
}

void Add(TlistOFxyzArray& list, const std::vector<TXY>& points, int plane) {
    TXYZARRAY& array = *list.AddArray();
    for (const TXY& p : points) {
        const TXYZ point = plane == 0   ? TXYZ{p.x, p.y, 1}
                           : plane == 1 ? TXYZ{p.x, p.y, p.x + p.y}
                                        : TXYZ{-p.y, 3 * p.x, p.x};
        ArrayAppendData(array, &point);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool quiet = (SetMessageHandler([](const std::string&) {}), true);
    static_cast<void>(quiet);
    if (size > 4096)
        return 0;
    PolygonBytes bytes(data, size);
    const int plane = size > 0 ? data[0] / 3 % 3 : 0;
    const std::size_t most = size > 0 ? 1 + data[0] / 9 : 1;
    TlistOFxyzArray face, pieces;
    Add(face, bytes.First(), plane);
    while (!bytes.Empty() && face.Count() < 20)
        Add(face, bytes.Next(most + 2), plane);
    DOConvex(face, pieces);
    for (int i = 0; i < pieces.Count(); ++i) {
        Require(pieces[i]->Count >= 3);
        for (const TXYZ& p : pieces[i]->Items())
            Require(std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z));
    }
    return 0;
}
