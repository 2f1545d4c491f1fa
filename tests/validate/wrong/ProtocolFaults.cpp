#include "wrong/Fault.h"

namespace wrong {

namespace {

csSDK_int32 offersFormatsForEver(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return right(selector, stdParms, selector == imGetIndFormat ? nullptr : param1, param2);
}

csSDK_int32 refusesEveryFile(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return selector == imOpenFile8 ? csSDK_int32{imBadFile} : right(selector, stdParms, param1, param2);
}

constexpr Fault kFaults[] = {
    {"offers-formats-for-ever", offersFormatsForEver},
    {"refuses-every-file", refusesEveryFile},
};

}  // namespace

std::span<const Fault> protocolFaults() { return kFaults; }

}  // namespace wrong
