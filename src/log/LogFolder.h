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

    // Opens "<folder>/<baseName>_<counter>.log", the counter at least two digits: to read it, or to empty or create it
    // and write; null when it does not open.
    std::FILE* open(const char* baseName, int counter, bool toWrite) const;

private:
    std::filesystem::path m_path;
};
