// The plug-in's copy of sound as a processor without SSE2 gets it, under names of its own.
#include <algorithm>
#include <array>
#include <cstring>

#undef __SSE2__
#undef _M_X64
#define deinterleave32 portableDeinterleave32
#define makeSigned8 portableMakeSigned8
#define silence portableSilence
#include "importer/Deinterleave.cpp"
