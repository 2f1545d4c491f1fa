// What libc++ and the importer need that Wine's header lacks.
#pragma once
#include_next <time.h>
#define TIME_UTC 1
extern "C" {
struct timespec {
    time_t tv_sec;
    long tv_nsec;
};
int timespec_get(timespec*, int);
size_t _strftime_l(char*, size_t, const char*, const tm*, _locale_t);
}
inline errno_t localtime_s(tm* local, const time_t* time) { return _localtime64_s(local, time); }
