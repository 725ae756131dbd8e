#pragma once

// What the libraries show to those that link them. What has no macro can change without anybody noticing, and two
// libraries may use the same name for it.
//
// Each unit has a macro of its own. It stands at every class and function of the unit's public headers that is in part
// or whole in a source, and at every exception; templates, plain records and what is inline need none. The libraries
// are compiled with hidden visibility, so that nothing else can be linked where they are shared. ZK_INTERNAL takes a
// class back that is declared inside another one and defined in an internal header.
#if defined(_WIN32) && defined(ZKOGL_SHARED)
#define ZK_EXPORTED __declspec(dllexport)
#define ZK_IMPORTED __declspec(dllimport)
#define ZK_INTERNAL
#elif defined(__GNUC__)
#define ZK_EXPORTED __attribute__((visibility("default")))
#define ZK_IMPORTED __attribute__((visibility("default")))
#define ZK_INTERNAL __attribute__((visibility("hidden")))
#else
#define ZK_EXPORTED
#define ZK_IMPORTED
#define ZK_INTERNAL
#endif

#ifdef ZKXYZ_BUILT
#define ZKXYZ_API ZK_EXPORTED
#else
#define ZKXYZ_API ZK_IMPORTED
#endif

#ifdef ZKMATH_BUILT
#define ZKMATH_API ZK_EXPORTED
#else
#define ZKMATH_API ZK_IMPORTED
#endif

#ifdef ZKXYARRAYS_BUILT
#define ZKXYARRAYS_API ZK_EXPORTED
#else
#define ZKXYARRAYS_API ZK_IMPORTED
#endif

#ifdef ZKHOST_BUILT
#define ZKHOST_API ZK_EXPORTED
#else
#define ZKHOST_API ZK_IMPORTED
#endif

#ifdef ZKCOMTYPES_BUILT
#define ZKCOMTYPES_API ZK_EXPORTED
#else
#define ZKCOMTYPES_API ZK_IMPORTED
#endif

#ifdef ZKDEVICE_BUILT
#define ZKDEVICE_API ZK_EXPORTED
#else
#define ZKDEVICE_API ZK_IMPORTED
#endif

#ifdef ZKOGLCANVAS_BUILT
#define ZKOGLCANVAS_API ZK_EXPORTED
#else
#define ZKOGLCANVAS_API ZK_IMPORTED
#endif

#ifdef ZKOGLTOOLS_BUILT
#define ZKOGLTOOLS_API ZK_EXPORTED
#else
#define ZKOGLTOOLS_API ZK_IMPORTED
#endif

#ifdef ZKOGLEXTOOLS_BUILT
#define ZKOGLEXTOOLS_API ZK_EXPORTED
#else
#define ZKOGLEXTOOLS_API ZK_IMPORTED
#endif

#ifdef ZKFORMS_BUILT
#define ZKFORMS_API ZK_EXPORTED
#else
#define ZKFORMS_API ZK_IMPORTED
#endif
