#include "wrong/Fault.h"

namespace wrong {

namespace {

// Frames come from the clip that was opened last.
csSDK_int32 mixesUpClips(const Call& call) {
    static void* latest = nullptr;
    if (call.selector == imGetSourceVideo && latest) {
        auto record = call.record<imSourceVideoRec>();
        record.inPrivateData = latest;
        return call.passWith(call.param1, &record);
    }
    const csSDK_int32 result = call.pass();
    if (call.selector == imGetInfo8 && result == imNoErr) {
        latest = call.record<imFileInfoRec8>().privatedata;
    }
    if (call.selector == imCloseFile && latest == call.param2) {
        latest = nullptr;
    }
    return result;
}

// A quiet clip that is opened again is described by another stream than before.
csSDK_int32 forgetsTheStream(const Call& call) {
    auto& opened = call.record<imFileOpenRec8>();
    const bool isQuiet = opened.privatedata != nullptr;
    const csSDK_int32 result = call.pass();
    if (isQuiet && result == imNoErr) {
        imFileInfoRec8 info{};
        info.privatedata = opened.privatedata;
        info.streamIdx = 1;
        Call{imGetInfo8, call.stdParms, nullptr, &info}.pass();
    }
    return result;
}

const Fault kStateFaults[] = {
    {"mixes-up-clips", mixesUpClips},
    {"forgets-the-stream", on(imOpenFile8, forgetsTheStream)},
    {"starts-sound-anew", on(imImportAudio7, [](const Call& call) {
         auto record = call.record<imImportAudioRec7>();
         record.position = record.position < 0 ? 0 : record.position;
         return call.passWith(call.param1, &record);
     })},
    // What the first start set up is gone after the shutdown, and a later start does not bring it back.
    {"works-once", [isOver = false](const Call& call) mutable {
         isOver = isOver || call.selector == imShutdown;
         return isOver && call.selector == imOpenFile8 ? csSDK_int32{imBadFile} : call.pass();
     }},
    {"keeps-a-suite-at-the-second-start", before(imInit, [starts = 0](const Call& call) mutable {
         if (++starts == 2) {
             leakSuite(call);
         }
     })},
};

}  // namespace

std::span<const Fault> stateFaults() { return kStateFaults; }

}  // namespace wrong
