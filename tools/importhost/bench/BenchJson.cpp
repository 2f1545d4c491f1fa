// The measurements of a file as JSON.
#include "importhost/bench/Measurement.h"

#include "hostkit/system/Text.h"

#include <nlohmann/json.hpp>

namespace importhost::bench {

namespace {

using Json = nlohmann::ordered_json;

// Adds the members of one row to an object that already has its name.
Json withRow(Json json, const Row& row) {
    json["count"] = row.waits.count;
    json["failed"] = row.failed;
    json["medianMs"] = row.waits.median;
    json["p95Ms"] = row.waits.p95;
    json["worstMs"] = row.waits.worst;
    json["totalMs"] = row.waits.total;
    json["reads"] = row.reads.areSeen ? Json(row.reads.calls) : Json(nullptr);
    json["bytesRead"] = row.reads.areSeen ? Json(row.reads.bytes) : Json(nullptr);
    return json;
}

Json openingJson(const Row& row) { return withRow({{"name", row.name}, {"firstMs", row.first}}, row); }

Json framesJson(const Row& row) {
    return withRow({{"name", row.name}, {"seconds", row.seconds}, {"framesPerSecond", row.waits.perSecond()}}, row);
}

Json aheadJson(const Row& row, std::size_t ahead) {
    const double perSecond = row.seconds > 0.0 ? static_cast<double>(row.waits.count) / row.seconds : 0.0;
    return withRow({{"ahead", ahead}, {"seconds", row.seconds}, {"framesPerSecond", perSecond}}, row);
}

Json soundJson(const SoundRow& sound) {
    return withRow({{"stream", sound.stream},
                    {"channels", sound.channels},
                    {"sampleRate", sound.sampleRate},
                    {"sampleFrames", sound.sampleFrames},
                    {"measuredSampleFrames", sound.measured},
                    {"sampleFramesPerBlock", kSoundBlock},
                    {"timesRealTime", sound.timesRealTime()},
                    {"bytesPerSecond", sound.bytesPerSecond()}},
                   sound.blocks);
}

Json memoryJson(const MemoryUse& memory) {
    return {{"openClipBytes", memory.openClip},
            {"afterAllFramesBytes", memory.afterAll},
            {"programPeakBytes", memory.programPeak}};
}

}  // namespace

Json asJson(const FileMeasurement& file) {
    Json json = {{"file", hostkit::toUtf8(file.path)}, {"failures", file.failures}};
    if (file.video.empty()) {
        return json;
    }
    json["video"] = file.video;
    json["frameCount"] = file.frameCount;
    json["hostBufferMs"] = file.hostBuffer;
    json["opening"] = {openingJson(file.open), openingJson(file.firstFrame)};
    json["frames"] = Json::array();
    for (const Row& row : file.frames) {
        json["frames"].push_back(framesJson(row));
    }
    json["ahead"] = Json::array();
    for (std::size_t i = 0; i < file.ahead.size(); ++i) {
        json["ahead"].push_back(aheadJson(file.ahead[i], i == 0 ? 0 : kAhead[i - 1]));
    }
    json["noAhead"] = file.noAhead.empty() ? Json(nullptr) : Json(file.noAhead);
    json["sound"] = Json::array();
    for (const SoundRow& sound : file.sound) {
        json["sound"].push_back(soundJson(sound));
    }
    json["memory"] = memoryJson(file.memory);
    return json;
}

}  // namespace importhost::bench
