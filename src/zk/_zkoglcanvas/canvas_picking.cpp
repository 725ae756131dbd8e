#include <zk/_zkdevice/changebracket.h>
#include <zk/_zkmath.h>
#include <zk/_zkoglcanvas/canvas.h>
#include <zk/_zkoglcanvas/glapi.h>
#include <zk/_zkoglcanvas/glerror.h>
#include <zk/_zkoglcanvas/rendercontext.h>
#include <zk/host/drawinglayer.h>
#include <zk/host/glsurface.h>

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace zk {

namespace {

constexpr double pickTolerance = 0.1;  // centimetres of the projection plane, to each side

// One buffer for all canvases: a pick runs to its end before another can begin.
std::array<GLuint, 1024>& selectBuffer() {
    static std::array<GLuint, 1024> buffer;
    return buffer;
}

/// What shapes and clip planes leave behind in OpenGL (the planes' equations, the last normal, how polygons are
/// rasterised) is as before at the end of the scope, unless a handler has brought another context.
class LeftBehind {
  public:
    explicit LeftBehind(TZkOglCanvas& canvas) : canvas_(&canvas), depth_(depth()) {
        GLint most = 0;
        glGetIntegerv(GL_MAX_ATTRIB_STACK_DEPTH, &most);
        if (depth_ < most)
            glPushAttrib(GL_CURRENT_BIT | GL_POLYGON_BIT | GL_TRANSFORM_BIT);
    }
    ~LeftBehind() {
        if (canvas_ && canvas_->CheckCurrent() && depth() > depth_)
            glPopAttrib();
    }
    LeftBehind(const LeftBehind&) = delete;
    LeftBehind& operator=(const LeftBehind&) = delete;

  private:
    static GLint depth() {
        GLint depth = 0;
        glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &depth);
        return depth;
    }

    QPointer<TZkOglCanvas> canvas_;
    GLint depth_;
};

constexpr std::size_t firstFeedbackSize = std::size_t(1) << 18;  // numbers
constexpr std::size_t mostFeedback = std::size_t(1) << 24;

/// What OpenGL has written in feedback mode (`GL_2D`): a token, then the corners of what was drawn in pixels of the
/// window from the lower left, or a number that was passed through: each name as two of them, before what bears it.
class FeedbackReader {
  public:
    explicit FeedbackReader(std::vector<GLfloat> values) : values_(std::move(values)) {}

    std::vector<THitPlace> Places(const QSizeF& client, double pixelRatio, double windowHeight) {
        while (read()) {
        }
        std::vector<THitPlace> places;
        for (const Bounds& seen : bounds_) {
            const QRectF area(QPointF(seen.left, windowHeight - seen.upper) / pixelRatio,
                              QPointF(seen.right, windowHeight - seen.lower) / pixelRatio);
            // The viewport is the square around the window.
            const QPointF corner(std::max(area.left(), 0.0), std::max(area.top(), 0.0));
            const QPointF opposite(std::min(area.right(), client.width()), std::min(area.bottom(), client.height()));
            if (corner.x() <= opposite.x() && corner.y() <= opposite.y())
                places.push_back({seen.name, QRectF(corner, opposite)});
        }
        return places;
    }

  private:
    struct Bounds {
        std::int32_t name;
        double left, lower, right, upper;
    };

    bool has(std::size_t count) const { return values_.size() - at_ >= count; }
    double take() { return values_[at_++]; }

    // One token; false at the end, which may stand in the middle of one.
    bool read() {
        if (!has(1))
            return false;
        switch (int(take())) {
            case GL_PASS_THROUGH_TOKEN:
                if (!has(1))
                    return false;
                name_ = name_ << 16 | std::uint32_t(take());
                return true;
            case GL_POINT_TOKEN:
            case GL_BITMAP_TOKEN:
            case GL_DRAW_PIXEL_TOKEN:
            case GL_COPY_PIXEL_TOKEN:
                return corners(1);
            case GL_LINE_TOKEN:
            case GL_LINE_RESET_TOKEN:
                return corners(2);
            case GL_POLYGON_TOKEN:
                return has(1) && corners(std::size_t(std::max(take(), 0.0)));
            default:
                return false;
        }
    }

    bool corners(std::size_t count) {
        if (!has(2 * count))
            return false;
        for (; count > 0; --count) {
            const double x = take();
            add(x, take());
        }
        return true;
    }

    void add(double x, double y) {
        if (name_ == HitTarget::NoHit || name_ == 0)
            return;
        const auto [entry, isNew] = places_.try_emplace(name_, bounds_.size());
        if (isNew)
            bounds_.push_back({std::int32_t(name_), x, y, x, y});
        Bounds& seen = bounds_[entry->second];
        seen.left = std::min(seen.left, x);
        seen.right = std::max(seen.right, x);
        seen.lower = std::min(seen.lower, y);
        seen.upper = std::max(seen.upper, y);
    }

    std::vector<GLfloat> values_;
    std::size_t at_ = 0;
    std::uint32_t name_ = HitTarget::NoHit;
    std::vector<Bounds> bounds_;
    std::unordered_map<std::uint32_t, std::size_t> places_;
};

}  // namespace

