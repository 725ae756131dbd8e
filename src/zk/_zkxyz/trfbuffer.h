#pragma once

#include <zk/_zkxyz/array.h>
#include <zk/export.h>

namespace zk {

/// A source array and the target array its points are converted into.
struct TTransformBuffer {
    TARRAY Target;                ///< the converted points, owned
    TARRAY Source;                ///< the input points; Data may belong to the caller
    std::uint8_t OwnsSource = 0;  ///< 1 when Source.Data was allocated here
};

struct TXYZXYBuffer : TTransformBuffer {};  ///< TXYZ to TXY
struct TXYXYBuffer : TTransformBuffer {};   ///< TXY to TXY
struct TXYXYiBuffer : TTransformBuffer {};  ///< TXY to TXYI

/// Makes b ready for n points. With sourceData the caller's n elements are used in place: they must stay where they are
/// until ClearTrfBuffer, which does not free them. Should Source grow, it moves to a block of its own and the caller's
/// stays untouched. With a null sourceData a zero-filled block is allocated. Target gets n elements and is limited as
/// in ArrayInit: above 10000 bytes it has the count and no block. A negative n counts as 0.
ZKXYZ_API void InitTrfBuffer(TTransformBuffer& b, int sourceItemSize, int targetItemSize, const void* sourceData,
                             int n);

/// Frees what b owns; OwnsSource stays as it is. Call it on the record that was made ready, not on a copy.
ZKXYZ_API void ClearTrfBuffer(TTransformBuffer& b);

/// InitTrfBuffer for n points TXYZ to TXY, TXY to TXY and TXY to TXYI.
ZKXYZ_API void InitXYZXY(TTransformBuffer& b, int n, const void* p);
ZKXYZ_API void InitXYXY(TTransformBuffer& b, int n, const void* p);
ZKXYZ_API void InitXYXYI(TTransformBuffer& b, int n, const void* p);

static_assert(offsetof(TTransformBuffer, Target) == 0 && offsetof(TTransformBuffer, Source) == sizeof(TARRAY) &&
              offsetof(TTransformBuffer, OwnsSource) == 2 * sizeof(TARRAY));

}  // namespace zk
