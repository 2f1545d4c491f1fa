#include "importhost/reports/RepairAdvice.h"

#include "avi/AviParser.h"
#include "avirepair/Scanner.h"
#include "fileio/SystemFile.h"
#include "importer/WaveFormat.h"
#include "text/FourCC.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace importhost {

namespace {

bool hasFrames(const AviParser& parser) {
    const std::vector<std::size_t> videos = parser.streamsOfType(fourCC("vids"));
    return !videos.empty() && parser.streams()[videos.front()]->chunkCount() > 0;
}

std::size_t framesInMedia(fileio::File& file) {
    try {
        const avirepair::Scan scan = avirepair::scanFile(file);
        return static_cast<std::size_t>(
            std::count_if(scan.chunks.begin(), scan.chunks.end(), [](const avirepair::FoundChunk& chunk) {
                const bool isVideo = chunk.type == avirepair::ChunkType::dc || chunk.type == avirepair::ChunkType::db;
                return isVideo && chunk.size > 0;
            }));
    } catch (const std::runtime_error&) {       // the disk fails: that is told elsewhere
        return 0;
    }
}

// The index holds more samples than the header counts; empty when it does not.
std::string shortSound(const AviStream& stream, std::size_t number) {
    WaveFormatExtensible format;
    std::memcpy(&format, stream.format().data(), std::min(stream.format().size(), sizeof format));
    const std::uint32_t tag = subFormatOf(format).data1;
    if (format.nBlockAlign == 0 || (tag != kWaveFormatPcm && tag != kWaveFormatIeeeFloat)) {
        return "";
    }
    const std::uint64_t samples = static_cast<std::uint64_t>(stream.totalBytes()) / format.nBlockAlign;
    if (samples <= stream.header().dwLength) {
        return "";
    }
    return "The index holds " + std::to_string(samples) + " sample frames in sound stream " + std::to_string(number) +
           ", but its header says " + std::to_string(stream.header().dwLength) +
           ": the sound ends too early. avirepair corrects the header in a new file.";
}

}  // namespace

std::vector<std::string> repairAdvice(const std::filesystem::path& path) {
    fileio::SystemFile file;
    if (!file.open(path.u16string().c_str(), fileio::kOpenRead | fileio::kOpenShareRead)) {
        return {};
    }
    AviParser parser;
    const bool isUsable = parser.parse(file);
    std::vector<std::string> advice;
    if (!isUsable || !hasFrames(parser)) {
        if (const std::size_t frames = framesInMedia(file); frames > 0) {
            advice.push_back("The file holds " + std::to_string(frames) + (frames == 1 ? " frame" : " frames") +
                             " that its headers and indexes do not lead to. avirepair copies what it holds into a new "
                             "file.");
        }
    }
    const std::vector<std::size_t> sounds = parser.streamsOfType(fourCC("auds"));
    for (std::size_t number = 0; number < sounds.size(); ++number) {
        if (const std::string text = shortSound(*parser.streams()[sounds[number]], number); !text.empty()) {
            advice.push_back(text);
        }
    }
    return advice;
}

}  // namespace importhost
