#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/_zkxyz/listofarrays.h>

// Transforming points, polygons and lists of polygons in place.
namespace zk {

// p := (p, 1) * M, without the division by M[3][3] that TransformBAse of _zkmath makes: only the affine part of M
// counts. The two differ on purpose. A TXY goes through as (x, y, 0) and keeps its x and y.
void MatMul(const Tmatrix& M, TXYZ& p);
void MatMul(const Tmatrix& M, TXY& p);

// The same for every point.
void MatMul(const Tmatrix& M, TXYZARRAY& a);
void MatMul(const Tmatrix& M, TXYARRAY& a);
void MatMul(const Tmatrix& M, TlistOFxyzArray& l);
void MatMul(const Tmatrix& M, TlistOFXYArray& l);

}  // namespace zk
