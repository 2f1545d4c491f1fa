// Compiler attributes of the log's functions.
#pragma once

// Checks the arguments of printf-style functions: `formatIndex` counts parameters from 1, including the object of a
// member function.
// LOG_RARELY_CALLED moves calls, and the code that builds their arguments, away from the surrounding code, so that a
// log that is off takes no space in the instruction cache.
#if defined(__MINGW32__) && !defined(__clang__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(gnu_printf, formatIndex, firstArgument)))
#define LOG_RARELY_CALLED __attribute__((cold))
#elif defined(__GNUC__) || defined(__clang__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#define LOG_RARELY_CALLED __attribute__((cold))
#else
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument)
#define LOG_RARELY_CALLED
#endif
