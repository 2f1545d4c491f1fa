// Names of the calls and pixel formats that complaints speak of.
#pragma once

#include "sdk/SdkAsyncImporter.h"

#include <string>

namespace hostprobe {

inline std::string selectorName(csSDK_int32 selector) {
    switch (selector) {
        case imInit: return "imInit";
        case imShutdown: return "imShutdown";
        case imQuietFile: return "imQuietFile";
        case imCloseFile: return "imCloseFile";
        case imAnalysis: return "imAnalysis";
        case imDataRateAnalysis: return "imDataRateAnalysis";
        case imGetIndFormat: return "imGetIndFormat";
        case imImportAudio7: return "imImportAudio7";
        case imGetIndPixelFormat: return "imGetIndPixelFormat";
        case imGetSupports8: return "imGetSupports8";
        case imGetInfo8: return "imGetInfo8";
        case imOpenFile8: return "imOpenFile8";
        case imCreateAsyncImporter: return "imCreateAsyncImporter";
        case imGetSourceVideo: return "imGetSourceVideo";
        case imGetSubTypeNames: return "imGetSubTypeNames";
        case imGetAudioChannelLayout: return "imGetAudioChannelLayout";
        default: return "Selector " + std::to_string(selector);
    }
}

inline std::string asyncName(csSDK_int32 selector) {
    switch (selector) {
        case aiInitiateAsyncRead: return "aiInitiateAsyncRead";
        case aiCancelAsyncRead: return "aiCancelAsyncRead";
        case aiFlush: return "aiFlush";
        case aiGetFrame: return "aiGetFrame";
        case aiClose: return "aiClose";
        case aiContinueToWaitForAsyncIO: return "aiContinueToWaitForAsyncIO";
        case aiSelectEfficientRenderTime: return "aiSelectEfficientRenderTime";
        default: return "Asynchronous selector " + std::to_string(selector);
    }
}

inline std::string formatName(csSDK_uint32 format) {
    std::string name;
    for (int shift = 0; shift < 32; shift += 8) {
        name += static_cast<char>(format >> shift & 0xFF);
    }
    return name;
}

}  // namespace hostprobe
