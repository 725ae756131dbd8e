#pragma once

#include <zk/_zkmath.h>
#include <zk/host/color.h>

#include <random>

namespace zk::test {

/// What tests draw by lot. The same seed gives the same things on the same standard library.
class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine_); }
    int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(engine_); }
    bool OneIn(int chances) { return Below(chances) == 0; }
    TColor Color() { return TColor(Below(0x1000000)); }
    TXYZ Point(double size) { return {Between(-size, size), Between(-size, size), Between(-size, size)}; }
    TXYZ Direction() {
        for (;;) {
            const TXYZ point = Point(1);
            if (Len(point) > 0.1 && Len(point) <= 1)
                return Normalize(point);
        }
    }
    /// A right-handed orthonormal frame.
    TBAse Frame(double reach) {
        const TXYZ x = Direction();
        const TXYZ z = Normalize(Vekt(x, Direction()));
        return {Point(reach), x, Vekt(z, x), z};
    }

  private:
    std::mt19937 engine_;
};

}  // namespace zk::test
