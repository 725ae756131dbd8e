#pragma once

#include <zk/_zkxyz/records.h>

#include <vector>

// What the library that set operations are held against (Boost.Geometry) says of polygons, either way round.
namespace other {

using Poly = std::vector<zk::TXY>;

/// Whether it does not cross or touch itself.
bool IsValid(const Poly& poly);

/// The areas of what two have in common and of what they cover together, once they are larger by 2^\p shift, which
/// changes no digit: it does not take pairs of any size.
double CommonArea(const Poly& a, const Poly& b, int shift = 0);
double UnitedArea(const Poly& a, const Poly& b, int shift = 0);

}  // namespace other
