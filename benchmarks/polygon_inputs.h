#pragma once

#include <zk/_zkxyz/records.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

// What the polygon benchmark runs on. The same in every run.
namespace inputs {

using Poly = std::vector<zk::TXY>;
using Pair = std::pair<Poly, Poly>;

constexpr double Pi = 3.14159265358979323846;

inline Poly Around(const std::vector<double>& radius, zk::TXY centre, double phase) {
    Poly p;
    const auto n = static_cast<double>(radius.size());
    for (std::size_t i = 0; i < radius.size(); ++i) {
        const double angle = 2 * Pi * (static_cast<double>(i) + phase) / n;
        p.push_back({centre.x + radius[i] * std::cos(angle), centre.y + radius[i] * std::sin(angle)});
    }
    return p;
}

// A circle with a rough edge, as rough as its edges are long, so that its edges stay short however many there are.
inline Poly Star(int n, double phase, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> noise(-20 * Pi / n, 20 * Pi / n);
    std::vector<double> rough(static_cast<std::size_t>(n));
    for (double& r : rough)
        r = noise(random);
    std::vector<double> radius(rough.size());
    for (std::size_t i = 0; i < radius.size(); ++i)
        radius[i] = 1 + (rough[i] + rough[(i + 1) % rough.size()] + rough[(i + 2) % rough.size()]) / 3;
    return Around(radius, {0, 0}, phase);
}

inline Pair Stars(int n) {
    return {Star(n, 0, 1), Star(n, 0.5, 2)};
}

// Spokes of any length: every edge is long, and all of them are close to each other in the middle.
inline Pair NeedleStars(int n) {
    Pair pair;
    unsigned seed = 1;
    for (Poly* p : {&pair.first, &pair.second}) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> length(0.05, 1);
        std::vector<double> radius(static_cast<std::size_t>(n));
        for (double& r : radius)
            r = length(random);
        *p = Around(radius, {0, 0}, seed == 1 ? 0 : 0.5);
        ++seed;
    }
    return pair;
}

// Two combs across each other, each with about half of its teeth among those of the other.
inline Pair Combs(int teeth) {
    Poly comb{{0, 0}};
    for (int i = 0; i < teeth / 2; ++i) {
        comb.push_back({i + 0.0, teeth * 0.5});
        comb.push_back({i + 0.5, teeth * 0.5});
        comb.push_back({i + 0.5, 0.75});
        comb.push_back({i + 1.0, 0.75});
    }
    comb.push_back({teeth * 0.5, 0});
    Poly across;
    for (const zk::TXY& p : comb)
        across.push_back({teeth * 0.765 - p.y, p.x * 0.49 + teeth * 0.387});
    return {comb, across};
}

// Islands with a coast that is rough at every scale.
inline Poly Island(int doublings, zk::TXY centre, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> noise(-0.2, 0.2);
    Poly p;
    for (int i = 0; i < 81; ++i)
        p.push_back({centre.x + std::cos(2 * Pi * i / 81), centre.y + std::sin(2 * Pi * i / 81)});
    for (int k = 0; k < doublings; ++k) {
        Poly finer;
        for (std::size_t i = 0; i < p.size(); ++i) {
            const zk::TXY a = p[i];
            const zk::TXY b = p[(i + 1) % p.size()];
            const double f = noise(random);
            finer.push_back(a);
            finer.push_back({(a.x + b.x) / 2 + f * (b.y - a.y), (a.y + b.y) / 2 - f * (b.x - a.x)});
        }
        p = std::move(finer);
    }
    return p;
}

// Running beside each other for most of the way; 10,368 vertices in both together with six doublings.
inline Pair Coastlines(int doublings = 6) {
    return {Island(doublings, {0, 0}, 5), Island(doublings, {0.002, 0.003}, 6)};
}

struct FaceInput {
    Poly outline;
    std::vector<Poly> holes;
};

// A rough outline with holes of 20 vertices, well apart.
inline FaceInput Face(int n, int holes) {
    FaceInput face;
    std::mt19937 random(3);
    std::uniform_real_distribution<double> rough(0.9, 1);
    std::vector<double> radius(static_cast<std::size_t>(n));
    for (double& r : radius)
        r = rough(random);
    face.outline = Around(radius, {0, 0}, 0);
    const int side = static_cast<int>(std::ceil(std::sqrt(holes)));
    for (int i = 0; i < holes; ++i) {
        std::vector<double> r(20);
        for (double& x : r)
            x = 0.4 / side * rough(random);
        const zk::TXY centre{1.2 * ((i % side + 0.5) / side - 0.5), 1.2 * ((i / side + 0.5) / side - 0.5)};
        face.holes.push_back(Around(r, centre, 0));
    }
    return face;
}

}  // namespace inputs
