// A clip opened for the sound of one of its streams: what it is, and its samples.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "importhost/clips/Editor.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace importhost {

class SoundClip {
public:
    // Opens the clip as the editor does and asks for this stream, from 0. Throws ClipFailure when the plug-in refuses
    // it, when there is no sound in the stream, and for a sound that the editor could not take; UsageError when the
    // file does not have the stream.
    SoundClip(Editor& editor, const std::filesystem::path& path, csSDK_int32 streamIndex);

    csSDK_int32 channels() const { return m_info->record->audInfo.numChannels; }
    std::uint32_t sampleRate() const;                       // Hz
    // False for the substitute of sound that the plug-in cannot use.
    bool isUsable() const { return m_info->record->audInfo.sampleType != kPrAudioSampleType_Other; }
    std::int64_t sampleFrames() const { return m_info->record->audDuration; }
    const std::vector<csSDK_int32>& labels() const { return m_labels; }     // none when the plug-in gives no layout

    // The sample frames first, first + 1, ... of every channel. Throws ClipFailure when the plug-in fails or leaves
    // samples out.
    std::vector<std::vector<float>> read(std::int64_t first, std::uint32_t count);

    // For those who ask in another way.
    hostkit::ClipSession& session() { return m_clip; }

private:
    hostkit::ClipSession m_clip;
    std::string m_name;
    std::optional<hostkit::Answer<imFileInfoRec8>> m_info;
    std::vector<csSDK_int32> m_labels;
};

// Whether a sample is still as the host's buffer held it before the call.
bool isUndelivered(float sample);

}  // namespace importhost
