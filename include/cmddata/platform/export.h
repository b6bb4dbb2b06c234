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
