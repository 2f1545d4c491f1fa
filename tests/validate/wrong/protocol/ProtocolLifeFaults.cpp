#include "wrong/protocol/ProtocolFaults.h"

#include <map>
#include <string>
#include <vector>

namespace wrong {

namespace {

imFileOpenRec8& openIn(void* param2) { return *static_cast<imFileOpenRec8*>(param2); }

csSDK_int32 isAnotherClipWhenReopened(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector != imOpenFile8 || !openIn(param2).privatedata) {
        return right(selector, stdParms, param1, param2);
    }
    void* const before = openIn(param2).privatedata;
    openIn(param2).privatedata = nullptr;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    imFileRef ended = imInvalidHandleValue();
    right(imCloseFile, stdParms, &ended, before);
    return result;
}

csSDK_int32 losesItsSoundWhenQuiet(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static bool isLost = false;
    isLost = isLost || selector == imQuietFile;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imGetInfo8 && isLost) {
        static_cast<imFileInfoRec8*>(param2)->hasAudio = 0;
    }
    return result;
}

bool wasQuieted = false;

SPErr releaseUnlessQuiet(const char* name, csSDK_int32 version) {
    return wasQuieted ? SPErr{0} : trueBasicSuite()->ReleaseSuite(name, version);
}

csSDK_int32 keepsWhatAQuietClipHas(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    wasQuieted = selector == imQuietFile || (wasQuieted && selector == imCloseFile);
    return rightWithHost({.releaseSuite = releaseUnlessQuiet}, selector, stdParms, param1, param2);
}

csSDK_int32 refusesToCloseQuietClips(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const bool hasNoFile = selector == imCloseFile && *static_cast<imFileRef*>(param1) == imInvalidHandleValue();
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return hasNoFile ? csSDK_int32{imBadFile} : result;
}

// Describes the clip that was opened last, whichever is asked for.
csSDK_int32 knowsOneClipOnly(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static std::vector<void*> clips;
    if (selector == imCloseFile) {
        std::erase(clips, param2);
    }
    if (selector != imGetInfo8) {
        const csSDK_int32 result = right(selector, stdParms, param1, param2);
        if (selector == imOpenFile8 && result == imNoErr) {
            void* const opened = openIn(param2).privatedata;
            clips.push_back(opened);
        }
        return result;
    }
    auto& record = *static_cast<imFileInfoRec8*>(param2);
    void* const asked = record.privatedata;
    right(selector, stdParms, param1, param2);
    record.privatedata = clips.back();
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    record.privatedata = asked;
    return result;
}

// One clip for all openings of a file, closed with the last of them.
csSDK_int32 sharesClipsOfAFile(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    struct Shared {
        void* privateData = nullptr;
        int users = 0;
    };
    static std::map<std::u16string, Shared> clips;
    if (selector == imOpenFile8 && !openIn(param2).privatedata) {
        Shared& clip = clips[openIn(param2).fileinfo.filepath];
        openIn(param2).privatedata = clip.privateData;
        const csSDK_int32 result = right(selector, stdParms, param1, param2);
        clip.privateData = openIn(param2).privatedata;
        ++clip.users;
        return result;
    }
    if (selector == imCloseFile) {
        for (auto& [path, clip] : clips) {
            if (clip.privateData == param2 && --clip.users > 0) {
                return imNoErr;
            }
        }
        std::erase_if(clips, [=](const auto& entry) { return entry.second.privateData == param2; });
    }
    return right(selector, stdParms, param1, param2);
}

constexpr Fault kLifeFaults[] = {
    {"is-another-clip-when-reopened", isAnotherClipWhenReopened},
    {"loses-its-sound-when-quiet", losesItsSoundWhenQuiet},
    {"keeps-what-a-quiet-clip-has", keepsWhatAQuietClipHas},
    {"refuses-to-close-quiet-clips", refusesToCloseQuietClips},
    {"knows-one-clip-only", knowsOneClipOnly},
    {"shares-clips-of-a-file", sharesClipsOfAFile},
};

}  // namespace

std::span<const Fault> lifeFaults() { return kLifeFaults; }

}  // namespace wrong
