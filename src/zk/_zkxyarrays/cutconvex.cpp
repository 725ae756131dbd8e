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

// The ring that is being cut up: what of a vertex is needed for that, numbered in the order of the ring, so that
// neighbours are neighbours in memory, too.
struct Corner {
    TXY at;
    std::uint32_t next, previous;
};
using Corners = std::vector<Corner>;

// Vertices at which the ring does not turn left, by place. Only they can be in the way of a triangle. They get fewer,
// and the triangles larger: the cells, too, are made larger from time to time.
class Blockers {
  public:
    // turns is above 0 for those that do turn left.
    Blockers(const Corners& corners, const std::vector<std::int8_t>& turns);

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
        Side sides[3]{};
        if (many) {
            sides[0] = SideOf(a, b);
            sides[1] = SideOf(b, c);
            sides[2] = SideOf(c, a);
        }
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
    int Cell(double offset, double per) const { return static_cast<int>(std::min(std::max(0.0, offset * per), last_)); }
    std::size_t CellOf(const TXY& p) const {
        return static_cast<std::size_t>(Cell(p.y - low_.y, perHeight_)) * static_cast<std::size_t>(side_) +
               static_cast<std::size_t>(Cell(p.x - low_.x, perWidth_));
    }

    TXY low_;
    int side_ = 1;     // cells in a row, and rows
    double last_ = 0;  // of them
    double perWidth_ = 0;
    double perHeight_ = 0;
    std::vector<std::uint32_t> start_;  // of each cell in entries_
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> slotOf_;  // by corner: where in entries_ it is, if it blocks
    std::size_t count_ = 0;
};

Blockers::Blockers(const Corners& corners, const std::vector<std::int8_t>& turns) : slotOf_(corners.size(), None) {
    entries_.reserve(corners.size());
    for (std::uint32_t v = 0; v < corners.size(); ++v)
        if (turns[v] <= 0)
            entries_.push_back({corners[v].at, v});
    Sort();
}

void Blockers::Sort() {
    std::erase_if(entries_, [](const Entry& entry) { return std::isnan(entry.p.x); });
    const std::vector<Entry> entries = entries_;
    count_ = entries.size();
    low_ = entries.empty() ? TXY{} : entries[0].p;
    TXY high = low_;
    for (const Entry& entry : entries) {
        low_ = {std::min(low_.x, entry.p.x), std::min(low_.y, entry.p.y)};
        high = {std::max(high.x, entry.p.x), std::max(high.y, entry.p.y)};
    }
    // Most vertices are along the outline, so that most cells are empty.
    side_ = std::max(1, static_cast<int>(2 * std::sqrt(static_cast<double>(count_))));
    last_ = side_ - 1;
    perWidth_ = high.x > low_.x ? side_ / (high.x - low_.x) : 0;
    perHeight_ = high.y > low_.y ? side_ / (high.y - low_.y) : 0;
    start_.assign(static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_) + 1, 0);
    for (const Entry& entry : entries)
        ++start_[CellOf(entry.p)];
    std::partial_sum(start_.begin(), start_.end(), start_.begin());
    // Filled from the end, so that each start comes to rest where its cell begins.
    for (std::size_t i = entries.size(); i-- > 0;) {
        const std::uint32_t slot = --start_[CellOf(entries[i].p)];
        entries_[slot] = entries[i];
        slotOf_[entries[i].v] = slot;
    }
}

void Blockers::Remove(std::uint32_t v) {
    const std::uint32_t slot = slotOf_[v];
    if (slot == None)
        return;
    slotOf_[v] = None;
    constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
    entries_[slot].p = {NaN, NaN};
    if (2 * --count_ < entries_.size() && entries_.size() > 64)
        Sort();
}

// As in _zkmath, here for the compiler to see.
TXY Sub(const TXY& p, const TXY& q) {
    return {p.x - q.x, p.y - q.y};
}
double Length(const TXY& p, const TXY& q) {
    const TXY d = Sub(q, p);
    return std::sqrt(d.x * d.x + d.y * d.y);
}

// Triangles cut off one by one, as a mesh of edges that each belong to the piece on their left.
class Mesh {
  public:
    // The corners stay the caller's; turns is below 0 for those where the ring turns right.
    Mesh(Corners& corners, const std::vector<std::int8_t>& turns);

