// The measurements of a file as a table.
#include "importhost/bench/Measurement.h"
#include "importhost/bench/Sampling.h"
#include "importhost/bench/TextTable.h"

#include "hostkit/system/Text.h"

#include <algorithm>
#include <cstdio>

namespace importhost::bench {

namespace {

std::string fixed(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

std::string milliseconds(double value) { return fixed(value, 2); }

std::string mebibytes(double bytes) { return fixed(bytes / (1 << 20), 1); }

std::string callsOf(const Reads& reads) { return reads.areSeen ? std::to_string(reads.calls) : "-"; }

std::string megabytesOf(const Reads& reads) {
    return reads.areSeen ? fixed(static_cast<double>(reads.bytes) / 1e6, 2) : "-";
}

std::string sampleText(const FileMeasurement& file, const BenchOptions& options) {
    const std::size_t measured = spreadIndexes(file.frameCount, options.frames).size();
    if (static_cast<std::int64_t>(measured) == file.frameCount) {
        return "every frame";
    }
    return "a sample: " + std::to_string(measured) + " of " + std::to_string(file.frameCount) + " frames in " +
           std::to_string(std::min(kRuns, options.frames)) + " runs spread over the clip, " +
           std::to_string(std::min(options.frames, file.frameCount)) + " at random";
}

std::string openingTable(const FileMeasurement& file) {
    TextTable table;
    table.add({"opening", "first ms", "then ms", "worst ms", "times", "reads", "MB read"});
    for (const Row* row : {&file.open, &file.firstFrame}) {
        table.add({row->name, milliseconds(row->first), milliseconds(row->waits.median),
                   milliseconds(row->waits.worst), std::to_string(row->waits.count), callsOf(row->reads),
                   megabytesOf(row->reads)});
    }
    return table.text();
}

void addFrameRows(TextTable& table, const std::vector<Row>& rows, bool byWholeTime) {
    for (const Row& row : rows) {
        const double perSecond = byWholeTime && row.seconds > 0.0
                                     ? static_cast<double>(row.waits.count) / row.seconds
                                     : row.waits.perSecond();
        table.add({row.name, fixed(perSecond, 1), milliseconds(row.waits.median), milliseconds(row.waits.p95),
                   milliseconds(row.waits.worst), std::to_string(row.waits.count), callsOf(row.reads),
                   megabytesOf(row.reads)});
    }
}

std::string frameTable(const FileMeasurement& file) {
    TextTable table;
    table.add({"frames at once", "fps", "median ms", "p95 ms", "worst ms", "frames", "reads", "MB read"});
    addFrameRows(table, file.frames, false);
    return table.text();
}

std::string aheadTable(const FileMeasurement& file, const BenchOptions& options) {
    TextTable table;
    table.add({"frames ahead", "fps", "wait ms", "p95 ms", "worst ms", "frames", "reads", "MB read"});
    addFrameRows(table, file.ahead, true);
    std::string text = table.text();
    if (!file.noAhead.empty()) {
        text.append("  none were fetched ahead: ").append(file.noAhead).append("\n");
    }
    return text.append("  with a host that works ").append(std::to_string(options.busyMilliseconds))
        .append(" ms on each frame, which is in the fps\n");
}

std::string soundTable(const FileMeasurement& file) {
    TextTable table;
    table.add({"sound", "x real time", "MB/s", "median ms", "p95 ms", "worst ms", "blocks", "reads", "MB read"});
    for (const SoundRow& sound : file.sound) {
        const Row& row = sound.blocks;
        table.add({row.name + ", " + std::to_string(sound.channels) + (sound.channels == 1 ? " channel" : " channels"),
                   fixed(sound.timesRealTime(), 1), fixed(sound.bytesPerSecond() / 1e6, 1),
                   milliseconds(row.waits.median), milliseconds(row.waits.p95), milliseconds(row.waits.worst),
                   std::to_string(row.waits.count), callsOf(row.reads), megabytesOf(row.reads)});
    }
    std::string text = table.text();
    for (const SoundRow& sound : file.sound) {
        const std::int64_t blocks = (sound.sampleFrames + kSoundBlock - 1) / kSoundBlock;
        if (blocks > kMostSoundBlocks) {
            text.append("  ").append(sound.blocks.name).append(" is a sample, of ");
            text.append(std::to_string(blocks)).append(" blocks\n");
        }
    }
    return text;
}

std::string memoryTable(const FileMeasurement& file) {
    TextTable table;
    table.add({"memory", "MiB"});
    table.add({"kept by the open clip", mebibytes(static_cast<double>(file.memory.openClip))});
    table.add({"kept after all frames", mebibytes(static_cast<double>(file.memory.afterAll))});
    table.add({"peak of the program", mebibytes(static_cast<double>(file.memory.programPeak))});
    return table.text();
}

}  // namespace

std::string asText(const FileMeasurement& file, const BenchOptions& options) {
    std::string text = "\n" + hostkit::toUtf8(file.path) + "\n";
    if (!file.video.empty()) {
        text.append("  ").append(file.video).append("\n  measured: ").append(sampleText(file, options));
        text.append("\n  of each frame, making the host's buffer takes ").append(milliseconds(file.hostBuffer));
        text.append(" ms\n\n").append(openingTable(file)).append("\n").append(frameTable(file)).append("\n");
        text.append(aheadTable(file, options)).append("\n");
        text.append(file.sound.empty() ? "  no sound was measured\n" : soundTable(file)).append("\n");
        text.append(memoryTable(file));
    }
    for (const std::string& failure : file.failures) {
        text.append("  failed: ").append(failure).append("\n");
    }
    return text;
}

}  // namespace importhost::bench
