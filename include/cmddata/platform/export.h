// Export macro: classes leave the shared library whole, on every platform.
#pragma once

#if defined(_WIN32)
#if defined(CMDDATA_BUILDING)
#define CMDDATA_API __declspec(dllexport)
#elif defined(CMDDATA_STATIC)
#define CMDDATA_API
#else
#define CMDDATA_API __declspec(dllimport)
#endif
#else
#define CMDDATA_API __attribute__((visibility("default")))
#endif

// Left out of the exports though the class is exported: templates that only the library itself
// instantiates (field lists, the class-list check). A DLL exports only what is marked.
#if defined(__GNUC__) && !defined(_WIN32)
#define CMDDATA_LOCAL __attribute__((visibility("hidden")))
#else
#define CMDDATA_LOCAL
#endif

// The calling convention of the C interface: stated for 32-bit Windows, where compilers differ
// in their default; elsewhere there is only one.
#if defined(_WIN32) && !defined(_WIN64)
#define CMDDATA_CDECL __cdecl
#else
#define CMDDATA_CDECL
#endif

// Inlined whatever the compiler's estimate: the transfers of a field, and the list algorithms a
// processor runs over its cursor (a call would take the cursor's address, and the compiler would
// then keep it in memory for every item instead of in registers).
#if defined(__GNUC__)
#define CMDDATA_ALWAYS_INLINE inline __attribute__((always_inline))
#else
#define CMDDATA_ALWAYS_INLINE inline
#endif
