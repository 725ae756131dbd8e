#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/face.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zk::detail {
namespace {

constexpr std::uint32_t None = 0xffffffff;

// How far a vertex may turn the wrong way and still pass for straight, as the sine of the angle.
constexpr double Straight = 1e-12;

// Vertices at which the ring does not turn left, by place. Only they can be in the way of a triangle. They get fewer.
class Blockers {
  public:
    Blockers(const Face& face, const std::vector<std::uint32_t>& ring, const std::vector<std::uint8_t>& blocks);

    void Remove(std::uint32_t v);

    // Whether in(v) is true for any blocker v with low <= v <= high.
    template <class In>
    bool Any(const TXY& low, const TXY& high, In in) const {
        if (all_.empty())
            return false;
        const int c0 = Cell(low.x - low_.x, perWidth_);
        const int c1 = Cell(high.x - low_.x, perWidth_);
        const int r0 = Cell(low.y - low_.y, perHeight_);
        const int r1 = Cell(high.y - low_.y, perHeight_);
        if (static_cast<std::size_t>(c1 - c0 + 1) * static_cast<std::size_t>(r1 - r0 + 1) > all_.size())
            return std::ranges::any_of(all_, in);
        for (int r = r0; r <= r1; ++r) {
            const std::size_t row = static_cast<std::size_t>(r) * static_cast<std::size_t>(side_);
            for (std::size_t cell = row + static_cast<std::size_t>(c0); cell <= row + static_cast<std::size_t>(c1);
                 ++cell)
                for (std::uint32_t k = start_[cell]; k < start_[cell] + count_[cell]; ++k)
                    if (in(entries_[k]))
                        return true;
        }
        return false;
    }

  private:
    int Cell(double offset, double per) const {
        const double at = offset * per;
        return at >= side_ ? side_ - 1 : at > 0 ? static_cast<int>(at) : 0;
    }
    std::size_t CellOf(const TXY& p) const {
        return static_cast<std::size_t>(Cell(p.y - low_.y, perHeight_)) * static_cast<std::size_t>(side_) +
               static_cast<std::size_t>(Cell(p.x - low_.x, perWidth_));
    }

    const Face& face_;
    TXY low_;
    int side_ = 1;
    double perWidth_ = 0;
    double perHeight_ = 0;
    std::vector<std::uint32_t> start_, count_, entries_;
    std::vector<std::uint32_t> all_;
    std::vector<std::uint32_t> indexInAll_;
};

Blockers::Blockers(const Face& face, const std::vector<std::uint32_t>& ring, const std::vector<std::uint8_t>& blocks)
    : face_(face) {
    TXY high{};
    indexInAll_.assign(face.vertices.size(), None);
    for (const std::uint32_t v : ring) {
        if (!blocks[v])
            continue;
        const TXY& p = face.vertices[v].flat;
        low_ = all_.empty() ? p : TXY{std::min(low_.x, p.x), std::min(low_.y, p.y)};
        high = all_.empty() ? p : TXY{std::max(high.x, p.x), std::max(high.y, p.y)};
        indexInAll_[v] = static_cast<std::uint32_t>(all_.size());
        all_.push_back(v);
    }
    // Most vertices are along the outline, so that most cells are empty.
    side_ = std::max(1, static_cast<int>(2.5 * std::sqrt(static_cast<double>(all_.size()))));
    perWidth_ = high.x > low_.x ? side_ / (high.x - low_.x) : 0;
    perHeight_ = high.y > low_.y ? side_ / (high.y - low_.y) : 0;
    start_.assign(static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_) + 1, 0);
    for (const std::uint32_t v : all_)
        ++start_[CellOf(face.vertices[v].flat) + 1];
    std::partial_sum(start_.begin(), start_.end(), start_.begin());
    count_.assign(start_.size(), 0);
    entries_.resize(all_.size());
    for (const std::uint32_t v : all_) {
        const std::size_t cell = CellOf(face.vertices[v].flat);
        entries_[start_[cell] + count_[cell]++] = v;
    }
}

void Blockers::Remove(std::uint32_t v) {
    const std::uint32_t index = indexInAll_[v];
    if (index == None)
        return;
    indexInAll_[v] = None;
    if (all_.back() != v) {
        all_[index] = all_.back();
        indexInAll_[all_[index]] = index;
    }
    all_.pop_back();
    const std::size_t cell = CellOf(face_.vertices[v].flat);
    const std::uint32_t last = start_[cell] + --count_[cell];
    for (std::uint32_t k = start_[cell]; k < last; ++k)
        if (entries_[k] == v)
            std::swap(entries_[k], entries_[last]);
}

