#pragma once

#include <zk/_zkxyz/records.h>

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

// Closed polygons one behind the other.
struct Rings {
    std::vector<TXY> points;
    std::vector<std::size_t> ends;
};

class Overlay {
  public:
    // The outlines stay the caller's and are as Prepare makes them, neither of them empty.
    explicit Overlay(const Outline (&outlines)[2]) : outlines_{&outlines[0], &outlines[1]} {}

    // Lays them over each other. Throws EError("stack error") where stretches do not fit together, which only outlines
    // can bring about that both cross themselves on a stretch that they share.
    void Lay();

    // Whether any stretch changes from inside to outside of the other outline, or is shared with it. Otherwise each
    // outline is wholly outside or inside of the other, and at most touches it.
    bool Crosses() const { return crosses_; }
    // Where the outlines do not cross: whether this one is inside the other.
    bool Inside(int of) const { return inside_[of]; }

    // The outlines of the union or the intersection, in a fixed order. Outlines run counter-clockwise, holes clockwise.
    Rings Trace(bool united);

  private:
    // A place on an outline where there is a node. Stops are sorted along the outline; stretch i goes from stop i to
    // the next.
    struct Stop {
        std::uint32_t edge = 0;
        std::uint32_t node = 0;
        std::uint32_t other = None;  // the edge of the other outline that crosses here, None at a node of vertices
        bool atVertex = false;       // at the edge's first vertex
        double place = 0;            // where the other edge crosses, from 0 to 1
        double error = 0;
    };
    // An end of a stretch, seen from its node.
    struct End {
        std::uint32_t stretch = 0;  // those of the second outline are counted on from the first's
        bool last = false;          // the stretch arrives here

        std::uint32_t Index() const { return 2 * stretch + (last ? 1 : 0); }
        static End Of(std::uint32_t index) { return {index / 2, index % 2 == 1}; }
    };
    struct Node {
        TXY given;
        // Where two edges cross: their stops. Otherwise the range of its ends in ends_, and of its sectors.
        std::uint32_t stops[2] = {None, None};
        std::uint32_t begin = 0, end = 0;
        std::uint32_t directions = 0, directionCount = 0;
        TXY work;
    };
    struct Sectors {
        bool known[2] = {false, false};
    };
    // An edge, or the vertex where it starts, at one of the points of contacts_.
    struct Passing {
        std::uint32_t edge;
        std::uint32_t point;
        bool atVertex;
    };
    struct Emitted {
        TXY point;
        std::uint32_t node;
        bool straight;  // passed along one edge: no corner
    };

    // overlaycontacts.cpp: nodes and stops
    void FindContacts();
    void CompleteContacts();
    void MakeStops();
    void SortStops(int of);
    void MakeNodesOfVertices();
    bool StopBefore(int of, const Stop& a, const Stop& b) const;
    void MakeEnds();
    // overlaylabels.cpp: what is inside
    void LabelStretches(int of);
    void SetSectors(int other, Node& node, std::uint32_t position, bool value);
    void Enter(int of, std::uint32_t stop);
    void CheckCrosses();
    // overlaytrace.cpp: the result
    void Choose(bool united);
    void PairEnds(const Node& node, bool united);
    End Partner(const End& arrived) const;
    void TraceFrom(std::uint32_t stretch, Rings& rings);
    void EmitNode(std::uint32_t node, bool straight, Rings& rings);
    void EmitVertices(const End& leaving);
    void Finish(std::size_t from, Rings& rings);

    int SourceOf(std::uint32_t stretch) const { return stretch < stops_[0].size() ? 0 : 1; }
    std::uint32_t StretchOf(int of, std::uint32_t stop) const {
        return of == 0 ? stop : stop + static_cast<std::uint32_t>(stops_[0].size());
    }
    const Stop& StopOf(const End& end) const { return stops_[SourceOf(end.stretch)][StopIndex(end)]; }
    std::uint32_t StopIndex(const End& end) const {
        const int of = SourceOf(end.stretch);
        const auto count = static_cast<std::uint32_t>(stops_[of].size());
        const std::uint32_t stop = of == 0 ? end.stretch : end.stretch - static_cast<std::uint32_t>(stops_[0].size());
        return !end.last ? stop : stop + 1 < count ? stop + 1 : 0;
    }
    bool OfVertices(const Node& node) const { return node.stops[0] == None; }

    const Outline* outlines_[2];
    std::vector<std::uint64_t> crossings_;  // edge of the first, edge of the second
    std::vector<TXY> contacts_;             // where a vertex is on the other outline
    std::vector<Passing> passing_[2];       // by edge
    std::vector<Stop> stops_[2];
    std::vector<Node> nodes_;
    // Of the nodes of vertices: their ends around the node, by direction from the x axis on counter-clockwise, and for
    // each the number of its direction within the node; and for each direction of each node, what is behind it.
    std::vector<End> ends_;
    std::vector<std::uint32_t> directionOf_;
    std::vector<std::uint32_t> positionOfEnd_;  // by End::Index
    std::vector<std::uint8_t> sectors_[2];      // inside the first, inside the second
    std::vector<std::uint8_t> parity_[2];       // of the number of ends of each outline in a direction
    std::vector<Sectors> known_;                // by node
    // Of each stretch: what of the other outline is on its left and on its right.
    std::vector<std::uint8_t> left_, right_;
    bool crosses_ = false;
    bool inside_[2] = {false, false};
    // Tracing.
    std::vector<std::uint8_t> kept_;
    std::vector<std::uint8_t> visited_;
    std::vector<std::uint32_t> partner_;  // by position in ends_
    std::vector<Emitted> ring_;
    bool splitAtStart_ = false;
    std::vector<std::uint32_t> seenAt_;
};

}  // namespace zk::detail
