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
    auto& known = known_[static_cast<std::size_t>(&node - nodes_.data())].known[other];
    std::uint8_t* const sectors = sectors_[other].data() + node.directions;
    const std::uint8_t* const parity = parity_[other].data() + node.directions;
    if (known) {
        if (sectors[position] != (value ? 1 : 0))
            DoesNotClose();
        return;
    }
    known = true;
    std::uint8_t inside = value ? 1 : 0;
    for (std::uint32_t k = 0; k < node.directionCount; ++k) {
        const std::uint32_t at = (position + k) % node.directionCount;
        if (k > 0)
            inside ^= parity[at];
        sectors[at] = inside;
    }
}

// Takes what is known of the stretch that arrives at a stop over to the one that leaves.
void Overlay::Enter(int of, std::uint32_t stop) {
    const auto count = static_cast<std::uint32_t>(stops_[of].size());
    const std::uint32_t arriving = StretchOf(of, stop > 0 ? stop - 1 : count - 1);
    const std::uint32_t leaving = StretchOf(of, stop);
    Node& node = nodes_[stops_[of][stop].node];
    if (!OfVertices(node)) {
        if (left_[arriving] != right_[arriving])
            DoesNotClose();
        left_[leaving] = right_[leaving] = left_[arriving] ^ 1;
        return;
    }
    const int other = 1 - of;
    const std::uint32_t in = directionOf_[positionOfEnd_[End{arriving, true}.Index()]];
    // Looking out from the node, the right side of what arrives is the sector behind its direction.
    SetSectors(other, node, in, right_[arriving] != 0);
    const auto sector = [&](std::uint32_t direction) { return sectors_[other][node.directions + direction]; };
    const auto before = [&](std::uint32_t d) { return d > 0 ? d - 1 : node.directionCount - 1; };
    if (sector(before(in)) != left_[arriving])
        DoesNotClose();
    const std::uint32_t out = directionOf_[positionOfEnd_[End{leaving, false}.Index()]];
    left_[leaving] = sector(out);
    right_[leaving] = sector(before(out));
}

// One point decides, and the rest follows along the outline.
void Overlay::LabelStretches(int of) {
    const int other = 1 - of;
    const Outline& outline = *outlines_[of];
    const bool inside = InsideExactly(outline.work[0], outlines_[other]->work);
    inside_[of] = inside;
    const auto count = static_cast<std::uint32_t>(stops_[of].size());
    if (count == 0)
        return;
    const Stop& first = stops_[of][0];
    std::uint32_t next = 0;
    const std::uint32_t wrapping = StretchOf(of, count - 1);
    if (first.atVertex && first.edge == 0) {
        Node& node = nodes_[first.node];
        // inside is the sector just above the x axis: behind the first direction where that is the axis itself,
        // otherwise behind the last one.
        const std::uint32_t position = node.begin;
        const End end = ends_[position];
        const Outline& its = *outlines_[SourceOf(end.stretch)];
        const Stop& stop = StopOf(end);
        const TXY& towards = !end.last       ? its.work[its.After(stop.edge)]
                             : stop.atVertex ? its.work[its.Before(stop.edge)]
                                             : its.work[stop.edge];
        const bool onAxis = towards.y == node.work.y && towards.x > node.work.x;
        SetSectors(other, node, onAxis ? 0 : node.directionCount - 1, inside);
        const std::uint32_t leaving = StretchOf(of, 0);
        const std::uint32_t out = directionOf_[positionOfEnd_[End{leaving, false}.Index()]];
        left_[leaving] = sectors_[other][node.directions + out];
        right_[leaving] = sectors_[other][node.directions + (out > 0 ? out - 1 : node.directionCount - 1)];
        next = 1;
    } else {
        left_[wrapping] = right_[wrapping] = inside ? 1 : 0;
    }
    const std::uint8_t left = left_[next == 1 ? StretchOf(of, 0) : wrapping];
    const std::uint8_t right = right_[next == 1 ? StretchOf(of, 0) : wrapping];
    for (std::uint32_t stop = next; stop < count; ++stop)
        Enter(of, stop);
    if (next == 1)
        Enter(of, 0);
    const std::uint32_t check = next == 1 ? StretchOf(of, 0) : wrapping;
    if (left_[check] != left || right_[check] != right)
        DoesNotClose();
}

void Overlay::CheckCrosses() {
    for (int of = 0; of < 2; ++of) {
        const std::uint32_t first = StretchOf(of, 0);
        for (std::uint32_t i = 0; i < stops_[of].size(); ++i) {
            const std::uint32_t stretch = StretchOf(of, i);
            if (left_[stretch] != left_[first] || right_[stretch] != left_[first])
                crosses_ = true;
        }
        if (!stops_[of].empty())
            inside_[of] = left_[first] != 0;
    }
    // Directions that both outlines take are shared stretches, also where one of them goes there and back.
    for (const Node& node : nodes_)
        if (OfVertices(node))
            for (std::uint32_t i = node.begin; i + 1 < node.end; ++i)
                if (directionOf_[i] == directionOf_[i + 1] &&
                    SourceOf(ends_[i].stretch) != SourceOf(ends_[i + 1].stretch))
                    crosses_ = true;
}

}  // namespace zk::detail
