// Loads the built plug-in and starts it in a host of its own, for the lifetime of this object.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class LoadedImporter {
public:
    explicit LoadedImporter(const hostkit::HostProfile& profile = hostkit::hostProfiles().front())
        : m_host(profile),
          m_plugin(hostkit::PluginLibrary::programFolder() / hostkit::PluginLibrary::usualFileName()),
          m_session(m_host, m_plugin.entry()) {
        m_session.start();
    }

    // Clips and frames must have been released: fails the test if the plug-in or the test still hold anything.
    ~LoadedImporter() {
        m_session.shutdown();
        EXPECT_EQ(m_host.problems(), std::vector<std::string>{});
    }

    LoadedImporter(const LoadedImporter&) = delete;
    LoadedImporter& operator=(const LoadedImporter&) = delete;

    hostkit::Host& host() { return m_host; }
    hostkit::ImporterSession& session() { return m_session; }

private:
    hostkit::Host m_host;
    hostkit::PluginLibrary m_plugin;
    hostkit::ImporterSession m_session;
};
