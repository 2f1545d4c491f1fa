#include "log/ProfileSandbox.h"

#include "support/TempFolder.h"

#include <cstdlib>
#include <optional>
#include <string>

struct ProfileSandbox::Saved {
    TempFolder profile;
    std::optional<std::string> home;
};

ProfileSandbox::ProfileSandbox() : m_saved(std::make_unique<Saved>()) {
    if (const char* home = std::getenv("HOME")) {
        m_saved->home = home;
    }
    setenv("HOME", m_saved->profile.folder().c_str(), 1);
}

ProfileSandbox::~ProfileSandbox() {
    if (m_saved->home) {
        setenv("HOME", m_saved->home->c_str(), 1);
    } else {
        unsetenv("HOME");
    }
}

std::filesystem::path ProfileSandbox::outerFolder() const {
    return m_saved->profile.folder() / "quorvane";
}
