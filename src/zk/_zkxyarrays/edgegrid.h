#pragma once

#include <zk/_zkxyz/records.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

// Which edges of two polygons are near each other. Not for use outside this unit.
namespace zk::detail {

struct EdgeBox {
    double x0, y0, x1, y1;

    // Written so that a box that is no number meets nothing.
    bool Meets(const EdgeBox& o) const { return (x0 <= o.x1) & (o.x0 <= x1) & (y0 <= o.y1) & (o.y0 <= y1); }
    void Extend(const EdgeBox& o);
    static EdgeBox Empty();
};

// A grid over the place where two closed polygons can meet. Every edge is entered in the cells that it runs through, so
// that also long edges that are close to each other, like the spokes of a wheel, make few pairs; in a crowded cell the
// edges are put in order across their common direction.
class EdgeGrid {
  public:
    // Two edges are near when their boxes, grown by grow on every side, meet. All coordinates are finite.
    EdgeGrid(std::span<const TXY> a, std::span<const TXY> b, double grow);

    // Calls visit(i, j) for pairs of an edge i of a (from point i to the next) and an edge j of b: every pair of edges
    // whose grown boxes meet in a point that both edges pass within grow, and maybe others whose grown boxes meet. A
    // pair can come several times. The order is the same in every run.
    template <class Visit>
    void ForEachPair(Visit visit) {
        for (std::size_t cell = 0; cell < cells_; ++cell) {
            const auto as = Entries(0, cell);
            const auto bs = Entries(1, cell);
            if (as.empty() || bs.empty())
                continue;
            if (as.size() * bs.size() <= Crowded) {
                for (const std::uint32_t i : as) {
                    const EdgeBox box = boxes_[0][i];
                    for (const std::uint32_t j : bs)
                        if (box.Meets(boxes_[1][j]))
                            visit(i, j);
                }
                continue;
            }
            CrowdedCell(cell);
            for (const auto& [i, j] : pairs_)
                visit(i, j);
        }
    }

  private:
    static constexpr std::size_t Crowded = 400;

    struct Across {
        double low, high;
        std::uint32_t edge;
    };

    std::span<const std::uint32_t> Entries(int of, std::size_t cell) const {
        const auto& start = starts_[of];
        return {entries_[of].data() + start[cell], start[cell + 1] - start[cell]};
    }
    template <class Enter>
    void Rasterize(int of, std::uint32_t edge, Enter enter) const;
    void Fill(int of);
    void CrowdedCell(std::size_t cell);
    void PutAcross(int of, std::size_t cell, const TXY& normal);
    int Column(double x) const;
    int Row(double y) const;

    std::span<const TXY> points_[2];
    double grow_;
    EdgeBox region_{};
    int columns_ = 0;
    int rows_ = 0;
    std::size_t cells_ = 0;
    double width_ = 1;
    double height_ = 1;
    double perWidth_ = 1;
    double perHeight_ = 1;
    std::vector<EdgeBox> boxes_[2];
    std::vector<std::uint32_t> starts_[2];
    std::vector<std::uint32_t> entries_[2];
    std::vector<Across> across_[2];
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs_;
};

}  // namespace zk::detail
