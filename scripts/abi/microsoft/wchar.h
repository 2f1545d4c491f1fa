// What libc++ needs that Wine's header lacks.
#pragma once
#include_next <wchar.h>
#include <stdlib.h>
extern "C" {
long double wcstold(const wchar_t*, wchar_t**);
errno_t wcrtomb_s(size_t*, char*, size_t, wchar_t, mbstate_t*);
}
