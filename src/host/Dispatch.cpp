#include "host/Dispatch.h"

#include "host/ModuleSelectors.h"
#include "host/ModuleState.h"
#include "host/Vocabulary.h"
#include "importer/FormatDescription.h"
#include "log/Log.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <type_traits>

namespace {

struct Call {
    imStdParms* stdParms;
    void* param1;
    void* param2;
    QuorvaneImporter* importer;   // the object the call is for, found as the row says
};

// A handler's argument, by its type: most are records, in the call's second parameter.
template <class T>
T argument(const Call& call) {
    if constexpr (std::is_same_v<T, const imStdParms*>) {
        return call.stdParms;
    } else if constexpr (std::is_same_v<T, QuorvaneImporter*>) {
        return call.importer;
    } else if constexpr (std::is_integral_v<T>) {   // passed in place of a pointer
        return static_cast<T>(reinterpret_cast<std::uintptr_t>(call.param1));
    } else if constexpr (std::is_same_v<T, imFileRef*> || std::is_same_v<T, imImportInfoRec*> ||
                         std::is_same_v<T, imAsyncImporterCreationRec*>) {
        return static_cast<T>(call.param1);
    } else {
        return static_cast<T>(call.param2);
    }
}

template <class... Arguments>
csSDK_int32 run(csSDK_int32 (*handler)(Arguments...), const Call& call) {
    return handler(argument<Arguments>(call)...);
}
template <class... Arguments>
csSDK_int32 run(csSDK_int32 (QuorvaneImporter::*handler)(Arguments...), const Call& call) {
    return (call.importer->*handler)(argument<Arguments>(call)...);
}
template <auto handler>
csSDK_int32 on(const Call& call) {
    return run(handler, call);
}

using Importer = QuorvaneImporter;

constexpr void* Call::*kNone = nullptr;   // no importer is needed
constexpr std::size_t kItself = static_cast<std::size_t>(-1);

// A selector, the parameter that names its importer, where in that record, and the handler. Frames and sound come
// first: they are called most.
constexpr struct Row {
    csSDK_int32 selector;
    void* Call::*parameter;
    std::size_t offset;
    csSDK_int32 (*handler)(const Call& call);
} kRows[] = {
    {imGetSourceVideo, &Call::param2, offsetof(imSourceVideoRec, inPrivateData), on<&Importer::OnGetSourceVideo>},
    {imImportAudio7, &Call::param2, offsetof(imImportAudioRec7, privateData), on<&Importer::OnImportAudio7>},
    {imInit, kNone, 0, on<OnInit>},
    {imShutdown, kNone, 0, on<OnShutdown>},
    {imQuietFile, &Call::param2, kItself, on<&Importer::OnQuietFile>},
    {imCloseFile, &Call::param2, kItself, on<OnCloseFile>},
    {imAnalysis, &Call::param2, offsetof(imAnalysisRec, privatedata), on<&Importer::OnAnalysis>},
    {imDataRateAnalysis, &Call::param2, offsetof(imDataRateAnalysisRec, privatedata),
     on<&Importer::OnDataRateAnalysis>},
    {imGetIndFormat, kNone, 0, on<OnGetIndFormat>},
    {imGetIndPixelFormat, &Call::param2, offsetof(imIndPixelFormatRec, privatedata),
     on<&Importer::OnGetIndPixelFormat>},
    {imGetSupports8, kNone, 0, [](const Call&) -> csSDK_int32 { return malSupports8; }},
    {imGetInfo8, &Call::param2, offsetof(imFileInfoRec8, privatedata), on<&Importer::OnGetInfo8>},
    {imOpenFile8, kNone, 0, on<OnOpenFile8>},   // the importer in its record may be null
    {imCreateAsyncImporter, &Call::param1, offsetof(imAsyncImporterCreationRec, inPrivateData),
     on<OnCreateAsyncImporter>},
    {imGetSubTypeNames, kNone, 0, on<OnGetSubTypeNames>},
    {imGetAudioChannelLayout, &Call::param2, offsetof(imGetAudioChannelLayoutRec, inPrivateData),
     on<&Importer::OnGetAudioChannelLayout>},
};

csSDK_int32 callHandler(const Row& row, Call call) {
    if (row.parameter != kNone) {
        void* importer = call.*row.parameter;
        if (row.offset != kItself) {
            std::memcpy(&importer, static_cast<const char*>(importer) + row.offset, sizeof importer);
        }
        if (importer == nullptr) {
            Log("ERROR: the host gave no importer");
            return row.offset == kItself ? imNoErr : imOtherErr;   // a file that is not open need not be closed
        }
        call.importer = static_cast<QuorvaneImporter*>(importer);
    }
    return row.handler(call);
}

}  // namespace

csSDK_int32 DispatchSelector(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    // Look before writing: a write would take the cache line away from every other thread.
    if (!moduleState.logSwitchRead.load(std::memory_order_relaxed) && !moduleState.logSwitchRead.exchange(true)) {
        ReadLogSwitch();
    }
    Log("----------------------");
    Log("[%s] (%d)", SelectorName(selector), selector);
    const Row* row = std::ranges::find(kRows, selector, &Row::selector);
    const csSDK_int32 result =
        row != std::end(kRows) ? callHandler(*row, {stdParms, param1, param2, nullptr}) : imUnsupported;
    Log("    [%s] (%d)", ErrorName(result), result);
    return result;
}
