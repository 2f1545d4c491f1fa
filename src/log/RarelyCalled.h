// Keeps the calls of a function, with the making of their arguments, out of the way of the code around them: they lie
// apart, and a log that is off costs no room in the processor's cache.
#pragma once

#if defined(__GNUC__)
#define LOG_RARELY_CALLED __attribute__((cold))
#else
#define LOG_RARELY_CALLED
#endif
