#pragma once

#include <zk/_zkxyz/array.h>

#include <initializer_list>
#include <vector>

// Polygons that free themselves.
inline zk::ArrayOwner<zk::TXYARRAY> Polygon(const std::vector<zk::TXY>& points) {
    zk::ArrayOwner<zk::TXYARRAY> poly;
    zk::ArrayAddData(*poly, static_cast<int>(points.size()), points.data());
    return poly;
}

inline zk::ArrayOwner<zk::TXYZARRAY> Polygon3d(const std::vector<zk::TXYZ>& points) {
    zk::ArrayOwner<zk::TXYZARRAY> poly;
    zk::ArrayAddData(*poly, static_cast<int>(points.size()), points.data());
    return poly;
}

inline std::vector<zk::TXY> Points(const zk::TXYARRAY& poly) {
    return {poly.Items().begin(), poly.Items().end()};
}

inline std::vector<zk::TXYZ> Points(const zk::TXYZARRAY& poly) {
    return {poly.Items().begin(), poly.Items().end()};
}

// The unit square, counter-clockwise with y up, in the plane and in z = 0.
inline const std::vector<zk::TXY> Square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
inline const std::vector<zk::TXYZ> Square3d{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
