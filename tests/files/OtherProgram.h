// Imitates another program on the same machine that uses a file, with the system's own calls.
#pragma once

#include <cstdint>
#include <filesystem>

// Holds a file open for reading and lets others only read it, as players and copying programs do. On POSIX this is a
// shared lock, which programs that ask for no lock do not notice.
class OtherReader {
public:
    explicit OtherReader(const std::filesystem::path& path);
    ~OtherReader();
    OtherReader(const OtherReader&) = delete;
    OtherReader& operator=(const OtherReader&) = delete;

    bool isOpen() const { return m_file != kNone; }

private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t m_file = kNone;
};

// Holds a file open for writing and lets others do anything, as a recorder does. On POSIX this is an exclusive lock.
class OtherWriter {
public:
    explicit OtherWriter(const std::filesystem::path& path);
    ~OtherWriter();
    OtherWriter(const OtherWriter&) = delete;
    OtherWriter& operator=(const OtherWriter&) = delete;

    bool isOpen() const { return m_file != kNone; }

private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t m_file = kNone;
};

// The form of an absolute path that the system accepts at any length.
std::filesystem::path anyLengthForm(const std::filesystem::path& path);
