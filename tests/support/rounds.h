#pragma once

#include "sanitizers.h"

namespace zk::test {

/// How often a test goes round that draws its cases by lot: \p all times or, under the sanitizers, where a round takes
/// several times as long and errors of memory show in few, an eighth of them.
constexpr int Rounds(int all) {
#ifdef ZKOGL_ADDRESS_SANITIZER
    return all / 8;
#else
    return all;
#endif
}

}  // namespace zk::test
