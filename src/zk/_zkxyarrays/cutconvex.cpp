#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/face.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace zk::detail {
namespace {

constexpr std::uint32_t None = 0xffffffff;

// How far a vertex may turn the wrong way and still pass for straight, as the sine of the angle.
constexpr double Straight = 1e-12;

// Vertices at which the ring does not turn left, by place. Only they can be in the way of a triangle. They get fewer,
// and the triangles larger: the cells, too, are made larger from time to time.
class Blockers {
  public:
    Blockers(const Face& face, const std::vector<std::uint32_t>& ring, const std::vector<std::uint8_t>& blocks);

    void Remove(std::uint32_t v);

    // Whether in(p) is true for the place p of any blocker in the cells that a triangle is in. in must be false for a p
    // that is no number: that is what becomes of those that block no more.
    template <class In>
    bool Any(const TXY& a, const TXY& b, const TXY& c, In in) const {
        const TXY low{std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})};
        const TXY high{std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})};
        const int c0 = Cell(low.x - low_.x, perWidth_);
        const int c1 = Cell(high.x - low_.x, perWidth_);
        const int r0 = Cell(low.y - low_.y, perHeight_);
        const int r1 = Cell(high.y - low_.y, perHeight_);
        const bool many = (c1 - c0) * (r1 - r0) > 3;
        const Side sides[3] = {SideOf(a, b), SideOf(b, c), SideOf(c, a)};
        for (int r = r0; r <= r1; ++r) {
            int first = c0;
            int last = c1;
            if (many) {
                double from = side_;
                double to = 0;
                for (const Side& side : sides)
                    side.Extend(r - Slack, r + 1 + Slack, from, to);
                first = std::max(c0, Cell(from - Slack, 1));
                last = std::min(c1, Cell(to + Slack, 1));
            }
            const std::uint32_t* const row =
                start_.data() + static_cast<std::size_t>(r) * static_cast<std::size_t>(side_);
            if (first <= last)
                for (std::uint32_t k = row[first]; k < row[last + 1]; ++k)
                    if (in(entries_[k].p))
                        return true;
        }
        return false;
    }

  private:
    struct Entry {
        TXY p;
        std::uint32_t v;
    };
    // How far beside a cell something is still taken for inside, in cells. Rounding stays far below that.
    static constexpr double Slack = 1e-3;
    // A side of a triangle, upwards, in cells.
    struct Side {
        double x0, y0, x1, y1, slope;

        // What it passes between two heights.
        void Extend(double bottom, double top, double& from, double& to) const {
            if (y0 > top || y1 < bottom)
                return;
            const bool level = y1 - y0 < Slack;
            const double xa = level || bottom <= y0 ? x0 : x0 + (bottom - y0) * slope;
            const double xb = level || top >= y1 ? x1 : x0 + (top - y0) * slope;
            from = std::min({from, xa, xb});
            to = std::max({to, xa, xb});
        }
    };

    Side SideOf(const TXY& p, const TXY& q) const {
        const bool up = p.y <= q.y;
        const TXY& low = up ? p : q;
        const TXY& high = up ? q : p;
        Side side{(low.x - low_.x) * perWidth_, (low.y - low_.y) * perHeight_, (high.x - low_.x) * perWidth_,
                  (high.y - low_.y) * perHeight_, 0};
        side.slope = (side.x1 - side.x0) / (side.y1 - side.y0);
        return side;
    }
    void Sort();
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
    std::vector<std::uint32_t> start_;  // of each cell in entries_
    std::vector<Entry> entries_;
    std::vector<std::uint8_t> blocks_;  // by vertex
    std::size_t count_ = 0;
};

Blockers::Blockers(const Face& face, const std::vector<std::uint32_t>& ring, const std::vector<std::uint8_t>& blocks)
    : face_(face), blocks_(blocks) {
    for (const std::uint32_t v : ring)
        if (blocks[v])
            entries_.push_back({face.vertices[v].flat, v});
    Sort();
}

void Blockers::Sort() {
    const std::vector<Entry> entries = std::move(entries_);
    entries_.clear();
    count_ = 0;
    TXY high{};
    for (const Entry& entry : entries) {
        if (!blocks_[entry.v])
            continue;
        const TXY& p = entry.p;
        low_ = count_ == 0 ? p : TXY{std::min(low_.x, p.x), std::min(low_.y, p.y)};
        high = count_ == 0 ? p : TXY{std::max(high.x, p.x), std::max(high.y, p.y)};
        ++count_;
    }
    // Most vertices are along the outline, so that most cells are empty.
    side_ = std::max(1, static_cast<int>(2 * std::sqrt(static_cast<double>(count_))));
    perWidth_ = high.x > low_.x ? side_ / (high.x - low_.x) : 0;
    perHeight_ = high.y > low_.y ? side_ / (high.y - low_.y) : 0;
    start_.assign(static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_) + 1, 0);
    for (const Entry& entry : entries)
        if (blocks_[entry.v])
            ++start_[CellOf(entry.p)];
    std::partial_sum(start_.begin(), start_.end(), start_.begin());
    entries_.resize(start_.back());
    // Filled from the end, so that each start comes to rest where its cell begins.
    for (std::size_t i = entries.size(); i-- > 0;)
        if (blocks_[entries[i].v])
            entries_[--start_[CellOf(entries[i].p)]] = entries[i];
}

