#include "wrong/Fault.h"

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

constexpr Fault kFaults[] = {
    {"leaks-suites", leaksSuites},
    {"answers-every-selector", answersEverySelector},
};

}  // namespace

std::span<const Fault> libraryFaults() { return kFaults; }

}  // namespace wrong
