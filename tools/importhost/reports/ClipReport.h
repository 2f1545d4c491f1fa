// Everything that the plug-in says about a clip, collected in the editor's order of calls; as text and as JSON.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "importhost/clips/Editor.h"
#include "importhost/sound/Levels.h"

#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace importhost {

struct StreamReport {
    csSDK_int32 result = 0;
    imFileInfoRec8 info = {};
    csSDK_int32 layoutResult = imUnsupported;   // requested only for streams with sound
    std::vector<csSDK_int32> labels;            // one per channel, if there is a layout
    Levels levels;

    bool isDescribed() const { return hostkit::isDescribed(result); }
};

struct DataRateReport {
    csSDK_int32 result = imUnsupported;
    std::size_t frames = 0;
    std::size_t keyFrames = 0;
    std::uint64_t bytes = 0;
    std::uint32_t smallest = 0;
    std::uint32_t largest = 0;
    double bitsPerSecond = 0.0;                 // 0 for a clip without duration
};

struct ClipReport {
    std::filesystem::path path;
    csSDK_int32 openResult = 0;
    std::vector<StreamReport> streams;
    std::string refusal;                        // why the clip was refused, if it was
    std::vector<std::string> advice;            // see RepairAdvice.h
    std::vector<PrPixelFormat> pixelFormats;
    csSDK_int32 analysisResult = imUnsupported;
    std::string analysis;
    DataRateReport dataRate;

    bool isGood() const { return openResult == imNoErr && !streams.empty() && streams.front().isDescribed(); }
};

// Opens and closes the clip.
ClipReport reportOf(hostkit::ImporterSession& session, const std::filesystem::path& path);

// The clip's duration in seconds, according to its pictures or else its sound.
double secondsOf(const imFileInfoRec8& info);

std::string asText(const Editor& editor);       // what the plug-in offers
std::string asText(const ClipReport& report, const Editor& editor);
nlohmann::ordered_json asJson(const Editor& editor);
nlohmann::ordered_json asJson(const ClipReport& report, const Editor& editor);

// The plug-in's name for a subtype; empty if it has none.
std::string subTypeName(const Editor& editor, csSDK_int32 subType);

// A channel's speaker, or its number from 1 if the layout has none.
std::string channelName(const StreamReport& stream, std::size_t channel);

// "0:01:02.345" and "29.970 fps (30000/1001)".
std::string timeText(double seconds);
std::string rateText(const imFileInfoRec8& info);
std::string rateText(std::int64_t scale, std::int64_t sampleSize);

}  // namespace importhost
