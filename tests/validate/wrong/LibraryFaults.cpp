#include "wrong/Fault.h"

#include "log/Log.h"

namespace wrong {

namespace {

const Fault kLibraryFaults[] = {
    {"leaks-suites", withHost({.releaseSuite = [](const char*, csSDK_int32) { return kSPNoError; }})},
    {"answers-every-selector", [](const Call& call) {
         const csSDK_int32 result = call.pass();
         return result == imUnsupported ? csSDK_int32{imNoErr} : result;
     }},
    {"answers-a-preferences-dialog", always(imGetPrefs8, imNoErr)},
    {"fills-what-it-refuses", before(imCopyFile, [](const Call& call) {
         if (call.param2) {
             static_cast<char*>(call.param2)[7] = 1;
         }
     })},
    {"asks-the-host-before-it-refuses", [](const Call& call) {
         const csSDK_int32 result = call.pass();
         if (result == imUnsupported) {
             call.stdParms->piSuites->utilFuncs->getSPBasicSuite();
         }
         return result;
     }},
    {"ends-its-log-at-shutdown", after(imShutdown, [](const Call&, csSDK_int32) {
         CloseLog();
         ConfigureLog("quorvane_pr_importer", false, false);
     })},
};

}  // namespace

std::span<const Fault> libraryFaults() { return kLibraryFaults; }

}  // namespace wrong
