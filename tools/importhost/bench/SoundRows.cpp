#include "importhost/bench/SoundRows.h"

#include "importhost/bench/RowBuilder.h"
#include "importhost/bench/Sampling.h"
#include "importhost/clips/SoundReader.h"
#include "importhost/clips/VideoClip.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::bench {

namespace {

bool isWhole(const hostkit::AudioAnswer& answer) {
    return std::none_of(answer.channels.begin(), answer.channels.end(), [](const std::vector<float>& samples) {
        return std::any_of(samples.begin(), samples.end(), isUndelivered);
    });
}

SoundRow measureStream(Editor& editor, csSDK_int32 stream, ReadCounter& counter, FileMeasurement& file) {
    SoundReader clip(editor, file.path, stream);
    SoundRow sound{stream, clip.channels(), clip.sampleRate(), clip.sampleFrames(), 0, {}};
    const std::vector<std::int64_t> blocks =
        spreadIndexes((sound.sampleFrames + kSoundBlock - 1) / kSoundBlock, kMostSoundBlocks);
    RowBuilder row("stream " + std::to_string(stream), blocks.size(), counter, file.failures);
    for (const std::int64_t block : blocks) {
        const std::int64_t first = block * kSoundBlock;
        const std::int64_t count = std::min(kSoundBlock, sound.sampleFrames - first);
        const Stopwatch watch;
        const hostkit::AudioAnswer answer =
            clip.session().audio(first, static_cast<csSDK_uint32>(count), sound.channels);
        const double waited = watch.milliseconds();
        if (answer.result == imNoErr && isWhole(answer)) {
            row.delivered(waited);
            sound.measured += count;
        } else {
            row.failed("Sound from sample frame " + std::to_string(first) + " on",
                       answer.result == imNoErr ? "samples were left out" : hostkit::resultText(answer.result));
        }
        row.step();
    }
    sound.blocks = row.finish();
    return sound;
}

// The streams that a host would find: true for those with sound.
std::vector<bool> soundOfStreams(Editor& editor, const std::filesystem::path& path) {
    hostkit::ClipSession session(editor.session(), path);
    std::vector<bool> hasSound;
    if (session.open().result == imNoErr) {
        for (const auto& info : session.infos()) {
            hasSound.push_back(info->hasAudio != 0);
        }
    }
    return hasSound;
}

}  // namespace

double SoundRow::timesRealTime() const {
    const double played = sampleRate > 0 ? static_cast<double>(measured) / sampleRate : 0.0;
    return blocks.waits.total > 0.0 ? played * 1000.0 / blocks.waits.total : 0.0;
}

double SoundRow::bytesPerSecond() const {
    const double bytes = static_cast<double>(measured) * channels * sizeof(float);
    return blocks.waits.total > 0.0 ? bytes * 1000.0 / blocks.waits.total : 0.0;
}

void measureSound(Editor& editor, ReadCounter& counter, FileMeasurement& file) {
    const std::vector<bool> streams = soundOfStreams(editor, file.path);
    for (std::size_t stream = 0; stream < streams.size(); ++stream) {
        if (!streams[stream]) {
            continue;
        }
        try {
            file.sound.push_back(measureStream(editor, static_cast<csSDK_int32>(stream), counter, file));
        } catch (const ClipFailure& failure) {
            file.failures.push_back(failure.what());
        }
    }
}

}  // namespace importhost::bench
