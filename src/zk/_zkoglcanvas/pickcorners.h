#pragma once

#include <array>
#include <span>
#include <vector>

namespace zk {

/// A corner in the coordinates of what is drawn.
using PickCorner = std::array<float, 3>;

/// Sends what a pick plays to OpenGL in whole primitives out of an array, for the length of a scope: some drivers keep
/// the memory of every corner that is sent alone in selection and feedback mode ("selection-corners" in
/// docs/drivers.md). Corners are all that is sent; colors, normals and texture coordinates play no part in a pick.
///
/// Corners go one by one all the same where user code has left a buffer, an array object or a program bound, under
/// which OpenGL would take an array for something else.
///
/// Needs a current context, the same at the end. OpenGL's state is as before afterwards. For the unit's own sources.
class PickCorners {
  public:
    PickCorners();
    ~PickCorners();
    PickCorners(const PickCorners&) = delete;
    PickCorners& operator=(const PickCorners&) = delete;

    /// One primitive, or several for the kinds that are counted by their corners (GL_QUADS). Nothing of no corners.
    void Draw(unsigned primitive, std::span<const PickCorner> corners);

  private:
    const bool asArrays_;
};

/// A circle about the z axis: a place of an outline that is turned about it.
struct PickRing {
    double radius;
    double height;  ///< its z coordinate
};

/// The quadrilaterals that GLU makes of an outline turned about the z axis, four corners each, counter-clockwise where
/// the outline runs upwards outside of the axis, or towards the axis from above. Angles are in degrees clockwise from
/// the y axis, looking down; `slices` is taken from 1 to the 239 that GLU can make.
std::vector<PickCorner> TurnedAroundZ(std::span<const PickRing> outline, int slices, double startAngle = 0,
                                      double sweepAngle = 360);

}  // namespace zk
