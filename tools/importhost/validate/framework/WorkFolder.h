// A folder for what a run writes, gone with it.
#pragma once

#include <filesystem>

namespace importhost::validate {

class WorkFolder {
public:
    // Makes a new folder in the system's folder for such. Throws std::filesystem::filesystem_error.
    WorkFolder();
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

}  // namespace importhost::validate
