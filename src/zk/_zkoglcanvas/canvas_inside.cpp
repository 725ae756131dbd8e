#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/matrixmode.h>

#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace zk {

namespace {

constexpr double halfNeedle = 0.0001;  // centimetres
// The needle is no square and stands a little beside the point: an edge or the diagonal of a face that passes right
// through the point, as it does in the middle of a box, would otherwise cut corners of next to no area off it, and
// which way round those run is left to rounding. Where the answers upwards and downwards differ, another place is
// tried.
constexpr TXY needleSize{halfNeedle, 0.83 * halfNeedle};
constexpr std::array<TXYZ, 3> beside{{{0.55 * halfNeedle, -0.05 * halfNeedle, 0},
                                      {-0.31 * halfNeedle, 0.47 * halfNeedle, 0},
                                      {0.13 * halfNeedle, 0.61 * halfNeedle, 0}}};
// How far down and up a needle goes, in centimetres. The point lies in the middle of what is seen, where OpenGL's
// numbers are finest; a clip plane takes one half away.
constexpr double reach = 1e5;
// Faces that meet in the needle are crossed once. They do so at nearly one depth, unless they are steep.
constexpr double sameCrossing = 0.02;

constexpr double largestDepth = 4294967295.0;
constexpr double depthUnit = 2147483647.0;  // see THitItem::Depth

/// Where the needle meets the surface of a shape.
struct Crossing {
    double depth;  // window depth, 0 to 1
    bool front;
};

/// How much oftener surfaces are met from their backs than from their fronts.
int backsBeyondFronts(std::vector<Crossing>& crossings) {
    std::sort(crossings.begin(), crossings.end(),
              [](const Crossing& one, const Crossing& other) { return one.depth < other.depth; });
    int count = 0;
    const Crossing* before = nullptr;
    for (const Crossing& crossing : crossings) {
        const bool again =
            before && before->front == crossing.front && (crossing.depth - before->depth) * 2 * reach < sameCrossing;
        before = &crossing;
        if (!again)
            count += crossing.front ? -1 : 1;
    }
    return count;
}

using Crossings = std::map<std::int32_t, std::vector<Crossing>>;

}  // namespace

// A closed surface that is crossed from its inside is seen from its back below the point and from its front above it,
// looking down. Fronts and backs are told apart by playing the scenes once with each kind culled; a quadric makes one
// record in each, however often it is crossed.
int TZkOglCanvas::InsideOf(const TXYZ& point) {
    if (!CheckCurrent() || IsPainting() || selecting_ || !(std::fabs(scale_) > 0) || !std::isfinite(point.x) ||
        !std::isfinite(point.y) || !std::isfinite(point.z))
        return -1;
    int answer = -1;
    for (const TXYZ& offset : beside)
        if (isClear(Add(point, offset), answer))
            break;
    return answer;
}

// True if downwards and upwards the same is found for every shape.
bool TZkOglCanvas::isClear(const TXYZ& point, int& answer) {
    answer = -1;
    const QPointer<TZkOglCanvas> self = this;
    std::array<Crossings, 2> crossings;  // upwards, downwards
    std::vector<THitItem> below;
    for (const bool down : {false, true}) {
        for (const GLenum culled : {GLenum(GL_BACK), GLenum(GL_FRONT)}) {
            const std::vector<THitItem> hits = needle(point, down, culled);
            if (!self || !CheckCurrent())
                return true;
            for (const THitItem& item : hits) {
                const double depth = item.Depth * scale_ * depthUnit / largestDepth;
                crossings[down ? 1 : 0][item.HitObject].push_back({depth, culled == GL_BACK});
                if (down)
                    below.push_back(item);
            }
        }
    }
    std::stable_sort(below.begin(), below.end(),
                     [](const THitItem& one, const THitItem& other) { return one.Depth > other.Depth; });
    hits_ = below;

    bool clear = true;
    int count = 0;
    std::int32_t outermost = -1;
    for (const THitItem& item : below) {  // the farthest first
        const auto found = crossings[1].find(item.HitObject);
        if (found == crossings[1].end() || item.HitObject == HitTarget::NoHit)
            continue;
        const int downwards = backsBeyondFronts(found->second);
        const int upwards = -backsBeyondFronts(crossings[0][item.HitObject]);
        crossings[1].erase(found);
        clear = clear && downwards == upwards;
        if (downwards != upwards || downwards % 2 == 0)
            continue;
        if (count == 0)
            outermost = item.HitObject;
        ++count;
    }
    if (count % 2 != 0)
        answer = outermost;
    return clear;
}

// What a needle from a point meets, without the faces that are culled.
std::vector<THitItem> TZkOglCanvas::needle(const TXYZ& point, bool down, unsigned culled) {
    const QPointer<TZkOglCanvas> self = this;
    glPushAttrib(GL_POLYGON_BIT | GL_VIEWPORT_BIT | GL_ENABLE_BIT);
    const Tmatrix view = GetOglModelMatrix();
    const SavedProjection projection;
    const auto restore = qScopeGuard([&] {
        if (!self || !CheckCurrent())
            return;
        projection.Restore();
        SetOglModelMatrix(view);
        glPopAttrib();
        for (int plane = 0; plane < 5; ++plane)
            DisableClipplane(plane);
    });

    // All numbers are those of a space around the point, which keeps them small and exact.
    {
        const MatrixModeScope mode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-2 * halfNeedle, 2 * halfNeedle, -2 * halfNeedle, 2 * halfNeedle, -reach, reach);
        glScaled(1 / scale_, 1 / scale_, 1 / scale_);
    }
    glViewport(0, 0, 1024, 1024);  // so that it is seen which way round a face runs, whatever the window's size
    glEnable(GL_CULL_FACE);
    glCullFace(culled);
    SetModelMatrix(Identity);
    EnableClipplane(0, {needleSize.x, 0, 0}, {-1, 0, 0});
    EnableClipplane(1, {-needleSize.x, 0, 0}, {1, 0, 0});
    EnableClipplane(2, {0, needleSize.y, 0}, {0, -1, 0});
    EnableClipplane(3, {0, -needleSize.y, 0}, {0, 1, 0});
    EnableClipplane(4, {0, 0, down ? halfNeedle : -halfNeedle}, {0, 0, down ? -1.0 : 1.0});
    SetModelMatrix(TranslationToMatrix3d(Mul(point, -1.0)));

    beginSelection();
    {
        selecting_ = true;
        const auto ended = qScopeGuard([&self] {
            if (self)
                self->selecting_ = false;
        });
        Refresh();
    }
    if (!self)
        return {};
    endSelection();
    return std::exchange(hits_, {});
}

}  // namespace zk
