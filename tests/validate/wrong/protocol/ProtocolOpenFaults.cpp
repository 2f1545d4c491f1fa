#include "wrong/protocol/ProtocolFaults.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

namespace wrong {

namespace {

csSDK_int32 refusesEveryFile(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return selector == imOpenFile8 ? csSDK_int32{imBadFile} : right(selector, stdParms, param1, param2);
}

csSDK_int32 keepsTheHandle(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imCloseFile) {
        *static_cast<imFileRef*>(param1) = param1;
    }
    return result;
}

csSDK_int32 takesEveryFile(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return selector == imOpenFile8 ? csSDK_int32{imNoErr} : result;
}

csSDK_int32 keepsRefusedFiles(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static char kept;
    if (selector == imCloseFile && param2 == &kept) {
        return imNoErr;
    }
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imOpenFile8 && result != imNoErr) {
        static_cast<imFileOpenRec8*>(param2)->privatedata = &kept;
    }
    return result;
}

csSDK_int32 describesEverything(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return selector == imGetInfo8 && result == imBadFile ? csSDK_int32{imNoErr} : result;
}

csSDK_int32 writesWhatItRefuses(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imGetInfo8 && result == imBadFile) {
        static_cast<imFileInfoRec8*>(param2)->vidScale = 25;
    }
    return result;
}

csSDK_int32 hasItsOwnWordForDamage(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    return selector == imGetInfo8 && result == imBadFile ? csSDK_int32{imBadHeader} : result;
}

// The path that an opening is for; empty for all other calls.
std::u16string_view pathOf(csSDK_int32 selector, const void* param2) {
    return selector == imOpenFile8 ? static_cast<const imFileOpenRec8*>(param2)->fileinfo.filepath : u"";
}

csSDK_int32 readsAsciiOnly(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const std::u16string_view path = pathOf(selector, param2);
    const bool isAscii = std::all_of(path.begin(), path.end(), [](char16_t unit) { return unit < 0x80; });
    return isAscii ? right(selector, stdParms, param1, param2) : csSDK_int32{imBadFile};
}

csSDK_int32 readsShortPathsOnly(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    constexpr std::size_t kLongest = 220;
    return pathOf(selector, param2).size() > kLongest ? csSDK_int32{imBadFile}
                                                      : right(selector, stdParms, param1, param2);
}

csSDK_int32 opensWithAnyAccess(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    if (selector != imOpenFile8) {
        return right(selector, stdParms, param1, param2);
    }
    auto& record = *static_cast<imFileOpenRec8*>(param2);
    const PrFileOpenAccess asked = record.inReadWrite;
    record.inReadWrite = kPrOpenFileAccess_ReadOnly;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    record.inReadWrite = asked;
    return result;
}

csSDK_int32 opensFirstStreamsOnly(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static csSDK_int32 opened = 0;
    if (selector == imOpenFile8) {
        opened = static_cast<imFileOpenRec8*>(param2)->inStreamIdx;
    }
    if (selector != imGetInfo8 || opened == 0) {
        return right(selector, stdParms, param1, param2);
    }
    auto& record = *static_cast<imFileInfoRec8*>(param2);
    const csSDK_int32 asked = record.streamIdx;
    record.streamIdx = 0;
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    record.streamIdx = asked;
    opened = 0;
    return result;
}

csSDK_int32 neverLetsGo(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    return selector == imQuietFile ? csSDK_int32{imNoErr} : right(selector, stdParms, param1, param2);
}

csSDK_int32 letsOthersChangeFiles(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imOpenFile8 && result == imNoErr) {
        right(imQuietFile, stdParms, param1, static_cast<imFileOpenRec8*>(param2)->privatedata);
    }
    return result;
}

csSDK_int32 touchesFiles(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    static std::filesystem::path opened;
    if (selector == imOpenFile8) {
        opened = std::filesystem::path(pathOf(selector, param2));
    }
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imCloseFile) {
        const auto before = std::filesystem::last_write_time(opened);
        std::filesystem::last_write_time(opened, before + std::chrono::seconds(10));
    }
    return result;
}

csSDK_int32 forgetsLostFiles(csSDK_int32 selector, imStdParms* stdParms, void* param1, void* param2) {
    const csSDK_int32 result = right(selector, stdParms, param1, param2);
    if (selector == imOpenFile8 && result != imNoErr) {
        auto& record = *static_cast<imFileOpenRec8*>(param2);
        if (record.privatedata) {
            right(imCloseFile, stdParms, param1, record.privatedata);
        }
        record.privatedata = nullptr;
    }
    return result;
}

constexpr Fault kOpenFaults[] = {
    {"refuses-every-file", refusesEveryFile},
    {"keeps-the-handle", keepsTheHandle},
    {"takes-every-file", takesEveryFile},
    {"keeps-refused-files", keepsRefusedFiles},
    {"describes-everything", describesEverything},
    {"writes-what-it-refuses", writesWhatItRefuses},
    {"has-its-own-word-for-damage", hasItsOwnWordForDamage},
    {"reads-ascii-only", readsAsciiOnly},
    {"reads-short-paths-only", readsShortPathsOnly},
    {"opens-with-any-access", opensWithAnyAccess},
    {"opens-first-streams-only", opensFirstStreamsOnly},
    {"never-lets-go", neverLetsGo},
    {"lets-others-change-files", letsOthersChangeFiles},
    {"touches-files", touchesFiles},
    {"forgets-lost-files", forgetsLostFiles},
};

}  // namespace

std::span<const Fault> openFaults() { return kOpenFaults; }

}  // namespace wrong
