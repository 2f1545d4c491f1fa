// importhost bench: how fast the plug-in reads a user's files.
#include "importhost/bench/Measurement.h"
#include "importhost/commands/Command.h"
#include "importhost/console/OutputTarget.h"

#include "hostkit/system/Interrupt.h"
#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <random>

namespace importhost {

namespace {

using namespace bench;

class BenchCommand : public EditorCommand {
public:
    void declare(CLI::App& app) override {
        app.add_option("FILE", m_files, "The clips")->required()->type_name("");
        app.add_option("--frames", m_options.frames, "Maximum frames per row; longer clips are sampled")
            ->type_name("N")
            ->check(CLI::Range(std::int64_t{1}, std::int64_t{100000}).description(""))
            ->capture_default_str();
        app.add_option("--busy", m_options.busyMilliseconds, "Milliseconds that the host works on each frame, with "
                                                             "others announced")
            ->type_name("MS")
            ->check(CLI::Range(0, 1000).description(""))
            ->capture_default_str();
        app.add_option("--seed", m_seed, "Random seed (default: chosen and printed)")
            ->type_name("N")
            ->check(CLI::NonNegativeNumber.description(""));
        app.add_option("--json", m_json, "Also write the numbers to this JSON file")->type_name("JSON");
        app.footer("\nOpens each clip and measures how long the editor would wait for the clip, its first frame,\n"
                   "frames forward, backward and at random, asynchronous frames, and sound; how often and how\n"
                   "much the plug-in reads from files, and how much memory the clip keeps. Times depend on this\n"
                   "machine, its disk and its load. The plug-in's log is off meanwhile, unless --log is given.\n");
    }

    ExitCode runWith(Editor& editor) override {
        std::cout << headText(editor) << std::flush;
        std::vector<FileMeasurement> files;
        for (const std::string& file : m_files) {
            files.push_back(measureFile(editor, hostkit::pathFromUtf8(file), m_options));
            std::cout << asText(files.back(), m_options) << std::flush;
        }
        m_target->write(m_target->isWanted() ? jsonText(files, editor) : "");
        const bool allGood =
            std::all_of(files.begin(), files.end(), [](const FileMeasurement& file) { return file.isGood(); });
        return allGood ? kGood : kFailed;
    }

protected:
    void prepare(EditorOptions& options) override {
        std::vector<std::filesystem::path> inputs = {pluginPathOf(options)};
        for (const std::string& file : m_files) {
            inputs.push_back(hostkit::pathFromUtf8(file));
        }
        m_target.emplace(m_json, "{", inputs);
        m_options.seed = m_seed.value_or(std::random_device{}());
        hostkit::catchInterrupts();
        m_withLog = options.log;
        if (!m_withLog) {
            m_noLog.emplace(false);         // otherwise a log that is on would be measured too
        }
    }

private:
    std::string headText(const Editor& editor) const {
        std::string text = hostkit::toUtf8(editor.pluginPath());
        text.append("\n  at most ").append(std::to_string(m_options.frames)).append(" frames a row, seed ");
        text.append(std::to_string(m_options.seed)).append(", the host works ");
        text.append(std::to_string(m_options.busyMilliseconds)).append(" ms a frame, the log is ");
        return text.append(m_withLog ? "on" : "off").append("\n");
    }

    // Created after the plug-in has ended, because it includes the problems found then.
    std::string jsonText(const std::vector<FileMeasurement>& files, Editor& editor) const {
        nlohmann::ordered_json json = {{"program", std::string("importhost ").append(programVersion())},
                                       {"plugin", hostkit::toUtf8(editor.pluginPath())},
                                       {"profile", editor.host().profile().name},
                                       {"log", m_withLog},
                                       {"framesAtMost", m_options.frames},
                                       {"busyMs", m_options.busyMilliseconds},
                                       {"seed", m_options.seed},
                                       {"files", nlohmann::ordered_json::array()}};
        for (const FileMeasurement& file : files) {
            json["files"].push_back(asJson(file));
        }
        json["problems"] = editor.finish();
        return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    }

    std::vector<std::string> m_files;
    BenchOptions m_options;
    std::optional<std::uint64_t> m_seed;
    std::string m_json;
    std::optional<OutputTarget> m_target;
    std::optional<hostkit::LogSwitch> m_noLog;
    bool m_withLog = false;
};

}  // namespace

std::unique_ptr<Command> makeBenchCommand() { return std::make_unique<BenchCommand>(); }

}  // namespace importhost
