#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/listofarrays.h>
#include <zk/export.h>

// Transforming points, polygons and lists of polygons in place.
namespace zk {

/// p := (p, 1) * M, without the division by M[3][3] that TransformBAse of _zkmath makes: only the affine part of M
/// counts. The two differ on purpose. A TXY goes through as (x, y, 0) and keeps its x and y.
ZKXYARRAYS_API void MatMul(const Tmatrix& M, TXYZ& p);
ZKXYARRAYS_API void MatMul(const Tmatrix& M, TXY& p);

/// The same for every point.
ZKXYARRAYS_API void MatMul(const Tmatrix& M, TXYZARRAY& a);
ZKXYARRAYS_API void MatMul(const Tmatrix& M, TXYARRAY& a);
ZKXYARRAYS_API void MatMul(const Tmatrix& M, TlistOFxyzArray& l);
ZKXYARRAYS_API void MatMul(const Tmatrix& M, TlistOFXYArray& l);

}  // namespace zk
