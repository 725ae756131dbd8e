// Polygons beside the known libraries in one run, on the same inputs: what counts are the ratios. A peer that is not
// installed when this is built is left out. Each time is the median of several runs; with --quick there are fewer of
// them and the largest inputs are left out. Times include everything from the caller's points to the result in the
// library's own form; converting the input into that form is not counted for a peer, though it is for this library,
// whose input is plain points. Boost's areas are off on the combs (marked !): it computes crossings on a grid of ten
// million steps, and there are thousands of small pieces.
#include "earclipping.h"
#include "polygon_inputs.h"
#include "ratios.h"

#include <zk/_zkmath/inside.h>
#include <zk/_zkxyarrays.h>
#include <zk/_zkxyz.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#ifdef WITH_POLYCLIPPING
#include <polyclipping/clipper.hpp>
#endif
#ifdef WITH_BOOST
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#endif
#ifdef WITH_GEOS
#include <geos_c.h>
#endif
#ifdef WITH_CGAL
#include <CGAL/Boolean_set_operations_2.h>
#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Polygon_2_algorithms.h>
#endif
#ifdef __linux__
#include <sys/resource.h>
#endif

namespace {

using namespace zk;
using inputs::Pair;
using inputs::Poly;

bool quick = false;

// Microseconds, the median.
double Time(const std::function<void()>& run) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    const auto start = Clock::now();
    const double limit = quick ? 0.3 : 2;
    do {
        const auto before = Clock::now();
        run();
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - before).count());
    } while (times.size() < 101 && std::chrono::duration<double>(Clock::now() - start).count() < limit);
    std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2));
    return times[times.size() / 2];
}

ArrayOwner<TXYARRAY> Array(const Poly& p) {
    ArrayOwner<TXYARRAY> array;
    ArrayAddData(*array, static_cast<int>(p.size()), p.data());
    return array;
}

struct Result {
    double time = 0;
    double area = 0;
};

// --- this library ---

double Area(const TlistOFXYArray& list) {
    double sum = 0;
    for (int i = 0; i < list.Count(); ++i)
        sum -= Vekt(*list[i]) / 2;
    return sum;
}

Result Ours(const Pair& pair) {
    const auto a = Array(pair.first);
    const auto b = Array(pair.second);
    Result result;
    result.time = Time([&] {
        TlistOFXYArray list;
        SetOperation(*a, *b, list, false);
    });
    TlistOFXYArray list;
    SetOperation(*a, *b, list, false);
    result.area = Area(list);
    return result;
}

// --- the peers ---

std::optional<Result> Polyclipping([[maybe_unused]] const Pair& pair) {
#ifdef WITH_POLYCLIPPING
    using namespace ClipperLib;
    // Whole numbers only: to nine digits.
    constexpr double Scale = 1e9;
    const auto convert = [](const Poly& p) {
        Path path;
        for (const TXY& v : p)
            path.emplace_back(std::llround(v.x * Scale), std::llround(v.y * Scale));
        return path;
    };
    const Path a = convert(pair.first);
    const Path b = convert(pair.second);
    Paths paths;
    Result result;
    result.time = Time([&] {
        Clipper clipper;
        clipper.AddPath(a, ptSubject, true);
        clipper.AddPath(b, ptClip, true);
        clipper.Execute(ctIntersection, paths, pftEvenOdd, pftEvenOdd);
    });
    for (const Path& path : paths)
        result.area += ClipperLib::Area(path) / Scale / Scale;
    return result;
#else
    return {};
#endif
}

std::optional<Result> Boost([[maybe_unused]] const Pair& pair) {
#ifdef WITH_BOOST
    namespace bg = boost::geometry;
    using Polygon = bg::model::polygon<bg::model::d2::point_xy<double>>;
    const auto convert = [](const Poly& p) {
        Polygon polygon;
        for (const TXY& v : p)
            bg::append(polygon.outer(), bg::model::d2::point_xy<double>(v.x, v.y));
        bg::correct(polygon);
        return polygon;
    };
    const Polygon a = convert(pair.first);
    const Polygon b = convert(pair.second);
    bg::model::multi_polygon<Polygon> out;
    Result result;
    try {
        result.time = Time([&] {
            out.clear();
            bg::intersection(a, b, out);
        });
    } catch (const bg::exception&) {
        return {};
    }
    result.area = bg::area(out);
    return result;
#else
    return {};
#endif
}

#ifdef WITH_GEOS
void Silent(const char*, ...) {}

