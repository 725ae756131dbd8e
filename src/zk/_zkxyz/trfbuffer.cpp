#include "trfbuffer.h"

#include <zk/_zkxyz/blocks.h>

#include <algorithm>

namespace zk {

void InitTrfBuffer(TTransformBuffer& b, int sourceItemSize, int targetItemSize, const void* sourceData, int n) {
    n = std::max(n, 0);
    b.Source = TARRAY{};
    b.Source.ItemSize = std::max(sourceItemSize, 0);
    b.Source.Delta = n > 0 ? n : 5;
    b.Source.Capacity = n;
    b.Source.Count = n;
    if (sourceData) {
        b.OwnsSource = 0;
        // Read in place. Nothing writes to Source but the caller, who knows whether the block may be written to.
        b.Source.Data = const_cast<void*>(sourceData);
        detail::LoanBegin(&b.Source, sourceData);
    } else {
        detail::LoanEnd(&b.Source);
        b.OwnsSource = 1;
        b.Source.Data = detail::BlockNew(static_cast<std::size_t>(n) * static_cast<std::size_t>(b.Source.ItemSize));
    }
    ArrayInit(b.Target, targetItemSize, n);
    b.Target.Count = n;
}

void ClearTrfBuffer(TTransformBuffer& b) {
    const bool outgrown = detail::LoanEnd(&b.Source);
    if (b.OwnsSource || outgrown)
        ArrayClear(b.Source);
    ArrayClear(b.Target);
}

void InitXYZXY(TTransformBuffer& b, int n, const void* p) {
    InitTrfBuffer(b, 24, 16, p, n);
}

void InitXYXY(TTransformBuffer& b, int n, const void* p) {
    InitTrfBuffer(b, 16, 16, p, n);
}

void InitXYXYI(TTransformBuffer& b, int n, const void* p) {
    InitTrfBuffer(b, 16, 8, p, n);
}

}  // namespace zk