void Blockers::Remove(std::uint32_t v) {
    if (!blocks_[v])
        return;
    blocks_[v] = 0;
    std::uint32_t k = start_[CellOf(face_.vertices[v].flat)];
    while (entries_[k].v != v)
        ++k;
    constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
    entries_[k].p = {NaN, NaN};
    if (2 * --count_ < entries_.size() && entries_.size() > 64)
        Sort();
}

// Triangles cut off one by one, as a mesh of edges that each belong to the piece on their left.
class Mesh {
  public:
    explicit Mesh(Face& face);

    // The triangle at v, which leaves the ring.
    void Cut(std::uint32_t v);
    // v leaves the ring without a triangle.
    void Drop(std::uint32_t v);
    // Turns diagonals where the other one of the two triangles is of more use for convex pieces.
    void Improve();
    // Joins pieces across every cut that leaves them convex, the least useful first.
    void Merge();
    Pieces Take() const;

  private:
    struct Edge {
        std::uint32_t origin;
        std::uint32_t next, previous;
        std::uint32_t twin;
        std::uint8_t use;
        bool gone;
    };
    // A vertex where the ring turns right, with the neighbours that it had at first.
    struct Notch {
        std::uint32_t previous = None, next = None;
    };

    std::uint32_t AddEdge(std::uint32_t origin);
    bool Divides(std::uint32_t notch, std::uint32_t to) const;
    std::uint8_t Use(std::uint32_t edge) const;
    bool StaysConvex(std::uint32_t in, std::uint32_t out) const;
    void Link(std::uint32_t a, std::uint32_t b) {
        edges_[a].next = b;
        edges_[b].previous = a;
    }
    const TXY& At(std::uint32_t edge) const { return face_.vertices[edges_[edge].origin].flat; }

    Face& face_;
    std::vector<Edge> edges_;
    std::vector<std::uint32_t> across_;  // what is cut off beyond the edge that starts at a vertex
    std::vector<Notch> notches_;         // by vertex
};

Mesh::Mesh(Face& face) : face_(face), across_(face.vertices.size(), None), notches_(face.vertices.size()) {
    edges_.reserve(3 * face.vertices.size());
    for (std::uint32_t v = 0; v < face.vertices.size(); ++v) {
        const std::uint32_t p = face.vertices[v].previous;
        const std::uint32_t n = face.vertices[v].next;
        if (RoughTurn(face.vertices[p].flat, face.vertices[v].flat, face.vertices[n].flat).value < 0)
            notches_[v] = {p, n};
    }
}

// The edge of a new triangle that runs along what is left of the ring at origin.
std::uint32_t Mesh::AddEdge(std::uint32_t origin) {
    const auto edge = static_cast<std::uint32_t>(edges_.size());
    const std::uint32_t twin = across_[origin];
    edges_.push_back({origin, None, None, twin, 0, false});
    if (twin != None)
        edges_[twin].twin = edge;
    return edge;
}

