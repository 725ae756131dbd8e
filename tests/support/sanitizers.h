#pragma once

// ZKOGL_ADDRESS_SANITIZER: defined where the compiler, whichever it is, builds for AddressSanitizer.
#if defined(__SANITIZE_ADDRESS__)
#define ZKOGL_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZKOGL_ADDRESS_SANITIZER 1
#endif
#endif
