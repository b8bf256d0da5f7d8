#ifndef ZEANIMATIONCONFIG_H
#define ZEANIMATIONCONFIG_H

// Symbol visibility of the shared library. The library is built with hidden visibility: only the
// classes marked ZEANIMATION_EXPORT (the public API) are exported, nothing else is.
#if defined(_WIN32)
#if defined(zeAnimation_EXPORTS)
#define ZEANIMATION_EXPORT __declspec(dllexport)
#else
#define ZEANIMATION_EXPORT __declspec(dllimport)
#endif
#else
#define ZEANIMATION_EXPORT __attribute__((visibility("default")))
#endif

#endif // ZEANIMATIONCONFIG_H
