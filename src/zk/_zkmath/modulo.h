#pragma once

#include <zk/export.h>

#include <concepts>
#include <type_traits>

namespace zk {

namespace detail {
/// Numbers of which at least one is not a whole number: such calls take the overload for doubles.
template <class... T>
concept MixedNumbers = (std::is_arithmetic_v<T> && ...) && (std::is_floating_point_v<T> || ...) &&
                       !(std::same_as<T, double> && ...);
}  // namespace detail

/// a mod m, made non-negative: the truncating remainder, plus m when that is negative. m is meant to be positive. With
/// m = 0 the answer is 0; with a negative m a negative remainder gets m added like any other.
ZKMATH_API int _modulo(int a, int m);

/// a brought into [-EPS, m - EPS] by taking away or adding whole periods m: a value within EPS of m becomes about 0.
/// Angles and positions come in a few periods away at most, and for them the result is the one of plain repeated
/// subtraction, to the bit. Ends on every input:
/// - more than 100000 periods away: the remainder is taken in one step;
/// - m not above 0, or NaN: there is no period, a is returned as it is;
/// - m infinite: a from -EPS up is returned as it is, one below that gives infinity;
/// - a infinite or NaN: NaN.
ZKMATH_API double _modulo(double a, double m);

/// Numbers of two kinds: taken as doubles.
template <class A, class M>
requires detail::MixedNumbers<A, M>
double _modulo(A a, M m) {
    return _modulo(static_cast<double>(a), static_cast<double>(m));
}

}  // namespace zk