    // The triangle at v, which leaves the ring.
    void Cut(std::uint32_t v);
    // v leaves the ring without a triangle.
    void Drop(std::uint32_t v);
    // Turns diagonals where the other one of the two triangles is of more use for convex pieces.
    void Improve();
    // After Improve. Joins pieces across every cut that leaves them convex, the least useful first.
    void Merge();
    // The pieces. The mesh is of no more use then.
    Pieces Take();

  private:
    struct Edge {
        std::uint32_t origin;
        std::uint32_t next, previous;
        std::uint32_t twin;
        std::uint8_t use;
        bool gone;
        bool open;  // for Improve: whether it is still to be looked at
    };

    std::uint32_t AddEdge(std::uint32_t origin);
    bool Divides(std::uint32_t notch, std::uint32_t to) const;
    std::uint8_t Use(std::uint32_t edge) const;
    bool StaysConvex(std::uint32_t e, std::uint32_t t) const;
    void Link(std::uint32_t a, std::uint32_t b) {
        edges_[a].next = b;
        edges_[b].previous = a;
    }
    const TXY& At(std::uint32_t edge) const { return corners_[edges_[edge].origin].at; }
    // Of an edge and its twin the one that stands for both.
    std::uint32_t First(std::uint32_t edge) const { return std::min(edge, edges_[edge].twin); }
    void FindCuts();

    Corners& corners_;
    std::vector<Edge> edges_;
    std::vector<std::uint32_t> cuts_;    // the edges that have a piece on either side, each once
    std::vector<std::uint32_t> across_;  // what is cut off beyond the edge that starts at a corner
    // By corner, whether the ring turned right there at first, when its neighbours were those by number.
    std::vector<std::uint8_t> notch_;
};

Mesh::Mesh(Corners& corners, const std::vector<std::int8_t>& turns)
    : corners_(corners), across_(corners.size(), None), notch_(corners.size()) {
    edges_.reserve(3 * corners.size());
    std::ranges::transform(turns, notch_.begin(), [](std::int8_t turn) { return turn < 0; });
}

// The edge of a new triangle that runs along what is left of the ring at origin.
std::uint32_t Mesh::AddEdge(std::uint32_t origin) {
    const auto edge = static_cast<std::uint32_t>(edges_.size());
    const std::uint32_t twin = across_[origin];
    edges_.push_back({origin, None, None, twin, 0, false, true});
    if (twin != None)
        edges_[twin].twin = edge;
    return edge;
}

void Mesh::Cut(std::uint32_t v) {
    const std::uint32_t a = corners_[v].previous;
    const std::uint32_t c = corners_[v].next;
    const std::uint32_t ab = AddEdge(a);
    const std::uint32_t bc = AddEdge(v);
    std::uint32_t ca = None;
    if (corners_[c].next == a) {
        ca = AddEdge(c);
    } else {
        ca = static_cast<std::uint32_t>(edges_.size());
        edges_.push_back({c, None, None, None, 0, false, true});
    }
    Link(ab, bc);
    Link(bc, ca);
    Link(ca, ab);
    across_[a] = ca;
    corners_[a].next = c;
    corners_[c].previous = a;
}

void Mesh::Drop(std::uint32_t v) {
    const std::uint32_t a = corners_[v].previous;
    const std::uint32_t c = corners_[v].next;
    across_[a] = None;
    corners_[a].next = c;
    corners_[c].previous = a;
}

// Whether a cut from a notch to that vertex leaves it convex on both sides, so that no other cut is needed there.
bool Mesh::Divides(std::uint32_t notch, std::uint32_t to) const {
    if (!notch_[notch])
        return false;
    const std::size_t n = corners_.size();
    const TXY& previous = corners_[notch > 0 ? notch - 1 : n - 1].at;
    const TXY& at = corners_[notch].at;
    const TXY& next = corners_[notch + 1 < n ? notch + 1 : 0].at;
    const TXY& q = corners_[to].at;
    return int(RoughTurn(previous, at, q).value >= 0) & int(RoughTurn(q, at, next).value >= 0);  // without a branch
}

// How many notches a cut divides.
std::uint8_t Mesh::Use(std::uint32_t edge) const {
    const std::uint32_t u = edges_[edge].origin;
    const std::uint32_t v = edges_[edges_[edge].next].origin;
    return static_cast<std::uint8_t>(Divides(u, v) + Divides(v, u));
}

