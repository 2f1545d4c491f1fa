// Loads the plug-in into a played host, with an empty folder for its log.
#pragma once

#include "hostkit/plugin/PluginLog.h"
#include "hostkit/sessions/ImporterSession.h"
#include "log/ProfileSandbox.h"

#include <optional>
#include <string>
#include <vector>

// The plug-in's file, in the folder of the running program.
std::filesystem::path pluginPath();

inline constexpr csSDK_int32 kSelectorWithoutHandler = 65;

// The line with comparable addresses: "ptr: <pointer>" or "ptr: <null>".
std::string withoutPointers(const std::string& line);

class PluginRun {
public:
    explicit PluginRun(hostkit::HostProfile profile = {}, bool logged = true);
    ~PluginRun();
    PluginRun(const PluginRun&) = delete;
    PluginRun& operator=(const PluginRun&) = delete;

    hostkit::Host& host() { return m_host; }
    hostkit::ImporterSession& session() { return *m_session; }
    hostkit::ImporterEntry entry() const { return m_plugin->entry(); }

    // Calls the plug-in directly; its exceptions pass through.
    csSDK_int32 call(csSDK_int32 selector, void* param1 = nullptr, void* param2 = nullptr) {
        return entry()(selector, m_host.stdParms(), param1, param2);
    }

    // Unloads the plug-in; nothing of it may be used afterwards.
    void unload();

    // All messages so far, and those since the last call of either function: without times and threads, with comparable
    // addresses.
    std::vector<std::string> messages();
    std::vector<std::string> newMessages();

private:
    ProfileSandbox m_sandbox;
    hostkit::LogSwitch m_switch;
    hostkit::PluginLog m_log;
    hostkit::Host m_host;
    std::optional<hostkit::PluginLibrary> m_plugin;
    std::optional<hostkit::ImporterSession> m_session;
    std::size_t m_seen = 0;
};

// The messages about suites.
std::vector<std::string> suiteLines(const std::vector<std::string>& messages);
