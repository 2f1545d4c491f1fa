#include "open/Readers.h"
#include "open/Stopwatch.h"

#include <stdexcept>

extern "C" {
#include <libavformat/avformat.h>
}

bench::Opening bench::openWithLibav(const std::string& path) {
    av_log_set_level(AV_LOG_QUIET);
    AVFormatContext* context = nullptr;
    Opening result;
    const Stopwatch stopwatch;
    if (avformat_open_input(&context, path.c_str(), nullptr, nullptr) != 0) {
        throw std::runtime_error("libavformat cannot open " + path);
    }
    result.seconds = stopwatch.seconds();
    result.chunks.emplace();
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        result.chunks->push_back(static_cast<std::uint64_t>(avformat_index_get_entries_count(context->streams[i])));
    }
    avformat_close_input(&context);
    return result;
}
