// importhost doctor: why the host does not see the plug-in.
#include "importhost/commands/Command.h"
#include "importhost/doctor/Collect.h"
#include "importhost/doctor/Diagnosis.h"
#include "importhost/doctor/LoadTrial.h"

#include "hostkit/system/Text.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace importhost {

namespace {

class DoctorCommand : public Command {
public:
    void declare(CLI::App& app) override {
        app.footer("\nLooks where Premiere Pro looks: for its plug-in folders, for the plug-in and older copies of it,\n"
                   "for the codec library, and for the log. Prints what it finds, to be pasted into a report, and what\n"
                   "there is to fix. Changes nothing. With --plugin it examines that plug-in instead of those in the\n"
                   "folders.\n"
                   "\nExit codes: 0 all well; 1 there is something to fix; 2 usage.\n");
        app.add_option("--try", m_tried, "")->group("");        // from the program to itself
    }

    ExitCode run(const EditorOptions& options) override {
        if (!m_tried.empty()) {
            doctor::tryAsChild(hostkit::pathFromUtf8(m_tried));
            return kGood;
        }
        if (!options.profile.empty() || options.log) {
            throw UsageError("No host is played and nothing is changed: --profile and --log do not go with doctor.");
        }
        const std::string version(programVersion());
        const doctor::Facts facts = doctor::collectFacts(options.plugin, pluginPathOf({}));
        const std::vector<std::string> toFix = doctor::thingsToFix(facts, doctor::versionOf(version));
        std::cout << doctor::pageOf(facts, version, toFix);
        return toFix.empty() ? kGood : kFailed;
    }

private:
    std::string m_tried;
};

}  // namespace

std::unique_ptr<Command> makeDoctorCommand() { return std::make_unique<DoctorCommand>(); }

}  // namespace importhost
