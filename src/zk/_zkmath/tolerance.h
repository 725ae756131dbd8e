#pragma once

#include <cmath>

// The tolerant comparisons. Every geometric decision of the library goes through these two.
namespace zk {

/// The one comparison tolerance, absolute.
inline constexpr double EPS = 1e-10;

/// a and b are the same within the tolerance: |a - b| < EPS, strictly. The difference is formed and compared in
/// extended precision. False when either is NaN, and for two infinities of the same sign, whose difference is NaN.
inline bool Equals(double a, double b) {
    return std::fabs(static_cast<long double>(a) - b) < EPS;
}

/// a lies below b by more than the tolerance: a - b < -EPS, so false when they are within EPS of each other. False when
/// either is NaN. There is no tolerant "greater": write Less(b, a).
inline bool Less(double a, double b) {
    return static_cast<long double>(a) - b < -EPS;
}

}  // namespace zk
