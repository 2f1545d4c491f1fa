#include "makeavi/CommandLine.h"

#include "aviwriter/Types.h"
#include "makeavi/Values.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace makeavi {

namespace {

constexpr const char* kDescription =
    "Writes sample AVI files for the Quorvane importer: a moving test picture, compressed by the stand-in codec, and\n"
    "test sound. The same options produce the same bytes on every system.";

std::string footer() {
    std::string text = "\nTypes (code, number, name):\n";
    for (const aviwriter::TypeName& name : aviwriter::typeNames()) {
        text += "  " + std::string(name.code) + "  " + std::to_string(name.type) + "  " + std::string(name.words) +
                "\n";
    }
    return text +
           "\nSound:\n"
           "  --audio FORMAT:CHANNELS:RATE\n"
           "  FORMAT is pcm8, pcm16, pcm24, pcm32 or float32. After the rate may follow\n"
           "  :mask=M      a channel mask, which requires the 40-byte sound header\n"
           "  :chunk=N     N sample frames per chunk (default: one chunk per video frame)\n"
           "  :header=N    size of the sound header: 16, 18 or 40 bytes (default: 18)\n"
           "\nSizes are in bytes, or with the suffix KB, MB or GB in units of 1024, 1024^2 or 1024^3 bytes. A hole\n"
           "takes no disk space if the file system supports sparse files.\n"
           "\nExamples:\n"
           "  makeavi -o plain.avi\n"
           "  makeavi --type AR4Q --size 1920x1080 --frames 10 -o deep.avi\n"
           "  makeavi --rate 30000/1001 --audio pcm16:2:48000 --audio float32:6:48000:mask=0x3f -o sound.avi\n"
           "  makeavi --index opendml --segment-bytes 1MB --drop 3,5-8 -o segments.avi\n"
           "  makeavi --hole 5GB -o beyond-4-gib.avi\n"
           "\nExit codes: 0 success, 1 the file could not be written, 2 invalid command line.\n";
}

// Adds an option whose text is passed to `take`, a value parser; its exception becomes a command-line error.
void addValue(CLI::App& app, const std::string& name, const std::string& typeName, const std::string& description,
              const std::function<void(const std::string&)>& take) {
    app.add_option_function<std::string>(name, [name, take](const std::string& text) {
        try {
            take(text);
        } catch (const std::invalid_argument& error) {
            throw CLI::ValidationError(name, error.what());
        }
    }, description)->type_name(typeName);
}

void addPictureOptions(CLI::App& app, aviwriter::SampleOptions& options) {
    addValue(app, "--type", "TYPE", "compressed type, by code or number (2Y8Q)",
             [&options](const std::string& text) { options.type = aviwriter::typeFromText(text); });
    addValue(app, "--size", "WxH", "picture size in pixels (320x180)", [&options](const std::string& text) {
        std::tie(options.width, options.height) = parseSize(text);
    });
    app.add_option("--frames", options.frames, "number of video frames (25)")->type_name("N");
    addValue(app, "--rate", "R[/S]", "frames per second (25)", [&options](const std::string& text) {
        std::tie(options.rate, options.scale) = parseRate(text);
    });
    addValue(app, "--color", "601|709", "colour matrix (709)",
             [&options](const std::string& text) { options.colorSpace = parseColor(text); });
    addValue(app, "--range", "limited|full", "code range (full for RGB types, limited for the others)",
             [&options](const std::string& text) { options.range = parseRange(text); });
    addValue(app, "--drop", "LIST", "frames to write empty, from 0: 3,5-8",
             [&options](const std::string& text) { options.dropped = parseFrames(text); });
    app.add_flag_callback("--no-video", [&options] { options.hasVideo = false; },
                          "write only sound, as long as the video would be");
}

void addFileOptions(CLI::App& app, aviwriter::SampleOptions& options) {
    app.add_option_function<std::vector<std::string>>("--audio", [&options](const std::vector<std::string>& texts) {
        try {
            std::transform(texts.begin(), texts.end(), std::back_inserter(options.audio), parseAudio);
        } catch (const std::invalid_argument& error) {
            throw CLI::ValidationError("--audio", error.what());
        }
    }, "one audio stream; may be given several times (see below)")
        ->type_name("SOUND")->expected(1)->take_all();
    addValue(app, "--index", "idx1|opendml|both", "kinds of index (both)",
             [&options](const std::string& text) { options.layout.index = parseIndex(text); });
    addValue(app, "--segment-bytes", "SIZE", "largest segment, such as 100000 or 1MB (1GB); ignored with --index idx1",
             [&options](const std::string& text) { options.layout.segmentBytes = parseBytes(text); });
    addValue(app, "--hole", "SIZE", "empty space before the second half of the frames, such as 5GB",
             [&options](const std::string& text) { options.hole = parseBytes(text); });
    app.add_option("--fourcc", options.handler, "the codec's four-character code in the headers (QVAN)")
        ->type_name("CODE")
        ->check([](const std::string& text) { return text.size() == 4 ? "" : "'" + text + "' is not 4 characters"; });
}

}  // namespace

ParsedCommand parseCommandLine(std::vector<std::string> arguments) {
    Command command;
    CLI::App app{kDescription, "makeavi"};
    app.allow_windows_style_options(false);   // a path may begin with a slash
    app.set_version_flag("--version", "makeavi " MAKEAVI_VERSION);
    app.footer(footer());
    addPictureOptions(app, command.options);
    addFileOptions(app, command.options);
    app.add_option("-o,--output", command.output, "the file to write")->required()->type_name("FILE");
    try {
        std::reverse(arguments.begin(), arguments.end());   // the parser expects the list in reverse
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        return {{}, app.exit(error) == 0 ? kExitGood : kExitUsage};
    }
    return {command, kExitGood};
}

}  // namespace makeavi
