// The readers. Each function opens a file and indexes all of it, returns how long that took, and frees everything
// outside of that time. Throws std::runtime_error if the file cannot be opened.
#pragma once

#include "measured/MeasuredPlugin.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Opening {
    double seconds = 0;
    std::optional<std::vector<std::uint64_t>> chunks;  // found in each stream; none if not reported
};

// The plug-in's own file class and parser, as the importer uses them. Also throws if a stream does not use the kind of
// index that the file has.
Opening openWithPlugin(const std::string& path, bool openDml);

// The built plug-in's entry, as the host calls it: opening, then a description of the first video with the first sound
// stream, and of every further sound stream. The plug-in parses the file again for each description. The numbers of
// chunks are the durations that it reports.
Opening openThroughEntry(MeasuredPlugin& plugin, const std::string& path);

// libavformat: avformat_open_input, which reads the headers and the index, but not avformat_find_stream_info, which
// also reads packets.
Opening openWithLibav(const std::string& path);

// GStreamer: filesrc ! avidemux, from the pipeline's first state change until the demuxer has announced all streams;
// by then it has read the index. It does not report its number of chunks, so `chunks` stays empty; instead the
// duration is checked to be within a second of `seconds`.
Opening openWithGStreamer(const std::string& path, double seconds);

// The minimum that any reader has to do: reads the index bytes from known positions, and fills a table of the
// plug-in's own rows in a plain loop. No headers, no checks, no positions in the stream.
Opening openAtFloor(const std::string& path);

}  // namespace bench
