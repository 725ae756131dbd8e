#pragma once

#include <zk/_zkoglcanvas/keptshape.h>
#include <zk/_zkoglcanvas/scene.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace zk {

// For the scene's own sources.

/// What a compilation has found out about one entry of the scene's list of shapes.
struct TZKOglScene::Planned {
    enum class Reach {
        unknown,  ///< user code draws, or what is drawn cannot be told: played in every pick
        box,      ///< nothing is drawn outside of a box
        nothing   ///< nothing is drawn
    };

    const TZkShape* shape = nullptr;  ///< to compare only: it may be gone
    KeptShape* kept = nullptr;        ///< the shape, if its drawing is kept
    std::int32_t group = -1;          ///< where
    bool userCode = true;             ///< it may change the matrix
    Reach reach = Reach::unknown;
    TXYZ center{0, 0, 0};       ///< of the box, in the coordinates of the scene
    TXYZ half{0, 0, 0};         ///< half its extent
    TXYZ movedBefore{0, 0, 0};  ///< by how much the shapes in front have moved this one: see `TCustomShape`
    TXYZ movedAfter{0, 0, 0};
};

/// Kept shapes that follow each other, in one OpenGL list. A list for each would take more time to compile and more
/// memory than what is in it; one list for all would have to be compiled again when any of them changes.
struct ZK_INTERNAL TZKOglScene::Group {
    struct Member {
        const TZkShape* shape;  ///< to compare only
        std::uint64_t version;
    };

    /// A group is full with so many vertices: about twenty boxes, or one sphere. One with too few joins the next.
    static constexpr std::int64_t fullVertices = 512;
    static constexpr std::int64_t fewVertices = fullVertices / 4;

    unsigned list = 0;
    bool ownAttributes = false;  ///< sets its attributes and leaves them behind; false: draws with those in force
    bool drawsNothing = true;    ///< all its members are hidden
    std::size_t first = 0;       ///< its first entry in the list of shapes
    std::int64_t vertices = 0;
    std::vector<Member> members;

    /// True when the group, whose last member was in group `oldOfLast` before, ends in front of a shape that was in
    /// `oldOfNext` (-1: in none). Old groups keep their ends where they can, so that those behind a change stay as they
    /// are; small ones join their neighbours.
    bool EndsBefore(std::int32_t oldOfLast, std::int32_t oldOfNext) const;
};

/// The clip planes of a pick in the coordinates of the scene.
struct ZK_INTERNAL TZKOglScene::PickVolume {
    struct Plane {
        TXYZ normal;
        double distance = 0;
    };

    std::array<Plane, 6> planes;
    std::size_t count = 0;
    bool culling = false;  ///< the plan says where the shapes are
    TXYZ moved{0, 0, 0};   ///< the remainders that OpenGL's matrix holds

    /// Takes the planes that are enabled, seen through the present model-view matrix.
    void Take(const Tmatrix& modelView);
    /// False only for a box that lies outside of a plane. Boxes with infinite or undefined numbers are always met.
    bool Meets(const TXYZ& center, const TXYZ& half) const;
};

}  // namespace zk
