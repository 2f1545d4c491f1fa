#include "damage/Sighting.h"

#include "damage/Pieces.h"

#include "hostkit/Host.h"
#include "hostkit/Names.h"

#include <algorithm>

namespace damage {

namespace {

using hostkit::ClipSession;

constexpr PrTime kTicksPerSecond = 254016000000;
constexpr std::int64_t kMostAsked = 20;
constexpr std::int64_t kMostSound = 19200;

std::vector<std::int64_t> picturesToAsk(std::int64_t count) {
    if (count > kMostAsked) {
        return {0, 1, count / 2, count - 2, count - 1};
    }
    std::vector<std::int64_t> all;
    for (std::int64_t number = 0; number < count; ++number) {
        all.push_back(number);
    }
    return all;
}

// "right", "shows 3", or the result. Picture 0 instead of one beyond the clip's ten is "shows 0" too.
std::string stateOf(ClipSession& clip, PrTime time, std::int64_t number) {
    const auto answer = clip.frame(time, {{0, 0, PrPixelFormat_VUYX_4444_8u}});
    if (answer.result != imNoErr) {
        return hostkit::resultText(answer.result);
    }
    const auto view = answer.frame.view();
    if (!view) {
        return "no picture at all";
    }
    const std::int64_t shown = view->pixels[0] - kFirstPictureValue;
    return shown == number ? "right" : "shows " + std::to_string(shown);
}

// Neighbours of one state become a range.
class States {
public:
    void add(std::int64_t number, const std::string& state) {
        if (!m_groups.empty() && m_groups.back().state == state && m_groups.back().last + 1 == number) {
            m_groups.back().last = number;
        } else {
            m_groups.push_back({number, number, state});
        }
    }

    bool areAllRight() const { return m_groups.size() == 1 && m_groups.front().state == "right"; }

    std::string text() const {
        std::string text;
        for (const Group& group : m_groups) {
            text += (text.empty() ? "" : ", ") + std::to_string(group.first);
            text += group.last > group.first ? "-" + std::to_string(group.last) : "";
            text += " " + group.state;
        }
        return text;
    }

private:
    struct Group {
        std::int64_t first = 0;
        std::int64_t last = 0;
        std::string state;
    };
    std::vector<Group> m_groups;
};

std::string counted(std::int64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string picturesOf(ClipSession& clip, const imFileInfoRec8& info) {
    if (!info.hasVideo) {
        return "no video";
    }
    if (info.vidScale <= 0 || info.vidDuration < 0) {
        return "a rate of " + std::to_string(info.vidScale) + "/" + std::to_string(info.vidSampleSize) +
               " and a length of " + std::to_string(info.vidDuration) + ", at its start picture 0 " +
               stateOf(clip, 0, 0);
    }
    const std::int64_t count = hostkit::frameCount(info);
    if (count == 0) {
        return "no pictures";
    }
    States states;
    for (const std::int64_t number : picturesToAsk(count)) {
        states.add(number, stateOf(clip, hostkit::timeOfFrame(info, number, kTicksPerSecond), number));
    }
    if (states.areAllRight()) {
        return counted(count, "picture") + ", all right";
    }
    return counted(count, "picture") + ": " + states.text();
}

// How many samples from `position` on are the clip's; the rest must be silence, or the text says otherwise.
std::string soundFrom(const hostkit::AudioAnswer& answer, std::int64_t position) {
    const auto isRight = [&](std::size_t i) {
        for (std::uint32_t channel = 0; channel < 2; ++channel) {
            const std::int64_t place = position + static_cast<std::int64_t>(i);
            const bool exists = place < kSoundFrames;
            const float wanted = static_cast<float>(soundSample(static_cast<std::uint32_t>(place), channel)) / 32768.0f;
            if (!exists || answer.channels[channel][i] != wanted) {
                return false;
            }
        }
        return true;
    };
    const std::size_t count = answer.channels[0].size();
    std::size_t right = 0;
    while (right < count && isRight(right)) {
        ++right;
    }
    if (right == count) {
        return "all right";
    }
    for (std::size_t i = right; i < count; ++i) {
        if (answer.channels[0][i] != 0.0f || answer.channels[1][i] != 0.0f) {
            return "other sound from " + std::to_string(position + static_cast<std::int64_t>(i)) + " on";
        }
    }
    return right == 0 ? "silent" : "silent from " + std::to_string(position + static_cast<std::int64_t>(right)) + " on";
}

std::string soundPart(ClipSession& clip, std::int64_t position, std::int64_t frames, csSDK_int32 channels) {
    const auto answer = clip.audio(position, static_cast<csSDK_uint32>(frames), channels);
    if (answer.result != imNoErr) {
        return hostkit::resultText(answer.result);
    }
    return channels == 2 ? soundFrom(answer, position) : "delivered";
}

std::string rateText(float rate) { return std::to_string(static_cast<std::int64_t>(rate)) + " Hz"; }

std::string soundOf(ClipSession& clip, const imFileInfoRec8& info) {
    if (!info.hasAudio) {
        return "no sound";
    }
    if (info.audInfo.sampleType == kPrAudioSampleType_Other) {
        return "unusable sound";
    }
    const std::int64_t count = info.audDuration;
    const csSDK_int32 channels = info.audInfo.numChannels;
    if (count <= 0) {
        return "sound of no length";
    }
    std::string text = counted(count, "sample") + " of sound";
    text += info.audInfo.sampleRate == 48000.0f ? "" : " at " + rateText(info.audInfo.sampleRate);
    text += channels == 2 ? ", " : " in " + counted(channels, "channel") + ", ";
    text += soundPart(clip, 0, std::min(count, kMostSound), channels);
    if (count > kMostSound) {
        text += ", " + soundPart(clip, count - 100, 100, channels) + " at the end";
    }
    return text;
}

std::string describedStreams(ClipSession& clip) {
    const std::size_t streams = clip.infos().size();
    return streams > 1 ? "; " + std::to_string(streams) + " streams" : "";
}

// Without the call and its addresses, which a codec's message ends with.
std::string withoutCall(const std::string& line) { return line.substr(0, line.find(": decompress")); }

}  // namespace

std::string sightOf(hostkit::ImporterSession& session, const std::filesystem::path& path) {
    ClipSession clip(session, path);
    if (const csSDK_int32 opened = clip.open().result; opened != imNoErr) {
        return "not opened: " + hostkit::resultText(opened);
    }
    const std::string streams = describedStreams(clip);
    const auto info = clip.info(0);   // once more: the last stream asked for is the one that stays
    if (info.result != imNoErr && info.result != imIterateStreams) {
        return "refused: " + hostkit::resultText(info.result);
    }
    return picturesOf(clip, *info.record.get()) + "; " + soundOf(clip, *info.record.get()) + streams;
}

std::vector<std::string> tellingLines(const std::vector<std::string>& messages) {
    static const char* const kBeginnings[] = {
        "Failed to", "Avi ", "Invalid FPS", "Decompress ", "Compressed format size", "Unknown compressed",
        "frameIndex out", "ERROR", "importAudio: ", "Audio is INVALID", "No formats", "Empty frame"};
    std::vector<std::string> telling;
    for (const std::string& message : messages) {
        const std::string line = withoutCall(message);
        const bool tells = std::any_of(std::begin(kBeginnings), std::end(kBeginnings),
                                       [&](const char* beginning) { return line.starts_with(beginning); });
        if (tells && std::find(telling.begin(), telling.end(), line) == telling.end()) {
            telling.push_back(line);
        }
    }
    return telling;
}

}  // namespace damage