GEOSGeometry* GeosRing(const Poly& p) {
    const auto n = static_cast<unsigned>(p.size());
    GEOSCoordSequence* sequence = GEOSCoordSeq_create(n + 1, 2);
    for (unsigned i = 0; i <= n; ++i) {
        GEOSCoordSeq_setX(sequence, i, p[i % n].x);
        GEOSCoordSeq_setY(sequence, i, p[i % n].y);
    }
    return GEOSGeom_createLinearRing(sequence);
}

GEOSGeometry* GeosPolygon(const Poly& outline, const std::vector<Poly>& holes = {}) {
    std::vector<GEOSGeometry*> rings;
    for (const Poly& hole : holes)
        rings.push_back(GeosRing(hole));
    return GEOSGeom_createPolygon(GeosRing(outline), rings.data(), static_cast<unsigned>(rings.size()));
}
#endif

std::optional<Result> Geos([[maybe_unused]] const Pair& pair) {
#ifdef WITH_GEOS
    initGEOS(Silent, Silent);
    GEOSGeometry* a = GeosPolygon(pair.first);
    GEOSGeometry* b = GeosPolygon(pair.second);
    GEOSGeometry* out = nullptr;
    std::optional<Result> result = Result{};
    result->time = Time([&] {
        GEOSGeom_destroy(out);
        out = GEOSIntersection(a, b);
    });
    if (out)
        GEOSArea(out, &result->area);
    else
        result.reset();
    for (GEOSGeometry* g : {a, b, out})
        GEOSGeom_destroy(g);
    finishGEOS();
    return result;
#else
    return {};
#endif
}

std::optional<Result> Cgal([[maybe_unused]] const Pair& pair) {
#ifdef WITH_CGAL
    using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
    using Polygon = CGAL::Polygon_2<Kernel>;
    const auto convert = [](const Poly& p) {
        Polygon polygon;
        for (const TXY& v : p)
            polygon.push_back({v.x, v.y});
        if (polygon.is_clockwise_oriented())
            polygon.reverse_orientation();
        return polygon;
    };
    const Polygon a = convert(pair.first);
    const Polygon b = convert(pair.second);
    std::vector<CGAL::Polygon_with_holes_2<Kernel>> out;
    Result result;
    result.time = Time([&] {
        out.clear();
        CGAL::intersection(a, b, std::back_inserter(out));
    });
    for (const auto& polygon : out) {
        result.area += CGAL::to_double(polygon.outer_boundary().area());
        for (auto hole = polygon.holes_begin(); hole != polygon.holes_end(); ++hole)
            result.area += CGAL::to_double(hole->area());
    }
    return result;
#else
    return {};
#endif
}

// --- the table ---

void PrintCell(const std::optional<Result>& peer, double area) {
    if (!peer)
        std::printf(" %14s", "-");
    else
        std::printf(" %13.1f%s", peer->time, std::abs(peer->area - area) > 1e-6 * area ? "!" : " ");
}

void Row(const char* name, const Pair& pair) {
    std::printf("%-34s", name);
    std::fflush(stdout);
    const Result ours = Ours(pair);
    std::printf(" %13.1f ", ours.time);
    double best = 0;
    std::vector<bench::Other> others;
    const std::pair<const char*, std::optional<Result>> peers[]{
        {"polyclipping", Polyclipping(pair)}, {"Boost", Boost(pair)}, {"GEOS", Geos(pair)}, {"CGAL", Cgal(pair)}};
    for (const auto& [peerName, peer] : peers) {
        PrintCell(peer, ours.area);
        others.emplace_back(peerName, peer ? peer->time : 0);
        if (peer && (best == 0 || peer->time < best))
            best = peer->time;
    }
    if (best > 0)
        std::printf(" %9.2f", ours.time / best);
    std::printf("\n");
    std::fflush(stdout);
    bench::NoteRow(name, "intersection", "µs", ours.time, others);
}

void SetOperations() {
    std::printf("\nIntersection, microseconds; ratio: ours to the fastest peer; ! the area differs from ours\n");
    std::printf("%-34s %13s  %13s  %13s  %13s  %13s  %8s\n", "", "ours", "polyclipping", "Boost", "GEOS", "CGAL",
                "ratio");
    Row("two stars of 1,000", inputs::Stars(1000));
    Row("two stars of 10,000", inputs::Stars(10000));
    if (!quick)
        Row("two stars of 50,000", inputs::Stars(50000));
    Row("two needle stars of 1,000", inputs::NeedleStars(1000));
    if (!quick)
        Row("two needle stars of 10,000", inputs::NeedleStars(10000));
    Row("two combs of 200 teeth", inputs::Combs(200));
    Row("coastlines, 10,368 vertices", inputs::Coastlines());
}

