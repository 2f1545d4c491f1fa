#include "importhost/validate/checks/sound/AudioParts.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace importhost::validate {

namespace {

std::vector<std::uint32_t> bitsOf(const std::vector<float>& samples) {
    std::vector<std::uint32_t> bits;
    bits.reserve(samples.size());
    for (const float& sample : samples) {
        bits.push_back(std::bit_cast<std::uint32_t>(sample));
    }
    return bits;
}

bool holdsSound(const imFileInfoRec8& info) {
    return info.hasAudio != 0 && info.audInfo.numChannels > 0 && info.audDuration > 0 &&
           info.audInfo.sampleType != kPrAudioSampleType_Other;
}

}  // namespace

// --- Sound ------------------------------------------------------------------------------------------------------

Sound Sound::part(std::size_t start, std::size_t count) const {
    Sound cut{result, {}};
    for (const std::vector<std::uint32_t>& samples : channels) {
        const auto from = samples.begin() + static_cast<std::ptrdiff_t>(start);
        cut.channels.emplace_back(from, from + static_cast<std::ptrdiff_t>(count));
    }
    return cut;
}

void Sound::append(const Sound& next) {
    result = result == imNoErr ? next.result : result;
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        const std::vector<std::uint32_t>& samples = next.channels.at(channel);
        channels[channel].insert(channels[channel].end(), samples.begin(), samples.end());
    }
}

Sound constantSound(float sample, int channels, std::size_t frames) {
    const std::vector<std::uint32_t> samples(frames, std::bit_cast<std::uint32_t>(sample));
    return {imNoErr, std::vector<std::vector<std::uint32_t>>(static_cast<std::size_t>(channels), samples)};
}

// --- Streams ----------------------------------------------------------------------------------------------------

const aviwriter::SampleAudio* SoundStream::made() const {
    const Clip& clip = m_clip->clip();
    const auto number = static_cast<std::size_t>(m_number);
    return clip.made && number < clip.made->audio.size() ? &clip.made->audio[number] : nullptr;
}

Sound SoundStream::import(std::int64_t position, std::size_t frames) const {
    const hostkit::AudioAnswer answer =
        m_clip->session().audio(position, static_cast<csSDK_uint32>(frames), channels());
    Sound sound{answer.result, {}};
    std::transform(answer.channels.begin(), answer.channels.end(), std::back_inserter(sound.channels), bitsOf);
    return sound;
}

std::vector<SoundStream> soundStreams(OpenClip& clip) {
    std::vector<SoundStream> streams;
    csSDK_int32 number = 0;
    for (const auto& answer : clip.session().infos()) {
        if (holdsSound(*answer.record.get())) {
            streams.emplace_back(clip, number, *answer.record.get());
        }
        ++number;
    }
    return streams;
}

void forEachSound(CheckRun& run, const std::function<void(const SoundStream&)>& look) {
    bool any = false;
    forEachClip(run, Need::Nothing, [&](OpenClip& clip) {
        for (const SoundStream& stream : soundStreams(clip)) {
            any = true;
            run.step(clip.clip().name + ", stream " + std::to_string(stream.number()));
            stream.select();
            look(stream);
        }
    });
    if (!any && !run.hasFailed()) {
        run.skip("no file with sound that the plug-in opens");
    }
}

std::vector<Window> windowsOf(const SoundStream& stream, std::size_t frames) {
    const std::int64_t duration = stream.duration();
    const std::int64_t length = std::min<std::int64_t>(duration, static_cast<std::int64_t>(frames));
    std::vector<Window> windows;
    for (const std::int64_t start : {std::int64_t{0}, (duration - length) / 2, duration - length}) {
        if (windows.empty() || windows.back().start != start) {
            windows.push_back({start, stream.import(start, static_cast<std::size_t>(length))});
        }
    }
    return windows;
}

// --- Demands ----------------------------------------------------------------------------------------------------

bool expectSound(CheckRun& run, const std::string& what, const Sound& found, const Sound& wanted) {
    if (found == wanted) {
        return true;
    }
    if (found.result != wanted.result) {
        return run.expectResult(what, found.result, wanted.result);
    }
    for (std::size_t channel = 0; channel < wanted.channels.size(); ++channel) {
        const std::vector<std::uint32_t>& is = found.channels.at(channel);
        const std::vector<std::uint32_t>& be = wanted.channels[channel];
        const auto [here, there] = std::mismatch(is.begin(), is.end(), be.begin(), be.end());
        if (here != is.end() && there != be.end()) {
            const bool isMissing = *here == std::bit_cast<std::uint32_t>(hostkit::undeliveredSample());
            std::ostringstream text;
            text << what << ": channel " << channel << ", sample " << here - is.begin() << " of " << is.size() << ": ";
            if (isMissing) {
                text << "nothing was delivered";
            } else {
                text << "found " << std::bit_cast<float>(*here);
            }
            text << ", wanted " << std::bit_cast<float>(*there);
            run.fail(text.str());
            return false;
        }
    }
    return run.expectEqual(what + ", its length", found.frames(), wanted.frames());
}

bool expectPart(CheckRun& run, const SoundStream& stream, const Window& window, std::size_t start, std::size_t frames,
                const std::string& how) {
    const std::int64_t position = window.start + static_cast<std::int64_t>(start);
    return expectSound(run, rangeText(position, frames) + how, stream.import(position, frames),
                       window.sound.part(start, frames));
}

std::string rangeText(std::int64_t position, std::size_t frames) {
    return std::to_string(frames) + " samples at " + std::to_string(position);
}

}  // namespace importhost::validate
