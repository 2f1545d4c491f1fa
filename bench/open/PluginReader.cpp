#include "avi/AviParser.h"
#include "fileio/SystemFile.h"
#include "open/Readers.h"
#include "open/Stopwatch.h"

#include <stdexcept>

bench::Opening bench::openWithPlugin(const std::string& path, bool openDml) {
    Opening result;
    const Stopwatch stopwatch;
    fileio::SystemFile file;
    AviParser parser;
    if (!file.open(path.c_str(), fileio::kOpenRead | fileio::kOpenShareRead) || !parser.parse(file)) {
        throw std::runtime_error("the plug-in's parser cannot open " + path);
    }
    result.seconds = stopwatch.seconds();
    if (!parser.errorText().empty()) {
        throw std::runtime_error(parser.errorText());
    }
    result.chunks.emplace();
    for (const auto& stream : parser.streams()) {
        if (stream->useOpenDmlIndex() != openDml) {
            throw std::runtime_error("a stream of " + path + " does not use the intended index");
        }
        result.chunks->push_back(stream->chunkCount());
    }
    return result;
}
