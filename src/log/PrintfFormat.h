// Has the compiler check the arguments of a printf-style function: `formatIndex` counts its parameters from 1, the
// object of a member function first.
//
// LOG_RARELY_CALLED keeps the calls of a function, with the making of their arguments, out of the way of the code
// around them: they lie apart, and a log that is off costs no room in the processor's cache.
#pragma once

#if defined(__MINGW32__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(gnu_printf, formatIndex, firstArgument)))
#elif defined(__GNUC__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument)
#endif

#if defined(__GNUC__)
#define LOG_RARELY_CALLED __attribute__((cold))
#else
#define LOG_RARELY_CALLED
#endif