// Triangles cut off one by one, as a mesh of edges that each belong to the piece on their left.
class Mesh {
  public:
    explicit Mesh(Face& face) : face_(face), across_(face.vertices.size(), None) {}

    // The triangle at v, which leaves the ring.
    void Cut(std::uint32_t v);
    // v leaves the ring without a triangle.
    void Drop(std::uint32_t v);
    // Joins pieces across every cut that leaves them convex.
    void Merge();
    std::vector<std::vector<std::uint32_t>> Pieces() const;

  private:
    struct Edge {
        std::uint32_t origin;
        std::uint32_t next, previous;
        std::uint32_t twin;
        bool gone;
    };

    std::uint32_t AddEdge(std::uint32_t origin, std::uint32_t twin);
    bool StaysConvex(std::uint32_t in, std::uint32_t out) const;
    const TXY& At(std::uint32_t edge) const { return face_.vertices[edges_[edge].origin].flat; }

    Face& face_;
    std::vector<Edge> edges_;
    std::vector<std::uint32_t> across_;  // what is cut off beyond the edge that starts at a vertex
};

std::uint32_t Mesh::AddEdge(std::uint32_t origin, std::uint32_t twin) {
    const auto edge = static_cast<std::uint32_t>(edges_.size());
    edges_.push_back({origin, None, None, twin, false});
    if (twin != None)
        edges_[twin].twin = edge;
    return edge;
}

void Mesh::Cut(std::uint32_t v) {
    const std::uint32_t a = face_.vertices[v].previous;
    const std::uint32_t c = face_.vertices[v].next;
    const bool last = face_.vertices[c].next == a;
    const std::uint32_t ab = AddEdge(a, across_[a]);
    const std::uint32_t bc = AddEdge(v, across_[v]);
    const std::uint32_t ca = AddEdge(c, last ? across_[c] : None);
    const std::uint32_t triangle[3] = {ab, bc, ca};
    for (int i = 0; i < 3; ++i) {
        edges_[triangle[i]].next = triangle[(i + 1) % 3];
        edges_[triangle[i]].previous = triangle[(i + 2) % 3];
    }
    across_[a] = ca;
    face_.vertices[a].next = c;
    face_.vertices[c].previous = a;
}

void Mesh::Drop(std::uint32_t v) {
    const std::uint32_t a = face_.vertices[v].previous;
    const std::uint32_t c = face_.vertices[v].next;
    across_[a] = None;
    face_.vertices[a].next = c;
    face_.vertices[c].previous = a;
}

// The corner from edge in to edge out.
bool Mesh::StaysConvex(std::uint32_t in, std::uint32_t out) const {
    const TXY& p = At(in);
    const TXY& v = At(out);
    const TXY& n = At(edges_[out].next);
    const Turn turn = RoughTurn(p, v, n);
    const double length2 = ((v.x - p.x) * (v.x - p.x) + (v.y - p.y) * (v.y - p.y)) *
                           ((n.x - v.x) * (n.x - v.x) + (n.y - v.y) * (n.y - v.y));
    return turn.value >= -Straight * std::sqrt(length2);
}

void Mesh::Merge() {
    for (std::uint32_t e = 0; e < edges_.size(); ++e) {
        const std::uint32_t t = edges_[e].twin;
        if (t == None || edges_[e].gone)
            continue;
        if (!StaysConvex(edges_[e].previous, edges_[t].next) || !StaysConvex(edges_[t].previous, edges_[e].next))
            continue;
        const auto link = [&](std::uint32_t a, std::uint32_t b) {
            edges_[a].next = b;
            edges_[b].previous = a;
        };
        link(edges_[e].previous, edges_[t].next);
        link(edges_[t].previous, edges_[e].next);
        edges_[e].gone = edges_[t].gone = true;
    }
}

