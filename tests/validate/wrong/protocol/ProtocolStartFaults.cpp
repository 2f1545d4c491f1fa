#include "wrong/Fault.h"

#include <algorithm>

namespace wrong {

namespace {

constexpr csSDK_int32 kFileType = 0x41564956;

// Changes each list of subtypes that the real plug-in returns.
Answer subTypes(void (*change)(imSubTypeDescriptionRec* rows, csSDK_int32 fileType)) {
    return after(imGetSubTypeNames, [=](const Call& call, csSDK_int32) {
        if (auto* rows = *static_cast<imSubTypeDescriptionRec**>(call.param2)) {
            change(rows, call.index());
        }
    });
}

// The suite's holder keeps the host of its init, and is replaced at the next one.
SPErr releaseAllButErrors(const char* name, csSDK_int32 version) {
    return std::string_view(name) == kPrSDKErrorSuite ? kSPNoError : trueBasicSuite().ReleaseSuite(name, version);
}

const Fault kStartFaults[] = {
    {"offers-formats-for-ever", on(imGetIndFormat, [](const Call& call) {
         return call.passWith(nullptr, call.param2);
     })},
    {"counts-formats-from-below", on(imGetIndFormat, [](const Call& call) {
         return call.index() < 0 ? call.passWith(nullptr, call.param2) : call.pass();
     })},
    {"changes-its-name", after(imGetIndFormat, [](const Call& call, csSDK_int32 result) {
         if (result == imNoErr) {
             call.record<imIndFormatRec>().FormatName[9] = 'a';
         }
     })},
    {"lists-a-subtype-twice", subTypes([](imSubTypeDescriptionRec* rows, csSDK_int32) { rows[1] = rows[0]; })},
    {"gives-names-without-an-end", subTypes([](imSubTypeDescriptionRec* rows, csSDK_int32) {
         std::fill(std::begin(rows->subTypeName), std::end(rows->subTypeName), u'x');
     })},
    {"lists-by-file-type", subTypes([](imSubTypeDescriptionRec* rows, csSDK_int32 fileType) {
         rows->subTypeName[0] = fileType == kFileType ? rows->subTypeName[0] : u'q';
     })},
    {"has-no-priority", after(imInit, [](const Call& call, csSDK_int32) {
         static_cast<imImportInfoRec*>(call.param1)->priority = 0;
     })},
    {"is-of-an-old-version", always(imGetSupports8, imUnsupported)},
    {"keeps-the-suite-of-each-init", withHost({.releaseSuite = releaseAllButErrors})},
};

}  // namespace

std::span<const Fault> startFaults() { return kStartFaults; }

}  // namespace wrong
