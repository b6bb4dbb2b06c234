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

// The calling convention of the C interface: stated for 32-bit Windows, where compilers differ
// in their default; elsewhere there is only one.
#if defined(_WIN32) && !defined(_WIN64)
#define CMDDATA_CDECL __cdecl
#else
#define CMDDATA_CDECL
#endif
