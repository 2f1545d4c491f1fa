#include "avirepair/Report.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>

namespace avirepair {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kMostLosses = 100;        // on the page; JSON has all

std::string kindOf(const PlannedStream& stream) {
    return stream.isVideo ? "video" : stream.isSound ? "sound" : "other";
}

std::string codeOf(const Bytes& bytes, std::size_t at) {
    std::string code;
    for (std::size_t i = at; i < at + 4 && i < bytes.size(); ++i) {
        code += bytes[i] >= 0x20 && bytes[i] < 0x7F ? static_cast<char>(bytes[i]) : '?';
    }
    return code;
}

std::string formatOf(const PlannedStream& stream) {
    if (stream.isVideo && stream.format.size() >= 20) {
        return codeOf(stream.format, 16) + " " + std::to_string(u32In(stream.format, 4)) + " x " +
               std::to_string(u32In(stream.format, 8));
    }
    if (stream.isSound && stream.format.size() >= 16) {
        return std::to_string(u16In(stream.format, 2)) + " channels, " + std::to_string(u32In(stream.format, 4)) +
               " Hz, " + std::to_string(u16In(stream.format, 14)) + " bits";
    }
    return codeOf(stream.header, 0);
}

std::string lineOf(const PlannedStream& stream, std::size_t number) {
    std::string line = "  " + std::to_string(number) + "  " + kindOf(stream) + "  " + formatOf(stream) + ": ";
    if (stream.isSound && stream.sampleBytes > 0) {
        line += std::to_string(stream.length()) + " samples";
    } else {
        line += std::to_string(stream.chunks) + (stream.isVideo ? " frames" : " chunks");
    }
    line += ", " + timeText(stream.seconds(stream.length()));
    if (stream.isVideo) {
        line += ", " + std::to_string(stream.keyFrames) + " key frames, " + std::to_string(stream.dropped) + " dropped";
    }
    return line + "\n";
}

std::string lineOf(const Loss& loss, const Plan& plan, const Options& options) {
    const PlannedStream& stream = plan.streams[loss.stream];
    std::string what = stream.isVideo ? std::to_string(loss.frames) + (loss.frames == 1 ? " frame" : " frames")
                                      : timeText(loss.seconds) + " of sound";
    if (!stream.isVideo && loss.seconds == 0) {
        what = "the end of a chunk of sound";
    }
    const char* filled = stream.isVideo ? ", shown as the frame before" : ", silent";
    return "  " + timeText(loss.begin) + "  stream " + std::to_string(loss.stream) + ": " + what +
           (options.closesGaps || loss.seconds == 0 ? "" : filled) + "\n";
}

std::string listOf(const std::string& title, const std::vector<std::string>& sentences) {
    std::string text = sentences.empty() ? "" : title + "\n";
    for (const std::string& sentence : sentences) {
        text += "  " + sentence + "\n";
    }
    return text;
}

Json jsonOf(const PlannedStream& stream) {
    return {{"type", kindOf(stream)},
            {"format", formatOf(stream)},
            {"length", stream.length()},
            {"seconds", stream.seconds(stream.length())},
            {"chunks", stream.chunks},
            {"bytes", stream.bytes},
            {"keyFrames", stream.isVideo ? stream.keyFrames : 0},
            {"droppedFrames", stream.isVideo ? stream.dropped : 0},
            {"lost", stream.lost}};
}

const char* resultText(const Plan& plan) {
    switch (exitCodeOf(plan)) {
        case kExitRepaired: return "complete";
        case kExitLosses: return "losses";
        default: return "nothing";
    }
}

}  // namespace

int exitCodeOf(const Plan& plan) {
    return plan.isEmpty() ? kExitNothing : plan.hasLosses ? kExitLosses : kExitRepaired;
}

std::string timeText(double seconds) {
    const auto all = static_cast<unsigned long long>(std::llround(std::min(std::max(seconds, 0.0), 1e9) * 1000));
    char text[48] = {};
    std::snprintf(text, sizeof(text), "%llu:%02llu:%02llu.%03llu", all / 3600000, all / 60000 % 60, all / 1000 % 60,
                  all % 1000);
    return text;
}

std::string chunkLine(const FoundChunk& chunk) {
    std::string line = std::to_string(chunk.position) + " " + chunk.id() + " " + std::to_string(chunk.size);
    const std::pair<FoundChunk::Flag, const char*> words[] = {
        {FoundChunk::kKey, " key"}, {FoundChunk::kListed, " listed"}, {FoundChunk::kCut, " cut"},
        {FoundChunk::kResized, " resized"}, {FoundChunk::kInZeros, " zeros"}, {FoundChunk::kDoubtful, " doubtful"}};
    for (const auto& [flag, word] : words) {
        line += chunk.is(flag) ? word : "";
    }
    return line + "\n";
}

std::string textReport(const Diagnosis& found, const Names& names, const Options& options) {
    const Plan& plan = found.plan;
    std::string text = names.input + ": " + std::to_string(found.scan.fileSize) + " bytes, " +
                       std::to_string(found.scan.chunks.size()) + " chunks found\n";
    text += listOf("What was wrong:", plan.wrong);
    text += listOf("Left out:", plan.notes);
    if (plan.isEmpty()) {
        return text + (found.scan.chunks.empty() ? "Nothing could be saved: there is no media in this file.\n"
                                                 : "Nothing could be saved: the headers are lost. --like takes them "
                                                   "from another clip of the same camera or program.\n");
    }
    if (!plan.losses.empty()) {
        text += "Lost:\n";
        for (std::size_t i = 0; i < std::min(plan.losses.size(), kMostLosses); ++i) {
            text += lineOf(plan.losses[i], plan, options);
        }
        const std::size_t more = plan.losses.size() - std::min(plan.losses.size(), kMostLosses);
        text += more > 0 ? "  and " + std::to_string(more) + " more places\n" : "";
    }
    text += "The new file:\n";
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        text += lineOf(plan.streams[i], i);
    }
    text += names.output.empty() ? "Nothing was written.\n" : "Written: " + names.output + "\n";
    return text;
}

std::string jsonReport(const Diagnosis& found, const Names& names, const Options& options) {
    Json streams = Json::array(), losses = Json::array();
    for (const PlannedStream& stream : found.plan.streams) {
        streams.push_back(jsonOf(stream));
    }
    for (const Loss& loss : found.plan.losses) {
        losses.push_back({{"stream", loss.stream}, {"begin", loss.begin}, {"seconds", loss.seconds},
                          {"frames", loss.frames}});
    }
    const Json report = {{"input", names.input},
                         {"output", names.output.empty() ? Json() : Json(names.output)},
                         {"result", resultText(found.plan)},
                         {"bytes", found.scan.fileSize},
                         {"chunksFound", found.scan.chunks.size()},
                         {"gapsClosed", options.closesGaps},
                         {"wrong", found.plan.wrong},
                         {"leftOut", found.plan.notes},
                         {"losses", losses},
                         {"streams", streams}};
    return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace avirepair
