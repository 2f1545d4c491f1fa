// A clip for the fake importer, removed when the test ends, and the fake importer itself.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/sessions/ClipSession.h"

#include <gtest/gtest.h>

#include <fstream>

namespace fakes {

inline std::filesystem::path importerPath() {
    return hostkit::PluginLibrary::programFolder() / FAKE_IMPORTER_FILE_NAME;
}

// A file in a temporary folder that is named after the running test.
class TemporaryFile {
public:
    TemporaryFile(const std::u8string& name, const std::string& content) : m_path(folder() / name) {
        std::filesystem::create_directories(m_path.parent_path());
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path.parent_path(), ignored);
    }

    const std::filesystem::path& path() const { return m_path; }

private:
    static std::filesystem::path folder() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        return std::filesystem::temp_directory_path() / "quorvane-tests" / test->test_suite_name() / test->name();
    }
    std::filesystem::path m_path;
};

class FakeClip : public TemporaryFile {
public:
    explicit FakeClip(const std::string& words = "") : TemporaryFile(u8"clip.fake", "fake " + words) {}
};

}  // namespace fakes
