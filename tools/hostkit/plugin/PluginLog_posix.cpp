#include "hostkit/plugin/PluginLog.h"

#include <cstdlib>
#include <optional>

namespace hostkit {

namespace {

constexpr char kSwitch[] = "QUORVANE_ENABLE_ADOBE_LOG";

}  // namespace

struct LogSwitch::Saved {
    std::optional<std::string> value;
};

LogSwitch::LogSwitch(bool on) : m_saved(std::make_unique<Saved>()) {
    if (const char* value = std::getenv(kSwitch)) {
        m_saved->value = value;
    }
    if (on) {
        setenv(kSwitch, "1", 1);
    } else {
        unsetenv(kSwitch);
    }
}

LogSwitch::~LogSwitch() {
    if (m_saved->value) {
        setenv(kSwitch, m_saved->value->c_str(), 1);
    } else {
        unsetenv(kSwitch);
    }
}

bool LogSwitch::isOn() {
    const char* value = std::getenv(kSwitch);
    return value && std::string_view(value) == "1";
}

std::filesystem::path pluginLogFolder() {
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home ? home : "") / "quorvane" / "adobe";
}

}  // namespace hostkit
