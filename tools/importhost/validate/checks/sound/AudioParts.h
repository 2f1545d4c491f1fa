// What the checks of sound share: streams selected, and imported sound that can be compared. Inner header.
#pragma once

#include "importhost/validate/checks/stage/OpenClip.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace importhost::validate {

// Imported samples, channel by channel, as bits: comparing floats would take two different zeros for the same.
struct Sound {
    csSDK_int32 result = 0;
    std::vector<std::vector<std::uint32_t>> channels;

    std::size_t frames() const { return channels.empty() ? 0 : channels.front().size(); }
    Sound part(std::size_t start, std::size_t count) const;
    void append(const Sound& next);

    friend bool operator==(const Sound&, const Sound&) = default;
};

// One sample over and over.
Sound constantSound(float sample, int channels, std::size_t frames);

// A stream of a clip's sound. Its clip must be described with this stream: select() does so.
class SoundStream {
public:
    SoundStream(OpenClip& clip, csSDK_int32 number, const imFileInfoRec8& info)
        : m_clip(&clip), m_number(number), m_info(info) {}

    OpenClip& clip() const { return *m_clip; }
    csSDK_int32 number() const { return m_number; }
    int channels() const { return m_info.audInfo.numChannels; }
    std::int64_t duration() const { return m_info.audDuration; }        // sample frames
    csSDK_int32 sampleType() const { return m_info.audInfo.sampleType; }

    // What was written, for a stream of an own sample; else null.
    const aviwriter::SampleAudio* made() const;

    // What this importer fills the time after the end with: in 8 bits the lowest sample, else silence.
    float fill() const { return sampleType() == kPrAudioSampleType_8BitInt ? -1.0F : 0.0F; }

    void select() const { m_clip->session().info(m_number); }
    Sound import(std::int64_t position, std::size_t frames) const;

private:
    OpenClip* m_clip;
    csSDK_int32 m_number;
    imFileInfoRec8 m_info;
};

// The streams of a clip that hold sound; the last one asked for stays selected.
std::vector<SoundStream> soundStreams(OpenClip& clip);

// Every stream of every clip with sound, selected; the step names both. Skips the check when there is none. Of a
// damaged clip not all sound need be there.
void forEachSound(CheckRun& run, const std::function<void(const SoundStream&)>& look);

// A part of a stream to look at closely, imported at once.
struct Window {
    std::int64_t start = 0;
    Sound sound;

    std::size_t frames() const { return sound.frames(); }
    std::int64_t end() const { return start + static_cast<std::int64_t>(frames()); }
};

// The start, a part of the middle and the end of a stream, `frames` long at most.
std::vector<Window> windowsOf(const SoundStream& stream, std::size_t frames);

// Fails unless both are the same, and says where they differ.
bool expectSound(CheckRun& run, const std::string& what, const Sound& found, const Sound& wanted);

// Imports a part of a window; it must be the same as in the window.
bool expectPart(CheckRun& run, const SoundStream& stream, const Window& window, std::size_t start, std::size_t frames,
                const std::string& how = "");

// "100 samples at 5"
std::string rangeText(std::int64_t position, std::size_t frames);

// --- The checks, by file ----------------------------------------------------------------------------------------

void audioDelivered(CheckRun& run);             // AudioRangeChecks.cpp
void audioTrueSamples(CheckRun& run);
void audioPastTheEnd(CheckRun& run);
void audioExactBuffers(CheckRun& run);
void audioZeroSize(CheckRun& run);
void audioLargeRequest(CheckRun& run);

void audioPartitions(CheckRun& run);            // AudioOrderChecks.cpp
void audioEveryPartition(CheckRun& run);
void audioSeeks(CheckRun& run);
void audioContinues(CheckRun& run);

void audioStreams(CheckRun& run);               // AudioClipChecks.cpp
void audioNoStream(CheckRun& run);
void audioTwoClips(CheckRun& run);
void audioBesideFrames(CheckRun& run);
void audioAfterQuiet(CheckRun& run);

}  // namespace importhost::validate
