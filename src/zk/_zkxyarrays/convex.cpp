#include "convex.h"

#include <zk/_zkxyarrays/face.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zk {
namespace {

void Append(detail::Face& face, TlistOFxyzArray& out) {
    face.JoinHoles();
    const detail::Pieces pieces = detail::CutConvex(face);
    std::vector<TXYZ> points(pieces.vertices.size());
    std::ranges::transform(pieces.vertices, points.begin(), [&](std::uint32_t v) { return face.vertices[v].point; });
    std::size_t begin = 0;
    for (const std::size_t end : pieces.ends) {
        ArrayAddData(*out.AddArray(), static_cast<int>(end - begin), points.data() + begin);
        begin = end;
    }
}

}  // namespace

void DOConvex(const TlistOFxyzArray& faces, TlistOFxyzArray& out) {
    detail::Face face;
    const int count = faces.Count();
    // With what joining adds: at most two vertices at either end of each way to a hole.
    std::size_t vertices = 0;
    for (int i = 0; i < count; ++i)
        if (const TXYZARRAY* array = faces.Getitem(i))
            vertices += array->Items().size() + 4;
    face.vertices.reserve(vertices);
    if (count == 0 || !faces.Getitem(0) || !face.SetOutline(faces.Getitem(0)->Items()))
        return;
    for (int i = 1; i < count; ++i)
        if (const TXYZARRAY* hole = faces.Getitem(i))
            face.AddHole(hole->Items());
    Append(face, out);
}

void DOConvex(const TXYZARRAY& poly, TlistOFxyzArray& out) {
    detail::Face face;
    if (face.SetOutline(poly.Items()))
        Append(face, out);
}

}  // namespace zk
