// What compilers are told of the log's functions.
#pragma once

// The arguments of a printf-style function are checked: `formatIndex` counts its parameters from 1, the object of a
// member function first.
// LOG_RARELY_CALLED keeps calls, with the making of their arguments, out of the way of the code around them: they lie
// apart, and a log that is off costs no room in the processor's cache.
#if defined(__MINGW32__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(gnu_printf, formatIndex, firstArgument)))
#define LOG_RARELY_CALLED __attribute__((cold))
#elif defined(__GNUC__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#define LOG_RARELY_CALLED __attribute__((cold))
#else
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument)
#define LOG_RARELY_CALLED
#endif
