#include <zk/_zkxyarrays/exact.h>
#include <zk/_zkxyarrays/overlay.h>
#include <zk/_zkxyz/errors.h>

namespace zk::detail {
namespace {

[[noreturn]] void DoesNotClose() {
    throw EError("stack error");
}

}  // namespace

// Behind the direction at position of the node, inside of other is value; around the node it changes wherever an odd
// number of the other outline's stretches ends.
void Overlay::SetSectors(int other, Node& node, std::uint32_t position, bool value) {
    std::uint8_t* const sectors = sectors_[other].data() + node.directions;
    const std::uint8_t* const parity = parity_[other].data() + node.directions;
    if (node.known[other]) {
        if (sectors[position] != (value ? 1 : 0))
            DoesNotClose();
        return;
    }
    node.known[other] = true;
    std::uint8_t inside = value ? 1 : 0;
    for (std::uint32_t k = 0; k < node.directionCount; ++k) {
        const std::uint32_t at = (position + k) % node.directionCount;
        if (k > 0)
            inside ^= parity[at];
        sectors[at] = inside;
    }
}

// The sides of a stretch that leaves a node in a direction: on its left is the sector behind the direction, on its
// right the one before.
std::uint8_t Overlay::SidesBehind(int other, const Node& node, std::uint32_t direction) const {
    const std::uint8_t* const sectors = sectors_[other].data() + node.directions;
    const bool left = sectors[direction] != 0;
    const bool right = sectors[direction > 0 ? direction - 1 : node.directionCount - 1] != 0;
    return static_cast<std::uint8_t>((left ? Left : 0) | (right ? Right : 0));
}

// The sides of the stretch that leaves a stop, from those of the stretch that arrives.
std::uint8_t Overlay::Enter(int of, std::uint32_t stop, std::uint8_t sides) {
    if (!stops_[stop].OfVertices()) {
        if (sides != 0 && sides != (Left | Right))
            DoesNotClose();
        return sides ^ (Left | Right);
    }
    const int other = 1 - of;
    Node& node = nodes_[stops_[stop].Node()];
    const std::uint32_t in = directionOf_[positionOfEnd_[End{Before(stop), true}.Index()]];
    // Looking out from the node, what arrives has its right side on the left.
    SetSectors(other, node, in, (sides & Right) != 0);
    const std::uint8_t seen = SidesBehind(other, node, in);
    if (((seen & Right) != 0) != ((sides & Left) != 0))
        DoesNotClose();
    return SidesBehind(other, node, directionOf_[positionOfEnd_[End{stop, false}.Index()]]);
}

// One point decides, and the rest follows along the outline.
void Overlay::LabelStretches(int of) {
    const int other = 1 - of;
    const Outline& outline = *outlines_[of];
    const bool inside = InsideExactly(outline.work[0], outlines_[other]->work);
    inside_[of] = inside;
    if (first_[of] == first_[of + 1])
        return;
    const Stop& first = stops_[first_[of]];
    std::uint8_t sides = inside ? Left | Right : 0;
    std::uint32_t next = first_[of];
    if (first.AtVertex() && first.edge == 0) {
        Node& node = nodes_[first.Node()];
        // inside is the sector just above the x axis: behind the first direction where that is the axis itself,
        // otherwise behind the last one.
        const End end = ends_[node.begin];
        const Outline& its = *outlines_[SourceOf(end.stretch)];
        const Stop& stop = stops_[StopIndex(end)];
        const TXY& towards = !end.last         ? its.work[its.After(stop.edge)]
                             : stop.AtVertex() ? its.work[its.Before(stop.edge)]
                                               : its.work[stop.edge];
        const bool onAxis = towards.y == node.work.y && towards.x > node.work.x;
        SetSectors(other, node, onAxis ? 0 : node.directionCount - 1, inside);
        sides = SidesBehind(other, node, directionOf_[positionOfEnd_[End{next, false}.Index()]]);
        sides_[next++] = sides;
    }
    const std::uint8_t start = sides;
    for (; next < first_[of + 1]; ++next)
        sides_[next] = sides = Enter(of, next, sides);
    if (first.AtVertex() && first.edge == 0)
        sides = Enter(of, first_[of], sides);
    if (sides != start)
        DoesNotClose();
}

void Overlay::CheckCrosses() {
    crosses_ = !crossings_.empty();
    for (int of = 0; of < 2; ++of) {
        if (first_[of] == first_[of + 1])
            continue;
        const std::uint8_t first = sides_[first_[of]];
        inside_[of] = (first & Left) != 0;
        for (std::uint32_t i = first_[of]; i < first_[of + 1] && !crosses_; ++i)
            crosses_ = sides_[i] != first || (sides_[i] != 0 && sides_[i] != (Left | Right));
    }
    // Directions that both outlines take are shared stretches, also where one of them goes there and back.
    for (const Node& node : nodes_)
        for (std::uint32_t i = node.begin; i + 1 < node.end; ++i)
            if (directionOf_[i] == directionOf_[i + 1] && SourceOf(ends_[i].stretch) != SourceOf(ends_[i + 1].stretch))
                crosses_ = true;
}

}  // namespace zk::detail
