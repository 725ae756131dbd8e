#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

// The value records that every unit speaks in. All are aggregates: copied by assignment, moved as raw memory, without
// ownership. Declared without a value they are zero. The comparison operators compare exactly, number by number; the
// tolerant comparison of coordinates is Equals of _zkmath.
namespace zk {

/// 2D point or vector.
struct TXY {
    double x = 0;  ///< to the right
    double y = 0;  ///< up, unless a routine says otherwise
    friend bool operator==(const TXY&, const TXY&) = default;
};

/// 2D point in device pixels.
struct TXYI {
    std::int32_t x = 0;  ///< to the right
    std::int32_t y = 0;  ///< down
    friend bool operator==(const TXYI&, const TXYI&) = default;
};

/// 3D point or vector.
struct TXYZ {
    double x = 0;  ///< along the first axis
    double y = 0;  ///< along the second
    double z = 0;  ///< along the third
    friend bool operator==(const TXYZ&, const TXYZ&) = default;
};

/// Homogeneous 4x4 transform, row-major. Points are row vectors multiplied from the left, p' = (x, y, z, 1) * M, so the
/// translation is in row 3 and Mulmat(A, B) means first A, then B. data() is the order in which OpenGL's matrix calls
/// take sixteen doubles, so that a matrix goes to OpenGL as it stands.
struct Tmatrix {
    double e[4][4] = {};  ///< row, then column

    /// Row i; i in 0..3, unchecked.
    double* operator[](int i) { return e[i]; }
    const double* operator[](int i) const { return e[i]; }

    /// The sixteen numbers, row by row.
    double* data() { return e[0]; }
    const double* data() const { return e[0]; }

    friend bool operator==(const Tmatrix&, const Tmatrix&) = default;
};

/// Coordinate frame. The axes are expected to be orthonormal: the routines that convert into a frame project onto them
/// with dot products and are exact inverses of those that convert out of it only then. Either handedness occurs
/// (PlaneToBase makes left-handed frames).
struct TBAse {
    TXYZ Origin;  ///< where the frame stands
    TXYZ XAxis;   ///< its first axis
    TXYZ YAxis;   ///< its second axis
    TXYZ ZAxis;   ///< its third axis
    friend bool operator==(const TBAse&, const TBAse&) = default;
};

/// Plane through a point, with a unit normal.
struct TPlane {
    TXYZ Origin;  ///< any point of it
    TXYZ Normal;  ///< across it, of unit length
    friend bool operator==(const TPlane&, const TPlane&) = default;
};

/// Line through a point with a direction, which need not be of unit length.
struct TGerade {
    TXYZ Origin;     ///< any point of it
    TXYZ Direction;  ///< along it
    friend bool operator==(const TGerade&, const TGerade&) = default;
};

/// Integer box in device pixels.
struct TRect {
    std::int32_t left = 0;    ///< the first column
    std::int32_t top = 0;     ///< the first row
    std::int32_t right = 0;   ///< the column after the last
    std::int32_t bottom = 0;  ///< the row after the last
    friend bool operator==(const TRect&, const TRect&) = default;
};

/// 2D box, minimum corner then maximum corner. Both boxes of doubles may be inverted (minimum above maximum): that is
/// the neutral start for accumulating a bounding box.
struct TXYBox {
    TXY Min;  ///< the smallest coordinates
    TXY Max;  ///< the greatest coordinates
    friend bool operator==(const TXYBox&, const TXYBox&) = default;
};

/// 3D box, minimum corner then maximum corner.
struct TXYZBox {
    TXYZ Min;  ///< the smallest coordinates
    TXYZ Max;  ///< the greatest coordinates
    friend bool operator==(const TXYZBox&, const TXYZBox&) = default;
};

// Arrays of records are moved as raw memory and handed to OpenGL, so sizes and offsets are part of the contract.
static_assert(sizeof(TXY) == 16 && offsetof(TXY, x) == 0 && offsetof(TXY, y) == 8);
static_assert(sizeof(TXYI) == 8 && offsetof(TXYI, x) == 0 && offsetof(TXYI, y) == 4);
static_assert(sizeof(TXYZ) == 24 && offsetof(TXYZ, x) == 0 && offsetof(TXYZ, y) == 8 && offsetof(TXYZ, z) == 16);
static_assert(sizeof(Tmatrix) == 128 && offsetof(Tmatrix, e) == 0);
static_assert(sizeof(TBAse) == 96 && offsetof(TBAse, Origin) == 0 && offsetof(TBAse, XAxis) == 24 &&
              offsetof(TBAse, YAxis) == 48 && offsetof(TBAse, ZAxis) == 72);
static_assert(sizeof(TPlane) == 48 && offsetof(TPlane, Origin) == 0 && offsetof(TPlane, Normal) == 24);
static_assert(sizeof(TGerade) == 48 && offsetof(TGerade, Origin) == 0 && offsetof(TGerade, Direction) == 24);
static_assert(sizeof(TRect) == 16 && offsetof(TRect, left) == 0 && offsetof(TRect, top) == 4 &&
              offsetof(TRect, right) == 8 && offsetof(TRect, bottom) == 12);
static_assert(sizeof(TXYBox) == 32 && offsetof(TXYBox, Min) == 0 && offsetof(TXYBox, Max) == 16);
static_assert(sizeof(TXYZBox) == 48 && offsetof(TXYZBox, Min) == 0 && offsetof(TXYZBox, Max) == 24);

namespace detail {
template <class T>
inline constexpr bool IsRecord =
    std::is_aggregate_v<T>&& std::is_trivially_copyable_v<T>&& std::is_standard_layout_v<T>;
}
static_assert(detail::IsRecord<TXY> && detail::IsRecord<TXYI> && detail::IsRecord<TXYZ> && detail::IsRecord<Tmatrix> &&
              detail::IsRecord<TBAse> && detail::IsRecord<TPlane> && detail::IsRecord<TGerade> &&
              detail::IsRecord<TRect> && detail::IsRecord<TXYBox> && detail::IsRecord<TXYZBox>);

}  // namespace zk
