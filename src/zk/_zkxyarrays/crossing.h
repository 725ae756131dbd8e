#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/pointerlist.h>
#include <zk/export.h>

#include <cstdint>

// The crossings of two polygons. Positions are vertex positions as in walk.h. All limits are absolute (the tolerance
// 1e-10 and those of _Cross), so that the crossings of very small polygons are not found; SetOperation has no such
// limit.
namespace zk {

/// One crossing.
struct TCross {
    double Param = 0;            ///< position along the first polygon: the sort key
    double OtherParam = 0;       ///< position along the second polygon
    TXY Point;                   ///< where it is
    bool Flag = false;           ///< used when equal positions are put in order
    std::int32_t EdgeIndex = 0;  ///< from Cross: the rounded code of CrossEx
    std::uint32_t Link = 0;      ///< for the caller; 0 after Addcross
};

/// Crossings in falling order of Param. The list owns its records. A bad index throws EListError.
class ZKXYARRAYS_API TCrossList : public TPointerList {
  public:
    ~TCrossList() override;

    /// Adds a record and returns its index: before the first record whose Param is below param by more than the
    /// tolerance, so behind those that equal it; but when the record just before that place equals it and has its Flag
    /// off, before that one. Only that one record is looked at.
    int Addcross(double param, double otherParam, const TXY& point, int edgeIndex, bool flag);

    /// The crossing at i.
    TCross* GetCross(int i) const { return static_cast<TCross*>(Get(i)); }
    /// The crossing at i.
    TCross* operator[](int i) const { return GetCross(i); }

  protected:
    void Dropped(void* item) override;

  private:
    int Place(double param, int from, int to) const;
};

/// The crossing of the edge a-b of one polygon, followed by the vertex e, with the edge c-d of another, followed by f.
/// s and t are the positions on the two edges, in (0, 1] within the tolerance: a crossing at the start of an edge
/// belongs to the edge before. code tells on which side the first polygon goes on: +10 and -10 where both edges are
/// crossed inside, +1 and -1 at a vertex; positive where a-b goes over to the side of c-d on which the 2D Vekt(b - c, d
/// - c) is negative. x is the crossing point. False where there is no crossing or where the side cannot be told; x is
/// then untouched, and code may hold anything.
ZKXYARRAYS_API bool CrossEx(const TXY& a, const TXY& b, const TXY& c, const TXY& d, const TXY& e, const TXY& f,
                            double& s, double& t, double& code, TXY& x);

/// Adds the crossings of the closed polygons a and b to list: Param is the position along a, OtherParam the one along
/// b, EdgeIndex the code of CrossEx rounded. With flag, meetings at a vertex are looked at from both sides: the edges
/// of a are also taken backwards, and give records with Flag on and the code negated. Of two neighbouring vertex
/// crossings of the same sign, the first with Flag off, one is taken out; a crossing that remains alone is no
/// transition and is taken out too. These last two steps concern the whole list, whatever it held before. Nothing is
/// done when either polygon has fewer than two vertices.
///
/// The result, and its order, is that of looking at every pair of edges; edges whose boxes do not meet are not looked
/// at, so the time grows with the number of edges that are near each other. Edges that are infinite or NaN are near to
/// all.
ZKXYARRAYS_API void Cross(const TXYARRAY& a, const TXYARRAY& b, TCrossList& list, bool flag);

}  // namespace zk
