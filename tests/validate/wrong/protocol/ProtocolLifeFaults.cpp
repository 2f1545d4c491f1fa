#include "wrong/Fault.h"

#include <map>
#include <string>
#include <vector>

namespace wrong {

namespace {

csSDK_int32 isAnotherClipWhenReopened(const Call& call) {
    auto& opened = call.record<imFileOpenRec8>();
    void* const before = opened.privatedata;
    opened.privatedata = nullptr;
    const csSDK_int32 result = call.pass();
    if (before) {
        imFileRef ended = imInvalidHandleValue();
        Call{imCloseFile, call.stdParms, &ended, before}.pass();
    }
    return result;
}

csSDK_int32 losesItsSoundWhenQuiet(const Call& call) {
    static bool isLost = false;
    isLost = isLost || call.selector == imQuietFile;
    const csSDK_int32 result = call.pass();
    if (call.selector == imGetInfo8 && isLost) {
        call.record<imFileInfoRec8>().hasAudio = 0;
    }
    return result;
}

csSDK_int32 keepsWhatAQuietClipHas(const Call& call) {
    static bool wasQuieted = false;
    static const Answer keeping = withHost({.releaseSuite = [](const char* name, csSDK_int32 version) {
        return wasQuieted ? kSPNoError : trueBasicSuite().ReleaseSuite(name, version);
    }});
    wasQuieted = call.selector == imQuietFile || (wasQuieted && call.selector == imCloseFile);
    return keeping(call);
}

csSDK_int32 refusesToCloseQuietClips(const Call& call) {
    const bool hasNoFile = *static_cast<imFileRef*>(call.param1) == imInvalidHandleValue();
    const csSDK_int32 result = call.pass();
    return hasNoFile ? csSDK_int32{imBadFile} : result;
}

// Describes the clip that was opened last, whichever is requested.
csSDK_int32 knowsOneClipOnly(const Call& call) {
    static std::vector<void*> clips;
    if (call.selector == imCloseFile) {
        std::erase(clips, call.param2);
    }
    const csSDK_int32 result = call.pass();
    if (call.selector == imOpenFile8 && result == imNoErr) {
        void* const opened = call.record<imFileOpenRec8>().privatedata;
        clips.push_back(opened);
    }
    if (call.selector != imGetInfo8) {
        return result;
    }
    auto& record = call.record<imFileInfoRec8>();
    void* const asked = record.privatedata;
    record.privatedata = clips.back();
    const csSDK_int32 otherResult = call.pass();
    record.privatedata = asked;
    return otherResult;
}

// One clip for all openings of a file, closed with the last of them.
csSDK_int32 sharesClipsOfAFile(const Call& call) {
    struct Shared {
        void* privateData = nullptr;
        int users = 0;
    };
    static std::map<std::u16string, Shared> clips;
    if (call.selector == imOpenFile8 && !call.record<imFileOpenRec8>().privatedata) {
        auto& record = call.record<imFileOpenRec8>();
        Shared& clip = clips[record.fileinfo.filepath];
        record.privatedata = clip.privateData;
        const csSDK_int32 result = call.pass();
        clip.privateData = record.privatedata;
        ++clip.users;
        return result;
    }
    if (call.selector == imCloseFile) {
        for (auto& [path, clip] : clips) {
            if (clip.privateData == call.param2 && --clip.users > 0) {
                return imNoErr;
            }
        }
        std::erase_if(clips, [&](const auto& entry) { return entry.second.privateData == call.param2; });
    }
    return call.pass();
}

const Fault kLifeFaults[] = {
    {"is-another-clip-when-reopened", on(imOpenFile8, isAnotherClipWhenReopened)},
    {"loses-its-sound-when-quiet", losesItsSoundWhenQuiet},
    {"keeps-what-a-quiet-clip-has", keepsWhatAQuietClipHas},
    {"refuses-to-close-quiet-clips", on(imCloseFile, refusesToCloseQuietClips)},
    {"knows-one-clip-only", knowsOneClipOnly},
    {"shares-clips-of-a-file", sharesClipsOfAFile},
};

}  // namespace

std::span<const Fault> lifeFaults() { return kLifeFaults; }

}  // namespace wrong
