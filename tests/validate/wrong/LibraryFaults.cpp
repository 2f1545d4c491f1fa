#include "wrong/Fault.h"

#include "log/Log.h"

namespace wrong {

namespace {

SPErr releaseNothing(const char*, csSDK_int32) { return 0; }

csSDK_int32 leaksSuites(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.releaseSuite = releaseNothing}, selector, stdParms, param1, param2);
}

csSDK_int32 answersEverySelector(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return result == imUnsupported ? imNoErr : result;
}

csSDK_int32 answersPreferences(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return selector == imGetPrefs8 ? csSDK_int32{imNoErr} : right(selector, stdParms, param1, param2);
}

csSDK_int32 fillsWhatItRefuses(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector == imCopyFile && param2) {
        static_cast<char*>(param2)[7] = 1;
    }
    return right(selector, stdParms, param1, param2);
}

csSDK_int32 asksBeforeItRefuses(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (result == imUnsupported) {
        stdParms->piSuites->utilFuncs->getSPBasicSuite();
    }
    return result;
}

csSDK_int32 endsItsLogAtShutdown(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imShutdown) {
        CloseLog();
        ConfigureLog("quorvane_pr_importer", false, false);
    }
    return result;
}

constexpr Fault kLibraryFaults[] = {
    {"leaks-suites", leaksSuites},
    {"answers-every-selector", answersEverySelector},
    {"answers-a-preferences-dialog", answersPreferences},
    {"fills-what-it-refuses", fillsWhatItRefuses},
    {"asks-the-host-before-it-refuses", asksBeforeItRefuses},
    {"ends-its-log-at-shutdown", endsItsLogAtShutdown},
};

}  // namespace

std::span<const Fault> libraryFaults() { return kLibraryFaults; }

}  // namespace wrong
