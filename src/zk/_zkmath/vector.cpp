#include "vector.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace zk {
namespace {

// 32-bit arithmetic that wraps around, which signed numbers may not do by themselves.
std::int32_t WrapAdd(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int32_t WrapSub(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

// To the nearest, ties to even: the floating-point unit's default mode.
std::int32_t Round(double d) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(d))
        return 0;
    if (d <= Limits::min())
        return Limits::min();
    if (d >= Limits::max())
        return Limits::max();
    return static_cast<std::int32_t>(std::nearbyint(d));
}

TXY ToXY(const TXYI& a) {
    return {static_cast<double>(a.x), static_cast<double>(a.y)};
}

TXYI ToXYI(const TXY& a) {
    return {Round(a.x), Round(a.y)};
}

long double SquareSum(const TXYZ& a) {
    const long double x = a.x;
    const long double y = a.y;
    const long double z = a.z;
    return x * x + y * y + z * z;
}

}  // namespace

TXY Add(const TXY& a, const TXY& b) {
    return {a.x + b.x, a.y + b.y};
}

TXYI Add(const TXYI& a, const TXYI& b) {
    return {WrapAdd(a.x, b.x), WrapAdd(a.y, b.y)};
}

TXYZ Add(const TXYZ& a, const TXYZ& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

TXY Sub(const TXY& a, const TXY& b) {
    return {a.x - b.x, a.y - b.y};
}

TXYI Sub(const TXYI& a, const TXYI& b) {
    return {WrapSub(a.x, b.x), WrapSub(a.y, b.y)};
}

TXYZ Sub(const TXYZ& a, const TXYZ& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

TXY Normal(const TXY& a) {
    return {a.y, -a.x};
}

TXYI Normal(const TXYI& a) {
    return {a.y, WrapSub(0, a.x)};
}

TXYZ Vekt(const TXYZ& a, const TXYZ& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double Vekt(const TXY& a, const TXY& b) {
    return a.y * b.x - a.x * b.y;
}

double Skal(const TXYZ& a, const TXYZ& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double Skal(const TXY& a, const TXY& b) {
    return a.x * b.x + a.y * b.y;
}

TXY Mul(const TXY& a, double d) {
    return {a.x * d, a.y * d};
}

TXYI Mul(const TXYI& a, double d) {
    return ToXYI(Mul(ToXY(a), d));
}

TXYZ Mul(const TXYZ& a, double d) {
    return {a.x * d, a.y * d, a.z * d};
}

Tmatrix Mul(const Tmatrix& m, double d) {
    Tmatrix product;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            product[i][j] = m[i][j] * d;
    product[3][3] = m[3][3];
    return product;
}

double Len(const TXYZ& a) {
    return static_cast<double>(std::sqrt(SquareSum(a)));
}

double Len(const TXY& a) {
    return std::sqrt(a.x * a.x + a.y * a.y);
}

double Len(const TXYI& a) {
    return Len(ToXY(a));
}

double Dist(const TXY& a, const TXY& b) {
    return Len(Sub(a, b));
}

double Dist(const TXYI& a, const TXYI& b) {
    return Len(Sub(a, b));
}

double Dist(const TXYZ& a, const TXYZ& b) {
    return Len(Sub(a, b));
}

TXYZ Normalize(const TXYZ& a) {
    if (Len(a) == 0)
        return a;
    // The length stays in extended precision and is divided by, so that (3, 4, 0) gives (0.6, 0.8, 0), and the inverse
    // of the shortest lengths cannot overflow.
    const long double length = std::sqrt(SquareSum(a));
    return {static_cast<double>(a.x / length), static_cast<double>(a.y / length), static_cast<double>(a.z / length)};
}

TXY Normalize(const TXY& a) {
    const double length = Len(a);
    return length == 0 ? a : Mul(a, length);
}

void _Normalize(TXY& a) {
    a = Normalize(a);
}

void _Normalize(TXYZ& a) {
    a = Normalize(a);
}

TXY Skip(const TXY& a, double d) {
    return Mul(Normalize(a), d);
}

TXYI Skip(const TXYI& a, double d) {
    return ToXYI(Skip(ToXY(a), d));
}

TXYZ Skip(const TXYZ& a, double d) {
    return Mul(Normalize(a), d);
}

bool Equals(const TXY& a, const TXY& b) {
    return Equals(a.x, b.x) && Equals(a.y, b.y);
}

bool Equals(const TXYZ& a, const TXYZ& b) {
    return Equals(a.x, b.x) && Equals(a.y, b.y) && Equals(a.z, b.z);
}

bool Equals(const TXYI& a, const TXYI& b) {
    return a == b;
}

bool Equals(const Tmatrix& a, const Tmatrix& b) {
    for (int i = 0; i < 16; ++i)
        if (!Equals(a.data()[i], b.data()[i]))
            return false;
    return true;
}

}  // namespace zk
