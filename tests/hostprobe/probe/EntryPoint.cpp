// The exported entry: the order of calls and the standard parameters first, then the selector's own function.
#include "probe/CallOrder.h"
#include "probe/Complaints.h"
#include "probe/HostTables.h"
#include "probe/Names.h"
#include "probe/Selectors.h"

namespace hostprobe {

namespace {

csSDK_int32 numberIn(void* parameter) {
    return static_cast<csSDK_int32>(reinterpret_cast<std::uintptr_t>(parameter) & 0xFFFFFFFFu);
}

// Which parameters are addresses that must not be null.
bool needsFirst(csSDK_int32 selector) {
    return selector == imInit || selector == imQuietFile || selector == imCloseFile || selector == imOpenFile8 ||
           selector == imGetInfo8 || selector == imCreateAsyncImporter;
}

bool needsSecond(csSDK_int32 selector) {
    switch (selector) {
        case imGetIndFormat:
        case imGetSubTypeNames:
        case imGetIndPixelFormat:
        case imAnalysis:
        case imDataRateAnalysis:
        case imGetAudioChannelLayout:
        case imImportAudio7:
        case imGetSourceVideo:
        case imOpenFile8:
        case imGetInfo8: return true;
        default: return false;
    }
}

bool areThere(csSDK_int32 selector, const void* param1, const void* param2) {
    const std::string name = selectorName(selector);
    return expect(param1 || !needsFirst(selector), Sentence::ParameterMissing, {name, "the first parameter"}) &&
           expect(param2 || !needsSecond(selector), Sentence::ParameterMissing, {name, "the second parameter"});
}

csSDK_int32 dispatch(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    switch (selector) {
        case imInit: return onInit(param1);
        case imGetSupports8: return malSupports8;
        case imGetIndFormat: return onGetIndFormat(numberIn(param1), param2);
        case imGetSubTypeNames: return onGetSubTypeNames(stdParms, numberIn(param1), param2);
        case imOpenFile8: return onOpenFile(stdParms, param1, param2);
        case imQuietFile: return onQuietFile(param1, param2);
        case imCloseFile: return onCloseFile(param1, param2);
        case imGetInfo8: return onGetInfo(param1, param2);
        case imGetIndPixelFormat: return onGetIndPixelFormat(numberIn(param1), param2);
        case imAnalysis: return onAnalysis(param1, param2);
        case imDataRateAnalysis: return onDataRateAnalysis(param1, param2);
        case imGetAudioChannelLayout: return onGetAudioChannelLayout(param1, param2);
        case imImportAudio7: return onImportAudio(param1, param2);
        case imGetSourceVideo: return onGetSourceVideo(param1, param2);
        case imCreateAsyncImporter: return onCreateAsyncImporter(stdParms, param1);
        default: return imUnsupported;
    }
}

}  // namespace

}  // namespace hostprobe

extern "C" csSDK_int32 xImportEntry(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    using namespace hostprobe;
    const std::string name = selectorName(selector);
    const RunningCall running(name);
    if (!running.isAdmitted()) {
        return imOtherErr;
    }
    const bool isUsable = checkStdParms(name, stdParms) && areThere(selector, param1, param2);
    if (selector == imShutdown) {
        return onShutdown();        // the report is written even if something is missing
    }
    return isUsable ? dispatch(selector, stdParms, param1, param2) : imOtherErr;
}
