// What libc++ needs that Wine's header lacks.
#pragma once
#include_next <stdlib.h>
extern "C" {
int ___mb_cur_max_func();
int* __sys_nerr();
double _strtod_l(const char*, char**, _locale_t);
float _strtof_l(const char*, char**, _locale_t);
}
#define MB_CUR_MAX ___mb_cur_max_func()
#define _sys_nerr (*__sys_nerr())
