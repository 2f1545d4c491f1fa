// A file in the hands of another program, as far as the system tells programs apart that share files.
#pragma once

#include <cstdint>
#include <filesystem>

namespace importhost::validate {

enum class OtherUse {
    Reads,          // and lets others read
    Writes,         // and lets others do what they like
    Locks,          // and lets nobody else in
};

class OtherProgram {
public:
    OtherProgram(const std::filesystem::path& path, OtherUse use);
    ~OtherProgram();                                    // gives the file back
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    // Whether it got the file: not when that would disturb who has it already.
    bool hasFile() const { return m_file != -1; }

private:
    std::intptr_t m_file;                               // the system's handle; -1 without one
};

}  // namespace importhost::validate
