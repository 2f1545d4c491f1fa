// The audio stream that an importer delivers. A description whose stream failed the checks is "invalid": it still
// exists and answers the host with fixed substitute values.
#pragma once

#include "avi/AviStream.h"
#include "fileio/ByteBuffer.h"
#include "fileio/File.h"
#include "host/ImporterSuites.h"
#include "importer/WaveFormat.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <string>

class AudioInfo {
public:
    // `file` and `suites` must outlive the object; only importAudio uses them.
    AudioInfo(fileio::File& file, LazyImporterSuites& suites);
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

    // Delivers a run of sample frames to the host's buffers, one a channel. What lies past the end, or cannot be read,
    // is filled. Gives 0, imDecompressionError for samples that cannot be converted, or imOtherErr where the host has no
    // buffer for each channel; an invalid description leaves the buffers alone. Throws std::runtime_error when integer samples need an Audio Suite that the host refuses.
    // One call at a time.
    csSDK_int32 importAudio(const imImportAudioRec7& record);

private:
    struct AudioRange;
    void logRange(const imImportAudioRec7& record, const AudioRange& range) const;
    std::uint32_t readBytes(const AudioRange& range);
    bool readFromChunk(const AviChunk& chunk, const AudioRange& range, std::uint32_t& done);
    csSDK_int32 convert(const imImportAudioRec7& record, const AudioRange& range);

    void readFormat(const std::vector<std::uint8_t>& bytes);
    bool checkFormat() const;

    fileio::File& m_file;
    LazyImporterSuites& m_suites;
    bool m_valid = false;
    const AviStream* m_stream = nullptr;
    std::int64_t m_numAudioSampleFrames = 0;
    PrAudioSampleType m_sampleType = kPrAudioSampleType_Other;
    WaveFormatExtensible m_format;
    std::int64_t m_audioPosition = 0;   // sample frames: where the last import ended
    ByteBuffer m_bytes;                 // of the last import, as the file has them
};