std::vector<std::vector<std::uint32_t>> Mesh::Pieces() const {
    std::vector<std::vector<std::uint32_t>> pieces;
    std::vector<std::uint8_t> seen(edges_.size(), 0);
    for (std::uint32_t start = 0; start < edges_.size(); ++start) {
        if (seen[start] || edges_[start].gone)
            continue;
        std::vector<std::uint32_t> piece;
        for (std::uint32_t e = start; !seen[e]; e = edges_[e].next) {
            seen[e] = 1;
            piece.push_back(edges_[e].origin);
        }
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

bool Convex(const Face& face, const std::vector<std::uint32_t>& ring) {
    // Never to the right, and once around.
    int turns = 0;
    for (const std::uint32_t v : ring) {
        const TXY& p = face.vertices[face.vertices[v].previous].flat;
        const TXY& at = face.vertices[v].flat;
        const TXY& n = face.vertices[face.vertices[v].next].flat;
        const int turn = Orientation(p, at, n);
        if (turn < 0 || (turn == 0 && (at.x - p.x) * (n.x - at.x) + (at.y - p.y) * (n.y - at.y) < 0))
            return false;
        turns += (at.y < p.y) && !(n.y < at.y);
    }
    return turns == 1;
}

// What cuts the ring of a face into triangles.
class Cutter {
  public:
    Cutter(Face& face, const std::vector<std::uint32_t>& ring)
        : face_(face), mesh_(face), turns_(face.vertices.size(), 0), blockers_(face, ring, FindTurns(ring)) {}

    Mesh& Run(std::uint32_t first, std::size_t count);

  private:
    std::vector<std::uint8_t> FindTurns(const std::vector<std::uint32_t>& ring);
    int Turn(std::uint32_t v) const {
        const Face::Vertex& vertex = face_.vertices[v];
        return Orientation(face_.vertices[vertex.previous].flat, vertex.flat, face_.vertices[vertex.next].flat);
    }
    // The ring goes back at v along the edge that it came by, with nothing in between.
    bool Folds(std::uint32_t v) const {
        const Face::Vertex& vertex = face_.vertices[v];
        const TXY& p = face_.vertices[vertex.previous].flat;
        const TXY& n = face_.vertices[vertex.next].flat;
        const TXY& at = vertex.flat;
        return p == at || n == at || (p.x - at.x) * (n.x - at.x) + (p.y - at.y) * (n.y - at.y) > 0;
    }
    bool Free(std::uint32_t v) const;
    void Update(std::uint32_t v) {
        turns_[v] = static_cast<std::int8_t>(Turn(v));
        if (turns_[v] > 0)
            blockers_.Remove(v);
    }

    Face& face_;
    Mesh mesh_;
    std::vector<std::int8_t> turns_;
    Blockers blockers_;
};

std::vector<std::uint8_t> Cutter::FindTurns(const std::vector<std::uint32_t>& ring) {
    std::vector<std::uint8_t> blocks(face_.vertices.size(), 0);
    for (const std::uint32_t v : ring) {
        turns_[v] = static_cast<std::int8_t>(Turn(v));
        blocks[v] = turns_[v] <= 0;
    }
    return blocks;
}

// Whether the triangle at v has nothing in it, on it or across it. What is in the place of one of its corners is
// another part of the same ring that meets it there, and lies outside as long as nothing of it is inside.
bool Cutter::Free(std::uint32_t v) const {
    const TXY& a = face_.vertices[face_.vertices[v].previous].flat;
    const TXY& b = face_.vertices[v].flat;
    const TXY& c = face_.vertices[face_.vertices[v].next].flat;
    const TXY low{std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})};
    const TXY high{std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})};
    return !blockers_.Any(low, high, [&](std::uint32_t u) {
        const TXY& p = face_.vertices[u].flat;
        if (p.x < low.x || p.x > high.x || p.y < low.y || p.y > high.y || p == a || p == b || p == c)
            return false;
        return Orientation(a, b, p) >= 0 && Orientation(b, c, p) >= 0 && Orientation(c, a, p) >= 0;
    });
}

Mesh& Cutter::Run(std::uint32_t v, std::size_t count) {
    std::size_t looked = 0;
    while (count >= 3) {
        const std::uint32_t a = face_.vertices[v].previous;
        const std::uint32_t c = face_.vertices[v].next;
        const bool tried = looked >= count;
        // Spikes go at once. When there is nothing to cut off any more, a vertex without a triangle goes, and where
        // there is none either, the face crosses itself.
        const bool drop = turns_[v] == 0 && (tried || Folds(v));
        const bool force = looked >= 2 * count && turns_[v] > 0;
        if (looked >= 3 * count)
            break;
        if (drop || force || (turns_[v] > 0 && Free(v))) {
            drop ? mesh_.Drop(v) : mesh_.Cut(v);
            blockers_.Remove(v);
            --count;
            Update(a);
            Update(c);
            looked = 0;
            // The neighbour is passed over, so that the triangles do not all share a corner.
            v = face_.vertices[c].next;
        } else {
            ++looked;
            v = c;
        }
    }
    return mesh_;
}

}  // namespace

std::vector<std::vector<std::uint32_t>> CutConvex(Face& face) {
    std::vector<std::uint32_t> ring;
    ring.reserve(face.rings[0].count);
    const std::uint32_t first = face.rings[0].first;
    std::uint32_t v = first;
    do {
        ring.push_back(v);
        v = face.vertices[v].next;
    } while (v != first);
    if (Convex(face, ring))
        return {ring};
    Cutter cutter(face, ring);
    Mesh& mesh = cutter.Run(first, ring.size());
    mesh.Merge();
    return mesh.Pieces();
}

}  // namespace zk::detail
