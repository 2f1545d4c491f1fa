// The plug-in's deinterleaving code for processors without SSE2, under other names.
#include <algorithm>
#include <array>
#include <cstring>

#undef __SSE2__
#undef _M_X64
#define deinterleave32 portableDeinterleave32
#define makeSigned8 portableMakeSigned8
#define silence portableSilence
#include "importer/Deinterleave.cpp"
