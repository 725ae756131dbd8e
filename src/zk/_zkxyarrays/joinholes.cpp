#include <zk/_zkxyarrays/distance.h>
#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/face.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zk::detail {
namespace {

constexpr std::size_t BlockSize = 16;
constexpr double TooFar2 = 1e20;  // the square of 1e10
// Nearer than this, in parts of the outline's size in its plane, and a hole touches.
constexpr double Touching = 1e-14;
constexpr std::uint32_t None = 0xffffffff;

// In the plane that the face is decided in: nothing is farther apart there than in space.
struct Box {
    TXY low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    TXY high{-low.x, -low.x};

    void Extend(const TXY& p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    void Extend(const Box& o) {
        low = {std::min(low.x, o.low.x), std::min(low.y, o.low.y)};
        high = {std::max(high.x, o.high.x), std::max(high.y, o.high.y)};
    }
    // Not more than the square of any distance between the two, also after rounding.
    double Distance2(const Box& o) const {
        const auto gap = [](double l, double h, double ol, double oh) {
            return std::max(std::max(l - oh, ol - h), 0.0);
        };
        const double x = gap(low.x, high.x, o.low.x, o.high.x);
        const double y = gap(low.y, high.y, o.low.y, o.high.y);
        return (x * x + y * y) * (1 - 1e-9);
    }
};

// Edges by the vertex they start from, in blocks that are passed as a whole when they are too far away.
struct Edges {
    std::vector<std::uint32_t> starts;
    std::vector<Box> boxes;
    std::vector<Box> blocks;

    void Add(const Face& face, std::uint32_t start) {
        Box box;
        box.Extend(face.vertices[start].flat);
        box.Extend(face.vertices[face.vertices[start].next].flat);
        if (starts.size() % BlockSize == 0)
            blocks.emplace_back();
        blocks.back().Extend(box);
        starts.push_back(start);
        boxes.push_back(box);
    }
};

// A hole that is not joined yet, with the nearest pair of points between what is joined and the hole.
struct Waiting {
    Edges edges;
    Box box;
    NearestPoints nearest{};
    std::uint32_t joined = None;  // the edge there, by its start
    std::uint32_t hole = None;    // the edge of the hole

    // The block that is nearest by its box comes first, and in each block the nearest edge, so that most of the others
    // are too far away then.
    void Refresh(const Face& face, const Edges& added) {
        std::size_t nearBlock = 0;
        double bound2 = std::numeric_limits<double>::infinity();
        for (std::size_t block = 0; block < added.blocks.size(); ++block) {
            const double distance2 = added.blocks[block].Distance2(box);
            if (distance2 < bound2) {
                bound2 = distance2;
                nearBlock = block;
            }
        }
        if (bound2 > nearest.distance2)
            return;
        for (std::size_t k = 0; k < added.blocks.size(); ++k) {
            const std::size_t block = k == 0 ? nearBlock : k <= nearBlock ? k - 1 : k;
            if (added.blocks[block].Distance2(box) > nearest.distance2)
                continue;
            const std::size_t first = block * BlockSize;
            const std::size_t last = std::min(added.starts.size(), first + BlockSize);
            double distances2[BlockSize];
            std::size_t nearEdge = first;
            for (std::size_t i = first; i < last; ++i) {
                distances2[i - first] = added.boxes[i].Distance2(box);
                if (distances2[i - first] < distances2[nearEdge - first])
                    nearEdge = i;
            }
            Compare(face, added, nearEdge);
            for (std::size_t i = first; i < last; ++i)
                if (i != nearEdge && distances2[i - first] <= nearest.distance2)
                    Compare(face, added, i);
        }
    }

