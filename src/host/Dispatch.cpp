#include "host/Dispatch.h"

#include "host/ModuleSelectors.h"
#include "host/ModuleState.h"
#include "host/Vocabulary.h"
#include "importer/FormatDescription.h"
#include "log/Log.h"

#include <cstdint>

namespace {

// An integer that the host passes in place of a pointer.
csSDK_uint32 integerOf(void* parameter) {
    return static_cast<csSDK_uint32>(reinterpret_cast<std::uintptr_t>(parameter));
}

// A host that names no importer gets an error, and nothing is touched.
csSDK_int32 withoutImporter(csSDK_int32 result) {
    Log("ERROR: the host gave no importer");
    return result;
}

template <class Handler, class... Arguments>
csSDK_int32 callImporter(void* privateData, Handler handler, Arguments... arguments) {
    if (privateData == nullptr) {
        return withoutImporter(imOtherErr);
    }
    return (static_cast<QuorvaneImporter*>(privateData)->*handler)(arguments...);
}

csSDK_int32 quietFile(imFileRef* fileRef, void* privateData) {
    return privateData != nullptr ? static_cast<QuorvaneImporter*>(privateData)->OnQuietFile(fileRef) : withoutImporter(imNoErr);
}

csSDK_int32 closeFile(imFileRef* fileRef, void* privateData) {
    return privateData != nullptr ? OnCloseFile(fileRef, static_cast<QuorvaneImporter*>(privateData))
                                  : withoutImporter(imNoErr);
}

csSDK_int32 callHandler(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    switch (selector) {
    case imInit: return OnInit(stdParms, static_cast<imImportInfoRec*>(param1));
    case imShutdown: return OnShutdown();
    case imGetSupports8: return malSupports8;
    case imGetIndFormat: return OnGetIndFormat(integerOf(param1), static_cast<imIndFormatRec*>(param2));
    case imGetSubTypeNames:
        return OnGetSubTypeNames(stdParms, integerOf(param1), static_cast<imSubTypeDescriptionRec**>(param2));

    case imOpenFile8:
        return OnOpenFile8(stdParms, static_cast<imFileRef*>(param1), static_cast<imFileOpenRec8*>(param2));
    case imQuietFile: return quietFile(static_cast<imFileRef*>(param1), param2);
    case imCloseFile: return closeFile(static_cast<imFileRef*>(param1), param2);

    case imGetInfo8: {
        auto* record = static_cast<imFileInfoRec8*>(param2);
        return callImporter(record->privatedata, &QuorvaneImporter::OnGetInfo8, record);
    }
    case imGetIndPixelFormat: {
        auto* record = static_cast<imIndPixelFormatRec*>(param2);
        return callImporter(record->privatedata, &QuorvaneImporter::OnGetIndPixelFormat, integerOf(param1), record);
    }
    case imAnalysis: {
        auto* record = static_cast<imAnalysisRec*>(param2);
        return callImporter(record->privatedata, &QuorvaneImporter::OnAnalysis, record);
    }
    case imDataRateAnalysis: {
        auto* record = static_cast<imDataRateAnalysisRec*>(param2);
        return callImporter(record->privatedata, &QuorvaneImporter::OnDataRateAnalysis, record);
    }
    case imGetSourceVideo: {
        auto* record = static_cast<imSourceVideoRec*>(param2);
        return callImporter(record->inPrivateData, &QuorvaneImporter::OnGetSourceVideo, record);
    }
    case imGetAudioChannelLayout: {
        auto* record = static_cast<imGetAudioChannelLayoutRec*>(param2);
        return callImporter(record->inPrivateData, &QuorvaneImporter::OnGetAudioChannelLayout, record);
    }
    case imImportAudio7: {
        auto* record = static_cast<imImportAudioRec7*>(param2);
        return callImporter(record->privateData, &QuorvaneImporter::OnImportAudio7, record);
    }
    case imCreateAsyncImporter: {
        auto* record = static_cast<imAsyncImporterCreationRec*>(param1);
        return record->inPrivateData != nullptr ? OnCreateAsyncImporter(stdParms, record) : withoutImporter(imOtherErr);
    }
    default: return imUnsupported;
    }
}

}  // namespace

csSDK_int32 DispatchSelector(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    // Looked at before it is written: a write would take the flag away from every other thread's cache.
    if (!moduleState.logSwitchRead.load(std::memory_order_relaxed) && !moduleState.logSwitchRead.exchange(true)) {
        ReadLogSwitch();
    }
    Log("----------------------");
    Log("[%s] (%d)", SelectorName(selector), selector);
    const csSDK_int32 result = callHandler(selector, stdParms, param1, param2);
    Log("    [%s] (%d)", ErrorName(result), result);
    return result;
}
