// The plug-in in a played editor, for one check: loaded and started, its calls traced; ended with its books checked.
#pragma once

#include "hostkit/sessions/ImporterSession.h"
#include "importhost/validate/framework/CheckRun.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace importhost::validate {

class PlayedPlugin {
public:
    // Throws std::runtime_error when the plug-in cannot be loaded.
    explicit PlayedPlugin(CheckRun& run, const hostkit::HostProfile& profile = hostkit::hostProfiles().front());

    // Ends the plug-in if finish() was not called. Clips and frames must be gone by then.
    ~PlayedPlugin();

    CheckRun& run() { return m_run; }
    hostkit::Host& host() { return m_host; }
    hostkit::ImporterSession& session() { return *m_session; }
    const hostkit::StartAnswer& started() const { return m_started; }

    // The library, for its symbols; valid until finish().
    const hostkit::PluginLibrary& library() const { return *m_library; }

    // Shuts the plug-in down and unloads it. Whatever it still holds or did wrong fails the check.
    void finish();

    // For a check that provokes what would otherwise count as wrong: such problems are told here and not failed.
    std::vector<std::string> finishAndTell();

private:
    CheckRun& m_run;
    hostkit::Host m_host;
    std::unique_ptr<hostkit::PluginLibrary> m_library;
    std::unique_ptr<hostkit::ImporterSession> m_session;
    hostkit::StartAnswer m_started;
};

}  // namespace importhost::validate
