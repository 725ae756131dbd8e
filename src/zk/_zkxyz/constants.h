#pragma once

#include <zk/_zkxyz/records.h>

// Read-only constants, exact to the bit and ready before any other static object.
namespace zk {

/// The unit vectors, under two names each.
inline constexpr TXYZ Ex{1, 0, 0};
inline constexpr TXYZ Ey{0, 1, 0};
inline constexpr TXYZ Ez{0, 0, 1};
inline constexpr TXYZ UnitX{1, 0, 0};
inline constexpr TXYZ UnitY{0, 1, 0};
inline constexpr TXYZ UnitZ{0, 0, 1};

/// The zero points.
inline constexpr TXYZ Nullxyz{0, 0, 0};
inline constexpr TXY Nullxy{0, 0};
inline constexpr TXYI Nullxyi{0, 0};

/// The matrix of zeros.
inline constexpr Tmatrix NullMat{};
/// The transform that leaves everything as it is.
inline constexpr Tmatrix Identity{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
/// The same as Identity. Kept apart on purpose: it names the projection that leaves everything as it is.
inline constexpr Tmatrix Orthoprojection{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

/// The frame of the world: zero point and unit vectors.
inline constexpr TBAse Unitbase{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

/// The whole plane or space. The integer limit is 32000, not the full 16-bit range, by choice.
inline constexpr TRect BigRect{-32000, -32000, 32000, 32000};
inline constexpr TXYBox BigRect2d{{-1e10, -1e10}, {1e10, 1e10}};
inline constexpr TXYZBox BigRect3d{{-1e10, -1e10, -1e10}, {1e10, 1e10, 1e10}};

/// Inverted on purpose: the neutral start for accumulating a bounding box (Extend of _zkmath), whose first point sets
/// both corners.
inline constexpr TRect SmallRect{32000, 32000, -32000, -32000};
inline constexpr TXYBox SmallRect2d{{1e10, 1e10}, {-1e10, -1e10}};
inline constexpr TXYZBox SmallRect3d{{1e10, 1e10, 1e10}, {-1e10, -1e10, -1e10}};

}  // namespace zk
