// A clip opened for the sound of one stream: its description and its samples.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "importhost/clips/Editor.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace importhost {

class SoundReader {
public:
    // Opens the clip like the editor and describes stream `streamIndex`, from 0. Throws ClipFailure if the plug-in
    // refuses the clip, if there is no sound in the stream, and for a sound that the editor does not support;
    // UsageError if the file does not have the stream.
    SoundReader(Editor& editor, const std::filesystem::path& path, csSDK_int32 streamIndex);

    csSDK_int32 channels() const { return m_info->record->audInfo.numChannels; }
    std::uint32_t sampleRate() const;                       // Hz
    // False for the substitute that the plug-in describes instead of unusable sound.
    bool isUsable() const { return m_info->record->audInfo.sampleType != kPrAudioSampleType_Other; }
    std::int64_t sampleFrames() const { return m_info->record->audDuration; }
    const std::vector<csSDK_int32>& labels() const { return m_labels; }     // empty if the plug-in reports no layout

    // Sample frames [first, first + count) of every channel. Throws ClipFailure if the plug-in fails or omits samples.
    std::vector<std::vector<float>> read(std::int64_t first, std::uint32_t count);

    // For other kinds of requests.
    hostkit::ClipSession& session() { return m_clip; }

private:
    hostkit::ClipSession m_clip;
    std::string m_name;
    std::optional<hostkit::Answer<imFileInfoRec8>> m_info;
    std::vector<csSDK_int32> m_labels;
};

// True if the sample still has the value from before the call.
bool isUndelivered(float sample);

}  // namespace importhost
