#pragma once

#include <zk/_zkoglextools/navigator.h>

#include <QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

// What the navigator's cube should look like, computed apart from the library.
namespace zk::test {

inline TXYZ plus(const TXYZ& a, const TXYZ& b, double f = 1) {
    return {a.x + f * b.x, a.y + f * b.y, a.z + f * b.z};
}
inline double dot(const TXYZ& a, const TXYZ& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline TXYZ cross(const TXYZ& a, const TXYZ& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// `v` turned about the unit vector `axis`, by `angle` against the right-hand sense, as the library's matrices turn.
inline TXYZ turned(const TXYZ& v, const TXYZ& axis, double angle) {
    const double c = std::cos(-angle);
    const double s = std::sin(-angle);
    TXYZ result{v.x * c, v.y * c, v.z * c};
    result = plus(result, cross(axis, v), s);
    return plus(result, axis, dot(axis, v) * (1 - c));
}

/// The frame after a drag over (dx, dy) on a panel of a size.
inline TBAse dragged(TBAse base, int dx, int dy, const QSize& panel) {
    const auto turn = [&base](TXYZ axis, double angle) {
        axis = plus({0, 0, 0}, axis, 1 / std::sqrt(dot(axis, axis)));
        base.XAxis = turned(base.XAxis, axis, angle);
        base.YAxis = turned(base.YAxis, axis, angle);
        base.ZAxis = turned(base.ZAxis, axis, angle);
    };
    turn(base.YAxis, dx / (panel.width() / 2.0) * 3.14159265358979323846);
    turn(base.XAxis, dy / (panel.height() / 2.0) * 3.14159265358979323846);
    return base;
}

inline double difference(const TBAse& a, const TBAse& b) {
    double most = 0;
    for (const auto& [p, q] : std::array<std::array<TXYZ, 2>, 4>{
             {{a.Origin, b.Origin}, {a.XAxis, b.XAxis}, {a.YAxis, b.YAxis}, {a.ZAxis, b.ZAxis}}})
        most = std::max({most, std::fabs(p.x - q.x), std::fabs(p.y - q.y), std::fabs(p.z - q.z)});
    return most;
}

/// Where a point is seen on a panel that looks through `base`.
inline QPointF seen(const TXYZ& point, const TBAse& base, const QSize& panel) {
    const double units = std::min(panel.width(), panel.height()) / 2.0;
    const double eye = panel.width() / (2 * std::tan(30 * 3.14159265358979323846 / 180) * units);
    const TXYZ relative = plus(point, base.Origin, -1);
    const double scale = eye / (eye - dot(relative, base.ZAxis));
    const int middleX = panel.width() / 2;
    const int middleY = panel.height() / 2;
    return {middleX + dot(relative, base.XAxis) * scale * units, middleY - dot(relative, base.YAxis) * scale * units};
}

/// Holds a picture of the panel against the cube: each of the twelve edges is drawn, black or red, and nothing is drawn
/// far from all of them. The picture may be finer than the panel's pixels.
inline void expectCube(const QImage& picture, const TBAse& base, const QSize& panel) {
    const double ratio = picture.devicePixelRatio();
    ASSERT_EQ(picture.size(), (QSizeF(panel) * ratio).toSize());
    const auto pixelAt = [&](const QPointF& at) {
        return picture.pixelColor(int(std::floor((at.x() + 0.5) * ratio)), int(std::floor((at.y() + 0.5) * ratio)));
    };
    const std::array<TXYZ, 8> corners{
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
    struct Edge {
        int from;
        int to;
        bool ground;
    };
    const std::array<Edge, 12> edges{{{0, 1, true},
                                      {1, 2, true},
                                      {2, 3, true},
                                      {3, 0, true},
                                      {4, 5, false},
                                      {5, 6, false},
                                      {6, 7, false},
                                      {7, 4, false},
                                      {0, 4, false},
                                      {1, 5, false},
                                      {2, 6, false},
                                      {3, 7, false}}};
    const auto isRed = [](const QColor& c) { return c.red() > 200 && c.green() < 60 && c.blue() < 60; };
    const auto isBlack = [](const QColor& c) { return c.lightness() < 40; };
    std::vector<QPointF> points;
    const QRect inside = QRect(QPoint(0, 0), panel).adjusted(4, 4, -4, -4);
    for (const Edge& edge : edges) {
        for (int i = 0; i <= 64; ++i) {
            const TXYZ p = plus(corners[std::size_t(edge.from)],
                                plus(corners[std::size_t(edge.to)], corners[std::size_t(edge.from)], -1), i / 64.0);
            // Lines are drawn between the corners' pixels, so they differ a little from the exact ones.
            const QPointF from = seen(corners[std::size_t(edge.from)], base, panel);
            const QPointF to = seen(corners[std::size_t(edge.to)], base, panel);
            const QPointF at = seen(p, base, panel);
            points.push_back(at);
            if (i != 32 || !inside.contains(at.toPoint()))
                continue;
            bool drawn = false;
            // every pixel of the display around it, as a line is not whole pixels wide on all of them
            for (double dy = -1; dy <= 1; dy += 0.25)
                for (double dx = -1; dx <= 1; dx += 0.25) {
                    const QColor color = pixelAt(QPointF(at.toPoint()) + QPointF(dx, dy));
                    drawn = drawn || isRed(color) || (!edge.ground && isBlack(color));
                }
            EXPECT_TRUE(drawn) << "edge " << edge.from << "-" << edge.to << " from " << from.x() << ", " << from.y()
                               << " to " << to.x() << ", " << to.y();
        }
    }
    int strays = 0;
    for (double y = inside.top(); y <= inside.bottom(); y += 0.5) {
        for (double x = inside.left(); x <= inside.right(); x += 0.5) {
            const QColor color = pixelAt(QPointF(x, y));
            if (!isRed(color) && !isBlack(color))
                continue;
            double nearest = 1e9;
            for (const QPointF& point : points)
                nearest = std::min(nearest, std::hypot(point.x() - x, point.y() - y));
            strays += nearest > 5;
        }
    }
    EXPECT_EQ(strays, 0);
}

}  // namespace zk::test
