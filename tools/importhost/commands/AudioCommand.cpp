// importhost audio: a stream's sound as a WAV file.
#include "importhost/clips/SoundFormat.h"
#include "importhost/clips/SoundReader.h"
#include "importhost/clips/VideoClip.h"
#include "importhost/commands/Command.h"
#include "importhost/console/Progress.h"
#include "importhost/console/Range.h"
#include "importhost/sound/WavFile.h"

#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace importhost {

namespace {

class AudioCommand : public EditorCommand {
public:
    void declare(CLI::App& app) override {
        app.add_option("FILE", m_file, "The clip")->required()->type_name("");
        app.add_option("-o,--out", m_out, "The WAV file to write: 32-bit float, with the speakers of the channels")
            ->required()
            ->type_name("WAV");
        app.add_option("--stream", m_stream, "The stream, as counted by 'info'")
            ->type_name("K")
            ->check(CLI::Range(0, 255).description(""))
            ->capture_default_str();
        app.add_option("--range", m_range, "Sample frames A to B, counted from 0; 'A-' means to the end")
            ->type_name("A-B")
            ->check(CLI::Validator(checkRange, ""));
        app.add_option("--block", m_block, "Sample frames per request")
            ->type_name("N")
            ->check(CLI::Range(1, 1 << 20).description(""))
            ->capture_default_str();
    }

    ExitCode runWith(Editor& editor) override {
        const std::filesystem::path path = hostkit::pathFromUtf8(m_file);
        SoundReader clip(editor, path, m_stream);
        if (!clip.isUsable()) {
            throw ClipFailure(noSoundText(path, m_stream));
        }
        const Range range = chooseRange(clip);
        const WavFormat format = {static_cast<std::uint16_t>(clip.channels()), clip.sampleRate(),
                                  speakerMaskOf(clip.labels())};
        const auto frames = static_cast<std::uint64_t>(std::max<std::int64_t>(range.last - range.first + 1, 0));
        WavFile file(hostkit::pathFromUtf8(m_out), format, frames);
        Progress progress("sound", (range.last - range.first) / m_block + 1);
        for (std::int64_t first = range.first; first <= range.last; first += m_block) {
            const auto count = std::min<std::int64_t>(m_block, range.last - first + 1);
            file.write(clip.read(first, static_cast<std::uint32_t>(count)));
            progress.step();
        }
        file.finish();
        return kGood;
    }

private:
    static std::string checkRange(const std::string& text) {
        return rangeOf(text) ? "" : "'" + text + "' is not a range of sample frames such as 0-47999, 48000- or 10";
    }

    Range chooseRange(const SoundReader& clip) const {
        Range range = rangeOf(m_range).value_or(Range{});
        const std::int64_t end = clip.sampleFrames();
        range.last = range.last < 0 ? end - 1 : range.last;
        const bool isEmptySound = m_range.empty() && end <= 0;      // creates an empty file
        if (!isEmptySound && (range.first >= end || range.last >= end)) {
            throw UsageError("The sound has " + std::to_string(end) + " sample frames, counted from 0.");
        }
        return range;
    }

    std::string m_file;
    std::string m_out;
    csSDK_int32 m_stream = 0;
    std::string m_range;
    std::int64_t m_block = 4096;
};

}  // namespace

std::unique_ptr<Command> makeAudioCommand() { return std::make_unique<AudioCommand>(); }

}  // namespace importhost
