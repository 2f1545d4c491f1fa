#include "probe/RecordPromises.h"

#include "probe/Complaints.h"

#include <algorithm>

namespace hostprobe {

namespace {

struct ZeroBytes {
    RecordKind kind;
    std::size_t first;
    std::size_t end;                    // one past the last
    csSDK_int32 since = 0;              // the interface version that has them
};

// The gaps hold what a host sends: numbers and pointers of its own, buffers, and the importer's private data.
// Preferences and profiles are zero because this importer has none.
constexpr ZeroBytes kZeroBytes[] = {
    {RecordKind::ImportInfo, 4, 193},           // all abilities are preset to "no"

    {RecordKind::Format, 0, 764},

    {RecordKind::FileAccess, 28, 36},
    {RecordKind::FileOpen, 28, 36},             // the new file name
    {RecordKind::FileOpen, 44, 48},             // delegate type
    {RecordKind::FileOpen, 56, 64},             // memory usage

    {RecordKind::FileInfo, 0, 46},              // up to the importer's number
    {RecordKind::FileInfo, 50, 198},            // up to the private data
    {RecordKind::FileInfo, 206, 215},           // preferences, up to the stream
    {RecordKind::FileInfo, 219, 732},           // up to the session's number
    {RecordKind::FileInfo, 736, 4836},          // up to the order about growing files
    {RecordKind::FileInfo, 4837, 5373},
    {RecordKind::FileInfo, 5373, 5376, IMPORTMOD_VERSION_23},

    {RecordKind::PixelFormat, 8, 20},
    {RecordKind::Analysis, 8, 16},
    {RecordKind::DataRateSize, 8, 32},
    {RecordKind::DataRateSamples, 8, 16},
    {RecordKind::DataRateSamples, 28, 32},
    {RecordKind::Audio, 28, 36},
    {RecordKind::AsyncCreation, 8, 32},

    {RecordKind::SourceVideo, 33, 36},
    {RecordKind::SourceVideo, 44, 72},
    {RecordKind::SourceVideo, 96, 112, IMPORTMOD_VERSION_23},

    {RecordKind::AsyncRequest, 8, 12},
    {RecordKind::AsyncRequest, 45, 48},
    {RecordKind::AsyncRequest, 56, 84},
    {RecordKind::AsyncRequest, 108, 124, IMPORTMOD_VERSION_23},
};

}  // namespace

void expectZeros(const std::string& call, RecordKind kind, const void* record, csSDK_int32 version) {
    const char* bytes = static_cast<const char*>(record);
    for (const ZeroBytes& row : kZeroBytes) {
        if (row.kind != kind || version < row.since) {
            continue;
        }
        const char* found = std::find_if(bytes + row.first, bytes + row.end, [](char byte) { return byte != 0; });
        if (!expect(found == bytes + row.end, Sentence::NotZero, {call, std::to_string(found - bytes)})) {
            return;
        }
    }
}

}  // namespace hostprobe
