#include "edgegrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zk::detail {
namespace {

// Cells per edge. More of them mean fewer pairs and more to clear.
constexpr double CellsPerEdge = 2;
// How many cells an edge runs through on average at most, so that the grid's size stays in proportion to the input's.
constexpr double CellsAlongEdge = 16;

TXY Next(std::span<const TXY> points, std::size_t i) {
    return points[i + 1 < points.size() ? i + 1 : 0];
}

}  // namespace

EdgeBox EdgeBox::Empty() {
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    return {Infinity, Infinity, -Infinity, -Infinity};
}

void EdgeBox::Extend(const EdgeBox& o) {
    x0 = std::min(x0, o.x0);
    y0 = std::min(y0, o.y0);
    x1 = std::max(x1, o.x1);
    y1 = std::max(y1, o.y1);
}

EdgeGrid::EdgeGrid(std::span<const TXY> a, std::span<const TXY> b, double grow) : points_{a, b}, grow_(grow) {
    EdgeBox whole[2] = {EdgeBox::Empty(), EdgeBox::Empty()};
    for (int of = 0; of < 2; ++of) {
        boxes_[of].resize(points_[of].size());
        for (std::size_t i = 0; i < points_[of].size(); ++i) {
            const TXY p = points_[of][i];
            const TXY q = Next(points_[of], i);
            const EdgeBox box{std::min(p.x, q.x) - grow, std::min(p.y, q.y) - grow, std::max(p.x, q.x) + grow,
                              std::max(p.y, q.y) + grow};
            boxes_[of][i] = box;
            whole[of].Extend(box);
        }
    }
    if (!whole[0].Meets(whole[1]))
        return;
    region_ = {std::max(whole[0].x0, whole[1].x0), std::max(whole[0].y0, whole[1].y0),
               std::min(whole[0].x1, whole[1].x1), std::min(whole[0].y1, whole[1].y1)};
    const double w = region_.x1 - region_.x0;
    const double h = region_.y1 - region_.y0;
    double edges = 0;
    double along = 0;
    double upward = 0;
    for (const auto& boxes : boxes_)
        for (const EdgeBox& box : boxes)
            if (box.Meets(region_)) {
                edges += 1;
                along += std::min(box.x1, region_.x1) - std::max(box.x0, region_.x0);
                upward += std::min(box.y1, region_.y1) - std::max(box.y0, region_.y0);
            }
    const double size = std::sqrt(w / (CellsPerEdge * edges + 1)) * std::sqrt(h);
    const auto cells = [&](double extent, double edgeSum) {
        const double least = edgeSum / (CellsAlongEdge * edges + 1);
        const double step = std::max({size, least, extent / (CellsPerEdge * edges + 1)});
        const double count = step > 0 ? extent / step : 1;
        return count >= 1 ? static_cast<int>(std::min(count, 4096.0)) : 1;
    };
    columns_ = cells(w, along);
    rows_ = cells(h, upward);
    cells_ = static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_);
    width_ = w / columns_;
    height_ = h / rows_;
    perWidth_ = w > 0 ? columns_ / w : 0;
    perHeight_ = h > 0 ? rows_ / h : 0;
    if (!std::isfinite(perWidth_))
        perWidth_ = 0;
    if (!std::isfinite(perHeight_))
        perHeight_ = 0;
    Fill(0);
    Fill(1);
}

int EdgeGrid::Column(double x) const {
    const double at = (x - region_.x0) * perWidth_;
    return at >= columns_ ? columns_ - 1 : at > 0 ? static_cast<int>(at) : 0;
}

int EdgeGrid::Row(double y) const {
    const double at = (y - region_.y0) * perHeight_;
    return at >= rows_ ? rows_ - 1 : at > 0 ? static_cast<int>(at) : 0;
}

// Column by column, with the rows that the edge passes there. What rounding may hide is added to the band of rows.
template <class Enter>
void EdgeGrid::Rasterize(int of, std::uint32_t edge, Enter enter) const {
    const EdgeBox& box = boxes_[of][edge];
    if (!box.Meets(region_))
        return;
    const int c0 = Column(box.x0);
    const int c1 = Column(box.x1);
    const int r0 = Row(box.y0);
    const int r1 = Row(box.y1);
    const auto column = [&](int c, int low, int high) {
        for (int r = low; r <= high; ++r)
            enter(static_cast<std::size_t>(r) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(c));
    };
    if (c0 == c1 || r0 == r1) {
        for (int c = c0; c <= c1; ++c)
            column(c, r0, r1);
        return;
    }
    TXY p = points_[of][edge];
    TXY q = Next(points_[of], edge);
    if (q.x < p.x)
        std::swap(p, q);
    const double slope = (q.y - p.y) / (q.x - p.x);
    const double slack =
        grow_ * (1 + std::fabs(slope)) + 1e-9 * height_ +
        8 * std::numeric_limits<double>::epsilon() *
            (std::fabs(slope) * (std::fabs(region_.x0) + std::fabs(region_.x1) + std::fabs(p.x)) + std::fabs(p.y));
    if (!std::isfinite(slack)) {
        for (int c = c0; c <= c1; ++c)
            column(c, r0, r1);
        return;
    }
    for (int c = c0; c <= c1; ++c) {
        const double left = p.y + slope * (region_.x0 + c * width_ - p.x);
        const double right = left + slope * width_;
        const int low = std::max(r0, Row(std::min(left, right) - slack));
        const int high = std::min(r1, Row(std::max(left, right) + slack));
        column(c, low, high);
    }
}

