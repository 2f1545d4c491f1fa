#include "importhost/sound/Levels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace importhost {

namespace {

constexpr std::int64_t kBlock = 4096;           // sample frames per request

// Lower block characters, one eighth to eight eighths high.
constexpr const char* kBars[] = {"\xE2\x96\x81", "\xE2\x96\x82", "\xE2\x96\x83", "\xE2\x96\x84",
                                 "\xE2\x96\x85", "\xE2\x96\x86", "\xE2\x96\x87", "\xE2\x96\x88"};
constexpr float kBarCount = 8.0f;

// Updates the peaks of one column.
csSDK_int32 raise(std::vector<std::vector<float>>& peaks, hostkit::ClipSession& clip, std::int64_t first,
                  std::int64_t end) {
    for (std::int64_t position = first; position < end; position += kBlock) {
        const auto count = static_cast<csSDK_uint32>(std::min(kBlock, end - position));
        const auto answer = clip.audio(position, count, static_cast<csSDK_int32>(peaks.size()));
        if (answer.result != imNoErr) {
            return answer.result;
        }
        for (std::size_t channel = 0; channel < peaks.size(); ++channel) {
            peaks[channel].back() = std::max(peaks[channel].back(), peakOf(answer.channels[channel]));
        }
    }
    return imNoErr;
}

}  // namespace

Levels levelsOf(hostkit::ClipSession& clip, const imFileInfoRec8& info) {
    const csSDK_int32 channels = info.audInfo.numChannels;
    const std::int64_t frames = info.audDuration;
    Levels levels;
    if (channels < 1 || channels > kMaxAudioChannelCount || frames < 1) {
        return levels;
    }
    levels.result = imNoErr;
    levels.peaks.resize(static_cast<std::size_t>(channels));
    const std::int64_t columns = std::min(kLevelColumns, frames);
    // Quotient and remainder are used separately to avoid 64-bit overflow.
    const auto startOf = [&](std::int64_t column) {
        return frames / columns * column + frames % columns * column / columns;
    };
    for (std::int64_t column = 0; column < columns && levels.result == imNoErr; ++column) {
        for (std::vector<float>& row : levels.peaks) {
            row.push_back(0.0f);
        }
        const std::int64_t first = startOf(column);
        levels.result = raise(levels.peaks, clip, first, std::min(startOf(column + 1), first + kMostFramesOfAColumn));
    }
    return levels;
}

float peakOf(const std::vector<float>& samples) {
    float peak = 0.0f;
    for (const float sample : samples) {
        peak = std::fabs(sample) > peak ? std::fabs(sample) : peak;     // false for NaN
    }
    return peak;
}

std::string bars(const std::vector<float>& peaks) {
    std::string text;
    for (const float peak : peaks) {
        const float height = std::clamp(std::ceil(peak * kBarCount), 0.0f, kBarCount);
        text += height < 1.0f ? " " : kBars[static_cast<std::size_t>(height) - 1];
    }
    return text;
}

std::string decibelText(float peak) {
    if (peak <= 0.0f) {
        return "silence";
    }
    char text[40] = {};
    std::snprintf(text, sizeof(text), "%.1f dB", 20.0 * std::log10(static_cast<double>(peak)));
    return text;
}

}  // namespace importhost
