// Which bytes of each record the host leaves zero for the importer.
#pragma once

#include "probe/Fields.h"

namespace hostprobe {

enum class RecordKind {
    ImportInfo, Format, FileAccess, FileOpen, FileInfo, PixelFormat, Analysis, DataRateSize, DataRateSamples, Audio,
    AsyncCreation, SourceVideo, AsyncRequest
};

// Complains about the first promised byte that is not zero. `version` is the host's interface version: records grew.
void expectZeros(const std::string& call, RecordKind kind, const void* record, csSDK_int32 version);

}  // namespace hostprobe
