#include "log/PluginRun.h"

#include <regex>

std::filesystem::path pluginPath() {
    return hostkit::PluginLibrary::programFolder() / hostkit::PluginLibrary::usualFileName();
}

std::string withoutPointers(const std::string& line) {
    static const std::regex null("ptr: (\\(nil\\)|(0x)?0+)$");
    static const std::regex address("ptr: (0x)?[0-9A-Fa-f]+$");
    return std::regex_replace(std::regex_replace(line, null, "ptr: <null>"), address, "ptr: <pointer>");
}

PluginRun::PluginRun(hostkit::HostProfile profile, bool logged)
    : m_switch(logged), m_host(std::move(profile)), m_plugin(std::in_place, pluginPath()),
      m_session(std::in_place, m_host, m_plugin->entry()) {}

PluginRun::~PluginRun() {
    if (m_session) {
        m_session->shutdown();   // as every host does: the plug-in keeps the Error Suite until then
    }
}

void PluginRun::unload() {
    m_session.reset();
    m_plugin.reset();
}

std::vector<std::string> PluginRun::messages() {
    std::vector<std::string> lines = m_log.messages();
    for (std::string& line : lines) {
        line = withoutPointers(line);
    }
    m_seen = lines.size();
    return lines;
}

std::vector<std::string> PluginRun::newMessages() {
    const auto seen = static_cast<std::ptrdiff_t>(m_seen);
    const std::vector<std::string> lines = messages();
    return {lines.begin() + seen, lines.end()};
}

std::vector<std::string> suiteLines(const std::vector<std::string>& messages) {
    std::vector<std::string> lines;
    for (const std::string& line : messages) {
        if (line.starts_with("Acquiring suite: ") || line.starts_with("Releasing suite: ")) {
            lines.push_back(line);
        }
    }
    return lines;
}
