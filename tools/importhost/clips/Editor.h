// The played editor of one run of the program: host, plug-in and session, from loading to the last check.
#pragma once

#include "hostkit/plugin/PluginLog.h"
#include "hostkit/sessions/ClipSession.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace importhost {

struct EditorOptions {
    std::filesystem::path plugin;       // empty: the usual file name beside the program
    std::string profile;                // empty: the default one
    bool log = false;
    std::vector<hostkit::SuiteId> refusedSuites = {};       // beside those of the profile
    bool starts = true;                 // plays the plug-in's start and shutdown; else they are left to the command
};

// The plug-in that the options name, or the usual one beside the program.
std::filesystem::path pluginPathOf(const EditorOptions& options);

// The plug-in's library cannot be loaded.
struct CannotLoad : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Editor {
public:
    // Loads the plug-in and starts it. Throws CannotLoad.
    explicit Editor(const EditorOptions& options);
    ~Editor();

    hostkit::Host& host() { return m_host; }
    hostkit::ImporterSession& session() { return *m_session; }
    const hostkit::PluginLibrary& library() const { return *m_library; }
    const hostkit::StartAnswer& started() const { return m_started; }
    const std::filesystem::path& pluginPath() const { return m_pluginPath; }

    // Shuts down the plug-in if it was started here, unloads it and tells what it left uneven or did wrong; clips must
    // be gone by then. Further calls give the same sentences.
    const std::vector<std::string>& finish();

    // Files that the plug-in's log wrote in this run; complete after finish().
    std::vector<std::filesystem::path> logFiles() const { return m_log.newFiles(); }

private:
    const bool m_starts;
    std::optional<hostkit::LogSwitch> m_logSwitch;
    hostkit::PluginLog m_log;
    hostkit::Host m_host;
    std::filesystem::path m_pluginPath;
    std::unique_ptr<hostkit::PluginLibrary> m_library;
    std::unique_ptr<hostkit::ImporterSession> m_session;
    hostkit::StartAnswer m_started;
    std::optional<std::vector<std::string>> m_problems;
};

}  // namespace importhost
