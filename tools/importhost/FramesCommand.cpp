// importhost frames: frames as pictures, raw bytes or checksums.
#include "importhost/Command.h"
#include "importhost/FrameWriters.h"
#include "importhost/Progress.h"
#include "importhost/VideoClip.h"

#include "hostkit/Names.h"
#include "hostkit/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <iostream>

namespace importhost {

namespace {

struct FrameRange {
    std::int64_t first = 0;
    std::int64_t last = -1;         // included; -1: the clip's last frame
};

bool readNumber(std::string_view text, std::int64_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 0;
}

// "A-B", "A-" up to the end, "A" alone.
std::optional<FrameRange> rangeOf(std::string_view text) {
    FrameRange range;
    const std::size_t dash = text.find('-');
    if (!readNumber(text.substr(0, dash), range.first)) {
        return std::nullopt;
    }
    if (dash == std::string_view::npos) {
        range.last = range.first;
        return range;
    }
    const std::string_view second = text.substr(dash + 1);
    if (!second.empty() && (!readNumber(second, range.last) || range.last < range.first)) {
        return std::nullopt;
    }
    return range;
}

std::string checkRange(const std::string& text) {
    return rangeOf(text) ? "" : "'" + text + "' is no range of frames such as 10-19, 10- or 10";
}

std::string writerHelp() {
    std::string help = "How to write them:";
    for (const FrameWriterRow& row : frameWriters()) {
        help.append("\n  ").append(row.name).append(": ").append(row.purpose);
    }
    return help;
}

std::string checkWriter(const std::string& name) {
    return findFrameWriter(name) ? "" : "'" + name + "' is none of png, raw and checksum";
}

class FramesCommand : public Command {
public:
    void declare(CLI::App& app) override {
        app.add_option("FILE", m_file, "The clip")->required()->type_name("");
        app.add_option("--range", m_range, "Frames A to B, counted from 0; 'A-' goes to the end, 'A' is one frame")
            ->type_name("A-B")
            ->check(CLI::Validator(checkRange, ""));
        app.add_option("--every", m_every, "Only every Nth frame of them")
            ->type_name("N")
            ->check(CLI::PositiveNumber.description(""));
        app.add_option("--format", m_format, "Pixel format to ask the plug-in for, such as bgra; the first it offers "
                                             "when left out")
            ->type_name("FCC");
        app.add_option("--as", m_writer, writerHelp())
            ->type_name("KIND")
            ->check(CLI::Validator(checkWriter, ""))
            ->capture_default_str();
        app.add_option("--out", m_folder, "Folder for the files, made when missing")
            ->type_name("DIR")
            ->capture_default_str();
    }

    ExitCode run(Editor& editor) override {
        const std::filesystem::path path = hostkit::pathFromUtf8(m_file);
        VideoClip clip(editor, path);
        const PrPixelFormat format = chooseFormat(clip);
        const std::vector<std::int64_t> indexes = chooseFrames(clip);
        const FrameWriterRow& row = *findFrameWriter(m_writer);
        const std::filesystem::path folder = hostkit::pathFromUtf8(m_folder);
        if (row.writesFiles) {
            std::filesystem::create_directories(folder);
        }
        return write(clip, format, indexes, *row.make(folder, hostkit::toUtf8(path.stem())));
    }

private:
    PrPixelFormat chooseFormat(const VideoClip& clip) const {
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
        const FrameRange range = rangeOf(m_range).value_or(FrameRange{});
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

    // A frame that fails is told of and passed over.
    static ExitCode write(VideoClip& clip, PrPixelFormat format, const std::vector<std::int64_t>& indexes,
                          FrameWriter& writer) {
        ExitCode code = kGood;
        Progress progress("frames", static_cast<std::int64_t>(indexes.size()));
        for (const std::int64_t index : indexes) {
            const hostkit::FrameAnswer answer = clip.frame(index, format);
            if (const auto view = answer.frame.view()) {
                writer.write(*view, index);
            } else {
                progress.clear();
                std::cerr << "importhost: Frame " << index << " failed: " << hostkit::resultText(answer.result) << "\n";
                code = kFailed;
            }
            progress.step();
        }
        return code;
    }

    std::string m_file;
    std::string m_range;
    std::int64_t m_every = 1;
    std::string m_format;
    std::string m_writer = "png";
    std::string m_folder = ".";
};

}  // namespace

std::unique_ptr<Command> makeFramesCommand() { return std::make_unique<FramesCommand>(); }

}  // namespace importhost
