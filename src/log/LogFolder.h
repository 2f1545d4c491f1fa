// The folder of log files: "quorvane", then "adobe", in the user's profile folder.
#pragma once

#include <cstdio>
#include <filesystem>

class LogFolder {
public:
    // Finds the profile folder and creates the two folders in it.
    LogFolder();

    // Whether the system named a profile folder.
    bool found() const { return !m_path.empty(); }

    // Creates "<folder>/<baseName>_<counter>.log", the counter at least two digits, for text to be written into; null
    // when there is a file of that name, or none can be created.
    std::FILE* openNew(const char* baseName, int counter) const;

private:
    std::filesystem::path m_path;
};
