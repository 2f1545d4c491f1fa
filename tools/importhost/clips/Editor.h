// The simulated editor of one run of the program: host, plug-in and session, from loading to the final checks.
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
    std::filesystem::path plugin;       // empty: the default file name in the program's folder
    std::string profile;                // empty: the default profile
    bool log = false;
    std::vector<hostkit::SuiteId> refusedSuites = {};       // in addition to those of the profile
    bool starts = true;                 // calls the plug-in's start and shutdown; otherwise the command does
};

// The plug-in in the options, or else the default one in the program's folder.
std::filesystem::path pluginPathOf(const EditorOptions& options);

// Thrown if the plug-in's library cannot be loaded.
struct CannotLoad : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Editor {
public:
    // Loads and starts the plug-in. Throws CannotLoad.
    explicit Editor(const EditorOptions& options);
    ~Editor();

    hostkit::Host& host() { return m_host; }
    hostkit::ImporterSession& session() { return *m_session; }
    const hostkit::PluginLibrary& library() const { return *m_library; }
    const hostkit::StartAnswer& started() const { return m_started; }
    const std::filesystem::path& pluginPath() const { return m_pluginPath; }

    // Shuts down the plug-in if it was started here, unloads it and returns sentences about what it did not release or
    // did wrong. All clips must be closed. Further calls return the same sentences.
    const std::vector<std::string>& finish();

    // Log files that the plug-in wrote in this run; complete after finish().
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
