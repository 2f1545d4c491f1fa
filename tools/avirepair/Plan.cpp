#include "avirepair/Plan.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace avirepair {

namespace {

constexpr std::uint64_t kMostFilled = 1'000'000;        // frames: eleven hours that are lost are not worth a place
constexpr double kMostCatchingUp = 100;                 // frames where no bytes are missing
constexpr std::uint32_t kSilenceChunk = 1 << 20;
constexpr std::uint32_t kMostSampleBytes = 0xFFFF;      // as a sound format can say
constexpr std::uint64_t kMoreSilence = 4 << 20;         // bytes that may be filled in beyond those of the file
constexpr std::size_t kRateAt = 24, kScaleAt = 20, kLengthAt = 32, kSampleSizeAt = 44;

void put32(Bytes& bytes, std::size_t at, std::uint64_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(std::min<std::uint64_t>(value, 0xFFFFFFFF) >> (8 * i));
    }
}

std::string counted(std::uint64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

bool isVideoType(std::uint32_t type) { return type == fourcc("vids") || type == fourcc("iavs"); }

bool fitsType(std::uint32_t type, ChunkType chunk) {
    switch (chunk) {
        case ChunkType::wb: return type == fourcc("auds");
        case ChunkType::tx:
        case ChunkType::sb: return type != fourcc("auds") && !isVideoType(type);
        default: return isVideoType(type);
    }
}

bool isPcm(const Bytes& format) {
    const std::uint32_t tag = format.size() >= 16 ? u16In(format, 0) : 0;
    return tag == 1 || tag == 3 || (tag == 0xFFFE && format.size() >= 26 && u16In(format, 24) <= 3);
}

PlannedStream plannedOf(const FoundStream& found, std::size_t number) {
    PlannedStream stream = {.header = found.header, .format = found.format, .more = found.more,
                            .found = static_cast<std::uint16_t>(number)};
    stream.isVideo = isVideoType(found.type());
    stream.isSound = found.type() == fourcc("auds");
    stream.type = stream.isSound ? ChunkType::wb : stream.isVideo ? ChunkType::dc : ChunkType::tx;
    if (!stream.isSound) {
        return stream;
    }
    const std::uint32_t block = isPcm(found.format) ? u16In(found.format, 12) : 0;
    stream.sampleBytes = block > 0 ? block : u32In(found.header, kSampleSizeAt);
    if (block > 0 && u32In(found.header, kSampleSizeAt) != block) {
        put32(stream.header, kSampleSizeAt, block);
        if (u32In(found.header, kRateAt) == std::uint64_t{u32In(found.header, kScaleAt)} * u32In(found.format, 8)) {
            put32(stream.header, kScaleAt, 1);      // the header counts bytes
            put32(stream.header, kRateAt, u32In(found.format, 4));
        }
    }
    return stream;
}

class Planner {
public:
    Planner(const Scan& scan, const IndexMatch& index, const Options& options, const Scan* like)
        : m_scan(scan), m_index(index), m_options(options), m_headers(like != nullptr ? *like : scan) {}

    Plan run() {
        planStreams();
        mapIds();
        choose();
        measure();
        placeAll();
        finishStreams();
        sayWhatWasWrong(m_headers.mainHeader.empty());
        return std::move(m_plan);
    }

private:
    using Id = std::pair<std::uint16_t, ChunkType>;
    static constexpr std::size_t kNowhere = ~std::size_t{0};

    // --- Streams and the chunks that are theirs ---

    void planStreams() {
        for (std::size_t i = 0; i < m_headers.streams.size(); ++i) {
            m_streamOf.push_back(m_headers.streams[i].isUsable() ? m_plan.streams.size() : kNowhere);
            if (m_headers.streams[i].isUsable()) {
                m_plan.streams.push_back(plannedOf(m_headers.streams[i], i));
            }
        }
        m_states.resize(m_plan.streams.size());
        m_plan.mainHeader = m_headers.mainHeader.empty() ? madeMainHeader() : m_headers.mainHeader;
    }

    Bytes madeMainHeader() const {
        Bytes header(56);
        for (const PlannedStream& stream : m_plan.streams) {
            if (stream.isVideo && u32In(header, 0) == 0) {
                put32(header, 0, static_cast<std::uint64_t>(std::min(stream.seconds(1), 4000.0) * 1e6));
                put32(header, 32, stream.format.size() >= 12 ? u32In(stream.format, 4) : 0);
                put32(header, 36, stream.format.size() >= 12 ? u32In(stream.format, 8) : 0);
            }
        }
        return header;
    }

    std::size_t streamNumbered(std::uint16_t number) const {
        return number < m_streamOf.size() ? m_streamOf[number] : kNowhere;
    }

    std::uint32_t typeOf(std::size_t stream) const { return u32In(m_plan.streams[stream].header, 0); }

    // By the number in the id where the stream is of the id's type; else the first stream of that type that has no
    // chunks of its own; else by the number alone.
    void mapIds() {
        std::map<Id, bool> ids;
        for (const FoundChunk& chunk : m_scan.chunks) {
            ids[{chunk.number, chunk.type}] = true;
        }
        std::vector<bool> taken(m_plan.streams.size(), false);
        const auto give = [&](const Id& id, std::size_t stream) {
            m_ids[id] = stream;
            taken[stream] = true;
        };
        for (const auto& [id, unused] : ids) {
            const std::size_t stream = streamNumbered(id.first);
            if (stream != kNowhere && fitsType(typeOf(stream), id.second)) {
                give(id, stream);
            }
        }
        for (const auto& [id, unused] : ids) {
            for (std::size_t stream = 0; stream < taken.size() && !m_ids.contains(id); ++stream) {
                if (!taken[stream] && fitsType(typeOf(stream), id.second)) {
                    give(id, stream);
                }
            }
        }
        for (const auto& [id, unused] : ids) {
            const std::size_t stream = streamNumbered(id.first);
            if (!m_ids.contains(id) && stream != kNowhere && !taken[stream]) {
                give(id, stream);
            }
        }
    }

    std::size_t streamOf(const FoundChunk& chunk) const {
        const auto found = m_ids.find({chunk.number, chunk.type});
        return found == m_ids.end() ? kNowhere : found->second;
    }

    std::size_t streamOf(const MissingChunk& chunk) const {
        const auto found = m_ids.find({chunk.number, chunk.isSound ? ChunkType::wb : ChunkType::dc});
        return found != m_ids.end() ? found->second : streamNumbered(chunk.number);
    }

    // --- Which chunks ---

    void choose() {
        std::map<std::string, std::uint64_t> homeless;
        std::uint64_t doubtful = 0, leftOut = 0;
        m_isTaken.assign(m_scan.chunks.size(), false);
        for (std::size_t i = 0; i < m_scan.chunks.size(); ++i) {
            const FoundChunk& chunk = m_scan.chunks[i];
            const bool isDoubtful = chunk.is(FoundChunk::kDoubtful) && !chunk.is(FoundChunk::kListed);
            if (isDoubtful && !m_options.takesAll) {
                ++doubtful;
            } else if (m_index.leftOut[i] && !m_options.takesAll) {
                ++leftOut;
            } else if (streamOf(chunk) == kNowhere) {
                ++homeless[chunk.id()];
            } else {
                m_isTaken[i] = true;
            }
        }
        for (const auto& [id, count] : homeless) {
            lose("of a stream whose headers are lost: " + counted(count, "chunk") + " named " + id +
                 "; --like takes the headers from another clip");
        }
        if (doubtful > 0) {
            m_plan.notes.push_back(counted(doubtful, "chunk") + " after the end of the recording, perhaps remains of "
                                   "an older file; --all takes them");
        }
        if (leftOut > 0) {
            m_plan.notes.push_back(counted(leftOut, "chunk") + " that the index, which is sound, does not list; --all "
                                   "takes them");
        }
    }

    // --- How much a lost byte is worth ---

    // The first video stream, and how many bytes of the file go with one of its frames. Where the header counts more
    // frames than were found and the file is not cut, the gaps share the difference.
    void measure() {
        std::uint64_t frames = 0, bytes = 0, lost = 0;
        for (std::size_t i = 0; i < m_plan.streams.size() && m_video == kNowhere; ++i) {
            m_video = m_plan.streams[i].isVideo ? i : kNowhere;
        }
        for (std::size_t i = 0; i < m_scan.chunks.size(); ++i) {
            if (m_isTaken[i]) {
                bytes += 8 + m_scan.chunks[i].size;
                frames += streamOf(m_scan.chunks[i]) == m_video ? 1 : 0;
            }
        }
        for (const Gap& gap : m_scan.gaps) {
            lost += gap.isTrailing || isCovered(gap) ? 0 : gap.end - gap.begin;
        }
        m_bytesPerFrame = frames > 0 ? static_cast<double>(bytes) / static_cast<double>(frames) : 0;
        if (m_video == kNowhere || lost == 0 || m_scan.mediaEnd > m_scan.fileSize || !m_index.missing.empty()) {
            return;
        }
        const std::uint64_t expected = u32In(m_plan.streams[m_video].header, kLengthAt);
        if (expected > frames) {
            const double share = static_cast<double>(expected - frames) / static_cast<double>(lost);
            const bool isPlausible = share * m_bytesPerFrame > 0.25 && share * m_bytesPerFrame < 4;
            m_framesPerLostByte = isPlausible ? share : 0;
        }
    }

    bool isCovered(const Gap& gap) const {
        return std::binary_search(m_index.covered.begin(), m_index.covered.end(), gap.begin);
    }

    // --- Chunk by chunk ---

    struct State {
        std::uint64_t chunks = 0;
        std::uint64_t bytes = 0;
        double lead = 0;            // of sound: seconds that it was ahead of the video at its last chunk
        bool hasLead = false;
    };

    void placeAll() {
        m_plan.chunks.reserve(m_scan.chunks.size() + m_index.missing.size());
        auto missing = m_index.missing.begin();
        auto gap = m_scan.gaps.begin();
        for (std::size_t i = 0; i <= m_scan.chunks.size(); ++i) {
            for (; missing != m_index.missing.end() && missing->after == i; ++missing) {
                placeMissing(*missing);
            }
            if (i == m_scan.chunks.size()) {
                break;
            }
            double lostBytes = 0;
            bool isBroken = false;
            for (; gap != m_scan.gaps.end() && gap->begin <= m_scan.chunks[i].position; ++gap) {
                const bool counts = !gap->isTrailing && !isCovered(*gap) && i > 0;
                lostBytes += counts ? static_cast<double>(gap->end - gap->begin) : 0;
                isBroken = isBroken || counts;
            }
            if (isBroken && m_isTaken[i]) {
                fillGap(i, lostBytes);
            }
            if (m_isTaken[i]) {
                placeFound(m_scan.chunks[i]);
            }
        }
    }

    void placeMissing(const MissingChunk& missing) {
        const std::size_t stream = streamOf(missing);
        if (stream == kNowhere) {
            return;
        }
        if (missing.size == 0) {
            if (m_plan.streams[stream].isVideo) {
                place({.stream = static_cast<std::uint16_t>(stream), .type = m_plan.streams[stream].type,
                       .kind = PlannedChunk::dropped, .isKey = false,
                       .hasHeader = false});
            }
        } else if (m_plan.streams[stream].isVideo) {
            placeLostFrames(stream, 1);
        } else if (m_plan.streams[stream].isSound) {
            placeSilence(stream, missing.size);
        }
    }

    void placeFound(const FoundChunk& chunk) {
        const std::size_t number = streamOf(chunk);
        PlannedStream& stream = m_plan.streams[number];
        const bool isBroken = chunk.is(FoundChunk::kCut) || chunk.is(FoundChunk::kInZeros);
        if (stream.isVideo && isBroken && chunk.type != ChunkType::pc) {
            placeBrokenFrame(number, chunk);
            return;
        }
        std::uint32_t size = chunk.size;
        if (stream.isSound && (isBroken || chunk.is(FoundChunk::kResized)) && stream.sampleBytes > 0) {
            size -= size % stream.sampleBytes;
        }
        if (stream.isSound && m_video != kNowhere) {
            m_states[number].lead = seconds(number) - seconds(m_video);
            m_states[number].hasLead = true;
        }
        const bool knowsKey = chunk.is(FoundChunk::kListed) || chunk.size == 0;
        place({chunk.position, size, static_cast<std::uint16_t>(number), chunk.type,
               chunk.size == 0 ? PlannedChunk::dropped : PlannedChunk::copied,
               knowsKey ? chunk.is(FoundChunk::kKey) : true,
               size == chunk.size && isHeaderGood(chunk, stream)});
        if (chunk.is(FoundChunk::kCut) && stream.isSound) {
            note(number, 0, 0);
        }
    }

    bool isHeaderGood(const FoundChunk& chunk, const PlannedStream& stream) const {
        const auto number = static_cast<std::size_t>(&stream - m_plan.streams.data());
        return chunk.number == number && !chunk.is(FoundChunk::kResized) && !chunk.is(FoundChunk::kCut) &&
               !(chunk.is(FoundChunk::kUnpadded) && chunk.size % 2 != 0);
    }

    // At the very end nothing has to keep its place.
    void placeBrokenFrame(std::size_t number, const FoundChunk& chunk) {
        if (&chunk == &m_scan.chunks.back()) {
            note(number, 1, 1);
        } else {
            placeLostFrames(number, 1);
        }
    }

    // --- Sync ---

    double seconds(std::size_t stream) const {
        const PlannedStream& planned = m_plan.streams[stream];
        const State& state = m_states[stream];
        return planned.seconds(planned.sampleBytes > 0 ? state.bytes / planned.sampleBytes : state.chunks);
    }

    // Each sound is to be as far ahead of the video as it was before, seen at its next chunk. The lost bytes first held
    // the sound that is missing for that; the rest held as many frames, with their sound, as it does on average, unless
    // the headers count them.
    void fillGap(std::size_t next, double lostBytes) {
        if (m_video == kNowhere || m_bytesPerFrame <= 0) {
            return;
        }
        const double frame = m_plan.streams[m_video].seconds(1);
        const double knownFrames = lostBytes * m_framesPerLostByte;
        const double most = 4 * lostBytes / m_bytesPerFrame + kMostCatchingUp;      // sound hours ahead is no measure
        std::vector<std::pair<std::size_t, double>> behind;        // seconds of sound that no lost frame goes with
        for (std::size_t sound = 0; sound < m_plan.streams.size() && frame > 0; ++sound) {
            if (m_plan.streams[sound].isSound && m_states[sound].hasLead) {
                if (const std::uint64_t before = framesBefore(next, sound); before != kNotFound) {
                    const double video = seconds(m_video) + static_cast<double>(before) * frame;
                    behind.emplace_back(sound, m_states[sound].lead + video - seconds(sound));
                    const double unit = m_plan.streams[sound].seconds(1);
                    lostBytes -= unit > 0 ? behind.back().second / unit * m_plan.streams[sound].sampleBytes : 0;
                }
            }
        }
        double frames = std::max(0.0, std::round(knownFrames > 0 ? knownFrames : lostBytes / m_bytesPerFrame));
        for (const auto& [sound, gapSeconds] : behind) {
            frames = std::max(frames, std::ceil(-gapSeconds / frame - 0.001));
        }
        frames = std::min({frames, most, static_cast<double>(m_framesLeft)});
        m_framesLeft -= static_cast<std::uint64_t>(frames);
        placeLostFrames(m_video, static_cast<std::uint64_t>(frames));
        for (const auto& [sound, gapSeconds] : behind) {
            placeSilence(sound, bytesOf(sound, gapSeconds + frames * frame));
        }
    }

    static constexpr std::uint64_t kNotFound = ~std::uint64_t{0};
    static constexpr std::size_t kFarthest = 1000;

    // Frames of the video from chunk `next` on to the first chunk of a sound.
    std::uint64_t framesBefore(std::size_t next, std::size_t sound) const {
        std::uint64_t frames = 0;
        for (std::size_t i = next; i < std::min(m_scan.chunks.size(), next + kFarthest); ++i) {
            if (m_isTaken[i] && streamOf(m_scan.chunks[i]) == sound) {
                return frames;
            }
            frames += m_isTaken[i] && streamOf(m_scan.chunks[i]) == m_video ? 1 : 0;
        }
        return kNotFound;
    }

    std::uint64_t bytesOf(std::size_t sound, double soundSeconds) const {
        const PlannedStream& stream = m_plan.streams[sound];
        const double unit = stream.seconds(1);
        const double units = unit > 0 ? std::round(soundSeconds / unit) : 0;
        return units > 0 && units < 1e12 ? static_cast<std::uint64_t>(units) * stream.sampleBytes : 0;
    }

    void placeLostFrames(std::size_t number, std::uint64_t count) {
        if (count == 0) {
            return;
        }
        note(number, count, count);
        for (std::uint64_t i = 0; i < count && !m_options.closesGaps; ++i) {
            place({.stream = static_cast<std::uint16_t>(number), .type = m_plan.streams[number].type,
                   .kind = PlannedChunk::lost, .isKey = false, .hasHeader = false});
        }
    }

    // Only sound of samples can be silent; other sound closes up.
    void placeSilence(std::size_t number, std::uint64_t bytes) {
        const PlannedStream& stream = m_plan.streams[number];
        if (stream.sampleBytes == 0) {
            return;
        }
        bytes = std::min(bytes, m_silenceLeft);
        bytes -= bytes % stream.sampleBytes;
        if (bytes == 0) {
            return;
        }
        m_silenceLeft -= bytes;
        note(number, bytes / stream.sampleBytes, bytes);
        if (m_options.closesGaps || !isPcm(stream.format) || stream.sampleBytes > kMostSampleBytes) {
            return;
        }
        for (std::uint64_t left = bytes; left > 0;) {
            const std::uint32_t most = std::max(kSilenceChunk - kSilenceChunk % stream.sampleBytes, stream.sampleBytes);
            const auto size = static_cast<std::uint32_t>(std::min<std::uint64_t>(left, most));
            place({.size = size, .stream = static_cast<std::uint16_t>(number), .type = ChunkType::wb,
                   .kind = PlannedChunk::lost, .hasHeader = false});
            left -= size;
        }
    }

    // Losses without a break between them become one.
    void note(std::size_t number, std::uint64_t units, std::uint64_t lost) {
        PlannedStream& stream = m_plan.streams[number];
        m_plan.hasLosses = true;
        stream.lost += lost;
        const double begin = seconds(number);
        const double length = stream.seconds(units);
        const std::uint64_t frames = stream.isVideo ? units : 0;
        for (auto loss = m_plan.losses.rbegin(); loss != m_plan.losses.rend(); ++loss) {
            if (loss->stream == number) {
                if (std::abs(loss->begin + (m_options.closesGaps ? 0 : loss->seconds) - begin) < 1e-6) {
                    loss->seconds += length;
                    loss->frames += frames;
                    return;
                }
                break;
            }
        }
        m_plan.losses.push_back({number, begin, length, frames});
    }

    void place(const PlannedChunk& chunk) {
        PlannedStream& stream = m_plan.streams[chunk.stream];
        State& state = m_states[chunk.stream];
        if (chunk.type != ChunkType::pc) {
            stream.type = state.chunks == 0 ? chunk.type : stream.type;
            ++state.chunks;
            stream.keyFrames += chunk.isKey ? 1 : 0;
            stream.dropped += chunk.kind == PlannedChunk::dropped ? 1 : 0;
        }
        state.bytes += chunk.size;
        m_plan.bytes += 8 + chunk.size + chunk.size % 2;
        m_plan.chunks.push_back(chunk);
    }

    // --- The end ---

    void finishStreams() {
        for (std::size_t i = 0; i < m_plan.streams.size(); ++i) {
            PlannedStream& stream = m_plan.streams[i];
            stream.chunks = m_states[i].chunks;
            stream.bytes = m_states[i].bytes;
            const std::uint64_t claimed = u32In(stream.header, kLengthAt);
            if (claimed != std::min<std::uint64_t>(stream.length(), 0xFFFFFFFF)) {
                m_plan.wrong.push_back("stream " + std::to_string(i) + ": the header's length was " +
                                       std::to_string(claimed) + ", not " + std::to_string(stream.length()));
                if (isCutOff() && claimed > stream.length()) {
                    note(i, claimed - stream.length(), 0);
                }
                put32(stream.header, kLengthAt, stream.length());
            }
        }
    }

    bool isCutOff() const { return !m_scan.isOpen && m_scan.mediaEnd > m_scan.fileSize; }

    void lose(const std::string& sentence) {
        m_plan.wrong.push_back(sentence);
        m_plan.hasLosses = true;
    }

    void sayWhatWasWrong(bool mainHeaderIsLost) {
        const auto say = [this](bool is, const std::string& sentence) {
            if (is) {
                m_plan.wrong.push_back(sentence);
            }
        };
        std::uint64_t cut = 0, resized = 0, listed = 0;
        for (std::size_t i = 0; i < m_scan.chunks.size(); ++i) {
            cut += m_isTaken[i] && m_scan.chunks[i].is(FoundChunk::kCut) ? 1 : 0;
            resized += m_isTaken[i] && m_scan.chunks[i].is(FoundChunk::kResized) ? 1 : 0;
            listed += m_scan.chunks[i].is(FoundChunk::kListed) ? 1 : 0;
        }
        say(mainHeaderIsLost, "the main header was lost");
        say(m_scan.isOpen, "the media list was never completed: the recording broke off");
        say(isCutOff(), "the file ends before its media does");
        say(m_index.entries == 0, "there was no usable index: every frame is taken for a key frame");
        say(m_index.wrong > 0, "the index contradicted the media in " + std::to_string(m_index.wrong) +
                                   (m_index.wrong == 1 ? " place" : " places") + "; the media was followed");
        say(m_index.wrong == 0 && m_index.entries > 0 && listed < m_scan.chunks.size(),
            "not in the index: " + counted(m_scan.chunks.size() - listed, "chunk"));
        say(cut > 0, "incomplete: " + counted(cut, "chunk"));
        say(resized > 0, "with a wrong size: " + counted(resized, "chunk"));
        for (const Gap& gap : m_scan.gaps) {
            if (!gap.isTrailing && gap.end > gap.begin && m_plan.wrong.size() < 1000) {
                m_plan.wrong.push_back(counted(gap.end - gap.begin, "byte") + " from " + std::to_string(gap.begin) +
                                       " on hold nothing of the clip");
            }
        }
        say(m_scan.nextClip > 0, "another clip begins at byte " + std::to_string(m_scan.nextClip));
        m_plan.hasLosses = m_plan.hasLosses || (m_scan.nextClip > 0 && m_scan.nextClip < m_scan.mediaEnd);
    }

    const Scan& m_scan;
    const IndexMatch& m_index;
    const Options m_options;
    const Scan& m_headers;
    Plan m_plan;
    std::vector<std::size_t> m_streamOf;        // planned stream by the number of the header
    std::map<Id, std::size_t> m_ids;
    std::vector<bool> m_isTaken;
    std::vector<State> m_states;
    std::size_t m_video = kNowhere;
    std::uint64_t m_framesLeft = kMostFilled;
    std::uint64_t m_silenceLeft = m_scan.fileSize + kMoreSilence;
    double m_bytesPerFrame = 0;
    double m_framesPerLostByte = 0;             // as the headers count them; 0 when they do not
};

}  // namespace

double PlannedStream::seconds(std::uint64_t units) const {
    const double rate = u32In(header, kRateAt);
    return rate > 0 ? static_cast<double>(units) * u32In(header, kScaleAt) / rate : 0;
}

Plan makePlan(const Scan& scan, const IndexMatch& index, const Options& options, const Scan* like) {
    return Planner(scan, index, options, like).run();
}

}  // namespace avirepair
