// The latest calls between host and plug-in, kept in a file so that they outlive a process that crashed or was ended.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

namespace importhost::validate {

class CallTrace {
public:
    static constexpr std::size_t kLines = 48;

    // Throws std::runtime_error when the file cannot be written.
    explicit CallTrace(const std::filesystem::path& path);

    // Safe on any thread.
    void add(const std::string& line);
    std::vector<std::string> latest() const;

private:
    mutable std::mutex m_mutex;
    std::ofstream m_out;
    std::deque<std::string> m_latest;
    std::uint64_t m_count = 0;
};

// The lines in the order in which they were added, the oldest of them forgotten. None for a file that is not there.
std::vector<std::string> readCallTrace(const std::filesystem::path& path);

}  // namespace importhost::validate