void EdgeGrid::Fill(int of) {
    auto& start = starts_[of];
    start.assign(cells_ + 1, 0);
    const auto count = static_cast<std::uint32_t>(points_[of].size());
    // Cells where the other polygon has nothing need no entries.
    const bool second = of == 1;
    const auto useful = [&](std::size_t cell) { return !second || starts_[0][cell + 1] > starts_[0][cell]; };
    for (std::uint32_t i = 0; i < count; ++i)
        Rasterize(of, i, [&](std::size_t cell) { start[cell] += useful(cell) ? 1 : 0; });
    std::uint32_t sum = 0;
    for (std::uint32_t& s : start)
        s = sum += s;
    auto& entries = entries_[of];
    entries.resize(sum);
    // Filled from the end, so that each start comes to rest where its cell begins.
    for (std::uint32_t i = count; i-- > 0;)
        Rasterize(of, i, [&](std::size_t cell) {
            if (useful(cell))
                entries[--start[cell]] = i;
        });
}

void EdgeGrid::PutAcross(int of, std::size_t cell, const TXY& normal) {
    const int c = static_cast<int>(cell % static_cast<std::size_t>(columns_));
    const int r = static_cast<int>(cell / static_cast<std::size_t>(columns_));
    // The cells at the rim reach as far as the region does, whatever rounding made of their sizes.
    const double slackX = grow_ + 1e-9 * width_ + 1e-15 * (std::fabs(region_.x0) + std::fabs(region_.x1));
    const double slackY = grow_ + 1e-9 * height_ + 1e-15 * (std::fabs(region_.y0) + std::fabs(region_.y1));
    const double x0 = region_.x0 + c * width_ - slackX;
    const double x1 = region_.x0 + (c + 1) * width_ + slackX;
    const double y0 = region_.y0 + r * height_ - slackY;
    const double y1 = region_.y0 + (r + 1) * height_ + slackY;
    const double slack = 2 * (std::fabs(normal.x) * slackX + std::fabs(normal.y) * slackY);
    auto& list = across_[of];
    list.clear();
    for (const std::uint32_t edge : Entries(of, cell)) {
        const TXY p = points_[of][edge];
        const TXY q = Next(points_[of], edge);
        double from = 0;
        double to = 1;
        const auto clip = [&](double start, double delta, double low, double high) {
            if (delta == 0)
                return;
            const double s = (low - start) / delta;
            const double t = (high - start) / delta;
            from = std::max(from, std::min(s, t));
            to = std::min(to, std::max(s, t));
        };
        clip(p.x, q.x - p.x, x0, x1);
        clip(p.y, q.y - p.y, y0, y1);
        from = std::clamp(from - 1e-12, 0.0, 1.0);
        to = std::clamp(to + 1e-12, 0.0, 1.0);
        const TXY u{p.x + (q.x - p.x) * from, p.y + (q.y - p.y) * from};
        const TXY v{p.x + (q.x - p.x) * to, p.y + (q.y - p.y) * to};
        const double s = (u.x - x0) * normal.x + (u.y - y0) * normal.y;
        const double t = (v.x - x0) * normal.x + (v.y - y0) * normal.y;
        const Across entry{std::min(s, t) - slack, std::max(s, t) + slack, edge};
        if (std::isfinite(entry.low) && std::isfinite(entry.high))
            list.push_back(entry);
        else
            list.push_back({-std::numeric_limits<double>::max(), std::numeric_limits<double>::max(), edge});
    }
    std::ranges::sort(
        list, [](const Across& l, const Across& m) { return l.low != m.low ? l.low < m.low : l.edge < m.edge; });
}

void EdgeGrid::CrowdedCell(std::size_t cell) {
    pairs_.clear();
    // The common direction is the mean of the doubled angles, in which an edge and its reverse are the same.
    double cosine = 0;
    double sine = 0;
    for (int of = 0; of < 2; ++of)
        for (const std::uint32_t edge : Entries(of, cell)) {
            const TXY p = points_[of][edge];
            const TXY q = Next(points_[of], edge);
            const double dx = q.x - p.x;
            const double dy = q.y - p.y;
            const double length2 = dx * dx + dy * dy;
            if (length2 > 0 && std::isfinite(length2)) {
                cosine += (dx * dx - dy * dy) / length2;
                sine += 2 * dx * dy / length2;
            }
        }
    const double angle = std::atan2(sine, cosine) / 2;
    const TXY normal{-std::sin(angle), std::cos(angle)};
    PutAcross(0, cell, normal);
    PutAcross(1, cell, normal);
    // Each entry is paired with those of the other list that begin inside it.
    const auto pair = [&](const Across& a, const Across& b) {
        if (boxes_[0][a.edge].Meets(boxes_[1][b.edge]))
            pairs_.emplace_back(a.edge, b.edge);
    };
    std::size_t j = 0;
    std::size_t i = 0;
    const auto& as = across_[0];
    const auto& bs = across_[1];
    while (i < as.size() && j < bs.size()) {
        if (as[i].low <= bs[j].low) {
            for (std::size_t k = j; k < bs.size() && bs[k].low <= as[i].high; ++k)
                pair(as[i], bs[k]);
            ++i;
        } else {
            for (std::size_t k = i; k < as.size() && as[k].low <= bs[j].high; ++k)
                pair(as[k], bs[j]);
            ++j;
        }
    }
}

}  // namespace zk::detail
