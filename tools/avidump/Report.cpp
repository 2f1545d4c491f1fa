#include "avidump/Report.h"

#include "avidump/FormatReport.h"
#include "avidump/LegacyIndexCheck.h"
#include "text/FourCC.h"

#include <vector>

namespace avidump {

namespace {

std::string code(std::uint32_t value) {
    return FourCCToString(value, false);
}

// Depths of all nodes. A node comes before its children and its next sibling.
std::vector<std::uint32_t> depthsOf(const ChunkTree& tree) {
    std::vector<std::uint32_t> depths(tree.size());
    for (std::uint32_t i = 0; i < tree.size(); ++i) {
        if (tree[i].firstChild != ChunkNode::kNone) {
            depths[tree[i].firstChild] = depths[i] + 1;
        }
        if (tree[i].nextSibling != ChunkNode::kNone) {
            depths[tree[i].nextSibling] = depths[i];
        }
    }
    return depths;
}

// Flat, with depths: lists of a hostile file can be nested deeper than a JSON reader can handle.
Report chunkTreeOf(const ChunkTree& tree) {
    Report nodes = Report::array();
    const std::vector<std::uint32_t> depths = depthsOf(tree);
    for (std::uint32_t i = 0; i < tree.size(); ++i) {
        Report node{{"depth", depths[i]}, {"id", code(tree[i].id)}};
        if (tree[i].isList()) {
            node["listType"] = code(tree[i].listType);
        }
        node["position"] = tree[i].position;
        node["size"] = tree[i].size;
        nodes.push_back(std::move(node));
    }
    return nodes;
}

Report mainHeaderOf(const avi::AVIMAINHEADER& header) {
    return {{"dwMicroSecPerFrame", header.dwMicroSecPerFrame},
            {"dwMaxBytesPerSec", header.dwMaxBytesPerSec},
            {"dwPaddingGranularity", header.dwPaddingGranularity},
            {"dwFlags", header.dwFlags},
            {"dwTotalFrames", header.dwTotalFrames},
            {"dwInitialFrames", header.dwInitialFrames},
            {"dwStreams", header.dwStreams},
            {"dwSuggestedBufferSize", header.dwSuggestedBufferSize},
            {"dwWidth", header.dwWidth},
            {"dwHeight", header.dwHeight}};
}

Report streamHeaderOf(const avi::AVISTREAMHEADER& header) {
    return {{"fccType", code(header.fccType)},
            {"fccHandler", code(header.fccHandler)},
            {"dwFlags", header.dwFlags},
            {"wPriority", header.wPriority},
            {"wLanguage", header.wLanguage},
            {"dwInitialFrames", header.dwInitialFrames},
            {"dwScale", header.dwScale},
            {"dwRate", header.dwRate},
            {"dwStart", header.dwStart},
            {"dwLength", header.dwLength},
            {"dwSuggestedBufferSize", header.dwSuggestedBufferSize},
            {"dwQuality", header.dwQuality},
            {"dwSampleSize", header.dwSampleSize},
            {"rcFrame", std::to_string(header.rcFrame.left) + ", " + std::to_string(header.rcFrame.top) + ", " +
                            std::to_string(header.rcFrame.right) + ", " + std::to_string(header.rcFrame.bottom)}};
}

Report superIndexOf(const AviStream& stream) {
    const avi::SuperIndexHeader& header = stream.superIndexHeader();
    Report indexes = Report::array();
    for (std::size_t i = 0; i < stream.superIndexEntries().size(); ++i) {
        const avi::SuperIndexEntry& entry = stream.superIndexEntries()[i];
        const avi::StdIndexHeader& index = stream.stdIndexes()[i];
        indexes.push_back({{"qwOffset", entry.qwOffset},
                           {"dwSize", entry.dwSize},
                           {"dwDuration", entry.dwDuration},
                           {"qwBaseOffset", std::uint64_t{index.qwBaseOffset}},
                           {"nEntriesInUse", std::uint32_t{index.nEntriesInUse}}});
    }
    return {{"wLongsPerEntry", header.wLongsPerEntry},
            {"nEntriesInUse", header.nEntriesInUse},
            {"dwChunkId", code(header.dwChunkId)},
            {"standardIndexes", std::move(indexes)}};
}

const char* indexInUse(const AviStream& stream) {
    if (stream.useOpenDmlIndex()) {
        return "OpenDML";
    }
    return stream.idx1Chunks().empty() ? "none" : "idx1";
}

std::uint64_t keyFrameCount(const ChunkList& chunks) {
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        count += chunks[i].keyframe;
    }
    return count;
}

Report chunksOf(const ChunkList& chunks) {
    Report list = Report::array();
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        list.push_back(Report::array({chunks[i].offset, chunks[i].size, chunks[i].startByte, chunks[i].keyframe != 0}));
    }
    return list;
}

Report streamOf(fileio::File& file, const AviStream& stream, bool withChunks) {
    const LegacyIndexCheck idx1 = checkLegacyIndex(file, stream, withChunks);
    Report report{{"streamNumber", stream.streamNumber()},
                  {"header", streamHeaderOf(stream.header())},
                  {"format", formatOf(stream)},
                  {"superIndex", superIndexOf(stream)},
                  {"indexInUse", indexInUse(stream)},
                  {"idx1Chunks", stream.idx1Chunks().size()},
                  {"idx1ChunksChecked", idx1.checked},
                  {"idx1ChunksAstray", idx1.astray},
                  {"openDmlChunks", stream.openDmlChunks().size()},
                  {"chunkCount", stream.chunkCount()},
                  {"totalBytes", stream.totalBytes()},
                  {"keyFrames", keyFrameCount(stream.activeChunks())}};
    if (withChunks) {
        report["chunks"] = chunksOf(stream.activeChunks());
    }
    return report;
}

}  // namespace

Report makeReport(const std::string& pathUtf8, fileio::File& file, const AviParser& parser, bool usable,
                  bool withChunks) {
    Report streams = Report::array();
    for (const auto& stream : parser.streams()) {
        streams.push_back(streamOf(file, *stream, withChunks));
    }
    return {{"file", pathUtf8},
            {"opened", true},
            {"size", file.size()},
            {"usable", usable},
            {"errorText", parser.errorText()},
            {"chunkTree", chunkTreeOf(parser.chunkTree())},
            {"mainHeader", usable ? mainHeaderOf(parser.mainHeader()) : Report()},
            {"extendedHeader", {{"dwTotalFrames", parser.extendedHeader().dwTotalFrames}}},
            {"idx1Entries", parser.idx1EntryCount()},
            {"streams", std::move(streams)}};
}

Report makeFailedReport(const std::string& pathUtf8) {
    return {{"file", pathUtf8}, {"opened", false}, {"usable", false}};
}

}  // namespace avidump
