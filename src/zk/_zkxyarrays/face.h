#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/records.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// A face in its plane, on the way to convex pieces. Not for use outside this unit.
namespace zk::detail {

// Closed rings of vertices, linked both ways. The outline runs counter-clockwise in the plane, holes clockwise, so that
// the face is on the left of every edge. The plane is one of the coordinate planes, so that no coordinate is rounded;
// its axes are taken in the order in which the outline comes out counter-clockwise.
struct Face {
    struct Vertex {
        TXYZ point;
        TXY flat;
        std::uint32_t next, previous;
    };
    struct Ring {
        std::uint32_t first;
        std::uint32_t count;
    };

    std::vector<Vertex> vertices;
    std::vector<Ring> rings;  // the outline, then the holes
    int axisX = 0, axisY = 1;

    // False when the outline has no area; the face is then of no use.
    bool SetOutline(std::span<const TXYZ> points);
    // Nothing is added for a hole without an area.
    void AddHole(std::span<const TXYZ> points);
    // Makes one ring of all: its holes are cut open and joined to the outline, and rings[0] has the whole.
    void JoinHoles();

    TXY Flat(const TXYZ& p) const;
    // Whether the way from vertex v to q starts inside the face, or along one of its edges.
    bool Opens(std::uint32_t v, const TXY& q) const;
    std::uint32_t Add(const TXYZ& point);
    std::uint32_t InsertAfter(std::uint32_t v, const TXYZ& point);

  private:
    bool AddRing(std::span<const TXYZ> points, bool hole);
};

// Pieces as vertices of the face, one piece behind the other.
struct Pieces {
    std::vector<std::uint32_t> vertices;
    std::vector<std::size_t> ends;
};

// In a fixed order.
Pieces CutConvex(const Face& face);

}  // namespace zk::detail
