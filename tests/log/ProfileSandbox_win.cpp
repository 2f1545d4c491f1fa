#include "log/ProfileSandbox.h"

#include "hostkit/plugin/PluginLog.h"

#include <system_error>

namespace {

std::filesystem::path realFolder() {
    return hostkit::pluginLogFolder().parent_path();
}

std::filesystem::path freeNameBeside(const std::filesystem::path& folder) {
    for (int number = 0;; ++number) {
        std::filesystem::path name = folder;
        name += ".before_test_" + std::to_string(number);
        if (!std::filesystem::exists(name)) {
            return name;
        }
    }
}

}  // namespace

struct ProfileSandbox::Saved {
    std::filesystem::path aside;    // empty if there was no folder to rename
};

ProfileSandbox::ProfileSandbox() : m_saved(std::make_unique<Saved>()) {
    if (std::filesystem::exists(realFolder())) {
        const std::filesystem::path aside = freeNameBeside(realFolder());
        std::filesystem::rename(realFolder(), aside);
        m_saved->aside = aside;
    }
}

ProfileSandbox::~ProfileSandbox() {
    std::error_code ignored;
    std::filesystem::remove_all(realFolder(), ignored);
    if (!m_saved->aside.empty()) {
        std::filesystem::rename(m_saved->aside, realFolder(), ignored);
    }
}

std::filesystem::path ProfileSandbox::outerFolder() const {
    return realFolder();
}
