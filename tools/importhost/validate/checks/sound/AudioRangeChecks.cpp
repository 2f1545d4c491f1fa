// What arrives for a request for sound: all of it, the right samples, and what follows the end.
#include "importhost/validate/checks/sound/AudioParts.h"
#include "importhost/validate/checks/stage/OwnSample.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace importhost::validate {

namespace {

// Not every sample can be imported at once from a user's long file.
constexpr std::int64_t kMostFrames = 200000;

}  // namespace

// --- audio-delivered --------------------------------------------------------------------------------------------

namespace {

// Samples that cannot be read are the file's fault: in a user's file a warning.
void expectDelivered(CheckRun& run, const Clip& clip, const std::string& what, const Sound& sound) {
    if (sound.result == imFileReadFailed && clip.kind == ClipKind::Unknown) {
        run.warn(what + " cannot be read");
        return;
    }
    if (!run.expectResult("the answer to " + what, sound.result)) {
        return;
    }
    const auto missing = std::bit_cast<std::uint32_t>(hostkit::undeliveredSample());
    for (std::size_t channel = 0; channel < sound.channels.size(); ++channel) {
        const std::vector<std::uint32_t>& samples = sound.channels[channel];
        const auto gap = std::find(samples.begin(), samples.end(), missing);
        run.expect(gap == samples.end(), what + ": channel " + std::to_string(channel) + ", sample " +
                                             std::to_string(gap - samples.begin()) + " was not delivered");
    }
}

}  // namespace

void audioDelivered(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        const Clip& clip = stream.clip().clip();
        for (const Window& window : windowsOf(stream, static_cast<std::size_t>(run.effort(2000, 20000)))) {
            expectDelivered(run, clip, rangeText(window.start, window.frames()), window.sound);
        }
        expectDelivered(run, clip, "the first sample alone", stream.import(0, 1));
        expectDelivered(run, clip, "the last sample alone", stream.import(stream.duration() - 1, 1));
    });
}

// --- audio-true-samples -----------------------------------------------------------------------------------------

namespace {

// A sample as its format keeps it, on the host's scale of -1 to 1.
float hostSample(aviwriter::SampleFormat format, std::int32_t sample) {
    if (format == aviwriter::SampleFormat::float32) {
        return static_cast<float>(sample) / 2147483648.0F;
    }
    const int lost = 32 - aviwriter::bitsPerSample(format);
    return static_cast<float>(std::ldexp(static_cast<double>(sample >> lost), lost - 31));
}

Sound writtenSound(const aviwriter::SampleAudio& made, std::int64_t position, std::size_t frames) {
    Sound sound{imNoErr, {}};
    for (std::uint16_t channel = 0; channel < made.channels; ++channel) {
        std::vector<std::uint32_t> samples;
        for (std::size_t i = 0; i < frames; ++i) {
            const auto at = static_cast<std::uint64_t>(position) + i;
            samples.push_back(std::bit_cast<std::uint32_t>(
                hostSample(made.format, aviwriter::testSample(channel, at, made.sampleRate))));
        }
        sound.channels.push_back(std::move(samples));
    }
    return sound;
}

std::int64_t writtenDuration(const aviwriter::SampleOptions& options, const aviwriter::SampleAudio& audio) {
    return static_cast<std::int64_t>(std::uint64_t{options.frames} * options.scale * audio.sampleRate / options.rate);
}

void expectWrittenSound(CheckRun& run, const SoundStream& stream, const aviwriter::SampleAudio& made) {
    const std::int64_t duration = writtenDuration(*stream.clip().clip().made, made);
    if (!run.expectEqual("the number of channels", stream.channels(), int{made.channels}) ||
        !run.expectEqual("the number of samples", stream.duration(), duration)) {
        return;
    }
    for (const Window& window : windowsOf(stream, static_cast<std::size_t>(run.effort(4000, 60000)))) {
        expectSound(run, rangeText(window.start, window.frames()), window.sound,
                    writtenSound(made, window.start, window.frames()));
    }
}

// Every kind of sample in clips of one, two and many channels, where the user's files are looked at too.
aviwriter::SampleOptions everyKindOfSound() {
    aviwriter::SampleOptions options;
    options.width = 16;
    options.height = 16;
    options.frames = 5;
    using aviwriter::SampleFormat;
    for (const SampleFormat format : {SampleFormat::pcm8, SampleFormat::pcm16, SampleFormat::pcm24,
                                      SampleFormat::pcm32, SampleFormat::float32}) {
        for (const std::uint16_t channels : std::to_array<std::uint16_t>({1, 2, 7, 32})) {
            const std::uint32_t chunkFrames = 1 + 40U * channels;
            options.audio.push_back({format, channels, 32000, aviwriter::WaveRecord::extensible40, 0, chunkFrames});
        }
    }
    return options;
}

}  // namespace

