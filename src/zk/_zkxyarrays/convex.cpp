#include <zk/_zkxyarrays/convex.h>
#include <zk/_zkxyarrays/face.h>

#include <vector>

namespace zk {
namespace {

void Append(detail::Face& face, TlistOFxyzArray& out) {
    face.JoinHoles();
    std::vector<TXYZ> points;
    for (const auto& piece : detail::CutConvex(face)) {
        points.clear();
        for (const std::uint32_t v : piece)
            points.push_back(face.vertices[v].point);
        ArrayAddData(*out.AddArray(), static_cast<int>(points.size()), points.data());
    }
}

}  // namespace

void DOConvex(const TlistOFxyzArray& faces, TlistOFxyzArray& out) {
    detail::Face face;
    const int count = faces.Count();
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
