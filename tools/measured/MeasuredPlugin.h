// The built plug-in, loaded and started in a host whose frames and sound cost nothing, with its reads and decodes
// counted. One at a time.
#pragma once

#include "hostkit/host/Host.h"
#include "hostkit/host/LightHost.h"
#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/sessions/ImporterSession.h"
#include "hostkit/watch/CallSpy.h"

#include <cstddef>

class MeasuredPlugin {
public:
    // Loads the plug-in in the program's folder. Frame buffers have `frameBytes` bytes. Throws std::runtime_error.
    explicit MeasuredPlugin(std::size_t frameBytes);
    ~MeasuredPlugin();
    MeasuredPlugin(const MeasuredPlugin&) = delete;
    MeasuredPlugin& operator=(const MeasuredPlugin&) = delete;

    hostkit::ImporterSession& session() { return m_session; }
    hostkit::LightHost& host() { return m_lightHost; }
    imStdParms* stdParms() { return m_host.stdParms(); }
    const hostkit::PluginLibrary& library() const { return m_plugin; }
    hostkit::CallSpy& spy() { return m_spy; }

    // Calls the plug-in's entry directly.
    csSDK_int32 call(csSDK_int32 selector, void* param1, void* param2) {
        return m_plugin.entry()(selector, m_host.stdParms(), param1, param2);
    }

private:
    hostkit::Host m_host;
    hostkit::LightHost m_lightHost;
    hostkit::PluginLibrary m_plugin;
    hostkit::CallSpy m_spy;
    hostkit::ImporterSession m_session;
};
