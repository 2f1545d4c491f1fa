#include "importhost/clips/Editor.h"

namespace importhost {

namespace {

std::optional<hostkit::LogSwitch> switchFor(bool log) {
    return log ? std::optional<hostkit::LogSwitch>(std::in_place, true) : std::nullopt;
}

hostkit::HostProfile profileOf(const EditorOptions& options) {
    hostkit::HostProfile profile =
        options.profile.empty() ? hostkit::hostProfiles().front() : hostkit::hostProfile(options.profile);
    profile.refusedSuites.insert(profile.refusedSuites.end(), options.refusedSuites.begin(),
                                 options.refusedSuites.end());
    return profile;
}

std::unique_ptr<hostkit::PluginLibrary> load(const std::filesystem::path& path) {
    try {
        return std::make_unique<hostkit::PluginLibrary>(path);
    } catch (const std::runtime_error& error) {
        throw CannotLoad(error.what());
    }
}

}  // namespace

std::filesystem::path pluginPathOf(const EditorOptions& options) {
    return options.plugin.empty() ? hostkit::PluginLibrary::programFolder() / hostkit::PluginLibrary::usualFileName()
                                  : options.plugin;
}

Editor::Editor(const EditorOptions& options)
    : m_starts(options.starts),
      m_logSwitch(switchFor(options.log)),
      m_host(profileOf(options)),
      m_pluginPath(pluginPathOf(options)),
      m_library(load(m_pluginPath)),
      m_session(std::make_unique<hostkit::ImporterSession>(m_host, m_library->entry())),
      m_started(m_starts ? m_session->start() : hostkit::StartAnswer()) {}

Editor::~Editor() { finish(); }

const std::vector<std::string>& Editor::finish() {
    if (!m_problems) {
        if (m_starts) {
            m_session->shutdown();
        }
        m_session.reset();
        m_library.reset();
        m_problems = m_host.problems();
    }
    return *m_problems;
}

}  // namespace importhost
