// Plug-ins whose guard against exceptions is wrong.
#include "wrong/ChangedSuite.h"
#include "wrong/Fault.h"

#include <stdexcept>
#include <string>

namespace wrong {

namespace {

// --- Answers ----------------------------------------------------------------------------------------------------

csSDK_int32 letsExceptionsOut(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (result == kExceptionResult) {
        throw std::runtime_error("nobody caught this");
    }
    return result;
}

csSDK_int32 swallowsExceptions(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return result == kExceptionResult ? csSDK_int32{imNoErr} : result;
}

csSDK_int32 catchesEverything(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    try {
        return right(selector, stdParms, param1, param2);
    } catch (...) {
        return kExceptionResult;
    }
}

// --- Events -----------------------------------------------------------------------------------------------------

prSuiteError (*trueSend)(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) = nullptr;

template <prSuiteError (*send)(csSDK_uint32, prUTF16Char*, prUTF16Char*)>
SPErr acquireWithSend(const char* name, csSDK_int32 version, const void** suite) {
    static PrSDKErrorSuite3 table;
    return acquireChanged<PrSDKErrorSuite3>(name, version, suite, kPrSDKErrorSuite, table,
                                            [](PrSDKErrorSuite3& errors) {
                                                trueSend = errors.SetEventStringUnicode;
                                                errors.SetEventStringUnicode = send;
                                            });
}

template <prSuiteError (*send)(csSDK_uint32, prUTF16Char*, prUTF16Char*)>
csSDK_int32 sends(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.acquireSuite = acquireWithSend<send>}, selector, stdParms, param1, param2);
}

prSuiteError nothing(csSDK_uint32, prUTF16Char*, prUTF16Char*) { return 0; }

prSuiteError twice(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    trueSend(type, title, text);
    return trueSend(type, title, text);
}

prSuiteError asAWarning(csSDK_uint32, prUTF16Char* title, prUTF16Char* text) { return trueSend(2, title, text); }

prSuiteError underAnotherTitle(csSDK_uint32 type, prUTF16Char*, prUTF16Char* text) {
    prUTF16Char title[] = u"An importer";
    return trueSend(type, title, text);
}

prSuiteError withAShortText(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    constexpr std::size_t kRoom = 200;
    std::u16string shortened = std::u16string(text).substr(0, kRoom);
    return trueSend(type, title, shortened.data());
}

prSuiteError withPlainLetters(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    std::u16string plain = text;
    for (char16_t& letter : plain) {
        letter = letter < 128 ? letter : u'?';
    }
    return trueSend(type, title, plain.data());
}

prSuiteError withoutTheReason(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* text) {
    std::u16string shortened = text;
    shortened.resize(std::min(shortened.size(), shortened.find(u"): ") + 3));
    return trueSend(type, title, shortened.data());
}

// Tells the host also when it was not started, with a suite that it takes for that.
csSDK_int32 tellsAtAnyTime(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (result == kExceptionResult && selector == imGetSubTypeNames) {
        SPBasicSuite* basic = stdParms->piSuites->utilFuncs->getSPBasicSuite();
        const void* suite = nullptr;
        if (basic->AcquireSuite(kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3, &suite) == kSPNoError) {
            prUTF16Char text[] = u"Something went wrong.";
            static_cast<const PrSDKErrorSuite3*>(suite)->SetEventStringUnicode(3, text, text);
            basic->ReleaseSuite(kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3);
        }
    }
    return result;
}

// --- Frames -----------------------------------------------------------------------------------------------------

prSuiteError disposeNothing(PPixHand) { return 0; }

SPErr acquireWithoutDisposal(const char* name, csSDK_int32 version, const void** suite) {
    static PrSDKPPixSuite table;
    return acquireChanged<PrSDKPPixSuite>(name, version, suite, kPrSDKPPixSuite, table,
                                          [](PrSDKPPixSuite& frames) { frames.Dispose = disposeNothing; });
}

csSDK_int32 keepsFailedFrames(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.acquireSuite = acquireWithoutDisposal}, selector, stdParms, param1, param2);
}

constexpr Fault kExceptionFaults[] = {
    {"lets-exceptions-out", letsExceptionsOut},
    {"swallows-exceptions", swallowsExceptions},
    {"catches-everything", catchesEverything},
    {"tells-nothing", sends<nothing>},
    {"tells-twice", sends<twice>},
    {"tells-as-a-warning", sends<asAWarning>},
    {"tells-under-another-title", sends<underAnotherTitle>},
    {"tells-a-short-text", sends<withAShortText>},
    {"tells-in-plain-letters", sends<withPlainLetters>},
    {"tells-without-the-reason", sends<withoutTheReason>},
    {"tells-at-any-time", tellsAtAnyTime},
    {"keeps-failed-frames", keepsFailedFrames},
};

}  // namespace

std::span<const Fault> exceptionFaults() { return kExceptionFaults; }

}  // namespace wrong
