#include "aviwriter/Sample.h"

#include "aviwriter/TestPicture.h"

#include <algorithm>
#include <stdexcept>

namespace aviwriter {

namespace {

constexpr std::uint16_t kMostChannels = 32;

standin::StreamInfo streamInfo(const SampleOptions& options) {
    const std::uint32_t usualRange = standin::typeLayout(options.type).rgb ? 2 : 1;
    return {.type = options.type, .width = options.width, .height = options.height,
            .colorSpace = options.colorSpace, .range = options.range.value_or(usualRange)};
}

// Produces the compressed frames, one at a time.
class Video {
public:
    explicit Video(const SampleOptions& options)
        : m_dropped(options.dropped), m_info(streamInfo(options)), m_picture(m_info) {}

    VideoTrack track(const SampleOptions& options) const {
        return {options.width, options.height, options.rate, options.scale, options.handler,
                standin::encodeExtraData(m_info)};
    }

    Bytes frame(std::uint32_t number) const {
        return m_dropped.contains(number) ? Bytes{} : standin::encodeFrame(m_info, m_picture.frame(number));
    }

private:
    std::set<std::uint32_t> m_dropped;
    standin::StreamInfo m_info;
    TestPicture m_picture;
};

AudioTrack audioTrack(const SampleAudio& audio) {
    if (audio.channels == 0 || audio.channels > kMostChannels || audio.sampleRate == 0 || audio.chunkFrames == 0U) {
        throw std::invalid_argument("sound needs 1 to 32 channels, a sample rate, and chunks that are not empty");
    }
    return {{.formatTag = audio.format == SampleFormat::float32 ? kWaveFormatFloat : kWaveFormatPcm,
             .channels = audio.channels, .samplesPerSec = audio.sampleRate,
             .bitsPerSample = bitsPerSample(audio.format), .channelMask = audio.channelMask},
            audio.record};
}

// The sound of one track, written to the file together with the video.
class Sound {
public:
    Sound(const SampleAudio& audio, std::size_t track) : m_audio(audio), m_track(track) {}

    // Writes the sound of the first `frames` video frames: whole chunks, or after the last frame everything left.
    void writeUpTo(std::uint32_t frames, const SampleOptions& options, AviFileWriter& writer) {
        const std::uint64_t due = std::uint64_t{frames} * options.scale * m_audio.sampleRate / options.rate;
        const bool last = frames == options.frames;
        while (m_written < due) {
            const std::uint64_t left = due - m_written;
            const std::uint64_t whole = m_audio.chunkFrames.value_or(static_cast<std::uint32_t>(left));
            if (left < whole && !last) {
                break;
            }
            const auto count = static_cast<std::uint32_t>(std::min(left, whole));
            writer.writeAudio(m_track, testSound(m_audio.format, m_audio.channels, m_audio.sampleRate, m_written,
                                                 count));
            m_written += count;
        }
    }

private:
    SampleAudio m_audio;
    std::size_t m_track;
    std::uint64_t m_written = 0;   // sample frames
};

}  // namespace

void writeSample(const SampleOptions& options, ByteSink& sink) {
    if (options.rate == 0 || options.scale == 0) {
        throw std::invalid_argument("the frame rate is zero");
    }
    std::optional<Video> video;
    if (options.hasVideo) {
        video.emplace(options);
    }
    std::vector<AudioTrack> tracks;
    std::vector<Sound> sounds;
    for (const SampleAudio& audio : options.audio) {
        sounds.emplace_back(audio, tracks.size());
        tracks.push_back(audioTrack(audio));
    }

    AviFileWriter writer(sink, options.layout, video ? std::optional(video->track(options)) : std::nullopt, tracks);
    for (std::uint32_t number = 0; number < options.frames; ++number) {
        if (options.hole > 0 && number == options.frames / 2) {
            writer.startSegment(options.hole);
        }
        if (video) {
            writer.writeVideo(video->frame(number));
        }
        for (Sound& sound : sounds) {
            sound.writeUpTo(number + 1, options, writer);
        }
    }
    writer.finish();
}

Bytes sampleBytes(const SampleOptions& options) {
    MemorySink sink;
    writeSample(options, sink);
    return sink.bytes();
}

}  // namespace aviwriter
