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

    // Opens "<folder>/<baseName>_<counter>.log", the counter at least two digits, to be read, or to be emptied or created
    // and written; null when it does not open.
    std::FILE* open(const char* baseName, int counter, bool toWrite) const;

private:
    std::filesystem::path m_path;
};
