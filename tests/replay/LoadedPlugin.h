// Loads the plug-in without its log for a replay; checks for leaks at the end. Only one played host may exist: a
// recording must end before this begins.
#pragma once

#include "Recording.h"
#include "log/PluginRun.h"

class LoadedPlugin {
public:
    LoadedPlugin() : m_plugin(pluginPath()), m_session(m_host, m_plugin.entry()) {}
    ~LoadedPlugin() { EXPECT_EQ(m_host.problems(), std::vector<std::string>{}); }
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    std::vector<recording::Made> replay(const std::string& log, const std::vector<std::filesystem::path>& files) {
        return recording::replayed(m_session, recording::read(log), files);
    }

    hostkit::Host& host() { return m_host; }
    hostkit::ImporterEntry entry() const { return m_plugin.entry(); }

private:
    hostkit::Host m_host;
    hostkit::PluginLibrary m_plugin;
    hostkit::ImporterSession m_session;
};
