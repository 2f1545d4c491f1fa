// What opens the files. Each function opens a file and indexes all of it, tells how long that took, and gives
// everything back outside of that time. Those that cannot open the file throw std::runtime_error.
#pragma once

#include "measured/MeasuredPlugin.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Opening {
    double seconds = 0;
    std::optional<std::vector<std::uint64_t>> chunks;  ///< that the reader knows afterwards, of each stream in turn
};

/// The plug-in's own file class and parser, as the importer uses them. Throws too when a stream does not use the kind
/// of index that the file has.
Opening openWithPlugin(const std::string& path, bool openDml);

/// The built plug-in's entry, as the host calls it: opening, and then a description of the first video with the first
/// sound stream, and of every further sound stream alone. The plug-in parses the file anew for each description.
/// Its chunks are those of the durations that it tells.
Opening openThroughEntry(MeasuredPlugin& plugin, const std::string& path);

/// libavformat: avformat_open_input, which reads the headers and the index. avformat_find_stream_info, which goes on
/// to read packets, is left out.
Opening openWithLibav(const std::string& path);

/// GStreamer: filesrc ! avidemux from the pipeline's first state change on to the moment when the demuxer has shown all
/// streams; it has read the index by then. It does not tell how many chunks it knows: `chunks` stays empty, and that
/// the duration is right (to a second of `seconds`) stands for it.
Opening openWithGStreamer(const std::string& path, double seconds);

/// The least that any reader has to do: the index bytes are read, from places that are known beforehand, and a table
/// of the plug-in's own rows is filled in a plain loop. No headers, no checks, no places in the stream.
Opening openAtFloor(const std::string& path);

}  // namespace bench
