#include "wrong/Fault.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace wrong {

namespace {

std::u16string_view pathOf(const Call& call) { return call.record<imFileOpenRec8>().fileinfo.filepath; }

// Refuses the files to which `isRefused` applies.
Answer refuses(bool (*isRefused)(std::u16string_view path)) {
    return on(imOpenFile8, [=](const Call& call) {
        return isRefused(pathOf(call)) ? csSDK_int32{imBadFile} : call.pass();
    });
}

csSDK_int32 keepsRefusedFiles(const Call& call) {
    static char kept;
    if (call.selector == imCloseFile && call.param2 == &kept) {
        return imNoErr;
    }
    const csSDK_int32 result = call.pass();
    if (call.selector == imOpenFile8 && result != imNoErr) {
        call.record<imFileOpenRec8>().privatedata = &kept;
    }
    return result;
}

csSDK_int32 opensWithAnyAccess(const Call& call) {
    auto& record = call.record<imFileOpenRec8>();
    const PrFileOpenAccess asked = record.inReadWrite;
    record.inReadWrite = kPrOpenFileAccess_ReadOnly;
    const csSDK_int32 result = call.pass();
    record.inReadWrite = asked;
    return result;
}

csSDK_int32 opensFirstStreamsOnly(const Call& call) {
    static csSDK_int32 opened = 0;
    if (call.selector == imOpenFile8) {
        opened = call.record<imFileOpenRec8>().inStreamIdx;
    }
    if (call.selector != imGetInfo8 || opened == 0) {
        return call.pass();
    }
    auto& record = call.record<imFileInfoRec8>();
    const csSDK_int32 asked = record.streamIdx;
    record.streamIdx = 0;
    const csSDK_int32 result = call.pass();
    record.streamIdx = asked;
    opened = 0;
    return result;
}

csSDK_int32 touchesFiles(const Call& call) {
    static std::filesystem::path opened;
    if (call.selector == imOpenFile8) {
        opened = std::filesystem::path(pathOf(call));
    }
    const csSDK_int32 result = call.pass();
    if (call.selector == imCloseFile) {
        const auto before = std::filesystem::last_write_time(opened);
        std::filesystem::last_write_time(opened, before + std::chrono::seconds(10));
    }
    return result;
}

void forgetLostFile(const Call& call, csSDK_int32 result) {
    auto& record = call.record<imFileOpenRec8>();
    if (result != imNoErr && record.privatedata) {
        Call{imCloseFile, call.stdParms, call.param1, record.privatedata}.pass();
        record.privatedata = nullptr;
    }
}

const Fault kOpenFaults[] = {
    {"refuses-every-file", always(imOpenFile8, imBadFile)},
    {"keeps-the-handle", after(imCloseFile, [](const Call& call, csSDK_int32) {
         *static_cast<imFileRef*>(call.param1) = call.param1;
     })},
    {"takes-every-file", on(imOpenFile8, [](const Call& call) {
         call.pass();
         return csSDK_int32{imNoErr};
     })},
    {"keeps-refused-files", keepsRefusedFiles},
    {"describes-everything", saysOther(imGetInfo8, imBadFile, imNoErr)},
    {"writes-what-it-refuses", after(imGetInfo8, [](const Call& call, csSDK_int32 result) {
         if (result == imBadFile) {
             call.record<imFileInfoRec8>().vidScale = 25;
         }
     })},
    {"has-its-own-word-for-damage", saysOther(imGetInfo8, imBadFile, imBadHeader)},
    {"reads-ascii-only", refuses([](std::u16string_view path) {
         return std::ranges::any_of(path, [](char16_t unit) { return unit >= 0x80; });
     })},
    {"reads-short-paths-only", refuses([](std::u16string_view path) { return path.size() > 220; })},
    {"opens-with-any-access", on(imOpenFile8, opensWithAnyAccess)},
    {"opens-first-streams-only", opensFirstStreamsOnly},
    {"never-lets-go", always(imQuietFile, imNoErr)},
    {"lets-others-change-files", after(imOpenFile8, [](const Call& call, csSDK_int32 result) {
         if (result == imNoErr) {
             Call{imQuietFile, call.stdParms, call.param1, call.record<imFileOpenRec8>().privatedata}.pass();
         }
     })},
    {"touches-files", touchesFiles},
    {"forgets-lost-files", after(imOpenFile8, forgetLostFile)},
};

}  // namespace

std::span<const Fault> openFaults() { return kOpenFaults; }

}  // namespace wrong
