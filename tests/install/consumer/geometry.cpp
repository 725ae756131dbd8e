#include <zk/_zkmath.h>
#include <zk/_zkxyarrays.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace {

zk::ArrayOwner<zk::TXYARRAY> square(double at) {
    zk::ArrayOwner<zk::TXYARRAY> points(4);
    const std::array<zk::TXY, 4> corners{{{at, at}, {at, at + 2}, {at + 2, at + 2}, {at + 2, at}}};
    zk::ArrayAddData(*points, int(corners.size()), corners.data());
    return points;
}

}  // namespace

int main() {
    zk::TlistOFXYArray common;
    zk::SetOperation(*square(0), *square(1), common, false);
    double area = 0;
    for (int i = 0; i < common.Count(); ++i)
        area += std::fabs(zk::Vekt(*common[i])) / 2;
    std::printf("area %g\n", area);
    try {
        zk::NewPlane(zk::TXYZARRAY{});
    } catch (const zk::EError& error) {
        std::printf("told: %s\n", error.what());
    }
}
