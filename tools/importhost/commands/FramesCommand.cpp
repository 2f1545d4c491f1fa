// importhost frames: frames as pictures, raw bytes or checksums.
#include "importhost/clips/AsyncFrames.h"
#include "importhost/clips/VideoClip.h"
#include "importhost/commands/Command.h"
#include "importhost/console/Progress.h"
#include "importhost/console/Range.h"
#include "importhost/pictures/FrameWriters.h"

#include "hostkit/sessions/Names.h"
#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>

namespace importhost {

namespace {

std::string checkRange(const std::string& text) {
    return rangeOf(text) ? "" : "'" + text + "' is not a range of frames such as 10-19, 10- or 10";
}

std::string writerHelp() {
    std::string help = "Output format:";
    for (const FrameWriterRow& row : frameWriters()) {
        help.append("\n  ").append(row.name).append(": ").append(row.purpose);
    }
    return help;
}

std::string checkWriter(const std::string& name) {
    return findFrameWriter(name) ? "" : "'" + name + "' is not one of png, raw and checksum";
}

// Receives frames one by one. Failed ones are reported and skipped.
class FrameOutput {
public:
    FrameOutput(FrameWriter& writer, std::size_t frames)
        : m_writer(writer), m_progress("frames", static_cast<std::int64_t>(frames)) {}

    void take(std::int64_t index, const hostkit::HostFrame& frame, const std::string& failure) {
        if (const auto view = frame.view()) {
            m_writer.write(*view, index);
        } else {
            m_progress.clear();
            std::cerr << "importhost: Frame " << index << " failed: " << failure << "\n";
            m_code = kFailed;
        }
        m_progress.step();
    }

    ExitCode code() const { return m_code; }

private:
    FrameWriter& m_writer;
    Progress m_progress;
    ExitCode m_code = kGood;
};

class FramesCommand : public EditorCommand {
public:
    void declare(CLI::App& app) override {
        app.add_option("FILE", m_file, "The clip")->required()->type_name("");
        app.add_option("--range", m_range, "Frames A to B, counted from 0; 'A-' means to the end, 'A' one frame")
            ->type_name("A-B")
            ->check(CLI::Validator(checkRange, ""));
        app.add_option("--every", m_every, "Only every Nth of these frames")
            ->type_name("N")
            ->check(CLI::PositiveNumber.description(""));
        app.add_option("--format", m_format, "Pixel format to request, such as bgra (default: the first offered)")
            ->type_name("FCC");
        app.add_option("--as", m_writer, writerHelp())
            ->type_name("KIND")
            ->check(CLI::Validator(checkWriter, ""))
            ->capture_default_str();
        app.add_option("--out", m_folder, "Folder for the files, created if missing")
            ->type_name("DIR")
            ->capture_default_str();
        declareAsync(app);
    }

    ExitCode runWith(Editor& editor) override {
        const std::filesystem::path path = hostkit::pathFromUtf8(m_file);
        VideoClip clip(editor, path);
        clip.requireFrames();
        const PrPixelFormat format = chooseFormat(clip);
        const std::vector<std::int64_t> indexes = chooseFrames(clip);
        const FrameWriterRow& row = *findFrameWriter(m_writer);
        const std::filesystem::path folder = hostkit::pathFromUtf8(m_folder);
        if (row.writesFiles) {
            std::filesystem::create_directories(folder);
        }
        const auto writer = row.make(folder, hostkit::toUtf8(path.stem()));
        FrameOutput output(*writer, indexes.size());
        if (m_async.ahead == 0) {
            writeInTurn(clip, format, indexes, output);
        } else {
            writeAhead(editor, clip, format, indexes, output);
        }
        return output.code();
    }

private:
    void declareAsync(CLI::App& app) {
        CLI::Option* async = app.add_option("--async", m_async.ahead,
                                            "Read frames through the asynchronous importer, with N announced")
                                 ->type_name("N")
                                 ->check(CLI::Range(1, 1000).description(""));
        app.add_option("--shuffle", m_async.shuffleSeed, "Collect each N frames in a random order, with this seed")
            ->type_name("SEED")
            ->needs(async);
        app.add_option("--refocus", m_async.refocusEvery, "Every K frames, drop all announced ones, close and open "
                                                          "again, as if the editor lost focus; 0: never")
            ->type_name("K")
            ->needs(async)
            ->capture_default_str();
    }

    PrPixelFormat chooseFormat(VideoClip& clip) const {
        if (m_format.empty()) {
            return clip.formats().front();
        }
        std::string offered;
        for (const PrPixelFormat format : clip.formats()) {
            if (hostkit::codeText(format) == m_format) {
                return format;
            }
            offered.append(offered.empty() ? "" : ", ").append(hostkit::codeText(format));
        }
        throw UsageError("The pixel format '" + m_format + "' is not offered for this clip; offered are " + offered +
                         ".");
    }

    std::vector<std::int64_t> chooseFrames(const VideoClip& clip) const {
        const Range range = rangeOf(m_range).value_or(Range{});
        const std::int64_t end = clip.frameCount();
        const std::int64_t last = range.last < 0 ? end - 1 : range.last;
        if (range.first >= end || last >= end) {
            throw UsageError("The clip has " + std::to_string(end) + " frames, counted from 0.");
        }
        std::vector<std::int64_t> indexes;
        for (std::int64_t index = range.first; index <= last; index += m_every) {
            indexes.push_back(index);
        }
        return indexes;
    }

    static void writeInTurn(VideoClip& clip, PrPixelFormat format, const std::vector<std::int64_t>& indexes,
                            FrameOutput& output) {
        for (const std::int64_t index : indexes) {
            const hostkit::FrameAnswer answer = clip.frame(index, format);
            output.take(index, answer.frame, hostkit::resultText(answer.result));
        }
    }

    void writeAhead(Editor& editor, VideoClip& clip, PrPixelFormat format, const std::vector<std::int64_t>& indexes,
                    FrameOutput& output) const {
        if (!editor.host().profile().asksForAsync) {
            throw UsageError("The host '" + editor.host().profile().name + "' does not know asynchronous frames.");
        }
        if (m_async.shuffleSeed) {
            std::cerr << "importhost: Frames are collected in the order of seed " << *m_async.shuffleSeed << ".\n";
        }
        AsyncFrames frames(editor, clip, format);
        frames.run(indexes, asyncPlan(indexes.size(), m_async),
                   [&output](std::int64_t index, const hostkit::HostFrame& frame, const std::string& failure) {
                       output.take(index, frame, failure);
                   });
    }

    std::string m_file;
    std::string m_range;
    std::int64_t m_every = 1;
    std::string m_format;
    std::string m_writer = "png";
    std::string m_folder = ".";
    AsyncOptions m_async{.ahead = 0, .refocusEvery = 50};      // 0: synchronous
};

}  // namespace

std::unique_ptr<Command> makeFramesCommand() { return std::make_unique<FramesCommand>(); }

}  // namespace importhost
