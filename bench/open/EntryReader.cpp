#include "hostkit/sessions/ClipSession.h"
#include "open/Readers.h"
#include "open/Stopwatch.h"

#include <stdexcept>

bench::Opening bench::openThroughEntry(MeasuredPlugin& plugin, const std::string& path) {
    Opening result;
    const Stopwatch stopwatch;
    hostkit::ClipSession clip(plugin.session(), path);
    if (clip.open().result != imNoErr) {
        throw std::runtime_error("the plug-in cannot open " + path);
    }
    const auto infos = clip.infos();
    result.seconds = stopwatch.seconds();

    // A video chunk is a frame, and a sound chunk of these files is one sample frame.
    result.chunks = {static_cast<std::uint64_t>(hostkit::frameCount(*infos.front().record))};
    for (const auto& info : infos) {
        result.chunks->push_back(static_cast<std::uint64_t>(hostkit::valueOf(info.record->audDuration)));
    }
    return result;
}