void TZkOglCanvas::SetHit(int name) {
    if (!CheckCurrent())
        return;
    if (!findingPlaces_) {
        glLoadName(GLuint(name));
        return;
    }
    // In two parts, as a float does not hold every number of 32 bits.
    glPassThrough(GLfloat(std::uint32_t(name) >> 16));
    glPassThrough(GLfloat(std::uint32_t(name) & 0xFFFF));
}

bool TZkOglCanvas::Select(int x, int y) {
    return SelectAt(QPointF(x, y));
}

bool TZkOglCanvas::SelectAt(const QPointF& position) {
    if (!CheckCurrent() || IsPainting() || selecting_)
        return false;

    const QPointer<TZkOglCanvas> self = this;  // a handler may delete the canvas while its shapes are played
    beginSelection();
    const TXY point = projectionPoint(position);
    {
        selecting_ = true;
        const auto ended = qScopeGuard([&self] {
            if (self)
                self->selecting_ = false;
        });
        const LeftBehind state(*this);
        const Tmatrix view = GetOglModelMatrix();
        const TBAse base = GetprojectionBAse();
        // With the unit frame the model-view matrix is that of the bare eye, so that the planes can be given in
        // coordinates of the projection plane; they keep their place when the frame returns, to the last digit and
        // with what user code has made of it.
        InBracket(
            *this, [this] { SetProjectionbase(Unitbase); }, [&] { setClipPlanesAround(point, pickTolerance); },
            [&] { SetProjectionbase(base); }, [&] { SetOglModelMatrix(view); });
    }
    if (!self)
        return false;
    endSelection();
    DisableClipplane(-1);
    return !hits_.empty();
}

void TZkOglCanvas::beginSelection() {
    selectBuffer().fill(0);
    glSelectBuffer(GLsizei(selectBuffer().size()), selectBuffer().data());
    SetRenderMode(GL_SELECT);
    glInitNames();
    glPushName(HitTarget::NoHit);
    OGLError();
}

void TZkOglCanvas::endSelection() {
    if (CheckCurrent())
        glPopName();
    readSelectBuffer();
}

// As `GetProjectionKoord`, also between pixels.
TXY TZkOglCanvas::projectionPoint(const QPointF& pixel) const {
    return {(pixel.x() - GetWidth() / 2) / GetUnitsPerCm(), -(pixel.y() - GetHeight() / 2) / GetUnitsPerCm()};
}

void TZkOglCanvas::Bulleye(int x, int y, double halfWidth) {
    if (!CheckCurrent() || IsPainting() || selecting_)
        return;
    const TXY point = projectionPoint(QPointF(x, y));
    const TBAse base = GetprojectionBAse();
    InBracket(
        *this, [this] { SetProjectionbase(Unitbase); }, [&] { setClipPlanesAround(point, halfWidth); },
        [&] { SetProjectionbase(base); });
}

