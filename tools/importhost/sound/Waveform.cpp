#include "importhost/sound/Waveform.h"

#include "importhost/clips/VideoClip.h"

#include <algorithm>
#include <cmath>

namespace importhost {

namespace {

constexpr std::int64_t kWaveformBlock = 4096;           // sample frames per request

void widen(Extent& extent, const std::vector<float>& samples) {
    for (const float sample : samples) {
        const float value = std::isnan(sample) ? 0.0f : sample;
        extent.low = std::min(extent.low, value);
        extent.high = std::max(extent.high, value);
    }
}

std::vector<Extent> columnOf(SoundReader& clip, std::int64_t first, std::int64_t end) {
    std::vector<Extent> extents(static_cast<std::size_t>(clip.channels()));
    for (std::int64_t position = first; position < end; position += kWaveformBlock) {
        const auto block = clip.read(position, static_cast<std::uint32_t>(std::min(kWaveformBlock, end - position)));
        for (std::size_t channel = 0; channel < extents.size(); ++channel) {
            widen(extents[channel], block[channel]);
        }
    }
    return extents;
}

}  // namespace

Waveform waveformOf(SoundReader& clip, std::int64_t columns) {
    const std::int64_t frames = std::max<std::int64_t>(clip.sampleFrames(), 0);
    const std::int64_t count = std::min(columns, frames);
    // Quotient and remainder are used separately to avoid 64-bit overflow.
    const auto startOf = [&](std::int64_t column) {
        return frames / count * column + frames % count * column / count;
    };
    Waveform waveform;
    waveform.channels.resize(static_cast<std::size_t>(clip.channels()));
    try {
        for (std::int64_t column = 0; column < count; ++column) {
            const std::int64_t first = startOf(column);
            const std::int64_t end = std::min(startOf(column + 1), first + kMostFramesOfAWaveColumn);
            waveform.isSampled = waveform.isSampled || end < startOf(column + 1);
            const std::vector<Extent> extents = columnOf(clip, first, end);
            for (std::size_t channel = 0; channel < extents.size(); ++channel) {
                waveform.channels[channel].push_back(extents[channel]);
            }
        }
    } catch (const ClipFailure& failure) {
        waveform.failure = failure.what();
    }
    return waveform;
}

}  // namespace importhost
