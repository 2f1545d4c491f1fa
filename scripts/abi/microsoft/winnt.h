// clang has the function as a builtin and accepts no other of its name.
#pragma once
#define _InterlockedCompareExchange128 winesInterlockedCompareExchange128
#include_next <winnt.h>
#undef _InterlockedCompareExchange128
