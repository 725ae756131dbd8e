#pragma once

#include <zk/_zkxyz/records.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// Two closed polygons laid over each other. Not for use outside this unit.
//
// Where the outlines meet there is a node; between its nodes each outline falls into stretches. Every decision that the
// shape of the result depends on (which edges cross, in which order along an edge, what is on which side) is made
// exactly, so that stretches fit together whatever is shared, touching or nearly so. Only the coordinates of crossing
// points are rounded.
//
// What is inside follows the rule of PktInside: surrounded an odd number of times. An outline's crossings with itself
// need no nodes for that.
namespace zk::detail {

inline constexpr std::uint32_t None = 0xffffffff;

// One of the two outlines. Both vectors have the same points in the same order: work is scaled into the range of exact
// arithmetic, given has the caller's coordinates.
struct Outline {
    std::vector<TXY> work;
    std::vector<TXY> given;

    std::uint32_t Count() const { return static_cast<std::uint32_t>(work.size()); }
    std::uint32_t After(std::uint32_t i) const { return i + 1 < Count() ? i + 1 : 0; }
    std::uint32_t Before(std::uint32_t i) const { return i > 0 ? i - 1 : Count() - 1; }
};

// Makes the two outlines ready: points equal to the one before are left out, the order is clockwise. An outline without
// an area, or with a coordinate that is no finite number, comes out empty.
void Prepare(std::span<const TXY> a, std::span<const TXY> b, Outline (&outlines)[2]);

// The point at a place on the way from p to q, never beyond them.
inline TXY Between(const TXY& p, const TXY& q, double place) {
    const auto between = [&](double low, double high) {
        const double step = high - low;
        const double at = std::isfinite(step) ? low + step * place : low * (1 - place) + high * place;
        return std::clamp(at, std::min(low, high), std::max(low, high));
    };
    return {between(p.x, q.x), between(p.y, q.y)};
}

// Work coordinates are multiples of two to this power: smaller digits are too small for exact arithmetic.
inline constexpr int SmallestBit = -260;

// An outline can cross itself on a stretch that it shares with the other. Two edges then meet a third one in a point
// that is not a vertex and need not be a number of the machine's, and what is found out about the one does not fit what
// is found out about the other. Here all of them get a vertex at the rounded point. False when there is no such place.
//
// Rounding can make new ones, so that several rounds can be needed. Where many edges run through nearly the same point
// that may go on for ever, unless all are rounded to the same point: bits is how many of them the largest coordinate
// keeps.
bool SplitWhereShared(Outline (&outlines)[2], int bits);

// Closed polygons one behind the other.
struct Rings {
    std::vector<TXY> points;
    std::vector<std::size_t> ends;
};

class Overlay {
  public:
    // The outlines stay the caller's and are as Prepare makes them, neither of them empty.
    explicit Overlay(const Outline (&outlines)[2]) : outlines_{&outlines[0], &outlines[1]} {}

    // Lays them over each other. Throws EError("stack error") where stretches do not fit together: see
    // SplitWhereShared. Trace can throw it, too.
    void Lay();

    // Whether any stretch changes from inside to outside of the other outline, or is shared with it. Otherwise each
    // outline is wholly outside or inside of the other, and at most touches it.
    bool Crosses() const { return crosses_; }
    // Where the outlines do not cross: whether this one is inside the other.
    bool Inside(int of) const { return inside_[of]; }

    // The outlines of the union or the intersection, in a fixed order. Outlines run counter-clockwise, holes clockwise.
    Rings Trace(bool united);

  private:
    // Two edges that cross inside of both, with where they do on each of them, from 0 to 1.
    struct Crossing {
        std::uint32_t edge[2];
        double place[2];
        float error[2];
    };
    // A place on an outline where there is a node. The stops of the first outline come first, each outline's are sorted
    // along it, and stretch i goes from stop i to the next one of the outline.
    struct Stop {
        std::uint32_t edge;
        std::uint32_t link;  // where two edges cross: the other's stop; otherwise the node, and VertexBit
        double place;        // on the edge; below 0 at its first vertex

        bool OfVertices() const { return (link & VertexBit) != 0; }
        std::uint32_t Node() const { return link & ~VertexBit; }
        bool AtVertex() const { return place < 0; }
    };
    static constexpr std::uint32_t VertexBit = 0x80000000;
    // An end of a stretch, seen from its node.
    struct End {
        std::uint32_t stretch = 0;
        bool last = false;  // the stretch arrives here

