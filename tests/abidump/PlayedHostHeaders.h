// Imitates the host's headers: our own, but with other names for some tables and records, as the host may have, and
// without one member.
#pragma once

#define PlugMemoryFuncs PlayedMemoryTable
#define PlugUtilFuncs PlayedUtilityTable
#define ClassDataFuncs PlayedClassTable
#define matColRec PlayedColor
#define imAudioInfoRec7 PlayedSound
#define imRenderContext PlayedRenderContext
#define alwaysUnquiet alwaysLoud

#include "sdk/SdkAsyncImporter.h"

#undef PlugMemoryFuncs
#undef PlugUtilFuncs
#undef ClassDataFuncs
#undef matColRec
#undef imAudioInfoRec7
#undef imRenderContext
#undef alwaysUnquiet

#define IMPORTMOD_VERSION 18
