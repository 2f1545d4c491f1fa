// What libc++ needs that Wine's header lacks: most functions of `long double`, and the classifications as functions.
#pragma once
#include_next <math.h>

extern "C" {
double erfc(double);
double fma(double, double, double);
double nan(const char*);
double nexttoward(double, long double);
float erfcf(float);
float fmaf(float, float, float);
float nanf(const char*);
float nexttowardf(float, long double);

#define OF_ONE(name) long double name(long double);
OF_ONE(acosl) OF_ONE(acoshl) OF_ONE(asinl) OF_ONE(asinhl) OF_ONE(atanl) OF_ONE(atanhl) OF_ONE(cbrtl) OF_ONE(ceill)
OF_ONE(cosl) OF_ONE(coshl) OF_ONE(erfl) OF_ONE(erfcl) OF_ONE(expl) OF_ONE(exp2l) OF_ONE(expm1l) OF_ONE(fabsl)
OF_ONE(floorl) OF_ONE(lgammal) OF_ONE(logl) OF_ONE(log10l) OF_ONE(log1pl) OF_ONE(log2l) OF_ONE(logbl)
OF_ONE(nearbyintl) OF_ONE(rintl) OF_ONE(roundl) OF_ONE(sinl) OF_ONE(sinhl) OF_ONE(sqrtl) OF_ONE(tanl) OF_ONE(tanhl)
OF_ONE(tgammal) OF_ONE(truncl)
#undef OF_ONE

#define OF_TWO(name) long double name(long double, long double);
OF_TWO(atan2l) OF_TWO(copysignl) OF_TWO(fdiml) OF_TWO(fmaxl) OF_TWO(fminl) OF_TWO(fmodl) OF_TWO(hypotl)
OF_TWO(nextafterl) OF_TWO(nexttowardl) OF_TWO(powl) OF_TWO(remainderl)
#undef OF_TWO

long double fmal(long double, long double, long double);
long double frexpl(long double, int*);
long double ldexpl(long double, int);
long double modfl(long double, long double*);
long double nanl(const char*);
long double remquol(long double, long double, int*);
long double scalblnl(long double, long);
long double scalbnl(long double, int);
int ilogbl(long double);
long lrintl(long double);
long lroundl(long double);
long long llrintl(long double);
long long llroundl(long double);
}

#undef fpclassify
#undef isfinite
#undef isgreater
#undef isgreaterequal
#undef isinf
#undef isless
#undef islessequal
#undef islessgreater
#undef isnan
#undef isnormal
#undef isunordered
#undef signbit
#define CLASSIFY(type)                        \
    int fpclassify(type) noexcept;            \
    bool isfinite(type) noexcept;             \
    bool isgreater(type, type) noexcept;      \
    bool isgreaterequal(type, type) noexcept; \
    bool isinf(type) noexcept;                \
    bool isless(type, type) noexcept;         \
    bool islessequal(type, type) noexcept;    \
    bool islessgreater(type, type) noexcept;  \
    bool isnan(type) noexcept;                \
    bool isnormal(type) noexcept;             \
    bool isunordered(type, type) noexcept;    \
    bool signbit(type) noexcept;
CLASSIFY(float)
CLASSIFY(double)
CLASSIFY(long double)
#undef CLASSIFY
