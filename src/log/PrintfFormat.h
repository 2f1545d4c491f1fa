// Has the compiler check the arguments of a printf-style function: `formatIndex` counts its parameters from 1, the
// object of a member function first.
#pragma once

#if defined(__MINGW32__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(gnu_printf, formatIndex, firstArgument)))
#elif defined(__GNUC__)
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define LOG_PRINTF_FORMAT(formatIndex, firstArgument)
#endif