// Four planes that keep what lies within `halfWidth` of a point of the projection plane: a column along the z axis, or
// the pyramid from the eye.
void TZkOglCanvas::setClipPlanesAround(const TXY& point, double halfWidth) {
    const double left = point.x - halfWidth;
    const double right = point.x + halfWidth;
    const double lower = point.y - halfWidth;
    const double upper = point.y + halfWidth;
    if (Equals(GetBlickwinkel(), 0)) {
        EnableClipplane(0, {right, 0, 0}, {-1, 0, 0});
        EnableClipplane(1, {left, 0, 0}, {1, 0, 0});
        EnableClipplane(2, {0, upper, 0}, {0, -1, 0});
        EnableClipplane(3, {0, lower, 0}, {0, 1, 0});
        return;
    }
    const TXYZ eye{0, 0, AugeAbstand()};
    const std::array<std::array<TXYZ, 2>, 4> edges{{{{{right, lower, 0}, {right, upper, 0}}},
                                                    {{{left, upper, 0}, {left, lower, 0}}},
                                                    {{{right, upper, 0}, {left, upper, 0}}},
                                                    {{{left, lower, 0}, {right, lower, 0}}}}};
    const TXYZ inside = Sub(TXYZ{point.x, point.y, 0}, eye);
    for (int i = 0; i < 4; ++i) {
        const auto& [from, to] = edges[std::size_t(i)];
        // The product of the edge's corners points out of the pyramid while the eye is before the plane, and into it
        // when it is behind; what must be kept is the side of the axis.
        TXYZ normal = Vekt(Sub(from, eye), Sub(to, eye));
        if (Skal(normal, inside) < 0)
            normal = Mul(normal, -1.0);
        EnableClipplane(i, eye, normal);
    }
}

// --- where shapes are seen ------------------------------------------------------------------------------------------

std::vector<THitPlace> TZkOglCanvas::Places() {
    if (!CheckCurrent() || IsPainting() || selecting_)
        return {};
    return findPlaces([this] { Refresh(); });
}

std::vector<THitPlace> TZkOglCanvas::findPlaces(const std::function<void()>& play) {
    const QPointer<TZkOglCanvas> self = this;  // a handler may delete the canvas while its shapes are played
    for (std::size_t size = firstFeedbackSize;; size *= 4) {
        feedback_.assign(size, 0);
        glFeedbackBuffer(GLsizei(size), GL_2D, feedback_.data());
        glRenderMode(GL_FEEDBACK);
        OGLError();
        {
            const QPointer<DrawingLayer> layer = layer_;
            if (layer)
                layer->SetMuted(true);
            selecting_ = findingPlaces_ = true;
            const auto ended = qScopeGuard([&] {
                if (self)
                    self->selecting_ = self->findingPlaces_ = false;
                if (layer)
                    layer->SetMuted(false);
            });
            const LeftBehind state(*this);
            play();
        }
        if (!self)
            return {};
        if (!CheckCurrent())
            return {};  // what OpenGL may still write into stays
        const GLint written = glRenderMode(GL_RENDER);
        OGLError();
        if (written < 0 && size < mostFeedback)
            continue;
        feedback_.resize(written < 0 ? size : std::size_t(written));
        FeedbackReader reader(std::exchange(feedback_, {}));
        return reader.Places(QSizeF(GetWidth(), GetHeight()), surface_->PixelRatio(), surface_->PixelSize().height());
    }
}

void TZkOglCanvas::readSelectBuffer() {
    hits_.clear();
    if (!CheckCurrent())
        return;
    const GLint records = glRenderMode(GL_RENDER);
    const auto& buffer = selectBuffer();
    std::size_t at = 0;
    // More hits than the buffer holds are reported as a negative count: then nothing counts as hit.
    for (GLint i = 0; i < records && at + 3 <= buffer.size(); ++i) {
        const std::size_t names = buffer[at];
        if (at + 3 + names > buffer.size())
            break;
        THitItem item;
        item.HitObject = names > 0 ? std::int32_t(buffer[at + 3]) : HitTarget::NoHit;
        item.Depth = double(buffer[at + 2]) / 2147483647.0 / scale_;
        item.NameCount = std::int32_t(names);
        const auto place = std::find_if(hits_.begin(), hits_.end(),
                                        [&item](const THitItem& other) { return other.Depth <= item.Depth; });
        hits_.insert(place, item);
        at += 3 + names;
    }
}

}  // namespace zk