void Mesh::FindCuts() {
    cuts_.reserve(edges_.size() / 3);
    for (std::uint32_t e = 0; e < edges_.size(); ++e)
        if (edges_[e].twin != None && e < edges_[e].twin)
            cuts_.push_back(e);
}

void Mesh::Improve() {
    FindCuts();
    for (const std::uint32_t e : cuts_)
        edges_[e].use = Use(e);
    // Each turn makes others possible; most of what can be had comes with the first rounds.
    constexpr int Rounds = 2;
    for (int round = 0; round < Rounds; ++round)
        for (const std::uint32_t e : cuts_) {
            if (!edges_[e].open)
                continue;
            edges_[e].open = false;
            const std::uint32_t t = edges_[e].twin;
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
            for (const std::uint32_t side : {ePrevious, tNext, tPrevious, eNext})
                edges_[First(side)].open = true;
        }
}

// Whether the corners at both ends of a cut are convex without it.
bool Mesh::StaysConvex(std::uint32_t e, std::uint32_t t) const {
    struct Bend {
        double turn, length;
    };
    // No length is below that of the two edges, multiplied.
    const auto bend = [&](std::uint32_t in, std::uint32_t out) {
        const TXY u = Sub(At(in), At(out));
        const TXY v = Sub(At(edges_[out].next), At(out));
        return Bend{u.y * v.x - u.x * v.y, (std::fabs(u.x) + std::fabs(u.y)) * (std::fabs(v.x) + std::fabs(v.y))};
    };
    const std::uint32_t ins[2] = {edges_[e].previous, edges_[t].previous};
    const std::uint32_t outs[2] = {edges_[t].next, edges_[e].next};
    const Bend a = bend(ins[0], outs[0]);
    const Bend b = bend(ins[1], outs[1]);
    // Both at once: about one half of the corners are convex, and which cannot be guessed.
    if ((a.turn < -Straight * a.length) | (b.turn < -Straight * b.length))
        return false;
    const auto straight = [&](const Bend& c, std::uint32_t in, std::uint32_t out) {
        return c.turn >= 0 || c.turn >= -Straight * Length(At(in), At(out)) * Length(At(out), At(edges_[out].next));
    };
    return straight(a, ins[0], outs[0]) && straight(b, ins[1], outs[1]);
}

// Cuts meet the outline at both of their ends, so that no piece can come to meet itself.
void Mesh::Merge() {
    for (int use = 0; use <= 2; ++use)
        for (const std::uint32_t e : cuts_) {
            const std::uint32_t t = edges_[e].twin;
            if (edges_[e].use != use)
                continue;
            if (!StaysConvex(e, t))
                continue;
            Link(edges_[e].previous, edges_[t].next);
            Link(edges_[t].previous, edges_[e].next);
            edges_[e].gone = edges_[t].gone = true;
        }
}

Pieces Mesh::Take() {
    Pieces pieces;
    pieces.vertices.reserve(edges_.size());
    for (std::uint32_t start = 0; start < edges_.size(); ++start) {
        if (edges_[start].gone)
            continue;
        for (std::uint32_t e = start; !edges_[e].gone; e = edges_[e].next) {
            edges_[e].gone = true;
            pieces.vertices.push_back(edges_[e].origin);
        }
        pieces.ends.push_back(pieces.vertices.size());
    }
    return pieces;
}