void audioTrueSamples(CheckRun& run) {
    if (!run.hasOwnSamples()) {
        run.skip("it needs this program's own samples: run it without files");
    }
    forEachSound(run, [&](const SoundStream& stream) {
        if (const aviwriter::SampleAudio* made = stream.made()) {
            expectWrittenSound(run, stream, *made);
        }
    });
    if (run.level() < 4) {
        return;
    }
    PlayedPlugin plugin(run);
    const Clip every = writeOwn(run, "every-sound.avi", everyKindOfSound());
    OpenClip clip(plugin, every);
    const std::vector<SoundStream> streams = soundStreams(clip);
    run.expectEqual("the number of streams of sound in every-sound.avi", streams.size(), every.made->audio.size());
    for (const SoundStream& stream : streams) {
        run.step("every-sound.avi, stream " + std::to_string(stream.number()));
        stream.select();
        expectWrittenSound(run, stream, *stream.made());
    }
    run.step("");
}

// --- audio-past-the-end -----------------------------------------------------------------------------------------

namespace {

void expectFill(CheckRun& run, const SoundStream& stream, std::int64_t position, std::size_t frames) {
    expectSound(run, rangeText(position, frames) + ", behind the end at " + std::to_string(stream.duration()),
                stream.import(position, frames), constantSound(stream.fill(), stream.channels(), frames));
}

void expectFillAfter(CheckRun& run, const SoundStream& stream, std::int64_t before, std::size_t behind) {
    const std::int64_t position = stream.duration() - before;
    Sound wanted = stream.import(position, static_cast<std::size_t>(before));
    const std::size_t frames = wanted.frames() + behind;
    wanted.append(constantSound(stream.fill(), stream.channels(), behind));
    expectSound(run, rangeText(position, frames) + ", across the end at " + std::to_string(stream.duration()),
                stream.import(position, frames), wanted);
}

}  // namespace

void audioPastTheEnd(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        // A user's file may hold more sound than its header says: only far past the end is there certainly none.
        const std::int64_t farBehind = stream.duration() + (std::int64_t{1} << 40);
        expectFill(run, stream, farBehind, 333);
        if (stream.made()) {
            expectFill(run, stream, stream.duration(), 1);
            expectFill(run, stream, stream.duration(), 500);
            expectFill(run, stream, stream.duration() + 1, 500);
            for (const std::int64_t before : {1, 7, 100}) {
                expectFillAfter(run, stream, std::min(before, stream.duration()), 1);
                expectFillAfter(run, stream, std::min(before, stream.duration()), 250);
            }
        }
        const Sound last = stream.import(stream.duration() - 1, 1);
        stream.import(std::numeric_limits<std::int64_t>::max() / 2, 10);    // any answer will do
        expectSound(run, "the last sample after the requests behind the end", stream.import(stream.duration() - 1, 1),
                    last);
    });
}

// --- audio-exact-buffers ----------------------------------------------------------------------------------------

void audioExactBuffers(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        for (const Window& window : windowsOf(stream, static_cast<std::size_t>(run.effort(200, 2000)))) {
            for (std::size_t frames = 1; frames <= window.frames(); frames += 1 + frames / 5) {
                expectPart(run, stream, window, 0, frames);
                expectPart(run, stream, window, window.frames() - frames, frames);
            }
        }
    });
}

// --- audio-zero-size --------------------------------------------------------------------------------------------

void audioZeroSize(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        const Window window = windowsOf(stream, 100).front();
        for (const std::int64_t position : {std::int64_t{0}, std::int64_t{5}, stream.duration() - 1, stream.duration(),
                                            stream.duration() + 1000, std::int64_t{-1}}) {
            run.expectResult("the answer to no samples at " + std::to_string(position),
                             stream.import(position, 0).result);
        }
        if (window.frames() >= 50) {
            stream.import(20, 0);
            expectSound(run, "30 samples from where no samples at 20 were asked for", stream.import(-1, 30),
                        window.sound.part(20, 30));
        }
        expectPart(run, stream, window, 0, window.frames(), " after the requests of no samples");
    });
}

// --- audio-large-request ----------------------------------------------------------------------------------------

void audioLargeRequest(CheckRun& run) {
    forEachSound(run, [&](const SoundStream& stream) {
        const auto length = static_cast<std::size_t>(std::min(stream.duration(), kMostFrames));
        const auto behind = static_cast<std::size_t>(run.effort(20000, 100000));
        Sound parts = stream.import(0, std::min<std::size_t>(length, 1000));
        while (parts.frames() < length) {
            parts.append(stream.import(static_cast<std::int64_t>(parts.frames()),
                                       std::min<std::size_t>(length - parts.frames(), 1000)));
        }
        const std::size_t frames = stream.made() && stream.duration() <= kMostFrames ? length + behind : length;
        parts.append(constantSound(stream.fill(), stream.channels(), frames - length));
        expectSound(run, rangeText(0, frames) + ", asked for at once", stream.import(0, frames), parts);
    });
}

}  // namespace importhost::validate
