#include "wrong/protocol/ProtocolFaults.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace wrong {

namespace {

constexpr std::uintptr_t kFileType = 0x41564956;

csSDK_int32 offersFormatsForEver(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return right(selector, stdParms, selector == imGetIndFormat ? nullptr : param1, param2);
}

csSDK_int32 countsFormatsFromBelow(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const auto index = static_cast<csSDK_int32>(reinterpret_cast<std::uintptr_t>(param1));
    const bool isNegative = selector == imGetIndFormat && index < 0;
    return right(selector, stdParms, isNegative ? nullptr : param1, param2);
}

csSDK_int32 changesItsName(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imGetIndFormat && result == imNoErr) {
        static_cast<imIndFormatRec*>(param2)->FormatName[9] = 'a';
    }
    return result;
}

// The first row of the list that a call gave, or null.
imSubTypeDescriptionRec* rowsOf(csSDK_int32 selector, void* param2) {
    return selector == imGetSubTypeNames ? *static_cast<imSubTypeDescriptionRec**>(param2) : nullptr;
}

csSDK_int32 listsASubtypeTwice(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (auto* rows = rowsOf(selector, param2)) {
        rows[1] = rows[0];
    }
    return result;
}

csSDK_int32 givesNamesWithoutAnEnd(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (auto* rows = rowsOf(selector, param2)) {
        std::fill(std::begin(rows->subTypeName), std::end(rows->subTypeName), u'x');
    }
    return result;
}

csSDK_int32 listsByFileType(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (auto* rows = rowsOf(selector, param2); rows && reinterpret_cast<std::uintptr_t>(param1) != kFileType) {
        rows->subTypeName[0] = u'q';
    }
    return result;
}

csSDK_int32 hasNoPriority(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imInit) {
        static_cast<imImportInfoRec*>(param1)->priority = 0;
    }
    return result;
}

csSDK_int32 isOfAnOldVersion(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return selector == imGetSupports8 ? csSDK_int32{imUnsupported} : right(selector, stdParms, param1, param2);
}

SPErr releaseAllButErrors(const char* name, csSDK_int32 version) {
    const bool isErrors = std::string_view(name) == "Premiere Error Suite";
    return isErrors ? SPErr{0} : trueBasicSuite()->ReleaseSuite(name, version);
}

// The suite's holder keeps the host that it got at its init, and is replaced at the next one.
csSDK_int32 keepsTheSuiteOfEachInit(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return rightWithHost({.releaseSuite = releaseAllButErrors}, selector, stdParms, param1, param2);
}

constexpr Fault kStartFaults[] = {
    {"offers-formats-for-ever", offersFormatsForEver},
    {"counts-formats-from-below", countsFormatsFromBelow},
    {"changes-its-name", changesItsName},
    {"lists-a-subtype-twice", listsASubtypeTwice},
    {"gives-names-without-an-end", givesNamesWithoutAnEnd},
    {"lists-by-file-type", listsByFileType},
    {"has-no-priority", hasNoPriority},
    {"is-of-an-old-version", isOfAnOldVersion},
    {"keeps-the-suite-of-each-init", keepsTheSuiteOfEachInit},
};

}  // namespace

std::span<const Fault> startFaults() { return kStartFaults; }

}  // namespace wrong
