// importhost info: what the plug-in says about files.
#include "importhost/commands/Command.h"
#include "importhost/reports/ClipReport.h"

#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <iostream>

namespace importhost {

namespace {

class InfoCommand : public EditorCommand {
public:
    void declare(CLI::App& app) override {
        app.add_option("FILE", m_files, "The clips")->required()->type_name("");
        app.add_flag("--json", m_asJson, "Print one JSON object instead of text");
        app.footer("\nShows the formats and subtypes that the plug-in offers, then for each clip: the result and\n"
                   "sound levels of every stream, pixel formats in the plug-in's order, data rate and analysis\n"
                   "text.\n");
    }

    ExitCode runWith(Editor& editor) override {
        std::vector<ClipReport> reports;
        bool allGood = true;
        for (const std::string& file : m_files) {
            reports.push_back(reportOf(editor.session(), hostkit::pathFromUtf8(file)));
            allGood = allGood && reports.back().isGood();
        }
        m_asJson ? printJson(reports, editor) : printText(reports, editor);
        return allGood ? kGood : kFailed;
    }

private:
    static void printText(const std::vector<ClipReport>& reports, const Editor& editor) {
        std::cout << asText(editor);
        for (const ClipReport& report : reports) {
            std::cout << "\n" << asText(report, editor);
        }
    }

    // Printed after the plug-in has ended, because it includes the problems found then.
    static void printJson(const std::vector<ClipReport>& reports, Editor& editor) {
        nlohmann::ordered_json json = asJson(editor);
        json["files"] = nlohmann::ordered_json::array();
        for (const ClipReport& report : reports) {
            json["files"].push_back(asJson(report, editor));
        }
        json["problems"] = editor.finish();
        std::cout << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
    }

    std::vector<std::string> m_files;
    bool m_asJson = false;
};

}  // namespace

std::unique_ptr<Command> makeInfoCommand() { return std::make_unique<InfoCommand>(); }

}  // namespace importhost
