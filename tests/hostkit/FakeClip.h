// A clip for the fake importer, removed when the test ends, and the fake importer itself.
#pragma once

#include "hostkit/plugin/PluginLibrary.h"
#include "hostkit/sessions/ClipSession.h"
#include "support/TempFolder.h"

#include <fstream>

namespace fakes {

inline std::filesystem::path importerPath() {
    return hostkit::PluginLibrary::programFolder() / FAKE_IMPORTER_FILE_NAME;
}

// A file in a temporary folder of its own.
class TemporaryFile {
public:
    TemporaryFile(const std::u8string& name, const std::string& content) : m_path(m_folder.folder() / name) {
        std::filesystem::create_directories(m_path.parent_path());
        std::ofstream(m_path, std::ios::binary) << content;
    }

    const std::filesystem::path& path() const { return m_path; }

private:
    TempFolder m_folder;
    std::filesystem::path m_path;
};

class FakeClip : public TemporaryFile {
public:
    explicit FakeClip(const std::string& words = "") : TemporaryFile(u8"clip.fake", "fake " + words) {}
};

}  // namespace fakes
