// The folder of log files: "quorvane", then "adobe", in the user's profile folder.
#pragma once

#include <cstdio>
#include <filesystem>

class LogFolder {
public:
    // Finds the profile folder and creates the two folders in it.
    LogFolder();

    // True if the system has a profile folder.
    bool found() const { return !m_path.empty(); }

    // Opens "<folder>/<baseName>_<counter>.log", the counter with at least two digits. If `toWrite`, creates or empties
    // the file; otherwise opens it for reading. Returns null on failure.
    std::FILE* open(const char* baseName, int counter, bool toWrite) const;

private:
    std::filesystem::path m_path;
};