// The libraries cut into triangles only; what it takes to join those is not counted for them.
std::optional<double> GeosTriangles([[maybe_unused]] const inputs::FaceInput& input) {
#if defined(WITH_GEOS) && (GEOS_VERSION_MAJOR > 3 || GEOS_VERSION_MINOR >= 10)
    initGEOS(Silent, Silent);
    GEOSGeometry* face = GeosPolygon(input.outline, input.holes);
    const double time = Time([&] { GEOSGeom_destroy(GEOSConstrainedDelaunayTriangulation(face)); });
    GEOSGeom_destroy(face);
    finishGEOS();
    return time;
#else
    return {};
#endif
}

// Nor is it to find out which of the triangles are in the face.
std::optional<double> CgalTriangles([[maybe_unused]] const inputs::FaceInput& input) {
#ifdef WITH_CGAL
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    const auto convert = [](const Poly& p) {
        std::vector<Kernel::Point_2> points;
        for (const TXY& v : p)
            points.emplace_back(v.x, v.y);
        return points;
    };
    std::vector<std::vector<Kernel::Point_2>> rings{convert(input.outline)};
    for (const Poly& hole : input.holes)
        rings.push_back(convert(hole));
    return Time([&] {
        CGAL::Constrained_Delaunay_triangulation_2<Kernel> triangles;
        for (const auto& ring : rings)
            triangles.insert_constraint(ring.begin(), ring.end(), true);
    });
#else
    return {};
#endif
}

void ConvexPieces() {
    std::printf(
        "\nConvex pieces, microseconds and pieces; ears: ear clipping and merging (earclipping.h); GEOS and CGAL: "
        "triangles only;\nratios: ours to ears, of times and of pieces, and ours to the fastest of GEOS and CGAL\n");
    std::printf("%-34s %10s %8s %10s %8s %8s %8s %10s %10s %8s\n", "", "ours", "pieces", "ears", "pieces", "ratio",
                "ratio", "GEOS", "CGAL", "ratio");
    for (const auto& [n, holes] : {std::pair{1000, 10}, std::pair{10000, 100}}) {
        const inputs::FaceInput input = inputs::Face(n, holes);
        TlistOFxyzArray face;
        const auto add = [&](const Poly& p) {
            TXYZARRAY& array = *face.AddArray();
            for (const TXY& v : p) {
                const TXYZ point{v.x, v.y, 0};
                ArrayAppendData(array, &point);
            }
        };
        add(input.outline);
        for (const Poly& hole : input.holes)
            add(hole);
        int pieces = 0;
        const double time = Time([&] {
            TlistOFxyzArray out;
            DOConvex(face, out);
            pieces = out.Count();
        });
        std::size_t theirs = 0;
        const double theirTime = Time([&] { theirs = earclipping::Cutter().Run(input).size(); });
        const std::string name = std::to_string(n) + " vertices, " + std::to_string(holes) + " holes of 20";
        std::printf("%-34s %10.1f %8d %10.1f %8zu %8.2f %8.3f", name.c_str(), time, pieces, theirTime, theirs,
                    time / theirTime, pieces / static_cast<double>(theirs));
        double best = 0;
        const auto geos = GeosTriangles(input);
        const auto cgal = CgalTriangles(input);
        bench::NoteRow(name, "convex pieces", "µs", time,
                       {{"GEOS, triangles only", geos.value_or(0)}, {"CGAL, triangles only", cgal.value_or(0)}});
        bench::NoteRow(name, "convex pieces", "µs", time, {{"ears, joined", theirTime}});
        bench::NoteRow(name, "number of convex pieces", "", pieces, {{"ears, joined", static_cast<double>(theirs)}});
        for (const auto& peer : {geos, cgal}) {
            if (!peer) {
                std::printf(" %10s", "-");
                continue;
            }
            std::printf(" %10.1f", *peer);
            best = best == 0 ? *peer : std::min(best, *peer);
        }
        if (best > 0)
            std::printf(" %8.2f", time / best);
        std::printf("\n");
    }
}

