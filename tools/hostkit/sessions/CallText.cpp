#include "hostkit/sessions/CallText.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"
#include "sdk/SdkAsyncImporter.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr csSDK_int32 kMostFormatsNamed = 4;

std::string number(csSDK_int64 value) { return std::to_string(value); }

std::string formatText(const imFrameFormat& format) {
    const auto pixelFormat = csSDK_uint32{format.inPixelFormat};
    return number(format.inFrameWidth) + " x " + number(format.inFrameHeight) + " " +
           (pixelFormat == 0 ? "any" : codeText(pixelFormat));
}

std::string frameText(const imSourceVideoRec& record) {
    std::string text = "time " + number(record.inFrameTime);
    const csSDK_int32 count = record.inNumFrameFormats;
    for (csSDK_int32 i = 0; record.inFrameFormats && i < std::min(count, kMostFormatsNamed); ++i) {
        text += ", " + formatText(record.inFrameFormats[i]);
    }
    return count > kMostFormatsNamed ? text + ", ..." : text;
}

std::string openText(const imFileOpenRec8& record) {
    const prUTF16Char* path = record.fileinfo.filepath;
    return "'" + (path ? toUtf8(std::u16string(path)) : "(null)") + "', stream " + number(record.inStreamIdx) +
           (record.privatedata ? ", again" : "");
}

std::string audioText(const imImportAudioRec7& record) {
    return "position " + number(record.position) + ", " + number(record.size) + " sample frames";
}

std::string integerText(const void* pointer) {
    return number(static_cast<csSDK_int32>(reinterpret_cast<std::uintptr_t>(pointer)));
}

template <class T>
const T& as(const void* record) {
    return *static_cast<const T*>(record);
}

std::string arguments(csSDK_int32 selector, const void* param1, const void* param2) {
    switch (selector) {
        case imGetIndFormat:
        case imGetIndPixelFormat:
        case imGetSubTypeNames: return integerText(param1);
        case imOpenFile8: return param2 ? openText(as<imFileOpenRec8>(param2)) : "";
        case imGetInfo8: return param2 ? "stream " + number(as<imFileInfoRec8>(param2).streamIdx) : "";
        case imAnalysis: return param2 ? "buffer of " + number(as<imAnalysisRec>(param2).buffersize) + " bytes" : "";
        case imDataRateAnalysis:
            return param2 ? "buffer of " + number(as<imDataRateAnalysisRec>(param2).buffersize) + " bytes" : "";
        case imGetSourceVideo: return param2 ? frameText(as<imSourceVideoRec>(param2)) : "";
        case imImportAudio7: return param2 ? audioText(as<imImportAudioRec7>(param2)) : "";
        default: return "";
    }
}

std::string asyncArguments(csSDK_int32 selector, const void* parameter) {
    switch (selector) {
        case aiInitiateAsyncRead:
        case aiCancelAsyncRead: return parameter ? frameText(as<aiAsyncRequest>(parameter).inSourceRec) : "";
        case aiGetFrame: return parameter ? frameText(as<imSourceVideoRec>(parameter)) : "";
        default: return "";
    }
}

std::string nameOrNumber(std::string_view name, csSDK_int32 selector) {
    return name == "unknown" ? "selector " + number(selector) : std::string(name);
}

}  // namespace

std::string callText(csSDK_int32 selector, const void* param1, const void* param2) {
    return nameOrNumber(selectorName(selector), selector) + "(" + arguments(selector, param1, param2) + ")";
}

std::string asyncCallText(csSDK_int32 selector, const void* parameter) {
    return nameOrNumber(asyncSelectorName(selector), selector) + "(" + asyncArguments(selector, parameter) + ")";
}

}  // namespace hostkit
