#include "damage/catalogue/SoundSighting.h"

#include "damage/parser/Pieces.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace damage {

namespace {

using hostkit::AudioAnswer;
using hostkit::ClipSession;

constexpr std::int64_t kMostSound = 19200;

SoundType typeOf(csSDK_int32 sampleType) {
    switch (sampleType) {
    case kPrAudioSampleType_8BitInt: return SoundType::int8;
    case kPrAudioSampleType_24BitInt: return SoundType::int24;
    case kPrAudioSampleType_32BitInt: return SoundType::int32;
    case kPrAudioSampleType_32BitFloat: return SoundType::float32;
    default: return SoundType::int16;
    }
}

// Compares the delivered samples with those of the clip, one sample frame at a time.
class Comparison {
public:
    Comparison(const AudioAnswer& answer, const SoundShape& shape, std::int64_t position, std::int64_t exist)
        : m_answer(answer), m_shape(shape), m_position(position), m_exist(exist) {}

    std::size_t count() const { return m_answer.channels.front().size(); }

    bool isRight(std::size_t i) const {
        const std::int64_t place = m_position + static_cast<std::int64_t>(i);
        if (place >= m_exist) {
            return false;
        }
        for (std::uint32_t channel = 0; channel < m_shape.channels; ++channel) {
            const float wanted = soundHeard(m_shape, static_cast<std::uint32_t>(place), channel);
            if (m_answer.channels[channel][i] != wanted) {
                return false;
            }
        }
        return true;
    }

    bool isAll(std::size_t i, float value) const {
        return std::all_of(m_answer.channels.begin(), m_answer.channels.end(),
                           [&](const std::vector<float>& samples) { return samples[i] == value; });
    }

    std::string place(std::size_t i) const { return std::to_string(m_position + static_cast<std::int64_t>(i)); }

private:
    const AudioAnswer& m_answer;
    SoundShape m_shape;
    std::int64_t m_position;
    std::int64_t m_exist;
};

// Describes how many samples are the clip's; the rest must be what fills gaps, or the text says otherwise.
std::string comparedText(const Comparison& sound, SoundType type) {
    std::size_t right = 0;
    while (right < sound.count() && sound.isRight(right)) {
        ++right;
    }
    if (right == sound.count()) {
        return "all right";
    }
    for (std::size_t i = right; i < sound.count(); ++i) {
        if (!sound.isAll(i, soundOfGaps(type))) {
            return "other sound from " + sound.place(i) + " on";
        }
    }
    const std::string gap = type == SoundType::int8 ? "at the lowest value" : "silent";
    return right == 0 ? gap : gap + " from " + sound.place(right) + " on";
}

std::string part(ClipSession& clip, const SoundShape& shape, std::int64_t position, std::int64_t frames) {
    const auto channels = static_cast<csSDK_int32>(shape.channels);
    const auto answer = clip.audio(position, static_cast<csSDK_uint32>(frames), channels);
    if (answer.result != imNoErr) {
        return hostkit::resultText(answer.result);
    }
    return shape.channels == 0 ? "nothing to hear"
                               : comparedText(Comparison(answer, shape, position, kSoundFrames), shape.type);
}

std::string rateText(float rate) { return std::to_string(static_cast<std::int64_t>(rate)) + " Hz"; }

std::string typeText(SoundType type) {
    switch (type) {
    case SoundType::int8: return " of 8 bits";
    case SoundType::int16: return "";
    case SoundType::int24: return " of 24 bits";
    case SoundType::int32: return " of 32 bits";
    default: return " of 32 bits (float)";
    }
}

}  // namespace

std::string counted(std::int64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string soundOf(ClipSession& clip, const imFileInfoRec8& info, std::uint32_t stream) {
    if (!info.hasAudio) {
        return "no sound";
    }
    if (info.audInfo.sampleType == kPrAudioSampleType_Other) {
        return "unusable sound";
    }
    const std::int64_t count = info.audDuration;
    const csSDK_int32 channels = info.audInfo.numChannels;
    const SoundShape shape = {typeOf(info.audInfo.sampleType), static_cast<std::uint32_t>(channels), stream};
    if (count <= 0) {
        return "sound of no length";
    }
    std::string text = counted(count, "sample") + " of sound" + typeText(shape.type);
    text += info.audInfo.sampleRate == 48000.0f ? "" : " at " + rateText(info.audInfo.sampleRate);
    text += channels == 2 ? ", " : " in " + counted(channels, "channel") + ", ";
    text += part(clip, shape, 0, std::min(count, kMostSound));
    if (count > kMostSound) {
        text += ", " + part(clip, shape, count - 100, 100) + " at the end";
    }
    return text;
}

}  // namespace damage
