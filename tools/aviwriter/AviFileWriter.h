// Writes a whole AVI file: headers, interleaved chunks, indexes, and segments for files of any size. Chunks are written
// immediately; only the indexes are kept in memory, so files can be far larger than memory.
#pragma once

#include "aviwriter/Blocks.h"
#include "aviwriter/ByteSink.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace aviwriter {

enum class IndexKind { idx1, openDml, both };

struct VideoTrack {
    std::uint32_t width = 16;       // pixels
    std::uint32_t height = 16;      // pixels
    std::uint32_t rate = 25;        // rate / scale frames per second
    std::uint32_t scale = 1;
    std::string handler = "QVAN";   // four-character code of "strh" and "strf"
    Bytes extraData{};              // follows the 40 bytes of the format record
};

// How much of the format record is written.
enum class WaveRecord { pcm16, ex18, extensible40 };

struct AudioTrack {
    WaveFormat format{};
    WaveRecord record = WaveRecord::ex18;
};

// A stream whose headers and chunks come from another file.
struct CopiedTrack {
    Bytes header{};                 // "strh", 56 bytes, with its length
    Bytes format{};                 // "strf"
    Bytes more{};                   // whole chunks that follow the format
    std::string type = "dc";        // of its chunks, in the index
    bool isVideo = false;
};

struct FileLayout {
    IndexKind index = IndexKind::both;
    // A segment ("AVI " or "AVIX" RIFF) ends before it would exceed this many bytes. A larger chunk gets a segment of
    // its own. Without OpenDML indexes only the first segment can be reached, so with IndexKind::idx1 there is one
    // segment and the limit is ignored.
    std::uint64_t segmentBytes = 1U << 30;
    std::uint32_t superIndexRoom = 128;   // maximum number of segments in each "indx"
};

// Stream 0 is the video, if any; audio tracks follow in order. Not thread-safe.
//
// Every function throws std::runtime_error if the sink does, and std::length_error if the file no longer fits its
// structure: a RIFF larger than 4 GiB, or more segments than `superIndexRoom`.
class AviFileWriter {
public:
    // Writes the headers, with counts of zero for now. `sink` must outlive the writer. Throws std::invalid_argument for
    // an invalid four-character code as handler, a frame rate or sample frame size of zero, no streams, or more than
    // 100.
    AviFileWriter(ByteSink& sink, const FileLayout& layout, const std::optional<VideoTrack>& video,
                  const std::vector<AudioTrack>& audio);

    // The same for streams from another file; `mainHeader` is the 56 bytes of its "avih". Throws
    // std::invalid_argument when there is no stream or a header of another size.
    AviFileWriter(ByteSink& sink, const FileLayout& layout, const Bytes& mainHeader,
                  const std::vector<CopiedTrack>& tracks);

    // Reserves room for a chunk of `size` data bytes and adds it to the indexes; `length` is what it adds to its
    // segment, in the stream's units. Returns the position in the sink where the caller writes header, data and pad
    // byte, gigabytes at a time if it likes.
    std::uint64_t addChunk(std::size_t stream, const std::string& id, std::uint32_t size, bool isKey,
                           std::uint32_t length);

    // Writes one compressed frame; empty data is a dropped frame, a chunk of size 0.
    void writeVideo(const Bytes& frame);

    // Writes one chunk of whole sample frames for audio track `track`, from 0.
    void writeAudio(std::size_t track, const Bytes& samples);

    // Ends the current segment and begins an "AVIX" segment, `hole` bytes later. The hole (0, or at least 8; odd values
    // grow by one) consists of "JUNK" chunks between the two RIFFs whose contents are never written, so it moves what
    // follows to high file positions at no cost. With IndexKind::idx1, which has one segment, the hole goes into the
    // "movi" list instead.
    void startSegment(std::uint64_t hole);

    // Writes the indexes and completes the headers. Nothing may be written afterwards.
    void finish();

private:
    struct Stream {
        StreamHeader header{};
        Bytes format{};
        std::string handler{};              // header.handler points to it
        std::string chunkId{};              // "00dc", "01wb"
        std::string indexId{};              // "ix00"
        std::uint64_t bytesPerSecond = 0;   // for sound; 0 for video
        std::vector<StandardIndexEntry> segmentEntries{};   // offsets relative to the segment's "movi" list
        std::uint32_t segmentLength = 0;                    // frames or sample frames in this segment
        std::vector<SuperIndexEntry> superEntries{};
        Bytes copiedHeader{};                               // stands for `header` in a stream from another file
        Bytes more{};
        bool isVideo = false;
    };

    bool hasIdx1() const { return m_layout.index != IndexKind::openDml; }
    bool hasOpenDml() const { return m_layout.index != IndexKind::idx1; }

    void addVideo(const VideoTrack& video);
    void addAudio(const AudioTrack& audio);
    Bytes headers() const;
    Bytes streamList(const Stream& stream) const;
    Bytes streamHeader(const Stream& stream) const;
    MainHeader mainHeader() const;

    void writeChunk(Stream& stream, const Bytes& data, std::uint32_t length);
    std::uint64_t enterChunk(Stream& stream, const std::string& id, std::uint32_t size, bool isKey,
                             std::uint32_t length);
    Bytes copiedMainHeader() const;
    std::uint32_t videoLength() const;
    void openMovi();
    void endSegment();
    void writeHole(std::uint64_t hole);
    void writeStandardIndexes();
    std::uint64_t segmentSizeWith(std::size_t chunkBytes) const;
    void append(const Bytes& data);
    void patchSize(std::uint64_t chunkPosition);

    ByteSink& m_sink;
    FileLayout m_layout;
    std::optional<VideoTrack> m_video;
    std::vector<Stream> m_streams;
    Bytes m_copiedMainHeader;
    Bytes m_idx1;                        // the entries of the first segment
    std::uint64_t m_end = 0;             // current size of the file
    std::uint64_t m_riff = 0;            // position of the current segment
    std::uint64_t m_movi = 0;            // position of its "movi" list
    std::uint64_t m_firstRiffSize = 0;   // 0 until the first segment has ended
    std::uint32_t m_firstRiffFrames = 0;
};

}  // namespace aviwriter
