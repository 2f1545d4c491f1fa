#include "damage/catalogue/Sighting.h"

#include "damage/catalogue/SoundSighting.h"
#include "damage/parser/Pieces.h"

#include "hostkit/host/Host.h"
#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <cstdlib>

namespace damage {

namespace {

using hostkit::ClipSession;

constexpr PrTime kTicksPerSecond = 254016000000;
constexpr std::int64_t kMostAsked = 20;

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

// "right", "shows 3", or the result. Picture 0 in place of one after the clip's ten is also "shows 0".
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

// Joins neighbours in the same state to a range.
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

std::string quotientOf(const imFileInfoRec8& info) {
    return std::to_string(info.vidScale) + "/" + std::to_string(info.vidSampleSize);
}

// "at 30/1 a second", unless it is the clip's rate.
std::string rateOf(const imFileInfoRec8& info) {
    const bool isUsual = std::int64_t{info.vidScale} == 25 * std::int64_t{info.vidSampleSize};
    return isUsual ? "" : " at " + quotientOf(info) + " a second";
}

// For a nonsensical rate or length: asks for the clip's pictures at the times that the numbers without their signs
// result in, forwards or backwards from the start, as far as times can be represented.
std::string picturesAtTimes(ClipSession& clip, const imFileInfoRec8& info, int sign) {
    imFileInfoRec8 positive = info;
    positive.vidScale = std::abs(info.vidScale);
    positive.vidSampleSize = std::abs(info.vidSampleSize);
    States states;
    PrTime last = -1;
    for (std::int64_t number = 0; number < kPictures; ++number) {
        const PrTime time = hostkit::timeOfFrame(positive, number, kTicksPerSecond);
        if (time != last) {
            states.add(number, stateOf(clip, sign * time, number));
        }
        last = time;
    }
    return states.text();
}

std::string picturesOf(ClipSession& clip, const imFileInfoRec8& info) {
    if (!info.hasVideo) {
        return "no video";
    }
    if (info.vidScale <= 0 || info.vidSampleSize <= 0 || info.vidDuration < 0) {
        return "a rate of " + quotientOf(info) + " and a length of " + std::to_string(info.vidDuration) + ", ahead " +
               picturesAtTimes(clip, info, 1) + ", back " + picturesAtTimes(clip, info, -1);
    }
    const std::int64_t count = hostkit::frameCount(info);
    if (count == 0) {
        return "no pictures";
    }
    States states;
    for (const std::int64_t number : picturesToAsk(count)) {
        states.add(number, stateOf(clip, hostkit::timeOfFrame(info, number, kTicksPerSecond), number));
    }
    const std::string pictures = counted(count, "picture") + rateOf(info);
    return states.areAllRight() ? pictures + ", all right" : pictures + ": " + states.text();
}

// The file's further sound streams, each described and read separately; equal results are joined.
std::string furtherStreams(ClipSession& clip) {
    States states;
    csSDK_int32 result = clip.info(0).result;
    std::uint32_t stream = 1;
    for (; result == imIterateStreams; ++stream) {
        const auto info = clip.info(static_cast<csSDK_int32>(stream));
        states.add(stream, "with " + soundOf(clip, *info.record.get(), stream));
        result = info.result;
    }
    if (stream == 1) {
        return "";
    }
    return std::string(stream > 2 ? "; streams " : "; stream ") + states.text();
}

// Removes the call with its addresses from the end of a codec's message.
std::string withoutCall(const std::string& line) { return line.substr(0, line.find(": decompress")); }

}  // namespace

std::string sightOf(hostkit::ImporterSession& session, const std::filesystem::path& path) {
    ClipSession clip(session, path);
    if (const csSDK_int32 opened = clip.open().result; opened != imNoErr) {
        return "not opened: " + hostkit::resultText(opened);
    }
    const std::string further = furtherStreams(clip);
    const auto info = clip.info(0);   // again, because the last requested stream stays selected
    if (info.result != imNoErr && info.result != imIterateStreams) {
        return "refused: " + hostkit::resultText(info.result);
    }
    return picturesOf(clip, *info.record.get()) + "; " + soundOf(clip, *info.record.get(), 0) + further;
}

std::vector<std::string> damageLines(const std::vector<std::string>& messages) {
    static const char* const kBeginnings[] = {
        "Failed to", "Avi ", "Invalid FPS", "Decompress ", "Compressed format size", "Unknown compressed",
        "frameIndex out", "ERROR", "importAudio: ", "Audio is INVALID", "No formats", "Empty frame"};
    std::vector<std::string> found;
    for (const std::string& message : messages) {
        const std::string line = withoutCall(message);
        const bool isAboutDamage = std::any_of(std::begin(kBeginnings), std::end(kBeginnings),
                                                [&](const char* beginning) { return line.starts_with(beginning); });
        if (isAboutDamage && std::find(found.begin(), found.end(), line) == found.end()) {
            found.push_back(line);
        }
    }
    return found;
}

}  // namespace damage