// Where the work grows like n log n, the last column stays the same.
void Growth() {
    std::printf("\nGrowth of an intersection, n vertices in both together\n%-20s %9s %13s %22s\n", "", "n",
                "microseconds", "ns per n log2 n");
    const auto row = [](const char* name, const Pair& pair) {
        const double n = static_cast<double>(pair.first.size() + pair.second.size());
        const double time = Ours(pair).time;
        std::printf("%-20s %9.0f %13.1f %22.2f\n", name, n, time, 1000 * time / (n * std::log2(n)));
    };
    for (const int n : {1000, 4000, 16000, 64000})
        row("stars", inputs::Stars(n));
    for (const int doublings : {4, 6, 8, 10})
        row("coastlines", inputs::Coastlines(doublings));
}

void InsideTests() {
    const Poly star = inputs::Star(1000, 0, 1);
    const auto array = Array(star);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> number(-1.1, 1.1);
    Poly points(1000);
    for (TXY& p : points)
        p = {number(random), number(random)};
    int inside = 0;
    const double ours = Time([&] {
        for (const TXY& p : points)
            inside += PktInside(p, *array);
    });
    std::printf("\nOne inside test, 1,000 vertices, microseconds\nours %.3f", ours / 1000);
    double best = 0;
    std::vector<bench::Other> others;
    const auto peer = [&](const char* name, double time) {
        std::printf(", %s %.3f", name, time / 1000);
        best = best == 0 ? time : std::min(best, time);
        others.emplace_back(name, time / 1000);
    };
#ifdef WITH_POLYCLIPPING
    {
        ClipperLib::Path path;
        for (const TXY& v : star)
            path.emplace_back(std::llround(v.x * 1e9), std::llround(v.y * 1e9));
        peer("polyclipping", Time([&] {
                 for (const TXY& p : points)
                     inside += ClipperLib::PointInPolygon({std::llround(p.x * 1e9), std::llround(p.y * 1e9)}, path);
             }));
    }
#endif
#ifdef WITH_BOOST
    {
        namespace bg = boost::geometry;
        using Point = bg::model::d2::point_xy<double>;
        bg::model::polygon<Point> polygon;
        for (const TXY& v : star)
            bg::append(polygon.outer(), Point(v.x, v.y));
        bg::correct(polygon);
        peer("Boost", Time([&] {
                 for (const TXY& p : points)
                     inside += bg::within(Point(p.x, p.y), polygon);
             }));
    }
#endif
#ifdef WITH_GEOS
    {
        initGEOS(Silent, Silent);
        GEOSGeometry* polygon = GeosPolygon(star);
        std::vector<GEOSGeometry*> places;
        for (const TXY& p : points)
            places.push_back(GEOSGeom_createPointFromXY(p.x, p.y));
        peer("GEOS", Time([&] {
                 for (const GEOSGeometry* place : places)
                     inside += GEOSContains(polygon, place);
             }));
        for (GEOSGeometry* place : places)
            GEOSGeom_destroy(place);
        GEOSGeom_destroy(polygon);
        finishGEOS();
    }
#endif
#ifdef WITH_CGAL
    {
        using Inexact = CGAL::Exact_predicates_inexact_constructions_kernel;
        CGAL::Polygon_2<Inexact> polygon;
        for (const TXY& v : star)
            polygon.push_back({v.x, v.y});
        peer("CGAL", Time([&] {
                 for (const TXY& p : points)
                     inside += CGAL::bounded_side_2(polygon.vertices_begin(), polygon.vertices_end(),
                                                    Inexact::Point_2(p.x, p.y)) == CGAL::ON_BOUNDED_SIDE;
             }));
    }
#endif
    if (best > 0)
        std::printf("; ratio to the fastest %.2f", ours / best);
    std::printf("%s\n", inside == 0 ? " (none inside)" : "");
    bench::NoteRow("1,000 vertices", "inside test", "µs", ours / 1000, others);
}

// What one intersection of two stars of 50,000 vertices adds to the memory in use at its peak. It comes first, while
// nothing else has made the peak.
void Memory() {
#ifdef __linux__
    const Pair pair = inputs::Stars(50000);
    const auto a = Array(pair.first);
    const auto b = Array(pair.second);
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    TlistOFXYArray list;
    SetOperation(*a, *b, list, false);
    getrusage(RUSAGE_SELF, &after);
    std::printf("Memory of an intersection of two stars of 50,000 vertices: %.1f MiB at the peak\n",
                static_cast<double>(after.ru_maxrss - before.ru_maxrss) / 1024);
#endif
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        quick = quick || std::strcmp(argv[i], "--quick") == 0;
    SetMessageHandler([](const std::string&) {});
    Memory();
    SetOperations();
    if (!quick)
        Growth();
    ConvexPieces();
    InsideTests();
}
