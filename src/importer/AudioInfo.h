// The audio stream that an importer delivers. If the stream failed the checks the description is "invalid": it still
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

    // Checks and copies the stream's format; the stream must outlive the object. Returns imNoErr, or imBadFile after
    // logging what is wrong.
    csSDK_int32 parse(const AviStream& stream);

    bool valid() const { return m_valid; }

    // Writes one label per channel, at most kMaxAudioChannelCount; labels that the channel mask does not define are
    // left unchanged. Returns imNoErr, or imUnsupported if invalid.
    csSDK_int32 getChannelLayout(csSDK_int32* labels) const;

    // Logs the description and fills in the audio fields of the host's record.
    void dumpAndFill(imFileInfoRec8* fileInfo) const;

    // A description for people; each line ends in a line feed.
    std::string summary() const;

    // Writes the requested sample frames to the host's buffers, one per channel. Samples past the end or unreadable are
    // filled. Returns imNoErr, imDecompressionError for samples that cannot be converted, or imOtherErr if a channel
    // has no buffer; an invalid description leaves the buffers unchanged. Throws std::bad_alloc, and std::runtime_error
    // if integer samples need an Audio Suite that the host refuses. Calls must not overlap.
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
    std::int64_t m_audioPosition = 0;   // sample frame where the last import ended
    ByteBuffer m_bytes;                 // of the last import, as stored in the file
};
