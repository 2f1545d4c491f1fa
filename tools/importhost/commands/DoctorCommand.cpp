// importhost doctor: why the host does not see the plug-in.
#include "importhost/commands/Command.h"
#include "importhost/doctor/Collect.h"
#include "importhost/doctor/Diagnosis.h"
#include "importhost/doctor/LoadTrial.h"
#include "importhost/reports/RepairAdvice.h"

#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace importhost {

namespace {

class DoctorCommand : public Command {
public:
    void declare(CLI::App& app) override {
        app.footer("\nLooks where Premiere Pro looks for plug-ins, and checks the plug-in, older copies of it, the\n"
                   "codec library and the log. Prints what it finds, to be pasted into a report, and what to fix.\n"
                   "Changes nothing. With --plugin it examines that plug-in instead of those in the folders.\n"
                   "Checks named clips too: whether avirepair would recover more of them.\n"
                   "\nExit codes: 0 nothing to fix; 1 something to fix; 2 usage.\n");
        app.add_option("FILE", m_clips, "Clips without frames, or with too little sound")->type_name("");
        app.add_option("--try", m_tried, "")->group("");        // used by the program itself
    }

    ExitCode run(const EditorOptions& options) override {
        if (!m_tried.empty()) {
            doctor::tryAsChild(hostkit::pathFromUtf8(m_tried));
            return kGood;
        }
        if (!options.profile.empty() || options.log) {
            throw UsageError("--profile and --log cannot be used with doctor: it simulates no host.");
        }
        const std::string version(programVersion());
        const doctor::Facts facts = doctor::collectFacts(options.plugin, pluginPathOf({}));
        const std::vector<std::string> toFix = doctor::thingsToFix(facts, doctor::versionOf(version));
        std::cout << doctor::pageOf(facts, version, toFix);
        const bool hasAdvice = printAdvice();
        return toFix.empty() && !hasAdvice ? kGood : kFailed;
    }

private:
    // Whether there was any.
    bool printAdvice() const {
        bool hasAdvice = false;
        for (const std::string& clip : m_clips) {
            for (const std::string& sentence : repairAdvice(hostkit::pathFromUtf8(clip))) {
                std::cout << "\n" << clip << "\n  " << sentence << "\n";
                hasAdvice = true;
            }
        }
        return hasAdvice;
    }

    std::vector<std::string> m_clips;
    std::string m_tried;
};

}  // namespace

std::unique_ptr<Command> makeDoctorCommand() { return std::make_unique<DoctorCommand>(); }

}  // namespace importhost
