// The audio stream that an importer delivers. A description whose stream failed the checks is "invalid": it still
// exists and answers the host with fixed substitute values.
#pragma once

#include "avi/AviStream.h"
#include "importer/WaveFormat.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <string>

class AudioInfo {
public:
    AudioInfo();
    ~AudioInfo();

    AudioInfo(const AudioInfo&) = delete;
    AudioInfo& operator=(const AudioInfo&) = delete;

    // Checks and takes over the stream's format; the stream must outlive the object. Gives 0, or imBadFile after
    // logging what is wrong.
    csSDK_int32 parse(const AviStream& stream);

    bool valid() const { return m_valid; }

    // Writes one label a channel, kMaxAudioChannelCount at the most; labels that the channel mask does not give stay
    // as they are. Gives 0, or imUnsupported when invalid.
    csSDK_int32 getChannelLayout(csSDK_int32* labels) const;

    // Logs the description and fills the audio fields of the host's record.
    void dumpAndFill(imFileInfoRec8* fileInfo) const;

    // A description for people, each line ended.
    std::string summary() const;

private:
    void readFormat(const std::vector<std::uint8_t>& bytes);
    bool checkFormat() const;

    bool m_valid = false;
    const AviStream* m_stream = nullptr;
    std::int64_t m_numAudioSampleFrames = 0;
    PrAudioSampleType m_sampleType = kPrAudioSampleType_Other;
    WaveFormatExtensible m_format;
};
