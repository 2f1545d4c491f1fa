// What libc++ needs that Wine's header lacks.
#pragma once
#include_next <ctype.h>
#include <stdlib.h>
extern "C" {
const unsigned short* __pctype_func();
int ___mb_cur_max_l_func(_locale_t);
int _isalpha_l(int, _locale_t);
int _iscntrl_l(int, _locale_t);
int _isdigit_l(int, _locale_t);
int _islower_l(int, _locale_t);
int _isspace_l(int, _locale_t);
int _isupper_l(int, _locale_t);
int _isxdigit_l(int, _locale_t);
int _iswcntrl_l(wint_t, _locale_t);
int _iswxdigit_l(wint_t, _locale_t);
}
