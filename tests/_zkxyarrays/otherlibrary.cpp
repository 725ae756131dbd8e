#include "otherlibrary.h"

#include <boost/geometry/algorithms/append.hpp>
#include <boost/geometry/algorithms/area.hpp>
#include <boost/geometry/algorithms/correct.hpp>
#include <boost/geometry/algorithms/intersection.hpp>
#include <boost/geometry/algorithms/is_valid.hpp>
#include <boost/geometry/algorithms/union.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <cmath>

namespace other {

namespace {

namespace bg = boost::geometry;
using Point = bg::model::d2::point_xy<double>;
using Polygon = bg::model::polygon<Point>;
using Polygons = bg::model::multi_polygon<Polygon>;

Polygon toBoost(const Poly& poly, int shift) {
    Polygon polygon;
    for (const zk::TXY& v : poly)
        bg::append(polygon.outer(), Point(std::ldexp(v.x, shift), std::ldexp(v.y, shift)));
    bg::correct(polygon);
    return polygon;
}

}  // namespace

bool IsValid(const Poly& poly) {
    return bg::is_valid(toBoost(poly, 0));
}

double CommonArea(const Poly& a, const Poly& b, int shift) {
    Polygons common;
    bg::intersection(toBoost(a, shift), toBoost(b, shift), common);
    return bg::area(common);
}

double UnitedArea(const Poly& a, const Poly& b, int shift) {
    Polygons united;
    bg::union_(toBoost(a, shift), toBoost(b, shift), united);
    return bg::area(united);
}

}  // namespace other
