#pragma once

/// What every public header needs: the export mark, the printf check and the library's version.

#define PLX_VERSION_MAJOR 0
#define PLX_VERSION_MINOR 1
#define PLX_VERSION_PATCH 0
#define PLX_VERSION "0.1.0"

#if defined(_WIN32)
#if defined(PLXUTILS_BUILD)
#define PLX_EXPORT __declspec(dllexport)
#else
#define PLX_EXPORT __declspec(dllimport)
#endif
#else
#define PLX_EXPORT __attribute__((visibility("default")))
#endif

/// Lets the compiler check the arguments of a printf-style function: 1-based positions of the format and of
/// the first argument (a member function counts its object as 1).
#if defined(__MINGW32__) && defined(__GNUC__) && !defined(__clang__)
#define PLX_PRINTF(fmt, args) __attribute__((format(gnu_printf, fmt, args)))
#elif defined(__GNUC__) || defined(__clang__)
#define PLX_PRINTF(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define PLX_PRINTF(fmt, args)
#endif