bool Convex(const Corners& ring) {
    // Never to the right, and once around.
    int turns = 0;
    for (const Corner& corner : ring) {
        const TXY& p = ring[corner.previous].at;
        const TXY& at = corner.at;
        const TXY& n = ring[corner.next].at;
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
    // The corners stay the caller's; they are what the triangles are cut from.
    explicit Cutter(Corners& corners)
        : corners_(corners), turns_(Turns(corners)), mesh_(corners, turns_), blockers_(corners, turns_) {}

    Mesh& Run();

  private:
    static int Turn(const Corners& corners, std::uint32_t v) {
        return Orientation(corners[corners[v].previous].at, corners[v].at, corners[corners[v].next].at);
    }
    static std::vector<std::int8_t> Turns(const Corners& corners) {
        std::vector<std::int8_t> turns(corners.size());
        for (std::uint32_t v = 0; v < corners.size(); ++v)
            turns[v] = static_cast<std::int8_t>(Turn(corners, v));
        return turns;
    }
    // The ring goes back at v along the edge that it came by, with nothing in between.
    bool Folds(std::uint32_t v) const {
        const TXY& p = corners_[corners_[v].previous].at;
        const TXY& at = corners_[v].at;
        const TXY& n = corners_[corners_[v].next].at;
        return p == at || n == at || (p.x - at.x) * (n.x - at.x) + (p.y - at.y) * (n.y - at.y) > 0;
    }
    bool Free(std::uint32_t v) const;
    std::uint32_t DropSpikes(std::size_t& count);
    void Update(std::uint32_t v) {
        turns_[v] = static_cast<std::int8_t>(Turn(corners_, v));
        if (turns_[v] > 0)
            blockers_.Remove(v);
    }

    Corners& corners_;
    std::vector<std::int8_t> turns_;
    Mesh mesh_;
    Blockers blockers_;
};

// Whether the triangle at v has nothing in it, on it or across it. What is in the place of one of its corners is
// another part of the same ring that meets it there, and lies outside as long as nothing of it is inside.
bool Cutter::Free(std::uint32_t v) const {
    const TXY& a = corners_[corners_[v].previous].at;
    const TXY& b = corners_[v].at;
    const TXY& c = corners_[corners_[v].next].at;
    return !blockers_.Any(a, b, c, [&](const TXY& p) {
        const zk::detail::Turn ab = RoughTurn(a, b, p);
        const zk::detail::Turn bc = RoughTurn(b, c, p);
        const zk::detail::Turn ca = RoughTurn(c, a, p);
        // All at once: most are outside, or are corners themselves, and which it is that says so cannot be guessed.
        const auto differs = [&](const TXY& q) { return (p.x != q.x) | (p.y != q.y); };
        if (!((ab.value >= -ab.error) & (bc.value >= -bc.error) & (ca.value >= -ca.error) & differs(a) & differs(b) &
              differs(c)))
            return false;
        return Orientation(ab, a, b, p) >= 0 && Orientation(bc, b, c, p) >= 0 && Orientation(ca, c, a, p) >= 0;
    });
}

// Takes away the vertices at which the ring goes back the way it came, and `count` of them are left: seen from the foot
// of a spike, what lies beside the spike would look like a triangle of the face. Gives a vertex that is left.
std::uint32_t Cutter::DropSpikes(std::size_t& count) {
    std::uint32_t v = 0;
    for (std::size_t left = count; left > 0 && count >= 3; --left) {
        const std::uint32_t a = corners_[v].previous;
        const std::uint32_t c = corners_[v].next;
        if (turns_[v] != 0 || !Folds(v)) {
            v = c;
            continue;
        }
        mesh_.Drop(v);
        blockers_.Remove(v);
        --count;
        Update(a);
        Update(c);
        // What comes before it may be one now.
        left += 2;
        v = a;
    }
    return v;
}

Mesh& Cutter::Run() {
    std::size_t count = corners_.size();
    std::size_t looked = 0;
    std::uint32_t v = DropSpikes(count);
    while (count >= 3) {
        const std::uint32_t a = corners_[v].previous;
        const std::uint32_t c = corners_[v].next;
        const bool tried = looked >= count;
        // Spikes that cutting leaves go at once. When there is nothing to cut off any more, a vertex without a triangle
        // goes, and where there is none either, the face crosses itself.
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
            v = corners_[c].next;
        } else {
            ++looked;
            v = c;
        }
    }
    return mesh_;
}

}  // namespace

Pieces CutConvex(const Face& face) {
    std::vector<std::uint32_t> ring;
    ring.reserve(face.rings[0].count);
    Corners corners;
    corners.reserve(face.rings[0].count);
    const std::uint32_t first = face.rings[0].first;
    std::uint32_t v = first;
    do {
        const auto k = static_cast<std::uint32_t>(ring.size());
        corners.push_back({face.vertices[v].flat, k + 1, k - 1});
        ring.push_back(v);
        v = face.vertices[v].next;
    } while (v != first);
    corners.front().previous = static_cast<std::uint32_t>(ring.size()) - 1;
    corners.back().next = 0;
    if (Convex(corners))
        return {ring, {ring.size()}};
    Cutter cutter(corners);
    Mesh& mesh = cutter.Run();
    mesh.Improve();
    mesh.Merge();
    Pieces pieces = mesh.Take();
    for (std::uint32_t& vertex : pieces.vertices)
        vertex = ring[vertex];
    return pieces;
}

}  // namespace zk::detail
