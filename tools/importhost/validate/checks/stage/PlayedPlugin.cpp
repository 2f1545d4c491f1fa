#include "importhost/validate/checks/stage/PlayedPlugin.h"

#include "hostkit/sessions/Names.h"

namespace importhost::validate {

PlayedPlugin::PlayedPlugin(CheckRun& run, const hostkit::HostProfile& profile)
    : m_run(run),
      m_host(profile),
      m_library(std::make_unique<hostkit::PluginLibrary>(run.plugin())),
      m_session(std::make_unique<hostkit::ImporterSession>(m_host, m_library->entry())) {
    m_host.calls().sendLines([&trace = run.trace()](const std::string& line) { trace.add(line); });
    m_started = m_session->start();
}

PlayedPlugin::~PlayedPlugin() { finish(); }

void PlayedPlugin::finish() {
    for (const std::string& problem : finishAndTell()) {
        m_run.fail(problem);
    }
}

std::vector<std::string> PlayedPlugin::finishAndTell() {
    if (!m_session) {
        return {};
    }
    m_host.faults().clear();
    const csSDK_int32 result = m_session->shutdown();
    m_run.expect(result == imNoErr, "the shutdown was answered with " + hostkit::resultText(result));
    m_session.reset();
    m_library.reset();
    return m_host.problems();
}

}  // namespace importhost::validate