    // One of the edges with all of the hole.
    void Compare(const Face& face, const Edges& added, std::size_t i) {
        const auto end = [&](std::uint32_t v) -> const TXYZ& { return face.vertices[face.vertices[v].next].point; };
        const std::uint32_t a = added.starts[i];
        for (std::size_t block = 0; block < edges.blocks.size(); ++block) {
            if (added.boxes[i].Distance2(edges.blocks[block]) > nearest.distance2)
                continue;
            const std::size_t last = std::min(edges.starts.size(), (block + 1) * BlockSize);
            for (std::size_t e = block * BlockSize; e < last; ++e) {
                if (added.boxes[i].Distance2(edges.boxes[e]) > nearest.distance2)
                    continue;
                const std::uint32_t b = edges.starts[e];
                const auto pair = Nearest(face.vertices[a].point, end(a), face.vertices[b].point, end(b));
                if (pair.distance2 < nearest.distance2) {
                    nearest = pair;
                    joined = a;
                    hole = b;
                }
            }
        }
    }
};

// The vertex at a place on an edge, a new one where there is none.
std::uint32_t VertexAt(Face& face, std::uint32_t edge, double place, const TXYZ& point) {
    const std::uint32_t end = face.vertices[edge].next;
    if (place <= 0 || point == face.vertices[edge].point)
        return edge;
    if (place >= 1 || point == face.vertices[end].point)
        return end;
    return face.InsertAfter(edge, point);
}

// Of all vertices in the place of v, the one from which the ways to q and r are open; None where they are not in
// the face. Several
// vertices are in one place where holes have been joined before, or where the outline touches itself.
std::uint32_t OpenVertex(const Face& face, std::uint32_t v, const TXY& q, const TXY& r) {
    if (face.Opens(v, q) && face.Opens(v, r))
        return v;
    for (std::uint32_t u = face.vertices[v].next; u != v; u = face.vertices[u].next)
        if (face.vertices[u].flat == face.vertices[v].flat && face.Opens(u, q) && face.Opens(u, r))
            return u;
    return None;
}

// Whether one of the two ways starts on the right of an edge, where the face is not.
bool Behind(const Face& face, std::uint32_t edge, const TXY (&ways)[2]) {
    const TXY& from = face.vertices[edge].flat;
    const TXY& to = face.vertices[face.vertices[edge].next].flat;
    return Orientation(from, to, ways[0]) < 0 || Orientation(from, to, ways[1]) < 0;
}

// The edge that runs along this one the other way, None where there is none.
std::uint32_t Reverse(const Face& face, std::uint32_t edge) {
    const TXY& from = face.vertices[edge].flat;
    const TXY& to = face.vertices[face.vertices[edge].next].flat;
    for (std::uint32_t u = face.vertices[edge].next; u != edge; u = face.vertices[u].next)
        if (face.vertices[u].flat == to && face.vertices[face.vertices[u].next].flat == from)
            return u;
    return None;
}

}  // namespace

void Face::JoinHoles() {
    if (rings.size() < 2)
        return;
    const auto collect = [&](const Ring& ring) {
        Edges edges;
        edges.starts.reserve(ring.count);
        edges.boxes.reserve(ring.count);
        for (std::uint32_t k = 0, v = ring.first; k < ring.count; ++k, v = vertices[v].next)
            edges.Add(*this, v);
        return edges;
    };
    const Edges outline = collect(rings[0]);
    std::vector<Waiting> waiting(rings.size() - 1);
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        Waiting& hole = waiting[i];
        hole.edges = collect(rings[i + 1]);
        for (const Box& block : hole.edges.blocks)
            hole.box.Extend(block);
        hole.nearest.distance2 = TooFar2;
        hole.Refresh(*this, outline);
    }
    Box whole;
    for (const Box& block : outline.blocks)
        whole.Extend(block);
    const double touching = Touching * std::hypot(whole.high.x - whole.low.x, whole.high.y - whole.low.y);
    const double touching2 = touching * touching;
    while (!waiting.empty()) {
        // The first of the nearest.
        const auto best = std::ranges::min_element(waiting, {}, [](const Waiting& w) { return w.nearest.distance2; });
        if (best->joined == None)
            break;
        Waiting hole = std::move(*best);
        waiting.erase(best);
        NearestPoints& nearest = hole.nearest;
        // Nearer than rounding can tell: they touch, and have the one point in common.
        const bool touches = nearest.distance2 <= touching2;
        if (touches)
            (nearest.placeB <= 0 || nearest.placeB >= 1 ? nearest.pointA : nearest.pointB) =
                nearest.placeB <= 0 || nearest.placeB >= 1 ? nearest.pointB : nearest.pointA;
        const std::uint32_t h = VertexAt(*this, hole.hole, nearest.placeB, nearest.pointB);
        // The ways into the face: across, or where they touch, along the hole's own edges.
        const TXY ways[2] = {vertices[touches ? vertices[h].next : h].flat,
                             vertices[touches ? vertices[h].previous : h].flat};
        const bool onEdge = nearest.placeA > 0 && nearest.placeA < 1;
        // A way cut to another hole has two sides.
        if (onEdge && Behind(*this, hole.joined, ways)) {
            hole.joined = Reverse(*this, hole.joined);
            nearest.placeA = 1 - nearest.placeA;
        }
        const std::uint32_t split = hole.joined;
        // A hole that the face does not surround is left out, before the outline gets a vertex for it.
        if (split == None || (onEdge && Behind(*this, split, ways)))
            continue;
        const std::size_t before = vertices.size();
        std::uint32_t v = VertexAt(*this, split, nearest.placeA, nearest.pointA);
        if (vertices.size() > before)
            for (Waiting& other : waiting)
                if (other.joined == split) {
                    double& place = other.nearest.placeA;
                    if (place > nearest.placeA) {
                        other.joined = v;
                        place = (place - nearest.placeA) / (1 - nearest.placeA);
                    } else {
                        place /= nearest.placeA;
                    }
                }
        v = OpenVertex(*this, v, ways[0], ways[1]);
        if (v == None)
            continue;
        Edges added;
        const std::uint32_t last = vertices[h].previous;
        const std::uint32_t previous = vertices[v].previous;
        // previous - u (in the place of v) - around the hole - v. The edge that starts at v stays where it is.
        const std::uint32_t u = Add(vertices[v].point);
        vertices[previous].next = u;
        vertices[u].previous = previous;
        const auto link = [&](std::uint32_t a, std::uint32_t b) {
            vertices[a].next = b;
            vertices[b].previous = a;
        };
        if (touches) {
            link(u, vertices[h].next);
            link(last, v);
        } else {
            const std::uint32_t copy = Add(vertices[h].point);
            link(u, h);
            link(last, copy);
            link(copy, v);
        }
        for (std::uint32_t k = u; k != v; k = vertices[k].next)
            added.Add(*this, k);
        for (Waiting& other : waiting)
            other.Refresh(*this, added);
    }
    std::uint32_t count = 1;
    for (std::uint32_t v = vertices[rings[0].first].next; v != rings[0].first; v = vertices[v].next)
        ++count;
    rings[0].count = count;
    rings.resize(1);
}

}  // namespace zk::detail