        std::uint32_t Index() const { return 2 * stretch + (last ? 1 : 0); }
    };
    // A point where a vertex is on the other outline. Where two edges cross, their stops are all there is.
    struct Node {
        TXY work;
        TXY given{};
        std::uint32_t begin = 0, end = 0;  // its ends in ends_
        std::uint32_t directions = 0, directionCount = 0;
        bool known[2] = {false, false};  // its sectors
    };
    // An edge, or the vertex where it starts, at a node of vertices.
    struct Passing {
        std::uint32_t edge;
        std::uint32_t node;
        bool atVertex;
    };
    // Where the ring that is being traced passes a node of vertices.
    struct Mark {
        std::uint32_t index;  // in ring_
        std::uint32_t node;
        bool straight;  // passed along one edge: no corner
    };

    // overlaycontacts.cpp: where the outlines meet
    void FindContacts();
    void CompleteContacts();
    void FindPassing(int of);
    // overlaystops.cpp: nodes and stops
    void MakeStops();
    template <class Take>
    void SortAlong(int of, Take take);
    bool Before(int of, std::uint32_t a, std::uint32_t b) const;
    Stop StopAt(int of, const Passing& passing);
    void MakeEnds();
    // overlaylabels.cpp: what is inside
    void LabelStretches(int of);
    void SetSectors(int other, Node& node, std::uint32_t position, bool value);
    std::uint8_t SidesBehind(int other, const Node& node, std::uint32_t direction) const;
    std::uint8_t Enter(int of, std::uint32_t stop, std::uint8_t sides);
    void CheckCrosses();
    // overlaytrace.cpp: the result
    void Choose(bool united);
    void PairEnds(const Node& node, bool united);
    End Partner(const End& arrived) const;
    void TraceFrom(std::uint32_t stretch, Rings& rings);
    void EmitNode(const End& leaving, bool straight, Rings& rings);
    void EmitVertices(const End& leaving);
    void Finish(std::size_t from, Rings& rings);

    int SourceOf(std::uint32_t stop) const { return stop < first_[1] ? 0 : 1; }
    std::uint32_t After(std::uint32_t stop) const {
        const int of = SourceOf(stop);
        return stop + 1 < first_[of + 1] ? stop + 1 : first_[of];
    }
    std::uint32_t Before(std::uint32_t stop) const {
        const int of = SourceOf(stop);
        return stop > first_[of] ? stop - 1 : first_[of + 1] - 1;
    }
    std::uint32_t StopIndex(const End& end) const { return end.last ? After(end.stretch) : end.stretch; }
    TXY PointOf(const Stop& stop, int of) const;

    const Outline* outlines_[2];
    std::vector<Crossing> crossings_;
    std::vector<Node> nodes_;
    std::vector<Passing> passing_[2];  // by edge
    std::vector<Stop> stops_;
    std::uint32_t first_[3] = {0, 0, 0};  // where each outline's stops begin
    // Of the nodes: their ends around the node, by direction from the x axis on counter-clockwise, and for each the
    // number of its direction within the node; and for each direction of each node, what is behind it.
    std::vector<End> ends_;
    std::vector<std::uint32_t> directionOf_;
    std::vector<std::uint32_t> positionOfEnd_;  // by End::Index
    std::vector<std::uint8_t> sectors_[2];      // inside the first, inside the second
    std::vector<std::uint8_t> parity_[2];       // of the number of ends of each outline in a direction
    // Of each stretch: what of the other outline is on its left (Left) and on its right (Right).
    static constexpr std::uint8_t Left = 1, Right = 2;
    std::vector<std::uint8_t> sides_;
    bool crosses_ = false;
    bool inside_[2] = {false, false};
    // Tracing.
    static constexpr std::uint8_t Kept = 1, Visited = 2;
    std::vector<std::uint8_t> state_;     // of each stretch
    std::vector<std::uint32_t> partner_;  // by position in ends_
    std::vector<TXY> ring_;
    std::vector<Mark> marks_;
    bool splitAtStart_ = false;
    std::vector<std::uint32_t> markOf_;  // by node: the last in marks_
};

}  // namespace zk::detail