void Mesh::Cut(std::uint32_t v) {
    const std::uint32_t a = face_.vertices[v].previous;
    const std::uint32_t c = face_.vertices[v].next;
    const std::uint32_t ab = AddEdge(a);
    const std::uint32_t bc = AddEdge(v);
    std::uint32_t ca = None;
    if (face_.vertices[c].next == a) {
        ca = AddEdge(c);
    } else {
        ca = static_cast<std::uint32_t>(edges_.size());
        edges_.push_back({c, None, None, None, 0, false});
    }
    Link(ab, bc);
    Link(bc, ca);
    Link(ca, ab);
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

// Whether a cut from a notch to that vertex leaves it convex on both sides, so that no other cut is needed there.
bool Mesh::Divides(std::uint32_t notch, std::uint32_t to) const {
    const Notch& n = notches_[notch];
    if (n.previous == None)
        return false;
    const TXY& at = face_.vertices[notch].flat;
    const TXY& q = face_.vertices[to].flat;
    return RoughTurn(face_.vertices[n.previous].flat, at, q).value >= 0 &&
           RoughTurn(q, at, face_.vertices[n.next].flat).value >= 0;
}

// How many notches a cut divides.
std::uint8_t Mesh::Use(std::uint32_t edge) const {
    const std::uint32_t u = edges_[edge].origin;
    const std::uint32_t v = edges_[edges_[edge].next].origin;
    return static_cast<std::uint8_t>(Divides(u, v) + Divides(v, u));
}

void Mesh::Improve() {
    for (std::uint32_t e = 0; e < edges_.size(); ++e)
        if (edges_[e].twin != None && e < edges_[e].twin)
            edges_[e].use = Use(e);
    // Each turn makes others possible; most of what can be had comes with the first rounds.
    constexpr int Rounds = 2;
    for (int round = 0; round < Rounds; ++round)
        for (std::uint32_t e = 0; e < edges_.size(); ++e) {
            const std::uint32_t t = edges_[e].twin;
            if (t == None || t < e)
                continue;
            const std::uint32_t eNext = edges_[e].next;
            const std::uint32_t ePrevious = edges_[e].previous;
            const std::uint32_t tNext = edges_[t].next;
            const std::uint32_t tPrevious = edges_[t].previous;
            const std::uint32_t x = edges_[ePrevious].origin;
            const std::uint32_t y = edges_[tPrevious].origin;
            const auto use = static_cast<std::uint8_t>(Divides(x, y) + Divides(y, x));
            if (use <= edges_[e].use)
                continue;
            if (Orientation(At(tPrevious), At(eNext), At(ePrevious)) <= 0 ||
                Orientation(At(ePrevious), At(e), At(tPrevious)) <= 0)
                continue;
            edges_[e].origin = y;
            edges_[t].origin = x;
            edges_[e].use = use;
            Link(e, ePrevious);
            Link(ePrevious, tNext);
            Link(tNext, e);
            Link(t, tPrevious);
            Link(tPrevious, eNext);
            Link(eNext, t);
        }
}

// The corner from edge in to edge out.
bool Mesh::StaysConvex(std::uint32_t in, std::uint32_t out) const {
    const TXY& p = At(in);
    const TXY& v = At(out);
    const TXY& n = At(edges_[out].next);
    const Turn turn = RoughTurn(p, v, n);
    if (turn.value >= 0)
        return true;
    const double length2 = ((v.x - p.x) * (v.x - p.x) + (v.y - p.y) * (v.y - p.y)) *
                           ((n.x - v.x) * (n.x - v.x) + (n.y - v.y) * (n.y - v.y));
    return turn.value >= -Straight * std::sqrt(length2);
}

// Cuts meet the outline at both of their ends, so that no piece can come to meet itself.
void Mesh::Merge() {
    for (int use = 0; use <= 2; ++use)
        for (std::uint32_t e = 0; e < edges_.size(); ++e) {
            const std::uint32_t t = edges_[e].twin;
            if (t == None || t < e || edges_[e].use != use)
                continue;
            if (!StaysConvex(edges_[e].previous, edges_[t].next) || !StaysConvex(edges_[t].previous, edges_[e].next))
                continue;
            Link(edges_[e].previous, edges_[t].next);
            Link(edges_[t].previous, edges_[e].next);
            edges_[e].gone = edges_[t].gone = true;
        }
}

Pieces Mesh::Take() const {
    Pieces pieces;
    pieces.vertices.reserve(edges_.size());
    std::vector<std::uint8_t> seen(edges_.size(), 0);
    for (std::uint32_t start = 0; start < edges_.size(); ++start) {
        if (seen[start] || edges_[start].gone)
            continue;
        for (std::uint32_t e = start; !seen[e]; e = edges_[e].next) {
            seen[e] = 1;
            pieces.vertices.push_back(edges_[e].origin);
        }
        pieces.ends.push_back(pieces.vertices.size());
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
    return !blockers_.Any(a, b, c, [&](const TXY& p) {
        const zk::detail::Turn ab = RoughTurn(a, b, p);
        const zk::detail::Turn bc = RoughTurn(b, c, p);
        const zk::detail::Turn ca = RoughTurn(c, a, p);
        // All at once: most are outside, and which side it is that says so cannot be guessed.
        if (!((ab.value >= -ab.error) & (bc.value >= -bc.error) & (ca.value >= -ca.error)))
            return false;
        return !(p == a) && !(p == b) && !(p == c) && Orientation(ab, a, b, p) >= 0 && Orientation(bc, b, c, p) >= 0 &&
               Orientation(ca, c, a, p) >= 0;
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

Pieces CutConvex(Face& face) {
    std::vector<std::uint32_t> ring;
    ring.reserve(face.rings[0].count);
    const std::uint32_t first = face.rings[0].first;
    std::uint32_t v = first;
    do {
        ring.push_back(v);
        v = face.vertices[v].next;
    } while (v != first);
    if (Convex(face, ring))
        return {ring, {ring.size()}};
    Cutter cutter(face, ring);
    Mesh& mesh = cutter.Run(first, ring.size());
    mesh.Improve();
    mesh.Merge();
    return mesh.Take();
}

}  // namespace zk::detail
