#include <zk/_zkxyz/constants.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace {

using namespace zk;

// The record as its numbers; compared as bits, so that -0 is not 0.
template <std::size_t N, class Number, class Record>
void ExpectBits(const Record& record, const std::array<Number, N>& numbers) {
    static_assert(sizeof(Record) == sizeof(numbers));
    EXPECT_EQ(std::memcmp(&record, numbers.data(), sizeof numbers), 0);
}

template <class... N>
std::array<double, sizeof...(N)> Doubles(N... n) {
    return {static_cast<double>(n)...};
}

template <class... N>
std::array<std::int32_t, sizeof...(N)> Ints(N... n) {
    return {n...};
}

TEST(Constants, Points) {
    ExpectBits(Ex, Doubles(1, 0, 0));
    ExpectBits(Ey, Doubles(0, 1, 0));
    ExpectBits(Ez, Doubles(0, 0, 1));
    ExpectBits(UnitX, Doubles(1, 0, 0));
    ExpectBits(UnitY, Doubles(0, 1, 0));
    ExpectBits(UnitZ, Doubles(0, 0, 1));
    ExpectBits(Nullxyz, Doubles(0, 0, 0));
    ExpectBits(Nullxy, Doubles(0, 0));
    ExpectBits(Nullxyi, Ints(0, 0));
}

TEST(Constants, Matrices) {
    ExpectBits(NullMat, Doubles(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
    ExpectBits(Identity, Doubles(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    ExpectBits(Orthoprojection, Doubles(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_EQ(Orthoprojection, Identity);
    EXPECT_NE(&Orthoprojection, &Identity);
}

TEST(Constants, Frame) {
    ExpectBits(Unitbase, Doubles(0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1));
}

TEST(Constants, Boxes) {
    ExpectBits(BigRect, Ints(-32000, -32000, 32000, 32000));
    ExpectBits(BigRect2d, Doubles(-1e10, -1e10, 1e10, 1e10));
    ExpectBits(BigRect3d, Doubles(-1e10, -1e10, -1e10, 1e10, 1e10, 1e10));
    ExpectBits(SmallRect, Ints(32000, 32000, -32000, -32000));
    ExpectBits(SmallRect2d, Doubles(1e10, 1e10, -1e10, -1e10));
    ExpectBits(SmallRect3d, Doubles(1e10, 1e10, 1e10, -1e10, -1e10, -1e10));
}

}  // namespace
